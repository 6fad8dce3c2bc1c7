// SPDX-License-Identifier: Apache-2.0
// Numbers in the pages of drives: ATA and NVMe have the lowest byte first, SCSI the highest.
#pragma once

#include <cstddef>
#include <cstdint>

namespace PI {

inline std::uint64_t LittleEndian(const std::uint8_t* bytes, std::size_t count) {
    std::uint64_t value = 0;
    while (count > 0) {
        value = value << 8 | bytes[--count];
    }
    return value;
}

/// Of more than eight bytes the last eight.
inline std::uint64_t BigEndian(const std::uint8_t* bytes, std::size_t count) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        value = value << 8 | bytes[i];
    }
    return value;
}

}  // namespace PI
