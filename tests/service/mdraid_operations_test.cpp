// SPDX-License-Identifier: Apache-2.0
// What the mdraid plug-in carries out, on a tree with the kernel's files and with a program that stands in
// for mdadm.
#include "operations.h"

#include <gmock/gmock.h>
#include <pi/plugin_helper.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "inventory.h"
#include "plugin_interface.h"
#include "run_program.h"

namespace {

namespace fs = std::filesystem;
namespace ID = PI::PropertyID;
namespace Operation = PI::OperationID;
namespace Value = PI::PropertyValue;
using PI::Test::ReadFile;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string HEAD = "Personalities : [raid1]\n";
const std::string TAIL = "\nunused devices: <none>\n";
const std::string MIRROR = "md0 : active raid1 sdb1[1] sda1[0]\n      64 blocks super 1.2 [2/2] [UU]\n";

/// A machine in a folder.
class MdraidOperations : public testing::Test {
protected:
    MdraidOperations() {
        m_Machine.m_Root = m_Folder.Path() / "root";
        m_Machine.m_Mdadm = m_Folder.Path() / "mdadm";
        m_Machine.m_Interval = std::chrono::milliseconds(0);
        SetList(MIRROR);
        SetArray("sync_action", "idle");
        SetArray("sync_min", "0");
        SetMdadm("echo \"mdadm: done\" >&2");
    }

    void SetList(const std::string& arrays) const {
        m_Folder.Write("root/proc/mdstat", HEAD + arrays + TAIL);
    }

    void SetArray(const std::string& attribute, const std::string& text) const {
        m_Folder.Write("root/sys/block/md0/md/" + attribute, text + "\n");
    }

    std::string GetArray(const std::string& attribute) const {
        return ReadFile(m_Machine.m_Root / "sys/block/md0/md" / attribute);
    }

    /// The program keeps its arguments in a file.
    void SetMdadm(const std::string& script) const {
        m_Folder.Write("mdadm", "#!/bin/sh\nfor i; do echo \"$i\"; done >" + m_Folder.Path().string() +
                                    "/arguments\n" + script + "\n");
        fs::permissions(m_Folder.Path() / "mdadm", fs::perms::owner_all);
    }

    std::string Arguments() const {
        std::string text = ReadFile(m_Folder.Path() / "arguments");
        std::replace(text.begin(), text.end(), '\n', ' ');
        return text;
    }

    void AddFreeDrive(const std::string& name, const std::string& rotational) const {
        const std::string block = "root/sys/block/" + name + "/";
        m_Folder.Write(block + "size", "2097152\n");
        m_Folder.Write(block + "dev", "8:0\n");
        m_Folder.Write(block + "device/vendor", "ATA     \n");
        m_Folder.Write(block + "queue/rotational", rotational + "\n");
        fs::create_directory(m_Folder.Path() / block / "holders");
    }

    std::vector<PI::CObject> Objects() {
        std::vector<std::string> errors;
        std::vector<PI::CObject> objects;
        mdraid::AppendObjects(mdraid::ReadInventory(m_Machine.m_Root, m_IDs, m_Progress, errors), m_IDs,
                              objects);
        EXPECT_THAT(errors, IsEmpty());
        return objects;
    }

    PI::CObject Find(const std::string& name) {
        const std::vector<PI::CObject> objects = Objects();
        for (const PI::CObject& object : objects) {
            if (object.m_Properties.at(0).m_Data.m_String.m_Value == name) {
                return object;
            }
        }
        throw std::runtime_error("there is no " + name);
    }

    std::vector<std::string> Offers(const std::string& name) {
        std::vector<std::string> names;
        for (const PI::COperation& operation : Find(name).m_Operations) {
            names.push_back(PI::OperationIDToString(static_cast<int>(operation.m_Header1)));
        }
        return names;
    }

    using Report = std::function<bool(const PI::CTask&)>;

    /// Carries out what an object offers.
    /// @return why it failed; empty when it did not
    std::string Execute(
        const std::string& name, PI::_OPERATION_ID id,
        const std::function<void(PI::COperation&)>& fill = [](PI::COperation&) {},
        const Report& report = [](const PI::CTask&) { return true; }) {
        const PI::CObject object = Find(name);
        for (PI::COperation operation : object.m_Operations) {
            if (operation.m_Header1 == static_cast<unsigned>(id)) {
                fill(operation);
                return Execute(object.m_ObjectID, operation, report);
            }
        }
        return "not offered";
    }

