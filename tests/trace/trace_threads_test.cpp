#include <gtest/gtest.h>
#include <pi/trace.h>
#include <plog/Appenders/RollingFileAppender.h>
#include <plog/Formatters/MessageOnlyFormatter.h>
#include <plog/Log.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <regex>
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

    const std::regex whole(
        R"(\[VELK_TraceData\]\[\d+\]\[VELK_Trace\]\[494\]thread (\d) line (\d+): ([a-h])\3{59})");
    std::array<int, THREADS> next = {};
    std::ifstream file(path);
    file.seekg(3);  // plog begins a file with a byte-order mark
    for (std::string line; std::getline(file, line);) {
        std::smatch match;
        ASSERT_TRUE(std::regex_match(line, match, whole)) << line;
        const auto thread = static_cast<std::size_t>(std::stoi(match[1]));
        EXPECT_EQ(std::stoi(match[2]), next.at(thread)++) << line;
        EXPECT_EQ(match[3], std::string(1, static_cast<char>('a' + thread))) << line;
    }
    for (const int lines : next) {
        EXPECT_EQ(lines, LINES);
    }
    std::filesystem::remove(path);
}

}  // namespace
