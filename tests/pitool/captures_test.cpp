// SPDX-License-Identifier: Apache-2.0
// Every report of real drives that is at hand must be read, and shown without a contradiction.

#include "drive_detail.h"
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
        const Json json = Json::parse(DriveJson(drive, report, health, nullptr));
        EXPECT_EQ(drive.HasLifetime(), json["lifetime"]["remaining_hours"].is_number());
        for (const auto& [name, property] : json["properties"].items()) {
            EXPECT_TRUE(!property["value"].is_null() || !property["reason"].is_null()) << name;
        }
    }
    EXPECT_GT(count, 0U) << folder << " holds no capture";
}
