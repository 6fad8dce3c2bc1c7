// SPDX-License-Identifier: Apache-2.0
/// @file
/// Events as people read them.
#pragma once

#include "print/json.h"

#include <pi/event.h>

#include <string>
#include <utility>
#include <vector>

namespace pitool {

/// What CPluginHelper::StringifyEventMessageWith gives, and after "Datetime" the same with its zone.
using RenderedEvent = std::vector<std::pair<std::string, std::string>>;

/// Loads the language file that RenderEvent renders with; without a name, the one that came with the program.
/// Where that is absent, a warning on standard error says so and events render "Unknown Event".
/// @return false when the file was refused; the reason is on standard error then
bool LoadStrings(const std::string& file);

/// Renders an event; markers in placeholders are text.
RenderedEvent RenderEvent(const PI::CEvent& event);

/// The pairs of an event as an object.
void AddEvent(const RenderedEvent& event, JsonWriter& json);

}  // namespace pitool
