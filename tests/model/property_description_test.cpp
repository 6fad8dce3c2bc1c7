// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/property.h>

#include <cstddef>
#include <limits>
#include <type_traits>

#include "model/property_samples.h"
#include "support/record_checks.h"

namespace PI::Test {
namespace {

// --- Defaults

void ExpectDefaults(const CProperty& property, std::int32_t id, bool flag) {
    EXPECT_EQ(property.m_ID, id);
    EXPECT_EQ(property.m_SecondaryID, id);
    EXPECT_EQ(property.m_Attribute1, 1);
    EXPECT_EQ(property.m_Attribute2, 1);
    EXPECT_EQ(property.m_Attribute3, -1);
    EXPECT_EQ(property.m_Attribute4, 1);
    EXPECT_EQ(property.m_Attribute5, 1);
    EXPECT_EQ(property.m_Type, 1);
    EXPECT_EQ(property.m_Format, 0);
    EXPECT_EQ(property.m_Flag1, flag);
    EXPECT_EQ(property.m_Attribute6, 1);
    EXPECT_TRUE(property.m_Flag2);

    const CProperty::_DATA& data = property.m_Data;
    EXPECT_EQ(data.m_Choice.m_Value, 1);
    EXPECT_TRUE(data.m_Choice.m_Choices.empty());
    EXPECT_EQ(data.m_Range.m_Value, 1);
    EXPECT_EQ(data.m_Range.m_Min, -1);
    EXPECT_EQ(data.m_Range.m_Max, -1);
    EXPECT_EQ(data.m_Range.m_Step, 0U);
    EXPECT_EQ(data.m_String.m_Value, "");
    EXPECT_EQ(data.m_String.m_Extra1, 0);
    EXPECT_EQ(data.m_String.m_Extra2, 0);
    EXPECT_FALSE(data.m_Bool.m_Value);
    EXPECT_EQ(data.m_Long.m_Value, 0U);
    EXPECT_EQ(data.m_SignedLong.m_Value, 0);
    EXPECT_TRUE(data.m_MultiValue.m_Values.empty());
    EXPECT_TRUE(data.m_MultiValue.m_Values2.empty());
    EXPECT_EQ(data.m_Float.m_Value, 0.0F);
    EXPECT_TRUE(data.m_MultiLong.m_Values.empty());
    EXPECT_FALSE(data.m_XML.m_Document.first_child());
    EXPECT_TRUE(data.m_MultiString.m_Values.empty());
    EXPECT_EQ(data.m_MultiString.m_SelectionMask, 0xFFFFFFFF);
}

TEST(PropertyDefaults, ANewPropertyHasNoIdentityAndNoValue) {
    ExpectDefaults(CProperty(), 1, false);
}

TEST(PropertyDefaults, IdAndFlagGoToTheirFields) {
    ExpectDefaults(CProperty(PropertyID::VENDOR, true), 30003, true);
    ExpectDefaults(CProperty(PropertyID::VENDOR, false), 30003, false);
    ExpectDefaults(CProperty(static_cast<_PROPERTY_ID>(0), true), 0, true);
    constexpr std::int32_t HIGHEST = std::numeric_limits<std::int32_t>::max();
    ExpectDefaults(CProperty(static_cast<_PROPERTY_ID>(HIGHEST), false), HIGHEST, false);
}

TEST(PropertyDefaults, AreTheSameInStorageThatHeldOtherData) {
    alignas(CProperty) unsigned char storage[sizeof(CProperty)];
    for (unsigned char& byte : storage) {
        byte = 0xA5;
    }
    CProperty* property = new (storage) CProperty;
    ExpectDefaults(*property, 1, false);
    property->~CProperty();
}

// --- Types of the fields

template <class Expected, class Actual>
constexpr bool IS_SAME = std::is_same_v<Expected, Actual>;

using Data = CProperty::_DATA;
static_assert(IS_SAME<_PROPERTY_ID, decltype(CProperty::m_ID)>);
static_assert(IS_SAME<std::int32_t, decltype(CProperty::m_SecondaryID)>);
static_assert(IS_SAME<std::int32_t, decltype(CProperty::m_Attribute1)>);
static_assert(IS_SAME<std::int32_t, decltype(CProperty::m_Attribute2)>);
static_assert(IS_SAME<std::int32_t, decltype(CProperty::m_Attribute3)>);
static_assert(IS_SAME<std::int32_t, decltype(CProperty::m_Attribute4)>);
static_assert(IS_SAME<std::int32_t, decltype(CProperty::m_Attribute5)>);
static_assert(IS_SAME<_PROPERTY_TYPE, decltype(CProperty::m_Type)>);
static_assert(IS_SAME<std::int32_t, decltype(CProperty::m_Format)>);
static_assert(IS_SAME<bool, decltype(CProperty::m_Flag1)>);
static_assert(IS_SAME<std::int32_t, decltype(CProperty::m_Attribute6)>);
static_assert(IS_SAME<bool, decltype(CProperty::m_Flag2)>);
static_assert(IS_SAME<std::int32_t, decltype(CChoiceData::m_Value)>);
static_assert(IS_SAME<std::vector<std::int32_t>, decltype(CChoiceData::m_Choices)>);
static_assert(IS_SAME<std::int32_t, decltype(CRangeData::m_Value)>);
static_assert(IS_SAME<std::int32_t, decltype(CRangeData::m_Min)>);
static_assert(IS_SAME<std::int32_t, decltype(CRangeData::m_Max)>);
static_assert(IS_SAME<std::uint32_t, decltype(CRangeData::m_Step)>);
static_assert(IS_SAME<std::string, decltype(CStringData::m_Value)>);
static_assert(sizeof(CStringData::m_Extra1) == 8 && sizeof(CStringData::m_Extra2) == 8);
static_assert(IS_SAME<bool, decltype(CBoolData::m_Value)>);
static_assert(IS_SAME<std::uint64_t, decltype(CLongData::m_Value)>);
static_assert(IS_SAME<std::int64_t, decltype(CSignedLongData::m_Value)>);
static_assert(IS_SAME<std::vector<std::int32_t>, decltype(CMultiValueData::m_Values)>);
static_assert(IS_SAME<std::vector<std::int32_t>, decltype(CMultiValueData::m_Values2)>);
static_assert(IS_SAME<float, decltype(CFloatData::m_Value)>);
static_assert(IS_SAME<std::vector<std::uint64_t>, decltype(CMultiLongData::m_Values)>);
static_assert(IS_SAME<VELK::XML::xml_document, decltype(CXMLData::m_Document)>);
static_assert(IS_SAME<std::vector<std::string>, decltype(CMultiStringData::m_Values)>);
static_assert(IS_SAME<std::uint32_t, decltype(CMultiStringData::m_SelectionMask)>);
static_assert(IS_SAME<std::int32_t, std::underlying_type_t<_PROPERTY_ID>>);
static_assert(IS_SAME<std::int32_t, std::underlying_type_t<_PROPERTY_TYPE>>);

static_assert(!std::is_polymorphic_v<Data>);

template <class Class>
class PropertyClass : public testing::Test {};

using PropertyClasses =
    testing::Types<CProperty, CChoiceData, CRangeData, CStringData, CBoolData, CLongData, CSignedLongData,
                   CMultiValueData, CFloatData, CMultiLongData, CXMLData, CMultiStringData>;
TYPED_TEST_SUITE(PropertyClass, PropertyClasses, );

TYPED_TEST(PropertyClass, HasNoBaseAndOnlyAVirtualDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<TypeParam>);
    EXPECT_TRUE(HasNoBase<TypeParam>());
    EXPECT_EQ(VirtualFunctionCount<TypeParam>(), ONLY_A_DESTRUCTOR);
}

TEST(PropertyTypes, HaveTheirNumbers) {
    EXPECT_EQ(PropertyType::NONE, 0);
    EXPECT_EQ(PropertyType::UNDEFINED, 1);
    EXPECT_EQ(PropertyType::STRING, 2);
    EXPECT_EQ(PropertyType::CHOICE, 3);
    EXPECT_EQ(PropertyType::BOOL, 4);
    EXPECT_EQ(PropertyType::LONG, 5);
    EXPECT_EQ(PropertyType::SIGNED_LONG, 6);
    EXPECT_EQ(PropertyType::RANGE, 7);
    EXPECT_EQ(PropertyType::MULTI_VALUE, 8);
    EXPECT_EQ(PropertyType::FLOAT, 9);
    EXPECT_EQ(PropertyType::MULTI_LONG, 10);
    EXPECT_EQ(PropertyType::XML, 11);
    EXPECT_EQ(PropertyType::MULTI_STRING, 12);
}

// --- Layout: plug-ins read the members directly

template <class Object, class Member>
std::size_t Offset(const Object& object, const Member& member) {
    return static_cast<std::size_t>(reinterpret_cast<const char*>(&member) -
                                    reinterpret_cast<const char*>(&object));
}

TEST(PropertyLayout, FieldsFollowTheVirtualTablePointerInOrder) {
    const CProperty p;
    EXPECT_EQ(Offset(p, p.m_ID), 8U);
    EXPECT_EQ(Offset(p, p.m_SecondaryID), 12U);
    EXPECT_EQ(Offset(p, p.m_Attribute1), 16U);
    EXPECT_EQ(Offset(p, p.m_Attribute2), 20U);
    EXPECT_EQ(Offset(p, p.m_Attribute3), 24U);
    EXPECT_EQ(Offset(p, p.m_Attribute4), 28U);
    EXPECT_EQ(Offset(p, p.m_Attribute5), 32U);
    EXPECT_EQ(Offset(p, p.m_Type), 36U);
    EXPECT_EQ(Offset(p, p.m_Format), 40U);
    EXPECT_EQ(Offset(p, p.m_Flag1), 44U);
    EXPECT_EQ(Offset(p, p.m_Attribute6), 48U);
    EXPECT_EQ(Offset(p, p.m_Flag2), 52U);
    EXPECT_EQ(Offset(p, p.m_Data), 56U);
    EXPECT_EQ(sizeof(CProperty), 56U + sizeof(Data));
}

TEST(PropertyLayout, KindsFollowEachOtherInOrder) {
    const Data d;
    std::size_t offset = 0;
    EXPECT_EQ(Offset(d, d.m_Choice), offset);
    EXPECT_EQ(Offset(d, d.m_Range), offset += sizeof(CChoiceData));
    EXPECT_EQ(Offset(d, d.m_String), offset += sizeof(CRangeData));
    EXPECT_EQ(Offset(d, d.m_Bool), offset += sizeof(CStringData));
    EXPECT_EQ(Offset(d, d.m_Long), offset += sizeof(CBoolData));
    EXPECT_EQ(Offset(d, d.m_SignedLong), offset += sizeof(CLongData));
    EXPECT_EQ(Offset(d, d.m_MultiValue), offset += sizeof(CSignedLongData));
    EXPECT_EQ(Offset(d, d.m_Float), offset += sizeof(CMultiValueData));
    EXPECT_EQ(Offset(d, d.m_MultiLong), offset += sizeof(CFloatData));
    EXPECT_EQ(Offset(d, d.m_XML), offset += sizeof(CMultiLongData));
    EXPECT_EQ(Offset(d, d.m_MultiString), offset += sizeof(CXMLData));
    EXPECT_EQ(sizeof(Data), offset + sizeof(CMultiStringData));
}

TEST(PropertyLayout, FieldsOfEachKindStandInOrder) {
    const Data d;
    EXPECT_EQ(Offset(d.m_Choice, d.m_Choice.m_Value), 8U);
    EXPECT_EQ(Offset(d.m_Choice, d.m_Choice.m_Choices), 16U);
    EXPECT_EQ(sizeof(CChoiceData), 16U + sizeof(std::vector<int>));
    EXPECT_EQ(Offset(d.m_Range, d.m_Range.m_Value), 8U);
    EXPECT_EQ(Offset(d.m_Range, d.m_Range.m_Min), 12U);
    EXPECT_EQ(Offset(d.m_Range, d.m_Range.m_Max), 16U);
    EXPECT_EQ(Offset(d.m_Range, d.m_Range.m_Step), 20U);
    EXPECT_EQ(sizeof(CRangeData), 24U);
    EXPECT_EQ(Offset(d.m_String, d.m_String.m_Value), 8U);
    EXPECT_EQ(Offset(d.m_String, d.m_String.m_Extra1), 8U + sizeof(std::string));
    EXPECT_EQ(Offset(d.m_String, d.m_String.m_Extra2), 16U + sizeof(std::string));
    EXPECT_EQ(sizeof(CStringData), 24U + sizeof(std::string));
    EXPECT_EQ(Offset(d.m_Bool, d.m_Bool.m_Value), 8U);
    EXPECT_EQ(sizeof(CBoolData), 16U);
    EXPECT_EQ(Offset(d.m_Long, d.m_Long.m_Value), 8U);
    EXPECT_EQ(sizeof(CLongData), 16U);
    EXPECT_EQ(Offset(d.m_SignedLong, d.m_SignedLong.m_Value), 8U);
    EXPECT_EQ(sizeof(CSignedLongData), 16U);
    EXPECT_EQ(Offset(d.m_MultiValue, d.m_MultiValue.m_Values), 8U);
    EXPECT_EQ(Offset(d.m_MultiValue, d.m_MultiValue.m_Values2), 8U + sizeof(std::vector<int>));
    EXPECT_EQ(sizeof(CMultiValueData), 8U + 2 * sizeof(std::vector<int>));
    EXPECT_EQ(Offset(d.m_Float, d.m_Float.m_Value), 8U);
    EXPECT_EQ(sizeof(CFloatData), 16U);
    EXPECT_EQ(Offset(d.m_MultiLong, d.m_MultiLong.m_Values), 8U);
    EXPECT_EQ(sizeof(CMultiLongData), 8U + sizeof(std::vector<std::uint64_t>));
    EXPECT_EQ(Offset(d.m_XML, d.m_XML.m_Document), 8U);
    EXPECT_EQ(sizeof(CXMLData), 8U + sizeof(VELK::XML::xml_document));
    EXPECT_EQ(Offset(d.m_MultiString, d.m_MultiString.m_Values), 8U);
    EXPECT_EQ(Offset(d.m_MultiString, d.m_MultiString.m_SelectionMask),
              8U + sizeof(std::vector<std::string>));
    EXPECT_EQ(sizeof(CMultiStringData), 16U + sizeof(std::vector<std::string>));
}

// --- Descriptions

static_assert(std::is_aggregate_v<_PROPERTY_DESCRIPTION> && std::is_trivial_v<_PROPERTY_DESCRIPTION> &&
              std::is_standard_layout_v<_PROPERTY_DESCRIPTION>);
static_assert(offsetof(_PROPERTY_DESCRIPTION, m_ID) == 0);
static_assert(offsetof(_PROPERTY_DESCRIPTION, m_Attribute4) == 4);
static_assert(offsetof(_PROPERTY_DESCRIPTION, m_Attribute1) == 8);
static_assert(offsetof(_PROPERTY_DESCRIPTION, m_Attribute2) == 12);
static_assert(offsetof(_PROPERTY_DESCRIPTION, m_Attribute3) == 16);
static_assert(offsetof(_PROPERTY_DESCRIPTION, m_Type) == 20);
static_assert(offsetof(_PROPERTY_DESCRIPTION, m_Attribute6) == 24);
static_assert(offsetof(_PROPERTY_DESCRIPTION, m_Flag2) == 28);
static_assert(offsetof(_PROPERTY_DESCRIPTION, m_Flag1) == 29);
static_assert(sizeof(_PROPERTY_DESCRIPTION) == 32);

// Functions only: nobody has one, and it holds nothing.
static_assert(std::is_empty_v<CPluginHelper> && !std::is_default_constructible_v<CPluginHelper>);

// In the order in which plug-ins write their tables.
constexpr _PROPERTY_DESCRIPTION DESCRIPTION = {PropertyID::STATUS,  44, 11,    22,  -33,
                                               PropertyType::RANGE, 66, false, true};

TEST(GenerateCProperty, CopiesTheDescriptionFieldByField) {
    CProperty property;
    CPluginHelper::GenerateCProperty(DESCRIPTION, property);
    EXPECT_EQ(property.m_ID, PropertyID::STATUS);
    EXPECT_EQ(property.m_SecondaryID, 30017);
    EXPECT_EQ(property.m_Attribute4, 44);
    EXPECT_EQ(property.m_Attribute1, 11);
    EXPECT_EQ(property.m_Attribute2, 22);
    EXPECT_EQ(property.m_Attribute3, -33);
    EXPECT_EQ(property.m_Type, PropertyType::RANGE);
    EXPECT_EQ(property.m_Attribute6, 66);
    EXPECT_FALSE(property.m_Flag2);
    EXPECT_TRUE(property.m_Flag1);
}

TEST(GenerateCProperty, TellsTheTwoFlagsApart) {
    _PROPERTY_DESCRIPTION description = DESCRIPTION;
    description.m_Flag2 = true;
    description.m_Flag1 = false;
    CProperty property = FilledProperty();
    CPluginHelper::GenerateCProperty(description, property);
    EXPECT_TRUE(property.m_Flag2);
    EXPECT_FALSE(property.m_Flag1);
}

TEST(GenerateCProperty, KeepsTheFifthAttributeTheFormatAndAllData) {
    CProperty property = FilledProperty(PropertyType::STRING);
    const std::vector<std::string> before = KindTexts(property);
    CPluginHelper::GenerateCProperty(DESCRIPTION, property);
    EXPECT_EQ(property.m_Attribute5, 107);
    EXPECT_EQ(property.m_Format, 108);
    EXPECT_EQ(KindTexts(property), before);
}

}  // namespace
}  // namespace PI::Test
