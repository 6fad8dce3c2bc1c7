// SPDX-License-Identifier: Apache-2.0
// The help against what it speaks of: its examples run, and the manual page knows the same options.

#include "command_runner.h"
#include "help_reader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

namespace {

using namespace pitool::test;

/// The command lines below the heading of the examples.
std::vector<std::string> Examples(const std::string& command) {
    std::vector<std::string> examples;
    bool heading = false;
    for (const std::string& line : Lines(Help(command))) {
        heading = heading || line.rfind("Examples", 0) == 0;
        if (heading && line.size() > 2 && line.substr(0, 2) == "  " && line[2] != ' ') {
            examples.push_back(line.substr(2));
        }
    }
    return examples;
}

/// The manual page as it is installed, its hyphens and fonts as plain text.
std::string Manual() {
    std::string page = ReadWhole(PITOOL_MANUAL);
    page = std::regex_replace(page, std::regex("\\\\-"), "-");
    return std::regex_replace(page, std::regex("\\\\f[A-Z]"), "");
}

}  // namespace

TEST(Help, FitsInto80Columns) {
    Words commands = Commands();
    commands.insert("");
    for (const std::string& command : commands) {
        for (const std::string& line : Lines(Help(command))) {
            EXPECT_LE(line.size(), 80U) << line;
        }
    }
}

TEST(Help, CommandsAreCalledSo) {
    EXPECT_EQ(Help("").find("SUBCOMMAND"), std::string::npos);
    EXPECT_NE(Help("").find("Usage: pitool [OPTIONS] COMMAND\n"), std::string::npos);
}

TEST(Help, EveryCommandHasExamplesThatRun) {
    const std::string folder = std::filesystem::path(PITOOL_PROGRAM).parent_path();
    Words commands = Commands();
    commands.insert("");
    for (const std::string& command : commands) {
        const std::vector<std::string> examples = Examples(command);
        EXPECT_GE(examples.size(), 2U) << command;
        EXPECT_LE(examples.size(), 4U) << command;
        for (const std::string& example : examples) {
            EXPECT_NE(example.find("pitool " + command), std::string::npos) << example;
            const Outcome run =
                RunProgram("/bin/sh", PITOOL_ALL_EXAMPLES, {"-c", "PATH='" + folder + "':$PATH; " + example});
            EXPECT_EQ(run.m_ExitStatus, 0) << example << "\n" << run.m_Errors;
            EXPECT_NE(run.m_Output, "") << example;
        }
    }
}

TEST(Manual, HasEveryCommandAndOptionOfTheHelpAndNoOther) {
    Words options = Options("");
    options.insert("--colour");
    for (const std::string& command : Commands()) {
        const Words own = Options(command);
        EXPECT_GE(own.size(), 1U);
        options.insert(own.begin(), own.end());
    }
    const std::string page = Manual();
    // Where options are described, the first line below a .TP names them; "to" stands for those in between.
    Words described;
    for (const std::string& entry : Find(page, "\n\\.TP\n\\.B[IR]* ([^\n]*)")) {
        const Words found = Find(entry, "(--[a-z0-9-]+)");
        described.insert(found.begin(), found.end());
    }
    for (const char* between : {"2", "3", "4", "5"}) {
        described.insert(std::string("--placeholder") + between);
        described.insert(std::string("--resource") + between);
    }
    EXPECT_EQ(described, options);
    Words sections;
    for (const std::string& title : Find(page, "\n\\.SH THE ([A-Z]+) COMMAND")) {
        std::string name = title;
        for (char& c : name) {
            c = static_cast<char>(c - 'A' + 'a');
        }
        sections.insert(name);
    }
    EXPECT_GE(sections.size(), 8U);
    EXPECT_EQ(sections, Commands());
    EXPECT_EQ(Find(page, "\n\\.B[R]? pitool ([a-z]+)\n"), Commands());
}

TEST(Manual, BearsTheVersionOfTheProgram) {
    const Outcome run = RunProgram(PITOOL_PROGRAM, ".", {"--version"});
    EXPECT_NE(Manual().find("\"" + run.m_Output.substr(0, run.m_Output.size() - 1) + "\""),
              std::string::npos);
}
