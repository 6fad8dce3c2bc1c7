// SPDX-License-Identifier: Apache-2.0
/// @file
/// Drives as one HTML page that can be mailed and printed: no scripts, no addresses.
#pragma once

#include "drive_summary.h"

#include <pi/exchange/smartctl.h>

#include <string>
#include <utility>
#include <vector>

namespace pitool {

/// Collects drives and prints the page: what to act on first, pictures of wear, models, all drives, and a
/// sheet of each; with more than 500 drives only of those that are not good.
class HtmlPage {
public:
    void Add(const DriveSummary& drive, const PI::CDriveReport& report);

    /// @param refused inputs that gave no drive, and why
    std::string Text(const std::vector<std::pair<std::string, std::string>>& refused);

private:
    struct Entry {
        DriveSummary m_Drive;
        std::string m_Sheet;  ///< HTML; empty: the drive has none
    };
    std::vector<Entry> m_Entries;
};

}  // namespace pitool
