// SPDX-License-Identifier: Apache-2.0
// What speaks against a drive.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "drives/health_figures.h"

namespace PI {

/// What a reason says of its figure; the detail of a CHealthReason.
enum class Statement : std::uint32_t {
    VALUE,      ///< the figure's value is enough
    FAILING,    ///< the drive's verdict
    WARNING,    ///< the drive's verdict is a warning
    SPARE_LOW,  ///< NVMe warning bits, one by one
    TOO_HOT,    ///< also: above its limit
    DEGRADED,
    READ_ONLY,
    NO_BACKUP,
    MEMORY_REGION,
    UNKNOWN_WARNING,
    ABOVE_CRITICAL,   ///< of its temperature
    PRE_FAILURE,      ///< attributes below threshold that announce a failure
    DOUBTFUL,         ///< a doubtful figure that may have reached a threshold
    NOTHING_AGAINST,  ///< all is well
    NO_VERDICT,       ///< nothing tells
};

/// A reason before it is made public.
struct Finding {
    _DRIVE_STATE m_State;
    _HEALTH_FIGURE m_Figure;
    Statement m_Statement;
};

/// Everything that speaks against a drive, the weightiest first; where nothing does, one finding that says
/// so.
struct Findings {
    static constexpr std::size_t MAX = 24;

    Finding m_List[MAX];
    std::size_t m_Count = 0;
};

Findings Judge(Decider& decider) noexcept;

/// The findings as reasons.
/// @throws std::bad_alloc
std::vector<CHealthReason> ReasonsOf(Decider& decider);

}  // namespace PI
