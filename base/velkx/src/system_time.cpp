// SPDX-License-Identifier: Apache-2.0

#include <velkx/system_time.h>

#include <ctime>

namespace VELKX {

void CSystemTime::GetDate(std::uint64_t timeStamp, VELKX::_DATE& date) {
    const auto seconds = static_cast<std::time_t>(timeStamp / 1000);
    std::tm local = {};
    tzset();                        // localtime_r alone need not notice a changed TZ
    localtime_r(&seconds, &local);  // cannot fail: the largest time stamp falls into the year 584,556,019
    date = {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

}  // namespace VELKX
