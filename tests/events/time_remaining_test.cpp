// SPDX-License-Identifier: Apache-2.0

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pi/time_remaining.h>

#include <cmath>
#include <functional>
#include <limits>

namespace {

using namespace PI;
using testing::AllOf;
using testing::Ge;
using testing::Le;
using testing::Optional;

constexpr std::uint64_t SECOND = 1000;
constexpr std::uint64_t MINUTE = 60 * SECOND;
constexpr std::uint64_t HOUR = 60 * MINUTE;
constexpr std::uint64_t SECTORS = 6000000000;
constexpr std::uint64_t MOST = std::numeric_limits<std::uint64_t>::max();

/// Samples once a minute at an even pace that takes ten hours for the whole.
void RunEvenly(CTimeRemaining& estimate, std::uint64_t fromMinute, std::uint64_t toMinute,
               std::uint64_t start = 0) {
    for (std::uint64_t minute = fromMinute; minute <= toMinute; ++minute) {
        estimate.AddSample(start + minute * MINUTE, minute * (SECTORS / 600), SECTORS);
    }
}

void ExpectNear(std::optional<std::uint64_t> time, std::uint64_t expected) {
    EXPECT_THAT(time, Optional(AllOf(Ge(expected - expected / 100), Le(expected + expected / 100))));
}

void ExpectNotKnown(const CTimeRemaining& estimate) {
    EXPECT_EQ(estimate.GetRemaining(), std::nullopt);
    EXPECT_EQ(estimate.GetLow(), std::nullopt);
    EXPECT_EQ(estimate.GetHigh(), std::nullopt);
}

void ExpectSame(const CTimeRemaining& a, const CTimeRemaining& b) {
    EXPECT_EQ(a.GetState(), b.GetState());
    EXPECT_EQ(a.GetRemaining(), b.GetRemaining());
    EXPECT_EQ(a.GetLow(), b.GetLow());
    EXPECT_EQ(a.GetHigh(), b.GetHigh());
}

TEST(TimeRemaining, IsNotKnownBeforeTwoSamples) {
    CTimeRemaining estimate;
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::NOT_KNOWN);
    ExpectNotKnown(estimate);
    estimate.AddSample(5 * HOUR, 0, SECTORS);
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::NOT_KNOWN);
    ExpectNotKnown(estimate);
    estimate.AddSample(5 * HOUR + MINUTE, SECTORS / 600, SECTORS);
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::RUNNING);
    EXPECT_TRUE(estimate.GetRemaining().has_value());
}

TEST(TimeRemaining, EvenPaceGoesOn) {
    CTimeRemaining estimate;
    RunEvenly(estimate, 0, 100);
    ExpectNear(estimate.GetRemaining(), 500 * MINUTE);
    RunEvenly(estimate, 101, 300);
    ExpectNear(estimate.GetRemaining(), 300 * MINUTE);
    EXPECT_LT(*estimate.GetLow(), 300 * MINUTE);
    EXPECT_GT(*estimate.GetHigh(), 300 * MINUTE);
}

TEST(TimeRemaining, PaceFromWhereItIsFirstSeen) {
    CTimeRemaining estimate;
    RunEvenly(estimate, 300, 400);
    ExpectNear(estimate.GetRemaining(), 200 * MINUTE);
}

/// A disk of ten hours whose speed falls evenly to half; time is that at which a share is reached.
void RunZoned(CTimeRemaining& estimate, double share) {
    constexpr double FALL = 0.75;
    for (double at = 0; at <= share; at += 0.002) {
        const double time = (1 - std::sqrt(1 - FALL * at)) / (1 - std::sqrt(1 - FALL));
        estimate.AddSample(static_cast<std::uint64_t>(time * 10 * HOUR),
                           static_cast<std::uint64_t>(at * static_cast<double>(SECTORS)), SECTORS);
    }
}

TEST(TimeRemaining, SpeedThatFallsTowardsTheEndGoesOnFalling) {
    CTimeRemaining estimate;
    RunZoned(estimate, 0.2);
    // The mean pace would give 6.45 hours.
    const double remaining = std::sqrt(1 - 0.75 * 0.2) - 0.5;
    EXPECT_NEAR(static_cast<double>(*estimate.GetRemaining()) / HOUR, 20 * remaining, 0.2);
    EXPECT_LT(static_cast<double>(*estimate.GetLow()) / HOUR, 20 * remaining);
    EXPECT_GT(static_cast<double>(*estimate.GetHigh()) / HOUR, 20 * remaining);
}

