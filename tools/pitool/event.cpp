// SPDX-License-Identifier: Apache-2.0

#include "event.h"
#include "commands.h"

#include "input_files.h"
#include "print/output.h"
#include "print/table.h"
#include "print/text.h"
#include "whole_number.h"

#include <CLI/CLI.hpp>

#include <pi/exchange/event_json.h>
#include <pi/plugin_helper.h>
#include <pi/text_table.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace pitool {
namespace {

/// A field of the event that an option gives.
struct Field {
    std::string m_Option;
    std::string m_Member;
    bool m_IsText;
    std::string m_Value;
    CLI::Option* m_Given = nullptr;

    bool IsGiven() const { return m_Given->count() != 0; }
};

/// The members that are no placeholders, then text and resource of each placeholder.
/// @{
constexpr std::size_t PLACEHOLDERS = 6;
constexpr std::size_t FIRST_PLACEHOLDER = 6;
/// @}

struct Options {
    std::vector<Field> m_Fields;
    std::string m_Strings;
    bool m_Json = false;
};

void AddValue(const Field& field, JsonWriter& json) {
    std::int64_t number = 0;
    std::uint64_t large = 0;
    if (!field.m_IsText && ReadWholeNumber(field.m_Value, number)) {
        json.Number(number);
    } else if (!field.m_IsText && ReadWholeNumber(field.m_Value, large)) {
        json.Number(large);
    } else {
        json.Text(field.m_Value);
    }
}

/// The options as the JSON that standard input may hold as well: the same rules are for both.
std::string OptionsJson(const std::vector<Field>& fields) {
    std::string text;
    JsonWriter json(text);
    json.BeginObject();
    for (std::size_t i = 0; i < FIRST_PLACEHOLDER; ++i) {
        if (fields[i].IsGiven()) {
            AddValue(fields[i], json.Name(fields[i].m_Member));
        }
    }
    json.Name("placeholders").BeginList();
    for (std::size_t i = FIRST_PLACEHOLDER; i < fields.size(); i += 2) {
        if (fields[i].IsGiven()) {
            AddValue(fields[i], json);
        } else if (fields[i + 1].IsGiven()) {
            json.BeginObject();
            AddValue(fields[i + 1], json.Name("resource"));
            json.EndObject();
        } else {
            json.Null();
        }
    }
    json.EndList();
    json.EndObject();
    return text;
}

/// The reason that names a member of that JSON, with the option in its place.
std::string OptionReason(const std::vector<Field>& fields, const std::string& reason) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::string pointer = i < FIRST_PLACEHOLDER
                                        ? "/" + fields[i].m_Member + " "
                                        : "/placeholders/" + std::to_string((i - FIRST_PLACEHOLDER) / 2) +
                                              "/" + fields[i].m_Member + " ";
        if (fields[i].IsGiven() && reason.compare(0, pointer.size(), pointer) == 0) {
            return fields[i].m_Option + ": " + Quoted(fields[i].m_Value) + " " +
                   reason.substr(pointer.size());
        }
    }
    return reason;
}

ExitStatus TakeEvent(const Options& options, PI::CEvent& event) {
    std::string text;
    std::string reason;
    const bool areGiven = std::any_of(options.m_Fields.begin(), options.m_Fields.end(),
                                      [](const Field& field) { return field.IsGiven(); });
    if (areGiven) {
        if (PI::ReadEvent(OptionsJson(options.m_Fields), event, reason)) {
            return EXIT_DONE;
        }
        ReportError(OptionReason(options.m_Fields, reason));
        return EXIT_BAD_USAGE;
    }
    if (ReadInput(STANDARD_INPUT, text, reason) && PI::ReadEvent(text, event, reason)) {
        return EXIT_DONE;
    }
    ReportError("standard input: " + reason);
    return EXIT_BAD_INPUT;
}

/// Local time with its zone, by ISO 8601.
std::string IsoTime(std::uint64_t timeStampMs) {
    constexpr std::uint64_t MS = 1000;
    const auto seconds = static_cast<std::time_t>(timeStampMs / MS);
    std::tm local{};
    if (localtime_r(&seconds, &local) == nullptr) {
        return "";
    }
    char text[64];
    std::string time(text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S%z", &local));
    return time.insert(time.size() - 2, ":");
}

/// The language file that came with the program: in the installed tree, or in the tree it was built in.
/// @return empty when there is none
std::string DefaultStringsFile() {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (error) {
        return "";
    }
    for (const char* place : {PITOOL_INSTALLED_STRINGS, PITOOL_BUILT_STRINGS}) {
        const fs::path file = (program.parent_path() / place).lexically_normal();
        if (fs::is_regular_file(file, error)) {
            return file.string();
        }
    }
    return "";
}

PI::CTextTable texts;  // of the whole run

std::string EventText(const RenderedEvent& event) {
    Table table({{nullptr}, {nullptr}}, Table::LastColumn::WRAPPED);
    for (const auto& [key, value] : event) {
        table.Add(key);
        table.Add(PrintableText(value), key == "Severity" ? SeverityStyle(value) : Style::PLAIN);
    }
    return table.Text(OutputScreen());
}

std::string EventJson(const RenderedEvent& event) {
    std::string text;
    JsonWriter json(text);
    json.BeginObject();
    json.Name("format").Text("pitool event");
    json.Name("version").Number(std::int64_t{1});
    AddEvent(event, json.Name("event"));
    json.EndObject();
    return text + "\n";
}

ExitStatus Run(const Options& options) {
    PI::CEvent event;
    const ExitStatus taken = TakeEvent(options, event);
    if (taken != EXIT_DONE) {
        return taken;
    }
    if (!LoadStrings(options.m_Strings)) {
        return EXIT_BAD_INPUT;
    }
    const RenderedEvent rendered = RenderEvent(event);
    return WriteOutput(options.m_Json ? EventJson(rendered) : EventText(rendered)) ? EXIT_DONE
                                                                                   : EXIT_BAD_INPUT;
}

}  // namespace

