// SPDX-License-Identifier: Apache-2.0
/// @file
/// Foreign text on a terminal.
#pragma once

#include <string>
#include <string_view>

namespace service {

/// The text with everything that could steer a terminal replaced by '?': control characters, characters that
/// turn the direction of writing or break the line, and bytes that are not UTF-8. Names of drives and arrays
/// come from outside.
std::string PrintableText(std::string_view text);

}  // namespace service
