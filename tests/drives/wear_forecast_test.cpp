// SPDX-License-Identifier: Apache-2.0

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pi/wear_forecast.h>

#include <cmath>
#include <limits>

namespace {

using namespace PI;
using testing::Eq;
using testing::Optional;
using testing::StrEq;

constexpr std::int64_t DAY = 86400;

CWearReading Reading(std::uint64_t hours, std::uint32_t wear) {
    CWearReading reading;
    reading.SetPowerOnHours(hours);
    reading.SetWear(wear);
    return reading;
}

CWearReading Dated(std::uint64_t hours, std::uint32_t wear, std::int64_t date) {
    CWearReading reading = Reading(hours, wear);
    reading.SetDate(date);
    return reading;
}

CWearReading WithFirmware(std::uint64_t hours, std::uint32_t wear, const std::string& firmware) {
    CWearReading reading = Reading(hours, wear);
    reading.SetFirmware(firmware);
    return reading;
}

CWearReading Written(std::uint64_t hours, std::uint64_t bytes) {
    CWearReading reading;
    reading.SetPowerOnHours(hours);
    reading.SetBytesWritten(bytes);
    return reading;
}

CWearReading UnwornAndWritten(std::uint64_t hours, std::uint64_t bytes) {
    CWearReading reading = Written(hours, bytes);
    reading.SetWear(0);
    return reading;
}

void ExpectSame(const CWearForecast& a, const CWearForecast& b) {
    EXPECT_EQ(a.GetState(), b.GetState());
    EXPECT_EQ(a.GetBasis(), b.GetBasis());
    EXPECT_EQ(a.GetHours(), b.GetHours());
    EXPECT_EQ(a.GetLow(), b.GetLow());
    EXPECT_EQ(a.GetHigh(), b.GetHigh());
}

void ExpectNotEnough(const CWearForecast& forecast, const char* reason) {
    EXPECT_EQ(forecast.GetState(), WearForecastState::NOT_ENOUGH);
    EXPECT_EQ(forecast.GetBasis(), WearForecastBasis::NONE);
    EXPECT_EQ(forecast.GetHours(), std::nullopt);
    EXPECT_EQ(forecast.GetLow(), std::nullopt);
    EXPECT_EQ(forecast.GetHigh(), std::nullopt);
    EXPECT_STREQ(forecast.GetReason(), reason);
}

TEST(WearReading, KnowsNothingAtFirst) {
    const CWearReading reading;
    EXPECT_EQ(reading.GetPowerOnHours(), std::nullopt);
    EXPECT_EQ(reading.GetWear(), std::nullopt);
    EXPECT_EQ(reading.GetBytesWritten(), std::nullopt);
    EXPECT_EQ(reading.GetDate(), std::nullopt);
    EXPECT_EQ(reading.GetFirmware(), "");
}

TEST(WearReading, KeepsWhatIsSet) {
    CWearReading reading = WithFirmware(1234, 5, "XCV10132");
    reading.SetBytesWritten(std::numeric_limits<std::uint64_t>::max());
    reading.SetDate(-1);
    EXPECT_THAT(reading.GetPowerOnHours(), Optional(1234U));
    EXPECT_THAT(reading.GetWear(), Optional(5U));
    EXPECT_THAT(reading.GetBytesWritten(), Optional(std::numeric_limits<std::uint64_t>::max()));
    EXPECT_THAT(reading.GetDate(), Optional(-1));
    EXPECT_EQ(reading.GetFirmware(), "XCV10132");
}

TEST(WearReading, HoursThatNoDriveHasCountAsUnknown) {
    EXPECT_EQ(Reading(0, 5).GetPowerOnHours(), std::nullopt);
    EXPECT_THAT(Reading(1, 5).GetPowerOnHours(), Optional(1U));
    EXPECT_THAT(Reading(300000, 5).GetPowerOnHours(), Optional(300000U));
    EXPECT_EQ(Reading(300001, 5).GetPowerOnHours(), std::nullopt);
    EXPECT_EQ(Reading(std::numeric_limits<std::uint64_t>::max(), 5).GetPowerOnHours(), std::nullopt);
}

TEST(WearReading, WearThatNoDriveReachesCountsAsUnknown) {
    EXPECT_THAT(Reading(1, 1000).GetWear(), Optional(1000U));
    EXPECT_EQ(Reading(1, 1001).GetWear(), std::nullopt);
    EXPECT_EQ(Reading(1, std::numeric_limits<std::uint32_t>::max()).GetWear(), std::nullopt);
}

TEST(WearForecast, WithoutReadingsThereIsNotEnough) {
    ExpectNotEnough(CWearForecast(), "no reading tells power-on hours and wear");
    ExpectNotEnough(CWearForecast(std::vector<CWearReading>()), "no reading tells power-on hours and wear");
}

TEST(WearForecast, HoursOrWearAloneAreNotEnough) {
    CWearReading hours;
    hours.SetPowerOnHours(1000);
    CWearReading wear;
    wear.SetWear(10);
    ExpectNotEnough(CWearForecast({hours}), "no reading tells power-on hours and wear");
    ExpectNotEnough(CWearForecast({wear}), "no reading tells power-on hours and wear");
    ExpectNotEnough(CWearForecast({hours, wear}), "no reading tells power-on hours and wear");
}

TEST(WearForecast, OneReadingGoesByTheAge) {
    // 9.5 percent in 9,500 hours: a percent in 1,000 hours, 91 of them to come.
    const CWearForecast forecast({Reading(9500, 9)});
    EXPECT_EQ(forecast.GetState(), WearForecastState::ESTIMATED);
    EXPECT_EQ(forecast.GetBasis(), WearForecastBasis::AGE);
    EXPECT_THAT(forecast.GetHours(), Optional(83720U));  // 91,000 x 0.92
    EXPECT_THAT(forecast.GetLow(), Optional(45209U));    // x 0.54
    EXPECT_THAT(forecast.GetHigh(), Optional(351624U));  // x 4.2
    EXPECT_STREQ(forecast.GetReason(), "");
}

TEST(WearForecast, DriveThatRanForLessThanADayIsNotEnough) {
    ExpectNotEnough(CWearForecast({Reading(23, 9)}), "powered on for less than a day");
    EXPECT_EQ(CWearForecast({Reading(24, 9)}).GetState(), WearForecastState::ESTIMATED);
}

TEST(WearForecast, DriveWithoutWearIsNotEnough) {
    ExpectNotEnough(CWearForecast({Reading(20000, 0)}), "no wear so far");
    ExpectNotEnough(CWearForecast({Reading(10000, 0), Reading(20000, 0)}), "no wear so far");
    EXPECT_EQ(CWearForecast({Reading(20000, 1)}).GetState(), WearForecastState::ESTIMATED);
}

TEST(WearForecast, WornFrom100PercentOn) {
    EXPECT_EQ(CWearForecast({Reading(9500, 99)}).GetState(), WearForecastState::ESTIMATED);
    for (const std::uint32_t wear : {100U, 101U, 255U, 1000U}) {
        const CWearForecast forecast({Reading(5000, 50), Reading(9500, wear)});
        EXPECT_EQ(forecast.GetState(), WearForecastState::WORN);
        EXPECT_EQ(forecast.GetBasis(), WearForecastBasis::AGE);
        EXPECT_THAT(forecast.GetHours(), Optional(0U));
        EXPECT_THAT(forecast.GetLow(), Optional(0U));
        EXPECT_THAT(forecast.GetHigh(), Optional(0U));
        EXPECT_STREQ(forecast.GetReason(), "the wear has reached 100 percent");
    }
}

TEST(WearForecast, TwoReadingsGoByTheRecentPace) {
    // 9.5 percent in 9,500 hours. Since 1,000 hours ago 2 percent, before which go 0.5 in 500 hours.
    const CWearForecast forecast({Reading(8500, 7), Reading(9500, 9)});
    EXPECT_EQ(forecast.GetState(), WearForecastState::ESTIMATED);
    EXPECT_EQ(forecast.GetBasis(), WearForecastBasis::RECENT);
    EXPECT_THAT(forecast.GetHours(), Optional(54600U));  // 91 x 1,500 / 2.5
    EXPECT_THAT(forecast.GetLow(), Optional(34398U));    // x 0.63
    EXPECT_THAT(forecast.GetHigh(), Optional(120120U));  // x 2.2
}

TEST(WearForecast, ReadingsTooCloseForHalfAPercentGoByTheAge) {
    EXPECT_EQ(CWearForecast({Reading(9000, 9), Reading(9500, 9)}).GetBasis(), WearForecastBasis::RECENT);
    const CWearForecast close({Reading(9001, 9), Reading(9500, 9)});
    ExpectSame(close, CWearForecast({Reading(9500, 9)}));
    ExpectSame(CWearForecast({Reading(9499, 8), Reading(9500, 9)}), CWearForecast({Reading(9500, 9)}));
}

TEST(WearForecast, WithoutGrowthTheIntervalIsOpenUntilTheWearStandsStill) {
    const CWearForecast open({Reading(8001, 9), Reading(9500, 9)});  // 1.499 percent expected
    EXPECT_EQ(open.GetState(), WearForecastState::ESTIMATED);
    EXPECT_TRUE(open.GetHours().has_value());
    EXPECT_TRUE(open.GetLow().has_value());
    EXPECT_EQ(open.GetHigh(), std::nullopt);

    const CWearForecast still({Reading(8000, 9), Reading(9500, 9)});  // 1.5 percent
    EXPECT_EQ(still.GetState(), WearForecastState::STANDS_STILL);
    EXPECT_EQ(still.GetBasis(), WearForecastBasis::RECENT);
    EXPECT_EQ(still.GetHours(), std::nullopt);
    EXPECT_THAT(still.GetLow(), Optional(273000U));  // 91,000 x 3
    EXPECT_EQ(still.GetHigh(), std::nullopt);
    EXPECT_STREQ(still.GetReason(), "the wear stands still");
}

TEST(WearForecast, StandingStillCountsFromTheFirstReadingWithThisWear) {
    EXPECT_EQ(
        CWearForecast({Reading(5000, 8), Reading(8000, 9), Reading(9000, 9), Reading(9500, 9)}).GetState(),
        WearForecastState::STANDS_STILL);
    EXPECT_EQ(
        CWearForecast({Reading(5000, 8), Reading(8001, 9), Reading(9000, 9), Reading(9500, 9)}).GetState(),
        WearForecastState::ESTIMATED);
}

TEST(WearForecast, RecentIsTheLatestReadingATenthOfTheLifeBack) {
    const CWearReading first = Reading(2000, 1);
    const CWearReading last = Reading(10000, 20);
    ExpectSame(CWearForecast({first, Reading(9000, 17), last}), CWearForecast({Reading(9000, 17), last}));
    ExpectSame(CWearForecast({first, Reading(9001, 17), last}), CWearForecast({first, last}));
    ExpectSame(CWearForecast({first, Reading(9000, 17), Reading(9900, 20), last}),
               CWearForecast({Reading(9000, 17), last}));
}

TEST(WearForecast, WearThatGoesBackBeginsAnew) {
    const CWearReading last = Reading(10000, 20);
    ExpectSame(CWearForecast({Reading(8000, 22), last}), CWearForecast({last}));
    ExpectSame(CWearForecast({Reading(5000, 3), Reading(8000, 22), Reading(9000, 15), last}),
               CWearForecast({Reading(9000, 15), last}));
}

TEST(WearForecast, FallByOnePercentIsRounding) {
    EXPECT_EQ(CWearForecast({Reading(8000, 21), Reading(10000, 20)}).GetState(),
              WearForecastState::STANDS_STILL);
}

TEST(WearForecast, HoursThatGoBackBeginAnew) {
    const CWearReading last = Reading(10000, 20);
    ExpectSame(CWearForecast({Reading(12000, 10), last}), CWearForecast({last}));
    ExpectSame(CWearForecast({Reading(10001, 10), last}), CWearForecast({last}));
}

TEST(WearForecast, OfReadingsWithTheSameHoursTheLastCounts) {
    const CWearReading first = Reading(5000, 5);
    const CWearReading last = Reading(10000, 20);
    const CWearForecast expected({first, last});
    ExpectSame(CWearForecast({first, last, last}), expected);
    ExpectSame(CWearForecast({first, first, last}), expected);
    ExpectSame(CWearForecast({first, Reading(10000, 19), last}), expected);
    ExpectSame(CWearForecast({first, Reading(10000, 21), last}), expected);
    ExpectSame(CWearForecast({first, Reading(10000, 22), last}), CWearForecast({last}));
    ExpectSame(CWearForecast({Reading(10000, 10), last}), CWearForecast({last}));
}

TEST(WearForecast, NewFirmwareThatCountsOtherwiseBeginsAnew) {
    // 2.5 percent in 2,500 hours; in 2,000 more 2 percent were to come.
    const CWearReading before = WithFirmware(2500, 2, "1.0");
    const CWearReading jump = WithFirmware(4500, 11, "1.1");  // 9 percent
    ExpectSame(CWearForecast({before, jump}), CWearForecast({jump}));
    const CWearReading fast = WithFirmware(4500, 10, "1.1");  // 8
    EXPECT_EQ(CWearForecast({before, fast}).GetBasis(), WearForecastBasis::RECENT);
}

TEST(WearForecast, NewFirmwareThatCountsOnIsNoBreak) {
    const CWearReading before = WithFirmware(4500, 4, "1.0");
    ExpectSame(CWearForecast({before, WithFirmware(6500, 6, "1.1")}),
               CWearForecast({before, WithFirmware(6500, 6, "1.0")}));
    // Steep, but no more than 5 percent: 0.5 percent were expected.
    const CWearReading young = WithFirmware(100, 0, "1.0");
    EXPECT_EQ(CWearForecast({young, WithFirmware(200, 5, "1.1")}).GetBasis(), WearForecastBasis::RECENT);
    EXPECT_EQ(CWearForecast({young, WithFirmware(200, 6, "1.1")}).GetBasis(), WearForecastBasis::AGE);
}

TEST(WearForecast, JumpWithoutNewFirmwareIsWear) {
    EXPECT_EQ(CWearForecast({WithFirmware(2500, 2, "1.0"), WithFirmware(4500, 11, "1.0")}).GetBasis(),
              WearForecastBasis::RECENT);
    EXPECT_EQ(CWearForecast({Reading(2500, 2), WithFirmware(4500, 11, "1.0")}).GetBasis(),
              WearForecastBasis::RECENT);
    EXPECT_EQ(CWearForecast({WithFirmware(2500, 2, "1.0"), Reading(4500, 11)}).GetBasis(),
              WearForecastBasis::RECENT);
}

TEST(WearForecast, OddReadingsCostTheOthersNothing) {
    const CWearReading first = Reading(8500, 7);
    const CWearReading last = Reading(9500, 9);
    const CWearForecast expected({first, last});
    for (const CWearReading& odd :
         {CWearReading(), Reading(0, 8), Reading(9000, 4000000000),
          Reading(std::numeric_limits<std::uint64_t>::max(), 8), Written(9000, 1)}) {
        ExpectSame(CWearForecast({odd, first, last}), expected);
        ExpectSame(CWearForecast({first, odd, last}), expected);
        ExpectSame(CWearForecast({first, last, odd}), expected);
    }
}

TEST(WearForecast, BytesCountWhereTheWearIsNotKnown) {
    // Drives take 2.1 times their rating: 210 TB, of which 21 are written in 1,000 hours.
    const CWearForecast forecast({Written(1000, 21000000000000)}, 100);
    EXPECT_EQ(forecast.GetState(), WearForecastState::ESTIMATED);
    EXPECT_EQ(forecast.GetBasis(), WearForecastBasis::BYTES_WRITTEN);
    EXPECT_THAT(forecast.GetHours(), Optional(9000U));
    EXPECT_THAT(forecast.GetLow(), Optional(5400U));    // x 0.6
    EXPECT_THAT(forecast.GetHigh(), Optional(36000U));  // x 4
}

TEST(WearForecast, WearOf0IsBelowOnePercentWhateverWasWritten) {
    EXPECT_THAT(CWearForecast({UnwornAndWritten(1000, 1050000000000)}, 100).GetHours(), Optional(199000U));
    EXPECT_THAT(CWearForecast({UnwornAndWritten(1000, 2100000000000)}, 100).GetHours(), Optional(99000U));
    EXPECT_THAT(CWearForecast({UnwornAndWritten(1000, 21000000000000)}, 100).GetHours(), Optional(99000U));
}

TEST(WearForecast, BytesNeedTheRatingAndCountersThatAscend) {
    ExpectNotEnough(CWearForecast({UnwornAndWritten(1000, 1000000000000)}), "no wear so far");
    ExpectNotEnough(CWearForecast({UnwornAndWritten(1000, 0)}, 100), "no wear so far");
    ExpectNotEnough(CWearForecast({Written(1000, 1000000000000)}),
                    "no reading tells power-on hours and wear");
    ExpectNotEnough(
        CWearForecast({UnwornAndWritten(500, 2000000000000), UnwornAndWritten(1000, 1000000000000)}, 100),
        "no wear so far");
    EXPECT_EQ(CWearForecast({UnwornAndWritten(500, 1000000000000), Reading(700, 0),
                             UnwornAndWritten(1000, 1000000000000)},
                            100)
                  .GetBasis(),
              WearForecastBasis::BYTES_WRITTEN);
}

TEST(WearForecast, MoreWrittenThanDrivesTakeSaysNothingWithoutTheWear) {
    ExpectNotEnough(CWearForecast({Written(1000, 210000000000000)}, 100),
                    "more was written than such drives take, and no reading tells the wear");
    EXPECT_THAT(CWearForecast({Written(1000, 209999999999999)}, 100).GetHours(), Optional(0U));
}

TEST(WearForecast, KnownWearGoesBeforeBytes) {
    CWearReading reading = Reading(9500, 9);
    reading.SetBytesWritten(21000000000000);
    ExpectSame(CWearForecast({reading}, 100), CWearForecast({Reading(9500, 9)}));
}

TEST(WearForecast, NothingOverflows) {
    constexpr std::uint64_t MOST = std::numeric_limits<std::uint64_t>::max();
    EXPECT_THAT(CWearForecast({Written(300000, 1)}, MOST).GetHours(), Optional(1000000000U));
    EXPECT_THAT(CWearForecast({Written(300000, 1)}, MOST).GetHigh(), Optional(1000000000U));
    EXPECT_EQ(CWearForecast({Written(300000, MOST)}, MOST).GetBasis(), WearForecastBasis::BYTES_WRITTEN);
    EXPECT_THAT(CWearForecast({Reading(300000, 1)}).GetHours(), Optional(18216000U));
    EXPECT_THAT(CWearForecast({Reading(24, 99)}).GetHours(), Optional(0U));
}

TEST(WearForecast, DateCountsAsIfTheDriveAlwaysRan) {
    const CWearForecast forecast({Dated(9500, 9, 1000 * DAY)});
    EXPECT_THAT(forecast.GetDate(0), Optional(1000 * DAY));
    EXPECT_THAT(forecast.GetDate(240), Optional(1010 * DAY));
}

TEST(WearForecast, TwoDatesTellHowLongADriveRunsEachDay) {
    // 800 hours in 100 days.
    const CWearForecast forecast({Dated(8700, 8, 900 * DAY), Dated(9500, 9, 1000 * DAY)});
    EXPECT_THAT(forecast.GetDate(80), Optional(1010 * DAY));
}

TEST(WearForecast, DatesThatCannotBeCountAsIfTheDriveAlwaysRan) {
    const CWearReading last = Dated(9500, 9, 1000 * DAY);
    for (const CWearReading& first :
         {Dated(8700, 8, 1000 * DAY - DAY + 1), Dated(8700, 8, 1001 * DAY), Dated(9500, 9, 900 * DAY),
          Dated(9600, 8, 900 * DAY), Dated(8700, 8, 999 * DAY), Dated(8700, 8, 1000 * DAY)}) {
        EXPECT_THAT(CWearForecast({first, last}).GetDate(240), Optional(1010 * DAY));
    }
}

TEST(WearForecast, WithoutADateOfTheLatestReadingThereIsNone) {
    EXPECT_EQ(CWearForecast({Reading(9500, 9)}).GetDate(0), std::nullopt);
    EXPECT_EQ(CWearForecast({Dated(8500, 8, 1000 * DAY), Reading(9500, 9)}).GetDate(0), std::nullopt);
    EXPECT_EQ(CWearForecast().GetDate(0), std::nullopt);
}

TEST(WearForecast, DatesEndWithTheYear9999) {
    constexpr std::int64_t END = 253402300799;
    EXPECT_THAT(CWearForecast({Dated(9500, 9, END)}).GetDate(0), Optional(END));
    EXPECT_EQ(CWearForecast({Dated(9500, 9, END)}).GetDate(1), std::nullopt);
    EXPECT_EQ(CWearForecast({Dated(9500, 9, END + 1)}).GetDate(0), std::nullopt);
    EXPECT_EQ(CWearForecast({Dated(9500, 9, 0)}).GetDate(std::numeric_limits<std::uint64_t>::max()),
              std::nullopt);
    EXPECT_THAT(CWearForecast({Dated(9500, 9, std::numeric_limits<std::int64_t>::min())}).GetDate(0),
                Optional(std::numeric_limits<std::int64_t>::min()));
}

TEST(WearForecast, LowIsNeverAboveAndHighNeverBelowTheEstimate) {
    for (std::uint32_t wear = 0; wear <= 101; ++wear) {
        for (std::uint32_t before = 0; before <= wear; ++before) {
            const CWearForecast forecast({Reading(8000, before), Reading(9500, wear)});
            if (forecast.GetHours().has_value()) {
                EXPECT_LE(*forecast.GetLow(), *forecast.GetHours());
                EXPECT_GE(forecast.GetHigh().value_or(1000000000), *forecast.GetHours());
            }
        }
    }
}

}  // namespace
