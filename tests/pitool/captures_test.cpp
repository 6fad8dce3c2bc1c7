// SPDX-License-Identifier: Apache-2.0
// Every report of real drives that is at hand must be read.

#include "drive_json.h"
#include "drive_sheet.h"
#include "sample_reports.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

using namespace pitool;
using namespace pitool::test;
namespace fs = std::filesystem;

TEST(Captures, EveryOneIsReported) {
    const char* named = std::getenv("PI_CAPTURES");
    const fs::path folder = fs::path(named != nullptr ? named : PITOOL_CAPTURES) / "smartctl";
    if (!fs::is_directory(folder)) {
        GTEST_SKIP() << "no captures in " << folder << "; PI_CAPTURES names another place";
    }
    std::size_t count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() != ".json") {
            continue;
        }
        SCOPED_TRACE(entry.path());
        ++count;
        const Json capture = Json::parse(ReadFile(entry.path()));
        const DriveAssessment drive = Assess(capture);

        EXPECT_EQ(FindFigure(drive, PI::PropertyID::POWERON_HOURS).m_Property.m_Data.m_Long.m_Value,
                  capture["power_on_time"]["hours"]);
        EXPECT_FALSE(drive.m_Reasons.empty());
        EXPECT_EQ(drive.m_Failing, !capture["smart_status"]["passed"]);
        if (drive.m_Lifetime.m_RemainingHours) {
            EXPECT_GE(*drive.m_Lifetime.m_RemainingHours, 1U);
            EXPECT_LE(*drive.m_Lifetime.m_RemainingHours, 43829U);
        }
        for (const Figure& figure : drive.m_Figures) {
            EXPECT_EQ(figure.IsKnown(), figure.m_Reason.empty()) << FigureText(figure);
        }
        EXPECT_EQ(Json::parse(DriveJson(drive))["properties"].size(), drive.m_Figures.size());
    }
    EXPECT_GT(count, 0U) << folder << " holds no capture";
}
