// SPDX-License-Identifier: Apache-2.0
// The text of /proc/mdstat in all the forms that the kernel gives it.
#include "mdstat.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

using mdraid::Array;
using mdraid::ArrayState;
using mdraid::Mdstat;
using mdraid::ParseMdstat;
using mdraid::Sync;
using mdraid::SyncKind;
using mdraid::SyncState;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string PERSONALITIES = "Personalities : [raid1] [raid6] [raid5] [raid4] \n";
const std::string UNUSED = "unused devices: <none>\n";

/// The text around an array.
std::string Around(const std::string& array) {
    return PERSONALITIES + array + "      \n" + UNUSED;
}

/// The only array of a text without errors.
Array ParseArray(const std::string& array) {
    Mdstat mdstat = ParseMdstat(Around(array));
    EXPECT_THAT(mdstat.m_Errors, IsEmpty()) << mdstat.m_Errors.front().m_Text;
    EXPECT_THAT(mdstat.m_Arrays, SizeIs(1));
    return mdstat.m_Arrays.empty() ? Array() : mdstat.m_Arrays.front();
}

/// The synchronisation that a line tells of.
Sync ParseSync(const std::string& line) {
    const Array array =
        ParseArray("md0 : active raid1 sdb1[1] sda1[0]\n      64 blocks [2/2] [UU]\n" + line + "\n");
    EXPECT_TRUE(array.m_Sync.has_value()) << line;
    return array.m_Sync.value_or(Sync());
}

/// "line: text" of each error.
std::vector<std::string> Errors(const Mdstat& mdstat) {
    std::vector<std::string> texts;
    for (const auto& error : mdstat.m_Errors) {
        texts.push_back(std::to_string(error.m_Line) + ": " + error.m_Text);
    }
    return texts;
}

std::vector<std::string> Names(const Mdstat& mdstat) {
    std::vector<std::string> names;
    for (const Array& array : mdstat.m_Arrays) {
        names.push_back(array.m_Name);
    }
    return names;
}

TEST(Mdstat, WithoutArraysHasUnusedDevices) {
    const Mdstat mdstat = ParseMdstat("Personalities : [linear] [raid0] \nunused devices: sdb1 sdc1 \n");
    EXPECT_THAT(mdstat.m_UnusedDevices, ElementsAre("sdb1", "sdc1"));
    EXPECT_THAT(mdstat.m_Arrays, IsEmpty());
    EXPECT_THAT(mdstat.m_Errors, IsEmpty());
}

TEST(Mdstat, NothingLoadedIsNoError) {
    const Mdstat mdstat = ParseMdstat("Personalities : \nunused devices: <none>\n");
    EXPECT_THAT(mdstat.m_UnusedDevices, IsEmpty());
    EXPECT_THAT(mdstat.m_Errors, IsEmpty());
}

TEST(Mdstat, ReadsAnArrayWithParity) {
    const Array array = ParseArray(
        "md5 : active raid5 sdd1[4](F) sdc1[1] sdb1[0]\n"
        "      1953260544 blocks super 1.2 level 5, 64k chunk, algorithm 2 [3/2] [UU_]\n"
        "      bitmap: 3/8 pages [12KB], 65536KB chunk\n");
    EXPECT_EQ(array.m_Name, "md5");
    EXPECT_EQ(array.m_State, ArrayState::ACTIVE);
    EXPECT_FALSE(array.m_ReadOnly);
    EXPECT_EQ(array.m_Level, "raid5");
    ASSERT_THAT(array.m_Members, SizeIs(3));
    EXPECT_EQ(array.m_Members[0].m_Name, "sdd1");
    EXPECT_EQ(array.m_Members[0].m_Number, 4U);
    EXPECT_TRUE(array.m_Members[0].m_Faulty);
    EXPECT_EQ(array.m_Members[2].m_Name, "sdb1");
    EXPECT_EQ(array.m_Members[2].m_Number, 0U);
    EXPECT_FALSE(array.m_Members[2].m_Faulty);
    EXPECT_EQ(array.m_SizeKiB, 1953260544U);
    EXPECT_EQ(array.m_Metadata, "1.2");
    EXPECT_EQ(array.m_ChunkKiB, 64U);
    EXPECT_EQ(array.m_Slots, 3U);
    EXPECT_EQ(array.m_WorkingSlots, 2U);
    EXPECT_THAT(array.m_SlotWorking, ElementsAre(true, true, false));
    EXPECT_FALSE(array.m_Sync.has_value());
}

