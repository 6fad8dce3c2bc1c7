// SPDX-License-Identifier: Apache-2.0
/// @file
/// How the help is laid out, and its examples.
#pragma once

#include "terminal.h"

#include <string>

namespace CLI {
class App;
}

namespace pitool {

/// Lays the help of a program and of its commands out in 80 columns and gives each its examples. Call once
/// all commands are there.
void LayOutHelp(CLI::App& app);

/// A help text with its headings as a screen shows headings.
std::string HelpWithHeadings(const std::string& help, const Screen& screen);

}  // namespace pitool
