// SPDX-License-Identifier: Apache-2.0
// Pages of every kind, one after another, into one drive: what is refused changes nothing, what is known is
// possible and has a source, and everything has a text.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/drive_health.h>
#include <pi/vocabulary.h>

#include <string>
#include <vector>

#include "check.h"

namespace {

using namespace PI;

std::string Everything(const CDriveHealth& drive) {
    std::string text;
    for (const CHealthFigure& figure : drive.GetFigures()) {
        text += std::to_string(figure.GetState()) + " " + std::to_string(figure.GetValue()) + " " +
                figure.GetText() + "\n";
    }
    for (const CHealthReason& reason : drive.GetReasons()) {
        text += std::to_string(reason.GetState()) + " " + reason.GetText() + "\n";
    }
    return text;
}

void CheckFigures(const CDriveHealth& drive) {
    for (const CHealthFigure& figure : drive.GetFigures()) {
        CHECK(figure.HasValue() == (figure.GetSource() != FigureSource::NONE));
        CHECK(figure.HasValue() || figure.GetValue() == 0);
        CHECK(!figure.GetText().empty());
        CHECK(figure.GetUnit() != FigureUnit::PERCENT ||
              (figure.GetValue() >= 0 && figure.GetValue() <= 1000));
    }
    const std::vector<CHealthReason> reasons = drive.GetReasons();
    CHECK(!reasons.empty() && reasons.front().GetState() == drive.GetState());
    for (std::size_t i = 0; i < reasons.size(); ++i) {
        CHECK(!reasons[i].GetText().empty());
        CHECK(i == 0 || reasons[i].GetState() <= reasons[i - 1].GetState());
    }
}

/// Most pages carry a checksum that chance does not hit.
void MendChecksum(std::vector<std::uint8_t>& page) {
    for (std::size_t end = 512; end <= page.size(); end += 512) {
        std::uint8_t sum = 0;
        for (std::size_t i = end - 512; i + 1 < end; ++i) {
            sum = static_cast<std::uint8_t>(sum + page[i]);
        }
        page[end - 1] = static_cast<std::uint8_t>(-sum);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto protocol = static_cast<_DRIVE_PROTOCOL>(input.ConsumeIntegralInRange(0, 3));
    CDriveHealth drive(protocol, input.ConsumeRandomLengthString(60));
    constexpr int MEDIA[] = {0, PropertyValue::HDD, PropertyValue::SSD};
    drive.SetMedium(input.PickValueInArray(MEDIA));
    drive.SetCapacity(input.ConsumeIntegral<std::uint64_t>());
    drive.SetBlockSize(input.ConsumeIntegral<std::uint32_t>());
    for (int pages = 0; pages < 8 && input.remaining_bytes() > 0; ++pages) {
        const auto kind = static_cast<_HEALTH_PAGE>(input.ConsumeIntegralInRange(0, 11));
        const bool isMended = input.ConsumeBool();
        const auto length = input.ConsumeIntegralInRange<std::size_t>(0, 5000);
        std::vector<std::uint8_t> page = input.ConsumeBytes<std::uint8_t>(length);
        if (input.ConsumeBool()) {
            page.resize(length);  // zeros where the input ends
        }
        if (isMended) {
            MendChecksum(page);
        }
        const std::string before = Everything(drive);
        if (drive.Take(kind, page.data(), page.size()) != nullptr) {
            CHECK_TEXT(Everything(drive), before);
        } else {
            const std::string once = Everything(drive);
            CHECK(drive.Take(kind, page.data(), page.size()) == nullptr);
            CHECK_TEXT(Everything(drive), once);
        }
        CheckFigures(drive);
    }
    return 0;
}
