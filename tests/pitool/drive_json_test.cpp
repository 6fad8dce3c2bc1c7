// SPDX-License-Identifier: Apache-2.0

#include "drive_detail.h"
#include "sample_reports.h"

#include <gtest/gtest.h>

using namespace pitool;
using namespace pitool::test;

namespace {

std::string Text(const Json& report, const std::vector<RenderedEvent>* events = nullptr,
                 const char* file = "sample.json") {
    const PI::CDriveReport drive = ReportOf(report);
    return DriveJson(Summarize(file, drive), drive, PI::CHealthAssessment(drive.GetHealth()), events);
}

Json Read(const Json& report) {
    return Json::parse(Text(report));
}

}  // namespace

TEST(DriveJson, UnknownFiguresAreNullWithAReason) {
    for (const char* protocol : {"ATA", "NVMe", "SCSI"}) {
        Json report = AtaReport("SAMPLE");
        report["device"]["protocol"] = protocol;
        report["rotation_rate"] = 0;
        const Json json = Read(report);
        for (const char* group : {"properties", "figures"}) {
            for (const auto& [name, figure] : json[group].items()) {
                EXPECT_EQ(figure.size(), 9U) << name;
                EXPECT_NE(figure["value"].is_null(), figure["reason"].is_null()) << name;
                EXPECT_EQ(figure["state"], figure["value"].is_null() ? "unknown" : "known") << name;
                EXPECT_EQ(figure["id"].is_null(), std::string(group) == "figures") << name;
            }
        }
        EXPECT_TRUE(json["lifetime"]["remaining_hours"].is_null());
        EXPECT_TRUE(json["lifetime"]["basis"].is_null());
        EXPECT_TRUE(json["lifetime"]["reason"].is_string());
    }
}

TEST(DriveJson, ADoubtfulFigureHasBothValueAndReason) {
    Json report = AtaReport("SAMPLE");
    report["device"]["protocol"] = "NVMe";
    report["smart_status"]["passed"] = true;
    report["nvme_smart_health_information_log"]["percentage_used"] = 255;
    const Json json = Read(report);
    const Json& wear = json["properties"]["RATED_ENDURANCE_PERCENT"];
    EXPECT_EQ(wear["state"], "doubtful");
    EXPECT_EQ(wear["value"], 255);
    EXPECT_EQ(wear["text"], "255 percent?");
    EXPECT_EQ(wear["reason"], "NVMe log 02h says 255 percent, which stands for more than 254 or for nothing");
    EXPECT_EQ(json["worn"], false);
    EXPECT_EQ(json["properties"]["HEALTH"]["value"], "OK");
    EXPECT_EQ(json["properties"]["HEALTH"]["state"], "doubtful");
}

TEST(DriveJson, SaysTheStateWithItsReasonsInOrder) {
    Json report = SolidStateReport("SAMPLE", 5, {Attribute(197, 100, 8), Attribute(198, 100, 120)});
    report["smart_status"]["passed"] = true;
    const Json json = Read(report);
    EXPECT_EQ(json["state"], "replace it");
    EXPECT_EQ(
        json["reasons"],
        (Json::array(
            {{{"state", "replace it"},
              {"text", "120 uncorrectable sectors"},
              {"figure", "UNCORRECTABLE_SECTORS"}},
             {{"state", "look at it"}, {"text", "8 pending sectors"}, {"figure", "PENDING_SECTORS"}}})));
    EXPECT_EQ(json["figures"]["PENDING_SECTORS"]["value"], 8);
}

TEST(DriveJson, IsAsciiWhateverTheDriveSays) {
    Json report = AtaReport("A\xC2\x9B\xE2\x80\xAE");
    const std::string text = Text(report, nullptr, "bad\xFF.json");
    for (const char c : text) {
        EXPECT_GE(c, ' ');
    }
    EXPECT_EQ(Json::parse(text)["file"], "bad\xEF\xBF\xBD.json");
    EXPECT_EQ(Json::parse(text)["properties"]["PRODUCT"]["value"], "A\xC2\x9B\xE2\x80\xAE");
}

TEST(DriveJson, SaysModelAndSerialNumberAsReportedAndTheTime) {
    Json report = AtaReport("WDC WD20EFRX-68EUZN0");
    EXPECT_TRUE(Read(report)["serial_number"].is_null());
    EXPECT_TRUE(Read(report)["time"].is_null());
    report["serial_number"] = "WD-WCC4M0000001";
    report["local_time"]["time_t"] = 1700000000;
    const Json json = Read(report);
    EXPECT_EQ(json["model"], "WDC WD20EFRX-68EUZN0");
    EXPECT_EQ(json["serial_number"], "WD-WCC4M0000001");
    EXPECT_EQ(json["time"], "2023-11-14T22:13:20Z");
}

