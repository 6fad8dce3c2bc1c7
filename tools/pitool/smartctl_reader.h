// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reads what "smartctl --json -a" prints.
#pragma once

#include "drive_report.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace pitool {

/// Deepest nesting of objects and arrays that is read; smartctl needs less than ten levels.
constexpr std::size_t MAX_NESTING = 64;

/// Longest text that is taken from a report, in bytes.
constexpr std::size_t MAX_TEXT_LENGTH = 256;

/// Reads a report from JSON text.
///
/// Unknown members are passed over. A member that is used must be of its type and within its range, else the
/// whole report is refused: half-understood figures help nobody. No tree of the text is built.
///
/// @param report out: meaningful when the result is true
/// @param reason out: why the text is refused, in one line, when the result is false
bool ReadSmartctlReport(std::string_view text, DriveReport& report, std::string& reason);

}  // namespace pitool
