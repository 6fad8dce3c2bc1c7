/// @file
/// Several drives as a table.
#pragma once

#include "drive_assessment.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace pitool {

constexpr std::size_t TABLE_COLUMNS = 8;

/// The cells of a line, in printable text.
using DriveRow = std::array<std::string, TABLE_COLUMNS>;

DriveRow MakeDriveRow(const DriveAssessment& drive);

/// The headings and the rows in the order given, in columns as wide as their contents.
std::string DriveTable(const std::vector<const DriveRow*>& rows);

}  // namespace pitool