TEST(Mdstat, KnowsTheLayoutWithCopiesSideBySide) {
    const Array array = ParseArray(
        "md0 : active raid10 sdd[3] sdc[2] sdb[1] sda[0]\n"
        "      7501212672 blocks super 1.2 512K chunks 2 near-copies [4/4] [UUUU]\n");
    EXPECT_EQ(array.m_Level, "raid10");
    EXPECT_EQ(array.m_ChunkKiB, 512U);
    EXPECT_EQ(array.m_NearCopies, 2U);
}

TEST(Mdstat, KnowsTheLayoutsWithCopiesInOtherStripes) {
    const std::string head = "md0 : active raid10 sdb[1] sda[0]\n      64 blocks super 1.2 512K chunks ";
    for (const std::string layout : {"2 far-copies", "2 offset-copies"}) {
        const Array array = ParseArray(head + layout + " [2/2] [UU]\n");
        EXPECT_EQ(array.m_NearCopies, 0U) << layout;
        EXPECT_EQ(array.m_FarCopies, 2U) << layout;
    }
    const Array both = ParseArray(head + "2 near-copies 3 far-copies [2/2] [UU]\n");
    EXPECT_EQ(both.m_NearCopies, 2U);
    EXPECT_EQ(both.m_FarCopies, 3U);
}

TEST(Mdstat, LevelsWithoutRedundancyHaveNoSlots) {
    for (const std::string level : {"raid0", "linear"}) {
        const std::string line = level == "raid0" ? "512k chunks" : "64k rounding";
        const Array array = ParseArray("md0 : active " + level +
                                       " sdb[1] sda[0]\n      1953260544 blocks super 1.2 " + line + "\n");
        EXPECT_EQ(array.m_Level, level);
        EXPECT_EQ(array.m_Slots, std::nullopt);
        EXPECT_THAT(array.m_SlotWorking, IsEmpty());
        EXPECT_EQ(array.m_ChunkKiB, level == "raid0" ? 512U : 0U);
    }
}

TEST(Mdstat, ReadsEveryLevelsName) {
    for (const std::string level : {"linear", "raid0", "raid1", "raid4", "raid5", "raid6", "raid10"}) {
        EXPECT_EQ(ParseArray("md0 : active " + level + " sda[0]\n      64 blocks\n").m_Level, level);
    }
}

TEST(Mdstat, InactiveArrayHasNoLevel) {
    const Array array =
        ParseArray("md4 : inactive sdl1[1](S) sdk1[0](S)\n      976508976 blocks super 1.2\n");
    EXPECT_EQ(array.m_State, ArrayState::INACTIVE);
    EXPECT_EQ(array.m_Level, "");
    ASSERT_THAT(array.m_Members, SizeIs(2));
    EXPECT_TRUE(array.m_Members[0].m_Spare);
}

TEST(Mdstat, InactiveArrayOfAnOldKernelHasALevel) {
    const Array array =
        ParseArray("md4 : inactive raid1 sda3[0](F) sdb3[1](S)\n      4883648 blocks [2/2] [UU]\n");
    EXPECT_EQ(array.m_State, ArrayState::INACTIVE);
    EXPECT_EQ(array.m_Level, "raid1");
    EXPECT_THAT(array.m_Members, SizeIs(2));
    EXPECT_EQ(array.m_Slots, 2U);
}

