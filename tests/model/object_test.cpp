// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/object.h>
#include <pi/plugin_helper.h>

#include <string>
#include <type_traits>

#include "support/record_checks.h"

namespace {

using namespace PI;
using namespace PI::Test;

static_assert(std::is_nothrow_move_constructible_v<CObject> && std::is_nothrow_move_assignable_v<CObject> &&
              std::is_nothrow_destructible_v<CObject>);
static_assert(std::is_same_v<decltype(CObject::m_UniqueIDCounter), std::uint64_t>);
static_assert(std::is_same_v<std::underlying_type_t<_OBJECT_TYPE>, std::int32_t>);

// Read while the program is loaded, before anything makes an object.
const std::uint64_t UNIQUE_ID_COUNTER_AT_LOAD = CObject::m_UniqueIDCounter;

CProperty Text(const char* text) {
    CProperty property(PropertyID::MAJOR_VERSION, true);
    property.SetValue(text);
    return property;
}

// Every field away from its default and from the others.
CObject FullObject() {
    CObject object(1, ObjectType::ADAPTER_1);
    object.m_RelatedIDs1 = {2};
    object.m_RelatedIDs2 = {3, 4};
    object.m_ObjectValue = 5;
    object.m_ObjectFlag = true;
    object.m_Properties = {Text("object")};
    object.m_Operations.resize(2);
    object.m_Operations[1].m_DriveList.resize(1);
    object.m_Operations[1].m_DriveList[0].m_UsedSize = 6;
    return object;
}

void ExpectIdentical(const CObject& left, const CObject& right) {
    EXPECT_EQ(left.m_ObjectID, right.m_ObjectID);
    EXPECT_EQ(left.m_ObjectType, right.m_ObjectType);
    EXPECT_EQ(left.m_RelatedIDs1, right.m_RelatedIDs1);
    EXPECT_EQ(left.m_RelatedIDs2, right.m_RelatedIDs2);
    EXPECT_EQ(left.m_ObjectValue, right.m_ObjectValue);
    EXPECT_EQ(left.m_ObjectFlag, right.m_ObjectFlag);
    EXPECT_TRUE(left.m_Properties == right.m_Properties);
    ASSERT_EQ(left.m_Operations.size(), right.m_Operations.size());
    EXPECT_EQ(left.m_Operations[1].m_DriveList[0].m_UsedSize,
              right.m_Operations[1].m_DriveList[0].m_UsedSize);
    EXPECT_EQ(left.m_UniqueID, right.m_UniqueID);
}

/// An object that holds an operation that holds an object, so many levels deep. Level i has the identifier i;
/// the innermost one is 0.
CObject Tree(unsigned long levels) {
    CObject object(0, ObjectType::UNDEFINED);
    for (unsigned long level = 1; level <= levels; ++level) {
        COperation operation;
        operation.m_ObjectList.push_back(std::move(object));
        object = CObject(level, ObjectType::UNDEFINED);
        object.m_Operations.push_back(std::move(operation));
    }
    return object;
}

CObject& Innermost(CObject& tree) {
    CObject* object = &tree;
    while (!object->m_Operations.empty()) {
        object = &object->m_Operations[0].m_ObjectList[0];
    }
    return *object;
}

TEST(Object, FieldsStandInTheirOrderAndWidth) {
    const CObject object;
    FieldsOf(object)
        .Then<std::uint64_t>(&CObject::m_ObjectID)
        .Then<_OBJECT_TYPE>(&CObject::m_ObjectType)
        .Then<std::vector<std::uint64_t>>(&CObject::m_RelatedIDs1)
        .Then<std::vector<std::uint64_t>>(&CObject::m_RelatedIDs2)
        .Then<std::uint64_t>(&CObject::m_ObjectValue)
        .Then<bool>(&CObject::m_ObjectFlag)
        .Then<std::vector<CProperty>>(&CObject::m_Properties)
        .Then<std::vector<COperation>>(&CObject::m_Operations)
        .Then<std::uint64_t>(&CObject::m_UniqueID)
        .End();
}

TEST(Object, HasNoBaseAndOnlyAVirtualDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<CObject>);
    EXPECT_TRUE(HasNoBase<CObject>());
    EXPECT_EQ(VirtualFunctionCount<CObject>(), ONLY_A_DESTRUCTOR);
}

TEST(Object, Defaults) {
    const CObject object;
    EXPECT_EQ(object.m_ObjectID, 0U);
    EXPECT_EQ(object.m_ObjectType, 1);
    EXPECT_TRUE(object.m_RelatedIDs1.empty());
    EXPECT_TRUE(object.m_RelatedIDs2.empty());
    EXPECT_EQ(object.m_ObjectValue, 0U);
    EXPECT_FALSE(object.m_ObjectFlag);
    EXPECT_TRUE(object.m_Properties.empty());
    EXPECT_TRUE(object.m_Operations.empty());
}

