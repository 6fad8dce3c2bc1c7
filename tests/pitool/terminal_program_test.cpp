// SPDX-License-Identifier: Apache-2.0
// The built program on terminals: widths that fit, colours where they are wanted.

#include "program_runner.h"
#include "sample_reports.h"
#include "terminal_runner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <initializer_list>

namespace {

using namespace pitool::test;

/// Runs a shell's command line in the folder of the examples; pitool is in its path.
std::string Show(const std::string& command, unsigned short columns, Environment variables = {"TERM=xterm"},
                 int status = 0, unsigned short rows = 24) {
    static const std::string FOLDER = std::filesystem::path(PITOOL_PROGRAM).parent_path();
    variables.push_back("PATH=" + FOLDER + ":/usr/bin:/bin");
    variables.emplace_back("TZ=UTC");
    return ShowOnTerminal(PITOOL_ALL_EXAMPLES, {"/bin/sh", "-c", command}, columns, variables, status, rows);
}

const Environment PLAIN{"TERM=xterm", "NO_COLOR=1"};

std::string Expected(const std::string& name) {
    return ReadFile(std::string(PITOOL_EXPECTED) + "/" + name);
}

bool HasColors(const std::string& text) {
    return text.find('\x1B') != std::string::npos;
}

/// The letters and digits of a text in the order of the alphabet.
std::string LettersOf(std::string text) {
    text.erase(std::remove_if(text.begin(), text.end(), [](unsigned char c) { return std::isalnum(c) == 0; }),
               text.end());
    std::sort(text.begin(), text.end());
    return text;
}

std::size_t LongestLine(const std::string& text) {
    std::size_t longest = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = text.find('\n', begin);
        longest = std::max(longest, end - begin);
        begin = end + 1;
    }
    return longest;
}

}  // namespace

TEST(Terminal, TheTableOfDrivesFits) {
    EXPECT_EQ(Show("pitool drive --events drives", 200, PLAIN, 0, 60),
              RunProgram(PITOOL_PROGRAM, PITOOL_ALL_EXAMPLES, {"drive", "--events", "drives"}).m_Output);
    for (const char* columns : {"132", "110", "80", "40"}) {
        EXPECT_EQ(
            Show("pitool drive --events drives", static_cast<unsigned short>(std::stoi(columns)), PLAIN),
            Expected(std::string("drives-") + columns + "-columns.txt"));
    }
}

TEST(Terminal, ASheetFits) {
    for (const char* columns : {"80", "40"}) {
        EXPECT_EQ(Show("pitool drive drives/innodisk-3me-173.json",
                       static_cast<unsigned short>(std::stoi(columns)), PLAIN),
                  Expected(std::string("innodisk-3me-173-") + columns + "-columns.txt"));
    }
}

TEST(Terminal, ATreeFits) {
    EXPECT_EQ(Show("pitool layout layouts/raid10-logical-drive.xml", 40, PLAIN),
              Expected("raid10-logical-drive-40-columns.txt"));
}

TEST(Terminal, AnEventFits) {
    EXPECT_EQ(Show("pitool event < events/rebuild-failed.json", 40, PLAIN),
              "EventID         10057\n"
              "Host            server-12\n"
              "Source          example\n"
              "Timestamp       1615107900000\n"
              "Datetime        03/07/2021 09:05:00\n"
              "ISO8601         2021-03-\n"
              "                07T09:05:00+00:00\n"
              "Severity        ERROR\n"
              "Placeholders    [logical drive 0, media\n"
              "                error on drive 1:3]\n"
              "Description     Rebuild on logical drive\n"
              "                0 failed: media error on\n"
              "                drive 1:3\n"
              "SequenceNumber  42\n");
}

TEST(Terminal, NamesAndSenseDataFit) {
    const std::string name = "pitool name rebuild_not_supported_on_level 30045";
    EXPECT_EQ(Show(name, 80, PLAIN),
              "20023  REBUILD_NOT_SUPPORTED_ON_LEVEL  error codes           ErrorCode::REBUILD_\n"
              "                                                             NOT_SUPPORTED_ON_\n"
              "                                                             LEVEL\n"
              "30045  RAID_LEVEL                      property identifiers  PropertyID::RAID_\n"
              "                                                             LEVEL_2\n");
    EXPECT_EQ(Show(name, 60, PLAIN),
              "20023  REBUILD_NOT_SUPPORTED_ON_LEVEL  error codes\n"
              "30045  RAID_LEVEL                      property identifiers\n");
    EXPECT_EQ(Show(name, 40, PLAIN),
              "20023  REBUILD_NOT_SUPPORTED_ON_LEVEL\n"
              "30045  RAID_LEVEL\n");
    EXPECT_EQ(Show("pitool sense --data \"$(cat sense/descriptor-deferred-power-on.txt)\"", 40, PLAIN),
              "format      73h, descriptor, deferred\n"
              "            error: it belongs to an\n"
              "            earlier command\n"
              "sense key   6h, unit attention\n"
              "additional  29h 00h, power on, reset, or\n"
              "            bus device reset occurred\n"
              "severity    WARNING\n");
}

