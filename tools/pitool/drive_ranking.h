// SPDX-License-Identifier: Apache-2.0
/// @file
/// Which of several drives needs attention first.
#pragma once

#include "drive_assessment.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace pitool {

/// How bad off a drive is.
struct DriveRank {
    int m_Group = 0;          ///< 0 failed, 1 to replace, 2 to look at, 3 unknown, 4 good
    std::int64_t m_Wear = 0;  ///< percent, 0 when unknown; more comes first
};

DriveRank RankDrive(const DriveAssessment& drive);

/// Worst first. Drives that are equal here stand in the order of their files.
bool operator<(const DriveRank& left, const DriveRank& right);

/// Counts of the drives that were read. A drive may count as failing and as worn.
struct DriveCounts {
    std::size_t m_Drives = 0;
    std::size_t m_Failing = 0;
    std::size_t m_Worn = 0;             ///< WORN_PERCENT or more
    std::size_t m_UnknownLifetime = 0;  ///< solid-state drives without an estimate
    std::size_t m_Refused = 0;          ///< inputs that gave no drive
};

void CountDrive(const DriveAssessment& drive, DriveCounts& summary);

/// The summary in one line.
std::string SummaryLine(const DriveCounts& summary);

}  // namespace pitool
