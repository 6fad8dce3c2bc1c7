#include <pi/object.h>

namespace PI {

COperation::COperation() = default;
COperation::COperation(const COperation& source) = default;
COperation::COperation(COperation&& source) noexcept = default;
COperation& COperation::operator=(const COperation& source) = default;
COperation& COperation::operator=(COperation&& source) noexcept = default;
COperation::~COperation() = default;

bool COperation::operator==(const COperation& other) const {
    return m_Header1 == other.m_Header1 && m_Header2 == other.m_Header2 && m_Header3 == other.m_Header3 &&
           m_Properties == other.m_Properties && m_LogicalDriveList == other.m_LogicalDriveList &&
           m_DriveList == other.m_DriveList && m_LevelList == other.m_LevelList &&
           m_MigrationList == other.m_MigrationList && m_EventList == other.m_EventList &&
           m_PartitionList == other.m_PartitionList && m_ObjectList == other.m_ObjectList &&
           m_Parameter1 == other.m_Parameter1 && m_Parameter2 == other.m_Parameter2 &&
           m_Parameter3 == other.m_Parameter3 && m_Parameter4 == other.m_Parameter4 &&
           m_Parameter5 == other.m_Parameter5 && m_Parameter6 == other.m_Parameter6 &&
           m_Parameter7 == other.m_Parameter7 && m_Parameter8 == other.m_Parameter8 &&
           m_OperationFlag == other.m_OperationFlag && m_Parameter9 == other.m_Parameter9;
}

}  // namespace PI