TEST(Object, TakesIdentifierAndTypeFromItsArguments) {
    const CObject object(0xFFFFFFFFFFFFFFFF, ObjectType::TASK);
    EXPECT_EQ(object.m_ObjectID, 0xFFFFFFFFFFFFFFFF);
    EXPECT_EQ(object.m_ObjectType, 19005);
    EXPECT_TRUE(object.m_RelatedIDs1.empty());
    EXPECT_TRUE(object.m_RelatedIDs2.empty());
    EXPECT_EQ(object.m_ObjectValue, 0U);
    EXPECT_FALSE(object.m_ObjectFlag);
    EXPECT_TRUE(object.m_Properties.empty());
    EXPECT_TRUE(object.m_Operations.empty());
}

TEST(Object, CounterIsZeroAtLoad) {
    EXPECT_EQ(UNIQUE_ID_COUNTER_AT_LOAD, 0U);
}

TEST(Object, BothConstructorsTakeTheCounterAndAdvanceIt) {
    CObject::m_UniqueIDCounter = 41;
    const CObject first;
    EXPECT_EQ(first.m_UniqueID, 41U);
    EXPECT_EQ(CObject::m_UniqueIDCounter, 42U);
    const CObject second(7, ObjectType::UNDEFINED);
    EXPECT_EQ(second.m_UniqueID, 42U);
    EXPECT_EQ(CObject::m_UniqueIDCounter, 43U);
}

TEST(Object, CounterWraps) {
    const std::uint64_t before = CObject::m_UniqueIDCounter;
    CObject::m_UniqueIDCounter = 0xFFFFFFFFFFFFFFFF;
    const CObject object;
    EXPECT_EQ(object.m_UniqueID, 0xFFFFFFFFFFFFFFFF);
    EXPECT_EQ(CObject::m_UniqueIDCounter, 0U);
    CObject::m_UniqueIDCounter = before;
}

TEST(Object, CopiesAndMovesCarryEveryField) {
    const CObject full = FullObject();
    CObject copy(full);
    ExpectIdentical(copy, full);
    CObject assigned;
    EXPECT_EQ(&(assigned = full), &assigned);
    ExpectIdentical(assigned, full);
    const CObject& self = assigned;
    assigned = self;
    ExpectIdentical(assigned, full);

    CObject moved(std::move(copy));
    ExpectIdentical(moved, full);
    CObject moveAssigned;
    EXPECT_EQ(&(moveAssigned = std::move(moved)), &moveAssigned);
    ExpectIdentical(moveAssigned, full);
}

TEST(Object, CopiesAndMovesLeaveTheCounterAlone) {
    CObject source;
    CObject target;
    const std::uint64_t before = CObject::m_UniqueIDCounter;
    CObject copy(source);
    target = source;
    const CObject moved(std::move(copy));
    target = std::move(source);
    EXPECT_EQ(CObject::m_UniqueIDCounter, before);
}

TEST(Object, CopiesAreDeep) {
    const CObject source = FullObject();
    CObject copy(source);
    copy.m_Properties[0].SetValue("changed");
    copy.m_Operations[1].m_DriveList[0].m_UsedSize = 99;
    copy.m_RelatedIDs1[0] = 99;
    std::string text;
    source.m_Properties[0].GetValueString(text);
    EXPECT_EQ(text, "object");
    EXPECT_EQ(source.m_Operations[1].m_DriveList[0].m_UsedSize, 6U);
    EXPECT_EQ(source.m_RelatedIDs1[0], 2U);
}

TEST(Object, MovesTakeTheListsOver) {
    CObject source = FullObject();
    const CProperty* properties = source.m_Properties.data();
    const COperation* operations = source.m_Operations.data();
    const CObject moved(std::move(source));
    EXPECT_EQ(moved.m_Properties.data(), properties);
    EXPECT_EQ(moved.m_Operations.data(), operations);
}

TEST(Object, ComparesEveryField) {
    using T = CObject;
    ExpectCompared<T>(FullObject(),
                      {
                          {"m_ObjectID", [](T& o) { ++o.m_ObjectID; }},
                          {"m_ObjectType", [](T& o) { o.m_ObjectType = ObjectType::ADAPTER_2; }},
                          {"m_RelatedIDs1", [](T& o) { ++o.m_RelatedIDs1[0]; }},
                          {"m_RelatedIDs1, one more", [](T& o) { o.m_RelatedIDs1.push_back(0); }},
                          {"m_RelatedIDs2", [](T& o) { ++o.m_RelatedIDs2[1]; }},
                          {"m_RelatedIDs2, one less", [](T& o) { o.m_RelatedIDs2.pop_back(); }},
                          {"m_ObjectValue", [](T& o) { ++o.m_ObjectValue; }},
                          {"m_ObjectFlag", [](T& o) { o.m_ObjectFlag = false; }},
                          {"m_Properties", [](T& o) { o.m_Properties[0].SetValue("other"); }},
                          {"m_Properties, one less", [](T& o) { o.m_Properties.clear(); }},
                          {"m_Operations", [](T& o) { ++o.m_Operations[1].m_Parameter9; }},
                          {"m_Operations, one more", [](T& o) { o.m_Operations.emplace_back(); }},
                          {"m_UniqueID", [](T& o) { ++o.m_UniqueID; }},
                      });
}

