// SPDX-License-Identifier: Apache-2.0
/// @file
/// Lines between the host and the process of a plug-in.
#pragma once

#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string>
#include <system_error>

namespace service {

/// One end of a stream socket, over which lines go both ways. One thread at a time.
class Channel {
public:
    /// Takes the socket over, and closes it in the end.
    explicit Channel(int socket) : m_Socket(socket) {}
    ~Channel() { close(m_Socket); }
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    /// Limits all that follows, until the next call; there is no limit at first.
    void Limit(std::chrono::milliseconds time, std::size_t receivedBytes) {
        m_Time = time;
        m_Deadline = Clock::now() + time;
        m_BytesLeft = receivedBytes;
    }

    /// Sends a line, which holds no line break.
    /// @throws std::runtime_error when the other end is closed, or does not read in time
    void Send(std::string line) const {
        line += '\n';
        for (std::size_t sent = 0; sent < line.size();) {
            LimitCall(SO_SNDTIMEO);
            const ssize_t count = send(m_Socket, line.data() + sent, line.size() - sent, MSG_NOSIGNAL);
            sent += IsDone(count) ? static_cast<std::size_t>(count) : 0;
        }
    }

    /// Waits for a line.
    /// @return false when the other end is closed
    /// @throws std::runtime_error when none comes in time, or more than may
    bool Receive(std::string& line) {
        std::size_t end = 0;
        for (std::size_t scanned = m_Begin; (end = m_Buffer.find('\n', scanned)) == std::string::npos;) {
            m_Buffer.erase(0, m_Begin);
            m_Begin = 0;
            scanned = m_Buffer.size();
            char chunk[65536];
            LimitCall(SO_RCVTIMEO);
            const ssize_t count = recv(m_Socket, chunk, sizeof chunk, 0);
            if (count == 0 || (count < 0 && errno == ECONNRESET)) {
                return false;
            }
            const std::size_t received = IsDone(count) ? static_cast<std::size_t>(count) : 0;
            if (received > m_BytesLeft) {
                throw std::runtime_error("an answer that does not end");
            }
            m_BytesLeft -= received;
            m_Buffer.append(chunk, received);
        }
        line.assign(m_Buffer, m_Begin, end - m_Begin);
        m_Begin = end + 1;
        return true;
    }

    /// Whether the other end is closed.
    bool IsClosed() const {
        pollfd state = {m_Socket, 0, 0};
        return poll(&state, 1, 0) == 1 && (state.revents & POLLHUP) != 0;
    }

    /// Whether something has come that nobody has waited for.
    bool HasMore() const { return m_Begin != m_Buffer.size(); }

private:
    using Clock = std::chrono::steady_clock;

    /// Gives the next call the time that is left.
    void LimitCall(int option) const {
        if (m_Deadline == Clock::time_point::max()) {
            return;
        }
        const auto left = std::chrono::ceil<std::chrono::microseconds>(m_Deadline - Clock::now()).count();
        if (left <= 0) {
            throw std::runtime_error("no answer within " + std::to_string(m_Time.count()) + " ms");
        }
        const timeval time = {left / 1000000, left % 1000000};
        setsockopt(m_Socket, SOL_SOCKET, option, &time, sizeof time);
    }

    /// @return false when the call is to be repeated, if there is time
    static bool IsDone(ssize_t count) {
        if (count < 0 && errno != EAGAIN && errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "the connection");
        }
        return count >= 0;
    }

    int m_Socket;
    std::string m_Buffer;
    std::size_t m_Begin = 0;  // what is before it has been taken
    std::chrono::milliseconds m_Time{0};
    Clock::time_point m_Deadline = Clock::time_point::max();
    std::size_t m_BytesLeft = std::numeric_limits<std::size_t>::max();
};

}  // namespace service