TEST(Mdstat, IndentationDoesNotCount) {
    const Array array = ParseArray(
        "  md0 : active raid1 sdb[1] sda[0]\n64 blocks [2/1] [U_]\n"
        "[>....................]  recovery =  1.0% (1/64) finish=1.0min speed=1K/sec\n"
        "bitmap: 0/1 pages [0KB], 65536KB chunk\n");
    EXPECT_EQ(array.m_Name, "md0");
    EXPECT_EQ(array.m_SizeKiB, 64U);
    EXPECT_EQ(array.m_WorkingSlots, 1U);
    EXPECT_EQ(array.m_Sync.value_or(Sync()).m_PerMille, 10U);
    EXPECT_EQ(ParseArray("md0 : active raid1 sda[0]\n64 blocks [1/1] [U]\nresync=DELAYED\n")
                  .m_Sync.value_or(Sync())
                  .m_State,
              SyncState::DELAYED);
}

TEST(Mdstat, BlankLinesWithinAnArrayDoNotCount) {
    EXPECT_EQ(ParseArray("md0 : active raid1 sda[0]\n\n      64 blocks [2/1] [U_]\n\n").m_Slots, 2U);
}

TEST(Mdstat, ArraysNeedNoBlankLineBetweenThem) {
    const std::string array = " : active raid1 sdb[1] sda[0]\n      64 blocks [2/2] [UU]\n";
    const Mdstat mdstat = ParseMdstat(PERSONALITIES + "md0" + array + "md1" + array + UNUSED);
    EXPECT_THAT(Names(mdstat), ElementsAre("md0", "md1"));
    EXPECT_THAT(Errors(mdstat), IsEmpty());
    EXPECT_EQ(mdstat.m_Arrays[0].m_Slots, 2U);
}

TEST(Mdstat, KernelsBefore26SayHowFarTheyReadAhead) {
    for (const std::string line : {"read_ahead 1024 sectors\n", "read_ahead not set\n"}) {
        const Mdstat mdstat = ParseMdstat(
            "Personalities : [1 linear] [3 raid1]\n" + line +
            "md0 : active raid1 sdb1[1] sda1[0] 4200896 blocks [2/2] [UU]\nunused devices: <none>\n");
        EXPECT_THAT(Errors(mdstat), IsEmpty());
        ASSERT_THAT(mdstat.m_Arrays, SizeIs(1));
        EXPECT_THAT(mdstat.m_Arrays[0].m_Members, SizeIs(2));
        EXPECT_EQ(mdstat.m_Arrays[0].m_SizeKiB, 4200896U);
        EXPECT_EQ(mdstat.m_Arrays[0].m_Slots, 2U);
    }
}

TEST(Mdstat, LineFeedsMayFollowCarriageReturns) {
    EXPECT_EQ(ParseArray("md0 : active raid1 sda[0]\r\n      64 blocks [1/1] [U]\r\n").m_Slots, 1U);
}

TEST(Mdstat, DriveWithoutANumberHasNone) {
    const Array array = ParseArray("md0 : active raid1 sdb[-1](S) sda[0]\n      64 blocks [1/1] [U]\n");
    ASSERT_THAT(array.m_Members, SizeIs(2));
    EXPECT_EQ(array.m_Members[0].m_Number, std::nullopt);
    EXPECT_TRUE(array.m_Members[0].m_Spare);
    EXPECT_EQ(array.m_Members[1].m_Number, 0U);
}

TEST(Mdstat, NamesMayHoldSlashes) {
    const Array array = ParseArray("md0 : active raid1 cciss/c0d0p1[0]\n      64 blocks [1/1] [U]\n");
    ASSERT_THAT(array.m_Members, SizeIs(1));
    EXPECT_EQ(array.m_Members[0].m_Name, "cciss/c0d0p1");
}

