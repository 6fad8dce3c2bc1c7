// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>
#include <pi/remaining_lifetime.h>

#include <algorithm>
#include <limits>

namespace PI {

namespace {
constexpr std::uint64_t SERVICE_HOURS = 43829;  // five years
}

CRemainingLifetime::CRemainingLifetime(std::uint64_t powerOnHours, std::uint64_t bytesWritten,
                                       std::uint32_t percentUsed, std::uint64_t enduranceTB)
    : m_Hours(std::numeric_limits<std::uint64_t>::max()) {
    const std::uint64_t percent = std::min(percentUsed, 100U);
    const std::uint64_t hours = std::min(powerOnHours, SERVICE_HOURS);
    const std::uint64_t ceiling = SERVICE_HOURS - hours;

    std::uint64_t estimate = ceiling;
    if (percent > 0) {
        m_Basis = LifetimeBasis::WEAR;
        const std::uint64_t unwornHours = SERVICE_HOURS * (100 - percent) / 100;
        const bool early = unwornHours < hours;
        m_Limit = percent == 100 ? LifetimeLimit::WORN_OUT
                  : early        ? LifetimeLimit::WORN_EARLY
                                 : LifetimeLimit::WEAR;
        estimate = early ? ceiling : unwornHours - hours;
    } else {
        if (hours == 0) {
            return;
        }
        // Both in units of 2^20 bytes. Shifts and the product below wrap at 64 bits; the results are fixed.
        const std::uint64_t written = bytesWritten >> 20;
        const std::uint64_t endurance = enduranceTB << 20;
        const std::uint64_t worn = std::min(written, endurance);
        m_Basis = worn == 0 ? LifetimeBasis::AGE : LifetimeBasis::BYTES_WRITTEN;
        if (worn > 0) {
            estimate = (endurance - worn) * hours / worn;
            m_Limit = worn == endurance ? LifetimeLimit::WORN_OUT : LifetimeLimit::RATE;
        }
        if (estimate >= ceiling) {
            estimate = ceiling;
            m_Limit = LifetimeLimit::SERVICE_SPAN;
        }
    }
    if (ceiling == 0) {
        m_Limit = LifetimeLimit::SERVICE_SPAN_OVER;
    }
    m_Hours = std::max<std::uint64_t>(estimate, 1);
}

bool CRemainingLifetime::IsKnown() const {
    return m_Basis != LifetimeBasis::NOTHING;
}

std::uint64_t CRemainingLifetime::GetHours() const {
    return m_Hours;
}

_LIFETIME_BASIS CRemainingLifetime::GetBasis() const {
    return m_Basis;
}

_LIFETIME_LIMIT CRemainingLifetime::GetLimit() const {
    return m_Limit;
}

bool CPluginHelper::ComputeRemainingLifeTime(unsigned long powerOnHours, unsigned long bytesWritten,
                                             unsigned int percentUsed, unsigned long enduranceTB,
                                             unsigned long& remainingHours) {
    const CRemainingLifetime lifetime(powerOnHours, bytesWritten, percentUsed, enduranceTB);
    remainingHours = lifetime.GetHours();
    return lifetime.IsKnown();
}

}  // namespace PI
