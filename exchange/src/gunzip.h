// SPDX-License-Identifier: Apache-2.0
// Text that is compressed with gzip.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace PI {

constexpr std::size_t MAX_UNPACKED = std::size_t{64} << 20;

bool IsGzip(std::string_view bytes);

/// @param text out: what was unpacked, members one after another
/// @return null, or why it cannot be unpacked
const char* Gunzip(std::string_view bytes, std::string& text);

}  // namespace PI
