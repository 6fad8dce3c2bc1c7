// SPDX-License-Identifier: Apache-2.0

#include "drive_figures.h"

#include "print/sheet.h"
#include "sample_reports.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

using namespace pitool;
using namespace pitool::test;

namespace {

DriveFigures Figures(const Json& json) {
    const PI::CDriveReport report = ReportOf(json);
    return FiguresOf(Summarize("", report), report, PI::CHealthAssessment(report.GetHealth()));
}

Lifetime LifetimeOf(const Json& json) {
    return Figures(json).m_Lifetime;
}

/// What the sheet says under a name; several lines joined by a slash.
std::string Told(const Json& json, const std::string& name) {
    const PI::CDriveReport report = ReportOf(json);
    std::string text;
    for (const SheetLine& line :
         SheetOf(Summarize("", report), report, PI::CHealthAssessment(report.GetHealth()))) {
        if (line.m_Name == name) {
            text += (text.empty() ? "" : " / ") + line.m_Text;
        }
    }
    return text;
}

Json WornTo(int percentUsed, const char* model = "SAMPLE") {
    Json json = AtaReport(model);
    json["device"]["protocol"] = "NVMe";
    json["nvme_smart_health_information_log"]["percentage_used"] = percentUsed;
    return json;
}

constexpr std::uint64_t TEBIBYTE = std::uint64_t{1} << 40U;
constexpr const char* RATED = "MZ7LH960HAJR-00005";         // 1366 TB
constexpr const char* CONTRADICTED = "MZ7KM120HAFD-00005";  // 7593 TB or 2626 TB
constexpr const char* UNRATED = "SAMPLE";

/// A solid-state drive that tells all of this itself.
Json Drive(const char* model, std::uint64_t hours, std::uint64_t bytesWritten, int percentUsed) {
    Json json = WornTo(percentUsed, model);
    json["nvme_smart_health_information_log"]["power_on_hours"] = hours;
    json["nvme_smart_health_information_log"]["data_units_written"] = (bytesWritten + 511999) / 512000;
    return json;
}

std::string SourceOf(const Json& json) {
    return LifetimeOf(json).m_Source;
}

std::string ReasonOf(const Json& json) {
    return LifetimeOf(json).m_Reason;
}

}  // namespace

TEST(FiguresOf, HasTheSameFiguresInTheSameOrderForEveryDrive) {
    const std::vector<std::string> properties = {"OS_DEVICE",
                                                 "VENDOR",
                                                 "PRODUCT",
                                                 "SERIAL_NUMBER",
                                                 "FIRMWARE_VERSION",
                                                 "PROTOCOL",
                                                 "MEDIA_TYPE",
                                                 "RPM",
                                                 "PHYSICAL_SIZE",
                                                 "BLOCK_SIZE",
                                                 "SMART_FLAGGED",
                                                 "HEALTH",
                                                 "TEMPERATURE",
                                                 "HIGH_WARNING_TEMPERATURE",
                                                 "HIGH_CRITICAL_TEMPERATURE",
                                                 "POWERON_HOURS",
                                                 "BYTES_READ",
                                                 "BYTES_WRITTEN",
                                                 "MEDIA_ERROR_COUNT",
                                                 "REMAINING_RESERVE_SPACE",
                                                 "RESERVE_WARNING_THRESHOLD",
                                                 "RATED_ENDURANCE_TB",
                                                 "RATED_ENDURANCE_PERCENT",
                                                 "ESTIMATED_LIFETIME",
                                                 "REMAINING_HOURS"};
    const std::vector<std::string> others = {
        "HIGHEST_TEMPERATURE",        "REALLOCATED_SECTORS",   "PENDING_SECTORS",
        "UNCORRECTABLE_SECTORS",      "INTERFACE_ERRORS",      "LOGGED_ERRORS",
        "ATTRIBUTES_BELOW_THRESHOLD", "ATTRIBUTES_ONCE_BELOW", "FAILED_SELF_TESTS",
        "CRITICAL_WARNING",           "POWER_CYCLES",          "UNSAFE_SHUTDOWNS"};
    const auto names = [](const std::vector<DriveFigure>& figures) {
        std::vector<std::string> list;
        for (const DriveFigure& figure : figures) {
            list.emplace_back(figure.m_Name);
        }
        return list;
    };
    for (const char* protocol : {"ATA", "NVMe", "SCSI"}) {
        Json json = AtaReport("SAMPLE");
        json["device"]["protocol"] = protocol;
        const DriveFigures figures = Figures(json);
        EXPECT_EQ(names(figures.m_Properties), properties) << protocol;
        EXPECT_EQ(names(figures.m_Others), others) << protocol;
    }
}

