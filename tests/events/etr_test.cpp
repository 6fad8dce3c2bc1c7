// SPDX-License-Identifier: Apache-2.0

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pi/etr.h>
#include <time.h>

#include <cstdio>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "support/global_locale.h"
#include "support/record_checks.h"
#include "support/trace_recorder.h"

// Times of one test are given in milliseconds from a point far from 0, unless wrapping is what it is about.
// A comment beside an expected estimate works it out: e is the elapsed time, quotients are truncated.

namespace {

using namespace PI;
using namespace PI::Test;
using testing::ElementsAre;

constexpr std::uint64_t ALL_ONES = 0xFFFFFFFFFFFFFFFF;
constexpr unsigned long MINUTE = 60000;
constexpr unsigned long T = 10000000;

static_assert(!std::is_polymorphic_v<CETR>);
static_assert(std::is_copy_constructible_v<CETR> && std::is_nothrow_move_constructible_v<CETR>);
static_assert(std::is_same_v<decltype(&CETR::GetID), unsigned long (CETR::*)()>);
static_assert(std::is_same_v<decltype(&CETR::NowSteady), unsigned long (*)()>);
static_assert(std::is_same_v<decltype(&CETR::Compute), void (CETR::*)(int, unsigned long)>);
static_assert(std::is_same_v<decltype(&CETR::Add),
                             long (*)(std::vector<CETR>&, unsigned long, int, bool, unsigned long)>);
static_assert(std::is_same_v<decltype(&CETR::Remove), void (*)(std::vector<CETR>&, unsigned long)>);
static_assert(std::is_same_v<decltype(&CETR::RemainingTimeToString), std::string (*)(unsigned long)>);
static_assert(std::is_same_v<decltype(&CETR::GetETR), void (CETR::*)(std::string&)>);

/// An activity in the middle of its course.
CETR Running(std::uint64_t startTime, const std::vector<std::int32_t>& percents,
             const std::vector<std::uint64_t>& times) {
    CETR etr;
    etr.m_StartTime = startTime;
    etr.m_LastTime = times.empty() ? ALL_ONES : times.back();
    etr.m_RemainingTime = 50000;
    etr.m_PercentageComplete = percents;
    etr.m_TimeStamps = times;
    return etr;
}

std::string TextOf(CETR& etr) {
    std::string text = "to be overwritten";
    etr.GetETR(text);
    return text;
}

void ExpectSame(const CETR& left, const CETR& right) {
    EXPECT_EQ(left.m_ID, right.m_ID);
    EXPECT_EQ(left.m_StartTime, right.m_StartTime);
    EXPECT_EQ(left.m_LastTime, right.m_LastTime);
    EXPECT_EQ(left.m_RemainingTime, right.m_RemainingTime);
    EXPECT_EQ(left.m_PercentageComplete, right.m_PercentageComplete);
    EXPECT_EQ(left.m_TimeStamps, right.m_TimeStamps);
}

// --- The record

TEST(Etr, FieldsStandInTheirOrderAndWidth) {
    const CETR etr;
    FieldChain<CETR>(etr, 0)
        .Then<std::uint64_t>(&CETR::m_ID)
        .Then<std::uint64_t>(&CETR::m_StartTime)
        .Then<std::uint64_t>(&CETR::m_LastTime)
        .Then<std::uint64_t>(&CETR::m_RemainingTime)
        .Then<std::vector<std::int32_t>>(&CETR::m_PercentageComplete)
        .Then<std::vector<std::uint64_t>>(&CETR::m_TimeStamps)
        .End();
    EXPECT_TRUE(HasNoBase<CETR>());
}

TEST(Etr, Defaults) {
    CETR etr;
    EXPECT_EQ(etr.m_ID, 0U);
    EXPECT_EQ(etr.GetID(), 0U);
    EXPECT_EQ(etr.m_StartTime, ALL_ONES);
    EXPECT_EQ(etr.m_LastTime, ALL_ONES);
    EXPECT_EQ(etr.m_RemainingTime, ALL_ONES);
    EXPECT_TRUE(etr.m_PercentageComplete.empty());
    EXPECT_TRUE(etr.m_TimeStamps.empty());
    EXPECT_EQ(TextOf(etr), "> 99:59:59");
}

TEST(Etr, ConstructorTakesTheFirstSample) {
    CETR etr(7, 0, 1000000);
    EXPECT_EQ(etr.GetID(), 7U);
    EXPECT_EQ(etr.m_ID, 7U);
    EXPECT_EQ(etr.m_StartTime, 1000000U);
    EXPECT_EQ(etr.m_LastTime, 1000000U);
    EXPECT_EQ(etr.m_RemainingTime, 6000000U);  // 100 * max(0, 60000)
    EXPECT_THAT(etr.m_PercentageComplete, ElementsAre(0));
    EXPECT_THAT(etr.m_TimeStamps, ElementsAre(1000000));
    EXPECT_EQ(TextOf(etr), "01:40:00");
}

TEST(Etr, ConstructorWithANegativePercentHasNoSample) {
    const CETR etr(7, -1, T);
    EXPECT_EQ(etr.m_StartTime, T);
    EXPECT_EQ(etr.m_LastTime, ALL_ONES);
    EXPECT_EQ(etr.m_RemainingTime, ALL_ONES);
    EXPECT_TRUE(etr.m_PercentageComplete.empty());
}

TEST(Etr, ConstructorWithAHundredPercentHasAMinuteAndNoSample) {
    const CETR etr(7, 100, T);
    EXPECT_EQ(etr.m_StartTime, T);
    EXPECT_EQ(etr.m_LastTime, ALL_ONES);
    EXPECT_EQ(etr.m_RemainingTime, MINUTE);
    EXPECT_TRUE(etr.m_PercentageComplete.empty());
}

TEST(Etr, ConstructorWithAnUnknownStartTimeTakesAMinuteBefore) {
    const CETR etr(7, 50, ALL_ONES);
    EXPECT_EQ(etr.m_StartTime, ALL_ONES - MINUTE);
    EXPECT_EQ(etr.m_RemainingTime, 3000000U);  // 50 * 60000
}

TEST(Etr, CopiesCarryEveryField) {
    CETR source = Running(1, {10, 20}, {2, 3});
    source.m_ID = 4;
    const CETR copy(source);
    ExpectSame(copy, source);
    CETR assigned;
    assigned = source;
    ExpectSame(assigned, source);
    assigned.m_TimeStamps[0] = 99;
    EXPECT_EQ(source.m_TimeStamps[0], 2U);
}

// --- Start time, ignored and final percentages

TEST(EtrCompute, AnUnknownStartIsAMinuteAgo) {
    CETR etr;
    etr.Compute(25, 1000000);
    EXPECT_EQ(etr.m_StartTime, 940000U);
    EXPECT_EQ(etr.m_RemainingTime, 4500000U);  // e = 60000: 75 * 60000
}

TEST(EtrCompute, AnUnknownStartWrapsBeforeTimeZero) {
    CETR etr;
    etr.Compute(10, 1000);
    EXPECT_EQ(etr.m_StartTime, 18446744073709492616U);  // 1000 - 60000 + 2^64
    EXPECT_EQ(etr.m_RemainingTime, 5400000U);           // e = 60000: 90 * 60000
}

TEST(EtrCompute, AStartThatWrapsToAllOnesStaysUnknown) {
    CETR etr;
    etr.Compute(10, 59999);
    EXPECT_EQ(etr.m_StartTime, ALL_ONES);
    etr.Compute(20, 69999);
    EXPECT_EQ(etr.m_StartTime, 9999U);
    EXPECT_EQ(etr.m_RemainingTime, 4800000U);  // e = 60000: 80 * 60000
}

TEST(EtrCompute, ANegativePercentSetsOnlyAnUnknownStart) {
    CETR etr;
    etr.Compute(-1, 100000);
    EXPECT_EQ(etr.m_StartTime, 40000U);
    EXPECT_EQ(etr.m_LastTime, ALL_ONES);
    EXPECT_EQ(etr.m_RemainingTime, ALL_ONES);
    EXPECT_TRUE(etr.m_PercentageComplete.empty());

    const CETR before = Running(T, {10, 20}, {T, T + MINUTE});
    CETR running(before);
    running.Compute(-1, T + 2 * MINUTE);
    running.Compute(std::numeric_limits<int>::min(), T + 3 * MINUTE);
    ExpectSame(running, before);
}

TEST(EtrCompute, AHundredPercentMakesALongEstimateAMinuteAndKeepsNothing) {
    CETR etr = Running(T, {10}, {T});
    etr.m_RemainingTime = 60001;
    etr.Compute(100, T + MINUTE);
    EXPECT_EQ(etr.m_RemainingTime, 60000U);
    EXPECT_EQ(etr.m_LastTime, T);
    EXPECT_THAT(etr.m_PercentageComplete, ElementsAre(10));
    EXPECT_THAT(etr.m_TimeStamps, ElementsAre(T));
    EXPECT_EQ(TextOf(etr), "00:01:00");
}

TEST(EtrCompute, AHundredPercentIsAnySampleOnceTheEstimateIsAMinute) {
    CETR etr = Running(T, {10}, {T});
    etr.m_RemainingTime = 60000;
    etr.Compute(100, T + MINUTE);
    EXPECT_EQ(etr.m_RemainingTime, 0U);  // 0 * max(60000, 60000)
    EXPECT_EQ(etr.m_LastTime, T + MINUTE);
    EXPECT_THAT(etr.m_PercentageComplete, ElementsAre(10, 100));
    EXPECT_EQ(TextOf(etr), "");
}

TEST(EtrCompute, NinetyNinePercentIsAnySample) {
    CETR etr = Running(T, {10}, {T});
    etr.m_RemainingTime = 60001;
    etr.Compute(99, T + MINUTE);
    EXPECT_EQ(etr.m_RemainingTime, 60000U);  // 1 * max(60000, 60000)
    EXPECT_THAT(etr.m_PercentageComplete, ElementsAre(10, 99));
}

TEST(EtrCompute, MoreThanAHundredPercentWraps) {
    CETR first = Running(T, {}, {});
    first.Compute(101, T);
    EXPECT_EQ(first.m_RemainingTime, 18446744073709491616U);  // -1 * 60000 + 2^64

    CETR second = Running(T, {10}, {T});
    second.Compute(101, T + 70000);
    EXPECT_EQ(second.m_RemainingTime, 18446744073709481616U);  // -1 * 70000 + 2^64

    // e = 505000, e / 101 = 5000: 100 * 5001 - 505000 = -4900
    CETR fourth = Running(1000000, {10, 20, 30}, {1100000, 1200000, 1300000});
    fourth.Compute(101, 1505000);
    EXPECT_EQ(fourth.m_RemainingTime, 18446744073709546716U);

    // The same pace as above: -4900. Of the last five steps: 76 percent in 76000 ms, so 1000 + 1 for each.
    // -4900 + 1001 * 101 = 96201; 96201 * -1 + 2^64 = 18446744073709455415; divided by 100.
    CETR tenth = Running(1000000, {5, 10, 15, 20, 25, 30, 35, 40, 45},
                         {1100000, 1150000, 1200000, 1250000, 1429000, 1440000, 1450000, 1460000, 1470000});
    tenth.Compute(101, 1505000);
    EXPECT_EQ(tenth.m_RemainingTime, 184467440737094554U);
}

// --- First and second sample

TEST(EtrCompute, TheFirstSampleCountsAtLeastAMinuteForEachPercent) {
    const auto remaining = [](std::uint64_t elapsed) {
        CETR etr = Running(T, {}, {});
        etr.Compute(40, T + elapsed);
        return etr.m_RemainingTime;
    };
    EXPECT_EQ(remaining(0), 3600000U);      // 60 * 60000
    EXPECT_EQ(remaining(59999), 3600000U);  // 60 * 60000
    EXPECT_EQ(remaining(60000), 3600000U);  // 60 * 60000
    EXPECT_EQ(remaining(60001), 3600060U);  // 60 * 60001
    EXPECT_EQ(remaining(90000), 5400000U);  // 60 * 90000
}

TEST(EtrCompute, ATimeBeforeTheStartWraps) {
    CETR etr = Running(1000000, {}, {});
    etr.Compute(50, 999999);
    EXPECT_EQ(etr.m_RemainingTime, 18446744073709551566U);  // e = -1 = all ones: 50 * -1 + 2^64
}

TEST(EtrCompute, TheSecondSampleCountsAtLeastAMinuteForEachPercent) {
    const auto remaining = [](std::uint64_t elapsed) {
        CETR etr = Running(T, {10}, {T});
        etr.Compute(20, T + elapsed);
        EXPECT_EQ(etr.m_StartTime, T);
        EXPECT_EQ(etr.m_LastTime, T + elapsed);
        EXPECT_THAT(etr.m_PercentageComplete, ElementsAre(10, 20));
        EXPECT_THAT(etr.m_TimeStamps, ElementsAre(T, T + elapsed));
        return etr.m_RemainingTime;
    };
    EXPECT_EQ(remaining(59999), 4800000U);  // 80 * 60000
    EXPECT_EQ(remaining(60000), 4800000U);  // 80 * 60000
    EXPECT_EQ(remaining(60001), 4800080U);  // 80 * 60001
}

// --- Third sample

TEST(EtrCompute, TheThirdSampleLooksBackToWhereZeroPercentWouldHaveBeen) {
    std::vector<CETR> list;
    CETR::Add(list, 1, 10, false, T);
    EXPECT_EQ(list[0].m_RemainingTime, 5400000U);  // 90 * 60000
    CETR::Add(list, 1, 20, false, T + MINUTE);
    EXPECT_EQ(list[0].m_RemainingTime, 4800000U);  // 80 * 60000
    CETR::Add(list, 1, 30, false, T + 2 * MINUTE);
    // Start: 10060000 - 60000 * 20 = 8860000.
    // e = 10120000 - 8860000 = 1260000; e / 30 = 42000; 100 * 42001 - 1260000
    EXPECT_EQ(list[0].m_StartTime, 8860000U);
    EXPECT_EQ(list[0].m_RemainingTime, 2940100U);
    EXPECT_EQ(list[0].m_LastTime, T + 2 * MINUTE);
    EXPECT_THAT(list[0].m_PercentageComplete, ElementsAre(10, 20, 30));
    EXPECT_EQ(TextOf(list[0]), "00:49:00");
}

TEST(EtrCompute, TheThirdSampleOnlyMovesTheStartBack) {
    const auto startTime = [](std::uint64_t before) {
        CETR etr = Running(before, {10, 20}, {T, T + MINUTE});
        etr.Compute(30, T + 2 * MINUTE);
        return etr.m_StartTime;
    };
    EXPECT_EQ(startTime(8860001), 8860000U);
    EXPECT_EQ(startTime(8860000), 8860000U);
    EXPECT_EQ(startTime(8859999), 8859999U);

    CETR etr = Running(5000000, {10, 20}, {T, T + MINUTE});
    etr.Compute(30, T + 2 * MINUTE);
    EXPECT_EQ(etr.m_RemainingTime, 11946700U);  // e = 5120000; e / 30 = 170666; 100 * 170667 - 5120000
}

TEST(EtrCompute, AStartBeforeTimeZeroWrapsAndIsNotTaken) {
    CETR etr = Running(1000000, {10, 20}, {1000000, 1060000});
    etr.Compute(30, 1120000);
    // 1060000 - 60000 * 20 = -140000, which is 2^64 - 140000 and not before 1000000.
    EXPECT_EQ(etr.m_StartTime, 1000000U);
    EXPECT_EQ(etr.m_RemainingTime, 280100U);  // e = 120000; e / 30 = 4000; 100 * 4001 - 120000
}

TEST(EtrCompute, TheLookBackCountsThePercentOfTheSecondSampleWithItsSign) {
    CETR etr = Running(1000, {-2, -1}, {100, 200});
    etr.Compute(50, 300);
    EXPECT_EQ(etr.m_StartTime, 300U);      // 200 - 100 * -1
    EXPECT_EQ(etr.m_RemainingTime, 100U);  // e = 0: 100 * 1 - 0
}

TEST(EtrCompute, ZeroPercentAsTheThirdSampleStartsAnew) {
    CETR etr = Running(1000, {-2, -1}, {100, 200});
    etr.Compute(0, 400);
    EXPECT_EQ(etr.m_StartTime, 400U);
    EXPECT_EQ(etr.m_RemainingTime, 6000000U);  // 100 * 60000
    EXPECT_THAT(etr.m_PercentageComplete, ElementsAre(-2, -1, 0));
}

// --- Progress that goes back

TEST(EtrCompute, ProgressThatGoesBackDropsTheSamplesFromThereOn) {
    CETR etr(1, 10, T);
    etr.Compute(50, T + MINUTE);
    etr.Compute(60, T + 2 * MINUTE);
    // Start: 10060000 - 60000 * 50 = 7060000. e = 3060000; e / 60 = 51000; 100 * 51001 - 3060000
    EXPECT_EQ(etr.m_StartTime, 7060000U);
    EXPECT_EQ(etr.m_RemainingTime, 2040100U);

    etr.Compute(40, T + 3 * MINUTE);
    EXPECT_THAT(etr.m_PercentageComplete, ElementsAre(10, 40));
    EXPECT_THAT(etr.m_TimeStamps, ElementsAre(T, T + 3 * MINUTE));
    EXPECT_EQ(etr.m_LastTime, T + 3 * MINUTE);
    EXPECT_EQ(etr.m_StartTime, 7060000U);
    EXPECT_EQ(etr.m_RemainingTime, 187200000U);  // two samples, e = 3120000: 60 * 3120000
}

TEST(EtrCompute, ARepeatedPercentReplacesItsSample) {
    CETR etr = Running(T, {10, 50}, {T, T + MINUTE});
    etr.Compute(50, T + 2 * MINUTE);
    EXPECT_THAT(etr.m_PercentageComplete, ElementsAre(10, 50));
    EXPECT_THAT(etr.m_TimeStamps, ElementsAre(T, T + 2 * MINUTE));
    EXPECT_EQ(etr.m_RemainingTime, 6000000U);  // two samples, e = 120000: 50 * 120000
}

TEST(EtrCompute, OneAboveAKeptPercentDropsOnlyWhatIsBehind) {
    CETR etr = Running(T, {10, 50}, {T, T + MINUTE});
    etr.Compute(11, T + 2 * MINUTE);
    EXPECT_THAT(etr.m_PercentageComplete, ElementsAre(10, 11));
    etr.Compute(10, T + 3 * MINUTE);
    EXPECT_THAT(etr.m_PercentageComplete, ElementsAre(10));
    EXPECT_THAT(etr.m_TimeStamps, ElementsAre(T + 3 * MINUTE));
    EXPECT_EQ(etr.m_RemainingTime, 16200000U);  // one sample, e = 180000: 90 * 180000
}

TEST(EtrCompute, ADropThatLeavesThreeSamplesDoesNotLookBack) {
    CETR etr = Running(7060000, {10, 50, 60}, {T, T + MINUTE, T + 2 * MINUTE});
    etr.Compute(55, T + 3 * MINUTE);
    EXPECT_THAT(etr.m_PercentageComplete, ElementsAre(10, 50, 55));
    // A look back would give 10060000 - 120000 * 50 = 4060000.
    EXPECT_EQ(etr.m_StartTime, 7060000U);
    EXPECT_EQ(etr.m_RemainingTime, 2552800U);  // e = 3120000; e / 55 = 56727; 100 * 56728 - 3120000
}

TEST(EtrCompute, ZeroPercentStartsAnew) {
    CETR etr = Running(T, {0, 50}, {T, T + MINUTE});
    etr.Compute(0, T + 5 * MINUTE);
    EXPECT_THAT(etr.m_PercentageComplete, ElementsAre(0));
    EXPECT_THAT(etr.m_TimeStamps, ElementsAre(T + 5 * MINUTE));
    EXPECT_EQ(etr.m_StartTime, T + 5 * MINUTE);
    EXPECT_EQ(etr.m_RemainingTime, 6000000U);  // 100 * 60000
}

TEST(EtrCompute, OnePercentDoesNotStartAnew) {
    CETR etr = Running(T, {1, 50}, {T, T + MINUTE});
    etr.Compute(1, T + 5 * MINUTE);
    EXPECT_EQ(etr.m_StartTime, T);
    EXPECT_EQ(etr.m_RemainingTime, 29700000U);  // one sample, e = 300000: 99 * 300000
}

// --- Four samples and more. e = 500000 throughout.

/// The kept samples before the last one: a percent apiece from first in steps of step.
CETR Series(std::size_t count, std::int32_t first, std::int32_t step) {
    std::vector<std::int32_t> percents;
    std::vector<std::uint64_t> times;
    for (std::size_t i = 0; i < count; ++i) {
        percents.push_back(first + static_cast<std::int32_t>(i) * step);
        times.push_back(1050000 + i * 50000);
    }
    return Running(1000000, percents, times);
}

TEST(EtrCompute, FourToNineSamplesGoByTheOverallPace) {
    for (std::size_t kept = 3; kept <= 8; ++kept) {
        CETR etr = Series(kept, 5, 5);
        etr.Compute(50, 1500000);
        EXPECT_EQ(etr.m_PercentageComplete.size(), kept + 1);
        EXPECT_EQ(etr.m_RemainingTime, 500100U) << kept;  // e / 50 = 10000; 100 * 10001 - 500000
        EXPECT_EQ(etr.m_StartTime, 1000000U);
        EXPECT_EQ(etr.m_LastTime, 1500000U);
    }
}

TEST(EtrCompute, ThePaceIsTruncatedBeforeItIsRaisedByOne) {
    CETR etr = Running(1000000, {1, 2, 3}, {1000001, 1000002, 1000003});
    etr.Compute(30, 1000100);
    EXPECT_EQ(etr.m_RemainingTime, 300U);  // e = 100; e / 30 = 3; 100 * 4 - 100
    etr.Compute(31, 1000030);
    EXPECT_EQ(etr.m_RemainingTime, 70U);  // e = 30; e / 31 = 0; 100 * 1 - 30
}

TEST(EtrCompute, TenSamplesBlendInTheRecentPace) {
    CETR etr = Series(9, 5, 5);
    etr.Compute(50, 1500000);
    // Overall as with nine: 500100. Recent, from the fifth sample: 25 percent in 250000, 10000 + 1 for each.
    // (500100 + 10001 * 50) * 50 / 100 = 1000150 * 50 / 100
    EXPECT_EQ(etr.m_RemainingTime, 500075U);
}

TEST(EtrCompute, TheRecentPaceIsThatOfTheLastFiveSteps) {
    CETR etr = Series(9, 5, 5);
    etr.m_TimeStamps[4] = 1400000;  // of the ten the sixth from the end
    etr.m_TimeStamps[3] = 1;
    etr.m_TimeStamps[5] = 1;
    etr.Compute(50, 1500000);
    // 25 percent in 100000: 4000 + 1. (500100 + 4001 * 50) * 50 / 100 = 700150 * 50 / 100
    EXPECT_EQ(etr.m_RemainingTime, 350075U);

    CETR eleven = Series(10, 5, 4);  // 5, 9 ... 41
    eleven.m_TimeStamps[5] = 1400000;
    eleven.m_TimeStamps[4] = 1;
    eleven.Compute(50, 1500000);
    // From 25 percent as before.
    EXPECT_EQ(eleven.m_PercentageComplete[5], 25);
    EXPECT_EQ(eleven.m_RemainingTime, 350075U);
}

TEST(EtrCompute, TheRecentPaceIsTruncatedBeforeItIsRaisedByOne) {
    CETR etr = Series(9, 5, 5);
    etr.m_TimeStamps[4] = 1400010;
    etr.Compute(50, 1500000);
    // 25 percent in 99990: 3999 + 1. (500100 + 4000 * 50) * 50 / 100 = 700100 * 50 / 100
    EXPECT_EQ(etr.m_RemainingTime, 350050U);
}

TEST(EtrCompute, UpTo32PercentTenSamplesGoByTheOverallPace) {
    CETR at32 = Series(9, 3, 3);
    at32.Compute(32, 1500000);
    EXPECT_EQ(at32.m_RemainingTime, 1062600U);  // e / 32 = 15625; 100 * 15626 - 500000

    CETR at33 = Series(9, 3, 3);
    at33.Compute(33, 1500000);
    // Overall: e / 33 = 15151; 100 * 15152 - 500000 = 1015200.
    // Recent: 33 - 15 = 18 percent in 250000: 13888 + 1.
    // (1015200 + 13889 * 33) * 67 / 100 = 1473537 * 67 / 100 = 98726979 / 100
    EXPECT_EQ(at33.m_RemainingTime, 987269U);
}

TEST(EtrCompute, NineSamplesGoByTheOverallPaceAboveThat) {
    CETR etr = Series(8, 3, 3);
    etr.Compute(33, 1500000);
    EXPECT_EQ(etr.m_RemainingTime, 1015200U);  // as above, without the blend
}

TEST(EtrCompute, ADropThatLeavesTenSamplesBlendsToo) {
    CETR etr = Series(9, 5, 5);
    etr.m_PercentageComplete.insert(etr.m_PercentageComplete.end(), {60, 70});
    etr.m_TimeStamps.insert(etr.m_TimeStamps.end(), {1480000, 1490000});
    etr.Compute(50, 1500000);
    EXPECT_EQ(etr.m_PercentageComplete.size(), 10U);
    EXPECT_EQ(etr.m_RemainingTime, 500075U);  // as with ten from the start
}

TEST(EtrCompute, TheBlendMayWrap) {
    CETR etr = Series(9, 5, 5);
    etr.m_TimeStamps[4] = 1500025;
    etr.Compute(50, 1500000);
    // Recent: (2^64 - 25) / 25 + 1 = 737869762948382063 + 1; * 50 = 36893488147419103200, minus 2^64 =
    // 18446744073709551584, that is -32. (500100 - 32) * 50 / 100
    EXPECT_EQ(etr.m_RemainingTime, 250034U);
}

TEST(EtrCompute, AHundredPercentOfALongSeriesLeavesNothing) {
    CETR etr = Series(9, 5, 5);
    etr.Compute(100, 1500000);
    EXPECT_EQ(etr.m_RemainingTime, 0U);  // (...) * 0 / 100
    EXPECT_EQ(TextOf(etr), "");
}

// --- Lists

TEST(EtrAdd, AnUnknownActivityIsAppended) {
    std::vector<CETR> list;
    EXPECT_EQ(CETR::Add(list, 5, 50, false, T), 0);
    EXPECT_EQ(CETR::Add(list, 6, 20, false, T + 1), 1);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].m_ID, 5U);
    EXPECT_EQ(list[0].m_StartTime, T);
    EXPECT_EQ(list[0].m_RemainingTime, 3000000U);  // 50 * 60000
    EXPECT_EQ(TextOf(list[0]), "00:50:00");
    EXPECT_EQ(list[1].m_ID, 6U);
    EXPECT_EQ(list[1].m_RemainingTime, 4800000U);  // 80 * 60000
}

