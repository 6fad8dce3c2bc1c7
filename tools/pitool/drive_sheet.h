// SPDX-License-Identifier: Apache-2.0
/// @file
/// One drive as a sheet to read.
#pragma once

#include "drive_assessment.h"
#include "style.h"
#include "terminal.h"

#include <string>

namespace pitool {

/// What the sheet says of a figure: its value, where it comes from and which way it counts; or "unknown" or
/// "not applicable" with the reason.
std::string FigureText(const Figure& figure);

/// How a figure of a drive stands out: a state that fails or is worn, wear and heat beyond their limits, what
/// is not known.
Style FigureStyle(const DriveAssessment& drive, const Figure& figure);

/// The file's name, then a line a property.
std::string DriveSheet(const DriveAssessment& drive, const Screen& screen = {});

}  // namespace pitool
