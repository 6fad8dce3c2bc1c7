// SPDX-License-Identifier: Apache-2.0

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pi/property.h>

#include <functional>
#include <random>
#include <type_traits>

#include "model/property_samples.h"
#include "support/random_seed.h"
#include "support/trace_recorder.h"

namespace PI::Test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::string>;
using Recorder = TraceRecorder<0>;

Texts WholeMessages(const Recorder& recorder) {
    Texts texts;
    for (const TraceRecord& record : recorder.m_Records) {
        texts.push_back(record.m_Message);
    }
    return texts;
}

std::string MismatchText(int id, int type, int expected) {
    return "Property " + std::to_string(id) + " has type=" + std::to_string(type) + " but should have " +
           std::to_string(expected) + "!";
}

std::string NoDataText(int id) {
    return "Property " + std::to_string(id) + " has no or invalid data!";
}

// --- What every getter does

// A getter with all it gives, its result first.
struct Getter {
    const char* m_Name;
    _PROPERTY_TYPE m_Type;
    std::function<std::string(CProperty&)> m_Get;
    std::string m_Delivered;
    /// Takes away what the getter calls valid data; null where it calls all data valid.
    std::function<void(CProperty&)> m_Spoil;
    std::string m_DeliveredSpoilt;
};

void NoChoices(CProperty& p) {
    p.m_Data.m_Choice.m_Choices.clear();
}
void NoStep(CProperty& p) {
    p.m_Data.m_Range.m_Step = 0;
}
void NoValues(CProperty& p) {
    p.m_Data.m_MultiValue.m_Values.clear();
}
void NoValues2(CProperty& p) {
    p.m_Data.m_MultiValue.m_Values2.clear();
}
void NoLongs(CProperty& p) {
    p.m_Data.m_MultiLong.m_Values.clear();
}
void NoTexts(CProperty& p) {
    p.m_Data.m_MultiString.m_Values.clear();
}

template <class... Values>
std::string Join(const Values&... values) {
    std::ostringstream text;
    ((text << values << '|'), ...);
    return text.str();
}

template <class Property>
std::string GetChoice(Property& p) {
    int value = -99;
    const int code = p.GetValueChoice(value);
    return Join(code, value);
}

template <class Property>
std::string GetChoices(Property& p) {
    int value = -99;
    std::vector<int> choices = {-99};
    const int code = p.GetValue(value, choices);
    return Join(code, value, TextOf(choices));
}

template <class Property>
std::string GetRange(Property& p) {
    int value = -99;
    const int code = p.GetValueRange(value);
    return Join(code, value);
}

template <class Property>
std::string GetRangeNormalized(Property& p) {
    int value = -99;
    const int code = p.GetValueRangeNormalized(value);
    return Join(code, value);
}

template <class Property>
std::string GetWholeRange(Property& p) {
    int value = -99;
    int min = -99;
    int max = -99;
    unsigned step = 99;
    const int code = p.GetValue(value, min, max, step);
    return Join(code, value, min, max, step);
}

template <class T, class Property>
std::string GetNumber(Property& p) {
    T value = 0;
    const int code = p.GetValue(value);
    return Join(code, value);
}

template <class Property>
std::string GetMultiValue(Property& p) {
    std::vector<int> values = {-99};
    std::vector<int> values2 = {-99};
    const int code = p.GetValue(values, values2);
    return Join(code, TextOf(values), TextOf(values2));
}

template <bool allowEmpty, class Property>
std::string GetMultiLong(Property& p) {
    std::vector<unsigned long> values = {99};
    const int code = p.GetValue(values, allowEmpty);
    return Join(code, TextOf(values));
}

template <class Property>
std::string GetXML(Property& p) {
    VELK::XML::xml_document document;
    document.load_string("<Before/>");
    const int code = p.GetValue(document);
    return Join(code, TextOf(document));
}

template <class Property>
std::string GetMultiStringReference(Property& p) {
    unsigned mask = 99;
    const std::vector<std::string>& values = p.GetValueMultiString(mask);
    return Join(TextOf(values), mask);
}

template <class Property>
std::string GetMultiStringWithMask(Property& p) {
    std::vector<std::string> values = {"before"};
    unsigned mask = 99;
    const int code = p.GetValue(values, mask);
    return Join(code, TextOf(values), mask);
}

