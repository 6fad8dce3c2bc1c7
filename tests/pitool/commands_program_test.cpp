// SPDX-License-Identifier: Apache-2.0
// The commands layout, event, eta, name and sense of the built program, from outside.

#include "program_runner.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <pty.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

using namespace pitool::test;

Outcome RunPitool(const std::vector<std::string>& arguments, const std::string& input = "", int output = -1) {
    return RunProgram(PITOOL_PROGRAM, PITOOL_ALL_EXAMPLES, arguments, input, output);
}

std::string ReadWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string Expected(const std::string& name) {
    return ReadWhole(std::string(PITOOL_EXPECTED) + "/" + name);
}

std::string Example(const std::string& name) {
    return ReadWhole(std::string(PITOOL_ALL_EXAMPLES) + "/" + name);
}

void ExpectRun(const Outcome& run, int status, const std::string& output, const std::string& errors) {
    EXPECT_EQ(run.m_Output, output);
    EXPECT_EQ(run.m_Errors, errors);
    EXPECT_EQ(run.m_ExitStatus, status);
}

}  // namespace

TEST(LayoutCommand, PrintsATree) {
    ExpectRun(RunPitool({"layout", "layouts/raid1-array.xml"}), 0, Expected("raid1-array.txt"), "");
    ExpectRun(RunPitool({"layout", "layouts/raid10-logical-drive.xml"}), 0,
              Expected("raid10-logical-drive.txt"), "");
}

TEST(LayoutCommand, PrintsJson) {
    ExpectRun(RunPitool({"layout", "--json", "layouts/raid10-logical-drive.xml"}), 0,
              Expected("raid10-logical-drive.json"), "");
}

TEST(LayoutCommand, WarnsOfWhatWasLostAndIsDoneAllTheSame) {
    const std::string errors =
        "pitool: layouts/careless-array.xml:3:1: warning: ArrayConfiguration: Size \"931 GB\" is no number, "
        "taken as 0; Units 3 is no unit\n"
        "pitool: layouts/careless-array.xml:6:13: warning: Drive: StartAddress \"-1\" wraps to "
        "18446744073709551615; UsedSize is empty, taken as 0; IsConfigurable \"yes\" is no number, taken as "
        "1\n"
        "pitool: layouts/careless-array.xml:7:13: warning: Drive: StartAddress is missing, taken as 0; "
        "UsedSize "
        "is missing, taken as 0; IsConfigurable is missing, taken as 1; LogicalDrive is missing, taken as 0; "
        "LogicalOwner is missing, taken as 0\n"
        "pitool: layouts/careless-array.xml:10:5: warning: HotSpares: is not read\n";
    ExpectRun(RunPitool({"layout", "layouts/careless-array.xml"}), 0, Expected("careless-array.txt"), errors);
    ExpectRun(RunPitool({"layout", "--json", "layouts/careless-array.xml"}), 0,
              Expected("careless-array.json"), errors);
}

TEST(LayoutCommand, ReadsStandardInput) {
    ExpectRun(RunPitool({"layout", "-"}, Example("layouts/raid1-array.xml")), 0, Expected("raid1-array.txt"),
              "");
}

TEST(LayoutCommand, ARefusalIsOneLineWithThePlace) {
    ExpectRun(RunPitool({"layout", "-"}, "<ArrayConfiguration>\n <Containers>\n</ArrayConfiguration>"), 1, "",
              "pitool: -:3:3: not well-formed XML: mismatched tag\n");
    ExpectRun(RunPitool({"layout", "-"}, "<a\x1B/>"), 1, "",
              "pitool: -:1:3: not well-formed XML: not well-formed (invalid token)\n");
    ExpectRun(RunPitool({"layout", "-"}, "<Layout/>"), 1, "",
              "pitool: -:1:1: the root element is \"Layout\", neither ArrayConfiguration nor "
              "LogicalDriveConfiguration\n");
    ExpectRun(RunPitool({"layout", "missing.xml"}), 1, "",
              "pitool: missing.xml: No such file or directory\n");
    ExpectRun(RunPitool({"layout", "layouts"}), 1, "", "pitool: layouts: Is a directory\n");
}

