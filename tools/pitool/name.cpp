// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include <pi/vocabulary_lists.h>

#include <strings.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace pitool {
namespace {

struct Vocabulary {
    const char* m_Title;
    const char* m_Scope;  ///< before a constant; alone where the rows have none
    PI::CVocabulary (*m_Rows)();
};

constexpr Vocabulary VOCABULARIES[] = {
    {"error codes", "ErrorCode::", PI::Vocabulary::ErrorCodes},
    {"property identifiers", "PropertyID::", PI::Vocabulary::PropertyIDs},
    {"property values", "PropertyValue::", PI::Vocabulary::PropertyValues},
    {"operation identifiers", "OperationID::", PI::Vocabulary::OperationIDs},
    {"event identifiers", "EventID::", PI::Vocabulary::EventIDs},
    {"help topics", "", PI::Vocabulary::HelpTopics},
    {"icons", "", PI::Vocabulary::Icons},
};

struct Options {
    std::vector<std::string> m_Queries;
    std::string m_List;
    bool m_Json = false;
};

struct Finding {
    const Vocabulary* m_Vocabulary;
    PI::CVocabularyEntry m_Entry;
    std::string m_Query = {};
    const char* m_Match = "";

    /// As code in the namespace PI names it; empty for help topics and icons.
    std::string Constant() const {
        return *m_Entry.Constant() == '\0' ? "" : std::string(m_Vocabulary->m_Scope) + m_Entry.Constant();
    }
};

struct Result {
    std::vector<Finding> m_Findings;
    std::vector<std::pair<std::string, const char*>> m_Refusals;  ///< queries and reasons
    const Vocabulary* m_List = nullptr;                           ///< that is printed whole
};

/// Names and constants that are the word, then those that hold it. Constants may be given with their
/// namespace.
void FindWord(const std::string& query, std::vector<Finding>& findings) {
    const bool isQualified = query.find("::") != std::string::npos;
    const char* const word = query.c_str() + (strncasecmp(query.c_str(), "PI::", 4) == 0 ? 4 : 0);
    std::vector<Finding> parts;
    for (const Vocabulary& vocabulary : VOCABULARIES) {
        for (const PI::CVocabularyEntry entry : vocabulary.m_Rows()) {
            const Finding whole = {&vocabulary, entry, query, "exact"};
            const std::string constant = isQualified ? whole.Constant() : entry.Constant();
            if (strcasecmp(entry.Name(), word) == 0 || strcasecmp(constant.c_str(), word) == 0) {
                findings.push_back(whole);
            } else if (strcasestr(entry.Name(), word) != nullptr ||
                       strcasestr(constant.c_str(), word) != nullptr) {
                parts.push_back({&vocabulary, entry, query, "part"});
            }
        }
    }
    findings.insert(findings.end(), parts.begin(), parts.end());
}

/// @return null, or why nothing was found
const char* Find(const std::string& query, std::vector<Finding>& findings) {
    if (query.empty()) {
        return "an empty word is in every name";
    }
    const std::size_t before = findings.size();
    const int base = strncasecmp(query.c_str(), "0x", 2) == 0 ? 16 : 10;
    char* end = nullptr;
    const long long number = std::strtoll(query.c_str(), &end, base);
    const bool isNumber = *end == '\0';
    if (!isNumber) {
        FindWord(query, findings);
    } else if (number == static_cast<int>(number)) {
        for (const Vocabulary& vocabulary : VOCABULARIES) {
            if (const auto entry = vocabulary.m_Rows().Find(static_cast<int>(number))) {
                findings.push_back({&vocabulary, *entry, query, "number"});
            }
        }
    }
    return findings.size() > before ? nullptr
           : isNumber               ? "no vocabulary has this number"
                                    : "no name contains this word";
}

/// The vocabulary whose title begins with a text, in any case; '-' and '_' count as blanks.
/// @return null when it is none or several; standard error says so
const Vocabulary* FindList(const std::string& text) {
    std::string wanted = text;
    std::replace(wanted.begin(), wanted.end(), '-', ' ');
    std::replace(wanted.begin(), wanted.end(), '_', ' ');
    std::string all;
    std::string meant;
    std::vector<const Vocabulary*> found;
    for (const Vocabulary& vocabulary : VOCABULARIES) {
        all += (all.empty() ? "" : ", ") + std::string(vocabulary.m_Title);
        if (strncasecmp(vocabulary.m_Title, wanted.c_str(), wanted.size()) == 0) {
            meant += (meant.empty() ? "" : ", ") + std::string(vocabulary.m_Title);
            found.push_back(&vocabulary);
        }
    }
    if (found.size() == 1) {
        return found.front();
    }
    ReportError("--list: " + Quoted(text) +
                (found.empty() ? " is none of: " + all : " may be any of: " + meant));
    return nullptr;
}

std::string NamesText(const Result& result) {
    const bool isList = result.m_List != nullptr;
    std::vector<Column> columns = {
        {nullptr}, {nullptr}, {nullptr, Align::LEFT, 1}, {nullptr, Align::LEFT, 2}};
    columns.resize(isList ? 3 : 4);
    Table table(std::move(columns), Table::LastColumn::WRAPPED);
    for (const Finding& finding : result.m_Findings) {
        const bool hasName = *finding.m_Entry.Name() != '\0';
        table.Add(std::to_string(finding.m_Entry.Number()));
        table.Add(hasName ? finding.m_Entry.Name() : "(no name)", hasName ? Style::PLAIN : Style::FAINT);
        if (!isList) {
            table.Add(finding.m_Vocabulary->m_Title, Style::FAINT);
        }
        table.Add(finding.Constant(), isList ? Style::FAINT : Style::PLAIN);
    }
    return table.Text(OutputScreen());
}

std::string NamesJson(const Result& result) {
    const bool isList = result.m_List != nullptr;
    return JsonDocument(isList ? "pitool name --list" : "pitool name", [&](JsonWriter& json) {
        if (isList) {
            json.Member("vocabulary", result.m_List->m_Title);
        }
        json.Objects("names", result.m_Findings, [&](const Finding& finding) {
            if (!isList) {
                json.Member("query", finding.m_Query);
            }
            json.Member("number", finding.m_Entry.Number());
            json.Member("name", finding.m_Entry.Name());
            json.Member("constant", OrNull(finding.Constant()));
            if (!isList) {
                json.Member("vocabulary", finding.m_Vocabulary->m_Title);
                json.Member("match", finding.m_Match);
            }
        });
        if (!isList) {
            json.Objects("errors", result.m_Refusals, [&](const auto& refusal) {
                json.Member("query", refusal.first);
                json.Member("reason", refusal.second);
            });
        }
    });
}

ExitStatus Run(const Options& options) {
    if (options.m_Queries.empty() && options.m_List.empty()) {
        ReportError("name needs a WORD, a NUMBER or --list; see pitool name --help");
        return EXIT_BAD_USAGE;
    }
    Result result;
    if (options.m_Queries.empty()) {
        result.m_List = FindList(options.m_List);
        if (result.m_List == nullptr) {
            return EXIT_BAD_USAGE;
        }
        for (const PI::CVocabularyEntry entry : result.m_List->m_Rows()) {
            result.m_Findings.push_back({result.m_List, entry});
        }
    }
    for (const std::string& query : options.m_Queries) {
        if (const char* reason = Find(query, result.m_Findings)) {
            ReportError(Quoted(query) + ": " + reason);
            result.m_Refusals.emplace_back(query, reason);
        }
    }
    const ExitStatus printed = Print(options.m_Json ? NamesJson(result) : NamesText(result));
    return result.m_Refusals.empty() ? printed : EXIT_BAD_INPUT;
}

}  // namespace

void AddName(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("name", "Find names of numbers and numbers of names");
    const auto options = std::make_shared<Options>();
    CLI::Option* queries =
        command->add_option("WORD|NUMBER", options->m_Queries, "Number, name or part of a name, in any case")
            ->option_text("...");
    command->add_option("--list", options->m_List, "Print a vocabulary, such as \"error codes\"")
        ->option_text("VOCABULARY")
        ->excludes(queries);
    command->add_flag("--json", options->m_Json, JSON_HELP);
    command->footer(std::string(EXAMPLES) +
                    "  pitool name 30045 0x2749\n"
                    "  pitool name rebuild\n"
                    "  pitool name --list error-codes");
    command->callback([&action, options] { action = [options] { return Run(*options); }; });
}

}  // namespace pitool
