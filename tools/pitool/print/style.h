// SPDX-License-Identifier: Apache-2.0
/// @file
/// How text stands out. A style only adds to what the words say.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pitool {

enum class Style : std::uint8_t {
    PLAIN,
    HEADING,
    FAILING,  ///< failing drives, errors
    WARNING,  ///< worn drives, warnings
    FAINT,    ///< what is not known or does not apply, lines of a tree
};

/// Adds a text in a style. The text must be printable already: what comes from files brings no style of its
/// own.
void AddStyled(std::string_view printable, Style style, bool colors, std::string& text);

/// The style of a severity as the library names it.
Style SeverityStyle(std::string_view severity);

}  // namespace pitool
