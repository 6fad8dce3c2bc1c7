// SPDX-License-Identifier: Apache-2.0
// The list of SATA drives searched row by row, to compare the library's search with.
#pragma once

#include <cctype>
#include <cstddef>
#include <iterator>
#include <string>

#include "drives/expected_ssd_endurance.h"

namespace PI::Test {

inline std::string Lower(std::string text) {
    for (char& character : text) {
        character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
    return text;
}

/// The index of the first expected row that matches, or -1.
inline int ExpectedRow(const std::string& model) {
    for (std::size_t i = 0; i < std::size(EXPECTED_SATA); ++i) {
        const std::string rowModel = Lower(EXPECTED_SATA[i].m_Model);
        const std::size_t length = EXPECTED_SATA[i].m_MatchLength;
        const bool matches = length == 0 ? Lower(model) == rowModel
                                         : Lower(model).substr(0, length) == rowModel.substr(0, length);
        if (matches) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

}  // namespace PI::Test
