// SPDX-License-Identifier: Apache-2.0

#include "layout_document.h"

#include "layout_check.h"
#include "print/text.h"
#include "well_formed_xml.h"

#include <cstring>

namespace pitool {

namespace {

/// Marks UTF-8 text, and is no character of it.
constexpr const char* BYTE_ORDER_MARK = "\xEF\xBB\xBF";

}  // namespace

bool ReadLayout(const std::string& text, LayoutDocument& document, PlacedMessage& problem) {
    if (text.size() > MAX_LAYOUT_SIZE) {
        problem = {PlaceOf(text, MAX_LAYOUT_SIZE), "larger than 4 mebibytes"};
        return false;
    }
    if (text.rfind(BYTE_ORDER_MARK, 0) == 0) {
        return ReadLayout(text.substr(std::strlen(BYTE_ORDER_MARK)), document, problem);
    }
    if (!IsWellFormedXML(text, MAX_ELEMENT_NESTING, problem)) {
        return false;
    }
    VELK::XML::xml_document xml;
    const VELK::XML::xml_parse_result result =
        xml.load_buffer(text.data(), text.size(), VELK::XML::parse_default, VELK::XML::encoding_utf8);
    if (!result) {
        problem = {PlaceOf(text, static_cast<std::size_t>(result.offset)), result.description()};
        return false;
    }
    const VELK::XML::xml_node root = xml.document_element();
    if (std::strcmp(root.name(), ARRAY_ROOT) == 0) {
        document.m_Layout = PI::CArray(xml);
        document.m_Warnings = CheckArray(text, root, std::get<PI::CArray>(document.m_Layout));
        return true;
    }
    if (std::strcmp(root.name(), LOGICAL_DRIVE_ROOT) == 0) {
        document.m_Layout = PI::CLogicalDrive(xml);
        document.m_Warnings = CheckLogicalDrive(text, root, std::get<PI::CLogicalDrive>(document.m_Layout));
        return true;
    }
    problem = {PlaceOfElement(text, root), "the root element is " + Quoted(root.name()) + ", neither " +
                                               ARRAY_ROOT + " nor " + LOGICAL_DRIVE_ROOT};
    return false;
}

}  // namespace pitool
