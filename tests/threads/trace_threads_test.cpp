// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/trace.h>
#include <plog/Appenders/RollingFileAppender.h>
#include <plog/Formatters/MessageOnlyFormatter.h>
#include <plog/Log.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace {

TEST(TraceThreads, EveryLineOfEightThreadsArrivesWhole) {
    constexpr int THREADS = 8;
    constexpr int LINES = 500;
    const std::string path =
        (std::filesystem::temp_directory_path() / ("trace_threads_test." + std::to_string(getpid()) + ".log"))
            .string();
    {
        plog::RollingFileAppender<plog::MessageOnlyFormatter> appender(path.c_str());
        plog::Logger<3> logger(plog::debug);
        logger.addAppender(&appender);
        VELKTrace::tracesEnabled = true;
        std::vector<std::thread> threads;
        for (int thread = 0; thread < THREADS; ++thread) {
            threads.emplace_back([thread] {
                for (int line = 0; line < LINES; ++line) {
                    VELKTrace(494, "VELK_Trace", 3, "thread %d line %d: %s")
                        << thread << line << std::string(60, static_cast<char>('a' + thread));
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        VELKTrace::tracesEnabled = false;
    }

    std::array<int, THREADS> next = {};
    std::ifstream file(path);
    file.seekg(3);  // plog begins a file with a byte-order mark
    for (std::string line; std::getline(file, line);) {
        unsigned long milliseconds = 0;
        std::size_t thread = 0;
        ASSERT_EQ(std::sscanf(line.c_str(), "[VELK_TraceData][%lu][VELK_Trace][494]thread %zu", &milliseconds,
                              &thread),
                  2)
            << line;
        ASSERT_LT(thread, next.size()) << line;
        EXPECT_EQ(line, "[VELK_TraceData][" + std::to_string(milliseconds) + "][VELK_Trace][494]thread " +
                            std::to_string(thread) + " line " + std::to_string(next[thread]++) + ": " +
                            std::string(60, static_cast<char>('a' + thread)));
    }
    for (const int lines : next) {
        EXPECT_EQ(lines, LINES);
    }
    std::filesystem::remove(path);
}

}  // namespace
