// SPDX-License-Identifier: Apache-2.0

#include "smartctl_reader.h"

#include "sample_reports.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace pitool;
using namespace pitool::test;

constexpr std::uint64_t MAX_UNSIGNED = 18446744073709551615ULL;

/// Why a text is refused; empty when it is taken.
std::string Refusal(const std::string& text) {
    DriveReport report;
    std::string reason;
    return ReadSmartctlReport(text, report, reason) ? "" : reason;
}

std::string Refusal(const Json& json) {
    return Refusal(json.dump());
}

/// Why a report is refused that is whole but for one member, given by a JSON pointer and JSON text.
std::string RefusalWith(const std::string& pointer, const std::string& value) {
    Json report = AtaReport("MODEL");
    report[Json::json_pointer(pointer)] = "@";
    std::string text = report.dump();
    return Refusal(text.replace(text.find("\"@\""), 3, value));
}

Json AttributeTable(std::size_t rows) {
    Json table = Json::array();
    for (std::size_t i = 0; i < rows; ++i) {
        table.push_back(Attribute(static_cast<int>(i + 1), 100, 0));
    }
    return table;
}

std::string RefusalOfRow(const Json& row) {
    Json report = AtaReport("MODEL");
    report["ata_smart_attributes"]["table"] = Json::array({row});
    return Refusal(report);
}

std::string RefusalOfRowWith(const std::string& pointer, const Json& value) {
    Json row = Attribute(9, 100, 1);
    row[Json::json_pointer(pointer)] = value;
    return RefusalOfRow(row);
}

}  // namespace

TEST(ReadSmartctlReport, ALeastReportHasProtocolAndModelOnly) {
    const DriveReport report = Read(AtaReport("ST3500418AS"));
    EXPECT_EQ(report.m_Protocol, Protocol::ATA);
    EXPECT_EQ(report.m_ModelText, "ST3500418AS");
    EXPECT_EQ(report.m_Device, "/dev/sdx");
    EXPECT_FALSE(report.m_SerialNumber);
    EXPECT_FALSE(report.m_RotationRate);
    EXPECT_FALSE(report.m_CapacityBytes);
    EXPECT_FALSE(report.m_PowerOnHours);
    EXPECT_FALSE(report.m_SmartPassed);
    EXPECT_FALSE(report.m_PercentUsed);
    EXPECT_FALSE(report.m_HasAttributes);
}

TEST(ReadSmartctlReport, TakesEveryMemberOfAnAtaDrive) {
    Json json = SolidStateReport("MODEL", 77, {Attribute(9, 98, 77), Attribute(233, 40, 5)});
    json["serial_number"] = "S1";
    json["firmware_version"] = "F1";
    json["sata_version"]["string"] = "SATA 3.2";
    json["user_capacity"]["bytes"] = 512000;
    json["logical_block_size"] = 4096;
    json["temperature"] = {{"current", -5}, {"lifetime_max", 41}};
    json["smart_status"]["passed"] = false;
    json["trim"]["supported"] = true;
    json["ata_smart_attributes"]["revision"] = 10;
    json["ata_smart_attributes"]["table"][1]["flags"]["value"] = 50;

    const DriveReport report = Read(json);

    EXPECT_EQ(report.m_SerialNumber, "S1");
    EXPECT_EQ(report.m_FirmwareVersion, "F1");
    EXPECT_TRUE(report.m_SataSeen);
    EXPECT_EQ(report.m_RotationRate, 0U);
    EXPECT_EQ(report.m_CapacityBytes, 512000U);
    EXPECT_EQ(report.m_BlockSize, 4096U);
    EXPECT_EQ(report.m_Temperature, -5);
    EXPECT_EQ(report.m_HighestTemperature, 41);
    EXPECT_EQ(report.m_PowerOnHours, 77U);
    EXPECT_EQ(report.m_SmartPassed, false);
    EXPECT_EQ(report.m_TrimSupported, true);
    EXPECT_TRUE(report.m_HasAttributes);
    EXPECT_EQ(report.m_AttributeRevision, 10);
    ASSERT_EQ(report.m_Attributes.size(), 2U);
    EXPECT_EQ(report.m_Attributes[1].m_ID, 233);
    EXPECT_EQ(report.m_Attributes[1].m_Flags, 50);
    EXPECT_EQ(report.m_Attributes[1].m_Current, 40);
    EXPECT_EQ(report.m_Attributes[1].m_Worst, 40);
    EXPECT_EQ(report.m_Attributes[1].m_Raw, 5U);
}