TEST(EtrAdd, AKnownActivityTakesTheSample) {
    std::vector<CETR> list = {CETR(5, 10, T), CETR(6, 10, T), CETR(7, 10, T)};
    EXPECT_EQ(CETR::Add(list, 6, 20, false, T + MINUTE), 1);
    ASSERT_EQ(list.size(), 3U);
    EXPECT_THAT(list[0].m_PercentageComplete, ElementsAre(10));
    EXPECT_THAT(list[1].m_PercentageComplete, ElementsAre(10, 20));
    EXPECT_THAT(list[2].m_PercentageComplete, ElementsAre(10));
}

TEST(EtrAdd, OfEqualIdentifiersTheFirstCounts) {
    std::vector<CETR> list = {CETR(5, 10, T), CETR(6, 10, T), CETR(6, 10, T)};
    EXPECT_EQ(CETR::Add(list, 6, 20, false, T + MINUTE), 1);
    EXPECT_EQ(list[1].m_PercentageComplete.size(), 2U);
    EXPECT_EQ(list[2].m_PercentageComplete.size(), 1U);
    EXPECT_EQ(CETR::Add(list, 6, 20, true, T + MINUTE), 1);
}

TEST(EtrAdd, APauseTakesTheTimeSinceTheLastSampleOut) {
    std::vector<CETR> list = {CETR(5, 10, T)};
    EXPECT_EQ(CETR::Add(list, 5, 99, true, T + 500000), 0);
    EXPECT_EQ(list[0].m_StartTime, T + 500000);  // 10500000 + 10000000 - 10000000
    EXPECT_EQ(list[0].m_LastTime, T + 500000);
    EXPECT_EQ(list[0].m_RemainingTime, 5400000U) << "not computed anew";
    EXPECT_THAT(list[0].m_PercentageComplete, ElementsAre(10));
    EXPECT_THAT(list[0].m_TimeStamps, ElementsAre(T));

    CETR::Add(list, 5, 99, true, T + 700000);
    EXPECT_EQ(list[0].m_StartTime, T + 700000);  // 10700000 + 10500000 - 10500000

    CETR::Add(list, 5, 20, false, T + 770000);
    EXPECT_EQ(list[0].m_RemainingTime, 5600000U);  // two samples, e = 70000: 80 * 70000
}

