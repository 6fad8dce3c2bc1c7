// SPDX-License-Identifier: Apache-2.0
// Every report of real drives that is at hand must be read, and shown without a contradiction.

#include "drive_figures.h"
#include "drive_json.h"
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
        const PI::CDriveReport report = ReportOf(capture);
        const PI::CHealthAssessment health(report.GetHealth());
        const DriveSummary drive("", report, health);

        EXPECT_EQ(drive.GetFigure(PI::HealthFigure::POWER_ON_HOURS).m_Value,
                  capture["power_on_time"]["hours"]);
        EXPECT_FALSE(drive.GetReason().empty());
        EXPECT_EQ(drive.IsFailing(), !capture["smart_status"]["passed"]);
        const DriveFigures figures = FiguresOf(drive, report, health);
        EXPECT_EQ(drive.HasLifetime(), figures.m_Lifetime.m_Hours.has_value());
        for (const DriveFigure& figure : figures.m_Properties) {
            EXPECT_TRUE(figure.HasValue() || !figure.m_Reason.empty()) << figure.m_Name;
        }
        EXPECT_EQ(Json::parse(DriveJson(drive, report, health, nullptr))["properties"].size(),
                  figures.m_Properties.size());
    }
    EXPECT_GT(count, 0U) << folder << " holds no capture";
}
