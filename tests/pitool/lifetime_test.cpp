// SPDX-License-Identifier: Apache-2.0

#include "lifetime.h"

#include <gtest/gtest.h>

using namespace pitool;

namespace {

/// A drive of a listed model with a wear attribute.
DriveWear Wear(unsigned long hours, unsigned long bytesWritten, unsigned long percentUsed,
               unsigned long ratedTB) {
    DriveWear wear;
    wear.m_PowerOnHours = Known(hours);
    wear.m_BytesWritten = Known(bytesWritten);
    wear.m_PercentUsed = Known(percentUsed, std::string("SMART attribute 233"));
    wear.m_RatedTB = Known(ratedTB);
    wear.m_Origin = WearOrigin::SMART_ATTRIBUTE;
    return wear;
}

constexpr unsigned long TEBIBYTE = 1UL << 40U;

}  // namespace

TEST(EstimateLifetime, ARotatingDiskHasNone) {
    const Lifetime lifetime = EstimateLifetime(Wear(10000, 0, 50, 100), false);
    EXPECT_FALSE(lifetime.m_Applicable);
    EXPECT_FALSE(lifetime.m_RemainingHours);
    EXPECT_EQ(lifetime.m_RemainingHours.m_Reason, "rotating disk");
}

TEST(EstimateLifetime, GoesByTheWearIndicatorOnceItCounts) {
    // 43829 * 50 / 100 is 21914; less 10000 hours.
    const Lifetime lifetime = EstimateLifetime(Wear(10000, 0, 50, 100), true);
    EXPECT_EQ(*lifetime.m_RemainingHours, 11914U);
    EXPECT_EQ(lifetime.m_Basis, LifetimeBasis::WEAR_INDICATOR);
    EXPECT_EQ(lifetime.m_RemainingHours.m_Source, "wear indicator (SMART attribute 233)");
}

TEST(EstimateLifetime, GoesByRatedEnduranceAndBytesWrittenWhileTheWearIsZero) {
    // (1366 - 800) * 20000 / 800
    const Lifetime lifetime = EstimateLifetime(Wear(20000, 800 * TEBIBYTE, 0, 1366), true);
    EXPECT_EQ(*lifetime.m_RemainingHours, 14150U);
    EXPECT_EQ(lifetime.m_Basis, LifetimeBasis::RATED_ENDURANCE);
    EXPECT_EQ(lifetime.m_RemainingHours.m_Source, "rated endurance and bytes written");
}

TEST(EstimateLifetime, GoesByTheDrivesOwnStatistics) {
    DriveWear wear = Wear(10000, 0, 12, 0);
    wear.m_PercentUsed.m_Source = "NVMe health log";
    wear.m_Origin = WearOrigin::DRIVE_STATISTICS;
    const Lifetime lifetime = EstimateLifetime(wear, true);
    EXPECT_EQ(*lifetime.m_RemainingHours, 28569U) << "43829 * 88 / 100 - 10000";
    EXPECT_EQ(lifetime.m_Basis, LifetimeBasis::DRIVE_STATISTICS);
    EXPECT_EQ(lifetime.m_RemainingHours.m_Source, "drive's own statistics (NVMe health log)");
}

TEST(EstimateLifetime, SaysWhenTheServiceSpanLimitsIt) {
    const Lifetime lifetime = EstimateLifetime(Wear(10000, 1, 0, 100), true);
    EXPECT_EQ(*lifetime.m_RemainingHours, 33829U);
    EXPECT_EQ(lifetime.m_RemainingHours.m_Source,
              "power-on hours alone; limited by the service span of five years")
        << "less than a mebibyte counts as nothing";
    EXPECT_EQ(EstimateLifetime(Wear(10000, TEBIBYTE, 0, 100), true).m_RemainingHours.m_Source,
              "rated endurance and bytes written; limited by the service span of five years");
}

TEST(EstimateLifetime, SaysWhenTheServiceSpanIsOver) {
    EXPECT_EQ(EstimateLifetime(Wear(43828, TEBIBYTE, 0, 100), true).m_RemainingHours.m_Source,
              "rated endurance and bytes written; limited by the service span of five years");
    for (const unsigned long hours : {43829UL, 43830UL}) {
        const Lifetime lifetime = EstimateLifetime(Wear(hours, 0, 5, 0), true);
        EXPECT_EQ(*lifetime.m_RemainingHours, 1U);
        EXPECT_EQ(lifetime.m_RemainingHours.m_Source,
                  "wear indicator (SMART attribute 233); the service span of five years is over");
    }
}

