// SPDX-License-Identifier: Apache-2.0
/// @file
/// Drives as one HTML page that can be mailed and printed: no scripts, no addresses.
#pragma once

#include "drive_summary.h"

#include <pi/exchange/smartctl.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace pitool {

/// With more drives, good ones have no sheet.
constexpr std::size_t HTML_SHEETS_OF_ALL = 500;

/// The sheet of a drive, as a part of the page.
std::string HtmlSheet(const PI::CDriveReport& report, const DecidedHealth& health);

/// The page: what to act on first, pictures of wear, models, all drives, and the sheets.
/// @param drives  in the order shown; their details are their sheets, empty where they have none
/// @param refused inputs that gave no drive, and why
std::string HtmlText(const std::vector<const DriveSummary*>& drives,
                     const std::vector<std::pair<std::string, std::string>>& refused);

}  // namespace pitool
