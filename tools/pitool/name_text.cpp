// SPDX-License-Identifier: Apache-2.0

#include "name_text.h"

#include "json_text.h"

#include <algorithm>

namespace pitool {
namespace {

std::string NameText(const VocabularyEntry& entry) {
    return entry.m_Name.empty() ? "(no name)" : std::string(entry.m_Name);
}

const char* MatchText(NameMatch match) {
    switch (match) {
        case NameMatch::NUMBER: return "number";
        case NameMatch::EXACT: return "exact";
        case NameMatch::PART: break;
    }
    return "part";
}

std::string Padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

}  // namespace

std::string FindingsText(const std::vector<NameFinding>& findings) {
    std::size_t numberWidth = 0;
    std::size_t nameWidth = 0;
    for (const NameFinding& finding : findings) {
        numberWidth = std::max(numberWidth, std::to_string(finding.m_Entry->m_Number).size());
        nameWidth = std::max(nameWidth, NameText(*finding.m_Entry).size());
    }
    std::string text;
    for (const NameFinding& finding : findings) {
        text += Padded(std::to_string(finding.m_Entry->m_Number), numberWidth) + "  " +
                Padded(NameText(*finding.m_Entry), nameWidth) + "  " + finding.m_Vocabulary->m_Title + "\n";
    }
    return text;
}

std::string FindingsJson(const std::vector<NameFinding>& findings, const std::vector<NameError>& errors) {
    Json found = Json::array();
    for (const NameFinding& finding : findings) {
        found.push_back({
            {"query", finding.m_Query},
            {"number", finding.m_Entry->m_Number},
            {"name", finding.m_Entry->m_Name},
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

std::string VocabularyText(const Vocabulary& vocabulary) {
    std::size_t width = 0;
    for (const VocabularyEntry& entry : vocabulary) {
        width = std::max(width, std::to_string(entry.m_Number).size());
    }
    std::string text;
    for (const VocabularyEntry& entry : vocabulary) {
        text += Padded(std::to_string(entry.m_Number), width) + "  " + NameText(entry) + "\n";
    }
    return text;
}

std::string VocabularyJson(const Vocabulary& vocabulary) {
    Json names = Json::array();
    for (const VocabularyEntry& entry : vocabulary) {
        names.push_back({{"number", entry.m_Number}, {"name", entry.m_Name}});
    }
    return JsonText({
        {"format", "pitool name --list"},
        {"version", 1},
        {"vocabulary", vocabulary.m_Title},
        {"names", std::move(names)},
    });
}

}  // namespace pitool
