// SPDX-License-Identifier: Apache-2.0
// What the smartctl plug-in makes of reports.
#include "objects.h"

#include <gmock/gmock.h>
#include <pi/plugin_helper.h>

#include <string>

namespace {

namespace ID = PI::PropertyID;
using smartctl::Drive;

std::vector<Drive> Read(const std::string& text) {
    std::vector<PI::CDriveReport> reports;
    std::vector<PI::CReportRefusal> refusals;
    PI::ReadSmartctl(text.data(), text.size(), reports, refusals);
    std::vector<Drive> drives;
    for (PI::CDriveReport& report : reports) {
        drives.push_back({"report " + std::to_string(drives.size()), std::move(report), ""});
    }
    return drives;
}

/// An NVMe drive's report with members of its health log.
std::string NVMe(const std::string& log, const std::string& more = "") {
    return R"({"device":{"name":"/dev/nvme0","protocol":"NVMe"},"model_name":"ACME N1","serial_number":"S1",)" +
           more + R"("nvme_smart_health_information_log":{)" + log + "}}";
}

std::string Disk(const std::string& more) {
    return R"({"device":{"name":"/dev/sda","protocol":"ATA"},"model_name":"ACME D1","rotation_rate":7200)" +
           more + "}";
}

/// The property of the only drive, as text; "none" when it has none.
std::string Property(const std::string& report, PI::_PROPERTY_ID id) {
    shared::ObjectIDs ids;
    std::vector<PI::CObject> objects;
    smartctl::AppendObjects(Read(report), ids, objects);
    const PI::CProperty* property = PI::CPluginHelper::FindProperty(objects.back(), id);
    return property != nullptr ? PI::CPluginHelper::StringifyProperty(*property) : "none";
}

/// Number and detail of each event.
std::vector<std::string> Events(const std::string& report) {
    shared::ObjectIDs ids;
    smartctl::EventLog log;
    log.Update(Read(report), ids);
    log.Update(Read(report), ids);  // what has been told is not told again
    std::vector<std::string> texts;
    for (PI::CEvent& event : log.Take()) {
        texts.push_back(std::to_string(event.m_EventID) + " " + event.GetPlaceHolder2());
    }
    return texts;
}

TEST(SmartctlObjects, AMissingVerdictIsUnknown) {
    EXPECT_EQ(Property(Disk(""), ID::SMART_FLAGGED), "UNKNOWN");
    EXPECT_EQ(Property(Disk(R"(,"smart_status":{"passed":true})"), ID::SMART_FLAGGED), "NO");
    EXPECT_EQ(Property(Disk(R"(,"smart_status":{"passed":false})"), ID::SMART_FLAGGED), "YES");
}

TEST(SmartctlObjects, ADriveThatIsToBeReplacedHasTheStatusOfOne) {
    EXPECT_EQ(Property(Disk(R"(,"smart_status":{"passed":true})"), ID::STATUS), "AVAILABLE");
    EXPECT_EQ(Property(Disk(R"(,"smart_status":{"passed":false})"), ID::STATUS), "AVAILABLE_SMART");
    EXPECT_EQ(Property(Disk(R"(,"ata_smart_attributes":{"table":[{"id":197,"name":"Current_Pending_Sector",)"
                            R"("raw":{"value":878}}]})"),
                       ID::STATUS),
              "AVAILABLE_SMART");
}

TEST(SmartctlObjects, ABlockSizeIsShownWhereItIsKnown) {
    EXPECT_EQ(Property(Disk(R"(,"logical_block_size":4096)"), ID::BLOCK_SIZE), "4096");
    EXPECT_EQ(Property(Disk(""), ID::BLOCK_SIZE), "none");
}

TEST(SmartctlObjects, WhatIsDoubtfulIsNotShownAsAFigure) {
    EXPECT_EQ(Property(NVMe(R"("critical_warning":0,"percentage_used":7)"), ID::RATED_ENDURANCE_PERCENT),
              "7");
    EXPECT_EQ(Property(NVMe(R"("critical_warning":0,"percentage_used":255)"), ID::RATED_ENDURANCE_PERCENT),
              "none");
    EXPECT_EQ(Property(NVMe(R"("critical_warning":0)"), ID::RATED_ENDURANCE_PERCENT), "none");
}

TEST(SmartctlObjects, TheLifetimeNeedsAWear) {
    const std::string log = R"("percentage_used":10,"power_on_hours":8760)";
    EXPECT_EQ(Property(NVMe(log), ID::ESTIMATED_LIFETIME), "30686");
    EXPECT_EQ(Property(NVMe(R"("power_on_hours":8760)"), ID::ESTIMATED_LIFETIME), "none");
}

TEST(SmartctlObjects, DrivesStandBelowAnAdapterForEachProtocol) {
    shared::ObjectIDs ids;
    std::vector<PI::CObject> objects;
    smartctl::AppendObjects(Read(Disk("") + NVMe("") + Disk("")), ids, objects);
    ASSERT_EQ(objects.size(), 5U);
    EXPECT_EQ(objects[1].m_RelatedIDs1, std::vector<std::uint64_t>{objects[0].m_ObjectID});
    EXPECT_EQ(objects[2].m_RelatedIDs1, std::vector<std::uint64_t>{objects[0].m_ObjectID});
    EXPECT_EQ(objects[4].m_RelatedIDs1, std::vector<std::uint64_t>{objects[3].m_ObjectID});
    EXPECT_NE(objects[1].m_ObjectID, objects[2].m_ObjectID);
}

TEST(SmartctlEvents, AnOldDriveThatIsNotWornRaisesNone) {
    EXPECT_THAT(Events(NVMe(R"("critical_warning":0,"percentage_used":0,"power_on_hours":52560)")),
                testing::IsEmpty());
}

TEST(SmartctlEvents, WearFromItsThresholdOnIsToldOnce) {
    EXPECT_THAT(Events(NVMe(R"("critical_warning":0,"percentage_used":89)")), testing::IsEmpty());
    EXPECT_THAT(Events(NVMe(R"("critical_warning":0,"percentage_used":90)")),
                testing::ElementsAre("11090 90 percent worn"));
}

TEST(SmartctlEvents, TheNextDriveUnderTheSameNameIsToldToo) {
    shared::ObjectIDs ids;
    smartctl::EventLog log;
    for (const std::string serial : {"S1", "S2", "S1"}) {
        log.Update(Read(Disk(R"(,"serial_number":")" + serial + R"(","smart_status":{"passed":false})")),
                   ids);
    }
    std::vector<PI::CEvent> events = log.Take();
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[1].GetPlaceHolder1(), "ACME D1 (/dev/sda, serial number S2)");
}

TEST(SmartctlEvents, ADriveThatIsToBeReplacedIsToldWithTheReason) {
    EXPECT_THAT(Events(Disk(R"(,"smart_status":{"passed":false})")),
                testing::ElementsAre("10044 the drive says that it is failing"));
    const std::string pending =
        R"(,"smart_status":{"passed":true},"ata_smart_attributes":{"table":[{"id":197,)"
        R"("name":"Current_Pending_Sector","value":1,"worst":1,"raw":{"value":)";
    EXPECT_THAT(Events(Disk(pending + "878}}]}")), testing::ElementsAre("10044 878 pending sectors"));
    EXPECT_THAT(Events(Disk(pending + "1}}]}")), testing::IsEmpty());
}

}  // namespace
