// SPDX-License-Identifier: Apache-2.0
// Programs that the smartctl plug-in runs.
#include "program.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using smartctl::RunProgram;
using std::chrono::milliseconds;

constexpr milliseconds PATIENCE(10000);

TEST(SmartctlProgram, OutputIsTakenWhateverTheExitStatus) {
    std::string output = "before";
    std::string error;
    ASSERT_TRUE(RunProgram({"sh", "-c", "echo text; echo complaint >&2; exit 4"}, PATIENCE, output, error))
        << error;
    EXPECT_EQ(output, "text\n");
}

TEST(SmartctlProgram, ArgumentsReachItAsTheyAre) {
    std::string output;
    std::string error;
    ASSERT_TRUE(RunProgram({"printf", "%s|", "a b", "$(id)", "*;", ""}, PATIENCE, output, error)) << error;
    EXPECT_EQ(output, "a b|$(id)|*;||");
}

TEST(SmartctlProgram, LongOutputIsTakenWhole) {
    std::string output;
    std::string error;
    ASSERT_TRUE(RunProgram({"head", "-c", "1000000", "/dev/zero"}, PATIENCE, output, error)) << error;
    EXPECT_EQ(output.size(), 1000000U);
}

TEST(SmartctlProgram, MissingProgramSaysSo) {
    std::string output;
    std::string error;
    EXPECT_FALSE(RunProgram({"/nowhere/smartctl"}, PATIENCE, output, error));
    EXPECT_EQ(error, "/nowhere/smartctl: No such file or directory");
}

TEST(SmartctlProgram, HasNothingToRead) {
    std::string output;
    std::string error;
    ASSERT_TRUE(RunProgram({"cat"}, PATIENCE, output, error)) << error;
    EXPECT_EQ(output, "");
}

TEST(SmartctlProgram, OneThatHangsIsKilled) {
    std::string output;
    std::string error;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(RunProgram({"sleep", "60"}, milliseconds(100), output, error));
    EXPECT_EQ(error, "sleep: no answer in time");
    EXPECT_LT(std::chrono::steady_clock::now() - start, PATIENCE);
}

TEST(SmartctlProgram, EndlessOutputIsCut) {
    std::string output;
    std::string error;
    EXPECT_FALSE(RunProgram({"cat", "/dev/zero"}, milliseconds(60000), output, error));
    EXPECT_EQ(error, "cat: too long an answer");
}

}  // namespace
