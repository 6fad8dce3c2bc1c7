// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>

#include <algorithm>
#include <limits>

namespace PI {

namespace {
constexpr unsigned long SERVICE_HOURS = 43829;  // five years
}

bool CPluginHelper::ComputeRemainingLifeTime(unsigned long powerOnHours, unsigned long bytesWritten,
                                             unsigned int percentUsed, unsigned long enduranceTB,
                                             unsigned long& remainingHours) {
    remainingHours = std::numeric_limits<unsigned long>::max();
    const unsigned long percent = std::min(percentUsed, 100U);
    const unsigned long hours = std::min(powerOnHours, SERVICE_HOURS);
    const unsigned long ceiling = SERVICE_HOURS - hours;
    const unsigned long ceilingHours = std::max(ceiling, 1UL);

    unsigned long estimate = 0;
    if (percent > 0) {
        if (powerOnHours > SERVICE_HOURS) {
            remainingHours = 1;
            return true;
        }
        const unsigned long unwornHours = SERVICE_HOURS * (100 - percent) / 100;
        if (unwornHours < hours) {
            remainingHours = ceilingHours;
            return true;
        }
        estimate = unwornHours - hours;
    } else {
        if (hours == 0) {
            return false;
        }
        // Both in units of 2^20 bytes. Shifts and the product below wrap at 64 bits: this is meant.
        const unsigned long written = bytesWritten >> 20;
        const unsigned long endurance = enduranceTB << 20;
        const unsigned long worn = std::min(written, endurance);
        if (worn == 0) {
            remainingHours = ceilingHours;
            return true;
        }
        estimate = (endurance - worn) * hours / worn;
    }
    remainingHours = estimate < ceiling ? std::max(estimate, 1UL) : ceilingHours;
    return true;
}

}  // namespace PI
