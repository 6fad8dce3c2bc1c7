// SPDX-License-Identifier: Apache-2.0
// Threads that are cancelled while they trace.
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "support/cancelled_thread.h"
#include "support/trace_recorder.h"

namespace {

using PI::Test::EndsCancelled;
using PI::Test::TraceRecorder;

/// A logger as one that writes to a file: the thread may be cancelled within.
class WritingRecorder : public TraceRecorder<3> {
public:
    void write(const plog::Record& record) override {
        pthread_testcancel();
        TraceRecorder<3>::write(record);
    }
};

struct PrintedWithInput {};
std::ostream& operator<<(std::ostream& stream, PrintedWithInput) {
    pthread_testcancel();
    return stream << "input";
}

TEST(TraceCancellation, WaitsUntilTheLineIsWritten) {
    WritingRecorder recorder;
    bool isTraced = false;
    EXPECT_TRUE(EndsCancelled([&] {
        VELKTrace(494, "VELK_Trace", 3, "%s") << std::string("text");
        isTraced = true;
        pthread_testcancel();
    }));
    EXPECT_TRUE(isTraced);
    EXPECT_EQ(recorder.Texts(), std::vector<std::string>{"text"});
}

TEST(TraceCancellation, WaitsUntilAnArgumentIsPrinted) {
    TraceRecorder<3> recorder;
    EXPECT_TRUE(EndsCancelled([&] {
        VELKTrace(494, "VELK_Trace", 3, "%s") << PrintedWithInput();
        pthread_testcancel();
    }));
    EXPECT_EQ(recorder.Texts(), std::vector<std::string>{"input"});
}

TEST(TraceCancellation, StaysOffWhereItIsOff) {
    WritingRecorder recorder;
    bool isDone = false;
    EXPECT_FALSE(EndsCancelled([&] {
        pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
        VELKTrace(494, "VELK_Trace", 3, "%s") << 1;
        pthread_testcancel();
        isDone = true;
    }));
    EXPECT_TRUE(isDone);
}

}  // namespace