TEST(FiguresOf, EveryFigureOfALeastReportHasAValueOrAReason) {
    for (const char* protocol : {"ATA", "NVMe", "SCSI"}) {
        Json json = AtaReport("SAMPLE");
        json["device"]["protocol"] = protocol;
        const DriveFigures all = Figures(json);
        for (const auto* figures : {&all.m_Properties, &all.m_Others}) {
            for (const DriveFigure& figure : *figures) {
                EXPECT_TRUE(figure.HasValue() || !figure.m_Reason.empty()) << protocol << figure.m_Name;
            }
        }
    }
}

TEST(SheetOf, TheTransportIsKnownOnlyWhenTheReportTells) {
    const char* UNNAMED = "unknown (the report names none of SATA, SAS and NVMe)";
    Json json = AtaReport("SAMPLE");
    EXPECT_EQ(Told(json, "PROTOCOL"), UNNAMED);
    EXPECT_EQ(SummaryOf(json).GetKind(), "ATA HDD");
    json["interface_speed"]["max"]["string"] = "6.0 Gb/s";
    EXPECT_EQ(Told(json, "PROTOCOL"), "SATA");
    EXPECT_EQ(SummaryOf(json).GetKind(), "SATA HDD");
    json["device"]["protocol"] = "NVMe";
    EXPECT_EQ(Told(json, "PROTOCOL"), "NVME");
    EXPECT_EQ(SummaryOf(json).GetKind(), "NVME SSD");
    json["device"]["protocol"] = "SCSI";
    EXPECT_EQ(Told(json, "PROTOCOL"), UNNAMED);
    EXPECT_EQ(SummaryOf(json).GetKind(), "SCSI HDD");
    json["scsi_transport_protocol"]["value"] = 6;
    EXPECT_EQ(Told(json, "PROTOCOL"), "SAS");
    json["scsi_transport_protocol"]["value"] = 0;
    EXPECT_EQ(Told(json, "PROTOCOL"), UNNAMED);
}

TEST(SheetOf, AMediumThatIsNotReportedFollowsFromOtherSigns) {
    Json json = AtaReport("SAMPLE");
    EXPECT_EQ(Told(json, "MEDIA_TYPE"), "HDD?; doubtful: not reported, and nothing shows flash memory");
    EXPECT_EQ(Told(AtaReport("INTEL SSDSC2BB480G7"), "MEDIA_TYPE"), "SSD; endurance list");
    json["endurance_used"]["current_percent"] = 0;
    EXPECT_EQ(Told(json, "MEDIA_TYPE"), "SSD; it counts wear");
    json["rotation_rate"] = 5400;
    EXPECT_EQ(Told(json, "MEDIA_TYPE"), "HDD");
    json["rotation_rate"] = 0;
    EXPECT_EQ(Told(json, "MEDIA_TYPE"), "SSD");
}

TEST(SheetOf, TheReportedRotationSpeedGoesBeforeTheRule) {
    Json json = AtaReport("WDC WD1500HLFS-01G6U0");
    EXPECT_EQ(
        Told(json, "RPM"),
        "10000 rotations per minute?; doubtful: from the model's rule, and the report does not tell that "
        "it is a disk");
    json["ata_smart_attributes"]["table"] = Json::array({Attribute(3, 100, 5)});
    EXPECT_EQ(Told(json, "RPM"),
              "10000 rotations per minute; from the model's rule; the drive does not report it");
    json["rotation_rate"] = 5400;
    EXPECT_EQ(Told(json, "RPM"), "5400 rotations per minute; reported by the drive");
    EXPECT_EQ(Told(AtaReport("HGST AB"), "RPM"),
              "unknown (not reported, and the model name is too short for the rule)");
    Json scsi = AtaReport("HITACHI H109060");
    scsi["device"]["protocol"] = "SCSI";
    EXPECT_EQ(Told(scsi, "RPM"), "unknown (not reported)");
}

