// SPDX-License-Identifier: Apache-2.0
/// @file
/// Bytes as hexadecimal text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pitool {

/// Reads a hexadecimal number of one or two digits; "0x" may lead, "h" may follow.
bool ReadHexByte(std::string_view text, std::uint8_t& byte);

/// Reads hexadecimal bytes, separated by blanks or commas or not at all.
///
/// @param bytes  out: the bytes are appended
/// @param reason out: why the text is refused, in one line, when the result is false
bool ReadHexBytes(std::string_view text, std::vector<std::uint8_t>& bytes, std::string& reason);

/// A byte as the standard writes it, such as "4Dh".
std::string HexText(std::uint8_t byte);

}  // namespace pitool
