// SPDX-License-Identifier: Apache-2.0

#include <pi/drive_health.h>

#include <algorithm>
#include <functional>
#include <random>

#include "drives/health_checks.h"
#include "support/random_seed.h"

namespace PI::Test {
namespace {

using namespace HealthPage;
namespace Figure = HealthFigure;

/// Every figure and reason of a drive.
std::string Everything(const CDriveHealth& drive) {
    std::string text = Reasons(drive);
    for (const CHealthFigure& figure : drive.GetFigures()) {
        text += std::string("\n") + HealthFigureToString(figure.GetFigure()) + " " +
                Told(drive, figure.GetFigure());
    }
    return text;
}

TEST(DriveHealth, OfADriveThatSaidNothingIsUnknown) {
    for (const auto protocol : {DriveProtocol::ATA, DriveProtocol::SCSI, DriveProtocol::NVME}) {
        const CDriveHealth drive(protocol, "");
        for (const CHealthFigure& figure : drive.GetFigures()) {
            EXPECT_EQ(figure.GetState(), FigureState::UNKNOWN);
            EXPECT_EQ(figure.GetValue(), 0);
            EXPECT_EQ(figure.GetSource(), FigureSource::NONE);
            EXPECT_NE(figure.GetText(), "");
        }
        EXPECT_EQ(drive.GetState(), DriveState::UNKNOWN);
        EXPECT_EQ(Reasons(drive), "unknown: no verdict of the drive, and nothing that speaks against it");
    }
}

TEST(DriveHealth, FiguresComeInTheOrderOfTheirNumbers) {
    const std::vector<CHealthFigure> figures = Disk().GetFigures();
    ASSERT_EQ(figures.size(), 24U);
    for (std::size_t i = 0; i < figures.size(); ++i) {
        EXPECT_EQ(figures[i].GetFigure(), static_cast<std::int32_t>(i + 1));
    }
}

TEST(DriveHealth, ANumberThatIsNoFigureIsUnknown) {
    for (const int number : {0, 25, -1, 1000}) {
        const auto figure = static_cast<_HEALTH_FIGURE>(number);
        CDriveHealth drive = Disk();
        drive.TakeFigure(figure, 5);
        EXPECT_FALSE(drive.GetFigure(figure).HasValue());
        EXPECT_STREQ(HealthFigureToString(figure), "");
        EXPECT_EQ(CHealthFigure(figure).GetUnit(), FigureUnit::COUNT);
        EXPECT_EQ(CHealthFigure(figure).GetDirection(), FigureDirection::NONE);
    }
}

TEST(DriveHealth, ANumberThatIsNoPageIsRefused) {
    CDriveHealth drive = Disk();
    for (const int number : {0, 11, -1}) {
        EXPECT_EQ(Take(drive, static_cast<_HEALTH_PAGE>(number), Page(512)), "no such kind of page");
    }
}

TEST(DriveHealth, CopiesAreTheirOwn) {
    CDriveHealth drive = Disk();
    drive.TakeVerdict(true);
    CDriveHealth copy = drive;
    copy.TakeVerdict(false);
    EXPECT_EQ(drive.GetState(), DriveState::GOOD);
    EXPECT_EQ(copy.GetState(), DriveState::FAILED);
    drive = copy;
    EXPECT_EQ(Everything(drive), Everything(copy));
    const CDriveHealth moved = std::move(copy);
    EXPECT_EQ(Everything(drive), Everything(moved));
    copy = moved;
    EXPECT_EQ(Everything(copy), Everything(moved));
}

TEST(DriveHealth, AssigningADriveToItselfKeepsIt) {
    CDriveHealth drive = Disk();
    drive.TakeVerdict(true);
    const CDriveHealth& same = drive;
    drive = same;
    EXPECT_EQ(drive.GetState(), DriveState::GOOD);
}

TEST(DriveHealth, WhatAnotherProgramDecodedCountsAfterTheDrivesOwnPages) {
    CDriveHealth drive = Disk();
    drive.TakeFigure(Figure::TEMPERATURE, 40);
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "known 40: decoded by another program");
    Take(drive, ATA_SMART_DATA, SmartData({{194, 100, 33}}));
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "known 33: SMART attribute 194");
    Take(drive, ATA_DEVICE_STATISTICS, DeviceStatistics(5, {{0x08, 34}}));
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "known 34: device statistics page 5");
}

