// SPDX-License-Identifier: Apache-2.0
/// @file
/// Scheduled and running tasks.
#pragma once

#include <pi/object.h>

#include <cstdint>
#include <string>

#include <pi/vocabulary/undefine_macros.h>

namespace PI {

/// @addtogroup tasks
/// @{

/// A scheduled or running task: an object of type ObjectType::TASK with fields of its own.
///
/// The meaning of the texts, values and the flag is up to the plug-ins and the service. Threads as for
/// CObject.
class PI_API CTask : public CObject {
public:
    /// Takes the next unique identifier and the current time.
    CTask();
    /// @{
    /// Copies and moves take every field; otherwise as those of CObject.
    CTask(const CTask& source);
    CTask(CTask&& source) noexcept;
    CTask& operator=(const CTask& source);
    CTask& operator=(CTask&& source) noexcept;
    /// @}
    ~CTask() override;

    /// Compares every field, including those of CObject.
    bool operator==(const CTask& other) const;

    /// @{
    /// Its meaning is up to the plug-ins and the service.
    std::string m_TaskText1;
    std::string m_TaskText2;
    std::string m_TaskText3;
    std::uint64_t m_TaskValue1 = 0;
    std::uint32_t m_TaskValue2 = 0;
    /// @}
    std::uint64_t m_CreationTime;  ///< VELK::now() when the task was created
    /// @{
    /// As m_TaskText1.
    std::uint64_t m_TaskValue3 = 0;
    std::uint64_t m_TaskValue4 = 0xFFFFFFFFFFFFFFFF;
    std::uint64_t m_TaskValue5 = 0;
    std::uint32_t m_TaskValue6 = 0;
    std::uint32_t m_TaskValue7 = 0;
    bool m_TaskFlag = false;
    /// @}
    std::uint64_t m_TaskStatus = PropertyValue::OK;  ///< a property value
};

/// @}

}  // namespace PI

#include <pi/vocabulary/restore_macros.h>