TEST(Terminal, WithoutAWidthItHasThatOfColumnsOr80) {
    const std::string name = "pitool name rebuild_not_supported_on_level 30045";
    EXPECT_EQ(Show("COLUMNS=60 " + name, 0, PLAIN), Show(name, 60, PLAIN));
    EXPECT_EQ(Show("COLUMNS=60 " + name, 80, PLAIN), Show(name, 80, PLAIN));
    for (const char* columns : {"''", "0", "-5", "wide", "70000", "' 60'"}) {
        EXPECT_EQ(Show(std::string("COLUMNS=") + columns + " " + name, 0, PLAIN), Show(name, 80, PLAIN))
            << columns;
    }
}

TEST(Terminal, TheWorstDoesNotScrollAway) {
    for (const std::string command : {"drive drives", "drive --by-model drives", "drive --check drives",
                                      "drive --events drives", "forecast drives"}) {
        const int status = command == "drive --check drives" ? 2 : 0;
        const unsigned short rows = command == "drive --events drives" ? 24 : 12;
        for (const unsigned short columns : std::initializer_list<unsigned short>{40, 80, 200}) {
            const std::string shown = Show("pitool " + command, columns, PLAIN, status, rows);
            std::size_t lines = 0;
            for (std::size_t at = 0; at < shown.size();) {
                const std::size_t length = shown.find('\n', at) - at;
                lines += length == 0 ? 1 : (length + columns - 1) / columns;  // a terminal wraps long ones
                at += length + 1;
            }
            EXPECT_LT(lines, rows) << command << " in " << columns << "\n" << shown;
        }
    }
}

TEST(Terminal, AsManyDrivesAsFitAreShown) {
    const auto rows = [](const std::string& command, unsigned short height, int status = 0) {
        const std::string shown = Show("pitool drive " + command + " drives", 200, PLAIN, status, height);
        return std::count(shown.begin(), shown.end(), '\n');
    };
    const auto all = rows("", 60);
    EXPECT_EQ(rows("", static_cast<unsigned short>(all)), all - 1);
    EXPECT_EQ(rows("", static_cast<unsigned short>(all + 1)), all);
    EXPECT_EQ(rows("--limit 0", 5), all);
    EXPECT_EQ(rows("--limit 9", 5), 12);  // with headings, how many more, and the counts
    EXPECT_EQ(rows("--check --state good", 8, 2), 7);
    EXPECT_EQ(rows("--check --limit 0 --state good", 5, 2), 11);
    EXPECT_EQ(rows("--events --limit 0", 5), rows("--events", 60));
}

TEST(Terminal, NothingIsWiderThanTheTerminal) {
    for (const char* command :
         {"drive --events drives", "drive drives/worn-intel-ssd.json",
          "drive drives/wd-disk.json drives/hot-nvme-ssd.json", "layout layouts/raid10-logical-drive.xml",
          "layout layouts/raid1-array.xml", "event < events/rebuild-failed.json", "name rebuild",
          "name --list event-identifiers", "sense 6 29 00"}) {
        for (const unsigned short columns : std::initializer_list<unsigned short>{40, 60, 80, 100, 132}) {
            EXPECT_LE(LongestLine(Show(std::string("pitool ") + command, columns, PLAIN)), columns)
                << command;
        }
    }
}

TEST(Terminal, NoWidthLosesALetter) {
    for (const char* command : {"drive --events drives/hot-nvme-ssd.json",
                                "layout layouts/raid10-logical-drive.xml", "sense 6 29 00"}) {
        const std::string pitool = std::string("pitool ") + command;
        const std::string letters = LettersOf(Show(pitool + " | cat", 80, PLAIN));
        for (unsigned short columns = 1; columns < 100; columns = static_cast<unsigned short>(columns + 7)) {
            EXPECT_EQ(LettersOf(Show(pitool, columns, PLAIN)), letters) << pitool << " in " << columns;
        }
    }
}

TEST(Terminal, ColorsSayWhatTheWordsSay) {
    EXPECT_EQ(Show("pitool sense 3 11 00", 80),
              "sense key   3h, medium error\n"
              "additional  11h 00h, unrecovered read error\n"
              "severity    \x1B[33mWARNING\x1B[0m\n");
    EXPECT_EQ(Show("pitool drive --events drives", 110, {"TERM=xterm"}, 0, 60),
              Expected("drives-110-columns-colors.txt"));
    EXPECT_EQ(Show("pitool layout layouts/raid1-array.xml", 80), Expected("raid1-array-colors.txt"));
}

