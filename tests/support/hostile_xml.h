// SPDX-License-Identifier: Apache-2.0
// XML texts that are made to harm their reader.
#pragma once

#include <cstddef>
#include <string>

namespace PI::Test {

/// A document type in which entity e9 stands for a thousand million times "ha".
inline std::string EntityBomb() {
    std::string text = "<!DOCTYPE Bomb [<!ENTITY e0 \"ha\">";
    for (int i = 1; i <= 9; ++i) {
        text += "<!ENTITY e" + std::to_string(i) + " \"";
        for (int j = 0; j < 10; ++j) {
            text += "&e" + std::to_string(i - 1) + ";";
        }
        text += "\">";
    }
    return text + "]>";
}

/// A document type in which entity e9 stands for the content of a file.
inline std::string ExternalEntity(const std::string& file) {
    return "<!DOCTYPE Outside SYSTEM \"" + file + "\" [<!ENTITY % more SYSTEM \"" + file +
           "\"> %more; <!ENTITY e9 SYSTEM \"file://" + file + "\">]>";
}

/// Elements inside each other, so many levels, around a content.
inline std::string Nested(std::size_t levels, const std::string& content) {
    std::string text;
    for (std::size_t i = 0; i < levels; ++i) {
        text += "<Level>";
    }
    text += content;
    for (std::size_t i = 0; i < levels; ++i) {
        text += "</Level>";
    }
    return text;
}

/// A text of ASCII characters in UTF-16 of little-endian or big-endian order, with its byte order mark.
inline std::string Utf16(const std::string& text, bool bigEndian) {
    std::string encoded = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char character : text) {
        const char zero = '\0';
        encoded += bigEndian ? zero : character;
        encoded += bigEndian ? character : zero;
    }
    return encoded;
}

}  // namespace PI::Test
