// SPDX-License-Identifier: Apache-2.0
// The commands of the built program, from outside.

#include "command_runner.h"

#include <gtest/gtest.h>

#include <pty.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cstdlib>
#include <regex>

namespace {

using namespace pitool::test;

}  // namespace

TEST(DriveCommand, ShowsTheEventsBehindTheSheet) {
    const Outcome sheet = RunPitool({"drive", "drives/hot-nvme-ssd.json"});
    ExpectRun(RunPitool({"drive", "--events", "drives/hot-nvme-ssd.json"}), 0,
              sheet.m_Output +
                  "\nSEVERITY  EVENT  DESCRIPTION\n"
                  "WARNING   11090  Wear of drive INTEL SSDPE2KE016T8 (serial number "
                  "PHLN000000201P6AGN, /dev/nvme1) is above "
                  "its threshold: 93 percent used, threshold 90. Plan its replacement\n"
                  "WARNING   11021  Temperature of drive INTEL SSDPE2KE016T8 (serial number "
                  "PHLN000000201P6AGN, /dev/nvme1) is "
                  "too high: 74 degrees Celsius, limit 70. Check its cooling\n",
              "");
    const Outcome sound = RunPitool({"drive", "drives/wd-disk.json"});
    ExpectRun(RunPitool({"drive", "--events", "drives/wd-disk.json"}), 0, sound.m_Output + "\nno events\n",
              "");
}

