// SPDX-License-Identifier: Apache-2.0

#include "drive_figures.h"

#include "print/units.h"

#include <pi/plugin_helper.h>
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

// In the order of the enumerations' numbers.
constexpr const char* UNITS[] = {"", "percent", "hours", "bytes", "terabytes written", "degrees Celsius", ""};
constexpr const char* DIRECTIONS[] = {"", "up", "down"};
constexpr const char* MEDIUM_SOURCES[] = {"", "", "", "endurance list", "it counts wear"};

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
    figure.m_Unit = WordOf(UNITS, health.GetUnit());
    figure.m_Counts = WordOf(DIRECTIONS, health.GetDirection());
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
    figure.m_Number.reset();
    figure.m_Text.clear();
    figure.m_Source.clear();
    figure.m_Reason = reason;
    figure.m_Applicable = false;
    figure.m_Style = Style::PLAIN;
}

DriveFigure MediumFigure(const PI::CHealthAssessment& health) {
    DriveFigure figure = TextFigure(ID::MEDIA_TYPE, PI::PropertyValueToString(health.GetMedium()));
    figure.m_Source = WordOf(MEDIUM_SOURCES, health.GetMediumBasis());
    if (health.GetMediumBasis() == PI::MediumBasis::NOTHING) {
        figure.m_Reason = "not reported, and nothing shows flash memory";
    }
    return figure;
}

/// Where the report does not even tell that the drive is a disk, the speed that its model would have.
unsigned long GuessRPM(const PI::CDriveReport& report) {
    unsigned long rpm = 0;
    try {
        PI::CPluginHelper::GetSATARPM(report.GetVendor(), report.GetProduct(), rpm);
    } catch (const std::out_of_range&) {
        return 0;  // the name is too short for the rule
    }
    return rpm;
}

DriveFigure RPMFigure(const DriveSummary& drive, const PI::CDriveReport& report) {
    const bool isATA = report.GetProtocol() == PI::DriveProtocol::ATA;
    const bool isGuess = isATA && report.GetRPM() == 0 && !drive.IsDisk() && !drive.IsSolidState();
    DriveFigure figure =
        NumberFigure(ID::RPM, isGuess ? GuessRPM(report) : report.GetRPM(), "rotations per minute");
    if (!figure.m_Number) {
        figure.m_Reason = isATA ? "not reported, and the model name is too short for the rule" : NOT_REPORTED;
    } else if (isGuess) {
        figure.m_Reason = "from the model's rule, and the report does not tell that it is a disk";
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
    figure.m_Unit = UNITS[PI::FigureUnit::PERCENT];
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
    namespace Limit = PI::LifetimeLimit;
    switch (estimate.GetLimit()) {
        case Limit::SERVICE_SPAN_OVER:
            return {"service span over", "; the service span of five years is over"};
        case Limit::WORN_OUT:
            return {"worn out", estimate.GetBasis() == PI::LifetimeBasis::WEAR
                                    ? "; worn out, only the service span of five years is left"
                                    : "; the rated amount is written"};
        case Limit::WORN_EARLY:
            return {"worn early", "; worn faster than aged, only the service span of five years is left"};
        case Limit::SERVICE_SPAN: return {"service span", "; limited by the service span of five years"};
        case Limit::WEAR: return {"wear", ""};
        case Limit::RATE: return {"rate", ""};
        default: return {"", ""};
    }
}

Lifetime LifetimeOf(const DriveSummary& drive, const PI::CHealthAssessment& health) {
    Lifetime lifetime;
    lifetime.m_Applicable = !drive.IsDisk();
    lifetime.m_Reason = health.GetLifetimeReason();
    const PI::CRemainingLifetime estimate = health.GetLifetime();
    if (!estimate.IsKnown()) {
        return lifetime;
    }
    lifetime.m_Hours = estimate.GetHours();
    std::string detail;
    switch (estimate.GetBasis()) {
        case PI::LifetimeBasis::WEAR: {
            const PI::CHealthFigure wear = health.GetFigure(Health::WEAR);
            lifetime.m_Basis = wear.GetSource() == PI::FigureSource::ATA_ATTRIBUTE ? "wear indicator"
                                                                                   : "drive's own statistics";
            detail = " (" + wear.GetText() + ")";
            break;
        }
        case PI::LifetimeBasis::BYTES_WRITTEN: lifetime.m_Basis = "rated endurance and bytes written"; break;
        default: lifetime.m_Basis = "power-on hours alone";
    }
    const LimitTexts limit = TextsOf(estimate);
    lifetime.m_Limit = limit.m_Name;
    lifetime.m_Source = lifetime.m_Basis + detail + limit.m_Text;
    return lifetime;
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
        const bool isHours = unit == UNITS[PI::FigureUnit::HOURS];
        const bool isBytes = unit == UNITS[PI::FigureUnit::BYTES];
        text.append(" ").append(unit, 0, unit.size() - (*m_Number == 1 && (isHours || isBytes) ? 1 : 0));
        constexpr std::int64_t SHORT = 1000;
        if (isHours && *m_Number >= SHORT) {
            text += " (" + AgeText(static_cast<std::uint64_t>(*m_Number)) + ")";
        } else if (isBytes && *m_Number > SHORT) {
            text = SizeText(static_cast<std::uint64_t>(*m_Number)) + " (" + text + ")";
        }
    }
    text += m_Reason.empty() ? "" : "?";
    return text;
}

