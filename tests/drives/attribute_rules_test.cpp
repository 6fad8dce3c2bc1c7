// SPDX-License-Identifier: Apache-2.0
// Hours, amounts and spare that vendors keep in attributes.

#include "drives/health_checks.h"

namespace PI::Test {
namespace {

namespace Figure = HealthFigure;

struct Row {
    const char* m_Model;
    const char* m_Name;
    std::uint8_t m_ID;
    int m_Current;
    std::uint64_t m_Raw;
    const char* m_Told;
};

std::string TellBy(const Row& row, _HEALTH_FIGURE figure, int medium = PropertyValue::SSD) {
    CDriveHealth drive(DriveProtocol::ATA, row.m_Model);
    drive.SetMedium(medium);
    drive.TakeAttribute(row.m_ID, row.m_Name, 0x32, row.m_Current, 100, -1, row.m_Raw);
    return Told(drive, figure);
}

TEST(PowerOnHours, AreUnpackedByModelAndName) {
    const Row rows[] = {
        {"ANY", "", 9, 100, 1234, "known 1234: SMART attribute 9"},
        {"ANY", "", 9, 100, 0x2A'0000'0004D2,
         "doubtful 1234: SMART attribute 9 says 1234 hours and holds something else above its 24 low bits"},
        {"ANY", "", 9, 100, 0x100'0000,
         "doubtful 0: SMART attribute 9 says 0 hours and holds something else above its 24 low bits"},
        {"ST1000NM0008-2F2100", "", 9, 100, 0x20'0E7A'0000'B7D4, "known 47060: SMART attribute 9"},
        {"ANY", "Power_On_Hours_and_Msec", 9, 100, 0xDF88'0000'04D2, "known 1234: SMART attribute 9"},
        {"ANY", "Power_On_Minutes", 9, 100, 60 * 1234 + 59, "known 1234: SMART attribute 9"},
        {"ANY", "Power_On_Half_Minutes", 9, 100, 120 * 1234 + 119, "known 1234: SMART attribute 9"},
        {"ANY", "Power_On_Seconds", 9, 100, 3600 * 1234 + 3599, "known 1234: SMART attribute 9"},
        {"FUJITSU MHZ2080BH", "", 9, 100, 60 * 1234, "known 1234: SMART attribute 9"},
        {"FUJITSU MHV2080BH", "", 9, 100, 3600 * 1234, "known 1234: SMART attribute 9"},
        {"SAMSUNG SP0802N", "", 9, 100, 120 * 1234, "known 1234: SMART attribute 9"},
        {"INTEL SSDSC2CW120A3", "", 9, 100, 894794 + 206, "known 206: SMART attribute 9"},
        {"INTEL SSDSC2CW120A3", "", 9, 100, 206, "known 206: SMART attribute 9"},
        {"ANY", "", 9, 100, 200000, "known 200000: SMART attribute 9"},
        {"ANY", "", 9, 100, 200001, "unknown: SMART attribute 9 says 200001 hours, which cannot be"},
        {"ANY", "", 9, 100, 0, "known 0: SMART attribute 9"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(TellBy(row, Figure::POWER_ON_HOURS), row.m_Told) << row.m_Model << " " << row.m_Name;
    }
}

TEST(PowerOnHours, OfAPackedAttributeAreKnownWhereTheStatisticTellsThem) {
    CDriveHealth drive(DriveProtocol::ATA, "ANY");
    drive.TakeAttribute(9, "", 0x32, 100, 100, -1, 0x2A'0000'0004D2);
    drive.TakeFigure(Figure::POWER_ON_HOURS, 1234);
    EXPECT_EQ(drive.GetFigure(Figure::POWER_ON_HOURS).GetState(), FigureState::DOUBTFUL)
        << "the other program read the same attribute";
    drive.TakeStatistic(1, 0x10, 5000);
    EXPECT_EQ(Told(drive, Figure::POWER_ON_HOURS), "known 5000: device statistics page 1");
}

TEST(BytesWritten, AreCountedInTheUnitOfModelNameOrNeighbours) {
    const Row rows[] = {
        {"INTEL SSDSC2BB480G7", "", 241, 100, 3, "known 100663296: SMART attribute 241"},
        {"SAMSUNG MZ7LH480HAHQ-00005", "", 241, 100, 3, "known 1536: SMART attribute 241"},
        {"Micron_5300_MTFDDAK960TDS", "", 246, 100, 3, "known 1536: SMART attribute 246"},
        {"SSDSC2KG480G8R", "", 233, 100, 3, "known 100663296: SMART attribute 233"},
        {"UNHEARD OF", "Host_Writes_32MiB", 241, 100, 3, "known 100663296: SMART attribute 241"},
        {"UNHEARD OF", "Lifetime_Writes_GiB", 241, 100, 3, "known 3221225472: SMART attribute 241"},
        {"UNHEARD OF", "", 241, 100, 1 << 27, "known 68719476736: SMART attribute 241"},
        {"UNHEARD OF", "", 241, 100, (1 << 27) - 1, "unknown: not reported"},  // no unit is certain
        {"UNHEARD OF", "Total_LBAs_Written", 241, 100, 3, "unknown: not reported"},
        {"UNHEARD OF", "Lifetime_Writes_GiB", 241, 100, std::uint64_t{1} << 40,
         "unknown: SMART attribute 241 says a number beyond 63 bits, which cannot be"},  // 2^70 bytes
    };
    for (const Row& row : rows) {
        EXPECT_EQ(TellBy(row, Figure::BYTES_WRITTEN), row.m_Told) << row.m_Model << " " << row.m_Name;
    }
}

TEST(BytesWritten, OfDisksAreBlocks) {
    const Row row = {
        "ST4000NM0035-1V4107", "Total_LBAs_Written", 241, 100, 1000, "known 512000: SMART attribute 241"};
    EXPECT_EQ(TellBy(row, Figure::BYTES_WRITTEN, PropertyValue::HDD), row.m_Told);
}

TEST(BytesWritten, AStatisticThatLostItsUpperBitsGivesWay) {
    struct {
        std::uint64_t m_Attribute;  // blocks
        std::int64_t m_Statistic;
        const char* m_Told;
    } const rows[] = {
        {(1ULL << 32) + 5000, 5000, "known 2199025815552: SMART attribute 246"},
        {(1ULL << 32) + 5000, 205000, "known 2199025815552: SMART attribute 246"},
        {(1ULL << 32) + 5000, 205001,
         "doubtful 104960512: device statistics page 1 says 104960512 bytes, SMART attribute 246 says "
         "2199025815552 bytes"},
        {0xFFFFFFFF, 0xFFFFFFF0, "known 2199023247360: device statistics page 1"},
        {100, 0, "known 51200: SMART attribute 246"},
    };
    for (const auto& row : rows) {
        CDriveHealth drive(DriveProtocol::ATA, "Micron_5300_MTFDDAK960TDS");
        drive.SetMedium(PropertyValue::SSD);
        drive.TakeAttribute(246, "", 0x32, 100, 100, -1, row.m_Attribute);
        drive.TakeStatistic(1, 24, row.m_Statistic);
        EXPECT_EQ(Told(drive, Figure::BYTES_WRITTEN), row.m_Told);
    }
}

TEST(BytesWritten, ByARuleThatIsOftenWrongAreDoubtfulAndShakeNoStatistic) {
    CDriveHealth drive(DriveProtocol::ATA, "UNHEARD OF");
    drive.SetMedium(PropertyValue::SSD);
    drive.TakeAttribute(241, "", 0x32, 100, 100, -1, 3);
    drive.TakeAttribute(230, "", 0x32, 100, 100, -1, 3);
    EXPECT_EQ(Told(drive, Figure::BYTES_WRITTEN),
              "doubtful 3221225472: SMART attribute 241 says 3221225472 bytes, but drives of this kind are "
              "known on which "
              "it does not tell");
    drive.TakeStatistic(1, 24, 1 << 30);
    EXPECT_EQ(Told(drive, Figure::BYTES_WRITTEN), "known 549755813888: device statistics page 1");
}

TEST(BytesWritten, DependOnTheAttributesBeside) {
    for (const auto& [beside, told] :
         {std::pair{163, "known 100663296: SMART attribute 241"},
          std::pair{164, "known 100663296: SMART attribute 241"},
          std::pair{231, "known 3221225472: SMART attribute 241"}, std::pair{165, "unknown: not reported"}}) {
        CDriveHealth drive(DriveProtocol::ATA, "UNHEARD OF");
        drive.SetMedium(PropertyValue::SSD);
        drive.TakeAttribute(241, "", 0x32, 100, 100, -1, 3);
        drive.TakeAttribute(static_cast<std::uint8_t>(beside), "", 0x32, 100, 100, -1, 3);
        EXPECT_EQ(Told(drive, Figure::BYTES_WRITTEN), told) << beside;
    }
}

TEST(Temperatures, OfTenthsOfADegreeAreWholeDegrees) {
    const Row row = {
        "SAMSUNG HD103UJ", "Temperature_Celsius_x10", 194, 100, 325, "known 32: SMART attribute 194"};
    EXPECT_EQ(TellBy(row, Figure::TEMPERATURE, PropertyValue::HDD), row.m_Told);
}

TEST(Spare, IsWhatRemainsWhereTheDriveCountsIt) {
    const Row rows[] = {
        {"INTEL SSDSC2BB480G7", "", 232, 97, 0, "known 97: SMART attribute 232"},
        {"INTEL SSDSC2BB480G7", "", 232, 97, 1, "unknown: not reported"},
        {"SAMSUNG MZ7LH480HAHQ-00005", "", 180, 100, 900, "known 100: SMART attribute 180"},
        {"Micron_5300_MTFDDAK960TDS", "", 170, 0, 0, "unknown: not reported"},
        {"Micron_5300_MTFDDAK960TDS", "", 170, 101, 0,
         "unknown: SMART attribute 170 says 101 percent, which cannot be"},
        {"SuperMicro SSD", "", 232, 35, 0, "unknown: not reported"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(TellBy(row, Figure::SPARE), row.m_Told) << row.m_Model << " " << row.m_Current;
    }
    EXPECT_EQ(TellBy(rows[0], Figure::SPARE, PropertyValue::HDD), "unknown: not reported");
    CDriveHealth drive(DriveProtocol::ATA, "UNHEARD OF");
    drive.TakeAttribute(232, "", 0x32, 100, 100, -1, 95);
    EXPECT_EQ(Told(drive, Figure::SPARE), "unknown: not reported");
    drive.TakeAttribute(165, "", 0x32, 100, 100, -1, 1);
    EXPECT_EQ(Told(drive, Figure::SPARE), "known 95: SMART attribute 232");
}

}  // namespace
}  // namespace PI::Test