TEST(SheetOf, KeepsTheNotesOfTheReport) {
    Json json = AtaReport("SAMPLE");
    json["smartctl"]["exit_status"] = 8;
    EXPECT_EQ(Told(json, "NOTE"), "exit status of smartctl: the drive's verdict is that it fails");
}

TEST(SheetOf, HealthIsTheWorstOfVerdictAndWear) {
    const auto health = [](const Json& verdict, int percentUsed) {
        Json json = WornTo(percentUsed);
        if (!verdict.is_null()) {
            json["smart_status"]["passed"] = verdict;
        }
        const std::string told = Told(json, "HEALTH");
        return told.substr(0, told.find_first_of("; "));
    };
    EXPECT_EQ(health(true, 0), "OK");
    EXPECT_EQ(health(true, 89), "OK");
    EXPECT_EQ(health(true, 90), "NEAR_WEARING_OUT");
    EXPECT_EQ(health(true, 99), "NEAR_WEARING_OUT");
    EXPECT_EQ(health(true, 100), "SMART_WORN_OUT");
    EXPECT_EQ(health(true, 254), "SMART_WORN_OUT");
    EXPECT_EQ(health(true, 255), "OK?") << "255 may be invalid";
    EXPECT_EQ(health(false, 100), "PREDICTIVE_FAILURE");
    EXPECT_EQ(health(nullptr, 90), "NEAR_WEARING_OUT");
    EXPECT_EQ(health(nullptr, 89), "unknown");
    EXPECT_EQ(health(nullptr, 255), "unknown");
    EXPECT_EQ(Told(AtaReport("SAMPLE"), "HEALTH"), "unknown (no SMART verdict of the drive)");
    EXPECT_EQ(Told(AtaReport("SAMPLE"), "SMART_FLAGGED"), "unknown (no SMART verdict of the drive)");
}

TEST(SheetOf, AWarningAboutTheTemperatureIsNoFailure) {
    Json json = AtaReport("SAMPLE");
    json["device"]["protocol"] = "NVMe";
    json["smart_status"]["passed"] = false;  // as smartctl has it for every warning
    json["nvme_smart_health_information_log"]["critical_warning"] = 2;
    EXPECT_FALSE(SummaryOf(json).IsFailing());
    EXPECT_EQ(SummaryOf(json).GetState(), PI::DriveState::LOOK);
    EXPECT_EQ(Told(json, "SMART_FLAGGED"), "YES");
    EXPECT_EQ(Told(json, "HEALTH"), "OK; SMART verdict of the drive");
    json["nvme_smart_health_information_log"]["critical_warning"] = 4;
    EXPECT_TRUE(SummaryOf(json).IsFailing());
    EXPECT_EQ(Told(json, "HEALTH"), "PREDICTIVE_FAILURE; SMART verdict of the drive");
}

TEST(SheetOf, TheLifetimeInPercentIsWhatTheWearLeaves) {
    const auto left = [](int percentUsed) { return Told(WornTo(percentUsed), "ESTIMATED_LIFETIME"); };
    EXPECT_EQ(left(0), "100 percent, counts down; 100 percent less the wear");
    EXPECT_EQ(left(100), "0 percent, counts down; 100 percent less the wear");
    EXPECT_EQ(left(101), "0 percent, counts down; 100 percent less the wear");
    EXPECT_EQ(left(255),
              "0 percent?, counts down; doubtful: NVMe log 02h says 255 percent, which stands for more than "
              "254 or for nothing");
}

TEST(SheetOf, ACapacityOfZeroIsUnknown) {
    Json json = AtaReport("SAMPLE");
    json["user_capacity"]["bytes"] = 0;
    EXPECT_EQ(Told(json, "PHYSICAL_SIZE"), "unknown (not reported)");
    json["user_capacity"]["bytes"] = 1000000;
    EXPECT_EQ(Told(json, "PHYSICAL_SIZE"), "1 MB (1000000 bytes)");
}

