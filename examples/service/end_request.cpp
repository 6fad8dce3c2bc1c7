// SPDX-License-Identifier: Apache-2.0

#include "end_request.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace service {
namespace {

int endRequest = -1;  // readable when it is asked

}  // namespace

void ListenForEnd() {
    endRequest = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (endRequest < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
    struct sigaction ask = {};
    ask.sa_handler = [](int) {
        const int error = errno;
        eventfd_write(endRequest, 1);
        errno = error;
    };
    ask.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    sigaction(SIGINT, &ask, nullptr);
    sigaction(SIGTERM, &ask, nullptr);
}

bool IsEndAsked() {
    return WaitForEnd(std::chrono::milliseconds(0));
}

bool WaitForEnd(std::chrono::milliseconds time) {
    pollfd wait = {endRequest, POLLIN, 0};
    int count = 0;
    do {
        count = poll(&wait, 1, static_cast<int>(time.count()));
    } while (count < 0 && errno == EINTR);
    return count == 1;
}

}  // namespace service
