// SPDX-License-Identifier: Apache-2.0

#include "drive_summary.h"

#include "sample_reports.h"

#include <pi/vocabulary.h>

#include <string>
#include <vector>

namespace pitool {
namespace {

namespace Figure = PI::HealthFigure;
using test::AtaReport;
using test::Attribute;
using test::Json;
using test::SolidStateReport;
using test::SummaryOf;

/// A disk with a passed verdict and so many sectors of each kind.
Json Disk(std::uint64_t reallocated, std::uint64_t pending) {
    Json report = AtaReport("ST2000NM0033-9ZM175");
    report["rotation_rate"] = 7200;
    report["smart_status"]["passed"] = true;
    report["ata_smart_attributes"]["table"] = {Attribute(5, 100, reallocated), Attribute(197, 100, pending)};
    return report;
}

Json Nvme(int wear, bool isReadOnly = false, int spare = 100) {
    return {{"device", {{"name", "/dev/nvme0"}, {"protocol", "NVMe"}}},
            {"model_name", "INTEL SSDPE2KX010T7"},
            {"nvme_smart_health_information_log",
             {{"critical_warning", isReadOnly ? 8 : 0},
              {"percentage_used", wear},
              {"available_spare", spare},
              {"available_spare_threshold", 10},
              {"power_on_hours", 20000}}}};
}

TEST(DriveSummary, HoldsTheTextsOfTheReport) {
    Json report = SolidStateReport("INTEL SSDSC2BB480G7", 12000, {Attribute(5, 100, 0)});
    report["serial_number"] = "  PHDV1";
    report["firmware_version"] = "N2010121";
    report["smart_status"]["passed"] = true;
    report["user_capacity"]["bytes"] = 480103981056;
    report["local_time"]["time_t"] = 1700000000;
    const DriveSummary drive = SummaryOf(report, "folder/a.json");
    EXPECT_EQ(drive.GetFile(), "folder/a.json");
    EXPECT_EQ(drive.GetDevice(), "/dev/sdx");
    EXPECT_EQ(drive.GetModel(), "INTEL SSDSC2BB480G7");
    EXPECT_EQ(drive.GetSerial(), "  PHDV1");
    EXPECT_EQ(drive.GetFirmware(), "N2010121");
    EXPECT_EQ(drive.GetKind(), "ATA SSD");
    EXPECT_TRUE(drive.IsSolidState());
    EXPECT_EQ(drive.GetCapacity(), 480103981056U);
    EXPECT_EQ(drive.GetTime(), 1700000000);
    EXPECT_EQ(drive.GetState(), PI::DriveState::GOOD);
    EXPECT_EQ(drive.GetReason(), "nothing that was read speaks against it");
    EXPECT_EQ(drive.GetFigure(Figure::POWER_ON_HOURS).m_Value, 12000);
    EXPECT_TRUE(drive.GetFigure(Figure::POWER_ON_HOURS).IsKnown());
    EXPECT_FALSE(drive.GetFigure(Figure::TEMPERATURE).HasValue());
}

TEST(DriveSummary, HoldsEveryFigureOfTheHealth) {
    const PI::CDriveReport report = test::ReportOf(Nvme(7));
    const DriveSummary drive = Summarize("", report);
    for (const PI::CHealthFigure& figure : report.GetHealth().GetFigures()) {
        const SummaryFigure held = drive.GetFigure(figure.GetFigure());
        EXPECT_EQ(held.m_Value, figure.GetValue()) << PI::HealthFigureToString(figure.GetFigure());
        EXPECT_EQ(held.m_State, figure.GetState()) << PI::HealthFigureToString(figure.GetFigure());
    }
    EXPECT_FALSE(drive.GetFigure(static_cast<PI::_HEALTH_FIGURE>(0)).HasValue());
    EXPECT_FALSE(drive.GetFigure(static_cast<PI::_HEALTH_FIGURE>(1000)).HasValue());
}

TEST(DriveSummary, ReportThatSaysNothingHasNoFigures) {
    const DriveSummary drive = SummaryOf(AtaReport("QEMU HARDDISK"));
    EXPECT_EQ(drive.GetState(), PI::DriveState::UNKNOWN);
    EXPECT_FALSE(drive.GetErrors().HasValue());
    EXPECT_FALSE(drive.GetTemperatureLimit().HasValue());
    EXPECT_EQ(drive.GetSerial(), "");
    EXPECT_EQ(drive.GetForecast().GetState(), PI::WearForecastState::NOT_ENOUGH);
    EXPECT_FALSE(drive.IsSolidState());
}

TEST(DriveSummary, ErrorsAreBadSectorsAndMediaErrors) {
    EXPECT_EQ(SummaryOf(Disk(0, 0)).GetErrors().m_Value, 0);
    EXPECT_TRUE(SummaryOf(Disk(0, 0)).GetErrors().IsKnown());
    EXPECT_EQ(SummaryOf(Disk(40, 2)).GetErrors().m_Value, 42);
}

TEST(DriveSummary, RotatingDiskHasNoWear) {
    Json report = Disk(0, 0);
    report["ata_smart_attributes"]["table"].push_back(Attribute(231, 50, 0));
    EXPECT_FALSE(SummaryOf(report).GetFigure(Figure::WEAR).HasValue());
}

TEST(DriveSummary, ForecastRestsOnTheOneReading) {
    const DriveSummary drive = SummaryOf(Nvme(50));
    PI::CWearReading reading;
    reading.SetPowerOnHours(20000);
    reading.SetWear(50);
    EXPECT_EQ(drive.GetForecast().GetHours(), PI::CWearForecast({reading}).GetHours());
    EXPECT_TRUE(drive.GetForecast().GetHours().has_value());
    EXPECT_FALSE(drive.GetReading().GetDate().has_value());
}

TEST(DriveSummary, IsWornOnlyWhereTheWearIsKnown) {
    EXPECT_FALSE(SummaryOf(Nvme(89)).IsWorn());
    EXPECT_TRUE(SummaryOf(Nvme(90)).IsWorn());
    EXPECT_TRUE(SummaryOf(Nvme(254)).IsWorn());
    EXPECT_FALSE(SummaryOf(Nvme(255)).IsWorn());
}

TEST(DriveSummary, KeepsADetailForItsOutput) {
    DriveSummary drive = SummaryOf(Nvme(1));
    EXPECT_EQ(drive.GetDetail(), "");
    drive.SetDetail("text");
    EXPECT_EQ(drive.GetDetail(), "text");
}

TEST(DriveSummary, TheLowerLimitOfTheTemperatureCounts) {
    Json report = AtaReport("MODEL");
    report["temperature"] = {{"current", 50}, {"op_limit_max", 60}};
    EXPECT_EQ(SummaryOf(report).GetTemperatureLimit().m_Value, 60);
    EXPECT_FALSE(SummaryOf(report).ExceededLimit().has_value());
    report["temperature"]["op_limit_max"] = 49;
    EXPECT_EQ(SummaryOf(report).ExceededLimit(), 49);
}

TEST(IsWorse, OrdersByStateThenReasonThenItsFigure) {
    // Each line is worse than the next.
    Json failed = Disk(0, 0);
    failed["smart_status"]["passed"] = false;
    const std::vector<DriveSummary> drives = {
        SummaryOf(Nvme(3, true)),      // failed: no longer takes data
        SummaryOf(Disk(0, 300)),       // replace: 300 sectors cannot be read
        SummaryOf(Disk(0, 200)),       //
        SummaryOf(Disk(4000, 0)),      // replace: 4000 sectors were saved
        SummaryOf(Nvme(0, false, 2)),  // replace: 2 percent of the reserve are left
        SummaryOf(Nvme(0, false, 3)),  //
        SummaryOf(Nvme(130)),          // replace: worn out
        SummaryOf(Nvme(100)),          //
        SummaryOf(Disk(0, 1)),         // look at it
        SummaryOf(Disk(99, 0)),        //
        SummaryOf(Nvme(90)),           //
        SummaryOf(AtaReport("QEMU HARDDISK")),
        SummaryOf(Nvme(89)),  // good, the most worn first
        SummaryOf(Nvme(3)),
    };
    EXPECT_TRUE(IsWorse(SummaryOf(failed), drives[0]));
    for (std::size_t i = 0; i < drives.size(); ++i) {
        for (std::size_t j = 0; j < drives.size(); ++j) {
            EXPECT_EQ(IsWorse(drives[i], drives[j]), i < j)
                << drives[i].GetReason() << " and " << drives[j].GetReason();
        }
    }
}

TEST(DriveSummary, IsADiskOnlyWhereTheReportShowsIt) {
    Json report = AtaReport("ST380815AS");
    EXPECT_FALSE(SummaryOf(report).IsDisk());
    EXPECT_FALSE(SummaryOf(report).IsSolidState());
    EXPECT_EQ(SummaryOf(report).GetKind(), "ATA HDD");
    report["rotation_rate"] = 7200;
    EXPECT_TRUE(SummaryOf(report).IsDisk());
    EXPECT_FALSE(SummaryOf(AtaReport("INTEL SSDSC2BB480G7")).IsDisk());
    EXPECT_TRUE(SummaryOf(AtaReport("INTEL SSDSC2BB480G7")).IsSolidState());
}

}  // namespace
}  // namespace pitool