TEST(TimeRemaining, NewLoadCountsForALongTime) {
    CTimeRemaining estimate;
    RunEvenly(estimate, 0, 300);
    std::uint64_t time = 300 * MINUTE;
    std::uint64_t position = SECTORS / 2;
    for (int i = 0; i < 60; ++i) {
        position += SECTORS / 1200;
        time += MINUTE;
        estimate.AddSample(time, position, SECTORS);
    }
    // 45 percent are left; at half the pace for four hours more, then at the mean pace of 55 percent in 6
    // hours.
    EXPECT_NEAR(static_cast<double>(*estimate.GetRemaining()) / HOUR, 4 + 0.25 * 6 / 0.55, 0.1);
}

TEST(TimeRemaining, WholePercentsCountDownBetweenSteps) {
    CTimeRemaining estimate;
    for (std::uint64_t minute = 0; minute <= 120; ++minute) {
        estimate.AddSample(minute * MINUTE, minute / 6, 100);
        if (minute > 60) {
            EXPECT_NEAR(static_cast<double>(*estimate.GetRemaining()) / MINUTE,
                        600.0 - static_cast<double>(minute), 7)
                << minute;
        }
    }
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::RUNNING);
}

TEST(TimeRemaining, FirstPercentSeenFromWithinDoesNotCount) {
    CTimeRemaining estimate;
    estimate.AddSample(0, 50, 100);
    estimate.AddSample(MINUTE, 51, 100);  // 51 begins here
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::NOT_KNOWN);
    ExpectNotKnown(estimate);
    estimate.AddSample(7 * MINUTE, 52, 100);
    EXPECT_NEAR(static_cast<double>(*estimate.GetRemaining()) / MINUTE, 48 * 6, 10);
}

TEST(TimeRemaining, StalledAfterAMinuteWithoutMovement) {
    CTimeRemaining estimate;
    RunEvenly(estimate, 0, 300);
    const auto before = estimate.GetRemaining();
    estimate.AddSample(301 * MINUTE, SECTORS / 2, SECTORS);
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::RUNNING);
    estimate.AddSample(301 * MINUTE + 1, SECTORS / 2, SECTORS);
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::STALLED);
    EXPECT_EQ(estimate.GetRemaining(), before);
}

TEST(TimeRemaining, WholePercentStallsAfterFiveTimesItsPace) {
    CTimeRemaining estimate;
    for (std::uint64_t percent = 0; percent <= 10; ++percent) {
        estimate.AddSample(percent * 6 * MINUTE, percent, 100);
    }
    estimate.AddSample(90 * MINUTE, 10, 100);
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::RUNNING);
    estimate.AddSample(90 * MINUTE + 1, 10, 100);
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::STALLED);
}

TEST(TimeRemaining, ActivityThatNeverMovesStallsUnlessItCountsInPercent) {
    CTimeRemaining sectors;
    CTimeRemaining percent;
    for (const std::uint64_t time : {0 * HOUR, 1 * HOUR}) {
        sectors.AddSample(time, 0, SECTORS);
        percent.AddSample(time, 0, 100);
    }
    EXPECT_EQ(sectors.GetState(), TimeRemainingState::STALLED);
    EXPECT_EQ(percent.GetState(), TimeRemainingState::NOT_KNOWN);
    ExpectNotKnown(sectors);
}

TEST(TimeRemaining, StallDoesNotCountAsTime) {
    CTimeRemaining even;
    RunEvenly(even, 0, 400);
    CTimeRemaining stalled;
    RunEvenly(stalled, 0, 300);
    for (std::uint64_t minute = 301; minute <= 360; ++minute) {
        stalled.AddSample(minute * MINUTE, SECTORS / 2, SECTORS);
    }
    EXPECT_EQ(stalled.GetState(), TimeRemainingState::STALLED);
    RunEvenly(stalled, 301, 400, HOUR);
    ExpectSame(stalled, even);
}

TEST(TimeRemaining, PauseDoesNotCountAsTime) {
    CTimeRemaining even;
    RunEvenly(even, 0, 400);
    CTimeRemaining paused;
    RunEvenly(paused, 0, 300);
    const auto before = paused.GetRemaining();
    paused.AddPause(310 * MINUTE);
    EXPECT_EQ(paused.GetState(), TimeRemainingState::WAITING);
    EXPECT_EQ(paused.GetRemaining(), before);
    paused.AddPause(360 * MINUTE);
    RunEvenly(paused, 301, 400, HOUR);
    ExpectSame(paused, even);
}