TEST(EtrAdd, APauseKeepsTheTimeBeforeIt) {
    std::vector<CETR> list = {CETR(5, 10, T)};
    CETR::Add(list, 5, 20, false, T + 90000);
    CETR::Add(list, 5, 20, true, T + 100000);
    EXPECT_EQ(list[0].m_StartTime, 10010000U);  // 10100000 + 10000000 - 10090000
    EXPECT_EQ(list[0].m_LastTime, 10100000U);
}

TEST(EtrAdd, APauseBeforeAnySampleWraps) {
    std::vector<CETR> list = {CETR(5, 100, T)};
    ASSERT_EQ(list[0].m_LastTime, ALL_ONES);
    CETR::Add(list, 5, 100, true, T + 5);
    EXPECT_EQ(list[0].m_StartTime, 20000006U);  // 10000005 + 10000000 - (2^64 - 1)
    EXPECT_EQ(list[0].m_LastTime, T + 5);
}

TEST(EtrAdd, APauseOfAnUnknownActivityAppendsItLikeAnyOther) {
    std::vector<CETR> list;
    EXPECT_EQ(CETR::Add(list, 5, 50, true, T), 0);
    ASSERT_EQ(list.size(), 1U);
    ExpectSame(list[0], CETR(5, 50, T));
}

