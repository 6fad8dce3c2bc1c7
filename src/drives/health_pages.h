// SPDX-License-Identifier: Apache-2.0
// Readers of the pages of drives: each notes what a page holds, or says why it is none and changes nothing.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "drives/health_facts.h"

namespace PI {

/// Reads a page of at most the given length into the facts.
/// @return null, or why the page was refused
using PageReader = const char* (*)(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept;

const char* ReadATASmartData(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept;
const char* ReadATASmartThresholds(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept;
const char* ReadATADeviceStatistics(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept;
const char* ReadATASelfTestLog(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept;
const char* ReadATAExtendedSelfTestLog(const std::uint8_t* page, std::size_t length,
                                       DriveFacts& facts) noexcept;
const char* ReadNVMeHealthLog(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept;
const char* ReadNVMeSelfTestLog(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept;
const char* ReadNVMeEnduranceGroupLog(const std::uint8_t* page, std::size_t length,
                                      DriveFacts& facts) noexcept;
const char* ReadNVMeIdentifyController(const std::uint8_t* page, std::size_t length,
                                       DriveFacts& facts) noexcept;
const char* ReadSCSILogPage(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept;

/// Notes one of the ATA device statistics, where it is one that is read.
void NoteStatistic(std::uint32_t page, std::uint32_t offset, std::int64_t value, DriveFacts& facts) noexcept;

/// Whether all bytes are the same: zeros, which drives return for pages that they do not have, or FFh from a
/// dead one.
inline bool IsBlank(const std::uint8_t* page, std::size_t length) {
    return std::equal(page + 1, page + length, page);
}

constexpr const char* TOO_SHORT = "the page is too short";
constexpr const char* ANOTHER_KIND = "the page is of another kind";
constexpr const char* WRONG_CHECKSUM = "the checksum of the page is wrong";
constexpr const char* WRONG_LENGTHS = "the page contradicts its own lengths";

}  // namespace PI
