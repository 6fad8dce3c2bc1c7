// SPDX-License-Identifier: Apache-2.0

#include <velk/xml_fwd.h>

namespace {
/// Declared where only the forward declarations are known.
const char* RootName(const VELK::XML::xml_document& document);
}  // namespace

#include <gtest/gtest.h>
#include <velk/xml.h>

#include <sstream>
#include <string>
#include <type_traits>

namespace {

static_assert(std::is_same_v<VELK::XML::xml_document, pugi::xml_document>);
static_assert(std::is_same_v<VELK::XML::xml_node, pugi::xml_node>);
static_assert(std::is_same_v<VELK::XML::xml_attribute, pugi::xml_attribute>);
static_assert(std::is_same_v<VELK::XML::xpath_node, pugi::xpath_node>);
static_assert(std::is_same_v<VELK::XML::xpath_node_set, pugi::xpath_node_set>);

TEST(Xml, DocumentsAreLoadedSearchedAndSavedUnderTheInHouseName) {
    VELK::XML::xml_document document;
    ASSERT_TRUE(document.load_string("<Array><Drive id='1'/><Drive id='2'/></Array>"));

    const VELK::XML::xpath_node_set drives = document.select_nodes("//Drive");
    ASSERT_EQ(drives.size(), 2u);
    EXPECT_STREQ(drives[1].node().attribute("id").value(), "2");
    EXPECT_STREQ(document.select_node("/Array/Drive").node().attribute("id").value(), "1");

    std::ostringstream text;
    document.save(text, "", VELK::XML::format_raw | VELK::XML::format_no_declaration);
    EXPECT_EQ(text.str(), R"(<Array><Drive id="1"/><Drive id="2"/></Array>)");
}

const char* RootName(const pugi::xml_document& document) {
    return document.document_element().name();
}

TEST(Xml, ForwardDeclaredTypesAreThoseOfTheWholeHeader) {
    VELK::XML::xml_document document;
    ASSERT_TRUE(document.load_string("<Array/>"));
    EXPECT_STREQ(RootName(document), "Array");
}

}  // namespace
