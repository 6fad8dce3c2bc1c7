// SPDX-License-Identifier: Apache-2.0

#include "drive_assessment.h"

#include <pi/endurance_rating.h>
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

constexpr const char* NO_VERDICT = "no SMART verdict of the drive";
constexpr const char* VERDICT = "SMART verdict of the drive";
constexpr std::int64_t FAILING = 1;

/// The drive's word and its wear as a state of the vocabulary. A doubtful wear calls no drive worn.
Fact<int> FindHealth(const PI::CHealthFigure& verdict, const PI::CHealthFigure& wear) {
    constexpr std::int64_t WORN_OUT = 100;
    const bool isNearEnd = wear.GetValue() >= static_cast<std::int64_t>(WORN_PERCENT);
    if (verdict.GetValue() == FAILING) {
        return Known<int>(Value::PREDICTIVE_FAILURE, VERDICT);
    }
    if (wear.GetState() == PI::FigureState::KNOWN && isNearEnd) {
        return Known<int>(wear.GetValue() >= WORN_OUT ? Value::SMART_WORN_OUT : Value::NEAR_WEARING_OUT,
                          "wear");
    }
    if (!verdict.HasValue()) {
        return Unknown<int>(NO_VERDICT);
    }
    return isNearEnd ? Doubtful<int>(Value::OK, "wear: " + wear.GetText()) : Known<int>(Value::OK, VERDICT);
}

Fact<int> FindFlag(const PI::CHealthFigure& verdict) {
    return verdict.HasValue() ? Known<int>(verdict.GetValue() == 0 ? Value::NO : Value::YES)
                              : Unknown<int>(NO_VERDICT);
}

/// What is left of the wear, so that both directions can be read.
Fact<unsigned long> PercentLeft(const PI::CHealthFigure& wear) {
    const auto left = static_cast<unsigned long>(100 - std::min<std::int64_t>(wear.GetValue(), 100));
    switch (wear.GetState()) {
        case PI::FigureState::KNOWN: return Known(left, "100 percent less the wear");
        case PI::FigureState::DOUBTFUL: return Doubtful(left, wear.GetText());
        case PI::FigureState::UNKNOWN: break;
    }
    return Unknown<unsigned long>(wear.GetText());
}

Fact<std::string> Text(const std::string& text) {
    return text.empty() ? Unknown<std::string>(NOT_REPORTED) : Known(text);
}

Fact<unsigned long> NonZero(unsigned long value) {
    return value != 0 ? Known(value) : Unknown<unsigned long>(NOT_REPORTED);
}

Fact<int> FindTransport(const PI::CDriveReport& report) {
    return report.GetTransport() != 0 ? Known(report.GetTransport())
                                      : Unknown<int>("the report names none of SATA, SAS and NVMe");
}

/// Disks of before 2008 do not say that they rotate.
Fact<int> FindMedium(const PI::CDriveReport& report) {
    if (report.GetMedium() != 0) {
        return Known(report.GetMedium());
    }
    if (PI::FindEnduranceRating(report.GetModel()).IsListed()) {
        return Known<int>(Value::SSD, "endurance list");
    }
    return report.GetHealth().GetFigure(Health::WEAR).HasValue()
               ? Known<int>(Value::SSD, "it counts wear")
               : Doubtful<int>(Value::HDD, "not reported, and nothing shows flash memory");
}

Fact<unsigned long> FindRPM(const PI::CDriveReport& report) {
    if (report.IsRPMReported()) {
        return Known<unsigned long>(report.GetRPM(), "reported by the drive");
    }
    unsigned long rpm = report.GetRPM();
    if (rpm == 0 && report.GetProtocol() == PI::DriveProtocol::ATA) {
        try {
            PI::CPluginHelper::GetSATARPM(report.GetVendor(), report.GetProduct(), rpm);
        } catch (const std::out_of_range&) {
            return Unknown<unsigned long>("not reported, and the model name is too short for the rule");
        }
    }
    return rpm != 0 ? Known(rpm, "from the model's rule; the drive does not report it")
                    : Unknown<unsigned long>(NOT_REPORTED);
}

/// Transport and medium, such as "SATA SSD".
std::string KindText(const PI::CDriveReport& report, int medium) {
    std::string kind;
    if (report.GetTransport() != 0) {
        kind = PI::PropertyValueToString(report.GetTransport()) + " ";
    } else if (report.GetProtocol() != PI::DriveProtocol::UNKNOWN) {
        kind = report.GetProtocol() == PI::DriveProtocol::SCSI ? "SCSI " : "ATA ";
    }
    return kind + PI::PropertyValueToString(medium);
}

/// Marks a figure that drives of this kind do not have.
Figure NotApplicable(Figure figure, const char* reason) {
    figure.m_Property = PI::CProperty(figure.m_Property.m_ID, false);
    figure.m_Source.clear();
    figure.m_Reason = reason;
    figure.m_Applicable = false;
    return figure;
}

}  // namespace

