// SPDX-License-Identifier: Apache-2.0

#include "name_vocabularies.h"

#include <algorithm>

namespace pitool {
namespace {

constexpr VocabularyEntry ERROR_CODES[] = {
#define PI_ERROR_CODE(number, constant, name) {number, name},
#include <pi/vocabulary/error_codes.def>
#undef PI_ERROR_CODE
};

constexpr VocabularyEntry PROPERTY_IDS[] = {
#define PI_PROPERTY_ID(number, constant, name) {number, name},
#include <pi/vocabulary/property_ids.def>
#undef PI_PROPERTY_ID
};

constexpr VocabularyEntry PROPERTY_VALUES[] = {
#define PI_PROPERTY_VALUE(number, constant, name) {number, name},
#include <pi/vocabulary/property_values.def>
#undef PI_PROPERTY_VALUE
};

constexpr VocabularyEntry OPERATION_IDS[] = {
#define PI_OPERATION_ID(number, constant, name) {number, name},
#include <pi/vocabulary/operation_ids.def>
#undef PI_OPERATION_ID
};

constexpr VocabularyEntry EVENT_IDS[] = {
#define PI_EVENT_ID(number, constant, name) {number, name},
#include <pi/vocabulary/event_ids.def>
#undef PI_EVENT_ID
};

constexpr const char* EVENT_IDENTIFIERS = "event identifiers";

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
        {"error codes", std::begin(ERROR_CODES), std::end(ERROR_CODES)},
        {"property identifiers", std::begin(PROPERTY_IDS), std::end(PROPERTY_IDS)},
        {"property values", std::begin(PROPERTY_VALUES), std::end(PROPERTY_VALUES)},
        {"operation identifiers", std::begin(OPERATION_IDS), std::end(OPERATION_IDS)},
        {EVENT_IDENTIFIERS, std::begin(EVENT_IDS), std::end(EVENT_IDS)},
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

const VocabularyEntry* FindNumber(const Vocabulary& vocabulary, int number) {
    const VocabularyEntry* entry =
        std::lower_bound(vocabulary.begin(), vocabulary.end(), number,
                         [](const VocabularyEntry& left, int right) { return left.m_Number < right; });
    return entry != vocabulary.end() && entry->m_Number == number ? entry : nullptr;
}

const VocabularyEntry* FindEventName(std::string_view name) {
    const std::string wanted = UpperCase(name);
    const auto* const entry =
        std::find_if(std::begin(EVENT_IDS), std::end(EVENT_IDS),
                     [&wanted](const VocabularyEntry& candidate) { return candidate.m_Name == wanted; });
    return entry != std::end(EVENT_IDS) ? entry : nullptr;
}

std::string UpperCase(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return upper;
}

}  // namespace pitool