TEST(SheetOf, FiguresThatOnlySolidStateHasDoNotApplyToDisks) {
    Json json = AtaReport("SAMPLE");
    json["rotation_rate"] = 7200;
    for (const char* name : {"REMAINING_RESERVE_SPACE", "RATED_ENDURANCE_TB", "RATED_ENDURANCE_PERCENT",
                             "ESTIMATED_LIFETIME", "REMAINING_HOURS"}) {
        EXPECT_EQ(Told(json, name), "not applicable (rotating disk)");
    }
    json["rotation_rate"] = 0;
    EXPECT_EQ(Told(json, "RPM"), "not applicable (solid-state drive)");
}

TEST(SheetOf, WhatMayBeADiskIsToldNothingThatHoldsForDisksAlone) {
    const Json json = AtaReport("SAMPLE");
    EXPECT_EQ(Told(json, "REMAINING_RESERVE_SPACE"), "unknown (not reported)");
    EXPECT_EQ(Told(json, "RATED_ENDURANCE_TB"), "unknown (not in the endurance list)");
    EXPECT_EQ(Told(json, "RATED_ENDURANCE_PERCENT"), "unknown (not reported)");
    EXPECT_EQ(Told(json, "ESTIMATED_LIFETIME"), "unknown (not reported)");
    EXPECT_EQ(Told(json, "REMAINING_HOURS"),
              "unknown (wear: not reported; rating: not in the endurance list)");
}

TEST(EstimateLifetime, ARotatingDiskHasNone) {
    Json json = Drive(RATED, 10000, 0, 50);
    json["rotation_rate"] = 7200;
    const Lifetime lifetime = LifetimeOf(json);
    EXPECT_FALSE(lifetime.m_Applicable);
    EXPECT_FALSE(lifetime.m_Hours);
    EXPECT_EQ(lifetime.m_Reason, "rotating disk");
}

TEST(EstimateLifetime, GoesByTheDrivesOwnStatistics) {
    const Lifetime lifetime = LifetimeOf(Drive(UNRATED, 10000, 0, 12));
    EXPECT_EQ(*lifetime.m_Hours, 28569U) << "43829 * 88 / 100 - 10000";
    EXPECT_STREQ(lifetime.m_Basis, "drive's own statistics");
    EXPECT_STREQ(lifetime.m_Limit, "wear");
    EXPECT_EQ(lifetime.m_Source, "drive's own statistics (NVMe log 02h)");
}

TEST(EstimateLifetime, GoesByAWearIndicator) {
    const Lifetime lifetime =
        LifetimeOf(SolidStateReport("INTEL SSDSC2BB480G7", 10000, {Attribute(233, 50, 0)}));
    EXPECT_EQ(*lifetime.m_Hours, 11914U) << "43829 * 50 / 100 - 10000";
    EXPECT_STREQ(lifetime.m_Basis, "wear indicator");
    EXPECT_EQ(lifetime.m_Source, "wear indicator (SMART attribute 233)");
}

TEST(EstimateLifetime, GoesByRatedEnduranceAndBytesWrittenWhileTheWearIsZero) {
    const Lifetime lifetime = LifetimeOf(Drive(RATED, 20000, 800 * TEBIBYTE, 0));
    EXPECT_EQ(*lifetime.m_Hours, 14150U) << "(1366 - 800) * 20000 / 800";
    EXPECT_STREQ(lifetime.m_Basis, "rated endurance and bytes written");
    EXPECT_STREQ(lifetime.m_Limit, "rate");
}

TEST(EstimateLifetime, SaysWhatLimitsIt) {
    EXPECT_EQ(SourceOf(Drive(RATED, 10000, 512000, 0)),
              "power-on hours alone; limited by the service span of five years")
        << "less than a mebibyte counts as nothing";
    EXPECT_EQ(SourceOf(Drive(RATED, 43828, TEBIBYTE, 0)),
              "rated endurance and bytes written; limited by the service span of five years");
    EXPECT_EQ(SourceOf(Drive(UNRATED, 43829, 0, 5)),
              "drive's own statistics (NVMe log 02h); the service span of five years is over");
    EXPECT_EQ(SourceOf(Drive(UNRATED, 438, 0, 99)), "drive's own statistics (NVMe log 02h)");
    EXPECT_EQ(SourceOf(Drive(UNRATED, 439, 0, 99)),
              "drive's own statistics (NVMe log 02h); worn faster than aged, only the service span of five "
              "years is left");
    for (const int worn : {100, 254}) {
        EXPECT_EQ(SourceOf(Drive(UNRATED, 30000, 0, worn)),
                  "drive's own statistics (NVMe log 02h); worn out, only the service span of five years is "
                  "left");
    }
    EXPECT_EQ(SourceOf(Drive(RATED, 30000, 1366 * TEBIBYTE, 0)),
              "rated endurance and bytes written; the rated amount is written");
}

