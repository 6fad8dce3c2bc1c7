// SPDX-License-Identifier: Apache-2.0
// SCSI: what LOG SENSE returns (SPC-5, SBC-4).

#include <algorithm>
#include <iterator>

#include "drives/health_pages.h"
#include "drives/self_tests.h"
#include "util/byte_order.h"

namespace PI {

namespace {

constexpr std::size_t HEADER = 4;  // of the page, and of each parameter in it

struct Parameter {
    std::uint32_t m_Code;
    const std::uint8_t* m_Bytes;  ///< the parameter, header included
    std::size_t m_Length;         ///< of its value

    /// A byte of the parameter, counted from its header, where it is long enough.
    bool Has(std::size_t offset) const { return offset < HEADER + m_Length; }
    std::int64_t Count() const {
        const std::uint8_t* value = m_Bytes + HEADER;
        const std::size_t high = m_Length > 8 ? m_Length - 8 : 0;
        const bool fits = std::all_of(value, value + high, [](std::uint8_t byte) { return byte == 0; });
        return fits ? Counter(BigEndian(value, m_Length)) : BEYOND_COUNTING;
    }
};

using ParameterReader = void (*)(const Parameter& parameter, std::uint32_t page, DriveFacts& facts);

void Put(_HEALTH_FIGURE figure, std::uint32_t page, std::int64_t value, DriveFacts& facts) {
    facts.Put(figure, FigureSource::SCSI_LOG_PAGE, page, value);
}

constexpr std::uint32_t WRITE_ERRORS = 0x02;
constexpr std::uint32_t READ_ERRORS = 0x03;
constexpr std::uint32_t VERIFY_ERRORS = 0x05;

void ReadErrorCounter(const Parameter& parameter, std::uint32_t page, DriveFacts& facts) {
    constexpr std::uint32_t BYTES_PROCESSED = 5;
    constexpr std::uint32_t TOTAL_UNCORRECTED = 6;
    if (parameter.m_Length == 0) {
        return;
    }
    if (parameter.m_Code == TOTAL_UNCORRECTED) {
        Put(HealthFigure::MEDIA_ERRORS, page, parameter.Count(), facts);
    } else if (parameter.m_Code == BYTES_PROCESSED && page != VERIFY_ERRORS) {
        Put(page == WRITE_ERRORS ? HealthFigure::BYTES_WRITTEN : HealthFigure::BYTES_READ, page,
            parameter.Count(), facts);
    }
}

void ReadTemperature(const Parameter& parameter, std::uint32_t page, DriveFacts& facts) {
    constexpr std::uint8_t UNKNOWN = 0xFF;
    if (!parameter.Has(5) || parameter.m_Bytes[5] == UNKNOWN) {
        return;
    }
    if (parameter.m_Code == 0) {
        Put(HealthFigure::TEMPERATURE, page, parameter.m_Bytes[5], facts);
    } else if (parameter.m_Code == 1) {
        Put(HealthFigure::TEMPERATURE_LIMIT, page, parameter.m_Bytes[5], facts);
    }
}

void ReadEnvironment(const Parameter& parameter, std::uint32_t page, DriveFacts& facts) {
    constexpr std::uint8_t NOT_VALID = 0x80;
    if (parameter.m_Code != 0 || !parameter.Has(6)) {
        return;
    }
    if (parameter.m_Bytes[5] != NOT_VALID) {
        Put(HealthFigure::TEMPERATURE, page, static_cast<std::int8_t>(parameter.m_Bytes[5]), facts);
    }
    if (parameter.m_Bytes[6] != NOT_VALID) {
        Put(HealthFigure::HIGHEST_TEMPERATURE, page, static_cast<std::int8_t>(parameter.m_Bytes[6]), facts);
    }
}

void ReadSolidState(const Parameter& parameter, std::uint32_t page, DriveFacts& facts) {
    if (parameter.m_Code == 1 && parameter.Has(7)) {
        Put(HealthFigure::WEAR, page, parameter.m_Bytes[7], facts);
    }
}

void ReadBackgroundScan(const Parameter& parameter, std::uint32_t page, DriveFacts& facts) {
    if (parameter.m_Code == 0 && parameter.Has(7)) {
        constexpr std::uint64_t MINUTES = 60;
        Put(HealthFigure::POWER_ON_HOURS, page, Counter(BigEndian(parameter.m_Bytes + 4, 4) / MINUTES),
            facts);
    }
}

void ReadPendingDefects(const Parameter& parameter, std::uint32_t page, DriveFacts& facts) {
    if (parameter.m_Code == 0 && parameter.Has(7)) {
        Put(HealthFigure::PENDING_SECTORS, page, Counter(BigEndian(parameter.m_Bytes + 4, 4)), facts);
    }
}

void ReadInformationalExceptions(const Parameter& parameter, std::uint32_t page, DriveFacts& facts) {
    if (parameter.m_Code != 0 || !parameter.Has(5)) {
        return;
    }
    constexpr std::uint8_t FAILURE_PREDICTED = 0x5D;
    constexpr std::uint8_t WARNING = 0x0B;
    constexpr std::uint8_t FALSE_ALARM = 0xFF;  // qualifier of a predicted failure that is only a test
    const std::uint8_t code = parameter.m_Bytes[4];
    const bool isFailing = code == FAILURE_PREDICTED && parameter.m_Bytes[5] != FALSE_ALARM;
    Put(HealthFigure::VERDICT, page, isFailing ? 1 : code == WARNING ? 2 : 0, facts);
    if (parameter.Has(6) && parameter.m_Bytes[6] != 0xFF && parameter.m_Bytes[6] != 0) {
        Put(HealthFigure::TEMPERATURE, page, parameter.m_Bytes[6], facts);
    }
}

constexpr std::uint32_t SELF_TEST_RESULTS = 0x10;

struct LogPage {
    std::uint32_t m_Page;  ///< page, plus 256 times the subpage
    ParameterReader m_Read;
};

constexpr LogPage LOG_PAGES[] = {
    {WRITE_ERRORS, ReadErrorCounter},
    {READ_ERRORS, ReadErrorCounter},
    {VERIFY_ERRORS, ReadErrorCounter},
    {0x0D, ReadTemperature},
    {0x10D, ReadEnvironment},
    {SELF_TEST_RESULTS, nullptr},
    {0x11, ReadSolidState},
    {0x15, ReadBackgroundScan},
    {0x115, ReadPendingDefects},
    {0x2F, ReadInformationalExceptions},
};

/// The parameter at an offset; false when it does not fit into the page.
bool ParameterAt(const std::uint8_t* page, std::size_t offset, std::size_t end, Parameter& parameter) {
    if (end - offset < HEADER) {
        return false;
    }
    parameter = {static_cast<std::uint32_t>(BigEndian(page + offset, 2)), page + offset, page[offset + 3]};
    return end - offset - HEADER >= parameter.m_Length;
}

/// Twenty results of the same length, the newest first.
const char* ReadSelfTests(const std::uint8_t* page, std::size_t end, DriveFacts& facts) {
    constexpr std::size_t RESULTS = 20;
    constexpr std::size_t RESULT_SIZE = 20;
    if (end != HEADER + RESULTS * RESULT_SIZE) {
        return WRONG_LENGTHS;
    }
    SelfTestCounter counter;
    for (std::size_t i = 0; i < RESULTS; ++i) {
        const std::uint8_t* result = page + HEADER + i * RESULT_SIZE;
        if (BigEndian(result + 4, 8) == 0) {  // unused entries are zero
            break;
        }
        const unsigned code = result[4] >> 5;
        const unsigned outcome = result[4] & 0x0F;
        counter.Add(outcome == 0                   ? SelfTestResult::PASSED
                    : outcome >= 3 && outcome <= 7 ? SelfTestResult::FAILED
                                                   : SelfTestResult::NEITHER,
                    code == 2 || code == 6);
    }
    Put(HealthFigure::FAILED_SELF_TESTS, SELF_TEST_RESULTS, counter.Failed(), facts);
    return nullptr;
}

}  // namespace

const char* ReadSCSILogPage(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept {
    if (length < HEADER) {
        return TOO_SHORT;
    }
    // The bit that announces a subpage is not looked at: some drives leave it out.
    const std::uint32_t number = (page[0] & 0x3FU) | static_cast<std::uint32_t>(page[1]) << 8;
    const auto* known = std::find_if(std::begin(LOG_PAGES), std::end(LOG_PAGES),
                                     [number](const LogPage& logPage) { return logPage.m_Page == number; });
    if (known == std::end(LOG_PAGES)) {
        return ANOTHER_KIND;
    }
    const std::size_t end = HEADER + BigEndian(page + 2, 2);
    if (end > length) {
        return TOO_SHORT;
    }
    Parameter parameter = {};
    for (std::size_t offset = HEADER; offset < end; offset += HEADER + parameter.m_Length) {
        if (!ParameterAt(page, offset, end, parameter)) {
            return WRONG_LENGTHS;
        }
    }
    if (known->m_Read == nullptr) {
        return ReadSelfTests(page, end, facts);
    }
    facts.Forget(FigureSource::SCSI_LOG_PAGE, number);
    for (std::size_t offset = HEADER; offset < end; offset += HEADER + parameter.m_Length) {
        ParameterAt(page, offset, end, parameter);
        known->m_Read(parameter, number, facts);
    }
    return nullptr;
}

}  // namespace PI
