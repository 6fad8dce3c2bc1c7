// SPDX-License-Identifier: Apache-2.0

#include "layout_command.h"
#include "commands.h"

#include "input_files.h"
#include "layout_document.h"
#include "layout_json.h"
#include "layout_tree.h"
#include "print/output.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace pitool {
namespace {

void ReportWarnings(const std::string& file, const LayoutWarnings& warnings) {
    for (const PlacedMessage& warning : warnings.m_Kept) {
        ReportFileWarning(PlaceText(file, warning.m_Place), warning.m_Text);
    }
    if (warnings.m_LeftOut != 0) {
        ReportFileWarning(file, std::to_string(warnings.m_LeftOut) + " further warnings");
    }
}

}  // namespace

ExitStatus RunLayout(const LayoutOptions& options) {
    std::string text;
    std::string reason;
    if (!ReadInput(options.m_File, text, reason)) {
        ReportFileError(options.m_File, reason);
        return EXIT_BAD_INPUT;
    }
    LayoutDocument document;
    PlacedMessage problem;
    if (!ReadLayout(text, document, problem)) {
        ReportFileError(PlaceText(options.m_File, problem.m_Place), problem.m_Text);
        return EXIT_BAD_INPUT;
    }
    ReportWarnings(options.m_File, document.m_Warnings);
    const bool written = WriteOutput(options.m_Json ? LayoutJson(options.m_File, document)
                                                    : LayoutTree(document, OutputScreen()));
    return written ? EXIT_DONE : EXIT_BAD_INPUT;
}

void AddLayout(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("layout", "Print the layout of a configuration document");
    const auto options = std::make_shared<LayoutOptions>();
    command->add_option("FILE", options->m_File, "Configuration document; - is standard input")
        ->option_text(" ")
        ->required();
    command->add_flag("--json", options->m_Json, JSON_HELP);
    command->footer(std::string(EXAMPLES) +
                    "  pitool layout layouts/raid10-logical-drive.xml\n"
                    "  pitool layout layouts/careless-array.xml\n"
                    "  pitool layout --json layouts/raid1-array.xml");
    command->callback([&action, options] { action = [options] { return RunLayout(*options); }; });
}

}  // namespace pitool
