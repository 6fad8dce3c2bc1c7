// Long random courses of activities against a second, plain form of the rules.
#include <gtest/gtest.h>
#include <pi/etr.h>

#include <array>
#include <cstdio>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "support/random_seed.h"
#include "support/trace_recorder.h"

namespace {

using namespace PI;
using namespace PI::Test;

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

std::string PlainText(Ms ms) {
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

/// How the activities of one run go on.
class Course {
public:
    explicit Course(std::uint32_t seed) : m_Random(seed) {}

    void Restart() {
        m_Now = Chance(8) ? m_Random() << 32 | m_Random() : 1000000 + Below(m_Random, 1000000000);
        m_Percent = {};
        m_IsRough = Chance(4);
    }

    /// The next percentage of an activity: mostly a small step on.
    int NextPercent(std::size_t activity) {
        int& percent = m_Percent[activity];
        if (m_IsRough && Chance(5)) {
            const int odd[] = {-1,
                               0,
                               1,
                               32,
                               33,
                               99,
                               100,
                               101,
                               1000,
                               std::numeric_limits<int>::max(),
                               std::numeric_limits<int>::min()};
            return odd[Below(m_Random, std::size(odd))];
        }
        if (Chance(60)) {
            percent = static_cast<int>(Below(m_Random, 101));
        } else if (Chance(25)) {
            percent -= static_cast<int>(Below(m_Random, 8));
        } else {
            percent += static_cast<int>(Below(m_Random, 4));
        }
        if (percent > 104) {
            percent = 0;
        }
        return percent;
    }

    Ms NextTime() {
        if (m_IsRough && Chance(20)) {
            m_Now = Chance(2) ? m_Now - Below(m_Random, 1000000) : m_Random() << 32 | m_Random();
        } else {
            m_Now += Below(m_Random, Chance(3) ? 600000 : 20000);
        }
        return m_Now;
    }

    bool Chance(std::uint32_t oneIn) { return Below(m_Random, oneIn) == 0; }

    std::size_t Activity() { return Below(m_Random, ACTIVITIES); }

    static constexpr std::size_t ACTIVITIES = 4;

private:
    std::mt19937_64 m_Random;
    Ms m_Now = 0;
    bool m_IsRough = false;
    std::array<int, ACTIVITIES> m_Percent = {};
};

void ExpectSame(CETR& etr, const PlainActivity& plain) {
    ASSERT_EQ(etr.GetID(), plain.id);
    ASSERT_EQ(etr.m_StartTime, plain.start);
    ASSERT_EQ(etr.m_LastTime, plain.last);
    ASSERT_EQ(etr.m_RemainingTime, plain.remaining);
    ASSERT_EQ(etr.m_PercentageComplete.size(), plain.samples.size());
    ASSERT_EQ(etr.m_TimeStamps.size(), plain.samples.size());
    for (std::size_t i = 0; i < plain.samples.size(); ++i) {
        ASSERT_EQ(etr.m_PercentageComplete[i], plain.samples[i].first);
        ASSERT_EQ(etr.m_TimeStamps[i], plain.samples[i].second);
    }
}

TEST(EtrRandom, LongCoursesGoAsThePlainRulesSay) {
    Course course(RandomSeed());
    PlainRules rules;
    for (int run = 0; run < 100; ++run) {
        course.Restart();
        TraceRecorder<3> recorder;
        std::vector<CETR> list;
        rules.m_Activities.clear();
        rules.m_Traces.clear();
        for (int step = 0; step < 400; ++step) {
            const std::size_t activity = course.Activity();
            const Ms id = activity * 0x4000000000000001;
            if (course.Chance(150)) {
                CETR::Remove(list, id);
                rules.Remove(id);
            } else {
                const int percent = course.NextPercent(activity);
                const bool pause = course.Chance(30);
                const Ms now = course.NextTime();
                const long index = CETR::Add(list, id, percent, pause, now);
                ASSERT_EQ(index, rules.Add(id, percent, pause, now));
                const auto at = static_cast<std::size_t>(index);
                ASSERT_NO_FATAL_FAILURE(ExpectSame(list[at], rules.m_Activities[at]))
                    << "run " << run << ", step " << step;
                ASSERT_EQ(CETR::RemainingTimeToString(list[at].m_RemainingTime),
                          PlainText(rules.m_Activities[at].remaining));
            }
        }
        ASSERT_EQ(list.size(), rules.m_Activities.size());
        for (std::size_t i = 0; i < list.size(); ++i) {
            ASSERT_NO_FATAL_FAILURE(ExpectSame(list[i], rules.m_Activities[i])) << "run " << run;
        }
        ASSERT_EQ(recorder.Texts(), rules.m_Traces) << "run " << run;
    }
    for (int path = 0; path < PATH_COUNT; ++path) {
        EXPECT_GT(rules.m_Taken[path], 10U) << "path " << path << " is hardly taken";
    }
}

}  // namespace