bool LoadStrings(const std::string& file) {
    const std::string path = file.empty() ? DefaultStringsFile() : file;
    if (path.empty()) {
        ReportWarning("no language file was found: every description reads \"Unknown Event\"");
        return true;
    }
    try {
        texts = PI::CTextTable::LoadFile(path);
        return true;
    } catch (const std::runtime_error& failure) {
        ReportError(failure.what());
        return false;
    }
}

RenderedEvent RenderEvent(const PI::CEvent& event) {
    RenderedEvent rendered = PI::CPluginHelper::StringifyEventMessageWith(
        event, texts, PI::WithoutText::UNKNOWN_EVENT, PI::MarkersInValues::TEXT);
    const auto date = std::find_if(rendered.begin(), rendered.end(),
                                   [](const auto& pair) { return pair.first == "Datetime"; });
    rendered.emplace(date + 1, "ISO8601", IsoTime(event.m_TimeStamp));
    return rendered;
}

std::string EventLine(const RenderedEvent& event, const Screen& screen) {
    constexpr std::size_t INDENT = 2;
    constexpr std::size_t SEVERITY_WIDTH = 11;
    Table table({{nullptr}, {nullptr}, {nullptr}}, Table::LastColumn::WRAPPED);
    for (const char* wanted : {"Severity", "EventID", "Description"}) {
        for (const auto& [key, value] : event) {
            if (key == wanted) {
                std::string text = PrintableText(value);
                const bool isSeverity = key == "Severity";
                text.resize(std::max(text.size(), isSeverity ? SEVERITY_WIDTH : 0), ' ');
                table.Add(text, isSeverity ? SeverityStyle(value) : Style::PLAIN);
            }
        }
    }
    return table.Text(screen, INDENT);
}

void AddEvent(const RenderedEvent& event, JsonWriter& json) {
    json.BeginObject();
    for (const auto& [key, value] : event) {
        json.Name(key).Text(value);
    }
    json.EndObject();
}

void AddEvent(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("event", "Render an event of the options or of standard input");
    const auto options = std::make_shared<Options>();
    std::vector<Field>& fields = options->m_Fields;
    fields.reserve(FIRST_PLACEHOLDER + 2 * PLACEHOLDERS);  // options refer to them
    const auto add = [&](const std::string& option, const std::string& member, bool isText, const char* value,
                         const std::string& help) {
        Field& field = fields.emplace_back(Field{option, member, isText, ""});
        field.m_Given = command->add_option(option, field.m_Value, help)->option_text(value);
        return field.m_Given;
    };
    add("--id", "id", false, "ID", "Number or name of the event (10000)");
    add("--severity", "severity", false, "SEVERITY", "DEBUG, INFORMATION, WARNING, ERROR or number");
    add("--timestamp", "timestamp", false, "MS", "Milliseconds since 1970-01-01 UTC (now)");
    add("--host", "host", true, "TEXT", "Host on which it arose (localhost)");
    add("--source", "source", true, "TEXT", "Component that raised it");
    add("--sequence", "sequence", false, "NUMBER", "Running number (0)");
    for (std::size_t i = 1; i <= PLACEHOLDERS; ++i) {
        const std::string number = std::to_string(i);
        CLI::Option* text = add("--placeholder" + number, "", true, "TEXT", "Text for the marker %" + number);
        add("--resource" + number, "resource", false, "NUMBER", "Language resource for the marker %" + number)
            ->excludes(text);
    }
    command->add_option("--strings", options->m_Strings, STRINGS_HELP)->option_text("FILE");
    command->add_flag("--json", options->m_Json, JSON_HELP);
    command->footer(std::string(EXAMPLES) +
                    "  pitool event < events/rebuild-failed.json\n"
                    "  pitool event --id REBUILD_STARTED --placeholder1 \"logical drive 0\"\n"
                    "  pitool event --strings events/strings.de.xml < events/spare-taken.json");
    command->callback([&action, options] { action = [options] { return Run(*options); }; });
}

}  // namespace pitool