TEST(Object, OperationsKeepTheirOmissions) {
    ExpectNotCompared<CObject>(
        FullObject(), {{"used size", [](CObject& o) { ++o.m_Operations[1].m_DriveList[0].m_UsedSize; }}});
}

TEST(Object, TwoNewOnesDifferByOneInTheirUniqueIdentifiers) {
    const CObject first;
    const CObject second;
    EXPECT_FALSE(first == second);
    EXPECT_EQ(second.m_UniqueID - first.m_UniqueID, 1U);
    EXPECT_TRUE(first == CObject(first));
    EXPECT_TRUE(second == CObject(second));
}

TEST(Object, WithAPropertyWithoutValueIsNotEvenEqualToItsCopy) {
    CObject object;
    object.m_Properties.emplace_back();
    EXPECT_FALSE(object == object);
    EXPECT_FALSE(object == CObject(object));
}

TEST(Object, ATreeOfAThousandLevelsIsCopiedComparedAndDestroyed) {
    CObject tree = Tree(1000);
    CObject copy(tree);
    EXPECT_TRUE(copy == tree);
    EXPECT_EQ(Innermost(copy).m_ObjectID, 0U);
    EXPECT_NE(&Innermost(copy), &Innermost(tree));

    Innermost(copy).m_ObjectValue = 1;
    EXPECT_FALSE(copy == tree);

    copy = tree;
    EXPECT_TRUE(copy == tree);
}

TEST(Object, ATreeOfAThousandLevelsIsMovedWithoutCopying) {
    CObject tree = Tree(1000);
    const CObject* innermost = &Innermost(tree);
    CObject moved(std::move(tree));
    EXPECT_EQ(&Innermost(moved), innermost);
    CObject assigned;
    assigned = std::move(moved);
    EXPECT_EQ(&Innermost(assigned), innermost);
    EXPECT_EQ(assigned.m_ObjectID, 1000U);
}

TEST(Object, AHundredThousandPropertiesAreCopiedComparedAndDestroyed) {
    constexpr unsigned long COUNT = 100000;
    CObject object;
    for (unsigned long i = 0; i < COUNT; ++i) {
        object.m_Properties.emplace_back(PropertyID::MAJOR_VERSION, false).SetValue(i);
    }
    CObject copy(object);
    EXPECT_TRUE(copy == object);

    copy.m_Properties.back().SetValue(0UL);
    EXPECT_FALSE(copy == object);

    unsigned long last = 0;
    object.m_Properties.back().GetValue(last);
    EXPECT_EQ(last, COUNT - 1);
}

TEST(Object, MovedOntoItselfStaysAsItIs) {
    CObject object = FullObject();
    const CObject copy(object);
    CObject& self = object;
    object = std::move(self);
    EXPECT_TRUE(object == copy);
}

TEST(FindProperty, GivesTheFirstPropertyWithTheIdentifier) {
    CObject object;
    object.m_Properties.emplace_back(PropertyID::NAME, false).SetValue("first");
    object.m_Properties.emplace_back(PropertyID::STATUS, false).SetValue(true);
    object.m_Properties.emplace_back(PropertyID::NAME, false).SetValue("second");
    EXPECT_EQ(CPluginHelper::FindProperty(object, PropertyID::NAME), &object.m_Properties[0]);
    EXPECT_EQ(CPluginHelper::FindProperty(object, PropertyID::STATUS), &object.m_Properties[1]);
}

TEST(FindProperty, GivesNullWhereThereIsNone) {
    CObject object;
    EXPECT_EQ(CPluginHelper::FindProperty(object, PropertyID::NAME), nullptr);
    object.m_Properties.emplace_back(PropertyID::STATUS, false);
    object.m_Properties.back().m_SecondaryID = PropertyID::NAME;
    EXPECT_EQ(CPluginHelper::FindProperty(object, PropertyID::NAME), nullptr);
}

TEST(FindProperty, OfAConstantObjectIsConstant) {
    CObject object;
    object.m_Properties.emplace_back(PropertyID::NAME, false);
    const CObject& constant = object;
    static_assert(
        std::is_same_v<decltype(CPluginHelper::FindProperty(constant, PropertyID::NAME)), const CProperty*>);
    EXPECT_EQ(CPluginHelper::FindProperty(constant, PropertyID::NAME), &object.m_Properties[0]);
    CPluginHelper::FindProperty(object, PropertyID::NAME)->SetValue("changed");
    EXPECT_EQ(constant.m_Properties[0].GetValue(nullptr), "changed");
}

// A caller that walks down a tree may keep the part that it stands on and drop the rest.
TEST(Object, AssigningAnObjectThatItHoldsKeepsThat) {
    CObject tree = Tree(3);
    const CObject below = tree.m_Operations[0].m_ObjectList[0];

    CObject copied(tree);
    copied = copied.m_Operations[0].m_ObjectList[0];
    EXPECT_TRUE(copied == below);

    CObject moved(tree);
    moved = std::move(moved.m_Operations[0].m_ObjectList[0]);
    EXPECT_TRUE(moved == below);
}

}  // namespace
