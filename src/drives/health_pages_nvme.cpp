// SPDX-License-Identifier: Apache-2.0
// NVMe: health, self-test and endurance group logs, identify controller (NVMe Base Specification 2.1).

#include <algorithm>

#include "drives/health_pages.h"
#include "drives/self_tests.h"
#include "util/byte_order.h"

namespace PI {

namespace {

constexpr std::uint32_t HEALTH_LOG = 0x02;
constexpr std::uint32_t SELF_TEST_LOG = 0x06;
constexpr std::uint32_t ENDURANCE_GROUP_LOG = 0x09;
constexpr std::size_t LOG_SIZE = 512;

/// A counter of 16 bytes.
std::uint64_t Wide(const std::uint8_t* bytes) {
    return LittleEndian(bytes + 8, 8) == 0 ? LittleEndian(bytes, 8) : UINT64_MAX;
}

struct Log {
    DriveFacts& m_Facts;
    std::uint32_t m_Number;

    void Put(_HEALTH_FIGURE figure, std::int64_t value) {
        m_Facts.Put(figure, FigureSource::NVME_LOG, m_Number, value);
    }
    /// Where both are 0 the drive does not count it: an empty spare is below any threshold.
    void PutSpare(std::uint8_t spare, std::uint8_t threshold) {
        if (spare != 0 || threshold != 0) {
            Put(HealthFigure::SPARE, spare);
            Put(HealthFigure::SPARE_THRESHOLD, threshold);
        }
    }
    /// 0 means that the drive does not count it.
    void PutUnits(_HEALTH_FIGURE figure, std::uint64_t units, std::uint64_t unitBytes) {
        if (units != 0) {
            Put(figure, BytesOf(units, unitBytes));
        }
    }
};

/// Kelvin in two bytes, 0 for none.
bool ToCelsius(const std::uint8_t* kelvin, std::int64_t& celsius) {
    celsius = static_cast<std::int64_t>(LittleEndian(kelvin, 2)) - 273;
    return LittleEndian(kelvin, 2) != 0;
}

}  // namespace

const char* ReadNVMeHealthLog(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept {
    if (length < LOG_SIZE) {
        return TOO_SHORT;
    }
    if (IsBlank(page, LOG_SIZE)) {
        return ANOTHER_KIND;
    }
    facts.Forget(FigureSource::NVME_LOG, HEALTH_LOG);
    Log log = {facts, HEALTH_LOG};
    constexpr std::uint64_t DATA_UNIT = 512000;
    std::int64_t celsius = 0;
    log.Put(HealthFigure::CRITICAL_WARNING, page[0]);
    if (ToCelsius(page + 1, celsius)) {
        log.Put(HealthFigure::TEMPERATURE, celsius);
    }
    log.PutSpare(page[3], page[4]);
    log.Put(HealthFigure::WEAR, page[5]);
    log.PutUnits(HealthFigure::BYTES_READ, Wide(page + 32), DATA_UNIT);
    log.PutUnits(HealthFigure::BYTES_WRITTEN, Wide(page + 48), DATA_UNIT);
    log.Put(HealthFigure::POWER_CYCLES, Counter(Wide(page + 112)));
    log.Put(HealthFigure::POWER_ON_HOURS, Counter(Wide(page + 128)));
    log.Put(HealthFigure::UNSAFE_SHUTDOWNS, Counter(Wide(page + 144)));
    log.Put(HealthFigure::MEDIA_ERRORS, Counter(Wide(page + 160)));
    log.Put(HealthFigure::LOGGED_ERRORS, Counter(Wide(page + 176)));
    return nullptr;
}

const char* ReadNVMeSelfTestLog(const std::uint8_t* page, std::size_t length, DriveFacts& facts) noexcept {
    constexpr std::size_t RESULTS = 20;
    constexpr std::size_t RESULT_SIZE = 28;
    if (length < 4 + RESULTS * RESULT_SIZE) {
        return TOO_SHORT;
    }
    SelfTestCounter counter;
    for (std::size_t i = 0; i < RESULTS; ++i) {
        const std::uint8_t status = page[4 + i * RESULT_SIZE];
        const unsigned result = status & 0x0F;
        const unsigned code = status >> 4;
        constexpr unsigned UNUSED = 0x0F;
        if (result == UNUSED || code == 0) {
            break;
        }
        counter.Add(result == 0                  ? SelfTestResult::PASSED
                    : result >= 5 && result <= 7 ? SelfTestResult::FAILED
                                                 : SelfTestResult::NEITHER,
                    code == 2);
    }
    facts.Put(HealthFigure::FAILED_SELF_TESTS, FigureSource::NVME_LOG, SELF_TEST_LOG, counter.Failed());
    return nullptr;
}

const char* ReadNVMeEnduranceGroupLog(const std::uint8_t* page, std::size_t length,
                                      DriveFacts& facts) noexcept {
    if (length < LOG_SIZE) {
        return TOO_SHORT;
    }
    if (IsBlank(page, LOG_SIZE)) {
        return ANOTHER_KIND;  // no such group
    }
    facts.Forget(FigureSource::NVME_LOG, ENDURANCE_GROUP_LOG);
    Log log = {facts, ENDURANCE_GROUP_LOG};
    log.Put(HealthFigure::CRITICAL_WARNING, page[0]);  // bits as in the health log
    constexpr std::uint64_t GIGABYTE = 1'000'000'000;
    log.PutSpare(page[3], page[4]);
    log.Put(HealthFigure::WEAR, page[5]);
    log.PutUnits(HealthFigure::BYTES_READ, Wide(page + 48), GIGABYTE);
    log.PutUnits(HealthFigure::BYTES_WRITTEN, Wide(page + 64), GIGABYTE);
    log.Put(HealthFigure::MEDIA_ERRORS, Counter(Wide(page + 128)));
    log.Put(HealthFigure::LOGGED_ERRORS, Counter(Wide(page + 144)));
    return nullptr;
}

const char* ReadNVMeIdentifyController(const std::uint8_t* page, std::size_t length,
                                       DriveFacts& facts) noexcept {
    constexpr std::size_t SIZE = 4096;
    if (length < SIZE) {
        return TOO_SHORT;
    }
    // A model in printable characters; other structures of this size begin with one as well, but elsewhere.
    if (!std::all_of(page + 24, page + 64, [](std::uint8_t byte) { return byte >= ' ' && byte <= '~'; })) {
        return ANOTHER_KIND;
    }
    facts.Forget(FigureSource::NVME_IDENTIFY, 0);
    std::int64_t celsius = 0;
    if (ToCelsius(page + 266, celsius)) {
        facts.Put(HealthFigure::TEMPERATURE_LIMIT, FigureSource::NVME_IDENTIFY, 0, celsius);
    }
    if (ToCelsius(page + 268, celsius)) {
        facts.Put(HealthFigure::CRITICAL_TEMPERATURE, FigureSource::NVME_IDENTIFY, 0, celsius);
    }
    const std::uint64_t capacity = Wide(page + 280);
    facts.m_IdentifiedBytes = capacity == UINT64_MAX ? 0 : capacity;
    return nullptr;
}

}  // namespace PI
