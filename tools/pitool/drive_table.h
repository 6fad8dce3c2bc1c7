// SPDX-License-Identifier: Apache-2.0
/// @file
/// Several drives as a table.
#pragma once

#include "drive_assessment.h"

#include <string>
#include <vector>

namespace pitool {

/// The cells of a line, in printable text, each with a line feed behind it. One text takes a fraction of the
/// memory of a list, and those of all drives are kept until the last one is read.
using DriveRow = std::string;

DriveRow MakeDriveRow(const DriveAssessment& drive);

/// The headings and the rows in the order given, in columns as wide as their contents.
std::string DriveTable(const std::vector<const DriveRow*>& rows);

}  // namespace pitool
