// SPDX-License-Identifier: Apache-2.0

#include "name_search.h"

#include "whole_number.h"

#include <cstdint>

namespace pitool {
namespace {

bool IsNumber(const std::string& text) {
    const std::size_t first = text.find_first_not_of("+-");
    return first <= 1 && text.find_first_not_of("0123456789", first) == std::string::npos;
}

void SearchNumber(const std::string& query, std::vector<NameFinding>& findings) {
    std::int32_t number = 0;
    if (!ReadWholeNumber(query.front() == '+' ? query.substr(1) : query, number)) {
        return;
    }
    for (const Vocabulary& vocabulary : Vocabularies()) {
        if (const auto entry = vocabulary.m_Entries.Find(number)) {
            findings.push_back({query, &vocabulary, *entry, NameMatch::NUMBER});
        }
    }
}

void SearchWord(const std::string& query, NameMatch wanted, std::vector<NameFinding>& findings) {
    const std::string word = UpperCase(query);
    for (const Vocabulary& vocabulary : Vocabularies()) {
        for (const PI::CVocabularyEntry entry : vocabulary.m_Entries) {
            const std::string name = UpperCase(entry.Name());
            if (name.find(word) == std::string::npos) {
                continue;
            }
            const NameMatch match = name == word ? NameMatch::EXACT : NameMatch::PART;
            if (match == wanted) {
                findings.push_back({query, &vocabulary, entry, match});
            }
        }
    }
}

}  // namespace

bool SearchNames(const std::string& query, std::vector<NameFinding>& findings, std::string& reason) {
    const std::size_t before = findings.size();
    if (query.empty()) {
        reason = "an empty word is in every name";
        return false;
    }
    if (IsNumber(query)) {
        SearchNumber(query, findings);
        reason = "no vocabulary holds this number";
    } else {
        SearchWord(query, NameMatch::EXACT, findings);
        SearchWord(query, NameMatch::PART, findings);
        reason = "no name holds this word";
    }
    return findings.size() > before;
}

}  // namespace pitool
