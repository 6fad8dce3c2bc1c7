// SPDX-License-Identifier: Apache-2.0
/// @file
/// Managed objects and the operations offered on them.
///
/// An object holds operations, and an operation may hold objects, so both are in this header. Both are
/// values: copies are deep, nothing is shared, the caller serialises access to one of them. If allocation
/// fails, std::bad_alloc is thrown; an assignment then leaves part of the old and part of the new value:
/// assign again.
#pragma once

#include <pi/event.h>
#include <pi/layout.h>
#include <pi/property.h>
#include <pi/types.h>

#include <cstdint>
#include <vector>

namespace PI {

/// @addtogroup objects
/// @{

class COperation;

/// What a plug-in reports to the service: an adapter, a drive, a logical drive, a battery.
///
/// Threads: any number of threads may create objects at once, and copy the same one; each new object has a
/// unique identifier.
class PI_API CObject {
public:
    /// Takes the next unique identifier.
    CObject();
    /// As CObject(), with an identifier and a type.
    CObject(unsigned long id, _OBJECT_TYPE type);

    /// @{
    /// A copy is the same object: it has the same unique identifier. So does a moved one.
    CObject(const CObject& source);
    CObject(CObject&& source) noexcept;
    CObject& operator=(const CObject& source);
    CObject& operator=(CObject&& source) noexcept;
    /// @}
    virtual ~CObject();

    /// Compares every field, the unique identifier included: two objects made separately are different
    /// whatever they hold.
    bool operator==(const CObject& other) const;

    /// The unique identifier that the next new object takes; 0 when the library is loaded. A new object takes
    /// it atomically; read and set it directly only while no other thread creates objects.
    static std::uint64_t m_UniqueIDCounter;

    std::uint64_t m_ObjectID = 0;                       ///< identifier, up to the plug-in
    _OBJECT_TYPE m_ObjectType = ObjectType::UNDEFINED;  ///< adapter, task, or a type of the plug-in's own
    /// @{
    /// Its meaning is up to the plug-in and the service.
    std::vector<std::uint64_t> m_RelatedIDs1;
    std::vector<std::uint64_t> m_RelatedIDs2;
    std::uint64_t m_ObjectValue = 0;
    bool m_ObjectFlag = false;
    /// @}
    std::vector<CProperty> m_Properties;   ///< the properties of the object
    std::vector<COperation> m_Operations;  ///< the operations that it offers
    std::uint64_t m_UniqueID;              ///< taken from m_UniqueIDCounter
};

/// An operation that an object offers, or that is requested, with all its parameters.
///
/// The meaning of the headers, parameters and the flag is up to the plug-ins and the service.
class PI_API COperation {
public:
    /// An operation without parameters.
    COperation();
    /// @{
    /// Copies and moves take every field.
    COperation(const COperation& source);
    COperation(COperation&& source) noexcept;
    COperation& operator=(const COperation& source);
    COperation& operator=(COperation&& source) noexcept;
    /// @}
    virtual ~COperation();

    /// Compares every field; the elements of the lists by their own operator==, which may leave fields out.
    /// An operation that holds a property without a value is never equal, not even to itself.
    bool operator==(const COperation& other) const;

    /// @{
    /// Which operation this is and how it is shown; up to the plug-ins and the service.
    std::uint32_t m_Header1 = 1;
    std::uint32_t m_Header2 = 1;
    std::uint32_t m_Header3 = 1;
    /// @}
    /// @{
    /// Parameters of each kind, as many as the operation has.
    std::vector<CProperty> m_Properties;
    std::vector<CLogicalDrive> m_LogicalDriveList;
    std::vector<CDrive> m_DriveList;
    std::vector<CLevel> m_LevelList;
    std::vector<CMigration> m_MigrationList;
    std::vector<CEvent> m_EventList;
    std::vector<CPartition> m_PartitionList;
    std::vector<CObject> m_ObjectList;
    /// @}
    /// @{
    /// A single number or flag; up to the plug-ins and the service.
    std::uint32_t m_Parameter1 = 1;
    std::uint32_t m_Parameter2 = 1;
    std::uint32_t m_Parameter3 = 1;
    std::uint32_t m_Parameter4 = 1;
    std::uint32_t m_Parameter5 = 0xFFFFFFFF;
    std::uint32_t m_Parameter6 = 1;
    std::uint32_t m_Parameter7 = 1;
    std::uint32_t m_Parameter8 = 1;
    bool m_OperationFlag = false;
    std::uint32_t m_Parameter9 = 1;
    /// @}
};

/// @}

}  // namespace PI
