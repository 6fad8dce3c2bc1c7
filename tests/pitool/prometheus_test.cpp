// SPDX-License-Identifier: Apache-2.0

#include "print/formats.h"

#include "drive_samples.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace pitool;
using namespace pitool::test;

namespace {

std::string Text(const std::vector<PI::CDriveReport>& reports) {
    std::vector<DriveSummary> drives;
    for (const PI::CDriveReport& report : reports) {
        drives.push_back(Summarize("file", report));
    }
    std::vector<const DriveSummary*> list;
    for (const DriveSummary& drive : drives) {
        list.push_back(&drive);
    }
    return PrometheusText(list, 3);
}

constexpr const char* LABELS = R"({model="INTEL SSDSC2BB480G7",serial="S1",device="/dev/sda"} )";

std::string Series(const char* family, const char* value) {
    return "\n" + std::string(family) + LABELS + value + "\n";
}

}  // namespace

TEST(Prometheus, FiguresAreInTheUnitsOfTheirFamilies) {
    const std::string text = Text({GoodReport(
        "S1", Wear(69) + R"(,"temperature":{"current":-3},"user_capacity":{"bytes":480103981056},)"
                         R"("local_time":{"time_t":1700000000})")});
    EXPECT_NE(text.find(Series("pi_drive_state", "1")), std::string::npos) << text;
    EXPECT_NE(text.find(Series("pi_drive_wear_ratio", "0.69")), std::string::npos) << text;
    EXPECT_NE(text.find(Series("pi_drive_power_on_seconds_total", "31557600")), std::string::npos) << text;
    EXPECT_NE(text.find(Series("pi_drive_temperature_celsius", "-3")), std::string::npos) << text;
    EXPECT_NE(text.find(Series("pi_drive_capacity_bytes", "480103981056")), std::string::npos) << text;
    EXPECT_NE(text.find(Series("pi_drive_report_timestamp_seconds", "1700000000")), std::string::npos)
        << text;
    const PI::CWearForecast forecast = Summarize("", GoodReport("S1", Wear(69))).GetForecast();
    const auto seconds = [](std::uint64_t hours) { return std::to_string(hours * 3600); };
    EXPECT_NE(text.find(Series("pi_drive_life_left_seconds", seconds(*forecast.GetHours()).c_str())),
              std::string::npos)
        << text;
    EXPECT_NE(text.find(Series("pi_drive_life_left_low_seconds", seconds(*forecast.GetLow()).c_str())),
              std::string::npos)
        << text;
}

TEST(Prometheus, FamiliesKeepTheirNamesTypesAndMeanings) {
    EXPECT_EQ(
        Text({}),
        "# HELP pi_inputs_refused Inputs that gave no drive.\n"
        "# TYPE pi_inputs_refused gauge\n"
        "pi_inputs_refused 3\n"
        "# HELP pi_drive_info What the drive is; always 1.\n"
        "# TYPE pi_drive_info gauge\n"
        "# HELP pi_drive_state What to do: 0 unknown, 1 good, 2 look at it, 3 replace it, 4 failed.\n"
        "# TYPE pi_drive_state gauge\n"
        "# HELP pi_drive_verdict The drive's own: 0 passed, 1 failing, 2 a warning.\n"
        "# TYPE pi_drive_verdict gauge\n"
        "# HELP pi_drive_wear_ratio Life that the drive has used; may pass 1.\n"
        "# TYPE pi_drive_wear_ratio gauge\n"
        "# HELP pi_drive_life_left_seconds Forecast of powered time until worn.\n"
        "# TYPE pi_drive_life_left_seconds gauge\n"
        "# HELP pi_drive_life_left_low_seconds Low end of the forecast: one drive in ten is worn earlier.\n"
        "# TYPE pi_drive_life_left_low_seconds gauge\n"
        "# HELP pi_drive_spare_ratio Reserve blocks that are left.\n"
        "# TYPE pi_drive_spare_ratio gauge\n"
        "# HELP pi_drive_power_on_seconds_total Time that the drive was powered.\n"
        "# TYPE pi_drive_power_on_seconds_total counter\n"
        "# HELP pi_drive_temperature_celsius Temperature now.\n"
        "# TYPE pi_drive_temperature_celsius gauge\n"
        "# HELP pi_drive_temperature_limit_celsius Temperature from which the drive warns.\n"
        "# TYPE pi_drive_temperature_limit_celsius gauge\n"
        "# HELP pi_drive_capacity_bytes Size of the drive.\n"
        "# TYPE pi_drive_capacity_bytes gauge\n"
        "# HELP pi_drive_written_bytes_total Bytes that hosts wrote.\n"
        "# TYPE pi_drive_written_bytes_total counter\n"
        "# HELP pi_drive_read_bytes_total Bytes that hosts read.\n"
        "# TYPE pi_drive_read_bytes_total counter\n"
        "# HELP pi_drive_media_errors_total Errors that the drive could not correct.\n"
        "# TYPE pi_drive_media_errors_total counter\n"
        "# HELP pi_drive_reallocated_sectors Sectors replaced by spare ones.\n"
        "# TYPE pi_drive_reallocated_sectors gauge\n"
        "# HELP pi_drive_pending_sectors Sectors that could not be read.\n"
        "# TYPE pi_drive_pending_sectors gauge\n"
        "# HELP pi_drive_interface_errors_total Damaged transfers between drive and host.\n"
        "# TYPE pi_drive_interface_errors_total counter\n"
        "# HELP pi_drive_failed_self_tests Self-tests failed since the last one that passed.\n"
        "# TYPE pi_drive_failed_self_tests gauge\n"
        "# HELP pi_drive_doubtful_figures Doubtful figures, which have no series.\n"
        "# TYPE pi_drive_doubtful_figures gauge\n"
        "# HELP pi_drive_report_timestamp_seconds When the report was made.\n"
        "# TYPE pi_drive_report_timestamp_seconds gauge\n");
}