template <class Property>
std::string GetMultiString(Property& p) {
    std::vector<std::string> values = {"before"};
    const int code = p.GetValue(values);
    return Join(code, TextOf(values));
}

/// The getters of a property, or of a constant one.
template <class Property>
std::vector<Getter> GettersOf() {
    return {
        {"GetValueChoice", PropertyType::CHOICE, GetChoice<Property>, "0|201|", NoChoices, "0|201|"},
        {"choices", PropertyType::CHOICE, GetChoices<Property>, "0|201|<202><201><203>|", NoChoices,
         "0|201||"},
        {"GetValueRange", PropertyType::RANGE, GetRange<Property>, "0|211|", NoStep, "0|211|"},
        {"GetValueRangeNormalized", PropertyType::RANGE, GetRangeNormalized<Property>, "0|211|", NoStep,
         "0|211|"},
        {"range", PropertyType::RANGE, GetWholeRange<Property>, "0|211|210|219|3|", NoStep,
         "0|211|210|219|0|"},
        {"bool", PropertyType::BOOL, GetNumber<bool, Property>, "0|1|", nullptr, ""},
        {"unsigned long", PropertyType::LONG, GetNumber<unsigned long, Property>, "0|18446744073709551614|",
         nullptr, ""},
        {"long", PropertyType::SIGNED_LONG, GetNumber<long, Property>, "0|-9223372036854775808|", nullptr,
         ""},
        {"float", PropertyType::FLOAT, GetNumber<float, Property>, "0|2.5|", nullptr, ""},
        {"values", PropertyType::MULTI_VALUE, GetMultiValue<Property>, "0|<231><-232>|<233>|", NoValues,
         "0||<233>|"},
        {"values2", PropertyType::MULTI_VALUE, GetMultiValue<Property>, "0|<231><-232>|<233>|", NoValues2,
         "0|<231><-232>||"},
        {"longs", PropertyType::MULTI_LONG, GetMultiLong<false, Property>, "0|<241><18446744073709551615>|",
         NoLongs, "0||"},
        {"longs, empty allowed", PropertyType::MULTI_LONG, GetMultiLong<true, Property>,
         "0|<241><18446744073709551615>|", nullptr, ""},
        {"XML", PropertyType::XML, GetXML<Property>, "0|<Root a=\"1\"><Child>251</Child></Root>|", nullptr,
         ""},
        {"GetValueMultiString", PropertyType::MULTI_STRING, GetMultiStringReference<Property>, "<A><B><C>|5|",
         NoTexts, "|5|"},
        {"texts and mask", PropertyType::MULTI_STRING, GetMultiStringWithMask<Property>, "0|<A><B><C>|5|",
         NoTexts, "0||5|"},
        {"texts", PropertyType::MULTI_STRING, GetMultiString<Property>, "0|<A><B><C>|", NoTexts, "0||"},
    };
}

std::vector<Getter> Getters() {
    std::vector<Getter> getters = GettersOf<CProperty>();
    for (Getter& getter : GettersOf<const CProperty>()) {
        getters.push_back(std::move(getter));
    }
    return getters;
}

std::vector<_PROPERTY_TYPE> AllTypes() {
    std::vector<_PROPERTY_TYPE> types(DATA_TYPES.begin(), DATA_TYPES.end());
    types.insert(types.end(), OTHER_TYPES.begin(), OTHER_TYPES.end());
    return types;
}

TEST(PropertyGetters, DeliverTheirKindAndTraceOnlyAMismatch) {
    for (const Getter& getter : Getters()) {
        for (const _PROPERTY_TYPE type : AllTypes()) {
            SCOPED_TRACE(std::string(getter.m_Name) + ", type " + std::to_string(type));
            CProperty property = FilledProperty(type);
            const Texts before = AllTexts(property);
            const Recorder recorder;

            EXPECT_EQ(getter.m_Get(property), getter.m_Delivered);

            if (type == getter.m_Type) {
                EXPECT_THAT(recorder.Texts(), IsEmpty());
            } else {
                EXPECT_THAT(recorder.Texts(), ElementsAre(MismatchText(30003, type, getter.m_Type)));
            }
            EXPECT_EQ(AllTexts(property), before);
        }
    }
}

