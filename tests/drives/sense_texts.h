// SPDX-License-Identifier: Apache-2.0
// Texts of additional sense codes as they were fixed, kept apart from the library's own list, to compare it
// with.
#pragma once

#include <boost/format.hpp>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace PI::Test {

using SenseTexts = std::map<std::pair<unsigned, unsigned>, std::string>;

/// The T10 list as it was fixed: code, qualifier and text, under a row of headings.
inline SenseTexts ReadSenseTexts(const char* path) {
    std::ifstream stream(path);
    std::string row;
    std::getline(stream, row);
    SenseTexts texts;
    while (std::getline(stream, row)) {
        std::istringstream columns(row);
        unsigned asc = 0;
        unsigned ascq = 0;
        std::string text;
        if (!(columns >> std::hex >> asc >> ascq) || columns.get() != '\t' || !std::getline(columns, text) ||
            !texts.emplace(std::pair(asc, ascq), text).second) {
            throw std::runtime_error("bad row: " + row);
        }
    }
    return texts;
}

/// The text of a pair that is not in the list.
inline std::string SensePatternText(unsigned char asc, unsigned char ascq) {
    // An unsigned char goes into a Boost format as the character that it is, %x or not.
    if (asc == 0x40 && ascq >= 0x80) {
        return (boost::format("diagnostic failure on component 0x%x") % ascq).str();
    }
    if (asc == 0x4D) {
        return (boost::format("tagged overlapped commands (task tag 0x%x)") % ascq).str();
    }
    if (asc == 0x70) {
        return (boost::format("decompression exception short algorithm id of 0x%x") % ascq).str();
    }
    return std::string();
}

}  // namespace PI::Test
