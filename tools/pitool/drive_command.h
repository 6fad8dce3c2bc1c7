// SPDX-License-Identifier: Apache-2.0
/// @file
/// "pitool drive FILE..."
#pragma once

#include "exit_status.h"

#include <string>
#include <vector>

namespace pitool {

struct DriveOptions {
    std::vector<std::string> m_Files;  ///< files, directories, "-" at most once
    bool m_Events = false;             ///< show the events that the drives raise
    std::string m_Strings;             ///< language file; empty: the one that came with the program
    bool m_Json = false;
};

/// Reports the drives: one as a sheet, several as a table, either as JSON. What cannot be read is named on
/// standard error and does not keep the others from being reported.
ExitStatus RunDrive(const DriveOptions& options);

}  // namespace pitool
