// SPDX-License-Identifier: Apache-2.0
/// @file
/// Foreign text on a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pitool {

/// The text with everything that could steer a terminal replaced by '?': control characters (C0, DEL, C1),
/// characters that turn the writing direction or break the line, and bytes that are not UTF-8.
std::string PrintableText(std::string_view text);

/// How many characters a printable UTF-8 text holds; good for aligning columns of names.
std::size_t CharacterCount(std::string_view text);

}  // namespace pitool
