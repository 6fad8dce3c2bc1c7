// SPDX-License-Identifier: Apache-2.0

#include "drive_sheet.h"

#include "printable_text.h"
#include "text_table.h"
#include "wrapped_text.h"

#include <algorithm>
#include <vector>

namespace pitool {
namespace {

namespace ID = PI::PropertyID;

}  // namespace

std::string FigureText(const Figure& figure) {
    if (!figure.HasValue()) {
        return std::string(figure.m_Applicable ? "unknown" : "not applicable") + " (" +
               PrintableText(figure.m_Reason) + ")";
    }
    std::string text = FigureValueText(figure);
    const std::string counts = DirectionText(figure.m_Direction);
    if (!counts.empty()) {
        text += ", counts " + counts;
    }
    if (!figure.m_Source.empty()) {
        text += "; " + figure.m_Source;
    }
    return figure.IsDoubtful() ? text + "; doubtful: " + PrintableText(figure.m_Reason) : text;
}

Style StateStyle(PI::_DRIVE_STATE state) {
    switch (state) {
        case PI::DriveState::FAILED:
        case PI::DriveState::REPLACE: return Style::FAILING;
        case PI::DriveState::LOOK: return Style::WARNING;
        case PI::DriveState::UNKNOWN: return Style::FAINT;
        case PI::DriveState::GOOD: break;
    }
    return Style::PLAIN;
}

Style FigureStyle(const DriveAssessment& drive, const Figure& figure) {
    if (!figure.HasValue()) {
        return Style::FAINT;
    }
    bool worrying = false;
    switch (figure.m_Property.m_ID) {
        case ID::HEALTH:
        case ID::SMART_FLAGGED:
            if (drive.m_Failing) {
                return Style::FAILING;
            }
            worrying = figure.m_Property.m_ID == ID::HEALTH && IsWorn(drive);
            break;
        case ID::RATED_ENDURANCE_PERCENT:
        case ID::ESTIMATED_LIFETIME: worrying = IsWorn(drive); break;
        case ID::TEMPERATURE: worrying = ExceededLimit(drive).has_value(); break;
        default: break;
    }
    return worrying ? Style::WARNING : Style::PLAIN;
}

std::string DriveSheet(const DriveAssessment& drive, const Screen& screen) {
    std::vector<std::string> texts;
    texts.reserve(drive.m_Reasons.size() + drive.m_Figures.size() + drive.m_OtherFigures.size() +
                  drive.m_Notes.size());  // the cells look into them
    std::vector<std::vector<Cell>> lines;
    std::size_t longestName = 0;
    lines.push_back({{"STATE"}, {PI::DriveStateToString(drive.m_State), StateStyle(drive.m_State)}});
    for (const PI::CHealthReason& reason : drive.m_Reasons) {
        texts.push_back(PrintableText(reason.GetText()));
        lines.push_back({{"REASON"}, {texts.back(), StateStyle(reason.GetState())}});
    }
    const auto add = [&](const Figure& figure) {
        longestName = std::max(longestName, figure.m_Name.size());
        texts.push_back(FigureText(figure));
        lines.push_back({{figure.m_Name}, {texts.back(), FigureStyle(drive, figure)}});
    };
    std::for_each(drive.m_Figures.begin(), drive.m_Figures.end(), add);
    for (const Figure& figure : drive.m_OtherFigures) {
        if (figure.HasValue() || figure.m_Reason != NOT_REPORTED) {
            add(figure);
        }
    }
    for (const std::string& note : drive.m_Notes) {
        texts.push_back(PrintableText(note));
        lines.push_back({{"NOTE"}, {texts.back()}});
    }
    constexpr std::size_t INDENT = 2;
    std::string sheet;
    AddWrapped("", "", PrintableText(drive.m_File), Style::HEADING, screen, sheet);
    // People look for the names, and copy them.
    return sheet + TableText(lines, screen, INDENT, {longestName});
}

}  // namespace pitool