TEST(ReadSmartctlReport, TakesTheDeviceStatisticsInBytes) {
    Json json = AtaReport("MODEL");
    json["ata_device_statistics"]["pages"] = {
        {{"table",
          {{{"name", "Logical Sectors Written"}, {"value", 10}, {"flags", {{"valid", true}}}},
           {{"name", "Logical Sectors Read"}, {"value", 7}, {"flags", {{"valid", false}}}},
           {{"name", "Current Temperature"}, {"value", -3}}}}},
        {{"table", {{{"name", "Percentage Used Endurance Indicator"}, {"value", 3}}}}}};

    EXPECT_EQ(Read(json).m_StatisticsWritten, 5120U);
    EXPECT_FALSE(Read(json).m_StatisticsRead) << "marked as not valid";
    EXPECT_EQ(Read(json).m_PercentUsed, 3U);

    json["logical_block_size"] = 4096;
    EXPECT_EQ(Read(json).m_StatisticsWritten, 40960U);
}

TEST(ReadSmartctlReport, TakesAnNvmeDriveInUnitsOf512000Bytes) {
    Json json = AtaReport("INTEL SSDPE2KX080T8");
    json["device"]["protocol"] = "NVMe";
    json["nvme_total_capacity"] = 1000;
    json["nvme_smart_health_information_log"] = {{"percentage_used", 4},
                                                 {"available_spare", 99},
                                                 {"power_on_hours", 12},
                                                 {"data_units_written", 2},
                                                 {"data_units_read", 3}};

    const DriveReport report = Read(json);

    EXPECT_EQ(report.m_Protocol, Protocol::NVME);
    EXPECT_EQ(report.m_CapacityBytes, 1000U);
    EXPECT_EQ(report.m_PercentUsed, 4U);
    EXPECT_EQ(report.m_AvailableSpare, 99U);
    EXPECT_EQ(report.m_PowerOnHours, 12U);
    EXPECT_EQ(report.m_StatisticsWritten, 1024000U);
    EXPECT_EQ(report.m_StatisticsRead, 1536000U);
}

TEST(ReadSmartctlReport, TakesASasDriveWithItsDecimalGigabytes) {
    const Json json = {
        {"device", {{"protocol", "SCSI"}}},
        {"scsi_vendor", "TOSHIBA"},
        {"scsi_product", "PX05SMB040"},
        {"scsi_revision", "0101"},
        {"scsi_transport_protocol", {{"value", 6}}},
        {"scsi_percentage_used_endurance_indicator", 5},
        {"scsi_error_counter_log",
         {{"write", {{"gigabytes_processed", "12.345678901"}}}, {"read", {{"gigabytes_processed", "7"}}}}},
    };

    const DriveReport report = Read(json);

    EXPECT_EQ(report.m_ModelText, "TOSHIBA PX05SMB040");
    EXPECT_EQ(report.m_ScsiVendor, "TOSHIBA");
    EXPECT_EQ(report.m_ScsiProduct, "PX05SMB040");
    EXPECT_EQ(report.m_FirmwareVersion, "0101");
    EXPECT_EQ(report.m_ScsiTransport, 6U);
    EXPECT_EQ(report.m_PercentUsed, 5U);
    EXPECT_EQ(report.m_StatisticsWritten, 12345678901U);
    EXPECT_EQ(report.m_StatisticsRead, 7000000000U);
}

