// SPDX-License-Identifier: Apache-2.0

#include <pi/exchange/drive_properties.h>

#include <algorithm>

#include "report_builder.h"

namespace PI {

namespace {

namespace ID = PropertyID;
namespace Value = PropertyValue;
namespace Health = HealthFigure;

constexpr std::int64_t FAILING = 1;       // of VERDICT
constexpr std::int64_t NEARLY_WORN = 90;  // percent; judgement, as where the library says to look at a drive
constexpr std::int64_t WORN_OUT = 100;
constexpr const char* NOT_REPORTED = "not reported";
constexpr const char* ROTATING = "rotating disk";
constexpr const char* NO_VERDICT = "no SMART verdict of the drive";
constexpr const char* VERDICT = "SMART verdict of the drive";

/// Figures of the health under their identifiers.
struct Row {
    _PROPERTY_ID m_ID;
    _HEALTH_FIGURE m_Figure;
    bool m_IsOfSolidState;
};

constexpr Row FIGURES[] = {
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

constexpr _HEALTH_FIGURE FIGURES_WITHOUT_IDENTIFIER[] = {
    Health::HIGHEST_TEMPERATURE,        Health::REALLOCATED_SECTORS,   Health::PENDING_SECTORS,
    Health::UNCORRECTABLE_SECTORS,      Health::INTERFACE_ERRORS,      Health::LOGGED_ERRORS,
    Health::ATTRIBUTES_BELOW_THRESHOLD, Health::ATTRIBUTES_ONCE_BELOW, Health::FAILED_SELF_TESTS,
    Health::CRITICAL_WARNING,           Health::POWER_CYCLES,          Health::UNSAFE_SHUTDOWNS,
};

// In the order of the enumerations' numbers.
constexpr const char* UNITS[] = {"", "percent", "hours", "bytes", "terabytes written", "degrees Celsius", ""};

std::string LifetimeSource(const CRemainingLifetime& estimate, const CHealthFigure& wear) {
    std::string text;
    switch (estimate.GetBasis()) {
        case LifetimeBasis::WEAR:
            text =
                wear.GetSource() == FigureSource::ATA_ATTRIBUTE ? "wear indicator" : "drive's own statistics";
            text += " (" + wear.GetText() + ")";
            break;
        case LifetimeBasis::BYTES_WRITTEN: text = "rated endurance and bytes written"; break;
        default: text = "power-on hours alone";
    }
    switch (estimate.GetLimit()) {
        case LifetimeLimit::SERVICE_SPAN_OVER: return text + "; the service span of five years is over";
        case LifetimeLimit::WORN_OUT:
            return text + (estimate.GetBasis() == LifetimeBasis::WEAR
                               ? "; worn out, only the service span of five years is left"
                               : "; the rated amount is written");
        case LifetimeLimit::WORN_EARLY:
            return text + "; worn faster than aged, only the service span of five years is left";
        case LifetimeLimit::SERVICE_SPAN: return text + "; limited by the service span of five years";
        default: return text;
    }
}

}  // namespace

/// Adds one property after the other.
class CDriveDescriber {
public:
    CDriveDescriber(const CDriveReport& report, const CHealthAssessment& health)
        : m_Report(report),
          m_Health(health),
          m_Verdict(health.GetFigure(Health::VERDICT)),
          m_Wear(health.GetFigure(Health::WEAR)),
          m_IsSolidState(health.GetMedium() == Value::SSD),
          m_IsDisk(!m_IsSolidState && health.GetMediumBasis() != MediumBasis::NOTHING) {}

