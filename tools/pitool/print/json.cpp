// SPDX-License-Identifier: Apache-2.0

#include "print/json.h"

#include <unistr.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace pitool {
namespace {

constexpr int LEVELS_WITH_LINES = 2;

bool IsPlain(char byte) {
    return byte >= ' ' && byte < '\x7F' && byte != '"' && byte != '\\';
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

inline void JsonWriter::Put(std::string_view part) {
    if (m_Text.size() - m_Size < part.size()) {
        m_Text.resize(2 * (m_Size + part.size()));
    }
    m_Size += part.copy(&m_Text[m_Size], part.size());
}

void JsonWriter::Break() {
    constexpr std::string_view LINE = "\n    ";
    if (m_Depth <= LEVELS_WITH_LINES) {
        Put(LINE.substr(0, 1 + 2 * static_cast<std::size_t>(m_Depth)));
    }
}

void JsonWriter::Separate() {
    if (m_HasName) {
        m_HasName = false;
    } else if (m_Depth > 0) {
        Put(m_First ? std::string_view() : ",");
        Break();
    }
    m_First = false;
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

JsonWriter& JsonWriter::Name(std::string_view name) {
    Separate();
    Put("\"");
    Put(name);
    Put(m_Depth <= LEVELS_WITH_LINES ? std::string_view("\": ") : "\":");
    m_HasName = true;
    return *this;
}

void JsonWriter::Raw(std::string_view json) {
    Separate();
    Put(json);
}

}  // namespace pitool
