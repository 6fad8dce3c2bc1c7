// SPDX-License-Identifier: Apache-2.0
// Texts encoded, cleaned, compared, judged and dumped, against the rules byte by byte.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/plugin_helper.h>
#include <velkx/language_support.h>

#include <array>
#include <set>

#include "check.h"
#include "util/plain_texts.h"

namespace {

using namespace PI;
using namespace PI::Test;

std::string ExpectedURL(const std::string& text) {
    static const auto encoded = [] {
        std::array<std::string, 256> texts;
        for (unsigned byte = 0; byte < texts.size(); ++byte) {
            texts[byte] = EncodedByte(static_cast<unsigned char>(byte));
        }
        return texts;
    }();
    std::string url;
    for (const char character : text) {
        url += encoded[static_cast<unsigned char>(character)];
    }
    return url;
}

std::string ExpectedElementName(std::string text) {
    for (std::size_t at; (at = text.find_first_of(" #()./:<=>")) != std::string::npos;) {
        text.erase(at, 1);
    }
    return text;
}

/// Whether two texts match where only ASCII letters have an upper case.
bool ExpectedMatch(const std::string& one, const std::string& other) {
    if (one.size() != other.size()) {
        return false;
    }
    for (std::size_t i = 0; i < one.size(); ++i) {
        const bool areLetters = (one[i] | 0x20) >= 'a' && (one[i] | 0x20) <= 'z';
        if (one[i] != other[i] && !(areLetters && (one[i] ^ other[i]) == 0x20)) {
            return false;
        }
    }
    return true;
}

bool IsStrong(const std::string& password) {
    std::set<CharacterClass> classes;
    for (const char character : password) {
        classes.insert(Class(static_cast<unsigned char>(character)));
    }
    classes.erase(none);
    return password.size() >= 8 && password.size() <= 32 && classes.size() == 4;
}

void CheckElementName(const std::string& text) {
    std::string name;
    CHECK(CPluginHelper::GenXMLNodeConformantString(text, name) == 0);
    CHECK_TEXT(name, ExpectedElementName(text));
    std::string shared = text;
    CPluginHelper::GenXMLNodeConformantString(shared, shared);
    CHECK_TEXT(shared, name);
}

void CheckMatch(const std::string& text, const std::string& resource, int id) {
    CLanguageSupport::SetString(static_cast<unsigned>(id), resource);
    CHECK(CPluginHelper::MatchNLS(text, id, false) == ExpectedMatch(text, resource));
    CHECK(CPluginHelper::MatchNLS(text, id, true) == ExpectedMatch(text, ExpectedElementName(resource)));
    CHECK(CPluginHelper::MatchNLS(resource, id, false));
    CLanguageSupport::Clear();
    CHECK(CPluginHelper::MatchNLS(text, id, false) == text.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const std::string resource = input.ConsumeRandomLengthString();
    const auto id = input.ConsumeIntegral<int>();
    const auto first = input.ConsumeIntegral<std::uint8_t>();
    const auto length = input.ConsumeIntegral<std::uint8_t>();
    std::string text = input.ConsumeRemainingBytesAsString();

    CHECK_TEXT(CPluginHelper::stringurlencode(text), ExpectedURL(text));
    CheckElementName(text);
    CheckMatch(text, resource, id);
    const std::string before = text;
    CHECK(CPluginHelper::ValidatePasswordStrength(text) == IsStrong(text));
    CHECK_TEXT(text, before);

    // The dump of a part that need not lie in order, but does lie in the data.
    std::vector<unsigned char> bytes(text.begin(), text.end());
    const unsigned long end = std::min<std::size_t>(bytes.size(), length);
    std::string dump;
    CHECK(CPluginHelper::HexDump(dump, bytes.data(), first, end));
    CHECK_TEXT(dump, FormattedDump(bytes, first, end));
    return 0;
}
