// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reads configuration documents.
#pragma once

#include "text_place.h"

#include <pi/layout.h>

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

namespace pitool {

/// Largest document that is read, in bytes; one of a thousand drives has about 150,000.
constexpr std::size_t MAX_LAYOUT_SIZE = std::size_t{4} * 1024 * 1024;

/// Deepest nesting of elements that is read; a configuration document has four levels.
constexpr std::size_t MAX_ELEMENT_NESTING = 64;

/// Most warnings that are kept of a document.
constexpr std::size_t MAX_LAYOUT_WARNINGS = 100;

/// What could not be taken as it was written, in the order of the document, each with its element's place.
struct LayoutWarnings {
    std::vector<PlacedMessage> m_Kept;
    std::size_t m_LeftOut = 0;  ///< how many there were beyond MAX_LAYOUT_WARNINGS
};

struct LayoutDocument {
    std::variant<PI::CArray, PI::CLogicalDrive> m_Layout;
    LayoutWarnings m_Warnings;
};

/// Reads an array or a logical-drive configuration document from UTF-8 text.
///
/// @param document out: meaningful when the result is true
/// @param problem  out: what is wrong, and where, when the result is false
bool ReadLayout(const std::string& text, LayoutDocument& document, PlacedMessage& problem);

}  // namespace pitool
