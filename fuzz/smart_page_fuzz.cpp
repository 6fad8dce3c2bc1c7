// SPDX-License-Identifier: Apache-2.0
// SMART pages of every model of the list: evaluated, then used to estimate the remaining lifetime.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/drives.h>
#include <pi/plugin_helper.h>

#include <array>
#include <cstring>
#include <limits>

#include "check.h"
#include "drives/smart_values_text.h"

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
    constexpr unsigned long SPAN = 43829;
    unsigned long hours = 0;
    const bool isKnown = CPluginHelper::ComputeRemainingLifeTime(values.m_PowerOnHours, values.m_BytesWritten,
                                                                 static_cast<unsigned>(values.m_PercentUsed),
                                                                 values.m_Endurance, hours);
    CHECK(isKnown == (values.m_PowerOnHours > 0 || values.m_PercentUsed != 0));
    CHECK(isKnown ? hours >= 1 && hours <= SPAN : hours == std::numeric_limits<unsigned long>::max());
    CHECK(values.m_PowerOnHours < SPAN || hours == 1);
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
    CHECK(values.m_Endurance ==
          (values.m_Vendor == "INNODISK" ? 0 : CPluginHelper::findLifeTimeProp(model)->m_EnduranceTB));
    CHECK(values.m_SpareIndicator >= -1 && values.m_SpareIndicator <= 255);
    CheckLifetime(values);

    // The endurance is gone for some, the figures stay.
    Evaluate(page, values);
    CHECK_TEXT(TextOf(values), once);
    return 0;
}
