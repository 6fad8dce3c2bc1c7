// SPDX-License-Identifier: Apache-2.0

#include "drive_assessment.h"

#include "drive_sheet.h"
#include "sample_reports.h"

#include <gtest/gtest.h>

using namespace pitool;
using namespace pitool::test;
namespace ID = PI::PropertyID;

namespace {

std::string TextOf(const Json& json, PI::_PROPERTY_ID id) {
    return FigureText(FindFigure(Assess(json), id));
}

}  // namespace

TEST(AssessDrive, HasTheSameFiguresInTheSameOrderForEveryDrive) {
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
    const auto names = [](const std::vector<Figure>& figures) {
        std::vector<std::string> list;
        for (const Figure& figure : figures) {
            list.push_back(figure.m_Name);
        }
        return list;
    };
    for (const char* protocol : {"ATA", "NVMe", "SCSI"}) {
        Json json = AtaReport("SAMPLE");
        json["device"]["protocol"] = protocol;
        const DriveAssessment drive = Assess(json);
        EXPECT_EQ(names(drive.m_Figures), properties) << protocol;
        EXPECT_EQ(names(drive.m_OtherFigures), others) << protocol;
    }
}

TEST(AssessDrive, EveryFigureOfALeastReportHasAValueOrAReason) {
    for (const char* protocol : {"ATA", "NVMe", "SCSI"}) {
        Json json = AtaReport("SAMPLE");
        json["device"]["protocol"] = protocol;
        const DriveAssessment drive = Assess(json);
        for (const auto* figures : {&drive.m_Figures, &drive.m_OtherFigures}) {
            for (const Figure& figure : *figures) {
                EXPECT_TRUE(figure.HasValue() || !figure.m_Reason.empty()) << protocol << figure.m_Name;
            }
        }
    }
}

TEST(AssessDrive, TheTransportIsKnownOnlyWhenTheReportTells) {
    const char* UNNAMED = "unknown (the report names none of SATA, SAS and NVMe)";
    Json json = AtaReport("SAMPLE");
    EXPECT_EQ(TextOf(json, ID::PROTOCOL), UNNAMED);
    EXPECT_EQ(Assess(json).m_Kind, "ATA HDD");
    json["interface_speed"]["max"]["string"] = "6.0 Gb/s";
    EXPECT_EQ(TextOf(json, ID::PROTOCOL), "SATA");
    EXPECT_EQ(Assess(json).m_Kind, "SATA HDD");
    json["device"]["protocol"] = "NVMe";
    EXPECT_EQ(TextOf(json, ID::PROTOCOL), "NVME");
    EXPECT_EQ(Assess(json).m_Kind, "NVME SSD");
    json["device"]["protocol"] = "SCSI";
    EXPECT_EQ(TextOf(json, ID::PROTOCOL), UNNAMED);
    EXPECT_EQ(Assess(json).m_Kind, "SCSI HDD");
    json["scsi_transport_protocol"]["value"] = 6;
    EXPECT_EQ(TextOf(json, ID::PROTOCOL), "SAS");
    json["scsi_transport_protocol"]["value"] = 0;
    EXPECT_EQ(TextOf(json, ID::PROTOCOL), UNNAMED);
}

TEST(AssessDrive, AMediumThatIsNotReportedFollowsFromOtherSigns) {
    Json json = AtaReport("SAMPLE");
    EXPECT_EQ(TextOf(json, ID::MEDIA_TYPE), "HDD?; doubtful: not reported, and nothing shows flash memory");
    EXPECT_EQ(TextOf(AtaReport("INTEL SSDSC2BB480G7"), ID::MEDIA_TYPE), "SSD; endurance list");
    json["endurance_used"]["current_percent"] = 0;
    EXPECT_EQ(TextOf(json, ID::MEDIA_TYPE), "SSD; it counts wear");
    json["rotation_rate"] = 5400;
    EXPECT_EQ(TextOf(json, ID::MEDIA_TYPE), "HDD");
    json["rotation_rate"] = 0;
    EXPECT_EQ(TextOf(json, ID::MEDIA_TYPE), "SSD");
}

TEST(AssessDrive, TheReportedRotationSpeedGoesBeforeTheRule) {
    Json json = AtaReport("WDC WD1500HLFS-01G6U0");
    EXPECT_EQ(
        TextOf(json, ID::RPM),
        "10000 rotations per minute (10 thousand); from the model's rule; the drive does not report it");
    json["rotation_rate"] = 5400;
    EXPECT_EQ(TextOf(json, ID::RPM), "5400 rotations per minute (5.4 thousand); reported by the drive");
    EXPECT_EQ(TextOf(AtaReport("HGST AB"), ID::RPM),
              "unknown (not reported, and the model name is too short for the rule)");
    Json scsi = AtaReport("HITACHI H109060");
    scsi["device"]["protocol"] = "SCSI";
    EXPECT_EQ(TextOf(scsi, ID::RPM), "unknown (not reported)");
}

