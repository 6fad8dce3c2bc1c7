// SPDX-License-Identifier: Apache-2.0

#include "print/json.h"

#include "print/text.h"

#include <charconv>
#include <cmath>

namespace pitool {
namespace {

constexpr int LEVELS_WITH_LINES = 2;

template <class Value>
void AddNumber(Value value, std::string& text) {
    char digits[32];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void AddEscape(std::uint32_t unit, std::string& text) {
    constexpr const char* DIGITS = "0123456789abcdef";
    text += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
        text += DIGITS[unit >> shift & 0xF];
    }
}

void AddCharacter(std::uint32_t codePoint, std::string& text) {
    constexpr std::uint32_t FIRST_PAIR = 0x10000;
    if (codePoint < FIRST_PAIR) {
        AddEscape(codePoint, text);
    } else {
        AddEscape(0xD800 + ((codePoint - FIRST_PAIR) >> 10U), text);
        AddEscape(0xDC00 + ((codePoint - FIRST_PAIR) & 0x3FFU), text);
    }
}

bool IsPlain(char byte) {
    return byte >= ' ' && byte < '\x7F' && byte != '"' && byte != '\\';
}

}  // namespace

void AddJsonText(std::string_view value, std::string& text) {
    text += '"';
    while (!value.empty()) {
        std::size_t length = 0;
        while (length < value.size() && IsPlain(value[length])) {
            ++length;
        }
        text.append(value, 0, length);
        value.remove_prefix(length);
        if (value.empty()) {
            break;
        }
        length = 1;
        switch (value.front()) {
            case '"': text += "\\\""; break;
            case '\\': text += "\\\\"; break;
            case '\n': text += "\\n"; break;
            case '\t': text += "\\t"; break;
            default: {
                std::uint32_t codePoint = 0;
                length = DecodeCharacter(value, codePoint);
                constexpr std::uint32_t REPLACEMENT = 0xFFFD;
                const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
                AddCharacter(length == 0 || isSurrogate ? REPLACEMENT : codePoint, text);
                length = length == 0 ? 1 : length;
            }
        }
        value.remove_prefix(length);
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

void JsonWriter::Text(std::string_view value) {
    Separate();
    AddJsonText(value, m_Text);
}

void JsonWriter::TextOrNull(std::string_view value) {
    value.empty() ? Null() : Text(value);
}

void JsonWriter::Number(std::int64_t value) {
    Separate();
    AddNumber(value, m_Text);
}

void JsonWriter::Number(std::uint64_t value) {
    Separate();
    AddNumber(value, m_Text);
}

void JsonWriter::Fraction(double value) {
    if (!std::isfinite(value)) {
        Null();
        return;
    }
    Separate();
    AddNumber(value, m_Text);
}

void JsonWriter::Bool(bool value) {
    Separate();
    m_Text += value ? "true" : "false";
}

void JsonWriter::Null() {
    Separate();
    m_Text += "null";
}

void JsonWriter::Raw(std::string_view json) {
    Separate();
    m_Text += json;
}

}  // namespace pitool
