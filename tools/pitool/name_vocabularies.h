// SPDX-License-Identifier: Apache-2.0
/// @file
/// The library's vocabularies as lists.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pitool {

struct VocabularyEntry {
    int m_Number;
    std::string_view m_Name;  ///< empty for the property value 0
};

/// A vocabulary, its numbers ascending. A number may stand twice: its first name is the one the library gives
/// it, the others are names that plug-ins know it by.
struct Vocabulary {
    const char* m_Title;  ///< such as "property identifiers"
    const VocabularyEntry* m_Begin;
    const VocabularyEntry* m_End;

    const VocabularyEntry* begin() const { return m_Begin; }
    const VocabularyEntry* end() const { return m_End; }
};

/// Error codes, property identifiers, property values, operation identifiers, event identifiers.
const std::vector<Vocabulary>& Vocabularies();

/// The vocabulary whose title begins with a text, without regard to case; '-' and '_' stand for blanks.
/// @return null when there is none, or more than one
const Vocabulary* FindVocabulary(std::string_view text);

/// The first entry of a number, or null.
const VocabularyEntry* FindNumber(const Vocabulary& vocabulary, int number);

/// The event identifier that bears a name, without regard to case, or null.
const VocabularyEntry* FindEventName(std::string_view name);

/// Upper case of ASCII letters, whatever the locale.
std::string UpperCase(std::string_view text);

}  // namespace pitool
