// SPDX-License-Identifier: Apache-2.0
// Self-tests of drives, with a program that stands in for smartctl.
#include <gmock/gmock.h>
#include <pi/plugin_helper.h>

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "plugin_interface.h"
#include "run_program.h"

namespace {

namespace fs = std::filesystem;
namespace Operation = PI::OperationID;
namespace Value = PI::PropertyValue;
using PI::Test::ReadFile;
using testing::ElementsAre;
using testing::IsEmpty;

/// A machine with one drive. What it says next time stands in the file "answer", what it was told in "told".
class SmartctlSelfTest : public testing::Test {
protected:
    SmartctlSelfTest() {
        const std::string folder = m_Folder.Path();
        m_Folder.Write("smartctl",
                       "#!/bin/sh\ncase \"$*\" in\n--scan-open) echo '/dev/sda -d sat # a drive';;\n"
                       "'--json -x -d sat /dev/sda') cat " +
                           folder +
                           "/answer;;\n"
                           "*) echo \"$*\" >>" +
                           folder + "/told; [ ! -e " + folder + "/refusal ] || { cat " + folder +
                           "/refusal; exit 4; };;\nesac\n");
        fs::permissions(m_Folder.Path() / "smartctl", fs::perms::owner_all);
        EXPECT_EQ(PluginConfigure("program", (folder + "/smartctl").c_str()), PI::ErrorCode::SUCCESS);
        Answer("");
    }

    ~SmartctlSelfTest() override { PluginConfigure("program", "/nowhere"); }

    void Answer(const std::string& members) const {
        m_Folder.Write("answer",
                       R"({"device":{"name":"/dev/sda","type":"sat","protocol":"ATA"},"model_name":"A B")" +
                           members + "}");
    }

    static std::vector<PI::CObject> Objects() {
        std::vector<PI::CObject> objects;
        std::vector<std::string> errors;
        EXPECT_EQ(PluginGetObjects(objects, errors), PI::ErrorCode::SUCCESS);
        EXPECT_THAT(errors, IsEmpty());
        return objects;
    }

    /// Carries out the only operation of the drive.
    /// @return the errors
    std::vector<std::string> Execute(const std::string& type,
                                     const std::function<bool(const PI::CTask&)>& report) {
        const PI::CObject drive = Objects().at(1);
        PI::COperation operation = drive.m_Operations.at(0);
        for (PI::CProperty& parameter : operation.m_Properties) {
            parameter.SetValue(type);
        }
        std::vector<std::string> errors;
        m_Task = PI::CTask();
        const int code = PluginExecute(drive.m_ObjectID, operation, report, m_Task, errors);
        EXPECT_EQ(code == PI::ErrorCode::SUCCESS, errors.empty());
        return errors;
    }

    std::string Told() const { return ReadFile(m_Folder.Path() / "told"); }

