// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/task.h>
#include <velk/clock.h>

#include <type_traits>

#include "support/record_checks.h"

namespace {

using namespace PI;
using namespace PI::Test;

static_assert(std::is_nothrow_move_constructible_v<CTask> && std::is_nothrow_move_assignable_v<CTask> &&
              std::is_nothrow_destructible_v<CTask>);
static_assert(std::is_convertible_v<CTask*, CObject*>, "the base is public");

// Every field away from its default and from the others.
CTask FullTask() {
    CTask task;
    task.m_ObjectID = 1;
    task.m_RelatedIDs1 = {2};
    task.m_Operations.resize(1);
    task.m_TaskText1 = "one";
    task.m_TaskText2 = "two";
    task.m_TaskText3 = "three";
    task.m_TaskValue1 = 11;
    task.m_TaskValue2 = 12;
    task.m_CreationTime = 13;
    task.m_TaskValue3 = 14;
    task.m_TaskValue4 = 15;
    task.m_TaskValue5 = 16;
    task.m_TaskValue6 = 17;
    task.m_TaskValue7 = 18;
    task.m_TaskFlag = true;
    task.m_TaskStatus = 19;
    return task;
}

TEST(Task, FieldsStandBehindTheObjectInTheirOrderAndWidth) {
    const CTask task;
    FieldChain<CTask>(task, sizeof(CObject))
        .Then<std::string>(&CTask::m_TaskText1)
        .Then<std::string>(&CTask::m_TaskText2)
        .Then<std::string>(&CTask::m_TaskText3)
        .Then<std::uint64_t>(&CTask::m_TaskValue1)
        .Then<std::uint32_t>(&CTask::m_TaskValue2)
        .Then<std::uint64_t>(&CTask::m_CreationTime)
        .Then<std::uint64_t>(&CTask::m_TaskValue3)
        .Then<std::uint64_t>(&CTask::m_TaskValue4)
        .Then<std::uint64_t>(&CTask::m_TaskValue5)
        .Then<std::uint32_t>(&CTask::m_TaskValue6)
        .Then<std::uint32_t>(&CTask::m_TaskValue7)
        .Then<bool>(&CTask::m_TaskFlag)
        .Then<std::uint64_t>(&CTask::m_TaskStatus)
        .End();
}

TEST(Task, HasTheObjectAsItsOnlyBaseAndOnlyAVirtualDestructor) {
    const auto* type = dynamic_cast<const abi::__si_class_type_info*>(&typeid(CTask));
    ASSERT_NE(type, nullptr) << "not a single public base";
    EXPECT_TRUE(*type->__base_type == typeid(CObject));
    EXPECT_EQ(VirtualFunctionCount<CTask>(), ONLY_A_DESTRUCTOR);
}

TEST(Task, Defaults) {
    const CTask task;
    EXPECT_EQ(task.m_ObjectID, 0U);
    EXPECT_EQ(task.m_ObjectType, 19005);
    EXPECT_TRUE(task.m_RelatedIDs1.empty());
    EXPECT_TRUE(task.m_RelatedIDs2.empty());
    EXPECT_EQ(task.m_ObjectValue, 0U);
    EXPECT_FALSE(task.m_ObjectFlag);
    EXPECT_TRUE(task.m_Properties.empty());
    EXPECT_TRUE(task.m_Operations.empty());
    EXPECT_EQ(task.m_TaskText1, "");
    EXPECT_EQ(task.m_TaskText2, "");
    EXPECT_EQ(task.m_TaskText3, "");
    EXPECT_EQ(task.m_TaskValue1, 0U);
    EXPECT_EQ(task.m_TaskValue2, 0U);
    EXPECT_EQ(task.m_TaskValue3, 0U);
    EXPECT_EQ(task.m_TaskValue4, 0xFFFFFFFFFFFFFFFF);
    EXPECT_EQ(task.m_TaskValue5, 0U);
    EXPECT_EQ(task.m_TaskValue6, 0U);
    EXPECT_EQ(task.m_TaskValue7, 0U);
    EXPECT_FALSE(task.m_TaskFlag);
    EXPECT_EQ(task.m_TaskStatus, 40024U);
    EXPECT_EQ(PropertyValueToString(40024), "OK");
}

TEST(Task, IsMadeNow) {
    const std::uint64_t before = VELK::now();
    const CTask task;
    const std::uint64_t after = VELK::now();
    EXPECT_LE(before, task.m_CreationTime);
    EXPECT_LE(task.m_CreationTime, after);
}

TEST(Task, TakesTheNextUniqueIdentifier) {
    const std::uint64_t before = CObject::m_UniqueIDCounter;
    const CTask task;
    EXPECT_EQ(task.m_UniqueID, before);
    EXPECT_EQ(CObject::m_UniqueIDCounter, before + 1);
}

TEST(Task, CopiesAndMovesCarryEveryField) {
    const CTask full = FullTask();
    const std::uint64_t counter = CObject::m_UniqueIDCounter;
    CTask copy(full);
    EXPECT_EQ(CObject::m_UniqueIDCounter, counter);
    EXPECT_EQ(copy.m_UniqueID, full.m_UniqueID);
    EXPECT_EQ(copy.m_CreationTime, 13U) << "the time of making travels with copies";
    EXPECT_TRUE(copy == full);  // compares every field
    CTask assigned;
    EXPECT_FALSE(assigned == full);
    EXPECT_EQ(&(assigned = full), &assigned);
    EXPECT_TRUE(assigned == full);
    const CTask& self = assigned;
    assigned = self;
    EXPECT_TRUE(assigned == full);

    CTask moved(std::move(copy));
    EXPECT_TRUE(moved == full);
    CTask moveAssigned;
    EXPECT_EQ(&(moveAssigned = std::move(moved)), &moveAssigned);
    EXPECT_TRUE(moveAssigned == full);
}

TEST(Task, ComparesEveryFieldAndTheObject) {
    ExpectCompared<CTask>(FullTask(),
                          {
                              {"m_TaskText1", [](CTask& t) { t.m_TaskText1 += "x"; }},
                              {"m_TaskText2", [](CTask& t) { t.m_TaskText2 += "x"; }},
                              {"m_TaskText3", [](CTask& t) { t.m_TaskText3 += "x"; }},
                              {"m_TaskValue1", [](CTask& t) { ++t.m_TaskValue1; }},
                              {"m_TaskValue2", [](CTask& t) { ++t.m_TaskValue2; }},
                              {"m_CreationTime", [](CTask& t) { ++t.m_CreationTime; }},
                              {"m_TaskValue3", [](CTask& t) { ++t.m_TaskValue3; }},
                              {"m_TaskValue4", [](CTask& t) { ++t.m_TaskValue4; }},
                              {"m_TaskValue5", [](CTask& t) { ++t.m_TaskValue5; }},
                              {"m_TaskValue6", [](CTask& t) { ++t.m_TaskValue6; }},
                              {"m_TaskValue7", [](CTask& t) { ++t.m_TaskValue7; }},
                              {"m_TaskFlag", [](CTask& t) { t.m_TaskFlag = false; }},
                              {"m_TaskStatus", [](CTask& t) { t.m_TaskStatus += 0x100000000; }},
                              {"m_ObjectID", [](CTask& t) { ++t.m_ObjectID; }},
                              {"m_ObjectType", [](CTask& t) { t.m_ObjectType = ObjectType::UNDEFINED; }},
                              {"m_RelatedIDs1", [](CTask& t) { t.m_RelatedIDs1.clear(); }},
                              {"m_Operations", [](CTask& t) { t.m_Operations.clear(); }},
                              {"m_UniqueID", [](CTask& t) { ++t.m_UniqueID; }},
                          });
}

TEST(Task, TwoMadeSeparatelyDifferWithIdenticalContent) {
    const CTask first;
    CTask second;
    second.m_CreationTime = first.m_CreationTime;
    EXPECT_FALSE(first == second);
    second.m_UniqueID = first.m_UniqueID;
    EXPECT_TRUE(first == second);
}

TEST(Task, IsDestroyedThroughItsBase) {
    const CObject* object = new CTask(FullTask());
    EXPECT_TRUE(typeid(*object) == typeid(CTask));
    delete object;  // the address sanitizer would report the task's own texts
}

TEST(Task, AsAnObjectIsCopiedWithItsIdentity) {
    const CTask task = FullTask();
    std::vector<CObject> objects = {task};
    EXPECT_EQ(objects[0].m_ObjectType, ObjectType::TASK);
    EXPECT_EQ(objects[0].m_UniqueID, task.m_UniqueID);
    EXPECT_TRUE(objects[0] == static_cast<const CObject&>(task));
}

}  // namespace
