// SPDX-License-Identifier: Apache-2.0

#include "layout_command.h"

#include "input_files.h"
#include "layout_document.h"
#include "layout_json.h"
#include "layout_tree.h"
#include "output.h"

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

}  // namespace pitool