    PI::Test::TemporaryFolder m_Folder;
    PI::CTask m_Task;
};

std::string Running(int status) {
    return R"(,"ata_smart_data":{"self_test":{"status":{"value":)" + std::to_string(status) + "}}}";
}

constexpr int IN_PROGRESS_60 = 0xF6;

bool GoOn(const PI::CTask&) {
    return true;
}

TEST_F(SmartctlSelfTest, IsStartedAndFollowedToItsEnd) {
    const PI::CObject drive = Objects().at(1);
    Answer(Running(IN_PROGRESS_60));
    unsigned reports = 0;
    std::vector<std::string> errors;
    PluginExecute(
        drive.m_ObjectID, drive.m_Operations.at(0),
        [&](const PI::CTask& task) {
            ++reports;
            EXPECT_TRUE(task.m_TaskFlag);
            EXPECT_EQ(task.m_TaskValue2, 40U);
            EXPECT_EQ(task.m_TaskText1, "short self-test of /dev/sda");
            Answer(R"(,"ata_smart_self_test_log":{"standard":{"table":[{"type":{"string":"Short offline"},)"
                   R"("status":{"string":"Completed: read failure"}}]}})");
            return true;
        },
        m_Task, errors);
    EXPECT_THAT(errors, IsEmpty());
    EXPECT_EQ(reports, 1U);
    EXPECT_EQ(m_Task.m_TaskText2, "1 failed since the last one that passed");
    EXPECT_EQ(Told(), "--json --test=short -d sat /dev/sda\n");
}

TEST_F(SmartctlSelfTest, ThatIsOverAtOnceIsKnownByTheLogAlone) {
    const auto report = [](const PI::CTask&) -> bool { throw std::logic_error("reported"); };
    EXPECT_THAT(Execute("long", report),
                ElementsAre("/dev/sda: was not seen testing itself, and keeps no log"));
    EXPECT_EQ(Told(), "--json --test=long -d sat /dev/sda\n--json --abort -d sat /dev/sda\n");
    Answer(R"(,"ata_smart_self_test_log":{"standard":{"table":[]}})");
    EXPECT_THAT(Execute("long", report), IsEmpty());
    EXPECT_EQ(m_Task.m_TaskText2, "0 failed since the last one that passed");
}

TEST_F(SmartctlSelfTest, WithoutALogItIsNotKnownHowItEnded) {
    const PI::CObject drive = Objects().at(1);
    Answer(Running(IN_PROGRESS_60));
    std::vector<std::string> errors;
    PluginExecute(
        drive.m_ObjectID, drive.m_Operations.at(0),
        [&](const PI::CTask&) {
            Answer("");
            return true;
        },
        m_Task, errors);
    EXPECT_THAT(errors, IsEmpty());
    EXPECT_EQ(m_Task.m_TaskText2, "the drive keeps no log of how it ended");
}

TEST_F(SmartctlSelfTest, ThatIsToEndEarlyIsEnded) {
    const PI::CObject drive = Objects().at(1);
    Answer(Running(IN_PROGRESS_60));
    std::vector<std::string> errors;
    PluginExecute(
        drive.m_ObjectID, drive.m_Operations.at(0), [](const PI::CTask&) { return false; }, m_Task, errors);
    EXPECT_THAT(errors, IsEmpty());
    EXPECT_EQ(m_Task.m_TaskStatus, Value::ABORTED);
    EXPECT_EQ(Told(), "--json --test=short -d sat /dev/sda\n--json --abort -d sat /dev/sda\n");
}

TEST_F(SmartctlSelfTest, ThatRunsIsATaskOfTheDriveAndCanBeEnded) {
    EXPECT_EQ(Objects().size(), 2U);
    Answer(Running(IN_PROGRESS_60));
    const std::vector<PI::CObject> objects = Objects();
    ASSERT_EQ(objects.size(), 3U);
    EXPECT_EQ(objects[2].m_ObjectType, PI::ObjectType::TASK);
    EXPECT_EQ(objects[2].m_RelatedIDs1, std::vector<std::uint64_t>{objects[1].m_ObjectID});
    EXPECT_EQ(PI::CPluginHelper::StringifyProperty(
                  *PI::CPluginHelper::FindProperty(objects[2], PI::PropertyID::VERIFY_PROGRESS)),
              "40");
    ASSERT_EQ(objects[1].m_Operations.size(), 1U);
    EXPECT_EQ(objects[1].m_Operations[0].m_Header1, Operation::CANCEL_VERIFY);
    EXPECT_THAT(Execute("", GoOn), IsEmpty());
    EXPECT_EQ(Told(), "--json --abort -d sat /dev/sda\n");
}

TEST_F(SmartctlSelfTest, ThatCannotBeStartedSaysWhy) {
    EXPECT_THAT(Execute("quick", GoOn), ElementsAre("TYPE is short or long"));
    m_Folder.Write("refusal", R"({"smartctl":{"messages":[{"string":"no luck","severity":"error"}]}})");
    EXPECT_THAT(Execute("short", GoOn), ElementsAre("/dev/sda:1:1: smartctl says: no luck"));
    fs::remove(m_Folder.Path() / "refusal");
    std::vector<std::string> errors;
    EXPECT_EQ(PluginExecute(4711, PI::COperation(), GoOn, m_Task, errors), PI::ErrorCode::GENERAL);
    EXPECT_THAT(errors, ElementsAre("there is no such drive"));
}

TEST_F(SmartctlSelfTest, ThatCannotBeFollowedSaysWhy) {
    const PI::CObject drive = Objects().at(1);
    m_Folder.Write("answer", "{}");
    std::vector<std::string> errors;
    PluginExecute(drive.m_ObjectID, drive.m_Operations.at(0), GoOn, m_Task, errors);
    EXPECT_THAT(errors, ElementsAre("/dev/sda: no report of smartctl"));
    EXPECT_EQ(Told(), "--json --test=short -d sat /dev/sda\n--json --abort -d sat /dev/sda\n");
}

TEST_F(SmartctlSelfTest, ThatNobodyFollowsAnyMoreIsEnded) {
    const PI::CObject drive = Objects().at(1);
    Answer(Running(IN_PROGRESS_60));
    const auto report = [](const PI::CTask&) -> bool { throw std::runtime_error("nobody is there"); };
    std::vector<std::string> errors;
    PluginExecute(drive.m_ObjectID, drive.m_Operations.at(0), report, m_Task, errors);
    EXPECT_THAT(errors, ElementsAre("nobody is there"));
    EXPECT_EQ(Told(), "--json --test=short -d sat /dev/sda\n--json --abort -d sat /dev/sda\n");
}

TEST_F(SmartctlSelfTest, IsNotOfferedOnADriveFromAFile) {
    m_Folder.Write("reports/a.json", ReadFile(m_Folder.Path() / "answer"));
    PluginConfigure("folder", (m_Folder.Path() / "reports").c_str());
    EXPECT_THAT(Objects().at(1).m_Operations, IsEmpty());
    m_Folder.Write("reports/a.json",
                   ReadFile(m_Folder.Path() / "answer") + ReadFile(m_Folder.Path() / "answer"));
    EXPECT_EQ(Objects().size(), 3U) << "a file may hold several";
    PluginConfigure("folder", "");
    EXPECT_EQ(PluginConfigure("nonsense", ""), PI::ErrorCode::INVALID_PARAMETER);
}

}  // namespace