    std::string Execute(std::uint64_t objectID, const PI::COperation& operation, const Report& report) {
        try {
            m_Task = PI::CTask();
            mdraid::Execute(m_Machine, m_IDs, m_Progress, objectID, operation, report, m_Task);
            return "";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }

    PI::Test::TemporaryFolder m_Folder;
    mdraid::Machine m_Machine;
    shared::ObjectIDs m_IDs;
    mdraid::Progress m_Progress;
    PI::CTask m_Task;
};

std::string Checking(const std::string& percent) {
    return MIRROR + "      [>....]  check = " + percent + "% (16/64) finish=2.0min speed=1K/sec\n";
}

TEST_F(MdraidOperations, ACheckIsStartedAndFollowedToItsEnd) {
    std::vector<std::string> reports;
    EXPECT_EQ(Execute(
                  "md0", Operation::START_CHECK, [](PI::COperation&) {},
                  [&](const PI::CTask& task) {
                      EXPECT_EQ(GetArray("sync_action"), "check");
                      EXPECT_EQ(task.m_TaskStatus, Value::OK);
                      reports.push_back(task.m_TaskText1 + (task.m_TaskFlag ? " " : " unknown ") +
                                        std::to_string(task.m_TaskValue2) + " " +
                                        std::to_string(task.m_TaskValue4));
                      if (reports.size() == 1) {
                          SetList(Checking("25.0"));
                      } else {
                          SetArray("sync_action", "idle");
                          SetArray("mismatch_cnt", "128");
                          SetList(MIRROR);
                      }
                      return true;
                  }),
              "");
    EXPECT_THAT(reports,
                ElementsAre("check of md0 unknown 0 18446744073709551615", "check of md0 25 120000"));
    EXPECT_EQ(m_Task.m_TaskText2, "128 sectors differ");
    EXPECT_EQ(m_Task.m_TaskStatus, Value::OK);
}

TEST_F(MdraidOperations, ACheckThatIsToEndEarlyIsTakenBack) {
    SetArray("sync_min", "16");
    EXPECT_EQ(
        Execute(
            "md0", Operation::CONTINUE_CHECK, [](PI::COperation&) {}, [](const PI::CTask&) { return false; }),
        "");
    EXPECT_EQ(m_Task.m_TaskStatus, Value::ABORTED);
    EXPECT_EQ(GetArray("sync_action"), "idle");
    EXPECT_EQ(GetArray("sync_min"), "0");
}

TEST_F(MdraidOperations, ATaskNamesTheArrayAsItsUserDoes) {
    fs::create_directories(m_Machine.m_Root / "dev/md");
    for (const char* const name : {"later", "data", "much_later", "last", "other"}) {  // the first counts
        fs::create_symlink("../md0", m_Machine.m_Root / "dev/md" / name);
    }
    Execute(
        "data", Operation::START_CHECK, [](PI::COperation&) {}, [](const PI::CTask&) { return false; });
    EXPECT_EQ(m_Task.m_TaskText1, "check of md0 (data)");
}

TEST_F(MdraidOperations, ACheckThatAnotherHasPausedIsNotComplete) {
    bool isSeen = false;
    EXPECT_EQ(Execute(
                  "md0", Operation::START_CHECK, [](PI::COperation&) {},
                  [&](const PI::CTask&) {
                      SetArray("sync_action", isSeen ? "idle" : "check");
                      SetArray("sync_min", isSeen ? "64" : "0");
                      SetList(Checking("99.9"));
                      isSeen = true;
                      return true;
                  }),
              "");
    EXPECT_EQ(m_Task.m_TaskStatus, Value::ABORTED);
    EXPECT_EQ(m_Task.m_TaskText2, "0 sectors differ, ended by another at sector 64");
    EXPECT_FALSE(m_Task.m_TaskFlag);
}

TEST_F(MdraidOperations, APositionAtTheVeryBeginningIsThatOfTheKernelsFile) {
    const auto progress = [&](const std::string& position, const std::string& completed) {
        SetList(MIRROR + "      [>....]  check = 0.0% (" + position + "/64) finish=2.0min speed=1K/sec\n");
        SetArray("sync_completed", completed);
        return PI::CPluginHelper::StringifyProperty(
            *PI::CPluginHelper::FindProperty(Find("md0"), ID::CHECK_PROGRESS));
    };
    EXPECT_EQ(progress("1", "96 / 128"), "75.0");
    EXPECT_EQ(progress("0", "128 / 128"), "100.0");
    EXPECT_EQ(progress("2", "96 / 128"), "0.0");
    EXPECT_EQ(progress("1", "none"), "0.0");
    EXPECT_EQ(progress("1", "2 / 128"), "0.0");
    EXPECT_EQ(progress("1", "130 / 128"), "0.0");
    EXPECT_EQ(progress("1", "x / 128"), "0.0");
    EXPECT_EQ(progress("1", "96x / 128"), "0.0");
}

TEST_F(MdraidOperations, ACheckThatWaitsIsPending) {
    SetList(MIRROR + "      \tresync=DELAYED\n");
    SetArray("sync_action", "idle");
    EXPECT_THAT(Offers("md0"), ElementsAre("CREATE_DEDICATED_HOTSPARE"));
    SetList(MIRROR);
    Execute(
        "md0", Operation::START_CHECK, [](PI::COperation&) {},
        [&](const PI::CTask& task) {
            SetList(MIRROR + "      \tresync=DELAYED\n");
            return task.m_TaskStatus != Value::PENDING;
        });
    EXPECT_EQ(m_Task.m_TaskStatus, Value::ABORTED);
}

TEST_F(MdraidOperations, AnArrayThatDisappearsEndsItsCheck) {
    const std::string id = std::to_string(Find("md0").m_ObjectID);
    EXPECT_EQ(Execute(
                  "md0", Operation::START_CHECK, [](PI::COperation&) {},
                  [&](const PI::CTask&) {
                      SetList("");
                      return true;
                  }),
              "object " + id + " is gone");
}

TEST_F(MdraidOperations, APausedCheckIsKeptByTheKernelAndGoesOnThere) {
    SetList(Checking("25.0"));
    SetArray("sync_action", "check");
    EXPECT_THAT(Offers("md0"), ElementsAre("CREATE_DEDICATED_HOTSPARE", "PAUSE_CHECK", "CANCEL_CHECK"));
    SetArray("sync_min", "32");
    EXPECT_EQ(Execute("md0", Operation::PAUSE_CHECK), "");
    EXPECT_EQ(m_Task.m_TaskText2, "it would go on at sector 32");
    EXPECT_EQ(GetArray("sync_action"), "idle");
    EXPECT_EQ(GetArray("sync_min"), "32\n");

    SetList(MIRROR);
    EXPECT_THAT(Offers("md0"), ElementsAre("CREATE_DEDICATED_HOTSPARE", "CONTINUE_CHECK", "CANCEL_CHECK"));
    EXPECT_EQ(Execute("md0", Operation::CANCEL_CHECK), "");
    EXPECT_EQ(GetArray("sync_min"), "0");
    EXPECT_THAT(Offers("md0"), ElementsAre("CREATE_DEDICATED_HOTSPARE", "START_CHECK"));
}

TEST_F(MdraidOperations, ACheckThatIsPausedBeforeItHasDoneAnythingSaysSo) {
    SetList(Checking("0.0"));
    EXPECT_EQ(Execute("md0", Operation::PAUSE_CHECK), "");
    EXPECT_EQ(m_Task.m_TaskText2, "nothing is done yet: it would begin anew");
}

TEST_F(MdraidOperations, ARebuildIsFrozenAndGoesOn) {
    const std::string degraded = "md0 : active raid1 sdb1[2] sda1[0]\n      64 blocks super 1.2 [2/1] [U_]\n";
    SetList(degraded + "      [>....]  recovery = 25.0% (16/64) finish=2.0min speed=1K/sec\n");
    EXPECT_THAT(Offers("md0"), ElementsAre("PAUSE_REBUILD"));
    EXPECT_EQ(Execute("md0", Operation::PAUSE_REBUILD), "");
    EXPECT_EQ(GetArray("sync_action"), "frozen");
    SetList(degraded);
    EXPECT_THAT(Offers("md0"), ElementsAre("CONTINUE_REBUILD"));
    EXPECT_EQ(Execute("md0", Operation::CONTINUE_REBUILD), "");
    EXPECT_EQ(GetArray("sync_action"), "idle");
}

TEST_F(MdraidOperations, AReshapeIsLeftToThoseWhoLookAfterIt) {
    SetList(MIRROR + "      [>....]  reshape = 25.0% (16/64) finish=2.0min speed=1K/sec\n");
    EXPECT_THAT(Offers("md0"), ElementsAre("CREATE_DEDICATED_HOTSPARE"));
}

TEST_F(MdraidOperations, WhatTheKernelRefusesIsTold) {
    fs::remove(m_Machine.m_Root / "sys/block/md0/md/sync_action");
    EXPECT_EQ(Execute("md0", Operation::START_CHECK),
              (m_Machine.m_Root / "sys/block/md0/md/sync_action").string() +
                  " does not take \"check\": No such file or directory");
}

TEST_F(MdraidOperations, WhatIsOfferedNoLongerIsRefused) {
    const PI::CObject array = Find("md0");
    SetList("md0 : active raid1 sda1[0]\n      64 blocks super 1.2 [2/1] [U_]\n");
    EXPECT_EQ(Execute(array.m_ObjectID, array.m_Operations.back(), [](const PI::CTask&) { return true; }),
              "the operation is not offered any more");
    SetList("");
    EXPECT_EQ(Execute(array.m_ObjectID, array.m_Operations.back(), [](const PI::CTask&) { return true; }),
              "object " + std::to_string(array.m_ObjectID) + " is gone");
}

TEST_F(MdraidOperations, AReadOnlyArrayAndOneOfABIOSAreNotTouchedByMdadm) {
    SetArray("array_state", "readonly");
    EXPECT_THAT(Offers("md0"), IsEmpty());
    EXPECT_THAT(Offers("sda1"), IsEmpty());
    SetArray("array_state", "active");
    SetList(
        "md0 : active raid1 sdb1[1] sda1[0]\n      64 blocks super external:/md127/0 [2/2] [UU]\n\n"
        "md127 : inactive sdb1[1](S) sda1[0](S)\n      64 blocks super external:imsm\n");
    EXPECT_THAT(Offers("md0"), ElementsAre("START_CHECK"));
    EXPECT_THAT(Offers("sda1"), IsEmpty());
    EXPECT_THAT(Offers("md127"), IsEmpty());
}

TEST_F(MdraidOperations, AnArrayThatTheListAloneCallsReadOnlyIsNotChanged) {
    SetList("md0 : active (read-only) raid1 sdb1[1] sda1[0]\n      64 blocks super 1.2 [2/2] [UU]\n");
    EXPECT_THAT(Offers("md0"), IsEmpty());
    EXPECT_THAT(Offers("sda1"), IsEmpty());
    SetList("md0 : active (auto-read-only) raid1 sdb1[1] sda1[0]\n      64 blocks super 1.2 [2/2] [UU]\n");
    EXPECT_THAT(Offers("md0"), ElementsAre("CREATE_DEDICATED_HOTSPARE", "START_CHECK"));
}

TEST_F(MdraidOperations, ADriveThatTheArrayCannotDoWithoutIsNotMadeOffline) {
    SetList("md0 : active raid1 sda1[0]\n      64 blocks super 1.2 [1/1] [U]\n");
    EXPECT_THAT(Offers("sda1"), IsEmpty());
    SetList("md0 : active raid10 sdb1[1] sda1[0]\n      64 blocks super 1.2 512K chunks [2/2] [UU]\n");
    EXPECT_THAT(Offers("sda1"), IsEmpty());  // copies that are not known
    SetList("md0 : active raid10 sdb1[1] sda1[0]\n      64 blocks 512K chunks 2 far-copies [2/2] [UU]\n");
    EXPECT_THAT(Offers("sda1"), ElementsAre("MAKE_OFFLINE"));
}

TEST_F(MdraidOperations, AMemberIsFailedAndRemoved) {
    EXPECT_THAT(Offers("sdb1"), ElementsAre("MAKE_OFFLINE"));
    EXPECT_EQ(Execute("sdb1", Operation::MAKE_OFFLINE), "");
    EXPECT_EQ(Arguments(), "--manage /dev/md0 --fail /dev/sdb1 ");
    EXPECT_EQ(m_Task.m_TaskText2, "mdadm: done");

    SetList("md0 : active raid1 sdb1[1](F) sda1[0]\n      64 blocks super 1.2 [2/1] [U_]\n");
    EXPECT_THAT(Offers("sdb1"), ElementsAre("REMOVE_DISK"));
    EXPECT_THAT(Offers("sda1"), IsEmpty());
    EXPECT_EQ(Execute("sdb1", Operation::REMOVE_DISK), "");
    EXPECT_EQ(Arguments(), "--manage /dev/md0 --remove /dev/sdb1 ");

    SetList("md0 : active raid1 sdc1[2](S) sdb1[1] sda1[0]\n      64 blocks super 1.2 [2/2] [UU]\n");
    EXPECT_EQ(Execute("sdc1", Operation::DELETE_DEDICATED_HOTSPARE), "");
    EXPECT_EQ(Arguments(), "--manage /dev/md0 --remove /dev/sdc1 ");
}

/// Fills in the device.
std::function<void(PI::COperation&)> WithDevice(const std::string& device) {
    return [device](PI::COperation& operation) { operation.m_Properties.at(0).SetValue(device); };
}

TEST_F(MdraidOperations, AMemberIsAdded) {
    EXPECT_EQ(Execute("md0", Operation::CREATE_DEDICATED_HOTSPARE, WithDevice("/dev/sdc")), "");
    EXPECT_EQ(Arguments(), "--manage /dev/md0 --add /dev/sdc ");
    SetList("md0 : active raid1 sda1[0]\n      64 blocks super 1.2 [2/1] [U_]\n");
    EXPECT_THAT(Offers("md0"), ElementsAre("REPLACE_MISSING"));
    EXPECT_EQ(Execute("md0", Operation::REPLACE_MISSING, WithDevice("cciss/c0d0p1")), "");
    EXPECT_EQ(Arguments(), "--manage /dev/md0 --add /dev/cciss/c0d0p1 ");
    m_Folder.Write("root/dev/sdd", "");
    fs::create_directories(m_Machine.m_Root / "dev/disk");
    fs::create_symlink("../sdd", m_Machine.m_Root / "dev/disk/by-me");
    EXPECT_EQ(Execute("md0", Operation::REPLACE_MISSING, WithDevice("/dev/disk/by-me")), "");
    EXPECT_EQ(Arguments(), "--manage /dev/md0 --add /dev/sdd ");
}

TEST_F(MdraidOperations, NoNameLeavesDev) {
    m_Folder.Write("root/etc/passwd", "");
    fs::create_directories(m_Machine.m_Root / "dev");
    fs::create_symlink("../etc/passwd", m_Machine.m_Root / "dev/out");
    for (const std::string device : {"", "/dev/", "/dev/../etc/passwd", "../../../etc/passwd", "/etc/passwd",
                                     "/dev//etc/passwd", "/dev/sd/../../x", ".", "/dev/./sda", "out"}) {
        EXPECT_EQ(Execute("md0", Operation::CREATE_DEDICATED_HOTSPARE, WithDevice(device)),
                  "\"" + device + "\" is no device below /dev");
    }
    SetList("md0 : active raid1 ../../../etc/passwd[1] sda1[0]\n      64 blocks super 1.2 [2/2] [UU]\n");
    EXPECT_THAT(Offers("../../../etc/passwd"), IsEmpty());
    EXPECT_THAT(Offers("sda1"), ElementsAre("MAKE_OFFLINE"));
    SetList("../etc : active raid1 sdb1[1] sda1[0]\n      64 blocks super 1.2 [2/2] [UU]\n");
    EXPECT_THAT(Offers("../etc"), IsEmpty());
    EXPECT_THAT(Offers("sda1"), IsEmpty());
    EXPECT_FALSE(fs::exists(m_Folder.Path() / "arguments"));
}

TEST_F(MdraidOperations, WhatMdadmSaysWhenItFailsIsOneLine) {
    SetMdadm("echo 'mdadm: first'; echo 'mdadm: second' >&2; exit 1");
    EXPECT_EQ(Execute("sda1", Operation::MAKE_OFFLINE), "mdadm: first, mdadm: second");
    SetMdadm("exit 2");
    EXPECT_EQ(Execute("sda1", Operation::MAKE_OFFLINE), m_Machine.m_Mdadm + ": exit status 2");
    fs::remove(m_Machine.m_Mdadm);
    EXPECT_EQ(Execute("sda1", Operation::MAKE_OFFLINE), m_Machine.m_Mdadm + ": No such file or directory");
    m_Machine.m_Mdadm.clear();
    EXPECT_EQ(Execute("sda1", Operation::MAKE_OFFLINE),
              "mdadm would work on this machine, not on " + m_Machine.m_Root.string());
}

TEST_F(MdraidOperations, WhatMdadmDoesNotTellIsNoSuccess) {
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(Execute("sda1", Operation::MAKE_OFFLINE),
              m_Machine.m_Mdadm + " does not tell how it ended, but said: mdadm: done");
    std::signal(SIGCHLD, before);
}

TEST_F(MdraidOperations, DrivesThatNothingUsesAreFree) {
    AddFreeDrive("sdc", "1");
    EXPECT_EQ(Find("sdc").m_RelatedIDs1, std::vector<std::uint64_t>{1});
    EXPECT_EQ(PI::CPluginHelper::StringifyProperty(
                  *PI::CPluginHelper::FindProperty(Find("sdc"), ID::CONFIGURABLE_SIZE)),
              "1.0 GiB");
    EXPECT_THAT(Offers("Linux software RAID"), ElementsAre("CREATE_LOGICAL_DRIVE"));
    const std::pair<const char*, const char*> USES[] = {
        {"sys/block/sdc/holders/md1/x", ""},
        {"sys/block/sdc/sdc1/partition", "1\n"},
        {"sys/block/sdc/size", "0\n"},
        {"sys/block/sdc/size", "\n"},
        {"sys/block/sdc/removable", "1\n"},
        {"sys/block/sdc/ro", "1\n"},
        {"proc/mounts", "/dev/sdc / ext4 rw 0 0\n"},
        {"proc/swaps", "Filename Type\n/dev/sdc partition 1 0\n"},
        {"run/udev/data/b8:0", "E:ID_FS_TYPE=xfs\n"},
        {"run/udev/data/b8:0", "E:ID_PART_TABLE_TYPE=gpt\n"},
    };
    for (const auto& [file, text] : USES) {
        fs::remove_all(m_Machine.m_Root / "sys/block/sdc");
        AddFreeDrive("sdc", "1");
        m_Folder.Write("root/" + std::string(file), text);
        EXPECT_THROW(Find("sdc"), std::runtime_error) << file;
        EXPECT_THAT(Offers("Linux software RAID"), IsEmpty());
        fs::remove_all(m_Machine.m_Root / "run");
        fs::remove(m_Machine.m_Root / "proc/mounts");
        fs::remove(m_Machine.m_Root / "proc/swaps");
        fs::remove(m_Machine.m_Root / "sys/block/sdc/removable");
        fs::remove(m_Machine.m_Root / "sys/block/sdc/ro");
    }
}

TEST_F(MdraidOperations, ASolidStateDriveIsNotAddedToDisksUnlessThatIsPermitted) {
    AddFreeDrive("sdc", "0");
    AddFreeDrive("sdd", "1");
    for (const std::string member : {"sda1", "sdb1"}) {
        const std::string block = "root/sys/block/md0/md/dev-" + member + "/block/";
        m_Folder.Write(block + "queue/rotational", "1\n");
        m_Folder.Write(block + "device/vendor", "ATA     \n");
    }
    EXPECT_EQ(Execute("md0", Operation::CREATE_DEDICATED_HOTSPARE, WithDevice("/dev/sdc")),
              "/dev/sdc is SSD and /dev/sdb1 HDD, which may not be mixed");
    EXPECT_EQ(Execute("md0", Operation::CREATE_DEDICATED_HOTSPARE, WithDevice("/dev/sdd")), "");
    m_Machine.m_Permissions = "0123";
    EXPECT_EQ(Execute("md0", Operation::CREATE_DEDICATED_HOTSPARE, WithDevice("/dev/sdc")), "");
}

TEST_F(MdraidOperations, AnArrayOfAnUnknownLevelIsLeftAlone) {
    SetList("md0 : active raid99 sdb1[1] sda1[0]\n      64 blocks super 1.2 [2/2] [UU]\n");
    EXPECT_THAT(Offers("md0"), IsEmpty());
    EXPECT_THAT(Offers("sda1"), IsEmpty());
}

TEST(MdraidSettings, AreThoseOfThePlugin) {
    EXPECT_EQ(mdraid::Machine().m_Root, "/");
    EXPECT_EQ(PluginConfigure("mix", "013"), PI::ErrorCode::SUCCESS);
    EXPECT_EQ(PluginConfigure("mix", ""), PI::ErrorCode::SUCCESS);
    EXPECT_EQ(PluginConfigure("mix", "014"), PI::ErrorCode::INVALID_CHARACTER);
    EXPECT_EQ(PluginConfigure("mdadm", "/sbin/mdadm"), PI::ErrorCode::SUCCESS);
    EXPECT_EQ(PluginConfigure("root", "/"), PI::ErrorCode::SUCCESS);
    EXPECT_EQ(PluginConfigure("nonsense", "/"), PI::ErrorCode::INVALID_PARAMETER);
}

class MdraidCreation : public MdraidOperations {
protected:
    MdraidCreation() {
        for (const std::string name : {"sdc", "sdd", "sde", "sdf"}) {
            AddFreeDrive(name, "1");
        }
    }

