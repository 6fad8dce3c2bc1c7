// SPDX-License-Identifier: Apache-2.0

#include <pi/health_changes.h>

#include <algorithm>
#include <bitset>

#include "drives/health_figures.h"

namespace PI {

namespace {

constexpr std::uint64_t Bit(_HEALTH_FIGURE figure) {
    return figure >= FIRST_FIGURE && figure <= LAST_FIGURE ? std::uint64_t{1} << figure : 0;
}

}  // namespace

struct CHealthSnapshot::CFacts {
    _DRIVE_STATE m_State = DriveState::UNKNOWN;
    std::uint64_t m_HaveValue = 0;  // bits of figures
    std::uint64_t m_AreDoubtful = 0;
    std::vector<std::int64_t> m_Values;  // of those that have one: in most drives half of the figures
};

CHealthSnapshot::CHealthSnapshot(const CHealthAssessment& health) {
    const auto facts = std::make_shared<CFacts>();
    facts->m_State = health.GetState();
    facts->m_Values.reserve(health.GetFigures().size());
    for (const CHealthFigure& figure : health.GetFigures()) {
        if (figure.HasValue()) {
            facts->m_HaveValue |= Bit(figure.GetFigure());
            facts->m_Values.push_back(figure.GetValue());
        }
        if (figure.GetState() == FigureState::DOUBTFUL) {
            facts->m_AreDoubtful |= Bit(figure.GetFigure());
        }
    }
    facts->m_Values.shrink_to_fit();
    m_Facts = facts;
}

_DRIVE_STATE CHealthSnapshot::GetState() const noexcept {
    return m_Facts->m_State;
}

_FIGURE_STATE CHealthSnapshot::GetFigureState(_HEALTH_FIGURE figure) const noexcept {
    return (m_Facts->m_HaveValue & Bit(figure)) == 0     ? FigureState::UNKNOWN
           : (m_Facts->m_AreDoubtful & Bit(figure)) == 0 ? FigureState::KNOWN
                                                         : FigureState::DOUBTFUL;
}

std::int64_t CHealthSnapshot::GetValue(_HEALTH_FIGURE figure) const noexcept {
    const std::uint64_t before = m_Facts->m_HaveValue & (Bit(figure) - 1);
    return GetFigureState(figure) != FigureState::UNKNOWN ? m_Facts->m_Values[std::bitset<64>(before).count()]
                                                          : 0;
}

CWearReading CHealthSnapshot::GetReading() const {
    CWearReading reading;
    const auto isKnown = [this](_HEALTH_FIGURE figure) {
        return GetFigureState(figure) == FigureState::KNOWN;
    };
    if (isKnown(HealthFigure::POWER_ON_HOURS)) {
        reading.SetPowerOnHours(static_cast<std::uint64_t>(GetValue(HealthFigure::POWER_ON_HOURS)));
    }
    if (isKnown(HealthFigure::WEAR)) {
        reading.SetWear(static_cast<std::uint32_t>(GetValue(HealthFigure::WEAR)));
    }
    if (isKnown(HealthFigure::BYTES_WRITTEN)) {
        reading.SetBytesWritten(static_cast<std::uint64_t>(GetValue(HealthFigure::BYTES_WRITTEN)));
    }
    return reading;
}

namespace {

constexpr _HEALTH_FIGURE COMPARED[] = {
    HealthFigure::VERDICT,
    HealthFigure::CRITICAL_WARNING,
    HealthFigure::ATTRIBUTES_BELOW_THRESHOLD,
    HealthFigure::ATTRIBUTES_ONCE_BELOW,
    HealthFigure::PENDING_SECTORS,
    HealthFigure::UNCORRECTABLE_SECTORS,
    HealthFigure::MEDIA_ERRORS,
    HealthFigure::REALLOCATED_SECTORS,
    HealthFigure::FAILED_SELF_TESTS,
    HealthFigure::LOGGED_ERRORS,
    HealthFigure::INTERFACE_ERRORS,
    HealthFigure::SPARE,
    HealthFigure::WEAR,
};

/// Whether any value but 0 is bad: that it is not reported any more does not mean that it is over.
bool IsAlarming(_HEALTH_FIGURE figure) {
    return figure != HealthFigure::LOGGED_ERRORS && figure != HealthFigure::SPARE &&
           figure != HealthFigure::WEAR;
}

bool WearsFaster(const CHealthSnapshot& before, const CHealthSnapshot& after) {
    constexpr double HALF_STEP = 0.5;
    const auto lived = static_cast<double>(before.GetValue(HealthFigure::POWER_ON_HOURS));
    const auto since = static_cast<double>(after.GetValue(HealthFigure::POWER_ON_HOURS)) - lived;
    const auto wear = static_cast<double>(before.GetValue(HealthFigure::WEAR));
    const double expected = lived > 0 && since > 0 ? (wear + HALF_STEP) / lived * since : 0;
    return static_cast<double>(after.GetValue(HealthFigure::WEAR)) - wear > 2 * expected + 1;
}

bool IsWorse(_HEALTH_FIGURE figure, const CHealthSnapshot& before, const CHealthSnapshot& after) {
    const std::int64_t old = before.GetValue(figure);
    const std::int64_t now = after.GetValue(figure);
    switch (figure) {
        case HealthFigure::CRITICAL_WARNING: return (now & ~old) != 0;
        case HealthFigure::LOGGED_ERRORS: return false;
        case HealthFigure::SPARE: return now < old;
        case HealthFigure::WEAR: return WearsFaster(before, after);
        default: return now > old;
    }
}

std::string ValueText(_HEALTH_FIGURE figure, std::int64_t value) {
    return figure != HealthFigure::VERDICT ? std::to_string(value)
           : value == 0                    ? "passed"
           : value == 1                    ? "failing"
                                           : "warning";
}

}  // namespace

_HEALTH_FIGURE CHealthChange::GetFigure() const noexcept {
    return m_Figure;
}

std::int64_t CHealthChange::GetBefore() const noexcept {
    return m_Before;
}

std::optional<std::int64_t> CHealthChange::GetAfter() const noexcept {
    return m_IsReported ? std::optional(m_After) : std::nullopt;
}

bool CHealthChange::IsWorse() const noexcept {
    return m_IsWorse;
}

std::string CHealthChange::GetText() const {
    std::string text = HealthFigureToString(m_Figure);
    for (char& c : text) {
        c = c == '_' ? ' ' : static_cast<char>(c - 'A' + 'a');
    }
    const bool isPercent = m_Figure == HealthFigure::WEAR || m_Figure == HealthFigure::SPARE;
    return text + " " + ValueText(m_Figure, m_Before) + " -> " +
           (m_IsReported ? ValueText(m_Figure, m_After) : "not reported") + (isPercent ? " %" : "");
}

std::vector<CHealthChange> FindHealthChanges(const CHealthSnapshot& before, const CHealthSnapshot& after) {
    std::vector<CHealthChange> changes;
    for (const _HEALTH_FIGURE figure : COMPARED) {
        const bool wasReported = before.GetFigureState(figure) != FigureState::UNKNOWN;
        const bool isReported = after.GetFigureState(figure) != FigureState::UNKNOWN;
        if (wasReported && (isReported || IsAlarming(figure)) &&
            before.GetValue(figure) != after.GetValue(figure)) {
            CHealthChange& change = changes.emplace_back();
            change.m_Figure = figure;
            change.m_Before = before.GetValue(figure);
            change.m_After = after.GetValue(figure);
            change.m_IsReported = isReported;
            change.m_IsWorse = !isReported || IsWorse(figure, before, after);
        }
    }
    return changes;
}

bool IsWorseState(_DRIVE_STATE before, _DRIVE_STATE after) noexcept {
    return after > std::max(before, DriveState::GOOD) ||
           (after == DriveState::UNKNOWN && before != DriveState::UNKNOWN);
}

}  // namespace PI
