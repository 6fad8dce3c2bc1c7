// SPDX-License-Identifier: Apache-2.0
/// @file
/// Whether a text is XML.
#pragma once

#include "text_place.h"

#include <cstddef>
#include <string>

namespace pitool {

/// Whether a text is a well-formed XML document in UTF-8 (or an encoding that it declares and that has ASCII
/// as its lower half).
///
/// The library's XML parser reads what it can and takes much that is no XML: a second root, text behind the
/// root, an attribute that stands twice. Here such a document is refused.
/// @param nesting deepest nesting of elements that is taken
/// @param problem out: what is wrong, and where, when the result is false
bool IsWellFormedXML(const std::string& text, std::size_t nesting, PlacedMessage& problem);

}  // namespace pitool
