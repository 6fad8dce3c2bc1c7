// SPDX-License-Identifier: Apache-2.0
/// @file
/// Files and programs that a plug-in reads from.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shared {

/// The first 16 MiB of a file, far above what plug-ins read, so that a wrong name does no harm.
/// @param error out: why it could not be read, when the result is empty
std::optional<std::string> ReadTextFile(const std::filesystem::path& path, std::string& error);

/// What happens to a program's standard error: it is discarded, or read with its output.
enum class ErrorOutput { DROP, TAKE };

/// Runs a program without a shell, with nothing to read.
///
/// @param arguments the program first; it is searched for in PATH
/// @param timeout   after which the program is killed
/// @param output    out: what it printed, whatever its exit status
/// @param error     out: why it could not be run or read to the end, when the result is empty
/// @return its exit status; -1 if the host ignores SIGCHLD, so that it is not available
std::optional<int> RunProgram(const std::vector<std::string>& arguments, std::chrono::milliseconds timeout,
                              std::string& output, std::string& error,
                              ErrorOutput errorOutput = ErrorOutput::DROP);

/// A text in one line of at most 200 bytes.
std::string OneLine(std::string_view text);

}  // namespace shared
