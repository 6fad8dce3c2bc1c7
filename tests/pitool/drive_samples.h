// SPDX-License-Identifier: Apache-2.0
// Drives for tests of what is printed of them.
#pragma once

#include "drive_summary.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace pitool::test {

/// The drive of a report that holds the given members besides its protocol.
inline PI::CDriveReport ReadMembers(const std::string& members) {
    const std::string text = R"({"device":{"name":"/dev/sda","protocol":"ATA"},)" + members + "}";
    std::vector<PI::CDriveReport> drives;
    std::vector<PI::CReportRefusal> refusals;
    PI::ReadSmartctl(text.data(), text.size(), drives, refusals);
    EXPECT_EQ(drives.size(), 1U) << text;
    return drives.at(0);
}

/// A good solid-state drive, with further members of its report, each after a comma.
inline PI::CDriveReport GoodReport(const std::string& serial, const std::string& further = "") {
    return ReadMembers(
        R"("model_name":"INTEL SSDSC2BB480G7","serial_number":")" + serial +
        R"(","rotation_rate":0,"smart_status":{"passed":true},"power_on_time":{"hours":8766})" + further);
}

inline PI::CDriveReport FailedReport(const std::string& serial) {
    return ReadMembers(R"("model_name":"Disk","serial_number":")" + serial +
                       R"(","rotation_rate":7200,"smart_status":{"passed":false})");
}

/// Percentage used of the device statistics.
inline std::string Wear(int percent) {
    return R"(,"ata_device_statistics":{"pages":[{"number":7,"table":[{"offset":8,"value":)" +
           std::to_string(percent) + R"(,"flags":{"value":192,"valid":true}}]}]})";
}

inline std::size_t Count(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

}  // namespace pitool::test
