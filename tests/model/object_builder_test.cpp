// SPDX-License-Identifier: Apache-2.0

#include <gmock/gmock.h>
#include <pi/object_builder.h>

#include <string>

namespace {

namespace Builder = PI::ObjectBuilder;
using testing::ElementsAre;

constexpr auto NAME = Builder::Describe(PI::PropertyID::NAME, 23081, PI::PropertyType::STRING);
constexpr auto NUMBER = Builder::Describe(PI::PropertyID::RPM, 1, PI::PropertyType::LONG);
constexpr auto SIZE = Builder::Describe(PI::PropertyID::LOGICAL_SIZE, 23237, PI::PropertyType::FLOAT);
constexpr auto STATE = Builder::Describe(PI::PropertyID::STATUS, 23249, PI::PropertyType::CHOICE);

/// The names of a plug-in's own functions may be those of the builder.
[[maybe_unused]] void AddText(PI::CObject&, const PI::_PROPERTY_DESCRIPTION&, const std::string&) {}

TEST(ObjectBuilder, DescriptionNamesPropertyHelpTopicAndKindAndLeavesTheRestAsInANewProperty) {
    PI::CObject object;
    const PI::CProperty& property = Builder::AddProperty(object, NAME);
    ASSERT_EQ(object.m_Properties.size(), 1U);
    EXPECT_EQ(&property, &object.m_Properties[0]);
    EXPECT_EQ(property.m_ID, PI::PropertyID::NAME);
    EXPECT_EQ(property.m_SecondaryID, PI::PropertyID::NAME);
    EXPECT_EQ(property.m_Attribute1, 23081);
    EXPECT_EQ(property.m_Type, PI::PropertyType::STRING);
    const PI::CProperty fresh;
    EXPECT_EQ(property.m_Attribute2, fresh.m_Attribute2);
    EXPECT_EQ(property.m_Attribute3, fresh.m_Attribute3);
    EXPECT_EQ(property.m_Attribute4, fresh.m_Attribute4);
    EXPECT_EQ(property.m_Attribute5, fresh.m_Attribute5);
    EXPECT_EQ(property.m_Attribute6, fresh.m_Attribute6);
    EXPECT_EQ(property.m_Flag1, fresh.m_Flag1);
    EXPECT_EQ(property.m_Flag2, fresh.m_Flag2);
}

TEST(ObjectBuilder, TextsNumbersAndFractionsAreAppendedInTurn) {
    PI::CObject object;
    Builder::AddText(object, NAME, "md0");
    Builder::AddNumber(object, NUMBER, 18446744073709551615UL);
    Builder::AddFraction(object, SIZE, 12.5F);
    ASSERT_EQ(object.m_Properties.size(), 3U);
    EXPECT_EQ(object.m_Properties[0].m_Data.m_String.m_Value, "md0");
    EXPECT_EQ(object.m_Properties[1].m_Data.m_Long.m_Value, 18446744073709551615UL);
    EXPECT_EQ(object.m_Properties[2].m_Data.m_Float.m_Value, 12.5F);
    EXPECT_EQ(object.m_Properties[2].m_Attribute2, 1);
}

TEST(ObjectBuilder, StateIsItsOnlyChoice) {
    PI::CObject object;
    Builder::AddState(object, STATE, PI::PropertyValue::DEGRADED);
    EXPECT_EQ(object.m_Properties.at(0).m_Data.m_Choice.m_Value, PI::PropertyValue::DEGRADED);
    EXPECT_THAT(object.m_Properties[0].m_Data.m_Choice.m_Choices, ElementsAre(PI::PropertyValue::DEGRADED));
}

TEST(ObjectBuilder, CapacityIsScaledAndBearsItsUnit) {
    struct Row {
        unsigned long m_Bytes;
        float m_Value;
        PI::_UNITS m_Unit;
    };
    for (const Row& row :
         {Row{0, 0, PI::Units::BYTES}, Row{1023, 1023, PI::Units::BYTES}, Row{1024, 1, PI::Units::KILOBYTES},
          Row{1536UL << 30, 1.5, PI::Units::TERABYTES}}) {
        PI::CObject object;
        Builder::AddCapacity(object, SIZE, row.m_Bytes);
        EXPECT_EQ(object.m_Properties.at(0).m_Type, PI::PropertyType::FLOAT);
        EXPECT_EQ(object.m_Properties[0].m_Data.m_Float.m_Value, row.m_Value);
        EXPECT_EQ(object.m_Properties[0].m_Attribute2, row.m_Unit);
    }
}

TEST(ObjectBuilder, OperationBearsItsIdentifierAndHelpTopic) {
    PI::CObject object;
    Builder::AddOperation(object, PI::OperationID::ALARM_ON, 23498);
    ASSERT_EQ(object.m_Operations.size(), 1U);
    EXPECT_EQ(object.m_Operations[0].m_Header1, 50008U);
    EXPECT_EQ(object.m_Operations[0].m_Header2, 23498U);
    EXPECT_EQ(object.m_Operations[0].m_Header3, 1U);
}

TEST(ObjectBuilder, AdaptersAreNumberedByWhereTheySit) {
    PI::CGlobalAdapterID::AllHostsAdaptersUniqueIDs.clear();
    PI::CObject first;
    PI::CObject second;
    PI::CObject firstAgain;
    Builder::AddAdapterNumber(first, NUMBER, 1, 0, 0, 0);
    Builder::AddAdapterNumber(second, NUMBER, 2, 0, 0, 0);
    Builder::AddAdapterNumber(firstAgain, NUMBER, 1, 0, 0, 0);
    EXPECT_EQ(first.m_Properties.at(0).m_Data.m_Long.m_Value, 0U);
    EXPECT_EQ(second.m_Properties.at(0).m_Data.m_Long.m_Value, 1U);
    EXPECT_EQ(firstAgain.m_Properties.at(0).m_Data.m_Long.m_Value, 0U);
    EXPECT_THAT(PI::CGlobalAdapterID::AllHostsAdaptersUniqueIDs[""], testing::SizeIs(2));
}

}  // namespace
