// SPDX-License-Identifier: Apache-2.0
// How an event stores its placeholders: a prefix, and a text or the number of a language resource.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "util/number_reader.h"

namespace PI {

constexpr char TEXT_PREFIX[] = "T:";
constexpr char RESOURCE_PREFIX[] = "I:";
constexpr std::size_t PREFIX_LENGTH = 2;

/// Reads a stored placeholder.
/// @param resolve called with the number of a resource and the text to write
template <class Resolve>
void ReadPlaceHolder(const std::string& stored, std::string& text, Resolve&& resolve) {
    const auto hasPrefix = [&](const char* prefix) { return stored.compare(0, PREFIX_LENGTH, prefix) == 0; };
    // A text placeholder that is empty keeps its prefix here: stored events stay as they are.
    if (stored.size() <= PREFIX_LENGTH) {
        text = stored;
    } else if (hasPrefix(RESOURCE_PREFIX)) {
        const auto number = NumberReader().Read<int>(std::string_view(stored).substr(PREFIX_LENGTH));
        resolve(static_cast<unsigned int>(number.value_or(0)), text);
    } else if (hasPrefix(TEXT_PREFIX)) {
        text.assign(stored, PREFIX_LENGTH, std::string::npos);
    } else {
        text = stored;
    }
}

}  // namespace PI
