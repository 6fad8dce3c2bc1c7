// SPDX-License-Identifier: Apache-2.0
// XML documents as text, with all that text can hold of them.
#pragma once

#include <velk/xml.h>

#include <string>

namespace PI {

/// Unlike the text by which documents are copied it adds no white space and keeps what is there. Where no
/// text can hold the document, such as an element whose name is "a b", it holds the part that a copy would
/// hold.
std::string TextOfXml(const VELK::XML::xml_document& document);

/// @return null, or why the text is no document; the document holds a part of it then
/// @throws std::bad_alloc if allocation fails
const char* XmlOfText(const char* text, std::size_t length, VELK::XML::xml_document& document);

}  // namespace PI
