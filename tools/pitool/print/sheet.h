// SPDX-License-Identifier: Apache-2.0
/// @file
/// All that there is to say of one drive, line by line.
#pragma once

#include "drive_summary.h"
#include "print/text.h"

#include <pi/exchange/smartctl.h>
#include <pi/health_assessment.h>

#include <string>
#include <vector>

namespace pitool {

/// A line of a sheet.
struct SheetLine {
    std::string m_Name;
    std::string m_Text;  ///< printable
    Style m_Style = Style::PLAIN;
};

/// All that there is to say of a drive: its state, the reasons for it, the forecast, every figure with what
/// it rests on, notes. Figures without an identifier are left out where nothing reports them.
/// @param drive, health of the report
std::vector<SheetLine> SheetOf(const DriveSummary& drive, const PI::CDriveReport& report,
                               const PI::CHealthAssessment& health);

/// How the state of a drive stands out.
Style StateStyle(PI::_DRIVE_STATE state);

}  // namespace pitool
