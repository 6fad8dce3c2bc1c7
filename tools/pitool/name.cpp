// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include <CLI/CLI.hpp>

#include <pi/vocabulary_lists.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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
    const std::string* m_Query;
    const Vocabulary* m_Vocabulary;
    PI::CVocabularyEntry m_Entry;
    const char* m_Match;
};

struct Refusal {
    std::string m_Query;
    const char* m_Reason;
};

/// Of ASCII letters, whatever the locale.
std::string UpperCase(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return upper;
}

/// The constant as code in the namespace PI names it; empty for help topics and icons.
std::string ConstantText(const Vocabulary& vocabulary, const PI::CVocabularyEntry& entry) {
    return *entry.Constant() == '\0' ? "" : std::string(vocabulary.m_Scope) + entry.Constant();
}

/// The number that a text is, decimal, or hexadecimal after "0x"; one that is too large becomes the largest.
std::optional<long long> NumberOf(const std::string& text) {
    constexpr int DECIMAL = 10;
    constexpr int HEXADECIMAL = 16;
    const bool isHex = UpperCase(text.substr(0, 2)) == "0X";
    char* end = nullptr;
    const long long number = std::strtoll(text.c_str(), &end, isHex ? HEXADECIMAL : DECIMAL);
    return end != text.c_str() && *end == '\0' ? std::optional(number) : std::nullopt;
}

void FindNumber(const std::string& query, int number, std::vector<Finding>& findings) {
    for (const Vocabulary& vocabulary : VOCABULARIES) {
        if (const auto entry = vocabulary.m_Rows().Find(number)) {
            findings.push_back({&query, &vocabulary, *entry, "number"});
        }
    }
}

/// Names and constants that are the word, then those that hold it. Constants may be given with their
/// namespace.
void FindWord(const std::string& query, std::vector<Finding>& findings) {
    std::string word = UpperCase(query);
    const bool isQualified = word.find("::") != std::string::npos;
    word.erase(0, word.rfind("PI::", 0) == 0 ? 4 : 0);
    std::vector<Finding> parts;
    for (const Vocabulary& vocabulary : VOCABULARIES) {
        for (const PI::CVocabularyEntry entry : vocabulary.m_Rows()) {
            const std::string name = UpperCase(entry.Name());
            const std::string constant =
                UpperCase(isQualified ? ConstantText(vocabulary, entry) : entry.Constant());
            if (name == word || constant == word) {
                findings.push_back({&query, &vocabulary, entry, "exact"});
            } else if (name.find(word) != std::string::npos || constant.find(word) != std::string::npos) {
                parts.push_back({&query, &vocabulary, entry, "part"});
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
    const std::optional<long long> number = NumberOf(query);
    if (!number) {
        FindWord(query, findings);
    } else if (*number == static_cast<int>(*number)) {
        FindNumber(query, static_cast<int>(*number), findings);
    }
    return findings.size() > before ? nullptr
           : number                 ? "no vocabulary has this number"
                                    : "no name contains this word";
}

/// Number and name, the columns that every output has.
void AddNumberAndName(const PI::CVocabularyEntry& entry, Table& table) {
    const bool hasName = *entry.Name() != '\0';
    table.Add(std::to_string(entry.Number()));
    table.Add(hasName ? entry.Name() : "(no name)", hasName ? Style::PLAIN : Style::FAINT);
}

void AddEntry(const Vocabulary& vocabulary, const PI::CVocabularyEntry& entry, JsonWriter& json) {
    json.Member("number", entry.Number());
    json.Member("name", entry.Name());
    json.Member("constant", OrNull(ConstantText(vocabulary, entry)));
}

std::string FindingsText(const std::vector<Finding>& findings) {
    Table table({{nullptr}, {nullptr}, {nullptr, Align::LEFT, 1}, {nullptr, Align::LEFT, 2}},
                Table::LastColumn::WRAPPED);
    for (const Finding& finding : findings) {
        AddNumberAndName(finding.m_Entry, table);
        table.Add(finding.m_Vocabulary->m_Title, Style::FAINT);
        table.Add(ConstantText(*finding.m_Vocabulary, finding.m_Entry));
    }
    return table.Text(OutputScreen());
}

std::string FindingsJson(const std::vector<Finding>& findings, const std::vector<Refusal>& refusals) {
    return JsonDocument("pitool name", [&](JsonWriter& json) {
        json.Objects("names", findings, [&](const Finding& finding) {
            json.Member("query", *finding.m_Query);
            AddEntry(*finding.m_Vocabulary, finding.m_Entry, json);
            json.Member("vocabulary", finding.m_Vocabulary->m_Title);
            json.Member("match", finding.m_Match);
        });
        json.Objects("errors", refusals, [&](const Refusal& refusal) {
            json.Member("query", refusal.m_Query);
            json.Member("reason", refusal.m_Reason);
        });
    });
}

std::string VocabularyText(const Vocabulary& vocabulary) {
    Table table({{nullptr}, {nullptr}, {nullptr, Align::LEFT, 1}}, Table::LastColumn::WRAPPED);
    for (const PI::CVocabularyEntry entry : vocabulary.m_Rows()) {
        AddNumberAndName(entry, table);
        table.Add(ConstantText(vocabulary, entry), Style::FAINT);
    }
    return table.Text(OutputScreen());
}

std::string VocabularyJson(const Vocabulary& vocabulary) {
    return JsonDocument("pitool name --list", [&](JsonWriter& json) {
        json.Member("vocabulary", vocabulary.m_Title);
        json.Objects("names", vocabulary.m_Rows(),
                     [&](const PI::CVocabularyEntry& entry) { AddEntry(vocabulary, entry, json); });
    });
}

/// Lists the vocabulary whose title begins with a text, in any case; '-' and '_' count as blanks.
ExitStatus ListVocabulary(const Options& options) {
    std::string wanted = UpperCase(options.m_List);
    std::replace_if(
        wanted.begin(), wanted.end(), [](char c) { return c == '-' || c == '_'; }, ' ');
    std::vector<const Vocabulary*> found;
    std::string all;
    std::string meant;
    for (const Vocabulary& vocabulary : VOCABULARIES) {
        all += (all.empty() ? "" : ", ") + std::string(vocabulary.m_Title);
        if (UpperCase(vocabulary.m_Title).rfind(wanted, 0) == 0) {
            found.push_back(&vocabulary);
            meant += (meant.empty() ? "" : ", ") + std::string(vocabulary.m_Title);
        }
    }
    if (found.size() == 1) {
        return Print(options.m_Json ? VocabularyJson(*found.front()) : VocabularyText(*found.front()));
    }
    ReportError("--list: " + Quoted(options.m_List) +
                (found.empty() ? " is none of: " + all : " may be any of: " + meant));
    return EXIT_BAD_USAGE;
}

ExitStatus Run(const Options& options) {
    if (options.m_Queries.empty() && options.m_List.empty()) {
        ReportError("name needs a WORD, a NUMBER or --list; see pitool name --help");
        return EXIT_BAD_USAGE;
    }
    if (options.m_Queries.empty()) {
        return ListVocabulary(options);
    }
    std::vector<Finding> findings;
    std::vector<Refusal> refusals;
    for (const std::string& query : options.m_Queries) {
        if (const char* reason = Find(query, findings)) {
            ReportError(Quoted(query) + ": " + reason);
            refusals.push_back({query, reason});
        }
    }
    const ExitStatus printed =
        Print(options.m_Json ? FindingsJson(findings, refusals) : FindingsText(findings));
    return refusals.empty() ? printed : EXIT_BAD_INPUT;
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
