// SPDX-License-Identifier: Apache-2.0
// What the benchmark programs share.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <utility>

namespace bench {

/// Heap allocations of the process so far, by malloc, calloc, realloc and whatever calls them.
std::uint64_t Allocations();

/// Exceptions thrown in the process so far.
std::uint64_t Throws();

/// Registers the program's benchmarks; each program defines it.
void RegisterBenchmarks();

/// Times the work, and counts its allocations and exceptions beside.
template <class Work>
void Measure(benchmark::State& state, Work work) {
    const std::uint64_t allocations = Allocations();
    const std::uint64_t throws = Throws();
    for (auto _ : state) {
        work();
    }
    using benchmark::Counter;
    const auto perIteration = [](std::uint64_t count) {
        return Counter(static_cast<double>(count), Counter::kAvgIterations);
    };
    state.counters["allocations"] = perIteration(Allocations() - allocations);
    state.counters["throws"] = perIteration(Throws() - throws);
}

/// Registers one way to do a piece of work: "work/way".
template <class Benchmark>
benchmark::internal::Benchmark* Add(const std::string& work, const std::string& way, Benchmark run) {
    return benchmark::RegisterBenchmark((work + "/" + way).c_str(), std::move(run));
}

}  // namespace bench
