// SPDX-License-Identifier: Apache-2.0
// The rules of the remaining lifetime, step by step, in arithmetic of a chosen width, to compare the
// library's with.
#pragma once

#include <algorithm>
#include <limits>
#include <ostream>

namespace PI::Test {

__extension__ using Wide = unsigned __int128;

constexpr unsigned long ALL_ONES = std::numeric_limits<unsigned long>::max();
constexpr unsigned long SPAN = 43829;

struct Lifetime {
    bool m_IsKnown;
    unsigned long m_Hours;
};

inline bool operator==(const Lifetime& left, const Lifetime& right) {
    return left.m_IsKnown == right.m_IsKnown && left.m_Hours == right.m_Hours;
}

inline std::ostream& operator<<(std::ostream& stream, const Lifetime& lifetime) {
    return stream << lifetime.m_IsKnown << ' ' << lifetime.m_Hours;
}

inline Lifetime Known(unsigned long hours) {
    return {true, hours};
}

inline Wide Wrap(Wide value, int bits) {
    return bits == 128 ? value : value & ((Wide(1) << bits) - 1);
}

inline unsigned long Clamped(Wide ceiling) {
    return static_cast<unsigned long>(std::min<Wide>(std::max<Wide>(ceiling, 1), SPAN));
}

/// @param bits width of the arithmetic
inline Lifetime ExpectedLifetime(unsigned long powerOnHours, unsigned long bytesWritten, unsigned percentUsed,
                                 unsigned long enduranceTB, int bits = 64) {
    const unsigned percent = percentUsed > 100 ? 100 : percentUsed;
    Wide hours = powerOnHours;
    Wide ceiling = 0;
    Wide remaining = 0;
    bool byRate = false;
    if (hours > SPAN) {
        if (percent > 0) {
            return Known(1);
        }
        hours = SPAN;
        byRate = true;
    } else {
        ceiling = SPAN - hours;
        if (percent > 0) {
            const Wide end = (4382900 - SPAN * percent) / 100;
            if (end < hours) {
                return Known(ceiling == 0 ? 1 : static_cast<unsigned long>(ceiling));
            }
            remaining = end - hours;
        } else if (hours == 0) {
            return {false, ALL_ONES};
        } else {
            byRate = true;
        }
    }
    if (byRate) {
        const Wide written = bytesWritten >> 20;
        const Wide endurance = Wrap(Wide(enduranceTB) << 20, bits);
        const Wide smaller = written < endurance ? written : endurance;
        if (smaller == 0) {
            return Known(Clamped(ceiling));
        }
        remaining = Wrap((endurance - smaller) * hours, bits) / smaller;
    }
    if (remaining < ceiling) {
        return Known(remaining == 0 ? 1 : static_cast<unsigned long>(remaining));
    }
    return Known(Clamped(ceiling));
}

}  // namespace PI::Test
