// SPDX-License-Identifier: Apache-2.0
/// @file
/// The library's vocabularies as lists.
#pragma once

#include <pi/vocabulary_lists.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pitool {

/// A vocabulary of the library under its title, such as "property identifiers".
struct Vocabulary {
    const char* m_Title;
    PI::CVocabulary m_Entries;
};

/// Error codes, property identifiers, property values, operation identifiers, event identifiers.
const std::vector<Vocabulary>& Vocabularies();

/// The vocabulary whose title begins with a text, without regard to case; '-' and '_' stand for blanks.
/// @return null when there is none, or more than one
const Vocabulary* FindVocabulary(std::string_view text);

/// The event identifier that bears a name, without regard to case, or nothing.
std::optional<PI::CVocabularyEntry> FindEventName(std::string_view name);

/// Upper case of ASCII letters, whatever the locale.
std::string UpperCase(std::string_view text);

}  // namespace pitool
