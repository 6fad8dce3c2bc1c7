// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the user asks for.
#pragma once

#include "drive_command.h"
#include "event_command.h"
#include "exit_status.h"
#include "layout_command.h"
#include "name_command.h"
#include "sense_command.h"
#include "terminal.h"

#include <string>

namespace pitool {

/// The command of a command line with its options, or a text or an error that ends the run at once.
struct CommandLine {
    enum Command { NONE, DRIVE, LAYOUT, EVENT, ETA, NAME, SENSE } m_Command = NONE;
    DriveOptions m_Drive;
    LayoutOptions m_Layout;
    EventOptions m_Event;
    NameOptions m_Name;
    SenseOptions m_Sense;
    WhenColor m_Color = WhenColor::AUTO;
    std::string m_Text;                   ///< asked for by --help or --version
    std::string m_Error;                  ///< why the command line is refused
    ExitStatus m_ExitStatus = EXIT_DONE;  ///< of a run that ends at once
};

CommandLine ParseCommandLine(int argc, const char* const* argv);

}  // namespace pitool
