// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include "eta_display.h"
#include "eta_estimate.h"
#include "eta_sample.h"
#include "line_reader.h"
#include "print/output.h"

#include <CLI/CLI.hpp>

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

namespace pitool {
namespace {

/// Takes a line into the estimate.
bool TakeLine(LineReader::Result result, const std::string& line, EtaEstimate& estimate, EtaSample& sample,
              std::string& reason) {
    if (result == LineReader::TOO_LONG) {
        reason = "longer than " + std::to_string(LineReader::MAX_LENGTH) + " bytes";
        return false;
    }
    return ReadEtaSample(line, sample, reason) &&
           estimate.Add(sample.m_Percent, sample.m_TimeMs ? *sample.m_TimeMs : PI::CETR::NowSteady(), reason);
}

}  // namespace

ExitStatus RunEta() {
    LineReader lines(STDIN_FILENO);
    EtaDisplay display(OutputIsTerminal());
    EtaEstimate estimate;
    ExitStatus status = EXIT_DONE;
    std::string line;
    std::string reason;
    for (std::size_t number = 1;; ++number) {
        const LineReader::Result result = lines.Next(line);
        if (result == LineReader::FAILED) {
            reason = std::strerror(errno);
            display.Finish();
            ReportError("standard input: " + reason);
            return EXIT_BAD_INPUT;
        }
        if (result == LineReader::END) {
            return display.Finish() ? status : EXIT_BAD_INPUT;
        }
        if (result == LineReader::LINE && IsBlankLine(line)) {
            continue;
        }
        EtaSample sample;
        if (!TakeLine(result, line, estimate, sample, reason)) {
            display.Finish();
            ReportError("standard input: line " + std::to_string(number) + ": " + reason);
            status = EXIT_BAD_INPUT;
        } else if (!display.Show(sample.m_Percent, estimate.Text())) {
            return EXIT_BAD_INPUT;
        }
    }
}

void AddEta(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("eta", "Estimate the time remaining of a progress");
    command->footer(
        std::string("Standard input holds lines \"percent milliseconds\", or \"percent\" for now.\n\n") +
        EXAMPLES +
        "  pitool eta < progress/rebuild.txt\n"
        "  echo 40 | pitool eta");
    command->callback([&action] { action = RunEta; });
}

}  // namespace pitool
