// SPDX-License-Identifier: Apache-2.0
// A drive as the smartctl plug-in understands smartctl's words.
#include "drive.h"

#include <gmock/gmock.h>

#include <exception>
#include <string>

namespace {

namespace Value = PI::PropertyValue;
using smartctl::Drive;
using smartctl::ReadDrive;

Drive Read(const std::string& json) {
    return ReadDrive("test", json);
}

/// A SATA drive with more members behind its identity.
Drive ReadSATA(const std::string& model, const std::string& more) {
    return Read(R"({"device":{"name":"/dev/sda","protocol":"ATA"},"model_name":")" + model + "\"" + more +
                "}");
}

std::string Error(const std::string& json) {
    try {
        Read(json);
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

const std::string INTEL_ATTRIBUTES =
    R"(,"rotation_rate":0,"ata_smart_attributes":{"table":[
        {"id":9,"value":100,"worst":100,"raw":{"value":10000}},
        {"id":225,"value":100,"worst":100,"raw":{"value":32768}},
        {"id":232,"value":97,"worst":97,"raw":{"value":0}},
        {"id":233,"value":80,"worst":80,"raw":{"value":0}}]})";

TEST(SmartctlDrive, SplitsModelAndCorrectsSerialNumber) {
    const Drive drive =
        ReadSATA("WDC WD40EFRX-68N32N0", R"(,"serial_number":"WD-WCC7K4ARZ51P","rotation_rate":5400)");
    EXPECT_EQ(drive.m_Vendor, "WDC");
    EXPECT_EQ(drive.m_Model, "WD40EFRX-68N32N0");
    EXPECT_EQ(drive.m_SerialNumber, "WCC7K4ARZ51P");
    EXPECT_EQ(drive.m_Protocol, Value::SATA);
    EXPECT_EQ(drive.m_Medium, Value::HDD);
    EXPECT_EQ(drive.m_RPM, 5400U);
}

TEST(SmartctlDrive, RotationSpeedThatIsNotReportedFollowsFromTheModel) {
    EXPECT_EQ(ReadSATA("HGST HUS726040ALA610", "").m_RPM, 7200U);
    EXPECT_EQ(ReadSATA("WDC WD7500BPKT-00PK4T0", "").m_RPM, 7200U);
}

TEST(SmartctlDrive, ModelTooShortForItsVendorsRuleHasTheUsualSpeed) {
    EXPECT_EQ(ReadSATA("HGST HU", "").m_RPM, 7200U);
}

TEST(SmartctlDrive, SolidStateDriveHasWearAndLifetime) {
    const Drive drive = ReadSATA("INTEL SSDSC2BB480G7", INTEL_ATTRIBUTES);
    EXPECT_EQ(drive.m_Medium, Value::SSD);
    EXPECT_EQ(drive.m_RPM, std::nullopt);
    EXPECT_EQ(drive.m_PowerOnHours, 10000U);
    EXPECT_EQ(drive.m_BytesWritten, std::uint64_t{1} << 40U);
    EXPECT_EQ(drive.m_EnduranceTB, 945U);
    EXPECT_EQ(drive.m_PercentUsed, 20U);
    EXPECT_EQ(drive.m_SparePercent, 97U);
    ASSERT_TRUE(drive.m_RemainingHours.has_value());
    EXPECT_GE(*drive.m_RemainingHours, 1U);
    EXPECT_LE(*drive.m_RemainingHours, 43829U);
}

TEST(SmartctlDrive, ListedModelIsSolidStateEvenWithoutASpeed) {
    EXPECT_EQ(ReadSATA("INTEL SSDSC2BB480G7", "").m_Medium, Value::SSD);
}

TEST(SmartctlDrive, UnlistedSolidStateDriveHasNoWear) {
    const Drive drive = ReadSATA("ACME X1", R"(,"rotation_rate":0,"power_on_time":{"hours":12})");
    EXPECT_EQ(drive.m_Medium, Value::SSD);
    EXPECT_EQ(drive.m_PowerOnHours, 12U);
    EXPECT_EQ(drive.m_BytesWritten, std::nullopt);
    EXPECT_EQ(drive.m_PercentUsed, std::nullopt);
    EXPECT_EQ(drive.m_RemainingHours, std::nullopt);
}

TEST(SmartctlDrive, MembersOfOtherTypesCountAsMissing) {
    const Drive drive =
        ReadSATA("ACME X1", R"(,"rotation_rate":"7200","user_capacity":[1],"serial_number":5,)"
                            R"("temperature":{"current":-5},"smart_status":{"passed":"no"},)"
                            R"("ata_smart_attributes":{"table":{"id":9}})");
    EXPECT_EQ(drive.m_SizeBytes, std::nullopt);
    EXPECT_EQ(drive.m_SerialNumber, "");
    EXPECT_EQ(drive.m_TemperatureC, std::nullopt);
    EXPECT_FALSE(drive.m_PredictsFailure);
}

