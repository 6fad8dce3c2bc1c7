// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reports of drives in the files and folders that a command line names.
#pragma once

#include "drive_summary.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace pitool {

class JsonWriter;

/// Inputs that were refused, with the reason.
using Refusals = std::vector<std::pair<std::string, std::string>>;

/// Reads every report of every argument, in their order; the files of a folder, those in its folders
/// included, in the order of their names.
///
/// @param take called with each drive
/// @return what gives no drive, and why; standard error says so already
Refusals ReadReports(
    const std::vector<std::string>& arguments,
    const std::function<void(const std::string& file, const PI::CDriveReport& report)>& take);

/// Adds the list of the inputs that were refused, as the member "errors".
void AddErrors(const Refusals& refusals, JsonWriter& json);

/// Model and serial number, without the blanks around them: some reports keep those of the drive.
std::pair<std::string_view, std::string_view> IdentityOf(const DriveSummary& drive);

/// Orders reports of one drive, the oldest first: by their dates, unless one has none; those of one date, or
/// else all, by power-on hours. Equal ones stay in their order.
void SortByAge(DriveList& reports);

/// Reports of any number of drives.
struct DriveReports {
    std::deque<DriveSummary> m_Reports;  ///< in the order read
    /// The reports of each drive, the oldest first; drives in the order of their first reports. A drive is
    /// its model and serial number; one that these do not identify matches no other report.
    std::vector<DriveList> m_Drives;
    Refusals m_Errors;
};

/// Reads the reports of files and folders, as ReadReports does. Standard error names what is refused, and the
/// reports whose drives cannot be identified.
DriveReports ReadDrives(const std::vector<std::string>& arguments);

}  // namespace pitool
