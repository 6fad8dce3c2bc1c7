// SPDX-License-Identifier: Apache-2.0
/// @file
/// Drives as comma-separated values (RFC 4180), in the columns that docs/pitool-json.md lists.
#pragma once

#include "drive_summary.h"

#include <string>

namespace pitool {

/// The line of the columns' names.
std::string CsvHeader();

/// The line of a drive. Figures that are not known are empty, doubtful ones are in their columns and named in
/// the last one. A text that a spreadsheet would take for a formula begins with an apostrophe.
std::string CsvLine(const DriveSummary& drive);

}  // namespace pitool