TEST(ReadSmartctlReport, TheOlderNamesOfScsiMembersServeToo) {
    const Json json = {
        {"device", {{"protocol", "SCSI"}}}, {"vendor", "HGST"}, {"product", "P"}, {"revision", "R"}};
    EXPECT_EQ(Read(json).m_ModelText, "HGST P");
    EXPECT_EQ(Read(json).m_FirmwareVersion, "R");
}

TEST(ReadSmartctlReport, OfTwoMembersOfOneNameTheLaterCounts) {
    const std::string text =
        R"({"model_name":"A","model_name":"B","device":{"protocol":"ATA"},)"
        R"("ata_smart_attributes":{"table":[{"id":9,"value":1,"worst":1,"raw":{"value":1}}]},)"
        R"("ata_smart_attributes":{"table":[{"id":5,"value":2,"worst":2,"raw":{"value":2}}]}})";
    DriveReport report;
    std::string reason;

    ASSERT_TRUE(ReadSmartctlReport(text, report, reason)) << reason;

    EXPECT_EQ(report.m_ModelText, "B");
    ASSERT_EQ(report.m_Attributes.size(), 1U);
    EXPECT_EQ(report.m_Attributes[0].m_ID, 5);
}

TEST(ReadSmartctlReport, ANameWithPointsIsNoPath) {
    Json json = AtaReport("MODEL");
    json["power_on_time.hours"] = 5;
    json["ata_smart_attributes.table[]"] = {{"id", 0}};
    EXPECT_FALSE(Read(json).m_PowerOnHours);
}

TEST(ReadSmartctlReport, MembersThatAreNotUsedMayBeAnything) {
    Json json = AtaReport("MODEL");
    json["ata_sct_temperature_history"]["table"] = {nullptr, 1, "x", {{"id", "y"}}};
    json["wwn"] = -1;
    EXPECT_EQ(Refusal(json), "");
}

TEST(ReadSmartctlReport, AReportReadLaterKeepsNothingOfTheOneBefore) {
    DriveReport report = Read(SolidStateReport("A", 5, {Attribute(9, 1, 1)}));
    std::string reason;
    ASSERT_TRUE(ReadSmartctlReport(AtaReport("B").dump(), report, reason));
    EXPECT_FALSE(report.m_PowerOnHours);
    EXPECT_TRUE(report.m_Attributes.empty());
}

TEST(ReadSmartctlReport, RefusesWhatIsNoJson) {
    EXPECT_EQ(Refusal(std::string("hello\n")), "not JSON: wrong at byte 1");
    EXPECT_EQ(Refusal(std::string("t")), "not JSON: wrong at byte 2");
    EXPECT_EQ(Refusal(std::string("{\"a\":1}}")), "not JSON: wrong at byte 8");
    EXPECT_EQ(Refusal(std::string("{\"a\":\"\xFF\"}")), "not JSON: wrong at byte 7");
}

TEST(ReadSmartctlReport, RefusesAnEmptyText) {
    EXPECT_EQ(Refusal(std::string()), "empty");
    EXPECT_EQ(Refusal(std::string(" \r\n\t")), "empty");
}

TEST(ReadSmartctlReport, RefusesEveryTruncation) {
    const std::string text = SolidStateReport("INTEL SSDSC2BB480G7", 5, {Attribute(9, 100, 5)}).dump();
    ASSERT_EQ(Refusal(text), "");
    for (std::size_t length = 1; length < text.size(); ++length) {
        EXPECT_EQ(Refusal(text.substr(0, length)), "truncated: the JSON text ends too early") << length;
    }
}

TEST(ReadSmartctlReport, RefusesADocumentThatIsNoObject) {
    EXPECT_EQ(Refusal(std::string("[]")), "the document: expected an object, found a list");
    EXPECT_EQ(Refusal(std::string("5")), "the document: expected an object, found a whole number");
    EXPECT_EQ(Refusal(std::string("null")), "the document: expected an object, found null");
}