TEST(Terminal, TheEnvironmentSwitchesColorsOff) {
    EXPECT_TRUE(HasColors(Show("pitool sense 3 11 00", 80, {"TERM=xterm", "NO_COLOR="})));
    EXPECT_FALSE(HasColors(Show("pitool sense 3 11 00", 80, {"TERM=xterm", "NO_COLOR=0"})));
    EXPECT_FALSE(HasColors(Show("pitool sense 3 11 00", 80, {"TERM=dumb"})));
    EXPECT_FALSE(HasColors(Show("pitool sense 3 11 00", 80, {})));
}

TEST(Terminal, AnOptionSwitchesColorsOnAndOff) {
    EXPECT_FALSE(HasColors(Show("pitool --color never sense 3 11 00", 80)));
    EXPECT_FALSE(HasColors(Show("pitool sense --colour=never 3 11 00", 80)));
    EXPECT_TRUE(HasColors(Show("pitool --color never sense --color auto 3 11 00", 80)));
    EXPECT_TRUE(HasColors(Show("pitool sense 3 11 00 --color always", 80, PLAIN)));
    EXPECT_TRUE(HasColors(Show("pitool sense 3 11 00 --color always | cat", 80, PLAIN)));
    EXPECT_FALSE(HasColors(Show("pitool sense 3 11 00 --color auto", 80, PLAIN)));
}

TEST(Terminal, AFileOrPipeHasNoColorsAndAnyWidth) {
    const std::string whole =
        RunProgram(PITOOL_PROGRAM, PITOOL_ALL_EXAMPLES, {"drive", "--events", "drives"}).m_Output;
    EXPECT_EQ(Show("pitool drive --events drives | cat", 40), whole);
    EXPECT_EQ(Show("COLUMNS=40 pitool drive --events drives --color never | cat", 40), whole);
}

TEST(Terminal, ColorsInAPipeHaveTheWidthOfColumns) {
    EXPECT_EQ(Show("COLUMNS=110 pitool drive --events --color always drives | cat", 40),
              Expected("drives-110-columns-colors.txt"));
}

TEST(Terminal, JsonIsNeverColored) {
    for (const char* command : {"drive --json --events drives", "layout --json layouts/raid1-array.xml",
                                "event --json --id 5 --timestamp 0", "name --json 5",
                                "name --json --list error-codes", "sense --json 3 11 00"}) {
        const std::string shown = Show(std::string("pitool ") + command + " --color always", 80);
        EXPECT_FALSE(HasColors(shown)) << command;
        EXPECT_EQ(shown.substr(0, 2), "{\n") << command;
    }
}

TEST(Terminal, MessagesAreColoredWhereTheirOutputIsATerminal) {
    const std::string red = "\x1B[1;31mpitool:\x1B[0m missing.json: No such file or directory\n";
    EXPECT_EQ(Show("pitool drive missing.json > /dev/null", 20, {"TERM=xterm"}, 1), red);
    EXPECT_EQ(Show("pitool drive missing.json 2>&1 | cat", 20),
              "pitool: missing.json: No such file or directory\n");
    EXPECT_EQ(
        Show("pitool layout layouts/careless-array.xml | grep nothing", 80, {"TERM=xterm"}, 1).substr(0, 63),
        "pitool: layouts/careless-array.xml:3:1: \x1B[33mwarning:\x1B[0m Array");
    EXPECT_EQ(Show("pitool bad", 80, {"TERM=xterm"}, 2).substr(0, 19), "\x1B[1;31mpitool:\x1B[0m ");
}

TEST(Terminal, ProgressIsWipedAway) {
    const std::string read = "1 drive read";
    const std::string blanks(read.size(), ' ');  // carriage returns are not shown
    EXPECT_EQ(Show("{ sleep 1.1; cat drives/wd-disk.json; } | pitool drive -", 200, PLAIN),
              read + blanks + Show("pitool drive - < drives/wd-disk.json", 200, PLAIN));
}

TEST(Terminal, WhatFilesSayBringsNoColors) {
    const std::string directory = testing::TempDir() + "pitool_terminal_test";
    std::filesystem::create_directories(directory);
    Json report = AtaReport("EVIL\x1B[31mRED");
    report["serial_number"] =
        "\xC2\x9B"
        "31m";
    report["smart_status"]["passed"] = false;
    std::ofstream(directory + "/a\x1B[2J.json") << report.dump();
    std::ofstream(directory + "/b.json") << report.dump();
    for (const char* command : {"pitool drive --events ", "pitool drive --color never --events "}) {
        std::string shown = Show(command + ("'" + directory + "'"), 80);
        EXPECT_NE(shown.find("EVIL?[31mRED"), std::string::npos) << shown;
        for (const char* own : {"\x1B[0m", "\x1B[1m", "\x1B[2m", "\x1B[1;31m"}) {
            for (std::size_t at = 0; (at = shown.find(own)) != std::string::npos;) {
                shown.erase(at, std::string(own).size());
            }
        }
        EXPECT_FALSE(HasColors(shown)) << shown;
        EXPECT_EQ(shown.find("\xC2\x9B"), std::string::npos);
    }
    std::filesystem::remove_all(directory);
}
