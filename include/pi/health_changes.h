// SPDX-License-Identifier: Apache-2.0
/// @file
/// What changed in the health of a drive, and whether it got worse.
#pragma once

#include <pi/drive_health.h>
#include <pi/health_assessment.h>
#include <pi/types.h>
#include <pi/wear_forecast.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace PI {

/// @addtogroup health
/// @{

/// What is worth keeping of an assessment: the state of the drive, and of every figure its value and state,
/// without sources and reasons. It takes some 200 bytes, less than a tenth of an assessment.
///
/// A value that never changes: copies share it, and any number of threads may read it. A moved-from object
/// may only be assigned to or destroyed. Since 1.1.0.
class PI_API CHealthSnapshot {
public:
    /// Not explicit: where snapshots are compared, assessments can be given.
    /// @throws std::bad_alloc if allocation fails
    CHealthSnapshot(const CHealthAssessment& health);

    _DRIVE_STATE GetState() const noexcept;  ///< of the drive
    /// Whether a figure is known, unknown or doubtful; unknown for a number that is no figure.
    _FIGURE_STATE GetFigureState(_HEALTH_FIGURE figure) const noexcept;
    /// Value of a figure, in the unit that HealthFigure states; 0 if it has none.
    std::int64_t GetValue(_HEALTH_FIGURE figure) const noexcept;
    /// As CHealthAssessment::GetReading.
    CWearReading GetReading() const;

private:
    struct CFacts;
    std::shared_ptr<const CFacts> m_Facts;
};

/// A figure that changed. A value; any number of threads may read it. Since 1.1.0.
class PI_API CHealthChange {
public:
    _HEALTH_FIGURE GetFigure() const noexcept;              ///< which figure changed
    std::int64_t GetBefore() const noexcept;                ///< in the unit that HealthFigure states
    std::optional<std::int64_t> GetAfter() const noexcept;  ///< no value: it is no longer reported
    bool IsWorse() const noexcept;                          ///< as FindHealthChanges says

    /// For people, such as "wear 12 -> 15 %". One line without a full stop, in English.
    /// @throws std::bad_alloc if allocation fails
    std::string GetText() const;

private:
    /// @cond
    friend std::vector<CHealthChange> FindHealthChanges(const CHealthSnapshot& before,
                                                        const CHealthSnapshot& after);
    /// @endcond

    std::int64_t m_Before = 0;
    std::int64_t m_After = 0;
    _HEALTH_FIGURE m_Figure{};
    bool m_IsReported = true;
    bool m_IsWorse = false;
    [[maybe_unused]] std::uint64_t m_Reserve[2] = {};
};

/// The figures that differ between two times, for alerts about what grows: verdict, warnings, thresholds,
/// errors, failed self-tests, spare and wear, in a fixed order. Figures that vary in service, such as
/// temperatures and hours, are left out, and so is a figure that only one of both has, except one that was
/// above 0 and is no longer reported: that may still be so, and counts as worse. Doubtful values count as
/// known ones.
///
/// What is worse is a judgement: a higher number; of CRITICAL_WARNING a bit that was not set; of SPARE a
/// lower one. LOGGED_ERRORS never are, since drives also log commands that they do not support; no longer to
/// be reported is worse neither for them nor for SPARE and WEAR. WEAR, which always grows, is worse if it
/// grew by more than one percent, and more than one percent above twice what the pace of the drive's life
/// until then leads to expect, where the power-on hours show that.
/// @param before, after of the same drive
/// @throws std::bad_alloc if allocation fails. Thread-safe.
PI_API std::vector<CHealthChange> FindHealthChanges(const CHealthSnapshot& before,
                                                    const CHealthSnapshot& after);

/// Whether a change of state is for the worse (judgement): a state after GOOD that is worse than before, or
/// one that became unknown. Thread-safe.
PI_API bool IsWorseState(_DRIVE_STATE before, _DRIVE_STATE after) noexcept;

/// @}

}  // namespace PI
