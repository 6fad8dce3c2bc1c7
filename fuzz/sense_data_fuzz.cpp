// SPDX-License-Identifier: Apache-2.0
// Sense data as pitool reads them from text; their codes then have the texts of the fixed list.
#include "sense_data.h"
#include "sense_text.h"

#include <pi/plugin_helper.h>

#include <nlohmann/json.hpp>

#include <cstdio>
#include <vector>

#include "check.h"
#include "drives/sense_texts.h"
#include "printable_check.h"

namespace {

using namespace PI::Test;

bool ContainsText(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// The same codes as the shortest sense data that hold them.
std::string SenseDataOf(const pitool::SenseCodes& codes) {
    const bool isFixed = codes.m_Format == pitool::SenseFormat::FIXED;
    std::vector<unsigned> bytes(isFixed ? 14 : 4);
    bytes[0] = codes.m_ResponseCode;
    bytes[isFixed ? 2 : 1] = codes.m_Key;
    bytes[isFixed ? 12 : 2] = codes.m_ASC;
    bytes[isFixed ? 13 : 3] = codes.m_ASCQ;
    if (isFixed) {
        bytes[7] = 6;
    }
    std::string text;
    for (const unsigned byte : bytes) {
        char digits[8];
        std::snprintf(digits, sizeof(digits), "%02x,", byte);
        text += digits;
    }
    return text;
}

void CheckReadAgain(const pitool::SenseCodes& codes) {
    pitool::SenseCodes again;
    std::string reason;
    CHECK(pitool::ReadSenseData(SenseDataOf(codes), again, reason));
    CHECK(again.m_Key == codes.m_Key && again.m_ASC == codes.m_ASC && again.m_ASCQ == codes.m_ASCQ);
    CHECK(again.m_Format == codes.m_Format && again.m_ResponseCode == codes.m_ResponseCode);
    CHECK(again.m_Deferred == codes.m_Deferred);
}

void CheckMeaning(const pitool::SenseCodes& codes) {
    static const SenseTexts texts = ReadSenseTexts(ADDITIONAL_SENSE_FILE);
    const auto listed = texts.find({codes.m_ASC, codes.m_ASCQ});
    std::string text;
    const int result = PI::CPluginHelper::TranslateSenseASC(codes.m_ASC, codes.m_ASCQ, text);
    CHECK((result == 0) == (listed != texts.end()));
    CHECK_TEXT(text, listed != texts.end() ? listed->second : SensePatternText(codes.m_ASC, codes.m_ASCQ));

    const pitool::SenseMeaning meaning = pitool::ExplainSense(codes);
    CHECK(!meaning.m_KeyText.empty());
    CHECK(meaning.m_AdditionalText.empty() == text.empty());
    CHECK(meaning.m_Severity == "INFORMATION" || meaning.m_Severity == "WARNING");
    const std::string sheet = pitool::SenseSheet(codes);
    PI::Fuzz::CheckPrintable(sheet);
    CHECK(ContainsText(sheet, meaning.m_KeyText) && ContainsText(sheet, meaning.m_AdditionalText));
    CHECK(nlohmann::json::accept(pitool::SenseJson(codes)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    pitool::SenseCodes codes;
    std::string reason;
    if (!pitool::ReadSenseData(text, codes, reason)) {
        CHECK(!reason.empty());
        return 0;
    }
    CHECK(codes.m_ResponseCode >= 0x70 && codes.m_ResponseCode <= 0x73);
    CHECK(codes.m_Deferred == (codes.m_ResponseCode % 2 == 1));
    CHECK((codes.m_Format == pitool::SenseFormat::FIXED) == (codes.m_ResponseCode < 0x72));
    CHECK(codes.m_Key < 16);
    CheckReadAgain(codes);
    CheckMeaning(codes);
    return 0;
}