TEST(PropertyGetters, DeliverInvalidDataAnywayAndTraceItAfterTheMismatch) {
    for (const Getter& getter : Getters()) {
        if (!getter.m_Spoil) {
            continue;
        }
        for (const _PROPERTY_TYPE type : AllTypes()) {
            SCOPED_TRACE(std::string(getter.m_Name) + ", type " + std::to_string(type));
            CProperty property = FilledProperty(type);
            getter.m_Spoil(property);
            const Recorder recorder;

            EXPECT_EQ(getter.m_Get(property), getter.m_DeliveredSpoilt);

            if (type == getter.m_Type) {
                EXPECT_THAT(recorder.Texts(), ElementsAre(NoDataText(30003)));
            } else {
                EXPECT_THAT(recorder.Texts(),
                            ElementsAre(MismatchText(30003, type, getter.m_Type), NoDataText(30003)));
            }
        }
    }
}

TEST(PropertyGetters, DeliverTheSameWhileTracesAreOff) {
    for (const Getter& getter : Getters()) {
        SCOPED_TRACE(getter.m_Name);
        CProperty property = FilledProperty();
        const Recorder recorder;
        VELKTrace::tracesEnabled = false;
        EXPECT_EQ(getter.m_Get(property), getter.m_Delivered);
        EXPECT_THAT(recorder.m_Records, IsEmpty());
    }
}

TEST(PropertyGetters, DeliverTheDefaultsOfANewProperty) {
    const std::string expected[] = {
        "0|1|", "0|1||", "0|1|", "0|-1|", "0|1|-1|-1|0|", "0|0|",         "0|0|",           "0|0|", "0|0|",
        "0|||", "0|||",  "0||",  "0||",   "0||",          "|4294967295|", "0||4294967295|", "0||",
    };
    const std::vector<Getter> getters = Getters();
    ASSERT_EQ(getters.size(), 2 * std::size(expected));
    for (std::size_t i = 0; i < getters.size(); ++i) {
        CProperty property;
        EXPECT_EQ(getters[i].m_Get(property), expected[i % std::size(expected)]) << getters[i].m_Name;
    }
}

TEST(PropertyGetters, TraceANewPropertysRangeTwice) {
    const CProperty property;
    const Recorder recorder;
    int value = 0;
    EXPECT_EQ(property.GetValueRange(value), ErrorCode::SUCCESS);
    EXPECT_EQ(value, 1);
    EXPECT_THAT(recorder.Texts(), ElementsAre("Property 1 has type=1 but should have 7!",
                                              "Property 1 has no or invalid data!"));
}

TEST(PropertyGetters, TraceToTheDefaultLog) {
    const CProperty property(PropertyID::STATUS, false);
    const Recorder recorder;
    int value = 0;
    property.GetValueRange(value);

    const std::string prefix = "\\[defaultLog\\]\\[[0-9]+\\]\\[VELK_Trace\\]\\[494\\]";
    EXPECT_THAT(WholeMessages(recorder),
                ElementsAre(testing::MatchesRegex(prefix + "Property 30017 has type=1 but should have 7!"),
                            testing::MatchesRegex(prefix + "Property 30017 has no or invalid data!")));
    for (const TraceRecord& record : recorder.m_Records) {
        EXPECT_EQ(record.m_Severity, plog::debug);
        EXPECT_EQ(record.m_Instance, 0);
        EXPECT_EQ(record.m_Line, 453U);
        EXPECT_EQ(record.m_Function, "VELKTrace::~VELKTrace");  // plog cuts the parentheses
        EXPECT_EQ(record.m_File, "");
        EXPECT_EQ(record.m_Object, nullptr);
    }
}

