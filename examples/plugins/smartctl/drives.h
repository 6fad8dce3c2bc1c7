// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where the drives come from: files with smartctl's reports, or smartctl itself.
#pragma once

#include <pi/exchange/smartctl.h>

#include <string>
#include <vector>

namespace smartctl {

struct Drive {
    std::string m_Source;  ///< the file or device that it was read from
    PI::CDriveReport m_Report;
};

/// Reads the files of a folder in alphabetical order.
/// @param errors takes a line for each report that holds no drive
std::vector<Drive> ReadFolder(const std::string& folder, std::vector<std::string>& errors);

/// Asks smartctl for the drives of this machine. Where it is not installed there are none, which is no error.
/// @param program smartctl's name or path
/// @param errors  takes a line for each drive that could not be read
std::vector<Drive> ReadMachine(const std::string& program, std::vector<std::string>& errors);

/// Category 275 of the service's trace files: one line for each thing done.
void Trace(const std::string& text);

}  // namespace smartctl
