// SPDX-License-Identifier: Apache-2.0
// Courses of activities: samples, pauses and removals in any order, with any percentages and times.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/etr.h>

#include <algorithm>
#include <cstdint>
#include <functional>

#include "check.h"

namespace {

using namespace PI;

/// The next time: mostly a little later, sometimes any.
unsigned long NextTime(FuzzedDataProvider& input, unsigned long now) {
    return input.ConsumeIntegralInRange(0, 15) == 0 ? input.ConsumeIntegral<unsigned long>()
                                                    : now + input.ConsumeIntegral<std::uint16_t>() * 20UL;
}

/// The samples that are kept go up and up.
void CheckSamples(const CETR& activity) {
    const std::vector<std::int32_t>& percents = activity.m_PercentageComplete;
    CHECK(activity.m_TimeStamps.size() == percents.size());
    CHECK(std::adjacent_find(percents.begin(), percents.end(), std::greater_equal<>()) == percents.end());
    CHECK(percents.empty() || percents.front() >= 0);
}

void CheckText(CETR& activity) {
    std::string text = "before";
    activity.GetETR(text);
    CHECK_TEXT(text, CETR::RemainingTimeToString(activity.m_RemainingTime));
    CHECK(text.empty() || text == "> 99:59:59" || (text.size() == 8 && text[2] == ':' && text[5] == ':'));
    CHECK(text.empty() == (activity.m_RemainingTime < 1000));
}

/// A sample or a pause changes no activity but its own.
void CheckAdded(std::vector<CETR>& list, unsigned long id, int percent, bool isPaused, unsigned long now) {
    const std::size_t before = list.size();
    const auto hasID = [id](CETR& activity) { return activity.GetID() == id; };
    const auto known = std::find_if(list.begin(), list.end(), hasID);
    const bool isKnown = known != list.end();
    const CETR old = isKnown ? *known : CETR(id, -1, now);
    const auto at = static_cast<std::size_t>(CETR::Add(list, id, percent, isPaused, now));
    CHECK(list.size() == before + (isKnown ? 0 : 1));
    CHECK(at == static_cast<std::size_t>(std::find_if(list.begin(), list.end(), hasID) - list.begin()));

    CETR& activity = list[at];
    CheckSamples(activity);
    CheckText(activity);
    if (isKnown && (isPaused || percent < 0)) {
        CHECK(activity.m_PercentageComplete == old.m_PercentageComplete);
        CHECK(activity.m_RemainingTime == old.m_RemainingTime);
    } else if (percent >= 0 && (percent < 100 || old.m_RemainingTime <= 60000)) {
        CHECK(activity.m_PercentageComplete.back() == percent && activity.m_TimeStamps.back() == now);
        CHECK(activity.m_LastTime == now);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    std::vector<CETR> list;
    unsigned long now = 1000000;
    while (input.remaining_bytes() > 0) {
        enum Action { SAMPLE, ODD_SAMPLE, PAUSE_ONLY, REMOVE, kMaxValue = REMOVE };
        const auto action = input.ConsumeEnum<Action>();
        const auto id = input.ConsumeIntegralInRange<unsigned long>(0, 2);
        if (action == REMOVE) {
            CETR::Remove(list, id);
            CHECK(std::none_of(list.begin(), list.end(), [id](CETR& one) { return one.GetID() == id; }));
            continue;
        }
        const int percent =
            action == ODD_SAMPLE ? input.ConsumeIntegral<int>() : input.ConsumeIntegralInRange(-1, 101);
        now = NextTime(input, now);
        CheckAdded(list, id, percent, action == PAUSE_ONLY, now);
    }
    return 0;
}
