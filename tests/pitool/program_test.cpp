// SPDX-License-Identifier: Apache-2.0
// The built program from outside: what it prints, what it complains about, how it exits.

#include "program_runner.h"
#include "sample_reports.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
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
    EXPECT_NE(table.m_Output.find("\n2 drives: 2 good; 1 input refused\n"), std::string::npos)
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
    EXPECT_EQ(run.m_Errors, "pitool: " + m_Directory +
                                R"(: no file ending ".json", ".txt" or ".gz" in this folder)"
                                "\n");
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

TEST_F(Program, ChecksAsMonitoringPlugInsDo) {
    const std::string none = Create("none.json", "{");
    const std::string unknown =
        Create("unknown.json", R"({"device":{"protocol":"ATA"},"model_name":"QEMU"})");
    struct Case {
        std::vector<std::string> m_Files;
        int m_Status;
        const char* m_Begin;
    };
    const Case cases[] = {
        {{"wd-disk.json"}, 0, "DRIVES OK: 1 drive: 1 good | failed=0 replace=0 look=0 unknown=0 good=1\n"},
        {{"worn-intel-ssd.json", "wd-disk.json"},
         1,
         "DRIVES WARNING: 2 drives: 1 to look at, 1 good; INTEL SSDSC2BB240G7 "},
        {{unknown, "wd-disk.json"}, 3, "DRIVES UNKNOWN: 2 drives: 1 unknown, 1 good; QEMU : no verdict"},
        {{"worn-intel-ssd.json", unknown}, 1, "DRIVES WARNING: 2 drives: 1 to look at, 1 unknown; INTEL"},
        {{none, "wd-disk.json"}, 3, "DRIVES UNKNOWN: 1 drive: 1 good; 1 input refused | "},
        {{none, "worn-intel-ssd.json"}, 1, "DRIVES WARNING: 1 drive: 1 to look at; 1 input refused; INTEL"},
        {{none}, 3, "DRIVES UNKNOWN: 0 drives; 1 input refused | failed=0 "},
        {{none, unknown, "worn-intel-ssd.json", "failing-hgst-disk.json"},
         2,
         "DRIVES CRITICAL: 3 drives: 1 failed, "},
    };
    for (const Case& each : cases) {
        std::vector<std::string> arguments = {"drive", "--check"};
        arguments.insert(arguments.end(), each.m_Files.begin(), each.m_Files.end());
        const Outcome run = RunPitool(arguments);
        EXPECT_EQ(run.m_Output.rfind(each.m_Begin, 0), 0U) << run.m_Output;
        EXPECT_EQ(run.m_ExitStatus, each.m_Status) << run.m_Output;
    }
    EXPECT_EQ(RunPitool({"drive", "--check", "--format", "csv", "worn-intel-ssd.json"}).m_ExitStatus, 1);
}

TEST_F(Program, CheckLeavesNoDriveOutOfWhatProgramsRead) {
    const std::string lines = RunPitool({"drive", "--check", "--format", "csv", "wd-disk.json"}).m_Output;
    EXPECT_NE(lines.find("WD1500HLFS"), std::string::npos) << lines;
}

TEST_F(Program, LimitOfModelsKeepsNoDriveFromTheirCounts) {
    const std::string all = RunPitool({"drive", "--by-model", "."}).m_Output;
    const std::size_t secondModel = all.find('\n', all.find('\n') + 1) + 1;
    EXPECT_EQ(RunPitool({"drive", "--by-model", "--limit", "1", "."}).m_Output,
              all.substr(0, secondModel) + "... and 10 more; --limit 0 shows all\n" +
                  all.substr(all.rfind("\n12 drives") + 1));
    EXPECT_EQ(RunPitool({"drive", "--by-model", "--limit", "11", "."}).m_Output, all);
    EXPECT_EQ(RunPitool({"drive", "--by-model", "--sort", "wear", "."}).m_ExitStatus, 2);
    for (const char* none : {"-1", "1.5", "three", "0x10"}) {
        EXPECT_EQ(RunPitool({"drive", "--limit", none, "."}).m_ExitStatus, 2) << none;
    }
}

TEST_F(Program, WithoutAnyDriveAFileOfMetricsStaysAsItWas) {
    const std::string file = testing::TempDir() + "/pitool-metrics.prom";
    std::ofstream(file) << "before";
    EXPECT_EQ(RunPitool({"drive", "--format", "prometheus", "--output", file, "/nowhere"}).m_ExitStatus, 1);
    EXPECT_EQ(ReadFile(file), "before");
}

