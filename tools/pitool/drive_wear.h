// SPDX-License-Identifier: Apache-2.0
/// @file
/// How much a solid-state drive has worked and worn.
#pragma once

#include "drive_report.h"
#include "fact.h"

#include <cstdint>
#include <string>

namespace pitool {

/// What a wear figure was read from.
enum class WearOrigin { NONE, SMART_ATTRIBUTE, DRIVE_STATISTICS };

struct DriveWear {
    Fact<unsigned long> m_PowerOnHours;
    Fact<unsigned long> m_BytesWritten;  ///< bytes
    Fact<unsigned long> m_BytesRead;     ///< bytes
    Fact<unsigned long> m_Spare;         ///< percent of the reserve that is left
    Fact<unsigned long> m_RatedTB;       ///< terabytes that may be written
    Fact<unsigned long> m_PercentUsed;   ///< 0 when new; may exceed 100
    WearOrigin m_Origin = WearOrigin::NONE;
};

/// Power-on hours beyond which a figure is no count of hours: more than a century.
constexpr unsigned long MAX_HOURS = 1'000'000;

/// Reads the figures of a drive. An ATA drive whose model is listed is read from its SMART page; what that
/// does not hold, and every other drive, from the drive's own statistics.
///
/// @param vendor  as IdentifyDrive gives it, or empty
/// @param product bare model name
DriveWear ReadWear(const DriveReport& report, const std::string& vendor, const std::string& product,
                   bool solidState);

}  // namespace pitool
