// SPDX-License-Identifier: Apache-2.0

#include "drive_detail.h"
#include "sample_reports.h"

#include <gtest/gtest.h>

#include <string>

using namespace pitool;
using namespace pitool::test;

namespace {

std::string Sheet(const Json& json, bool hasColors = false) {
    const PI::CDriveReport report = ReportOf(json);
    return SheetTable(Summarize("", report), report, PI::CHealthAssessment(report.GetHealth()))
        .Text({0, hasColors});
}

/// What the sheet says under a name; several lines joined by a slash.
std::string Told(const Json& json, const std::string& name) {
    std::istringstream lines(Sheet(json));
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, name.size() + 1, name + " ") == 0) {
            text += (text.empty() ? "" : " / ") + line.substr(line.find_first_not_of(' ', name.size()));
        }
    }
    return text;
}

Json WornTo(int percentUsed, std::uint64_t hours = 20000) {
    Json json = AtaReport("SAMPLE");
    json["device"]["protocol"] = "NVMe";
    json["nvme_smart_health_information_log"] = {{"percentage_used", percentUsed}, {"power_on_hours", hours}};
    return json;
}

}  // namespace

TEST(Sheet, TheStateComesFirstWithItsReasonsTheWeightiestFirst) {
    Json json = WornTo(95);
    json["smart_status"]["passed"] = true;
    json["nvme_smart_health_information_log"]["media_errors"] = 3;
    const std::string sheet = Sheet(json);
    std::istringstream words(sheet);
    std::string all;
    for (std::string word; words >> word && word != "FORECAST";) {
        all += word + " ";
    }
    EXPECT_EQ(all, "STATE look at it REASON 3 uncorrected errors REASON 95 percent worn ");
}

TEST(Sheet, TheForecastSaysItsRangeAndDatesWhereTheReportIsDated) {
    Json json = WornTo(50);
    EXPECT_EQ(Told(json, "FORECAST"),
              "worn in 2.1 y of power-on time, four times out of five in 1.1 y to 8.7 y; by its age");
    json["local_time"]["time_t"] = 1700000000;
    EXPECT_EQ(
        Told(json, "FORECAST"),
        "worn in 2.1 y of power-on time, four times out of five in 1.1 y to 8.7 y; running without a break, "
        "about 2025-12-13, 2024-12-28 to 2032-08-07; by its age");
    EXPECT_EQ(Told(json, "REPORTED"), "2023-11-14T22:13:20Z");
    EXPECT_EQ(Told(WornTo(100), "FORECAST"), "worn (the wear has reached 100 percent)");
    Json disk = AtaReport("ST380815AS");
    EXPECT_EQ(Told(disk, "FORECAST"), "none (no reading tells power-on hours and wear)") << "perhaps no disk";
    disk["rotation_rate"] = 7200;
    EXPECT_EQ(Told(disk, "FORECAST"), "not applicable (rotating disk)");
    EXPECT_EQ(Told(disk, "REPORTED"), "unknown (not reported)");
    disk["serial_number"] = "S1";
    disk["model_name"] = "";
    EXPECT_EQ(Told(disk, "MODEL"), "unknown (not reported)");
}

TEST(Sheet, PropertiesSayWhatTheyRestOnOrWhyTheyAreNotKnown) {
    Json json = WornTo(255);
    EXPECT_EQ(Told(json, "ESTIMATED_LIFETIME"),
              "0 percent?, counts down; doubtful: NVMe log 02h says 255 percent, which stands for more than "
              "254 or for nothing");
    EXPECT_EQ(Told(json, "RPM"), "not applicable (solid-state drive)");
    EXPECT_EQ(Told(json, "VENDOR"), "unknown (the model text does not name it)");
    EXPECT_EQ(Told(json, "OS_DEVICE"), "/dev/sdx");
}

TEST(Sheet, FiguresWithoutANameOfTheVocabularyAreLeftOutWhereNothingReportsThem) {
    Json json = SolidStateReport("SAMPLE", 5, {Attribute(197, 100, 8)});
    EXPECT_EQ(Told(json, "PENDING_SECTORS"), "8; SMART attribute 197");
    EXPECT_EQ(Told(json, "UNCORRECTABLE_SECTORS"), "");
    EXPECT_EQ(Told(json, "MEDIA_ERROR_COUNT"), "unknown (not reported)");
    json = SolidStateReport("SAMPLE", 5, {Attribute(197, 100, 281474976710655)});
    EXPECT_EQ(Told(json, "PENDING_SECTORS"),
              "unknown (SMART attribute 197 says 281474976710655, which cannot be)");
}

TEST(Sheet, WhatIsFailingWornOrHotStandsOut) {
    const auto marked = [](const Json& json) {
        std::istringstream lines(Sheet(json, true));
        std::string names;
        for (std::string line; std::getline(lines, line);) {
            const std::size_t color = line.find("\x1B[");
            const bool isFaint = color != std::string::npos && line[color + 2] == '2';
            names += color == std::string::npos || isFaint ? "" : line.substr(0, line.find(' ')) + " ";
        }
        return names;
    };
    Json json = WornTo(96);
    json["temperature"] = {{"current", 80}, {"op_limit_max", 70}};
    EXPECT_EQ(marked(json), "STATE REASON REASON HEALTH TEMPERATURE RATED_ENDURANCE_PERCENT ");
    json = AtaReport("SAMPLE");
    json["smart_status"]["passed"] = false;
    EXPECT_EQ(marked(json), "STATE REASON SMART_FLAGGED HEALTH ");
}

TEST(Sheet, LongNumbersAreSaidForPeopleToo) {
    Json json = WornTo(50);
    json["user_capacity"]["bytes"] = 960197124096;
    json["logical_block_size"] = 512;
    json["nvme_smart_health_information_log"]["data_units_written"] = 1;
    EXPECT_EQ(Told(json, "PHYSICAL_SIZE"), "960 GB (960197124096 bytes)");
    EXPECT_EQ(Told(json, "BLOCK_SIZE"), "512 bytes");
    EXPECT_EQ(Told(json, "POWERON_HOURS"), "20000 hours (2.3 y), counts up; NVMe log 02h");
    EXPECT_EQ(Told(json, "BYTES_WRITTEN"), "512 kB (512000 bytes), counts up; NVMe log 02h");
    EXPECT_EQ(Told(WornTo(50, 1), "POWERON_HOURS"), "1 hour, counts up; NVMe log 02h");
    EXPECT_EQ(Told(WornTo(50, 999), "POWERON_HOURS"), "999 hours, counts up; NVMe log 02h");
    EXPECT_EQ(Told(WornTo(50, 1000), "POWERON_HOURS"), "1000 hours (0.1 y), counts up; NVMe log 02h");
}

TEST(Sheet, KeepsTheNotesOfTheReport) {
    Json json = AtaReport("SAMPLE");
    json["smartctl"]["exit_status"] = 8;
    EXPECT_EQ(Told(json, "NOTE"), "exit status of smartctl: the drive's verdict is that it fails");
}