TEST(DriveCommand, ShowsTheEventsBehindTheTableWorstFirst) {
    const std::vector<std::string> files{"drives/hot-nvme-ssd.json", "drives/wd-disk.json",
                                         "drives/failing-hgst-disk.json"};
    const Outcome table = RunPitool({"drive", files[0], files[1], files[2]});
    const Outcome run = RunPitool({"drive", "--events", files[0], files[1], files[2]});
    ASSERT_EQ(run.m_Output.substr(0, table.m_Output.size()), table.m_Output);
    const std::string events = run.m_Output.substr(table.m_Output.size());
    const std::string worst =
        "\nSEVERITY  EVENT  DESCRIPTION\nERROR     10045  Drive HGST HUS724040ALA640 (serial number "
        "PN2334PIT00009, "
        "/dev/sdi) ";
    EXPECT_EQ(events.substr(0, worst.size()), worst);
    EXPECT_EQ(std::count(events.begin(), events.end(), '\n'), 5);
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST(DriveCommand, EventsStandInJsonWhereTheyAreWanted) {
    const std::string without = RunPitool({"drive", "--json", "drives/hot-nvme-ssd.json"}).m_Output;
    EXPECT_NE(
        without.find(R"("operations":["LOCATE_DEVICE","DISK_INFORMATION","START_VERIFY"],"events":null})"),
        std::string::npos);
    const std::string with = RunPitool({"drive", "--json", "--events", "drives/hot-nvme-ssd.json"}).m_Output;
    const std::regex events(R"re("events":\[\{"EventID":"11090",[^{}]*\},)re"
                            R"re(\{"EventID":"11021",[^{}]*"SequenceNumber":"2"\}\]\})re");
    EXPECT_TRUE(std::regex_search(with, events)) << with;
}

TEST(DriveCommand, EventsTakeAnotherLanguageFile) {
    const Outcome run = RunPitool(
        {"drive", "--events", "--strings", "events/strings.de.xml", "drives/failing-hgst-disk.json"});
    EXPECT_NE(run.m_Output.find("\nERROR     10045  Unknown Event\n"), std::string::npos);
    const Outcome missing =
        RunPitool({"drive", "--events", "--strings", "missing.xml", "drives/wd-disk.json"});
    EXPECT_EQ(missing.m_Output, "");
    EXPECT_EQ(missing.m_ExitStatus, 1);
    EXPECT_EQ(RunPitool({"drive", "--strings", "events/strings.de.xml", "drives/wd-disk.json"}).m_ExitStatus,
              2);
}

TEST(EtaCommand, ShowsTheEstimateWithItsRangeAndTheOneOfCETR) {
    ExpectRun(RunPitool({"eta"}, Example("progress/rebuild.txt")), 0,
              "0 percent, time remaining not known; CETR 01:40:00\n"
              "2 percent, 01:42:01 remaining (01:21:08 to 02:30:17); CETR 03:16:00\n"
              "5 percent, 01:37:06 remaining (01:20:12 to 02:14:11); CETR 01:35:00\n"
              "10 percent, 01:30:27 remaining (01:21:16 to 01:48:27); CETR 01:30:00\n"
              "20 percent, 01:20:03 remaining (01:16:18 to 01:26:50); CETR 01:20:00\n"
              "40 percent, 01:00:00 remaining (00:58:14 to 01:03:05); CETR 01:00:00\n"
              "60 percent, 00:40:00 remaining (00:38:56 to 00:41:50); CETR 00:40:00\n"
              "80 percent, 00:20:00 remaining (00:19:28 to 00:20:55); CETR 00:20:00\n"
              "95 percent, 00:05:00 remaining (00:04:52 to 00:05:13); CETR 00:05:00\n"
              "99 percent, 00:01:00 remaining (00:00:58 to 00:01:02); CETR 00:01:00\n"
              "100 percent, done; CETR 00:01:00\n",
              "");
    ExpectRun(RunPitool({"eta"}, ""), 0, "", "");
}

TEST(EtaCommand, APercentageAloneIsOfThisMoment) {
    // The first sample counts as a minute's work with CETR, whatever the clock says.
    ExpectRun(RunPitool({"eta"}, "50\n"), 0, "50 percent, time remaining not known; CETR 00:50:00\n", "");
}

TEST(EtaCommand, WhatStallsNeedsItsTimeOnlyOnceItGoesOn) {
    const Outcome run = RunPitool({"eta"}, "0 0\n10 60000\n20 120000\n20 4000000\n20 5000000\n21 5030000\n");
    const std::string stalled = "20 percent, stalled, 00:07:55 (00:07:16 to 00:09:09) once it goes on; CETR ";
    EXPECT_NE(run.m_Output.find("\n" + stalled), run.m_Output.rfind("\n" + stalled)) << run.m_Output;
    EXPECT_NE(run.m_Output.find("\n21 percent, 00:09:50 remaining ("), std::string::npos) << run.m_Output;
}

TEST(EtaCommand, ALineThatIsRefusedIsNamedAndTheOthersCount) {
    ExpectRun(RunPitool({"eta"}, "50 1000\nabc\n \t\r\n60 500\n" + std::string(5000, '1') + "\n60 31000\n" +
                                     std::string(4097, ' ') + "x\n60 31000 \r"),
              1,
              "50 percent, time remaining not known; CETR 00:50:00\n"
              "60 percent, time remaining not known; CETR 00:40:00\n"
              "60 percent, time remaining not known; CETR 00:40:00\n",
              "pitool: standard input: line 2: \"abc\" is not a percentage: expected a whole number from "
              "0 to 100\n"
              "pitool: standard input: line 4: the time 500 is before that of the previous sample, 1000\n"
              "pitool: standard input: line 5: longer than 4096 bytes\n"
              "pitool: standard input: line 7: longer than 4096 bytes\n");
}

TEST(EtaCommand, TakesWholeNumbersOnly) {
    std::string input;
    std::string errors;
    std::size_t number = 0;
    const auto refuse = [&](const std::string& line, const std::string& reason) {
        input += line + "\n";
        errors += "pitool: standard input: line " + std::to_string(++number) + ": " + reason + "\n";
    };
    for (const std::string word : {"-1", "101", "2147483648", "-2147483649", "99999999999999999999", "1.5",
                                   "50%", "+5", "0x10", "1e2"}) {
        refuse(word + " 5", "\"" + word + "\" is not a percentage: expected a whole number from 0 to 100");
    }
    for (const std::string word : {"-1", "100000000000000", "18446744073709551616", "x", "1.0"}) {
        refuse("5 " + word, "\"" + word + "\" is not a time: expected milliseconds from 0 to 99999999999999");
    }
    refuse("5 6 7", "more than a percentage and a time");
    refuse("\x1B[2J", "\"?[2J\" is not a percentage: expected a whole number from 0 to 100");
    refuse(std::string(41, 'a'),
           "\"" + std::string(40, 'a') + "...\" is not a percentage: expected a whole number from 0 to 100");
    ExpectRun(RunPitool({"eta"}, input), 1, "", errors);
}

TEST(EtaCommand, TheLatestTimeDoesNotWrap) {
    const Outcome run = RunPitool({"eta"}, "0 0\n1 99999999999999\n2 99999999999999\n");
    EXPECT_EQ(run.m_Errors, "");
    EXPECT_NE(run.m_Output.find("\n1 percent, > 99:59:59 remaining ("), std::string::npos) << run.m_Output;
}

TEST(EtaCommand, RedrawsABarOnATerminal) {
    const auto shown = [](unsigned short columns) {
        int terminal = -1;
        int program = -1;
        const winsize size{24, columns, 0, 0};
        EXPECT_EQ(openpty(&terminal, &program, nullptr, nullptr, &size), 0);
        EXPECT_EQ(RunPitool({"eta"}, "9 0\n10 600000\nx\n50 1200000\n", program).m_ExitStatus, 1);
        close(program);
        // A terminal hands out what was written in pieces of its own choice.
        std::string text;
        char piece[256];
        for (ssize_t length = 0; (length = read(terminal, piece, sizeof piece)) > 0;) {
            text.append(piece, static_cast<std::size_t>(length));
        }
        close(terminal);
        return text;
    };
    const std::regex whole(
        "(\\[[#-]+\\] )?(\\d+( percent(, (time remaining not known|\\d\\d:\\d\\d:\\d\\d remaining)"
        "( \\(\\d\\d:\\d\\d:\\d\\d to \\d\\d:\\d\\d:\\d\\d\\))?(; CETR \\d\\d:\\d\\d:\\d\\d)?)?)?)? *\n?");
    for (unsigned short columns = 2; columns < 120; ++columns) {
        std::istringstream lines(shown(columns));
        for (std::string line; std::getline(lines, line, '\r');) {
            EXPECT_LT(line.size(), columns) << line;
            EXPECT_TRUE(std::regex_match(line, whole)) << columns << ": " << line;
        }
    }
    EXPECT_EQ(
        shown(115),
        "\r[####----------------------------------------------] 9 percent, time remaining not known; CETR "
        "01:31:00           "
        "\r[#####---------------------------------------------] 10 percent, time remaining not known; CETR "
        "15:00:00          \r\n"
        "\r[#####################----------------------] 50 percent, 00:13:00 remaining (00:10:19 to "
        "00:19:15); CETR 00:20:00\r\n");
    EXPECT_EQ(shown(60),
              "\r[------] 9 percent, time remaining not known; CETR 01:31:00"
              "\r[-----] 10 percent, time remaining not known; CETR 15:00:00\r\n"
              "\r50 percent, 00:13:00 remaining (00:10:19 to 00:19:15)      \r\n");
    EXPECT_EQ(shown(31),
              "\r[#-----------------] 9 percent"
              "\r[#----------------] 10 percent\r\n"
              "\r50 percent, 00:13:00 remaining\r\n");
    EXPECT_EQ(shown(3), "\r9 \r10\r\n\r50\r\n");
}

TEST(AllCommands, AFullDiskIsOneErrorAndExitStatus1) {
    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    if (full < 0) {
        GTEST_SKIP() << "no /dev/full on this machine";
    }
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"layout", "layouts/raid1-array.xml"},
          {"layout", "--json", "layouts/raid1-array.xml"},
          {"event", "--id", "10055"},
          {"eta"},
          {"name", "30045"},
          {"name", "--list", "error codes"},
          {"sense", "5", "24", "0"}}) {
        const Outcome run = RunPitool(arguments, "50 0\n60 1\n", full);
        EXPECT_EQ(run.m_Errors, "pitool: standard output: No space left on device\n") << arguments[0];
        EXPECT_EQ(run.m_ExitStatus, 1) << arguments[0];
    }
    close(full);
}

TEST(AllCommands, HaveHelp) {
    for (const char* command : {"layout", "event", "eta", "name", "sense"}) {
        const Outcome run = RunPitool({command, "--help"});
        EXPECT_NE(run.m_Output.find(std::string("Usage: pitool ") + command), std::string::npos);
        EXPECT_EQ(run.m_Errors, "");
        EXPECT_EQ(run.m_ExitStatus, 0);
    }
}
