// SPDX-License-Identifier: Apache-2.0

#include "name_command.h"
#include "commands.h"

#include "name_text.h"
#include "print/output.h"
#include "print/text.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace pitool {
namespace {

ExitStatus Print(const std::string& text) {
    return WriteOutput(text) ? EXIT_DONE : EXIT_BAD_INPUT;
}

ExitStatus ListVocabulary(const NameOptions& options) {
    const Vocabulary* vocabulary = FindVocabulary(options.m_List);
    if (vocabulary == nullptr) {
        std::string titles;
        for (const Vocabulary& known : Vocabularies()) {
            titles += (titles.empty() ? "" : ", ") + std::string(known.m_Title);
        }
        ReportError("--list: " + Quoted(options.m_List) + " is none of: " + titles);
        return EXIT_BAD_USAGE;
    }
    return Print(options.m_Json ? VocabularyJson(*vocabulary) : VocabularyText(*vocabulary, OutputScreen()));
}

}  // namespace

ExitStatus RunName(const NameOptions& options) {
    if (options.m_Queries.empty() && options.m_List.empty()) {
        ReportError("name needs a WORD, a NUMBER or --list; see pitool name --help");
        return EXIT_BAD_USAGE;
    }
    if (options.m_Queries.empty()) {
        return ListVocabulary(options);
    }
    std::vector<NameFinding> findings;
    std::vector<NameError> errors;
    std::string reason;
    for (const std::string& query : options.m_Queries) {
        if (!SearchNames(query, findings, reason)) {
            ReportError(Quoted(query) + ": " + reason);
            errors.emplace_back(query, reason);
        }
    }
    const ExitStatus printed =
        Print(options.m_Json ? FindingsJson(findings, errors) : FindingsText(findings, OutputScreen()));
    return errors.empty() ? printed : EXIT_BAD_INPUT;
}

void AddName(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("name", "Find names of numbers and numbers of names");
    const auto options = std::make_shared<NameOptions>();
    CLI::Option* queries =
        command->add_option("WORD|NUMBER", options->m_Queries, "Number, name or part of a name, in any case")
            ->option_text("...");
    command->add_option("--list", options->m_List, "Print a vocabulary, such as \"error codes\"")
        ->option_text("VOCABULARY")
        ->excludes(queries);
    command->add_flag("--json", options->m_Json, JSON_HELP);
    command->footer(std::string(EXAMPLES) +
                    "  pitool name 30045 10057\n"
                    "  pitool name rebuild\n"
                    "  pitool name --list error-codes");
    command->callback([&action, options] { action = [options] { return RunName(*options); }; });
}

}  // namespace pitool
