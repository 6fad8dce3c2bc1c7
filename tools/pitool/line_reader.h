// SPDX-License-Identifier: Apache-2.0
/// @file
/// Lines of a stream as they arrive.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace pitool {

/// Reads lines from a file descriptor without waiting for more than the next one.
class LineReader {
public:
    enum Result { LINE, TOO_LONG, END, FAILED };

    /// Longest line that is given out, in bytes.
    static constexpr std::size_t MAX_LENGTH = 4096;

    /// @param descriptor stays open as long as the reader is used, and is not closed by it
    explicit LineReader(int descriptor) : m_Descriptor(descriptor) {}

    /// Waits for the next line; the last one may lack its newline.
    ///
    /// @param line out: the line without its newline, after LINE
    /// @return TOO_LONG for a line that was passed over; after FAILED, errno tells why
    Result Next(std::string& line);

private:
    int m_Descriptor;
    std::array<char, 4096> m_Buffer{};
    std::size_t m_Begin = 0;
    std::size_t m_End = 0;
};

}  // namespace pitool
