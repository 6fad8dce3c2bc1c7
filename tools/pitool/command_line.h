/// @file
/// What the user asks for.
#pragma once

#include "drive_command.h"
#include "exit_status.h"

#include <string>

namespace pitool {

/// The command of a command line with its options, or a text or an error that ends the run at once.
struct CommandLine {
    enum Command { NONE, DRIVE } m_Command = NONE;
    DriveOptions m_Drive;
    std::string m_Text;                   ///< asked for by --help or --version
    std::string m_Error;                  ///< why the command line is refused
    ExitStatus m_ExitStatus = EXIT_DONE;  ///< of a run that ends at once
};

CommandLine ParseCommandLine(int argc, const char* const* argv);

}  // namespace pitool
