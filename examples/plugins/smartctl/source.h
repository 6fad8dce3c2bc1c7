// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where the drives come from.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "drive.h"

namespace smartctl {

/// Reads the files of a folder whose names end in ".json", in alphabetical order.
/// @param errors takes a line for each file that could not be read
std::vector<Drive> ReadFolder(const std::filesystem::path& folder, std::vector<std::string>& errors);

/// Asks smartctl for the drives of this machine. Where it is not installed there are none, which is no error.
/// @param program smartctl's name or path
/// @param errors  takes a line for each drive that could not be read
std::vector<Drive> ReadMachine(const std::string& program, std::vector<std::string>& errors);

}  // namespace smartctl
