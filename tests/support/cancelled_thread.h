// SPDX-License-Identifier: Apache-2.0
// A thread that is cancelled while it works.
#pragma once

#include <pthread.h>

namespace PI::Test {

/// Runs work() in a thread whose cancellation is requested before it begins, and takes place where the work
/// first lets it.
/// @return whether the thread ended by being cancelled
template <class Work>
bool EndsCancelled(Work work) {
    const auto run = [](void* argument) -> void* {
        pthread_cancel(pthread_self());
        (*static_cast<Work*>(argument))();
        return nullptr;
    };
    pthread_t thread = {};
    void* result = nullptr;
    return pthread_create(&thread, nullptr, run, &work) == 0 && pthread_join(thread, &result) == 0 &&
           result == PTHREAD_CANCELED;
}

}  // namespace PI::Test
