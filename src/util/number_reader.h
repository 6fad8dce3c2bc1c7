// SPDX-License-Identifier: Apache-2.0
// Decimal numbers from text, as a character stream of the classic locale reads them.
#pragma once

// Boost 1.83 uses uint8_t and does not include it.
#include <cstdint>

#include <boost/convert/stream.hpp>
#include <optional>
#include <string_view>

namespace PI {

/// Reads numbers. Leading white space and a sign are accepted, anything after the number is not; a number
/// that does not fit is refused, but a negative one for an unsigned type wraps. One reader serves one thread.
class NumberReader {
public:
    /// @tparam Number std::uint64_t, std::int32_t or bool
    template <class Number>
    std::optional<Number> Read(std::string_view text);

    /// The same without the quick way for plain digits.
    template <class Number>
    std::optional<Number> ReadFromStream(std::string_view text);

private:
    std::optional<boost::cnv::cstream> m_Stream;  // costly to make
};

}  // namespace PI
