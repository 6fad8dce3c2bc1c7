// SPDX-License-Identifier: Apache-2.0
/// @file
/// Everything that pitool tells about one drive.
#pragma once

#include "figure.h"
#include "lifetime.h"

#include <pi/drive_health.h>
#include <pi/exchange/smartctl.h>

#include <optional>
#include <string>
#include <vector>

namespace pitool {

/// Wear, in percent, from which a drive counts as worn.
constexpr unsigned long WORN_PERCENT = 90;

struct DriveAssessment {
    std::string m_File;                  ///< as the command line names it
    std::string m_Kind;                  ///< transport and medium, such as "SATA SSD"
    std::vector<Figure> m_Figures;       ///< always the same identifiers in the same order
    std::vector<Figure> m_OtherFigures;  ///< of the drive's health, without identifier; likewise
    PI::_DRIVE_STATE m_State = PI::DriveState::UNKNOWN;
    std::vector<PI::CHealthReason> m_Reasons;  ///< of the state, the weightiest first
    Lifetime m_Lifetime;
    std::vector<std::string> m_Notes;  ///< what was out of the ordinary in the report
    PI::CHealthFigure m_Wear;          ///< of a solid-state drive
    bool m_Failing = false;            ///< the drive's own verdict
};

/// Does what a plug-in does when it discovers a drive.
DriveAssessment AssessDrive(const std::string& file, const PI::CDriveReport& report);

/// Whether the drive certainly counts as worn.
bool IsWorn(const DriveAssessment& drive);

/// The limit that the drive is hotter than, of those that it states; none where it is not.
std::optional<long> ExceededLimit(const DriveAssessment& drive);

/// The figure of an assessment under an identifier, which must be one of its own.
const Figure& FindFigure(const DriveAssessment& drive, PI::_PROPERTY_ID id);

}  // namespace pitool
