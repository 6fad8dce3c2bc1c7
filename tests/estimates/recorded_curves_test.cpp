// SPDX-License-Identifier: Apache-2.0
// Rebuilds, resyncs and checks that a real kernel has done, sample by sample.

#include <gtest/gtest.h>
#include <pi/time_remaining.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

using namespace PI;

struct Sample {
    std::uint64_t m_Time;  // milliseconds
    bool m_IsWaiting;      // paused, delayed, pending: without a position
    std::uint64_t m_Position;
    std::uint64_t m_Total;
};

std::vector<Sample> Read(const std::filesystem::path& path) {
    std::vector<Sample> samples;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        std::istringstream fields(line);
        double seconds = 0;
        if (fields >> seconds) {
            Sample sample = {static_cast<std::uint64_t>(std::llround(seconds * 1000)), false, 0, 0};
            sample.m_IsWaiting = !(fields >> sample.m_Position >> sample.m_Total);
            samples.push_back(sample);
        }
    }
    return samples;
}

class RecordedCurve : public testing::TestWithParam<std::filesystem::path> {};

void Add(CTimeRemaining& estimate, const Sample& sample) {
    if (sample.m_IsWaiting) {
        estimate.AddPause(sample.m_Time);
    } else {
        estimate.AddSample(sample.m_Time, sample.m_Position, sample.m_Total);
    }
}

TEST_P(RecordedCurve, StatesFollowTheKernel) {
    CTimeRemaining estimate;
    const std::vector<Sample> samples = Read(GetParam());
    ASSERT_GT(samples.size(), 20U);
    for (const Sample& sample : samples) {
        Add(estimate, sample);
        const auto state = estimate.GetState();
        EXPECT_EQ(state == TimeRemainingState::WAITING, sample.m_IsWaiting) << sample.m_Time;
        EXPECT_EQ(state == TimeRemainingState::DONE,
                  !sample.m_IsWaiting && sample.m_Position == sample.m_Total)
            << sample.m_Time;
        EXPECT_NE(state, TimeRemainingState::STALLED) << sample.m_Time;
        if (state == TimeRemainingState::DONE) {
            break;  // the kernel may say that it waits before it says so, too
        }
    }
    EXPECT_EQ(estimate.GetState(), TimeRemainingState::DONE);
}

TEST_P(RecordedCurve, RestartsOfTheServiceChangeNothing) {
    CTimeRemaining whole;
    CTimeRemaining stored;
    for (const Sample& sample : Read(GetParam())) {
        Add(whole, sample);
        const auto restored = CTimeRemaining::FromText(stored.ToText());
        ASSERT_TRUE(restored.has_value());
        stored = *restored;
        Add(stored, sample);
        EXPECT_EQ(stored.ToText(), whole.ToText());
    }
}

std::vector<std::filesystem::path> Curves() {
    const std::filesystem::directory_iterator folder(RECORDED_CURVES);
    return {begin(folder), end(folder)};
}

std::string NameOf(const testing::TestParamInfo<std::filesystem::path>& curve) {
    std::string name = curve.param.stem();
    for (char& character : name) {
        character = character == '-' ? '_' : character;
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Kernel, RecordedCurve, testing::ValuesIn(Curves()), NameOf);

TEST(RecordedCurves, RangesHoldTheTruthThreeTimesOutOfFour) {
    int ranges = 0;
    int inside = 0;
    for (const std::filesystem::path& path : Curves()) {
        const std::vector<Sample> samples = Read(path);
        const std::uint64_t end = samples.back().m_Time;
        CTimeRemaining estimate;
        for (const Sample& sample : samples) {
            Add(estimate, sample);
            if (estimate.GetState() == TimeRemainingState::RUNNING) {
                const std::uint64_t truth = end - sample.m_Time;
                ++ranges;
                inside += *estimate.GetLow() <= truth && truth <= *estimate.GetHigh() ? 1 : 0;
            }
        }
    }
    EXPECT_GT(ranges, 800);
    EXPECT_GE(inside * 4, ranges * 3) << inside << " of " << ranges;
}

}  // namespace