TEST(PropertyGetters, PrintNumbersWithoutNames) {
    for (const int id :
         {0, 30017, 123456, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        CProperty property(static_cast<_PROPERTY_ID>(id), false);
        const Recorder recorder;
        bool value = true;
        property.GetValue(value);
        EXPECT_THAT(recorder.Texts(), ElementsAre(MismatchText(id, 1, 4)));
    }
}

TEST(PropertyGetters, PrintTheIdAndNotTheSecondaryId) {
    CProperty property(PropertyID::STATUS, false);
    property.m_SecondaryID = 5;
    const Recorder recorder;
    bool value = true;
    property.GetValue(value);
    EXPECT_THAT(recorder.Texts(), ElementsAre("Property 30017 has type=1 but should have 4!"));
}

TEST(PropertyGetters, ThatChangeNothingAreConst) {
    const CProperty property = FilledProperty(PropertyType::CHOICE);
    int value = 0;
    unsigned mask = 0;
    std::string text;
    EXPECT_EQ(property.GetValueChoice(value), ErrorCode::SUCCESS);
    EXPECT_EQ(value, 201);
    EXPECT_EQ(property.GetValueRange(value), ErrorCode::SUCCESS);
    EXPECT_EQ(value, 211);
    EXPECT_EQ(property.GetValueRangeNormalized(value), ErrorCode::SUCCESS);
    EXPECT_EQ(value, 211);
    EXPECT_EQ(property.GetValueMultiString(mask).size(), 3U);
    EXPECT_EQ(property.GetValueString(text), ErrorCode::SUCCESS);
    EXPECT_EQ(text, "text");
    text.clear();
    EXPECT_EQ(property.GetValue(text), ErrorCode::SUCCESS);
    EXPECT_EQ(text, "text");
    _ERROR_CODE error = ErrorCode::GENERAL;
    EXPECT_EQ(property.GetValue(&error), "text");
    EXPECT_EQ(error, ErrorCode::SUCCESS);
    EXPECT_EQ(property.GetValue(nullptr), "text");
}

// --- Ranges

TEST(GetValueRangeNormalized, ClampsWithoutChangingTheStoredValue) {
    const std::vector<int> numbers = {std::numeric_limits<int>::min(), -2, -1, 0, 1, 2,
                                      std::numeric_limits<int>::max()};
    for (const int stored : numbers) {
        for (const int min : numbers) {
            for (const int max : numbers) {
                CProperty property;
                property.m_Data.m_Range.m_Value = stored;
                property.m_Data.m_Range.m_Min = min;
                property.m_Data.m_Range.m_Max = max;
                int expected = stored;
                if (stored < min) {
                    expected = min;
                } else if (stored > max) {
                    expected = max;
                }
                int value = 0;
                EXPECT_EQ(property.GetValueRangeNormalized(value), ErrorCode::SUCCESS);
                EXPECT_EQ(value, expected) << stored << " in [" << min << ", " << max << "]";
                EXPECT_EQ(property.GetValueRange(value), ErrorCode::SUCCESS);
                EXPECT_EQ(value, stored);
            }
        }
    }
}

TEST(GetValueRange, AnyStepButZeroIsValid) {
    for (const unsigned step : {1U, 2U, std::numeric_limits<unsigned>::max()}) {
        CProperty property;
        property.SetValue(1, 0, 2, step);
        const Recorder recorder;
        int value = 0;
        property.GetValueRange(value);
        EXPECT_THAT(recorder.Texts(), IsEmpty());
    }
}

// --- Lists

TEST(GetValueMultiValue, TwoEmptyListsAreTracedOnce) {
    CProperty property;
    std::vector<int> values;
    std::vector<int> values2;
    property.SetValue(values, values2);
    const Recorder recorder;
    property.GetValue(values, values2);
    EXPECT_THAT(recorder.Texts(), ElementsAre("Property 1 has no or invalid data!"));
}

TEST(GetValueMultiLong, AnEmptyListIsFineWhereAllowed) {
    CProperty property;
    std::vector<unsigned long> values;
    property.SetValue(values);
    const Recorder recorder;
    values = {1};
    EXPECT_EQ(property.GetValue(values, true), ErrorCode::SUCCESS);
    EXPECT_THAT(values, IsEmpty());
    EXPECT_THAT(recorder.Texts(), IsEmpty());
    property.GetValue(values, false);
    EXPECT_THAT(recorder.Texts(), ElementsAre("Property 1 has no or invalid data!"));
}

TEST(GetValueMultiLong, AllowingEmptyDoesNotHideAMismatch) {
    CProperty property(PropertyID::STATUS, false);
    const Recorder recorder;
    std::vector<unsigned long> values;
    property.GetValue(values, true);
    EXPECT_THAT(recorder.Texts(), ElementsAre("Property 30017 has type=1 but should have 10!"));
}

TEST(GetValueMultiString, GivesTheStoredListItself) {
    const CProperty property = FilledProperty();
    unsigned mask = 0;
    EXPECT_EQ(&property.GetValueMultiString(mask), &property.m_Data.m_MultiString.m_Values);
}

TEST(PropertyGetters, GiveCopiesOfLists) {
    CProperty property = FilledProperty();
    const Texts before = KindTexts(property);
    int value = 0;
    unsigned mask = 0;
    std::vector<int> choices;
    std::vector<int> values;
    std::vector<unsigned long> longs;
    std::vector<std::string> texts;
    property.GetValue(value, choices);
    choices.clear();
    property.GetValue(values, choices);
    values.clear();
    choices.clear();
    property.GetValue(longs, true);
    longs.clear();
    property.GetValue(texts, mask);
    texts.clear();
    EXPECT_EQ(KindTexts(property), before);
}

// --- Texts

std::string StringOf(const CProperty& property) {
    std::string text = "before";
    EXPECT_EQ(property.GetValueString(text), ErrorCode::SUCCESS);
    return text;
}

TEST(GetValueString, GivesAText) {
    const CProperty property = FilledProperty(PropertyType::STRING);
    const Recorder recorder;
    EXPECT_EQ(StringOf(property), "text");
    EXPECT_THAT(recorder.Texts(), IsEmpty());
}

TEST(GetValueString, AnEmptyTextIsNotTraced) {
    CProperty property;
    property.SetValue("");
    const Recorder recorder;
    EXPECT_EQ(StringOf(property), "");
    EXPECT_THAT(recorder.Texts(), IsEmpty());
}

TEST(GetValueString, OfAnyOtherTypeTracesAMismatchAndGivesTheLeftOverText) {
    for (const _PROPERTY_TYPE type : AllTypes()) {
        if (type == PropertyType::STRING || type == PropertyType::MULTI_STRING) {
            continue;
        }
        const CProperty property = FilledProperty(type);
        const Recorder recorder;
        EXPECT_EQ(StringOf(property), "text");
        EXPECT_THAT(recorder.Texts(), ElementsAre(MismatchText(30003, type, 2)));
    }
}

TEST(GetValueString, JoinsTheSelectedElements) {
    CProperty property;
    property.SetValue({"A", "B", "C"}, 5U);
    const Recorder recorder;
    EXPECT_EQ(StringOf(property), "A, C");
    property.SetValue({"A", "B", "C"}, 0U);
    EXPECT_EQ(StringOf(property), "");
    property.SetValue({"A", "B", "C"}, 0xFFFFFFFFU);
    EXPECT_EQ(StringOf(property), "A, B, C");
    property.SetValue({"A", "B", "C"}, 0xFFFFFFF8U);
    EXPECT_EQ(StringOf(property), "");
    EXPECT_THAT(recorder.Texts(), IsEmpty());
}

TEST(GetValueString, AnEmptyElementAddsNeitherTextNorSeparator) {
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"", "A"}, "A"},
        {{"A", ""}, "A"},
        {{"A", "", "B"}, "A, B"},
        {{"", "", ""}, ""},
        {{"", "A", "", "", "B", ""}, "A, B"},
        {{" ", "", "\t"}, " , \t"},
        {{", ", "", ","}, ", , ,"},
    };
    for (const auto& [values, joined] : cases) {
        CProperty property;
        property.SetValue(values, 0xFFFFFFFFU);
        EXPECT_EQ(StringOf(property), joined);
    }
}