TEST(SmartctlDrive, AttributesBeyondThePageArePassedOver) {
    std::string rows;
    for (int i = 0; i < 40; ++i) {
        rows += R"({"id":9,"value":1,"worst":1,"raw":{"value":)" + std::to_string(100 + i) + "}},";
    }
    const Drive drive = ReadSATA("INTEL SSDSC2BB480G7", R"(,"ata_smart_attributes":{"table":[)" + rows +
                                                            R"({"id":256,"raw":{"value":1}},7]})");
    EXPECT_EQ(drive.m_PowerOnHours, 129U);  // the thirtieth of them
}

TEST(SmartctlDrive, FailedStatusPredictsFailure) {
    EXPECT_TRUE(ReadSATA("ACME X1", R"(,"smart_status":{"passed":false})").m_PredictsFailure);
    EXPECT_FALSE(ReadSATA("ACME X1", R"(,"smart_status":{"passed":true})").m_PredictsFailure);
}

TEST(SmartctlDrive, NVMeDriveHasItsOwnLog) {
    const Drive drive =
        Read(R"({"device":{"name":"/dev/nvme0","protocol":"NVMe"},"model_name":"INTEL SSDPE2KX040T8",)"
             R"("power_on_time":{"hours":1000},"nvme_smart_health_information_log":)"
             R"({"percentage_used":7,"available_spare":98,"data_units_written":2000000}})");
    EXPECT_EQ(drive.m_Protocol, Value::NVME);
    EXPECT_EQ(drive.m_Medium, Value::SSD);
    EXPECT_EQ(drive.m_EnduranceTB, 6300U);
    EXPECT_EQ(drive.m_BytesWritten, 1024000000000U);
    EXPECT_EQ(drive.m_PercentUsed, 7U);
    EXPECT_EQ(drive.m_SparePercent, 98U);
    EXPECT_TRUE(drive.m_RemainingHours.has_value());
}

TEST(SmartctlDrive, CountThatCannotBeIsNotTaken) {
    const Drive drive =
        Read(R"({"device":{"protocol":"NVMe"},"model_name":"ACME N1","nvme_smart_health_information_log":)"
             R"({"data_units_written":18446744073709551615}})");
    EXPECT_EQ(drive.m_BytesWritten, std::nullopt);
}

TEST(SmartctlDrive, SASDriveIsNamedByItsInquiry) {
    const Drive drive = Read(
        R"({"device":{"name":"/dev/sdb","protocol":"SCSI"},"scsi_vendor":"SEAGATE","scsi_product":"ST600MM0006",)"
        R"("scsi_revision":"B001","rotation_rate":10500})");
    EXPECT_EQ(drive.m_Protocol, Value::SAS);
    EXPECT_EQ(drive.m_Vendor, "SEAGATE");
    EXPECT_EQ(drive.m_Model, "ST600MM0006");
    EXPECT_EQ(drive.m_Firmware, "B001");
    EXPECT_EQ(drive.m_RPM, 10500U);
    EXPECT_EQ(drive.m_Medium, Value::HDD);
}

TEST(SmartctlDrive, OlderVersionsNameTheInquiryOtherwise) {
    const Drive drive = Read(
        R"({"device":{"protocol":"SCSI"},"vendor":"SEAGATE","product":"ST1200MM0088","revision":"N004"})");
    EXPECT_EQ(drive.m_Vendor, "SEAGATE");
    EXPECT_EQ(drive.m_Model, "ST1200MM0088");
    EXPECT_EQ(drive.m_Firmware, "N004");
}

TEST(SmartctlDrive, SASSolidStateDriveHasWear) {
    const Drive drive =
        Read(R"({"device":{"protocol":"SCSI"},"scsi_vendor":"ACME","scsi_product":"S1","rotation_rate":0,)"
             R"("power_on_time":{"hours":1000},"scsi_percentage_used_endurance_indicator":10})");
    EXPECT_EQ(drive.m_Medium, Value::SSD);
    EXPECT_EQ(drive.m_PercentUsed, 10U);
    EXPECT_TRUE(drive.m_RemainingHours.has_value());
}

TEST(SmartctlDrive, WhatIsNoDriveSaysWhy) {
    EXPECT_EQ(Error("{}"), "no drive is described");
    EXPECT_EQ(Error("[]"), "no drive is described");
    EXPECT_EQ(Error(R"({"device":{"protocol":"ATA"},"model_name":""})"), "no drive is described");
    EXPECT_EQ(Error(R"({"smartctl":{"messages":[{"string":"/dev/sdx: Unable to detect device type"}]}})"),
              "/dev/sdx: Unable to detect device type");
    EXPECT_THAT(Error("{\"device\":"), testing::HasSubstr("parse error at line 1, column"));
    EXPECT_THAT(Error(""), testing::HasSubstr("parse error at line 1, column 1"));
}

TEST(SmartctlDrive, DeepNestingDoesNoHarm) {
    const std::size_t depth = 200000;
    const std::string json = R"({"x":)" + std::string(depth, '[') + std::string(depth, ']') + "}";
    EXPECT_EQ(Error(json), "no drive is described");
}

}  // namespace
