// SPDX-License-Identifier: Apache-2.0
// Sense data, whole and cut; their codes have the texts of the fixed list.

#include <pi/plugin_helper.h>
#include <pi/sense.h>

#include <algorithm>
#include <string>
#include <vector>

#include "check.h"
#include "drives/sense_texts.h"

namespace {

using namespace PI::Test;

/// What is decoded of the first bytes is decoded of more bytes too, and nothing is read after them.
void CheckCut(const std::uint8_t* data, std::size_t size) {
    const PI::CSense whole = PI::DecodeSense(data, size);
    const std::vector<std::uint8_t> half(data, data + size / 2);
    const PI::CSense cut = PI::DecodeSense(half.data(), half.size());
    CHECK(half.empty() || cut.GetFormat() == whole.GetFormat());
    CHECK(!cut.GetKey() || cut.GetKey() == whole.GetKey());
    CHECK(!cut.GetFieldReplaceableUnit() || cut.GetFieldReplaceableUnit() == whole.GetFieldReplaceableUnit());
}

void CheckTexts(const PI::CSense& sense) {
    std::string text;
    PI::_SEVERITY severity = PI::Severity::DEBUG;
    PI::CPluginHelper::TranslateSenseKey(*sense.GetKey(), text, severity);
    CHECK(!text.empty());
    CHECK(severity == PI::Severity::INFORMATION || severity == PI::Severity::WARNING);
    if (sense.GetCode() && sense.GetQualifier()) {
        static const SenseTexts texts = ReadSenseTexts(ADDITIONAL_SENSE_FILE);
        const auto listed = texts.find({*sense.GetCode(), *sense.GetQualifier()});
        const int result =
            PI::CPluginHelper::TranslateSenseASC(*sense.GetCode(), *sense.GetQualifier(), text);
        CHECK((result == 0) == (listed != texts.end()));
        CHECK_TEXT(text, listed != texts.end() ? listed->second
                                               : SensePatternText(*sense.GetCode(), *sense.GetQualifier()));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CheckCut(data, size);
    const PI::CSense sense = PI::DecodeSense(data, size);
    CHECK(sense.GetReason().empty() == sense.GetKey().has_value());
    const std::string text = sense.GetAdditionalText();
    CHECK(std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; }));
    if (!sense.GetKey()) {
        return 0;
    }
    CHECK(sense.GetResponseCode() >= 0x70 && sense.GetResponseCode() <= 0x73);
    CHECK(sense.IsDeferred() == (*sense.GetResponseCode() % 2 == 1));
    CHECK((sense.GetFormat() == PI::SenseFormat::FIXED) == (sense.GetResponseCode() < 0x72));
    CHECK(sense.GetKey() < 16);
    CheckTexts(sense);
    return 0;
}
