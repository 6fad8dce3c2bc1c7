// SPDX-License-Identifier: Apache-2.0

#include "drive_wear.h"

#include "wear_attributes.h"

#include <pi/drives.h>
#include <pi/endurance_rating.h>
#include <pi/plugin_helper.h>

#include <algorithm>
#include <limits>

namespace pitool {
namespace {

constexpr const char* NO_SMART_DATA = "no SMART data";
constexpr const char* NOT_LISTED = "not in the endurance list";

std::string Attribute(std::uint8_t id) {
    return "SMART attribute " + std::to_string(id);
}

/// The attribute that counts: of two with the same number the later one, as on the page.
const SmartAttribute* FindAttribute(const DriveReport& report, std::uint8_t id) {
    const auto found = std::find_if(report.m_Attributes.rbegin(), report.m_Attributes.rend(),
                                    [id](const SmartAttribute& attribute) { return attribute.m_ID == id; });
    return found != report.m_Attributes.rend() ? &*found : nullptr;
}

const WearAttributes* FindFamily(const PI::CSmartValues& values) {
    for (const WearAttributes& family : WEAR_ATTRIBUTES) {
        if (values.m_Vendor == family.m_Vendor && values.m_GroupFlag == family.m_GroupFlag) {
            return &family;
        }
    }
    return nullptr;
}

/// The hours that smartctl makes out, else those of attribute 9. Some drives pack more into its raw value.
Fact<unsigned long> ReadHours(const DriveReport& report) {
    constexpr std::uint8_t POWER_ON_HOURS = 9;
    const SmartAttribute* attribute =
        report.m_Protocol == Protocol::ATA ? FindAttribute(report, POWER_ON_HOURS) : nullptr;
    if (report.m_PowerOnHours && *report.m_PowerOnHours <= MAX_HOURS) {
        const bool differs = attribute != nullptr && attribute->m_Raw != *report.m_PowerOnHours;
        return Known<unsigned long>(*report.m_PowerOnHours,
                                    differs ? "reported by smartctl; the raw value of attribute 9 is " +
                                                  std::to_string(attribute->m_Raw)
                                            : "");
    }
    if (attribute != nullptr && attribute->m_Raw <= MAX_HOURS) {
        return Known<unsigned long>(attribute->m_Raw, Attribute(POWER_ON_HOURS));
    }
    return Unknown<unsigned long>(report.m_PowerOnHours || attribute != nullptr
                                      ? "the figure reported is no count of hours"
                                      : NOT_REPORTED);
}

Fact<unsigned long> ReadWritten(const DriveReport& report, const WearAttributes& family,
                                const PI::CSmartValues& values) {
    const SmartAttribute* attribute = FindAttribute(report, family.m_Written);
    if (attribute == nullptr) {
        return Unknown<unsigned long>("no " + Attribute(family.m_Written));
    }
    if (attribute->m_Raw > std::numeric_limits<std::uint64_t>::max() / family.m_WrittenUnit) {
        return Unknown<unsigned long>(Attribute(family.m_Written) + " is beyond 64 bits of bytes");
    }
    return Known<unsigned long>(values.m_BytesWritten, Attribute(family.m_Written));
}

/// A percentage that a drive counts down; anything above 100 is none.
Fact<unsigned long> ReadPercent(unsigned long value, const std::string& source) {
    return value <= 100
               ? Known(value, source)
               : Unknown<unsigned long>(source + " holds " + std::to_string(value) + ", no percentage");
}

Fact<unsigned long> ReadSpare(const DriveReport& report, const WearAttributes& family,
                              const PI::CSmartValues& values) {
    if (family.m_Spare == 0) {
        return Unknown<unsigned long>("drives of this family do not report it");
    }
    if (FindAttribute(report, family.m_Spare) == nullptr) {
        return Unknown<unsigned long>("no " + Attribute(family.m_Spare));
    }
    return ReadPercent(static_cast<unsigned long>(values.m_SpareIndicator), Attribute(family.m_Spare));
}

Fact<unsigned long> ReadPercentUsed(const DriveReport& report, const WearAttributes& family,
                                    const PI::CSmartValues& values, std::uint64_t ratedCycles) {
    const SmartAttribute* attribute = FindAttribute(report, family.m_Wear);
    const std::string name = Attribute(family.m_Wear);
    if (attribute == nullptr) {
        return Unknown<unsigned long>("no " + name);
    }
    // A current value above 100 makes the figure negative; the estimate would take that for worn out.
    if (values.m_PercentUsed < 0) {
        return Unknown<unsigned long>(name + " has the current value " +
                                      std::to_string(attribute->m_Current) + ", above 100");
    }
    return Known<unsigned long>(static_cast<unsigned long>(values.m_PercentUsed),
                                family.m_WearIsCurrent
                                    ? name + ", whose value counts down from 100"
                                    : name + ", which counts up to " + std::to_string(ratedCycles));
}

/// The figures that the drive's SMART page holds, for a listed model.
void ReadPage(const DriveReport& report, const std::string& vendor, const std::string& product,
              DriveWear& wear) {
    PI::CSmartValues values(vendor, product);
    const std::uint64_t rated = values.m_Endurance;
    PI::_IDE_SMART_DATA page = BuildSmartPage(report.m_AttributeRevision, report.m_Attributes);
    const WearAttributes* family = FindFamily(values);
    if (!values.Evaluate(page) || family == nullptr) {
        return;
    }
    wear.m_BytesWritten = ReadWritten(report, *family, values);
    wear.m_Spare = ReadSpare(report, *family, values);
    wear.m_PercentUsed = ReadPercentUsed(report, *family, values, rated);
    if (wear.m_PercentUsed) {
        wear.m_Origin = WearOrigin::SMART_ATTRIBUTE;
    }
}

const char* StatisticsName(Protocol protocol) {
    switch (protocol) {
        case Protocol::NVME: return "NVMe health log";
        case Protocol::SCSI: return "SCSI log pages";
        case Protocol::ATA: break;
    }
    return "ATA device statistics";
}

/// Fills what is still unknown from the drive's statistics.
void ReadStatistics(const DriveReport& report, DriveWear& wear) {
    const std::string source = StatisticsName(report.m_Protocol);
    if (!wear.m_BytesWritten && report.m_StatisticsWritten) {
        wear.m_BytesWritten = Known<unsigned long>(*report.m_StatisticsWritten, source);
    }
    if (!wear.m_BytesRead && report.m_StatisticsRead) {
        wear.m_BytesRead = Known<unsigned long>(*report.m_StatisticsRead, source);
    }
    if (!wear.m_Spare && report.m_AvailableSpare) {
        wear.m_Spare = ReadPercent(*report.m_AvailableSpare, source);
    }
    if (!wear.m_PercentUsed && report.m_PercentUsed) {
        wear.m_PercentUsed = Known<unsigned long>(*report.m_PercentUsed, source);
        wear.m_Origin = WearOrigin::DRIVE_STATISTICS;
    }
}

/// Why a figure is unknown that neither page nor statistics tell.
const char* ReasonWithoutPage(const DriveReport& report, bool isPageKnown, bool solidState) {
    if (report.m_Protocol != Protocol::ATA || !solidState) {
        return NOT_REPORTED;
    }
    if (!report.m_HasAttributes) {
        return NO_SMART_DATA;
    }
    return isPageKnown ? NOT_REPORTED : NOT_LISTED;
}

/// The rating as the estimate may use it. The InnoDisk figure is what the wear attribute counts up to.
Fact<unsigned long> ReadRating(const std::string& product) {
    const PI::CEnduranceRating rating = PI::FindEnduranceRating(product);
    if (rating.GetEraseCycles()) {
        return Unknown<unsigned long>("the list rates this family by wear cycles, " +
                                      std::to_string(*rating.GetEraseCycles()));
    }
    if (!rating.GetTerabytes()) {
        return Unknown<unsigned long>(NOT_LISTED);
    }
    return Known<unsigned long>(*rating.GetTerabytes(),
                                rating.IsDoubtful()
                                    ? "endurance list; another source says " +
                                          std::to_string(*rating.GetContradictingTerabytes()) + " TB"
                                    : "endurance list");
}

}  // namespace

DriveWear ReadWear(const DriveReport& report, const std::string& vendor, const std::string& product,
                   bool solidState) {
    DriveWear wear;
    const bool isPageKnown =
        report.m_Protocol == Protocol::ATA && PI::CPluginHelper::findLifeTimeProp(product) != nullptr;
    wear.m_PowerOnHours = ReadHours(report);
    wear.m_BytesRead = Unknown<unsigned long>(NOT_REPORTED);
    wear.m_BytesWritten = wear.m_Spare = wear.m_PercentUsed =
        Unknown<unsigned long>(ReasonWithoutPage(report, isPageKnown, solidState));
    wear.m_RatedTB = ReadRating(product);
    if (isPageKnown && report.m_HasAttributes) {
        ReadPage(report, vendor, product, wear);
    }
    ReadStatistics(report, wear);
    return wear;
}

}  // namespace pitool
