// SPDX-License-Identifier: Apache-2.0

#include <pi/exchange/drive_properties.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "exchange/read_report.h"

using namespace PI;
using namespace PI::Test;

namespace {

using Json = nlohmann::json;

std::vector<CDriveProperty> Describe(const Json& json) {
    const CDriveReport report = ReadDrive(json.dump());
    return DescribeDrive(report, CHealthAssessment(report.GetHealth()));
}

CDriveProperty Property(const Json& json, const std::string& name) {
    const std::vector<CDriveProperty> properties = Describe(json);
    return *std::find_if(properties.begin(), properties.end(),
                         [&name](const CDriveProperty& each) { return each.GetName() == name; });
}

/// Such as "5 percent; NVMe log 02h", "unknown (not reported)"; with a question mark when doubtful.
std::string Told(const Json& json, const std::string& name) {
    const CDriveProperty property = Property(json, name);
    if (property.GetState() == FigureState::UNKNOWN) {
        EXPECT_FALSE(property.GetNumber() || !property.GetText().empty() || property.GetChoice() != 0);
        EXPECT_EQ(property.GetSource(), "");
        return (property.IsApplicable() ? "unknown (" : "not applicable (") + property.GetReason() + ")";
    }
    EXPECT_TRUE(property.IsApplicable());
    EXPECT_EQ(property.GetState() == FigureState::KNOWN, property.GetReason().empty());
    EXPECT_NE(property.GetNumber().has_value(), !property.GetText().empty());
    EXPECT_EQ(property.GetChoice() != 0 ? PropertyValueToString(property.GetChoice()) : property.GetText(),
              property.GetText());
    const std::string unit = property.GetUnit();
    return (property.GetNumber() ? std::to_string(*property.GetNumber()) : property.GetText()) +
           (unit.empty() ? "" : " " + unit) +
           (property.GetSource().empty() ? "" : "; " + property.GetSource()) +
           (property.GetReason().empty() ? "" : "? " + property.GetReason());
}

/// The least that is a report.
Json Report(const char* protocol, const char* model = "SAMPLE") {
    return {{"device", {{"name", "/dev/sdx"}, {"protocol", protocol}}}, {"model_name", model}};
}

Json Attribute(int id, int current, int raw) {
    return {{"id", id}, {"value", current}, {"worst", current}, {"raw", {{"value", raw}}}};
}

constexpr std::uint64_t TEBIBYTE = std::uint64_t{1} << 40U;
constexpr const char* RATED = "MZ7LH960HAJR-00005";         // 1366 TB
constexpr const char* CONTRADICTED = "MZ7KM120HAFD-00005";  // 7593 TB or 2626 TB
constexpr const char* UNRATED = "SAMPLE";

Json WornTo(int percentUsed, const char* model = UNRATED) {
    Json json = Report("NVMe", model);
    json["nvme_smart_health_information_log"]["percentage_used"] = percentUsed;
    return json;
}

/// A solid-state drive that tells all of this itself.
Json Drive(const char* model, std::uint64_t hours, std::uint64_t bytesWritten, int percentUsed) {
    Json json = WornTo(percentUsed, model);
    json["nvme_smart_health_information_log"]["power_on_hours"] = hours;
    json["nvme_smart_health_information_log"]["data_units_written"] = (bytesWritten + 511999) / 512000;
    return json;
}

std::string Lifetime(const Json& json) {
    return Told(json, "REMAINING_HOURS");
}

}  // namespace