TEST(GetValueString, AnEmptyListGivesAnEmptyTextWithoutTrace) {
    CProperty property;
    property.SetValue(std::vector<std::string>(), 0xFFFFFFFFU);
    const Recorder recorder;
    EXPECT_EQ(StringOf(property), "");
    EXPECT_THAT(recorder.Texts(), IsEmpty());
}

TEST(GetValueString, TheMaskRepeatsEvery32Elements) {
    std::vector<std::string> values;
    for (int i = 0; i < 70; ++i) {
        values.push_back(std::to_string(i));
    }
    CProperty property;
    const std::pair<unsigned, std::string> cases[] = {{1U, "0, 32, 64"},
                                                      {2U, "1, 33, 65"},
                                                      {0x20U, "5, 37, 69"},
                                                      {0x40U, "6, 38"},
                                                      {0x80000000U, "31, 63"}};
    for (const auto& [mask, joined] : cases) {
        property.SetValue(values, mask);
        EXPECT_EQ(StringOf(property), joined) << mask;
    }
}

TEST(GetValueString, JoinsAsTheRuleSaysForRandomLists) {
    std::mt19937 random(RandomSeed());
    for (int round = 0; round < 2000; ++round) {
        std::vector<std::string> values(Below(random, 80));
        for (std::string& value : values) {
            value.assign(Below(random, 3), static_cast<char>('a' + Below(random, 26)));
        }
        const unsigned mask = static_cast<unsigned>(random());

        std::vector<std::string> selected;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const bool isSelected = (mask & (1UL << (i % 32))) != 0;
            if (isSelected && !values[i].empty()) {
                selected.push_back(values[i]);
            }
        }
        std::string expected;
        for (std::size_t i = 0; i < selected.size(); ++i) {
            expected += (i == 0 ? "" : ", ") + selected[i];
        }

        CProperty property;
        property.SetValue(values, mask);
        ASSERT_EQ(StringOf(property), expected) << "mask " << mask;
    }
}

