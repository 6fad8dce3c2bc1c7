// SPDX-License-Identifier: Apache-2.0
// The command forecast of the built program, from outside.

#include "drive_history.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

namespace {

using namespace pitool::test;

constexpr std::int64_t JANUARY_2026 = 1767225600;
constexpr std::int64_t DAY = 86400;

Outcome RunForecast(const Folder& folder, std::vector<std::string> arguments = {"."}) {
    arguments.insert(arguments.begin(), "forecast");
    return RunProgram(PITOOL_PROGRAM, folder.Path(), std::move(arguments));
}

/// The drives of the JSON document, a line each.
std::vector<std::string> Drives(const Folder& folder) {
    const Outcome run = RunForecast(folder, {"--json", "."});
    EXPECT_EQ(run.m_ExitStatus, 0) << run.m_Errors;
    std::istringstream lines(run.m_Output);
    std::vector<std::string> drives;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("    {", 0) == 0) {
            drives.push_back(line);
        }
    }
    return drives;
}

/// Whether a drive has a forecast that a pattern matches.
bool HasForecast(const Folder& folder, const std::string& pattern) {
    return std::regex_search(Drives(folder).at(0), std::regex("\"forecast\":\\{" + pattern + "\\}"));
}

Sample At(std::uint64_t hours, int wear, std::int64_t date = 0) {
    Sample sample;
    sample.m_Hours = hours;
    sample.m_Wear = wear;
    sample.m_Date = date;
    return sample;
}

}  // namespace

TEST(ForecastCommand, PrintsJson) {
    const Folder folder;
    folder.Write("2025/a.json", Report(At(8000, 20)));
    folder.Write("2026/a.json", Report(At(16000, 50)));
    folder.Write("b.json", R"({"device":{"protocol":"ATA"},"model_name":"DISK","rotation_rate":7200})");
    const Outcome run = RunForecast(folder, {"--json", "2026", "2025/a.json", "b.json", "missing.json"});
    EXPECT_EQ(run.m_Output,
              R"({
  "format": "pitool forecast",
  "version": 1,
  "drives": [
    {"serial_number":"S3Z8NB0K","model":"SAMPLE NVME 960","readings":2,"wear":50,"hours":16000,"forecast":)"
              R"({"hours_to_worn":13374,"low":8426,"high":29424,"basis":"recent pace","reason":null}},
    {"serial_number":null,"model":"DISK","readings":1,"wear":null,"hours":null,"forecast":)"
              R"({"hours_to_worn":null,"low":null,"high":null,"basis":null,"reason":"rotating disk"}}
  ],
  "errors": [
    {"file":"missing.json","reason":"No such file or directory"}
  ]
}
)");
    EXPECT_EQ(run.m_Errors,
              "pitool: missing.json: No such file or directory\n"
              "pitool: b.json: warning: its serial number identifies no drive: it matches no other report\n");
    EXPECT_EQ(run.m_ExitStatus, 1);
}

TEST(ForecastCommand, TheSameReportTwiceChangesNothingButTheirNumber) {
    const Folder once;
    once.Write("a.json", Report(At(8000, 20)) + Report(At(16000, 50)));
    const Folder twice;
    twice.Write("a.json", Report(At(8000, 20)) + Report(At(16000, 50)));
    twice.Write("b.json", Report(At(16000, 50)) + Report(At(8000, 20)));
    std::string expected = Drives(once).at(0);
    const std::string readings = "\"readings\":";
    expected.replace(expected.find(readings + "2") + readings.size(), 1, "4");
    EXPECT_EQ(Drives(twice).at(0), expected);
}

TEST(ForecastCommand, FewerHoursAtALaterDateAreWarnedOf) {
    const Folder folder;
    folder.Write("a.json", Report(At(8000, 20, JANUARY_2026)));
    folder.Write("b.json", Report(At(8000, 21, JANUARY_2026 + DAY)));
    folder.Write("c.json", Report(At(9, 1)));
    EXPECT_EQ(RunForecast(folder).m_Errors, "");
    folder.Write("b.json", Report(At(7999, 20, JANUARY_2026 + DAY)));
    const Outcome run = RunForecast(folder);
    EXPECT_EQ(run.m_Errors,
              "pitool: ./b.json: warning: fewer power-on hours than in an earlier report of the "
              "same drive\n");
    EXPECT_EQ(run.m_ExitStatus, 0);
    folder.Write("b.json", Report(At(7999, 20, JANUARY_2026)));
    EXPECT_EQ(RunForecast(folder).m_Errors, "") << "of the same time";
}

TEST(ForecastCommand, TheHighEndIsNullWhereItIsOpenAndTheEstimateWhereTheWearStandsStill) {
    const Folder open;
    open.Write("a.json", Report(At(14000, 10)) + Report(At(16000, 10)));
    EXPECT_TRUE(HasForecast(open, R"("hours_to_worn":\d+,"low":\d+,"high":null,.*)"));
    const Folder still;
    still.Write("a.json", Report(At(8000, 10)) + Report(At(16000, 10)));
    EXPECT_TRUE(HasForecast(
        still, R"("hours_to_worn":null,"low":\d+,"high":null,.*,"reason":"the wear stands still")"));
}

TEST(ForecastCommand, WearAndHoursAreThoseThatTheForecastRestsOn) {
    const Folder folder;
    folder.Write("a.json", Report(At(8000, 20)) + Report(At(0, 20)));
    EXPECT_NE(Drives(folder).at(0).find(R"("wear":20,"hours":8000,)"), std::string::npos);
}

