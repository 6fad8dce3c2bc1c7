// SPDX-License-Identifier: Apache-2.0
/// @file
/// Lines between the host and the process of a plug-in.
#pragma once

#include <chrono>
#include <cstddef>
#include <limits>
#include <string>

namespace service {

/// One end of a stream socket, over which lines go both ways. One thread at a time.
class Channel {
public:
    /// Takes the socket over, and closes it in the end.
    explicit Channel(int socket) : m_Socket(socket) {}
    ~Channel();
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    /// Limits all that follows, until the next call; there is no limit at first.
    void Limit(std::chrono::milliseconds time, std::size_t receivedBytes);

    /// Sends a line, which holds no line break.
    /// @throws std::runtime_error when the other end is closed, or does not read in time
    void Send(std::string line) const;

    /// Waits for a line.
    /// @return false when the other end is closed
    /// @throws std::runtime_error when none comes in time, or more than may
    bool Receive(std::string& line);

    /// Whether the other end is closed.
    bool IsClosed() const;

    /// Whether something has come that nobody has waited for.
    bool HasMore() const { return m_Begin != m_Buffer.size(); }

private:
    void Wait(short event) const;

    int m_Socket;
    std::string m_Buffer;
    std::size_t m_Begin = 0;  // what is before it has been taken
    std::chrono::milliseconds m_Time{0};
    std::chrono::steady_clock::time_point m_Deadline = std::chrono::steady_clock::time_point::max();
    std::size_t m_BytesLeft = std::numeric_limits<std::size_t>::max();
};

}  // namespace service
