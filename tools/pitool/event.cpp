// SPDX-License-Identifier: Apache-2.0

#include "event.h"
#include "commands.h"

#include "input_files.h"

#include <CLI/CLI.hpp>

#include <pi/exchange/event_json.h>
#include <pi/plugin_helper.h>
#include <pi/text_table.h>
#include <pi/vocabulary.h>
#include <pi/vocabulary_lists.h>
#include <velk/clock.h>

#include <strings.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace pitool {
namespace {

struct Options {
    PI::CEvent m_Event;
    bool m_IsGiven = false;  ///< by options, not by standard input
    std::string m_Strings;
    bool m_Json = false;
};

/// @throws std::invalid_argument with the reason for what is none
template <class Number>
Number NumberOf(const std::string& text, const char* refusal = "is not a whole number") {
    using Limits = std::numeric_limits<Number>;
    Number number = 0;
    if (!ReadWholeNumber(text, number)) {
        throw std::invalid_argument(Quoted(text) + " " + refusal + " from " + std::to_string(Limits::min()) +
                                    " to " + std::to_string(Limits::max()));
    }
    return number;
}

std::uint32_t EventIDOf(const std::string& text) {
    for (const PI::CVocabularyEntry event : PI::Vocabulary::EventIDs()) {
        if (strcasecmp(text.c_str(), event.Name()) == 0) {
            return static_cast<std::uint32_t>(event.Number());
        }
    }
    return NumberOf<std::uint32_t>(text, "is neither the name of an event nor a whole number");
}

PI::_SEVERITY SeverityOf(const std::string& text) {
    for (const PI::_SEVERITY severity :
         {PI::Severity::DEBUG, PI::Severity::INFORMATION, PI::Severity::WARNING, PI::Severity::ERROR}) {
        if (strcasecmp(text.c_str(), PI::SeverityToString(severity).c_str()) == 0) {
            return severity;
        }
    }
    return static_cast<PI::_SEVERITY>(
        NumberOf<std::int32_t>(text, "is neither DEBUG, INFORMATION, WARNING, ERROR nor a whole number"));
}

template <class Value>
constexpr void (PI::CEvent::*SET_PLACEHOLDER[])(Value) = {
    &PI::CEvent::SetPlaceHolder1, &PI::CEvent::SetPlaceHolder2, &PI::CEvent::SetPlaceHolder3,
    &PI::CEvent::SetPlaceHolder4, &PI::CEvent::SetPlaceHolder5, &PI::CEvent::SetPlaceHolder6,
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
    return JsonDocument("pitool event", [&](JsonWriter& json) { AddEvent(event, json.Name("event")); });
}

ExitStatus Run(Options& options) {
    std::string text;
    std::string reason;
    if (!options.m_IsGiven &&
        (!ReadInput(STANDARD_INPUT, text, reason) || !PI::ReadEvent(text, options.m_Event, reason))) {
        ReportError("standard input: " + reason);
        return EXIT_BAD_INPUT;
    }
    if (!LoadStrings(options.m_Strings)) {
        return EXIT_BAD_INPUT;
    }
    const RenderedEvent rendered = RenderEvent(options.m_Event);
    return Print(options.m_Json ? EventJson(rendered) : EventText(rendered));
}

}  // namespace

bool LoadStrings(const std::string& file) {
    const std::string path = file.empty() ? DefaultStringsFile() : file;
    if (path.empty()) {
        ReportWarning("", "no language file was found: every description reads \"Unknown Event\"");
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
    using Take = std::function<void(const std::string& text)>;
    const auto add = [&](const std::string& name, const char* value, const std::string& help,
                         const Take& take) {
        const auto callback = [options, name, take](const std::string& text) {
            options->m_IsGiven = true;
            try {
                take(text);
            } catch (const std::invalid_argument& refusal) {
                throw CLI::ValidationError(name, refusal.what());
            }
        };
        return command->add_option_function<std::string>(name, callback, help)->option_text(value);
    };
    using Text = const std::string&;
    add("--id", "ID", "Number or name of the event (10000)",
        [&event](Text text) { event.m_EventID = EventIDOf(text); });
    add("--severity", "SEVERITY", "DEBUG, INFORMATION, WARNING, ERROR or number",
        [&event](Text text) { event.m_Severity = SeverityOf(text); });
    add("--timestamp", "MS", "Milliseconds since 1970-01-01 UTC (now)",
        [&event](Text text) { event.m_TimeStamp = NumberOf<std::uint64_t>(text); });
    add("--host", "TEXT", "Host on which it arose (localhost)", [&event](Text text) { event.m_Host = text; });
    add("--source", "TEXT", "Component that raised it", [&event](Text text) { event.m_Source = text; });
    add("--sequence", "NUMBER", "Running number (0)",
        [&event](Text text) { event.m_SequenceNumber = NumberOf<std::uint32_t>(text); });
    for (std::size_t i = 0; i < std::size(SET_PLACEHOLDER<int>); ++i) {
        const std::string marker = std::to_string(i + 1);
        const auto setText = SET_PLACEHOLDER<Text>[i];
        const auto setResource = SET_PLACEHOLDER<int>[i];
        CLI::Option* const asText = add("--placeholder" + marker, "TEXT", "Text for the marker %" + marker,
                                        [&event, setText](Text text) { (event.*setText)(text); });
        add("--resource" + marker, "NUMBER", "Language resource for the marker %" + marker,
            [&event, setResource](Text text) { (event.*setResource)(NumberOf<int>(text)); })
            ->excludes(asText);
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
