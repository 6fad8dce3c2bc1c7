// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reports of smartctl: the text of a report in, drives out, or why there is none.
#pragma once

#include <pi/types.h>

#include <cstdint>
#include <memory>
#include <string>

namespace PI {

/// @addtogroup exchange
/// @{

/// Why a text, or one document of it, gives no drive. A value; any number of threads may read it.
class PI_API CReportRefusal {
public:
    /// @param reason for people, in English, one line without a full stop
    /// @param line   from 1; 0 when no place is known
    /// @param column in bytes, from 1; 0 when no place is known
    /// @throws std::bad_alloc if allocation fails
    explicit CReportRefusal(const std::string& reason, std::uint64_t line = 0, std::uint64_t column = 0);
    /// @{
    /// Copies throw std::bad_alloc if allocation fails. A moved-from object may only be assigned to or
    /// destroyed.
    CReportRefusal(const CReportRefusal& source);
    CReportRefusal(CReportRefusal&& source) noexcept;
    CReportRefusal& operator=(const CReportRefusal& source);
    CReportRefusal& operator=(CReportRefusal&& source) noexcept;
    /// @}
    ~CReportRefusal();

    const std::string& GetReason() const noexcept;  ///< valid until the object is assigned to or destroyed
    std::uint64_t GetLine() const noexcept;         ///< from 1; 0 when no place is known
    std::uint64_t GetColumn() const noexcept;       ///< in bytes, from 1; 0 when no place is known

private:
    struct CFacts;
    std::unique_ptr<CFacts> m_Facts;
};

/// @}

}  // namespace PI
