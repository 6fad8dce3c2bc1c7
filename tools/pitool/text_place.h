// SPDX-License-Identifier: Apache-2.0
/// @file
/// Places in a text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pitool {

/// A place as editors count it, from 1; columns in characters of UTF-8.
struct TextPlace {
    std::size_t m_Line = 1;
    std::size_t m_Column = 1;
};

/// A message about a place.
struct PlacedMessage {
    TextPlace m_Place;
    std::string m_Text;
};

/// The place of a byte in a text; of its end when the offset lies beyond it.
TextPlace PlaceOf(std::string_view text, std::size_t offset);

/// "file:line:column".
std::string PlaceText(const std::string& file, const TextPlace& place);

}  // namespace pitool
