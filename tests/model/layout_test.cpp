// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/layout.h>

#include <algorithm>
#include <tuple>
#include <type_traits>

#include "support/record_checks.h"

namespace {

using namespace PI;
using namespace PI::Test;

constexpr std::uint64_t ALL_ONES = 0xFFFFFFFFFFFFFFFF;

template <class Record>
constexpr bool IS_VALUE = std::is_default_constructible_v<Record>&& std::is_copy_constructible_v<Record>&&
    std::is_copy_assignable_v<Record>&& std::is_nothrow_move_constructible_v<Record>&&
        std::is_nothrow_move_assignable_v<Record>&& std::is_nothrow_destructible_v<Record>;

static_assert(IS_VALUE<CDrive> && IS_VALUE<CContainer> && IS_VALUE<CLogicalDrive> && IS_VALUE<CArray> &&
              IS_VALUE<CLevel> && IS_VALUE<CPartition> && IS_VALUE<CMigration>);

CProperty Text(const char* text) {
    CProperty property(PropertyID::MAJOR_VERSION, true);
    property.SetValue(text);
    return property;
}

CDrive Drive(std::uint64_t id, std::uint64_t start) {
    CDrive drive;
    drive.m_ObjectID = id;
    drive.m_StartAddress = start;
    return drive;
}

// Every field away from its default and from the others.
CDrive FullDrive() {
    CDrive drive = Drive(1, 2);
    drive.m_UsedSize = 3;
    drive.m_Properties = {Text("drive")};
    drive.m_LogicalDrive = 4;
    drive.m_LogicalOwner = 5;
    drive.m_IsConfigurable = false;
    return drive;
}

CContainer FullContainer() {
    CContainer container;
    container.m_Drives = {FullDrive(), Drive(6, 7)};
    return container;
}

CLogicalDrive FullLogicalDrive() {
    CLogicalDrive logicalDrive;
    logicalDrive.m_ID = 1;
    logicalDrive.m_Properties = {Text("logical drive")};
    logicalDrive.m_Value1 = 2;
    logicalDrive.m_Value2 = 3;
    logicalDrive.m_Size = 4;
    logicalDrive.m_Units = Units::GIGABYTES;
    logicalDrive.m_SpanCount = 5;
    logicalDrive.m_SpanSize = 6;
    logicalDrive.m_Value3 = 7;
    logicalDrive.m_Value4 = 8;
    logicalDrive.m_Containers = {FullContainer()};
    logicalDrive.m_GlobalHotSpares = {9};
    logicalDrive.m_DedicatedHotSpares = {10, 11};
    logicalDrive.m_AssociatedLogicalDrives = {12, 13, 14};
    return logicalDrive;
}

CArray FullArray() {
    CArray array;
    array.m_Properties = {Text("array")};
    array.m_Value1 = 1;
    array.m_Size = 2;
    array.m_Units = Units::MEGABYTES;
    array.m_Containers = {FullContainer()};
    array.m_LogicalDrives = {3, 4};
    return array;
}

CLevel FullLevel() {
    CLevel level;
    level.m_Value1 = 1;
    level.m_Values = {2, -3};
    level.m_Value2 = 4;
    level.m_Properties = {Text("level")};
    level.m_Value3 = 5;
    level.m_Value4 = 6;
    level.m_Value5 = 7;
    level.m_Value6 = 8;
    level.m_Units = Units::BYTES;
    level.m_Value7 = 9;
    level.m_Value8 = 10;
    level.m_Flag = false;
    level.m_Value9 = 11;
    return level;
}

CPartition FullPartition() {
    CPartition partition;
    partition.m_Value1 = 1;
    partition.m_Value2 = 2;
    partition.m_Value3 = 3;
    partition.m_Text1 = "a text that is too long for a string to keep it inside";
    partition.m_Text2 = "short";
    return partition;
}

CMigration FullMigration() {
    CMigration migration;
    migration.m_Value1 = 1;
    migration.m_Value2 = 2;
    migration.m_Properties = {Text("migration")};
    return migration;
}

// All fields, for comparing what operator== leaves out.
auto Fields(const CDrive& r) {
    return std::tie(r.m_ObjectID, r.m_StartAddress, r.m_UsedSize, r.m_Properties, r.m_LogicalDrive,
                    r.m_LogicalOwner, r.m_IsConfigurable);
}

bool AreIdentical(const CDrive& left, const CDrive& right) {
    return Fields(left) == Fields(right);
}

bool AreIdentical(const CContainer& left, const CContainer& right) {
    return std::equal(left.m_Drives.begin(), left.m_Drives.end(), right.m_Drives.begin(),
                      right.m_Drives.end(),
                      [](const CDrive& one, const CDrive& other) { return AreIdentical(one, other); });
}

bool AreIdentical(const std::vector<CContainer>& left, const std::vector<CContainer>& right) {
    return std::equal(
        left.begin(), left.end(), right.begin(), right.end(),
        [](const CContainer& one, const CContainer& other) { return AreIdentical(one, other); });
}

bool AreIdentical(const CLogicalDrive& left, const CLogicalDrive& right) {
    return left == right && AreIdentical(left.m_Containers, right.m_Containers) &&
           left.m_Value2 == right.m_Value2 && left.m_GlobalHotSpares == right.m_GlobalHotSpares &&
           left.m_DedicatedHotSpares == right.m_DedicatedHotSpares &&
           left.m_AssociatedLogicalDrives == right.m_AssociatedLogicalDrives;
}

bool AreIdentical(const CArray& left, const CArray& right) {
    return left == right && AreIdentical(left.m_Containers, right.m_Containers);
}

template <class Record>
bool AreIdentical(const Record& left, const Record& right) {
    return left == right;  // compares every field
}

/// Copies and moves in both ways and looks at every field of the results.
template <class Record>
void ExpectCopiesAndMovesCarryEveryField(const Record& full) {
    const Record copy(full);
    EXPECT_TRUE(AreIdentical(copy, full));
    Record assigned;
    EXPECT_FALSE(AreIdentical(assigned, full)) << "the check would see nothing";
    EXPECT_EQ(&(assigned = full), &assigned);
    EXPECT_TRUE(AreIdentical(assigned, full));
    const Record& self = assigned;
    assigned = self;
    EXPECT_TRUE(AreIdentical(assigned, full));

    Record moved(std::move(assigned));
    EXPECT_TRUE(AreIdentical(moved, full));
    Record moveAssigned;
    EXPECT_EQ(&(moveAssigned = std::move(moved)), &moveAssigned);
    EXPECT_TRUE(AreIdentical(moveAssigned, full));
}

/// The class is what the interface promises: no base, one virtual function, the destructor.
template <class Record>
void ExpectPlainRecord() {
    EXPECT_TRUE(std::is_polymorphic_v<Record>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Record>);
    EXPECT_TRUE(HasNoBase<Record>());
    EXPECT_EQ(VirtualFunctionCount<Record>(), ONLY_A_DESTRUCTOR);
}

TEST(LayoutRecords, HaveNoBaseAndOnlyAVirtualDestructor) {
    ExpectPlainRecord<CDrive>();
    ExpectPlainRecord<CContainer>();
    ExpectPlainRecord<CLogicalDrive>();
    ExpectPlainRecord<CArray>();
    ExpectPlainRecord<CLevel>();
    ExpectPlainRecord<CPartition>();
    ExpectPlainRecord<CMigration>();
}

// --- CDrive

TEST(Drive, FieldsStandInTheirOrderAndWidth) {
    const CDrive drive;
    FieldsOf(drive)
        .Then<std::uint64_t>(&CDrive::m_ObjectID)
        .Then<std::uint64_t>(&CDrive::m_StartAddress)
        .Then<std::uint64_t>(&CDrive::m_UsedSize)
        .Then<std::vector<CProperty>>(&CDrive::m_Properties)
        .Then<std::uint64_t>(&CDrive::m_LogicalDrive)
        .Then<std::uint64_t>(&CDrive::m_LogicalOwner)
        .Then<bool>(&CDrive::m_IsConfigurable)
        .End();
}

TEST(Drive, Defaults) {
    const CDrive drive;
    EXPECT_EQ(drive.m_ObjectID, 0U);
    EXPECT_EQ(drive.m_StartAddress, 0U);
    EXPECT_EQ(drive.m_UsedSize, 0U);
    EXPECT_TRUE(drive.m_Properties.empty());
    EXPECT_EQ(drive.m_LogicalDrive, 0U);
    EXPECT_EQ(drive.m_LogicalOwner, 0U);
    EXPECT_TRUE(drive.m_IsConfigurable);
}

TEST(Drive, CopiesAndMovesCarryEveryField) {
    ExpectCopiesAndMovesCarryEveryField(FullDrive());
}

TEST(Drive, IsIdentifiedByDriveAndStartAddressAlone) {
    ExpectCompared<CDrive>(FullDrive(), {
                                            {"m_ObjectID", [](CDrive& d) { ++d.m_ObjectID; }},
                                            {"m_StartAddress", [](CDrive& d) { ++d.m_StartAddress; }},
                                        });
    ExpectNotCompared<CDrive>(
        FullDrive(), {
                         {"m_UsedSize", [](CDrive& d) { ++d.m_UsedSize; }},
                         {"m_Properties", [](CDrive& d) { d.m_Properties.clear(); }},
                         {"m_LogicalDrive", [](CDrive& d) { ++d.m_LogicalDrive; }},
                         {"m_LogicalOwner", [](CDrive& d) { ++d.m_LogicalOwner; }},
                         {"m_IsConfigurable", [](CDrive& d) { d.m_IsConfigurable = !d.m_IsConfigurable; }},
                     });
}

TEST(Drive, APropertyWithoutValueDoesNotMakeItUnequal) {
    CDrive drive = Drive(1, 2);
    drive.m_Properties.emplace_back();
    EXPECT_TRUE(drive == drive);
}

TEST(Drive, OrdersByDriveThenByStartAddress) {
    const CDrive drives[] = {Drive(0, ALL_ONES), Drive(1, 0), Drive(1, 1), Drive(1, ALL_ONES), Drive(2, 0)};
    for (std::size_t i = 0; i < std::size(drives); ++i) {
        for (std::size_t j = 0; j < std::size(drives); ++j) {
            EXPECT_EQ(drives[i] < drives[j], i < j) << i << " " << j;
            EXPECT_EQ(drives[i] == drives[j], i == j) << i << " " << j;
        }
    }
}

TEST(Drive, OrderIsUnsigned) {
    EXPECT_TRUE(Drive(1, 0) < Drive(0x8000000000000000, 0));
    EXPECT_FALSE(Drive(0x8000000000000000, 0) < Drive(1, 0));
    EXPECT_TRUE(Drive(1, 0x7FFFFFFFFFFFFFFF) < Drive(1, 0x8000000000000000));
    EXPECT_FALSE(Drive(1, ALL_ONES) < Drive(1, 0));
}

TEST(Drive, OrderIgnoresWhatEqualityIgnores) {
    CDrive bigger = Drive(1, 2);
    bigger.m_UsedSize = 100;
    bigger.m_IsConfigurable = false;
    EXPECT_FALSE(Drive(1, 2) < bigger);
    EXPECT_FALSE(bigger < Drive(1, 2));
    EXPECT_TRUE(Drive(1, 2) == bigger);
}

TEST(Drive, SortingOrdersByDriveThenByStartAddress) {
    std::vector<CDrive> drives = {Drive(2, 1), Drive(1, 9), FullDrive(), Drive(2, 0), Drive(0, 50)};
    std::sort(drives.begin(), drives.end());
    EXPECT_EQ(drives,
              (std::vector<CDrive>{Drive(0, 50), Drive(1, 2), Drive(1, 9), Drive(2, 0), Drive(2, 1)}));
    EXPECT_TRUE(AreIdentical(drives[1], FullDrive())) << "sorting carries every field";
}

// --- CContainer

TEST(Container, HoldsNothingButDrives) {
    const CContainer container;
    FieldsOf(container).Then<std::vector<CDrive>>(&CContainer::m_Drives).End();
    EXPECT_TRUE(container.m_Drives.empty());
}

TEST(Container, CopiesAndMovesCarryEveryDrive) {
    ExpectCopiesAndMovesCarryEveryField(FullContainer());
}

TEST(Container, ComparesIdentifiersAndStartAddressesOfItsDrives) {
    ExpectCompared<CContainer>(FullContainer(),
                               {
                                   {"identifier", [](CContainer& c) { ++c.m_Drives[0].m_ObjectID; }},
                                   {"start address", [](CContainer& c) { ++c.m_Drives[1].m_StartAddress; }},
                                   {"one less", [](CContainer& c) { c.m_Drives.pop_back(); }},
                                   {"one more", [](CContainer& c) { c.m_Drives.emplace_back(); }},
                                   {"none", [](CContainer& c) { c.m_Drives.clear(); }},
                               });
    ExpectNotCompared<CContainer>(
        FullContainer(), {
                             {"used size", [](CContainer& c) { ++c.m_Drives[0].m_UsedSize; }},
                             {"properties", [](CContainer& c) { c.m_Drives[0].m_Properties.clear(); }},
                             {"configurable", [](CContainer& c) { c.m_Drives[0].m_IsConfigurable = true; }},
                         });
}

TEST(Container, DrivesInAnotherOrderAreUnequal) {
    CContainer reversed = FullContainer();
    std::reverse(reversed.m_Drives.begin(), reversed.m_Drives.end());
    EXPECT_FALSE(reversed == FullContainer());
}

TEST(Container, EmptyOnesAreEqual) {
    EXPECT_TRUE(CContainer() == CContainer());
}

// --- CLogicalDrive

TEST(LogicalDrive, FieldsStandInTheirOrderAndWidth) {
    const CLogicalDrive logicalDrive;
    FieldsOf(logicalDrive)
        .Then<std::uint32_t>(&CLogicalDrive::m_ID)
        .Then<std::vector<CProperty>>(&CLogicalDrive::m_Properties)
        .Then<std::uint32_t>(&CLogicalDrive::m_Value1)
        .Then<std::int32_t>(&CLogicalDrive::m_Value2)
        .Then<std::uint64_t>(&CLogicalDrive::m_Size)
        .Then<_UNITS>(&CLogicalDrive::m_Units)
        .Then<std::uint64_t>(&CLogicalDrive::m_SpanCount)
        .Then<std::uint64_t>(&CLogicalDrive::m_SpanSize)
        .Then<std::uint32_t>(&CLogicalDrive::m_Value3)
        .Then<std::uint64_t>(&CLogicalDrive::m_Value4)
        .Then<std::vector<CContainer>>(&CLogicalDrive::m_Containers)
        .Then<std::vector<std::uint64_t>>(&CLogicalDrive::m_GlobalHotSpares)
        .Then<std::vector<std::uint64_t>>(&CLogicalDrive::m_DedicatedHotSpares)
        .Then<std::vector<std::uint64_t>>(&CLogicalDrive::m_AssociatedLogicalDrives)
        .End();
    EXPECT_EQ(sizeof(_UNITS), 4U);
}

TEST(LogicalDrive, Defaults) {
    const CLogicalDrive logicalDrive;
    EXPECT_EQ(logicalDrive.m_ID, 0U);
    EXPECT_TRUE(logicalDrive.m_Properties.empty());
    EXPECT_EQ(logicalDrive.m_Value1, 0U);
    EXPECT_EQ(logicalDrive.m_Value2, -1);
    EXPECT_EQ(logicalDrive.m_Size, 0U);
    EXPECT_EQ(logicalDrive.m_Units, 21006);
    EXPECT_EQ(logicalDrive.m_SpanCount, 0U);
    EXPECT_EQ(logicalDrive.m_SpanSize, 0U);
    EXPECT_EQ(logicalDrive.m_Value3, 1U);
    EXPECT_EQ(logicalDrive.m_Value4, ALL_ONES);
    EXPECT_TRUE(logicalDrive.m_Containers.empty());
    EXPECT_TRUE(logicalDrive.m_GlobalHotSpares.empty());
    EXPECT_TRUE(logicalDrive.m_DedicatedHotSpares.empty());
    EXPECT_TRUE(logicalDrive.m_AssociatedLogicalDrives.empty());
}

TEST(LogicalDrive, CopiesAndMovesCarryEveryField) {
    ExpectCopiesAndMovesCarryEveryField(FullLogicalDrive());
}

TEST(LogicalDrive, ComparesAllButValue2HotSparesAndAssociations) {
    using T = CLogicalDrive;
    ExpectCompared<T>(FullLogicalDrive(),
                      {
                          {"m_ID", [](T& l) { ++l.m_ID; }},
                          {"m_Properties", [](T& l) { l.m_Properties[0].SetValue("other"); }},
                          {"m_Properties, one less", [](T& l) { l.m_Properties.clear(); }},
                          {"m_Value1", [](T& l) { ++l.m_Value1; }},
                          {"m_Size", [](T& l) { ++l.m_Size; }},
                          {"m_Units", [](T& l) { l.m_Units = Units::UNSPECIFIED; }},
                          {"m_SpanCount", [](T& l) { ++l.m_SpanCount; }},
                          {"m_SpanSize", [](T& l) { ++l.m_SpanSize; }},
                          {"m_Value3", [](T& l) { ++l.m_Value3; }},
                          {"m_Value4", [](T& l) { ++l.m_Value4; }},
                          {"m_Containers", [](T& l) { ++l.m_Containers[0].m_Drives[0].m_ObjectID; }},
                          {"m_Containers, one more", [](T& l) { l.m_Containers.emplace_back(); }},
                      });
    ExpectNotCompared<T>(
        FullLogicalDrive(),
        {
            {"m_Value2", [](T& l) { ++l.m_Value2; }},
            {"m_GlobalHotSpares", [](T& l) { l.m_GlobalHotSpares.push_back(1); }},
            {"m_DedicatedHotSpares", [](T& l) { l.m_DedicatedHotSpares.clear(); }},
            {"m_AssociatedLogicalDrives", [](T& l) { l.m_AssociatedLogicalDrives[0] = 99; }},
            {"used size of a drive", [](T& l) { ++l.m_Containers[0].m_Drives[0].m_UsedSize; }},
        });
}

TEST(LogicalDrive, DefaultOnesAreEqual) {
    EXPECT_TRUE(CLogicalDrive() == CLogicalDrive());
}

TEST(LogicalDrive, WithAPropertyWithoutValueIsNotEvenEqualToItself) {
    CLogicalDrive logicalDrive;
    logicalDrive.m_Properties.emplace_back();
    EXPECT_FALSE(logicalDrive == logicalDrive);
}

// --- CArray

TEST(Array, FieldsStandInTheirOrderAndWidth) {
    const CArray array;
    FieldsOf(array)
        .Then<std::vector<CProperty>>(&CArray::m_Properties)
        .Then<std::uint32_t>(&CArray::m_Value1)
        .Then<std::uint64_t>(&CArray::m_Size)
        .Then<_UNITS>(&CArray::m_Units)
        .Then<std::vector<CContainer>>(&CArray::m_Containers)
        .Then<std::vector<std::uint64_t>>(&CArray::m_LogicalDrives)
        .End();
}

TEST(Array, Defaults) {
    const CArray array;
    EXPECT_TRUE(array.m_Properties.empty());
    EXPECT_EQ(array.m_Value1, 0U);
    EXPECT_EQ(array.m_Size, 0U);
    EXPECT_EQ(array.m_Units, 21006);
    EXPECT_TRUE(array.m_Containers.empty());
    EXPECT_TRUE(array.m_LogicalDrives.empty());
}

TEST(Array, CopiesAndMovesCarryEveryField) {
    ExpectCopiesAndMovesCarryEveryField(FullArray());
}

TEST(Array, ComparesEveryField) {
    ExpectCompared<CArray>(
        FullArray(), {
                         {"m_Properties", [](CArray& a) { a.m_Properties[0].SetValue("other"); }},
                         {"m_Value1", [](CArray& a) { ++a.m_Value1; }},
                         {"m_Size", [](CArray& a) { ++a.m_Size; }},
                         {"m_Units", [](CArray& a) { a.m_Units = Units::UNSPECIFIED; }},
                         {"m_Containers", [](CArray& a) { a.m_Containers[0].m_Drives.pop_back(); }},
                         {"m_LogicalDrives", [](CArray& a) { ++a.m_LogicalDrives[1]; }},
                         {"m_LogicalDrives, one more", [](CArray& a) { a.m_LogicalDrives.push_back(0); }},
                     });
    EXPECT_TRUE(CArray() == CArray());
}

TEST(Array, TheDrivesOfItsContainersKeepTheirOmissions) {
    ExpectNotCompared<CArray>(FullArray(),
                              {{"used size", [](CArray& a) { ++a.m_Containers[0].m_Drives[0].m_UsedSize; }}});
}

// --- CLevel

TEST(Level, FieldsStandInTheirOrderAndWidth) {
    const CLevel level;
    FieldsOf(level)
        .Then<std::uint32_t>(&CLevel::m_Value1)
        .Then<std::vector<std::int32_t>>(&CLevel::m_Values)
        .Then<std::uint32_t>(&CLevel::m_Value2)
        .Then<std::vector<CProperty>>(&CLevel::m_Properties)
        .Then<std::uint64_t>(&CLevel::m_Value3)
        .Then<std::uint64_t>(&CLevel::m_Value4)
        .Then<std::uint64_t>(&CLevel::m_Value5)
        .Then<std::uint64_t>(&CLevel::m_Value6)
        .Then<_UNITS>(&CLevel::m_Units)
        .Then<std::uint32_t>(&CLevel::m_Value7)
        .Then<std::uint32_t>(&CLevel::m_Value8)
        .Then<bool>(&CLevel::m_Flag)
        .Then<std::uint32_t>(&CLevel::m_Value9)
        .End();
}

TEST(Level, Defaults) {
    const CLevel level;
    EXPECT_EQ(level.m_Value1, 0U);
    EXPECT_TRUE(level.m_Values.empty());
    EXPECT_EQ(level.m_Value2, 0U);
    EXPECT_TRUE(level.m_Properties.empty());
    EXPECT_EQ(level.m_Value3, 0U);
    EXPECT_EQ(level.m_Value4, 0U);
    EXPECT_EQ(level.m_Value5, 0U);
    EXPECT_EQ(level.m_Value6, 0U);
    EXPECT_EQ(level.m_Units, 21006);
    EXPECT_EQ(level.m_Value7, 0U);
    EXPECT_EQ(level.m_Value8, 0U);
    EXPECT_TRUE(level.m_Flag);
    EXPECT_EQ(level.m_Value9, 0U);
}

TEST(Level, CopiesAndMovesCarryEveryField) {
    ExpectCopiesAndMovesCarryEveryField(FullLevel());
}

TEST(Level, ComparesEveryField) {
    ExpectCompared<CLevel>(FullLevel(), {
                                            {"m_Value1", [](CLevel& l) { ++l.m_Value1; }},
                                            {"m_Values", [](CLevel& l) { l.m_Values[1] = 3; }},
                                            {"m_Values, one less", [](CLevel& l) { l.m_Values.pop_back(); }},
                                            {"m_Value2", [](CLevel& l) { ++l.m_Value2; }},
                                            {"m_Properties", [](CLevel& l) { l.m_Properties.clear(); }},
                                            {"m_Value3", [](CLevel& l) { ++l.m_Value3; }},
                                            {"m_Value4", [](CLevel& l) { ++l.m_Value4; }},
                                            {"m_Value5", [](CLevel& l) { ++l.m_Value5; }},
                                            {"m_Value6", [](CLevel& l) { ++l.m_Value6; }},
                                            {"m_Units", [](CLevel& l) { l.m_Units = Units::UNSPECIFIED; }},
                                            {"m_Value7", [](CLevel& l) { ++l.m_Value7; }},
                                            {"m_Value8", [](CLevel& l) { ++l.m_Value8; }},
                                            {"m_Flag", [](CLevel& l) { l.m_Flag = !l.m_Flag; }},
                                            {"m_Value9", [](CLevel& l) { ++l.m_Value9; }},
                                        });
    EXPECT_TRUE(CLevel() == CLevel());
}

// --- CPartition

TEST(Partition, FieldsStandInTheirOrderAndWidth) {
    const CPartition partition;
    FieldsOf(partition)
        .Then<std::uint64_t>(&CPartition::m_Value1)
        .Then<std::uint64_t>(&CPartition::m_Value2)
        .Then<std::uint32_t>(&CPartition::m_Value3)
        .Then<std::string>(&CPartition::m_Text1)
        .Then<std::string>(&CPartition::m_Text2)
        .End();
}

TEST(Partition, Defaults) {
    const CPartition partition;
    EXPECT_EQ(partition.m_Value1, 0U);
    EXPECT_EQ(partition.m_Value2, 0U);
    EXPECT_EQ(partition.m_Value3, 1U);
    EXPECT_EQ(partition.m_Text1, "");
    EXPECT_EQ(partition.m_Text2, "");
}

TEST(Partition, CopiesAndMovesCarryEveryField) {
    ExpectCopiesAndMovesCarryEveryField(FullPartition());
}

TEST(Partition, ComparesEveryField) {
    ExpectCompared<CPartition>(FullPartition(), {
                                                    {"m_Value1", [](CPartition& p) { ++p.m_Value1; }},
                                                    {"m_Value2", [](CPartition& p) { ++p.m_Value2; }},
                                                    {"m_Value3", [](CPartition& p) { ++p.m_Value3; }},
                                                    {"m_Text1", [](CPartition& p) { p.m_Text1 += "x"; }},
                                                    {"m_Text2", [](CPartition& p) { p.m_Text2 += "x"; }},
                                                });
    EXPECT_TRUE(CPartition() == CPartition());
}

// --- CMigration

TEST(Migration, FieldsStandInTheirOrderAndWidth) {
    const CMigration migration;
    FieldsOf(migration)
        .Then<std::uint64_t>(&CMigration::m_Value1)
        .Then<std::uint32_t>(&CMigration::m_Value2)
        .Then<std::vector<CProperty>>(&CMigration::m_Properties)
        .End();
}

TEST(Migration, Defaults) {
    const CMigration migration;
    EXPECT_EQ(migration.m_Value1, 0U);
    EXPECT_EQ(migration.m_Value2, 0U);
    EXPECT_TRUE(migration.m_Properties.empty());
}

TEST(Migration, CopiesAndMovesCarryEveryField) {
    ExpectCopiesAndMovesCarryEveryField(FullMigration());
}

TEST(Migration, ComparesEveryField) {
    ExpectCompared<CMigration>(
        FullMigration(), {
                             {"m_Value1", [](CMigration& m) { ++m.m_Value1; }},
                             {"m_Value2", [](CMigration& m) { ++m.m_Value2; }},
                             {"m_Properties", [](CMigration& m) { m.m_Properties[0].SetValue("other"); }},
                         });
    EXPECT_TRUE(CMigration() == CMigration());
}

// --- All records

TEST(LayoutRecords, CopiesAreDeep) {
    const CLogicalDrive source = FullLogicalDrive();
    CLogicalDrive copy(source);
    copy.m_Containers[0].m_Drives[0].m_Properties[0].SetValue("changed");
    copy.m_Containers[0].m_Drives[0].m_UsedSize = 99;
    copy.m_GlobalHotSpares[0] = 99;
    EXPECT_TRUE(AreIdentical(source, FullLogicalDrive()));
}

TEST(LayoutRecords, ACopyOutlivesItsSource) {
    CArray copy;
    {
        const CArray source = FullArray();
        copy = source;
    }
    EXPECT_TRUE(AreIdentical(copy, FullArray()));
}

TEST(LayoutRecords, MovesTakeTheListsOver) {
    CLogicalDrive source = FullLogicalDrive();
    const CContainer* containers = source.m_Containers.data();
    const std::uint64_t* spares = source.m_GlobalHotSpares.data();
    const CLogicalDrive moved(std::move(source));
    EXPECT_EQ(moved.m_Containers.data(), containers);
    EXPECT_EQ(moved.m_GlobalHotSpares.data(), spares);
}

}  // namespace
