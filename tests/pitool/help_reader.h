// SPDX-License-Identifier: Apache-2.0
// Takes the program's help apart.
#pragma once

#include "program_runner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace pitool::test {

using Words = std::set<std::string>;

/// The help of a command, or the general one.
inline std::string Help(const std::string& command) {
    const Outcome run = RunProgram(
        PITOOL_PROGRAM, PITOOL_ALL_EXAMPLES,
        command.empty() ? std::vector<std::string>{"--help"} : std::vector<std::string>{command, "--help"});
    EXPECT_EQ(run.m_ExitStatus, 0);
    return run.m_Output;
}

inline std::vector<std::string> Lines(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// All parts of a text that a pattern matches.
inline Words Find(const std::string& text, const char* pattern) {
    const std::regex expression(pattern);
    Words words;
    for (std::sregex_iterator match(text.begin(), text.end(), expression); match != std::sregex_iterator();
         ++match) {
        words.insert(match->str(1));
    }
    return words;
}

/// The commands that the general help lists.
inline Words Commands() {
    const std::string help = Help("");
    const std::size_t begin = help.find("\nCommands:");
    return Find(help.substr(begin, help.find("\nExamples") - begin), "\n  ([a-z]+) ");
}

/// The long options that a help lists.
inline Words Options(const std::string& command) {
    return Find(Help(command), "\n  (?:-[a-z],)?(--[a-z0-9-]+)");
}

}  // namespace pitool::test