TEST(Mdstat, MultipathAndFaultyAreLevels) {
    EXPECT_EQ(ParseArray("md0 : active multipath sdb[1] sda[0](F)\n      64 blocks [2/1] [_U]\n").m_Slots,
              2U);
    EXPECT_EQ(
        ParseArray("md0 : active faulty sda[0]\n      64 blocks super 1.2 WriteTransient=3(2) nfaults=1\n")
            .m_Level,
        "faulty");
}

TEST(Mdstat, SlotMapAloneGivesTheCounts) {
    const Array array = ParseArray("md0 : active raid1 sda[0]\n      64 blocks [U_]\n");
    EXPECT_EQ(array.m_Slots, 2U);
    EXPECT_EQ(array.m_WorkingSlots, 1U);
}

TEST(Mdstat, ArrayWithoutMembersHasItsMetadataInTheFirstLine) {
    const Array array = ParseArray("md127 : inactive super external:imsm\n");
    EXPECT_THAT(array.m_Members, IsEmpty());
    EXPECT_EQ(array.m_Metadata, "external:imsm");
    EXPECT_EQ(array.m_SizeKiB, std::nullopt);
}

TEST(Mdstat, BrokenArrayIsNotActive) {
    EXPECT_EQ(ParseArray("md0 : broken raid0 sda[0](F)\n      64 blocks 64k chunks\n").m_State,
              ArrayState::BROKEN);
}

TEST(Mdstat, BothKindsOfReadOnlyCount) {
    for (const std::string mode : {"(read-only)", "(auto-read-only)"}) {
        const Array array = ParseArray("md0 : active " + mode + " raid1 sda[0]\n      64 blocks [1/1] [U]\n");
        EXPECT_TRUE(array.m_ReadOnly) << mode;
        EXPECT_EQ(array.m_Level, "raid1");
    }
}

TEST(Mdstat, EveryFlagOfAMemberIsRead) {
    const Array array =
        ParseArray("md0 : active raid5 a[0](F) b[1](S) c[2](W) d[3](J) e[4](R) f[5](W)(F) g[6](X)\n");
    ASSERT_THAT(array.m_Members, SizeIs(7));
    EXPECT_TRUE(array.m_Members[0].m_Faulty);
    EXPECT_TRUE(array.m_Members[1].m_Spare);
    EXPECT_TRUE(array.m_Members[2].m_WriteMostly);
    EXPECT_TRUE(array.m_Members[3].m_Journal);
    EXPECT_TRUE(array.m_Members[4].m_Replacement);
    EXPECT_TRUE(array.m_Members[5].m_WriteMostly && array.m_Members[5].m_Faulty);
    const auto& unknown = array.m_Members[6];
    EXPECT_FALSE(unknown.m_Faulty || unknown.m_Spare || unknown.m_WriteMostly || unknown.m_Journal ||
                 unknown.m_Replacement);
}

TEST(Mdstat, NameMayHoldBlanks) {
    const Array array = ParseArray("md_family photos : active raid1 sda[0]\n      64 blocks [1/1] [U]\n");
    EXPECT_EQ(array.m_Name, "md_family photos");
    EXPECT_EQ(array.m_Level, "raid1");
}

TEST(Mdstat, OldestMetadataIsNotNamed) {
    EXPECT_EQ(ParseArray("md0 : active raid1 sda[0]\n      64 blocks [1/1] [U]\n").m_Metadata, "");
}

TEST(Mdstat, NewWordsAndLinesArePassedOver) {
    const Array array = ParseArray(
        "md0 : active raid1 sda[0]\n      64 blocks super 1.2 frobnicated [1/1] [U]\n      quota: 7\n");
    EXPECT_EQ(array.m_Slots, 1U);
}