TEST(DescribeDrive, HasTheSamePropertiesInTheSameOrderForEveryDrive) {
    const std::string names =
        "OS_DEVICE VENDOR PRODUCT SERIAL_NUMBER FIRMWARE_VERSION PROTOCOL MEDIA_TYPE RPM PHYSICAL_SIZE "
        "BLOCK_SIZE SMART_FLAGGED HEALTH TEMPERATURE HIGH_WARNING_TEMPERATURE HIGH_CRITICAL_TEMPERATURE "
        "POWERON_HOURS BYTES_READ BYTES_WRITTEN MEDIA_ERROR_COUNT REMAINING_RESERVE_SPACE "
        "RESERVE_WARNING_THRESHOLD RATED_ENDURANCE_TB RATED_ENDURANCE_PERCENT ESTIMATED_LIFETIME "
        "REMAINING_HOURS HIGHEST_TEMPERATURE REALLOCATED_SECTORS PENDING_SECTORS UNCORRECTABLE_SECTORS "
        "INTERFACE_ERRORS LOGGED_ERRORS ATTRIBUTES_BELOW_THRESHOLD ATTRIBUTES_ONCE_BELOW FAILED_SELF_TESTS "
        "CRITICAL_WARNING POWER_CYCLES UNSAFE_SHUTDOWNS ";
    for (const char* protocol : {"ATA", "NVMe", "SCSI"}) {
        std::string all;
        bool isNamed = true;
        for (const CDriveProperty& property : Describe(Report(protocol))) {
            all += property.GetName() + std::string(" ");
            isNamed = isNamed && all.find("HIGHEST") == std::string::npos;
            EXPECT_EQ(property.GetID() != 0, isNamed) << property.GetName();
            EXPECT_EQ(isNamed ? PropertyIDToString(property.GetID()) : property.GetName(),
                      property.GetName());
            EXPECT_TRUE(property.GetState() != FigureState::UNKNOWN || !property.GetReason().empty())
                << protocol << property.GetName();
        }
        EXPECT_EQ(all, names) << protocol;
    }
}

TEST(DescribeDrive, FiguresHaveTheirUnitAndDirectionWhereTheyAreUnknownToo) {
    const auto kind = [](const char* name) {
        const CDriveProperty property = Property(Report("ATA"), name);
        return property.GetUnit() + std::string(" ") + std::to_string(property.GetDirection());
    };
    EXPECT_EQ(kind("POWERON_HOURS"), "hours 1");
    EXPECT_EQ(kind("BYTES_WRITTEN"), "bytes 1");
    EXPECT_EQ(kind("TEMPERATURE"), "degrees Celsius 0");
    EXPECT_EQ(kind("RATED_ENDURANCE_TB"), "terabytes written 0");
    EXPECT_EQ(kind("RATED_ENDURANCE_PERCENT"), "percent 1");
    EXPECT_EQ(kind("ESTIMATED_LIFETIME"), "percent 2");
    EXPECT_EQ(kind("REMAINING_HOURS"), "hours 2");
    EXPECT_EQ(kind("RPM"), "rotations per minute 0");
    EXPECT_EQ(kind("PHYSICAL_SIZE"), "bytes 0");
    EXPECT_EQ(kind("REALLOCATED_SECTORS"), " 1");
    EXPECT_EQ(kind("CRITICAL_WARNING"), " 0");
}

TEST(DescribeDrive, TheTransportIsKnownOnlyWhenTheReportTells) {
    const char* UNNAMED = "unknown (the report names none of SATA, SAS and NVMe)";
    Json json = Report("ATA");
    EXPECT_EQ(Told(json, "PROTOCOL"), UNNAMED);
    json["interface_speed"]["max"]["string"] = "6.0 Gb/s";
    EXPECT_EQ(Told(json, "PROTOCOL"), "SATA");
    json["device"]["protocol"] = "NVMe";
    EXPECT_EQ(Told(json, "PROTOCOL"), "NVME");
    json["device"]["protocol"] = "SCSI";
    EXPECT_EQ(Told(json, "PROTOCOL"), UNNAMED);
    json["scsi_transport_protocol"]["value"] = 6;
    EXPECT_EQ(Told(json, "PROTOCOL"), "SAS");
    json["scsi_transport_protocol"]["value"] = 0;
    EXPECT_EQ(Told(json, "PROTOCOL"), UNNAMED);
}

