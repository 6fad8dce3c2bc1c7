// SPDX-License-Identifier: Apache-2.0
/// @file
/// The command "event".
#pragma once

#include "event_options.h"
#include "exit_status.h"

#include <string>

namespace pitool {

struct EventOptions {
    EventFields m_Fields;   ///< none given: the event is JSON on standard input
    std::string m_Strings;  ///< language file; empty: the one that came with the program
    bool m_Json = false;
};

/// Renders an event on standard output.
ExitStatus RunEvent(const EventOptions& options);

}  // namespace pitool
