// SPDX-License-Identifier: Apache-2.0

#include "drive_assessment.h"

#include "drive_identity.h"
#include "drive_wear.h"

#include <algorithm>
#include <utility>

namespace pitool {
namespace {

namespace ID = PI::PropertyID;
namespace Value = PI::PropertyValue;

Fact<int> FindTransport(const DriveReport& report) {
    constexpr std::uint64_t SAS_TRANSPORT = 6;  // SPC, protocol identifier
    switch (report.m_Protocol) {
        case Protocol::NVME: return Known<int>(Value::NVME);
        case Protocol::ATA:
            return report.m_SataSeen ? Known<int>(Value::SATA)
                                     : Unknown<int>("an ATA drive that reports no SATA version");
        case Protocol::SCSI: break;
    }
    return report.m_ScsiTransport == SAS_TRANSPORT
               ? Known<int>(Value::SAS)
               : Unknown<int>(report.m_ScsiTransport ? "a SCSI drive, but not SAS"
                                                     : "a SCSI drive that reports no transport");
}

std::string KindText(const DriveReport& report, const Fact<int>& transport, int medium) {
    const char* command = report.m_Protocol == Protocol::SCSI ? "SCSI" : "ATA";
    return (transport ? PI::PropertyValueToString(*transport) : command) + " " +
           PI::PropertyValueToString(medium);
}

constexpr std::int64_t HOTTEST = 150;

Fact<long> FindTemperature(const DriveReport& report) {
    constexpr std::int64_t COLDEST = -60;
    if (!report.m_Temperature) {
        return Unknown<long>(NOT_REPORTED);
    }
    if (*report.m_Temperature < COLDEST || *report.m_Temperature > HOTTEST) {
        return Unknown<long>("the drive reports " + std::to_string(*report.m_Temperature) +
                             ", no temperature of a drive");
    }
    if (*report.m_Temperature == 0 && report.m_HighestTemperature == 0) {
        return Unknown<long>("the drive has no sensor: it never reported more than 0");
    }
    return Known<long>(*report.m_Temperature);
}

/// A limit of 0 is one that the drive does not have.
std::optional<long> FindTemperatureLimit(const DriveReport& report) {
    const std::int64_t limit = report.m_TemperatureLimit.value_or(0);
    return limit > 0 && limit <= HOTTEST ? std::optional<long>(limit) : std::nullopt;
}

/// Wear as the state of the drive's health.
Fact<int> FindHealth(const DriveReport& report, std::optional<unsigned long> percentUsed) {
    if (report.m_SmartPassed == false) {
        return Known<int>(Value::PREDICTIVE_FAILURE, "SMART verdict of the drive");
    }
    if (percentUsed >= 100UL) {
        return Known<int>(Value::SMART_WORN_OUT, "wear");
    }
    if (percentUsed >= WORN_PERCENT) {
        return Known<int>(Value::NEAR_WEARING_OUT, "wear");
    }
    return report.m_SmartPassed ? Known<int>(Value::OK, "SMART verdict of the drive")
                                : Unknown<int>("no SMART verdict of the drive");
}

Fact<unsigned long> NonZero(const std::optional<std::uint64_t>& value) {
    return value && *value != 0 ? Known<unsigned long>(*value) : Unknown<unsigned long>(NOT_REPORTED);
}

/// What is left of the wear, so that both directions can be read.
Fact<unsigned long> PercentLeft(const Fact<unsigned long>& used) {
    return used ? Known(100 - std::min(*used, 100UL), "100 percent less the wear")
                : Unknown<unsigned long>(used.m_Reason);
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

DriveAssessment AssessDrive(const std::string& file, const DriveReport& report) {
    const DriveIdentity identity = IdentifyDrive(report);
    const DriveWear wear =
        ReadWear(report, identity.m_Vendor.m_Value.value_or(""), identity.m_Product, identity.m_SolidState);
    const Fact<int> transport = FindTransport(report);
    const int medium = identity.m_SolidState ? Value::SSD : Value::HDD;

    DriveAssessment drive;
    drive.m_File = file;
    drive.m_Lifetime = EstimateLifetime(wear, identity.m_SolidState);
    drive.m_PercentUsed = identity.m_SolidState ? wear.m_PercentUsed.m_Value : std::nullopt;
    drive.m_TemperatureLimit = FindTemperatureLimit(report);
    drive.m_Failing = report.m_SmartPassed == false;
    drive.m_Kind = KindText(report, transport, medium);

    const Fact<int> flagged = report.m_SmartPassed
                                  ? Known<int>(*report.m_SmartPassed ? Value::NO : Value::YES)
                                  : Unknown<int>("no SMART verdict of the drive");
    const auto text = [](const std::optional<std::string>& value) { return FromReport(value, NOT_REPORTED); };

    std::vector<Figure>& figures = drive.m_Figures;
    constexpr std::size_t FIGURES = 21;
    figures.reserve(FIGURES);
    figures.push_back(MakeFigure(ID::OS_DEVICE, text(report.m_Device)));
    figures.push_back(MakeFigure(ID::VENDOR, identity.m_Vendor));
    figures.push_back(MakeFigure(ID::PRODUCT, Known(identity.m_Product)));
    figures.push_back(MakeFigure(ID::SERIAL_NUMBER, identity.m_Serial));
    figures.push_back(MakeFigure(ID::FIRMWARE_VERSION, text(report.m_FirmwareVersion)));
    figures.push_back(MakeStateFigure(ID::PROTOCOL, transport, {Value::SATA, Value::SAS, Value::NVME}));
    figures.push_back(MakeStateFigure(ID::MEDIA_TYPE, Known(medium), {Value::HDD, Value::SSD}));
    figures.push_back(MakeFigure(ID::RPM, identity.m_RPM, Unit::ROTATIONS_PER_MINUTE));
    if (identity.m_SolidState) {
        figures.back() = NotApplicable(std::move(figures.back()), "solid-state drive");
    }
    figures.push_back(MakeFigure(ID::PHYSICAL_SIZE, NonZero(report.m_CapacityBytes), Unit::BYTES));
    figures.push_back(MakeFigure(ID::BLOCK_SIZE, NonZero(report.m_BlockSize), Unit::BYTES));
    figures.push_back(MakeStateFigure(ID::SMART_FLAGGED, flagged, {Value::YES, Value::NO}));
    figures.push_back(MakeStateFigure(
        ID::HEALTH, FindHealth(report, drive.m_PercentUsed),
        {Value::OK, Value::NEAR_WEARING_OUT, Value::SMART_WORN_OUT, Value::PREDICTIVE_FAILURE}));
    figures.push_back(MakeFigure(ID::TEMPERATURE, FindTemperature(report), Unit::CELSIUS));
    figures.push_back(MakeFigure(ID::POWERON_HOURS, wear.m_PowerOnHours, Unit::HOURS, Direction::UP));
    figures.push_back(MakeFigure(ID::BYTES_READ, wear.m_BytesRead, Unit::BYTES, Direction::UP));
    figures.push_back(MakeFigure(ID::BYTES_WRITTEN, wear.m_BytesWritten, Unit::BYTES, Direction::UP));

    const std::size_t solidStateFigures = figures.size();
    figures.push_back(MakeFigure(ID::REMAINING_RESERVE_SPACE, wear.m_Spare, Unit::PERCENT, Direction::DOWN));
    figures.push_back(MakeFigure(ID::RATED_ENDURANCE_TB, wear.m_RatedTB, Unit::TERABYTES));
    figures.push_back(
        MakeFigure(ID::RATED_ENDURANCE_PERCENT, wear.m_PercentUsed, Unit::PERCENT, Direction::UP));
    figures.push_back(
        MakeFigure(ID::ESTIMATED_LIFETIME, PercentLeft(wear.m_PercentUsed), Unit::PERCENT, Direction::DOWN));
    figures.push_back(
        MakeFigure(ID::REMAINING_HOURS, drive.m_Lifetime.m_RemainingHours, Unit::HOURS, Direction::DOWN));
    if (!identity.m_SolidState) {
        for (std::size_t i = solidStateFigures; i < figures.size(); ++i) {
            figures[i] = NotApplicable(std::move(figures[i]), "rotating disk");
        }
    }
    return drive;
}

bool IsWorn(const DriveAssessment& drive) {
    return drive.m_PercentUsed >= WORN_PERCENT;
}

bool IsTooHot(const DriveAssessment& drive) {
    const Figure& temperature = FindFigure(drive, ID::TEMPERATURE);
    return temperature.IsKnown() && drive.m_TemperatureLimit &&
           temperature.m_Property.m_Data.m_SignedLong.m_Value > *drive.m_TemperatureLimit;
}

const Figure& FindFigure(const DriveAssessment& drive, PI::_PROPERTY_ID id) {
    return *std::find_if(drive.m_Figures.begin(), drive.m_Figures.end(),
                         [id](const Figure& figure) { return figure.m_Property.m_ID == id; });
}

}  // namespace pitool
