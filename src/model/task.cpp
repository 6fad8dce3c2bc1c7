// SPDX-License-Identifier: Apache-2.0

#include <pi/task.h>
#include <velk/clock.h>

namespace PI {

CTask::CTask() : m_CreationTime(VELK::now()) {
    m_ObjectType = ObjectType::TASK;
}

CTask::CTask(const CTask& source) = default;
CTask::CTask(CTask&& source) noexcept = default;
CTask& CTask::operator=(const CTask& source) = default;
CTask& CTask::operator=(CTask&& source) noexcept = default;
CTask::~CTask() = default;

bool CTask::operator==(const CTask& other) const {
    return m_TaskValue1 == other.m_TaskValue1 && m_TaskValue2 == other.m_TaskValue2 &&
           m_TaskText1 == other.m_TaskText1 && m_TaskText2 == other.m_TaskText2 &&
           m_TaskText3 == other.m_TaskText3 && m_CreationTime == other.m_CreationTime &&
           m_TaskValue3 == other.m_TaskValue3 && m_TaskValue4 == other.m_TaskValue4 &&
           m_TaskValue5 == other.m_TaskValue5 && m_TaskValue6 == other.m_TaskValue6 &&
           m_TaskValue7 == other.m_TaskValue7 && m_TaskFlag == other.m_TaskFlag &&
           m_TaskStatus == other.m_TaskStatus && CObject::operator==(other);
}

}  // namespace PI
