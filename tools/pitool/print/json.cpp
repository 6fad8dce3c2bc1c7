// SPDX-License-Identifier: Apache-2.0

#include "print/json.h"

#include <unistr.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace pitool {
namespace {

/// In one comparison for nearly all bytes: texts are long.
bool IsPlain(char byte) {
    return (byte > '"' && byte < '\\') || (byte > '\\' && byte < '\x7F') || byte == ' ' || byte == '!';
}

/// The first character of a text, one that is not plain.
/// @param length out: in bytes
std::string Escaped(std::string_view value, std::size_t& length) {
    constexpr std::string_view SHORT = "\"\\\n\t";
    constexpr const char* ESCAPES[] = {"\\\"", "\\\\", "\\n", "\\t"};
    length = 1;
    if (const std::size_t place = SHORT.find(value.front()); place != std::string_view::npos) {
        return ESCAPES[place];
    }
    ucs4_t codePoint = 0;  // U+FFFD where there is no character
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(value.data());
    length = static_cast<std::size_t>(std::max(u8_mbtoucr(&codePoint, bytes, value.size()), 1));
    std::uint16_t units[2] = {};
    const int count = u16_uctomb(units, codePoint, 2);
    char escapes[16];
    std::snprintf(escapes, sizeof escapes, count == 1 ? "\\u%04x" : "\\u%04x\\u%04x", units[0], units[1]);
    return escapes;
}

}  // namespace

void JsonWriter::Grow(std::size_t size) {
    constexpr std::size_t LEAST = 12288;  // a drive of pitool drive --json takes about 8,000
    m_Text.resize(2 * m_Text.size() + size + LEAST);
}

void JsonWriter::Break() {
    constexpr std::string_view LINE = "\n    ";
    Put(LINE.substr(0, 1 + 2 * static_cast<std::size_t>(m_Depth)));
}

void JsonWriter::AddText(std::string_view value) {
    Separate();
    Put("\"");
    while (!value.empty()) {
        const auto* const special =
            std::find_if_not(value.begin(), value.end(), [](char byte) { return IsPlain(byte); });
        std::size_t length = static_cast<std::size_t>(special - value.begin());
        Put(value.substr(0, length));
        value.remove_prefix(length);
        if (!value.empty()) {
            Put(Escaped(value, length));
            value.remove_prefix(length);
        }
    }
    Put("\"");
}

void JsonWriter::Begin(char bracket) {
    Separate();
    Put({&bracket, 1});
    ++m_Depth;
    m_First = true;
}

void JsonWriter::End(char bracket) {
    --m_Depth;
    if (!m_First && m_Depth < LEVELS_WITH_LINES) {
        Break();
    }
    Put({&bracket, 1});
    m_First = false;
}

}  // namespace pitool
