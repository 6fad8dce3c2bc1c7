// SPDX-License-Identifier: Apache-2.0
/// @file
/// The remaining lifetime of a solid-state drive, with its basis and what limits it.
#pragma once

#include <pi/types.h>

#include <cstdint>

namespace PI {

/// @addtogroup drives
/// @{

namespace LifetimeBasis {
/// What a remaining lifetime is based on.
enum _LIFETIME_BASIS : std::int32_t {
    NOTHING = 0,        ///< there is no estimate: a drive of 0 hours whose wear is 0 or unknown
    WEAR = 1,           ///< the wear in percent compared with the power-on hours
    BYTES_WRITTEN = 2,  ///< the amount written compared with the rated endurance
    AGE = 3,            ///< the power-on hours alone: wear, amount written or rating is 0 or unknown
};
}  // namespace LifetimeBasis
using LifetimeBasis::_LIFETIME_BASIS;

namespace LifetimeLimit {
/// What decides a remaining lifetime: the first in this list that applies.
enum _LIFETIME_LIMIT : std::int32_t {
    NOTHING = 0,            ///< there is no estimate
    SERVICE_SPAN_OVER = 1,  ///< the span of five years is over: 1 hour is left
    WORN_OUT = 2,           ///< the drive is worn out, by its wear or its rating; see CRemainingLifetime
    WORN_EARLY = 3,         ///< worn faster than aged: what is left of the span, which means little
    WEAR = 4,               ///< the wear leaves less than the span does
    RATE = 5,               ///< at the rate so far, the rated amount will be written before the span ends
    SERVICE_SPAN = 6,       ///< what is left of the span
};
}  // namespace LifetimeLimit
using LifetimeLimit::_LIFETIME_LIMIT;

/// How long a solid-state drive will serve, within a span of five years (43829 hours): the estimate of
/// CPluginHelper::ComputeRemainingLifeTime, with its basis and what limits it.
///
/// A value: copies are independent, and any number of threads may read one. Nothing here throws.
///
/// For a drive that is worn out by its wear, the hours are what is left of the span; for one that is worn out
/// by its rating, 1. So if the limit is WORN_OUT or WORN_EARLY, show that rather than the hours.
class PI_API CRemainingLifetime {
public:
    /// Makes the estimate.
    /// @param powerOnHours hours the drive has been powered
    /// @param bytesWritten bytes; 0 when unknown
    /// @param percentUsed  wear in percent; 0 when unknown, above 100 counts as 100
    /// @param enduranceTB  terabytes that may be written; 0 when unknown
    CRemainingLifetime(std::uint64_t powerOnHours, std::uint64_t bytesWritten, std::uint32_t percentUsed,
                       std::uint64_t enduranceTB);

    /// Whether there is an estimate.
    bool IsKnown() const;
    /// Hours left, 1 to 43829; all ones when there is no estimate.
    std::uint64_t GetHours() const;
    /// What the hours are based on.
    _LIFETIME_BASIS GetBasis() const;
    /// What decides the hours.
    _LIFETIME_LIMIT GetLimit() const;

private:
    std::uint64_t m_Hours;
    _LIFETIME_BASIS m_Basis = LifetimeBasis::NOTHING;
    _LIFETIME_LIMIT m_Limit = LifetimeLimit::NOTHING;
    [[maybe_unused]] std::uint64_t m_Reserved[2] = {};
};

/// @}

}  // namespace PI