TEST(LayoutCommand, DeepNestingIsOneLine) {
    std::string deep;
    for (int i = 0; i < 1000000; ++i) {
        deep += "<a>";
    }
    ExpectRun(RunPitool({"layout", "-"}, deep), 1, "", "pitool: -:1:193: nested deeper than 64 levels\n");
}

TEST(LayoutCommand, BadUsageExitsWith2) {
    EXPECT_EQ(RunPitool({"layout"}).m_ExitStatus, 2);
    EXPECT_EQ(RunPitool({"layout", "a", "b"}).m_ExitStatus, 2);
}

TEST(EventCommand, RendersEverySampleOfAnEvent) {
    for (const auto& file :
         std::filesystem::directory_iterator(std::string(PITOOL_ALL_EXAMPLES) + "/events")) {
        if (file.path().extension() == ".json") {
            EXPECT_EQ(RunPitool({"event"}, ReadWhole(file.path())).m_ExitStatus, 0) << file.path();
        }
    }
}

TEST(EventCommand, RendersJsonFromStandardInput) {
    setenv("TZ", "UTC", 1);
    ExpectRun(RunPitool({"event"}, Example("events/rebuild-failed.json")), 0,
              "EventID         10057\n"
              "Host            server-12\n"
              "Source          example\n"
              "Timestamp       1615107900000\n"
              "Datetime        03/07/2021 09:05:00\n"
              "Severity        ERROR\n"
              "Placeholders    [logical drive 0, media error on drive 1:3]\n"
              "Description     Rebuild on logical drive 0 failed: media error on drive 1:3\n"
              "SequenceNumber  42\n",
              "");
}

TEST(EventCommand, RendersOptionsAsJson) {
    setenv("TZ", "UTC", 1);
    ExpectRun(
        RunPitool({"event", "--id", "smart_warning", "--severity", "warning", "--timestamp", "0", "--source",
                   "", "--host=[h,i]", "--placeholder1", "[a,b]", "--placeholder2", "++", "--json"}),
        0,
        "{\n"
        "  \"format\": \"pitool event\",\n"
        "  \"version\": 1,\n"
        "  \"event\": {\n"
        "    \"EventID\": \"10044\",\n"
        "    \"Host\": \"[h,i]\",\n"
        "    \"Source\": \"\",\n"
        "    \"Timestamp\": \"0\",\n"
        "    \"Datetime\": \"01/01/1970 00:00:00\",\n"
        "    \"Severity\": \"WARNING\",\n"
        "    \"Placeholders\": \"[[a,b], ++]\",\n"
        "    \"Description\": \"Drive [a,b] reported a SMART warning: ++\",\n"
        "    \"SequenceNumber\": \"0\"\n"
        "  }\n"
        "}\n",
        "");
}

