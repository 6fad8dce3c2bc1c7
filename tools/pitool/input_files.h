// SPDX-License-Identifier: Apache-2.0
/// @file
/// The files that a command line names.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace pitool {

/// Largest input that is read, in bytes. What smartctl prints for one drive stays below a hundredth of it.
constexpr std::size_t MAX_INPUT_SIZE = std::size_t{64} * 1024 * 1024;

/// The argument that stands for standard input.
constexpr const char* STANDARD_INPUT = "-";

/// Files that an argument stands for: itself, or for a directory the files ending ".json" directly in it, in
/// the order of their names.
///
/// @param files  out
/// @param reason out: why the argument is refused, when the result is false
bool ExpandArgument(const std::string& argument, std::vector<std::string>& files, std::string& reason);

/// Reads a file, or standard input for "-", whole.
///
/// @param text   out; its memory is used again
/// @param reason out: why the file is refused, when the result is false
bool ReadInput(const std::string& file, std::string& text, std::string& reason);

}  // namespace pitool
