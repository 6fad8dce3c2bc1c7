// SPDX-License-Identifier: Apache-2.0
/// @file
/// How the help is laid out, and its examples.
#pragma once

#include "terminal.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace pitool {

/// Lays the help of a program and of its commands out in 80 columns. Call once all commands are there.
void LayOutHelp(CLI::App& app);

/// The command that a command line names, if any: by it one knows which help belongs to the line.
std::vector<const CLI::App*> ParsedCommands(const CLI::App& app);

/// The help that a command line asked for, of the program or of the command that it names, with examples.
std::string HelpText(const CLI::App& app);

/// A help text with its headings as a screen shows headings.
std::string HelpWithHeadings(const std::string& help, const Screen& screen);

}  // namespace pitool