TEST(EstimateLifetime, NamesWhatLimitsItForPrograms) {
    const auto limit = [](const Json& json) { return std::string(LifetimeOf(json).m_Limit); };
    EXPECT_EQ(limit(Drive(RATED, 10000, TEBIBYTE, 0)), "service span");
    EXPECT_EQ(limit(Drive(UNRATED, 43829, 0, 5)), "service span over");
    EXPECT_EQ(limit(Drive(UNRATED, 439, 0, 99)), "worn early");
    EXPECT_EQ(limit(Drive(UNRATED, 30000, 0, 100)), "worn out");
    EXPECT_EQ(limit(Drive(UNRATED, 0, 0, 0)), "") << "a new drive";
}

TEST(EstimateLifetime, ANewDriveHasNone) {
    EXPECT_EQ(ReasonOf(Drive(RATED, 0, 0, 0)), "new drive");
    EXPECT_TRUE(LifetimeOf(Drive(RATED, 1, 0, 0)).m_Hours);
}

TEST(EstimateLifetime, ADoubtfulWearIsLeftOutAndMakesTheEstimateDoubtful) {
    const std::string reason = "NVMe log 02h says 255 percent, which stands for more than 254 or for nothing";
    const Lifetime lifetime = LifetimeOf(Drive(RATED, 20000, 800 * TEBIBYTE, 255));
    EXPECT_EQ(*lifetime.m_Hours, 14150U) << "as if the wear were unknown";
    EXPECT_EQ(lifetime.m_Reason, reason);
    const Lifetime without = LifetimeOf(Drive(UNRATED, 20000, 800 * TEBIBYTE, 255));
    EXPECT_FALSE(without.m_Hours);
    EXPECT_EQ(without.m_Reason, "wear: " + reason + "; rating: not in the endurance list");
}

TEST(EstimateLifetime, ADoubtfulRatingIsUsedAndMakesTheEstimateDoubtful) {
    EXPECT_EQ(ReasonOf(Drive(CONTRADICTED, 20000, 800 * TEBIBYTE, 0)),
              "published ratings differ: 7593 TB and 2626 TB");
    EXPECT_EQ(ReasonOf(Drive(CONTRADICTED, 10000, 0, 12)), "") << "it does not rest on the rating";
}

TEST(EstimateLifetime, WithoutWearAndAmountTheReasonIsTold) {
    const auto bare = [](const char* model) {
        Json json = AtaReport(model);
        json["device"]["protocol"] = "NVMe";
        return json;
    };
    EXPECT_EQ(ReasonOf(bare(UNRATED)), "wear: not reported; rating: not in the endurance list");
    EXPECT_EQ(ReasonOf(bare(RATED)), "wear: not reported; bytes written: not reported");
    EXPECT_EQ(ReasonOf(WornTo(10)), "power-on hours unknown: not reported");
}

TEST(SheetOf, TheStateComesFirstWithItsReasonsTheWeightiestFirst) {
    Json json = WornTo(95);
    json["smart_status"]["passed"] = true;
    json["nvme_smart_health_information_log"]["media_errors"] = 3;
    const PI::CDriveReport report = ReportOf(json);
    const std::vector<SheetLine> sheet =
        SheetOf(Summarize("", report), report, PI::CHealthAssessment(report.GetHealth()));
    ASSERT_GT(sheet.size(), 4U);
    EXPECT_EQ(sheet[0].m_Name, "STATE");
    EXPECT_EQ(sheet[0].m_Text, "look at it");
    EXPECT_EQ(sheet[0].m_Style, Style::WARNING);
    EXPECT_EQ(sheet[1].m_Text, "3 uncorrected errors");
    EXPECT_EQ(sheet[2].m_Text, "95 percent worn");
    EXPECT_EQ(sheet[3].m_Name, "FORECAST");
}

