// SPDX-License-Identifier: Apache-2.0

#include "print/sheet.h"

#include "drive_figures.h"
#include "print/units.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace pitool {
namespace {

/// The time left with its range, and the dates where the report bears one.
SheetLine ForecastLine(const DriveSummary& drive) {
    constexpr std::size_t DATE = 10;  // of an ISO 8601 time
    const PI::CWearForecast forecast = drive.GetForecast();
    if (drive.IsDisk() || !forecast.GetHours()) {
        return {"FORECAST",
                drive.IsDisk() ? std::string("not applicable (") + ROTATING + ")"
                               : std::string("none (") + forecast.GetReason() + ")",
                Style::FAINT};
    }
    if (forecast.GetState() == PI::WearForecastState::WORN) {
        return {"FORECAST", std::string("worn (") + forecast.GetReason() + ")", Style::WARNING};
    }
    const auto years = [](std::uint64_t hours) { return AgeText(hours); };
    const auto date = [&forecast](std::uint64_t hours) {
        const std::optional<std::int64_t> time = forecast.GetDate(hours);
        return time ? TimeText(*time).substr(0, DATE) : "";
    };
    const auto low = *forecast.GetLow();
    const auto high = forecast.GetHigh();
    std::string text = "worn in " + years(*forecast.GetHours()) +
                       " of power-on time, four times out of five in " + years(low) +
                       (high ? " to " + years(*high) : " or more");
    if (const std::string day = date(*forecast.GetHours()); !day.empty()) {
        const std::string last = high ? date(*high) : "";
        text += "; running without a break, about " + day + ", " + date(low) +
                (last.empty() ? " or later" : " to " + last);
    }
    return {"FORECAST", text + "; by its " + BasisText(forecast.GetBasis())};
}

}  // namespace

std::vector<SheetLine> SheetOf(const DriveSummary& drive, const PI::CDriveReport& report,
                               const PI::CHealthAssessment& health) {
    std::vector<SheetLine> lines;
    lines.push_back({"STATE", PI::DriveStateToString(drive.GetState()), StateStyle(drive.GetState())});
    for (const PI::CHealthReason& reason : health.GetReasons()) {
        lines.push_back({"REASON", PrintableText(reason.GetText()), StateStyle(reason.GetState())});
    }
    lines.push_back(ForecastLine(drive));
    const std::string time = TimeText(drive.GetTime());
    lines.push_back({"REPORTED", time.empty() ? "unknown (not reported)" : time,
                     time.empty() ? Style::FAINT : Style::PLAIN});
    lines.push_back(
        {"MODEL", drive.GetModel().empty() ? "unknown (not reported)" : PrintableText(drive.GetModel())});
    const auto add = [&lines](const DriveFigure& figure) {
        std::string text = figure.ValueText();
        if (!figure.HasValue()) {
            text = (figure.m_Applicable ? "unknown (" : "not applicable (") + PrintableText(figure.m_Reason) +
                   ")";
        } else {
            text += *figure.m_Counts != '\0' ? std::string(", counts ") + figure.m_Counts : "";
            text += figure.m_Source.empty() ? "" : "; " + figure.m_Source;
            text += figure.m_Reason.empty() ? "" : "; doubtful: " + PrintableText(figure.m_Reason);
        }
        lines.push_back(
            {std::string(figure.m_Name), std::move(text), figure.HasValue() ? figure.m_Style : Style::FAINT});
    };
    const DriveFigures figures = FiguresOf(drive, report, health);
    std::for_each(figures.m_Properties.begin(), figures.m_Properties.end(), add);
    for (const DriveFigure& figure : figures.m_Others) {
        if (figure.HasValue() || figure.m_Reason != NOT_REPORTED) {
            add(figure);
        }
    }
    for (const std::string& note : report.GetNotes()) {
        lines.push_back({"NOTE", PrintableText(note)});
    }
    return lines;
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

}  // namespace pitool