TEST(ReadSmartctlReport, RefusesAReportWithoutModel) {
    EXPECT_EQ(Refusal(std::string("{}")), "lacks the model (model_name)");
    EXPECT_EQ(Refusal(AtaReport("")), "lacks the model (model_name)");
    EXPECT_EQ(Refusal(AtaReport(" _ ")), "lacks the model (model_name)");
}

TEST(ReadSmartctlReport, TellsWhatSmartctlSaidWhenItFoundNoDrive) {
    const Json json = {
        {"smartctl", {{"messages", {{{"string", "Smartctl open device: /dev/sdz failed"}}}}}},
    };
    EXPECT_EQ(Refusal(json),
              "lacks the model (model_name); smartctl says: Smartctl open device: /dev/sdz failed");
}

TEST(ReadSmartctlReport, RefusesAnUnknownProtocol) {
    Json json = AtaReport("MODEL");
    json["device"]["protocol"] = "USB";
    EXPECT_EQ(Refusal(json), "device.protocol: \"USB\" is none of ATA, NVMe, SCSI");
    json["device"].erase("protocol");
    EXPECT_EQ(Refusal(json), "lacks the protocol (device.protocol)");
}

TEST(ReadSmartctlReport, TakesThirtyAttributesAndRefusesThirtyOne) {
    Json json = AtaReport("MODEL");
    json["ata_smart_attributes"]["table"] = AttributeTable(30);
    EXPECT_EQ(Read(json).m_Attributes.size(), 30U);
    json["ata_smart_attributes"]["table"] = AttributeTable(31);
    EXPECT_EQ(Refusal(json), "holds more than 30 SMART attributes");
}

TEST(ReadSmartctlReport, TakesRawValuesOf48BitsAndRefusesLargerOnes) {
    EXPECT_EQ(RefusalOfRowWith("/raw/value", 281474976710655ULL), "");
    EXPECT_EQ(RefusalOfRowWith("/raw/value", 281474976710656ULL),
              "ata_smart_attributes.table[].raw.value: 281474976710656 is above 48 bits");
    EXPECT_EQ(RefusalOfRowWith("/raw/value", -1),
              "ata_smart_attributes.table[].raw.value: expected a whole number, found a negative number");
    EXPECT_EQ(
        RefusalOfRowWith("/raw/value", 1.5),
        "ata_smart_attributes.table[].raw.value: expected a whole number, found a number with a fraction");
    EXPECT_EQ(RefusalOfRowWith("/raw/value", "5"),
              "ata_smart_attributes.table[].raw.value: expected a whole number, found text");
}

TEST(ReadSmartctlReport, TakesAttributeNumbersFrom1To255) {
    EXPECT_EQ(RefusalOfRowWith("/id", 0), "ata_smart_attributes.table[]: id 0 is no SMART attribute");
    EXPECT_EQ(RefusalOfRowWith("/id", 1), "");
    EXPECT_EQ(RefusalOfRowWith("/id", 255), "");
    EXPECT_EQ(RefusalOfRowWith("/id", 256), "ata_smart_attributes.table[].id: 256 is above 255");
}

TEST(ReadSmartctlReport, TakesNormalisedValuesFrom0To255) {
    for (const std::string member : {"value", "worst"}) {
        EXPECT_EQ(RefusalOfRowWith("/" + member, 0), "");
        EXPECT_EQ(RefusalOfRowWith("/" + member, 255), "");
        EXPECT_EQ(RefusalOfRowWith("/" + member, 256),
                  "ata_smart_attributes.table[]." + member + ": 256 is above 255");
        EXPECT_EQ(
            RefusalOfRowWith("/" + member, -1),
            "ata_smart_attributes.table[]." + member + ": expected a whole number, found a negative number");
    }
}

