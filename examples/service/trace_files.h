// SPDX-License-Identifier: Apache-2.0
/// @file
/// The files that traces are written to.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace service {

/// Whether traces have a category of this number.
bool IsTraceCategory(int category);

/// Switches traces on and writes those of one category to "trace-CATEGORY.log" in a folder. A file that has
/// grown to a megabyte is put aside as "trace-CATEGORY.1.log"; three are kept.
/// @param category one for which IsTraceCategory is true, each at most once in a process
void WriteTraces(int category, const std::filesystem::path& folder);

}  // namespace service
