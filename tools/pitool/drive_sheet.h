// SPDX-License-Identifier: Apache-2.0
/// @file
/// One drive as a sheet to read.
#pragma once

#include "drive_assessment.h"
#include "print/style.h"
#include "print/terminal.h"

#include <string>

namespace pitool {

/// What the sheet says of a figure: its value, where it comes from and which way it counts, or why it is
/// doubtful; or "unknown" or "not applicable" with the reason.
std::string FigureText(const Figure& figure);

/// How a figure of a drive stands out: a state that fails or is worn, wear and heat beyond their limits, what
/// is not known.
Style FigureStyle(const DriveAssessment& drive, const Figure& figure);

/// How the state of a drive stands out.
Style StateStyle(PI::_DRIVE_STATE state);

/// The file's name, the state with its reasons, then a line a figure and a note. Figures without an
/// identifier are left out where nothing reports them.
std::string DriveSheet(const DriveAssessment& drive, const Screen& screen = {});

}  // namespace pitool
