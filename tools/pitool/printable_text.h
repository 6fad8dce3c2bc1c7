// SPDX-License-Identifier: Apache-2.0
/// @file
/// Foreign text on a terminal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pitool {

/// The text with everything that could steer a terminal replaced by '?': control characters (C0, DEL, C1),
/// characters that turn the writing direction or break the line, and bytes that are not UTF-8.
std::string PrintableText(std::string_view text);

/// Length in bytes of the UTF-8 character at the beginning of a text that is not empty; 0 when there is none.
///
/// @param codePoint out: meaningful when there is one
std::size_t DecodeCharacter(std::string_view text, std::uint32_t& codePoint);

/// How many characters a printable UTF-8 text holds; good for aligning columns of names.
std::size_t CharacterCount(std::string_view text);

}  // namespace pitool
