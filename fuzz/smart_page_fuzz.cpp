// SPDX-License-Identifier: Apache-2.0
// SMART pages of every model of the list: evaluated, then used to estimate the remaining lifetime.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/drives.h>
#include <pi/plugin_helper.h>

#include <array>
#include <cstring>

#include "check.h"
#include "drives/plain_lifetime.h"
#include "drives/plain_smart_values.h"

namespace {

using namespace PI;
using namespace PI::Test;

using PageBytes = std::array<unsigned char, sizeof(_IDE_SMART_DATA)>;

void Evaluate(const PageBytes& bytes, CSmartValues& values) {
    _IDE_SMART_DATA page;
    std::memcpy(&page, bytes.data(), sizeof(page));
    CHECK(values.Evaluate(page));
    CHECK(std::memcmp(&page, bytes.data(), sizeof(page)) == 0);
}

void CheckLifetime(const CSmartValues& values) {
    const auto percent = static_cast<unsigned>(values.m_PercentUsed);
    Lifetime lifetime = {false, 0};
    lifetime.m_IsKnown = CPluginHelper::ComputeRemainingLifeTime(
        values.m_PowerOnHours, values.m_BytesWritten, percent, values.m_Endurance, lifetime.m_Hours);
    CHECK(lifetime ==
          ExpectedLifetime(values.m_PowerOnHours, values.m_BytesWritten, percent, values.m_Endurance));
    CHECK(lifetime.m_IsKnown ? lifetime.m_Hours >= 1 && lifetime.m_Hours <= SPAN
                             : lifetime.m_Hours == ALL_ONES);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto row = input.ConsumeIntegralInRange<std::size_t>(0, SATASSDEndurance.size() - 1);
    const std::string model = SATASSDEndurance[row].m_Model;
    PageBytes page = {};
    input.ConsumeData(page.data(), page.size());

    CSmartValues values("", model);
    CHECK(values.IsSupported());
    Evaluate(page, values);
    const std::string once = TextOf(values);
    CHECK_TEXT(once, TextOf(ExpectedSmartValues(model, page)));
    CHECK(values.m_SpareIndicator >= -1 && values.m_SpareIndicator <= 255);
    CheckLifetime(values);

    // The endurance is gone for some, the figures stay.
    Evaluate(page, values);
    CHECK_TEXT(TextOf(values), once);
    return 0;
}
