// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <velkx/system_time.h>

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <tuple>

namespace VELKX {

static bool operator==(const _DATE& left, const _DATE& right) {
    const auto fields = [](const _DATE& date) {
        return std::tie(date.m_Year, date.m_Month, date.m_Day, date.m_Hour, date.m_Minute, date.m_Second);
    };
    return fields(left) == fields(right);
}

static void PrintTo(const _DATE& date, std::ostream* stream) {
    *stream << date.m_Year << '-' << date.m_Month << '-' << date.m_Day << ' ' << date.m_Hour << ':'
            << date.m_Minute << ':' << date.m_Second;
}

}  // namespace VELKX

namespace {

using VELKX::_DATE;

/// Puts the process into a time zone while it lives.
class TimeZone {
public:
    explicit TimeZone(const char* zone) {
        if (const char* before = std::getenv("TZ")) {
            m_Before = before;
        }
        setenv("TZ", zone, 1);
    }
    ~TimeZone() {
        if (m_Before) {
            setenv("TZ", m_Before->c_str(), 1);
        } else {
            unsetenv("TZ");
        }
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    std::optional<std::string> m_Before;
};

_DATE DateOf(std::uint64_t seconds, std::uint64_t milliseconds = 0) {
    _DATE date = {-1, -1, -1, -1, -1, -1};
    VELKX::CSystemTime::GetDate(seconds * 1000 + milliseconds, date);
    return date;
}

// Written as rules, so that the machine needs no time-zone files.
constexpr const char* CENTRAL_EUROPE = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* INDIA = "IST-5:30";
constexpr const char* US_PACIFIC = "PST8PDT,M3.2.0,M11.1.0";

TEST(GetDate, EpochIsTheFirstOfJanuary1970) {
    const TimeZone zone("UTC0");

    EXPECT_EQ(DateOf(0), (_DATE{1970, 1, 1, 0, 0, 0}));
}

TEST(GetDate, MillisecondsAreCutOff) {
    const TimeZone zone("UTC0");

    EXPECT_EQ(DateOf(0, 999), (_DATE{1970, 1, 1, 0, 0, 0}));
    EXPECT_EQ(DateOf(1, 0), (_DATE{1970, 1, 1, 0, 0, 1}));
    EXPECT_EQ(DateOf(59, 999), (_DATE{1970, 1, 1, 0, 0, 59}));
    EXPECT_EQ(DateOf(60, 0), (_DATE{1970, 1, 1, 0, 1, 0}));
}

TEST(GetDate, DayMonthAndYearRollOver) {
    const TimeZone zone("UTC0");

    EXPECT_EQ(DateOf(86399), (_DATE{1970, 1, 1, 23, 59, 59}));
    EXPECT_EQ(DateOf(86400), (_DATE{1970, 1, 2, 0, 0, 0}));
    EXPECT_EQ(DateOf(1640995199), (_DATE{2021, 12, 31, 23, 59, 59}));
    EXPECT_EQ(DateOf(1640995200), (_DATE{2022, 1, 1, 0, 0, 0}));
}

TEST(GetDate, LeapDaysAreThereInLeapYearsOnly) {
    const TimeZone zone("UTC0");

    EXPECT_EQ(DateOf(951782400), (_DATE{2000, 2, 29, 0, 0, 0}));
    EXPECT_EQ(DateOf(1709208000), (_DATE{2024, 2, 29, 12, 0, 0}));
    EXPECT_EQ(DateOf(1677628799), (_DATE{2023, 2, 28, 23, 59, 59}));
    EXPECT_EQ(DateOf(1677628800), (_DATE{2023, 3, 1, 0, 0, 0}));
    EXPECT_EQ(DateOf(4107542400), (_DATE{2100, 3, 1, 0, 0, 0}));
    EXPECT_EQ(DateOf(4107542399), (_DATE{2100, 2, 28, 23, 59, 59}));
}

TEST(GetDate, FollowsTheTimeZone) {
    {
        const TimeZone zone(INDIA);
        EXPECT_EQ(DateOf(0), (_DATE{1970, 1, 1, 5, 30, 0}));
    }
    {
        const TimeZone zone(US_PACIFIC);
        EXPECT_EQ(DateOf(0), (_DATE{1969, 12, 31, 16, 0, 0}));
    }
    {
        const TimeZone zone("UTC0");
        EXPECT_EQ(DateOf(0), (_DATE{1970, 1, 1, 0, 0, 0}));
    }
}

TEST(GetDate, SummerTimeBeginsBySkippingAnHour) {
    const TimeZone zone(CENTRAL_EUROPE);

    EXPECT_EQ(DateOf(1616893199), (_DATE{2021, 3, 28, 1, 59, 59}));
    EXPECT_EQ(DateOf(1616893200), (_DATE{2021, 3, 28, 3, 0, 0}));
}

TEST(GetDate, SummerTimeEndsByRepeatingAnHour) {
    const TimeZone zone(CENTRAL_EUROPE);

    EXPECT_EQ(DateOf(1635641999), (_DATE{2021, 10, 31, 2, 59, 59}));
    EXPECT_EQ(DateOf(1635642000), (_DATE{2021, 10, 31, 2, 0, 0}));
    EXPECT_EQ(DateOf(1635645600), (_DATE{2021, 10, 31, 3, 0, 0}));
}

TEST(GetDate, GoesOnBehindTheEndOf32BitTime) {
    const TimeZone zone("UTC0");

    EXPECT_EQ(DateOf(2147483647), (_DATE{2038, 1, 19, 3, 14, 7}));
    EXPECT_EQ(DateOf(2147483648), (_DATE{2038, 1, 19, 3, 14, 8}));
    EXPECT_EQ(DateOf(4294967296), (_DATE{2106, 2, 7, 6, 28, 16}));
    EXPECT_EQ(DateOf(253402300800), (_DATE{10000, 1, 1, 0, 0, 0}));
}

TEST(GetDate, LargestTimeStampHasADate) {
    const TimeZone zone("UTC0");
    _DATE date = {};

    VELKX::CSystemTime::GetDate(std::numeric_limits<std::uint64_t>::max(), date);

    EXPECT_EQ(date, (_DATE{584556019, 4, 3, 14, 25, 51}));
}

TEST(GetDate, EmptyOrUnknownZoneCountsAsUtc) {
    for (const char* name : {"", "No/Such_Zone"}) {
        const TimeZone zone(name);
        EXPECT_EQ(DateOf(86400), (_DATE{1970, 1, 2, 0, 0, 0})) << name;
    }
}

}  // namespace