TEST(MdstatSync, ReadsProgressOfEveryKind) {
    const std::pair<const char*, SyncKind> KINDS[] = {{"recovery", SyncKind::RECOVERY},
                                                      {"resync", SyncKind::RESYNC},
                                                      {"reshape", SyncKind::RESHAPE},
                                                      {"check", SyncKind::CHECK}};
    for (const auto& [name, kind] : KINDS) {
        const Sync sync = ParseSync("      [==>..................]  " + std::string(name) +
                                    " = 12.6% (37043392/292945152) finish=127.5min speed=33440K/sec");
        EXPECT_EQ(sync.m_Kind, kind);
        EXPECT_EQ(sync.m_State, SyncState::RUNNING);
        EXPECT_EQ(sync.m_PerMille, 126U);
        EXPECT_EQ(sync.m_DoneKiB, 37043392U);
        EXPECT_EQ(sync.m_TotalKiB, 292945152U);
        EXPECT_EQ(sync.m_FinishMs, 7650000U);
    }
}

TEST(MdstatSync, PercentageIsPaddedToThreeDigits) {
    const std::string bar = "      [>....................]  resync =";
    const std::string rest = " (0/292945152) finish=0.1min speed=0K/sec";
    EXPECT_EQ(ParseSync(bar + "  0.0%" + rest).m_PerMille, 0U);
    EXPECT_EQ(ParseSync(bar + "  9.9%" + rest).m_PerMille, 99U);
    EXPECT_EQ(ParseSync(bar + "100.0%" + rest).m_PerMille, 1000U);
}

TEST(MdstatSync, FinishCountsWithASpeedOnly) {
    const std::string start = "      [>....................]  recovery =  0.0% (1/292945152)";
    EXPECT_EQ(ParseSync(start + " finish=1367.0min speed=5K/sec").m_FinishMs, 82020000U);
    EXPECT_EQ(ParseSync(start + " finish=0.1min speed=0K/sec").m_FinishMs, std::nullopt);
    EXPECT_EQ(ParseSync(start + " finish=4294967295.9min").m_FinishMs, 257698037754000U);
    EXPECT_EQ(ParseSync(start + " finish=4294967296.0min speed=1K/sec").m_FinishMs, std::nullopt);
    EXPECT_EQ(ParseSync(start + " finish=soon speed=1K/sec").m_FinishMs, std::nullopt);
    EXPECT_EQ(ParseSync(start).m_FinishMs, std::nullopt);
}

TEST(MdstatSync, ReadsEveryKindOfWaiting) {
    EXPECT_EQ(ParseSync("      \tresync=DELAYED").m_State, SyncState::DELAYED);
    EXPECT_EQ(ParseSync("      \tresync=PENDING").m_State, SyncState::PENDING);
    EXPECT_EQ(ParseSync("      \tresync=REMOTE").m_State, SyncState::REMOTE);
    EXPECT_EQ(ParseSync("      \trecover=REMOTE").m_Kind, SyncKind::RECOVERY);
    EXPECT_EQ(ParseSync("      \treshape=REMOTE").m_Kind, SyncKind::RESHAPE);
}

