// SPDX-License-Identifier: Apache-2.0
/// @file
/// An event given as JSON.
#pragma once

#include <pi/event.h>

#include <string>
#include <string_view>

namespace pitool {

/// Reads an event from JSON, in the shape that docs/pitool-event-json.md describes. Members that are unknown
/// or of the wrong type are refused: a misspelt one would be missing without a word.
///
/// @param event  out: meaningful when the result is true
/// @param reason out: why the text is refused, in one line, when the result is false
bool ReadEvent(std::string_view text, PI::CEvent& event, std::string& reason);

}  // namespace pitool
