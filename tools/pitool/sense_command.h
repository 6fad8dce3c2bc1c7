// SPDX-License-Identifier: Apache-2.0
/// @file
/// The command "sense".
#pragma once

#include "exit_status.h"

#include <pi/sense.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pitool {

struct SenseOptions {
    std::vector<std::string> m_Codes;  ///< key, additional sense code, its qualifier; empty: data are given
    std::optional<std::string> m_Data;
    bool m_Json = false;
};

/// Reads sense data from hexadecimal bytes.
///
/// @param sense  out: holds a key when the result is true
/// @param reason out: why the data are refused, in one line, when the result is false
bool ReadSenseData(std::string_view text, PI::CSense& sense, std::string& reason);

/// Explains SCSI sense codes or sense data on standard output.
ExitStatus RunSense(const SenseOptions& options);

}  // namespace pitool
