// SPDX-License-Identifier: Apache-2.0
// Runs the same work in several threads at once.
#pragma once

#include <atomic>
#include <thread>
#include <vector>

namespace PI::Test {

constexpr int THREADS = 16;

/// Calls work(thread) in several threads, which begin together.
/// @param work returns how many of its results were wrong
/// @return the sum of what the threads returned
template <class Work>
int WrongResultsOf(Work work, int count = THREADS) {
    std::atomic<int> waiting = count;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < count; ++thread) {
        threads.emplace_back([&, thread] {
            --waiting;
            while (waiting != 0) {
                std::this_thread::yield();
            }
            wrong += work(thread);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return wrong;
}

}  // namespace PI::Test
