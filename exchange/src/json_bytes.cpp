// SPDX-License-Identifier: Apache-2.0

#include "json_bytes.h"

#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>

#include <algorithm>
#include <charconv>

namespace PI {

namespace {

/// Length of the character at a place; 0 when there is none.
std::size_t CharacterLength(std::string_view text, std::size_t place) {
    rapidjson::MemoryStream stream(text.data() + place, text.size() - place);
    unsigned character = 0;
    return rapidjson::UTF8<>::Decode(stream, &character) ? stream.Tell() : 0;
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char byte) { return (byte & 0x80) == 0; });
}

}  // namespace

bool IsUtf8(std::string_view text) {
    if (IsAscii(text)) {
        return true;
    }
    for (std::size_t place = 0; place < text.size();) {
        const std::size_t length = CharacterLength(text, place);
        if (length == 0) {
            return false;
        }
        place += length;
    }
    return true;
}

std::string ReadableText(std::string_view text) {
    std::string readable;
    for (std::size_t place = 0; place < text.size();) {
        const std::size_t length = CharacterLength(text, place);
        readable += length == 0 ? "\xEF\xBF\xBD" : text.substr(place, length);
        place += std::max<std::size_t>(length, 1);
    }
    return readable;
}

std::string HexText(std::string_view bytes) {
    constexpr char DIGITS[] = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const char byte : bytes) {
        text += DIGITS[static_cast<unsigned char>(byte) >> 4];
        text += DIGITS[static_cast<unsigned char>(byte) & 0xF];
    }
    return text;
}

bool BytesOfHexText(std::string_view text, std::string& bytes) {
    if (text.size() % 2 != 0) {
        return false;
    }
    std::string read;
    read.reserve(text.size() / 2);
    for (std::size_t place = 0; place < text.size(); place += 2) {
        const char* const end = text.data() + place + 2;
        unsigned char byte = 0;
        if (std::from_chars(text.data() + place, end, byte, 16).ptr != end) {
            return false;
        }
        read += static_cast<char>(byte);
    }
    bytes = std::move(read);
    return true;
}

}  // namespace PI
