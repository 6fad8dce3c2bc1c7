// SPDX-License-Identifier: Apache-2.0
/// @file
/// Rendered events as text.
#pragma once

#include "print/terminal.h"

#include <string>
#include <utility>
#include <vector>

namespace pitool {

/// What CPluginHelper::StringifyEventMessage gives.
using RenderedEvent = std::vector<std::pair<std::string, std::string>>;

/// One line a pair, in printable text.
std::string EventText(const RenderedEvent& event, const Screen& screen = {});

/// The essence of a rendered event in one line: severity, identifier, description.
std::string EventLine(const RenderedEvent& event, const Screen& screen = {});

}  // namespace pitool