TEST(DescribeDrive, AMediumThatIsNotReportedFollowsFromOtherSigns) {
    Json json = Report("ATA");
    EXPECT_EQ(Told(json, "MEDIA_TYPE"), "HDD? not reported, and nothing shows flash memory");
    EXPECT_EQ(Told(Report("ATA", "INTEL SSDSC2BB480G7"), "MEDIA_TYPE"), "SSD; endurance list");
    json["endurance_used"]["current_percent"] = 0;
    EXPECT_EQ(Told(json, "MEDIA_TYPE"), "SSD; it counts wear");
    json["rotation_rate"] = 5400;
    EXPECT_EQ(Told(json, "MEDIA_TYPE"), "HDD");
    json["rotation_rate"] = 0;
    EXPECT_EQ(Told(json, "MEDIA_TYPE"), "SSD");
}

TEST(DescribeDrive, TheReportedRotationSpeedGoesBeforeTheRule) {
    Json json = Report("ATA", "WDC WD1500HLFS-01G6U0");
    EXPECT_EQ(Told(json, "RPM"),
              "10000 rotations per minute? from the model's rule, and the report does not tell that it is a "
              "disk");
    json["ata_smart_attributes"]["table"] = Json::array({Attribute(3, 100, 5)});
    EXPECT_EQ(Told(json, "RPM"),
              "10000 rotations per minute; from the model's rule; the drive does not report it");
    json["rotation_rate"] = 5400;
    EXPECT_EQ(Told(json, "RPM"), "5400 rotations per minute; reported by the drive");
    EXPECT_EQ(Told(Report("ATA", "HGST AB"), "RPM"),
              "unknown (not reported, and the model name is too short for the rule)");
    Json scsi = Report("SCSI", "HITACHI H109060");
    EXPECT_EQ(Told(scsi, "RPM"), "unknown (not reported)");
}

TEST(DescribeDrive, TheRotationSpeedOfAModelThatNoRuleCoversIsDoubtful) {
    for (const char* model :
         {"SAMPLE", "WDC WD10EZEX-08WN4A0", "HGST HDS721010DLE630", "ST500LT012-1DG142"}) {
        Json json = Report("ATA", model);
        EXPECT_EQ(Told(json, "RPM"),
                  "7200 rotations per minute? an assumption, since neither the drive nor a rule for its "
                  "model tells it, and "
                  "the report does not tell that it is a disk");
        json["ata_smart_attributes"]["table"] = Json::array({Attribute(3, 100, 5)});
        EXPECT_EQ(Told(json, "RPM"),
                  "7200 rotations per minute? an assumption, since neither the drive nor a rule for its "
                  "model tells it");
        json["rotation_rate"] = 7200;
        EXPECT_EQ(Told(json, "RPM"), "7200 rotations per minute; reported by the drive");
    }
}

TEST(DescribeDrive, HealthIsTheWorstOfVerdictAndWear) {
    const auto health = [](const Json& verdict, int percentUsed) {
        Json json = WornTo(percentUsed);
        if (!verdict.is_null()) {
            json["smart_status"]["passed"] = verdict;
        }
        return Told(json, "HEALTH");
    };
    const std::string unknown = "unknown (no SMART verdict of the drive)";
    EXPECT_EQ(health(true, 0), "OK; SMART verdict of the drive");
    EXPECT_EQ(health(true, 89), "OK; SMART verdict of the drive");
    EXPECT_EQ(health(true, 90), "NEAR_WEARING_OUT; wear");
    EXPECT_EQ(health(true, 99), "NEAR_WEARING_OUT; wear");
    EXPECT_EQ(health(true, 100), "SMART_WORN_OUT; wear");
    EXPECT_EQ(health(true, 254), "SMART_WORN_OUT; wear");
    EXPECT_EQ(health(true, 255),
              "OK? wear: NVMe log 02h says 255 percent, which stands for more than 254 or for nothing");
    EXPECT_EQ(health(false, 100), "PREDICTIVE_FAILURE; SMART verdict of the drive");
    EXPECT_EQ(health(nullptr, 90), "NEAR_WEARING_OUT; wear");
    EXPECT_EQ(health(nullptr, 89), unknown);
    EXPECT_EQ(health(nullptr, 255), unknown);
    EXPECT_EQ(Told(Report("ATA"), "HEALTH"), unknown);
    EXPECT_EQ(Told(Report("ATA"), "SMART_FLAGGED"), unknown);
    EXPECT_EQ(Property(WornTo(90), "HEALTH").GetChoice(), PropertyValue::NEAR_WEARING_OUT);
}

