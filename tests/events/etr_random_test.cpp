// SPDX-License-Identifier: Apache-2.0
// Long random courses of activities against a second, plain form of the rules.
#include <gtest/gtest.h>
#include <pi/etr.h>

#include <array>
#include <limits>
#include <string>
#include <vector>

#include "events/plain_etr.h"
#include "support/random_seed.h"
#include "support/trace_recorder.h"

namespace {

using namespace PI;
using namespace PI::Test;

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