TEST(ForecastCommand, TheEarliestWornComesFirstAndWhatCannotBeSaidLast) {
    const Folder folder;
    const auto write = [&folder](const std::string& serial, std::vector<Sample> samples) {
        for (Sample& sample : samples) {
            sample.m_Serial = serial;
            folder.Write(serial + std::to_string(sample.m_Hours) + ".json", Report(sample));
        }
    };
    write("NOTHING", {At(5, 0)});
    write("STILL", {At(8000, 90), At(20000, 90)});
    write("LONG", {At(10000, 10)});
    write("SHORT", {At(10000, 80)});
    write("WORN", {At(10000, 100)});
    folder.Write("disk.json", R"({"device":{"protocol":"ATA"},"model_name":"DISK","serial_number":"DISK",)"
                              R"("rotation_rate":7200,"power_on_time":{"hours":9}})");
    std::vector<std::string> order;
    for (const std::string& drive : Drives(folder)) {
        const std::size_t begin = drive.find(':') + 2;
        order.push_back(drive.substr(begin, drive.find('"', begin) - begin));
    }
    EXPECT_EQ(order, (std::vector<std::string>{"WORN", "SHORT", "LONG", "STILL", "NOTHING", "DISK"}));
}

TEST(ForecastCommand, PrintsATableWithTheMonthsWhereReportsHoldDates) {
    const Folder folder;
    Sample undated = At(16000, 50);
    undated.m_Serial = "UNDATED";
    folder.Write("a.json", Report(undated));
    EXPECT_EQ(RunForecast(folder).m_Output,
              "LIFE LEFT        WEAR    AGE  READINGS  MODEL            SERIAL   BASIS\n"
              "1.7 y (0.9-7.0)  50 %  1.8 y         1  SAMPLE NVME 960  UNDATED  age\n");
    // Half of each day: 365 days of 12 hours.
    folder.Write("b.json",
                 Report(At(11620, 20, JANUARY_2026 - 365 * DAY)) + Report(At(16000, 50, JANUARY_2026)));
    EXPECT_EQ(RunForecast(folder).m_Output,
              "LIFE LEFT        WORN IN  EARLIEST  LATEST   WEAR    AGE  READINGS  MODEL            SERIAL   "
              " BASIS\n"
              "0.8 y (0.5-1.9)  2027-09  2027-01   2029-09  50 %  1.8 y         2  SAMPLE NVME 960  S3Z8NB0K "
              " recent pace\n"
              "1.7 y (0.9-7.0)  -        -         -        50 %  1.8 y         1  SAMPLE NVME 960  UNDATED  "
              " age\n");
}

TEST(ForecastCommand, WhatIsWornStandsOut) {
    const Folder folder;
    folder.Write("a.json", Report(At(10000, 100)));
    EXPECT_NE(RunForecast(folder, {"--color", "always", "."}).m_Output.find("\x1B[33mworn\x1B[0m"),
              std::string::npos);
    const Folder other;
    other.Write("a.json", Report(At(10000, 50)));
    EXPECT_EQ(RunForecast(other, {"--color", "always", "."}).m_Output.find("\x1B[33m"), std::string::npos);
}

TEST(ForecastCommand, WhatIsMoreThanThirtyYearsAwayHasNoMonth) {
    const Folder folder;
    folder.Write("a.json", Report(At(10000, 2, JANUARY_2026)));
    EXPECT_EQ(
        RunForecast(folder).m_Output,
        "LIFE LEFT     WORN IN  EARLIEST  LATEST  WEAR    AGE  READINGS  MODEL            SERIAL    BASIS\n"
        "> 30 y (22-)  -        2048-03   -        2 %  1.1 y         1  SAMPLE NVME 960  S3Z8NB0K  age\n");
}

TEST(ForecastCommand, DoubtfulFiguresBearAMark) {
    const Folder folder;
    folder.Write("a.json", Report(At(8000, 255)));
    // 1234 hours, and more above their 24 bits.
    folder.Write("b.json", R"({"device":{"protocol":"ATA"},"model_name":"SSD","rotation_rate":0,)"
                           R"("ata_smart_attributes":{"table":[{"id":9,"raw":{"value":46179488367826}}]}})");
    const std::string table = RunForecast(folder).m_Output;
    EXPECT_NE(table.find("  255 %?   0.9 y  "), std::string::npos) << table;
    EXPECT_NE(table.find("  0.1 y?  "), std::string::npos) << table;
}

TEST(ForecastCommand, TextOfReportsSteersNoTerminal) {
    const Folder folder;
    Sample sample = At(10000, 80);
    sample.m_Serial = "A\x1B[2JB";
    sample.m_Model = "M\nN";
    folder.Write("a.json", Report(sample));
    EXPECT_NE(RunForecast(folder).m_Output.find("M?N    A?[2JB  age\n"), std::string::npos)
        << RunForecast(folder).m_Output;
}

TEST(ForecastCommand, WithoutADriveNothingIsPrinted) {
    const Folder folder;
    const Outcome run = RunForecast(folder, {"missing.json"});
    EXPECT_EQ(run.m_Output, "");
    EXPECT_EQ(run.m_ExitStatus, 1);
    EXPECT_EQ(RunForecast(folder, {}).m_ExitStatus, 2);
}