TEST(DriveHealth, ADecodedFigureOfAPageIsReplacedByThePage) {
    CDriveHealth drive(DriveProtocol::NVME, "");
    drive.TakeFigure(Figure::WEAR, 7, FigureSource::NVME_LOG, 2);
    EXPECT_EQ(Told(drive, Figure::WEAR), "known 7: NVMe log 02h");
    drive.TakeFigure(Figure::WEAR, 8, FigureSource::NVME_LOG, 2);
    EXPECT_EQ(Told(drive, Figure::WEAR), "known 8: NVMe log 02h");
    Take(drive, NVME_HEALTH_LOG, HealthLog());
    EXPECT_EQ(Told(drive, Figure::WEAR), "known 3: NVMe log 02h");
}

TEST(DriveHealth, ADecodedStatisticIsThatOfThePage) {
    CDriveHealth drive = SolidState();
    drive.TakeStatistic(7, 8, 12);
    drive.TakeStatistic(1, 24, 100);
    drive.TakeStatistic(1, 25, 100);
    drive.TakeStatistic(2, 8, 100);
    EXPECT_EQ(Told(drive, Figure::WEAR), "known 12: device statistics page 7");
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_WRITTEN).GetValue(), 51200);
}

TEST(DriveHealth, ARawValueOfAllOnesIsNoFigureAndSaysNothingAboutTheDrive) {
    constexpr std::uint64_t ALL_ONES = (std::uint64_t{1} << 48) - 1;
    const struct {
        _HEALTH_FIGURE m_Figure;
        std::uint8_t m_ID;
        const char* m_Name;
        const char* m_Unit;
    } rows[] = {
        {Figure::REALLOCATED_SECTORS, 5, "Reallocated_Sector_Ct", ""},
        {Figure::POWER_ON_HOURS, 9, "Power_On_Hours", " hours"},
        {Figure::POWER_CYCLES, 12, "Power_Cycle_Count", ""},
        {Figure::UNSAFE_SHUTDOWNS, 174, "Unexpect_Power_Loss_Ct", ""},
        {Figure::MEDIA_ERRORS, 187, "Reported_Uncorrect", ""},
        {Figure::TEMPERATURE, 194, "Temperature_Celsius", " degrees Celsius"},
        {Figure::HIGHEST_TEMPERATURE, 194, "Temperature_Celsius", " degrees Celsius"},
        {Figure::PENDING_SECTORS, 197, "Current_Pending_Sector", ""},
        {Figure::UNCORRECTABLE_SECTORS, 198, "Offline_Uncorrectable", ""},
        {Figure::INTERFACE_ERRORS, 199, "UDMA_CRC_Error_Count", ""},
        {Figure::BYTES_WRITTEN, 241, "Lifetime_Writes_GiB", " bytes"},
    };
    for (const auto& row : rows) {
        for (const std::uint64_t above : {0U, 0xFFU}) {  // the byte that some drives continue it in
            CDriveHealth drive = Disk();
            drive.TakeVerdict(true);
            drive.TakeAttribute(row.m_ID, row.m_Name, 0x32, 100, 100, -1, above << 48 | ALL_ONES);
            EXPECT_EQ(Told(drive, row.m_Figure), "unknown: SMART attribute " + std::to_string(row.m_ID) +
                                                     " says 281474976710655" + row.m_Unit +
                                                     ", which cannot be");
            EXPECT_EQ(drive.GetState(), DriveState::GOOD) << Reasons(drive);
            drive.TakeAttribute(row.m_ID, row.m_Name, 0x32, 100, 100, -1, 20);
            EXPECT_TRUE(drive.GetFigure(row.m_Figure).HasValue() ||
                        row.m_Figure == Figure::HIGHEST_TEMPERATURE);
        }
    }
    CDriveHealth drive = Disk();
    drive.TakeAttribute(197, "Current_Pending_Sector", 0x32, 100, 100, -1, ALL_ONES - 1);
    EXPECT_EQ(drive.GetFigure(Figure::PENDING_SECTORS).GetValue(), static_cast<std::int64_t>(ALL_ONES - 1))
        << "the capacity is unknown";
    drive.TakeStatistic(1, 0x40, 7);
    drive.TakeAttribute(197, "Current_Pending_Sector", 0x32, 100, 100, -1, ALL_ONES);
    EXPECT_EQ(Told(drive, Figure::PENDING_SECTORS), "known 7: device statistics page 1");
}