TEST(MdstatErrors, NameLineAndArrayAndCostNothingElse) {
    const Mdstat mdstat =
        ParseMdstat(PERSONALITIES +
                    "md0 : active raid1 sda[0]\n      64 blocks [1/1] [U]\n      \n"
                    "md1 : active raid1 sdb[ sdc[1]\n      64 blocks [1/1] [U]\n      \n"
                    "md2 : active raid1 sdc[0]\n      64 blocks [2/1] [U]\n      \n"
                    "md3 : active raid1 sdd[0]\n      18446744073709551616 blocks [1/1] [U]\n"
                    "      [=>] resync = x%\n      \n"
                    "md4 : active raid1 sde[0]\n      64 blocks [1/1] [U]\n      \n" +
                    UNUSED);
    EXPECT_THAT(Names(mdstat), ElementsAre("md0", "md1", "md2", "md3", "md4"));
    EXPECT_THAT(Errors(mdstat),
                ElementsAre("5: array md1: \"sdb[\" is no member",
                            "9: array md2: the map of the slots does not fit their number",
                            "12: array md3: the size is no number of blocks",
                            "13: array md3: the progress of the synchronisation cannot be read"));
    ASSERT_THAT(mdstat.m_Arrays[1].m_Members, SizeIs(1));
    EXPECT_EQ(mdstat.m_Arrays[1].m_Members[0].m_Name, "sdc");
    EXPECT_EQ(mdstat.m_Arrays[2].m_WorkingSlots, 1U);
    EXPECT_THAT(mdstat.m_Arrays[2].m_SlotWorking, IsEmpty());
    EXPECT_EQ(mdstat.m_Arrays[3].m_SizeKiB, std::nullopt);
    EXPECT_EQ(mdstat.m_Arrays[3].m_Slots, 1U);
    EXPECT_EQ(mdstat.m_Arrays[3].m_Sync.value_or(Sync()).m_Kind, SyncKind::RESYNC);
    EXPECT_EQ(mdstat.m_Arrays[3].m_Sync.value_or(Sync()).m_PerMille, std::nullopt);
}

TEST(MdstatErrors, LineThatIsNoArrayIsLeftOutWithWhatFollowsIt) {
    for (const std::string line :
         {"md0 active raid1 sda[0]", "mdf1: testman actve", " : active raid1", "md0 : "}) {
        const Mdstat mdstat = ParseMdstat(Around(line + "\n      64 blocks [1/1] [U]\n"));
        EXPECT_THAT(mdstat.m_Arrays, IsEmpty()) << line;
    }
    EXPECT_THAT(Errors(ParseMdstat(Around("mdf1: testman actve\n      64 blocks [1/1] [U]\n"))),
                ElementsAre("2: \"mdf1: testman actve\" is no array"));
    const std::string array = "md0 : active raid1 sda[0]\n";
    const Mdstat mdstat = ParseMdstat(Around(array + "nonsense\n      64 blocks [1/1] [U]\n"));
    ASSERT_THAT(mdstat.m_Arrays, SizeIs(1));
    EXPECT_EQ(mdstat.m_Arrays[0].m_SizeKiB, std::nullopt);
}

TEST(MdstatErrors, EachOddHeaderHasItsReason) {
    const std::pair<const char*, const char*> CASES[] = {
        {"md0 : asleep raid1 sda[0]\n", "2: array md0: \"asleep\" is no state"},
        {"md0 : active\n", "2: array md0: the level is missing"},
        {"md0 : active sda[0]\n", "2: array md0: the level is missing"},
        {"md0 : active raid1 [0]\n", "2: array md0: \"[0]\" is no member"},
        {"md0 : active raid1 sda[x]\n", "2: array md0: \"sda[x]\" is no member"},
        {"md0 : active raid1 sda[-x]\n", "2: array md0: \"sda[-x]\" is no member"},
        {"md0 : active raid1 sda[]\n", "2: array md0: \"sda[]\" is no member"},
        {"md0 : active raid1 sda[1\n", "2: array md0: \"sda[1\" is no member"},
        {"md0 : active raid1 sda[-2]\n", "2: array md0: \"sda[-2]\" is no member"},
        {"md0 : active raid1 sda[0](F\n", "2: array md0: \"sda[0](F\" is no member"},
        {"md0 : active raid1 sda[4294967296]\n", "2: array md0: \"sda[4294967296]\" is no member"},
        {"md0 : active raid1 sda[0]\n      64 rocks\n", "3: array md0: the size is no number of blocks"},
        {"md0 : active raid1 sda[0]\n      64 blocks [1/2] [U]\n",
         "3: array md0: more drives work than the array has slots"},
    };
    for (const auto& [text, error] : CASES) {
        const Mdstat mdstat = ParseMdstat(Around(text));
        EXPECT_THAT(Names(mdstat), ElementsAre("md0")) << text;
        ASSERT_FALSE(mdstat.m_Errors.empty()) << text;
        EXPECT_EQ(Errors(mdstat).front(), error);
    }
}

