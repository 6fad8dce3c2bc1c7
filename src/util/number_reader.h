// SPDX-License-Identifier: Apache-2.0
// Decimal numbers from text, as a character stream of the classic locale reads them.
#pragma once

#include <boost/convert.hpp>
#include <boost/convert/stream.hpp>
#include <charconv>
#include <locale>
#include <optional>
#include <string_view>
#include <type_traits>

namespace PI {

/// Reads numbers. Leading white space and a sign are taken, anything behind the number is not; a number that
/// does not fit is not taken, but a negative one for an unsigned type wraps. One reader serves one thread.
class NumberReader {
public:
    template <class Number>
    std::optional<Number> Read(std::string_view text) {
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
    std::optional<Number> ReadFromStream(std::string_view text) {
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

private:
    std::optional<boost::cnv::cstream> m_Stream;  // costly to make
};

}  // namespace PI
