// SPDX-License-Identifier: Apache-2.0
// The time that a synchronisation still needs.
#include "progress.h"

#include <pi/etr.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using mdraid::Array;
using mdraid::Progress;
using mdraid::Sync;
using mdraid::SyncKind;
using mdraid::SyncState;

constexpr std::uint64_t ID = 7;
constexpr std::uint64_t NOW_MS = 5000;  // soon after the machine was started
constexpr std::uint64_t MINUTE_MS = 60000;

/// 1000000 KiB in all, of which the kernel says that they take another two hours.
Array Running(std::uint32_t perMille, SyncKind kind = SyncKind::RECOVERY) {
    Array array;
    array.m_Sync = Sync{kind, SyncState::RUNNING, perMille, perMille * 1000, 1000000, 120 * MINUTE_MS};
    return array;
}

/// The kernel calls everything that waits a resync.
Array Waiting() {
    Array array;
    array.m_Sync = Sync();
    array.m_Sync->m_State = SyncState::DELAYED;
    return array;
}

/// As it is shown.
std::string Update(Progress&& progress, std::uint64_t id, const Array& array, std::uint64_t timeMs) {
    return PI::CETR::RemainingTimeToString(progress.Update(id, array, timeMs).value_or(0));
}
std::string Update(Progress& progress, std::uint64_t id, const Array& array, std::uint64_t timeMs) {
    return Update(std::move(progress), id, array, timeMs);
}

TEST(Progress, FirstPollHasTheKernelsEstimate) {
    EXPECT_EQ(Update(Progress(), ID, Running(250), NOW_MS), "02:00:00");
    EXPECT_EQ(Update(Progress(), ID, Running(0), NOW_MS), "02:00:00");
}

TEST(Progress, WithoutTheKernelsEstimateTheFirstPollHasNone) {
    Array array = Running(250);
    array.m_Sync->m_FinishMs.reset();
    EXPECT_EQ(Update(Progress(), ID, array, NOW_MS), "");
    array.m_Sync->m_TotalKiB = 0;
    EXPECT_EQ(Update(Progress(), ID, array, NOW_MS), "");
}

TEST(Progress, LaterPollsFollowThePaceThatIsSeen) {
    Progress progress;
    PI::CTimeRemaining expected;
    for (std::uint64_t i = 0; i < 10; ++i) {
        expected.AddSample(NOW_MS + i * MINUTE_MS, 100000 + i * 10000, 1000000);
        const auto perMille = static_cast<std::uint32_t>(100 + i * 10);
        const std::string remaining = Update(progress, ID, Running(perMille), NOW_MS + i * MINUTE_MS);
        EXPECT_EQ(remaining,
                  i == 0 ? "02:00:00" : PI::CETR::RemainingTimeToString(expected.GetRemaining().value_or(0)));
    }
    // A percent a minute: that is what the estimator is told, not what the kernel says.
    EXPECT_EQ(expected.GetState(), PI::TimeRemainingState::RUNNING);
    EXPECT_GT(expected.GetRemaining(), 80 * MINUTE_MS);
    EXPECT_LT(expected.GetRemaining(), 110 * MINUTE_MS);
}

TEST(Progress, NothingRunningHasNoTime) {
    Progress progress;
    EXPECT_EQ(Update(progress, ID, Array(), NOW_MS), "");
    EXPECT_EQ(Update(progress, ID, Waiting(), NOW_MS), "");
    Array remote = Waiting();
    remote.m_Sync->m_State = SyncState::REMOTE;
    EXPECT_EQ(Update(progress, ID, remote, NOW_MS), "");
}

TEST(Progress, WaitingDoesNotCount) {
    Progress waited;
    Progress straight;
    Update(waited, ID, Running(250), NOW_MS);
    Update(waited, ID, Running(260), NOW_MS + MINUTE_MS);
    Update(straight, ID, Running(250), NOW_MS);
    Update(straight, ID, Running(260), NOW_MS + MINUTE_MS);
    EXPECT_EQ(Update(waited, ID, Waiting(), NOW_MS + 600 * MINUTE_MS), "");
    EXPECT_EQ(Update(waited, ID, Running(270), NOW_MS + 601 * MINUTE_MS),
              Update(straight, ID, Running(270), NOW_MS + 2 * MINUTE_MS));
}

TEST(Progress, StalledOneHasNoTime) {
    Progress progress;
    Update(progress, ID, Running(250), NOW_MS);
    EXPECT_NE(Update(progress, ID, Running(260), NOW_MS + MINUTE_MS), "");
    EXPECT_EQ(Update(progress, ID, Running(260), NOW_MS + 600 * MINUTE_MS), "");
}

TEST(Progress, EndedOneIsForgotten) {
    Progress progress;
    Update(progress, ID, Running(900), NOW_MS);
    Update(progress, ID, Array(), NOW_MS + MINUTE_MS);
    EXPECT_EQ(Update(progress, ID, Running(950), NOW_MS + 2 * MINUTE_MS), "02:00:00");
}

TEST(Progress, ListThatBreaksOffEndsNothing) {
    Progress progress;
    Update(progress, ID, Running(100), NOW_MS);
    Array cut;
    cut.m_IsCut = true;
    EXPECT_EQ(Update(progress, ID, cut, NOW_MS + MINUTE_MS), "");
    EXPECT_NE(Update(progress, ID, Running(900), NOW_MS + 2 * MINUTE_MS), "02:00:00");
}

TEST(Progress, AnotherKindBeginsAnew) {
    Progress progress;
    Update(progress, ID, Running(900), NOW_MS);
    EXPECT_EQ(Update(progress, ID, Running(950, SyncKind::CHECK), NOW_MS + MINUTE_MS), "02:00:00");
}

TEST(Progress, ArraysDoNotDisturbEachOther) {
    Progress progress;
    Update(progress, ID, Running(250), NOW_MS);
    EXPECT_EQ(Update(progress, ID + 1, Running(500), NOW_MS + MINUTE_MS), "02:00:00");
    EXPECT_EQ(Update(progress, ID + 2, Array(), NOW_MS + MINUTE_MS), "");
    EXPECT_NE(Update(progress, ID, Running(260), NOW_MS + 2 * MINUTE_MS), "02:00:00");
}

}  // namespace
