// SPDX-License-Identifier: Apache-2.0

#include "util/number_reader.h"

#include <boost/convert.hpp>
#include <charconv>
#include <cstdint>
#include <locale>
#include <type_traits>

namespace PI {

template <class Number>
std::optional<Number> NumberReader::Read(std::string_view text) {
    if constexpr (!std::is_same_v<Number, bool>) {
        // Digits alone mean the same to both ways, and are what nearly every text holds.
        Number number = 0;
        const char* end = text.data() + text.size();
        const auto [rest, error] = std::from_chars(text.data(), end, number);
        if (error == std::errc() && rest == end) {
            return number;
        }
    }
    return ReadFromStream<Number>(text);
}

template <class Number>
std::optional<Number> NumberReader::ReadFromStream(std::string_view text) {
    if (text.empty()) {
        return std::nullopt;
    }
    if (!m_Stream) {
        m_Stream.emplace();
        (*m_Stream)(std::locale::classic())(std::dec)(std::skipws)(std::noboolalpha);
    }
    const boost::optional<Number> number = boost::convert<Number>(text, *m_Stream);
    return number ? std::optional<Number>(*number) : std::nullopt;
}

template std::optional<std::uint64_t> NumberReader::Read(std::string_view);
template std::optional<std::int32_t> NumberReader::Read(std::string_view);
template std::optional<bool> NumberReader::Read(std::string_view);
template std::optional<std::uint64_t> NumberReader::ReadFromStream(std::string_view);
template std::optional<std::int32_t> NumberReader::ReadFromStream(std::string_view);
template std::optional<bool> NumberReader::ReadFromStream(std::string_view);

}  // namespace PI
