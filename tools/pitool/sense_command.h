// SPDX-License-Identifier: Apache-2.0
/// @file
/// The command "sense".
#pragma once

#include "exit_status.h"

#include <string>
#include <vector>

namespace pitool {

struct SenseOptions {
    std::vector<std::string> m_Codes;  ///< key, additional sense code, its qualifier; empty: data are given
    std::string m_Data;
    bool m_Json = false;
};

/// Explains SCSI sense codes or sense data on standard output.
ExitStatus RunSense(const SenseOptions& options);

}  // namespace pitool
