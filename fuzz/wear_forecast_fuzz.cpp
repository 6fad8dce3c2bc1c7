// SPDX-License-Identifier: Apache-2.0
// Readings of a drive in any order, with any figures: states and figures go together, and nothing overflows.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/wear_forecast.h>

#include <cstdint>

#include "check.h"

namespace {

using namespace PI;

CWearReading NextReading(FuzzedDataProvider& input) {
    CWearReading reading;
    if (input.ConsumeBool()) {
        reading.SetPowerOnHours(input.ConsumeBool() ? input.ConsumeIntegral<std::uint16_t>()
                                                    : input.ConsumeIntegral<std::uint64_t>());
    }
    if (input.ConsumeBool()) {
        reading.SetWear(input.ConsumeBool() ? input.ConsumeIntegralInRange<std::uint32_t>(0, 101)
                                            : input.ConsumeIntegral<std::uint32_t>());
    }
    if (input.ConsumeBool()) {
        reading.SetBytesWritten(input.ConsumeIntegral<std::uint64_t>());
    }
    if (input.ConsumeBool()) {
        reading.SetDate(input.ConsumeIntegral<std::int64_t>());
    }
    reading.SetFirmware(input.ConsumeRandomLengthString(4));
    return reading;
}

void CheckFigures(const CWearForecast& forecast) {
    constexpr std::uint64_t MOST = 1000000000;
    const bool hasHours = forecast.GetHours().has_value();
    const bool hasLow = forecast.GetLow().has_value();
    const bool hasHigh = forecast.GetHigh().has_value();
    switch (forecast.GetState()) {
        case WearForecastState::NOT_ENOUGH: CHECK(!hasHours && !hasLow && !hasHigh); break;
        case WearForecastState::STANDS_STILL: CHECK(!hasHours && hasLow && !hasHigh); break;
        case WearForecastState::WORN: CHECK(*forecast.GetHigh() == 0); [[fallthrough]];
        case WearForecastState::ESTIMATED:
            CHECK(hasHours && hasLow && *forecast.GetLow() <= *forecast.GetHours());
            CHECK(!hasHigh || (*forecast.GetHours() <= *forecast.GetHigh() && *forecast.GetHigh() <= MOST));
            break;
        default: CHECK(false);
    }
    CHECK((*forecast.GetReason() == '\0') == (forecast.GetState() == WearForecastState::ESTIMATED));
    CHECK((forecast.GetBasis() == WearForecastBasis::NONE) == !hasLow);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto enduranceTB = input.ConsumeIntegral<std::uint64_t>();
    const auto hours = input.ConsumeIntegral<std::uint64_t>();
    std::vector<CWearReading> readings;
    while (input.remaining_bytes() > 0) {
        readings.push_back(NextReading(input));
        const CWearForecast forecast(readings, enduranceTB);
        CheckFigures(forecast);
        const auto date = forecast.GetDate(hours);
        CHECK(!date.has_value() || *date <= 253402300799);
    }
    return 0;
}
