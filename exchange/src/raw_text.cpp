// SPDX-License-Identifier: Apache-2.0
// Raw values of attributes back from the texts that smartctl makes of them.

#include <array>
#include <charconv>
#include <cstdint>

#include "report_builder.h"

namespace PI {

namespace {

/// The numbers in a text, and what is between them.
class Numbers {
public:
    explicit Numbers(std::string_view text) {
        const char* at = text.data();
        const char* const end = at + text.size();
        m_IsHex = text.substr(0, 2) == "0x";
        at += m_IsHex ? 2 : 0;
        while (at != end && m_Count < m_Values.size()) {
            const bool isNegative =
                *at == '-' && (m_Between.empty() || m_Between.find('(') != std::string::npos);
            std::int64_t value = 0;
            const std::from_chars_result read = std::from_chars(at, end, value, m_IsHex ? 16 : 10);
            if (read.ec == std::errc() && (isNegative || *at != '-')) {
                m_Values[m_Count++] = value;
                m_Between += '#';
                at = read.ptr;
            } else {
                m_Between += *at++;
            }
        }
        m_Between.append(at, end);
    }

    bool IsHex() const { return m_IsHex; }
    std::size_t Count() const { return m_Count; }
    std::uint64_t operator[](std::size_t index) const { return static_cast<std::uint64_t>(m_Values[index]); }
    /// Whether it begins like a pattern in which # matches a number.
    bool Begins(std::string_view pattern) const { return m_Between.compare(0, pattern.size(), pattern) == 0; }
    bool Is(std::string_view pattern) const { return m_Between == pattern; }

private:
    std::array<std::int64_t, 8> m_Values = {};
    std::size_t m_Count = 0;
    std::string m_Between;
    bool m_IsHex = false;
};

/// Values of a width in bits, the highest first.
std::uint64_t Join(const Numbers& numbers, std::size_t first, std::size_t count, unsigned bits) {
    std::uint64_t joined = 0;
    for (std::size_t i = 0; i < count; ++i) {
        joined = joined << bits | (numbers[first + i] & ((std::uint64_t{1} << bits) - 1));
    }
    return joined;
}

std::uint64_t Byte(std::uint64_t value) {
    return value & 0xFF;
}

}  // namespace

std::optional<std::uint64_t> ReadRawText(std::string_view text, std::string_view name) {
    const Numbers numbers(text);
    if (!numbers.Begins("#")) {
        return std::nullopt;
    }
    std::uint64_t raw = numbers[0];
    // Times: hours with minutes; with seconds; with thousandths, which count apart from the hours.
    if (numbers.Begins("#h+#m+#.#s")) {
        raw |= ((numbers[1] * 60 + numbers[2]) * 1000 + numbers[3]) << 32;
    } else if (numbers.Begins("#h+#m+#s")) {
        raw = (raw * 60 + numbers[1]) * 60 + numbers[2];
    } else if (numbers.Begins("#h+#m")) {
        const bool isHalf = name.find("Half") != std::string_view::npos;
        raw = (raw * 60 + numbers[1]) * (isHalf ? 2 : 1);
    } else if (numbers.Begins("# (Min/Max #/#")) {
        raw = Byte(raw) | Byte(numbers[1]) << 16 | Byte(numbers[2]) << 32;
    } else if (text[0] == '-') {
        const bool isTemperature = numbers.Is("#") && name.find("Temp") != std::string_view::npos;
        return isTemperature ? std::optional(Byte(raw)) : std::nullopt;
    } else if (numbers.Is("# (# # # # #)")) {  // bytes above the lowest
        raw = Byte(raw) | Join(numbers, 1, 5, 8) << 8;
    } else if (numbers.Is("# (# # #)")) {  // bytes above the lowest three
        raw |= Join(numbers, 1, 3, 8) << 24;
    } else if (numbers.Is("# (# #)")) {  // words above the lowest
        raw |= Join(numbers, 1, 2, 16) << 16;
    } else if (numbers.Is("# (Average #)")) {
        raw |= numbers[1] << 16;
    } else if (numbers.Is("# # # # # #")) {
        raw = Join(numbers, 0, 6, 8);
    } else if (numbers.Is("# # #")) {
        raw = Join(numbers, 0, 3, 16);
    } else if (numbers.Is("#/#")) {  // of 24 bits each
        raw = Join(numbers, 0, 2, 24);
    }
    return raw;
}

bool IsWholeRawText(std::string_view text) {
    const Numbers numbers(text);
    return numbers.IsHex() || numbers.Is("# # #") || numbers.Is("# # # # # #");
}

}  // namespace PI
