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

/// Adds the first character of a text, one that is not plain.
/// @return its length in bytes
std::size_t AddEscaped(std::string_view value, std::string& text) {
    switch (value.front()) {
        case '"': text += "\\\""; return 1;
        case '\\': text += "\\\\"; return 1;
        case '\n': text += "\\n"; return 1;
        case '\t': text += "\\t"; return 1;
        default: break;
    }
    ucs4_t codePoint = 0;  // U+FFFD where there is no character
    const int length =
        u8_mbtoucr(&codePoint, reinterpret_cast<const std::uint8_t*>(value.data()), value.size());
    std::uint16_t units[2];
    const int count = u16_uctomb(units, codePoint, 2);
    for (int i = 0; i < count; ++i) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u%04x", units[i]);
        text += escape;
    }
    return static_cast<std::size_t>(std::max(length, 1));
}

}  // namespace

bool IsPlainJson(std::string_view value) {
    return std::all_of(value.begin(), value.end(), IsPlain);
}

void AddJsonText(std::string_view value, std::string& text) {
    text += '"';
    while (!value.empty()) {
        const auto* const special = std::find_if_not(value.begin(), value.end(), IsPlain);
        text.append(value.begin(), special);
        value.remove_prefix(static_cast<std::size_t>(special - value.begin()));
        value.remove_prefix(value.empty() ? 0 : AddEscaped(value, text));
    }
    text += '"';
}

void JsonWriter::Break() {
    if (m_Depth <= LEVELS_WITH_LINES) {
        m_Text += '\n';
        m_Text.append(2 * static_cast<std::size_t>(m_Depth), ' ');
    }
}

void JsonWriter::Separate() {
    if (m_HasName) {
        m_HasName = false;
    } else if (m_Depth > 0) {
        m_Text += m_First ? "" : ",";
        Break();
    }
    m_First = false;
}

void JsonWriter::Begin(char bracket) {
    Separate();
    m_Text += bracket;
    ++m_Depth;
    m_First = true;
}

void JsonWriter::End(char bracket) {
    --m_Depth;
    if (!m_First && m_Depth < LEVELS_WITH_LINES) {
        Break();
    }
    m_Text += bracket;
    m_First = false;
}

JsonWriter& JsonWriter::Name(std::string_view name) {
    Separate();
    AddJsonText(name, m_Text);
    m_Text += m_Depth <= LEVELS_WITH_LINES ? ": " : ":";
    m_HasName = true;
    return *this;
}

void JsonWriter::Raw(std::string_view json) {
    Separate();
    m_Text += json;
}

}  // namespace pitool
