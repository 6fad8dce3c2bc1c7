// SPDX-License-Identifier: Apache-2.0

#include "eta_estimate.h"

#include "eta_sample.h"

#include <gtest/gtest.h>

using namespace pitool;

namespace {

/// Takes a sample that must be taken and gives the estimate after it.
std::string After(EtaEstimate& estimate, int percent, std::uint64_t timeMs) {
    std::string reason;
    EXPECT_TRUE(estimate.Add(percent, timeMs, reason)) << reason;
    return estimate.Text();
}

}  // namespace

// One percent a minute: 100 percent at minute 100. The first two samples count at least a minute in all, the
// third (and those after it) rounds up by 100 milliseconds a whole percent.
TEST(EtaEstimate, FollowsASteadyPace) {
    EtaEstimate estimate;
    EXPECT_EQ(After(estimate, 0, 0), "01:40:00 remaining");           // 100 * 60000
    EXPECT_EQ(After(estimate, 10, 600'000), "15:00:00 remaining");    // 90 * 600000
    EXPECT_EQ(After(estimate, 20, 1'200'000), "01:20:00 remaining");  // 100 * (1200000 / 20 + 1) - 1200000
    EXPECT_EQ(After(estimate, 50, 3'000'000), "00:50:00 remaining");
}

TEST(EtaEstimate, BelowASecondIsSaidInWords) {
    EtaEstimate estimate;
    After(estimate, 98, 0);
    After(estimate, 99, 1'000'000);
    EXPECT_EQ(After(estimate, 100, 2'000'000), "00:01:00 remaining");
    EXPECT_EQ(After(estimate, 100, 2'000'100), "less than a second remaining");
}

TEST(EtaEstimate, TimeMustNotRunBackwards) {
    EtaEstimate estimate;
    After(estimate, 1, 1000);
    std::string reason;
    EXPECT_FALSE(estimate.Add(2, 999, reason));
    EXPECT_EQ(reason, "the time 999 lies before that of the sample before, 1000");
    EXPECT_TRUE(estimate.Add(2, 1000, reason));
}

TEST(EtaEstimate, TheLatestTimeDoesNotWrap) {
    EtaEstimate estimate;
    After(estimate, 0, 0);
    EXPECT_EQ(After(estimate, 1, LATEST_TIME), "> 99:59:59 remaining");
}
