// SPDX-License-Identifier: Apache-2.0

#include "name_command.h"

#include "name_text.h"
#include "output.h"
#include "quoted_text.h"

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

}  // namespace pitool
