// SPDX-License-Identifier: Apache-2.0
// The command layout, from outside.

#include "command_runner.h"

#include <algorithm>

using namespace pitool::test;

namespace {

/// The tree of a document, without a warning.
std::string Tree(const std::string& text) {
    const Outcome run = RunPitool({"layout", "-"}, text);
    EXPECT_EQ(run.m_Errors, "") << text;
    EXPECT_EQ(run.m_ExitStatus, 0);
    return run.m_Output;
}

/// The first line of an array of this size.
std::string Head(const std::string& size, int units) {
    const std::string tree =
        Tree("<ArrayConfiguration Size='" + size + "' Units='" + std::to_string(units) + "'/>");
    return tree.substr(0, tree.find('\n'));
}

}  // namespace

TEST(LayoutCommand, PrintsATree) {
    ExpectRun(RunPitool({"layout", "layouts/raid1-array.xml"}), 0, Expected("raid1-array.txt"), "");
    ExpectRun(RunPitool({"layout", "layouts/raid10-logical-drive.xml"}), 0,
              Expected("raid10-logical-drive.txt"), "");
    ExpectRun(RunPitool({"layout", "-"}, Example("layouts/raid1-array.xml")), 0, Expected("raid1-array.txt"),
              "");
}

TEST(LayoutCommand, PrintsJson) {
    ExpectRun(RunPitool({"layout", "--json", "layouts/raid10-logical-drive.xml"}), 0,
              Expected("raid10-logical-drive.json"), "");
}

TEST(LayoutCommand, WarnsOfWhatWasNotTakenAsWritten) {
    const std::string file = "pitool: layouts/careless-array.xml:";
    const std::string errors =
        file + "3:1: warning: ArrayConfiguration: Size \"931 GB\" is no number, read as 0\n" + file +
        "3:1: warning: ArrayConfiguration: Units 3 is no unit\n" + file +
        "6:13: warning: Drive: StartAddress \"-1\" is negative, read as 18446744073709551615\n" + file +
        "6:13: warning: Drive: UsedSize is empty, read as 0\n" + file +
        "6:13: warning: Drive: IsConfigurable \"yes\" is neither 0 nor 1, read as 1\n" + file +
        "7:13: warning: Drive: StartAddress is missing, read as 0\n" + file +
        "7:13: warning: Drive: UsedSize is missing, read as 0\n" + file +
        "7:13: warning: Drive: IsConfigurable is missing, read as 1\n" + file +
        "7:13: warning: Drive: LogicalDrive is missing, read as 0\n" + file +
        "7:13: warning: Drive: LogicalOwner is missing, read as 0\n" + file +
        "10:5: warning: HotSpares: is not read\n";
    ExpectRun(RunPitool({"layout", "layouts/careless-array.xml"}), 0, Expected("careless-array.txt"), errors);
    ExpectRun(RunPitool({"layout", "--json", "layouts/careless-array.xml"}), 0,
              Expected("careless-array.json"), errors);
}

TEST(LayoutCommand, WarnsOfTextAfterTheRoot) {
    const Outcome run =
        RunPitool({"layout", "--json", "-"}, "<ArrayConfiguration Size='1' Units='21025'/>\njunk");
    EXPECT_EQ(run.m_Errors, "pitool: -:2:1: warning: \"junk\" is not read\n");
    EXPECT_NE(run.m_Output.find(
                  "    {\"line\":2,\"column\":1,\"text\":\"\\\"junk\\\" is not read\",\"element\":null,"),
              std::string::npos)
        << run.m_Output;
}

TEST(LayoutCommand, CountsTheWarningsThatAreLeftOut) {
    std::string spares;
    for (int i = 0; i < 102; ++i) {
        spares += "<Drive/>";
    }
    const std::string text =
        "<LogicalDriveConfiguration Size='1' Units='21022' SpanCount='1' SpanSize='1'><GlobalHotSpares>" +
        spares + "</GlobalHotSpares></LogicalDriveConfiguration>";
    const std::string last = "pitool: -: warning: 2 further warnings\n";
    const Outcome run = RunPitool({"layout", "--json", "-"}, text);
    EXPECT_EQ(std::count(run.m_Errors.begin(), run.m_Errors.end(), '\n'), 101);
    EXPECT_EQ(run.m_Errors.substr(run.m_Errors.size() - last.size()), last);
    EXPECT_NE(run.m_Output.find("  \"warnings_left_out\": 2\n}\n"), std::string::npos);
}

