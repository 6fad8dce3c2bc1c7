// SPDX-License-Identifier: Apache-2.0
/// @file
/// The language file that events are rendered with.
#pragma once

#include <string>

namespace pitool {

/// The language file that came with the program: in the installed tree, or in the tree it was built in.
/// @return empty when there is none
std::string DefaultStringsFile();

/// Loads a language file; without a name, the one that came with the program. Where that is absent, a warning
/// on standard error says so and events render "Unknown Event".
///
/// @param file empty: none was named
/// @return false when the file was refused; the reason is on standard error then
bool LoadStrings(const std::string& file);

}  // namespace pitool
