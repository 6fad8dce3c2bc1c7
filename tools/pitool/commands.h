// SPDX-License-Identifier: Apache-2.0
/// @file
/// The commands, each in a file of its name, and what all of them are made with.
#pragma once

#include "print/json.h"
#include "print/output.h"
#include "print/table.h"
#include "print/text.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pitool {

enum ExitStatus : int {
    EXIT_DONE = 0,
    EXIT_BAD_INPUT = 1,  ///< an input was refused, or the output could not be written whole
    EXIT_BAD_USAGE = 2,
};

/// The same with --check, as monitoring systems read it.
enum CheckStatus : int {
    CHECK_GOOD = 0,
    CHECK_LOOK = 1,
    CHECK_CRITICAL = 2,
    CHECK_UNKNOWN = 3,  ///< also for wrong usage and inputs that were refused
};

/// As monitoring systems call them.
constexpr const char* CHECK_WORDS[] = {"OK", "WARNING", "CRITICAL", "UNKNOWN"};

/// What a command line asks for; main runs it once the whole line is read.
using Action = std::function<ExitStatus()>;

/// Writes all that a command prints.
inline ExitStatus Print(std::string_view text) {
    return WriteOutput(text) ? EXIT_DONE : EXIT_BAD_INPUT;
}

/// Parts of the help that several commands have.
constexpr const char* JSON_HELP = "Print JSON instead of text";
constexpr const char* EXAMPLES = "Examples, typed in the folder examples of the sources or of libpi-doc:\n";
constexpr const char* STRINGS_HELP = "Language file (the one that came with pitool)";

/// Takes decimal numbers, also with zeros in front, which the parser would take for octal ones.
/// @param otherwise what else a text could have been, before "a whole number"
template <class Number>
CLI::Validator WholeNumber(const std::string& otherwise = "not") {
    const auto read = [otherwise](std::string& text) -> std::string {
        using Limits = std::numeric_limits<Number>;
        Number number = 0;
        if (!ReadWholeNumber(text, number)) {
            return Quoted(text) + " is " + otherwise + " a whole number from " +
                   std::to_string(Limits::min()) + " to " + std::to_string(Limits::max());
        }
        text = std::to_string(number);
        return "";
    };
    return {read, ""};
}

/// Adds a command with its options and examples to the command line.
/// @param action set when the command is given; must live as long as the command line
using AddCommand = void(CLI::App& app, Action& action);
AddCommand AddDrive, AddForecast, AddCompare, AddLayout, AddEvent, AddEta, AddName, AddSense;

/// All commands, in the order of the help.
constexpr AddCommand* COMMANDS[] = {AddDrive, AddForecast, AddCompare, AddLayout,
                                    AddEvent, AddEta,      AddName,    AddSense};

}  // namespace pitool