    /// A drive of a document.
    std::string Drive(const std::string& name, const std::string& start = "0") {
        return "<Drive ObjectID='" + std::to_string(Find(name).m_ObjectID) + "' StartAddress='" + start +
               "'/>";
    }

    std::string Create(const std::string& document, PI::_PROPERTY_VALUE level,
                       const std::string& name = "data") {
        return Execute("Linux software RAID", Operation::CREATE_LOGICAL_DRIVE,
                       [&](PI::COperation& operation) {
                           VELK::XML::xml_document parsed;
                           parsed.load_string(document.c_str());
                           operation.m_Properties.at(0).SetValue(parsed);
                           operation.m_Properties.at(1).SetValue(level, {level});
                           operation.m_Properties.at(2).SetValue(name);
                       });
    }

    static std::string ArrayOf(const std::string& drives) {
        return "<ArrayConfiguration><Containers><Container>" + drives +
               "</Container></Containers></ArrayConfiguration>";
    }
};

TEST_F(MdraidCreation, AnArrayIsMadeOfAnArrayDocument) {
    EXPECT_EQ(Create(ArrayOf(Drive("sdd") + Drive("sdc") + Drive("sde")), Value::RAID5), "");
    EXPECT_EQ(
        Arguments(),
        "--create /dev/md/data --metadata=1.2 --level=raid5 --raid-devices=3 --bitmap=internal /dev/sdd "
        "/dev/sdc /dev/sde ");
    EXPECT_EQ(Create(ArrayOf(Drive("sdc") + Drive("sdd")), Value::RAID0, "md5"), "");
    EXPECT_EQ(Arguments(),
              "--create /dev/md5 --metadata=1.2 --level=raid0 --raid-devices=2 /dev/sdc /dev/sdd ");
    EXPECT_EQ(Create(ArrayOf(Drive("sdc")), Value::CONCAT, "md5x"), "");
    EXPECT_EQ(Arguments(), "--create /dev/md/md5x --metadata=1.2 --level=linear --raid-devices=1 /dev/sdc ");
}

TEST_F(MdraidCreation, ALogicalDriveDocumentHasMirrorsAndSpares) {
    EXPECT_EQ(Create("<LogicalDriveConfiguration><Containers><Container>" + Drive("sdc") + Drive("sdd") +
                         "</Container></Containers><DedicatedHotSpares>" + Drive("sde") +
                         "</DedicatedHotSpares></LogicalDriveConfiguration>",
                     Value::RAID1),
              "");
    EXPECT_EQ(Arguments(),
              "--create /dev/md/data --metadata=1.2 --level=raid1 --raid-devices=2 --bitmap=internal "
              "--spare-devices=1 /dev/sdc /dev/sdd /dev/sde ");
    const std::string mirrors =
        ArrayOf(Drive("sdc") + Drive("sdd") + "</Container><Container>" + Drive("sde") + Drive("sdf"));
    EXPECT_EQ(Create(mirrors, Value::RAID10), "");
    EXPECT_EQ(
        Arguments(),
        "--create /dev/md/data --metadata=1.2 --level=raid10 --raid-devices=4 --bitmap=internal /dev/sdc "
        "/dev/sdd /dev/sde /dev/sdf ");
}

TEST_F(MdraidCreation, WhatCannotBeMadeIsRefusedBeforeMdadmIsAsked) {
    const std::string one = Drive("sdc");
    const std::string member = Drive("sda1");
    const std::string memberID = std::to_string(Find("sda1").m_ObjectID);
    const std::string driveID = std::to_string(Find("sdc").m_ObjectID);
    const std::string shape =
        "CONFIGURATION needs drives in one container; only RAID10 takes several, one for each mirror";
    const std::pair<std::string, std::string> CASES[] = {
        {"", "CONFIGURATION is no configuration document of an array or a logical drive"},
        {"<Other/>", "CONFIGURATION is no configuration document of an array or a logical drive"},
        {ArrayOf(""), shape},
        {ArrayOf(one + "</Container><Container>" + Drive("sdd")), shape},
        {ArrayOf(one + member), "object " + memberID + " is no drive that is free, or is named twice"},
        {ArrayOf(one + one), "object " + driveID + " is no drive that is free, or is named twice"},
        {ArrayOf(one + "<Drive ObjectID='99'/>"), "object 99 is no drive that is free, or is named twice"},
        {ArrayOf(one + "<Drive ObjectID='1'/>"), "object 1 is no drive that is free, or is named twice"},
        {ArrayOf(Drive("sdc", "64")), "drive " + driveID + ": mdadm begins where a drive begins"},
        {"<LogicalDriveConfiguration><Containers><Container>" + one +
             "</Container></Containers><GlobalHotSpares>" + Drive("sdd") +
             "</GlobalHotSpares></LogicalDriveConfiguration>",
         "software RAID has no global hot spares"},
    };
    for (const auto& [document, reason] : CASES) {
        EXPECT_EQ(Create(document, Value::RAID1), reason) << document;
    }
    for (const std::string name :
         {"", ".x", "-x", "a/b", "../x", "a b", "a;b", "abcdefghijklmnopqrstuvwxyz0123456"}) {
        EXPECT_EQ(Create(ArrayOf(one), Value::RAID1, name),
                  "NAME \"" + name + "\" is not of one to 32 letters, digits, \"_\", \"-\" and \".\"");
    }
    EXPECT_FALSE(fs::exists(m_Folder.Path() / "arguments"));
}

TEST_F(MdraidCreation, APartOfEachDriveIsUsedWhereTheDocumentSaysSo) {
    const auto sized = [&](const std::string& size, const std::string& units) {
        return "<ArrayConfiguration Units='" + units + "'><Containers><Container><Drive ObjectID='" +
               std::to_string(Find("sdc").m_ObjectID) + "' StartAddress='0' UsedSize='" + size + "'/>" +
               Drive("sdd") + "</Container></Containers></ArrayConfiguration>";
    };
    const std::string before =
        "--create /dev/md/data --metadata=1.2 --level=raid1 --raid-devices=2 --bitmap=internal ";
    EXPECT_EQ(Create(sized("512", "21002"), Value::RAID1), "");
    EXPECT_EQ(Arguments(), before + "--size=524288 /dev/sdc /dev/sdd ");
    for (const std::string size : {"1073741824", "1063004406"}) {  // all of it, and 99 percent
        EXPECT_EQ(Create(sized(size, "21025"), Value::RAID1), "");
        EXPECT_EQ(Arguments(), before + "/dev/sdc /dev/sdd ");
    }
    EXPECT_EQ(Create(sized("1063004405", "21025"), Value::RAID1), "");
    EXPECT_EQ(Arguments(), before + "--size=1038090 /dev/sdc /dev/sdd ");
    for (const std::string units : {"0", "21006", "7"}) {
        EXPECT_EQ(Create(sized("1", units), Value::RAID1),
                  "CONFIGURATION has no size in units " + units + " that could be used");
    }
    EXPECT_EQ(Create(sized("18446744073709551615", "21027"), Value::RAID1),
              "CONFIGURATION has no size in units 21027 that could be used");
}

TEST_F(MdraidCreation, MdadmIsAnsweredWhereItAsksOfSizesAloneAndTheDocumentGivesThem) {
    const std::string sizes = "mdadm: largest drive (/dev/sdd) exceeds size (1K) by more than 1%\n";
    const std::string question = "Continue creating array? mdadm: create aborted.\n";
    const std::string contents = "mdadm: /dev/sdc appears to contain an ext2fs file system\n";
    const auto ask = [&](const std::string& text) {
        m_Folder.Write("question", text);
        SetMdadm("case \"$*\" in *--run) echo made;; *) cat " + m_Folder.Path().string() +
                 "/question; exit 1;; esac");
    };
    const std::string drives = Drive("sdc") + Drive("sdd");
    std::string sized = ArrayOf(drives);
    sized.replace(sized.find(" StartAddress"), 1, " UsedSize='1073741824' ");
    sized.replace(sized.find("Configuration>"), 14, "Configuration Units='21025'>");
    ask(sizes + question);
    EXPECT_EQ(
        Create(ArrayOf(drives), Value::RAID1),
        "mdadm: largest drive (/dev/sdd) exceeds size (1K) by more than 1%, Continue creating array? mdadm: "
        "create aborted.");
    EXPECT_EQ(Create(sized, Value::RAID1), "");
    EXPECT_EQ(m_Task.m_TaskText2, "made");
    for (const std::string& text :
         {sizes + contents + question, contents + sizes + question, contents + question}) {
        ask(text);
        EXPECT_NE(Create(sized, Value::RAID1), "") << text;
    }
}

TEST_F(MdraidCreation, TheMixingRulesAreKept) {
    AddFreeDrive("sdg", "0");
    const std::string mixed = ArrayOf(Drive("sdc") + Drive("sdg"));
    EXPECT_EQ(Create(mixed, Value::RAID1), "/dev/sdg is SSD and /dev/sdc HDD, which may not be mixed");
    EXPECT_FALSE(fs::exists(m_Folder.Path() / "arguments"));
    m_Machine.m_Permissions = "0123";
    EXPECT_EQ(Create(mixed, Value::RAID1), "");

    m_Folder.Write("root/sys/block/sdd/device/vendor", "SEAGATE \n");
    m_Folder.Write("root/sys/block/sdd/device/sas_address", "0x5000\n");
    const std::string protocols = ArrayOf(Drive("sdc") + Drive("sdd"));
    m_Machine.m_Permissions = "";
    EXPECT_EQ(Create(protocols, Value::RAID1), "/dev/sdd is SAS and /dev/sdc SATA, which may not be mixed");
    m_Machine.m_Permissions = mdraid::Machine().m_Permissions;
    EXPECT_EQ(Create(protocols, Value::RAID1), "");
    EXPECT_EQ(Create(mixed, Value::RAID1), "/dev/sdg is SSD and /dev/sdc HDD, which may not be mixed");
}

}  // namespace