TEST(TimeRemaining, PauseAfterAStallDoesNotCountEither) {
    CTimeRemaining even;
    RunEvenly(even, 0, 400);
    CTimeRemaining paused;
    RunEvenly(paused, 0, 300);
    paused.AddSample(310 * MINUTE, SECTORS / 2, SECTORS);
    EXPECT_EQ(paused.GetState(), TimeRemainingState::STALLED);
    paused.AddPause(360 * MINUTE);
    RunEvenly(paused, 301, 400, HOUR);
    ExpectSame(paused, even);
}

TEST(TimeRemaining, WaitsBeforeItBegins) {
    CTimeRemaining estimate;
    estimate.AddPause(0);
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::WAITING);
    ExpectNotKnown(estimate);
    RunEvenly(estimate, 0, 300, 5 * HOUR);
    ExpectNear(estimate.GetRemaining(), 300 * MINUTE);
}

TEST(TimeRemaining, DoneAtTheTotal) {
    for (const std::uint64_t position : {SECTORS, SECTORS + 1, MOST}) {
        CTimeRemaining estimate;
        RunEvenly(estimate, 0, 300);
        estimate.AddSample(301 * MINUTE, position, SECTORS);
        EXPECT_EQ(estimate.GetState(), TimeRemainingState::DONE);
        EXPECT_THAT(estimate.GetRemaining(), Optional(0U));
        EXPECT_THAT(estimate.GetLow(), Optional(0U));
        EXPECT_THAT(estimate.GetHigh(), Optional(0U));
        estimate.AddPause(302 * MINUTE);
        EXPECT_EQ(estimate.GetState(), TimeRemainingState::DONE);
    }
    CTimeRemaining atOnce;
    atOnce.AddSample(0, 100, 100);
    EXPECT_EQ(atOnce.GetState(), TimeRemainingState::DONE);
    CTimeRemaining before;
    before.AddSample(0, 99, 100);
    EXPECT_EQ(before.GetState(), TimeRemainingState::NOT_KNOWN);
}

TEST(TimeRemaining, PositionThatGoesBackBeginsAnew) {
    CTimeRemaining estimate;
    RunEvenly(estimate, 0, 300);
    estimate.AddSample(301 * MINUTE, 0, SECTORS);
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::NOT_KNOWN);
    ExpectNotKnown(estimate);
    RunEvenly(estimate, 1, 100, 301 * MINUTE);
    ExpectNear(estimate.GetRemaining(), 500 * MINUTE);
}

TEST(TimeRemaining, OtherTotalBeginsAnew) {
    CTimeRemaining estimate;
    RunEvenly(estimate, 0, 300);
    estimate.AddSample(301 * MINUTE, SECTORS / 2 + 1, SECTORS + 1);
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::NOT_KNOWN);
}

TEST(TimeRemaining, TotalOf0IsIgnored) {
    CTimeRemaining estimate;
    RunEvenly(estimate, 0, 300);
    const CTimeRemaining before = estimate;
    estimate.AddSample(301 * MINUTE, 5, 0);
    ExpectSame(estimate, before);
}

TEST(TimeRemaining, ClockThatGoesBackCostsOneStepOnly) {
    CTimeRemaining even;
    RunEvenly(even, 0, 400);
    CTimeRemaining restarted;
    RunEvenly(restarted, 0, 300, 100 * HOUR);
    // From then on the clock began with the machine; what happened in between took as long as usual.
    RunEvenly(restarted, 310, 400);
    ExpectNear(restarted.GetRemaining(), *even.GetRemaining());
    EXPECT_EQ(restarted.GetState(), TimeRemainingState::RUNNING);
}

TEST(TimeRemaining, ClockThatGoesBackALittleCostsOneStepOnly) {
    CTimeRemaining even;
    RunEvenly(even, 0, 400);
    CTimeRemaining setBack;
    RunEvenly(setBack, 0, 300);
    for (std::uint64_t minute = 301; minute <= 400; ++minute) {
        setBack.AddSample((minute - 10) * MINUTE, minute * (SECTORS / 600), SECTORS);
    }
    ExpectNear(setBack.GetRemaining(), *even.GetRemaining());
    EXPECT_EQ(setBack.GetState(), TimeRemainingState::RUNNING);
}

