// SPDX-License-Identifier: Apache-2.0
// The command sense, from outside.

#include "command_runner.h"

using namespace pitool::test;

namespace {

/// What is printed of data.
std::string Shown(const std::string& data) {
    const Outcome run = RunPitool({"sense", "--data", data});
    EXPECT_EQ(run.m_Errors, "") << data;
    EXPECT_EQ(run.m_ExitStatus, 0);
    return run.m_Output;
}

}  // namespace

TEST(SenseCommand, ExplainsCodes) {
    ExpectRun(RunPitool({"sense", "5", "24", "00"}), 0,
              "sense key   5h, illegal request\n"
              "additional  24h 00h, invalid field in cdb\n"
              "severity    WARNING\n",
              "");
    ExpectRun(RunPitool({"sense", "0", "FF", "FF"}), 0,
              "sense key   0h, no sense\n"
              "additional  FFh FFh, unknown\n"
              "severity    INFORMATION\n",
              "");
    ExpectRun(RunPitool({"sense", "B", "4D", "0A"}), 0,
              "sense key   Bh, aborted command\n"
              "additional  4Dh 0Ah, tagged overlapped commands (task tag 0x0A)\n"
              "severity    WARNING\n",
              "");
}

TEST(SenseCommand, TakesCodesInTheUsualSpellings) {
    const std::string expected = RunPitool({"sense", "05", "0x24", "0"}).m_Output;
    for (const std::vector<std::string>& codes :
         {std::vector<std::string>{"5", "24", "00"}, {"0x5", "24h", "0h"}, {"5h", "0X24", "00H"}}) {
        EXPECT_EQ(RunPitool({"sense", codes[0], codes[1], codes[2]}).m_Output, expected);
    }
    for (const char* code : {"", "0x", "h", "100", "005", "g", "-1", "+1", " 5", "5 "}) {
        ExpectRun(RunPitool({"sense", "--", "5", "24", code}), 2, "",
                  "pitool: ASCQ: \"" + std::string(code) + "\" is not a hexadecimal number from 0 to FFh\n");
    }
    ExpectRun(RunPitool({"sense", "10", "0", "0"}), 2, "",
              "pitool: KEY: \"10\" is not a hexadecimal number from 0 to 0Fh\n");
}

TEST(SenseCommand, TellsEveryFigureOfTheData) {
    const std::string head = "format       70h, fixed, current error\nsense key    ";
    const std::string severity = "severity     WARNING\n";
    const std::pair<std::string, std::string> cases[] = {
        {Example("sense/fixed-unrecovered-read.txt"),
         "3h, medium error\n"
         "additional   11h 00h, unrecovered read error\n"
         "information  1193046, the LBA for a read, write or verify\n"},
        {"f0 00 05 00 01 e2 40 0a 00 00 00 00 24 00 07 cb 00 04",
         "5h, illegal request\n"
         "additional   24h 00h, invalid field in cdb\n"
         "information  123456, the LBA for a read, write or verify\n"
         "field        byte 4 of the command, bit 3\n"
         "unit         7, the part to replace by the vendor's list\n"},
        {"f0 00 05 00 01 e2 40 0a 00 00 00 00 26 00 00 80 01 00",
         "5h, illegal request\n"
         "additional   26h 00h, invalid field in parameter list\n"
         "information  123456, the LBA for a read, write or verify\n"
         "field        byte 256 of the data sent with the command\n"},
    };
    for (const auto& [data, text] : cases) {
        EXPECT_EQ(Shown(data), head + text + severity);
    }
}

TEST(SenseCommand, TellsFormatProgressAndWhatIsNotInTheData) {
    const std::pair<std::string, std::string> cases[] = {
        {Example("sense/descriptor-deferred-power-on.txt"),
         "format      73h, descriptor, deferred error: it belongs to an earlier command\n"
         "sense key   6h, unit attention\n"
         "additional  29h 00h, power on, reset, or bus device reset occurred\n"},
        {"72 02 04 04 00 00 00 08 02 06 00 00 80 40 00 00",
         "format      72h, descriptor, current error\n"
         "sense key   2h, not ready\n"
         "additional  04h 04h, logical unit not ready, format in progress\n"
         "progress    25.0 percent\n"},
        {"70 00 03 00 00 00 00 06 00 00 00 00",
         "format      70h, fixed, current error\n"
         "sense key   3h, medium error\n"
         "additional  not in the data\n"},
        {"70 00 03 00 00 00 00 06 00 00 00 00 11",
         "format      70h, fixed, current error\n"
         "sense key   3h, medium error\n"
         "additional  11h, the qualifier is not in the data\n"},
    };
    for (const auto& [data, text] : cases) {
        EXPECT_EQ(Shown(data), text + "severity    WARNING\n");
    }
}

