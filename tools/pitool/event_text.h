/// @file
/// Rendered events as text and as JSON.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace pitool {

/// What CPluginHelper::StringifyEventMessage gives.
using RenderedEvent = std::vector<std::pair<std::string, std::string>>;

/// One line a pair, in printable text.
std::string EventText(const RenderedEvent& event);

std::string EventJson(const RenderedEvent& event);

}  // namespace pitool
