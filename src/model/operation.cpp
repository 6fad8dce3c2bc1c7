#include <pi/object.h>

#include <tuple>
#include <utility>

namespace PI {

namespace {

template <class Operation>
auto Fields(Operation& operation) {
    return std::tie(operation.m_Header1, operation.m_Header2, operation.m_Header3, operation.m_Properties,
                    operation.m_LogicalDriveList, operation.m_DriveList, operation.m_LevelList,
                    operation.m_MigrationList, operation.m_EventList, operation.m_PartitionList,
                    operation.m_ObjectList, operation.m_Parameter1, operation.m_Parameter2,
                    operation.m_Parameter3, operation.m_Parameter4, operation.m_Parameter5,
                    operation.m_Parameter6, operation.m_Parameter7, operation.m_Parameter8,
                    operation.m_OperationFlag, operation.m_Parameter9);
}

}  // namespace

COperation::COperation() = default;
COperation::COperation(const COperation& source) = default;
COperation::COperation(COperation&& source) noexcept = default;

// The source may stand somewhere below the target, whose old content therefore goes last.
COperation& COperation::operator=(const COperation& source) {
    return *this = COperation(source);
}

COperation& COperation::operator=(COperation&& source) noexcept {
    COperation taken(std::move(source));
    auto fields = Fields(*this);
    auto takenFields = Fields(taken);
    fields.swap(takenFields);
    return *this;
}

COperation::~COperation() = default;

bool COperation::operator==(const COperation& other) const {
    return Fields(*this) == Fields(other);
}

}  // namespace PI
