// SPDX-License-Identifier: Apache-2.0
// Texts that JSON cannot hold: bytes that are no UTF-8, as hexadecimal digits.
#pragma once

#include <string>
#include <string_view>

namespace PI {

/// Whether every byte belongs to a character of UTF-8; zero bytes do.
bool IsUtf8(std::string_view text);

/// The text with U+FFFD in place of each byte that belongs to no character.
std::string ReadableText(std::string_view text);

/// Two lower-case digits for each byte.
std::string HexText(std::string_view bytes);

/// What HexText was made from, capital digits allowed.
/// @return false, with bytes as they were, for anything else
bool BytesOfHexText(std::string_view text, std::string& bytes);

}  // namespace PI