TEST(ReadSmartctlReport, RefusesAnAttributeThatLacksAMember) {
    for (const char* member : {"id", "value", "worst", "raw"}) {
        Json row = Attribute(9, 100, 1);
        row.erase(member);
        EXPECT_EQ(RefusalOfRow(row), "ata_smart_attributes.table[]: lacks id, value, worst or raw.value")
            << member;
    }
}

TEST(ReadSmartctlReport, RefusesMembersOfTheWrongType) {
    EXPECT_EQ(RefusalWith("/model_name", "5"), "model_name: expected text, found a whole number");
    EXPECT_EQ(RefusalWith("/serial_number", "null"), "serial_number: expected text, found null");
    EXPECT_EQ(RefusalWith("/device", "[]"), "device: expected an object, found a list");
    EXPECT_EQ(RefusalWith("/power_on_time/hours", "\"5\""),
              "power_on_time.hours: expected a whole number, found text");
    EXPECT_EQ(RefusalWith("/power_on_time/hours", "5.0"),
              "power_on_time.hours: expected a whole number, found a number with a fraction");
    EXPECT_EQ(RefusalWith("/power_on_time/hours", "{}"),
              "power_on_time.hours: expected a whole number, found an object");
    EXPECT_EQ(RefusalWith("/power_on_time", "7"), "power_on_time: expected an object, found a whole number");
    EXPECT_EQ(RefusalWith("/smart_status/passed", "1"),
              "smart_status.passed: expected true or false, found a whole number");
    EXPECT_EQ(RefusalWith("/temperature/current", "true"),
              "temperature.current: expected a whole number, found true or false");
    EXPECT_EQ(RefusalWith("/ata_smart_attributes/table", "{}"),
              "ata_smart_attributes.table: expected a list, found an object");
    EXPECT_EQ(RefusalWith("/ata_smart_attributes/table", "[5]"),
              "ata_smart_attributes.table[]: expected an object, found a whole number");
}

TEST(ReadSmartctlReport, TakesNumbersOf64BitsAndRefusesLargerOnes) {
    EXPECT_EQ(RefusalWith("/user_capacity/bytes", "18446744073709551615"), "");
    EXPECT_EQ(RefusalWith("/user_capacity/bytes", "18446744073709551616"),
              "user_capacity.bytes: expected a whole number, found a number beyond 64 bits");
    EXPECT_EQ(RefusalWith("/user_capacity/bytes", "1e999"), "holds a number beyond all bounds");
    EXPECT_EQ(RefusalWith("/temperature/current", "9223372036854775807"), "");
    EXPECT_EQ(RefusalWith("/temperature/current", "9223372036854775808"),
              "temperature.current: 9223372036854775808 is out of range");
}

TEST(ReadSmartctlReport, HoldsNumbersToTheirLimits) {
    struct Limit {
        const char* m_Pointer;
        std::string m_Path;
        std::uint64_t m_Max;
    };
    const Limit limits[] = {
        {"/rotation_rate", "rotation_rate", 65535},
        {"/logical_block_size", "logical_block_size", 4294967295},
        {"/scsi_transport_protocol/value", "scsi_transport_protocol.value", 15},
        {"/endurance_used/current_percent", "endurance_used.current_percent", 255},
        {"/spare_available/current_percent", "spare_available.current_percent", 255},
        {"/scsi_percentage_used_endurance_indicator", "scsi_percentage_used_endurance_indicator", 255},
        {"/ata_smart_attributes/revision", "ata_smart_attributes.revision", 65535},
        {"/nvme_smart_health_information_log/percentage_used",
         "nvme_smart_health_information_log.percentage_used", 255},
        {"/nvme_smart_health_information_log/available_spare",
         "nvme_smart_health_information_log.available_spare", 255},
        {"/nvme_smart_health_information_log/data_units_written",
         "nvme_smart_health_information_log.data_units_written", MAX_UNSIGNED / 512000},
        {"/nvme_smart_health_information_log/data_units_read",
         "nvme_smart_health_information_log.data_units_read", MAX_UNSIGNED / 512000},
    };
    for (const Limit& limit : limits) {
        EXPECT_EQ(RefusalWith(limit.m_Pointer, std::to_string(limit.m_Max)), "");
        EXPECT_EQ(RefusalWith(limit.m_Pointer, std::to_string(limit.m_Max + 1)),
                  limit.m_Path + ": " + std::to_string(limit.m_Max + 1) + " is above " +
                      std::to_string(limit.m_Max));
    }
}

