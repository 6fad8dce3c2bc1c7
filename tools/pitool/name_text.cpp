// SPDX-License-Identifier: Apache-2.0

#include "name_text.h"

#include "json_text.h"
#include "text_table.h"

namespace pitool {
namespace {

bool HasName(const PI::CVocabularyEntry& entry) {
    return *entry.Name() != '\0';
}

const char* MatchText(NameMatch match) {
    switch (match) {
        case NameMatch::NUMBER: return "number";
        case NameMatch::EXACT: return "exact";
        case NameMatch::PART: break;
    }
    return "part";
}

/// A table without headings, of texts that must outlive it.
struct NameTable {
    explicit NameTable(std::size_t lines) { m_Numbers.reserve(lines); }

    /// A line of the number and the name.
    std::vector<Cell>& Add(const PI::CVocabularyEntry& entry) {
        m_Numbers.push_back(std::to_string(entry.Number()));
        const Cell name = HasName(entry) ? Cell{entry.Name(), Style::PLAIN} : Cell{"(no name)", Style::FAINT};
        return m_Lines.emplace_back(std::vector<Cell>{{m_Numbers.back()}, name});
    }

    std::vector<std::string> m_Numbers;
    std::vector<std::vector<Cell>> m_Lines;
};

}  // namespace

std::string FindingsText(const std::vector<NameFinding>& findings, const Screen& screen) {
    NameTable table(findings.size());
    for (const NameFinding& finding : findings) {
        table.Add(finding.m_Entry).push_back({finding.m_Vocabulary->m_Title, Style::FAINT});
    }
    return TableText(table.m_Lines, screen, 0);
}

std::string FindingsJson(const std::vector<NameFinding>& findings, const std::vector<NameError>& errors) {
    Json found = Json::array();
    for (const NameFinding& finding : findings) {
        found.push_back({
            {"query", finding.m_Query},
            {"number", finding.m_Entry.Number()},
            {"name", finding.m_Entry.Name()},
            {"vocabulary", finding.m_Vocabulary->m_Title},
            {"match", MatchText(finding.m_Match)},
        });
    }
    Json refused = Json::array();
    for (const auto& [query, reason] : errors) {
        refused.push_back({{"query", query}, {"reason", reason}});
    }
    return JsonText({
        {"format", "pitool name"},
        {"version", 1},
        {"names", std::move(found)},
        {"errors", std::move(refused)},
    });
}

std::string VocabularyText(const Vocabulary& vocabulary, const Screen& screen) {
    NameTable table(vocabulary.m_Entries.Count());
    for (const PI::CVocabularyEntry entry : vocabulary.m_Entries) {
        table.Add(entry);
    }
    return TableText(table.m_Lines, screen, 0);
}

std::string VocabularyJson(const Vocabulary& vocabulary) {
    Json names = Json::array();
    for (const PI::CVocabularyEntry entry : vocabulary.m_Entries) {
        names.push_back({{"number", entry.Number()}, {"name", entry.Name()}});
    }
    return JsonText({
        {"format", "pitool name --list"},
        {"version", 1},
        {"vocabulary", vocabulary.m_Title},
        {"names", std::move(names)},
    });
}

}  // namespace pitool
