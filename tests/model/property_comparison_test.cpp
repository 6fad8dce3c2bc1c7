// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/property.h>

#include <cmath>
#include <functional>
#include <limits>

#include "model/property_samples.h"

namespace PI::Test {
namespace {

using Change = std::function<void(CProperty&)>;

struct KindChange {
    _PROPERTY_TYPE m_Type;
    Change m_Change;
};

// Each field that says what a property is.
std::vector<Change> IdentityChanges() {
    return {
        [](CProperty& p) { p.m_ID = PropertyID::STATUS; },
        [](CProperty& p) { ++p.m_SecondaryID; },
        [](CProperty& p) { ++p.m_Attribute1; },
        [](CProperty& p) { ++p.m_Attribute2; },
        [](CProperty& p) { ++p.m_Attribute3; },
        [](CProperty& p) { ++p.m_Attribute4; },
        [](CProperty& p) { ++p.m_Attribute5; },
        [](CProperty& p) { ++p.m_Attribute6; },
        [](CProperty& p) { ++p.m_Format; },
        [](CProperty& p) { p.m_Flag1 = !p.m_Flag1; },
        [](CProperty& p) { p.m_Flag2 = !p.m_Flag2; },
    };
}

// Each field of each kind of data.
std::vector<KindChange> DataChanges() {
    using namespace PropertyType;
    return {
        {STRING, [](CProperty& p) { p.m_Data.m_String.m_Value = "Text"; }},
        {STRING, [](CProperty& p) { ++p.m_Data.m_String.m_Extra1; }},
        {STRING, [](CProperty& p) { ++p.m_Data.m_String.m_Extra2; }},
        {CHOICE, [](CProperty& p) { ++p.m_Data.m_Choice.m_Value; }},
        {CHOICE, [](CProperty& p) { ++p.m_Data.m_Choice.m_Choices.back(); }},
        {CHOICE, [](CProperty& p) { p.m_Data.m_Choice.m_Choices.push_back(1); }},
        {CHOICE, [](CProperty& p) { p.m_Data.m_Choice.m_Choices.pop_back(); }},
        {CHOICE,
         [](CProperty& p) { std::swap(p.m_Data.m_Choice.m_Choices[0], p.m_Data.m_Choice.m_Choices[1]); }},
        {BOOL, [](CProperty& p) { p.m_Data.m_Bool.m_Value = !p.m_Data.m_Bool.m_Value; }},
        {LONG, [](CProperty& p) { p.m_Data.m_Long.m_Value ^= 1; }},
        {LONG, [](CProperty& p) { p.m_Data.m_Long.m_Value ^= 1UL << 63; }},
        {SIGNED_LONG, [](CProperty& p) { p.m_Data.m_SignedLong.m_Value ^= 1; }},
        {SIGNED_LONG, [](CProperty& p) { p.m_Data.m_SignedLong.m_Value = 0; }},
        {RANGE, [](CProperty& p) { ++p.m_Data.m_Range.m_Value; }},
        {RANGE, [](CProperty& p) { ++p.m_Data.m_Range.m_Min; }},
        {RANGE, [](CProperty& p) { ++p.m_Data.m_Range.m_Max; }},
        {RANGE, [](CProperty& p) { ++p.m_Data.m_Range.m_Step; }},
        {MULTI_VALUE, [](CProperty& p) { ++p.m_Data.m_MultiValue.m_Values.back(); }},
        {MULTI_VALUE, [](CProperty& p) { p.m_Data.m_MultiValue.m_Values.pop_back(); }},
        {MULTI_VALUE, [](CProperty& p) { ++p.m_Data.m_MultiValue.m_Values2.back(); }},
        {MULTI_VALUE, [](CProperty& p) { p.m_Data.m_MultiValue.m_Values2.push_back(0); }},
        {MULTI_VALUE,
         [](CProperty& p) { p.m_Data.m_MultiValue.m_Values.swap(p.m_Data.m_MultiValue.m_Values2); }},
        {FLOAT, [](CProperty& p) { p.m_Data.m_Float.m_Value = std::nextafter(2.5F, 3.0F); }},
        {MULTI_LONG, [](CProperty& p) { p.m_Data.m_MultiLong.m_Values.back() ^= 1UL << 63; }},
        {MULTI_LONG, [](CProperty& p) { p.m_Data.m_MultiLong.m_Values.clear(); }},
        {XML, [](CProperty& p) { p.m_Data.m_XML.m_Document.child("Root").append_child("More"); }},
        {XML, [](CProperty& p) { p.m_Data.m_XML.m_Document.child("Root").attribute("a").set_value("2"); }},
        {XML, [](CProperty& p) { p.m_Data.m_XML.m_Document.reset(); }},
        {MULTI_STRING, [](CProperty& p) { p.m_Data.m_MultiString.m_Values[1] = "b"; }},
        {MULTI_STRING, [](CProperty& p) { p.m_Data.m_MultiString.m_Values.pop_back(); }},
        {MULTI_STRING, [](CProperty& p) { p.m_Data.m_MultiString.m_SelectionMask ^= 0x80000000; }},
    };
}

void ExpectEqual(const CProperty& left, const CProperty& right, bool isEqual) {
    EXPECT_EQ(left == right, isEqual);
    EXPECT_EQ(right == left, isEqual);
}

TEST(PropertyComparison, ACopyIsEqualForEveryTypeWithData) {
    for (const _PROPERTY_TYPE type : DATA_TYPES) {
        SCOPED_TRACE(type);
        const CProperty property = FilledProperty(type);
        ExpectEqual(property, CProperty(property), true);
        ExpectEqual(property, property, true);
    }
}

TEST(PropertyComparison, NoTypeWithoutDataEverEquals) {
    for (const _PROPERTY_TYPE type : OTHER_TYPES) {
        SCOPED_TRACE(type);
        const CProperty property = FilledProperty(type);
        ExpectEqual(property, CProperty(property), false);
        ExpectEqual(property, property, false);
    }
}

TEST(PropertyComparison, TwoDefaultPropertiesAreUnequal) {
    ExpectEqual(CProperty(), CProperty(), false);
}

TEST(PropertyComparison, EachIdentityFieldCounts) {
    for (const _PROPERTY_TYPE type : DATA_TYPES) {
        const std::vector<Change> changes = IdentityChanges();
        for (std::size_t i = 0; i < changes.size(); ++i) {
            SCOPED_TRACE("type " + std::to_string(type) + ", field " + std::to_string(i));
            CProperty changed = FilledProperty(type);
            changes[i](changed);
            ExpectEqual(FilledProperty(type), changed, false);
        }
    }
}

TEST(PropertyComparison, DifferentTypesAreUnequalEvenWithEqualData) {
    for (const _PROPERTY_TYPE left : DATA_TYPES) {
        for (const _PROPERTY_TYPE right : DATA_TYPES) {
            SCOPED_TRACE(std::to_string(left) + " and " + std::to_string(right));
            ExpectEqual(FilledProperty(left), FilledProperty(right), left == right);
        }
    }
}

TEST(PropertyComparison, EachFieldOfTheActiveKindCountsAndNoneOfTheOthers) {
    const std::vector<KindChange> changes = DataChanges();
    for (const _PROPERTY_TYPE type : DATA_TYPES) {
        for (std::size_t i = 0; i < changes.size(); ++i) {
            SCOPED_TRACE("type " + std::to_string(type) + ", change " + std::to_string(i));
            CProperty changed = FilledProperty(type);
            changes[i].m_Change(changed);
            ExpectEqual(FilledProperty(type), changed, changes[i].m_Type != type);
        }
    }
}

TEST(PropertyComparison, StringsThatDifferInInactiveDataAreEqual) {
    CProperty left;
    CProperty right;
    left.SetValue(1UL);
    right.SetValue(2UL);
    left.SetValue("same");
    right.SetValue(" same ");
    ExpectEqual(left, right, true);
}

TEST(PropertyComparison, TextsWithNulBytesAreComparedWhole) {
    CProperty left;
    CProperty right;
    left.SetValue(std::string("a\0b", 3));
    right.SetValue(std::string("a\0c", 3));
    ExpectEqual(left, right, false);
}

TEST(PropertyComparison, FloatsCompareAsNumbers) {
    CProperty left;
    CProperty right;
    left.SetValue(0.0F);
    right.SetValue(-0.0F);
    ExpectEqual(left, right, true);

    left.SetValue(std::numeric_limits<float>::infinity());
    right.SetValue(std::numeric_limits<float>::infinity());
    ExpectEqual(left, right, true);
    right.SetValue(-std::numeric_limits<float>::infinity());
    ExpectEqual(left, right, false);
}

TEST(PropertyComparison, NotANumberIsNeverEqual) {
    CProperty property;
    property.SetValue(std::numeric_limits<float>::quiet_NaN());
    ExpectEqual(property, property, false);
    ExpectEqual(property, CProperty(property), false);
}

// --- XML

struct DocumentPair {
    const char* m_Left;
    const char* m_Right;
    bool m_IsEqual;
};

TEST(PropertyComparison, DocumentsAreComparedByTheirIndentedText) {
    const DocumentPair pairs[] = {
        {"", "", true},
        {"", "<A/>", false},
        {"<A/>", "<A></A>", true},
        {"<A/>", "<a/>", false},
        {"<A x='1'/>", "<A x=\"1\"/>", true},
        {"<A x='1' y='2'/>", "<A y='2' x='1'/>", false},
        {"<A><B/><C/></A>", "<A>\n  <B/>\n\n\t<C/>\n</A>", false},  // white space kept by the test's parsing
        {"<A>1 &lt; 2</A>", "<A>1 &#60; 2</A>", true},
        {"<A>t</A>", "<A> t</A>", false},
        {"<A>t</A>", "<A><![CDATA[t]]></A>", false},
        {"<A/>", "<A/><!--c-->", false},
        {"<A><!--c--></A>", "<A><!--d--></A>", false},
        {"<A><!--c--></A>", "<A><!--c--></A>", true},
        {"<A/>", "<?p q?><A/>", false},
        // A text without declaration gets this one when it is written.
        {"<A/>", "<?xml version=\"1.0\"?><A/>", true},
        {"", "<?xml version=\"1.0\"?>", true},
        {"<A/>", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><A/>", false},
        {"", "<?xml version=\"1.1\"?>", false},
        {"", "<!--c-->", false},
        {"<A/>", "<!DOCTYPE A><A/>", false},
    };
    constexpr unsigned EVERYTHING =
        VELK::XML::parse_full | VELK::XML::parse_ws_pcdata | VELK::XML::parse_fragment;
    for (const DocumentPair& pair : pairs) {
        SCOPED_TRACE(std::string(pair.m_Left) + " and " + pair.m_Right);
        CProperty left;
        CProperty right;
        left.m_Type = right.m_Type = PropertyType::XML;
        ASSERT_TRUE(left.m_Data.m_XML.m_Document.load_string(pair.m_Left, EVERYTHING));
        ASSERT_TRUE(right.m_Data.m_XML.m_Document.load_string(pair.m_Right, EVERYTHING));
        ExpectEqual(left, right, pair.m_IsEqual);
    }
}

TEST(PropertyComparison, WhiteSpaceBetweenElementsIsLostBySetting) {
    VELK::XML::xml_document narrow;
    VELK::XML::xml_document wide;
    narrow.load_string("<A><B/><C/></A>", VELK::XML::parse_full | VELK::XML::parse_ws_pcdata);
    wide.load_string("<A>\n  <B/>\n\n\t<C/>\n</A>", VELK::XML::parse_full | VELK::XML::parse_ws_pcdata);
    CProperty left;
    CProperty right;
    left.SetValue(narrow);
    right.SetValue(wide);
    ExpectEqual(left, right, true);
}

}  // namespace
}  // namespace PI::Test
