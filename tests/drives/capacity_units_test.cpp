// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>

#include "support/random_seed.h"

namespace PI::Test {
namespace {

constexpr unsigned long HIGHEST = std::numeric_limits<unsigned long>::max();
constexpr int UNITS[] = {21025, 21003, 21002, 21022, 21026, 21027};

constexpr unsigned long PowerOfTwo(int exponent) {
    return 1UL << exponent;
}

struct Scaled {
    float m_Value;
    int m_Unit;
};

bool operator==(const Scaled& left, const Scaled& right) {
    return left.m_Value == right.m_Value && left.m_Unit == right.m_Unit;
}

std::ostream& operator<<(std::ostream& stream, const Scaled& scaled) {
    return stream << std::hexfloat << scaled.m_Value << " of unit " << scaled.m_Unit;
}

Scaled Convert(unsigned long bytes) {
    Scaled scaled = {-1, -1};
    _UNITS unit = Units::UNSPECIFIED;
    EXPECT_TRUE(CPluginHelper::ConvertBytesToOtherUnit(bytes, scaled.m_Value, unit));
    scaled.m_Unit = unit;
    return scaled;
}

// Rounds to the 24 significant bits of single precision, to the even neighbour from half way, and then takes
// the largest unit that the rounded number reaches: in integers only.
Scaled Expected(unsigned long bytes) {
    __extension__ using Wide = unsigned __int128;
    int bits = 0;
    while (bits < 64 && bytes >> bits != 0) {
        ++bits;
    }
    Wide rounded = bytes;
    if (bits > 24) {
        const int dropped = bits - 24;
        const Wide half = Wide(1) << (dropped - 1);
        const Wide rest = rounded & ((Wide(1) << dropped) - 1);
        rounded >>= dropped;
        if (rest > half || (rest == half && (rounded & 1) != 0)) {
            ++rounded;
        }
        rounded <<= dropped;
    }
    int step = 0;
    while (step < 5 && rounded >> (10 * (step + 1)) != 0) {
        ++step;
    }
    const double value = std::ldexp(static_cast<double>(rounded), -10 * step);
    return {static_cast<float>(value), UNITS[step]};
}

TEST(ConvertBytesToOtherUnit, ScalesKnownCounts) {
    EXPECT_EQ(Convert(0), (Scaled{0.0F, 21025}));
    EXPECT_EQ(Convert(1), (Scaled{1.0F, 21025}));
    EXPECT_EQ(Convert(1023), (Scaled{1023.0F, 21025}));
    EXPECT_EQ(Convert(1024), (Scaled{1.0F, 21003}));
    EXPECT_EQ(Convert(1025), (Scaled{1.0009765625F, 21003}));
    EXPECT_EQ(Convert(1536), (Scaled{1.5F, 21003}));
    EXPECT_EQ(Convert(PowerOfTwo(20) - 1), (Scaled{1023.9990234375F, 21003}));
    EXPECT_EQ(Convert(PowerOfTwo(50)), (Scaled{1.0F, 21027}));
    EXPECT_EQ(Convert(PowerOfTwo(60)), (Scaled{1024.0F, 21027}));
    EXPECT_EQ(Convert(PowerOfTwo(63)), (Scaled{8192.0F, 21027}));
    EXPECT_EQ(Convert(HIGHEST), (Scaled{16384.0F, 21027}));
}

TEST(ConvertBytesToOtherUnit, EachUnitBeginsAtItsPowerOf1024) {
    for (int step = 1; step <= 5; ++step) {
        EXPECT_EQ(Convert(PowerOfTwo(10 * step)), (Scaled{1.0F, UNITS[step]}));
        EXPECT_EQ(Convert(PowerOfTwo(10 * step + 9)), (Scaled{512.0F, UNITS[step]}));
    }
}

TEST(ConvertBytesToOtherUnit, CountsThatRoundUpToTheNextUnitBelongToIt) {
    // The largest count that single precision keeps below 2^k, and the next one, which it takes for 2^k.
    for (int step = 3; step <= 5; ++step) {
        const int exponent = 10 * step;
        const unsigned long halfWay = PowerOfTwo(exponent) - PowerOfTwo(exponent - 25);
        const float largestBelow = std::nextafter(1024.0F, 0.0F);
        EXPECT_EQ(Convert(halfWay - 1), (Scaled{largestBelow, UNITS[step - 1]})) << exponent;
        EXPECT_EQ(Convert(halfWay), (Scaled{1.0F, UNITS[step]})) << exponent;
        EXPECT_EQ(Convert(PowerOfTwo(exponent) - 1), (Scaled{1.0F, UNITS[step]})) << exponent;
    }
}

TEST(ConvertBytesToOtherUnit, RoundsOnceAboveTheSignedRange) {
    const unsigned long halfWay = PowerOfTwo(63) + PowerOfTwo(39);
    const float lower = 8192.0F;
    const float upper = std::nextafter(lower, 16384.0F);
    EXPECT_EQ(Convert(halfWay - 1), (Scaled{lower, 21027}));
    EXPECT_EQ(Convert(halfWay), (Scaled{lower, 21027}));  // to the even neighbour
    EXPECT_EQ(Convert(halfWay + 1), (Scaled{upper, 21027}));
    const unsigned long nextHalfWay = halfWay + PowerOfTwo(40);
    const float next = std::nextafter(upper, 16384.0F);
    EXPECT_EQ(Convert(nextHalfWay - 1), (Scaled{upper, 21027}));
    EXPECT_EQ(Convert(nextHalfWay), (Scaled{next, 21027}));
}

TEST(ConvertBytesToOtherUnit, RoundsAsSinglePrecisionDoesAroundEveryPowerOfTwo) {
    std::set<unsigned long> counts = {0, HIGHEST};
    for (int exponent = 0; exponent < 64; ++exponent) {
        for (int lower = -1; lower < exponent; ++lower) {
            const unsigned long distance = lower < 0 ? 0 : PowerOfTwo(lower);
            for (const unsigned long nudge : {0UL, 1UL, HIGHEST}) {
                counts.insert(PowerOfTwo(exponent) + distance + nudge);
                counts.insert(PowerOfTwo(exponent) - distance + nudge);
            }
        }
    }
    EXPECT_GT(counts.size(), 8000U);
    for (const unsigned long count : counts) {
        ASSERT_EQ(Convert(count), Expected(count)) << count;
    }
}

TEST(ConvertBytesToOtherUnit, RoundsAsSinglePrecisionDoesForRandomCounts) {
    std::mt19937_64 random(RandomSeed());
    for (int round = 0; round < 200000; ++round) {
        const unsigned long count = random() >> Below(random, 64);
        ASSERT_EQ(Convert(count), Expected(count)) << count;
    }
}

TEST(CapacityUnits, HaveTheirNumbers) {
    EXPECT_EQ(Units::BYTES, 21025);
    EXPECT_EQ(Units::KILOBYTES, 21003);
    EXPECT_EQ(Units::MEGABYTES, 21002);
    EXPECT_EQ(Units::GIGABYTES, 21022);
    EXPECT_EQ(Units::TERABYTES, 21026);
    EXPECT_EQ(Units::PETABYTES, 21027);
    EXPECT_EQ(Units::UNSPECIFIED, 21006);
}

}  // namespace
}  // namespace PI::Test