    std::vector<CDriveProperty> Describe() {
        constexpr std::size_t COUNT = 37;
        m_Properties.reserve(COUNT);
        AddText(ID::OS_DEVICE, m_Report.GetDevice());
        AddText(ID::VENDOR, m_Report.GetVendor(), "the model text does not name it");
        AddText(ID::PRODUCT, m_Report.GetProduct());
        AddText(ID::SERIAL_NUMBER, m_Report.GetCorrectedSerialNumber());
        AddText(ID::FIRMWARE_VERSION, m_Report.GetFirmware());
        AddChoice(ID::PROTOCOL, m_Report.GetTransport(), "the report names none of SATA, SAS and NVMe");
        AddMedium();
        AddRPM();
        AddNumber(ID::PHYSICAL_SIZE, m_Report.GetCapacity(), "bytes");
        AddNumber(ID::BLOCK_SIZE, m_Report.GetBlockSize(), "bytes");
        const int flag = m_Verdict.GetValue() == 0 ? Value::NO : Value::YES;
        AddChoice(ID::SMART_FLAGGED, m_Verdict.HasValue() ? flag : 0, NO_VERDICT);
        AddHealth();
        for (const Row& row : FIGURES) {
            AddFigure(row.m_ID, PropertyIDToString(row.m_ID).c_str(), row.m_Figure);
            NotApplicableIf(row.m_IsOfSolidState && m_IsDisk, ROTATING);
        }
        AddPercentLeft();
        AddLifetime();
        for (const _HEALTH_FIGURE figure : FIGURES_WITHOUT_IDENTIFIER) {
            AddFigure({}, HealthFigureToString(figure), figure);
        }
        return std::move(m_Properties);
    }

private:
    CDriveProperty& Add(_PROPERTY_ID id, const char* name) {
        CDriveProperty& property = m_Properties.emplace_back();
        property.m_ID = id;
        property.m_Name = name;
        return property;
    }

    CDriveProperty& AddText(_PROPERTY_ID id, const std::string& text, const char* reason = NOT_REPORTED) {
        CDriveProperty& property = Add(id, PropertyIDToString(id).c_str());
        property.m_Text = text;
        property.m_Reason = text.empty() ? reason : "";
        return property;
    }

    /// @param value 0 if it is unknown
    CDriveProperty& AddChoice(_PROPERTY_ID id, int value, const char* reason) {
        CDriveProperty& property = AddText(id, value != 0 ? PropertyValueToString(value) : "", reason);
        property.m_Choice = static_cast<_PROPERTY_VALUE>(value);
        return property;
    }

    /// @param number 0 if it is unknown
    CDriveProperty& AddNumber(_PROPERTY_ID id, std::uint64_t number, const char* unit) {
        CDriveProperty& property = AddText(id, "");
        property.m_Unit = unit;
        if (number != 0) {
            property.m_Number = static_cast<std::int64_t>(number);
            property.m_Reason.clear();
        }
        return property;
    }

    CDriveProperty& AddFigure(_PROPERTY_ID id, const char* name, _HEALTH_FIGURE which) {
        CDriveProperty& property = Add(id, name);
        const CHealthFigure figure = m_Health.GetFigure(which);
        property.m_Unit = UNITS[figure.GetUnit()];
        property.m_Direction = figure.GetDirection();
        if (figure.HasValue()) {
            property.m_Number = figure.GetValue();
        }
        if (figure.GetState() != FigureState::KNOWN) {
            property.m_Reason = figure.GetText();
        } else {
            property.m_Source =
                figure.GetSource() == FigureSource::PROGRAM ? "decoded by smartctl" : figure.GetText();
        }
        return property;
    }

    /// The property that was added last.
    void NotApplicableIf(bool isSo, const char* reason) {
        if (isSo) {
            CDriveProperty& property = m_Properties.back();
            property.m_IsApplicable = false;
            property.m_Number.reset();
            property.m_Source.clear();
            property.m_Reason = reason;
        }
    }

    void AddMedium() {
        CDriveProperty& medium = AddChoice(ID::MEDIA_TYPE, m_Health.GetMedium(), "");
        switch (m_Health.GetMediumBasis()) {
            case MediumBasis::NOTHING:
                medium.m_Reason = "not reported, and nothing shows flash memory";
                break;
            case MediumBasis::LISTED: medium.m_Source = "endurance list"; break;
            case MediumBasis::WEAR: medium.m_Source = "it counts wear"; break;
            default: break;
        }
    }

