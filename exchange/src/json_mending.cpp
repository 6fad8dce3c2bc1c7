// SPDX-License-Identifier: Apache-2.0
// Changes invalid values of a JSON text into ones that a parser accepts, so that they do not cost the
// document.

#include <algorithm>

#include "json_values.h"

namespace PI {

namespace {

bool IsJson(const std::string& value) {
    rapidjson::StringStream stream(value.c_str());
    rapidjson::BaseReaderHandler<> nothing;
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonMemory> reader;
    return !reader.Parse<rapidjson::kParseNanAndInfFlag>(stream, nothing).IsError();
}

/// How long an escape is, or a pair of them that makes one character; 0 when it is none.
std::size_t EscapeLength(const std::string& text, std::size_t place) {
    for (const std::size_t length : {12U, 6U, 2U}) {
        if (IsJson('"' + text.substr(place, length) + '"')) {
            return length;
        }
    }
    return 0;
}

bool IsControl(char character, bool isText) {
    const bool isBlank = character == '\t' || character == '\r' || character == '\n';
    return static_cast<unsigned char>(character) < ' ' && (isText || !isBlank);
}

}  // namespace

bool MendJson(std::string& text, std::size_t start) {
    const std::string before = text.substr(start, std::min(text.find("\n{", start), text.size()) - start);
    std::string mended = before;
    bool isText = false;
    for (std::size_t at = 0; at < mended.size(); ++at) {
        char& is = mended[at];
        const std::size_t end = std::min(mended.find_first_not_of("0123456789+-.eE", at), mended.size());
        if (isText && is == '\\') {
            const std::size_t length = EscapeLength(mended, at);
            is = length == 0 ? '/' : is;
            at += std::max<std::size_t>(length, 1) - 1;
        } else if (!isText && end > at + 1 && is != 'e' && is != 'E') {
            if (!IsJson(mended.substr(at, end - at))) {
                const std::string nothing = end - at < 4 ? "\"\"" : "null";
                mended.replace(at, end - at, nothing + std::string(end - at - nothing.size(), ' '));
            }
            at = end - 1;
        } else if (IsControl(is, isText)) {
            is = ' ';
        } else {
            isText = isText != (is == '"');
        }
    }
    text.replace(start, mended.size(), mended);
    return mended != before;
}

}  // namespace PI
