// SPDX-License-Identifier: Apache-2.0

#include "drive_detail.h"

#include "sample_reports.h"

#include <velk/clock.h>

#include <gtest/gtest.h>

#include <unistd.h>

using namespace pitool;
using namespace pitool::test;

namespace ID = PI::EventID;

namespace {

std::vector<PI::CEvent> Raise(const Json& report) {
    return RaiseDriveEvents(SummaryOf(report), 7);
}

/// Identifiers of the events.
std::vector<std::uint32_t> IDs(const Json& report) {
    std::vector<std::uint32_t> ids;
    for (const PI::CEvent& event : Raise(report)) {
        ids.push_back(event.m_EventID);
    }
    return ids;
}

using Numbers = std::vector<std::uint32_t>;

Json WornTo(int percent) {
    Json report = AtaReport("INTEL SSDPE2KE016T8");
    report["device"]["protocol"] = "NVMe";
    report["nvme_smart_health_information_log"]["percentage_used"] = percent;
    return report;
}

Json AtDegrees(int temperature, const char* limitName, int limit, const char* protocol = "ATA") {
    Json report = AtaReport("MODEL");
    report["device"]["protocol"] = protocol;
    report["temperature"] = {{"current", temperature}, {limitName, limit}};
    return report;
}

}  // namespace

TEST(RaiseDriveEvents, ASoundDriveRaisesNone) {
    EXPECT_EQ(IDs(AtaReport("MODEL")), Numbers{});
    Json report = WornTo(0);
    report["smart_status"]["passed"] = true;
    EXPECT_EQ(IDs(report), Numbers{});
}

TEST(RaiseDriveEvents, ASmartFailureIsAnError) {
    Json report = AtaReport("MODEL");
    report["serial_number"] = "S1";
    report["smart_status"]["passed"] = false;
    const std::uint64_t before = VELK::now();
    std::vector<PI::CEvent> events = Raise(report);
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].m_EventID, ID::SMART_ERROR);
    EXPECT_EQ(events[0].m_Severity, PI::Severity::ERROR);
    EXPECT_EQ(events[0].m_Handle, 7U);
    EXPECT_EQ(events[0].m_Source, "pitool");
    EXPECT_GE(events[0].m_TimeStamp, before);
    char host[256] = "";
    ASSERT_EQ(gethostname(host, sizeof host), 0);
    EXPECT_EQ(events[0].m_Host, host);
    EXPECT_EQ(events[0].GetPlaceHolder1(), "MODEL (serial number S1, /dev/sdx)");
    EXPECT_EQ(events[0].GetPlaceHolder2(), "its self-assessment failed");
}

TEST(RaiseDriveEvents, WearBeyond90PercentIsAWarning) {
    EXPECT_EQ(IDs(WornTo(90)), Numbers{});
    EXPECT_EQ(IDs(WornTo(91)), Numbers{ID::PD_WEAR_LEVEL_COUNT_ABOVE_THRESHOLD});
    EXPECT_EQ(IDs(WornTo(255)), Numbers{}) << "doubtful: more than 254, or invalid";
    std::vector<PI::CEvent> events = Raise(WornTo(254));
    EXPECT_EQ(events[0].m_Severity, PI::Severity::WARNING);
    EXPECT_EQ(events[0].GetPlaceHolder1(), "INTEL SSDPE2KE016T8 (/dev/sdx)") << "no serial number";
    Json bare = WornTo(91);
    bare["device"].erase("name");
    EXPECT_EQ(Raise(bare)[0].GetPlaceHolder1(), "INTEL SSDPE2KE016T8 (sample.json)");
    EXPECT_EQ(events[0].GetPlaceHolder2(), "254 percent used, threshold 90");
}

TEST(RaiseDriveEvents, HeatBeyondTheLimitOfTheDriveIsAWarning) {
    constexpr std::pair<const char*, const char*> LIMITS[] = {{"ATA", "op_limit_max"},
                                                              {"ATA", "limit_max"},
                                                              {"NVMe", "op_limit_max"},
                                                              {"NVMe", "critical_limit_max"},
                                                              {"SCSI", "drive_trip"}};
    for (const auto& [protocol, name] : LIMITS) {
        EXPECT_EQ(IDs(AtDegrees(60, name, 60, protocol)), Numbers{}) << protocol << name;
        EXPECT_EQ(IDs(AtDegrees(61, name, 60, protocol)), Numbers{ID::PD_TEMP_HIGH}) << protocol << name;
    }
    std::vector<PI::CEvent> events = Raise(AtDegrees(61, "limit_max", 60));
    EXPECT_EQ(events[0].m_Severity, PI::Severity::WARNING);
    EXPECT_EQ(events[0].GetPlaceHolder2(), "61 degrees Celsius, limit 60");
}

TEST(RaiseDriveEvents, TheOperatingLimitGoesFirst) {
    Json report = AtDegrees(65, "limit_max", 75);
    EXPECT_EQ(IDs(report), Numbers{});
    report["temperature"]["op_limit_max"] = 64;
    EXPECT_EQ(IDs(report), Numbers{ID::PD_TEMP_HIGH});
    report["temperature"] = {{"current", 65}, {"limit_max", 60}, {"op_limit_max", 70}};
    EXPECT_EQ(IDs(report), Numbers{});
}

TEST(RaiseDriveEvents, ALimitThatIsNoneRaisesNothing) {
    for (const int limit : {-1, 0, 151}) {
        EXPECT_EQ(IDs(AtDegrees(150, "limit_max", limit)), Numbers{}) << limit;
    }
    EXPECT_EQ(IDs(AtDegrees(150, "limit_max", 1)), Numbers{ID::PD_TEMP_HIGH});
    EXPECT_EQ(IDs(AtDegrees(150, "limit_max", 150)), Numbers{});
    EXPECT_EQ(IDs(AtDegrees(151, "limit_max", 60)), Numbers{}) << "no temperature of a drive";
}

TEST(RaiseDriveEvents, SeveralStandInAFixedOrder) {
    Json report = WornTo(95);
    report["smart_status"]["passed"] = false;
    report["temperature"] = {{"current", 80}, {"op_limit_max", 70}};
    const Numbers expected(std::begin(DRIVE_EVENTS), std::end(DRIVE_EVENTS));
    EXPECT_EQ(IDs(report), expected);
}