TEST(GetValueText, ForwardsAndTracesOnce) {
    CProperty property = FilledProperty(PropertyType::BOOL);
    const Recorder recorder;
    std::string text = "before";
    EXPECT_EQ(property.GetValue(text), ErrorCode::SUCCESS);
    EXPECT_EQ(text, "text");
    EXPECT_THAT(recorder.Texts(), ElementsAre("Property 30003 has type=4 but should have 2!"));
}

TEST(GetValueText, MayBeWrittenIntoTheTextItself) {
    CProperty property = FilledProperty(PropertyType::STRING);
    EXPECT_EQ(property.GetValue(property.m_Data.m_String.m_Value), ErrorCode::SUCCESS);
    EXPECT_EQ(property.m_Data.m_String.m_Value, "text");
}

TEST(GetValueReturned, GivesTextAndCode) {
    CProperty property = FilledProperty(PropertyType::MULTI_STRING);
    _ERROR_CODE error = ErrorCode::GENERAL;
    EXPECT_EQ(property.GetValue(&error), "A, C");
    EXPECT_EQ(error, ErrorCode::SUCCESS);
    EXPECT_EQ(property.GetValue(nullptr), "A, C");
}

TEST(GetValueReturned, TracesAMismatchOnceAndStillGivesSuccess) {
    CProperty property = FilledProperty(PropertyType::UNDEFINED);
    const Recorder recorder;
    _ERROR_CODE error = ErrorCode::GENERAL;
    EXPECT_EQ(property.GetValue(&error), "text");
    EXPECT_EQ(error, ErrorCode::SUCCESS);
    EXPECT_THAT(recorder.Texts(), ElementsAre("Property 30003 has type=1 but should have 2!"));
}

// --- XML

TEST(GetValueXML, GivesACopy) {
    CProperty property = FilledProperty(PropertyType::XML);
    VELK::XML::xml_document document;
    property.GetValue(document);
    document.child("Root").remove_child("Child");
    EXPECT_EQ(KindText(property, PropertyType::XML), "<Root a=\"1\"><Child>251</Child></Root>");
}

TEST(GetValueXML, AnEmptyDocumentEmptiesTheTargetWithoutTrace) {
    CProperty property;
    property.m_Type = PropertyType::XML;
    const Recorder recorder;
    VELK::XML::xml_document document;
    document.load_string("<Before/>");
    EXPECT_EQ(property.GetValue(document), ErrorCode::SUCCESS);
    EXPECT_FALSE(document.first_child());
    EXPECT_THAT(recorder.Texts(), IsEmpty());
}

}  // namespace
}  // namespace PI::Test
