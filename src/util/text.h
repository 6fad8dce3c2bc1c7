// SPDX-License-Identifier: Apache-2.0
// Text comparison and trimming that does not depend on the process's locale.
#pragma once

#include <algorithm>
#include <boost/algorithm/string/trim.hpp>
#include <locale>
#include <string>
#include <string_view>

namespace PI {

constexpr char ToUpper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

inline bool EqualsIgnoringCase(std::string_view left, std::string_view right) {
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(),
                      [](char one, char other) { return ToUpper(one) == ToUpper(other); });
}

inline void Trim(std::string& text) {
    boost::algorithm::trim(text, std::locale::classic());
}

}  // namespace PI
