// SPDX-License-Identifier: Apache-2.0
// XML content of properties: copied by way of its text, moved whole.
#include <pi/property.h>

#include <cstdint>
#include <utility>

#include "check.h"
#include "model/xml_samples.h"

namespace {

using namespace PI;
using PI::Test::CopyByText;
using PI::Test::CopyText;
using PI::Test::TreeOf;
using VELK::XML::xml_document;

/// What a copy of a document holds.
std::string ExpectedTree(const xml_document& source) {
    xml_document copy;
    CopyByText(source, copy);
    return TreeOf(copy);
}

void CheckCopies(CProperty& property) {
    const xml_document& document = property.m_Data.m_XML.m_Document;
    const std::string copied = ExpectedTree(document);

    const CProperty copy(property);
    CHECK_TEXT(TreeOf(copy.m_Data.m_XML.m_Document), copied);
    CProperty assigned;
    assigned.m_Data.m_XML.m_Document.append_child("before");
    assigned = property;
    CHECK_TEXT(TreeOf(assigned.m_Data.m_XML.m_Document), copied);
    CHECK(assigned == copy);
    CHECK((property == copy) == (CopyText(document) == CopyText(copy.m_Data.m_XML.m_Document)));

    xml_document read;
    read.append_child("before");
    CHECK(property.GetValue(read) == ErrorCode::SUCCESS);
    CHECK_TEXT(TreeOf(read), copied);

    const std::string before = TreeOf(document);
    CProperty moved(std::move(property));
    CHECK_TEXT(TreeOf(moved.m_Data.m_XML.m_Document), before);
    CProperty moveAssigned;
    moveAssigned = std::move(moved);
    CHECK_TEXT(TreeOf(moveAssigned.m_Data.m_XML.m_Document), before);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    xml_document source;
    source.load_buffer(data, size, Test::PARSE_EVERYTHING);
    const std::string before = TreeOf(source);

    CProperty set;
    CHECK(set.SetValue(source) == ErrorCode::SUCCESS);
    CHECK_TEXT(TreeOf(source), before);
    CHECK(set.m_Type == PropertyType::XML);
    CHECK_TEXT(TreeOf(set.m_Data.m_XML.m_Document), ExpectedTree(source));
    CheckCopies(set);

    // A document that was put in directly may hold what no copy holds.
    CProperty whole;
    whole.m_Type = PropertyType::XML;
    whole.m_Data.m_XML.m_Document.load_buffer(data, size, Test::PARSE_EVERYTHING);
    CheckCopies(whole);
    return 0;
}