TEST(DriveHealth, ARateInPlaceOfUncorrectedErrorsIsNoCountOfThem) {
    const auto errors = [](const char* name, std::uint8_t current, std::uint64_t raw) {
        CDriveHealth drive = SolidState();
        drive.TakeAttribute(187, name, 0x0f, current, current, 50, raw);
        return Told(drive, Figure::MEDIA_ERRORS);
    };
    for (const char* name : {"", "Uncorrectable_Error_Cnt"}) {
        EXPECT_EQ(errors(name, 117, 153342187), "unknown: not reported");
        EXPECT_EQ(errors(name, 101, 0x10000), "unknown: not reported");
        EXPECT_EQ(errors(name, 100, 0x10000), "known 65536: SMART attribute 187");
        EXPECT_EQ(errors(name, 101, 0xFFFF), "known 65535: SMART attribute 187");
    }
}

TEST(DriveHealth, AStatisticOfAllOnesIsNoFigure) {
    CDriveHealth drive = Disk();
    drive.TakeStatistic(1, 0x18, 0xFFFFFFFFFFFF);
    drive.TakeStatistic(1, 0x40, 0xFFFFFFFF);
    drive.TakeStatistic(3, 0x20, 0xFFFFFFFE);
    EXPECT_EQ(Told(drive, Figure::BYTES_WRITTEN),
              "unknown: device statistics page 1 says 281474976710655 bytes, which cannot be");
    EXPECT_EQ(Told(drive, Figure::PENDING_SECTORS),
              "unknown: device statistics page 1 says 4294967295, which cannot be");
    EXPECT_EQ(Told(drive, Figure::REALLOCATED_SECTORS), "known 4294967294: device statistics page 3");
    drive.TakeStatistic(1, 0x18, 0xFFFFFFFFFFFE);
    EXPECT_EQ(Told(drive, Figure::BYTES_WRITTEN), "known 144115188075854848: device statistics page 1");
    drive.TakeFigure(Figure::BYTES_READ, 0xFFFFFFFF);
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_READ).GetValue(), 0xFFFFFFFF) << "an amount of its own unit";
}

TEST(DriveHealth, ARawWearOfAllOnesIsNone) {
    CDriveHealth drive = SolidState();
    drive.TakeAttribute(230, "Media_Wearout_Indicator", 0x32, 100, 100, -1, 0xFFFFFFFFFFFF);
    EXPECT_EQ(Told(drive, Figure::WEAR), "unknown: not reported");
    CDriveHealth other(DriveProtocol::ATA, "Samsung SSD 840 PRO Series");
    other.TakeAttribute(177, "Wear_Leveling_Count", 0x32, 50, 50, -1, 0xFFFFFFFFFFFF);
    EXPECT_EQ(Told(other, Figure::WEAR), "known 50: SMART attribute 177") << "by its current value";
}

