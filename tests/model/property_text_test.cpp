// SPDX-License-Identifier: Apache-2.0

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/property.h>

#include <limits>

#include "model/property_samples.h"
#include "support/trace_recorder.h"

namespace PI::Test {
namespace {

/// The text of a property that a setter has filled.
template <class Setter>
std::string TextAfter(Setter setter, const std::string& unit = "") {
    CProperty property;
    setter(property);
    return CPluginHelper::StringifyProperty(property, unit);
}

std::string Capacity(float value, int unit) {
    CProperty property;
    property.SetValue(value);
    property.m_Attribute2 = unit;
    return CPluginHelper::StringifyProperty(property, "of another unit");
}

TEST(StringifyProperty, EveryKindHasItsWords) {
    std::vector<int> states = {PropertyValue::RAID0, 12345};
    std::vector<int> others = {PropertyValue::RAID1};
    std::vector<unsigned long> numbers = {1, 2};
    const VELK::XML::xml_document document;
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue("text"); }), "text");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(PropertyValue::RAID5, {PropertyValue::RAID5}); }), "RAID5");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(true); }), "yes");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(false); }), "no");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(18446744073709551615UL); }), "18446744073709551615");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(-5L); }), "-5");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(5, 0, 10, 1U); }), "5 (0 to 10)");
    EXPECT_EQ(TextAfter([&](auto& p) { p.SetValue(states, others); }), "RAID0, 12345");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(12.34F); }), "12.3");
    EXPECT_EQ(TextAfter([&](auto& p) { p.SetValue(numbers); }), "1, 2");
    EXPECT_EQ(TextAfter([&](auto& p) { p.SetValue(document); }), "(a document)");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(std::vector<std::string>{"a", "b", "c"}, 5U); }), "a, c");
}

TEST(StringifyProperty, APropertyWithoutAValueSaysSo) {
    for (const _PROPERTY_TYPE type : OTHER_TYPES) {
        EXPECT_EQ(CPluginHelper::StringifyProperty(FilledProperty(type)), "(no value)") << type;
    }
}

TEST(StringifyProperty, AStateWithoutANameIsItsNumber) {
    for (const int state : {12345, 0, -1}) {
        EXPECT_EQ(TextAfter([state](auto& p) { p.SetValue(state, {state}); }), std::to_string(state));
    }
}

TEST(StringifyProperty, AnEmptyListIsEmpty) {
    std::vector<int> states;
    std::vector<unsigned long> numbers;
    EXPECT_EQ(TextAfter([&](auto& p) { p.SetValue(states, states); }, "hours"), "");
    EXPECT_EQ(TextAfter([&](auto& p) { p.SetValue(numbers); }, "hours"), "");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(std::vector<std::string>{}, 1U); }, "hours"), "");
}

TEST(StringifyProperty, TheUnitFollowsNumbersAndNothingElse) {
    std::vector<unsigned long> numbers = {1, 2};
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(5UL); }, "hours"), "5 hours");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(-4L); }, "degrees Celsius"), "-4 degrees Celsius");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(12.5F); }, "percent"), "12.5 percent");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(5, 0, 10, 1U); }, "percent"), "5 percent (0 to 10)");
    EXPECT_EQ(TextAfter([&](auto& p) { p.SetValue(numbers); }, "hours"), "1, 2 hours");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue("text"); }, "hours"), "text");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(true); }, "hours"), "yes");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(PropertyValue::RAID5, {PropertyValue::RAID5}); }, "hours"),
              "RAID5");
    EXPECT_EQ(TextAfter([](auto&) {}, "hours"), "(no value)");
}

TEST(StringifyProperty, ACapacityHasAUnitOfItsOwn) {
    EXPECT_EQ(Capacity(0, Units::BYTES), "0 bytes");
    EXPECT_EQ(Capacity(1, Units::BYTES), "1 byte");
    EXPECT_EQ(Capacity(2, Units::BYTES), "2 bytes");
    EXPECT_EQ(Capacity(1.5F, Units::KILOBYTES), "1.5 KiB");
    EXPECT_EQ(Capacity(1.5F, Units::MEGABYTES), "1.5 MiB");
    EXPECT_EQ(Capacity(1.5F, Units::GIGABYTES), "1.5 GiB");
    EXPECT_EQ(Capacity(1.5F, Units::TERABYTES), "1.5 TiB");
    EXPECT_EQ(Capacity(1.5F, Units::PETABYTES), "1.5 PiB");
}

TEST(StringifyProperty, AFractionWithoutACapacityUnitIsNoCapacity) {
    for (const int unit : {static_cast<int>(Units::UNSPECIFIED), 1, 0, -1}) {
        EXPECT_EQ(Capacity(1.5F, unit), "1.5 of another unit") << unit;
    }
}

TEST(StringifyProperty, OfAnyFractionIsWhole) {
    using Limits = std::numeric_limits<float>;
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(Limits::lowest()); }),
              "-340282346638528859811704183484516925440.0");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(Limits::min()); }), "0.0");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(Limits::infinity()); }), "inf");
    EXPECT_EQ(TextAfter([](auto& p) { p.SetValue(Limits::quiet_NaN()); }), "nan");
}

TEST(StringifyProperty, GivesAnEncodedTextAsItIsStored) {
    CProperty property;
    property.m_Format = 4;
    property.SetValue("ENC1(abc)");
    EXPECT_EQ(CPluginHelper::StringifyProperty(property), "ENC1(abc)");
}

TEST(StringifyProperty, TracesNothing) {
    const TraceRecorder<0> recorder;
    for (const _PROPERTY_TYPE type : DATA_TYPES) {
        CPluginHelper::StringifyProperty(CProperty(FilledProperty(type)));
    }
    CPluginHelper::StringifyProperty(CProperty());
    EXPECT_THAT(recorder.m_Records, testing::IsEmpty());
}

}  // namespace
}  // namespace PI::Test
