// SPDX-License-Identifier: Apache-2.0
/// @file
/// The health of a drive, and what follows from it, decided once.
#pragma once

#include <pi/drive_health.h>
#include <pi/remaining_lifetime.h>
#include <pi/types.h>
#include <pi/wear_forecast.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace PI {

/// @addtogroup health
/// @{

namespace MediumBasis {
/// What the medium of a drive is known from. Of several, the first in the order of this list; NOTHING comes
/// last.
enum _MEDIUM_BASIS : std::int32_t {
    NOTHING = 0,   ///< nothing: counts as a disk, since disks from before 2008 do not report that they rotate
    REPORTED = 1,  ///< CDriveHealth::SetMedium
    PROTOCOL = 2,  ///< NVMe: counts as a solid-state drive
    LISTED = 3,    ///< a model in the lists of rated endurance: counts as a solid-state drive
    WEAR = 4,      ///< the drive reports its wear: counts as a solid-state drive
};
}  // namespace MediumBasis
using MediumBasis::_MEDIUM_BASIS;

/// Everything that CDriveHealth says about a drive, decided in one pass, and what follows from several
/// figures. Use it for more than one figure or reason: each function of CDriveHealth decides again.
///
/// A value that never changes: copies share it, and any number of threads may read it. A moved-from object
/// may only be assigned to or destroyed. Since 1.1.0.
class PI_API CHealthAssessment {
public:
    /// Decides. Later changes of the health do not reach the assessment.
    /// @throws std::bad_alloc if allocation fails
    explicit CHealthAssessment(const CDriveHealth& health);

    /// As CDriveHealth::GetFigure.
    CHealthFigure GetFigure(_HEALTH_FIGURE figure) const noexcept;
    /// As CDriveHealth::GetFigures; valid as long as the assessment.
    const std::vector<CHealthFigure>& GetFigures() const noexcept;
    /// As CDriveHealth::GetState.
    _DRIVE_STATE GetState() const noexcept;
    /// As CDriveHealth::GetReasons; valid as long as the assessment.
    const std::vector<CHealthReason>& GetReasons() const noexcept;

    /// PropertyValue::SSD or HDD, which is a guess where GetMediumBasis is NOTHING.
    int GetMedium() const noexcept;
    /// What GetMedium rests on.
    _MEDIUM_BASIS GetMediumBasis() const noexcept;

    /// The estimate from the drive's figures. There is one for a solid-state drive whose hours are known, and
    /// either its wear, or its rated endurance and the bytes written. A doubtful wear counts as unknown;
    /// other doubtful figures are used as they are (judgement).
    /// @return one whose IsKnown() is false where there is none
    CRemainingLifetime GetLifetime() const noexcept;
    /// Why there is no estimate, or why it is doubtful, with the figure. One line without a full stop, in
    /// English; empty if the estimate is not doubtful.
    /// @throws std::bad_alloc if allocation fails
    std::string GetLifetimeReason() const;

    /// A reading for CWearForecast: hours, wear and bytes written as far as they are known, without doubtful
    /// ones. The caller adds date and firmware.
    CWearReading GetReading() const;

private:
    struct CDecisions;
    std::shared_ptr<const CDecisions> m_Decisions;
};

/// @}

}  // namespace PI