TEST(DriveHealth, NoMoreSectorsAreBadThanTheDriveHas) {
    for (const _HEALTH_FIGURE figure :
         {Figure::REALLOCATED_SECTORS, Figure::PENDING_SECTORS, Figure::UNCORRECTABLE_SECTORS}) {
        CDriveHealth drive = Disk();
        drive.TakeVerdict(true);
        drive.SetCapacity(4095 + std::uint64_t{4096} * 1000);
        drive.SetBlockSize(4096);
        drive.TakeFigure(figure, 1000);
        EXPECT_EQ(drive.GetState(), DriveState::REPLACE);
        drive.TakeFigure(figure, 1001);
        EXPECT_EQ(Told(drive, figure), "unknown: decoded by another program says 1001, which cannot be");
        EXPECT_EQ(drive.GetState(), DriveState::GOOD) << Reasons(drive);
        drive.SetCapacity(0);
        EXPECT_EQ(drive.GetFigure(figure).GetValue(), 1001);
    }
    CDriveHealth drive = Disk();
    drive.SetCapacity(4096);
    drive.TakeFigure(Figure::MEDIA_ERRORS, 1001);
    EXPECT_EQ(drive.GetFigure(Figure::MEDIA_ERRORS).GetValue(), 1001) << "one sector can be read many times";
}

TEST(DriveHealth, ImpossibleFiguresAreUnknownAndSaidSo) {
    CDriveHealth drive = Disk();
    drive.TakeFigure(Figure::POWER_ON_HOURS, -1);
    drive.TakeFigure(Figure::TEMPERATURE, 151);
    drive.TakeFigure(Figure::HIGHEST_TEMPERATURE, -61);
    EXPECT_EQ(Told(drive, Figure::POWER_ON_HOURS),
              "unknown: decoded by another program says -1 hours, which cannot be");
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE),
              "unknown: decoded by another program says 151 degrees Celsius, which cannot be");
    EXPECT_FALSE(drive.GetFigure(Figure::HIGHEST_TEMPERATURE).HasValue());
    drive.TakeFigure(Figure::TEMPERATURE, 150);
    drive.TakeFigure(Figure::HIGHEST_TEMPERATURE, -60);
    EXPECT_TRUE(drive.GetFigure(Figure::TEMPERATURE).HasValue());
    EXPECT_TRUE(drive.GetFigure(Figure::HIGHEST_TEMPERATURE).HasValue());
}

TEST(DriveHealth, ATemperatureThatNeverWasAboveZeroHasNoSensor) {
    CDriveHealth drive = Disk();
    drive.TakeFigure(Figure::TEMPERATURE, 0);
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "known 0: decoded by another program");
    drive.TakeFigure(Figure::HIGHEST_TEMPERATURE, 0);
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE),
              "unknown: the drive has no sensor: it never reported more than 0");
    EXPECT_EQ(Told(drive, Figure::HIGHEST_TEMPERATURE),
              "unknown: decoded by another program says 0 degrees Celsius, which cannot be");
    drive.TakeFigure(Figure::HIGHEST_TEMPERATURE, 1);
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "known 0: decoded by another program");
    EXPECT_EQ(Told(drive, Figure::HIGHEST_TEMPERATURE), "known 1: decoded by another program");
}

TEST(DriveHealth, TemperaturesThatAreTooFarApartAreDoubtful) {
    const auto told = [](std::uint8_t attribute, std::uint64_t raw) {
        CDriveHealth drive = Disk();
        drive.TakeStatistic(5, 8, 20);
        drive.TakeAttribute(attribute, "", 0x22, 100, 100, 0, raw);
        return Told(drive, Figure::TEMPERATURE);
    };
    EXPECT_EQ(told(194, 35), "known 20: device statistics page 5");
    EXPECT_EQ(told(194, 5), "known 20: device statistics page 5");
    EXPECT_EQ(
        told(194, 36),
        "doubtful 20: device statistics page 5 says 20 degrees Celsius, SMART attribute 194 says 36 degrees "
        "Celsius");
    EXPECT_EQ(
        told(194, 4),
        "doubtful 20: device statistics page 5 says 20 degrees Celsius, SMART attribute 194 says 4 degrees "
        "Celsius");
    EXPECT_EQ(told(194, 0), "known 20: device statistics page 5") << "no sensor";
    EXPECT_EQ(told(190, 80), "known 20: device statistics page 5") << "some count it down from 100";
}