TEST(TimeRemaining, TimeThatGrowsTooLongBeginsAnew) {
    const auto stateAfterSample = [](std::uint64_t latest) {
        auto estimate = CTimeRemaining::FromText("1 2 0 100 0 " + std::to_string(latest) +
                                                 " 9000 5000 4000 6000 10 0 20 9000");
        estimate->AddSample(latest, 20, 100);
        return estimate->GetState();
    };
    constexpr std::uint64_t LONGEST = std::uint64_t{1} << 52U;
    EXPECT_EQ(stateAfterSample(LONGEST), TimeRemainingState::STALLED);
    EXPECT_EQ(stateAfterSample(LONGEST + 1), TimeRemainingState::NOT_KNOWN);
}

TEST(TimeRemaining, PaceThatFallsManyTimesTakesLongerForTheSecondHalf) {
    CTimeRemaining estimate;
    double time = 0;
    double elapsed = 0;
    for (std::uint64_t step = 0; step <= 60; ++step) {
        elapsed = time;
        estimate.AddSample(static_cast<std::uint64_t>(time), step * (SECTORS / 120), SECTORS);
        time += MINUTE * std::pow(1.5, step / 5);
    }
    EXPECT_THAT(estimate.GetRemaining(), Optional(Ge(static_cast<std::uint64_t>(elapsed))));
    EXPECT_LE(*estimate.GetLow(), *estimate.GetRemaining());
    EXPECT_GE(*estimate.GetHigh(), *estimate.GetRemaining());
}

TEST(TimeRemaining, SamplesOfOneTimeDoNotHurt) {
    CTimeRemaining estimate;
    estimate.AddSample(0, 0, SECTORS);
    estimate.AddSample(0, 1000000, SECTORS);
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::NOT_KNOWN);
    RunEvenly(estimate, 1, 300);
    estimate.AddSample(300 * MINUTE, SECTORS / 2 + 1000000, SECTORS);
    ExpectNear(estimate.GetRemaining(), 300 * MINUTE);
}

TEST(TimeRemaining, NothingOverflows) {
    CTimeRemaining estimate;
    for (const std::uint64_t time : {std::uint64_t{0}, MOST / 2, MOST - 1, MOST, std::uint64_t{1}}) {
        for (const std::uint64_t position : {std::uint64_t{0}, std::uint64_t{1}, MOST / 2, MOST - 1}) {
            estimate.AddSample(time, position, MOST);
        }
    }
    CTimeRemaining slow;
    slow.AddSample(0, 0, MOST);
    slow.AddSample(std::uint64_t{1} << 52U, MOST / 100000000, MOST);
    EXPECT_THAT(slow.GetRemaining(), Optional(1000000000000000U));
    EXPECT_THAT(slow.GetHigh(), Optional(1000000000000000U));
}

TEST(TimeRemaining, GoesOnFromItsText) {
    CTimeRemaining whole;
    RunEvenly(whole, 0, 300);
    auto restored = CTimeRemaining::FromText(whole.ToText());
    ASSERT_TRUE(restored.has_value());
    ExpectSame(*restored, whole);
    EXPECT_EQ(restored->ToText(), whole.ToText());
    RunEvenly(whole, 301, 400);
    RunEvenly(*restored, 301, 400);
    ExpectSame(*restored, whole);
    EXPECT_EQ(restored->ToText(), whole.ToText());
}

TEST(TimeRemaining, EveryStateGoesThroughItsText) {
    const std::vector<std::function<void(CTimeRemaining&)>> ways = {
        [](CTimeRemaining&) {},
        [](CTimeRemaining& estimate) { estimate.AddPause(7); },
        [](CTimeRemaining& estimate) { estimate.AddSample(5, 50, 100); },
        [](CTimeRemaining& estimate) { estimate.AddSample(5, 100, 100); },
        [](CTimeRemaining& estimate) { RunEvenly(estimate, 0, 20); },
        [](CTimeRemaining& estimate) {
            RunEvenly(estimate, 0, 20);
            estimate.AddSample(HOUR, SECTORS / 30, SECTORS);
        },
        [](CTimeRemaining& estimate) {
            RunEvenly(estimate, 0, 20);
            estimate.AddPause(HOUR);
        },
    };
    for (const auto& way : ways) {
        CTimeRemaining estimate;
        way(estimate);
        const auto restored = CTimeRemaining::FromText(estimate.ToText());
        ASSERT_TRUE(restored.has_value()) << estimate.ToText();
        ExpectSame(*restored, estimate);
        EXPECT_EQ(restored->ToText(), estimate.ToText());
    }
}

