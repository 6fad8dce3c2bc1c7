// SPDX-License-Identifier: Apache-2.0
// The rules by which the model text of a SATA drive is split, step by step, to compare the library's with.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>

namespace PI::Test {

struct Names {
    std::string m_Vendor;
    std::string m_Model;
};

inline bool operator==(const Names& left, const Names& right) {
    return left.m_Vendor == right.m_Vendor && left.m_Model == right.m_Model;
}

inline std::ostream& operator<<(std::ostream& stream, const Names& names) {
    return stream << '"' << names.m_Vendor << "\" / \"" << names.m_Model << '"';
}

inline char Upper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 32) : character;
}

inline std::string Upper(std::string text) {
    for (char& character : text) {
        character = Upper(character);
    }
    return text;
}

inline std::string Strip(std::string text) {
    const std::string whiteSpace = " \t\n\v\f\r";
    while (!text.empty() && whiteSpace.find(text.back()) != std::string::npos) {
        text.pop_back();
    }
    while (!text.empty() && whiteSpace.find(text.front()) != std::string::npos) {
        text.erase(0, 1);
    }
    return text;
}

inline Names ExpectedSplit(const std::string& modelText) {
    std::string work = Strip(modelText);
    for (char& character : work) {
        if (character == '_') {
            character = ' ';
        }
    }
    const std::size_t blank = work.find(' ');
    const bool hasBlank = blank != std::string::npos;
    const std::size_t intel = work.find("INTEL");
    const auto prefix = [&work](std::size_t length) { return work.substr(0, length); };

    std::string vendor;
    std::string model;
    if (hasBlank && intel != std::string::npos && intel > 0) {
        model = work.substr(0, intel - 1);
        vendor = work.substr(intel);
    } else if (prefix(7) == "SATADOM") {
        vendor = "INNODISK";
        model = work;
    } else if (Upper(prefix(6)) == "MICRON") {
        vendor = "MICRON";
        model = work;
        for (int word = 0; word < 2; ++word) {
            if (model.find(' ') != std::string::npos) {
                model = model.substr(model.find(' ') + 1);
            }
        }
    } else if (hasBlank) {
        vendor = work.substr(0, blank);
        model = work.substr(blank + 1);
        if (Upper(vendor) == "OPTIARC") {
            vendor = "SONY";
            model = work;
        } else if (vendor.substr(0, 6) == "HL-DT-") {
            vendor = "LG";
            model = work;
        }
    } else {
        model = work;
        const std::string three = prefix(3);
        if (prefix(4) == "STEC") {
            vendor = "STEC";
        } else if (prefix(2) == "ST" && work.size() >= 4 && work[3] >= '0' && work[3] <= '9') {
            vendor = "SEAGATE";
        } else if (three == "HTE" || three == "HDS" || three == "HCC" || three == "HUA" || three == "HTS" ||
                   three == "HDE" || three == "HUC") {
            vendor = "HGST";
        } else if (prefix(6) == "HL-DT-") {
            vendor = "LG";
        } else {
            vendor = "--";
        }
    }
    return {Strip(vendor), Strip(model)};
}

}  // namespace PI::Test