TEST(DriveHealth, AHighestTemperatureOfZeroIsNone) {
    CDriveHealth drive = Disk();
    drive.TakeFigure(Figure::HIGHEST_TEMPERATURE, 0);
    drive.TakeFigure(Figure::TEMPERATURE, 1);
    EXPECT_EQ(Told(drive, Figure::HIGHEST_TEMPERATURE),
              "unknown: decoded by another program says 0 degrees Celsius, which cannot be");
    drive.TakeStatistic(5, 0x20, 0);
    drive.TakeFigure(Figure::HIGHEST_TEMPERATURE, 40);
    EXPECT_EQ(Told(drive, Figure::HIGHEST_TEMPERATURE), "known 40: decoded by another program")
        << "another source tells one";
}

TEST(DriveHealth, AttributesOfAnotherProgramBringTheirNamesAndThresholds) {
    CDriveHealth drive = Disk();
    EXPECT_FALSE(drive.TakeAttribute(0, "None", 0, 1, 1, 1, 1));
    EXPECT_TRUE(drive.TakeAttribute(1, "Raw_Read_Error_Rate", 0x2F, 10, 10, 51, 1));
    EXPECT_TRUE(drive.TakeAttribute(197, "Current_Pending_Sector", 0x32, 200, 200, 0, 4));
    EXPECT_TRUE(drive.TakeAttribute(198, "Total_Host_Reads", 0x32, 200, 200, 0, 5));
    EXPECT_EQ(Told(drive, Figure::PENDING_SECTORS), "known 4: SMART attribute 197");
    EXPECT_EQ(Told(drive, Figure::UNCORRECTABLE_SECTORS), "unknown: not reported");
    EXPECT_EQ(Told(drive, Figure::ATTRIBUTES_BELOW_THRESHOLD), "known 1: SMART attribute 1");
    drive.ClearAttributes();
    EXPECT_FALSE(drive.GetFigure(Figure::PENDING_SECTORS).HasValue());
    EXPECT_FALSE(drive.GetFigure(Figure::ATTRIBUTES_BELOW_THRESHOLD).HasValue());
}

TEST(DriveHealth, OnlyAsManyAttributesAreTakenAsAPageHolds) {
    CDriveHealth drive = Disk();
    for (int id = 1; id <= 30; ++id) {
        EXPECT_TRUE(drive.TakeAttribute(static_cast<std::uint8_t>(id), nullptr, 0, 100, 100, -1, 0)) << id;
    }
    EXPECT_FALSE(drive.TakeAttribute(197, nullptr, 0, 100, 100, -1, 5));
    EXPECT_FALSE(drive.GetFigure(Figure::PENDING_SECTORS).HasValue());
}

TEST(DriveHealth, MissingValuesOfAnAttributeAreNotBelowItsThreshold) {
    CDriveHealth drive = Disk();
    drive.TakeAttribute(1, "", 1, -1, -1, 51, 0);
    drive.TakeAttribute(2, "", 1, 256, 256, 51, 0);
    drive.TakeAttribute(3, "", 1, 10, 10, -1, 0);
    EXPECT_EQ(drive.GetFigure(Figure::ATTRIBUTES_BELOW_THRESHOLD).GetValue(), 0);
}

