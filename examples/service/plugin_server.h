// SPDX-License-Identifier: Apache-2.0
/// @file
/// The process of an isolated plug-in.
#pragma once

#include <cstddef>
#include <filesystem>

namespace service {

/// Loads the plug-in into this process, which IsolatedPlugin has started, and answers until the host closes
/// the socket.
/// @param memoryMB what the plug-in may use beyond the memory of the program itself
void ServePlugin(const std::filesystem::path& file, std::size_t memoryMB);

}  // namespace service
