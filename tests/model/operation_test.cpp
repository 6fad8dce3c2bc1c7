// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/object.h>

#include <string>
#include <type_traits>

#include "support/record_checks.h"

namespace {

using namespace PI;
using namespace PI::Test;

static_assert(std::is_nothrow_move_constructible_v<COperation> &&
              std::is_nothrow_move_assignable_v<COperation> && std::is_nothrow_destructible_v<COperation>);

CProperty Text(const char* text) {
    CProperty property(PropertyID::MAJOR_VERSION, true);
    property.SetValue(text);
    return property;
}

// Every field away from its default and from the others.
COperation FullOperation() {
    COperation operation;
    operation.m_Header1 = 11;
    operation.m_Header2 = 12;
    operation.m_Header3 = 13;
    operation.m_Properties = {Text("operation")};
    operation.m_LogicalDriveList.resize(1);
    operation.m_LogicalDriveList[0].m_Value2 = 14;
    operation.m_DriveList.resize(2);
    operation.m_DriveList[1].m_UsedSize = 15;
    operation.m_LevelList.resize(3);
    operation.m_LevelList[2].m_Value9 = 16;
    operation.m_MigrationList.resize(4);
    operation.m_MigrationList[3].m_Value1 = 17;
    operation.m_EventList.resize(5);
    operation.m_EventList[4].m_PlaceHolder6 = "T:eighteen";
    operation.m_PartitionList.resize(6);
    operation.m_PartitionList[5].m_Text2 = "nineteen";
    operation.m_ObjectList.resize(1);
    operation.m_ObjectList[0].m_ObjectID = 20;
    operation.m_Parameter1 = 21;
    operation.m_Parameter2 = 22;
    operation.m_Parameter3 = 23;
    operation.m_Parameter4 = 24;
    operation.m_Parameter5 = 25;
    operation.m_Parameter6 = 26;
    operation.m_Parameter7 = 27;
    operation.m_Parameter8 = 28;
    operation.m_OperationFlag = true;
    operation.m_Parameter9 = 29;
    return operation;
}

// Compared field by field, with what the elements' own operator== leaves out.
void ExpectIdentical(const COperation& left, const COperation& right) {
    EXPECT_EQ(left.m_Header1, right.m_Header1);
    EXPECT_EQ(left.m_Header2, right.m_Header2);
    EXPECT_EQ(left.m_Header3, right.m_Header3);
    EXPECT_TRUE(left.m_Properties == right.m_Properties);
    ASSERT_EQ(left.m_LogicalDriveList.size(), right.m_LogicalDriveList.size());
    EXPECT_EQ(left.m_LogicalDriveList[0].m_Value2, right.m_LogicalDriveList[0].m_Value2);
    ASSERT_EQ(left.m_DriveList.size(), right.m_DriveList.size());
    EXPECT_EQ(left.m_DriveList[1].m_UsedSize, right.m_DriveList[1].m_UsedSize);
    EXPECT_TRUE(left.m_LevelList == right.m_LevelList);
    EXPECT_TRUE(left.m_MigrationList == right.m_MigrationList);
    ASSERT_EQ(left.m_EventList.size(), right.m_EventList.size());
    EXPECT_EQ(left.m_EventList[4].m_PlaceHolder6, right.m_EventList[4].m_PlaceHolder6);
    EXPECT_TRUE(left.m_PartitionList == right.m_PartitionList);
    EXPECT_TRUE(left.m_ObjectList == right.m_ObjectList);
    EXPECT_EQ(left.m_Parameter1, right.m_Parameter1);
    EXPECT_EQ(left.m_Parameter2, right.m_Parameter2);
    EXPECT_EQ(left.m_Parameter3, right.m_Parameter3);
    EXPECT_EQ(left.m_Parameter4, right.m_Parameter4);
    EXPECT_EQ(left.m_Parameter5, right.m_Parameter5);
    EXPECT_EQ(left.m_Parameter6, right.m_Parameter6);
    EXPECT_EQ(left.m_Parameter7, right.m_Parameter7);
    EXPECT_EQ(left.m_Parameter8, right.m_Parameter8);
    EXPECT_EQ(left.m_OperationFlag, right.m_OperationFlag);
    EXPECT_EQ(left.m_Parameter9, right.m_Parameter9);
}

TEST(Operation, FieldsStandInTheirOrderAndWidth) {
    const COperation operation;
    FieldsOf(operation)
        .Then<std::uint32_t>(&COperation::m_Header1)
        .Then<std::uint32_t>(&COperation::m_Header2)
        .Then<std::uint32_t>(&COperation::m_Header3)
        .Then<std::vector<CProperty>>(&COperation::m_Properties)
        .Then<std::vector<CLogicalDrive>>(&COperation::m_LogicalDriveList)
        .Then<std::vector<CDrive>>(&COperation::m_DriveList)
        .Then<std::vector<CLevel>>(&COperation::m_LevelList)
        .Then<std::vector<CMigration>>(&COperation::m_MigrationList)
        .Then<std::vector<CEvent>>(&COperation::m_EventList)
        .Then<std::vector<CPartition>>(&COperation::m_PartitionList)
        .Then<std::vector<CObject>>(&COperation::m_ObjectList)
        .Then<std::uint32_t>(&COperation::m_Parameter1)
        .Then<std::uint32_t>(&COperation::m_Parameter2)
        .Then<std::uint32_t>(&COperation::m_Parameter3)
        .Then<std::uint32_t>(&COperation::m_Parameter4)
        .Then<std::uint32_t>(&COperation::m_Parameter5)
        .Then<std::uint32_t>(&COperation::m_Parameter6)
        .Then<std::uint32_t>(&COperation::m_Parameter7)
        .Then<std::uint32_t>(&COperation::m_Parameter8)
        .Then<bool>(&COperation::m_OperationFlag)
        .Then<std::uint32_t>(&COperation::m_Parameter9)
        .End();
}

TEST(Operation, HasNoBaseAndOnlyAVirtualDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<COperation>);
    EXPECT_TRUE(HasNoBase<COperation>());
    EXPECT_EQ(VirtualFunctionCount<COperation>(), ONLY_A_DESTRUCTOR);
}

