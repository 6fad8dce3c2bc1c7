// SPDX-License-Identifier: Apache-2.0
// Setters and getters that are given the property's own data.

#include <gtest/gtest.h>
#include <pi/property.h>

#include <functional>

#include "model/property_samples.h"

namespace PI::Test {
namespace {

using Data = CProperty::_DATA;

template <class Property>
struct Call {
    const char* m_Name;
    std::function<void(Property&, Data&)> m_Call;
};

template <class Property>
std::vector<Call<Property>> GettersIntoTheirOwnData() {
    return {
        {"choice", [](Property& p, Data& d) { p.GetValueChoice(d.m_Choice.m_Value); }},
        {"choices", [](Property& p, Data& d) { p.GetValue(d.m_Choice.m_Value, d.m_Choice.m_Choices); }},
        {"range", [](Property& p, Data& d) { p.GetValueRange(d.m_Range.m_Value); }},
        {"normalised range", [](Property& p, Data& d) { p.GetValueRangeNormalized(d.m_Range.m_Value); }},
        {"whole range",
         [](Property& p, Data& d) {
             p.GetValue(d.m_Range.m_Value, d.m_Range.m_Min, d.m_Range.m_Max, d.m_Range.m_Step);
         }},
        {"bool", [](Property& p, Data& d) { p.GetValue(d.m_Bool.m_Value); }},
        {"unsigned long", [](Property& p, Data& d) { p.GetValue(d.m_Long.m_Value); }},
        {"long", [](Property& p, Data& d) { p.GetValue(d.m_SignedLong.m_Value); }},
        {"float", [](Property& p, Data& d) { p.GetValue(d.m_Float.m_Value); }},
        {"multi value",
         [](Property& p, Data& d) { p.GetValue(d.m_MultiValue.m_Values, d.m_MultiValue.m_Values2); }},
        {"multi long", [](Property& p, Data& d) { p.GetValue(d.m_MultiLong.m_Values, false); }},
        {"XML", [](Property& p, Data& d) { p.GetValue(d.m_XML.m_Document); }},
        {"multi string with mask",
         [](Property& p, Data& d) { p.GetValue(d.m_MultiString.m_Values, d.m_MultiString.m_SelectionMask); }},
        {"multi string", [](Property& p, Data& d) { p.GetValue(d.m_MultiString.m_Values); }},
        {"mask", [](Property& p, Data& d) { p.GetValueMultiString(d.m_MultiString.m_SelectionMask); }},
        {"string", [](Property& p, Data& d) { p.GetValueString(d.m_String.m_Value); }},
        {"text", [](Property& p, Data& d) { p.GetValue(d.m_String.m_Value); }},
    };
}

template <class Property>
void ExpectThatGettersKeepTheirOwnData() {
    for (const Call<Property>& getter : GettersIntoTheirOwnData<Property>()) {
        SCOPED_TRACE(getter.m_Name);
        CProperty property = FilledProperty();
        const std::vector<std::string> before = AllTexts(property);
        getter.m_Call(property, property.m_Data);
        EXPECT_EQ(AllTexts(property), before);
    }
}

TEST(PropertyOwnData, IsKeptByEveryGetter) {
    ExpectThatGettersKeepTheirOwnData<CProperty>();
    ExpectThatGettersKeepTheirOwnData<const CProperty>();
}

TEST(PropertyOwnData, ListsMayBeExchanged) {
    CProperty property;
    std::vector<int>& values = property.m_Data.m_MultiValue.m_Values;
    std::vector<int>& values2 = property.m_Data.m_MultiValue.m_Values2;
    values = {1, 2};
    values2 = {3};
    property.GetValue(values2, values);
    EXPECT_EQ(values, (std::vector<int>{3}));
    EXPECT_EQ(values2, (std::vector<int>{1, 2}));
}

TEST(PropertyOwnData, BoundsAreReadBeforeAnyIsWritten) {
    CProperty property;
    property.SetValue(5, 1, 9, 2U);
    CRangeData& range = property.m_Data.m_Range;
    int value = 0;
    property.GetValue(range.m_Max, range.m_Value, range.m_Min, range.m_Step);
    EXPECT_EQ(range.m_Max, 5);
    EXPECT_EQ(range.m_Value, 1);
    EXPECT_EQ(range.m_Min, 9);

    property.SetValue(5, 1, 9, 2U);
    range.m_Value = 12;
    property.GetValueRangeNormalized(range.m_Max);
    EXPECT_EQ(range.m_Max, 9);
    property.GetValueRange(value);
    EXPECT_EQ(value, 12);
}

TEST(PropertyOwnData, ATextOfTheListMayTakeTheJoinedText) {
    CProperty property;
    property.SetValue(std::vector<std::string>{"a", "b"}, 3U);
    std::vector<std::string>& values = property.m_Data.m_MultiString.m_Values;
    property.GetValueString(values[0]);
    EXPECT_EQ(values[0], "a, b");
    EXPECT_EQ(values[1], "b");
}

TEST(PropertyOwnData, ADocumentKeepsWhatACopyLoses) {
    CProperty property;
    VELK::XML::xml_document& document = property.m_Data.m_XML.m_Document;
    document.load_string("<!--kept--><Root/>", VELK::XML::parse_full);
    property.GetValue(document);
    EXPECT_EQ(TextOf(document), "<!--kept--><Root/>");
}

TEST(PropertyOwnData, IsStoredByEverySetterAsItIs) {
    const std::vector<Call<CProperty>> setters = {
        {"choices", [](CProperty& p, Data& d) { p.SetValue(d.m_Choice.m_Value, d.m_Choice.m_Choices); }},
        {"multi value",
         [](CProperty& p, Data& d) { p.SetValue(d.m_MultiValue.m_Values, d.m_MultiValue.m_Values2); }},
        {"multi long", [](CProperty& p, Data& d) { p.SetValue(d.m_MultiLong.m_Values); }},
        {"multi string",
         [](CProperty& p, Data& d) {
             p.SetValue(d.m_MultiString.m_Values, d.m_MultiString.m_SelectionMask);
         }},
        {"XML", [](CProperty& p, Data& d) { p.SetValue(d.m_XML.m_Document); }},
        {"string", [](CProperty& p, Data& d) { p.SetValue(d.m_String.m_Value); }},
        {"characters", [](CProperty& p, Data& d) { p.SetValue(d.m_String.m_Value.c_str()); }},
    };
    for (const Call<CProperty>& setter : setters) {
        SCOPED_TRACE(setter.m_Name);
        CProperty property = FilledProperty();
        const std::vector<std::string> before = KindTexts(property);
        setter.m_Call(property, property.m_Data);
        EXPECT_EQ(KindTexts(property), before);
    }
}

}  // namespace
}  // namespace PI::Test
