// SPDX-License-Identifier: Apache-2.0
/// @file
/// JSON as pitool prints it.
#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace pitool {

/// Members keep the order in which they are written.
using Json = nlohmann::ordered_json;

/// A whole document, indented, with a newline at its end.
///
/// ASCII only, so no foreign text can steer a terminal; bytes that are not UTF-8 become U+FFFD.
std::string JsonText(const Json& json);

}  // namespace pitool