TEST(Operation, Defaults) {
    const COperation operation;
    EXPECT_EQ(operation.m_Header1, 1U);
    EXPECT_EQ(operation.m_Header2, 1U);
    EXPECT_EQ(operation.m_Header3, 1U);
    EXPECT_TRUE(operation.m_Properties.empty());
    EXPECT_TRUE(operation.m_LogicalDriveList.empty());
    EXPECT_TRUE(operation.m_DriveList.empty());
    EXPECT_TRUE(operation.m_LevelList.empty());
    EXPECT_TRUE(operation.m_MigrationList.empty());
    EXPECT_TRUE(operation.m_EventList.empty());
    EXPECT_TRUE(operation.m_PartitionList.empty());
    EXPECT_TRUE(operation.m_ObjectList.empty());
    EXPECT_EQ(operation.m_Parameter1, 1U);
    EXPECT_EQ(operation.m_Parameter2, 1U);
    EXPECT_EQ(operation.m_Parameter3, 1U);
    EXPECT_EQ(operation.m_Parameter4, 1U);
    EXPECT_EQ(operation.m_Parameter5, 0xFFFFFFFF);
    EXPECT_EQ(operation.m_Parameter6, 1U);
    EXPECT_EQ(operation.m_Parameter7, 1U);
    EXPECT_EQ(operation.m_Parameter8, 1U);
    EXPECT_FALSE(operation.m_OperationFlag);
    EXPECT_EQ(operation.m_Parameter9, 1U);
}

TEST(Operation, CopiesAndMovesCarryEveryField) {
    const COperation full = FullOperation();
    COperation copy(full);
    ExpectIdentical(copy, full);
    COperation assigned;
    EXPECT_EQ(&(assigned = full), &assigned);
    ExpectIdentical(assigned, full);
    const COperation& self = assigned;
    assigned = self;
    ExpectIdentical(assigned, full);

    COperation moved(std::move(copy));
    ExpectIdentical(moved, full);
    COperation moveAssigned;
    EXPECT_EQ(&(moveAssigned = std::move(moved)), &moveAssigned);
    ExpectIdentical(moveAssigned, full);
}

TEST(Operation, MovesTakeTheListsOver) {
    COperation source = FullOperation();
    const CObject* objects = source.m_ObjectList.data();
    const COperation moved(std::move(source));
    EXPECT_EQ(moved.m_ObjectList.data(), objects);
}

TEST(Operation, CopiesAreDeep) {
    const COperation source = FullOperation();
    COperation copy(source);
    copy.m_ObjectList[0].m_Properties.push_back(Text("new"));
    copy.m_DriveList[1].m_UsedSize = 99;
    copy.m_EventList[4].m_PlaceHolder6 = "T:new";
    EXPECT_TRUE(source.m_ObjectList[0].m_Properties.empty());
    EXPECT_EQ(source.m_DriveList[1].m_UsedSize, 15U);
    EXPECT_EQ(source.m_EventList[4].m_PlaceHolder6, "T:eighteen");
}