TEST(MdstatErrors, ProgressThatCannotBeReadIsThereAllTheSame) {
    for (const std::string progress :
         {"[=>", "[=>]", "[=>] resync", "[=>] sleep = 1.0% (1/2)", "[=>] resync = 1% (1/2)",
          "[=>] resync = 100.1% (1/2)", "[=>] resync = 1.10% (1/2)", "[=>] resync = 1.0% 1/2",
          "[=>] resync = 1.0% (1)", "[=>] resync = 1.0% (1/2"}) {
        const Mdstat mdstat = ParseMdstat(
            Around("md0 : active raid1 sda[0]\n      64 blocks [1/1] [U]\n      " + progress + "\n"));
        EXPECT_THAT(Errors(mdstat),
                    ElementsAre("4: array md0: the progress of the synchronisation cannot be read"))
            << progress;
        ASSERT_THAT(mdstat.m_Arrays, SizeIs(1));
        ASSERT_TRUE(mdstat.m_Arrays[0].m_Sync.has_value());
        EXPECT_EQ(mdstat.m_Arrays[0].m_Sync->m_TotalKiB, 0U);
    }
}

TEST(MdstatErrors, NameThatIsThereTwiceCountsOnce) {
    const std::string array = "md0 : active raid1 sda[0]\n      64 blocks [1/1] [U]\n      \n";
    const Mdstat mdstat = ParseMdstat(PERSONALITIES + array + array + UNUSED);
    EXPECT_THAT(Names(mdstat), ElementsAre("md0"));
    EXPECT_THAT(Errors(mdstat), ElementsAre("5: array md0: the name is here a second time"));
}

TEST(MdstatErrors, EmptyTextIsIncomplete) {
    for (const std::string text : {"", "\n"}) {
        EXPECT_THAT(Errors(ParseMdstat(text)),
                    ElementsAre("1: the text breaks off: the list of unused devices is missing"));
    }
}

// Cut at every single place, the text is either whole or known to be broken off, and what precedes the array
// in which it is cut is not marked as cut.
TEST(MdstatErrors, EveryTruncationIsFound) {
    const std::string first = "md0 : active raid1 sdb1[1] sda1[0]\n      1046528 blocks [2/2] [UU]\n      \n";
    const std::string second =
        "md1 : active raid5 sdc1[1] sdb1[0]\n      64 blocks level 5, 64k chunk, algorithm 2 [3/2] [UU_]\n"
        "      [>...]  recovery =  1.0% (1/64) finish=1.0min speed=1K/sec\n      \n";
    const std::string text = PERSONALITIES + first + second + UNUSED;
    const std::size_t firstEnd = PERSONALITIES.size() + first.size();
    const std::size_t secondEnd = firstEnd + second.size();
    for (std::size_t size = 0; size < text.size(); ++size) {
        const Mdstat mdstat = ParseMdstat(std::string_view(text).substr(0, size));
        const auto whole = std::count_if(mdstat.m_Arrays.begin(), mdstat.m_Arrays.end(),
                                         [](const Array& array) { return !array.m_IsCut; });
        EXPECT_EQ(whole, size >= secondEnd ? 2 : size >= firstEnd ? 1 : 0) << "cut at " << size;
        const bool onlyLastLineCut = size >= secondEnd + std::string_view("unused devices:").size();
        EXPECT_EQ(mdstat.m_Errors.empty(), onlyLastLineCut) << "cut at " << size;
    }
}

TEST(MdstatErrors, HalfALineIsNotRead) {
    const Mdstat mdstat =
        ParseMdstat(PERSONALITIES + "md0 : active raid1 sdb[1] sda[0]\n      976630464 blocks [2/2] [UU]");
    ASSERT_THAT(mdstat.m_Arrays, SizeIs(1));
    EXPECT_EQ(mdstat.m_Arrays[0].m_SizeKiB, std::nullopt);
    EXPECT_THAT(Errors(mdstat), ElementsAre("3: array md0: the text breaks off"));
}

