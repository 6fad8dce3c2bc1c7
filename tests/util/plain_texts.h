// SPDX-License-Identifier: Apache-2.0
// The rules of the text utilities, byte by byte, to compare the library's with.
#pragma once

#include <boost/format.hpp>
#include <string>
#include <vector>

namespace PI::Test {

/// What a byte becomes in a URL.
inline std::string EncodedByte(unsigned char byte) {
    static const std::string copied =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 ()-.:_~";
    static const std::string dropped = "\x01\x16\xBE\xEE";
    const char character = static_cast<char>(byte);
    if (copied.find(character) != std::string::npos) {
        return std::string(1, character);
    }
    if (dropped.find(character) != std::string::npos) {
        return std::string();
    }
    return (boost::format("%%%02x") % static_cast<unsigned>(byte)).str();
}

/// What a byte counts as in a password.
enum CharacterClass { upper, lower, digit, special, none };

inline CharacterClass Class(int byte) {
    if (byte >= 'A' && byte <= 'Z') {
        return upper;
    }
    if (byte >= 'a' && byte <= 'z') {
        return lower;
    }
    if (byte >= '0' && byte <= '9') {
        return digit;
    }
    return byte > 32 && byte < 127 ? special : none;
}

/// A dump in which every byte is formatted by itself, as a number.
inline std::string FormattedDump(const std::vector<unsigned char>& data, unsigned long first,
                                 unsigned long end) {
    std::string out;
    for (unsigned long i = first; i < end; ++i) {
        out += (boost::format(i + 1 < end ? "%02X " : "%02X") % static_cast<unsigned>(data[i])).str();
    }
    return out;
}

}  // namespace PI::Test
