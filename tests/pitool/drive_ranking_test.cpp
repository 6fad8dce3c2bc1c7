// SPDX-License-Identifier: Apache-2.0

#include "drive_ranking.h"

#include <gtest/gtest.h>

using namespace pitool;

namespace {

DriveAssessment SolidState(unsigned long remaining, unsigned long used) {
    DriveAssessment drive;
    drive.m_Lifetime.m_RemainingHours = Known(remaining);
    drive.m_PercentUsed = used;
    return drive;
}

DriveAssessment Disk() {
    DriveAssessment drive;
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

TEST(RankDrive, OrdersFromFailingToUnknown) {
    const DriveAssessment drives[] = {
        Failing(SolidState(5, 95)),
        Failing(SolidState(40000, 1)),
        Failing(Disk()),
        SolidState(30000, 100),
        SolidState(20, 90),
        SolidState(10, 89),
        SolidState(11, 60),
        SolidState(11, 50),
        Disk(),
        UnknownLifetime(),
    };
    for (std::size_t i = 0; i + 1 < std::size(drives); ++i) {
        EXPECT_TRUE(IsWorse(drives[i], drives[i + 1])) << i;
        EXPECT_FALSE(IsWorse(drives[i + 1], drives[i])) << i;
    }
}

TEST(RankDrive, DrivesThatAreEqualAreNotOrdered) {
    EXPECT_FALSE(IsWorse(Disk(), Disk()));
    EXPECT_FALSE(IsWorse(SolidState(1, 2), SolidState(1, 2)));
    EXPECT_FALSE(IsWorse(SolidState(1, 95), SolidState(2, 95))) << "worn drives go by their wear";
}

TEST(SummaryLine, CountsDrivesOfEachKind) {
    DriveSummary summary;
    for (const DriveAssessment& drive : {Failing(SolidState(5, 95)), SolidState(30000, 90),
                                         SolidState(10, 89), Disk(), Failing(Disk()), UnknownLifetime()}) {
        CountDrive(drive, summary);
    }
    EXPECT_EQ(SummaryLine(summary),
              "6 drives: 2 failing, 2 worn to 90 percent or more, 1 of unknown lifetime");
    summary.m_Refused = 1;
    EXPECT_EQ(SummaryLine(summary),
              "6 drives: 2 failing, 2 worn to 90 percent or more, 1 of unknown lifetime; 1 input refused");
    summary.m_Refused = 2;
    EXPECT_EQ(SummaryLine(summary),
              "6 drives: 2 failing, 2 worn to 90 percent or more, 1 of unknown lifetime; 2 inputs refused");
}
