// SPDX-License-Identifier: Apache-2.0
// Counts every exception that is thrown in the process, those of the library included.
#include <dlfcn.h>
#include <gmock/gmock.h>

#include <atomic>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "support/trace_recorder.h"

namespace {
std::atomic<int> thrown = 0;
}

// Stands before the run-time library's own __cxa_throw, which it calls. The name is given to the assembler
// only, because compilers disagree about its declaration.
extern "C" __attribute__((visibility("default"), noreturn)) void CountedThrow(
    void* exception, void* type, void (*destroy)(void*)) __asm__("__cxa_throw");

void CountedThrow(void* exception, void* type, void (*destroy)(void*)) {
    using Throw = void (*)(void*, void*, void (*)(void*));
    static const auto original = reinterpret_cast<Throw>(dlsym(RTLD_NEXT, "__cxa_throw"));
    ++thrown;
    original(exception, type, destroy);
    std::abort();
}

namespace {

using PI::Test::TraceRecorder;
using testing::ElementsAre;

TEST(TraceExceptions, ThoseOfTheLibraryAreCounted) {
    const int before = thrown;

    EXPECT_ANY_THROW(VELKTrace(494, "VELK_Trace", 3, "%"));

    EXPECT_EQ(thrown - before, 1);
}

TEST(TraceExceptions, FeedingTheUsualArgumentsThrowsNone) {
    TraceRecorder<3> recorder;
    const int before = thrown;

    VELKTrace(494, "VELK_Trace", 3, "%s %d %x %5.2f") << std::string("text") << 1 << 255 << 2.5;

    EXPECT_EQ(thrown - before, 0);
    EXPECT_THAT(recorder.Texts(), ElementsAre("text 1 ff  2.50"));
}

TEST(TraceExceptions, MissingAndSurplusArgumentsThrowNone) {
    TraceRecorder<3> recorder;
    const int before = thrown;

    VELKTrace(494, "VELK_Trace", 3, "%d %d") << 1;
    VELKTrace(494, "VELK_Trace", 3, "%d %d") << 1 << 2 << 3;
    VELKTrace(494, "VELK_Trace", 3, "none") << 1;
    VELKTrace(494, "VELK_Trace", 3, "none");

    EXPECT_EQ(thrown - before, 0);
    EXPECT_THAT(recorder.Texts(), ElementsAre("%d %d", "1 2", "none", "none"));
}

TEST(TraceExceptions, WritingWithoutALoggerOrWithTracesOffThrowsNone) {
    const int before = thrown;

    VELKTrace(494, "VELK_Trace", 4, "%d") << 1;
    VELKTrace::tracesEnabled = true;
    VELKTrace(494, "VELK_Trace", 4, "%d") << 1;
    VELKTrace::tracesEnabled = false;

    EXPECT_EQ(thrown - before, 0);
}

}  // namespace
