// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reports of drives in the files and folders that a command line names.
#pragma once

#include <pi/exchange/smartctl.h>

#include <functional>
#include <string>
#include <vector>

namespace pitool {

/// Reads every report of every argument, in their order; the files of a folder, those in its folders
/// included, in the order of their names.
///
/// @param take   called with each drive
/// @param refuse called with what gives no drive, and why; it has been told on standard error
void ReadReports(const std::vector<std::string>& arguments,
                 const std::function<void(const std::string& file, const PI::CDriveReport& report)>& take,
                 const std::function<void(const std::string& file, const std::string& reason)>& refuse);

}  // namespace pitool
