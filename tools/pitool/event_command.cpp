// SPDX-License-Identifier: Apache-2.0

#include "event_command.h"

#include "event_json.h"
#include "event_reader.h"
#include "event_strings.h"
#include "event_text.h"
#include "input_files.h"
#include "output.h"

#include <pi/plugin_helper.h>

namespace pitool {
namespace {

ExitStatus TakeEvent(const EventOptions& options, PI::CEvent& event) {
    std::string reason;
    if (!options.m_FromInput) {
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

}  // namespace pitool
