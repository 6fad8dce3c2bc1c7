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
        {"multipath", "U_", Value::DEGRADED},
        {"multipath", "__", Value::FAILED},
    };
    for (const Case& row : CASES) {
        const Assessment assessment = Assess(MakeArray(row.m_Level, row.m_Map), {});
        EXPECT_EQ(PI::PropertyValueToString(assessment.m_Status), PI::PropertyValueToString(row.m_Status))
            << row.m_Level << " " << row.m_Map;
    }
}

TEST(ArrayStatus, MirroredStripeFailsWithAllCopiesOfOneStripe) {
    const auto status = [](const char* map) {
        return Assess(MakeArray("raid10", map, "512K chunks 2 near-copies"), {}).m_Status;
    };
    EXPECT_EQ(status("U_U_"), Value::DEGRADED);
    EXPECT_EQ(status("_UU_"), Value::DEGRADED);
    EXPECT_EQ(status("UU__"), Value::FAILED);
    EXPECT_EQ(status("__UU"), Value::FAILED);
    EXPECT_EQ(status("U__UU"), Value::DEGRADED);  // an odd number: the copies are not side by side
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
        {"[>...]  resync", Value::INITIALIZING},
        {"[>...]  recovery", Value::REBUILDING},
        {"[>...]  reshape", Value::MIGRATING},
        {"[>...]  check", Value::CHECKING},
        {"resync=DELAYED", Value::INITIALIZATION_PAUSED},
        {"resync=PENDING", Value::INITIALIZATION_PAUSED},
        {"check=DELAYED", Value::CHECK_PAUSED},
        {"reshape=DELAYED", Value::MIGRATION_PAUSED},
    };
    for (const Case& row : CASES) {
        const std::string line = row.m_Line;
        const Array array =
            Parse("md0 : active raid1 sdb[1] sda[0]\n      64 blocks [2/2] [UU]\n" +
                  (line.empty() ? "" : "      " + line + (line[0] == '[' ? progress : "") + "\n"));
        EXPECT_EQ(PI::PropertyValueToString(Assess(array, {}).m_Activity),
                  PI::PropertyValueToString(row.m_Activity))
            << row.m_Line;
    }
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

}  // namespace
