// SPDX-License-Identifier: Apache-2.0
// The rules by which SMART pages are read, step by step, to compare the library's with.
#pragma once

#include <pi/drives.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

namespace PI::Test {

/// All that is known of a drive.
inline std::string TextOf(const CSmartValues& values) {
    std::ostringstream text;
    text << "endurance " << values.m_Endurance << ", hours " << values.m_PowerOnHours << ", written "
         << values.m_BytesWritten << ", spare " << values.m_SpareIndicator << ", used "
         << values.m_PercentUsed << ", vendor " << values.m_Vendor << ", model " << values.m_Model
         << ", group " << values.m_GroupFlag << ", supported " << values.m_Supported;
    return text.str();
}

/// The figures of a model that is in the list, from one page.
inline CSmartValues ExpectedSmartValues(const std::string& model,
                                        const std::array<unsigned char, 512>& page) {
    CSmartValues values("", model);
    for (std::size_t slot = 0; slot < 30; ++slot) {
        const unsigned char* bytes = &page[2 + 12 * slot];
        std::uint64_t raw = 0;
        for (std::size_t i = 0; i < 6; ++i) {
            raw += static_cast<std::uint64_t>(bytes[5 + i]) << (8 * i);
        }
        const int current = bytes[3];
        const std::string attribute = values.m_Vendor + ' ' + std::to_string(bytes[0]);
        if (bytes[0] == 9) {
            values.m_PowerOnHours = raw;
        } else if (attribute == "INTEL 225" || attribute == "INNODISK 241") {
            values.m_BytesWritten = raw * 33554432;
        } else if (attribute == "SAMSUNG 241" || attribute == "MICRON 246") {
            values.m_BytesWritten = raw * 512;
        } else if (attribute == "INTEL 232" || attribute == "SAMSUNG 180" || attribute == "MICRON 170") {
            values.m_SpareIndicator = current;
        } else if (attribute == "INTEL 233" || attribute == "SAMSUNG 177" || attribute == "MICRON 202") {
            values.m_PercentUsed = 100 - current;
        } else if (attribute == "INNODISK 173" && values.m_GroupFlag == 0) {
            const std::uint64_t count = bytes[5] + 256UL * bytes[6] + 65536UL * bytes[9];
            values.m_PercentUsed = static_cast<std::int32_t>(count * 100 / values.m_Endurance);
        } else if (attribute == "INNODISK 167" && values.m_GroupFlag == 1) {
            values.m_PercentUsed = static_cast<std::int32_t>(raw % 0x100000000 * 100 / values.m_Endurance);
        }
    }
    if (values.m_Vendor == "INNODISK") {
        values.m_Endurance = 0;
    }
    return values;
}

}  // namespace PI::Test
