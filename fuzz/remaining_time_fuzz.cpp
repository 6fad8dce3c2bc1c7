// SPDX-License-Identifier: Apache-2.0
// Courses of activities: samples, pauses and removals in any order, with any percentages and times.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/etr.h>

#include <cstdint>

#include "check.h"
#include "events/plain_etr.h"

namespace {

using namespace PI;
using namespace PI::Test;

void CheckSame(CETR& activity, const PlainActivity& plain) {
    CHECK(activity.GetID() == plain.id);
    CHECK(activity.m_StartTime == plain.start && activity.m_LastTime == plain.last);
    CHECK(activity.m_RemainingTime == plain.remaining);
    CHECK(activity.m_PercentageComplete.size() == plain.samples.size());
    CHECK(activity.m_TimeStamps.size() == plain.samples.size());
    for (std::size_t i = 0; i < plain.samples.size(); ++i) {
        CHECK(activity.m_PercentageComplete[i] == plain.samples[i].first);
        CHECK(activity.m_TimeStamps[i] == plain.samples[i].second);
    }
    std::string text;
    activity.GetETR(text);
    CHECK_TEXT(text, PlainText(plain.remaining));
}

/// The next time: mostly a little later, sometimes any.
Ms NextTime(FuzzedDataProvider& input, Ms now) {
    return input.ConsumeIntegralInRange(0, 15) == 0 ? input.ConsumeIntegral<Ms>()
                                                    : now + input.ConsumeIntegral<std::uint16_t>() * Ms(20);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    std::vector<CETR> list;
    PlainRules rules;
    Ms now = 1000000;
    while (input.remaining_bytes() > 0) {
        enum Action { SAMPLE, ODD_SAMPLE, PAUSE_ONLY, REMOVE, kMaxValue = REMOVE };
        const auto action = input.ConsumeEnum<Action>();
        const auto id = input.ConsumeIntegralInRange<Ms>(0, 2);
        if (action == REMOVE) {
            CETR::Remove(list, id);
            rules.Remove(id);
            CHECK(list.size() == rules.m_Activities.size());
            continue;
        }
        const int percent =
            action == ODD_SAMPLE ? input.ConsumeIntegral<int>() : input.ConsumeIntegralInRange(-1, 101);
        now = NextTime(input, now);
        const long index = CETR::Add(list, id, percent, action == PAUSE_ONLY, now);
        CHECK(index == rules.Add(id, percent, action == PAUSE_ONLY, now));
        const auto at = static_cast<std::size_t>(index);
        CheckSame(list.at(at), rules.m_Activities.at(at));
    }
    return 0;
}
