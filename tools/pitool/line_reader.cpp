// SPDX-License-Identifier: Apache-2.0

#include "line_reader.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace pitool {

LineReader::Result LineReader::Next(std::string& line) {
    line.clear();
    bool tooLong = false;
    for (;;) {
        if (m_Begin == m_End) {
            const ssize_t count = read(m_Descriptor, m_Buffer.data(), m_Buffer.size());
            if (count < 0 && errno == EINTR) {
                continue;
            }
            if (count < 0) {
                return FAILED;
            }
            if (count == 0) {
                return tooLong ? TOO_LONG : line.empty() ? END : LINE;
            }
            m_Begin = 0;
            m_End = static_cast<std::size_t>(count);
        }
        const char* begin = m_Buffer.data() + m_Begin;
        const char* end = m_Buffer.data() + m_End;
        const void* found = std::memchr(begin, '\n', m_End - m_Begin);
        const char* newline = found != nullptr ? static_cast<const char*>(found) : end;
        tooLong = tooLong || line.size() + static_cast<std::size_t>(newline - begin) > MAX_LENGTH;
        if (!tooLong) {
            line.append(begin, newline);
        }
        m_Begin = static_cast<std::size_t>(newline - m_Buffer.data());
        if (newline != end) {
            ++m_Begin;
            return tooLong ? TOO_LONG : LINE;
        }
    }
}

}  // namespace pitool
