// SPDX-License-Identifier: Apache-2.0
// The built program from outside: what it prints, what it complains about, how it exits.

#include "program_runner.h"
#include "sample_reports.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <vector>

namespace {

using namespace pitool::test;
namespace fs = std::filesystem;

/// Runs the program in the folder of the samples.
Outcome RunPitool(const std::vector<std::string>& arguments, const std::string& input = "", int output = -1) {
    return RunProgram(PITOOL_PROGRAM, PITOOL_EXAMPLES, arguments, input, output);
}

std::string Expected(const std::string& name) {
    return ReadFile(std::string(PITOOL_EXPECTED) + "/" + name);
}

/// A directory of its own for each test.
class Program : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "pitool_XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        m_Directory = pattern;
    }
    void TearDown() override { fs::remove_all(m_Directory); }

    std::string Create(const std::string& name, const std::string& text) const {
        const std::string path = m_Directory + "/" + name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    std::string m_Directory;
};

}  // namespace

TEST_F(Program, OneDriveIsASheet) {
    for (const std::string name : {"healthy-intel-ssd", "innodisk-3me-173", "wd-disk", "intel-nvme-ssd"}) {
        const Outcome run = RunPitool({"drive", name + ".json"});
        EXPECT_EQ(run.m_Output, Expected(name + ".txt"));
        EXPECT_EQ(run.m_Errors, "");
        EXPECT_EQ(run.m_ExitStatus, 0);
    }
}

