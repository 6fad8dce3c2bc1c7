// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a file is, before it is loaded.
#pragma once

#include <filesystem>

namespace service {

/// The loader waits at a pipe, and dies of a library that is cut off.
/// @throws std::runtime_error saying why the file is no whole shared library for this machine
void RequireSharedObject(const std::filesystem::path& file);

}  // namespace service
