// SPDX-License-Identifier: Apache-2.0

#include <pi/health_changes.h>

#include "drives/health_checks.h"

namespace PI::Test {
namespace {

namespace Figure = HealthFigure;

CDriveHealth Drive(_HEALTH_FIGURE figure, std::int64_t value, std::int64_t hours = 1000) {
    CDriveHealth drive(DriveProtocol::NVME, "NOBODY KNOWS IT");
    drive.TakeFigure(Figure::POWER_ON_HOURS, hours);
    drive.TakeFigure(figure, value);
    return drive;
}

std::vector<CHealthChange> Changes(const CDriveHealth& before, const CDriveHealth& after) {
    return FindHealthChanges(CHealthAssessment(before), CHealthAssessment(after));
}

/// Texts of the changes, with an exclamation mark after those for the worse.
std::string Told(const CDriveHealth& before, const CDriveHealth& after) {
    std::string text;
    for (const CHealthChange& change : Changes(before, after)) {
        text += (text.empty() ? "" : "; ") + change.GetText() + (change.IsWorse() ? "!" : "");
    }
    return text;
}

std::string Told(_HEALTH_FIGURE figure, std::int64_t before, std::int64_t after) {
    return Told(Drive(figure, before), Drive(figure, after));
}

}  // namespace

TEST(HealthSnapshot, HoldsStateValuesAndReading) {
    CDriveHealth drive = Drive(Figure::WEAR, 255);
    drive.TakeFigure(Figure::BYTES_WRITTEN, 512000);
    drive.TakeFigure(Figure::MEDIA_ERRORS, 1);
    const CHealthAssessment assessment(drive);
    const CHealthSnapshot snapshot(assessment);
    EXPECT_EQ(snapshot.GetReading().GetPowerOnHours(), 1000U);
    EXPECT_EQ(snapshot.GetReading().GetBytesWritten(), 512000U);
    EXPECT_FALSE(snapshot.GetReading().GetWear()) << "it is doubtful";
    EXPECT_EQ(snapshot.GetState(), DriveState::LOOK);
    for (const CHealthFigure& figure : assessment.GetFigures()) {
        EXPECT_EQ(snapshot.GetValue(figure.GetFigure()), figure.GetValue());
        EXPECT_EQ(snapshot.GetFigureState(figure.GetFigure()), figure.GetState());
    }
    for (const int number : {0, -1, 1000}) {
        EXPECT_EQ(snapshot.GetFigureState(static_cast<_HEALTH_FIGURE>(number)), FigureState::UNKNOWN);
        EXPECT_EQ(snapshot.GetValue(static_cast<_HEALTH_FIGURE>(number)), 0);
    }
}

TEST(HealthChanges, WhatIsTheSameHasNotChanged) {
    EXPECT_EQ(Told(Figure::MEDIA_ERRORS, 3, 3), "");
    EXPECT_EQ(Told(Figure::TEMPERATURE, 30, 70), "") << "varies in service";
}

TEST(HealthChanges, MoreErrorsAreWorseAndFewerAreNot) {
    for (const auto figure :
         {Figure::PENDING_SECTORS, Figure::UNCORRECTABLE_SECTORS, Figure::MEDIA_ERRORS,
          Figure::REALLOCATED_SECTORS, Figure::FAILED_SELF_TESTS, Figure::INTERFACE_ERRORS}) {
        EXPECT_EQ(Changes(Drive(figure, 1), Drive(figure, 2)).at(0).IsWorse(), true) << figure;
        EXPECT_EQ(Changes(Drive(figure, 2), Drive(figure, 1)).at(0).IsWorse(), false) << figure;
    }
    const CHealthChange change =
        Changes(Drive(Figure::MEDIA_ERRORS, 0), Drive(Figure::MEDIA_ERRORS, 1)).at(0);
    EXPECT_EQ(change.GetFigure(), Figure::MEDIA_ERRORS);
    EXPECT_EQ(change.GetBefore(), 0);
    EXPECT_EQ(change.GetAfter(), 1);
    EXPECT_EQ(change.GetText(), "media errors 0 -> 1");
}

TEST(HealthChanges, LessSpareIsWorse) {
    EXPECT_EQ(Told(Figure::SPARE, 100, 99), "spare 100 -> 99 %!");
    EXPECT_EQ(Told(Figure::SPARE, 99, 100), "spare 99 -> 100 %");
}

TEST(HealthChanges, AnotherBitOfTheWarningIsWorse) {
    EXPECT_EQ(Told(Figure::CRITICAL_WARNING, 1, 4), "critical warning 1 -> 4!");
    EXPECT_EQ(Told(Figure::CRITICAL_WARNING, 4, 1), "critical warning 4 -> 1!");
    EXPECT_EQ(Told(Figure::CRITICAL_WARNING, 5, 1), "critical warning 5 -> 1");
}

TEST(HealthChanges, VerdictsHaveWords) {
    EXPECT_EQ(Told(Figure::VERDICT, 0, 1), "verdict passed -> failing!");
    EXPECT_EQ(Told(Figure::VERDICT, 1, 2), "verdict failing -> warning!");
    EXPECT_EQ(Told(Figure::VERDICT, 2, 0), "verdict warning -> passed");
}

TEST(HealthChanges, WearIsWorseWhenItGrowsMoreThanTwiceAsFastAsBefore) {
    const auto wear = [](std::int64_t percent, std::int64_t hours, std::int64_t before = 21000) {
        return Told(Drive(Figure::WEAR, 10, before), Drive(Figure::WEAR, percent, hours));
    };
    // 2 percent are to be expected in 4,000 hours.
    EXPECT_EQ(wear(15, 25000), "wear 10 -> 15 %");
    EXPECT_EQ(wear(16, 25000), "wear 10 -> 16 %!");
    EXPECT_EQ(wear(11, 21000), "wear 10 -> 11 %");
    EXPECT_EQ(wear(12, 21000), "wear 10 -> 12 %!");
    EXPECT_EQ(wear(12, 20999), "wear 10 -> 12 %!");
    EXPECT_EQ(wear(9, 21000), "wear 10 -> 9 %");
    EXPECT_EQ(wear(11, 25000, 0), "wear 10 -> 11 %") << "nothing is to be expected";
    EXPECT_EQ(wear(12, 25000, 0), "wear 10 -> 12 %!");
}

TEST(HealthChanges, WhatIsNoLongerReportedIsWorseWhereItWasBad) {
    const CDriveHealth nothing(DriveProtocol::NVME, "NOBODY KNOWS IT");
    const auto lost = [&nothing](_HEALTH_FIGURE figure, std::int64_t value) {
        return Told(Drive(figure, value), nothing);
    };
    EXPECT_EQ(lost(Figure::MEDIA_ERRORS, 2), "media errors 2 -> not reported!");
    EXPECT_FALSE(Changes(Drive(Figure::MEDIA_ERRORS, 2), nothing).at(0).GetAfter());
    EXPECT_EQ(lost(Figure::VERDICT, 1), "verdict failing -> not reported!");
    EXPECT_EQ(lost(Figure::MEDIA_ERRORS, 0), "");
    for (const auto figure : {Figure::LOGGED_ERRORS, Figure::SPARE, Figure::WEAR}) {
        EXPECT_EQ(lost(figure, 5), "") << figure;
    }
    EXPECT_EQ(Told(nothing, Drive(Figure::MEDIA_ERRORS, 2)), "") << "nobody knows since when";
}

TEST(HealthChanges, AreInAFixedOrder) {
    CDriveHealth before = Drive(Figure::WEAR, 1);
    CDriveHealth after = Drive(Figure::WEAR, 2);
    for (int figure = Figure::SPARE; figure <= Figure::UNSAFE_SHUTDOWNS; ++figure) {
        before.TakeFigure(static_cast<_HEALTH_FIGURE>(figure), 1);
        after.TakeFigure(static_cast<_HEALTH_FIGURE>(figure), 2);
    }
    EXPECT_EQ(
        Told(before, after),
        "verdict failing -> warning!; critical warning 1 -> 2!; pending sectors 1 -> 2!; uncorrectable "
        "sectors 1 -> 2!; media errors 1 -> 2!; reallocated sectors 1 -> 2!; failed self tests 1 -> 2!; "
        "logged errors 1 -> 2; interface errors 1 -> 2!; spare 1 -> 2 %; wear 1 -> 2 %");
}

TEST(HealthChanges, AttributesBelowTheirThresholdsAreCompared) {
    const auto drive = [](int current, int worst) {
        CDriveHealth health(DriveProtocol::ATA, "NOBODY KNOWS IT");
        health.TakeAttribute(5, "", 0x33, current, worst, 10, 0);
        return health;
    };
    EXPECT_EQ(Told(drive(100, 100), drive(10, 10)), "attributes below threshold 0 -> 1!");
    EXPECT_EQ(Told(drive(100, 100), drive(100, 10)), "attributes once below 0 -> 1!");
}

TEST(IsWorseState, WhenItIsWorseThanGoodAndThanBeforeOrBecameUnknown) {
    constexpr const char* WORSE[] = {
        // after UNKNOWN, GOOD, LOOK, REPLACE, FAILED
        "..!!!",  // before UNKNOWN
        "!.!!!",  // GOOD
        "!..!!",  // LOOK
        "!...!",  // REPLACE
        "!....",  // FAILED
    };
    for (int before = DriveState::UNKNOWN; before <= DriveState::FAILED; ++before) {
        for (int after = DriveState::UNKNOWN; after <= DriveState::FAILED; ++after) {
            EXPECT_EQ(IsWorseState(static_cast<_DRIVE_STATE>(before), static_cast<_DRIVE_STATE>(after)),
                      WORSE[before][after] == '!')
                << before << " " << after;
        }
    }
}

}  // namespace PI::Test