TEST(EtrRemove, RemovesEveryEntryOfTheIdentifierAndKeepsTheOrder) {
    std::vector<CETR> list = {CETR(6, 1, T), CETR(5, 2, T), CETR(6, 3, T), CETR(7, 4, T), CETR(5, 5, T)};
    CETR::Remove(list, 6);
    ASSERT_EQ(list.size(), 3U);
    ExpectSame(list[0], CETR(5, 2, T));
    ExpectSame(list[1], CETR(7, 4, T));
    ExpectSame(list[2], CETR(5, 5, T));
    CETR::Remove(list, 5);
    ASSERT_EQ(list.size(), 1U);
    CETR::Remove(list, 7);
    EXPECT_TRUE(list.empty());
}

TEST(EtrRemove, OfAnUnknownIdentifierChangesNothing) {
    std::vector<CETR> list = {CETR(6, 1, T)};
    CETR::Remove(list, 7);
    EXPECT_EQ(list.size(), 1U);
    std::vector<CETR> none;
    CETR::Remove(none, 7);
    EXPECT_TRUE(none.empty());
}

// --- Texts

TEST(RemainingTimeToString, BelowASecondIsEmpty) {
    EXPECT_EQ(CETR::RemainingTimeToString(0), "");
    EXPECT_EQ(CETR::RemainingTimeToString(999), "");
    EXPECT_EQ(CETR::RemainingTimeToString(1000), "00:00:01");
}