TEST_F(Program, CheckListsTheDrivesThatAreNotGood) {
    const std::string output =
        RunPitool({"drive", "--check", "wd-disk.json", "worn-intel-ssd.json"}).m_Output;
    EXPECT_NE(output.find("\nlook   INTEL"), std::string::npos) << output;
    EXPECT_EQ(output.find("wd-disk.json"), std::string::npos) << output;
}

TEST_F(Program, WrongUsageOfACheckIsUnknown) {
    EXPECT_EQ(RunPitool({"drive", "--check"}).m_ExitStatus, 3);
    EXPECT_EQ(RunPitool({"drive", "--check", "-", "-"}).m_ExitStatus, 3);
    EXPECT_EQ(RunPitool({"drive", "--bad", "--check", "wd-disk.json"}).m_ExitStatus, 3);
    EXPECT_EQ(RunPitool({"drive", "--bad", "wd-disk.json"}).m_ExitStatus, 2);
}

TEST_F(Program, ShowsOnlyTheStatesAskedFor) {
    const Outcome run = RunPitool({"drive", "--state", "failed,look", "."});
    EXPECT_NE(run.m_Output.find("\nfailed  HGST"), std::string::npos) << run.m_Output;
    EXPECT_NE(run.m_Output.find("\nlook    INTEL"), std::string::npos);
    EXPECT_EQ(run.m_Output.find("\ngood"), std::string::npos);
    EXPECT_NE(run.m_Output.find("\n12 drives: 1 failed, 2 to look at, 9 good\n"), std::string::npos);
    EXPECT_EQ(Json::parse(RunPitool({"drive", "--state", "failed", "--json", "."}).m_Output)["drives"].size(),
              1U);
    EXPECT_EQ(RunPitool({"drive", "--state", "failed", "--state", "look", "."}).m_Output, run.m_Output);
    EXPECT_EQ(RunPitool({"drive", "--state", "failed,bad", "."}).m_ExitStatus, 2);
    EXPECT_EQ(RunPitool({"drive", "--state", "", "."}).m_Errors,
              "pitool: --state:  not in {failed,replace,look,unknown,good}; see pitool drive --help\n");
    EXPECT_EQ(RunPitool({"drive", "--state", ",", "."}).m_ExitStatus, 2);
}

TEST_F(Program, SortsAndLimits) {
    const Outcome run = RunPitool({"drive", "--sort", "temperature", "--limit", "2", "."});
    EXPECT_EQ(run.m_Output.find("look   INTEL SSDPE2KE016T8"), run.m_Output.find('\n') + 1) << run.m_Output;
    EXPECT_NE(run.m_Output.find("\n... and 10 more; --limit 0 shows all\n12 drives: "), std::string::npos);
    EXPECT_EQ(RunPitool({"drive", "--limit", "0", "."}).m_Output, RunPitool({"drive", "."}).m_Output);
    EXPECT_EQ(RunPitool({"drive", "--limit", "010", "."}).m_Output,
              RunPitool({"drive", "--limit", "10", "."}).m_Output);
    const Json json = Json::parse(RunPitool({"drive", "--limit", "2", "--json", "."}).m_Output);
    EXPECT_EQ(json["drives"].size(), 2U);
    EXPECT_EQ(json["summary"]["drives"], 12);
    EXPECT_EQ(RunPitool({"drive", "--sort", "colour", "."}).m_ExitStatus, 2);
}

TEST_F(Program, CountsByModel) {
    const Outcome run = RunPitool({"drive", "--by-model", "."});
    EXPECT_EQ(run.m_Output.find("     1        -     -       1       5.9 y            -             -  HGST"),
              run.m_Output.find('\n') + 1)
        << run.m_Output;
    EXPECT_EQ(RunPitool({"drive", "--by-model", "--json", "."}).m_Errors,
              "pitool: --by-model prints text, and no json; see pitool drive --help\n");
    EXPECT_EQ(RunPitool({"drive", "--by-model", "--json", "."}).m_ExitStatus, 2);
    EXPECT_EQ(RunPitool({"drive", "--by-model", "--format", "text", "."}).m_Output, run.m_Output);
    EXPECT_NE(
        RunPitool({"drive", "--by-model", "--check", "."}).m_Output.find("\nFAILED  REPLACE  LOOK  DRIVES"),
        std::string::npos);
}

TEST_F(Program, CsvHasALineADrive) {
    const Outcome run = RunPitool({"drive", "--format", "csv", "."});
    EXPECT_EQ(run.m_Output.rfind("state,reason,model,", 0), 0U);
    EXPECT_EQ(run.m_Output.find("\r\nfailed,"), run.m_Output.find('\r'));
    std::size_t lines = 0;
    for (std::size_t at = 0; (at = run.m_Output.find("\r\n", at)) != std::string::npos; at += 2) {
        ++lines;
    }
    EXPECT_EQ(lines, 13U);
}

