// SPDX-License-Identifier: Apache-2.0
// The time that a synchronisation still needs.
#include "progress.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using mdraid::Array;
using mdraid::Progress;
using mdraid::Sync;
using mdraid::SyncKind;
using mdraid::SyncState;

constexpr std::uint64_t ID = 7;
constexpr std::uint64_t NOW_MS = 5000;  // soon after the machine was started
constexpr std::uint64_t MINUTE_MS = 60000;

Array Running(std::uint32_t perMille, std::uint64_t speedKiBs, SyncKind kind = SyncKind::RECOVERY) {
    Array array;
    array.m_Sync = Sync{kind, SyncState::RUNNING, perMille, perMille * 1000, 1000000, speedKiBs};
    return array;
}

Array Waiting() {
    Array array;
    array.m_Sync = Sync{SyncKind::RECOVERY, SyncState::DELAYED, 0, 0, 0, 0};
    return array;
}

TEST(Progress, FirstPollEstimatesFromTheSpeed) {
    Progress progress;
    // 1000000 KiB at 100 KiB/s: 100 s a percent, of which 75 are left; the estimate adds 0.1 s to the whole.
    EXPECT_EQ(progress.Update(ID, Running(250, 100), NOW_MS), "02:05:00");
}

TEST(Progress, FirstPercentIsEstimatedFromTheSpeedToo) {
    Progress progress;
    EXPECT_EQ(progress.Update(ID, Running(10, 100), NOW_MS), "02:45:00");
}

TEST(Progress, WithoutSpeedAPercentCountsAsAMinute) {
    Progress progress;
    EXPECT_EQ(progress.Update(ID, Running(250, 0), NOW_MS), "01:15:00");
}

TEST(Progress, BeforeTheFirstPercentAPercentCountsAsAMinute) {
    Progress progress;
    EXPECT_EQ(progress.Update(ID, Running(9, 100), NOW_MS), "01:40:00");
}

TEST(Progress, SpeedThatWouldTakeAgesSaysNothing) {
    Progress progress;
    Array array = Running(250, 1);
    array.m_Sync->m_TotalKiB = UINT64_MAX;
    EXPECT_EQ(progress.Update(ID, array, NOW_MS), "01:15:00");
    array.m_Sync->m_TotalKiB = UINT64_MAX / 10;
    EXPECT_EQ(Progress().Update(ID, array, NOW_MS), "01:15:00");
}

TEST(Progress, LaterPollsFollowThePaceThatIsSeen) {
    Progress progress;
    progress.Update(ID, Running(100, 100), NOW_MS);  // 10 % after 1000 s
    // Another 10 % in 100 s only: the pace of the whole is 1100 s for 20 %.
    EXPECT_EQ(progress.Update(ID, Running(200, 100), NOW_MS + 100000), "01:13:20");
}

TEST(Progress, NothingRunningHasNoTime) {
    Progress progress;
    EXPECT_EQ(progress.Update(ID, Array(), NOW_MS), "");
    EXPECT_EQ(progress.Update(ID, Waiting(), NOW_MS), "");
}

TEST(Progress, WaitingDoesNotCount) {
    Progress progress;
    progress.Update(ID, Running(250, 100), NOW_MS);
    EXPECT_EQ(progress.Update(ID, Waiting(), NOW_MS + 600 * MINUTE_MS), "");
    EXPECT_EQ(progress.Update(ID, Running(250, 100), NOW_MS + 600 * MINUTE_MS), "02:05:00");
}

TEST(Progress, EndedOneIsForgotten) {
    Progress progress;
    progress.Update(ID, Running(900, 100), NOW_MS);
    progress.Update(ID, Array(), NOW_MS + MINUTE_MS);
    EXPECT_EQ(progress.Update(ID, Running(250, 100), NOW_MS + 2 * MINUTE_MS), "02:05:00");
}

TEST(Progress, AnotherKindBeginsAnew) {
    Progress progress;
    progress.Update(ID, Running(900, 1), NOW_MS);
    EXPECT_EQ(progress.Update(ID, Running(250, 100, SyncKind::CHECK), NOW_MS + MINUTE_MS), "02:05:00");
}

TEST(Progress, ArraysDoNotDisturbEachOther) {
    Progress progress;
    progress.Update(ID, Running(250, 100), NOW_MS);
    progress.Update(ID + 1, Running(500, 100), NOW_MS);
    progress.Update(ID + 2, Array(), NOW_MS);
    EXPECT_EQ(progress.Update(ID, Running(250, 100), NOW_MS), "02:05:00");
    EXPECT_EQ(progress.Update(ID + 1, Running(500, 100), NOW_MS), "01:23:20");
}

}  // namespace