TEST(RemainingTimeToString, UnitsCarry) {
    EXPECT_EQ(CETR::RemainingTimeToString(1999), "00:00:01");
    EXPECT_EQ(CETR::RemainingTimeToString(59999), "00:00:59");
    EXPECT_EQ(CETR::RemainingTimeToString(60000), "00:01:00");
    EXPECT_EQ(CETR::RemainingTimeToString(60999), "00:01:00");
    EXPECT_EQ(CETR::RemainingTimeToString(3599999), "00:59:59");
    EXPECT_EQ(CETR::RemainingTimeToString(3600000), "01:00:00");
    EXPECT_EQ(CETR::RemainingTimeToString(5025000), "01:23:45");
    EXPECT_EQ(CETR::RemainingTimeToString(36000000), "10:00:00");
}

TEST(RemainingTimeToString, AHundredHoursAreTooMany) {
    EXPECT_EQ(CETR::RemainingTimeToString(359999000), "99:59:59");
    EXPECT_EQ(CETR::RemainingTimeToString(359999999), "99:59:59");
    EXPECT_EQ(CETR::RemainingTimeToString(360000000), "> 99:59:59");
    EXPECT_EQ(CETR::RemainingTimeToString(ALL_ONES), "> 99:59:59");
}

TEST(RemainingTimeToString, PrintsEveryTimeBelowAsHoursMinutesSeconds) {
    for (unsigned long second = 1; second < 360000; second += 61) {
        char expected[32];
        std::snprintf(expected, sizeof(expected), "%02lu:%02lu:%02lu", second / 3600, second / 60 % 60,
                      second % 60);
        ASSERT_EQ(CETR::RemainingTimeToString(second * 1000 + second % 1000), expected);
    }
}