TEST_F(Program, EventsAreRefusedWhereNoFormatHasAPlaceForThem) {
    for (const std::string format : {"csv", "prometheus", "html"}) {
        const Outcome run = RunPitool({"drive", "--events", "--format", format, "."});
        EXPECT_EQ(run.m_Errors, "pitool: --events are in text and json, and not in " + format +
                                    "; see pitool drive --help\n");
        EXPECT_EQ(run.m_ExitStatus, 2);
    }
}

TEST_F(Program, FormatJsonIsJson) {
    EXPECT_EQ(RunPitool({"drive", "--format", "json", "."}).m_Output,
              RunPitool({"drive", "--json", "."}).m_Output);
    EXPECT_EQ(RunPitool({"drive", "--format", "yaml", "."}).m_ExitStatus, 2);
    EXPECT_EQ(RunPitool({"drive", "--format", "json", "--json", "."}).m_Output,
              RunPitool({"drive", "--json", "."}).m_Output);
    const Outcome both = RunPitool({"drive", "--json", "--format", "csv", "."});
    EXPECT_EQ(both.m_Errors, "pitool: --json: --format says csv; see pitool drive --help\n");
    EXPECT_EQ(both.m_ExitStatus, 2);
}

TEST_F(Program, ReadsFoldersBelowAndCompressedReports) {
    fs::create_directories(m_Directory + "/host/deep");
    fs::copy(std::string(PITOOL_EXAMPLES) + "/wd-disk.json", m_Directory + "/host/deep/a.json");
    fs::copy(std::string(PITOOL_EXAMPLES) + "/samsung-ssd.json", m_Directory + "/b.json");
    ASSERT_EQ(RunProgram("/bin/gzip", m_Directory, {"b.json"}).m_ExitStatus, 0);
    const Json json = Json::parse(RunPitool({"drive", "--json", m_Directory}).m_Output);
    ASSERT_EQ(json["drives"].size(), 2U);
    EXPECT_EQ(json["drives"][0]["file"], m_Directory + "/host/deep/a.json");
    EXPECT_EQ(json["drives"][1]["file"], m_Directory + "/b.json.gz");
}

TEST_F(Program, OutputReplacesTheFileWhenItIsWhole) {
    const std::string file = Create("out.json", "before");
    fs::permissions(file, fs::perms(0640));
    const Outcome run = RunPitool({"drive", "--json", "--output", file, "."});
    EXPECT_EQ(run.m_Output + run.m_Errors, "");
    EXPECT_EQ(run.m_ExitStatus, 0);
    EXPECT_EQ(ReadFile(file), RunPitool({"drive", "--json", "."}).m_Output);
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
    EXPECT_EQ(std::distance(fs::directory_iterator(m_Directory), fs::directory_iterator()), 1)
        << "nothing beside it";
}

TEST_F(Program, OutputMayBeANewFileOrALinkToOne) {
    const std::string file = m_Directory + "/new.csv";
    EXPECT_EQ(RunPitool({"drive", "--format", "csv", "--output", file, "wd-disk.json"}).m_ExitStatus, 0);
    const std::string expected = ReadFile(file);
    const std::string target = Create("target", "");
    fs::create_symlink("target", m_Directory + "/link");
    EXPECT_EQ(RunPitool({"drive", "--format", "csv", "--output", m_Directory + "/link", "wd-disk.json"})
                  .m_ExitStatus,
              0);
    EXPECT_EQ(ReadFile(target), expected);
    EXPECT_TRUE(fs::is_symlink(m_Directory + "/link"));
    fs::create_symlink("nowhere", m_Directory + "/dangling");
    EXPECT_EQ(RunPitool({"drive", "--output", m_Directory + "/dangling", "wd-disk.json"}).m_Errors,
              "pitool: " + m_Directory + "/dangling: a link to nothing\n");
}

TEST_F(Program, OutputToAHyphenIsStandardOutput) {
    const std::string report = std::string(PITOOL_EXAMPLES) + "/wd-disk.json";
    for (const std::string format : {"text", "csv"}) {
        const Outcome run =
            RunProgram(PITOOL_PROGRAM, m_Directory, {"drive", "--format", format, "--output", "-", report});
        EXPECT_EQ(run.m_Output, RunPitool({"drive", "--format", format, report}).m_Output);
        EXPECT_EQ(run.m_ExitStatus, 0) << run.m_Errors;
    }
    EXPECT_TRUE(fs::is_empty(m_Directory));
}

