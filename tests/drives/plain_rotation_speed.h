// SPDX-License-Identifier: Apache-2.0
// The rules of the rotation speed with plain loops, to compare the library's with.
#pragma once

#include <stdexcept>
#include <string>

namespace PI::Test {

constexpr const char* WESTERN_DIGITAL_10000[] = {
    "WD1600ADFS", "WD360ADFD",  "WD740ADFD",  "WD1500ADFD", "WD1500AHFD",
    "WD1500BLFS", "WD3000BLFS", "WD1500HLFS", "WD3000HLFS", "WD3000GLFS",
};

constexpr const char* SEAGATE_5400[] = {
    "ST9160314AS", "ST9750423AS", "ST9640320AS", "ST9500325AS", "ST9320325AS", "ST9250315AS",
};

/// @throws std::out_of_range where the library does
inline unsigned long ExpectedRPM(const std::string& vendor, const std::string& model) {
    std::string upper;
    for (const char character : vendor) {
        upper += character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
    }
    if (upper == "WDC" || upper == "WD") {
        for (const std::string prefix : WESTERN_DIGITAL_10000) {
            if (model.rfind(prefix, 0) == 0) {
                return 10000;
            }
        }
    } else if (upper == "HITACHI" || upper == "HGST") {
        if (model.size() < 3) {
            throw std::out_of_range("model");
        }
        if (model.size() >= 5 && model[3] == '1') {
            return model[4] == '0' ? 10000 : model[4] == '5' ? 15000 : 7200;
        }
        if (model.size() >= 5 && model[3] == '5' && model[4] == '4') {
            return 5400;
        }
    } else if (upper == "FUJITSU") {
        if (model.rfind("MHX2", 0) == 0) {
            return 4200;
        }
        if (model.rfind("MHY2", 0) == 0) {
            return 5400;
        }
        if (model.rfind("MHV2", 0) == 0 && model.size() >= 9 && (model[7] == 'A' || model[7] == 'B')) {
            return model[8] == 'H' ? 5400 : model[8] == 'T' ? 4200 : 7200;
        }
    } else if (upper == "SEAGATE") {
        for (const char* slow : SEAGATE_5400) {
            if (model == slow) {
                return 5400;
            }
        }
    }
    return 7200;
}

}  // namespace PI::Test
