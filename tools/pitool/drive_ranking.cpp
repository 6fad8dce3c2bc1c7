// SPDX-License-Identifier: Apache-2.0

#include "drive_ranking.h"

#include <tuple>

namespace pitool {
namespace {

bool LacksEstimate(const DriveAssessment& drive) {
    return drive.m_Lifetime.m_Applicable && !drive.m_Lifetime.m_RemainingHours;
}

int Group(PI::_DRIVE_STATE state) {
    switch (state) {
        case PI::DriveState::FAILED: return 0;
        case PI::DriveState::REPLACE: return 1;
        case PI::DriveState::LOOK: return 2;
        case PI::DriveState::UNKNOWN: return 3;
        case PI::DriveState::GOOD: break;
    }
    return 4;
}

std::string Count(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

DriveRank RankDrive(const DriveAssessment& drive) {
    return {Group(drive.m_State), drive.m_Wear.GetValue()};
}

bool operator<(const DriveRank& left, const DriveRank& right) {
    return std::tie(left.m_Group, right.m_Wear) < std::tie(right.m_Group, left.m_Wear);
}

void CountDrive(const DriveAssessment& drive, DriveCounts& summary) {
    summary.m_Drives += 1;
    summary.m_Failing += drive.m_Failing ? 1 : 0;
    summary.m_Worn += IsWorn(drive) ? 1 : 0;
    summary.m_UnknownLifetime += LacksEstimate(drive) ? 1 : 0;
}

std::string SummaryLine(const DriveCounts& summary) {
    std::string line = Count(summary.m_Drives, "drive", "drives") + ": " + std::to_string(summary.m_Failing) +
                       " failing, " + std::to_string(summary.m_Worn) + " worn to " +
                       std::to_string(WORN_PERCENT) + " percent or more, " +
                       std::to_string(summary.m_UnknownLifetime) + " of unknown lifetime";
    if (summary.m_Refused != 0) {
        line += "; " + Count(summary.m_Refused, "input", "inputs") + " refused";
    }
    return line;
}

}  // namespace pitool
