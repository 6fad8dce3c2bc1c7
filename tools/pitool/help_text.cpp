// SPDX-License-Identifier: Apache-2.0

#include "help_text.h"

#include "style.h"
#include "wrapped_text.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <sstream>
#include <string_view>
#include <vector>

namespace pitool {
namespace {

constexpr std::size_t HELP_COLUMNS = 80;
constexpr Screen HELP_SCREEN{HELP_COLUMNS, false};
constexpr std::size_t OPTION_COLUMNS = 30;  // where the texts of options and commands begin

struct Example {
    std::string_view m_Command;  ///< in whose help it stands; empty: in the general one
    const char* m_Line;
    const char* m_Shows;
};

constexpr Example EXAMPLES[] = {
    {"", "pitool drive --events drives",
     "the drives of a folder, the worst first, and what should be acted on"},
    {"", "pitool name 10057", "what a number means"},

    {"drive", "pitool drive drives/worn-intel-ssd.json",
     "one drive: each figure, where it comes from and which way it counts"},
    {"drive", "pitool drive --events drives",
     "all drives of a folder, the worst first, and what should be acted on"},
    {"drive", "pitool drive - < drives/intel-nvme-ssd.json",
     "a drive from standard input, into which smartctl --json -a may be piped"},
    {"drive", "pitool drive --json drives/wd-disk.json", "the same for a program"},

    {"layout", "pitool layout layouts/raid10-logical-drive.xml",
     "a logical drive: its containers with their drives, and its hot spares"},
    {"layout", "pitool layout layouts/careless-array.xml",
     "an array whose document is full of slips: each is told with its line and column"},
    {"layout", "pitool layout --json layouts/raid1-array.xml", "an array for a program"},

    {"event", "pitool event < events/rebuild-failed.json", "an event given as JSON"},
    {"event", "pitool event --id REBUILD_STARTED --placeholder1 \"logical drive 0\"",
     "an event given by its name and its text"},
    {"event", "pitool event --strings events/strings.de.xml < events/spare-taken.json",
     "an event in another language"},

    {"eta", "pitool eta < progress/rebuild.txt", "a recorded progress"},
    {"eta", "echo 40 | pitool eta", "a percentage alone, which is of this moment"},

    {"name", "pitool name 30045 10057", "what numbers mean, in every vocabulary that holds them"},
    {"name", "pitool name rebuild", "all names that hold a word"},
    {"name", "pitool name --list error-codes", "a whole vocabulary"},

    {"sense", "pitool sense 5 24 00", "a sense key, its additional code and the qualifier of that"},
    {"sense", "pitool sense --data \"$(cat sense/fixed-unrecovered-read.txt)\"",
     "sense data as a drive sends them"},
    {"sense", "pitool sense --json 3 11 00", "the same for a program"},
};

/// A text in lines of a width, the last one without its end.
std::string Wrapped(std::string_view text, std::size_t width) {
    std::string wrapped;
    for (const std::string_view line : WrapText(text, width)) {
        wrapped += (wrapped.empty() ? "" : "\n") + std::string(line);
    }
    return wrapped;
}

/// A heading and the examples of a help, each a line to be run and a line or two about it.
std::string ExamplesText(std::string_view command) {
    std::string text = "Examples, typed in the folder examples of the sources or of libpi-doc:\n";
    for (const Example& example : EXAMPLES) {
        if (example.m_Command == command) {
            text += "  " + std::string(example.m_Line) + "\n";
            AddWrapped("      ", "      ", example.m_Shows, Style::PLAIN, HELP_SCREEN, text);
        }
    }
    return text;
}

/// Divides the texts where they are shown: those of commands stand at two places of different widths.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter() {
        column_width(OPTION_COLUMNS);
        label("SUBCOMMAND", "COMMAND");
        label("Positionals", "Arguments");
    }

    std::string make_description(const CLI::App* app) const override {
        return Wrapped(app->get_description(), HELP_COLUMNS) + "\n\n";
    }

    std::string make_option_desc(const CLI::Option* option) const override {
        return Wrapped(option->get_description(), HELP_COLUMNS - OPTION_COLUMNS);
    }

    std::string make_subcommand(const CLI::App* command) const override {
        const std::string further(OPTION_COLUMNS, ' ');
        std::string lead = "  " + command->get_name();
        lead.resize(OPTION_COLUMNS, ' ');
        std::string text;
        AddWrapped(lead, further, command->get_description(), Style::PLAIN, HELP_SCREEN, text);
        return text;
    }
};

}  // namespace

void LayOutHelp(CLI::App& app) {
    const auto formatter = std::make_shared<HelpFormatter>();
    app.formatter(formatter);
    for (CLI::App* command : app.get_subcommands({})) {
        command->formatter(formatter);
    }
}

std::vector<const CLI::App*> ParsedCommands(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App* command) { return command->parsed(); });
}

std::string HelpText(const CLI::App& app) {
    const std::vector<const CLI::App*> asked = ParsedCommands(app);
    std::string text = app.help();
    text.resize(text.find_last_not_of('\n') + 1);
    // Not as a footer: versions of CLI11 differ in what they do to the lines of one.
    text += "\n\n" + ExamplesText(asked.empty() ? "" : asked.front()->get_name());
    return text + (asked.empty() ? "\n\"pitool COMMAND --help\" tells the options of a command.\n" : "");
}

std::string HelpWithHeadings(const std::string& help, const Screen& screen) {
    std::istringstream lines(help);
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        constexpr std::string_view USAGE = "Usage:";
        const std::size_t heading = line.rfind(USAGE, 0) == 0                               ? USAGE.size()
                                    : !line.empty() && line[0] != ' ' && line.back() == ':' ? line.size()
                                                                                            : 0;
        AddStyled(line.substr(0, heading), Style::HEADING, screen.m_Colors, text);
        text += line.substr(heading) + "\n";
    }
    return text;
}

}  // namespace pitool
