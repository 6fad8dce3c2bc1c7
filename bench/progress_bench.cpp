// SPDX-License-Identifier: Apache-2.0
// Time remaining of many activities, and of activities with many samples.

#include <pi/etr.h>

#include "measure.h"

namespace {

/// A sample of the activity that stands last in the list.
void AddActivities(unsigned long activities) {
    bench::Add("etr_activities", std::to_string(activities), [=](benchmark::State& state) {
        std::vector<PI::CETR> list;
        for (unsigned long id = 0; id < activities; ++id) {
            PI::CETR::Add(list, id, 0, false, 1000000);
        }
        unsigned long time = 1000000;
        bench::Measure(state, [&] {
            time += 1000;
            benchmark::DoNotOptimize(
                PI::CETR::Add(list, activities - 1, static_cast<int>(time / 1000 % 100), false, time));
        });
    });
}

/// A further sample for an activity that has taken a number of samples, of which it keeps one per percent.
void AddSamples(unsigned long samples) {
    bench::Add("etr_samples", std::to_string(samples), [=](benchmark::State& state) {
        PI::CETR etr(1, 0, 1000000);
        unsigned long time = 1000000;
        for (unsigned long i = 0; i < samples; ++i) {
            time += 1000;
            etr.Compute(static_cast<int>(i * 99 / samples), time);
        }
        bench::Measure(state, [&] {
            time += 1000;
            etr.Compute(99, time);
        });
    });
}

}  // namespace

void bench::RegisterBenchmarks() {
    for (const unsigned long activities : {100UL, 1000UL, 10000UL}) {
        AddActivities(activities);
    }
    for (const unsigned long samples : {100UL, 1000UL, 10000UL}) {
        AddSamples(samples);
    }
}
