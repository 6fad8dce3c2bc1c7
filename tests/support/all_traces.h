// SPDX-License-Identifier: Apache-2.0
// Shows that something traces nothing at all.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "support/trace_recorder.h"

namespace PI::Test {

/// While it lives, traces are on and those of every category are written into it.
class AllTraces {
public:
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        const auto add = [&texts](const std::vector<std::string>& more) {
            texts.insert(texts.end(), more.begin(), more.end());
        };
#define PI_TRACE_CATEGORY(category, tag, line) add(m_Recorder##category.Texts());
#include "trace/categories.def"
#undef PI_TRACE_CATEGORY
        return texts;
    }

private:
#define PI_TRACE_CATEGORY(category, tag, line) TraceRecorder<category> m_Recorder##category;
#include "trace/categories.def"
#undef PI_TRACE_CATEGORY
};

/// Expects an action to trace nothing, though traces are written.
template <class Action>
void ExpectNoTrace(Action action) {
    const AllTraces traces;
    action();
    VELKTrace(494, "VELK_Trace", 20, "after it");
    EXPECT_THAT(traces.Texts(), testing::ElementsAre("after it"));
}

}  // namespace PI::Test
