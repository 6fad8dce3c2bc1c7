// SPDX-License-Identifier: Apache-2.0

#include "command_line.h"

#include "help_text.h"
#include "input_files.h"
#include "quoted_text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace pitool {
namespace {

/// Stands before a text that CLI11 would misread, and is taken off again behind its back.
constexpr char GUARD = '\x01';

/// Whether CLI11 takes a text for something else: "[a,b]" for two, "++" for a separator.
bool IsMisread(const std::string& text) {
    return text == "++" || (!text.empty() && (text.front() == '[' || text.front() == GUARD));
}

/// The arguments in the order that CLI11 takes them from a list: the last first.
///
/// What CLI11 would misread is guarded; so is, behind "--", what begins with a hyphen: CLI11 takes "--" only
/// as the first of several arguments.
std::vector<std::string> ReversedArguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    bool noOptions = false;
    for (int i = 1; i < argc; ++i) {
        std::string argument = argv[i];
        if (argument == "--" && !noOptions) {
            noOptions = true;
            continue;
        }
        const bool hyphen = !argument.empty() && argument.front() == '-' && argument != STANDARD_INPUT;
        const std::size_t value = argument.find('=') + 1;
        if (IsMisread(argument) || (noOptions && hyphen)) {
            argument.insert(0, 1, GUARD);
        } else if (hyphen && value != 0 && IsMisread(argument.substr(value))) {
            argument.insert(value, 1, GUARD);
        }
        arguments.push_back(std::move(argument));
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

/// Takes the guard off a text; @return whether there was one.
bool Unguard(std::string& text) {
    const bool guarded = !text.empty() && text.front() == GUARD;
    text.erase(0, guarded ? 1 : 0);
    return guarded;
}

void Unguard(std::optional<std::string>& text) {
    if (text) {
        Unguard(*text);
    }
}

/// A file that was guarded keeps a sign that it is one.
void UnguardFile(std::string& file) {
    if (Unguard(file)) {
        file.insert(0, "./");
    }
}

void Unguard(CommandLine& line) {
    std::for_each(line.m_Drive.m_Files.begin(), line.m_Drive.m_Files.end(), UnguardFile);
    UnguardFile(line.m_Layout.m_File);
    Unguard(line.m_Drive.m_Strings);
    Unguard(line.m_Event.m_Strings);
    EventFields& fields = line.m_Event.m_Fields;
    for (auto* field : {&fields.m_ID, &fields.m_Severity, &fields.m_TimeStamp, &fields.m_Host,
                        &fields.m_Source, &fields.m_Sequence}) {
        Unguard(*field);
    }
    for (std::size_t i = 0; i < PLACEHOLDERS; ++i) {
        Unguard(fields.m_Texts[i]);
        Unguard(fields.m_Resources[i]);
    }
    for (auto* texts : {&line.m_Name.m_Queries, &line.m_Sense.m_Codes}) {
        for (std::string& text : *texts) {
            Unguard(text);
        }
    }
    Unguard(line.m_Name.m_List);
    Unguard(line.m_Sense.m_Data);
}

constexpr const char* STRINGS_HELP = "Language file (the one that came with pitool)";
constexpr const char* JSON_HELP = "Print JSON instead of text";

constexpr const char* FILE_VALUE = "FILE";
constexpr const char* NUMBER_VALUE = "NUMBER";
constexpr const char* TEXT_VALUE = "TEXT";

/// A command in the making.
struct Command {
    CLI::App* m_App;
    CommandLine::Command m_Command;
};

/// The option before or behind the name of a command. What was given is taken from the option itself: of two,
/// the one behind counts, and where help is asked for no value is converted.
CLI::Option* AddColor(CLI::App& app, std::string& value) {
    return app
        .add_option("--color,--colour", value,
                    "When to colour: auto, always or never (auto: on a terminal, unless NO_COLOR is set)")
        ->type_name("WHEN")
        ->take_last();
}

/// What the options for colours say; false when that is no such value.
bool ReadColor(const std::vector<CLI::Option*>& options, WhenColor& when, std::string& error) {
    std::string value = "auto";
    for (const CLI::Option* option : options) {
        value = option->empty() ? value : option->results().back();
    }
    Unguard(value);
    if (value != "auto" && value != "always" && value != "never") {
        error = "--color: " + Quoted(value) + " is none of: auto, always, never";
        return false;
    }
    when = value == "auto" ? WhenColor::AUTO : value == "always" ? WhenColor::ALWAYS : WhenColor::NEVER;
    return true;
}

Command AddDrive(CLI::App& app, DriveOptions& options) {
    CLI::App* drive = app.add_subcommand("drive", "Report drives from what \"smartctl --json -a\" printed.");
    drive
        ->add_option("FILE", options.m_Files,
                     "File to read; - is standard input, a directory means every .json in it")
        ->type_name("")
        ->required();
    CLI::Option* events = drive->add_flag("--events", options.m_Events,
                                          "Show the events that the drives raise: SMART failure, wear, heat");
    drive->add_option("--strings", options.m_Strings, STRINGS_HELP)->type_name(FILE_VALUE)->needs(events);
    drive->add_flag("--json", options.m_Json, JSON_HELP);
    return {drive, CommandLine::DRIVE};
}

Command AddLayout(CLI::App& app, LayoutOptions& options) {
    CLI::App* layout = app.add_subcommand(
        "layout", "Print the layout that an array or logical-drive configuration document describes.");
    layout->add_option("FILE", options.m_File, "Document to read; - is standard input")
        ->type_name("")
        ->required();
    layout->add_flag("--json", options.m_Json, JSON_HELP);
    return {layout, CommandLine::LAYOUT};
}

Command AddEvent(CLI::App& app, EventOptions& options) {
    CLI::App* event = app.add_subcommand(
        "event", "Render an event, given by options, or as JSON on standard input where there are none.");
    EventFields& fields = options.m_Fields;
    event->add_option("--id", fields.m_ID, "Number or name of the event (10000)")->type_name("ID");
    event
        ->add_option("--severity", fields.m_Severity,
                     "DEBUG, INFORMATION, WARNING, ERROR or a number (INFORMATION)")
        ->type_name("SEVERITY");
    event->add_option("--timestamp", fields.m_TimeStamp, "Milliseconds since 1970-01-01 UTC (now)")
        ->type_name("MS");
    event->add_option("--host", fields.m_Host, "Host on which the event arose (localhost)")
        ->type_name(TEXT_VALUE);
    event->add_option("--source", fields.m_Source, "Component that raised the event")->type_name(TEXT_VALUE);
    event->add_option("--sequence", fields.m_Sequence, "Running number (0)")->type_name(NUMBER_VALUE);
    for (std::size_t i = 0; i < PLACEHOLDERS; ++i) {
        const std::string number = std::to_string(i + 1);
        CLI::Option* text = event
                                ->add_option("--placeholder" + number, fields.m_Texts[i],
                                             "Text for the marker %" + number + " of the description")
                                ->type_name(TEXT_VALUE);
        event
            ->add_option("--resource" + number, fields.m_Resources[i],
                         "Number of the language resource for the marker %" + number)
            ->type_name(NUMBER_VALUE)
            ->excludes(text);
    }
    event->add_option("--strings", options.m_Strings, STRINGS_HELP)->type_name(FILE_VALUE);
    event->add_flag("--json", options.m_Json, JSON_HELP);
    return {event, CommandLine::EVENT};
}

Command AddEta(CLI::App& app) {
    return {app.add_subcommand("eta",
                               "Read lines \"percent milliseconds\" from standard input, or \"percent\" for "
                               "the present time, and print the estimated time remaining after each."),
            CommandLine::ETA};
}

Command AddName(CLI::App& app, NameOptions& options) {
    CLI::App* name = app.add_subcommand("name", "Find names of numbers and numbers of names.");
    CLI::Option* queries =
        name->add_option("WORD|NUMBER", options.m_Queries, "Number, name or part of a name, in any case")
            ->type_name("");
    CLI::Option* list =
        name->add_option(
                "--list", options.m_List,
                "Print a whole vocabulary: error codes, property identifiers, property values, operation "
                "identifiers, event identifiers")
            ->type_name("VOCABULARY");
    name->add_flag("--json", options.m_Json, JSON_HELP);
    list->excludes(queries);
    return {name, CommandLine::NAME};
}

Command AddSense(CLI::App& app, SenseOptions& options) {
    CLI::App* sense = app.add_subcommand("sense", "Explain SCSI sense codes or sense data.");
    constexpr int CODES = 3;
    CLI::Option* codes =
        sense
            ->add_option("CODE", options.m_Codes,
                         "KEY ASC ASCQ: sense key, additional code and its qualifier, hexadecimal")
            ->type_name("")
            ->expected(CODES);
    sense->add_option("--data", options.m_Data, "Sense data, hexadecimal bytes")
        ->type_name("BYTES")
        ->excludes(codes);
    sense->add_flag("--json", options.m_Json, JSON_HELP);
    return {sense, CommandLine::SENSE};
}

/// What CLI11 cannot tell by itself; empty when all is well.
std::string FindMisuse(const CommandLine& line, const CLI::App& command) {
    const auto& files = line.m_Drive.m_Files;
    if (std::count(files.begin(), files.end(), STANDARD_INPUT) > 1) {
        return "standard input can be read only once";
    }
    if (line.m_Command == CommandLine::NAME && line.m_Name.m_Queries.empty() &&
        command.count("--list") == 0) {
        return "name needs a WORD, a NUMBER or --list";
    }
    if (line.m_Command == CommandLine::SENSE && line.m_Sense.m_Codes.empty() &&
        command.count("--data") == 0) {
        return "sense needs KEY ASC ASCQ or --data";
    }
    return "";
}

/// What is wrong, as users know it: CLI11 does not name a word that should be a command.
std::string ParseErrorText(const CLI::App& app, const CLI::ParseError& error, bool anyCommand) {
    if (anyCommand || error.get_exit_code() != static_cast<int>(CLI::ExitCodes::RequiredError)) {
        return error.what();
    }
    std::vector<std::string> words = app.remaining();
    if (words.empty()) {
        return "a command is needed";
    }
    Unguard(words.front());
    return Quoted(words.front()) + (words.front().rfind('-', 0) == 0 ? " is no option" : " is no command");
}

/// Makes a command line one that is refused, with the help that tells how it should be.
void Refuse(CommandLine& line, const CLI::App& app, const std::string& reason) {
    const std::vector<const CLI::App*> asked = ParsedCommands(app);
    line.m_Command = CommandLine::NONE;
    line.m_Error =
        reason + "; see pitool " + (asked.empty() ? "" : asked.front()->get_name() + " ") + "--help";
    line.m_ExitStatus = EXIT_BAD_USAGE;
}

}  // namespace

CommandLine ParseCommandLine(int argc, const char* const* argv) {
    CommandLine line;
    CLI::App app("Shows what the pi library knows: drives, layouts, events, progress, names, sense data.",
                 "pitool");
    app.set_version_flag("--version", "pitool " PITOOL_VERSION);
    app.require_subcommand(1);
    const Command commands[] = {
        AddDrive(app, line.m_Drive), AddLayout(app, line.m_Layout), AddEvent(app, line.m_Event), AddEta(app),
        AddName(app, line.m_Name),   AddSense(app, line.m_Sense),
    };
    std::string color;
    std::vector<CLI::Option*> colors{AddColor(app, color)};
    for (const Command& command : commands) {
        command.m_App->group("Commands");
        colors.push_back(AddColor(*command.m_App, color));
    }
    LayOutHelp(app);
    try {
        app.parse(ReversedArguments(argc, argv));
    } catch (const CLI::CallForHelp&) {
        std::string ignored;
        ReadColor(colors, line.m_Color, ignored);
        line.m_Text = HelpText(app);
        return line;
    } catch (const CLI::CallForVersion&) {
        line.m_Text = app.version() + "\n";
        return line;
    } catch (const CLI::ParseError& error) {
        Refuse(line, app, ParseErrorText(app, error, !ParsedCommands(app).empty()));
        return line;
    }
    Unguard(line);
    std::string reason;
    if (!ReadColor(colors, line.m_Color, reason)) {
        Refuse(line, app, reason);
        return line;
    }
    for (const Command& command : commands) {
        if (!app.got_subcommand(command.m_App)) {
            continue;
        }
        line.m_Command = command.m_Command;
        reason = FindMisuse(line, *command.m_App);
        if (!reason.empty()) {
            Refuse(line, app, reason);
            return line;
        }
    }
    line.m_Event.m_FromInput = !HasField(line.m_Event.m_Fields);
    return line;
}

}  // namespace pitool
