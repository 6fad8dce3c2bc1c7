// SPDX-License-Identifier: Apache-2.0

#include "command_line.h"
#include "eta_command.h"
#include "help_text.h"
#include "output.h"

#include <exception>

namespace {

int Run(int argc, char** argv) {
    const pitool::CommandLine line = pitool::ParseCommandLine(argc, argv);
    pitool::UseColors(line.m_Color);
    switch (line.m_Command) {
        case pitool::CommandLine::DRIVE: return pitool::RunDrive(line.m_Drive);
        case pitool::CommandLine::LAYOUT: return pitool::RunLayout(line.m_Layout);
        case pitool::CommandLine::EVENT: return pitool::RunEvent(line.m_Event);
        case pitool::CommandLine::ETA: return pitool::RunEta();
        case pitool::CommandLine::NAME: return pitool::RunName(line.m_Name);
        case pitool::CommandLine::SENSE: return pitool::RunSense(line.m_Sense);
        case pitool::CommandLine::NONE: break;
    }
    if (!line.m_Error.empty()) {
        pitool::ReportError(line.m_Error);
        return line.m_ExitStatus;
    }
    return pitool::WriteOutput(pitool::HelpWithHeadings(line.m_Text, pitool::OutputScreen()))
               ? line.m_ExitStatus
               : pitool::EXIT_BAD_INPUT;
}

}  // namespace

int main(int argc, char** argv) {
    pitool::PrepareOutput();
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) {
        pitool::ReportError(error.what());
        return pitool::EXIT_BAD_INPUT;
    }
}
