// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <velk/clock.h>

#include <chrono>
#include <cstdint>
#include <thread>

namespace {

std::uint64_t SystemMs() {
    using namespace std::chrono;
    const auto sinceEpoch = system_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(duration_cast<milliseconds>(sinceEpoch).count());
}

TEST(Clock, NowLiesBetweenTwoReadingsOfTheSystemClock) {
    for (int round = 0; round < 100; ++round) {
        const std::uint64_t before = SystemMs();
        const std::uint64_t now = VELK::now();
        const std::uint64_t after = SystemMs();

        EXPECT_GE(now, before);
        EXPECT_LE(now, after);
    }
}

TEST(Clock, CountsMilliseconds) {
    const std::uint64_t before = VELK::now();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const std::uint64_t passed = VELK::now() - before;

    EXPECT_GE(passed, 20u);
    EXPECT_LT(passed, 10000u);
}

}  // namespace
