// SPDX-License-Identifier: Apache-2.0

#include "printable_text.h"

#include <cstddef>
#include <cstdint>

namespace service {
namespace {

/// Length of the UTF-8 character at the start of a text; 0 when there is none.
std::size_t DecodeCharacter(std::string_view text, std::uint32_t& character) {
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if ((length > 1 && (lead < 0xC2 || lead > 0xF4)) || text.size() < length) {
        return 0;
    }
    character = length == 1 ? lead : lead & (0x7FU >> length);
    for (const char next : text.substr(1, length - 1)) {
        const auto byte = static_cast<unsigned char>(next);
        if ((byte & 0xC0U) != 0x80) {
            return 0;
        }
        character = character << 6U | (byte & 0x3FU);
    }
    constexpr std::uint32_t SMALLEST[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    return character < SMALLEST[length] || character > 0x10FFFF || isSurrogate ? 0 : length;
}

bool IsPrintable(std::uint32_t character) {
    const auto isIn = [character](std::uint32_t first, std::uint32_t last) {
        return character >= first && character <= last;
    };
    const bool isControl = isIn(0, 0x1F) || isIn(0x7F, 0x9F);
    const bool breaksLine = isIn(0x2028, 0x2029);
    const bool turnsDirection =
        isIn(0x061C, 0x061C) || isIn(0x200E, 0x200F) || isIn(0x202A, 0x202E) || isIn(0x2066, 0x2069);
    return !isControl && !breaksLine && !turnsDirection;
}

}  // namespace

std::string PrintableText(std::string_view text) {
    std::string printable;
    while (!text.empty()) {
        std::uint32_t character = 0;
        const std::size_t length = DecodeCharacter(text, character);
        if (length != 0 && IsPrintable(character)) {
            printable.append(text.substr(0, length));
        } else {
            printable.push_back('?');
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return printable;
}

}  // namespace service
