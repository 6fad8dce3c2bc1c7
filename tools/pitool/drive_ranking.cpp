// SPDX-License-Identifier: Apache-2.0

#include "drive_ranking.h"

#include <limits>
#include <tuple>

namespace pitool {
namespace {

bool LacksEstimate(const DriveAssessment& drive) {
    return drive.m_Lifetime.m_Applicable && !drive.m_Lifetime.m_RemainingHours;
}

int Group(const DriveAssessment& drive) {
    if (drive.m_Failing) {
        return 0;
    }
    if (IsWorn(drive)) {
        return 1;
    }
    if (drive.m_Lifetime.m_RemainingHours) {
        return 2;
    }
    return LacksEstimate(drive) ? 4 : 3;
}

std::string Count(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

DriveRank RankDrive(const DriveAssessment& drive) {
    DriveRank rank;
    rank.m_Group = Group(drive);
    rank.m_Used = drive.m_PercentUsed.value_or(0);
    // Worn drives go by their wear: from 100 percent on, the hours are just what the service span leaves.
    rank.m_Remaining =
        rank.m_Group == 1
            ? 0
            : drive.m_Lifetime.m_RemainingHours.m_Value.value_or(std::numeric_limits<unsigned long>::max());
    return rank;
}

bool operator<(const DriveRank& left, const DriveRank& right) {
    return std::tie(left.m_Group, left.m_Remaining, right.m_Used) <
           std::tie(right.m_Group, right.m_Remaining, left.m_Used);
}

void CountDrive(const DriveAssessment& drive, DriveSummary& summary) {
    summary.m_Drives += 1;
    summary.m_Failing += drive.m_Failing ? 1 : 0;
    summary.m_Worn += IsWorn(drive) ? 1 : 0;
    summary.m_UnknownLifetime += LacksEstimate(drive) ? 1 : 0;
}

std::string SummaryLine(const DriveSummary& summary) {
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
