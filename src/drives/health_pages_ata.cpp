// SPDX-License-Identifier: Apache-2.0
// ATA: SMART data and thresholds (ATA8-ACS), device statistics and self-test logs (ACS-3, ACS-4).

#include <pi/drives.h>

#include <cstring>
#include <numeric>

#include "drives/health_pages.h"
#include "drives/self_tests.h"
#include "util/byte_order.h"

namespace PI {

namespace {

constexpr std::size_t SECTOR = 512;
constexpr std::uint32_t SELF_TEST_LOG = 0x06;
constexpr std::uint32_t EXTENDED_SELF_TEST_LOG = 0x07;

/// The sum of all bytes of a sector is 0.
bool ChecksumFits(const std::uint8_t* sector) {
    return std::accumulate(sector, sector + SECTOR, 0U) % 256 == 0;
}

/// What is no page of one sector with a checksum.
const char* Refuse(const std::uint8_t* page, std::size_t length) {
    if (length < SECTOR) {
        return TOO_SHORT;
    }
    if (!ChecksumFits(page)) {
        return WRONG_CHECKSUM;
    }
    return IsBlank(page, SECTOR) ? ANOTHER_KIND : nullptr;
}

// Statistics that are read.
struct Statistic {
    std::uint8_t m_Page;
    std::uint8_t m_Offset;
    std::int8_t m_Bytes;
    _HEALTH_FIGURE m_Figure;
};

constexpr std::int8_t SIGNED_BYTE = -1;

constexpr Statistic STATISTICS[] = {
    {1, 0x08, 4, HealthFigure::POWER_CYCLES},
    {1, 0x10, 4, HealthFigure::POWER_ON_HOURS},
    {1, 0x18, 6, HealthFigure::BYTES_WRITTEN},
    {1, 0x28, 6, HealthFigure::BYTES_READ},
    {1, 0x40, 4, HealthFigure::PENDING_SECTORS},
    {3, 0x20, 4, HealthFigure::REALLOCATED_SECTORS},
    {4, 0x08, 4, HealthFigure::MEDIA_ERRORS},
    {5, 0x08, SIGNED_BYTE, HealthFigure::TEMPERATURE},
    {5, 0x20, SIGNED_BYTE, HealthFigure::HIGHEST_TEMPERATURE},
    {5, 0x58, SIGNED_BYTE, HealthFigure::TEMPERATURE_LIMIT},
    {6, 0x18, 4, HealthFigure::INTERFACE_ERRORS},
    {7, 0x08, 1, HealthFigure::WEAR},
};

void Note(const Statistic& statistic, std::int64_t value, DriveFacts& facts) {
    const bool inBlocks =
        statistic.m_Figure == HealthFigure::BYTES_WRITTEN || statistic.m_Figure == HealthFigure::BYTES_READ;
    facts.Put(statistic.m_Figure, FigureSource::ATA_DEVICE_STATISTICS, statistic.m_Page, value, inBlocks);
}

/// Type of a self-test, bit 7 of which says that the host waited for it.
bool IsExtended(std::uint8_t type) {
    return (type & 0x7F) == 2;
}

/// What the slots of a SMART data or thresholds page look like: the pages say nowhere which they are.
struct Slots {
    std::size_t m_Used = 0;
    std::size_t m_WithValues = 0;  ///< a current and a worst value, which thresholds pages do not have
    std::size_t m_Bare = 0;        ///< nothing after the place of a threshold

    explicit Slots(const std::uint8_t* page) {
        for (std::size_t slot = 0; slot < DriveFacts::MAX_ATTRIBUTES; ++slot) {
            const std::uint8_t* entry = page + 2 + slot * sizeof(_IDE_SMART_ATTRIBUTE);
            if (entry[0] != 0) {
                ++m_Used;
                m_WithValues += entry[3] != 0 && entry[4] != 0 ? 1U : 0U;
                m_Bare += LittleEndian(entry + 2, 8) == 0 && LittleEndian(entry + 10, 2) == 0 ? 1U : 0U;
            }
        }
    }

    bool AreAttributes() const { return m_Used > 0 && m_WithValues == m_Used; }
    /// A single one may be an attribute that has reached 0.
    bool AreThresholds() const { return m_Used > 1 && m_Bare == m_Used; }
};

/// Byte 1 of a self-test log's entry.
SelfTestResult ResultOf(std::uint8_t status) {
    const unsigned outcome = status >> 4;
    if (outcome == 0) {
        return SelfTestResult::PASSED;
    }
    return outcome >= 3 && outcome <= 8 ? SelfTestResult::FAILED : SelfTestResult::NEITHER;
}

/// Counts the entries of a log from the newest one back. Unused entries are zero.
/// @param newest    from 0
/// @param entryAt   first byte of an entry
template <class EntryAt>
std::int64_t CountFailed(std::size_t newest, std::size_t count, std::size_t entrySize, EntryAt entryAt) {
    SelfTestCounter counter;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* entry = entryAt((newest + count - i) % count);
        if (LittleEndian(entry, 8) == 0 && LittleEndian(entry + entrySize - 8, 8) == 0) {
            break;
        }
        counter.Add(ResultOf(entry[1]), IsExtended(entry[0]));
    }
    return counter.Failed();
}

}  // namespace

