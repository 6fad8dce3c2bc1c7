// SPDX-License-Identifier: Apache-2.0

#include <pi/object.h>

#include <tuple>
#include <utility>

namespace PI {

namespace {

// All fields but the objects, which may hold operations again.
template <class Operation>
auto Values(Operation& operation) {
    return std::tie(
        operation.m_Header1, operation.m_Header2, operation.m_Header3, operation.m_Properties,
        operation.m_LogicalDriveList, operation.m_DriveList, operation.m_LevelList, operation.m_MigrationList,
        operation.m_EventList, operation.m_PartitionList, operation.m_Parameter1, operation.m_Parameter2,
        operation.m_Parameter3, operation.m_Parameter4, operation.m_Parameter5, operation.m_Parameter6,
        operation.m_Parameter7, operation.m_Parameter8, operation.m_OperationFlag, operation.m_Parameter9);
}

}  // namespace

COperation::COperation() = default;
COperation::COperation(const COperation& source) = default;
COperation::COperation(COperation&& source) noexcept = default;

// The source of an assignment may be somewhere below the target, so the old objects go last.
COperation& COperation::operator=(const COperation& source) {
    std::vector<CObject> objects = source.m_ObjectList;
    Values(*this) = Values(source);
    m_ObjectList.swap(objects);
    return *this;
}

COperation& COperation::operator=(COperation&& source) noexcept {
    COperation taken(std::move(source));
    auto values = Values(*this);
    auto takenValues = Values(taken);
    values.swap(takenValues);
    m_ObjectList.swap(taken.m_ObjectList);
    return *this;
}

COperation::~COperation() = default;

bool COperation::operator==(const COperation& other) const {
    return Values(*this) == Values(other) && m_ObjectList == other.m_ObjectList;
}

}  // namespace PI
