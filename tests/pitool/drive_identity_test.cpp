// SPDX-License-Identifier: Apache-2.0

#include "drive_identity.h"

#include "sample_reports.h"

#include <gtest/gtest.h>

using namespace pitool;
using namespace pitool::test;

TEST(IdentifyDrive, SplitsTheModelTextAndCorrectsTheSerialNumber) {
    Json json = AtaReport("WDC WD20EFRX-68EUZN0");
    json["serial_number"] = "WD-WCC4M0000000";
    const DriveIdentity identity = IdentifyDrive(Read(json));
    EXPECT_EQ(*identity.m_Vendor, "WDC");
    EXPECT_EQ(identity.m_Product, "WD20EFRX-68EUZN0");
    EXPECT_EQ(*identity.m_Serial, "WCC4M0000000");
}

TEST(IdentifyDrive, AModelThatDoesNotNameItsVendorTakesTheOneOfTheEnduranceList) {
    EXPECT_EQ(*IdentifyDrive(Read(AtaReport("SSDSC2BB480G7"))).m_Vendor, "INTEL");
    const DriveIdentity unlisted = IdentifyDrive(Read(AtaReport("SSDSC2BB480G9")));
    EXPECT_FALSE(unlisted.m_Vendor);
    EXPECT_EQ(unlisted.m_Vendor.m_Reason, "the model text does not name it");
    EXPECT_EQ(unlisted.m_Product, "SSDSC2BB480G9");
}

TEST(IdentifyDrive, AScsiDriveKeepsItsOwnVendorProductAndSerialNumber) {
    const Json json = {{"device", {{"protocol", "SCSI"}}},
                       {"scsi_vendor", "SEAGATE"},
                       {"scsi_product", "ST1200MM0088"},
                       {"serial_number", "Z40000000000C000BZXB"}};
    const DriveIdentity identity = IdentifyDrive(Read(json));
    EXPECT_EQ(*identity.m_Vendor, "SEAGATE");
    EXPECT_EQ(identity.m_Product, "ST1200MM0088");
    EXPECT_EQ(*identity.m_Serial, "Z40000000000C000BZXB") << "the rule for serial numbers is one for SATA";
}

TEST(IdentifyDrive, ASerialNumberThatIsNotReportedIsUnknown) {
    EXPECT_EQ(IdentifyDrive(Read(AtaReport("MODEL"))).m_Serial.m_Reason, "not reported");
}

TEST(IdentifyDrive, TheReportedRotationSpeedGoesBeforeTheRule) {
    Json json = AtaReport("WDC WD1500HLFS-01G6U0");
    EXPECT_EQ(*IdentifyDrive(Read(json)).m_RPM, 10000U);
    EXPECT_EQ(IdentifyDrive(Read(json)).m_RPM.m_Source,
              "from the model's rule; the drive does not report it");
    json["rotation_rate"] = 5400;
    EXPECT_EQ(*IdentifyDrive(Read(json)).m_RPM, 5400U);
    EXPECT_EQ(IdentifyDrive(Read(json)).m_RPM.m_Source, "reported by the drive");
}

TEST(IdentifyDrive, AModelTooShortForTheRuleHasNoRotationSpeed) {
    const DriveIdentity two = IdentifyDrive(Read(AtaReport("HGST AB")));
    EXPECT_FALSE(two.m_RPM);
    EXPECT_EQ(two.m_RPM.m_Reason, "not reported, and the model name is too short for the rule");
    EXPECT_EQ(*IdentifyDrive(Read(AtaReport("HGST ABC"))).m_RPM, 7200U);
}

TEST(IdentifyDrive, AScsiDiskThatDoesNotReportItsSpeedHasNone) {
    Json json = AtaReport("HITACHI H109060");
    json["device"]["protocol"] = "SCSI";
    EXPECT_EQ(IdentifyDrive(Read(json)).m_RPM.m_Reason, "not reported");
}

TEST(IdentifyDrive, TheMediumFollowsTheReportedSpeed) {
    Json json = AtaReport("INTEL SSDSC2BB480G7");
    json["rotation_rate"] = 1;
    EXPECT_FALSE(IdentifyDrive(Read(json)).m_SolidState);
    json["rotation_rate"] = 0;
    EXPECT_TRUE(IdentifyDrive(Read(json)).m_SolidState);
    EXPECT_FALSE(IdentifyDrive(Read(json)).m_RPM);
}

TEST(IdentifyDrive, WithoutReportedSpeedTheMediumFollowsFromOtherSigns) {
    EXPECT_FALSE(IdentifyDrive(Read(AtaReport("SAMPLE"))).m_SolidState) << "no sign at all";
    EXPECT_TRUE(IdentifyDrive(Read(AtaReport("INTEL SSDSC2BB480G7"))).m_SolidState) << "in the list";
    Json trim = AtaReport("SAMPLE");
    trim["trim"]["supported"] = true;
    EXPECT_TRUE(IdentifyDrive(Read(trim)).m_SolidState);
    trim["trim"]["supported"] = false;
    EXPECT_FALSE(IdentifyDrive(Read(trim)).m_SolidState);
    Json wear = AtaReport("SAMPLE");
    wear["endurance_used"]["current_percent"] = 0;
    EXPECT_TRUE(IdentifyDrive(Read(wear)).m_SolidState);
    Json nvme = AtaReport("SAMPLE");
    nvme["device"]["protocol"] = "NVMe";
    EXPECT_TRUE(IdentifyDrive(Read(nvme)).m_SolidState);
}
