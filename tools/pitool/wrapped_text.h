// SPDX-License-Identifier: Apache-2.0
/// @file
/// Text over several lines.
#pragma once

#include "print/style.h"
#include "print/terminal.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pitool {

/// Text in fewer columns than these is not worth reading.
constexpr std::size_t NARROWEST_TEXT = 8;

/// Divides a printable text into lines of a width: at blanks, else behind '/', else behind '_' or '-', else
/// anywhere.
/// Nothing but the blanks at the breaks is lost.
///
/// @param width in columns; a character that is wider has a line of its own
/// @return at least one line
std::vector<std::string_view> WrapText(std::string_view text, std::size_t width);

/// Width of the longest piece of a printable text that WrapText would not like to divide.
std::size_t LongestPiece(std::string_view text);

/// Adds a text for reading and ends its line. Where it does not fit the screen it goes on in further lines.
///
/// @param lead        stands before the first line
/// @param furtherLead stands before the others; where the wider of both leaves less than NARROWEST_TEXT, the
///                    text stays in one line
void AddWrapped(std::string_view lead, std::string_view furtherLead, std::string_view text, Style style,
                const Screen& screen, std::string& output);

}  // namespace pitool
