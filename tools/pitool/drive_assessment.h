// SPDX-License-Identifier: Apache-2.0
/// @file
/// Everything that pitool tells about one drive.
#pragma once

#include "drive_report.h"
#include "figure.h"
#include "lifetime.h"

#include <optional>
#include <string>
#include <vector>

namespace pitool {

/// Wear, in percent, from which a drive counts as worn.
constexpr unsigned long WORN_PERCENT = 90;

struct DriveAssessment {
    std::string m_File;             ///< as the command line names it
    std::vector<Figure> m_Figures;  ///< always the same identifiers in the same order
    Lifetime m_Lifetime;
    std::optional<unsigned long> m_PercentUsed;  ///< wear of a solid-state drive
    std::optional<long> m_TemperatureLimit;      ///< degrees Celsius; where the drive states a credible one
    bool m_Failing = false;                      ///< the drive's own SMART verdict
    std::string m_Kind;                          ///< transport and medium, such as "SATA SSD"
};

/// Does what a plug-in does when it discovers a drive.
DriveAssessment AssessDrive(const std::string& file, const DriveReport& report);

/// Whether the drive counts as worn.
bool IsWorn(const DriveAssessment& drive);

/// Whether the drive is hotter than the limit that it states.
bool IsTooHot(const DriveAssessment& drive);

/// The figure of an assessment under an identifier, which must be one of its own.
const Figure& FindFigure(const DriveAssessment& drive, PI::_PROPERTY_ID id);

}  // namespace pitool