TEST(EstimateLifetime, SaysWhenADriveHasWornFasterThanAged) {
    EXPECT_EQ(EstimateLifetime(Wear(438, 0, 99, 0), true).m_RemainingHours.m_Source,
              "wear indicator (SMART attribute 233)");
    const Lifetime lifetime = EstimateLifetime(Wear(439, 0, 99, 0), true);
    EXPECT_EQ(*lifetime.m_RemainingHours, 43390U);
    EXPECT_EQ(lifetime.m_RemainingHours.m_Source,
              "wear indicator (SMART attribute 233); worn faster than aged, only the service span of five "
              "years is left");
}

TEST(EstimateLifetime, SaysWhenADriveIsWornOut) {
    for (const unsigned long percentUsed : {100UL, 2185UL, 4294967396UL}) {
        const Lifetime lifetime = EstimateLifetime(Wear(30000, 0, percentUsed, 0), true);
        EXPECT_EQ(*lifetime.m_RemainingHours, 13829U);
        EXPECT_EQ(
            lifetime.m_RemainingHours.m_Source,
            "wear indicator (SMART attribute 233); worn out, only the service span of five years is left");
    }
    const Lifetime lifetime = EstimateLifetime(Wear(30000, 100 * TEBIBYTE, 0, 100), true);
    EXPECT_EQ(*lifetime.m_RemainingHours, 1U);
    EXPECT_EQ(lifetime.m_RemainingHours.m_Source,
              "rated endurance and bytes written; the rated amount is written");
}

TEST(EstimateLifetime, ANewDriveHasNone) {
    const Lifetime lifetime = EstimateLifetime(Wear(0, 0, 0, 100), true);
    EXPECT_TRUE(lifetime.m_Applicable);
    EXPECT_FALSE(lifetime.m_RemainingHours);
    EXPECT_EQ(lifetime.m_Basis, LifetimeBasis::NONE);
    EXPECT_EQ(lifetime.m_RemainingHours.m_Reason, "new drive");
    EXPECT_TRUE(EstimateLifetime(Wear(1, 0, 0, 100), true).m_RemainingHours);
}

TEST(EstimateLifetime, ZeroWearWithoutRatingGoesByThePowerOnHoursAlone) {
    DriveWear wear = Wear(12000, 5, 0, 0);
    wear.m_RatedTB = Unknown<unsigned long>("the list rates this family by wear cycles, 3000");
    const Lifetime lifetime = EstimateLifetime(wear, true);
    EXPECT_EQ(*lifetime.m_RemainingHours, 31829U);
    EXPECT_EQ(lifetime.m_Basis, LifetimeBasis::POWER_ON_HOURS);
}

TEST(EstimateLifetime, WithoutWearAndBytesTheReasonIsTold) {
    DriveWear wear = Wear(12000, 5 * TEBIBYTE, 0, 100);
    wear.m_Origin = WearOrigin::NONE;
    wear.m_PercentUsed = Unknown<unsigned long>("no SMART attribute 233");
    EXPECT_EQ(EstimateLifetime(wear, true).m_Basis, LifetimeBasis::RATED_ENDURANCE);
    wear.m_BytesWritten = Unknown<unsigned long>("no SMART attribute 225");
    EXPECT_EQ(EstimateLifetime(wear, true).m_RemainingHours.m_Reason, "no SMART attribute 233");
    wear.m_RatedTB = Unknown<unsigned long>("not in the endurance list");
    wear.m_PercentUsed = Unknown<unsigned long>("not reported");
    EXPECT_EQ(EstimateLifetime(wear, true).m_RemainingHours.m_Reason, "not in the endurance list");
}

TEST(EstimateLifetime, WithoutHoursThereIsNone) {
    DriveWear wear = Wear(0, 5, 10, 100);
    wear.m_PowerOnHours = Unknown<unsigned long>("not reported");
    EXPECT_EQ(EstimateLifetime(wear, true).m_RemainingHours.m_Reason, "power-on hours unknown: not reported");
}