TEST(ReadSmartctlReport, HoldsDeviceStatisticsToTheirLimits) {
    const auto refusal = [](const char* name, std::int64_t value, std::uint64_t blockSize) {
        Json json = AtaReport("MODEL");
        json["logical_block_size"] = blockSize;
        json["ata_device_statistics"]["pages"] =
            Json::array({{{"table", Json::array({{{"name", name}, {"value", value}}})}}});
        return Refusal(json);
    };
    const char* used = "Percentage Used Endurance Indicator";
    const std::string path = "ata_device_statistics.pages[].table[]: ";
    EXPECT_EQ(refusal(used, 255, 512), "");
    EXPECT_EQ(refusal(used, 256, 512), path + "256 is out of range for " + used);
    EXPECT_EQ(refusal(used, -1, 512), path + "-1 is out of range for " + used);
    EXPECT_EQ(refusal("Logical Sectors Written", 281474976710655, 512), "");
    EXPECT_EQ(refusal("Logical Sectors Written", 281474976710656, 512),
              path + "281474976710656 is out of range for Logical Sectors Written");
    EXPECT_EQ(refusal("Logical Sectors Read", 281474976710655, 65536), "");
    EXPECT_EQ(refusal("Logical Sectors Read", 281474976710655, 65537),
              "Logical Sectors Read: beyond 64 bits of bytes");
}

TEST(ReadSmartctlReport, TakesGigabytesAsDecimalTextOnly) {
    const auto refusal = [](const std::string& gigabytes) {
        Json json = AtaReport("MODEL");
        json["device"]["protocol"] = "SCSI";
        json["scsi_error_counter_log"]["write"]["gigabytes_processed"] = gigabytes;
        return Refusal(json);
    };
    const std::string path = "scsi_error_counter_log.write.gigabytes_processed: ";
    EXPECT_EQ(refusal("0.000"), "");
    EXPECT_EQ(refusal("18446744073.709551615"), "");
    EXPECT_EQ(refusal("18446744073.709551616"), path + "beyond 64 bits of bytes");
    EXPECT_EQ(refusal("1.123456789"), "");
    for (const char* text : {"1.1234567890", "", ".5", "5.", "-1.0", "1,5", "1.5.5", "1e3", " 1"}) {
        EXPECT_EQ(refusal(text), path + "expected a decimal number in text") << text;
    }
}

TEST(ReadSmartctlReport, TakesTextsOf256BytesAndRefusesLongerOnes) {
    EXPECT_EQ(Refusal(AtaReport(std::string(256, 'M'))), "");
    EXPECT_EQ(Refusal(AtaReport(std::string(257, 'M'))), "model_name: longer than 256 bytes");
}

TEST(ReadSmartctlReport, TakesSixtyFourLevelsAndRefusesMore) {
    const auto nested = [](std::size_t lists) {
        const std::string text = AtaReport("MODEL").dump();
        return text.substr(0, text.size() - 1) + ",\"x\":" + std::string(lists, '[') +
               std::string(lists, ']') + "}";
    };
    EXPECT_EQ(Refusal(nested(63)), "");
    EXPECT_EQ(Refusal(nested(64)), "nested deeper than 64 levels");
    EXPECT_EQ(Refusal(std::string(10'000'000, '[')), "the document: expected an object, found a list");
}