const char* ReadATASmartData(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept {
    if (const char* reason = Refuse(page, length)) {
        return reason;
    }
    _IDE_SMART_DATA data;
    std::memcpy(&data, page, sizeof(data));
    if (Slots(page).AreThresholds()) {
        return ANOTHER_KIND;
    }
    facts.ForgetAttributes();
    for (const _IDE_SMART_ATTRIBUTE& slot : data.m_Attributes) {
        if (slot.m_ID == 0) {
            continue;
        }
        Attribute& attribute = facts.AddAttribute(slot.m_ID);
        attribute.m_Flags = static_cast<std::uint16_t>(LittleEndian(slot.m_Flags, 2));
        attribute.m_Current = slot.m_Current;
        attribute.m_Worst = slot.m_Worst;
        // Some drives continue the raw value in the reserved byte.
        attribute.m_Raw = LittleEndian(slot.m_Raw, 6) | std::uint64_t{slot.m_Reserved} << 48;
    }
    return nullptr;
}

const char* ReadATASmartThresholds(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept {
    if (const char* reason = Refuse(page, length)) {
        return reason;
    }
    if (Slots(page).AreAttributes()) {
        return ANOTHER_KIND;
    }
    facts.m_ThresholdCount = 0;
    for (std::size_t slot = 0; slot < DriveFacts::MAX_ATTRIBUTES; ++slot) {
        const std::uint8_t* entry = page + 2 + slot * sizeof(_IDE_SMART_ATTRIBUTE);
        if (entry[0] != 0) {
            facts.m_Thresholds[facts.m_ThresholdCount++] = {entry[0], entry[1]};
        }
    }
    return nullptr;
}

void NoteStatistic(std::uint32_t page, std::uint32_t offset, std::int64_t value, DriveFacts& facts) noexcept {
    for (const Statistic& statistic : STATISTICS) {
        if (statistic.m_Page == page && statistic.m_Offset == offset) {
            Note(statistic, value, facts);
        }
    }
}

const char* ReadATADeviceStatistics(const std::uint8_t* page, std::size_t length,
                                    DriveFacts& facts) noexcept {
    if (length < SECTOR) {
        return TOO_SHORT;
    }
    const std::uint8_t number = page[2];
    const bool isHeader = LittleEndian(page, 2) != 0 && LittleEndian(page + 3, 5) == 0;
    if (!isHeader || number == 0) {  // unsupported pages are zero; page 0 lists the others
        return ANOTHER_KIND;
    }
    bool isRead = false;
    for (const Statistic& statistic : STATISTICS) {
        isRead = isRead || statistic.m_Page == number;
    }
    if (!isRead) {
        return ANOTHER_KIND;
    }
    facts.Forget(FigureSource::ATA_DEVICE_STATISTICS, number);
    for (const Statistic& statistic : STATISTICS) {
        if (statistic.m_Page != number) {
            continue;
        }
        constexpr unsigned SUPPORTED_AND_VALID = 0xC0;
        const std::uint8_t* entry = page + statistic.m_Offset;
        if ((entry[7] & SUPPORTED_AND_VALID) != SUPPORTED_AND_VALID) {
            continue;
        }
        const std::int64_t value =
            statistic.m_Bytes == SIGNED_BYTE
                ? static_cast<std::int8_t>(entry[0])
                : Counter(LittleEndian(entry, static_cast<std::size_t>(statistic.m_Bytes)));
        Note(statistic, value, facts);
    }
    return nullptr;
}

const char* ReadATASelfTestLog(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept {
    constexpr std::size_t ENTRIES = 21;
    constexpr std::size_t ENTRY_SIZE = 24;
    if (const char* reason = Refuse(page, length)) {
        return reason;
    }
    const std::size_t newest = page[508];
    if (newest > ENTRIES) {
        return WRONG_LENGTHS;
    }
    const std::int64_t failed =
        newest == 0 ? 0 : CountFailed(newest - 1, ENTRIES, ENTRY_SIZE, [page](std::size_t index) {
            return page + 2 + index * ENTRY_SIZE;
        });
    facts.Put(HealthFigure::FAILED_SELF_TESTS, FigureSource::ATA_LOG, SELF_TEST_LOG, failed);
    return nullptr;
}

const char* ReadATAExtendedSelfTestLog(const std::uint8_t* page, std::size_t length,
                                       DriveFacts& facts) noexcept {
    constexpr std::size_t SECTOR_ENTRIES = 19;
    constexpr std::size_t ENTRY_SIZE = 26;
    if (const char* reason = Refuse(page, length)) {
        return reason;
    }
    const std::size_t sectors = length / SECTOR;
    for (std::size_t sector = 1; sector < sectors; ++sector) {
        if (!ChecksumFits(page + sector * SECTOR)) {
            return WRONG_CHECKSUM;
        }
    }
    const std::size_t newest = LittleEndian(page + 2, 2);
    const std::size_t entries = sectors * SECTOR_ENTRIES;
    if (newest > entries) {
        return WRONG_LENGTHS;
    }
    const auto entryAt = [page](std::size_t index) {
        return page + index / SECTOR_ENTRIES * SECTOR + 4 + index % SECTOR_ENTRIES * ENTRY_SIZE;
    };
    facts.Put(HealthFigure::FAILED_SELF_TESTS, FigureSource::ATA_LOG, EXTENDED_SELF_TEST_LOG,
              newest == 0 ? 0 : CountFailed(newest - 1, entries, ENTRY_SIZE, entryAt));
    return nullptr;
}

}  // namespace PI
