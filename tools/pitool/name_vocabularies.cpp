// SPDX-License-Identifier: Apache-2.0

#include "name_vocabularies.h"

namespace pitool {
namespace {

std::string Title(std::string_view text) {
    std::string title = UpperCase(text);
    for (char& c : title) {
        c = c == '-' || c == '_' ? ' ' : c;
    }
    return title;
}

}  // namespace

const std::vector<Vocabulary>& Vocabularies() {
    static const std::vector<Vocabulary> vocabularies{
        {"error codes", PI::Vocabulary::ErrorCodes()},
        {"property identifiers", PI::Vocabulary::PropertyIDs()},
        {"property values", PI::Vocabulary::PropertyValues()},
        {"operation identifiers", PI::Vocabulary::OperationIDs()},
        {"event identifiers", PI::Vocabulary::EventIDs()},
    };
    return vocabularies;
}

const Vocabulary* FindVocabulary(std::string_view text) {
    const std::string wanted = Title(text);
    const Vocabulary* found = nullptr;
    for (const Vocabulary& vocabulary : Vocabularies()) {
        if (!wanted.empty() && UpperCase(vocabulary.m_Title).rfind(wanted, 0) == 0) {
            if (found != nullptr) {
                return nullptr;
            }
            found = &vocabulary;
        }
    }
    return found;
}

std::optional<PI::CVocabularyEntry> FindEventName(std::string_view name) {
    const std::string wanted = UpperCase(name);
    for (const PI::CVocabularyEntry entry : PI::Vocabulary::EventIDs()) {
        if (entry.Name() == wanted) {
            return entry;
        }
    }
    return std::nullopt;
}

std::string UpperCase(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return upper;
}

}  // namespace pitool