TEST(DriveHealth, MoreAttributesBelowTheirThresholdsThanAFigureNamesAreCounted) {
    CDriveHealth drive = Disk();
    for (std::uint8_t id = 1; id <= 5; ++id) {
        drive.TakeAttribute(id, "", 0, 10, 10, 10, 0);
    }
    EXPECT_EQ(Told(drive, Figure::ATTRIBUTES_BELOW_THRESHOLD),
              "known 5: SMART attribute 1, 2, 3, 4 and more");
}

TEST(DriveHealth, HoursThatDifferMuchAreDoubtful) {
    struct {
        std::int64_t m_Statistic;
        std::uint64_t m_Attribute;
        std::int64_t m_Hours;
        bool m_IsDoubtful;
    } const rows[] = {
        {100, 1100, 1100, false},     {100, 1101, 1101, true},  // a slack of 1000 hours
        {20000, 18000, 20000, false}, {20000, 17999, 20000, true},
        {18000, 20000, 20000, false}, {17999, 20000, 20000, true},  // statistics lag, none runs ahead
        {0, 5000, 5000, false},       {5000, 0, 5000, true},        // a statistic of 0 is not kept
    };
    for (const auto& row : rows) {
        CDriveHealth drive = SolidState();
        drive.TakeStatistic(1, 0x10, row.m_Statistic);
        Take(drive, ATA_SMART_DATA, SmartData({{9, 100, row.m_Attribute}}));
        drive.TakeFigure(Figure::POWER_ON_HOURS, 77777);  // made of either
        const CHealthFigure hours = drive.GetFigure(Figure::POWER_ON_HOURS);
        EXPECT_EQ(hours.GetValue(), row.m_Hours) << row.m_Statistic << " " << row.m_Attribute;
        EXPECT_EQ(hours.GetState() == FigureState::DOUBTFUL, row.m_IsDoubtful)
            << row.m_Statistic << " " << row.m_Attribute;
    }
    CDriveHealth drive = SolidState();
    drive.TakeStatistic(1, 0x10, 100);
    Take(drive, ATA_SMART_DATA, SmartData({{9, 100, 5000}}));
    EXPECT_EQ(Told(drive, Figure::POWER_ON_HOURS),
              "doubtful 5000: SMART attribute 9 says 5000 hours, device statistics page 1 says 100 hours");
}

TEST(DriveHealth, HoursThatAnotherProgramDecodesOtherwiseAreDoubtful) {
    for (const auto& [decoded, isDoubtful] : {std::pair(4000, false), std::pair(3999, true)}) {
        CDriveHealth drive = SolidState();
        Take(drive, ATA_SMART_DATA, SmartData({{9, 100, 5000}}));
        drive.TakeFigure(Figure::POWER_ON_HOURS, decoded);
        const CHealthFigure hours = drive.GetFigure(Figure::POWER_ON_HOURS);
        EXPECT_EQ(hours.GetValue(), 5000);
        EXPECT_EQ(hours.GetState() == FigureState::DOUBTFUL, isDoubtful) << decoded;
    }
}

TEST(DriveHealth, MoreSourcesThanDrivesHaveArePassedOver) {
    CDriveHealth drive = Disk();
    for (std::uint32_t number = 0; number < 1000; ++number) {
        drive.TakeFigure(Figure::TEMPERATURE, 30, FigureSource::PROGRAM, number);
    }
    EXPECT_EQ(drive.GetFigure(Figure::TEMPERATURE).GetValue(), 30);
}

TEST(DriveHealth, ModelsOfAnyLengthAreTaken) {
    for (const std::size_t length : {127U, 128U, 100000U}) {
        CDriveHealth drive(DriveProtocol::ATA, std::string(length, 'X'));
        drive.TakeVerdict(true);
        EXPECT_EQ(drive.GetState(), DriveState::GOOD) << length;
    }
}

