// SPDX-License-Identifier: Apache-2.0

#include "print/units.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

namespace pitool {
namespace {

TEST(SizeText, IsDecimalAsMakersPrintIt) {
    const std::pair<std::uint64_t, const char*> sizes[] = {
        {0, ""},
        {999, "999 bytes"},
        {1000, "1 kB"},
        {36401479680, "36.4 GB"},
        {99949999999, "99.9 GB"},
        {146815733760, "147 GB"},
        {480103981056, "480 GB"},
        {960197124096, "960 GB"},
        {999499999999, "999 GB"},
        {999500000000, "1 TB"},
        {1000204886016, "1 TB"},
        {1920383410176, "1.92 TB"},
        {15360950534144, "15.36 TB"},
        {18000207937536, "18 TB"},
        {UINT64_MAX, "18446.74 PB"},
    };
    for (const auto& [bytes, text] : sizes) {
        EXPECT_EQ(SizeText(bytes), text) << bytes;
    }
}

TEST(AgeText, GrowsFromHoursToYears) {
    EXPECT_EQ(AgeText(0), "0 h");
    EXPECT_EQ(AgeText(23), "23 h");
    EXPECT_EQ(AgeText(24), "1 d");
    EXPECT_EQ(AgeText(876), "36 d");
    EXPECT_EQ(AgeText(877), "0.1 y");
    EXPECT_EQ(AgeText(29804), "3.4 y");
    EXPECT_EQ(AgeText(87660), "10 y");
}

std::string LifeOf(std::uint64_t hours, std::uint32_t wear) {
    PI::CWearReading reading;
    reading.SetPowerOnHours(hours);
    reading.SetWear(wear);
    return LifeText(PI::CWearForecast({reading}));
}

TEST(LifeText, ShowsTheRangeInYears) {
    EXPECT_EQ(LifeText(PI::CWearForecast()), "-");
    EXPECT_EQ(LifeOf(20000, 100), "worn");
    EXPECT_EQ(LifeOf(20000, 50), "2.1 y (1.1-8.7)");
    EXPECT_EQ(LifeOf(20000, 0), "-");
}

TEST(LifeText, DoesNotCountBeyondThirtyYears) {
    EXPECT_EQ(LifeOf(100000, 50), "10 y (5.6-)");  // high end: 44 years
    EXPECT_EQ(LifeOf(20000, 4), "> 30 y (24-)");
    EXPECT_EQ(LifeOf(20000, 3), "> 30 y");  // low end: 31 years
}

TEST(TimeText, IsISO8601WithItsZone) {
    EXPECT_EQ(TimeText(0), "");
    EXPECT_EQ(TimeText(1700000000), "2023-11-14T22:13:20Z");
    EXPECT_EQ(TimeText(253402300799), "9999-12-31T23:59:59Z");
    EXPECT_EQ(TimeText(253402300800), "");
    EXPECT_EQ(TimeText(INT64_MAX), "");
}

}  // namespace
}  // namespace pitool
