// SPDX-License-Identifier: Apache-2.0
// Each test's statements run in a process of their own, in which no trace was written before.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/trace_recorder.h"

namespace {

using PI::Test::TraceRecorder;

constexpr int PAUSE_MS = 60;

void Pause() {
    std::this_thread::sleep_for(std::chrono::milliseconds(PAUSE_MS));
}

/// The milliseconds of the only record.
int Milliseconds(const TraceRecorder<3>& recorder) {
    return std::stoi(recorder.m_Records.at(0).m_Message.substr(sizeof("[VELK_TraceData][") - 1));
}

/// Ends the process, telling the number.
[[noreturn]] void Report(int milliseconds, bool good) {
    std::fprintf(stderr, "%d ms\n", milliseconds);
    std::exit(good ? 0 : 1);
}

void Trace() {
    VELKTrace(1, "name", 3, "text");
}

class FirstTrace : public testing::Test {
protected:
    void SetUp() override { testing::FLAGS_gtest_death_test_style = "fast"; }
};

TEST_F(FirstTrace, ShowsNoTime) {
    EXPECT_EXIT(
        {
            Pause();
            TraceRecorder<3> recorder;
            Trace();
            Report(Milliseconds(recorder), Milliseconds(recorder) < PAUSE_MS / 2);
        },
        testing::ExitedWithCode(0), "ms");
}

TEST_F(FirstTrace, IsWhatLaterOnesCountFrom) {
    EXPECT_EXIT(
        {
            {
                const TraceRecorder<3> first;
                Trace();
            }
            Pause();
            {
                const TraceRecorder<3> second;
                Trace();
            }
            Pause();
            TraceRecorder<3> third;
            Trace();
            // Counted from the first, not from the one before.
            Report(Milliseconds(third), Milliseconds(third) >= 2 * PAUSE_MS);
        },
        testing::ExitedWithCode(0), "ms");
}

TEST_F(FirstTrace, CountsFromATraceWithoutLogger) {
    EXPECT_EXIT(
        {
            VELKTrace::tracesEnabled = true;
            Trace();
            Pause();
            TraceRecorder<3> recorder;
            Trace();
            Report(Milliseconds(recorder), Milliseconds(recorder) >= PAUSE_MS);
        },
        testing::ExitedWithCode(0), "ms");
}

TEST_F(FirstTrace, CountsFromATraceThatItsLoggerRefuses) {
    EXPECT_EXIT(
        {
            {
                TraceRecorder<3> refusing(plog::info);
                Trace();
                if (!refusing.m_Records.empty()) {
                    std::exit(2);
                }
            }
            Pause();
            TraceRecorder<3> recorder;
            Trace();
            Report(Milliseconds(recorder), Milliseconds(recorder) >= PAUSE_MS);
        },
        testing::ExitedWithCode(0), "ms");
}

TEST_F(FirstTrace, DoesNotCountFromTracesThatAreOff) {
    EXPECT_EXIT(
        {
            Trace();
            Pause();
            TraceRecorder<3> recorder;
            Trace();
            Report(Milliseconds(recorder), Milliseconds(recorder) < PAUSE_MS / 2);
        },
        testing::ExitedWithCode(0), "ms");
}

TEST_F(FirstTrace, CountsFromDestructionNotFromConstruction) {
    EXPECT_EXIT(
        {
            TraceRecorder<3> recorder;
            {
                const VELKTrace trace(1, "name", 3, "text");
                Pause();
            }
            Report(Milliseconds(recorder), Milliseconds(recorder) < PAUSE_MS / 2);
        },
        testing::ExitedWithCode(0), "ms");
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
            Pause();
            TraceRecorder<3> recorder;
            Trace();
            Report(Milliseconds(recorder), Milliseconds(recorder) >= PAUSE_MS);
        },
        testing::ExitedWithCode(0), "ms");
}

TEST_F(FirstTrace, IsOffUnlessTheProcessSwitchesTracesOn) {
    EXPECT_FALSE(VELKTrace::tracesEnabled);
}

}  // namespace
