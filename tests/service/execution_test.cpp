// SPDX-License-Identifier: Apache-2.0
// Operations that the host has a plug-in carry out.
#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "run_program.h"

namespace {

namespace fs = std::filesystem;
using PI::Test::Outcome;
using PI::Test::ReadFile;
using PI::Test::TemporaryFolder;
using testing::HasSubstr;
using testing::StartsWith;

class Execution : public testing::Test {
protected:
    Execution() { Use("task"); }

    void Use(const std::string& plugin) {
        fs::create_symlink(fs::path(TASK_PLUGIN_FOLDER) / (plugin + ".so"),
                           m_Folder.Path() / (plugin + ".so"));
    }

    Outcome Run(const std::vector<std::string>& options) const {
        std::vector<std::string> command = {HOST, m_Folder.Path()};
        command.insert(command.end(), options.begin(), options.end());
        return PI::Test::RunProgram(command, m_Folder.Path());
    }

    Outcome Execute(const std::string& request) const {
        return Run({"--allow-changes", "--execute", request});
    }

    TemporaryFolder m_Folder;
};

TEST_F(Execution, PrintsALineForEachChangeAndTheResult) {
    const Outcome outcome = Execute("task:disk:START_VERIFY");
    EXPECT_EQ(outcome.m_Errors, "");
    EXPECT_EQ(outcome.m_Output,
              "quick verification of 7 as HDD at 30 with <>: begun\n"
              "quick verification of 7 as HDD at 30 with <>: 0 percent, 00:01:40 remaining\n"
              "quick verification of 7 as HDD at 30 with <>: 50 percent, 00:00:50 remaining\n"
              "quick verification of 7 as HDD at 30 with <>: COMPLETE, no errors\n");
    EXPECT_EQ(outcome.m_Status, 0);
}

TEST_F(Execution, PassesParametersOfEachKindOn) {
    m_Folder.Write("layout.xml", "<Layout/>");
    const Outcome outcome = Execute(
        "task:/dev/disk:START_VERIFY:TYPE=a:b=c:MEDIA_TYPE=SSD:CHECK_RATE=18446744073709551615:CONFIGURATION="
        "layout.xml");
    EXPECT_EQ(outcome.m_Errors, "");
    EXPECT_THAT(outcome.m_Output,
                StartsWith("a:b=c verification of 7 as SSD at 18446744073709551615 with <Layout>: begun\n"));
}

TEST_F(Execution, WithoutLeaveNothingIsCarriedOut) {
    const Outcome outcome = Run({"--execute", "task:disk:START_VERIFY"});
    EXPECT_EQ(outcome.m_Status, 2);
    EXPECT_EQ(outcome.m_Output, "");
    EXPECT_THAT(outcome.m_Errors, StartsWith("service: without --allow-changes nothing is carried out;"));
}

TEST_F(Execution, OneOperationIsCarriedOutAtATime) {
    const std::string request = "task:disk:START_VERIFY";
    const Outcome outcome = Run({"--allow-changes", "-x", request, "--execute", request});
    EXPECT_EQ(outcome.m_Status, 2);
    EXPECT_EQ(outcome.m_Output, "");
    EXPECT_THAT(outcome.m_Errors, HasSubstr("--execute"));
}

TEST_F(Execution, LeaveAlonePrintsTheInventoryAsEver) {
    EXPECT_EQ(Run({"--allow-changes"}).m_Output, Run({}).m_Output);
    EXPECT_THAT(
        Run({}).m_Output,
        HasSubstr("\n    can START_VERIFY (TYPE, MEDIA_TYPE, CHECK_RATE, CONFIGURATION, ALARM_CONTROL)\n"));
}

TEST_F(Execution, WhatIsNotOfferedIsRefused) {
    m_Folder.Write("broken.xml", "<Layout");
    const std::pair<const char*, const char*> CASES[] = {
        {"other:disk:START_VERIFY", "there is no plug-in other"},
        {"task:tape:START_VERIFY", "task: there is no object tape"},
        {"task:9:START_VERIFY", "task: there is no object 9"},
        {"task:7x:START_VERIFY", "task: there is no object 7x"},
        {"task:7:START_CHECK",
         "task: 7 does not offer START_CHECK as it is; it offers START_VERIFY, LOCATE_DEVICE"},
        {"task:8:START_VERIFY", "task: 8 does not offer START_VERIFY as it is; it offers LOCATE_DEVICE"},
        {"task:disk:LOCATE_DEVICE", "task: disk is more than one object: 7, 8"},
        {"task:8:LOCATE_DEVICE:TYPE=x", "task: LOCATE_DEVICE does not take TYPE; it takes nothing"},
        {"task:7:START_VERIFY:MEDIA_TYPE=HARDDISK", "task: MEDIA_TYPE cannot be \"HARDDISK\""},
        {"task:7:START_VERIFY:MEDIA_TYPE=RAID5", "task: MEDIA_TYPE cannot be \"RAID5\""},
        {"task:7:START_VERIFY:MEDIA_TYPE=", "task: MEDIA_TYPE cannot be \"\""},
        {"task:7:START_VERIFY:CHECK_RATE=-1", "task: CHECK_RATE cannot be \"-1\""},
        {"task:7:START_VERIFY:CHECK_RATE=", "task: CHECK_RATE cannot be \"\""},
        {"task:7:START_VERIFY:CONFIGURATION=nowhere.xml", "task: nowhere.xml: there is no such file"},
        {"task:7:START_VERIFY:CONFIGURATION=/dev/null", "task: /dev/null: there is no such file"},
        {"task:7:START_VERIFY:CONFIGURATION=broken.xml", "task: broken.xml: Error parsing start element tag"},
        {"task:7:START_VERIFY:ALARM_CONTROL=1", "task: parameters of this kind cannot be given here"},
    };
    for (const auto& [request, error] : CASES) {
        const Outcome outcome = Execute(request);
        EXPECT_EQ(outcome.m_Errors, std::string("service: ") + error + "\n");
        EXPECT_EQ(outcome.m_Output, "");
        EXPECT_EQ(outcome.m_Status, 1);
    }
}

TEST_F(Execution, FailureIsToldWithItsReasons) {
    const std::pair<const char*, const char*> CASES[] = {
        {"fail", "no luck, nor hope"},
        {"silent", "error 20054 PHYSICALDRIVE_BUSY"},
        {"throw", "exception: thrown by the plug-in"},
    };
    for (const auto& [type, error] : CASES) {
        const Outcome outcome = Execute("task:7:START_VERIFY:TYPE=" + std::string(type));
        EXPECT_EQ(outcome.m_Output, "START_VERIFY of 7: FAILED\n");
        EXPECT_EQ(outcome.m_Errors, std::string("service: task: ") + error + "\n");
        EXPECT_EQ(outcome.m_Status, 1);
    }
}

TEST_F(Execution, ASignalAsksToEndEarly) {
    const fs::path output = m_Folder.Path() / "output";
    for (const std::string option : {"", "--isolate "}) {
        const std::string command = "'" HOST "' " + option +
                                    "--allow-changes --execute task:7:START_VERIFY:TYPE=slow " +
                                    m_Folder.Path().string() + " >" + output.string() +
                                    " & child=$!\n"
                                    "until grep -q '50 percent' " +
                                    output.string() + "; do sleep 0.01; done\nkill -TERM $child\nwait $child";
        EXPECT_EQ(PI::Test::RunProgram({"/bin/sh", "-c", command}, m_Folder.Path()).m_Status, 1);
        EXPECT_THAT(ReadFile(output),
                    testing::EndsWith(
                        "slow verification of 7 as HDD at 30 with <>: 50 percent, 00:00:50 remaining\n"
                        "slow verification of 7 as HDD at 30 with <>: ABORTED, 50 percent, the drive is "
                        "as it was\n"));
        fs::remove(output);
    }
}

TEST_F(Execution, IsTheSameInAProcessOfItsOwn) {
    for (const char* const request :
         {"task:disk:START_VERIFY", "task:7:START_VERIFY:TYPE=fail", "task:7:START_VERIFY:TYPE=silent",
          "task:7:START_VERIFY:TYPE=throw", "task:9:START_VERIFY"}) {
        const Outcome within = Execute(request);
        const Outcome isolated = Run({"--isolate", "--allow-changes", "--execute", request});
        EXPECT_EQ(isolated.m_Output, within.m_Output);
        EXPECT_EQ(isolated.m_Errors, within.m_Errors);
        EXPECT_EQ(isolated.m_Status, within.m_Status);
    }
}

TEST_F(Execution, PluginWithoutTheFunctionOffersNothing) {
    Use("without_execute");
    fs::remove(m_Folder.Path() / "task.so");
    const Outcome inventory = Run({});
    EXPECT_EQ(inventory.m_Errors, "");
    EXPECT_EQ(inventory.m_Output,
              "Plug-in task\n  Physical drive 7: disk\n    OS_DEVICE: /dev/disk\n"
              "  Physical drive 8: disk\n    OS_DEVICE: /dev/disk\n");
    EXPECT_EQ(Execute("task:7:START_VERIFY").m_Errors,
              "service: task: 7 does not offer START_VERIFY as it is; it offers nothing\n");
}

}  // namespace
