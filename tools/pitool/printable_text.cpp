// SPDX-License-Identifier: Apache-2.0

#include "printable_text.h"

namespace pitool {
namespace {

struct Range {
    std::uint32_t m_First;
    std::uint32_t m_Last;
};

constexpr Range UNPRINTABLE[] = {
    {0x0000, 0x001F},  // C0 controls
    {0x007F, 0x009F},  // DEL and C1 controls
    {0x061C, 0x061C},  // Arabic letter mark
    {0x200E, 0x200F},  // direction marks
    {0x2028, 0x202E},  // line and paragraph separators, direction embeddings and overrides
    {0x2066, 0x2069},  // direction isolates
    {0xD800, 0xDFFF},  // surrogates are no characters
};

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

bool IsPrintable(std::uint32_t codePoint) {
    for (const Range& range : UNPRINTABLE) {
        if (codePoint >= range.m_First && codePoint <= range.m_Last) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::size_t DecodeCharacter(std::string_view text, std::uint32_t& codePoint) {
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) {
        codePoint = lead;
        return 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    constexpr std::uint32_t SMALLEST[] = {0, 0, 0x80, 0x800, 0x10000};
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return 0;
    }
    codePoint = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(text[i])) {
            return 0;
        }
        codePoint = codePoint << 6U | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    return codePoint >= SMALLEST[length] && codePoint <= 0x10FFFF ? length : 0;
}

std::string PrintableText(std::string_view text) {
    std::string printable;
    printable.reserve(text.size());
    while (!text.empty()) {
        std::uint32_t codePoint = 0;
        const std::size_t length = DecodeCharacter(text, codePoint);
        if (length != 0 && IsPrintable(codePoint)) {
            printable.append(text.substr(0, length));
        } else {
            printable.push_back('?');
        }
        text.remove_prefix(length != 0 ? length : 1);
    }
    return printable;
}

std::size_t CharacterCount(std::string_view text) {
    std::size_t count = 0;
    for (const char byte : text) {
        count += IsContinuation(byte) ? 0 : 1;
    }
    return count;
}

}  // namespace pitool