TEST(LayoutCommand, ARefusalIsOneLineWithThePlace) {
    ExpectRun(RunPitool({"layout", "-"}, "<ArrayConfiguration>\n <Containers>\n</ArrayConfiguration>"), 1, "",
              "pitool: -:3:3: no well-formed XML: Start-end tags mismatch\n");
    ExpectRun(RunPitool({"layout", "-"}, "<Layout\x1B/>"), 1, "",
              "pitool: -:1:9: no well-formed XML: Error parsing start element tag\n");
    ExpectRun(RunPitool({"layout", "-"}, "<Layout/>"), 1, "",
              "pitool: -:1:1: the root element is \"Layout\", neither ArrayConfiguration nor "
              "LogicalDriveConfiguration\n");
    ExpectRun(RunPitool({"layout", "missing.xml"}), 1, "",
              "pitool: missing.xml: No such file or directory\n");
    ExpectRun(RunPitool({"layout", "layouts"}), 1, "", "pitool: layouts: Is a directory\n");
}

TEST(LayoutCommand, WhatTheDocumentNamesSteersNoTerminal) {
    const Outcome run = RunPitool({"layout", "-"},
                                  "<ArrayConfiguration Size='\x1B[2J' Units='21025'><a\xC2\x9B/>"
                                  "</ArrayConfiguration>");
    EXPECT_EQ(run.m_Errors,
              "pitool: -:1:1: warning: ArrayConfiguration: Size \"?[2J\" is no number, read as 0\n"
              "pitool: -:1:47: warning: a?: is not read\n");
}

TEST(LayoutCommand, BadUsageExitsWith2) {
    EXPECT_EQ(RunPitool({"layout"}).m_ExitStatus, 2);
    EXPECT_EQ(RunPitool({"layout", "a", "b"}).m_ExitStatus, 2);
}

TEST(LayoutTree, AnEmptyRecordSaysWhatItLacks) {
    EXPECT_EQ(Tree("<ArrayConfiguration Size='1024' Units='21025'/>"),
              "array, size 1024 (1.00 kibibytes), sizes in bytes\n"
              "|-- containers: none\n"
              "`-- logical drives: none\n");
    EXPECT_EQ(Tree("<LogicalDriveConfiguration Size='1' Units='21022' SpanCount='1' SpanSize='2'/>"),
              "logical drive, size 1 (1.00 gibibytes), sizes in gibibytes\n"
              "|-- 1 span of size 2\n"
              "|-- containers: none\n"
              "|-- global hot spares: none\n"
              "|-- dedicated hot spares: none\n"
              "`-- associated logical drives: none\n");
}

TEST(LayoutTree, ADriveShowsWhoUsesItAndWhetherItIsConfigurable) {
    EXPECT_EQ(Tree("<ArrayConfiguration Size='1' Units='21025'><Containers><Container>"
                   "<Drive ObjectID='1' StartAddress='0' UsedSize='2048' LogicalDrive='5' LogicalOwner='6' "
                   "IsConfigurable='0'/></Container><Container/></Containers>"
                   "<LogicalDrives><LogicalDrive ObjectID='5'/></LogicalDrives></ArrayConfiguration>"),
              "array, size 1 (1 byte), sizes in bytes\n"
              "|-- container 1, 1 drive\n"
              "|   `-- drive 1, start 0 (0 bytes), size 2048 (2.00 kibibytes), logical drive 5, owner 6, not "
              "configurable\n"
              "|-- container 2, 0 drives\n"
              "`-- logical drives\n"
              "    `-- logical drive 5\n");
}

TEST(LayoutTree, SizesAreScaledInBinaryUnits) {
    EXPECT_EQ(Head("0", 21022), "array, size 0 (0 bytes), sizes in gibibytes");
    EXPECT_EQ(Head("1", 21025), "array, size 1 (1 byte), sizes in bytes");
    EXPECT_EQ(Head("1023", 21025), "array, size 1023 (1023 bytes), sizes in bytes");
    EXPECT_EQ(Head("1024", 21025), "array, size 1024 (1.00 kibibytes), sizes in bytes");
    EXPECT_EQ(Head("1023", 21003), "array, size 1023 (1023.00 kibibytes), sizes in kibibytes");
    EXPECT_EQ(Head("1536", 21002), "array, size 1536 (1.50 gibibytes), sizes in mebibytes");
    EXPECT_EQ(Head("465", 21022), "array, size 465 (465.00 gibibytes), sizes in gibibytes");
    EXPECT_EQ(Head("1024", 21026), "array, size 1024 (1.00 pebibytes), sizes in tebibytes");
    EXPECT_EQ(Head("16384", 21027), "array, size 16384 (16384.00 pebibytes), sizes in pebibytes");
    EXPECT_EQ(Head("18446744073709551615", 21025),
              "array, size 18446744073709551615 (16384.00 pebibytes), sizes in bytes");
    EXPECT_EQ(Head("18446744073709551615", 21027),
              "array, size 18446744073709551615 (18446744073709551615.00 pebibytes), sizes in pebibytes");
    EXPECT_EQ(Head("465", 21006), "array, size 465, sizes in an unknown unit (unspecified)");
    EXPECT_EQ(RunPitool({"layout", "-"}, "<ArrayConfiguration Size='5' Units='7'/>").m_Output.substr(0, 53),
              "array, size 5, sizes in an unknown unit (Units 7)\n|--");
}
