// SPDX-License-Identifier: Apache-2.0

#include "lifetime.h"

#include <pi/remaining_lifetime.h>

#include <algorithm>
#include <utility>

namespace pitool {
namespace {

Lifetime Without(std::string reason, bool applicable = true) {
    Lifetime lifetime;
    lifetime.m_RemainingHours = Unknown<unsigned long>(std::move(reason));
    lifetime.m_Applicable = applicable;
    return lifetime;
}

LifetimeBasis BasisOf(const PI::CRemainingLifetime& estimate, WearOrigin origin) {
    switch (estimate.GetBasis()) {
        case PI::LifetimeBasis::WEAR:
            return origin == WearOrigin::SMART_ATTRIBUTE ? LifetimeBasis::WEAR_INDICATOR
                                                         : LifetimeBasis::DRIVE_STATISTICS;
        case PI::LifetimeBasis::BYTES_WRITTEN: return LifetimeBasis::RATED_ENDURANCE;
        case PI::LifetimeBasis::AGE: return LifetimeBasis::POWER_ON_HOURS;
        case PI::LifetimeBasis::NOTHING: break;
    }
    return LifetimeBasis::NONE;
}

const char* LimitText(const PI::CRemainingLifetime& estimate) {
    switch (estimate.GetLimit()) {
        case PI::LifetimeLimit::SERVICE_SPAN_OVER: return "; the service span of five years is over";
        case PI::LifetimeLimit::WORN_OUT:
            return estimate.GetBasis() == PI::LifetimeBasis::WEAR
                       ? "; worn out, only the service span of five years is left"
                       : "; the rated amount is written";
        case PI::LifetimeLimit::WORN_EARLY:
            return "; worn faster than aged, only the service span of five years is left";
        case PI::LifetimeLimit::SERVICE_SPAN: return "; limited by the service span of five years";
        case PI::LifetimeLimit::WEAR:
        case PI::LifetimeLimit::RATE:
        case PI::LifetimeLimit::NOTHING: break;
    }
    return "";
}

/// Why there is nothing to go by.
std::string ReasonWithoutBasis(const DriveWear& wear) {
    // A drive that just does not report wear could still go by its rating; then that is what is missing.
    return !wear.m_RatedTB && wear.m_PercentUsed.m_Reason == NOT_REPORTED ? wear.m_RatedTB.m_Reason
                                                                          : wear.m_PercentUsed.m_Reason;
}

}  // namespace

const char* LifetimeBasisText(LifetimeBasis basis) {
    switch (basis) {
        case LifetimeBasis::RATED_ENDURANCE: return "rated endurance and bytes written";
        case LifetimeBasis::WEAR_INDICATOR: return "wear indicator";
        case LifetimeBasis::DRIVE_STATISTICS: return "drive's own statistics";
        case LifetimeBasis::POWER_ON_HOURS: return "power-on hours alone";
        case LifetimeBasis::NONE: break;
    }
    return "";
}

Lifetime EstimateLifetime(const DriveWear& wear, bool solidState) {
    if (!solidState) {
        return Without("rotating disk", false);
    }
    if (!wear.m_PercentUsed && !(wear.m_RatedTB && wear.m_BytesWritten)) {
        return Without(ReasonWithoutBasis(wear));
    }
    if (!wear.m_PowerOnHours) {
        return Without("power-on hours unknown: " + wear.m_PowerOnHours.m_Reason);
    }

    constexpr unsigned long WORN_OUT = 100;  // the estimate makes no difference above it
    const PI::CRemainingLifetime estimate(
        *wear.m_PowerOnHours, wear.m_BytesWritten.m_Value.value_or(0),
        static_cast<std::uint32_t>(std::min(wear.m_PercentUsed.m_Value.value_or(0), WORN_OUT)),
        wear.m_RatedTB.m_Value.value_or(0));
    if (!estimate.IsKnown()) {
        return Without("new drive");
    }
    Lifetime lifetime;
    lifetime.m_Basis = BasisOf(estimate, wear.m_Origin);
    std::string source = LifetimeBasisText(lifetime.m_Basis);
    if (estimate.GetBasis() == PI::LifetimeBasis::WEAR) {
        source += " (" + wear.m_PercentUsed.m_Source + ")";
    }
    lifetime.m_RemainingHours =
        Known<unsigned long>(estimate.GetHours(), std::move(source) + LimitText(estimate));
    return lifetime;
}

}  // namespace pitool