DriveFigures FiguresOf(const DriveSummary& drive, const PI::CDriveReport& report,
                       const PI::CHealthAssessment& health) {
    const PI::CHealthFigure verdict = health.GetFigure(Health::VERDICT);
    const PI::CHealthFigure wear = health.GetFigure(Health::WEAR);
    DriveFigures all;
    all.m_Lifetime = LifetimeOf(drive, health);
    std::vector<DriveFigure>& figures = all.m_Properties;
    constexpr std::size_t COUNT = 25;
    figures.reserve(COUNT);
    const auto add = [&figures](DriveFigure figure, const char* whyNot = nullptr) {
        if (whyNot != nullptr) {
            MarkNotApplicable(figure, whyNot);
        }
        figures.push_back(std::move(figure));
    };
    const char* const solidStateOnly = drive.IsDisk() ? ROTATING : nullptr;
    add(TextFigure(ID::OS_DEVICE, report.GetDevice()));
    add(TextFigure(ID::VENDOR, report.GetVendor(), "the model text does not name it"));
    add(TextFigure(ID::PRODUCT, report.GetProduct()));
    add(TextFigure(ID::SERIAL_NUMBER, report.GetCorrectedSerialNumber()));
    add(TextFigure(ID::FIRMWARE_VERSION, report.GetFirmware()));
    add(TextFigure(ID::PROTOCOL,
                   report.GetTransport() != 0 ? PI::PropertyValueToString(report.GetTransport()) : "",
                   "the report names none of SATA, SAS and NVMe"));
    add(MediumFigure(health));
    add(RPMFigure(drive, report), drive.IsSolidState() ? "solid-state drive" : nullptr);
    add(NumberFigure(ID::PHYSICAL_SIZE, report.GetCapacity(), "bytes"));
    add(NumberFigure(ID::BLOCK_SIZE, report.GetBlockSize(), "bytes"));
    add(FlagFigure(verdict));
    add(HealthFigure(verdict, wear));
    for (const Row& row : PROPERTIES) {
        DriveFigure figure = Named(row.m_ID);
        Fill(health.GetFigure(row.m_Figure), figure);
        if ((row.m_Figure == Health::WEAR && drive.IsWorn()) ||
            (row.m_Figure == Health::TEMPERATURE && drive.ExceededLimit())) {
            figure.m_Style = Style::WARNING;
        }
        add(std::move(figure), row.m_SolidStateOnly ? solidStateOnly : nullptr);
    }
    add(PercentLeft(wear), solidStateOnly);
    add(LifetimeFigure(all.m_Lifetime), solidStateOnly);
    all.m_Others.reserve(std::size(OTHER_FIGURES));
    for (const PI::_HEALTH_FIGURE id : OTHER_FIGURES) {
        DriveFigure& figure = all.m_Others.emplace_back();
        figure.m_Name = PI::HealthFigureToString(id);
        Fill(health.GetFigure(id), figure);
    }
    return all;
}

}  // namespace pitool