TEST(AssessDrive, KeepsTheNotesOfTheReport) {
    Json json = AtaReport("SAMPLE");
    json["smartctl"]["exit_status"] = 8;
    EXPECT_EQ(Assess(json).m_Notes,
              std::vector<std::string>{"exit status of smartctl: the drive's verdict is that it fails"});
}

TEST(AssessDrive, HealthIsTheWorstOfVerdictAndWear) {
    const auto health = [](const Json& verdict, int percentUsed) {
        Json json = AtaReport("SAMPLE");
        json["device"]["protocol"] = "NVMe";
        json["nvme_smart_health_information_log"]["percentage_used"] = percentUsed;
        if (!verdict.is_null()) {
            json["smart_status"]["passed"] = verdict;
        }
        return FigureValueText(FindFigure(Assess(json), ID::HEALTH));
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
    EXPECT_EQ(health(nullptr, 89), "");
    EXPECT_EQ(health(nullptr, 255), "");
    EXPECT_EQ(TextOf(AtaReport("SAMPLE"), ID::HEALTH), "unknown (no SMART verdict of the drive)");
    EXPECT_EQ(TextOf(AtaReport("SAMPLE"), ID::SMART_FLAGGED), "unknown (no SMART verdict of the drive)");
}

TEST(AssessDrive, AWarningAboutTheTemperatureIsNoFailure) {
    Json json = AtaReport("SAMPLE");
    json["device"]["protocol"] = "NVMe";
    json["smart_status"]["passed"] = false;  // as smartctl has it for every warning
    json["nvme_smart_health_information_log"]["critical_warning"] = 2;
    const DriveAssessment hot = Assess(json);
    EXPECT_FALSE(hot.m_Failing);
    EXPECT_EQ(hot.m_State, PI::DriveState::LOOK);
    EXPECT_EQ(TextOf(json, ID::SMART_FLAGGED), "YES");
    EXPECT_EQ(TextOf(json, ID::HEALTH), "OK; SMART verdict of the drive");
    json["nvme_smart_health_information_log"]["critical_warning"] = 4;
    EXPECT_TRUE(Assess(json).m_Failing);
    EXPECT_EQ(TextOf(json, ID::HEALTH), "PREDICTIVE_FAILURE; SMART verdict of the drive");
}

TEST(AssessDrive, IsWornOnlyWhereTheWearIsKnown) {
    const auto worn = [](int percentUsed) {
        Json json = AtaReport("SAMPLE");
        json["device"]["protocol"] = "NVMe";
        json["nvme_smart_health_information_log"]["percentage_used"] = percentUsed;
        return IsWorn(Assess(json));
    };
    EXPECT_FALSE(worn(89));
    EXPECT_TRUE(worn(90));
    EXPECT_TRUE(worn(254));
    EXPECT_FALSE(worn(255));
    EXPECT_FALSE(IsWorn(Assess(AtaReport("SAMPLE"))));
}

TEST(AssessDrive, TheLifetimeInPercentIsWhatTheWearLeaves) {
    const auto left = [](int percentUsed) {
        Json json = AtaReport("SAMPLE");
        json["device"]["protocol"] = "NVMe";
        json["nvme_smart_health_information_log"]["percentage_used"] = percentUsed;
        return TextOf(json, ID::ESTIMATED_LIFETIME);
    };
    EXPECT_EQ(left(0), "100 percent, counts down; 100 percent less the wear");
    EXPECT_EQ(left(100), "0 percent, counts down; 100 percent less the wear");
    EXPECT_EQ(left(101), "0 percent, counts down; 100 percent less the wear");
    EXPECT_EQ(left(255),
              "0 percent?, counts down; doubtful: NVMe log 02h says 255 percent, which stands for more than "
              "254 or for nothing");
}

TEST(AssessDrive, ACapacityOfZeroIsUnknown) {
    Json json = AtaReport("SAMPLE");
    json["user_capacity"]["bytes"] = 0;
    EXPECT_EQ(TextOf(json, ID::PHYSICAL_SIZE), "unknown (not reported)");
    json["user_capacity"]["bytes"] = 1;
    EXPECT_EQ(TextOf(json, ID::PHYSICAL_SIZE), "1 byte");
}

TEST(AssessDrive, FiguresThatOnlySolidStateHasDoNotApplyToDisks) {
    Json json = AtaReport("SAMPLE");
    json["rotation_rate"] = 7200;
    for (const auto id : {ID::REMAINING_RESERVE_SPACE, ID::RATED_ENDURANCE_TB, ID::RATED_ENDURANCE_PERCENT,
                          ID::ESTIMATED_LIFETIME, ID::REMAINING_HOURS}) {
        EXPECT_EQ(TextOf(json, id), "not applicable (rotating disk)");
    }
    json["rotation_rate"] = 0;
    EXPECT_EQ(TextOf(json, ID::RPM), "not applicable (solid-state drive)");
}
