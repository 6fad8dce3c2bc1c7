// SPDX-License-Identifier: Apache-2.0
// Texts encoded, cleaned, compared, judged and dumped, and what comes of it checked.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/plugin_helper.h>
#include <velkx/language_support.h>

#include <algorithm>
#include <cctype>
#include <vector>

#include "check.h"

namespace {

using namespace PI;

bool IsOneOf(char character, const std::string& characters) {
    return characters.find(character) != std::string::npos;
}

/// Everything but the four bytes that are dropped can be read back.
void CheckURL(const std::string& text) {
    const std::string url = CPluginHelper::stringurlencode(text);
    std::string decoded;
    for (std::size_t i = 0; i < url.size(); ++i) {
        if (url[i] != '%') {
            CHECK(std::isalnum(static_cast<unsigned char>(url[i])) != 0 || IsOneOf(url[i], " ()-.:_~"));
            decoded += url[i];
            continue;
        }
        const std::string digits = url.substr(i + 1, 2);
        CHECK(digits.size() == 2 && digits.find_first_not_of("0123456789abcdef") == std::string::npos);
        decoded += static_cast<char>(std::stoul(digits, nullptr, 16));
        i += 2;
    }
    std::string kept = text;
    kept.erase(
        std::remove_if(kept.begin(), kept.end(), [](char c) { return IsOneOf(c, "\x01\x16\xBE\xEE"); }),
        kept.end());
    CHECK_TEXT(decoded, kept);
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
    const auto has = [&password](const char* members) {
        return password.find_first_of(members) != std::string::npos;
    };
    return password.size() >= 8 && password.size() <= 32 && has("ABCDEFGHIJKLMNOPQRSTUVWXYZ") &&
           has("abcdefghijklmnopqrstuvwxyz") && has("0123456789") &&
           has("!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~");
}

/// Two digits of each byte, with blanks between.
void CheckDump(std::vector<unsigned char> bytes, unsigned long first, unsigned long end) {
    std::string dump;
    CHECK(CPluginHelper::HexDump(dump, bytes.data(), first, end));
    CHECK(dump.size() == (first < end ? 3 * (end - first) - 1 : 0));
    CHECK(dump.find_first_not_of("0123456789ABCDEF ") == std::string::npos);
    for (std::size_t i = 0; i < dump.size(); i += 3) {
        CHECK(std::stoul(dump.substr(i, 2), nullptr, 16) == bytes[first + i / 3]);
        CHECK(i == 0 || dump[i - 1] == ' ');
    }
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

    CheckURL(text);
    CheckElementName(text);
    CheckMatch(text, resource, id);
    const std::string before = text;
    CHECK(CPluginHelper::ValidatePasswordStrength(text) == IsStrong(text));
    CHECK_TEXT(text, before);

    // The dump of a part that need not lie in order, but does lie in the data.
    std::vector<unsigned char> bytes(text.begin(), text.end());
    const unsigned long end = std::min<std::size_t>(bytes.size(), length);
    CheckDump(bytes, first, end);
    return 0;
}