TEST(SenseCommand, SeparatorsOfDataAreFree) {
    const std::string expected = Shown("72 06 29 00");
    for (const char* data : {"72,06,29,00", " 0x72 6h 29\n0", "72062900", "7206 2900"}) {
        EXPECT_EQ(Shown(data), expected) << data;
    }
}

TEST(SenseCommand, RefusesWhatHoldsNoKey) {
    Shown("70 00 03");
    const std::pair<std::string, std::string> cases[] = {
        {"70 00", "too short: 2 bytes, without a sense key"},
        {"", "empty"},
        {" ,\n", "empty"},
        {"72 05 zz 00", "\"zz\" is not a hexadecimal byte"},
        {"720", "\"720\" is not a hexadecimal byte"},
        {"72 0x0500", "\"0x0500\" is not a hexadecimal byte"},
        {"\x1B[2J", "\"?[2J\" is not a hexadecimal byte"},
    };
    for (const auto& [data, reason] : cases) {
        ExpectRun(RunPitool({"sense", "--data", data}), 1, "", "pitool: sense data: " + reason + "\n");
    }
}

TEST(SenseCommand, PrintsJson) {
    ExpectRun(
        RunPitool({"sense", "--json", "--data", "f1 00 05 00 01 e2 40 0a 00 00 00 00 24 00 07 cb 00 04"}), 0,
        "{\n"
        "  \"format\": \"pitool sense\",\n"
        "  \"version\": 1,\n"
        "  \"response_code\": 113,\n"
        "  \"layout\": \"fixed\",\n"
        "  \"deferred\": true,\n"
        "  \"key\": 5,\n"
        "  \"key_text\": \"illegal request\",\n"
        "  \"asc\": 36,\n"
        "  \"ascq\": 0,\n"
        "  \"additional_text\": \"invalid field in cdb\",\n"
        "  \"information\": 123456,\n"
        "  \"field_pointer\": 4,\n"
        "  \"field_bit\": 3,\n"
        "  \"field_in_command\": true,\n"
        "  \"progress\": null,\n"
        "  \"field_replaceable_unit\": 7,\n"
        "  \"severity\": \"WARNING\"\n"
        "}\n",
        "");
    ExpectRun(RunPitool({"sense", "--json", "0", "FF", "FF"}), 0,
              "{\n"
              "  \"format\": \"pitool sense\",\n"
              "  \"version\": 1,\n"
              "  \"response_code\": null,\n"
              "  \"layout\": null,\n"
              "  \"deferred\": null,\n"
              "  \"key\": 0,\n"
              "  \"key_text\": \"no sense\",\n"
              "  \"asc\": 255,\n"
              "  \"ascq\": 255,\n"
              "  \"additional_text\": null,\n"
              "  \"information\": null,\n"
              "  \"field_pointer\": null,\n"
              "  \"field_bit\": null,\n"
              "  \"field_in_command\": null,\n"
              "  \"progress\": null,\n"
              "  \"field_replaceable_unit\": null,\n"
              "  \"severity\": \"INFORMATION\"\n"
              "}\n",
              "");
    EXPECT_NE(RunPitool({"sense", "--json", "--data", "72 02 04 04 00 00 00 08 02 06 00 00 80 40 00 00"})
                  .m_Output.find("\"progress\": 16384,\n"),
              std::string::npos);
    EXPECT_NE(RunPitool({"sense", "--json", "--data", "70 00 02"})
                  .m_Output.find("\"asc\": null,\n  \"ascq\": null,\n  \"additional_text\": null,\n"),
              std::string::npos);
}

TEST(SenseCommand, BadUsageExitsWith2) {
    ExpectRun(RunPitool({"sense"}), 2, "",
              "pitool: sense needs KEY ASC ASCQ or --data; see pitool sense --help\n");
    EXPECT_EQ(RunPitool({"sense", "1", "2"}).m_ExitStatus, 2);
    EXPECT_EQ(RunPitool({"sense", "1", "2", "3", "4"}).m_ExitStatus, 2);
    EXPECT_EQ(RunPitool({"sense", "1", "2", "3", "--data", "70"}).m_ExitStatus, 2);
}
