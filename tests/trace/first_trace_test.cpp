// SPDX-License-Identifier: Apache-2.0
// The time that traces show, by a system clock that the test sets. Each test's statements run in a process of
// their own, in which no trace was written before.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "support/trace_recorder.h"

namespace {

constexpr std::int64_t MS = 1000000;  // in nanoseconds

std::atomic<std::int64_t> sinceEpochNs = 1600000000000 * MS;

}  // namespace

// The linker takes the program's clock before the one of the standard library, for the library under test
// too.
std::chrono::system_clock::time_point std::chrono::system_clock::now() noexcept {
    return time_point(nanoseconds(sinceEpochNs));
}

namespace {

using PI::Test::TraceRecorder;

void Trace() {
    VELKTrace(1, "name", 3, "text");
}

/// Ends the process, telling the time that the only record shows.
[[noreturn]] void Tell(const TraceRecorder<3>& recorder) {
    const std::string& line = recorder.m_Records.at(0).m_Message;
    const std::size_t start = sizeof("[VELK_TraceData][") - 1;
    std::fprintf(stderr, "%s ms\n", line.substr(start, line.find(']', start) - start).c_str());
    std::exit(recorder.m_Records.size() == 1 ? 0 : 1);
}

[[noreturn]] void TraceAndTell() {
    TraceRecorder<3> recorder;
    Trace();
    Tell(recorder);
}

/// The first trace of the process, then another at a time after it.
[[noreturn]] void TraceAgainAfter(std::int64_t nanoseconds) {
    {
        const TraceRecorder<3> first;
        Trace();
    }
    sinceEpochNs += nanoseconds;
    TraceAndTell();
}

class FirstTrace : public testing::Test {
protected:
    void SetUp() override { testing::FLAGS_gtest_death_test_style = "fast"; }
};

const testing::ExitedWithCode wasTold(0);

TEST_F(FirstTrace, ShowsNoTime) {
    EXPECT_EXIT(TraceAndTell(), wasTold, "^0 ms\n$");
}

TEST_F(FirstTrace, IsWhatLaterOnesCountFrom) {
    EXPECT_EXIT(
        {
            {
                const TraceRecorder<3> recorder;
                Trace();
                sinceEpochNs += 60 * MS;
                Trace();
            }
            sinceEpochNs += 60 * MS;
            TraceAndTell();  // counted from the first, not from the one before
        },
        wasTold, "^120 ms\n$");
}

TEST_F(FirstTrace, CountsFromATraceWithoutLogger) {
    EXPECT_EXIT(
        {
            VELKTrace::tracesEnabled = true;
            Trace();
            sinceEpochNs += 60 * MS;
            TraceAndTell();
        },
        wasTold, "^60 ms\n$");
}

TEST_F(FirstTrace, CountsFromATraceThatItsLoggerRefuses) {
    EXPECT_EXIT(
        {
            {
                const TraceRecorder<3> refusing(plog::info);
                Trace();
                if (!refusing.m_Records.empty()) {
                    std::exit(2);
                }
            }
            sinceEpochNs += 60 * MS;
            TraceAndTell();
        },
        wasTold, "^60 ms\n$");
}

TEST_F(FirstTrace, DoesNotCountFromTracesThatAreOff) {
    EXPECT_EXIT(
        {
            Trace();
            sinceEpochNs += 60 * MS;
            TraceAndTell();
        },
        wasTold, "^0 ms\n$");
}

TEST_F(FirstTrace, CountsFromDestructionNotFromConstruction) {
    EXPECT_EXIT(
        {
            TraceRecorder<3> recorder;
            {
                const VELKTrace trace(1, "name", 3, "text");
                sinceEpochNs += 60 * MS;
            }
            Tell(recorder);
        },
        wasTold, "^0 ms\n$");
}

TEST_F(FirstTrace, MayComeFromManyThreads) {
    EXPECT_EXIT(
        {
            VELKTrace::tracesEnabled = true;
            std::vector<std::thread> threads;
            for (int thread = 0; thread < 8; ++thread) {
                threads.emplace_back(Trace);
            }
            for (std::thread& thread : threads) {
                thread.join();
            }
            sinceEpochNs += 60 * MS;
            TraceAndTell();
        },
        wasTold, "^60 ms\n$");
}

// Of the clock's nanoseconds whole milliseconds count, at the first trace as at this one.
TEST_F(FirstTrace, IsComparedInWholeMillisecondsOfTheClock) {
    EXPECT_EXIT(TraceAgainAfter(MS - 1), wasTold, "^0 ms\n$");
    EXPECT_EXIT(TraceAgainAfter(MS), wasTold, "^1 ms\n$");
    EXPECT_EXIT(
        {
            sinceEpochNs += MS - 1;
            TraceAgainAfter(1);
        },
        wasTold, "^1 ms\n$");
    EXPECT_EXIT(TraceAgainAfter(std::int64_t{5000000000} * MS), wasTold, "^5000000000 ms\n$");
}

TEST_F(FirstTrace, ShowsAnUnsignedNumberWhenTheClockIsSetBack) {
    EXPECT_EXIT(TraceAgainAfter(-MS), wasTold, "^18446744073709551615 ms\n$");
}

TEST_F(FirstTrace, IsOffUnlessTheProcessSwitchesTracesOn) {
    EXPECT_FALSE(VELKTrace::tracesEnabled);
}

}  // namespace
