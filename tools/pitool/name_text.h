// SPDX-License-Identifier: Apache-2.0
/// @file
/// Numbers and names as text and as JSON.
#pragma once

#include "name_search.h"
#include "print/terminal.h"

#include <string>
#include <utility>
#include <vector>

namespace pitool {

/// A query that found nothing, and why.
using NameError = std::pair<std::string, std::string>;

/// One line a finding: number, name, vocabulary.
std::string FindingsText(const std::vector<NameFinding>& findings, const Screen& screen = {});
std::string FindingsJson(const std::vector<NameFinding>& findings, const std::vector<NameError>& errors);

/// One line an entry: number, name.
std::string VocabularyText(const Vocabulary& vocabulary, const Screen& screen = {});
std::string VocabularyJson(const Vocabulary& vocabulary);

}  // namespace pitool
