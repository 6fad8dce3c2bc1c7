// SPDX-License-Identifier: Apache-2.0

#include "drive_object.h"

#include "sample_reports.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace pitool;
using namespace pitool::test;

namespace ID = PI::PropertyID;

namespace {

using Names = std::vector<std::string>;

Names Operations(const Json& report) {
    const DriveAssessment drive = Assess(report);
    const PI::CObject object = MakeDriveObject(7, drive);
    Names names;
    for (const PI::COperation& operation : object.m_Operations) {
        names.push_back(PI::OperationIDToString(static_cast<int>(operation.m_Header1)));
    }
    EXPECT_EQ(names, OperationNames(drive));
    return names;
}

}  // namespace

TEST(MakeDriveObject, HoldsWhatIsKnownOfTheDrive) {
    Json report = AtaReport("WDC WD1500HLFS-01G6U0");
    report["serial_number"] = "WD-WX10C0000001";
    const DriveAssessment drive = Assess(report);

    const PI::CObject object = MakeDriveObject(7, drive);

    EXPECT_EQ(object.m_ObjectID, 7U);
    EXPECT_EQ(object.m_ObjectType, PHYSICAL_DRIVE);
    std::size_t known = 0;
    for (const Figure& figure : drive.m_Figures) {
        if (figure.IsKnown()) {
            ASSERT_LT(known, object.m_Properties.size());
            EXPECT_TRUE(object.m_Properties[known++] == figure.m_Property);
        }
    }
    EXPECT_EQ(object.m_Properties.size(), known);
    EXPECT_GT(known, 3U);
}

TEST(MakeDriveObject, HoldsTheTemperatureLimitWhereTheDriveStatesOne) {
    Json report = AtaReport("MODEL");
    report["temperature"] = {{"current", 30}, {"op_limit_max", 60}};
    const PI::CObject object = MakeDriveObject(1, Assess(report));
    const auto limit = std::find_if(
        object.m_Properties.begin(), object.m_Properties.end(),
        [](const PI::CProperty& property) { return property.m_ID == ID::HIGH_WARNING_TEMPERATURE; });
    ASSERT_NE(limit, object.m_Properties.end());
    EXPECT_EQ(limit->m_Data.m_SignedLong.m_Value, 60);
}

TEST(MakeDriveObject, OffersWhatSuitsTheDrive) {
    Json report = AtaReport("MODEL");
    EXPECT_EQ(Operations(report), (Names{"LOCATE_DEVICE", "DISK_INFORMATION", "START_VERIFY"}));
    report["smart_status"]["passed"] = false;
    EXPECT_EQ(Operations(report), (Names{"LOCATE_DEVICE", "DISK_INFORMATION", "MAKE_OFFLINE"}));
    report["device"]["protocol"] = "SCSI";
    report["scsi_transport_protocol"]["value"] = 6;
    EXPECT_EQ(Operations(report), (Names{"LOCATE_DEVICE", "DISK_INFORMATION", "SENSE_LOG", "MAKE_OFFLINE"}));
}
