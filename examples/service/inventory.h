// SPDX-License-Identifier: Apache-2.0
/// @file
/// Prints what a plug-in reports.
#pragma once

#include <pi/pi.h>

#include <string>
#include <vector>

namespace service {

/// A plug-in's objects as an indented tree: what is part of an object stands below it.
std::string InventoryText(const std::vector<PI::CObject>& objects);

/// An object in one line: "Logical drive 2: md0 (raid_ok_no.gif)".
std::string ObjectHeading(const PI::CObject& object);

}  // namespace service
