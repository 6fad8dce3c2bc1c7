// SPDX-License-Identifier: Apache-2.0
/// @file
/// The remaining lifetime of a solid-state drive, with what it rests on and what limits it.
#pragma once

#include <pi/types.h>

#include <cstdint>

namespace PI {

/// @addtogroup drives
/// @{

namespace LifetimeBasis {
/// What a remaining lifetime rests on.
enum _LIFETIME_BASIS : std::int32_t {
    NOTHING = 0,        ///< there is no estimate: a drive of 0 hours whose wear is 0 or unknown
    WEAR = 1,           ///< the wear in percent against the power-on hours
    BYTES_WRITTEN = 2,  ///< the amount written against the rated endurance
    AGE = 3,            ///< the power-on hours alone: wear, amount written or rating is 0 or unknown
};
}  // namespace LifetimeBasis
using LifetimeBasis::_LIFETIME_BASIS;

namespace LifetimeLimit {
/// What decides a remaining lifetime. Of several, the first that applies in the order of the list.
enum _LIFETIME_LIMIT : std::int32_t {
    NOTHING = 0,            ///< there is no estimate
    SERVICE_SPAN_OVER = 1,  ///< the span of five years is over: 1 hour is left
    WORN_OUT = 2,           ///< by its wear or its rating the drive is worn out; see CRemainingLifetime
    WORN_EARLY = 3,         ///< worn faster than aged: what is left of the span, which says little
    WEAR = 4,               ///< the wear leaves less than the span does
    RATE = 5,               ///< at the rate so far the rated amount is written before the span ends
    SERVICE_SPAN = 6,       ///< what is left of the span
};
}  // namespace LifetimeLimit
using LifetimeLimit::_LIFETIME_LIMIT;

/// How long a solid-state drive will serve, within a span of five years (43829 hours): the estimate of
/// CPluginHelper::ComputeRemainingLifeTime, with what it rests on and what limits it.
///
/// A value without hidden state: it may be copied, and read by several threads. Nothing here throws.
///
/// A drive that is worn out by its wear is given what is left of the span, one that is worn out by its rating
/// 1 hour. So where the limit is WORN_OUT or WORN_EARLY, show that rather than the hours.
class PI_API CRemainingLifetime {
public:
    /// Estimates.
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
    /// What the hours rest on.
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
