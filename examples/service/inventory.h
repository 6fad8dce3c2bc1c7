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

/// A plug-in's events, rendered.
std::string EventsText(std::vector<PI::CEvent>& events);

}  // namespace service
