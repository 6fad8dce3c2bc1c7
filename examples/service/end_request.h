// SPDX-License-Identifier: Apache-2.0
/// @file
/// Ending the host in good order.
#pragma once

#include <poll.h>
#include <sys/eventfd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <ctime>
#include <system_error>

namespace service {

inline int endRequest = -1;  ///< readable when the end is asked for

/// From now on the first SIGINT or SIGTERM only asks to end; one that comes two seconds later or more ends
/// the host.
inline void ListenForEnd() {
    endRequest = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (endRequest < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
    struct sigaction ask = {};
    // Some send a signal twice at once, to the process and to its group; only a later one means now.
    ask.sa_handler = [](int signal) {
        static volatile std::time_t asked = 0;
        const std::time_t now = std::time(nullptr);
        asked = asked == 0 ? now : asked;
        if (now - asked > 1) {
            std::signal(signal, SIG_DFL);
            std::raise(signal);
        }
        const int error = errno;
        eventfd_write(endRequest, 1);
        errno = error;
    };
    ask.sa_flags = SA_RESTART;
    sigaction(SIGINT, &ask, nullptr);
    sigaction(SIGTERM, &ask, nullptr);
}

/// Waits, but not beyond the request to end.
/// @return whether it is there
inline bool WaitForEnd(std::chrono::milliseconds time) {
    pollfd wait = {endRequest, POLLIN, 0};
    int count = 0;
    do {
        count = poll(&wait, 1, static_cast<int>(time.count()));
    } while (count < 0 && errno == EINTR);
    return count == 1;
}

}  // namespace service
