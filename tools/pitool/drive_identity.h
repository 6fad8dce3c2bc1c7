// SPDX-License-Identifier: Apache-2.0
/// @file
/// Which reports are of the same drive.
#pragma once

#include "drive_summary.h"
#include "reports.h"

#include <string>
#include <string_view>
#include <vector>

namespace pitool {

/// Whether a serial number can distinguish a drive from others: not if it is empty, a row of one character
/// such as "0000" or "----", hidden wholly or in part ("S3Z8****", "Z1Z5DWJK0000XXXXXXXX"), or a word in
/// place of one such as "REDACTED". What counts as such is a judgement.
bool IdentifiesDrive(std::string_view serial);

/// Model and serial number, without the blanks around them: some reports keep those of the drive.
std::pair<std::string, std::string> IdentityOf(const DriveSummary& drive);

/// Whether a report of a drive is older than another one: by their dates, or by the power-on hours where one
/// has no date or the dates are equal.
/// @param areDated false: the dates do not count, since not all of the reports compared have one
bool IsOlder(const DriveSummary& left, const DriveSummary& right, bool areDated = true);

/// Reports of any number of drives.
struct DriveReports {
    /// The reports of each drive, the oldest first; drives in the order of their first reports. A drive is
    /// its model and serial number. One whose serial number identifies nothing matches no other
    /// report.
    std::vector<std::vector<DriveSummary>> m_Drives;
    Refusals m_Errors;
};

/// Reads the reports of files and folders, as ReadReports does. Standard error names what is refused, and the
/// reports whose drives cannot be identified.
DriveReports ReadDrives(const std::vector<std::string>& arguments);

}  // namespace pitool
