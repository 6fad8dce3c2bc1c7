// SPDX-License-Identifier: Apache-2.0
/// @file
/// Drives as one HTML page that can be mailed and printed: no scripts, no addresses.
#pragma once

#include "drive_table.h"
#include "reports.h"

#include <cstddef>
#include <string>

namespace pitool {

/// With more drives, good ones have no sheet.
constexpr std::size_t HTML_SHEETS_OF_ALL = 500;

/// The page: what to act on first, pictures of wear, models, all drives, and the sheets.
/// @param drives  in the order shown; their details are their sheets as HTML, empty where they have none
/// @param refused inputs that gave no drive
std::string HtmlPage(const DriveList& drives, const Refusals& refused);

}  // namespace pitool