TEST(DriveJson, TheForecastHasItsRangeOrAReason) {
    Json report = AtaReport("SAMPLE");
    report["device"]["protocol"] = "NVMe";
    report["nvme_smart_health_information_log"] = {{"percentage_used", 50}, {"power_on_hours", 20000}};
    const Json forecast = Read(report)["forecast"];
    EXPECT_LT(forecast["low"], forecast["hours_to_worn"]);
    EXPECT_LT(forecast["hours_to_worn"], forecast["high"]);
    EXPECT_EQ(forecast["basis"], "age");
    EXPECT_TRUE(forecast["reason"].is_null());
    EXPECT_TRUE(Read(report)["forecast_time"]["worn"].is_null());
    report["local_time"]["time_t"] = 1700000000;
    const Json time = Read(report)["forecast_time"];
    EXPECT_LT(time["low"].get<std::string>(), time["worn"].get<std::string>());
    EXPECT_LT(time["worn"].get<std::string>(), time["high"].get<std::string>());
    Json disk = AtaReport("ST380815AS");
    disk["rotation_rate"] = 7200;
    EXPECT_EQ(Read(disk)["forecast"]["reason"], "rotating disk");
    EXPECT_TRUE(Read(disk)["forecast"]["hours_to_worn"].is_null());
}

TEST(DriveJson, TheLifetimeNamesItsBasisAndLimit) {
    const auto lifetime = [](int percentUsed, std::uint64_t hours, std::uint64_t unitsWritten,
                             const char* model = "SAMPLE") {
        Json report = AtaReport(model);
        report["device"]["protocol"] = "NVMe";
        report["nvme_smart_health_information_log"] = {{"percentage_used", percentUsed},
                                                       {"power_on_hours", hours},
                                                       {"data_units_written", unitsWritten}};
        return Read(report)["lifetime"];
    };
    const char* OWN = "drive's own statistics";
    const char* RATED = "MZ7LH960HAJR-00005";  // 1366 TB
    EXPECT_EQ(lifetime(12, 10000, 0), (Json{{"remaining_hours", 28569},
                                            {"counts", "down"},
                                            {"basis", OWN},
                                            {"applicable", true},
                                            {"limit", "wear"},
                                            {"reason", nullptr}}));
    EXPECT_EQ(lifetime(5, 43829, 0)["limit"], "service span over");
    EXPECT_EQ(lifetime(99, 439, 0)["limit"], "worn early");
    EXPECT_EQ(lifetime(100, 30000, 0)["limit"], "worn out");
    EXPECT_EQ(lifetime(0, 20000, 1717986918, RATED)["limit"], "rate");
    EXPECT_EQ(lifetime(0, 20000, 1717986918, RATED)["basis"], "rated endurance and bytes written");
    EXPECT_EQ(lifetime(0, 10000, 1, RATED)["limit"], "service span");
    EXPECT_EQ(lifetime(0, 10000, 1, RATED)["basis"], "power-on hours alone");
    EXPECT_TRUE(lifetime(0, 0, 0)["limit"].is_null()) << "a new drive";
    const Json report = SolidStateReport("INTEL SSDSC2BB480G7", 10000, {Attribute(233, 50, 0)});
    EXPECT_EQ(Read(report)["lifetime"]["basis"], "wear indicator");
}

TEST(DriveJson, OffersTheOperationsThatSuitTheDrive) {
    using Names = std::vector<std::string>;
    Json report = AtaReport("MODEL");
    EXPECT_EQ(Read(report)["operations"], (Names{"LOCATE_DEVICE", "DISK_INFORMATION", "START_VERIFY"}));
    report["smart_status"]["passed"] = false;
    EXPECT_EQ(Read(report)["operations"], (Names{"LOCATE_DEVICE", "DISK_INFORMATION", "MAKE_OFFLINE"}));
    report["device"]["protocol"] = "SCSI";
    report["scsi_transport_protocol"]["value"] = 6;
    EXPECT_EQ(Read(report)["operations"],
              (Names{"LOCATE_DEVICE", "DISK_INFORMATION", "SENSE_LOG", "MAKE_OFFLINE"}));
}

TEST(DriveJson, HasEventsWhereTheyAreWanted) {
    const std::vector<RenderedEvent> events = {{{"EventID", "10045"}, {"Host", "h"}}};
    EXPECT_TRUE(Read(AtaReport("MODEL"))["events"].is_null());
    EXPECT_EQ(Json::parse(Text(AtaReport("MODEL"), &events))["events"],
              (Json::array({{{"EventID", "10045"}, {"Host", "h"}}})));
}
