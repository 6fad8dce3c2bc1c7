// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include <CLI/CLI.hpp>

#include <malloc.h>

#include <algorithm>
#include <exception>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr std::size_t OPTION_COLUMNS = 26;

constexpr const char* FOOTER =
    "  pitool drive drives  # the drives of a folder, the worst first\n"
    "  pitool name 10057    # what a number means\n"
    "\n"
    "\"pitool COMMAND --help\" shows the options of a command.";

/// What is wrong: the parser asks for a command, and does not name the word that should be one.
std::string ReasonText(const CLI::App& app, const CLI::ParseError& error) {
    const std::vector<std::string> words = app.remaining();
    if (!app.get_subcommands().empty() || words.empty()) {
        return error.what();
    }
    return pitool::Quoted(words.front()) +
           (words.front().rfind('-', 0) == 0 ? " is not an option" : " is not a command");
}

/// @param arguments of the command line: an error may occur before the options are known
int Refuse(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments) {
    const auto commands = app.get_subcommands();
    pitool::ReportError(ReasonText(app, error) + "; see pitool " +
                        (commands.empty() ? "" : commands.front()->get_name() + " ") + "--help");
    const bool isCheck = std::find(arguments.begin(), arguments.end(), "--check") != arguments.end();
    return isCheck ? static_cast<int>(pitool::CHECK_UNKNOWN) : static_cast<int>(pitool::EXIT_BAD_USAGE);
}

int Run(int argc, char** argv) {
    CLI::App app("Shows what the pi library knows about drives, layouts, events and sense data.", "pitool");
    app.set_version_flag("--version", "pitool " PITOOL_VERSION);
    app.get_formatter()->column_width(OPTION_COLUMNS);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->label("Positionals", "Arguments");
    app.require_subcommand(1);
    app.fallthrough();
    app.footer(std::string(pitool::EXAMPLES) + FOOTER);
    std::string color = "auto";
    app.add_option("--color,--colour", color, "auto (on terminals, unless NO_COLOR), always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}).description(""))
        ->type_name("WHEN")
        ->take_last();
    pitool::Action action;
    for (pitool::AddCommand* const add : pitool::COMMANDS) {
        add(app, action);
    }
    for (CLI::App* command : app.get_subcommands({})) {
        command->group("Commands");
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        std::ostringstream text;
        app.exit(help, text);
        return pitool::Print(text.str());
    } catch (const CLI::ParseError& error) {
        return Refuse(app, error, {argv, argv + argc});
    }
    pitool::UseColors(color);
    return action();
}

}  // namespace

int main(int argc, char** argv) {
    // As it is at first: it would grow, and what tables were made from would stay in memory.
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    pitool::PrepareOutput();
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) {
        pitool::ReportError(error.what());
        pitool::CloseOutput(false);
        return pitool::EXIT_BAD_INPUT;
    }
}
