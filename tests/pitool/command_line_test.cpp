// SPDX-License-Identifier: Apache-2.0

#include "command_line.h"

#include <gtest/gtest.h>

#include <vector>

using namespace pitool;

namespace {

CommandLine Parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "pitool");
    return ParseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

using Names = std::vector<std::string>;

}  // namespace

TEST(ParseCommandLine, DriveTakesFilesAndJson) {
    const CommandLine line = Parse({"drive", "a", "--json", "b", "-"});
    EXPECT_EQ(line.m_Command, CommandLine::DRIVE);
    EXPECT_EQ(line.m_Drive.m_Files, (Names{"a", "b", "-"}));
    EXPECT_TRUE(line.m_Drive.m_Json);
    EXPECT_FALSE(Parse({"drive", "a"}).m_Drive.m_Json);
}

TEST(ParseCommandLine, FileNamesAreTakenAsTheyAre) {
    EXPECT_EQ(Parse({"drive", "drive", "a b", "", "{}", "%%", "a=b", "a,b"}).m_Drive.m_Files,
              (Names{"drive", "a b", "", "{}", "%%", "a=b", "a,b"}));
}

TEST(ParseCommandLine, NamesThatTheParserMisreadsGetADotSlash) {
    EXPECT_EQ(Parse({"drive", "[a,b]", "++", "a"}).m_Drive.m_Files, (Names{"./[a,b]", "./++", "a"}));
}

TEST(ParseCommandLine, BehindTwoHyphensAllAreFiles) {
    const CommandLine line = Parse({"drive", "a", "--", "-x", "--json", "-", "--"});
    EXPECT_EQ(line.m_Command, CommandLine::DRIVE) << line.m_Error;
    EXPECT_EQ(line.m_Drive.m_Files, (Names{"a", "./-x", "./--json", "-", "./--"}));
    EXPECT_FALSE(line.m_Drive.m_Json);
}

TEST(ParseCommandLine, BadUsageIsExitStatus2) {
    for (const std::vector<const char*>& arguments : {std::vector<const char*>{},
                                                      {"drive"},
                                                      {"drive", "--json"},
                                                      {"drive", "-x"},
                                                      {"drive", "a", "--bad"},
                                                      {"bad"},
                                                      {"--bad"},
                                                      {"drive", "-", "-"}}) {
        const CommandLine line = Parse(arguments);
        EXPECT_EQ(line.m_Command, CommandLine::NONE);
        EXPECT_EQ(line.m_ExitStatus, 2);
        EXPECT_NE(line.m_Error, "");
        EXPECT_EQ(line.m_Error.find('\n'), std::string::npos) << line.m_Error;
    }
}

TEST(ParseCommandLine, HelpAndVersionEndTheRunWell) {
    for (const char* argument : {"--help", "-h", "--version"}) {
        const CommandLine line = Parse({argument});
        EXPECT_EQ(line.m_Command, CommandLine::NONE);
        EXPECT_EQ(line.m_ExitStatus, 0);
        EXPECT_NE(line.m_Text, "");
        EXPECT_EQ(line.m_Text.back(), '\n');
    }
    EXPECT_NE(Parse({"drive", "--help"}).m_Text.find("Usage: pitool drive [OPTIONS] FILE..."),
              std::string::npos);
}