TEST(SheetOf, TheForecastSaysItsRangeAndDatesWhereTheReportIsDated) {
    Json json = Drive(UNRATED, 20000, 0, 50);
    EXPECT_EQ(Told(json, "FORECAST"),
              "worn in 2.1 y of power-on time, four times out of five in 1.1 y to 8.7 y; by its age");
    json["local_time"]["time_t"] = 1700000000;
    EXPECT_EQ(
        Told(json, "FORECAST"),
        "worn in 2.1 y of power-on time, four times out of five in 1.1 y to 8.7 y; running without a break, "
        "about 2025-12-13, 2024-12-28 to 2032-08-07; by its age");
    EXPECT_EQ(Told(json, "REPORTED"), "2023-11-14T22:13:20Z");
    EXPECT_EQ(Told(Drive(UNRATED, 20000, 0, 100), "FORECAST"), "worn (the wear has reached 100 percent)");
    EXPECT_EQ(Told(AtaReport(RATED), "FORECAST"), "none (no reading tells power-on hours and wear)");
    Json disk = AtaReport("ST380815AS");
    EXPECT_EQ(Told(disk, "FORECAST"), "none (no reading tells power-on hours and wear)") << "perhaps no disk";
    disk["rotation_rate"] = 7200;
    EXPECT_EQ(Told(disk, "FORECAST"), "not applicable (rotating disk)");
    EXPECT_EQ(Told(disk, "REPORTED"), "unknown (not reported)");
    disk["serial_number"] = "S1";
    disk["model_name"] = "";
    EXPECT_EQ(Told(disk, "MODEL"), "unknown (not reported)");
}

TEST(SheetOf, FiguresWithoutANameOfTheVocabularyAreLeftOutWhereNothingReportsThem) {
    Json json = SolidStateReport("SAMPLE", 5, {Attribute(197, 100, 8)});
    EXPECT_EQ(Told(json, "PENDING_SECTORS"), "8; SMART attribute 197");
    EXPECT_EQ(Told(json, "UNCORRECTABLE_SECTORS"), "");
    EXPECT_EQ(Told(json, "MEDIA_ERROR_COUNT"), "unknown (not reported)");
}

TEST(SheetOf, WhatIsWornOrHotStandsOut) {
    Json json = WornTo(96);
    json["temperature"] = {{"current", 80}, {"op_limit_max", 70}};
    const PI::CDriveReport report = ReportOf(json);
    std::vector<std::string> names;
    for (const SheetLine& line :
         SheetOf(Summarize("", report), report, PI::CHealthAssessment(report.GetHealth()))) {
        if (line.m_Style == Style::WARNING && line.m_Name != "REASON") {
            names.push_back(line.m_Name);
        }
    }
    EXPECT_EQ(names, (std::vector<std::string>{"STATE", "HEALTH", "TEMPERATURE", "RATED_ENDURANCE_PERCENT"}));
}

TEST(DriveFigure, LongNumbersAreSaidForPeopleToo) {
    Json json = Drive(UNRATED, 20000, 512000, 50);
    json["user_capacity"]["bytes"] = 960197124096;
    json["logical_block_size"] = 512;
    EXPECT_EQ(Told(json, "PHYSICAL_SIZE"), "960 GB (960197124096 bytes)");
    EXPECT_EQ(Told(json, "BLOCK_SIZE"), "512 bytes");
    EXPECT_EQ(Told(json, "POWERON_HOURS"), "20000 hours (2.3 y), counts up; NVMe log 02h");
    EXPECT_EQ(Told(json, "BYTES_WRITTEN"), "512 kB (512000 bytes), counts up; NVMe log 02h");
    EXPECT_EQ(Told(Drive(UNRATED, 1, 0, 50), "POWERON_HOURS"), "1 hour, counts up; NVMe log 02h");
    EXPECT_EQ(Told(Drive(UNRATED, 999, 0, 50), "POWERON_HOURS"), "999 hours, counts up; NVMe log 02h");
    EXPECT_EQ(Told(Drive(UNRATED, 1000, 0, 50), "POWERON_HOURS"),
              "1000 hours (0.1 y), counts up; NVMe log 02h");
}
