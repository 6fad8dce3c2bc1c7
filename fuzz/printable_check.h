// SPDX-License-Identifier: Apache-2.0
// What may reach a terminal.
#pragma once

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>

#include "check.h"

namespace PI::Fuzz {

/// A text of lines, in UTF-8, without control characters: none that steers a terminal gets through.
inline void CheckPrintable(const std::string& text) {
    CHECK(std::none_of(text.begin(), text.end(), [](char character) {
        return (character >= 0 && character < ' ' && character != '\n') || character == '\x7F';
    }));
    CHECK(text.find("\xC2\x9B") == std::string::npos);  // the one-character form of "escape ["
    CHECK_TEXT(nlohmann::json::parse(nlohmann::json(text).dump()).get<std::string>(), text);
}

}  // namespace PI::Fuzz
