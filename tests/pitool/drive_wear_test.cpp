// SPDX-License-Identifier: Apache-2.0

#include "drive_wear.h"

#include "sample_reports.h"

#include <gtest/gtest.h>

using namespace pitool;
using namespace pitool::test;

namespace {

/// The figures of a solid-state drive with these attributes.
DriveWear WearOf(const std::string& product, const std::vector<Json>& attributes) {
    return ReadWear(Read(SolidStateReport("X " + product, 100, attributes)), "", product, true);
}

}  // namespace

TEST(ReadWear, TellsAnotherFigureOfADoubtfulRating) {
    const DriveWear doubtful = WearOf("MZ7KM120HAFD-00005", {});
    EXPECT_EQ(*doubtful.m_RatedTB, 7593U);
    EXPECT_EQ(doubtful.m_RatedTB.m_Source, "endurance list; another source says 2626 TB");
    EXPECT_EQ(*WearOf("SSD 860 EVO 1TB", {}).m_RatedTB, 600U) << "an additional model";
}

TEST(ReadWear, IntelCountsWrittenIn32MebibyteUnits) {
    const DriveWear wear =
        WearOf("SSDSC2BB480G7", {Attribute(225, 100, 3), Attribute(232, 90, 0), Attribute(233, 85, 0)});
    EXPECT_EQ(*wear.m_BytesWritten, 3U * 33554432U);
    EXPECT_EQ(wear.m_BytesWritten.m_Source, "SMART attribute 225");
    EXPECT_EQ(*wear.m_Spare, 90U);
    EXPECT_EQ(wear.m_Spare.m_Source, "SMART attribute 232");
    EXPECT_EQ(*wear.m_PercentUsed, 15U);
    EXPECT_EQ(wear.m_PercentUsed.m_Source, "SMART attribute 233, whose value counts down from 100");
    EXPECT_EQ(*wear.m_RatedTB, 945U);
    EXPECT_EQ(wear.m_Origin, WearOrigin::SMART_ATTRIBUTE);
}

TEST(ReadWear, SamsungCountsWrittenInSectors) {
    const DriveWear wear =
        WearOf("MZ7LH960HAJR", {Attribute(241, 99, 3), Attribute(180, 80, 7), Attribute(177, 97, 9)});
    EXPECT_EQ(*wear.m_BytesWritten, 1536U);
    EXPECT_EQ(*wear.m_Spare, 80U);
    EXPECT_EQ(*wear.m_PercentUsed, 3U);
}

TEST(ReadWear, MicronCountsWrittenInSectors) {
    const DriveWear wear =
        WearOf("MTFDDAK480TDS", {Attribute(246, 100, 4), Attribute(170, 70, 0), Attribute(202, 60, 40)});
    EXPECT_EQ(*wear.m_BytesWritten, 2048U);
    EXPECT_EQ(*wear.m_Spare, 70U);
    EXPECT_EQ(*wear.m_PercentUsed, 40U);
}

TEST(ReadWear, InnoDisk3MECountsCyclesInBytes0And1And4OfAttribute173) {
    // 0x02EE in bytes 0 and 1 is 750; bytes 2 and 3 hold something else.
    const DriveWear wear =
        WearOf("SATADOM-ML 3ME", {Attribute(173, 100, 0x0000'7FFF'02EE), Attribute(241, 100, 1)});
    EXPECT_EQ(*wear.m_PercentUsed, 25U) << "750 * 100 / 3000";
    EXPECT_EQ(wear.m_PercentUsed.m_Source, "SMART attribute 173, which counts up to 3000");
    EXPECT_EQ(*wear.m_BytesWritten, 33554432U);
    EXPECT_EQ(wear.m_Spare.m_Reason, "drives of this family do not report it");
    EXPECT_FALSE(wear.m_RatedTB);
    EXPECT_EQ(wear.m_RatedTB.m_Reason, "the list rates this family by wear cycles, 3000");

    EXPECT_EQ(*WearOf("SATADOM-ML 3ME", {Attribute(173, 100, 0x0001'0000'0010)}).m_PercentUsed, 2185U)
        << "65552 * 100 / 3000";
}

TEST(ReadWear, InnoDisk3ME3CountsCyclesInAttribute167) {
    EXPECT_EQ(*WearOf("SATADOM-MH 3ME3", {Attribute(167, 100, 1200)}).m_PercentUsed, 40U);
    EXPECT_EQ(WearOf("SATADOM-MH 3ME3", {Attribute(173, 100, 1200)}).m_PercentUsed.m_Reason,
              "no SMART attribute 167");
}

TEST(ReadWear, OfTwoAttributesOfOneNumberTheLaterCounts) {
    const DriveWear wear = WearOf("SSDSC2BB480G7", {Attribute(233, 130, 0), Attribute(233, 85, 0)});
    EXPECT_EQ(*wear.m_PercentUsed, 15U);
    EXPECT_FALSE(WearOf("SSDSC2BB480G7", {Attribute(233, 85, 0), Attribute(233, 130, 0)}).m_PercentUsed);
}

