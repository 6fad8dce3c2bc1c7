// SPDX-License-Identifier: Apache-2.0
/// @file
/// Looks numbers and names up in all vocabularies.
#pragma once

#include "name_vocabularies.h"

#include <string>
#include <vector>

namespace pitool {

/// How an entry answers a question.
enum class NameMatch { NUMBER, EXACT, PART };

struct NameFinding {
    std::string m_Query;
    const Vocabulary* m_Vocabulary;
    PI::CVocabularyEntry m_Entry;
    NameMatch m_Match;
};

/// Finds a number's names, or the numbers of all names that are or hold a word, without regard to case; whole
/// names come first, otherwise the vocabularies keep their order.
///
/// @param findings what is found is appended
/// @param reason   out: why nothing was found, in one line, when the result is false
bool SearchNames(const std::string& query, std::vector<NameFinding>& findings, std::string& reason);

}  // namespace pitool
