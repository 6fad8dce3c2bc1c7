// SPDX-License-Identifier: Apache-2.0
// Runs commands of the built program in the folder of the examples.
#pragma once

#include "program_runner.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace pitool::test {

inline Outcome RunPitool(const std::vector<std::string>& arguments, const std::string& input = "",
                         int output = -1) {
    return RunProgram(PITOOL_PROGRAM, PITOOL_ALL_EXAMPLES, arguments, input, output);
}

inline std::string ReadWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

inline std::string Expected(const std::string& name) {
    return ReadWhole(std::string(PITOOL_EXPECTED) + "/" + name);
}

inline std::string Example(const std::string& name) {
    return ReadWhole(std::string(PITOOL_ALL_EXAMPLES) + "/" + name);
}

inline void ExpectRun(const Outcome& run, int status, const std::string& output, const std::string& errors) {
    EXPECT_EQ(run.m_Output, output);
    EXPECT_EQ(run.m_Errors, errors);
    EXPECT_EQ(run.m_ExitStatus, status);
}

}  // namespace pitool::test
