// SPDX-License-Identifier: Apache-2.0

#include "channel.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <system_error>

namespace service {
namespace {

constexpr std::size_t CHUNK = 65536;

/// Whether a call that did not succeed is to be repeated after waiting.
bool MustWait() {
    if (errno != EAGAIN && errno != EINTR) {
        throw std::system_error(errno, std::generic_category(), "the connection");
    }
    return errno == EAGAIN;
}

}  // namespace

Channel::~Channel() {
    close(m_Socket);
}

bool Channel::IsClosed() const {
    pollfd state = {m_Socket, 0, 0};
    return poll(&state, 1, 0) == 1 && (state.revents & POLLHUP) != 0;
}

void Channel::Limit(std::chrono::milliseconds time, std::size_t receivedBytes) {
    m_Time = time;
    m_Deadline = std::chrono::steady_clock::now() + time;
    m_BytesLeft = receivedBytes;
}

void Channel::Wait(short event) const {
    int milliseconds = -1;
    if (m_Deadline != std::chrono::steady_clock::time_point::max()) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(m_Deadline - std::chrono::steady_clock::now());
        milliseconds = static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(left.count(), 0, INT_MAX));
    }
    pollfd wait = {m_Socket, event, 0};
    if (poll(&wait, 1, milliseconds) == 0) {
        throw std::runtime_error("no answer within " + std::to_string(m_Time.count()) + " ms");
    }
}

void Channel::Send(std::string line) const {
    line += '\n';
    for (std::size_t sent = 0; sent < line.size();) {
        const ssize_t count =
            send(m_Socket, line.data() + sent, line.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count >= 0) {
            sent += static_cast<std::size_t>(count);
        } else if (MustWait()) {
            Wait(POLLOUT);
        }
    }
}

bool Channel::Receive(std::string& line) {
    for (std::size_t scanned = m_Begin;;) {
        const std::size_t end = m_Buffer.find('\n', scanned);
        if (end != std::string::npos) {
            line.assign(m_Buffer, m_Begin, end - m_Begin);
            m_Begin = end + 1;
            return true;
        }
        m_Buffer.erase(0, m_Begin);
        m_Begin = 0;
        scanned = m_Buffer.size();
        char chunk[CHUNK];
        const ssize_t count = recv(m_Socket, chunk, sizeof chunk, MSG_DONTWAIT);
        if (count == 0 || (count < 0 && errno == ECONNRESET)) {
            return false;
        }
        if (count < 0) {
            if (MustWait()) {
                Wait(POLLIN);
            }
            continue;
        }
        if (static_cast<std::size_t>(count) > m_BytesLeft) {
            throw std::runtime_error("an answer that does not end");
        }
        m_BytesLeft -= static_cast<std::size_t>(count);
        m_Buffer.append(chunk, static_cast<std::size_t>(count));
    }
}

}  // namespace service
