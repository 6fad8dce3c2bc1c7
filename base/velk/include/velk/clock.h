// SPDX-License-Identifier: Apache-2.0
/// @file
/// The wall clock.
#pragma once

#include <cstdint>

namespace VELK {

/// @addtogroup base
/// @{

/// Milliseconds since 1970-01-01 00:00:00 UTC. Thread-safe.
__attribute__((visibility("default"))) std::uint64_t now();

/// @}

}  // namespace VELK
