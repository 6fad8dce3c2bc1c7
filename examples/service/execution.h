// SPDX-License-Identifier: Apache-2.0
/// @file
/// Has a plug-in carry out an operation.
#pragma once

#include <string>

#include "options.h"
#include "plugin.h"

namespace service {

/// Finds what is asked for among what the plug-in's objects offer, and has it carried out.
///
/// @param report as for PluginExecute; a last time with the task as it ended
/// @return whether it was carried out to its end
/// @throws std::runtime_error saying in one line what is not offered, or why it failed
bool Execute(Plugin& plugin, const Request& request, const TaskReport& report);

/// How a task is, in one line: "check of md0: 12 percent, 00:41:10 remaining".
std::string TaskText(const PI::CTask& task);

}  // namespace service
