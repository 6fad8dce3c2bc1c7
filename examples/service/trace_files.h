// SPDX-License-Identifier: Apache-2.0
/// @file
/// The files that traces are written to.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace service {

/// The numbers of the categories that traces have.
std::vector<std::string> TraceCategories();

/// Switches traces on and writes those of one category to "trace-CATEGORY.log" in a folder, those of an
/// isolated plug-in to "trace-CATEGORY-PLUGIN.log". A file that has grown to a megabyte is put aside as
/// "trace-CATEGORY.1.log"; three are kept.
/// @param category one of TraceCategories, each at most once in a process
/// @param plugin   empty in the host itself
/// @throws std::runtime_error when there is no file to write
void WriteTraces(int category, const std::filesystem::path& folder, const std::string& plugin = "");

}  // namespace service