    /// A report that shows no disk gives no speed, so that of the model's rule is a guess.
    void AddRPM() {
        constexpr std::uint32_t RULELESS = 7200;  // what GetSATARPM gives for models that no rule covers
        const bool isATA = m_Report.GetProtocol() == DriveProtocol::ATA;
        const bool isGuess = isATA && m_Report.GetRPM() == 0;
        const std::uint32_t number =
            isGuess ? FindRPM(m_Report.GetVendor(), m_Report.GetProduct()) : m_Report.GetRPM();
        CDriveProperty& rpm = AddNumber(ID::RPM, number, "rotations per minute");
        if (number == 0) {
            rpm.m_Reason =
                isATA ? "not reported, and the model name is too short for the rule" : NOT_REPORTED;
        } else if (m_Report.IsRPMReported()) {
            rpm.m_Source = "reported by the drive";
        } else if (isGuess || number == RULELESS) {
            rpm.m_Reason = number == RULELESS
                               ? "an assumption, since neither the drive nor a rule for its model tells it"
                               : "from the model's rule";
            rpm.m_Reason += isGuess ? ", and the report does not tell that it is a disk" : "";
        } else {
            rpm.m_Source = "from the model's rule; the drive does not report it";
        }
        NotApplicableIf(m_IsSolidState, "solid-state drive");
    }

    /// The drive's word and its wear. A doubtful wear calls no drive worn.
    void AddHealth() {
        const bool isNearEnd = m_Wear.GetValue() >= NEARLY_WORN;
        const bool isWorn = isNearEnd && m_Wear.GetState() == FigureState::KNOWN;
        const int state = m_Verdict.GetValue() == FAILING           ? Value::PREDICTIVE_FAILURE
                          : isWorn && m_Wear.GetValue() >= WORN_OUT ? Value::SMART_WORN_OUT
                          : isWorn                                  ? Value::NEAR_WEARING_OUT
                          : m_Verdict.HasValue()                    ? Value::OK
                                                                    : Value::EMPTY;
        CDriveProperty& health = AddChoice(ID::HEALTH, state, NO_VERDICT);
        if (state == Value::OK && isNearEnd) {
            health.m_Reason = "wear: " + m_Wear.GetText();
        } else if (state != Value::EMPTY) {
            health.m_Source = state == Value::PREDICTIVE_FAILURE || state == Value::OK ? VERDICT : "wear";
        }
    }

    /// What is left of the wear, so that both directions can be read.
    void AddPercentLeft() {
        CDriveProperty& left = AddNumber(ID::ESTIMATED_LIFETIME, 0, "percent");
        left.m_Direction = FigureDirection::DOWN;
        if (m_Wear.HasValue()) {
            left.m_Number = WORN_OUT - std::min(m_Wear.GetValue(), WORN_OUT);
        }
        const bool isKnown = m_Wear.GetState() == FigureState::KNOWN;
        left.m_Source = isKnown ? "100 percent less the wear" : "";
        left.m_Reason = isKnown ? "" : m_Wear.GetText();
        NotApplicableIf(m_IsDisk, ROTATING);
    }

    void AddLifetime() {
        const CRemainingLifetime estimate = m_Health.GetLifetime();
        CDriveProperty& hours =
            AddNumber(ID::REMAINING_HOURS, estimate.IsKnown() ? estimate.GetHours() : 0, "hours");
        hours.m_Direction = FigureDirection::DOWN;
        hours.m_Source = estimate.IsKnown() ? LifetimeSource(estimate, m_Wear) : "";
        hours.m_Reason = m_Health.GetLifetimeReason();
        NotApplicableIf(m_IsDisk, ROTATING);
    }

    const CDriveReport& m_Report;
    const CHealthAssessment& m_Health;
    const CHealthFigure m_Verdict;
    const CHealthFigure m_Wear;
    const bool m_IsSolidState;
    const bool m_IsDisk;  ///< known to be one
    std::vector<CDriveProperty> m_Properties;
};

std::vector<CDriveProperty> DescribeDrive(const CDriveReport& report, const CHealthAssessment& health) {
    return CDriveDescriber(report, health).Describe();
}

}  // namespace PI
