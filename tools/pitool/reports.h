// SPDX-License-Identifier: Apache-2.0
/// @file
/// The files that a command line names, and the reports of drives in them.
#pragma once

#include "drive_summary.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace pitool {

class JsonWriter;

/// The argument that means standard input.
constexpr const char* STANDARD_INPUT = "-";

/// Reads a file, or standard input for "-", whole, up to 64 MiB.
///
/// Devices are refused, and a named pipe that nothing writes to. Where a pipe gives nothing for some seconds,
/// a warning says so, once.
/// @param text   out; its memory is used again
/// @param reason out: why the file is refused, when the result is false
bool ReadInput(const std::string& file, std::string& text, std::string& reason);

using TakeFile = std::function<void(const std::string& file)>;
/// Called with a file or folder that is refused, and why.
using Refuse = std::function<void(const std::string& file, const std::string& reason)>;

/// Takes the files that an argument names: itself, or for a folder the files in it and in its folders that
/// end in ".json", ".txt" or ".gz", in the order of their names. Below a folder, links are not followed and
/// names that begin with a dot are ignored.
/// @param refuse called with a folder that cannot be read or holds no such file, and why
void ForEachFile(const std::string& argument, const TakeFile& take, const Refuse& refuse);

/// Inputs that were refused, with the reason.
using Refusals = std::vector<std::pair<std::string, std::string>>;

/// Reads every report of every argument, in their order.
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
