// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/property.h>

#include <functional>
#include <limits>
#include <stdexcept>

#include "model/property_samples.h"
#include "support/global_locale.h"

namespace PI::Test {
namespace {

constexpr int INT_LOWEST = std::numeric_limits<int>::min();
constexpr int INT_HIGHEST = std::numeric_limits<int>::max();
constexpr int ENCODED = 4;

// --- What every setter does

struct Setter {
    const char* m_Name;
    _PROPERTY_TYPE m_Type;
    std::int32_t m_Format;
    std::function<int(CProperty&)> m_Set;
    std::string m_Stored;
};

std::vector<Setter> Setters() {
    return {
        {"bool", PropertyType::BOOL, 0, [](CProperty& p) { return p.SetValue(false); }, "0"},
        {"unsigned long", PropertyType::LONG, 1, [](CProperty& p) { return p.SetValue(7UL); }, "7"},
        {"long", PropertyType::SIGNED_LONG, 1, [](CProperty& p) { return p.SetValue(-7L); }, "-7"},
        {"float", PropertyType::FLOAT, 0, [](CProperty& p) { return p.SetValue(-0.5F); }, "-0.5"},
        {"range", PropertyType::RANGE, 0, [](CProperty& p) { return p.SetValue(5, -10, 10, 2U); },
         "5|-10|10|2"},
        {"choice", PropertyType::CHOICE, 0,
         [](CProperty& p) {
             return p.SetValue(4, std::vector<int>{3, 4});
         },
         "4|<3><4>"},
        {"multi value", PropertyType::MULTI_VALUE, 0,
         [](CProperty& p) {
             std::vector<int> values = {1, 2, 3};
             std::vector<int> values2 = {-4};
             return p.SetValue(values, values2);
         },
         "<1><2><3>|<-4>"},
        {"multi long", PropertyType::MULTI_LONG, 1,
         [](CProperty& p) {
             std::vector<unsigned long> values = {1, 2};
             return p.SetValue(values);
         },
         "<1><2>"},
        {"multi string", PropertyType::MULTI_STRING, 0,
         [](CProperty& p) {
             return p.SetValue(std::vector<std::string>{" x ", ""}, 9U);
         },
         "< x ><>|9"},
        {"XML", PropertyType::XML, 0,
         [](CProperty& p) {
             VELK::XML::xml_document document;
             document.load_string("<New/>");
             return p.SetValue(document);
         },
         "<New/>"},
    };
}

TEST(PropertySetters, SetTypeAndFormatStoreTheirKindAndLeaveAllElseUntouched) {
    for (const Setter& setter : Setters()) {
        for (const std::int32_t format : {0, 1, ENCODED, 77}) {
            SCOPED_TRACE(std::string(setter.m_Name) + ", format " + std::to_string(format));
            CProperty property = FilledProperty();
            property.m_Format = format;
            const std::string identity = IdentityText(property);
            const std::vector<std::string> before = KindTexts(property);

            EXPECT_EQ(setter.m_Set(property), 0);

            EXPECT_EQ(property.m_Type, setter.m_Type);
            EXPECT_EQ(property.m_Format, setter.m_Format);
            EXPECT_EQ(IdentityText(property), identity);
            const std::vector<std::string> after = KindTexts(property);
            for (std::size_t i = 0; i < DATA_TYPES.size(); ++i) {
                const bool isOwn = DATA_TYPES[i] == setter.m_Type;
                EXPECT_EQ(after[i], isOwn ? setter.m_Stored : before[i]) << "type " << DATA_TYPES[i];
            }
        }
    }
}

TEST(PropertySetters, LaterSetterSwitchesTheTypeAndKeepsTheEarlierData) {
    CProperty property;
    property.SetValue("kept");
    property.SetValue(true);
    EXPECT_EQ(property.m_Type, PropertyType::BOOL);
    EXPECT_EQ(property.m_Data.m_String.m_Value, "kept");
}

// --- Numbers

TEST(PropertySetters, BoolStoresBothValues) {
    CProperty property;
    EXPECT_EQ(property.SetValue(true), ErrorCode::SUCCESS);
    EXPECT_TRUE(property.m_Data.m_Bool.m_Value);
    EXPECT_EQ(property.SetValue(false), ErrorCode::SUCCESS);
    EXPECT_FALSE(property.m_Data.m_Bool.m_Value);
}

TEST(PropertySetters, UnsignedLongStoresTheWholeRange) {
    CProperty property;
    for (const unsigned long value :
         {0UL, 1UL, 0x8000000000000000UL, std::numeric_limits<unsigned long>::max()}) {
        EXPECT_EQ(property.SetValue(value), ErrorCode::SUCCESS);
        EXPECT_EQ(property.m_Data.m_Long.m_Value, value);
    }
}

TEST(PropertySetters, LongStoresTheWholeRange) {
    CProperty property;
    for (const long value : {0L, -1L, std::numeric_limits<long>::min(), std::numeric_limits<long>::max()}) {
        EXPECT_EQ(property.SetValue(value), ErrorCode::SUCCESS);
        EXPECT_EQ(property.m_Data.m_SignedLong.m_Value, value);
    }
}

TEST(PropertySetters, FloatStoresSpecialValues) {
    CProperty property;
    for (const float value : {0.0F, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::max(),
                              std::numeric_limits<float>::denorm_min()}) {
        EXPECT_EQ(property.SetValue(value), ErrorCode::SUCCESS);
        EXPECT_EQ(property.m_Data.m_Float.m_Value, value);
    }
    property.SetValue(std::numeric_limits<float>::quiet_NaN());
    EXPECT_NE(property.m_Data.m_Float.m_Value, property.m_Data.m_Float.m_Value);
}

// --- Ranges

TEST(SetValueRange, LowerBoundWinsWhenBoundsAreReversed) {
    CProperty property;
    EXPECT_EQ(property.SetValue(5, 10, 0, 1U), ErrorCode::SUCCESS);
    EXPECT_EQ(KindText(property, PropertyType::RANGE), "10|10|0|1");
}

TEST(SetValueRange, UpperBoundWinsAboveReversedBounds) {
    CProperty property;
    property.SetValue(11, 10, 0, 1U);
    EXPECT_EQ(KindText(property, PropertyType::RANGE), "0|10|0|1");
}

TEST(SetValueRange, ClampsAtBothBounds) {
    const int expected[][2] = {{9, 10}, {10, 10}, {11, 11}, {19, 19}, {20, 20}, {21, 20}};
    for (const auto& [value, stored] : expected) {
        CProperty property;
        property.SetValue(value, 10, 20, 1U);
        EXPECT_EQ(property.m_Data.m_Range.m_Value, stored) << value;
    }
}

TEST(SetValueRange, ClampsEveryCombinationOfValueAndBounds) {
    const std::vector<int> numbers = {INT_LOWEST, INT_LOWEST + 1,  -2,         -1, 0, 1,
                                      2,          INT_HIGHEST - 1, INT_HIGHEST};
    for (const int value : numbers) {
        for (const int min : numbers) {
            for (const int max : numbers) {
                int expected = value;
                if (value < min) {
                    expected = min;
                } else if (value > max) {
                    expected = max;
                }
                CProperty property;
                EXPECT_EQ(property.SetValue(value, min, max, 1U), ErrorCode::SUCCESS);
                EXPECT_EQ(property.m_Data.m_Range.m_Value, expected)
                    << value << " in [" << min << ", " << max << "]";
                EXPECT_EQ(property.m_Data.m_Range.m_Min, min);
                EXPECT_EQ(property.m_Data.m_Range.m_Max, max);
            }
        }
    }
}

TEST(SetValueRange, StoresTheStepAsGiven) {
    for (const unsigned step : {0U, 1U, std::numeric_limits<unsigned>::max()}) {
        CProperty property;
        property.SetValue(1, 0, 2, step);
        EXPECT_EQ(property.m_Data.m_Range.m_Step, step);
    }
}

// --- Lists

TEST(SetValueChoice, EmptyListIsRefusedAndNothingChanges) {
    for (const _PROPERTY_TYPE type : {PropertyType::UNDEFINED, PropertyType::STRING, PropertyType::CHOICE}) {
        CProperty property = FilledProperty(type);
        const std::vector<std::string> before = AllTexts(property);
        EXPECT_EQ(property.SetValue(3, {}), 20006);
        EXPECT_EQ(AllTexts(property), before);
    }
}

TEST(SetValueChoice, EmptyListIsRefusedOnANewProperty) {
    CProperty property;
    EXPECT_EQ(property.SetValue(3, std::vector<int>()), ErrorCode::INVALID_PARAMETER);
    EXPECT_EQ(AllTexts(property), AllTexts(CProperty()));
}

TEST(SetValueChoice, OneChoiceIsEnough) {
    CProperty property;
    EXPECT_EQ(property.SetValue(3, std::vector<int>{3}), ErrorCode::SUCCESS);
    EXPECT_EQ(KindText(property, PropertyType::CHOICE), "3|<3>");
}

TEST(SetValueChoice, ChoiceNeedNotBeAmongTheChoices) {
    CProperty property;
    EXPECT_EQ(property.SetValue(-9, std::vector<int>{5, 5}), ErrorCode::SUCCESS);
    EXPECT_EQ(KindText(property, PropertyType::CHOICE), "-9|<5><5>");
}

TEST(PropertySetters, ListsAreCopied) {
    std::vector<int> choices = {1};
    std::vector<int> values = {2};
    std::vector<int> values2 = {3};
    std::vector<unsigned long> longs = {4};
    std::vector<std::string> texts = {"5"};
    CProperty property;
    property.SetValue(1, choices);
    property.SetValue(values, values2);
    property.SetValue(longs);
    property.SetValue(texts, 1U);

    choices[0] = values[0] = values2[0] = -1;
    longs[0] = 0;
    texts[0] = "";

    EXPECT_EQ(KindText(property, PropertyType::CHOICE), "1|<1>");
    EXPECT_EQ(KindText(property, PropertyType::MULTI_VALUE), "<2>|<3>");
    EXPECT_EQ(KindText(property, PropertyType::MULTI_LONG), "<4>");
    EXPECT_EQ(KindText(property, PropertyType::MULTI_STRING), "<5>|1");
}

TEST(PropertySetters, ListSettersLeaveTheCallersListsAlone) {
    std::vector<int> values = {2, 4};
    std::vector<int> values2 = {3};
    std::vector<unsigned long> longs = {4};
    CProperty property;
    property.SetValue(values, values2);
    property.SetValue(longs);
    EXPECT_EQ(values, (std::vector<int>{2, 4}));
    EXPECT_EQ(values2, (std::vector<int>{3}));
    EXPECT_EQ(longs, (std::vector<unsigned long>{4}));
}

TEST(PropertySetters, EmptyListsOtherThanChoicesAreStored) {
    CProperty property = FilledProperty();
    std::vector<int> noValues;
    std::vector<unsigned long> noLongs;
    EXPECT_EQ(property.SetValue(noValues, noValues), ErrorCode::SUCCESS);
    EXPECT_EQ(property.m_Type, PropertyType::MULTI_VALUE);
    EXPECT_EQ(property.SetValue(noLongs), ErrorCode::SUCCESS);
    EXPECT_EQ(property.m_Type, PropertyType::MULTI_LONG);
    EXPECT_EQ(property.SetValue(std::vector<std::string>(), 0U), ErrorCode::SUCCESS);
    EXPECT_EQ(property.m_Type, PropertyType::MULTI_STRING);
    EXPECT_EQ(KindText(property, PropertyType::MULTI_VALUE), "|");
    EXPECT_EQ(KindText(property, PropertyType::MULTI_LONG), "");
    EXPECT_EQ(KindText(property, PropertyType::MULTI_STRING), "|0");
}

TEST(PropertySetters, MultiStringKeepsElementsAndMaskAsGiven) {
    CProperty property;
    property.SetValue(std::vector<std::string>{"  a ", "", std::string("b\0c", 3)}, 0xFFFFFFFFU);
    const std::vector<std::string> expected = {"  a ", "", std::string("b\0c", 3)};
    EXPECT_EQ(property.m_Data.m_MultiString.m_Values, expected);
    EXPECT_EQ(property.m_Data.m_MultiString.m_SelectionMask, 0xFFFFFFFFU);
}

TEST(PropertySetters, TakeTheirOwnDataAsValue) {
    CProperty property = FilledProperty();
    CProperty::_DATA& data = property.m_Data;
    const std::vector<std::string> before = KindTexts(property);
    property.SetValue(data.m_Choice.m_Value, data.m_Choice.m_Choices);
    property.SetValue(data.m_MultiValue.m_Values, data.m_MultiValue.m_Values2);
    property.SetValue(data.m_MultiLong.m_Values);
    property.SetValue(data.m_MultiString.m_Values, data.m_MultiString.m_SelectionMask);
    property.SetValue(data.m_XML.m_Document);
    property.SetValue(data.m_String.m_Value);
    EXPECT_EQ(KindTexts(property), before);
}

TEST(PropertySetters, TakeTheirOwnTwoListsTheOtherWayRound) {
    CProperty property;
    std::vector<int> values = {1, 2};
    std::vector<int> values2 = {3};
    property.SetValue(values, values2);
    property.SetValue(property.m_Data.m_MultiValue.m_Values2, property.m_Data.m_MultiValue.m_Values);
    EXPECT_EQ(property.m_Data.m_MultiValue.m_Values, (std::vector<int>{3}));
    EXPECT_EQ(property.m_Data.m_MultiValue.m_Values2, (std::vector<int>{1, 2}));
}

// --- Plain text

TEST(SetValueText, PlainTextIsTrimmedAndTheFormatReset) {
    for (const std::int32_t format : {0, 1, 2, 3, 5, -4, 77}) {
        CProperty property = FilledProperty();
        property.m_Format = format;
        const std::string identity = IdentityText(property);
        EXPECT_EQ(property.SetValue(std::string("  a b  ")), ErrorCode::SUCCESS);
        EXPECT_EQ(property.m_Data.m_String.m_Value, "a b");
        EXPECT_EQ(property.m_Format, 0);
        EXPECT_EQ(property.m_Type, PropertyType::STRING);
        EXPECT_EQ(IdentityText(property), identity);
    }
}

TEST(SetValueText, OtherKindsAndTheExtrasStayAsTheyWere) {
    for (const std::int32_t format : {0, ENCODED}) {
        CProperty property = FilledProperty();
        property.m_Format = format;
        std::vector<std::string> expected = KindTexts(property);
        property.SetValue(std::string("ENC1(new"));
        expected[0] = "ENC1(new|221|-222";
        EXPECT_EQ(KindTexts(property), expected);
    }
}

TEST(SetValueText, EveryClassicWhiteSpaceIsTrimmedAtBothEnds) {
    CProperty property;
    property.SetValue(std::string(" \t\n\v\f\r a\t\n\v\f\r b \r\f\v\n\t"));
    EXPECT_EQ(property.m_Data.m_String.m_Value, "a\t\n\v\f\r b");
}

TEST(SetValueText, NoOtherByteIsTrimmed) {
    const std::string whiteSpace = " \t\n\v\f\r";
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        CProperty property;
        property.SetValue(text);
        EXPECT_EQ(property.m_Data.m_String.m_Value, whiteSpace.find(text) == std::string::npos ? text : "")
            << byte;
    }
}

TEST(SetValueText, WhiteSpaceAloneBecomesEmpty) {
    CProperty property = FilledProperty();
    property.SetValue(std::string(" \t "));
    EXPECT_EQ(property.m_Data.m_String.m_Value, "");
    property.SetValue(std::string());
    EXPECT_EQ(property.m_Data.m_String.m_Value, "");
}

TEST(SetValueText, NulBytesAreKept) {
    CProperty property;
    property.SetValue(std::string(" \0a\0 ", 5));
    EXPECT_EQ(property.m_Data.m_String.m_Value, std::string("\0a\0", 3));
}

TEST(SetValueText, TheGlobalLocaleSaysWhatWhiteSpaceIs) {
    const GlobalLocale odd(OddLocale());
    CProperty property;
    property.SetValue(std::string("xx a x b xx"));
    EXPECT_EQ(property.m_Data.m_String.m_Value, " a x b ");
}

TEST(SetValueText, ThePrefixMeansNothingToPlainText) {
    CProperty property;
    property.SetValue(std::string(" ENC1(x) "));
    EXPECT_EQ(property.m_Data.m_String.m_Value, "ENC1(x)");
    EXPECT_EQ(property.m_Format, 0);
}

// --- Encoded text

struct EncodedCase {
    std::string m_Given;
    std::string m_Stored;
};

TEST(SetValueEncodedText, OnlyATextThatBeginsWithThePrefixIsTaken) {
    const EncodedCase cases[] = {
        {"ENC1(", "ENC1("},
        {"ENC1(abc)", "ENC1(abc)"},
        {"ENC1(abc)  ", "ENC1(abc)  "},
        {"ENC1( \t", "ENC1( \t"},
        {std::string("ENC1(\0x", 7), std::string("ENC1(\0x", 7)},
        {"ENC1(ENC1(", "ENC1(ENC1("},
        {"", ""},
        {"E", ""},
        {"ENC1", ""},
        {"ENC1)", ""},
        {"ENC2(abc)", ""},
        {"enc1(abc)", ""},
        {" ENC1(abc)", ""},
        {"  ENC1(abc)", ""},
        {"xENC1(abc)", ""},
        {"NC1(abc)", ""},
        {std::string("\0ENC1(", 6), ""},
        {"secret", ""},
    };
    for (const EncodedCase& text : cases) {
        CProperty property = FilledProperty();
        property.m_Format = ENCODED;
        EXPECT_EQ(property.SetValue(text.m_Given), ErrorCode::SUCCESS);
        EXPECT_EQ(property.m_Data.m_String.m_Value, text.m_Stored) << '"' << text.m_Given << '"';
        EXPECT_EQ(property.m_Format, ENCODED);
        EXPECT_EQ(property.m_Type, PropertyType::STRING);
    }
}

TEST(SetValueEncodedText, TheFormatStaysForTheNextText) {
    CProperty property;
    property.m_Format = ENCODED;
    property.SetValue(std::string("ENC1(a)"));
    property.SetValue(std::string("plain"));
    EXPECT_EQ(property.m_Data.m_String.m_Value, "");
    EXPECT_EQ(property.m_Format, ENCODED);
}

TEST(SetValueEncodedText, ASetterOfAnotherKindEndsTheEncodedMode) {
    CProperty property;
    property.m_Format = ENCODED;
    property.SetValue(true);
    property.SetValue(std::string("plain"));
    EXPECT_EQ(property.m_Data.m_String.m_Value, "plain");
    EXPECT_EQ(property.m_Format, 0);
}

TEST(SetValueEncodedText, TakesItsOwnDataAsValue) {
    CProperty property;
    property.m_Format = ENCODED;
    property.SetValue(std::string("ENC1(a text too long to be stored in place)"));
    property.SetValue(property.m_Data.m_String.m_Value);
    EXPECT_EQ(property.m_Data.m_String.m_Value, "ENC1(a text too long to be stored in place)");
}

// --- Texts given by pointer

TEST(SetValuePointer, DoesWhatTheStringSetterDoes) {
    CProperty plain;
    EXPECT_EQ(plain.SetValue("  a b  "), ErrorCode::SUCCESS);
    EXPECT_EQ(plain.m_Data.m_String.m_Value, "a b");
    EXPECT_EQ(plain.m_Type, PropertyType::STRING);
    EXPECT_EQ(plain.m_Format, 0);

    CProperty encoded;
    encoded.m_Format = ENCODED;
    EXPECT_EQ(encoded.SetValue("ENC1(a) "), ErrorCode::SUCCESS);
    EXPECT_EQ(encoded.m_Data.m_String.m_Value, "ENC1(a) ");
    EXPECT_EQ(encoded.SetValue("a"), ErrorCode::SUCCESS);
    EXPECT_EQ(encoded.m_Data.m_String.m_Value, "");
    EXPECT_EQ(encoded.m_Format, ENCODED);
}

TEST(SetValuePointer, ALiteralIsATextAndNotABool) {
    CProperty property;
    property.SetValue("true");
    EXPECT_EQ(property.m_Type, PropertyType::STRING);
    EXPECT_FALSE(property.m_Data.m_Bool.m_Value);
}

TEST(SetValuePointer, NullThrowsAndChangesNothing) {
    CProperty property = FilledProperty();
    const std::vector<std::string> before = AllTexts(property);
    const char* nothing = nullptr;
    EXPECT_THROW(property.SetValue(nothing), std::logic_error);
    EXPECT_EQ(AllTexts(property), before);
}

// --- XML

TEST(SetValueXML, TheDocumentIsCopied) {
    VELK::XML::xml_document document;
    document.load_string("<Root><A/></Root>");
    CProperty property;
    EXPECT_EQ(property.SetValue(document), ErrorCode::SUCCESS);
    document.child("Root").append_child("B");
    EXPECT_EQ(TextOf(property.m_Data.m_XML.m_Document), "<Root><A/></Root>");
}

TEST(SetValueXML, TheSourceStaysAsItWas) {
    VELK::XML::xml_document document;
    document.load_string("<Root><!--c--> <A/></Root>", VELK::XML::parse_full | VELK::XML::parse_ws_pcdata);
    const std::string before = TextOf(document);
    CProperty property;
    property.SetValue(document);
    EXPECT_EQ(TextOf(document), before);
}

TEST(SetValueXML, AnEmptyDocumentReplacesTheStoredOne) {
    CProperty property = FilledProperty();
    EXPECT_EQ(property.SetValue(VELK::XML::xml_document()), ErrorCode::SUCCESS);
    EXPECT_EQ(property.m_Type, PropertyType::XML);
    EXPECT_FALSE(property.m_Data.m_XML.m_Document.first_child());
}

}  // namespace
}  // namespace PI::Test
