// SPDX-License-Identifier: Apache-2.0
/// @file
/// Rendered events as JSON, in the shape that docs/pitool-event-json.md describes.
#pragma once

#include "event_text.h"
#include "json_text.h"

#include <string>

namespace pitool {

/// The pairs of an event as members of an object.
Json EventPairs(const RenderedEvent& event);

/// The whole document for one event.
std::string EventJson(const RenderedEvent& event);

}  // namespace pitool
