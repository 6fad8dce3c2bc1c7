// SPDX-License-Identifier: Apache-2.0
// Patterns of model texts and names, as a shell has them, but without regard to case and to the locale.
#pragma once

#include <string_view>

#include "util/text.h"

namespace PI {

/// Whether a text fits a pattern: * matches any characters, ? for one, [abc] and [a-c] for one of those.
constexpr bool FitsPattern(std::string_view pattern, std::string_view text) {
    std::size_t at = 0;  // in the pattern
    std::size_t place = 0;
    std::size_t afterStar = std::string_view::npos;  // in the pattern, and where in the text it is tried
    std::size_t tried = 0;
    while (place < text.size()) {
        bool fits = false;
        std::size_t next = at + 1;
        if (at < pattern.size() && pattern[at] == '*') {
            afterStar = next;
            tried = place;
            at = next;
            continue;
        }
        if (at < pattern.size() && pattern[at] == '[') {
            const std::size_t close = pattern.find(']', at);
            for (std::size_t i = at + 1; i < close; ++i) {
                const bool isRange = i + 2 < close && pattern[i + 1] == '-';
                const char last = pattern[isRange ? i + 2 : i];
                const char character = ToUpper(text[place]);
                fits = fits || (ToUpper(pattern[i]) <= character && character <= ToUpper(last));
                i += isRange ? 2 : 0;
            }
            next = close + 1;
        } else if (at < pattern.size()) {
            fits = pattern[at] == '?' || ToUpper(pattern[at]) == ToUpper(text[place]);
        }
        if (fits) {
            at = next;
            ++place;
        } else if (afterStar != std::string_view::npos) {
            at = afterStar;
            place = ++tried;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', at) == std::string_view::npos;
}

}  // namespace PI