TEST(Operation, ComparesEveryField) {
    using T = COperation;
    ExpectCompared<T>(FullOperation(),
                      {
                          {"m_Header1", [](T& o) { ++o.m_Header1; }},
                          {"m_Header2", [](T& o) { ++o.m_Header2; }},
                          {"m_Header3", [](T& o) { ++o.m_Header3; }},
                          {"m_Properties", [](T& o) { o.m_Properties[0].SetValue("other"); }},
                          {"m_LogicalDriveList", [](T& o) { ++o.m_LogicalDriveList[0].m_ID; }},
                          {"m_DriveList", [](T& o) { ++o.m_DriveList[0].m_StartAddress; }},
                          {"m_LevelList", [](T& o) { ++o.m_LevelList[0].m_Value1; }},
                          {"m_MigrationList", [](T& o) { ++o.m_MigrationList[0].m_Value2; }},
                          {"m_EventList", [](T& o) { ++o.m_EventList[0].m_Handle; }},
                          {"m_PartitionList", [](T& o) { ++o.m_PartitionList[0].m_Value3; }},
                          {"m_ObjectList", [](T& o) { ++o.m_ObjectList[0].m_UniqueID; }},
                          {"m_Parameter1", [](T& o) { ++o.m_Parameter1; }},
                          {"m_Parameter2", [](T& o) { ++o.m_Parameter2; }},
                          {"m_Parameter3", [](T& o) { ++o.m_Parameter3; }},
                          {"m_Parameter4", [](T& o) { ++o.m_Parameter4; }},
                          {"m_Parameter5", [](T& o) { ++o.m_Parameter5; }},
                          {"m_Parameter6", [](T& o) { ++o.m_Parameter6; }},
                          {"m_Parameter7", [](T& o) { ++o.m_Parameter7; }},
                          {"m_Parameter8", [](T& o) { ++o.m_Parameter8; }},
                          {"m_OperationFlag", [](T& o) { o.m_OperationFlag = false; }},
                          {"m_Parameter9", [](T& o) { ++o.m_Parameter9; }},
                      });
}

TEST(Operation, ComparesTheLengthOfEveryList) {
    using T = COperation;
    ExpectCompared<T>(FullOperation(),
                      {
                          {"m_Properties", [](T& o) { o.m_Properties.pop_back(); }},
                          {"m_LogicalDriveList", [](T& o) { o.m_LogicalDriveList.pop_back(); }},
                          {"m_DriveList", [](T& o) { o.m_DriveList.pop_back(); }},
                          {"m_LevelList", [](T& o) { o.m_LevelList.pop_back(); }},
                          {"m_MigrationList", [](T& o) { o.m_MigrationList.pop_back(); }},
                          {"m_EventList", [](T& o) { o.m_EventList.pop_back(); }},
                          {"m_PartitionList", [](T& o) { o.m_PartitionList.pop_back(); }},
                          {"m_ObjectList", [](T& o) { o.m_ObjectList.pop_back(); }},
                      });
}

TEST(Operation, ElementsKeepTheOmissionsOfTheirTypes) {
    using T = COperation;
    ExpectNotCompared<T>(
        FullOperation(),
        {
            {"value 2 of a logical drive", [](T& o) { ++o.m_LogicalDriveList[0].m_Value2; }},
            {"hot spares", [](T& o) { o.m_LogicalDriveList[0].m_GlobalHotSpares.push_back(1); }},
            {"used size of a drive", [](T& o) { ++o.m_DriveList[1].m_UsedSize; }},
            {"placeholder of an event", [](T& o) { o.m_EventList[4].m_PlaceHolder6.clear(); }},
        });
}

TEST(Operation, DefaultOnesAreEqual) {
    const COperation operation;
    EXPECT_TRUE(operation == operation);
    EXPECT_TRUE(operation == COperation(operation));
    EXPECT_TRUE(COperation() == COperation());
}

TEST(Operation, WithObjectsMadeSeparatelyIsUnequal) {
    COperation left;
    left.m_ObjectList.emplace_back();
    COperation right;
    right.m_ObjectList.emplace_back();
    EXPECT_FALSE(left == right);
    EXPECT_TRUE(left == COperation(left));
}

TEST(Operation, WithAPropertyWithoutValueIsNotEvenEqualToItself) {
    COperation operation;
    operation.m_Properties.emplace_back();
    EXPECT_FALSE(operation == operation);
    EXPECT_FALSE(operation == COperation(operation));
}

TEST(Operation, AssigningAnOperationThatItHoldsKeepsThat) {
    COperation inner = FullOperation();
    inner.m_ObjectList.clear();
    COperation outer;
    outer.m_ObjectList.emplace_back();
    outer.m_ObjectList[0].m_Operations.push_back(inner);

    COperation copied(outer);
    copied = copied.m_ObjectList[0].m_Operations[0];
    EXPECT_TRUE(copied == inner);

    COperation moved(outer);
    moved = std::move(moved.m_ObjectList[0].m_Operations[0]);
    EXPECT_TRUE(moved == inner);
}

}  // namespace