TEST(TimeRemaining, TextStaysShort) {
    CTimeRemaining estimate;
    const std::uint64_t start = MOST - 1000 * HOUR;
    for (std::uint64_t i = 0; i < 1000; ++i) {
        estimate.AddSample(start + i * HOUR, i * (MOST / 1001), MOST);
        EXPECT_LE(estimate.ToText().size(), 3000U);
    }
}

TEST(TimeRemaining, OtherTextIsRefused) {
    const std::string valid = "1 2 0 100 1000 9000 9000 5000 4000 6000 10 0 20 9000";
    ASSERT_TRUE(CTimeRemaining::FromText(valid).has_value());
    EXPECT_TRUE(CTimeRemaining::FromText("1 2 0 100 1000 9007199254740992 9000 5000 4000 6000 10 0 20 9000"));
    for (const char* text : {
             "",
             "1",
             "2 2 0 100 1000 9000 9000 5000 4000 6000 10 0 20 9000",  // another version
             "1 0 0 100 1000 9000 9000 5000 4000 6000 10 0 20 9000",  // no state
             "1 6 0 100 1000 9000 9000 5000 4000 6000 10 0 20 9000",  // no state
             "1 2 2 100 1000 9000 9000 5000 4000 6000 10 0 20 9000",  // no truth value
             "1 2 0 0 1000 9000 9000 5000 4000 6000 10 0 20 9000",    // no total
             "1 2 0 100 1000 9000 9000 5000 4000 6000",               // no points
             "1 2 0 100 1000 8999 9000 5000 4000 6000 10 0 20 9000",  // a change after the last sample
             "1 2 0 100 1000 9000 8999 5000 4000 6000 10 0 20 9000",  // a point after the last change
             "1 2 0 100 1000 9007199254740993 9000 5000 4000 6000 10 0 20 9000",  // a time that is too long
             "1 2 0 100 1000 9000 9000 3999 4000 6000 10 0 20 9000",              // below its range
             "1 2 0 100 1000 9000 9000 6001 4000 6000 10 0 20 9000",              // above its range
             "1 2 0 100 1000 9000 9000 5000 4000 1000000000000001 10 0 20 9000",
             "1 2 0 100 1000 9000 9000 18446744073709551615 4000 6000 10 0 20 9000",
             "1 2 0 100 1000 9000 9000 5000 4000 18446744073709551615 10 0 20 9000",
             "1 2 0 100 1000 9000 9000 5000 4000 6000 10 0 10 9000",   // a position that stays
             "1 2 0 100 1000 9000 9000 5000 4000 6000 10 0 100 9000",  // a position at the end
             "1 2 0 100 1000 9000 9000 5000 4000 6000 10 0 20 0",      // a time that stays
             "1 2 0 100 1000 9000 9000 5000 4000 6000 10 0 20",        // a position without a time
             "1 2 0 100 1000 9000 9000 5000 4000 6000 10 0 20 9000 ",
             "1 2 0 100 1000 9000 9000 5000 4000 6000 10 0 20 9000x",
             "1 2 0 100 1000 9000 9000 5000 4000 6000  10 0 20 9000",
             "1 2 0 -100 1000 9000 9000 5000 4000 6000 10 0 20 9000",
             "1 2 0 100 99999999999999999999 9000 9000 5000 4000 6000 10 0 20 9000",
         }) {
        EXPECT_FALSE(CTimeRemaining::FromText(text).has_value()) << text;
    }
    for (std::size_t end = valid.find(" 0 20"); end != std::string::npos; end = valid.rfind(' ', end - 1)) {
        EXPECT_FALSE(CTimeRemaining::FromText(valid.substr(0, end)).has_value()) << valid.substr(0, end);
    }
    std::string many = "1 2 0 100000 1000 9000 9000 5000 4000 6000";
    for (int i = 0; i < 64; ++i) {
        many += " " + std::to_string(i) + " " + std::to_string(i);
    }
    EXPECT_TRUE(CTimeRemaining::FromText(many).has_value());
    EXPECT_FALSE(CTimeRemaining::FromText(many + " 64 64").has_value());
}

}  // namespace
