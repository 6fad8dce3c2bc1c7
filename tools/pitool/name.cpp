// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include "print/json.h"
#include "print/output.h"
#include "print/table.h"
#include "print/text.h"

#include <CLI/CLI.hpp>

#include <pi/vocabulary_lists.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
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

bool IsHexadecimal(std::string_view text) {
    return text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
}

/// Whether a text is written as a number, be it one that fits or not: decimal, or hexadecimal after "0x".
bool IsNumber(std::string_view text) {
    const bool isHex = IsHexadecimal(text);
    text.remove_prefix(isHex ? 2 : text.front() == '+' || text.front() == '-' ? 1 : 0);
    return !text.empty() &&
           text.find_first_not_of(isHex ? "0123456789abcdefABCDEF" : "0123456789") == std::string_view::npos;
}

void FindNumber(const std::string& query, std::vector<Finding>& findings) {
    const bool isHex = IsHexadecimal(query);
    const char* begin = query.data() + (isHex ? 2 : query.front() == '+' ? 1 : 0);
    int number = 0;
    if (std::from_chars(begin, query.data() + query.size(), number, isHex ? 16 : 10).ec != std::errc()) {
        return;
    }
    for (const Vocabulary& vocabulary : VOCABULARIES) {
        if (const auto entry = vocabulary.m_Rows().Find(number)) {
            findings.push_back({&query, &vocabulary, *entry, "number"});
        }
    }
}

/// Names that are the word, or those that hold it, also as C++ code spells them.
void FindWord(const std::string& query, bool isWhole, std::vector<Finding>& findings) {
    const std::string word = UpperCase(query);
    for (const Vocabulary& vocabulary : VOCABULARIES) {
        for (const PI::CVocabularyEntry entry : vocabulary.m_Rows()) {
            const std::string name = UpperCase(entry.Name());
            const std::string constant = UpperCase(entry.Constant());
            const bool isFound =
                name.find(word) != std::string::npos || constant.find(word) != std::string::npos;
            if (isFound && isWhole == (name == word || constant == word)) {
                findings.push_back({&query, &vocabulary, entry, isWhole ? "exact" : "part"});
            }
        }
    }
}

/// @return null, or why nothing was found
const char* Find(const std::string& query, std::vector<Finding>& findings) {
    const std::size_t before = findings.size();
    if (query.empty()) {
        return "an empty word is in every name";
    }
    const bool isNumber = IsNumber(query);
    if (isNumber) {
        FindNumber(query, findings);
    } else {
        FindWord(query, true, findings);
        FindWord(query, false, findings);
    }
    return findings.size() > before ? nullptr
           : isNumber               ? "no vocabulary holds this number"
                                    : "no name holds this word";
}

void AddNumberAndName(const PI::CVocabularyEntry& entry, Table& table) {
    const bool hasName = *entry.Name() != '\0';
    table.Add(std::to_string(entry.Number()));
    table.Add(hasName ? entry.Name() : "(no name)", hasName ? Style::PLAIN : Style::FAINT);
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

void AddEntry(const Vocabulary& vocabulary, const PI::CVocabularyEntry& entry, JsonWriter& json) {
    json.Name("number").Number(std::int64_t{entry.Number()});
    json.Name("name").Text(entry.Name());
    json.Name("constant").TextOrNull(ConstantText(vocabulary, entry));
}

std::string FindingsJson(const std::vector<Finding>& findings, const std::vector<Refusal>& refusals) {
    std::string text;
    JsonWriter json(text);
    json.BeginObject();
    json.Name("format").Text("pitool name");
    json.Name("version").Number(std::int64_t{1});
    json.Name("names").BeginList();
    for (const Finding& finding : findings) {
        json.BeginObject();
        json.Name("query").Text(*finding.m_Query);
        AddEntry(*finding.m_Vocabulary, finding.m_Entry, json);
        json.Name("vocabulary").Text(finding.m_Vocabulary->m_Title);
        json.Name("match").Text(finding.m_Match);
        json.EndObject();
    }
    json.EndList();
    json.Name("errors").BeginList();
    for (const Refusal& refusal : refusals) {
        json.BeginObject();
        json.Name("query").Text(refusal.m_Query);
        json.Name("reason").Text(refusal.m_Reason);
        json.EndObject();
    }
    json.EndList();
    json.EndObject();
    return text + "\n";
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
    std::string text;
    JsonWriter json(text);
    json.BeginObject();
    json.Name("format").Text("pitool name --list");
    json.Name("version").Number(std::int64_t{1});
    json.Name("vocabulary").Text(vocabulary.m_Title);
    json.Name("names").BeginList();
    for (const PI::CVocabularyEntry entry : vocabulary.m_Rows()) {
        json.BeginObject();
        AddEntry(vocabulary, entry, json);
        json.EndObject();
    }
    json.EndList();
    json.EndObject();
    return text + "\n";
}

/// The vocabularies whose titles begin with a text, in any case; '-' and '_' stand for blanks.
std::vector<const Vocabulary*> FindVocabularies(std::string_view text) {
    std::string wanted = UpperCase(text);
    for (char& c : wanted) {
        c = c == '-' || c == '_' ? ' ' : c;
    }
    std::vector<const Vocabulary*> found;
    for (const Vocabulary& vocabulary : VOCABULARIES) {
        if (UpperCase(vocabulary.m_Title).rfind(wanted, 0) == 0) {
            found.push_back(&vocabulary);
        }
    }
    return found;
}

ExitStatus Print(const std::string& text) {
    return WriteOutput(text) ? EXIT_DONE : EXIT_BAD_INPUT;
}

ExitStatus ListVocabulary(const Options& options) {
    const std::vector<const Vocabulary*> found = FindVocabularies(options.m_List);
    if (found.size() == 1) {
        return Print(options.m_Json ? VocabularyJson(*found.front()) : VocabularyText(*found.front()));
    }
    std::string titles;
    for (const Vocabulary& vocabulary : VOCABULARIES) {
        const bool isMeant =
            found.empty() || std::find(found.begin(), found.end(), &vocabulary) != found.end();
        titles += isMeant ? (titles.empty() ? "" : ", ") + std::string(vocabulary.m_Title) : "";
    }
    ReportError("--list: " + Quoted(options.m_List) + (found.empty() ? " is none of: " : " may be any of: ") +
                titles);
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
