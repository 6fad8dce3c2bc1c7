// SPDX-License-Identifier: Apache-2.0

#include "event_command.h"
#include "commands.h"

#include "event_json.h"
#include "event_reader.h"
#include "event_strings.h"
#include "event_text.h"
#include "input_files.h"
#include "print/output.h"

#include <CLI/CLI.hpp>

#include <memory>

#include <pi/plugin_helper.h>

namespace pitool {
namespace {

ExitStatus TakeEvent(const EventOptions& options, PI::CEvent& event) {
    std::string reason;
    if (HasField(options.m_Fields)) {
        if (MakeEvent(options.m_Fields, event, reason)) {
            return EXIT_DONE;
        }
        ReportError(reason);
        return EXIT_BAD_USAGE;
    }
    std::string text;
    if (ReadInput(STANDARD_INPUT, text, reason) && ReadEvent(text, event, reason)) {
        return EXIT_DONE;
    }
    ReportError("standard input: " + reason);
    return EXIT_BAD_INPUT;
}

}  // namespace

ExitStatus RunEvent(const EventOptions& options) {
    PI::CEvent event;
    const ExitStatus taken = TakeEvent(options, event);
    if (taken != EXIT_DONE) {
        return taken;
    }
    if (!LoadStrings(options.m_Strings)) {
        return EXIT_BAD_INPUT;
    }
    const RenderedEvent rendered = PI::CPluginHelper::StringifyEventMessage(event);
    return WriteOutput(options.m_Json ? EventJson(rendered) : EventText(rendered, OutputScreen()))
               ? EXIT_DONE
               : EXIT_BAD_INPUT;
}

void AddEvent(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("event", "Render an event of the options or of standard input");
    const auto options = std::make_shared<EventOptions>();
    EventFields& fields = options->m_Fields;
    command->add_option("--id", fields.m_ID, "Number or name of the event (10000)")->type_name("ID");
    command->add_option("--severity", fields.m_Severity, "DEBUG, INFORMATION, WARNING, ERROR or number")
        ->type_name("SEVERITY");
    command->add_option("--timestamp", fields.m_TimeStamp, "Milliseconds since 1970-01-01 UTC (now)")
        ->type_name("MS");
    command->add_option("--host", fields.m_Host, "Host on which it arose (localhost)")->type_name("TEXT");
    command->add_option("--source", fields.m_Source, "Component that raised it")->type_name("TEXT");
    command->add_option("--sequence", fields.m_Sequence, "Running number (0)")->type_name("NUMBER");
    for (std::size_t i = 0; i < PLACEHOLDERS; ++i) {
        const std::string number = std::to_string(i + 1);
        CLI::Option* text =
            command->add_option("--placeholder" + number, fields.m_Texts[i], "Text for the marker %" + number)
                ->option_text("TEXT");
        command
            ->add_option("--resource" + number, fields.m_Resources[i],
                         "Language resource for the marker %" + number)
            ->option_text("NUMBER")
            ->excludes(text);
    }
    command->add_option("--strings", options->m_Strings, STRINGS_HELP)->type_name("FILE");
    command->add_flag("--json", options->m_Json, JSON_HELP);
    command->footer(std::string(EXAMPLES) +
                    "  pitool event < events/rebuild-failed.json\n"
                    "  pitool event --id REBUILD_STARTED --placeholder1 \"logical drive 0\"\n"
                    "  pitool event --strings events/strings.de.xml < events/spare-taken.json");
    command->callback([&action, options] { action = [options] { return RunEvent(*options); }; });
}

}  // namespace pitool
