// SPDX-License-Identifier: Apache-2.0
/// @file
/// Several drives as a table.
#pragma once

#include "drive_assessment.h"
#include "print/style.h"
#include "print/terminal.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace pitool {

constexpr std::size_t DRIVE_COLUMNS = 8;

/// The cells of a line. One text takes a fraction of the memory of a list, and those of all drives are kept
/// until the last one is read.
struct DriveRow {
    std::string m_Text;                           ///< printable, a line feed behind each cell
    std::array<Style, DRIVE_COLUMNS> m_Styles{};  ///< of the cells
};

DriveRow MakeDriveRow(const DriveAssessment& drive);

/// The headings and the rows in the order given, in columns as wide as their contents or as the screen
/// allows. Where that is too narrow for columns, each drive is a list of its own.
std::string DriveTable(const std::vector<const DriveRow*>& rows, const Screen& screen = {});

}  // namespace pitool
