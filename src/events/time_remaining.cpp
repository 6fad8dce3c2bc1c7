// SPDX-License-Identifier: Apache-2.0

#include <pi/time_remaining.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

#include "progress_fit.h"

namespace PI {

namespace {

using Points = std::vector<std::pair<std::uint64_t, std::uint64_t>>;

constexpr std::size_t MAX_POINTS = 64;
constexpr std::uint64_t MAX_TIME = std::uint64_t{1} << 53U;  // what a double counts exactly
constexpr std::uint64_t MAX_REMAINING = 1000000000000000;
constexpr double MIN_MOVE = 1e-9;           // of the whole: less than that is no movement
constexpr std::uint64_t FINE_TOTAL = 1000;  // from here on, positions are as good as exact
constexpr double STALL_MS = 60000;          // judgement
constexpr double STALL_STEPS = 5;           // judgement: times what the smallest step takes
constexpr double STEP_SHARE = 0.95;         // of a step that may have passed unseen
constexpr const char* TEXT_VERSION = "1";

double Share(std::uint64_t position, std::uint64_t total) {
    return static_cast<double>(position) / static_cast<double>(total);
}

bool Moves(std::uint64_t from, std::uint64_t to, std::uint64_t total) {
    return Share(to, total) - Share(from, total) >= MIN_MOVE && Share(to, total) <= 1 - MIN_MOVE;
}

/// Milliseconds that the smallest step of the position takes, at the mean pace; 0 while that is not known.
double StepTime(const Points& points) {
    const std::uint64_t moved = points.back().first - points.front().first;
    const std::uint64_t elapsed = points.back().second - points.front().second;
    return moved == 0 ? 0 : static_cast<double>(elapsed) / static_cast<double>(moved);
}

bool IsStall(const Points& points, std::uint64_t unmoved, std::uint64_t total) {
    // Before its first step nobody knows how long one of a percent takes.
    return (points.size() > 1 || total >= FINE_TOTAL) &&
           static_cast<double>(unmoved) > std::max(STALL_MS, STALL_STEPS * StepTime(points));
}

/// Adds a point; one too close to the last takes its place, and of too many every other goes.
void Append(Points& points, std::uint64_t position, std::uint64_t time) {
    const std::uint64_t spacing = (time - points.front().second) / MAX_POINTS;
    if (points.size() > 1 && points.back().second - points[points.size() - 2].second < spacing) {
        points.pop_back();
    }
    if (points.size() == MAX_POINTS) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < points.size(); i += 2) {
            points[kept++] = points[i];
        }
        points.resize(kept);
    }
    points.emplace_back(position, time);
}

std::uint64_t Milliseconds(double time) {
    return static_cast<std::uint64_t>(
        std::llround(std::clamp(time, 0.0, static_cast<double>(MAX_REMAINING))));
}

/// Numbers, each after a blank.
class NumberList {
public:
    explicit NumberList(std::string_view text) : m_Rest(text) {}

    bool Take(std::uint64_t& number) {
        if (m_Rest.empty() || m_Rest.front() != ' ') {
            return false;
        }
        const auto [end, error] = std::from_chars(m_Rest.data() + 1, m_Rest.data() + m_Rest.size(), number);
        m_Rest.remove_prefix(static_cast<std::size_t>(end - m_Rest.data()));
        return error == std::errc();
    }
    bool IsEmpty() const { return m_Rest.empty(); }

private:
    std::string_view m_Rest;
};

}  // namespace

CTimeRemaining::CTimeRemaining() = default;

void CTimeRemaining::AddSample(std::uint64_t timeMs, std::uint64_t position, std::uint64_t total) {
    if (total == 0) {
        return;
    }
    Points points = m_Points;
    const bool goesBack = timeMs - m_Offset < m_Latest || timeMs - m_Offset > MAX_TIME / 2;
    std::uint64_t time = goesBack ? m_Latest : timeMs - m_Offset;
    if (points.empty() || total != m_Total || position < points.back().first || time > MAX_TIME / 2) {
        points.assign(1, {position, 0});
        m_Points.swap(points);
        m_StartsInside = position > 0 && total < FINE_TOTAL;
        m_Total = total;
        m_Offset = timeMs;
        m_Latest = m_Changed = 0;
        m_State = position >= total ? TimeRemainingState::DONE : TimeRemainingState::NOT_KNOWN;
        m_Remaining = m_Low = m_High =
            position >= total ? std::optional<std::uint64_t>(0) : std::optional<std::uint64_t>();
        return;
    }
    if (position >= total) {
        m_State = TimeRemainingState::DONE;
        m_Remaining = m_Low = m_High = 0;
        return;
    }

    std::uint64_t changed = m_Changed;
    bool startsInside = m_StartsInside;
    if (Moves(points.back().first, position, total)) {
        if (m_State == TimeRemainingState::STALLED) {
            time -= m_Latest - m_Changed;
        }
        if (goesBack) {
            const double elapsed = static_cast<double>(points.back().second - points.front().second);
            const double moved = static_cast<double>(position - points.back().first);
            time += static_cast<std::uint64_t>(std::min(StepTime(points) * moved, elapsed));
        }
        changed = time;
        if (startsInside) {
            points.assign(1, {position, time});
            startsInside = false;
        } else if (time > points.back().second) {
            Append(points, position, time);
        }
    }

    std::optional<ProgressEstimate> estimate;
    if (points.size() > 1) {
        std::vector<ProgressPoint> progress;
        for (const auto& [at, when] : points) {
            progress.push_back({Share(at, total), static_cast<double>(when)});
        }
        estimate = FitProgress(progress);
    }

    m_Points.swap(points);
    m_StartsInside = startsInside;
    m_Offset = timeMs - time;
    m_Latest = time;
    m_Changed = changed;
    m_State = IsStall(m_Points, time - changed, total) ? TimeRemainingState::STALLED
              : estimate.has_value()                   ? TimeRemainingState::RUNNING
                                                       : TimeRemainingState::NOT_KNOWN;
    m_Remaining = m_Low = m_High = std::nullopt;
    if (estimate.has_value()) {
        const double passed = std::min(static_cast<double>(time - changed), STEP_SHARE * StepTime(m_Points));
        m_Remaining = Milliseconds(estimate->m_Remaining - passed);
        m_Low = Milliseconds(estimate->m_Low - passed);
        m_High = Milliseconds(estimate->m_High - passed);
    }
}

