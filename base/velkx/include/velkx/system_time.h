// SPDX-License-Identifier: Apache-2.0
/// @file
/// Calendar fields of a time stamp.
#pragma once

#include <cstdint>

namespace VELKX {

/// @addtogroup base
/// @{

/// A date and time of day.
struct _DATE {
    int m_Year;    ///< such as 2021
    int m_Month;   ///< 1 to 12
    int m_Day;     ///< 1 to 31
    int m_Hour;    ///< 0 to 23
    int m_Minute;  ///< 0 to 59
    int m_Second;  ///< 0 to 60, a leap second included
};

/// Turns time stamps into dates.
class __attribute__((visibility("default"))) CSystemTime {
public:
    /// Splits a time stamp into calendar fields of the local time zone (environment variable TZ).
    ///
    /// @param timeStamp milliseconds since 1970-01-01 00:00:00 UTC
    /// @param date      out
    /// Thread-safe as long as no thread changes the environment.
    static void GetDate(std::uint64_t timeStamp, VELKX::_DATE& date);
};

/// @}

}  // namespace VELKX
