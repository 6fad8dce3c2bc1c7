// SPDX-License-Identifier: Apache-2.0
// Calls that trace, while traces are off. Compiled twice: against the library, and against a build of the
// same sources without the trace statements, in which the namespace has another name (see CMakeLists.txt).

#include <pi/etr.h>
#include <pi/plugin_helper.h>
#include <pi/property.h>

#include "measure.h"

namespace {

/// Six samples of an activity, as a plug-in takes them.
void Compute(benchmark::State& state) {
    bench::Measure(state, [] {
        PI::CETR etr(1, 0, 1000000);
        for (unsigned long i = 1; i < 6; ++i) {
            etr.Compute(static_cast<int>(i), 1000000 + 100000 * i);
        }
        benchmark::DoNotOptimize(etr);
    });
}

void ValidateCombination(benchmark::State& state) {
    int type = PI::PropertyValue::SATA;
    benchmark::DoNotOptimize(type);
    bench::Measure(state, [&] {
        benchmark::DoNotOptimize(PI::CPluginHelper::ValidatePhysicalDriveCombination(
            false, false, false, true, type, PI::PropertyValue::SSD, false, type, PI::PropertyValue::SSD,
            false));
    });
}

void GetNumber(benchmark::State& state) {
    PI::CProperty property(PI::PropertyID::MAJOR_VERSION, true);
    property.SetValue(5UL);
    unsigned long number = 0;
    bench::Measure(state, [&] {
        benchmark::DoNotOptimize(property.GetValue(number));
        benchmark::DoNotOptimize(number);
    });
}

void GetText(benchmark::State& state) {
    PI::CProperty property(PI::PropertyID::MAJOR_VERSION, true);
    property.SetValue("a text of more than fifteen characters");
    std::string text;
    bench::Measure(state, [&] {
        benchmark::DoNotOptimize(property.GetValue(text));
        benchmark::DoNotOptimize(text);
    });
}

}  // namespace

namespace bench {

#ifdef PI
void RegisterUntraced() {
    const std::string way = "untraced";
#else
void RegisterUntraced();

void RegisterBenchmarks() {
    RegisterUntraced();
    const std::string way = "library";
#endif
    Add("silent_etr", way, Compute);
    Add("silent_combination", way, ValidateCombination);
    Add("silent_get_number", way, GetNumber);
    Add("silent_get_text", way, GetText);
}

}  // namespace bench
