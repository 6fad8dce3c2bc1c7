// SPDX-License-Identifier: Apache-2.0

#include "text_place.h"

#include "print/text.h"

#include <algorithm>

namespace pitool {

TextPlace PlaceOf(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    const std::size_t newline = before.rfind('\n');
    const std::string_view line = newline == std::string_view::npos ? before : before.substr(newline + 1);
    TextPlace place;
    place.m_Line += static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    place.m_Column += CharacterCount(line);
    return place;
}

std::string PlaceText(const std::string& file, const TextPlace& place) {
    return file + ":" + std::to_string(place.m_Line) + ":" + std::to_string(place.m_Column);
}

}  // namespace pitool
