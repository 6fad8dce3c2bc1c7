// SPDX-License-Identifier: Apache-2.0
/// @file
/// How much room text takes on a terminal.
#pragma once

#include <cstddef>
#include <string_view>

namespace pitool {

/// The first character of a printable UTF-8 text.
struct Character {
    std::size_t m_Length;  ///< bytes
    std::size_t m_Width;  ///< columns: 2 for wide East Asian characters, 0 for marks that combine with others
};

/// @param text printable, not empty
Character FirstCharacter(std::string_view text);

/// Columns that a printable text takes, whatever the locale of the process.
std::size_t DisplayWidth(std::string_view text);

}  // namespace pitool
