// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>
#include <velkx/language_support.h>

#include <array>
#include <boost/algorithm/string/predicate.hpp>
#include <cstdint>
#include <cstring>
#include <locale>
#include <string_view>

namespace PI {

namespace {

constexpr std::string_view LOWER_HEX = "0123456789abcdef";
constexpr std::string_view UPPER_HEX = "0123456789ABCDEF";

constexpr bool IsBetween(char character, char first, char last) {
    return character >= first && character <= last;
}
constexpr bool IsUpper(char character) {
    return IsBetween(character, 'A', 'Z');
}
constexpr bool IsLower(char character) {
    return IsBetween(character, 'a', 'z');
}
constexpr bool IsDigit(char character) {
    return IsBetween(character, '0', '9');
}
constexpr bool IsPunctuation(char character) {
    return IsBetween(character, '!', '/') || IsBetween(character, ':', '@') ||
           IsBetween(character, '[', '`') || IsBetween(character, '{', '~');
}

constexpr bool IsOneOf(char character, std::string_view characters) {
    return characters.find(character) != std::string_view::npos;
}

// The blank is among them: the results are fixed.
constexpr bool IsCopiedToURL(char character) {
    return IsUpper(character) || IsLower(character) || IsDigit(character) || IsOneOf(character, " ()-.:_~");
}

// These are dropped: the results are fixed.
constexpr bool IsDroppedFromURL(char character) {
    return IsOneOf(character, "\x01\x16\xBE\xEE");
}

/// What a byte is written as.
struct ByteText {
    char m_Text[3] = {};
    std::uint8_t m_Length = 0;
};
using ByteTexts = std::array<ByteText, 256>;

constexpr ByteTexts MakeURLTexts() {
    ByteTexts texts = {};
    for (unsigned byte = 0; byte < texts.size(); ++byte) {
        const char character = static_cast<char>(byte);
        if (IsCopiedToURL(character)) {
            texts[byte] = {{character}, 1};
        } else if (!IsDroppedFromURL(character)) {
            texts[byte] = {{'%', LOWER_HEX[byte >> 4], LOWER_HEX[byte & 0x0F]}, 3};
        }
    }
    return texts;
}

constexpr ByteTexts MakeDumpTexts() {
    ByteTexts texts = {};
    for (unsigned byte = 0; byte < texts.size(); ++byte) {
        texts[byte] = {{UPPER_HEX[byte >> 4], UPPER_HEX[byte & 0x0F], ' '}, 3};
    }
    return texts;
}

constexpr ByteTexts URL_TEXTS = MakeURLTexts();
constexpr ByteTexts DUMP_TEXTS = MakeDumpTexts();

/// Writes the bytes from first up to end, each as its text.
void Write(const ByteTexts& texts, const unsigned char* first, const unsigned char* end, std::string& out) {
    out.resize(static_cast<std::size_t>(end - first) * sizeof(ByteText::m_Text));
    char* position = out.data();
    for (; first != end; ++first) {
        const ByteText& text = texts[*first];
        std::memcpy(position, text.m_Text, sizeof(text.m_Text));
        position += text.m_Length;
    }
    out.resize(static_cast<std::size_t>(position - out.data()));
}

}  // namespace

std::string CPluginHelper::stringurlencode(const std::string& in) {
    const auto* first = reinterpret_cast<const unsigned char*>(in.data());
    std::string out;
    Write(URL_TEXTS, first, first + in.size(), out);
    return out;
}

int CPluginHelper::GenXMLNodeConformantString(const std::string& in, std::string& out) {
    std::string cleaned;
    cleaned.reserve(in.size());
    for (const char character : in) {
        if (!IsOneOf(character, " #()./:<=>")) {
            cleaned += character;
        }
    }
    out = std::move(cleaned);
    return 0;
}

bool CPluginHelper::MatchNLS(const std::string& text, int id, bool conformant) {
    std::string resource;
    CLanguageSupport::ResolveString(static_cast<unsigned int>(id), resource);
    if (conformant) {
        GenXMLNodeConformantString(resource, resource);
    }
    return boost::algorithm::iequals(text, resource, std::locale());
}

bool CPluginHelper::ValidatePasswordStrength(std::string& password) {
    if (password.size() < 8 || password.size() > 32) {
        return false;
    }
    bool hasUpper = false;
    bool hasLower = false;
    bool hasDigit = false;
    bool hasSpecial = false;
    for (const char character : password) {
        hasUpper = hasUpper || IsUpper(character);
        hasLower = hasLower || IsLower(character);
        hasDigit = hasDigit || IsDigit(character);
        hasSpecial = hasSpecial || IsPunctuation(character);
    }
    return hasUpper && hasLower && hasDigit && hasSpecial;
}

bool CPluginHelper::HexDump(std::string& out, unsigned char* data, unsigned long first, unsigned long end) {
    out.clear();
    if (first >= end) {
        return true;
    }
    Write(DUMP_TEXTS, data + first, data + end, out);
    out.pop_back();
    return true;
}

bool CPluginHelper::IsAdapterType(PI::_OBJECT_TYPE type) {
    switch (type) {
        case ObjectType::ADAPTER_1:
        case ObjectType::ADAPTER_2:
        case ObjectType::ADAPTER_3:
        case ObjectType::ADAPTER_4:
        case ObjectType::ADAPTER_5:
        case ObjectType::ADAPTER_6:
        case ObjectType::ADAPTER_7:
        case ObjectType::ADAPTER_8:
        case ObjectType::ADAPTER_9: return true;
        default: return false;
    }
}

}  // namespace PI
