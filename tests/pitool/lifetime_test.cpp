// SPDX-License-Identifier: Apache-2.0

#include "lifetime.h"

#include <pi/vocabulary.h>

#include <gtest/gtest.h>

using namespace pitool;

namespace {

namespace F = PI::HealthFigure;

constexpr std::int64_t TEBIBYTE = std::int64_t{1} << 40U;
constexpr const char* RATED = "MZ7LH960HAJR-00005";         // 1366 TB
constexpr const char* CONTRADICTED = "MZ7KM120HAFD-00005";  // 7593 TB or 2626 TB
constexpr const char* UNRATED = "SAMPLE";

/// A solid-state drive that tells all of this itself.
PI::CDriveHealth Drive(const char* model, std::int64_t hours, std::int64_t bytesWritten,
                       std::int64_t percentUsed) {
    PI::CDriveHealth health(PI::DriveProtocol::NVME, model);
    health.TakeFigure(F::POWER_ON_HOURS, hours, PI::FigureSource::NVME_LOG, 2);
    health.TakeFigure(F::BYTES_WRITTEN, bytesWritten, PI::FigureSource::NVME_LOG, 2);
    health.TakeFigure(F::WEAR, percentUsed, PI::FigureSource::NVME_LOG, 2);
    return health;
}

std::string SourceOf(const PI::CDriveHealth& health) {
    return EstimateLifetime(health, true).m_RemainingHours.m_Source;
}

std::string ReasonOf(const PI::CDriveHealth& health) {
    return EstimateLifetime(health, true).m_RemainingHours.m_Reason;
}

}  // namespace

TEST(EstimateLifetime, ARotatingDiskHasNone) {
    const Lifetime lifetime = EstimateLifetime(Drive(RATED, 10000, 0, 50), false);
    EXPECT_FALSE(lifetime.m_Applicable);
    EXPECT_FALSE(lifetime.m_RemainingHours);
    EXPECT_EQ(lifetime.m_RemainingHours.m_Reason, "rotating disk");
}

TEST(EstimateLifetime, GoesByTheDrivesOwnStatistics) {
    const Lifetime lifetime = EstimateLifetime(Drive(UNRATED, 10000, 0, 12), true);
    EXPECT_EQ(*lifetime.m_RemainingHours, 28569U) << "43829 * 88 / 100 - 10000";
    EXPECT_STREQ(lifetime.m_Basis, "drive's own statistics");
    EXPECT_STREQ(lifetime.m_Limit, "wear");
    EXPECT_EQ(lifetime.m_RemainingHours.m_Source, "drive's own statistics (NVMe log 02h)");
}

TEST(EstimateLifetime, GoesByAWearIndicator) {
    PI::CDriveHealth health(PI::DriveProtocol::ATA, "INTEL SSDSC2BB480G7");
    health.TakeFigure(F::POWER_ON_HOURS, 10000);
    ASSERT_TRUE(health.TakeAttribute(233, nullptr, 0, 50, 50, 0, 0));
    const Lifetime lifetime = EstimateLifetime(health, true);
    EXPECT_EQ(*lifetime.m_RemainingHours, 11914U) << "43829 * 50 / 100 - 10000";
    EXPECT_STREQ(lifetime.m_Basis, "wear indicator");
    EXPECT_EQ(lifetime.m_RemainingHours.m_Source, "wear indicator (SMART attribute 233)");
}

TEST(EstimateLifetime, GoesByRatedEnduranceAndBytesWrittenWhileTheWearIsZero) {
    const Lifetime lifetime = EstimateLifetime(Drive(RATED, 20000, 800 * TEBIBYTE, 0), true);
    EXPECT_EQ(*lifetime.m_RemainingHours, 14150U) << "(1366 - 800) * 20000 / 800";
    EXPECT_STREQ(lifetime.m_Basis, "rated endurance and bytes written");
    EXPECT_STREQ(lifetime.m_Limit, "rate");
}

