// SPDX-License-Identifier: Apache-2.0
// Copying and comparing XML documents by way of their text.
#pragma once

#include <velk/xml.h>

namespace PI {

/// Replaces the target by what its text says of the source: see CXMLData.
/// @throws std::bad_alloc if allocation fails; the target is valid but may hold less then
void CopyDocument(const VELK::XML::xml_document& source, VELK::XML::xml_document& target);

/// Whether two documents have the same text.
bool EqualDocuments(const VELK::XML::xml_document& left, const VELK::XML::xml_document& right);

}  // namespace PI