TEST(DescribeDrive, AWarningAboutTheTemperatureIsNoFailure) {
    Json json = Report("NVMe");
    json["smart_status"]["passed"] = false;  // as smartctl has it for every warning
    json["nvme_smart_health_information_log"]["critical_warning"] = 2;
    EXPECT_EQ(Told(json, "SMART_FLAGGED"), "YES");
    EXPECT_EQ(Told(json, "HEALTH"), "OK; SMART verdict of the drive");
    json["nvme_smart_health_information_log"]["critical_warning"] = 4;
    EXPECT_EQ(Told(json, "HEALTH"), "PREDICTIVE_FAILURE; SMART verdict of the drive");
}

TEST(DescribeDrive, TheLifetimeInPercentIsWhatTheWearLeaves) {
    const auto left = [](int percentUsed) { return Told(WornTo(percentUsed), "ESTIMATED_LIFETIME"); };
    EXPECT_EQ(left(0), "100 percent; 100 percent less the wear");
    EXPECT_EQ(left(100), "0 percent; 100 percent less the wear");
    EXPECT_EQ(left(101), "0 percent; 100 percent less the wear");
    EXPECT_EQ(left(255),
              "0 percent? NVMe log 02h says 255 percent, which stands for more than 254 or for nothing");
}

TEST(DescribeDrive, ACapacityOfZeroIsUnknown) {
    Json json = Report("ATA");
    json["user_capacity"]["bytes"] = 0;
    EXPECT_EQ(Told(json, "PHYSICAL_SIZE"), "unknown (not reported)");
    json["user_capacity"]["bytes"] = 1000000;
    EXPECT_EQ(Told(json, "PHYSICAL_SIZE"), "1000000 bytes");
}

TEST(DescribeDrive, FiguresThatOnlySolidStateHasDoNotApplyToDisks) {
    Json json = Drive(RATED, 10000, 0, 50);
    json["rotation_rate"] = 7200;
    for (const char* name : {"REMAINING_RESERVE_SPACE", "RESERVE_WARNING_THRESHOLD", "RATED_ENDURANCE_TB",
                             "RATED_ENDURANCE_PERCENT", "ESTIMATED_LIFETIME", "REMAINING_HOURS"}) {
        EXPECT_EQ(Told(json, name), "not applicable (rotating disk)");
    }
    EXPECT_EQ(Told(WornTo(5), "RPM"), "not applicable (solid-state drive)");
    json = Report("ATA", "WDC WD1500HLFS-01G6U0");
    json["rotation_rate"] = 0;
    EXPECT_EQ(Told(json, "RPM"), "not applicable (solid-state drive)");
}

TEST(DescribeDrive, WhatMayBeADiskIsToldNothingThatHoldsForDisksAlone) {
    const Json json = Report("ATA");
    EXPECT_EQ(Told(json, "REMAINING_RESERVE_SPACE"), "unknown (not reported)");
    EXPECT_EQ(Told(json, "RATED_ENDURANCE_TB"), "unknown (not in the endurance list)");
    EXPECT_EQ(Told(json, "RATED_ENDURANCE_PERCENT"), "unknown (not reported)");
    EXPECT_EQ(Told(json, "ESTIMATED_LIFETIME"), "unknown (not reported)");
    EXPECT_EQ(Lifetime(json), "unknown (wear: not reported; rating: not in the endurance list)");
}

