#include "command_line.h"

#include "input_files.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace pitool {
namespace {

/// The arguments in the order that CLI11 takes them from a list: the last first.
///
/// File names that CLI11 would misread get a "./": "[a,b]" would be two files, "++" a separator, and behind
/// "--", which it takes only as the first of several files, names that begin with a hyphen.
std::vector<std::string> ReversedArguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    bool namesOnly = false;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--" && !namesOnly) {
            namesOnly = true;
            continue;
        }
        const char first = argument.empty() ? '\0' : argument.front();
        const bool misread =
            first == '[' || argument == "++" || (namesOnly && first == '-' && argument != STANDARD_INPUT);
        arguments.push_back((misread ? "./" : "") + argument);
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

}  // namespace

CommandLine ParseCommandLine(int argc, const char* const* argv) {
    CommandLine line;
    CLI::App app("Reports drives with the knowledge of the pi library.", "pitool");
    app.set_version_flag("--version", "pitool " PITOOL_VERSION);
    app.require_subcommand(1);

    CLI::App* drive = app.add_subcommand("drive", "Report drives from what \"smartctl --json -a\" printed.");
    drive
        ->add_option("FILE", line.m_Drive.m_Files,
                     "File to read; - is standard input, a directory means every .json in it")
        ->required();
    drive->add_flag("--json", line.m_Drive.m_Json, "Print JSON instead of text");

    try {
        app.parse(ReversedArguments(argc, argv));
    } catch (const CLI::CallForHelp&) {
        line.m_Text = app.help();
        return line;
    } catch (const CLI::CallForVersion&) {
        line.m_Text = app.version() + "\n";
        return line;
    } catch (const CLI::ParseError& error) {
        line.m_Error = error.what();
        line.m_ExitStatus = EXIT_BAD_USAGE;
        return line;
    }
    const auto& files = line.m_Drive.m_Files;
    if (std::count(files.begin(), files.end(), STANDARD_INPUT) > 1) {
        line.m_Error = "standard input can be read only once";
        line.m_ExitStatus = EXIT_BAD_USAGE;
        return line;
    }
    line.m_Command = CommandLine::DRIVE;
    return line;
}

}  // namespace pitool
