// SPDX-License-Identifier: Apache-2.0

#include "event.h"
#include "commands.h"
#include "reports.h"

#include <pi/exchange/event_json.h>
#include <pi/plugin_helper.h>
#include <pi/text_table.h>
#include <pi/vocabulary_lists.h>
#include <velk/clock.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace pitool {
namespace {

struct Options {
    PI::CEvent m_Event;
    bool m_IsGiven = false;  ///< by options, not by standard input
    std::string m_Strings;
    bool m_Json = false;
};

constexpr std::string PI::CEvent::*PLACEHOLDERS[] = {
    &PI::CEvent::m_PlaceHolder1, &PI::CEvent::m_PlaceHolder2, &PI::CEvent::m_PlaceHolder3,
    &PI::CEvent::m_PlaceHolder4, &PI::CEvent::m_PlaceHolder5, &PI::CEvent::m_PlaceHolder6,
};

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
    for (const char* place : {PITOOL_INSTALLED_STRINGS, PITOOL_BUILT_STRINGS}) {
        const fs::path file = (program.parent_path() / place).lexically_normal();
        if (!program.empty() && fs::is_regular_file(file, error)) {
            return file.string();
        }
    }
    return "";
}

PI::CTextTable texts;  // of the whole run

/// Warns of what the event has and its rendering has not.
void WarnOfLosses(const PI::CEvent& event) {
    if (event.m_Severity < PI::Severity::DEBUG || event.m_Severity > PI::Severity::ERROR) {
        ReportWarning("", "severity " + std::to_string(event.m_Severity) + " is unknown and counts as DEBUG");
    }
    for (std::size_t i = 0; i < std::size(PLACEHOLDERS); ++i) {
        const std::string& stored = event.*PLACEHOLDERS[i];
        std::int32_t resource = 0;
        if (stored.rfind("I:", 0) == 0 && ReadWholeNumber(stored.substr(2), resource) &&
            texts.Find(static_cast<std::uint32_t>(resource)) == nullptr) {
            ReportWarning("", "placeholder " + std::to_string(i + 1) + ": language resource " +
                                  std::to_string(resource) + " has no text");
        }
    }
}

ExitStatus Run(Options& options) {
    std::string text;
    std::string reason;
    if (!options.m_IsGiven &&
        (!ReadInput(STANDARD_INPUT, text, reason) || !PI::ReadEvent(text, options.m_Event, reason))) {
        throw std::runtime_error("standard input: " + reason);
    }
    if (!LoadStrings(options.m_Strings)) {
        return EXIT_BAD_INPUT;
    }
    WarnOfLosses(options.m_Event);
    const RenderedEvent event = RenderEvent(options.m_Event);
    if (options.m_Json) {
        return Print(
            JsonDocument("pitool event", [&](JsonWriter& json) { AddEvent(event, json.Name("event")); }));
    }
    Table table({{nullptr}, {nullptr}}, Table::LastColumn::WRAPPED);
    for (const auto& [key, value] : event) {
        table.Add(key);
        table.Add(value, key == "Severity" ? SeverityStyle(value) : Style::PLAIN);
    }
    return Print(table.Text(OutputScreen()));
}

}  // namespace

bool LoadStrings(const std::string& file) {
    const std::string path = file.empty() ? DefaultStringsFile() : file;
    std::string text;
    std::string reason;
    std::error_code error;
    try {
        if (path.empty()) {
            ReportWarning("", "no language file was found: every description reads \"Unknown Event\"");
        } else if (!std::filesystem::is_fifo(path, error)) {
            texts = PI::CTextTable::LoadFile(path);
        } else if (ReadInput(path, text, reason)) {  // which waits for no writer
            texts = PI::ReadTextTable(text, path);
        } else {
            throw std::runtime_error(path + ": " + reason);
        }
        return true;
    } catch (const std::runtime_error& failure) {
        ReportError(failure.what());
        return false;
    }
}

RenderedEvent RenderEvent(const PI::CEvent& event) {
    constexpr std::ptrdiff_t AFTER_DATETIME = 5;
    RenderedEvent rendered = PI::CPluginHelper::StringifyEventMessageWith(
        event, texts, PI::WithoutText::UNKNOWN_EVENT, PI::MarkersInValues::TEXT);
    rendered.emplace(rendered.begin() + AFTER_DATETIME, "ISO8601", IsoTime(event.m_TimeStamp));
    return rendered;
}

void AddEvent(const RenderedEvent& event, JsonWriter& json) {
    json.Value([&] {
        for (const auto& [key, value] : event) {
            json.Member(key, value);
        }
    });
}

void AddEvent(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("event", "Render an event from options or standard input");
    const auto options = std::make_shared<Options>();
    PI::CEvent& event = options->m_Event;
    event.m_TimeStamp = VELK::now();
    const auto add = [&](const std::string& name, auto& field, const char* value, const std::string& help) {
        return command->add_option(name, field, help)
            ->option_text(value)
            ->type_name("TEXT")
            ->each([options](const auto&) { options->m_IsGiven = true; });
    };
    std::vector<std::pair<std::string, int>> numbers;
    for (const PI::CVocabularyEntry entry : PI::Vocabulary::EventIDs()) {
        numbers.emplace_back(entry.Name(), entry.Number());
    }
    add("--id", event.m_EventID, "ID", "Number or name of the event (10000)")
        ->transform(WholeNumber<std::uint32_t>("neither the name of an event nor"))
        ->transform(CLI::Transformer(numbers, CLI::ignore_case).description(""));
    add("--severity", event.m_Severity, "SEVERITY", "DEBUG, INFORMATION, WARNING, ERROR or number")
        ->transform(WholeNumber<std::int32_t>("neither DEBUG, INFORMATION, WARNING, ERROR nor"))
        ->transform(CLI::Transformer({{"DEBUG", "1"}, {"INFORMATION", "2"}, {"WARNING", "3"}, {"ERROR", "4"}},
                                     CLI::ignore_case)
                        .description(""));
    add("--timestamp", event.m_TimeStamp, "MS", "Milliseconds since 1970-01-01 UTC (now)")
        ->transform(WholeNumber<std::uint64_t>());
    add("--host", event.m_Host, "TEXT", "Host on which it arose (localhost)");
    add("--source", event.m_Source, "TEXT", "Component that raised it");
    add("--sequence", event.m_SequenceNumber, "NUMBER", "Running number (0)")
        ->transform(WholeNumber<std::uint32_t>());
    for (std::size_t i = 0; i < std::size(PLACEHOLDERS); ++i) {
        const std::string marker = std::to_string(i + 1);
        std::string& stored = event.*PLACEHOLDERS[i];
        CLI::Option* const asText =
            add("--placeholder" + marker, stored, "TEXT", "Text for the marker %" + marker)
                ->transform([](const std::string& text) { return "T:" + text; });
        add("--resource" + marker, stored, "NUMBER", "Language resource for the marker %" + marker)
            ->excludes(asText)
            ->transform([](const std::string& number) { return "I:" + number; })
            ->transform(WholeNumber<std::int32_t>());
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
