// SPDX-License-Identifier: Apache-2.0

#include "drive_ranking.h"

#include <gtest/gtest.h>

using namespace pitool;

namespace {

/// A solid-state drive that reports its wear.
DriveAssessment InState(PI::_DRIVE_STATE state, std::int64_t wear = 0) {
    PI::CDriveHealth health(PI::DriveProtocol::NVME, "SAMPLE");
    health.TakeFigure(PI::HealthFigure::WEAR, wear, PI::FigureSource::NVME_LOG, 2);
    DriveAssessment drive;
    drive.m_State = state;
    drive.m_Wear = health.GetFigure(PI::HealthFigure::WEAR);
    drive.m_Lifetime.m_RemainingHours = Known(5UL);
    return drive;
}

DriveAssessment Disk() {
    DriveAssessment drive;
    drive.m_State = PI::DriveState::GOOD;
    drive.m_Lifetime.m_Applicable = false;
    drive.m_Lifetime.m_RemainingHours = Unknown<unsigned long>("rotating disk");
    return drive;
}

DriveAssessment UnknownLifetime() {
    DriveAssessment drive;
    drive.m_Lifetime.m_RemainingHours = Unknown<unsigned long>("no SMART data");
    return drive;
}

DriveAssessment Failing(DriveAssessment drive) {
    drive.m_Failing = true;
    return drive;
}

bool IsWorse(const DriveAssessment& left, const DriveAssessment& right) {
    return RankDrive(left) < RankDrive(right);
}

}  // namespace

TEST(RankDrive, OrdersByStateThenByWear) {
    namespace State = PI::DriveState;
    const DriveAssessment drives[] = {
        InState(State::FAILED, 1), InState(State::REPLACE, 120), InState(State::REPLACE, 100),
        InState(State::LOOK, 95),  InState(State::LOOK),         InState(State::UNKNOWN, 3),
        InState(State::GOOD, 89),  InState(State::GOOD, 1),      Disk(),
    };
    for (std::size_t i = 0; i + 1 < std::size(drives); ++i) {
        EXPECT_TRUE(IsWorse(drives[i], drives[i + 1])) << i;
        EXPECT_FALSE(IsWorse(drives[i + 1], drives[i])) << i;
    }
}

TEST(RankDrive, TheLifetimeRanksNothing) {
    DriveAssessment longer = InState(PI::DriveState::GOOD, 5);
    longer.m_Lifetime.m_RemainingHours = Known(40000UL);
    EXPECT_FALSE(IsWorse(InState(PI::DriveState::GOOD, 5), longer));
    EXPECT_FALSE(IsWorse(longer, InState(PI::DriveState::GOOD, 5)));
}

TEST(SummaryLine, CountsDrivesOfEachKind) {
    DriveCounts summary;
    for (const DriveAssessment& drive :
         {Failing(InState(PI::DriveState::FAILED, 95)), InState(PI::DriveState::LOOK, 90),
          InState(PI::DriveState::GOOD, 89), InState(PI::DriveState::LOOK, 255), Disk(), Failing(Disk()),
          UnknownLifetime()}) {
        CountDrive(drive, summary);
    }
    EXPECT_EQ(SummaryLine(summary),
              "7 drives: 2 failing, 2 worn to 90 percent or more, 1 of unknown lifetime");
    summary.m_Refused = 1;
    EXPECT_EQ(SummaryLine(summary),
              "7 drives: 2 failing, 2 worn to 90 percent or more, 1 of unknown lifetime; 1 input refused");
    summary.m_Refused = 2;
    EXPECT_EQ(SummaryLine(summary),
              "7 drives: 2 failing, 2 worn to 90 percent or more, 1 of unknown lifetime; 2 inputs refused");
}
