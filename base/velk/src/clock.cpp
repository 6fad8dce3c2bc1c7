// SPDX-License-Identifier: Apache-2.0

#include <velk/clock.h>

#include <chrono>

namespace VELK {

std::uint64_t now() {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch).count());
}

}  // namespace VELK
