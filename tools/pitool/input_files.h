// SPDX-License-Identifier: Apache-2.0
/// @file
/// The files that a command line names.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace pitool {

/// Largest input that is read, in bytes. What smartctl prints for one drive stays below a hundredth of it.
constexpr std::size_t MAX_INPUT_SIZE = std::size_t{64} * 1024 * 1024;

/// The argument that means standard input.
constexpr const char* STANDARD_INPUT = "-";

using TakeFile = std::function<void(const std::string& file)>;
/// Called with a file or folder that is refused, and why.
using Refuse = std::function<void(const std::string& file, const std::string& reason)>;

/// Takes the files that an argument names: itself, or for a folder the files in it and in its folders that
/// end in ".json", ".txt" or ".gz", in the order of their names. Below a folder, links are not followed and
/// names that begin with a dot are ignored.
/// @param refuse called with a folder that cannot be read or holds no such file, and why
void ForEachFile(const std::string& argument, const TakeFile& take, const Refuse& refuse);

/// Reads a file, or standard input for "-", whole.
///
/// Devices are refused, and a named pipe that nothing writes to. Where a pipe gives nothing for some seconds,
/// a warning says so, once.
/// @param text   out; its memory is used again
/// @param reason out: why the file is refused, when the result is false
bool ReadInput(const std::string& file, std::string& text, std::string& reason);

}  // namespace pitool
