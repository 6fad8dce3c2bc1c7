// SPDX-License-Identifier: Apache-2.0
// What figures and reasons hold.

#include "drives/health_figures.h"

namespace PI {

CHealthFigure::CHealthFigure(_HEALTH_FIGURE figure) noexcept : m_Figure(figure) {}

_HEALTH_FIGURE CHealthFigure::GetFigure() const noexcept {
    return m_Figure;
}

_FIGURE_STATE CHealthFigure::GetState() const noexcept {
    return m_State;
}

bool CHealthFigure::HasValue() const noexcept {
    return m_State != FigureState::UNKNOWN;
}

std::int64_t CHealthFigure::GetValue() const noexcept {
    return m_Value;
}

_FIGURE_UNIT CHealthFigure::GetUnit() const noexcept {
    const FigureKind* kind = FindKind(m_Figure);
    return kind != nullptr ? kind->m_Unit : FigureUnit::COUNT;
}

_FIGURE_DIRECTION CHealthFigure::GetDirection() const noexcept {
    const FigureKind* kind = FindKind(m_Figure);
    return kind != nullptr ? kind->m_Direction : FigureDirection::NONE;
}

_FIGURE_SOURCE CHealthFigure::GetSource() const noexcept {
    return m_Source;
}

std::uint32_t CHealthFigure::GetSourceNumber() const noexcept {
    return m_Number;
}

CHealthReason::CHealthReason(_DRIVE_STATE state, const CHealthFigure& figure, std::uint32_t detail) noexcept
    : m_Figure(figure), m_State(state), m_Detail(detail) {}

_DRIVE_STATE CHealthReason::GetState() const noexcept {
    return m_State;
}

const CHealthFigure& CHealthReason::GetFigure() const noexcept {
    return m_Figure;
}

const char* HealthFigureToString(_HEALTH_FIGURE figure) noexcept {
    const FigureKind* kind = FindKind(figure);
    return kind != nullptr ? kind->m_Name : "";
}

const char* DriveStateToString(_DRIVE_STATE state) noexcept {
    switch (state) {
        case DriveState::GOOD: return "good";
        case DriveState::LOOK: return "look at it";
        case DriveState::REPLACE: return "replace it";
        case DriveState::FAILED: return "failed";
        default: return "unknown";
    }
}

}  // namespace PI
