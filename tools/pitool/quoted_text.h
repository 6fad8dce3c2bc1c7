// SPDX-License-Identifier: Apache-2.0
/// @file
/// Foreign text within a message.
#pragma once

#include <string>
#include <string_view>

namespace pitool {

/// The text in quotation marks, printable, and cut where it is too long for a message of one line.
std::string Quoted(std::string_view text);

}  // namespace pitool
