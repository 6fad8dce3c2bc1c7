// SPDX-License-Identifier: Apache-2.0

#include "hex_bytes.h"

#include "print/text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <system_error>

namespace pitool {
namespace {

constexpr int HEXADECIMAL = 16;

bool ReadHexDigits(std::string_view text, std::uint8_t& byte) {
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, byte, HEXADECIMAL);
    return error == std::errc() && rest == end && text.size() <= 2;
}

/// Reads a word of the text: a byte, or several written without separators.
bool ReadWord(std::string_view word, std::vector<std::uint8_t>& bytes) {
    std::uint8_t byte = 0;
    if (ReadHexByte(word, byte)) {
        bytes.push_back(byte);
        return true;
    }
    if (word.size() % 2 != 0) {
        return false;
    }
    for (std::size_t i = 0; i < word.size(); i += 2) {
        if (!ReadHexDigits(word.substr(i, 2), byte)) {
            return false;
        }
        bytes.push_back(byte);
    }
    return true;
}

}  // namespace

bool ReadHexByte(std::string_view text, std::uint8_t& byte) {
    if (text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X") {
        text.remove_prefix(2);
    }
    if (!text.empty() && (text.back() == 'h' || text.back() == 'H')) {
        text.remove_suffix(1);
    }
    return ReadHexDigits(text, byte);
}

std::string HexText(std::uint8_t byte) {
    char text[4];
    std::snprintf(text, sizeof text, "%02Xh", byte);
    return text;
}

bool ReadHexBytes(std::string_view text, std::vector<std::uint8_t>& bytes, std::string& reason) {
    constexpr std::string_view SEPARATORS = " ,\t\r\n";
    for (;;) {
        text.remove_prefix(std::min(text.find_first_not_of(SEPARATORS), text.size()));
        if (text.empty()) {
            return true;
        }
        const std::string_view word = text.substr(0, text.find_first_of(SEPARATORS));
        if (!ReadWord(word, bytes)) {
            reason = Quoted(word) + " is no hexadecimal byte";
            return false;
        }
        text.remove_prefix(word.size());
    }
}

}  // namespace pitool
