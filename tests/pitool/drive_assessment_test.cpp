// SPDX-License-Identifier: Apache-2.0

#include "drive_assessment.h"

#include "drive_sheet.h"
#include "sample_reports.h"

#include <gtest/gtest.h>

using namespace pitool;
using namespace pitool::test;
namespace ID = PI::PropertyID;

namespace {

std::string TextOf(const Json& json, PI::_PROPERTY_ID id) {
    return FigureText(FindFigure(Assess(json), id));
}

}  // namespace

TEST(AssessDrive, HasTheSameIdentifiersInTheSameOrderForEveryDrive) {
    const std::vector<int> expected = {ID::OS_DEVICE,
                                       ID::VENDOR,
                                       ID::PRODUCT,
                                       ID::SERIAL_NUMBER,
                                       ID::FIRMWARE_VERSION,
                                       ID::PROTOCOL,
                                       ID::MEDIA_TYPE,
                                       ID::RPM,
                                       ID::PHYSICAL_SIZE,
                                       ID::BLOCK_SIZE,
                                       ID::SMART_FLAGGED,
                                       ID::HEALTH,
                                       ID::TEMPERATURE,
                                       ID::POWERON_HOURS,
                                       ID::BYTES_READ,
                                       ID::BYTES_WRITTEN,
                                       ID::REMAINING_RESERVE_SPACE,
                                       ID::RATED_ENDURANCE_TB,
                                       ID::RATED_ENDURANCE_PERCENT,
                                       ID::ESTIMATED_LIFETIME,
                                       ID::REMAINING_HOURS};
    for (const char* protocol : {"ATA", "NVMe", "SCSI"}) {
        Json json = AtaReport("SAMPLE");
        json["device"]["protocol"] = protocol;
        std::vector<int> ids;
        for (const Figure& figure : Assess(json).m_Figures) {
            ids.push_back(figure.m_Property.m_ID);
        }
        EXPECT_EQ(ids, expected) << protocol;
    }
}

TEST(AssessDrive, EveryFigureOfALeastReportHasAValueOrAReason) {
    for (const char* protocol : {"ATA", "NVMe", "SCSI"}) {
        Json json = AtaReport("SAMPLE");
        json["device"]["protocol"] = protocol;
        for (const Figure& figure : Assess(json).m_Figures) {
            EXPECT_NE(figure.IsKnown(), !figure.m_Reason.empty()) << protocol << figure.m_Property.m_ID;
        }
    }
}

TEST(AssessDrive, TheTransportIsKnownOnlyWhenTheReportTells) {
    Json json = AtaReport("SAMPLE");
    EXPECT_EQ(TextOf(json, ID::PROTOCOL), "unknown (an ATA drive that reports no SATA version)");
    EXPECT_EQ(Assess(json).m_Kind, "ATA HDD");
    json["interface_speed"]["max"]["string"] = "6.0 Gb/s";
    EXPECT_EQ(TextOf(json, ID::PROTOCOL), "SATA");
    EXPECT_EQ(Assess(json).m_Kind, "SATA HDD");
    json["device"]["protocol"] = "NVMe";
    EXPECT_EQ(TextOf(json, ID::PROTOCOL), "NVME");
    EXPECT_EQ(Assess(json).m_Kind, "NVME SSD");
    json["device"]["protocol"] = "SCSI";
    EXPECT_EQ(TextOf(json, ID::PROTOCOL), "unknown (a SCSI drive that reports no transport)");
    EXPECT_EQ(Assess(json).m_Kind, "SCSI HDD");
    json["scsi_transport_protocol"]["value"] = 6;
    EXPECT_EQ(TextOf(json, ID::PROTOCOL), "SAS");
    json["scsi_transport_protocol"]["value"] = 0;
    EXPECT_EQ(TextOf(json, ID::PROTOCOL), "unknown (a SCSI drive, but not SAS)");
}

TEST(AssessDrive, HealthIsTheWorstOfVerdictAndWear) {
    const auto health = [](const Json& verdict, int current) {
        Json json = SolidStateReport("INTEL SSDSC2BB480G7", 100, {Attribute(233, current, 0)});
        if (!verdict.is_null()) {
            json["smart_status"]["passed"] = verdict;
        }
        return FigureValueText(FindFigure(Assess(json), ID::HEALTH));
    };
    EXPECT_EQ(health(true, 100), "OK");
    EXPECT_EQ(health(true, 11), "OK");
    EXPECT_EQ(health(true, 10), "NEAR_WEARING_OUT");
    EXPECT_EQ(health(true, 1), "NEAR_WEARING_OUT");
    EXPECT_EQ(health(true, 0), "SMART_WORN_OUT");
    EXPECT_EQ(health(false, 0), "PREDICTIVE_FAILURE");
    EXPECT_EQ(health(nullptr, 10), "NEAR_WEARING_OUT");
    EXPECT_EQ(health(nullptr, 11), "");
    EXPECT_EQ(TextOf(AtaReport("SAMPLE"), ID::HEALTH), "unknown (no SMART verdict of the drive)");
    EXPECT_EQ(TextOf(AtaReport("SAMPLE"), ID::SMART_FLAGGED), "unknown (no SMART verdict of the drive)");
}