TEST_F(Program, ASignalThatEndsItLeavesNoTemporaryFile) {
    const std::string file = Create("out.json", "before");
    for (const int signal : {SIGHUP, SIGABRT, SIGUSR1, SIGSEGV, SIGALRM, SIGTERM, SIGXCPU, SIGRTMIN}) {
        const Outcome run = RunProgram(
            "/bin/sh", m_Directory,
            {"-c", "ulimit -c 0; mkfifo in; exec 3<> in; " PITOOL_PROGRAM
                   " drive --output out.json in & until ls out.json.* > names 2> /dev/null; do :; "
                   "done; kill -" +
                       std::to_string(signal) + " $!; wait $!; status=$?; rm in names; exit $status"});
        EXPECT_EQ(run.m_ExitStatus, 128 + signal) << run.m_Errors;
        EXPECT_EQ(ReadFile(file), "before");
        EXPECT_EQ(std::distance(fs::directory_iterator(m_Directory), fs::directory_iterator()), 1) << signal;
    }
}

TEST_F(Program, ASignalThatEndsNothingLeavesItRunning) {
    const Outcome run = RunProgram(
        "/bin/sh", m_Directory,
        {"-c", "mkfifo wd-disk.json; trap '' HUP; " PITOOL_PROGRAM " drive --output out wd-disk.json & "
               "until ls out.* > names 2> /dev/null; do :; done; "
               "for signal in HUP WINCH CHLD URG TSTP CONT; do kill -$signal $!; done; "
               "cat '" PITOOL_EXAMPLES "/wd-disk.json' > wd-disk.json; wait $!"});
    EXPECT_EQ(run.m_ExitStatus, 0) << run.m_Errors;
    EXPECT_EQ(ReadFile(m_Directory + "/out"), Expected("wd-disk.txt"));
}

TEST_F(Program, AFileThatMayNotGrowSoFarIsOneErrorAndLeavesTheOldOne) {
    const std::string file = Create("out.json", "before");
    const Outcome run =
        RunProgram("/bin/sh", m_Directory,
                   {"-c",  // enough for what a build for coverage writes
                    "ulimit -f 400; " PITOOL_PROGRAM " drive --json --output out.json $(yes '" PITOOL_EXAMPLES
                    "' | head -n 8)"});
    EXPECT_EQ(run.m_Errors, "pitool: " + file + ": File too large\n");
    EXPECT_EQ(run.m_ExitStatus, 1);
    EXPECT_EQ(ReadFile(file), "before");
    EXPECT_EQ(std::distance(fs::directory_iterator(m_Directory), fs::directory_iterator()), 1);
}

TEST_F(Program, OutputThatCannotBeWrittenIsNamedBeforeAnythingIsRead) {
    for (const auto& [file, reason] : {std::pair<std::string, std::string>{"/dev/null", "no regular file"},
                                       {m_Directory, "no regular file"},
                                       {m_Directory + "/no/file", "No such file or directory"}}) {
        const Outcome run = RunPitool({"drive", "--output", file, "missing.json"});
        EXPECT_EQ(run.m_Errors, "pitool: " + file + ": " + reason + "\n");
        EXPECT_EQ(run.m_ExitStatus, 1);
    }
}

TEST_F(Program, RefusedInputsDoNotKeepTheOutputBack) {
    const std::string file = m_Directory + "/out";
    EXPECT_EQ(RunPitool({"drive", "--output", file, "missing.json", "wd-disk.json"}).m_ExitStatus, 1);
    EXPECT_EQ(ReadFile(file), Expected("wd-disk.txt"));
}

TEST_F(Program, AnOutputFileNeedsNoStandardInput) {
    const std::string file = m_Directory + "/out";
    EXPECT_EQ(
        RunProgram("/bin/sh", PITOOL_EXAMPLES,
                   {"-c", std::string(PITOOL_PROGRAM) + " drive --output " + file + " wd-disk.json <&-"})
            .m_ExitStatus,
        0);
    EXPECT_EQ(ReadFile(file), Expected("wd-disk.txt"));
}

TEST_F(Program, AWordThatIsNoCommandIsNamed) {
    EXPECT_EQ(RunPitool({"dirve", "wd-disk.json"}).m_Errors,
              "pitool: \"dirve\" is not a command; see pitool --help\n");
    EXPECT_EQ(RunPitool({"--color", "never", "[a]"}).m_Errors,
              "pitool: \"[a]\" is not a command; see pitool --help\n");
    EXPECT_EQ(RunPitool({"--bad"}).m_Errors, "pitool: \"--bad\" is not an option; see pitool --help\n");
    EXPECT_EQ(RunPitool({std::string(41, 'x')}).m_Errors,
              "pitool: \"" + std::string(40, 'x') + "...\" is not a command; see pitool --help\n");
    EXPECT_EQ(RunPitool({}).m_Errors, "pitool: A subcommand is required; see pitool --help\n");
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
