// SPDX-License-Identifier: Apache-2.0
/// @file
/// Runs a program and takes what it prints.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace smartctl {

/// Runs a program without a shell, with nothing to read and its errors thrown away.
///
/// @param arguments the program first; it is searched for in PATH
/// @param timeout   after which the program is killed
/// @param output    out: what it printed, whatever its exit status
/// @param error     out: why it could not be run or read to the end
bool RunProgram(const std::vector<std::string>& arguments, std::chrono::milliseconds timeout,
                std::string& output, std::string& error);

}  // namespace smartctl