TEST(EstimateLifetime, SaysWhatLimitsIt) {
    EXPECT_EQ(SourceOf(Drive(RATED, 10000, 1, 0)),
              "power-on hours alone; limited by the service span of five years")
        << "less than a mebibyte counts as nothing";
    EXPECT_EQ(SourceOf(Drive(RATED, 43828, TEBIBYTE, 0)),
              "rated endurance and bytes written; limited by the service span of five years");
    EXPECT_EQ(SourceOf(Drive(UNRATED, 43829, 0, 5)),
              "drive's own statistics (NVMe log 02h); the service span of five years is over");
    EXPECT_EQ(SourceOf(Drive(UNRATED, 438, 0, 99)), "drive's own statistics (NVMe log 02h)");
    EXPECT_EQ(SourceOf(Drive(UNRATED, 439, 0, 99)),
              "drive's own statistics (NVMe log 02h); worn faster than aged, only the service span of five "
              "years is left");
    for (const std::int64_t worn : {100, 254, 1000}) {
        EXPECT_EQ(SourceOf(Drive(UNRATED, 30000, 0, worn)),
                  "drive's own statistics (NVMe log 02h); worn out, only the service span of five years is "
                  "left");
    }
    EXPECT_EQ(SourceOf(Drive(RATED, 30000, 1366 * TEBIBYTE, 0)),
              "rated endurance and bytes written; the rated amount is written");
}

TEST(EstimateLifetime, NamesWhatLimitsItForPrograms) {
    const auto limit = [](const PI::CDriveHealth& health) {
        return std::string(EstimateLifetime(health, true).m_Limit);
    };
    EXPECT_EQ(limit(Drive(RATED, 10000, TEBIBYTE, 0)), "service span");
    EXPECT_EQ(limit(Drive(UNRATED, 43829, 0, 5)), "service span over");
    EXPECT_EQ(limit(Drive(UNRATED, 439, 0, 99)), "worn early");
    EXPECT_EQ(limit(Drive(UNRATED, 30000, 0, 100)), "worn out");
    EXPECT_EQ(limit(Drive(UNRATED, 0, 0, 0)), "") << "a new drive";
}

TEST(EstimateLifetime, ANewDriveHasNone) {
    EXPECT_EQ(ReasonOf(Drive(RATED, 0, 0, 0)), "new drive");
    EXPECT_TRUE(EstimateLifetime(Drive(RATED, 1, 0, 0), true).m_RemainingHours);
}

TEST(EstimateLifetime, ADoubtfulWearIsLeftOutAndMakesTheEstimateDoubtful) {
    const std::string reason = "NVMe log 02h says 255 percent, which stands for more than 254 or for nothing";
    const Lifetime lifetime = EstimateLifetime(Drive(RATED, 20000, 800 * TEBIBYTE, 255), true);
    EXPECT_EQ(*lifetime.m_RemainingHours, 14150U) << "as if the wear were unknown";
    EXPECT_EQ(lifetime.m_RemainingHours.m_Reason, reason);
    const Lifetime without = EstimateLifetime(Drive(UNRATED, 20000, 800 * TEBIBYTE, 255), true);
    EXPECT_FALSE(without.m_RemainingHours);
    EXPECT_EQ(without.m_RemainingHours.m_Reason, "wear: " + reason + "; rating: not in the endurance list");
}

TEST(EstimateLifetime, ADoubtfulRatingIsUsedAndMakesTheEstimateDoubtful) {
    EXPECT_EQ(ReasonOf(Drive(CONTRADICTED, 20000, 800 * TEBIBYTE, 0)),
              "published ratings differ: 7593 TB and 2626 TB");
    EXPECT_EQ(ReasonOf(Drive(CONTRADICTED, 10000, 0, 12)), "") << "it does not rest on the rating";
}

TEST(EstimateLifetime, WithoutWearAndAmountTheReasonIsTold) {
    PI::CDriveHealth health(PI::DriveProtocol::NVME, UNRATED);
    EXPECT_EQ(ReasonOf(health), "wear: not reported; rating: not in the endurance list");
    EXPECT_EQ(ReasonOf(PI::CDriveHealth(PI::DriveProtocol::NVME, RATED)),
              "wear: not reported; bytes written: not reported");
    health.TakeFigure(F::WEAR, 10, PI::FigureSource::NVME_LOG, 2);
    EXPECT_EQ(ReasonOf(health), "power-on hours unknown: not reported");
}
