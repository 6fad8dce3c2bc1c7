// SPDX-License-Identifier: Apache-2.0
// Numbers read from text in the plainest form, to compare the library's way with.
#pragma once

#include <locale>
#include <optional>
#include <sstream>
#include <string>

namespace PI::Test {

/// A stream of its own for every text.
template <class Number>
std::optional<Number> ReadPlainly(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    Number number = {};
    stream >> std::dec >> std::skipws >> std::noboolalpha >> number;
    const bool isConsumed = stream.rdbuf()->sgetc() == std::istringstream::traits_type::eof();
    return stream.fail() || !isConsumed ? std::nullopt : std::optional<Number>(number);
}

}  // namespace PI::Test