TEST(EventCommand, TakesAnotherLanguageFile) {
    const Outcome run =
        RunPitool({"event", "--strings", "events/strings.de.xml"}, Example("events/spare-taken.json"));
    EXPECT_NE(run.m_Output.find("Description     Ersatzlaufwerk 1:7 beginnt, ein ausgefallenes Laufwerk "
                                "zu ersetzen\n"),
              std::string::npos)
        << run.m_Output;
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST(EventCommand, AnEventWithoutTextIsUnknown) {
    const Outcome run = RunPitool({"event", "--id", "12377", "--placeholder1", "a"});
    EXPECT_NE(run.m_Output.find("Description     Unknown Event\n"), std::string::npos);
    EXPECT_EQ(run.m_Output.find("Placeholders"), std::string::npos);
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST(EventCommand, WithoutALanguageFileItWarnsOnceAndGoesOn) {
    std::string directory = testing::TempDir() + "pitool_XXXXXX";
    ASSERT_NE(mkdtemp(directory.data()), nullptr);
    const std::string program = directory + "/pitool";
    std::filesystem::copy_file(PITOOL_PROGRAM, program);
    // A program that looks for its libraries beside itself does not find them from there.
    const Outcome run = RunProgram("/usr/bin/env", directory,
                                   {"LD_LIBRARY_PATH=" PITOOL_LIBRARIES, program, "event", "--id", "10055"});
    std::filesystem::remove_all(directory);
    EXPECT_NE(run.m_Output.find("Description     Unknown Event\n"), std::string::npos) << run.m_Output;
    EXPECT_EQ(run.m_Errors,
              "pitool: warning: no language file was found: every description reads \"Unknown Event\"\n");
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST(EventCommand, RefusalsAreOneLine) {
    ExpectRun(RunPitool({"event"}, "{"), 1, "", "pitool: standard input: not JSON: wrong at byte 2\n");
    ExpectRun(RunPitool({"event"}, ""), 1, "", "pitool: standard input: empty\n");
    ExpectRun(RunPitool({"event", "--id", "NONE_SUCH"}), 2, "",
              "pitool: --id: \"NONE_SUCH\" is no number or name of an event\n");
    ExpectRun(RunPitool({"event", "--placeholder1", "a", "--resource1", "5"}), 2, "",
              "pitool: --placeholder1 excludes --resource1; see pitool event --help\n");
    const Outcome missing = RunPitool({"event", "--id", "5", "--strings", "missing.xml"});
    EXPECT_EQ(missing.m_Output, "");
    EXPECT_EQ(missing.m_Errors.find("pitool: missing.xml: cannot be read"), 0U) << missing.m_Errors;
    EXPECT_EQ(missing.m_ExitStatus, 1);
    const Outcome broken = RunPitool({"event", "--id", "5", "--strings", "layouts/raid1-array.xml"});
    EXPECT_EQ(broken.m_Errors, "pitool: layouts/raid1-array.xml:3:2: the root element is not Strings\n");
    EXPECT_EQ(broken.m_ExitStatus, 1);
}

TEST(DriveCommand, ShowsTheEventsBehindTheSheet) {
    const Outcome sheet = RunPitool({"drive", "drives/hot-nvme-ssd.json"});
    ExpectRun(
        RunPitool({"drive", "--events", "drives/hot-nvme-ssd.json"}), 0,
        sheet.m_Output +
            "\nevents\n"
            "  WARNING      11090  Wear of drive SSDPE2KE016T8 (serial number PHLN000000201P6AGN) is above "
            "its threshold: 93 percent used, threshold 90. Plan its replacement\n"
            "  WARNING      11021  Temperature of drive SSDPE2KE016T8 (serial number PHLN000000201P6AGN) is "
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
        "\nevents\n  ERROR        10045  Drive HUS724040ALA640 (serial number PN2334PIT00009) ";
    EXPECT_EQ(events.substr(0, worst.size()), worst);
    EXPECT_EQ(std::count(events.begin(), events.end(), '\n'), 5);
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST(DriveCommand, EventsStandInJsonWhereTheyAreWanted) {
    using Json = nlohmann::ordered_json;
    const Json without = Json::parse(RunPitool({"drive", "--json", "drives/hot-nvme-ssd.json"}).m_Output);
    EXPECT_TRUE(without["drives"][0]["events"].is_null());
    const Json with =
        Json::parse(RunPitool({"drive", "--json", "--events", "drives/hot-nvme-ssd.json"}).m_Output);
    const Json& events = with["drives"][0]["events"];
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0]["EventID"], "11090");
    EXPECT_EQ(events[1]["EventID"], "11021");
    EXPECT_EQ(events[1]["SequenceNumber"], "2");
    EXPECT_EQ(with["drives"][0]["operations"],
              Json::parse(R"(["LOCATE_DEVICE", "DISK_INFORMATION", "START_VERIFY"])"));
}

TEST(DriveCommand, EventsTakeAnotherLanguageFile) {
    const Outcome run = RunPitool(
        {"drive", "--events", "--strings", "events/strings.de.xml", "drives/failing-hgst-disk.json"});
    EXPECT_NE(run.m_Output.find("  ERROR        10045  Unknown Event\n"), std::string::npos);
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

TEST(EtaCommand, TellsWhatStalls) {
    const Outcome run = RunPitool({"eta"}, "0 0\n10 60000\n20 120000\n20 4000000\n");
    EXPECT_NE(run.m_Output.find("\n20 percent, stalled, 00:07:55 remaining (00:07:16 to 00:09:09); CETR "),
              std::string::npos)
        << run.m_Output;
}

TEST(EtaCommand, ALineThatIsRefusedIsNamedAndTheOthersCount) {
    ExpectRun(RunPitool({"eta"}, "50 1000\nabc\n \t\r\n60 500\n" + std::string(5000, '1') + "\n60 31000\n" +
                                     std::string(4097, ' ') + "x\n60 31000 \r"),
              1,
              "50 percent, time remaining not known; CETR 00:50:00\n"
              "60 percent, time remaining not known; CETR 00:40:00\n"
              "60 percent, time remaining not known; CETR 00:40:00\n",
              "pitool: standard input: line 2: \"abc\" is no percentage: a whole number from 0 to 100 is "
              "expected\n"
              "pitool: standard input: line 4: the time 500 lies before that of the sample before, 1000\n"
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
                                   "50%", "+5", "0x10", "1e2", "\v"}) {
        refuse(word + " 5", "\"" + (word == "\v" ? "?" : word) +
                                "\" is no percentage: a whole number from 0 to 100 is expected");
    }
    for (const std::string word : {"-1", "100000000000000", "18446744073709551616", "x", "1.0"}) {
        refuse("5 " + word,
               "\"" + word + "\" is no time: milliseconds from 0 to 99999999999999 are expected");
    }
    refuse("5 6 7", "more than a percentage and a time");
    refuse("\x1B[2J", "\"?[2J\" is no percentage: a whole number from 0 to 100 is expected");
    refuse(std::string(41, 'a'),
           "\"" + std::string(40, 'a') + "...\" is no percentage: a whole number from 0 to 100 is expected");
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
    for (unsigned short columns = 2; columns < 120; ++columns) {
        std::istringstream lines(shown(columns));
        for (std::string line; std::getline(lines, line, '\r');) {
            EXPECT_LT(line.size(), columns) << line;
        }
    }
    EXPECT_EQ(shown(120),
              "\r[####----------------------------------------------]   9 percent, time remaining not known; "
              "CETR 01:31:00"
              "\r[#####---------------------------------------------]  10 percent, time remaining not known; "
              "CETR 15:00:00\r\n"
              "\r[#######################------------------------]  50 percent, 00:13:00 remaining (00:10:19 "
              "to 00:19:15); CETR 00:20:00\r\n");
    EXPECT_EQ(shown(80),
              "\r[##----------------------]   9 percent, time remaining not known; CETR 01:31:00"
              "\r[##----------------------]  10 percent, time remaining not known; CETR 15:00:00\r\n"
              "\r[###----]  50 percent, 00:13:00 remaining (00:10:19 to 00:19:15); CETR 00:20:00\r\n");
    EXPECT_EQ(shown(60),
              "\r  9 percent, time remaining not known; CETR 01:31:00"
              "\r 10 percent, time remaining not known; CETR 15:00:00\r\n"
              "\r 50 percent, 00:13:00 remaining (00:10:19 to 00:19:15)\r\n");
    EXPECT_EQ(shown(20),
              "\r  9 percent, time r"
              "\r 10 percent, time r\r\n"
              "\r 50 percent, 00:13:\r\n");
}

TEST(NameCommand, NamesNumbersAndFindsNames) {
    ExpectRun(RunPitool({"name", "30045", "FRAME_END"}), 0,
              "30045  RAID_LEVEL  property identifiers\n"
              "1      FRAME_END   property identifiers\n",
              "");
}

TEST(NameCommand, WhatIsNotFoundIsNamedAndTheRestIsPrinted) {
    ExpectRun(RunPitool({"name", "XYZZY\n", "30045", "99999999999"}), 1,
              "30045  RAID_LEVEL  property identifiers\n",
              "pitool: \"XYZZY?\": no name holds this word\n"
              "pitool: \"99999999999\": no vocabulary holds this number\n");
    ExpectRun(RunPitool({"name", "--", "-1"}), 1, "", "pitool: \"-1\": no vocabulary holds this number\n");
}

TEST(NameCommand, ListsAVocabulary) {
    const Outcome run = RunPitool({"name", "--list", "Event-Identifiers"});
    EXPECT_EQ(run.m_Output.substr(0, 33), "1      UNDEFINED\n2      CONNECTED");
    EXPECT_EQ(std::count(run.m_Output.begin(), run.m_Output.end(), '\n'), 1437);
    EXPECT_EQ(run.m_ExitStatus, 0);
    EXPECT_EQ(RunPitool({"name", "--list", "error codes", "--json"}).m_Output.substr(0, 145),
              "{\n"
              "  \"format\": \"pitool name --list\",\n"
              "  \"version\": 1,\n"
              "  \"vocabulary\": \"error codes\",\n"
              "  \"names\": [\n"
              "    {\n"
              "      \"number\": 0,\n"
              "      \"name\": \"SUCCESS\"\n");
}

TEST(NameCommand, BadUsageExitsWith2) {
    ExpectRun(
        RunPitool({"name", "--list", "bad"}), 2, "",
        "pitool: --list: \"bad\" is none of: error codes, property identifiers, property values, operation "
        "identifiers, event identifiers\n");
    ExpectRun(RunPitool({"name"}), 2, "",
              "pitool: name needs a WORD, a NUMBER or --list; see pitool name --help\n");
    EXPECT_EQ(RunPitool({"name", "a", "--list", "error codes"}).m_ExitStatus, 2);
}

TEST(SenseCommand, ExplainsCodes) {
    ExpectRun(RunPitool({"sense", "5", "24", "00"}), 0,
              "sense key   5h, illegal request\n"
              "additional  24h 00h, invalid field in cdb\n"
              "severity    WARNING\n",
              "");
}

TEST(SenseCommand, ExplainsData) {
    ExpectRun(RunPitool({"sense", "--data", Example("sense/fixed-unrecovered-read.txt")}), 0,
              "format       70h, fixed, current error\n"
              "sense key    3h, medium error\n"
              "additional   11h 00h, unrecovered read error\n"
              "information  1193046, the LBA for a read, write or verify\n"
              "severity     WARNING\n",
              "");
    ExpectRun(RunPitool({"sense", "--data", Example("sense/descriptor-deferred-power-on.txt")}), 0,
              "format      73h, descriptor, deferred error: it belongs to an earlier command\n"
              "sense key   6h, unit attention\n"
              "additional  29h 00h, power on, reset, or bus device reset occurred\n"
              "severity    WARNING\n",
              "");
}

TEST(SenseCommand, RefusalsAreOneLine) {
    ExpectRun(RunPitool({"sense", "--data", "70 00"}), 1, "",
              "pitool: sense data: too short: 2 bytes, without a sense key\n");
    ExpectRun(RunPitool({"sense", "--data", ""}), 1, "", "pitool: sense data: empty\n");
    ExpectRun(RunPitool({"sense", "F", "0", "100"}), 2, "",
              "pitool: ASCQ: \"100\" is no hexadecimal number from 0 to FFh\n");
    ExpectRun(RunPitool({"sense", "10", "0", "0"}), 2, "",
              "pitool: KEY: \"10\" is no hexadecimal number from 0 to 0Fh\n");
    ExpectRun(RunPitool({"sense"}), 2, "",
              "pitool: sense needs KEY ASC ASCQ or --data; see pitool sense --help\n");
    EXPECT_EQ(RunPitool({"sense", "1", "2"}).m_ExitStatus, 2);
    EXPECT_EQ(RunPitool({"sense", "1", "2", "3", "4"}).m_ExitStatus, 2);
    EXPECT_EQ(RunPitool({"sense", "1", "2", "3", "--data", "70"}).m_ExitStatus, 2);
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
