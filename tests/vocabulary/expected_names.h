// SPDX-License-Identifier: Apache-2.0
// The names as they were fixed, read from number<TAB>name files.
#pragma once

#include <fstream>
#include <map>
#include <stdexcept>
#include <string>

namespace PI::Test {

/// @param file such as "error_codes.tsv"
inline std::map<int, std::string> ExpectedNames(const std::string& file) {
    std::ifstream stream(std::string(EXPECTED_NAMES_DIR) + "/" + file);
    std::map<int, std::string> names;
    for (std::string row; std::getline(stream, row);) {
        const std::size_t tab = row.find('\t');
        if (tab == std::string::npos || !names.emplace(std::stoi(row), row.substr(tab + 1)).second) {
            throw std::runtime_error(file + ": bad row: " + row);
        }
    }
    return names;
}

}  // namespace PI::Test