TEST_F(Program, SeveralDrivesAreATableWorstFirst) {
    const Outcome run = RunPitool({"drive", "."});
    EXPECT_EQ(run.m_Output, Expected("table.txt"));
    EXPECT_EQ(run.m_Errors, "");
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST_F(Program, JsonHasOneShapeForOneDriveAndSeveral) {
    const Outcome run = RunPitool({"drive", "--json", "samsung-ssd.json", "failing-hgst-disk.json"});
    EXPECT_EQ(run.m_Output, Expected("two-drives.json"));
    EXPECT_EQ(run.m_ExitStatus, 0);
    const Json two = Json::parse(run.m_Output);
    const Json one = Json::parse(RunPitool({"drive", "--json", "samsung-ssd.json"}).m_Output);
    EXPECT_EQ(one["drives"].size(), 1U);
    EXPECT_EQ(one["drives"][0], two["drives"][1]);
}

TEST_F(Program, AHyphenIsStandardInput) {
    const std::string sample = ReadFile(std::string(PITOOL_EXAMPLES) + "/healthy-intel-ssd.json");
    std::string expected = Expected("healthy-intel-ssd.txt");
    expected.replace(0, expected.find('\n'), "-");
    const Outcome run = RunPitool({"drive", "-"}, sample);
    EXPECT_EQ(run.m_Output, expected);
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST_F(Program, WhatIsRefusedIsNamedAndTheOthersAreReported) {
    const std::string bad = Create("bad.json", "{");
    const Outcome run = RunPitool({"drive", bad, "wd-disk.json", "missing.json"});
    EXPECT_EQ(run.m_Output, Expected("wd-disk.txt"));
    EXPECT_EQ(run.m_Errors, "pitool: " + bad +
                                ": the report breaks off (line 1, column 2)\n"
                                "pitool: missing.json: No such file or directory\n");
    EXPECT_EQ(run.m_ExitStatus, 1);
}

TEST_F(Program, RefusedInputsStandInJsonAndInTheSummary) {
    const std::string bad = Create("bad.json", "");
    const Json json = Json::parse(RunPitool({"drive", "--json", bad, "wd-disk.json"}).m_Output);
    EXPECT_EQ(json["errors"],
              (Json::array({{{"file", bad}, {"reason", "the text is empty (line 1, column 1)"}}})));
    EXPECT_EQ(json["summary"]["refused"], 1);
    EXPECT_EQ(json["summary"]["drives"], 1);
    const Outcome table = RunPitool({"drive", bad, "wd-disk.json", "samsung-ssd.json"});
    EXPECT_NE(table.m_Output.find("2 drives: 0 failing, 0 worn to 90 percent or more, 0 of unknown lifetime; "
                                  "1 input refused\n"),
              std::string::npos)
        << table.m_Output;
    EXPECT_EQ(table.m_ExitStatus, 1);
}

TEST_F(Program, WithoutAnyDriveNothingIsPrinted) {
    const Outcome run = RunPitool({"drive", "-"});
    EXPECT_EQ(run.m_Output, "");
    EXPECT_EQ(run.m_Errors, "pitool: -: the text is empty (line 1, column 1)\n");
    EXPECT_EQ(run.m_ExitStatus, 1);
}

TEST_F(Program, AnEmptyDirectoryIsRefused) {
    const Outcome run = RunPitool({"drive", m_Directory});
    EXPECT_EQ(run.m_Errors, "pitool: " + m_Directory + ": no file ending \".json\" in this directory\n");
    EXPECT_EQ(run.m_ExitStatus, 1);
}

TEST_F(Program, AnErrorIsOneLineWhateverTheFileIsCalled) {
    const Outcome run = RunPitool({"drive", "a\nb\x1B[2J.json"});
    EXPECT_EQ(run.m_Errors, "pitool: a?b?[2J.json: No such file or directory\n");
}

TEST_F(Program, BadUsageExitsWith2AndOneLine) {
    const Outcome run = RunPitool({"drive", "-", "-"});
    EXPECT_EQ(run.m_Output, "");
    EXPECT_EQ(run.m_Errors, "pitool: standard input can be read only once; see pitool drive --help\n");
    EXPECT_EQ(run.m_ExitStatus, 2);
    EXPECT_EQ(RunPitool({}).m_ExitStatus, 2);
    EXPECT_EQ(RunPitool({"drive", "--bad", "wd-disk.json"}).m_ExitStatus, 2);
}

TEST_F(Program, AWordThatIsNoCommandIsNamed) {
    EXPECT_EQ(RunPitool({"dirve", "wd-disk.json"}).m_Errors,
              "pitool: \"dirve\" is no command; see pitool --help\n");
    EXPECT_EQ(RunPitool({"--color", "never", "[a]"}).m_Errors,
              "pitool: \"[a]\" is no command; see pitool --help\n");
    EXPECT_EQ(RunPitool({"--bad"}).m_Errors, "pitool: \"--bad\" is no option; see pitool --help\n");
    EXPECT_EQ(RunPitool({std::string(41, 'x')}).m_Errors,
              "pitool: \"" + std::string(40, 'x') + "...\" is no command; see pitool --help\n");
    EXPECT_EQ(RunPitool({}).m_Errors, "pitool: a command is needed; see pitool --help\n");
}

TEST_F(Program, BadUsageLeadsToTheHelpOfTheCommand) {
    EXPECT_EQ(RunPitool({"drive"}).m_Errors, "pitool: FILE is required; see pitool drive --help\n");
    EXPECT_EQ(RunPitool({"eta", "--color", "pink"}).m_Errors.find("see pitool --help"), std::string::npos);
}

TEST_F(Program, HelpAndVersionExitWith0) {
    const Outcome version = RunPitool({"--version"});
    EXPECT_EQ(version.m_Output.substr(0, 7), "pitool ");
    EXPECT_EQ(version.m_ExitStatus, 0);
    EXPECT_EQ(RunPitool({"--help"}).m_ExitStatus, 0);
    EXPECT_EQ(RunPitool({"drive", "--help"}).m_ExitStatus, 0);
}

TEST_F(Program, AFullDiskIsOneErrorAndExitStatus1) {
    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    if (full < 0) {
        GTEST_SKIP() << "no /dev/full on this machine";
    }
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"drive", "wd-disk.json"},
                                                      {"drive", "."},
                                                      {"drive", "--json", "."},
                                                      {"--help"}}) {
        const Outcome run = RunPitool(arguments, "", full);
        EXPECT_EQ(run.m_Errors, "pitool: standard output: No space left on device\n");
        EXPECT_EQ(run.m_ExitStatus, 1);
    }
    close(full);
}

TEST_F(Program, AReaderThatWentAwayIsNoCrashAndNoMessage) {
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    close(ends[0]);
    const Outcome run = RunPitool({"drive", "--json", "."}, "", ends[1]);
    close(ends[1]);
    EXPECT_EQ(run.m_Errors, "");
    EXPECT_EQ(run.m_ExitStatus, 1);
}