TEST(DriveHealth, TheOrderInWhichPagesComeMakesNoDifference) {
    struct Given {
        _HEALTH_PAGE m_Kind;
        Page m_Page;
    };
    const std::vector<Given> pages = {
        {ATA_SMART_DATA,
         SmartData({{5, 100, 3}, {9, 100, 500}, {177, 97, 30}, {194, 70, 30}, {241, 99, 4096}})},
        {ATA_SMART_THRESHOLDS, SmartThresholds({{5, 10}, {177, 98}})},
        {ATA_DEVICE_STATISTICS, DeviceStatistics(1, {{0x10, 510}, {0x18, 5000}})},
        {ATA_DEVICE_STATISTICS, DeviceStatistics(4, {{0x08, 1}})},
        {ATA_DEVICE_STATISTICS, DeviceStatistics(5, {{0x08, 31}, {0x20, 60}, {0x58, 70}})},
        {ATA_DEVICE_STATISTICS, DeviceStatistics(7, {{0x08, 40}})},
        {ATA_SELF_TEST_LOG, SelfTestLog({{1, 0x70}})},
        {ATA_EXTENDED_SELF_TEST_LOG, ExtendedSelfTestLog({{1, 0x70}, {2, 0x70}})},
        {NVME_HEALTH_LOG, HealthLog()},
        {NVME_IDENTIFY_CONTROLLER, IdentifyController(343, 353, 480'000'000'000)},
        {SCSI_LOG_PAGE, LogPage(0x02, 0, {{5, Big(1000, 8)}, {6, Big(2, 8)}})},
        {SCSI_LOG_PAGE, LogPage(0x03, 0, {{5, Big(1000, 8)}, {6, Big(3, 8)}})},
        {SCSI_LOG_PAGE, LogPage(0x0D, 0, {{0, {0, 32}}, {1, {0, 60}}})},
        {SCSI_LOG_PAGE, LogPage(0x2F, 0, {{0, {0x5D, 0x10, 33, 0}}})},
    };
    const auto given = [&pages](const std::vector<std::size_t>& order) {
        CDriveHealth drive(DriveProtocol::ATA, "SAMSUNG MZ7LH480HAHQ-00005");
        for (const std::size_t index : order) {
            EXPECT_EQ(Take(drive, pages[index].m_Kind, pages[index].m_Page), "");
        }
        return Everything(drive);
    };
    std::vector<std::size_t> order(pages.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    const std::string expected = given(order);
    std::mt19937 random(RandomSeed());
    for (int round = 0; round < 200; ++round) {
        std::shuffle(order.begin(), order.end(), random);
        ASSERT_EQ(given(order), expected);
    }
}

TEST(DriveHealth, KindsOfFiguresHaveTheirUnitsAndDirections) {
    const CDriveHealth drive = Disk();
    EXPECT_EQ(drive.GetFigure(Figure::WEAR).GetUnit(), FigureUnit::PERCENT);
    EXPECT_EQ(drive.GetFigure(Figure::WEAR).GetDirection(), FigureDirection::UP);
    EXPECT_EQ(drive.GetFigure(Figure::SPARE).GetDirection(), FigureDirection::DOWN);
    EXPECT_EQ(drive.GetFigure(Figure::POWER_ON_HOURS).GetUnit(), FigureUnit::HOURS);
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_WRITTEN).GetUnit(), FigureUnit::BYTES);
    EXPECT_EQ(drive.GetFigure(Figure::RATED_TERABYTES).GetUnit(), FigureUnit::TERABYTES);
    EXPECT_EQ(drive.GetFigure(Figure::TEMPERATURE).GetUnit(), FigureUnit::CELSIUS);
    EXPECT_EQ(drive.GetFigure(Figure::VERDICT).GetUnit(), FigureUnit::FLAGS);
    EXPECT_EQ(drive.GetFigure(Figure::MEDIA_ERRORS).GetUnit(), FigureUnit::COUNT);
    EXPECT_STREQ(HealthFigureToString(Figure::WEAR), "WEAR");
    EXPECT_STREQ(HealthFigureToString(Figure::UNSAFE_SHUTDOWNS), "UNSAFE_SHUTDOWNS");
}

TEST(DriveStates, HaveNames) {
    EXPECT_STREQ(DriveStateToString(DriveState::UNKNOWN), "unknown");
    EXPECT_STREQ(DriveStateToString(DriveState::GOOD), "good");
    EXPECT_STREQ(DriveStateToString(DriveState::LOOK), "look at it");
    EXPECT_STREQ(DriveStateToString(DriveState::REPLACE), "replace it");
    EXPECT_STREQ(DriveStateToString(DriveState::FAILED), "failed");
    EXPECT_STREQ(DriveStateToString(static_cast<_DRIVE_STATE>(9)), "unknown");
}

TEST(DriveHealthSelfTests, OnePassedMakesUpForOlderOnesThatFailed) {
    using namespace SelfTestOutcome;
    const auto failed = [](const std::vector<_SELF_TEST_OUTCOME>& newestFirst) {
        CDriveHealth health(DriveProtocol::ATA, "X");
        health.TakeSelfTests(newestFirst.data(), newestFirst.size(), FigureSource::ATA_LOG, 6);
        const CHealthFigure figure = health.GetFigure(HealthFigure::FAILED_SELF_TESTS);
        EXPECT_EQ(figure.GetSource(), FigureSource::ATA_LOG);
        EXPECT_EQ(figure.GetSourceNumber(), 6U);
        return figure.GetValue();
    };
    EXPECT_EQ(failed({}), 0);
    EXPECT_EQ(failed({NEITHER, SHORT_FAILED, EXTENDED_FAILED}), 2);
    EXPECT_EQ(failed({SHORT_PASSED, SHORT_FAILED, EXTENDED_FAILED}), 1) << "a short test for short ones only";
    EXPECT_EQ(failed({EXTENDED_PASSED, SHORT_FAILED, EXTENDED_FAILED}), 0);
    EXPECT_EQ(failed({SHORT_FAILED, EXTENDED_PASSED, EXTENDED_FAILED}), 1) << "what failed since";
    EXPECT_EQ(failed({static_cast<_SELF_TEST_OUTCOME>(99)}), 0);
}

TEST(DriveHealth, ADecodedFigureIsInItsOwnUnitWhateverItsSource) {
    CDriveHealth drive = SolidState();
    drive.TakeFigure(Figure::BYTES_WRITTEN, 51200, FigureSource::ATA_DEVICE_STATISTICS, 1);
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_WRITTEN).GetValue(), 51200);
}