TEST(AssessDrive, TemperaturesOfNoDriveAreUnknown) {
    const auto temperature = [](long current, const Json& highest) {
        Json json = AtaReport("SAMPLE");
        json["temperature"]["current"] = current;
        if (!highest.is_null()) {
            json["temperature"]["lifetime_max"] = highest;
        }
        return TextOf(json, ID::TEMPERATURE);
    };
    EXPECT_EQ(temperature(-61, nullptr), "unknown (the drive reports -61, no temperature of a drive)");
    EXPECT_EQ(temperature(-60, nullptr), "-60 degrees Celsius");
    EXPECT_EQ(temperature(150, nullptr), "150 degrees Celsius");
    EXPECT_EQ(temperature(151, nullptr), "unknown (the drive reports 151, no temperature of a drive)");
    EXPECT_EQ(temperature(0, nullptr), "0 degrees Celsius");
    EXPECT_EQ(temperature(0, 1), "0 degrees Celsius");
    EXPECT_EQ(temperature(0, 0), "unknown (the drive has no sensor: it never reported more than 0)");
    EXPECT_EQ(TextOf(AtaReport("SAMPLE"), ID::TEMPERATURE), "unknown (not reported)");
}

TEST(AssessDrive, ACapacityOfZeroIsUnknown) {
    Json json = AtaReport("SAMPLE");
    json["user_capacity"]["bytes"] = 0;
    EXPECT_EQ(TextOf(json, ID::PHYSICAL_SIZE), "unknown (not reported)");
    json["user_capacity"]["bytes"] = 1;
    EXPECT_EQ(TextOf(json, ID::PHYSICAL_SIZE), "1 byte");
}

TEST(AssessDrive, TheLifetimeInPercentIsWhatTheWearLeaves) {
    const auto left = [](int current) {
        return TextOf(SolidStateReport("INTEL SSDSC2BB480G7", 100, {Attribute(233, current, 0)}),
                      ID::ESTIMATED_LIFETIME);
    };
    EXPECT_EQ(left(100), "100 percent, counts down; 100 percent less the wear");
    EXPECT_EQ(left(1), "1 percent, counts down; 100 percent less the wear");
    EXPECT_EQ(left(0), "0 percent, counts down; 100 percent less the wear");
    EXPECT_EQ(
        TextOf(SolidStateReport("SATADOM-ML 3ME3", 100, {Attribute(167, 100, 9000)}), ID::ESTIMATED_LIFETIME),
        "0 percent, counts down; 100 percent less the wear")
        << "300 percent used";
}

TEST(AssessDrive, NamesTheThreeReasonsForAnUnknownLifetime) {
    EXPECT_EQ(TextOf(SolidStateReport("SAMPLE", 100, {Attribute(9, 100, 100)}), ID::REMAINING_HOURS),
              "unknown (not in the endurance list)");
    Json noData = AtaReport("INTEL SSDSC2BB480G7");
    EXPECT_EQ(TextOf(noData, ID::REMAINING_HOURS), "unknown (no SMART data)");
    EXPECT_EQ(
        TextOf(SolidStateReport("INTEL SSDSC2BB480G7", 0, {Attribute(233, 100, 0)}), ID::REMAINING_HOURS),
        "unknown (new drive)");
}

TEST(AssessDrive, AWearValueAbove100FallsBackToTheRatedEndurance) {
    // 1 TiB of 1366 in 1000 hours: far more than the service span, whose rest is 42829 hours.
    const Json json = SolidStateReport("SAMSUNG MZ7LH960HAJR-00005", 1000,
                                       {Attribute(177, 253, 0), Attribute(241, 99, 2147483648)});
    EXPECT_EQ(
        TextOf(json, ID::REMAINING_HOURS),
        "42829 hours, counts down; rated endurance and bytes written; limited by the service span of five "
        "years");
    EXPECT_EQ(TextOf(json, ID::RATED_ENDURANCE_PERCENT),
              "unknown (SMART attribute 177 has the current value 253, above 100)");
    EXPECT_EQ(TextOf(json, ID::ESTIMATED_LIFETIME),
              "unknown (SMART attribute 177 has the current value 253, above 100)");
}

TEST(AssessDrive, FiguresThatOnlySolidStateHasDoNotApplyToDisks) {
    Json json = AtaReport("SAMPLE");
    json["rotation_rate"] = 7200;
    for (const auto id : {ID::REMAINING_RESERVE_SPACE, ID::RATED_ENDURANCE_TB, ID::RATED_ENDURANCE_PERCENT,
                          ID::ESTIMATED_LIFETIME, ID::REMAINING_HOURS}) {
        EXPECT_EQ(TextOf(json, id), "not applicable (rotating disk)");
    }
    json["rotation_rate"] = 0;
    EXPECT_EQ(TextOf(json, ID::RPM), "not applicable (solid-state drive)");
}