TEST(NowSteady, IsTheMonotonicClockInMilliseconds) {
    const auto now = [] {
        timespec time = {};
        clock_gettime(CLOCK_MONOTONIC, &time);
        return static_cast<unsigned long>(time.tv_sec) * 1000 +
               static_cast<unsigned long>(time.tv_nsec) / 1000000;
    };
    const unsigned long before = now();
    const unsigned long steady = CETR::NowSteady();
    EXPECT_LE(before, steady);
    EXPECT_LE(steady, now());
}

// --- Traces

TEST(EtrTrace, ASampleIsTracedWithTheTimeOfTheOneBefore) {
    TraceRecorder<3> recorder;
    CETR etr(7, 10, T);
    etr.Compute(20, T + MINUTE);
    etr.Compute(30, T + 2 * MINUTE);
    etr.Compute(40, T + 3 * MINUTE);
    // As worked out above; the last: e = 1320000, e / 40 = 33000, 100 * 33001 - 1320000.
    EXPECT_THAT(
        recorder.Texts(),
        ElementsAre(
            "m_StartTime: 10000000 m_LastTime: 10000000 timeStamp: 10060000 m_RemainingTime: 4800000",
            "m_StartTime: 8860000 m_LastTime: 10060000 timeStamp: 10120000 m_RemainingTime: 2940100",
            "m_StartTime: 8860000 m_LastTime: 10120000 timeStamp: 10180000 m_RemainingTime: 1980100"));
}