TEST(DescribeDrive, WhatSmartctlDecodedIsSaidToBeItsWord) {
    Json json = Report("ATA");
    json["power_on_time"]["hours"] = 5;
    EXPECT_EQ(Told(json, "POWERON_HOURS"), "5 hours; decoded by smartctl");
}

TEST(DescribeDrive, TheLifetimeSaysItsBasisAndWhatLimitsIt) {
    const std::string own = " hours; drive's own statistics (NVMe log 02h)";
    EXPECT_EQ(Lifetime(Drive(UNRATED, 10000, 0, 12)), "28569" + own) << "43829 * 88 / 100 - 10000";
    EXPECT_EQ(Lifetime(Drive(UNRATED, 438, 0, 99)), "1" + own);
    EXPECT_EQ(Lifetime(Drive(UNRATED, 439, 0, 99)),
              "43390" + own + "; worn faster than aged, only the service span of five years is left");
    for (const int worn : {100, 254}) {
        EXPECT_EQ(Lifetime(Drive(UNRATED, 30000, 0, worn)),
                  "13829" + own + "; worn out, only the service span of five years is left");
    }
    EXPECT_EQ(Lifetime(Drive(UNRATED, 43829, 0, 5)), "1" + own + "; the service span of five years is over");
    Json json = Report("ATA", "INTEL SSDSC2BB480G7");
    json["power_on_time"]["hours"] = 10000;
    json["ata_smart_attributes"]["table"] = Json::array({Attribute(233, 50, 0)});
    EXPECT_EQ(Lifetime(json), "11914 hours; wear indicator (SMART attribute 233)");
    const std::string rated = " hours; rated endurance and bytes written";
    EXPECT_EQ(Lifetime(Drive(RATED, 20000, 800 * TEBIBYTE, 0)), "14150" + rated)
        << "(1366 - 800) * 20000 / 800";
    EXPECT_EQ(Lifetime(Drive(RATED, 43828, TEBIBYTE, 0)),
              "1" + rated + "; limited by the service span of five years");
    EXPECT_EQ(Lifetime(Drive(RATED, 30000, 1366 * TEBIBYTE, 0)),
              "1" + rated + "; the rated amount is written");
    EXPECT_EQ(Lifetime(Drive(RATED, 10000, 512000, 0)),
              "33829 hours; power-on hours alone; limited by the service span of five years")
        << "less than a mebibyte counts as nothing";
    EXPECT_EQ(Lifetime(Drive(RATED, 0, 0, 0)), "unknown (new drive)");
}

TEST(DescribeDrive, ADoubtfulFigureMakesTheLifetimeDoubtful) {
    const std::string reason = "NVMe log 02h says 255 percent, which stands for more than 254 or for nothing";
    EXPECT_EQ(Lifetime(Drive(RATED, 20000, 800 * TEBIBYTE, 255)),
              "14150 hours; rated endurance and bytes written? " + reason)
        << "as if the wear were unknown";
    EXPECT_EQ(Lifetime(Drive(UNRATED, 20000, 800 * TEBIBYTE, 255)),
              "unknown (wear: " + reason + "; rating: not in the endurance list)");
    EXPECT_EQ(Property(Drive(CONTRADICTED, 20000, 800 * TEBIBYTE, 0), "REMAINING_HOURS").GetReason(),
              "published ratings differ: 7593 TB and 2626 TB");
    EXPECT_EQ(Property(Drive(CONTRADICTED, 10000, 0, 12), "REMAINING_HOURS").GetReason(), "")
        << "it does not rest on the rating";
    EXPECT_EQ(Lifetime(Report("NVMe", RATED)), "unknown (wear: not reported; bytes written: not reported)");
    EXPECT_EQ(Lifetime(WornTo(10)), "unknown (power-on hours unknown: not reported)");
}