void CTimeRemaining::AddPause(std::uint64_t timeMs) {
    if (m_State == TimeRemainingState::DONE) {
        return;
    }
    if (m_State == TimeRemainingState::STALLED) {
        m_Latest = m_Changed;
    }
    m_Offset = timeMs - m_Latest;
    m_State = TimeRemainingState::WAITING;
}

_TIME_REMAINING_STATE CTimeRemaining::GetState() const {
    return m_State;
}

std::optional<std::uint64_t> CTimeRemaining::GetRemaining() const {
    return m_Remaining;
}

std::optional<std::uint64_t> CTimeRemaining::GetLow() const {
    return m_Low;
}

std::optional<std::uint64_t> CTimeRemaining::GetHigh() const {
    return m_High;
}

std::string CTimeRemaining::ToText() const {
    constexpr std::uint64_t NONE = UINT64_MAX;
    std::string text = TEXT_VERSION;
    for (const std::uint64_t number :
         {std::uint64_t(m_State), std::uint64_t(m_StartsInside), m_Total, m_Offset, m_Latest, m_Changed,
          m_Remaining.value_or(NONE), m_Low.value_or(NONE), m_High.value_or(NONE)}) {
        text += ' ' + std::to_string(number);
    }
    for (const auto& [position, time] : m_Points) {
        text += ' ' + std::to_string(position) + ' ' + std::to_string(time);
    }
    return text;
}

std::optional<CTimeRemaining> CTimeRemaining::FromText(const std::string& text) {
    constexpr std::uint64_t NONE = UINT64_MAX;
    const std::string_view version = TEXT_VERSION;
    if (std::string_view(text).substr(0, version.size()) != version) {
        return std::nullopt;
    }
    NumberList numbers(std::string_view(text).substr(version.size()));
    CTimeRemaining read;
    std::uint64_t state = 0;
    std::uint64_t startsInside = 0;
    std::uint64_t remaining = 0;
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    if (!numbers.Take(state) || !numbers.Take(startsInside) || !numbers.Take(read.m_Total) ||
        !numbers.Take(read.m_Offset) || !numbers.Take(read.m_Latest) || !numbers.Take(read.m_Changed) ||
        !numbers.Take(remaining) || !numbers.Take(low) || !numbers.Take(high)) {
        return std::nullopt;
    }
    while (!numbers.IsEmpty()) {
        std::uint64_t position = 0;
        std::uint64_t time = 0;
        if (!numbers.Take(position) || !numbers.Take(time) || read.m_Points.size() == MAX_POINTS) {
            return std::nullopt;
        }
        if (!read.m_Points.empty() && (!Moves(read.m_Points.back().first, position, read.m_Total) ||
                                       time <= read.m_Points.back().second)) {
            return std::nullopt;
        }
        read.m_Points.emplace_back(position, time);
    }
    const std::uint64_t lastTime = read.m_Points.empty() ? 0 : read.m_Points.back().second;
    const bool hasRemaining = remaining != NONE;
    if (state < TimeRemainingState::NOT_KNOWN || state > TimeRemainingState::DONE || startsInside > 1 ||
        read.m_Points.empty() != (read.m_Total == 0) || lastTime > read.m_Changed ||
        read.m_Changed > read.m_Latest || read.m_Latest > MAX_TIME || hasRemaining != (low != NONE) ||
        hasRemaining != (high != NONE) ||
        (hasRemaining && (low > remaining || remaining > high || high > MAX_REMAINING))) {
        return std::nullopt;
    }
    read.m_State = static_cast<_TIME_REMAINING_STATE>(state);
    read.m_StartsInside = startsInside == 1;
    if (hasRemaining) {
        read.m_Remaining = remaining;
        read.m_Low = low;
        read.m_High = high;
    }
    return read;
}

}  // namespace PI
