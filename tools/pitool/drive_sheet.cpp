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
    if (!figure.IsKnown()) {
        return std::string(figure.m_Applicable ? "unknown" : "not applicable") + " (" +
               PrintableText(figure.m_Reason) + ")";
    }
    std::string text = FigureValueText(figure);
    const std::string counts = DirectionText(figure.m_Direction);
    if (!counts.empty()) {
        text += ", counts " + counts;
    }
    return figure.m_Source.empty() ? text : text + "; " + figure.m_Source;
}

Style FigureStyle(const DriveAssessment& drive, const Figure& figure) {
    if (!figure.IsKnown()) {
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
        case ID::TEMPERATURE: worrying = IsTooHot(drive); break;
        default: break;
    }
    return worrying ? Style::WARNING : Style::PLAIN;
}

std::string DriveSheet(const DriveAssessment& drive, const Screen& screen) {
    std::vector<std::string> texts;
    texts.reserve(drive.m_Figures.size());  // the cells look into them
    std::vector<std::vector<Cell>> lines;
    std::size_t longestName = 0;
    for (const Figure& figure : drive.m_Figures) {
        const std::string& name = PI::PropertyIDToString(figure.m_Property.m_ID);
        longestName = std::max(longestName, name.size());
        texts.push_back(FigureText(figure));
        lines.push_back({{name}, {texts.back(), FigureStyle(drive, figure)}});
    }
    constexpr std::size_t INDENT = 2;
    std::string sheet;
    AddWrapped("", "", PrintableText(drive.m_File), Style::HEADING, screen, sheet);
    // People look for the names, and copy them.
    return sheet + TableText(lines, screen, INDENT, {longestName});
}

}  // namespace pitool
