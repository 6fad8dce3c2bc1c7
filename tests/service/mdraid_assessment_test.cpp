// SPDX-License-Identifier: Apache-2.0
// What the state of an array means to the service.
#include "assessment.h"

#include <gmock/gmock.h>

#include <string>

namespace {

namespace Value = PI::PropertyValue;
using mdraid::Array;
using mdraid::Assess;
using mdraid::Assessment;
using mdraid::IsContainer;
using mdraid::SysfsArray;
using mdraid::SysfsMember;
using testing::ElementsAre;

Array Parse(const std::string& text) {
    const mdraid::Mdstat mdstat = mdraid::ParseMdstat(text + "      \nunused devices: <none>\n");
    EXPECT_EQ(mdstat.m_Arrays.size(), 1U) << text;
    return mdstat.m_Arrays.empty() ? Array() : mdstat.m_Arrays.front();
}

/// An array of a level, with one member for each working slot of a map such as "UU_".
Array MakeArray(const std::string& level, const std::string& map, const std::string& layout = "") {
    std::string members;
    unsigned working = 0;
    for (std::size_t slot = 0; slot < map.size(); ++slot) {
        if (map[slot] == 'U') {
            members +=
                " sd" + std::string(1, static_cast<char>('a' + slot)) + "[" + std::to_string(slot) + "]";
            ++working;
        }
    }
    return Parse("md0 : active " + level + members + "\n      64 blocks super 1.2 " + layout + " [" +
                 std::to_string(map.size()) + "/" + std::to_string(working) + "] [" + map + "]\n");
}

std::vector<std::string> Members(const Assessment& assessment) {
    std::vector<std::string> texts;
    for (const auto& member : assessment.m_Members) {
        texts.push_back(PI::PropertyValueToString(member.m_Status) + " " + member.m_Role);
    }
    return texts;
}

TEST(ArrayStatus, FollowsFromLevelAndMissingDrives) {
    struct Case {
        const char* m_Level;
        const char* m_Map;
        PI::_PROPERTY_VALUE m_Status;
    };
    const Case CASES[] = {
        {"raid1", "UU", Value::OPERATIONAL},
        {"raid1", "U_", Value::DEGRADED},
        {"raid1", "__", Value::FAILED},
        {"raid1", "UUU", Value::OPERATIONAL},
        {"raid1", "UU_", Value::PARTIALLY_DEGRADED},
        {"raid1", "U__", Value::DEGRADED},
        {"raid4", "UUU", Value::OPERATIONAL},
        {"raid4", "UU_", Value::DEGRADED},
        {"raid4", "U__", Value::FAILED},
        {"raid5", "UUU", Value::OPERATIONAL},
        {"raid5", "_UU", Value::DEGRADED},
        {"raid5", "_U_", Value::FAILED},
        {"raid6", "UUUU", Value::OPERATIONAL},
        {"raid6", "UUU_", Value::PARTIALLY_DEGRADED},
        {"raid6", "UU__", Value::DEGRADED},
        {"raid6", "U___", Value::FAILED},
        {"raid10", "UUUU", Value::OPERATIONAL},
        {"raid10", "U_UU", Value::DEGRADED},
        {"multipath", "UU", Value::OPERATIONAL},
        {"multipath", "UU_", Value::PARTIALLY_DEGRADED},
        {"multipath", "U_", Value::DEGRADED},
        {"multipath", "__", Value::FAILED},
        {"raid99", "UU", Value::OPERATIONAL},
        {"raid99", "U_", Value::DEGRADED},
        {"raid99", "__", Value::FAILED},
    };
    for (const Case& row : CASES) {
        const Assessment assessment = Assess(MakeArray(row.m_Level, row.m_Map), {});
        EXPECT_EQ(PI::PropertyValueToString(assessment.m_Status), PI::PropertyValueToString(row.m_Status))
            << row.m_Level << " " << row.m_Map;
    }
}

TEST(ArrayStatus, MirroredStripeFailsWithAllCopiesOfOneChunk) {
    struct Case {
        const char* m_Layout;
        const char* m_Map;
        PI::_PROPERTY_VALUE m_Status;
    };
    const Case CASES[] = {
        {"2 near-copies", "U_U_", Value::DEGRADED},
        {"2 near-copies", "_UU_", Value::DEGRADED},
        {"2 near-copies", "UU__", Value::FAILED},
        {"2 near-copies", "__UU", Value::FAILED},
        {"2 near-copies", "U_U", Value::DEGRADED},
        {"2 near-copies", "U__UU", Value::FAILED},  // the fourth chunk
        {"2 near-copies", "_UUU_", Value::FAILED},  // the third goes on in the next row
        {"3 near-copies", "__UU", Value::DEGRADED},
        {"3 near-copies", "___U", Value::FAILED},
        {"2 far-copies", "_U_U", Value::DEGRADED},
        {"2 far-copies", "U__U", Value::FAILED},
        {"2 offset-copies", "_UU_", Value::FAILED},
        {"2 near-copies 2 far-copies", "__UU", Value::DEGRADED},
        {"2 near-copies 2 far-copies", "____UU", Value::FAILED},
        {"", "U__U", Value::DEGRADED},  // not known
        {"2 near-copies", "____", Value::FAILED},
    };
    for (const Case& row : CASES) {
        const Array array = MakeArray("raid10", row.m_Map, std::string("512K chunks ") + row.m_Layout);
        EXPECT_EQ(PI::PropertyValueToString(Assess(array, {}).m_Status),
                  PI::PropertyValueToString(row.m_Status))
            << row.m_Layout << " " << row.m_Map;
    }
}

TEST(ArrayStatus, TheWorseOfCountAndMapCounts) {
    const auto missing = [](const std::string& slots) {
        return Assess(Parse("md0 : active raid6 a[0]\n      64 blocks " + slots + "\n"), {}).m_MissingDrives;
    };
    EXPECT_EQ(missing("[4/4] [UUU_]"), 1U);
    EXPECT_EQ(missing("[4/3] [UUUU]"), 1U);
    EXPECT_EQ(missing("[4/3] [UU__]"), 2U);
    EXPECT_EQ(missing("[4/3]"), 1U);
    EXPECT_EQ(missing("[UU__]"), 2U);
    EXPECT_EQ(missing("[4/4] [UUU_]\n      [>...]  recovery =  2.1% (1/64) finish=1.0min speed=1K/sec"), 1U);
    // A reshape adds drives, which are in no slot that works before it is over.
    EXPECT_EQ(missing("[4/3] [UU__]\n      [>...]  reshape =  2.1% (1/64) finish=1.0min speed=1K/sec"), 1U);
}

TEST(ArrayStatus, WithoutItsCountsIsNotKnown) {
    for (const std::string line : {"", "      64 blocks super 1.2\n"}) {
        const Assessment assessment = Assess(Parse("md0 : active raid1 sdb[1] sda[0]\n" + line), {});
        EXPECT_EQ(assessment.m_Status, Value::UNKNOWN);
        EXPECT_EQ(assessment.m_Reason, "the kernel's list says too little");
        EXPECT_THAT(Members(assessment), ElementsAre("UNKNOWN slot 1", "UNKNOWN slot 0"));
    }
    EXPECT_EQ(Assess(Parse("md0 : active raid0 sdb[1] sda[0]\n"), {}).m_Status, Value::UNKNOWN);
    EXPECT_EQ(Assess(Parse("md0 : active raid0 sdb[1] sda[0]\n      64 blocks\n"), {}).m_Status,
              Value::OPERATIONAL);
    EXPECT_EQ(Assess(Parse("md0 : active raid99 sdb[1] sda[0]\n      64 blocks\n"), {}).m_Status,
              Value::UNKNOWN);
    EXPECT_EQ(Assess(Parse("md0 : active faulty sda[0]\n      64 blocks nfaults=0\n"), {}).m_Status,
              Value::OPERATIONAL);
    const mdraid::Mdstat odd = mdraid::ParseMdstat("md0 : asleep raid1 sda[0]\n      64 blocks [1/1] [U]\n");
    EXPECT_EQ(Assess(odd.m_Arrays.at(0), {}).m_Status, Value::UNKNOWN);
}

TEST(ArrayStatus, FailedPathOfManyIsNotTheEnd) {
    const Array array = Parse("md0 : active multipath sdb[1] sda[0](F)\n      64 blocks [2/1] [_U]\n");
    const Assessment assessment = Assess(array, {});
    EXPECT_EQ(assessment.m_Status, Value::DEGRADED);
    EXPECT_TRUE(assessment.m_IsRedundant);
    EXPECT_THAT(Members(assessment), ElementsAre("OPERATIONAL slot 1", "FAILED failed"));
}

TEST(ArrayStatus, SaysWhy) {
    EXPECT_EQ(Assess(MakeArray("raid5", "UU_"), {}).m_Reason, "1 of 3 drives missing or not up to date");
    EXPECT_EQ(Assess(MakeArray("raid1", "UU"), {}).m_Reason, "");
}

TEST(ArrayStatus, WithoutRedundancyOneFailedDriveIsTheEnd) {
    const Assessment assessment =
        Assess(Parse("md0 : active raid0 sdb[1](F) sda[0]\n      64 blocks super 1.2 64k chunks\n"), {});
    EXPECT_EQ(assessment.m_Status, Value::FAILED);
    EXPECT_EQ(assessment.m_Reason, "1 of 2 drives failed");
    EXPECT_FALSE(assessment.m_IsRedundant);
}

TEST(ArrayStatus, KernelMaySayThatItIsBroken) {
    const Array array = Parse("md0 : active raid0 sdb[1] sda[0]\n      64 blocks super 1.2 64k chunks\n");
    EXPECT_EQ(Assess(array, {}).m_Status, Value::OPERATIONAL);
    SysfsArray sysfs;
    sysfs.m_State = "broken";
    EXPECT_EQ(Assess(array, sysfs).m_Status, Value::FAILED);
    EXPECT_EQ(Assess(array, sysfs).m_Reason, "the kernel has given it up");
}

TEST(ArrayStatus, InactiveArrayIsOfflineWithTheLevelThatSysTells) {
    const Array array = Parse("md4 : inactive sdl1[1](S) sdk1[0](S)\n      64 blocks super 1.2\n");
    EXPECT_EQ(Assess(array, {}).m_Level, Value::UNKNOWN);
    SysfsArray sysfs;
    sysfs.m_Level = "raid1";
    const Assessment assessment = Assess(array, sysfs);
    EXPECT_EQ(assessment.m_Level, Value::RAID1);
    EXPECT_EQ(assessment.m_Status, Value::OFFLINE);
    EXPECT_EQ(assessment.m_MissingDrives, 0U);
    EXPECT_THAT(Members(assessment), ElementsAre("OFFLINE not in use", "OFFLINE not in use"));
}

TEST(ArrayLevel, ThoseThatCanBeMadeAreListed) {
    EXPECT_THAT(mdraid::Levels(), ElementsAre(Value::CONCAT, Value::RAID0, Value::RAID1, Value::RAID4,
                                              Value::RAID5, Value::RAID6, Value::RAID10));
}

TEST(ArrayLevel, EveryLevelHasItsValue) {
    const std::pair<const char*, PI::_PROPERTY_VALUE> LEVELS[] = {
        {"linear", Value::CONCAT}, {"raid0", Value::RAID0},   {"raid1", Value::RAID1},
        {"raid4", Value::RAID4},   {"raid5", Value::RAID5},   {"raid6", Value::RAID6},
        {"raid10", Value::RAID10}, {"faulty", Value::UNKNOWN}};
    for (const auto& [level, value] : LEVELS) {
        EXPECT_EQ(Assess(MakeArray(level, "UU"), {}).m_Level, value) << level;
    }
}

TEST(ArrayActivity, EveryKindHasItsValues) {
    struct Case {
        const char* m_Line;
        PI::_PROPERTY_VALUE m_Activity;
    };
    const std::string progress = " =  1.0% (1/64) finish=1.0min speed=1K/sec";
    const Case CASES[] = {
        {"", Value::IDLE},
        {"[>...]  resync", Value::VERIFYINGFIXING},
        {"[>...]  defrag", Value::UNKNOWN},
        {"[>...]  recovery", Value::REBUILDING},
        {"[>...]  reshape", Value::MIGRATING},
        {"[>...]  check", Value::CHECKING},
        {"resync=DELAYED", Value::PAUSED},
        {"resync=PENDING", Value::PAUSED},
        {"resync=REMOTE", Value::VERIFYINGFIXING},
        {"recover=REMOTE", Value::REBUILDING},
        {"reshape=REMOTE", Value::MIGRATING},
        {"check=DELAYED", Value::CHECK_PAUSED},
        {"reshape=DELAYED", Value::MIGRATION_PAUSED},
    };
    for (const Case& row : CASES) {
        const std::string line = row.m_Line;
        const std::string text =
            "md0 : active raid1 sdb[1] sda[0]\n      64 blocks [2/2] [UU]\n" +
            (line.empty() ? "" : "      " + line + (line[0] == '[' ? progress : "") + "\n");
        const Array array = mdraid::ParseMdstat(text + "\n").m_Arrays.at(0);
        EXPECT_EQ(PI::PropertyValueToString(Assess(array, {}).m_Activity),
                  PI::PropertyValueToString(row.m_Activity))
            << row.m_Line;
    }
}

TEST(ArrayActivity, SysTellsWhatWaits) {
    const Array array =
        Parse("md0 : active raid1 sdb[1] sda[0]\n      64 blocks [2/2] [UU]\n      \tresync=DELAYED\n");
    const std::pair<const char*, PI::_PROPERTY_VALUE> ACTIONS[] = {{"recover", Value::REBUILD_PAUSED},
                                                                   {"reshape", Value::MIGRATION_PAUSED},
                                                                   {"check", Value::CHECK_PAUSED},
                                                                   {"repair", Value::PAUSED},
                                                                   {"resync", Value::PAUSED},
                                                                   {"idle", Value::PAUSED},
                                                                   {"", Value::PAUSED}};
    for (const auto& [action, value] : ACTIONS) {
        SysfsArray sysfs;
        sysfs.m_SyncAction = action;
        EXPECT_EQ(Assess(array, sysfs).m_Activity, value) << action;
    }
}

TEST(ArrayActivity, IsNotKnownWhereTheListBreaksOff) {
    const std::string text = "md0 : active raid1 sdb[1] sda[0]\n      64 blocks [2/2] [UU]\n";
    const Assessment assessment = Assess(mdraid::ParseMdstat(text).m_Arrays.at(0), {});
    EXPECT_EQ(assessment.m_Status, Value::OPERATIONAL);
    EXPECT_EQ(assessment.m_Activity, Value::UNKNOWN);
}

TEST(Members, IdleArrayWithAHoleRebuildsNothing) {
    for (const char* const slots : {"[4/3] [UUU_]", "[4/3] [UU_U]", "[4/3] [_UUU]"}) {
        const Assessment assessment = Assess(
            Parse("md0 : active raid5 sdd1[3] sdb1[1] sda1[0]\n      64 blocks " + std::string(slots) + "\n"),
            {});
        EXPECT_EQ(assessment.m_Status, Value::DEGRADED) << slots;
        EXPECT_EQ(assessment.m_Activity, Value::IDLE) << slots;
        for (const auto& member : assessment.m_Members) {
            EXPECT_EQ(member.m_Status, Value::OPERATIONAL) << slots;
        }
    }
    // The drive with the number of the hole is in another slot.
    EXPECT_THAT(Members(Assess(
                    Parse("md0 : active raid5 sdd1[3] sdb1[1] sda1[0]\n      64 blocks [4/3] [UUU_]\n"), {})),
                ElementsAre("OPERATIONAL in use", "OPERATIONAL slot 1", "OPERATIONAL slot 0"));
}

TEST(Members, DriveThatNobodyRebuildsIsOffline) {
    for (const char* const slots : {"[2/1] [U_]", "[2/2] [U_]"}) {
        const Assessment assessment = Assess(
            Parse("md0 : active raid1 sdb[1] sda[0]\n      64 blocks " + std::string(slots) + "\n"), {});
        EXPECT_EQ(assessment.m_Status, Value::DEGRADED) << slots;
        EXPECT_EQ(assessment.m_Activity, Value::IDLE) << slots;
        EXPECT_THAT(Members(assessment), ElementsAre("OFFLINE slot 1, not up to date", "OPERATIONAL slot 0"));
    }
    EXPECT_THAT(Members(Assess(Parse("md0 : active raid1 sdc[2] sda[0]\n      64 blocks [2/1] [U_]\n"), {})),
                ElementsAre("OFFLINE not up to date", "OPERATIONAL slot 0"));
}

TEST(Members, FrozenRebuildIsPaused) {
    SysfsArray sysfs;
    sysfs.m_SyncAction = "frozen";
    const Assessment assessment =
        Assess(Parse("md0 : active raid1 sdc[2] sda[0]\n      64 blocks [2/1] [U_]\n"), sysfs);
    EXPECT_EQ(assessment.m_Activity, Value::REBUILD_PAUSED);
    EXPECT_THAT(Members(assessment), ElementsAre("REBUILD_PAUSED rebuilding", "OPERATIONAL slot 0"));
    EXPECT_EQ(Assess(MakeArray("raid5", "UU_"), sysfs).m_Activity, Value::IDLE);
}

TEST(Members, RebuildOnAnotherNodeIsARebuild) {
    const Assessment assessment = Assess(
        Parse("md0 : active raid1 sdc[2] sda[0]\n      64 blocks [2/1] [U_]\n      \trecover=REMOTE\n"), {});
    EXPECT_THAT(Members(assessment), ElementsAre("REBUILDING rebuilding", "OPERATIONAL slot 0"));
}

TEST(Members, WholeArraysSurplusDriveIsASpare) {
    EXPECT_THAT(Members(Assess(
                    Parse("md0 : active raid1 hdc1[2] hdb1[1] hda1[0]\n      64 blocks [2/2] [UU]\n"), {})),
                ElementsAre("DEDICATED_HOTSPARE spare", "OPERATIONAL slot 1", "OPERATIONAL slot 0"));
}

TEST(Members, NumberIsTheSlotOfAnArrayWithoutRedundancy) {
    EXPECT_THAT(Members(Assess(Parse("md0 : active raid0 sdb[1] sda[-1]\n      64 blocks 64k chunks\n"), {})),
                ElementsAre("OPERATIONAL slot 1", "OPERATIONAL in use"));
}

TEST(Members, RebuiltDriveIsThatOfTheSlotThatDoesNotWork) {
    const std::string progress = "      [>...]  recovery =  1.0% (1/64) finish=1.0min speed=1K/sec\n";
    // By its number the drive is none of those that the array began with.
    EXPECT_THAT(Members(Assess(
                    Parse("md0 : active raid1 sdc[2] sda[0]\n      64 blocks [2/1] [U_]\n" + progress), {})),
                ElementsAre("REBUILDING rebuilding", "OPERATIONAL slot 0"));
    // Put back into its own slot.
    EXPECT_THAT(Members(Assess(
                    Parse("md0 : active raid1 sdb[1] sda[0]\n      64 blocks [2/1] [U_]\n" + progress), {})),
                ElementsAre("REBUILDING rebuilding slot 1", "OPERATIONAL slot 0"));
    // Two with new numbers, of which the older one is ready.
    EXPECT_THAT(
        Members(Assess(
            Parse("md0 : active raid5 sdf[4] sde[3] sda[0]\n      64 blocks [3/2] [UU_]\n" + progress), {})),
        ElementsAre("REBUILDING rebuilding", "OPERATIONAL in use", "OPERATIONAL slot 0"));
}

TEST(Members, RebuildThatWaitsIsPaused) {
    const Assessment assessment = Assess(
        Parse("md0 : active raid1 sdc[2] sda[0]\n      64 blocks [2/1] [U_]\n      \tresync=DELAYED\n"), {});
    EXPECT_EQ(assessment.m_Activity, Value::REBUILD_PAUSED);
    EXPECT_THAT(Members(assessment), ElementsAre("REBUILD_PAUSED rebuilding", "OPERATIONAL slot 0"));
}

TEST(Members, DriveWithANewNumberWorksOnceTheRebuildIsOver) {
    EXPECT_THAT(Members(Assess(Parse("md0 : active raid1 sdc[2] sda[0]\n      64 blocks [2/2] [UU]\n"), {})),
                ElementsAre("OPERATIONAL in use", "OPERATIONAL slot 0"));
}

TEST(Members, SlotOfSysGoesFirst) {
    SysfsArray sysfs;
    sysfs.m_Members["sdc"].m_Slot = 1;
    sysfs.m_Members["sda"].m_Slot = 0;
    EXPECT_THAT(
        Members(Assess(Parse("md0 : active raid1 sdc[2] sda[0]\n      64 blocks [2/2] [UU]\n"), sysfs)),
        ElementsAre("OPERATIONAL slot 1", "OPERATIONAL slot 0"));
}

TEST(Members, DriveThatIsGoneHasFailedBeforeTheKernelNotices) {
    SysfsArray sysfs;
    sysfs.m_Members["sdb"].m_Slot = 1;
    sysfs.m_Members["sdb"].m_IsGone = true;
    sysfs.m_Members["sda"].m_Slot = 0;
    EXPECT_THAT(
        Members(Assess(Parse("md0 : broken raid0 sdb[1] sda[0]\n      64 blocks 512k chunks\n"), sysfs)),
        ElementsAre("FAILED gone", "OPERATIONAL slot 0"));
}

TEST(Members, FlagsHaveTheirRoles) {
    EXPECT_THAT(Members(Assess(Parse("md0 : active raid1 f[6](J) e[5](R) d[4](S) c[3](F) b[1](W) a[0]\n"
                                     "      64 blocks [2/2] [UU]\n"),
                               {})),
                ElementsAre("JOURNALING journal", "OPERATIONAL replacement", "DEDICATED_HOTSPARE spare",
                            "FAILED failed", "OPERATIONAL slot 1, write-mostly", "OPERATIONAL slot 0"));
}

TEST(Container, IsRecognisedByMetadataOrLevel) {
    Array array;
    EXPECT_FALSE(IsContainer(array, {}));
    array.m_Metadata = "external:imsm";
    EXPECT_TRUE(IsContainer(array, {}));
    array.m_Metadata = "external:/md127/0";
    EXPECT_FALSE(IsContainer(array, {}));
    array.m_Metadata = "external:-md127/0";  // made read-only by its manager
    EXPECT_FALSE(IsContainer(array, {}));
    array.m_Metadata = "1.2";
    EXPECT_FALSE(IsContainer(array, {}));
    SysfsArray sysfs;
    sysfs.m_Level = "container";
    EXPECT_TRUE(IsContainer(array, sysfs));
}

TEST(Container, IsNoFailedArrayAndNamesTheUsersOfItsDrives) {
    const mdraid::Mdstat mdstat = mdraid::ParseMdstat(
        "md126 : active raid1 sdb[1] sda[0]\n      64 blocks super external:/md127/0 [2/2] [UU]\n\n"
        "md125 : active (read-only) raid0 sdb[1]\n      64 blocks super external:-md127/1 64k chunks\n\n"
        "md127 : inactive sdd[3](F) sdc[2](S) sdb[1](S) sda[0](S)\n      64 blocks super external:imsm\n\n"
        "unused devices: <none>\n");
    ASSERT_EQ(mdstat.m_Errors.size(), 0U);
    const mdraid::ContainerUse use = mdraid::FindContainerUse(mdstat.m_Arrays);
    EXPECT_FALSE(Assess(mdstat.m_Arrays[0], {}, use).m_IsContainer);
    EXPECT_THAT(Members(Assess(mdstat.m_Arrays[0], {}, use)),
                ElementsAre("OPERATIONAL slot 1", "OPERATIONAL slot 0"));
    const Assessment container = Assess(mdstat.m_Arrays[2], {}, use);
    EXPECT_TRUE(container.m_IsContainer);
    EXPECT_EQ(container.m_Status, Value::OPERATIONAL);
    EXPECT_THAT(Members(container), ElementsAre("FAILED failed", "AVAILABLE not in use",
                                                "OPERATIONAL in md126, md125", "OPERATIONAL in md126"));
}

TEST(Container, ArrayOfOneThatIsNotStartedIsOffline) {
    const Array array = Parse("md126 : inactive sda[0](S)\n      64 blocks super external:/md127/0\n");
    EXPECT_FALSE(Assess(array, {}).m_IsContainer);
    EXPECT_EQ(Assess(array, {}).m_Status, Value::OFFLINE);
}

}  // namespace
