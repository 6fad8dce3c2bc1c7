// SPDX-License-Identifier: Apache-2.0

#include "drive_figures.h"

#include "drive_summary.h"

#include <pi/endurance_rating.h>
#include <pi/plugin_helper.h>
#include <pi/remaining_lifetime.h>
#include <pi/vocabulary.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace pitool {
namespace {

namespace ID = PI::PropertyID;
namespace Value = PI::PropertyValue;
namespace Health = PI::HealthFigure;

constexpr std::int64_t FAILING = 1;  // of VERDICT
constexpr std::int64_t WORN_OUT = 100;
constexpr const char* NO_VERDICT = "no SMART verdict of the drive";
constexpr const char* VERDICT = "SMART verdict of the drive";
constexpr const char* ROTATING = "rotating disk";

/// Figures of the health under their identifiers, in the order shown.
struct Row {
    PI::_PROPERTY_ID m_ID;
    PI::_HEALTH_FIGURE m_Figure;
    bool m_SolidStateOnly;
};

constexpr Row PROPERTIES[] = {
    {ID::TEMPERATURE, Health::TEMPERATURE, false},
    {ID::HIGH_WARNING_TEMPERATURE, Health::TEMPERATURE_LIMIT, false},
    {ID::HIGH_CRITICAL_TEMPERATURE, Health::CRITICAL_TEMPERATURE, false},
    {ID::POWERON_HOURS, Health::POWER_ON_HOURS, false},
    {ID::BYTES_READ, Health::BYTES_READ, false},
    {ID::BYTES_WRITTEN, Health::BYTES_WRITTEN, false},
    {ID::MEDIA_ERROR_COUNT, Health::MEDIA_ERRORS, false},
    {ID::REMAINING_RESERVE_SPACE, Health::SPARE, true},
    {ID::RESERVE_WARNING_THRESHOLD, Health::SPARE_THRESHOLD, true},
    {ID::RATED_ENDURANCE_TB, Health::RATED_TERABYTES, true},
    {ID::RATED_ENDURANCE_PERCENT, Health::WEAR, true},
};

constexpr PI::_HEALTH_FIGURE OTHER_FIGURES[] = {
    Health::HIGHEST_TEMPERATURE,        Health::REALLOCATED_SECTORS,   Health::PENDING_SECTORS,
    Health::UNCORRECTABLE_SECTORS,      Health::INTERFACE_ERRORS,      Health::LOGGED_ERRORS,
    Health::ATTRIBUTES_BELOW_THRESHOLD, Health::ATTRIBUTES_ONCE_BELOW, Health::FAILED_SELF_TESTS,
    Health::CRITICAL_WARNING,           Health::POWER_CYCLES,          Health::UNSAFE_SHUTDOWNS,
};

const char* UnitText(PI::_FIGURE_UNIT unit) {
    switch (unit) {
        case PI::FigureUnit::PERCENT: return "percent";
        case PI::FigureUnit::HOURS: return "hours";
        case PI::FigureUnit::BYTES: return "bytes";
        case PI::FigureUnit::TERABYTES: return "terabytes written";
        case PI::FigureUnit::CELSIUS: return "degrees Celsius";
        default: return "";
    }
}

const char* DirectionText(PI::_FIGURE_DIRECTION direction) {
    switch (direction) {
        case PI::FigureDirection::UP: return "up";
        case PI::FigureDirection::DOWN: return "down";
        default: return "";
    }
}

DriveFigure Named(PI::_PROPERTY_ID id) {
    DriveFigure figure;
    figure.m_Name = PI::PropertyIDToString(id);
    figure.m_ID = id;
    return figure;
}

/// A text; an empty one is unknown.
DriveFigure TextFigure(PI::_PROPERTY_ID id, const std::string& text, const char* reason = NOT_REPORTED) {
    DriveFigure figure = Named(id);
    figure.m_Text = text;
    figure.m_Reason = text.empty() ? reason : "";
    return figure;
}

/// A number; 0 is unknown.
DriveFigure NumberFigure(PI::_PROPERTY_ID id, std::uint64_t number, const char* unit) {
    DriveFigure figure = Named(id);
    figure.m_Unit = unit;
    if (number != 0) {
        figure.m_Number = static_cast<std::int64_t>(std::min<std::uint64_t>(number, INT64_MAX));
    } else {
        figure.m_Reason = NOT_REPORTED;
    }
    return figure;
}

void Fill(const PI::CHealthFigure& health, DriveFigure& figure) {
    figure.m_Unit = UnitText(health.GetUnit());
    figure.m_Counts = DirectionText(health.GetDirection());
    if (health.HasValue()) {
        figure.m_Number = health.GetValue();
    }
    if (health.GetState() != PI::FigureState::KNOWN) {
        figure.m_Reason = health.GetText();
    } else {
        figure.m_Source =
            health.GetSource() == PI::FigureSource::PROGRAM ? "decoded by smartctl" : health.GetText();
    }
}

void MarkNotApplicable(DriveFigure& figure, const char* reason) {
    DriveFigure bare;
    bare.m_Name = figure.m_Name;
    bare.m_ID = figure.m_ID;
    bare.m_Unit = figure.m_Unit;
    bare.m_Counts = figure.m_Counts;
    bare.m_Reason = reason;
    bare.m_Applicable = false;
    figure = std::move(bare);
}

DriveFigure MediumFigure(const PI::CDriveReport& report, int medium) {
    DriveFigure figure = TextFigure(ID::MEDIA_TYPE, PI::PropertyValueToString(medium));
    if (report.GetMedium() != 0) {
        return figure;
    }
    if (medium == Value::HDD) {
        figure.m_Reason = "not reported, and nothing shows flash memory";
    } else {
        figure.m_Source =
            PI::FindEnduranceRating(report.GetModel()).IsListed() ? "endurance list" : "it counts wear";
    }
    return figure;
}

DriveFigure RPMFigure(const PI::CDriveReport& report) {
    unsigned long rpm = report.GetRPM();
    const char* reason = NOT_REPORTED;
    if (rpm == 0 && report.GetProtocol() == PI::DriveProtocol::ATA) {
        try {
            PI::CPluginHelper::GetSATARPM(report.GetVendor(), report.GetProduct(), rpm);
        } catch (const std::out_of_range&) {
            rpm = 0;
            reason = "not reported, and the model name is too short for the rule";
        }
    }
    DriveFigure figure = NumberFigure(ID::RPM, rpm, "rotations per minute");
    if (rpm == 0) {
        figure.m_Reason = reason;
    } else {
        figure.m_Source = report.IsRPMReported() ? "reported by the drive"
                                                 : "from the model's rule; the drive does not report it";
    }
    return figure;
}

DriveFigure FlagFigure(const PI::CHealthFigure& verdict) {
    DriveFigure figure = TextFigure(ID::SMART_FLAGGED, "", NO_VERDICT);
    if (verdict.HasValue()) {
        figure = TextFigure(ID::SMART_FLAGGED,
                            PI::PropertyValueToString(verdict.GetValue() == 0 ? Value::NO : Value::YES));
    }
    figure.m_Style = verdict.GetValue() == FAILING ? Style::FAILING : Style::PLAIN;
    return figure;
}

/// The drive's word and its wear as a state of the vocabulary. A doubtful wear calls no drive worn.
DriveFigure HealthFigure(const PI::CHealthFigure& verdict, const PI::CHealthFigure& wear) {
    const bool isNearEnd = wear.GetValue() >= WORN_PERCENT;
    const auto make = [](int value, const char* source, Style style) {
        DriveFigure figure = TextFigure(ID::HEALTH, PI::PropertyValueToString(value));
        figure.m_Source = source;
        figure.m_Style = style;
        return figure;
    };
    if (verdict.GetValue() == FAILING) {
        return make(Value::PREDICTIVE_FAILURE, VERDICT, Style::FAILING);
    }
    if (wear.GetState() == PI::FigureState::KNOWN && isNearEnd) {
        return make(wear.GetValue() >= WORN_OUT ? Value::SMART_WORN_OUT : Value::NEAR_WEARING_OUT, "wear",
                    Style::WARNING);
    }
    if (!verdict.HasValue()) {
        return TextFigure(ID::HEALTH, "", NO_VERDICT);
    }
    DriveFigure figure = make(Value::OK, isNearEnd ? "" : VERDICT, Style::PLAIN);
    figure.m_Reason = isNearEnd ? "wear: " + wear.GetText() : "";
    return figure;
}

/// What is left of the wear, so that both directions can be read.
DriveFigure PercentLeft(const PI::CHealthFigure& wear) {
    DriveFigure figure = Named(ID::ESTIMATED_LIFETIME);
    figure.m_Unit = UnitText(PI::FigureUnit::PERCENT);
    figure.m_Counts = "down";
    if (wear.HasValue()) {
        figure.m_Number = WORN_OUT - std::min(wear.GetValue(), WORN_OUT);
    }
    if (wear.GetState() == PI::FigureState::KNOWN) {
        figure.m_Source = "100 percent less the wear";
    } else {
        figure.m_Reason = wear.GetText();
    }
    return figure;
}

DriveFigure LifetimeFigure(const Lifetime& lifetime) {
    DriveFigure figure = NumberFigure(ID::REMAINING_HOURS, lifetime.m_Hours.value_or(0), "hours");
    figure.m_Counts = "down";
    figure.m_Source = lifetime.m_Source;
    figure.m_Reason = lifetime.m_Reason;
    return figure;
}

/// A limit as programs read it, and what people are told beside the basis.
struct LimitTexts {
    const char* m_Name;
    const char* m_Text;
};

LimitTexts TextsOf(const PI::CRemainingLifetime& estimate) {
    switch (estimate.GetLimit()) {
        case PI::LifetimeLimit::SERVICE_SPAN_OVER:
            return {"service span over", "; the service span of five years is over"};
        case PI::LifetimeLimit::WORN_OUT:
            return {"worn out", estimate.GetBasis() == PI::LifetimeBasis::WEAR
                                    ? "; worn out, only the service span of five years is left"
                                    : "; the rated amount is written"};
        case PI::LifetimeLimit::WORN_EARLY:
            return {"worn early", "; worn faster than aged, only the service span of five years is left"};
        case PI::LifetimeLimit::SERVICE_SPAN:
            return {"service span", "; limited by the service span of five years"};
        case PI::LifetimeLimit::WEAR: return {"wear", ""};
        case PI::LifetimeLimit::RATE: return {"rate", ""};
        case PI::LifetimeLimit::NOTHING: break;
    }
    return {"", ""};
}

Lifetime NoLifetime(std::string reason) {
    Lifetime lifetime;
    lifetime.m_Reason = std::move(reason);
    return lifetime;
}

/// As DriveSummary::GetLifetime. A doubtful figure makes the estimate doubtful.
Lifetime EstimateLifetime(const DriveSummary& drive, const DecidedHealth& health) {
    if (!drive.IsSolidState()) {
        Lifetime lifetime = NoLifetime(ROTATING);
        lifetime.m_Applicable = false;
        return lifetime;
    }
    const PI::CHealthFigure& wear = health.GetFigure(Health::WEAR);
    const PI::CHealthFigure& written = health.GetFigure(Health::BYTES_WRITTEN);
    const PI::CHealthFigure& rated = health.GetFigure(Health::RATED_TERABYTES);
    const PI::CHealthFigure& hours = health.GetFigure(Health::POWER_ON_HOURS);
    if (!drive.GetLifetime()) {
        if (wear.GetState() != PI::FigureState::KNOWN && !(rated.HasValue() && written.HasValue())) {
            return NoLifetime("wear: " + wear.GetText() +
                              (rated.HasValue() ? "; bytes written: " + written.GetText()
                                                : "; rating: " + rated.GetText()));
        }
        return NoLifetime(hours.HasValue() ? "new drive" : "power-on hours unknown: " + hours.GetText());
    }
    const PI::CRemainingLifetime estimate = *drive.GetLifetime();
    Lifetime lifetime;
    lifetime.m_Hours = estimate.GetHours();
    switch (estimate.GetBasis()) {
        case PI::LifetimeBasis::WEAR:
            lifetime.m_Basis = wear.GetSource() == PI::FigureSource::ATA_ATTRIBUTE ? "wear indicator"
                                                                                   : "drive's own statistics";
            break;
        case PI::LifetimeBasis::BYTES_WRITTEN: lifetime.m_Basis = "rated endurance and bytes written"; break;
        default: lifetime.m_Basis = "power-on hours alone";
    }
    const LimitTexts limit = TextsOf(estimate);
    lifetime.m_Limit = limit.m_Name;
    lifetime.m_Source = lifetime.m_Basis;
    if (estimate.GetBasis() == PI::LifetimeBasis::WEAR) {
        lifetime.m_Source += " (" + wear.GetText() + ")";
    }
    lifetime.m_Source += limit.m_Text;
    const bool isByAmount = estimate.GetBasis() == PI::LifetimeBasis::BYTES_WRITTEN;
    for (const PI::CHealthFigure* figure : {&wear, &hours, &written, &rated}) {
        if (figure->GetState() == PI::FigureState::DOUBTFUL &&
            (isByAmount || figure == &wear || figure == &hours)) {
            lifetime.m_Reason = figure->GetText();
            break;
        }
    }
    return lifetime;
}

/// The time left with its range, and the dates where the report bears one.
SheetLine ForecastLine(const DriveSummary& drive) {
    constexpr std::size_t DATE = 10;  // of an ISO 8601 time
    const PI::CWearForecast forecast = drive.GetForecast();
    if (!drive.IsSolidState() || !forecast.GetHours()) {
        return {"FORECAST",
                drive.IsSolidState() ? std::string("none (") + forecast.GetReason() + ")"
                                     : std::string("not applicable (") + ROTATING + ")",
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

const char* DriveFigure::StateText() const {
    return !HasValue() ? "unknown" : m_Reason.empty() ? "known" : "doubtful";
}

std::string DriveFigure::ValueText() const {
    if (!HasValue()) {
        return "";
    }
    std::string text = m_Number ? std::to_string(*m_Number) : PrintableText(m_Text);
    if (*m_Unit != '\0') {
        const std::string_view unit = m_Unit;
        text += *m_Number == 1 && unit == "hours"   ? " hour"
                : *m_Number == 1 && unit == "bytes" ? " byte"
                                                    : " " + std::string(unit);
        constexpr std::int64_t SHORT = 1000;
        if (unit == "hours" && *m_Number >= SHORT) {
            text += " (" + AgeText(static_cast<std::uint64_t>(*m_Number)) + ")";
        } else if (unit == "bytes" && *m_Number > SHORT) {
            text = SizeText(static_cast<std::uint64_t>(*m_Number)) + " (" + text + ")";
        }
    }
    return m_Reason.empty() ? text : text + "?";
}

DriveFigures FiguresOf(const DriveSummary& drive, const PI::CDriveReport& report,
                       const DecidedHealth& health) {
    const bool isSolidState = drive.IsSolidState();
    const PI::CHealthFigure& verdict = health.GetFigure(Health::VERDICT);
    const PI::CHealthFigure wear =
        isSolidState ? health.GetFigure(Health::WEAR) : PI::CHealthFigure(Health::WEAR);

    DriveFigures all;
    all.m_Lifetime = EstimateLifetime(drive, health);
    std::vector<DriveFigure>& figures = all.m_Properties;
    constexpr std::size_t COUNT = 25;
    figures.reserve(COUNT);
    figures.push_back(TextFigure(ID::OS_DEVICE, report.GetDevice()));
    figures.push_back(TextFigure(ID::VENDOR, report.GetVendor(), "the model text does not name it"));
    figures.push_back(TextFigure(ID::PRODUCT, report.GetProduct()));
    figures.push_back(TextFigure(ID::SERIAL_NUMBER, report.GetCorrectedSerialNumber()));
    figures.push_back(TextFigure(ID::FIRMWARE_VERSION, report.GetFirmware()));
    figures.push_back(TextFigure(
        ID::PROTOCOL, report.GetTransport() != 0 ? PI::PropertyValueToString(report.GetTransport()) : "",
        "the report names none of SATA, SAS and NVMe"));
    figures.push_back(MediumFigure(report, isSolidState ? Value::SSD : Value::HDD));
    figures.push_back(RPMFigure(report));
    if (isSolidState) {
        MarkNotApplicable(figures.back(), "solid-state drive");
    }
    figures.push_back(NumberFigure(ID::PHYSICAL_SIZE, report.GetCapacity(), "bytes"));
    figures.push_back(NumberFigure(ID::BLOCK_SIZE, report.GetBlockSize(), "bytes"));
    figures.push_back(FlagFigure(verdict));
    figures.push_back(HealthFigure(verdict, wear));
    const auto addForSolidState = [&](DriveFigure figure, bool isSolidStateOnly = true) {
        if (isSolidStateOnly && !isSolidState) {
            MarkNotApplicable(figure, ROTATING);
        }
        figures.push_back(std::move(figure));
    };
    for (const Row& row : PROPERTIES) {
        DriveFigure figure = Named(row.m_ID);
        Fill(health.GetFigure(row.m_Figure), figure);
        if ((row.m_Figure == Health::WEAR && drive.IsWorn()) ||
            (row.m_Figure == Health::TEMPERATURE && drive.ExceededLimit())) {
            figure.m_Style = Style::WARNING;
        }
        addForSolidState(std::move(figure), row.m_SolidStateOnly);
    }
    addForSolidState(PercentLeft(wear));
    addForSolidState(LifetimeFigure(all.m_Lifetime));
    all.m_Others.reserve(std::size(OTHER_FIGURES));
    for (const PI::_HEALTH_FIGURE id : OTHER_FIGURES) {
        DriveFigure& figure = all.m_Others.emplace_back();
        figure.m_Name = PI::HealthFigureToString(id);
        Fill(health.GetFigure(id), figure);
    }
    return all;
}

std::vector<SheetLine> SheetOf(const DriveSummary& drive, const PI::CDriveReport& report,
                               const DecidedHealth& health) {
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

const char* BasisText(PI::_WEAR_FORECAST_BASIS basis) {
    switch (basis) {
        case PI::WearForecastBasis::AGE: return "age";
        case PI::WearForecastBasis::RECENT: return "recent pace";
        case PI::WearForecastBasis::BYTES_WRITTEN: return "bytes written";
        case PI::WearForecastBasis::NONE: break;
    }
    return "";
}

}  // namespace pitool
