// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reports of drives in the files and folders that a command line names.
#pragma once

#include <pi/exchange/smartctl.h>

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

}  // namespace pitool
