// SPDX-License-Identifier: Apache-2.0
// How a figure is decided from what was read of a drive.
#pragma once

#include <pi/health_assessment.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <vector>

#include "drives/health_facts.h"

namespace PI {

/// Why a figure is unknown or doubtful. The readings that a reason refers to are the figure's others.
enum class FigureReason : std::int32_t {
    NONE,
    NOT_REPORTED,         ///< nothing says
    IMPOSSIBLE,           ///< the reading is outside of what the figure can be
    NO_SENSOR,            ///< a temperature that never was above 0
    MAYBE_NO_SENSOR,      ///< a temperature of 0 without a credible highest one
    ROTATING,             ///< disks do not wear
    NOT_LISTED,           ///< no rating for the model
    RATED_IN_CYCLES,      ///< the list rates the family in erase cycles
    RATING_CONTRADICTED,  ///< another rating is published
    SOURCES_DIFFER,       ///< sources are further apart than they may be
    MAYBE_INVALID,        ///< 255: above 254, or no figure
    WRITTEN_BUT_NEW,      ///< wear of 0 after many drive writes
    COUNTS_NO_FURTHER,    ///< an attribute that has reached the end of what it can say
    WEAK_RULE,            ///< the rule for the attribute is wrong on some drives
    PACKED_HOURS,         ///< bits above those of the hours
};

/// What a figure is: its name, and which readings of it can be.
struct FigureKind {
    const char* m_Name;
    _FIGURE_UNIT m_Unit;
    _FIGURE_DIRECTION m_Direction;
    std::int64_t m_Lowest;
    std::int64_t m_Highest;
};

/// Null for a number that is no figure.
const FigureKind* FindKind(std::int32_t figure);

/// Whether a figure can have a value.
bool IsPossible(_HEALTH_FIGURE figure, std::int64_t value) noexcept;

constexpr std::int32_t FIRST_FIGURE = HealthFigure::WEAR;
constexpr std::int32_t LAST_FIGURE = HealthFigure::UNSAFE_SHUTDOWNS;

/// Makes figures, which cannot be changed.
class CHealthFigureMaker {
public:
    explicit CHealthFigureMaker(_HEALTH_FIGURE figure) : m_Figure(figure) {}

    CHealthFigureMaker& Set(_FIGURE_STATE state, const Reading& reading) {
        m_Figure.m_State = state;
        m_Figure.m_Value = reading.m_Value;
        m_Figure.m_Source = static_cast<_FIGURE_SOURCE>(reading.m_Source);
        m_Figure.m_Number = reading.m_Number;
        return *this;
    }
    CHealthFigureMaker& Say(FigureReason reason) {
        m_Figure.m_Reason = static_cast<std::int32_t>(reason);
        return *this;
    }
    CHealthFigureMaker& Doubt(FigureReason reason) {
        m_Figure.m_State = FigureState::DOUBTFUL;
        return Say(reason);
    }
    /// Adds a reading that the reason speaks of. Those beyond what a figure holds are counted only.
    CHealthFigureMaker& Name(const Reading& reading) {
        if (m_Figure.m_OtherCount < std::size(m_Figure.m_Others)) {
            m_Figure.m_Others[m_Figure.m_OtherCount] = {reading.m_Value, reading.m_Source, reading.m_Number};
        }
        ++m_Figure.m_OtherCount;
        return *this;
    }
    CHealthFigure Made() const { return m_Figure; }

    /// The highest value that a source gives, where sources differ; else the figure's own.
    static std::int64_t HighestSaid(const CHealthFigure& figure) {
        std::int64_t highest = figure.m_Value;
        if (figure.m_Reason == static_cast<std::int32_t>(FigureReason::SOURCES_DIFFER)) {
            for (std::size_t i = 0;
                 i < std::min<std::size_t>(figure.m_OtherCount, std::size(figure.m_Others)); ++i) {
                highest = std::max(highest, figure.m_Others[i].m_Value);
            }
        }
        return highest;
    }

private:
    CHealthFigure m_Figure;
};

/// Chooses among readings of a figure: the best one that can be, and, where there is none, the best of the
/// others.
struct Choice {
    Reading m_Best;
    Reading m_Impossible;
    bool m_HasBest = false;
    bool m_HasImpossible = false;
    std::int64_t m_Highest = BEYOND_COUNTING;  ///< that the figure can be on this drive

    void Offer(const Reading& reading) noexcept;
};

/// Among the readings, without attributes.
Choice ChooseReading(const DriveFacts& facts, _HEALTH_FIGURE figure) noexcept;

/// A choice as a figure.
CHealthFigure Plain(_HEALTH_FIGURE figure, const Choice& choice) noexcept;

/// Decides the figures of one drive, each once.
class Decider {
public:
    explicit Decider(const DriveFacts& facts) noexcept : m_Facts(facts) {}

    const DriveFacts& Facts() const noexcept { return m_Facts; }
    /// @param figure one of FIRST_FIGURE to LAST_FIGURE
    const CHealthFigure& Figure(_HEALTH_FIGURE figure) noexcept;
    /// What tells the medium. With NOTHING it counts as a disk, else but for REPORTED as solid-state.
    _MEDIUM_BASIS MediumBasis() noexcept;
    bool IsSolidState() noexcept;
    /// All of them, in the order of their numbers.
    /// @throws std::bad_alloc
    std::vector<CHealthFigure> Figures();

private:
    CHealthFigure Decide(_HEALTH_FIGURE figure) noexcept;

    const DriveFacts& m_Facts;
    std::array<std::optional<CHealthFigure>, LAST_FIGURE> m_Figures;
};

/// Wear from all its sources (src/drives/health_wear.cpp).
CHealthFigure DecideWear(Decider& decider) noexcept;

/// The rated endurance, where it is known in terabytes.
CHealthFigure DecideRating(const DriveFacts& facts) noexcept;

/// The figure as SMART attributes tell it, by the rules of src/drives/*_attributes.def; wear left out.
/// @param isWeak out: the rule is wrong on some drives
/// @return whether they do
bool ReadAttributes(const DriveFacts& facts, _HEALTH_FIGURE figure, Reading& reading, bool& isWeak) noexcept;

/// Bits of an NVMe drive's critical warning that announce or tell a failure: the spare is low, it is
/// degraded, read-only, or its memory is not saved when power fails. The others are its temperature and
/// memory that it lends to hosts.
constexpr std::int64_t NVME_FAILURE_BITS = 0b1'1101;

/// Attributes at or below their thresholds, now or once.
CHealthFigure DecideThresholds(const DriveFacts& facts, _HEALTH_FIGURE figure) noexcept;

/// Whether one of those that are now announces a failure.
bool IsPreFailure(const DriveFacts& facts) noexcept;

/// As the reading of an attribute.
constexpr Reading AttributeReading(_HEALTH_FIGURE figure, std::uint8_t id, std::int64_t value) {
    return {value, static_cast<std::int16_t>(figure), FigureSource::ATA_ATTRIBUTE, id};
}

}  // namespace PI