TEST(EtrTrace, ASampleThatDropsOthersIsTracedWithItsOwnTime) {
    TraceRecorder<3> recorder;
    CETR etr = Running(T, {10, 50}, {T, T + MINUTE});
    etr.Compute(50, T + 2 * MINUTE);
    etr.Compute(0, T + 3 * MINUTE);
    EXPECT_THAT(
        recorder.Texts(),
        ElementsAre(
            "m_StartTime: 10000000 m_LastTime: 10120000 timeStamp: 10120000 m_RemainingTime: 6000000",
            "m_StartTime: 10180000 m_LastTime: 10180000 timeStamp: 10180000 m_RemainingTime: 6000000"));
}

TEST(EtrTrace, TheFirstSampleAndWhatIsNoSampleIsNotTraced) {
    TraceRecorder<3> recorder;
    std::vector<CETR> list = {CETR(7, 10, T)};
    list[0].Compute(-1, T + MINUTE);
    list[0].Compute(100, T + MINUTE);
    CETR::Add(list, 7, 20, true, T + MINUTE);
    CETR::Remove(list, 7);
    EXPECT_THAT(recorder.Texts(), testing::IsEmpty());
}

TEST(EtrTrace, ReadingTheTextIsTracedWithTheClock) {
    TraceRecorder<3> recorder;
    CETR etr(7, 0, T);
    const unsigned long before = CETR::NowSteady();
    EXPECT_EQ(TextOf(etr), "01:40:00");
    const unsigned long after = CETR::NowSteady();
    ASSERT_EQ(recorder.m_Records.size(), 1U);
    const std::string text = recorder.Texts()[0];
    const std::string start = "ETR: 01:40:00 SteadyClock: ";
    ASSERT_EQ(text.substr(0, start.size()), start);
    const unsigned long clock = std::stoul(text.substr(start.size()));
    EXPECT_EQ(text, start + std::to_string(clock));
    EXPECT_LE(before, clock);
    EXPECT_LE(clock, after);
}

