// SPDX-License-Identifier: Apache-2.0
// Odd values of a JSON text made into ones that a parser takes, so that they cost no document.

#include <algorithm>

#include "json_values.h"

namespace PI {

namespace {

bool IsNumber(const std::string& token) {
    rapidjson::StringStream stream(token.c_str());
    rapidjson::BaseReaderHandler<> nothing;
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonMemory> reader;
    return !reader.Parse<rapidjson::kParseNanAndInfFlag>(stream, nothing).IsError();
}

/// Four hexadecimal digits after \u; -1 when they are none.
int CodeUnit(const std::string& text, std::size_t escape) {
    if (text.compare(escape, 2, "\\u") != 0 || text.size() < escape + 6) {
        return -1;
    }
    const std::string digits = text.substr(escape + 2, 4);
    return digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos
               ? static_cast<int>(std::stoul(digits, nullptr, 16))
               : -1;
}

/// Mends an escape where it must be.
/// @return how long it is
std::size_t MendEscape(std::string& text, std::size_t place) {
    constexpr std::size_t LENGTH = 6;
    const int unit = CodeUnit(text, place);
    if (unit < 0) {
        if (place + 1 < text.size() &&
            std::string_view("\"\\/bfnrt").find(text[place + 1]) != std::string_view::npos) {
            return 2;
        }
        text[place] = '/';
        return 1;
    }
    // The first half of a pair must not be alone; a parser takes a second one.
    const bool isFirst = unit >= 0xD800 && unit < 0xDC00;
    const int next = isFirst ? CodeUnit(text, place + LENGTH) : -1;
    if (next >= 0xDC00 && next < 0xE000) {
        return 2 * LENGTH;
    }
    if (isFirst) {
        text.replace(place, LENGTH, "\\ufffd");
    }
    return LENGTH;
}

}  // namespace

bool MendJson(std::string& text, std::size_t start) {
    const std::string before = text.substr(start, std::min(text.find("\n{", start), text.size()) - start);
    std::string mended = before;
    bool isText = false;
    for (std::size_t at = 0; at < mended.size();) {
        const char is = mended[at];
        if (isText && is == '\\') {
            at += MendEscape(mended, at);
            continue;
        }
        const std::size_t end = std::min(mended.find_first_not_of("0123456789+-.eE", at), mended.size());
        if (!isText && end != at && is != 'e' && is != 'E') {
            if (const std::string token = mended.substr(at, end - at); token.size() > 1 && !IsNumber(token)) {
                const std::string nothing = token.size() < 4 ? "\"\"" : "null";
                mended.replace(at, token.size(), nothing + std::string(token.size() - nothing.size(), ' '));
            }
            at = end;
            continue;
        }
        const bool isControl = static_cast<unsigned char>(is) < ' ';
        if (isControl && (isText || std::string_view("\t\r\n").find(is) == std::string_view::npos)) {
            mended[at] = ' ';
        }
        isText = isText != (is == '"');
        ++at;
    }
    text.replace(start, mended.size(), mended);
    return mended != before;
}

}  // namespace PI
