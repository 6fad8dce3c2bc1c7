// SPDX-License-Identifier: Apache-2.0
// The rules of the time remaining in their plainest form, to compare the library's with.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace PI::Test {

using Ms = unsigned long;
constexpr Ms UNKNOWN = ~0UL;

/// The paths through a sample; each must be taken.
enum Path {
    IGNORED,
    FINISHED,
    FIRST_SAMPLE,
    THIRD_SAMPLE_MOVES_START,
    THIRD_SAMPLE_KEEPS_START,
    ZERO_PERCENT,
    UP_TO_TWO,
    OVERALL_PACE_UP_TO_NINE,
    OVERALL_PACE_UP_TO_32,
    BLEND,
    CUT,
    CUT_TO_THREE,
    ABOVE_A_HUNDRED,
    PAUSE,
    PATH_COUNT
};

/// The rules step by step, samples kept as pairs.
struct PlainActivity {
    Ms id = 0;
    Ms start = UNKNOWN;
    Ms last = UNKNOWN;
    Ms remaining = UNKNOWN;
    std::vector<std::pair<int, Ms>> samples;
};

class PlainRules {
public:
    long Add(Ms id, int percent, bool pause, Ms now) {
        for (std::size_t i = 0; i < m_Activities.size(); ++i) {
            PlainActivity& a = m_Activities[i];
            if (a.id != id) {
                continue;
            }
            if (pause) {
                Take(PAUSE);
                a.start += now - a.last;
                a.last = now;
            } else {
                Sample(a, percent, now);
            }
            return static_cast<long>(i);
        }
        PlainActivity added;
        added.id = id;
        added.start = now;
        Sample(added, percent, now);
        m_Activities.push_back(added);
        return static_cast<long>(m_Activities.size() - 1);
    }

    void Remove(Ms id) {
        std::vector<PlainActivity> others;
        for (const PlainActivity& activity : m_Activities) {
            if (activity.id != id) {
                others.push_back(activity);
            }
        }
        m_Activities = others;
    }

    std::vector<PlainActivity> m_Activities;
    std::vector<std::string> m_Traces;
    std::size_t m_Taken[PATH_COUNT] = {};

private:
    void Take(Path path) { ++m_Taken[path]; }

    // In 64 bits with its sign, as unsigned arithmetic takes it.
    static Ms Wide(long percent) { return static_cast<Ms>(percent); }

    void Sample(PlainActivity& a, int percent, Ms now) {
        if (a.start == UNKNOWN) {
            a.start = now - 60000;
        }
        if (percent < 0) {
            return Take(IGNORED);
        }
        if (percent >= 100 && a.remaining > 60000) {
            a.remaining = 60000;
            return Take(FINISHED);
        }
        if (percent > 100) {
            Take(ABOVE_A_HUNDRED);
        }
        if (a.samples.empty()) {
            Take(FIRST_SAMPLE);
            a.remaining = AtLeastAMinuteEach(percent, now - a.start);
            a.samples.emplace_back(percent, now);
            a.last = now;
            return;
        }
        std::size_t keep = 0;
        while (keep < a.samples.size() && a.samples[keep].first < percent) {
            ++keep;
        }
        const bool isCut = keep < a.samples.size();
        a.samples.resize(keep);
        a.samples.emplace_back(percent, now);
        if (isCut) {
            Take(CUT);
            a.last = now;
            Estimate(a);
            if (a.samples.size() == 3) {
                Take(CUT_TO_THREE);
            }
        } else if (a.samples.size() == 3) {
            EstimateThird(a);
        } else {
            Estimate(a);
        }
        char text[200];
        std::snprintf(text, sizeof(text),
                      "m_StartTime: %lu m_LastTime: %lu timeStamp: %lu m_RemainingTime: %lu", a.start, a.last,
                      now, a.remaining);
        m_Traces.emplace_back(text);
        a.last = now;
    }

    void EstimateThird(PlainActivity& a) {
        const Ms step = a.samples[2].second - a.samples[1].second;
        const Ms zero = a.samples[1].second - step * Wide(a.samples[1].first);
        Take(zero < a.start ? THIRD_SAMPLE_MOVES_START : THIRD_SAMPLE_KEEPS_START);
        if (zero < a.start) {
            a.start = zero;
        }
        const auto [percent, now] = a.samples[2];
        a.remaining = OverallPace(percent, now - a.start);
    }

    void Estimate(PlainActivity& a) {
        const std::size_t n = a.samples.size();
        const auto [percent, now] = a.samples[n - 1];
        if (percent == 0) {
            Take(ZERO_PERCENT);
            a.start = now;
            a.remaining = 6000000;
            return;
        }
        const Ms elapsed = now - a.start;
        if (n < 3) {
            Take(UP_TO_TWO);
            a.remaining = AtLeastAMinuteEach(percent, elapsed);
        } else if (n < 10) {
            Take(OVERALL_PACE_UP_TO_NINE);
            a.remaining = OverallPace(percent, elapsed);
        } else if (percent < 33) {
            Take(OVERALL_PACE_UP_TO_32);
            a.remaining = OverallPace(percent, elapsed);
        } else {
            Take(BLEND);
            const auto [fromPercent, fromTime] = a.samples[n - 6];
            const Ms eachRecent = 1 + (now - fromTime) / (Wide(percent) - Wide(fromPercent));
            const Ms both = eachRecent * Wide(percent) + OverallPace(percent, elapsed);
            a.remaining = (100 - Wide(percent)) * both / 100;
        }
    }

    static Ms AtLeastAMinuteEach(int percent, Ms elapsed) {
        const Ms each = elapsed < 60000 ? 60000 : elapsed;
        return 100 * each - Wide(percent) * each;
    }

    static Ms OverallPace(int percent, Ms elapsed) {
        const Ms quotient = elapsed / Wide(percent);
        return (quotient * 5 + 5) * 20 - elapsed;
    }
};

inline std::string PlainText(Ms ms) {
    const Ms seconds = ms / 1000;
    if (seconds == 0) {
        return "";
    }
    if (seconds >= 360000) {
        return "> 99:59:59";
    }
    char text[32];
    std::snprintf(text, sizeof(text), "%02lu:%02lu:%02lu", seconds / 3600, seconds % 3600 / 60, seconds % 60);
    return text;
}

}  // namespace PI::Test
