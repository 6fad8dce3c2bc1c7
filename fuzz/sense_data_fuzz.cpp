// SPDX-License-Identifier: Apache-2.0
// Sense data as bytes, and as pitool reads them from text; their codes then have the texts of the fixed list.
#include "sense_command.h"
#include "sense_text.h"

#include <pi/plugin_helper.h>

#include <nlohmann/json.hpp>

#include <vector>

#include "check.h"
#include "drives/sense_texts.h"
#include "printable_check.h"

namespace {

using namespace PI::Test;

bool ContainsText(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// What is decoded of the first bytes is decoded of more bytes too, and nothing is read after them.
void CheckCut(const std::uint8_t* data, std::size_t size) {
    const PI::CSense whole = PI::DecodeSense(data, size);
    const std::vector<std::uint8_t> half(data, data + size / 2);
    const PI::CSense cut = PI::DecodeSense(half.data(), half.size());
    CHECK(half.empty() || cut.GetFormat() == whole.GetFormat());
    CHECK(!cut.GetKey() || cut.GetKey() == whole.GetKey());
    CHECK(!cut.GetFieldReplaceableUnit() || cut.GetFieldReplaceableUnit() == whole.GetFieldReplaceableUnit());
}

void CheckMeaning(const PI::CSense& sense) {
    const pitool::SenseMeaning meaning = pitool::ExplainSense(sense);
    CHECK(!meaning.m_KeyText.empty());
    CHECK(meaning.m_Severity == "INFORMATION" || meaning.m_Severity == "WARNING");
    if (sense.GetCode() && sense.GetQualifier()) {
        static const SenseTexts texts = ReadSenseTexts(ADDITIONAL_SENSE_FILE);
        const auto listed = texts.find({*sense.GetCode(), *sense.GetQualifier()});
        std::string text;
        const int result =
            PI::CPluginHelper::TranslateSenseASC(*sense.GetCode(), *sense.GetQualifier(), text);
        CHECK((result == 0) == (listed != texts.end()));
        CHECK_TEXT(text, listed != texts.end() ? listed->second
                                               : SensePatternText(*sense.GetCode(), *sense.GetQualifier()));
        CHECK(meaning.m_AdditionalText.empty() == text.empty());
    }
    const std::string sheet = pitool::SenseSheet(sense, true);
    PI::Fuzz::CheckPrintable(sheet);
    CHECK(ContainsText(sheet, meaning.m_KeyText) && ContainsText(sheet, meaning.m_AdditionalText));
    CHECK(nlohmann::json::accept(pitool::SenseJson(sense, true)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CheckCut(data, size);
    const std::string text(reinterpret_cast<const char*>(data), size);
    PI::CSense sense;
    std::string reason;
    if (!pitool::ReadSenseData(text, sense, reason)) {
        CHECK(!reason.empty());
        return 0;
    }
    CHECK(sense.GetResponseCode() >= 0x70 && sense.GetResponseCode() <= 0x73);
    CHECK(sense.IsDeferred() == (*sense.GetResponseCode() % 2 == 1));
    CHECK((sense.GetFormat() == PI::SenseFormat::FIXED) == (sense.GetResponseCode() < 0x72));
    CHECK(sense.GetKey() < 16);
    CheckMeaning(sense);
    return 0;
}
