// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where the drives come from: files with smartctl's reports, or smartctl itself, which also tests them.
#pragma once

#include <pi/exchange/smartctl.h>
#include <pi/object.h>

#include <string>
#include <vector>

#include "plugin_interface.h"

namespace smartctl {

struct Drive {
    std::string m_Source;  ///< the file or device that it was read from
    PI::CDriveReport m_Report;
    std::string m_Type;  ///< as smartctl calls the device's; empty when it was read from a file
};

/// Reads the files of a folder in alphabetical order.
/// @param errors takes a line for each report that holds no drive
std::vector<Drive> ReadFolder(const std::string& folder, std::vector<std::string>& errors);

constexpr const char* DEFAULT_PROGRAM = "smartctl";

/// Asks smartctl for the drives of this machine. Where the default one is not installed there are none, which
/// is no error.
/// @param program smartctl's name or path
/// @param errors  takes a line for each drive that could not be read
std::vector<Drive> ReadMachine(const std::string& program, std::vector<std::string>& errors);

/// Starts a self-test of a drive that was asked, and follows it; or ends the one that runs. Otherwise as
/// PluginExecute.
/// @throws std::runtime_error saying in one line why it failed
void SelfTest(const std::string& program, const Drive& drive, const PI::COperation& operation,
              const TaskReport& report, PI::CTask& task);

}  // namespace smartctl
