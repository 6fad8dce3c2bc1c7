// SPDX-License-Identifier: Apache-2.0
/// @file
/// The process of an isolated plug-in.
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "plugin.h"

namespace service {

/// Loads the plug-in into this process, which IsolatePlugin has started, and answers until the host closes
/// the socket.
/// @param memoryMB what the plug-in may use beyond the memory of the program itself
/// @param settings as for LoadPlugin
void ServePlugin(const std::filesystem::path& file, std::size_t memoryMB,
                 const std::vector<Setting>& settings = {});

}  // namespace service
