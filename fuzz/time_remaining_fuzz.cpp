// SPDX-License-Identifier: Apache-2.0
// Courses of an activity with any positions and times: states and figures go together, and all of it goes
// through its text; and any text is read or refused.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/time_remaining.h>

#include <cstdint>

#include "check.h"

namespace {

using namespace PI;

void CheckFigures(const CTimeRemaining& estimate) {
    const auto remaining = estimate.GetRemaining();
    CHECK(estimate.GetLow().has_value() == remaining.has_value());
    CHECK(estimate.GetHigh().has_value() == remaining.has_value());
    if (remaining.has_value()) {
        CHECK(*estimate.GetLow() <= *remaining && *remaining <= *estimate.GetHigh());
        CHECK(*estimate.GetHigh() <= 1000000000000000);
    }
    switch (estimate.GetState()) {
        case TimeRemainingState::NOT_KNOWN: CHECK(!remaining.has_value()); break;
        case TimeRemainingState::RUNNING: CHECK(remaining.has_value()); break;
        case TimeRemainingState::DONE: CHECK(estimate.GetHigh() == std::uint64_t{0}); break;
        case TimeRemainingState::STALLED:
        case TimeRemainingState::WAITING: break;
        default: CHECK(false);
    }
}

/// What has gone through its text is what it was, and goes on as it would have.
CTimeRemaining ThroughText(const CTimeRemaining& estimate) {
    const std::string text = estimate.ToText();
    CHECK(text.size() <= 3000);
    const auto restored = CTimeRemaining::FromText(text);
    CHECK(restored.has_value());
    CHECK_TEXT(restored->ToText(), text);
    CHECK(restored->GetState() == estimate.GetState() && restored->GetHigh() == estimate.GetHigh());
    return *restored;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    if (input.ConsumeBool()) {
        auto read = CTimeRemaining::FromText(input.ConsumeRemainingBytesAsString());
        if (read.has_value()) {
            ThroughText(*read);
            read->AddSample(1000000, 50, 100);
            read->AddSample(1060000, 51, 100);
            CheckFigures(*read);
        }
        return 0;
    }
    CTimeRemaining estimate;
    std::uint64_t now = input.ConsumeIntegral<std::uint32_t>();
    std::uint64_t position = 0;
    std::uint64_t total = input.ConsumeBool() ? 100 : input.ConsumeIntegral<std::uint64_t>();
    while (input.remaining_bytes() > 0) {
        enum Action { SAMPLE, ODD_SAMPLE, ODD_TIME, PAUSE, RESTART, kMaxValue = RESTART };
        switch (input.ConsumeEnum<Action>()) {
            case SAMPLE:
                now += std::uint64_t{input.ConsumeIntegral<std::uint16_t>()} * 20;
                position += total / 256 * input.ConsumeIntegral<std::uint8_t>() / 64;
                break;
            case ODD_SAMPLE:
                position = input.ConsumeIntegral<std::uint64_t>();
                total = input.ConsumeBool() ? total : input.ConsumeIntegral<std::uint64_t>();
                break;
            case ODD_TIME: now = input.ConsumeIntegral<std::uint64_t>(); break;
            case PAUSE: estimate.AddPause(now += input.ConsumeIntegral<std::uint16_t>()); break;
            case RESTART: estimate = ThroughText(estimate); break;
        }
        estimate.AddSample(now, position, total);
        CheckFigures(estimate);
    }
    ThroughText(estimate);
    return 0;
}