TEST(ReadWear, ACurrentValueAbove100IsNoWear) {
    EXPECT_EQ(*WearOf("MZ7LH960HAJR", {Attribute(177, 100, 0)}).m_PercentUsed, 0U);
    const DriveWear wear = WearOf("MZ7LH960HAJR", {Attribute(177, 101, 0)});
    EXPECT_FALSE(wear.m_PercentUsed);
    EXPECT_EQ(wear.m_PercentUsed.m_Reason, "SMART attribute 177 has the current value 101, above 100");
    EXPECT_EQ(wear.m_Origin, WearOrigin::NONE);
    EXPECT_EQ(*WearOf("MZ7LH960HAJR", {Attribute(177, 0, 0)}).m_PercentUsed, 100U);
}

TEST(ReadWear, AReserveAbove100PercentIsUnknown) {
    EXPECT_EQ(*WearOf("SSDSC2BB480G7", {Attribute(232, 100, 0)}).m_Spare, 100U);
    EXPECT_EQ(WearOf("SSDSC2BB480G7", {Attribute(232, 101, 0)}).m_Spare.m_Reason,
              "SMART attribute 232 holds 101, no percentage");
}

TEST(ReadWear, BytesBeyond64BitsAreUnknown) {
    const std::uint64_t most = 549755813887;  // 2^39 - 1 units of 2^25 bytes
    EXPECT_EQ(*WearOf("SSDSC2BB480G7", {Attribute(225, 100, most)}).m_BytesWritten, most << 25U);
    const DriveWear wear = WearOf("SSDSC2BB480G7", {Attribute(225, 100, most + 1)});
    EXPECT_FALSE(wear.m_BytesWritten);
    EXPECT_EQ(wear.m_BytesWritten.m_Reason, "SMART attribute 225 is beyond 64 bits of bytes");
}

TEST(ReadWear, AttributesThatAreMissingAreUnknownNotZero) {
    const DriveWear wear = WearOf("SSDSC2BB480G7", {Attribute(9, 100, 100)});
    EXPECT_EQ(wear.m_BytesWritten.m_Reason, "no SMART attribute 225");
    EXPECT_EQ(wear.m_Spare.m_Reason, "no SMART attribute 232");
    EXPECT_EQ(wear.m_PercentUsed.m_Reason, "no SMART attribute 233");
}

TEST(ReadWear, ADriveThatIsNotListedOrHasNoTableSaysSo) {
    EXPECT_EQ(WearOf("SAMPLE", {Attribute(233, 50, 0)}).m_PercentUsed.m_Reason, "not in the endurance list");
    EXPECT_EQ(WearOf("SAMPLE", {Attribute(233, 50, 0)}).m_RatedTB.m_Reason, "not in the endurance list");
    Json json = AtaReport("INTEL SSDSC2BB480G7");
    EXPECT_EQ(ReadWear(Read(json), "", "SSDSC2BB480G7", true).m_PercentUsed.m_Reason, "no SMART data");
    EXPECT_EQ(ReadWear(Read(json), "", "SAMPLE", false).m_BytesWritten.m_Reason, "not reported");
}

TEST(ReadWear, StatisticsFillWhatThePageDoesNotHold) {
    Json json = SolidStateReport("INTEL SSDSC2BB480G7", 100, {Attribute(225, 100, 1)});
    json["endurance_used"]["current_percent"] = 7;
    json["spare_available"]["current_percent"] = 88;
    const DriveWear wear = ReadWear(Read(json), "INTEL", "SSDSC2BB480G7", true);
    EXPECT_EQ(*wear.m_PercentUsed, 7U);
    EXPECT_EQ(wear.m_PercentUsed.m_Source, "ATA device statistics");
    EXPECT_EQ(wear.m_Origin, WearOrigin::DRIVE_STATISTICS);
    EXPECT_EQ(*wear.m_Spare, 88U);
    EXPECT_EQ(*wear.m_BytesWritten, 33554432U) << "the page goes first";
}

TEST(ReadWear, TheReportedHoursGoBeforeAttribute9) {
    const DriveWear same = WearOf("SAMPLE", {Attribute(9, 100, 100)});
    EXPECT_EQ(*same.m_PowerOnHours, 100U);
    EXPECT_EQ(same.m_PowerOnHours.m_Source, "");
    const DriveWear packed = WearOf("SAMPLE", {Attribute(9, 100, 0x0012'0000'0064)});
    EXPECT_EQ(*packed.m_PowerOnHours, 100U);
    EXPECT_EQ(packed.m_PowerOnHours.m_Source,
              "reported by smartctl; the raw value of attribute 9 is 77309411428");
}

TEST(ReadWear, WithoutReportedHoursAttribute9Counts) {
    const auto hours = [](std::uint64_t raw) {
        Json json = AtaReport("SAMPLE");
        json["ata_smart_attributes"]["table"] = Json::array({Attribute(9, 100, raw)});
        return ReadWear(Read(json), "", "SAMPLE", true).m_PowerOnHours;
    };
    EXPECT_EQ(*hours(1'000'000), 1'000'000U);
    EXPECT_EQ(hours(5).m_Source, "SMART attribute 9");
    EXPECT_FALSE(hours(1'000'001));
    EXPECT_EQ(hours(1'000'001).m_Reason, "the figure reported is no count of hours");
    EXPECT_EQ(ReadWear(Read(AtaReport("SAMPLE")), "", "SAMPLE", true).m_PowerOnHours.m_Reason,
              "not reported");
}