TEST(EtrTrace, AnEmptyTextIsTracedEmpty) {
    TraceRecorder<3> recorder;
    CETR etr;
    etr.m_RemainingTime = 0;
    EXPECT_EQ(TextOf(etr), "");
    ASSERT_EQ(recorder.m_Records.size(), 1U);
    EXPECT_THAT(recorder.Texts()[0], testing::StartsWith("ETR:  SteadyClock: "));
}

TEST(EtrTrace, GoesToLogger3UnderItsTagWithTheLibrarysNumberAndName) {
    TraceRecorder<3> recorder;
    CETR etr;
    TextOf(etr);
    ASSERT_EQ(recorder.m_Records.size(), 1U);
    EXPECT_THAT(recorder.m_Records[0].m_Message,
                testing::MatchesRegex("\\[VELK_TraceData\\]\\[[0-9]+\\]\\[VELK_Trace\\]\\[494\\]ETR: > "
                                      "99:59:59 SteadyClock: [0-9]+"));
    EXPECT_EQ(recorder.m_Records[0].m_Instance, 3);
}

TEST(EtrTrace, WithoutTracesTheEstimateIsTheSame) {
    CETR silent(7, 10, T);
    silent.Compute(20, T + MINUTE);
    TraceRecorder<3> recorder;
    CETR traced(7, 10, T);
    traced.Compute(20, T + MINUTE);
    ExpectSame(silent, traced);
    EXPECT_EQ(recorder.m_Records.size(), 1U);
}

TEST(EtrTrace, TheGlobalLocaleDoesNotMatter) {
    class GroupedDigits : public std::numpunct<char> {
        char do_thousands_sep() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };
    const GlobalLocale grouped(std::locale(std::locale::classic(), new GroupedDigits));
    TraceRecorder<3> recorder;
    CETR etr(7, 10, T);
    etr.Compute(20, T + MINUTE);
    EXPECT_THAT(recorder.Texts(),
                ElementsAre("m_StartTime: 10000000 m_LastTime: 10000000 timeStamp: 10060000 "
                            "m_RemainingTime: 4800000"));
    EXPECT_EQ(TextOf(etr), "01:20:00");
}

}  // namespace
