// SPDX-License-Identifier: Apache-2.0
// Programs that plug-ins run, and files that they read.
#include "program.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>

namespace {

using shared::ErrorOutput;
using shared::OneLine;
using shared::RunProgram;
using std::chrono::milliseconds;

constexpr milliseconds PATIENCE(10000);

TEST(Program, OutputIsTakenWhateverTheExitStatus) {
    std::string output = "before";
    std::string error;
    const std::vector<std::string> command = {"sh", "-c", "echo text; echo complaint >&2; exit 4"};
    EXPECT_EQ(RunProgram(command, PATIENCE, output, error), 4) << error;
    EXPECT_EQ(output, "text\n");
    EXPECT_EQ(RunProgram(command, PATIENCE, output, error, ErrorOutput::TAKE), 4) << error;
    EXPECT_EQ(output, "text\ncomplaint\n");
}

TEST(Program, OneThatASignalEndsHasNoExitStatus) {
    std::string output;
    std::string error;
    EXPECT_EQ(RunProgram({"sh", "-c", "kill -TERM $$"}, PATIENCE, output, error), std::nullopt);
    EXPECT_EQ(error, "sh: ended by signal 15");
}

TEST(Program, WhereTheHostIgnoresItsChildrenTheExitStatusIsUnknown) {
    std::string output;
    std::string error;
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(RunProgram({"sh", "-c", "echo text; exit 4"}, PATIENCE, output, error), -1) << error;
    std::signal(SIGCHLD, before);
    EXPECT_EQ(output, "text\n");
}

TEST(Program, OneThatHangsWithItsOutputClosedIsKilled) {
    std::string output;
    std::string error;
    EXPECT_EQ(RunProgram({"sh", "-c", "exec >&- 2>&-; exec sleep 60"}, milliseconds(100), output, error),
              std::nullopt);
    EXPECT_EQ(error, "sh: no end in time");
}

TEST(OneLine, JoinsLinesAndCutsWhatIsLong) {
    EXPECT_EQ(OneLine(""), "");
    EXPECT_EQ(OneLine("\n\n"), "");
    EXPECT_EQ(OneLine("a b"), "a b");
    EXPECT_EQ(OneLine("a\n\n  \n\t b \r\n"), "a, b");
    EXPECT_EQ(OneLine(std::string(200, 'x')), std::string(200, 'x'));
    EXPECT_EQ(OneLine(std::string(201, 'x')), std::string(200, 'x') + "...");
    EXPECT_EQ(OneLine(std::string(200, 'x') + "\nmore"), std::string(200, 'x') + "...");
}

TEST(Program, ArgumentsReachItAsTheyAre) {
    std::string output;
    std::string error;
    ASSERT_TRUE(RunProgram({"printf", "%s|", "a b", "$(id)", "*;", ""}, PATIENCE, output, error)) << error;
    EXPECT_EQ(output, "a b|$(id)|*;||");
}

TEST(Program, LongOutputIsTakenWhole) {
    std::string output;
    std::string error;
    ASSERT_TRUE(RunProgram({"head", "-c", "1000000", "/dev/zero"}, PATIENCE, output, error)) << error;
    EXPECT_EQ(output.size(), 1000000U);
}

TEST(Program, MissingProgramSaysSo) {
    std::string output;
    std::string error;
    EXPECT_FALSE(RunProgram({"/nowhere/smartctl"}, PATIENCE, output, error));
    EXPECT_EQ(error, "/nowhere/smartctl: No such file or directory");
}

TEST(Program, HasNothingToRead) {
    std::string output;
    std::string error;
    ASSERT_TRUE(RunProgram({"cat"}, PATIENCE, output, error)) << error;
    EXPECT_EQ(output, "");
}

TEST(Program, OneThatHangsIsKilled) {
    std::string output;
    std::string error;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(RunProgram({"sleep", "60"}, milliseconds(100), output, error));
    EXPECT_EQ(error, "sleep: no answer in time");
    EXPECT_LT(std::chrono::steady_clock::now() - start, PATIENCE);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no child is left";
}

TEST(Program, EndlessOutputIsCut) {
    std::string output;
    std::string error;
    EXPECT_FALSE(RunProgram({"cat", "/dev/zero"}, milliseconds(60000), output, error));
    EXPECT_EQ(error, "cat: too long an answer");
}

}  // namespace
