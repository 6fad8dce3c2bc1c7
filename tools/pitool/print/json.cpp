// SPDX-License-Identifier: Apache-2.0

#include "print/json.h"

#include "print/text.h"

#include <algorithm>
#include <cstdio>

namespace pitool {
namespace {

constexpr int LEVELS_WITH_LINES = 2;

bool IsPlain(char byte) {
    return byte >= ' ' && byte < '\x7F' && byte != '"' && byte != '\\';
}

void AddEscape(std::uint32_t unit, std::string& text) {
    char escape[16];
    std::snprintf(escape, sizeof escape, "\\u%04x", unit);
    text += escape;
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
    constexpr std::uint32_t REPLACEMENT = 0xFFFD;
    constexpr std::uint32_t FIRST_PAIR = 0x10000;
    std::uint32_t codePoint = 0;
    const std::size_t length = DecodeCharacter(value, codePoint);
    codePoint = length != 0 ? codePoint : REPLACEMENT;
    if (codePoint >= FIRST_PAIR) {
        AddEscape(0xD800 + ((codePoint - FIRST_PAIR) >> 10U), text);
        codePoint = 0xDC00 + ((codePoint - FIRST_PAIR) & 0x3FFU);
    }
    AddEscape(codePoint, text);
    return std::max(length, std::size_t{1});
}

}  // namespace

bool IsPlainJson(std::string_view value) {
    return std::all_of(value.begin(), value.end(), IsPlain);
}

void AddJsonText(std::string_view value, std::string& text) {
    text += '"';
    while (!value.empty()) {
        std::size_t length = 0;
        while (length < value.size() && IsPlain(value[length])) {
            ++length;
        }
        text.append(value, 0, length);
        value.remove_prefix(length);
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
