// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/remaining_lifetime.h>

#include <limits>
#include <ostream>

namespace PI::Test {
namespace {

constexpr unsigned long ALL_ONES = std::numeric_limits<unsigned long>::max();
constexpr unsigned long SPAN = 43829;
constexpr unsigned long MIB = 1UL << 20;

struct Lifetime {
    bool m_IsKnown;
    unsigned long m_Hours;
};

bool operator==(const Lifetime& left, const Lifetime& right) {
    return left.m_IsKnown == right.m_IsKnown && left.m_Hours == right.m_Hours;
}

std::ostream& operator<<(std::ostream& stream, const Lifetime& lifetime) {
    return stream << lifetime.m_IsKnown << ' ' << lifetime.m_Hours;
}

Lifetime Known(unsigned long hours) {
    return {true, hours};
}

Lifetime Compute(unsigned long powerOnHours, unsigned long bytesWritten, unsigned percentUsed,
                 unsigned long enduranceTB) {
    Lifetime lifetime = {false, 7};
    lifetime.m_IsKnown = CPluginHelper::ComputeRemainingLifeTime(powerOnHours, bytesWritten, percentUsed,
                                                                 enduranceTB, lifetime.m_Hours);
    return lifetime;
}

// --- Wear in percent

TEST(RemainingLifeTimeByWear, KnownDrives) {
    EXPECT_EQ(Compute(50000, 0, 5, 0), Known(1));
    EXPECT_EQ(Compute(10000, 0, 50, 0), Known(11914));
    EXPECT_EQ(Compute(10000, 0, 90, 0), Known(33829));
    EXPECT_EQ(Compute(0, 0, 1, 0), Known(43390));
    EXPECT_EQ(Compute(0, 0, 50, 0), Known(21914));
    EXPECT_EQ(Compute(0, 0, 99, 0), Known(438));
}

TEST(RemainingLifeTimeByWear, AWornOutDriveHasTheCeilingLeftOrOneHour) {
    EXPECT_EQ(Compute(1, 0, 100, 0), Known(SPAN - 1));
    EXPECT_EQ(Compute(0, 0, 100, 0), Known(1));
}

TEST(RemainingLifeTimeByWear, PercentAbove100Counts100) {
    for (const unsigned percent : {101U, 255U, 1000U, 0x80000000U, 0xFFFFFFFFU}) {
        for (const unsigned long hours : {0UL, 1UL, 1000UL, SPAN - 1, SPAN, SPAN + 1, ALL_ONES}) {
            EXPECT_EQ(Compute(hours, 0, percent, 0), Compute(hours, 0, 100, 0)) << percent << ' ' << hours;
        }
    }
}

TEST(RemainingLifeTimeByWear, TheEndOfTheSpanLeavesOneHour) {
    EXPECT_EQ(Compute(SPAN - 1, 0, 1, 0), Known(1));
    EXPECT_EQ(Compute(SPAN, 0, 1, 0), Known(1));
    EXPECT_EQ(Compute(SPAN + 1, 0, 1, 0), Known(1));
    EXPECT_EQ(Compute(ALL_ONES, 0, 1, 0), Known(1));
}

TEST(RemainingLifeTimeByWear, TheUnwornHoursDecideUpToThemselves) {
    // 50 %: 21914 hours.
    EXPECT_EQ(Compute(21913, 0, 50, 0), Known(1));
    EXPECT_EQ(Compute(21914, 0, 50, 0), Known(1));
    EXPECT_EQ(Compute(21915, 0, 50, 0), Known(SPAN - 21915));
    EXPECT_EQ(Compute(21912, 0, 50, 0), Known(2));
}

TEST(RemainingLifeTimeByWear, WrittenBytesAndEnduranceDoNotMatter) {
    EXPECT_EQ(Compute(10000, ALL_ONES, 50, 1), Known(11914));
    EXPECT_EQ(Compute(10000, 1, 50, ALL_ONES), Known(11914));
}

// --- Written bytes

TEST(RemainingLifeTimeByRate, ANewDriveTellsNothing) {
    EXPECT_EQ(Compute(0, 0, 0, 70), (Lifetime{false, ALL_ONES}));
    EXPECT_EQ(Compute(0, ALL_ONES, 0, 70), (Lifetime{false, ALL_ONES}));
    EXPECT_EQ(Compute(0, ALL_ONES, 0, ALL_ONES), (Lifetime{false, ALL_ONES}));
}

TEST(RemainingLifeTimeByRate, WithoutEnduranceTheCeilingIsLeft) {
    for (const unsigned long written : {0UL, 1UL, MIB, ALL_ONES}) {
        EXPECT_EQ(Compute(1000, written, 0, 0), Known(42829));
    }
}

TEST(RemainingLifeTimeByRate, LessThanAMebibyteWrittenCountsAsNothing) {
    EXPECT_EQ(Compute(1000, 0, 0, 70), Known(42829));
    EXPECT_EQ(Compute(1000, MIB - 1, 0, 70), Known(42829));
    EXPECT_EQ(Compute(43828, MIB - 1, 0, 70), Known(1));
}

TEST(RemainingLifeTimeByRate, TheRateSoFarIsCarriedOn) {
    // 1 TB of 4 TB in 1000 hours: 3000 more.
    EXPECT_EQ(Compute(1000, MIB << 20, 0, 4), Known(3000));
    // 3 TB of 4 TB in 1000 hours: a third of that.
    EXPECT_EQ(Compute(1000, 3 * (MIB << 20), 0, 4), Known(333));
    // The rest of the last mebibyte does not count.
    EXPECT_EQ(Compute(1000, (MIB << 20) + MIB - 1, 0, 4), Known(3000));
    EXPECT_EQ(Compute(1000, (MIB << 20) + MIB, 0, 4), Known(2999));
}

TEST(RemainingLifeTimeByRate, AWornOutDriveHasOneHourLeft) {
    EXPECT_EQ(Compute(1000, MIB << 20, 0, 1), Known(1));
    EXPECT_EQ(Compute(1000, ALL_ONES, 0, 1), Known(1));
}

TEST(RemainingLifeTimeByRate, TheCeilingIsNotExceeded) {
    // 1 TB of 70 TB in 1000 hours would last 69000 hours.
    EXPECT_EQ(Compute(1000, MIB << 20, 0, 70), Known(42829));
    // Exactly the ceiling, and one hour less: 43829 hours in all against the endurance.
    EXPECT_EQ(Compute(1, MIB << 20, 0, SPAN), Known(SPAN - 1));
    EXPECT_EQ(Compute(1, MIB << 20, 0, SPAN - 1), Known(SPAN - 2));
    EXPECT_EQ(Compute(1, MIB << 20, 0, SPAN + 1), Known(SPAN - 1));
}

TEST(RemainingLifeTimeByRate, TheEndOfTheSpanLeavesOneHour) {
    for (const unsigned long hours : {SPAN - 1, SPAN, SPAN + 1, 50000UL, ALL_ONES}) {
        EXPECT_EQ(Compute(hours, MIB << 20, 0, 70), Known(1)) << hours;
        EXPECT_EQ(Compute(hours, 0, 0, 70), Known(1)) << hours;
        EXPECT_EQ(Compute(hours, ALL_ONES, 0, 0), Known(1)) << hours;
    }
}

TEST(RemainingLifeTimeByRate, TheEnduranceWrapsAt64Bits) {
    // 2^44 TB are 2^64 MiB, which is nothing.
    EXPECT_EQ(Compute(1000, MIB << 20, 0, 1UL << 44), Known(42829));
    // 2^44 + 4 TB count as 4.
    EXPECT_EQ(Compute(1000, MIB << 20, 0, (1UL << 44) + 4), Known(3000));
    // The largest endurance that does not wrap.
    EXPECT_EQ(Compute(1, MIB << 20, 0, (1UL << 44) - 1), Known(SPAN - 1));
}

TEST(RemainingLifeTimeByRate, TheProductWrapsAt64Bits) {
    // (2^54 + 2^20 - 2^20 MiB) x 1024 hours is 2^64: nothing left, so one hour; without wrapping, the
    // ceiling.
    EXPECT_EQ(Compute(1024, MIB << 20, 0, (1UL << 34) + 1), Known(1));
    // One terabyte less stays below 2^64.
    EXPECT_EQ(Compute(1024, MIB << 20, 0, 1UL << 34), Known(SPAN - 1024));
}

// --- What it rests on, and what limits it

struct Case {
    std::uint64_t m_PowerOnHours;
    std::uint64_t m_BytesWritten;
    std::uint32_t m_PercentUsed;
    std::uint64_t m_EnduranceTB;
    std::uint64_t m_Hours;
    _LIFETIME_BASIS m_Basis;
    _LIFETIME_LIMIT m_Limit;
};

TEST(RemainingLifetime, SaysWhatItRestsOnAndWhatLimitsIt) {
    using namespace LifetimeBasis;
    namespace Limit = LifetimeLimit;
    constexpr std::uint64_t TB = MIB << 20;
    const Case cases[] = {
        // nothing is known, or the drive is new
        {0, 0, 0, 0, ALL_ONES, NOTHING, Limit::NOTHING},
        {0, TB, 0, 70, ALL_ONES, NOTHING, Limit::NOTHING},
        // age alone: of amount written and rating one is nothing
        {1, 0, 0, 0, SPAN - 1, AGE, Limit::SERVICE_SPAN},
        {1, 0, 0, 70, SPAN - 1, AGE, Limit::SERVICE_SPAN},
        {1, MIB - 1, 0, 70, SPAN - 1, AGE, Limit::SERVICE_SPAN},
        {1, TB, 0, 0, SPAN - 1, AGE, Limit::SERVICE_SPAN},
        {SPAN - 1, 0, 0, 70, 1, AGE, Limit::SERVICE_SPAN},
        {SPAN, 0, 0, 70, 1, AGE, Limit::SERVICE_SPAN_OVER},
        {ALL_ONES, 0, 0, 0, 1, AGE, Limit::SERVICE_SPAN_OVER},
        // the rate: one hour below the span, at it, and above
        {1, TB, 0, SPAN - 1, SPAN - 2, BYTES_WRITTEN, Limit::RATE},
        {1, TB, 0, SPAN, SPAN - 1, BYTES_WRITTEN, Limit::SERVICE_SPAN},
        {1, TB, 0, SPAN + 1, SPAN - 1, BYTES_WRITTEN, Limit::SERVICE_SPAN},
        {1000, 4 * TB - MIB, 0, 4, 1, BYTES_WRITTEN, Limit::RATE},
        {1000, 4 * TB, 0, 4, 1, BYTES_WRITTEN, Limit::WORN_OUT},
        {1000, 5 * TB, 0, 4, 1, BYTES_WRITTEN, Limit::WORN_OUT},
        {SPAN - 1, 4 * TB, 0, 4, 1, BYTES_WRITTEN, Limit::WORN_OUT},
        {SPAN, 4 * TB, 0, 4, 1, BYTES_WRITTEN, Limit::SERVICE_SPAN_OVER},
        {SPAN + 1, TB, 0, 4, 1, BYTES_WRITTEN, Limit::SERVICE_SPAN_OVER},
        // the wear, whatever is written: 50 percent leave 21914 hours
        {0, 0, 1, 0, 43390, WEAR, Limit::WEAR},
        {21914, TB, 50, 1, 1, WEAR, Limit::WEAR},
        {21915, TB, 50, 1, SPAN - 21915, WEAR, Limit::WORN_EARLY},
        {1, 0, 99, 0, 437, WEAR, Limit::WEAR},
        {0, 0, 100, 0, 1, WEAR, Limit::WORN_OUT},
        {1, 0, 100, 0, SPAN - 1, WEAR, Limit::WORN_OUT},
        {1, 0, 101, 0, SPAN - 1, WEAR, Limit::WORN_OUT},
        {1, 0, 0xFFFFFFFF, 0, SPAN - 1, WEAR, Limit::WORN_OUT},
        {SPAN - 1, 0, 5, 0, 1, WEAR, Limit::WORN_EARLY},
        {SPAN, 0, 5, 0, 1, WEAR, Limit::SERVICE_SPAN_OVER},
        {SPAN + 1, 0, 100, 0, 1, WEAR, Limit::SERVICE_SPAN_OVER},
    };
    for (const Case& drive : cases) {
        SCOPED_TRACE(testing::Message()
                     << drive.m_PowerOnHours << " hours, " << drive.m_BytesWritten << " bytes, "
                     << drive.m_PercentUsed << " %, " << drive.m_EnduranceTB << " TB");
        const CRemainingLifetime lifetime(drive.m_PowerOnHours, drive.m_BytesWritten, drive.m_PercentUsed,
                                          drive.m_EnduranceTB);
        EXPECT_EQ(lifetime.GetHours(), drive.m_Hours);
        EXPECT_EQ(lifetime.GetBasis(), drive.m_Basis);
        EXPECT_EQ(lifetime.GetLimit(), drive.m_Limit);
        EXPECT_EQ(lifetime.IsKnown(), drive.m_Basis != NOTHING);
    }
}

}  // namespace
}  // namespace PI::Test
