// SPDX-License-Identifier: Apache-2.0
// Pages as drives hand them out, built byte by byte.
#pragma once

#include <pi/drive_health.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace PI::Test {

using Page = std::vector<std::uint8_t>;

inline void PutLittle(Page& page, std::size_t offset, std::uint64_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
        page[offset + i] = static_cast<std::uint8_t>(i < 8 ? value >> (8 * i) : 0);
    }
}

inline void PutBig(Page& page, std::size_t offset, std::uint64_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
        page[offset + size - 1 - i] = static_cast<std::uint8_t>(i < 8 ? value >> (8 * i) : 0);
    }
}

/// Makes the bytes of each sector add up to 0.
inline Page WithChecksum(Page page) {
    for (std::size_t sector = 0; sector + 512 <= page.size(); sector += 512) {
        std::uint8_t sum = 0;
        for (std::size_t i = 0; i < 511; ++i) {
            sum = static_cast<std::uint8_t>(sum + page[sector + i]);
        }
        page[sector + 511] = static_cast<std::uint8_t>(-sum);
    }
    return page;
}

struct Slot {
    std::uint8_t m_ID;
    std::uint8_t m_Current;
    std::uint64_t m_Raw;
    std::uint8_t m_Worst = 100;
    std::uint16_t m_Flags = 0x32;
};

inline Page SmartData(std::initializer_list<Slot> slots) {
    Page page(512);
    page[0] = 1;
    std::size_t offset = 2;
    for (const Slot& slot : slots) {
        page[offset] = slot.m_ID;
        PutLittle(page, offset + 1, slot.m_Flags, 2);
        page[offset + 3] = slot.m_Current;
        page[offset + 4] = slot.m_Worst;
        PutLittle(page, offset + 5, slot.m_Raw, 7);
        offset += 12;
    }
    return WithChecksum(page);
}

struct Limit {
    std::uint8_t m_ID;
    std::uint8_t m_Threshold;
};

inline Page SmartThresholds(std::initializer_list<Limit> limits) {
    Page page(512);
    page[0] = 1;
    std::size_t offset = 2;
    for (const Limit& limit : limits) {
        page[offset] = limit.m_ID;
        page[offset + 1] = limit.m_Threshold;
        offset += 12;
    }
    return WithChecksum(page);
}

struct Statistic {
    std::size_t m_Offset;
    std::uint64_t m_Value;
    std::uint8_t m_Flags = 0xC0;  ///< supported and valid
};

inline Page DeviceStatistics(std::uint8_t number, std::initializer_list<Statistic> statistics) {
    Page page(512);
    page[0] = 1;
    page[2] = number;
    for (const Statistic& statistic : statistics) {
        PutLittle(page, statistic.m_Offset, statistic.m_Value, 7);
        page[statistic.m_Offset + 7] = statistic.m_Flags;
    }
    return page;
}

struct SelfTest {
    std::uint8_t m_Type;    ///< 1 short, 2 extended
    std::uint8_t m_Status;  ///< outcome in the high nibble
};

/// ATA log 06h; tests in the order in which they were run.
inline Page SelfTestLog(const std::vector<SelfTest>& tests) {
    Page page(512);
    page[0] = 1;
    for (std::size_t i = 0; i < tests.size(); ++i) {
        const std::size_t offset = 2 + i % 21 * 24;
        page[offset] = tests[i].m_Type;
        page[offset + 1] = tests[i].m_Status;
        PutLittle(page, offset + 2, 100 + i, 2);
    }
    page[508] = static_cast<std::uint8_t>(tests.empty() ? 0 : (tests.size() - 1) % 21 + 1);
    return WithChecksum(page);
}

/// ATA log 07h over as many sectors; tests in the order in which they were run.
inline Page ExtendedSelfTestLog(const std::vector<SelfTest>& tests, std::size_t sectors = 1) {
    Page page(512 * sectors);
    page[0] = 1;
    const std::size_t entries = 19 * sectors;
    for (std::size_t i = 0; i < tests.size(); ++i) {
        const std::size_t slot = i % entries;
        const std::size_t offset = slot / 19 * 512 + 4 + slot % 19 * 26;
        page[offset] = tests[i].m_Type;
        page[offset + 1] = tests[i].m_Status;
        PutLittle(page, offset + 2, 100 + i, 2);
    }
    PutLittle(page, 2, tests.empty() ? 0 : (tests.size() - 1) % entries + 1, 2);
    return WithChecksum(page);
}

struct NVMeHealth {
    std::uint8_t m_Warning = 0;
    std::uint16_t m_Kelvin = 308;
    std::uint8_t m_Spare = 100;
    std::uint8_t m_SpareThreshold = 10;
    std::uint8_t m_Used = 3;
    std::uint64_t m_UnitsRead = 20;
    std::uint64_t m_UnitsWritten = 10;
    std::uint64_t m_Cycles = 12;
    std::uint64_t m_Hours = 4321;
    std::uint64_t m_Unsafe = 4;
    std::uint64_t m_MediaErrors = 0;
    std::uint64_t m_LogEntries = 7;
};

inline Page HealthLog(const NVMeHealth& health = {}) {
    Page page(512);
    page[0] = health.m_Warning;
    PutLittle(page, 1, health.m_Kelvin, 2);
    page[3] = health.m_Spare;
    page[4] = health.m_SpareThreshold;
    page[5] = health.m_Used;
    PutLittle(page, 32, health.m_UnitsRead, 16);
    PutLittle(page, 48, health.m_UnitsWritten, 16);
    PutLittle(page, 112, health.m_Cycles, 16);
    PutLittle(page, 128, health.m_Hours, 16);
    PutLittle(page, 144, health.m_Unsafe, 16);
    PutLittle(page, 160, health.m_MediaErrors, 16);
    PutLittle(page, 176, health.m_LogEntries, 16);
    return page;
}

/// Identify controller data with temperature limits in kelvin and a capacity in bytes.
inline Page IdentifyController(std::uint16_t warning, std::uint16_t critical, std::uint64_t capacity) {
    Page page(4096);
    const std::string model = "A MODEL OF A DRIVE                      ";
    std::copy(model.begin(), model.end(), page.begin() + 24);
    PutLittle(page, 266, warning, 2);
    PutLittle(page, 268, critical, 2);
    PutLittle(page, 280, capacity, 16);
    return page;
}

struct Parameter {
    std::uint16_t m_Code;
    Page m_Value;
};

/// What LOG SENSE returns.
inline Page LogPage(std::uint8_t number, std::uint8_t subpage, const std::vector<Parameter>& parameters) {
    Page page(4);
    page[0] = static_cast<std::uint8_t>(number | (subpage != 0 ? 0x40 : 0));
    page[1] = subpage;
    for (const Parameter& parameter : parameters) {
        const std::size_t offset = page.size();
        page.resize(offset + 4);
        PutBig(page, offset, parameter.m_Code, 2);
        page[offset + 2] = 0x03;
        page[offset + 3] = static_cast<std::uint8_t>(parameter.m_Value.size());
        page.insert(page.end(), parameter.m_Value.begin(), parameter.m_Value.end());
    }
    PutBig(page, 2, page.size() - 4, 2);
    return page;
}

inline Page Big(std::uint64_t value, std::size_t size) {
    Page bytes(size);
    PutBig(bytes, 0, value, size);
    return bytes;
}

}  // namespace PI::Test
