// SPDX-License-Identifier: Apache-2.0

#include "drive_detail.h"
#include "print/units.h"

#include <optional>

namespace pitool {
namespace {

namespace ID = PI::PropertyID;

Style StyleOf(const PI::CDriveProperty& property, const DriveSummary& drive) {
    const Style wear = drive.IsWorn() ? Style::WARNING : Style::PLAIN;
    switch (property.GetID()) {
        case ID::SMART_FLAGGED: return drive.IsFailing() ? Style::FAILING : Style::PLAIN;
        case ID::HEALTH: return drive.IsFailing() ? Style::FAILING : wear;
        case ID::RATED_ENDURANCE_PERCENT: return wear;
        case ID::TEMPERATURE: return drive.ExceededLimit() ? Style::WARNING : Style::PLAIN;
        default: return Style::PLAIN;
    }
}

/// The time left with its range, and the dates where the report bears one.
std::string ForecastText(const PI::CWearForecast& forecast) {
    const auto date = [&forecast](const std::optional<std::uint64_t>& hours) {
        constexpr std::size_t DATE = 10;  // of an ISO 8601 time
        const std::optional<std::int64_t> time = hours ? forecast.GetDate(*hours) : std::nullopt;
        return time ? TimeText(*time).substr(0, DATE) : "";
    };
    const auto low = forecast.GetLow();
    const auto high = forecast.GetHigh();
    std::string text = "worn in " + AgeText(*forecast.GetHours()) +
                       " of power-on time, four times out of five in " + AgeText(*low) +
                       (high ? " to " + AgeText(*high) : " or more");
    if (const std::string day = date(forecast.GetHours()); !day.empty()) {
        const std::string last = date(high);
        text += "; running without a break, about " + day + ", " + date(low) +
                (last.empty() ? " or later" : " to " + last);
    }
    return text + "; by its " + BasisText(forecast.GetBasis());
}

}  // namespace

Style StateStyle(PI::_DRIVE_STATE state) {
    switch (state) {
        case PI::DriveState::FAILED:
        case PI::DriveState::REPLACE: return Style::FAILING;
        case PI::DriveState::LOOK: return Style::WARNING;
        case PI::DriveState::UNKNOWN: return Style::FAINT;
        default: return Style::PLAIN;
    }
}

std::string ValueText(const PI::CDriveProperty& property) {
    if (property.GetState() == PI::FigureState::UNKNOWN) {
        return "";
    }
    const std::optional<std::int64_t> number = property.GetNumber();
    std::string text = number ? std::to_string(*number) : PrintableText(property.GetText());
    if (const std::string_view unit = property.GetUnit(); number && !unit.empty()) {
        constexpr std::int64_t SHORT = 1000;
        const bool isHours = unit == "hours";
        const bool isBytes = unit == "bytes";
        text.append(" ").append(unit, 0, unit.size() - (*number == 1 && (isHours || isBytes) ? 1 : 0));
        if (isHours && *number >= SHORT) {
            text += " (" + AgeText(static_cast<std::uint64_t>(*number)) + ")";
        } else if (isBytes && *number > SHORT) {
            text = SizeText(static_cast<std::uint64_t>(*number)) + " (" + text + ")";
        }
    }
    return text + (property.GetState() == PI::FigureState::DOUBTFUL ? "?" : "");
}

const char* DirectionText(const PI::CDriveProperty& property) {
    constexpr const char* WORDS[] = {"", "up", "down"};
    return WordOf(WORDS, property.GetDirection());
}

Table SheetTable(const DriveSummary& drive, const PI::CDriveReport& report,
                 const PI::CHealthAssessment& health) {
    Table table({{nullptr}, {nullptr}}, Table::LastColumn::WRAPPED);
    const auto add = [&table](std::string_view name, std::string_view text, Style style = Style::PLAIN) {
        table.Add(name);
        table.Add(text, style);
    };
    add("STATE", PI::DriveStateToString(drive.GetState()), StateStyle(drive.GetState()));
    for (const PI::CHealthReason& reason : health.GetReasons()) {
        add("REASON", reason.GetText(), StateStyle(reason.GetState()));
    }
    const PI::CWearForecast forecast = drive.GetForecast();
    if (drive.IsDisk()) {
        add("FORECAST", std::string("not applicable (") + ROTATING + ")", Style::FAINT);
    } else if (!forecast.GetHours()) {
        add("FORECAST", std::string("none (") + forecast.GetReason() + ")", Style::FAINT);
    } else if (forecast.GetState() == PI::WearForecastState::WORN) {
        add("FORECAST", std::string("worn (") + forecast.GetReason() + ")", Style::WARNING);
    } else {
        add("FORECAST", ForecastText(forecast));
    }
    const std::string time = TimeText(drive.GetTime());
    add("REPORTED", time.empty() ? "unknown (not reported)" : time,
        time.empty() ? Style::FAINT : Style::PLAIN);
    add("MODEL", drive.GetModel().empty() ? "unknown (not reported)" : drive.GetModel());
    for (const PI::CDriveProperty& property : PI::DescribeDrive(report, health)) {
        const std::string& reason = property.GetReason();
        if (property.GetState() != PI::FigureState::UNKNOWN) {
            const std::string direction = DirectionText(property);
            add(property.GetName(),
                ValueText(property) + (direction.empty() ? "" : ", counts " + direction) +
                    (property.GetSource().empty() ? "" : "; " + property.GetSource()) +
                    (reason.empty() ? "" : "; doubtful: " + reason),
                StyleOf(property, drive));
        } else if (property.GetID() != 0 || reason != "not reported") {
            add(property.GetName(),
                (property.IsApplicable() ? "unknown (" : "not applicable (") + reason + ")", Style::FAINT);
        }
    }
    for (const std::string& note : report.GetNotes()) {
        add("NOTE", note);
    }
    return table;
}

}  // namespace pitool
