// SPDX-License-Identifier: Apache-2.0
// Memory running out while something is traced.

#include <gtest/gtest.h>
#include <pi/etr.h>
#include <pi/plugin_helper.h>
#include <pi/property.h>
#include <pi/trace.h>

#include "failing_memory.h"
#include "formatted_traces.h"

using namespace PI;
using namespace PI::Test;

namespace {

const std::string LONG_TEXT = "a text that is too long to be held without memory of its own";

class TraceFaults : public testing::Test {
protected:
    TraceFaults() { VELKTrace(1, "first", 3, "sets what the first trace of a process sets"); }

    const FormattedTraces<3> m_Data;
    const FormattedTraces<20> m_Property;
    const FormattedTraces<21> m_Combination;
};

}  // namespace

TEST_F(TraceFaults, OnlyTheStartOfALineMayThrow) {
    const std::string format = LONG_TEXT + " %d %s";
    int threw = 0;
    int absorbed = 0;
    RunOutOfMemoryEverywhere([] { return false; },
                             [&](bool& started) {
                                 VELKTrace trace(494, LONG_TEXT.c_str(), 3, format.c_str());
                                 started = true;
                                 trace << 7 << LONG_TEXT.c_str();
                             },
                             [&](bool started, Ending ending) {
                                 EXPECT_EQ(started, ending != Ending::THREW);
                                 threw += ending == Ending::THREW;
                                 absorbed += ending == Ending::ABSORBED;
                             });
    EXPECT_GT(threw, 0);
    EXPECT_GT(absorbed, 0);
    EXPECT_GT(m_Data.m_Bytes, 0U);
}

TEST_F(TraceFaults, TheLibrarysTracesFailNoWork) {
    const auto expectNoFailure = [](auto work, auto expected) {
        RunOutOfMemoryEverywhere([] { return decltype(expected)(); }, work,
                                 [&](const auto& result, Ending ending) {
                                     EXPECT_NE(ending, Ending::THREW);
                                     EXPECT_EQ(result, expected);
                                 });
    };
    CProperty property;
    expectNoFailure([&](int& value) { property.GetValueRange(value); }, 1);
    expectNoFailure([&](bool& value) { value = property.GetValue(value) == ErrorCode::SUCCESS; }, true);
    expectNoFailure(
        [](int& result) {
            result = CPluginHelper::ValidatePhysicalDriveCombination(false, false, true, true, 1, 2, false, 2,
                                                                     2, false);
        },
        static_cast<int>(ErrorCode::NO_MIX_OF_DIFFERENT_TYPES_IN_LD));
}
