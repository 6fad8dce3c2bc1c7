// SPDX-License-Identifier: Apache-2.0
// Sorting the extents of drives.

#include <pi/layout.h>

#include <algorithm>
#include <random>

#include "measure.h"
#include "plain_property.h"

namespace {

struct PlainExtent {
    std::uint64_t m_ObjectID = 0;
    std::uint64_t m_StartAddress = 0;
    std::uint64_t m_UsedSize = 0;
    std::vector<bench::PlainProperty> m_Properties;
    std::uint64_t m_LogicalDrive = 0;
    std::uint64_t m_LogicalOwner = 0;
    bool m_IsConfigurable = true;

    bool operator<(const PlainExtent& other) const {
        return std::tie(m_ObjectID, m_StartAddress) < std::tie(other.m_ObjectID, other.m_StartAddress);
    }
};

template <class Extent>
void AddSort(const std::string& way) {
    bench::Add("sort", way, [](benchmark::State& state) {
        std::mt19937_64 random(1);
        std::vector<Extent> extents(10000);
        for (Extent& extent : extents) {
            extent.m_ObjectID = random() % 1000;
            extent.m_StartAddress = random();
        }
        std::vector<Extent> sorted;
        for (auto _ : state) {
            state.PauseTiming();
            sorted = extents;
            state.ResumeTiming();
            std::sort(sorted.begin(), sorted.end());
        }
        if (!std::is_sorted(sorted.begin(), sorted.end())) {
            state.SkipWithError("not sorted");
        }
    });
}

}  // namespace

void bench::RegisterBenchmarks() {
    AddSort<PI::CDrive>("library");
    AddSort<PlainExtent>("plain");
}