TEST(Prometheus, WhatIsUnknownHasNoSeries) {
    const std::string text = Text({GoodReport("S1")});
    for (const char* family : {"wear_ratio", "life_left_seconds", "temperature_celsius", "capacity_bytes",
                               "report_timestamp_seconds"}) {
        EXPECT_EQ(text.find("\npi_drive_" + std::string(family) + "{"), std::string::npos) << family;
    }
}

TEST(Prometheus, WhatIsDoubtfulIsCountedAndHasNoSeries) {
    // 255 is the end of the statistic's scale; without a word of the attributes it is doubtful.
    const std::string text = Text({GoodReport("S1", Wear(255))});
    EXPECT_EQ(text.find("\npi_drive_wear_ratio{"), std::string::npos);
    EXPECT_NE(text.find(Series("pi_drive_doubtful_figures", "1")), std::string::npos) << text;
}

TEST(Prometheus, OfSeveralReportsOfADriveTheNewestCounts) {
    const auto report = [](const char* time, int wear) {
        return GoodReport("S1", Wear(wear) + R"(,"local_time":{"time_t":)" + time + "}");
    };
    const std::string text =
        Text({report("1700000000", 3), report("1700086400", 4), report("1600000000", 2), GoodReport("S2")});
    EXPECT_NE(text.find(Series("pi_drive_wear_ratio", "0.04")), std::string::npos) << text;
    EXPECT_EQ(Count(text, "\npi_drive_state{"), 2U);
    EXPECT_NE(text.find("# left out: 2 reports"), std::string::npos);
    EXPECT_EQ(Text({GoodReport("S1")}).find("# left out"), std::string::npos);
}

TEST(Prometheus, OfReportsOfWhichOneHasNoDateTheOneWithMoreHoursCounts) {
    const auto report = [](int wear, int hours, const std::string& more) {
        return GoodReport("S1",
                          Wear(wear) + R"(,"power_on_time":{"hours":)" + std::to_string(hours) + "}" + more);
    };
    const PI::CDriveReport dated = report(3, 100, R"(,"local_time":{"time_t":1700000000})");
    const PI::CDriveReport undated = report(2, 101, "");
    for (const std::string& text : {Text({dated, undated}), Text({undated, dated})}) {
        EXPECT_NE(text.find(Series("pi_drive_wear_ratio", "0.02")), std::string::npos) << text;
    }
    // Two by two, each of these is newer than the one before it, and the first newer than the last.
    std::vector<PI::CDriveReport> circle = {report(1, 103, R"(,"local_time":{"time_t":1700000000})"),
                                            report(2, 101, R"(,"local_time":{"time_t":1700086400})"),
                                            report(3, 102, "")};
    for (std::size_t i = 0; i < circle.size(); ++i) {
        std::rotate(circle.begin(), circle.begin() + 1, circle.end());
        for (const auto& reports : {circle, {circle.rbegin(), circle.rend()}}) {
            EXPECT_NE(Text(reports).find(Series("pi_drive_wear_ratio", "0.01")), std::string::npos) << i;
        }
    }
}

TEST(Prometheus, OfReportsOfTheSameTimeTheWorstCounts) {
    const std::string text =
        Text({GoodReport("S1", Wear(93)), GoodReport("S1", Wear(97)), GoodReport("S1", Wear(95))});
    EXPECT_NE(text.find(Series("pi_drive_wear_ratio", "0.97")), std::string::npos) << text;
}

TEST(Prometheus, OfReportsThatMayBeOfSeveralDrivesTheWorstCounts) {
    const std::string text = Text({GoodReport("--"), GoodReport("--", Wear(4)),
                                   GoodReport("--", Wear(3) + R"(,"local_time":{"time_t":1700000000})")});
    EXPECT_NE(text.find(R"(serial="--",device="/dev/sda"} 0.04)"), std::string::npos) << text;
}

TEST(Prometheus, LabelsAreEscapedAndOneLine) {
    const std::string text = Text({ReadMembers(R"("model_name":"a\"b\\c\nd","serial_number":"1")")});
    EXPECT_NE(text.find(R"({model="a\"b\\c?d",serial="1",device="/dev/sda"} )"), std::string::npos) << text;
}

TEST(Prometheus, TheInfoHasWhatTheDriveIs) {
    const std::string text = Text({GoodReport("S1", R"(,"firmware_version":"F1")")});
    EXPECT_NE(
        text.find(R"(pi_drive_info{model="INTEL SSDSC2BB480G7",serial="S1",device="/dev/sda",firmware="F1",)"
                  R"(kind="ATA SSD"} 1)"),
        std::string::npos)
        << text;
}
