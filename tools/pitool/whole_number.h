// SPDX-License-Identifier: Apache-2.0
/// @file
/// Whole numbers from text.
#pragma once

#include <charconv>
#include <string_view>
#include <system_error>

namespace pitool {

/// Reads a decimal number that makes up the whole text: digits, a minus sign before them for signed types,
/// nothing else.
///
/// @param number out: written only when the result is true
/// @return false also when the number does not fit the type
template <class Number>
bool ReadWholeNumber(std::string_view text, Number& number) {
    Number read = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, read);
    if (error != std::errc() || rest != end) {
        return false;
    }
    number = read;
    return true;
}

}  // namespace pitool
