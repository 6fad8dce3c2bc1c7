// SPDX-License-Identifier: Apache-2.0
// What CDriveHealth remembers of a drive: readings as the drive gave them, nothing decided yet.
#pragma once

#include <pi/drive_health.h>
#include <pi/endurance_rating.h>
#include <pi/ssd_endurance.h>

#include <array>
#include <cstdint>
#include <limits>

namespace PI {

/// Stands for counters that are larger than any drive's: no figure comes from it.
constexpr std::int64_t BEYOND_COUNTING = std::numeric_limits<std::int64_t>::max();

/// All bits of an attribute's raw value, or of a statistic of six bytes: the firmware has not filled it
/// (judgement), so no figure comes from it.
constexpr std::int64_t ALL_ONES = (std::int64_t{1} << 48) - 1;

/// A figure as one source gives it.
struct Reading {
    std::int64_t m_Value = 0;
    std::int16_t m_Figure = 0;
    std::int16_t m_Source = 0;
    std::uint32_t m_Number = 0;
    bool m_InBlocks = false;  ///< in logical blocks, whose size may come later
};

/// An ATA SMART attribute.
struct Attribute {
    std::uint64_t m_Raw = 0;
    std::int16_t m_Current = -1;
    std::int16_t m_Worst = -1;
    std::uint16_t m_Flags = 0;
    std::uint8_t m_ID = 0;
    char m_Name[41] = {};  ///< as another program calls it; empty on a drive's own page
};

struct Threshold {
    std::uint8_t m_ID = 0;
    std::uint8_t m_Value = 0;
};

/// Readings, attributes and what the drive is. Of the same size for every drive, so that one allocation holds
/// it.
struct DriveFacts {
    static constexpr std::size_t MAX_ATTRIBUTES = 30;
    static constexpr std::size_t MAX_READINGS = 96;  // three times what all pages of a drive hold

    _DRIVE_PROTOCOL m_Protocol = DriveProtocol::UNKNOWN;
    int m_Medium = 0;
    std::uint64_t m_CapacityBytes = 0;
    std::uint64_t m_IdentifiedBytes = 0;  ///< capacity as an NVMe controller states it
    std::uint32_t m_BlockSize = 512;
    CEnduranceRating m_Rating;
    const _SSD_ENDURANCE* m_RatedInCycles = nullptr;  ///< row of the SATA list
    char m_Model[128] = {};
    std::size_t m_AttributeCount = 0;
    std::array<std::uint8_t, 256> m_Slots = {};  ///< by number of an attribute: its place, counted from 1
    std::size_t m_ThresholdCount = 0;
    std::size_t m_ReadingCount = 0;
    std::array<Attribute, MAX_ATTRIBUTES> m_Attributes;
    std::array<Threshold, MAX_ATTRIBUTES> m_Thresholds;
    std::array<Reading, MAX_READINGS> m_Readings;

    /// Notes a figure, in place of an earlier one from the same source.
    void Put(_HEALTH_FIGURE figure, _FIGURE_SOURCE source, std::uint32_t number, std::int64_t value,
             bool inBlocks = false) noexcept;

    /// In bytes; 0 when unknown.
    std::uint64_t Capacity() const noexcept {
        return m_CapacityBytes != 0 ? m_CapacityBytes : m_IdentifiedBytes;
    }

    void ForgetAttributes() noexcept;

    /// Adds an attribute, while there is room: of two with the same number the later one counts.
    Attribute& AddAttribute(std::uint8_t id) noexcept;

    /// The attribute of a number; null when there is none.
    const Attribute* FindAttribute(std::uint8_t id) const noexcept {
        return m_Slots[id] != 0 ? &m_Attributes[m_Slots[id] - 1U] : nullptr;
    }

    /// Forgets everything from a source, before its page is read again.
    void Forget(_FIGURE_SOURCE source, std::uint32_t number) noexcept;
};

struct CDriveHealth::CFacts : DriveFacts {};

/// A counter as a reading's value.
constexpr std::int64_t Counter(std::uint64_t value) {
    return value < static_cast<std::uint64_t>(BEYOND_COUNTING) ? static_cast<std::int64_t>(value)
                                                               : BEYOND_COUNTING;
}

/// A counter of units as a reading's value in bytes.
constexpr std::int64_t BytesOf(std::uint64_t units, std::uint64_t unitBytes) {
    return units <= static_cast<std::uint64_t>(BEYOND_COUNTING) / unitBytes
               ? static_cast<std::int64_t>(units * unitBytes)
               : BEYOND_COUNTING;
}

}  // namespace PI