TEST(MdstatErrors, BinaryDataEndsTheText) {
    const std::string array = "md0 : active raid1 sda[0]\n      64 blocks [1/1] [U]\n      \n";
    for (const std::string& text : {std::string(1, '\0'), std::string("\x7F\x45LF\0\0\0\n", 8)}) {
        const Mdstat mdstat = ParseMdstat(text + Around(array));
        EXPECT_THAT(mdstat.m_Arrays, IsEmpty());
        EXPECT_THAT(Errors(mdstat), ElementsAre("1: this is binary data"));
    }
    const Mdstat mdstat = ParseMdstat(PERSONALITIES + array + std::string(100, '\0'));
    EXPECT_THAT(Names(mdstat), ElementsAre("md0"));
    EXPECT_THAT(Errors(mdstat), ElementsAre("5: this is binary data"));
    EXPECT_THAT(Errors(ParseMdstat(Around(array) + std::string(1, '\0'))),
                ElementsAre("7: this is binary data"));
}

TEST(MdstatErrors, ControlCharactersDoNoHarm) {
    const Mdstat mdstat =
        ParseMdstat(Around("md\x1B[31m : active raid1 sd\x07[0]\n      64 blocks [1/1] [U]\n"));
    ASSERT_THAT(mdstat.m_Arrays, SizeIs(1));
    EXPECT_EQ(mdstat.m_Arrays[0].m_Name, "md\x1B[31m");
    EXPECT_EQ(mdstat.m_Arrays[0].m_Members[0].m_Name, "sd\x07");
}

TEST(MdstatErrors, MessagesHaveALinesLength) {
    const std::string forty(40, 'x');
    EXPECT_THAT(Errors(ParseMdstat(Around(forty + "\n"))), ElementsAre("2: \"" + forty + "\" is no array"));
    EXPECT_THAT(Errors(ParseMdstat(Around(forty + "y\n"))),
                ElementsAre("2: \"" + forty + "...\" is no array"));
    EXPECT_THAT(Errors(ParseMdstat(Around(std::string(255, 'x') + " : active raid1 " + forty + "y\n"))),
                ElementsAre("2: array " + forty + "...: \"" + forty + "...\" is no member"));
}

TEST(MdstatErrors, NamesAreAsLongAsThoseOfFiles) {
    const auto names = [](std::size_t array, std::size_t member) {
        const Mdstat mdstat =
            ParseMdstat(Around(std::string(array, 'm') + " : active raid1 " + std::string(member, 's') +
                               "[0]\n      64 blocks [1/1] [U]\n"));
        return std::pair(mdstat.m_Arrays.size(),
                         mdstat.m_Arrays.empty() ? 0 : mdstat.m_Arrays[0].m_Members.size());
    };
    EXPECT_EQ(names(255, 255), std::pair(std::size_t{1}, std::size_t{1}));
    EXPECT_EQ(names(255, 256), std::pair(std::size_t{1}, std::size_t{0}));
    EXPECT_EQ(names(256, 255), std::pair(std::size_t{0}, std::size_t{0}));
}

TEST(MdstatErrors, AtMostTwentyAreListed) {
    std::string lines;
    for (int i = 0; i < 19; ++i) {
        lines += "x\n";
    }
    EXPECT_THAT(ParseMdstat(Around(lines)).m_Errors, SizeIs(19));
    lines += "x\n";
    EXPECT_EQ(ParseMdstat(Around(lines)).m_Errors.back().m_Text,
              "from here on there are more errors than are listed");
    EXPECT_THAT(ParseMdstat(Around(lines + "x\n")).m_Errors, SizeIs(20));
}

}  // namespace