TEST(DriveHealth, ARatingFromElsewhereServesWhereTheModelIsNotListed) {
    CDriveHealth drive = SolidState();
    drive.TakeFigure(Figure::RATED_TERABYTES, 0);
    EXPECT_EQ(Told(drive, Figure::RATED_TERABYTES), "unknown: not in the endurance list");
    drive.TakeFigure(Figure::RATED_TERABYTES, 300);
    EXPECT_EQ(Told(drive, Figure::RATED_TERABYTES), "known 300: decoded by another program");
}

TEST(DriveHealth, WithoutAttributesBelowTheirThresholdsNoneIsNamed) {
    CDriveHealth drive = Disk();
    drive.TakeAttribute(5, "", 0, 100, 100, 10, 0);
    EXPECT_EQ(Told(drive, Figure::ATTRIBUTES_BELOW_THRESHOLD), "known 0: SMART attributes");
}

TEST(DriveHealth, AReasonOfANumberThatIsNoFigureHasAText) {
    for (const int number : {-1, 0, 25, 1'000'000}) {
        const CHealthFigure figure(static_cast<_HEALTH_FIGURE>(number));
        EXPECT_EQ(CHealthReason(DriveState::LOOK, figure).GetText(), "0") << number;
    }
}

}  // namespace
}  // namespace PI::Test
