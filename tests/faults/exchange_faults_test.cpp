// SPDX-License-Identifier: Apache-2.0
// Memory running out while reports are read.

#include <gtest/gtest.h>
#include <pi/exchange/smartctl.h>

#include "failing_memory.h"

using namespace PI;
using namespace PI::Test;

namespace {

struct Result {
    std::vector<CDriveReport> m_Drives;
    std::vector<CReportRefusal> m_Refusals;
};

/// All that is read, or an exception and nothing.
void ExpectAllOrNothing(const std::string& text, std::size_t drives, std::size_t refusals) {
    RunOutOfMemoryEverywhere(
        [] { return Result(); },
        [&](Result& result) { ReadSmartctl(text.data(), text.size(), result.m_Drives, result.m_Refusals); },
        [&](Result& result, Ending ending) {
            EXPECT_NE(ending, Ending::ABSORBED);
            EXPECT_EQ(result.m_Drives.size(), ending == Ending::DONE ? drives : 0);
            EXPECT_EQ(result.m_Refusals.size(), ending == Ending::DONE ? refusals : 0);
        });
}

}  // namespace

TEST(ExchangeFaults, ReportsAsJsonAreReadWholeOrTheExceptionTells) {
    ExpectAllOrNothing(R"({"device": {"name": "/dev/a device with a name of some length", "protocol": "ATA"},
        "model_name": "INTEL SSDSC2BB480G7 that is long enough", "serial_number": "1", "serial_number": "2",
        "ata_smart_attributes": {"table": [{"id": 9, "name": "Power_On_Hours and more of a name", "raw": {"value": 1}}]},
        "ata_smart_self_test_log": {"standard": {"table": [{"type": {"string": "Short"}}]}},
        "power_cycle_count": "a text in the place of a number", "big": )" +
                           std::string(400, '9') + "}\n{\"smartctl\": {}}\n{\"broken",
                       1, 2);
}

TEST(ExchangeFaults, ReportsAsTextAreReadWholeOrTheExceptionTells) {
    ExpectAllOrNothing(
        "smartctl 7.4\nDevice Model:     INTEL SSDSC2BB480G7 that is long enough\nFirmware Version: 1\n"
        "ID# ATTRIBUTE_NAME          FLAGS    VALUE WORST THRESH FAIL RAW_VALUE\n"
        "  9 Power_On_Hours_and_Msec -O--CK   100   100   000    -    1h+2m+3.004s\n"
        "SMART Self-test log structure revision number 1\nNum  Test_Description\n"
        "# 1  Short offline       Completed without error       00%     1         -\n\n"
        "smartctl 7.4\n=== START OF READ SMART DATA SECTION ===\n",
        1, 1);
}

TEST(ExchangeFaults, AFailedCopyLeavesTheTargetAsItWas) {
    Result read;
    const std::string text =
        R"({"model_name": "a model with a long name, in memory of its own", "power_cycle_count": "x"})";
    ReadSmartctl(text.data(), text.size(), read.m_Drives, read.m_Refusals);
    const CDriveReport& source = read.m_Drives.at(0);
    RunOutOfMemoryEverywhere([] { return std::vector<CDriveReport>(); },
                             [&](std::vector<CDriveReport>& drives) { drives.push_back(source); },
                             [&](std::vector<CDriveReport>& drives, Ending ending) {
                                 EXPECT_EQ(drives.size(), ending == Ending::DONE ? 1U : 0U);
                             });
}
