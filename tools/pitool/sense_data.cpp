// SPDX-License-Identifier: Apache-2.0

#include "sense_data.h"

#include "quoted_text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <system_error>
#include <vector>

namespace pitool {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int HEXADECIMAL = 16;

bool ReadHexDigits(std::string_view text, std::uint8_t& byte) {
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, byte, HEXADECIMAL);
    return error == std::errc() && rest == end && text.size() <= 2;
}

/// Reads a word of the text: a byte, or several written without separators.
bool ReadWord(std::string_view word, Bytes& bytes) {
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

bool ReadBytes(std::string_view text, Bytes& bytes, std::string& reason) {
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

bool TooShort(const Bytes& bytes, const char* place, std::string& reason) {
    reason = "too short: " + std::to_string(bytes.size()) + (bytes.size() == 1 ? " byte" : " bytes") +
             ", but the additional sense code and its qualifier stand in bytes " + place;
    return false;
}

bool ReadFixed(const Bytes& bytes, SenseCodes& codes, std::string& reason) {
    constexpr std::size_t LENGTH_BYTE = 7;
    constexpr std::size_t NEEDED = 14;
    if (bytes.size() < NEEDED) {
        return TooShort(bytes, "12 and 13", reason);
    }
    // Behind the additional length, what stands in the buffer is no sense data.
    const std::size_t needed = NEEDED - (LENGTH_BYTE + 1);
    if (bytes[LENGTH_BYTE] < needed) {
        reason = "too short: the additional sense length (byte 7) is " + std::to_string(bytes[LENGTH_BYTE]) +
                 ", but the additional sense code and its qualifier need " + std::to_string(needed);
        return false;
    }
    codes.m_Format = SenseFormat::FIXED;
    codes.m_Key = bytes[2] & 0x0FU;
    codes.m_ASC = bytes[12];
    codes.m_ASCQ = bytes[13];
    return true;
}

bool ReadDescriptor(const Bytes& bytes, SenseCodes& codes, std::string& reason) {
    constexpr std::size_t NEEDED = 4;
    if (bytes.size() < NEEDED) {
        return TooShort(bytes, "2 and 3", reason);
    }
    codes.m_Format = SenseFormat::DESCRIPTOR;
    codes.m_Key = bytes[1] & 0x0FU;
    codes.m_ASC = bytes[2];
    codes.m_ASCQ = bytes[3];
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

bool ReadSenseData(std::string_view text, SenseCodes& codes, std::string& reason) {
    Bytes bytes;
    if (!ReadBytes(text, bytes, reason)) {
        return false;
    }
    if (bytes.empty()) {
        reason = "empty";
        return false;
    }
    codes = SenseCodes();
    codes.m_ResponseCode = bytes[0] & 0x7FU;  // the highest bit says that another field is valid
    codes.m_Deferred = (codes.m_ResponseCode & 1U) != 0;
    switch (codes.m_ResponseCode) {
        case 0x70:
        case 0x71: return ReadFixed(bytes, codes, reason);
        case 0x72:
        case 0x73: return ReadDescriptor(bytes, codes, reason);
        case 0x7F: reason = "response code 7Fh: the vendor's own format"; return false;
        default: break;
    }
    reason = "response code " + HexText(codes.m_ResponseCode) +
             ": neither fixed (70h, 71h) nor descriptor (72h, 73h) format";
    return false;
}

}  // namespace pitool
