// SPDX-License-Identifier: Apache-2.0
/// @file
/// A line of progress.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pitool {

/// Latest time that is taken, in milliseconds: far beyond any clock, and small enough that the estimate's
/// arithmetic never wraps.
constexpr std::uint64_t LATEST_TIME = 99'999'999'999'999;

struct EtaSample {
    int m_Percent = 0;                      ///< 0 to 100
    std::optional<std::uint64_t> m_TimeMs;  ///< none: now
};

/// Whether a line holds nothing but blanks.
bool IsBlankLine(std::string_view line);

/// Reads "percent" or "percent milliseconds", separated by blanks.
///
/// @param sample out: meaningful when the result is true
/// @param reason out: why the line is refused, when the result is false
bool ReadEtaSample(std::string_view line, EtaSample& sample, std::string& reason);

}  // namespace pitool
