// SPDX-License-Identifier: Apache-2.0
// Seed of the random part of a test.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>

namespace PI::Test {

/// A fresh seed for each call, or the number in the environment variable PI_TEST_SEED. It is printed, so that
/// a failing run can be repeated.
inline std::uint32_t RandomSeed() {
    const char* given = std::getenv("PI_TEST_SEED");
    const std::uint32_t seed = given != nullptr ? static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10))
                                                : std::random_device()();
    std::cout << "PI_TEST_SEED=" << seed << std::endl;
    return seed;
}

/// A number in [0, count), the same on every standard library.
template <class Engine>
std::uint32_t Below(Engine& random, std::uint32_t count) {
    return static_cast<std::uint32_t>(random() % count);
}

}  // namespace PI::Test
