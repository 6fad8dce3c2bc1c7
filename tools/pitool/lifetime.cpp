// SPDX-License-Identifier: Apache-2.0

#include "lifetime.h"

#include <pi/plugin_helper.h>

#include <algorithm>

namespace pitool {
namespace {

Lifetime Without(std::string reason, bool applicable = true) {
    Lifetime lifetime;
    lifetime.m_RemainingHours = Unknown<unsigned long>(std::move(reason));
    lifetime.m_Applicable = applicable;
    return lifetime;
}

LifetimeBasis ChooseBasis(const DriveWear& wear) {
    const bool worn = wear.m_PercentUsed && *wear.m_PercentUsed > 0;
    if (!worn && wear.m_RatedTB && wear.m_BytesWritten) {
        return LifetimeBasis::RATED_ENDURANCE;
    }
    switch (wear.m_Origin) {
        case WearOrigin::SMART_ATTRIBUTE: return LifetimeBasis::WEAR_INDICATOR;
        case WearOrigin::DRIVE_STATISTICS: return LifetimeBasis::DRIVE_STATISTICS;
        case WearOrigin::NONE: break;
    }
    return LifetimeBasis::NONE;
}

/// Why there is nothing to go by.
std::string ReasonWithoutBasis(const DriveWear& wear) {
    // A drive that just does not report wear could still go by its rating; then that is what is missing.
    return !wear.m_RatedTB && wear.m_PercentUsed.m_Reason == NOT_REPORTED ? wear.m_RatedTB.m_Reason
                                                                          : wear.m_PercentUsed.m_Reason;
}

/// What the figure goes by, in words.
std::string SourceText(const DriveWear& wear, LifetimeBasis basis, unsigned long remaining) {
    std::string text = LifetimeBasisText(basis);
    if (basis != LifetimeBasis::RATED_ENDURANCE) {
        text += " (" + wear.m_PercentUsed.m_Source + ")";
    }
    const unsigned long hours = *wear.m_PowerOnHours;
    if (hours > SERVICE_SPAN_HOURS) {
        return text + "; past the service span of five years";
    }
    if (wear.m_PercentUsed && *wear.m_PercentUsed >= 100) {
        return text + "; worn out, only the service span of five years is left";
    }
    if (remaining == std::max(SERVICE_SPAN_HOURS - hours, 1UL)) {
        return text + "; limited by the service span of five years";
    }
    return text;
}

}  // namespace

const char* LifetimeBasisText(LifetimeBasis basis) {
    switch (basis) {
        case LifetimeBasis::RATED_ENDURANCE: return "rated endurance and bytes written";
        case LifetimeBasis::WEAR_INDICATOR: return "wear indicator";
        case LifetimeBasis::DRIVE_STATISTICS: return "drive's own statistics";
        case LifetimeBasis::NONE: break;
    }
    return "";
}

Lifetime EstimateLifetime(const DriveWear& wear, bool solidState) {
    if (!solidState) {
        return Without("rotating disk", false);
    }
    const LifetimeBasis basis = ChooseBasis(wear);
    if (basis == LifetimeBasis::NONE) {
        return Without(ReasonWithoutBasis(wear));
    }
    if (!wear.m_PowerOnHours) {
        return Without("power-on hours unknown: " + wear.m_PowerOnHours.m_Reason);
    }

    constexpr unsigned long WORN_OUT = 100;  // the estimate makes no difference above it
    const auto percentUsed =
        static_cast<unsigned int>(std::min(wear.m_PercentUsed.m_Value.value_or(0), WORN_OUT));
    unsigned long remaining = 0;
    if (!PI::CPluginHelper::ComputeRemainingLifeTime(*wear.m_PowerOnHours,
                                                     wear.m_BytesWritten.m_Value.value_or(0), percentUsed,
                                                     wear.m_RatedTB.m_Value.value_or(0), remaining)) {
        return Without("new drive");
    }
    Lifetime lifetime;
    lifetime.m_Basis = basis;
    lifetime.m_RemainingHours = Known(remaining, SourceText(wear, basis, remaining));
    return lifetime;
}

}  // namespace pitool