DriveAssessment AssessDrive(const std::string& file, const PI::CDriveReport& report) {
    const PI::CDriveHealth& health = report.GetHealth();
    const Fact<int> medium = FindMedium(report);
    const bool solidState = *medium == Value::SSD;
    const PI::CHealthFigure verdict = health.GetFigure(Health::VERDICT);
    DriveAssessment drive;
    drive.m_File = file;
    drive.m_Kind = KindText(report, *medium);
    drive.m_Notes = report.GetNotes();
    drive.m_State = health.GetState();
    drive.m_Reasons = health.GetReasons();
    drive.m_Lifetime = EstimateLifetime(health, solidState);
    drive.m_Wear = solidState ? health.GetFigure(Health::WEAR) : PI::CHealthFigure(Health::WEAR);
    drive.m_Failing = verdict.GetValue() == FAILING;

    std::vector<Figure>& figures = drive.m_Figures;
    constexpr std::size_t FIGURES = 25;
    figures.reserve(FIGURES);
    const auto addForSolidState = [&figures, solidState](Figure figure) {
        figures.push_back(solidState ? std::move(figure) : NotApplicable(std::move(figure), "rotating disk"));
    };
    figures.push_back(MakeFigure(ID::OS_DEVICE, Text(report.GetDevice())));
    figures.push_back(MakeFigure(ID::VENDOR, report.GetVendor().empty()
                                                 ? Unknown<std::string>("the model text does not name it")
                                                 : Known(report.GetVendor())));
    figures.push_back(MakeFigure(ID::PRODUCT, Text(report.GetProduct())));
    figures.push_back(MakeFigure(ID::SERIAL_NUMBER, Text(report.GetCorrectedSerialNumber())));
    figures.push_back(MakeFigure(ID::FIRMWARE_VERSION, Text(report.GetFirmware())));
    figures.push_back(
        MakeStateFigure(ID::PROTOCOL, FindTransport(report), {Value::SATA, Value::SAS, Value::NVME}));
    figures.push_back(MakeStateFigure(ID::MEDIA_TYPE, medium, {Value::HDD, Value::SSD}));
    figures.push_back(MakeFigure(ID::RPM, FindRPM(report), Unit::ROTATIONS_PER_MINUTE));
    if (solidState) {
        figures.back() = NotApplicable(std::move(figures.back()), "solid-state drive");
    }
    figures.push_back(MakeFigure(ID::PHYSICAL_SIZE, NonZero(report.GetCapacity()), Unit::BYTES));
    figures.push_back(MakeFigure(ID::BLOCK_SIZE, NonZero(report.GetBlockSize()), Unit::BYTES));
    figures.push_back(MakeStateFigure(ID::SMART_FLAGGED, FindFlag(verdict), {Value::YES, Value::NO}));
    figures.push_back(MakeStateFigure(
        ID::HEALTH, FindHealth(verdict, drive.m_Wear),
        {Value::OK, Value::NEAR_WEARING_OUT, Value::SMART_WORN_OUT, Value::PREDICTIVE_FAILURE}));
    for (const Row& row : PROPERTIES) {
        Figure figure = MakeFigure(row.m_ID, health.GetFigure(row.m_Figure));
        if (row.m_SolidStateOnly) {
            addForSolidState(std::move(figure));
        } else {
            figures.push_back(std::move(figure));
        }
    }
    addForSolidState(
        MakeFigure(ID::ESTIMATED_LIFETIME, PercentLeft(drive.m_Wear), Unit::PERCENT, Direction::DOWN));
    addForSolidState(
        MakeFigure(ID::REMAINING_HOURS, drive.m_Lifetime.m_RemainingHours, Unit::HOURS, Direction::DOWN));
    for (const PI::_HEALTH_FIGURE figure : OTHER_FIGURES) {
        drive.m_OtherFigures.push_back(MakeFigure(health.GetFigure(figure)));
    }
    return drive;
}

bool IsWorn(const DriveAssessment& drive) {
    return drive.m_Wear.GetState() == PI::FigureState::KNOWN &&
           drive.m_Wear.GetValue() >= static_cast<std::int64_t>(WORN_PERCENT);
}

std::optional<long> ExceededLimit(const DriveAssessment& drive) {
    const auto degrees = [&drive](PI::_PROPERTY_ID id) {
        const Figure& figure = FindFigure(drive, id);
        return figure.IsKnown() ? std::optional<long>(figure.m_Property.m_Data.m_SignedLong.m_Value)
                                : std::nullopt;
    };
    const std::optional<long> temperature = degrees(ID::TEMPERATURE);
    for (const PI::_PROPERTY_ID id : {ID::HIGH_WARNING_TEMPERATURE, ID::HIGH_CRITICAL_TEMPERATURE}) {
        const std::optional<long> limit = degrees(id);
        if (temperature && limit && *temperature > *limit) {
            return limit;
        }
    }
    return std::nullopt;
}

const Figure& FindFigure(const DriveAssessment& drive, PI::_PROPERTY_ID id) {
    return *std::find_if(drive.m_Figures.begin(), drive.m_Figures.end(),
                         [id](const Figure& figure) { return figure.m_Property.m_ID == id; });
}

}  // namespace pitool
