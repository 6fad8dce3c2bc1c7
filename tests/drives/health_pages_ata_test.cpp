// SPDX-License-Identifier: Apache-2.0

#include "drives/health_checks.h"

namespace PI::Test {
namespace {

using namespace HealthPage;
namespace Figure = HealthFigure;

TEST(ATASmartData, FiguresOfADiskAreReadFromTheirAttributes) {
    CDriveHealth drive = Disk();
    EXPECT_EQ(Take(drive, ATA_SMART_DATA,
                   SmartData({{5, 100, 7},
                              {12, 100, 99},
                              {187, 100, 3},
                              {194, 110, 33},
                              {197, 200, 8},
                              {198, 200, 2},
                              {199, 200, 15}})),
              "");
    EXPECT_EQ(Told(drive, Figure::REALLOCATED_SECTORS), "known 7: SMART attribute 5");
    EXPECT_EQ(Told(drive, Figure::POWER_CYCLES), "known 99: SMART attribute 12");
    EXPECT_EQ(Told(drive, Figure::MEDIA_ERRORS), "known 3: SMART attribute 187");
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "known 33: SMART attribute 194");
    EXPECT_EQ(Told(drive, Figure::PENDING_SECTORS), "known 8: SMART attribute 197");
    EXPECT_EQ(Told(drive, Figure::UNCORRECTABLE_SECTORS), "known 2: SMART attribute 198");
    EXPECT_EQ(Told(drive, Figure::INTERFACE_ERRORS), "known 15: SMART attribute 199");
}

TEST(ATASmartData, WhatIsNotOnThePageIsUnknownAndNotZero) {
    CDriveHealth drive = Disk();
    Take(drive, ATA_SMART_DATA, SmartData({{12, 100, 99}}));
    for (const auto figure : {Figure::REALLOCATED_SECTORS, Figure::PENDING_SECTORS, Figure::TEMPERATURE,
                              Figure::MEDIA_ERRORS, Figure::UNCORRECTABLE_SECTORS}) {
        EXPECT_EQ(Told(drive, figure), "unknown: not reported") << HealthFigureToString(figure);
    }
}

TEST(ATASmartData, OfTwoAttributesWithTheSameNumberTheLaterOneCounts) {
    CDriveHealth drive = Disk();
    Take(drive, ATA_SMART_DATA, SmartData({{197, 100, 1}, {197, 100, 2}}));
    EXPECT_EQ(drive.GetFigure(Figure::PENDING_SECTORS).GetValue(), 2);
}

TEST(ATASmartData, UpperWordsOfReallocatedSectorsAreOtherCounts) {
    CDriveHealth drive = Disk();
    Take(drive, ATA_SMART_DATA, SmartData({{5, 100, 0x0003'0002'0001}}));
    EXPECT_EQ(drive.GetFigure(Figure::REALLOCATED_SECTORS).GetValue(), 1);
}

TEST(ATASmartData, TemperatureIsASignedByte) {
    CDriveHealth drive = Disk();
    Take(drive, ATA_SMART_DATA, SmartData({{194, 100, 0xFF'FF'FF'FF'FF'FB}}));
    EXPECT_EQ(drive.GetFigure(Figure::TEMPERATURE).GetValue(), -5);
}

TEST(ATASmartData, TemperatureOfTheAirServesWhereTheDriveTellsNoOther) {
    CDriveHealth drive = Disk();
    Take(drive, ATA_SMART_DATA, SmartData({{190, 70, 30}}));
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "known 30: SMART attribute 190");
    Take(drive, ATA_SMART_DATA, SmartData({{190, 70, 30}, {194, 65, 35}}));
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "known 35: SMART attribute 194");
}

struct Packed {
    const char* m_Maker;
    std::uint64_t m_Raw;
    std::int64_t m_Highest;  ///< -1: not credible, so unknown
};

TEST(ATASmartData, HighestTemperatureIsUnpackedWhereItIsCredible) {
    for (const Packed& row : {
             Packed{"Hitachi", 266289283102, 62},               // 30 (Min/Max 20/62)
             Packed{"Kingston", 0x0014'003E'001E, 62},          // the other way round
             Packed{"Seagate", 0x0000'3E14'001E, 62},           // 00 00 HI LO 00 T
             Packed{"WDC", 0x0000'003E'141E, 62},               // 00 00 00 HI LO T
             Packed{"alone", 30, -1},                           //
             Packed{"below the lowest", 0x003E'0028'001E, -1},  // 30, but never below 40
             Packed{"at the bound", 0x0078'0014'0078, 120},
             Packed{"beyond the bound", 0x0079'0014'0078, -1},
             Packed{"colder than drives are", 0x0014'00C3'0005, -1},
             Packed{"never so cold", 0x003E'0028'001E, -1},
             Packed{"no sign between", 0x1234'5678'9A1E, -1},
             Packed{"a sign, and more", 0x1200'3E14'001E, -1},
             Packed{"below freezing", 0x001E'FFFB'FFFB, 30},
         }) {
        CDriveHealth drive = Disk();
        Take(drive, ATA_SMART_DATA, SmartData({{194, 100, row.m_Raw}}));
        const CHealthFigure figure = drive.GetFigure(Figure::HIGHEST_TEMPERATURE);
        EXPECT_EQ(figure.HasValue() ? figure.GetValue() : -1, row.m_Highest) << row.m_Maker;
    }
}

TEST(ATASmartData, IsRefusedWhenTooShortOrDamagedAndChangesNothing) {
    CDriveHealth drive = Disk();
    const Page page = SmartData({{5, 100, 7}});
    Take(drive, ATA_SMART_DATA, page);
    Page shorter(page.begin(), page.end() - 1);
    EXPECT_EQ(Take(drive, ATA_SMART_DATA, shorter), "the page is too short");
    EXPECT_EQ(Take(drive, ATA_SMART_DATA, {}), "the page is too short");
    Page damaged = SmartData({{5, 100, 8}});
    damaged[100] ^= 1;
    EXPECT_EQ(Take(drive, ATA_SMART_DATA, damaged), "the checksum of the page is wrong");
    EXPECT_EQ(Take(drive, ATA_SMART_DATA, Page(512)), "the page is of another kind");
    EXPECT_EQ(drive.GetFigure(Figure::REALLOCATED_SECTORS).GetValue(), 7);
    EXPECT_STREQ(drive.Take(ATA_SMART_DATA, nullptr, 512), "the page is too short");
}

TEST(ATASmartData, BytesAfterThePageArePassedOver) {
    CDriveHealth drive = Disk();
    Page page = SmartData({{5, 100, 7}});
    page.push_back(0xFF);
    EXPECT_EQ(Take(drive, ATA_SMART_DATA, page), "");
}

TEST(ATASmartData, ASecondPageReplacesTheFirst) {
    CDriveHealth drive = Disk();
    Take(drive, ATA_SMART_DATA, SmartData({{5, 100, 7}, {197, 100, 1}}));
    Take(drive, ATA_SMART_DATA, SmartData({{5, 100, 8}}));
    EXPECT_EQ(drive.GetFigure(Figure::REALLOCATED_SECTORS).GetValue(), 8);
    EXPECT_FALSE(drive.GetFigure(Figure::PENDING_SECTORS).HasValue());
}

TEST(ATAThresholds, CurrentValueAtTheThresholdIsBelow) {
    for (const auto& [current, below] : {std::pair{11, 0}, std::pair{10, 1}, std::pair{9, 1}}) {
        CDriveHealth drive = Disk();
        Take(drive, ATA_SMART_DATA, SmartData({{1, static_cast<std::uint8_t>(current), 0, 11}}));
        Take(drive, ATA_SMART_THRESHOLDS, SmartThresholds({{1, 10}}));
        EXPECT_EQ(drive.GetFigure(Figure::ATTRIBUTES_BELOW_THRESHOLD).GetValue(), below) << current;
        EXPECT_EQ(drive.GetFigure(Figure::ATTRIBUTES_ONCE_BELOW).GetValue(), 0) << current;
    }
}

TEST(ATAThresholds, WorstValueAtTheThresholdOnceWasBelow) {
    CDriveHealth drive = Disk();
    Take(drive, ATA_SMART_DATA, SmartData({{1, 100, 0, 10}, {3, 100, 0, 11}}));
    Take(drive, ATA_SMART_THRESHOLDS, SmartThresholds({{3, 10}, {1, 10}}));
    EXPECT_EQ(Told(drive, Figure::ATTRIBUTES_ONCE_BELOW), "known 1: SMART attribute 1");
    EXPECT_EQ(drive.GetFigure(Figure::ATTRIBUTES_BELOW_THRESHOLD).GetValue(), 0);
}

TEST(ATAThresholds, AThresholdOfZeroNeverFails) {
    CDriveHealth drive = Disk();
    Take(drive, ATA_SMART_DATA, SmartData({{1, 0, 0, 0}}));
    Take(drive, ATA_SMART_THRESHOLDS, SmartThresholds({{1, 0}, {2, 5}}));
    EXPECT_EQ(drive.GetFigure(Figure::ATTRIBUTES_BELOW_THRESHOLD).GetValue(), 0);
}

TEST(ATAThresholds, HowHotADriveOnceWasDoesNotCount) {
    CDriveHealth drive = Disk();
    Take(drive, ATA_SMART_DATA, SmartData({{190, 60, 40, 30}, {194, 60, 40, 30}}));
    Take(drive, ATA_SMART_THRESHOLDS, SmartThresholds({{190, 45}, {194, 45}}));
    EXPECT_EQ(drive.GetFigure(Figure::ATTRIBUTES_ONCE_BELOW).GetValue(), 0);
}

TEST(ATASmartData, ATemperatureOfZeroIsDoubtfulUnlessTheHighestOneIsCredible) {
    // Byte 0: now; bytes 2 and 4: lowest and highest.
    for (const auto& [raw, told] :
         {std::pair{std::uint64_t{0},
                    "doubtful 0: SMART attribute 194 says 0 degrees Celsius, as drives without a sensor do"},
          std::pair{std::uint64_t{100} << 32U,
                    "doubtful 0: SMART attribute 194 says 0 degrees Celsius, as drives without a sensor do"},
          std::pair{std::uint64_t{99} << 32U, "known 0: SMART attribute 194"},
          std::pair{std::uint64_t{1} << 32U, "known 0: SMART attribute 194"},
          std::pair{std::uint64_t{1}, "known 1: SMART attribute 194"}}) {
        CDriveHealth drive = Disk();
        Take(drive, ATA_SMART_DATA, SmartData({{194, 100, raw}}));
        EXPECT_EQ(Told(drive, Figure::TEMPERATURE), told) << raw;
    }
}

TEST(ATASmartData, AHighestTemperatureThatIsNotCredibleIsAsDoubtfulAsThePresentOne) {
    for (const auto& [raw, told] :
         {std::pair{std::uint64_t{99} << 32U, "known 99: SMART attribute 194"},
          std::pair{
              std::uint64_t{100} << 32U,
              "doubtful 100: SMART attribute 194 says 0 degrees Celsius, as drives without a sensor do"},
          std::pair{std::uint64_t{100} << 32U | 1U, "known 100: SMART attribute 194"}}) {
        CDriveHealth drive = Disk();
        Take(drive, ATA_SMART_DATA, SmartData({{194, 100, raw}}));
        EXPECT_EQ(Told(drive, Figure::HIGHEST_TEMPERATURE), told) << raw;
    }
}

TEST(ATAThresholds, AreUnknownWithoutEitherPage) {
    CDriveHealth drive = Disk();
    Take(drive, ATA_SMART_DATA, SmartData({{1, 1, 0}}));
    EXPECT_EQ(Told(drive, Figure::ATTRIBUTES_BELOW_THRESHOLD), "unknown: not reported");
}

TEST(ATADeviceStatistics, EachPageIsReadByItsOffsets) {
    CDriveHealth drive = SolidState();
    drive.SetBlockSize(4096);
    EXPECT_EQ(Take(drive, ATA_DEVICE_STATISTICS,
                   DeviceStatistics(1, {{0x08, 11}, {0x10, 22}, {0x18, 33}, {0x28, 44}, {0x40, 6}})),
              "");
    EXPECT_EQ(Take(drive, ATA_DEVICE_STATISTICS, DeviceStatistics(3, {{0x20, 55}})), "");
    EXPECT_EQ(Take(drive, ATA_DEVICE_STATISTICS, DeviceStatistics(4, {{0x08, 66}})), "");
    EXPECT_EQ(Take(drive, ATA_DEVICE_STATISTICS, DeviceStatistics(5, {{0x08, 0xFE}, {0x20, 51}, {0x58, 70}})),
              "");
    EXPECT_EQ(Take(drive, ATA_DEVICE_STATISTICS, DeviceStatistics(6, {{0x18, 77}})), "");
    EXPECT_EQ(Take(drive, ATA_DEVICE_STATISTICS, DeviceStatistics(7, {{0x08, 110}})), "");
    EXPECT_EQ(Told(drive, Figure::POWER_CYCLES), "known 11: device statistics page 1");
    EXPECT_EQ(drive.GetFigure(Figure::POWER_ON_HOURS).GetValue(), 22);
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_WRITTEN).GetValue(), 33 * 4096);
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_READ).GetValue(), 44 * 4096);
    EXPECT_EQ(drive.GetFigure(Figure::PENDING_SECTORS).GetValue(), 6);
    EXPECT_EQ(drive.GetFigure(Figure::REALLOCATED_SECTORS).GetValue(), 55);
    EXPECT_EQ(drive.GetFigure(Figure::MEDIA_ERRORS).GetValue(), 66);
    EXPECT_EQ(drive.GetFigure(Figure::TEMPERATURE).GetValue(), -2);
    EXPECT_EQ(drive.GetFigure(Figure::HIGHEST_TEMPERATURE).GetValue(), 51);
    EXPECT_EQ(drive.GetFigure(Figure::TEMPERATURE_LIMIT).GetValue(), 70);
    EXPECT_EQ(drive.GetFigure(Figure::INTERFACE_ERRORS).GetValue(), 77);
    EXPECT_EQ(Told(drive, Figure::WEAR), "known 110: device statistics page 7");
}

TEST(ATADeviceStatistics, AValueCountsOnlyWhenSupportedAndValid) {
    for (const std::uint8_t flags : std::initializer_list<std::uint8_t>{0x00, 0x40, 0x80}) {
        CDriveHealth drive = SolidState();
        EXPECT_EQ(Take(drive, ATA_DEVICE_STATISTICS, DeviceStatistics(7, {{0x08, 5, flags}})), "");
        EXPECT_EQ(Told(drive, Figure::WEAR), "unknown: not reported") << int{flags};
    }
}

TEST(ATADeviceStatistics, ValuesOfSixBytesAreWhole) {
    CDriveHealth drive = SolidState();
    Take(drive, ATA_DEVICE_STATISTICS, DeviceStatistics(1, {{0x18, 0x0000'0100'0000'0000}}));
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_WRITTEN).GetValue(), std::int64_t{1} << 49);
}

TEST(ATADeviceStatistics, TheBlockSizeMayComeAfterThePage) {
    CDriveHealth drive = SolidState();
    Take(drive, ATA_DEVICE_STATISTICS, DeviceStatistics(1, {{0x18, 2}}));
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_WRITTEN).GetValue(), 1024);
    drive.SetBlockSize(4096);
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_WRITTEN).GetValue(), 8192);
}

TEST(ATADeviceStatistics, PagesThatAreNotReadAreOfAnotherKind) {
    CDriveHealth drive = SolidState();
    for (const std::uint8_t number : std::initializer_list<std::uint8_t>{0, 2, 8, 255}) {
        EXPECT_EQ(Take(drive, ATA_DEVICE_STATISTICS, DeviceStatistics(number, {})),
                  "the page is of another kind")
            << int{number};
    }
    EXPECT_EQ(Take(drive, ATA_DEVICE_STATISTICS, Page(512)), "the page is of another kind");
    EXPECT_EQ(Take(drive, ATA_DEVICE_STATISTICS, Page(511)), "the page is too short");
}

TEST(ATADeviceStatistics, ASecondPageReplacesTheFirstAlsoWhereItSaysLess) {
    CDriveHealth drive = SolidState();
    Take(drive, ATA_DEVICE_STATISTICS, DeviceStatistics(1, {{0x08, 11}, {0x10, 22}}));
    Take(drive, ATA_DEVICE_STATISTICS, DeviceStatistics(1, {{0x08, 12}}));
    EXPECT_EQ(drive.GetFigure(Figure::POWER_CYCLES).GetValue(), 12);
    EXPECT_FALSE(drive.GetFigure(Figure::POWER_ON_HOURS).HasValue());
}

struct Tests {
    const char* m_What;
    std::vector<SelfTest> m_Tests;  ///< oldest first
    std::int64_t m_Failed;
};

constexpr std::uint8_t SHORT = 1;
constexpr std::uint8_t EXTENDED = 2;
constexpr std::uint8_t CAPTIVE = 0x80;
constexpr std::uint8_t PASSED = 0x00;
constexpr std::uint8_t ABORTED = 0x10;
constexpr std::uint8_t INTERRUPTED = 0x20;
constexpr std::uint8_t READ_FAILURE = 0x70;
constexpr std::uint8_t RUNNING = 0xF9;

const Tests SELF_TESTS[] = {
    {"none", {}, 0},
    {"one passed", {{SHORT, PASSED}}, 0},
    {"one failed", {{SHORT, READ_FAILURE}}, 1},
    {"the lowest failure", {{SHORT, 0x30}}, 1},
    {"the highest failure", {{SHORT, 0x80}}, 1},
    {"after it, reserved", {{SHORT, 0x90}}, 0},
    {"interrupted", {{SHORT, INTERRUPTED}}, 0},
    {"failed, then passed", {{SHORT, READ_FAILURE}, {SHORT, PASSED}}, 0},
    {"an extended one failed, then a short one passed", {{EXTENDED, READ_FAILURE}, {SHORT, PASSED}}, 1},
    {"a short one failed, then an extended one passed", {{SHORT, READ_FAILURE}, {EXTENDED, PASSED}}, 0},
    {"captive", {{EXTENDED | CAPTIVE, READ_FAILURE}, {EXTENDED | CAPTIVE, PASSED}}, 0},
    {"aborted and running ones say nothing", {{SHORT, READ_FAILURE}, {SHORT, ABORTED}, {SHORT, RUNNING}}, 1},
    {"twice", {{EXTENDED, PASSED}, {EXTENDED, READ_FAILURE}, {SHORT, READ_FAILURE}}, 2},
};

TEST(ATASelfTestLog, FailedTestsSinceTheLastThatPassedCount) {
    for (const Tests& row : SELF_TESTS) {
        CDriveHealth drive = Disk();
        EXPECT_EQ(Take(drive, ATA_SELF_TEST_LOG, SelfTestLog(row.m_Tests)), "") << row.m_What;
        EXPECT_EQ(Told(drive, Figure::FAILED_SELF_TESTS),
                  "known " + std::to_string(row.m_Failed) + ": ATA log 06h")
            << row.m_What;
        CDriveHealth other = Disk();
        EXPECT_EQ(Take(other, ATA_EXTENDED_SELF_TEST_LOG, ExtendedSelfTestLog(row.m_Tests)), "")
            << row.m_What;
        EXPECT_EQ(Told(other, Figure::FAILED_SELF_TESTS),
                  "known " + std::to_string(row.m_Failed) + ": ATA log 07h")
            << row.m_What;
    }
}

TEST(ATASelfTestLog, TheNewestOverwritesTheOldest) {
    std::vector<SelfTest> tests(21, {SHORT, PASSED});
    tests.push_back({SHORT, READ_FAILURE});
    CDriveHealth drive = Disk();
    EXPECT_EQ(Take(drive, ATA_SELF_TEST_LOG, SelfTestLog(tests)), "");
    EXPECT_EQ(drive.GetFigure(Figure::FAILED_SELF_TESTS).GetValue(), 1);
    std::vector<SelfTest> failures(22, {SHORT, READ_FAILURE});
    Take(drive, ATA_SELF_TEST_LOG, SelfTestLog(failures));
    EXPECT_EQ(drive.GetFigure(Figure::FAILED_SELF_TESTS).GetValue(), 21);
}

TEST(ATASelfTestLog, TheExtendedLogGoesOverSectorsAndCountsBeforeTheOther) {
    std::vector<SelfTest> tests(20, {SHORT, READ_FAILURE});
    CDriveHealth drive = Disk();
    Take(drive, ATA_SELF_TEST_LOG, SelfTestLog({{SHORT, PASSED}}));
    EXPECT_EQ(Take(drive, ATA_EXTENDED_SELF_TEST_LOG, ExtendedSelfTestLog(tests, 2)), "");
    EXPECT_EQ(Told(drive, Figure::FAILED_SELF_TESTS), "known 20: ATA log 07h");
}

TEST(ATASelfTestLog, AnIndexAfterTheLastEntryContradictsThePage) {
    for (const auto& [index, reason] :
         {std::pair{21, ""}, std::pair{22, "the page contradicts its own lengths"}}) {
        Page page(512);
        page[0] = 1;
        page[508] = static_cast<std::uint8_t>(index);
        CDriveHealth drive = Disk();
        EXPECT_EQ(Take(drive, ATA_SELF_TEST_LOG, WithChecksum(page)), reason) << index;
    }
    for (const auto& [index, reason] :
         {std::pair{19, ""}, std::pair{20, "the page contradicts its own lengths"}}) {
        Page page(512);
        page[0] = 1;
        page[2] = static_cast<std::uint8_t>(index);
        CDriveHealth drive = Disk();
        EXPECT_EQ(Take(drive, ATA_EXTENDED_SELF_TEST_LOG, WithChecksum(page)), reason) << index;
    }
}

TEST(ATASelfTestLog, ADamagedSectorIsRefused) {
    Page page = ExtendedSelfTestLog({{SHORT, PASSED}}, 2);
    page[600] ^= 1;
    CDriveHealth drive = Disk();
    EXPECT_EQ(Take(drive, ATA_EXTENDED_SELF_TEST_LOG, page), "the checksum of the page is wrong");
    EXPECT_EQ(Told(drive, Figure::FAILED_SELF_TESTS), "unknown: not reported");
}

TEST(ATAVerdict, IsWhatTheDriveSays) {
    CDriveHealth drive = Disk();
    EXPECT_EQ(Told(drive, Figure::VERDICT), "unknown: not reported");
    drive.TakeVerdict(true);
    EXPECT_EQ(Told(drive, Figure::VERDICT), "known 0: SMART verdict of the drive");
    drive.TakeVerdict(false);
    EXPECT_EQ(Told(drive, Figure::VERDICT), "known 1: SMART verdict of the drive");
}

TEST(ATASmartData, AThresholdsPageIsOfAnotherKind) {
    CDriveHealth drive = Disk();
    EXPECT_EQ(Take(drive, ATA_SMART_DATA, SmartThresholds({{5, 36}, {9, 0}})), "the page is of another kind");
    EXPECT_EQ(Take(drive, ATA_SMART_DATA, SmartData({{177, 0, 0, 0}})), "");  // an attribute at its end
    EXPECT_EQ(Take(drive, ATA_SMART_DATA, SmartData({{177, 0, 0, 0}, {9, 100, 0, 0}})), "");
}

TEST(ATAThresholds, ADataPageIsOfAnotherKind) {
    CDriveHealth drive = Disk();
    EXPECT_EQ(Take(drive, ATA_SMART_THRESHOLDS, SmartData({{5, 100, 0}, {9, 90, 1000}})),
              "the page is of another kind");
    EXPECT_EQ(Take(drive, ATA_SMART_THRESHOLDS, SmartThresholds({})), "");
}

TEST(ATADeviceStatistics, ADataPageIsOfAnotherKind) {
    CDriveHealth drive = Disk();
    EXPECT_EQ(Take(drive, ATA_DEVICE_STATISTICS, SmartData({{1, 100, 0}, {5, 100, 0}})),
              "the page is of another kind");
}

TEST(ATAPages, OfADeadDriveAreOfAnotherKind) {
    CDriveHealth drive = Disk();
    for (const _HEALTH_PAGE kind : {ATA_SMART_DATA, ATA_SMART_THRESHOLDS, ATA_DEVICE_STATISTICS,
                                    ATA_SELF_TEST_LOG, ATA_EXTENDED_SELF_TEST_LOG}) {
        EXPECT_EQ(Take(drive, kind, Page(512, 0xFF)), "the page is of another kind") << kind;
        EXPECT_EQ(Take(drive, kind, Page(512)), "the page is of another kind") << kind;
    }
}

}  // namespace
}  // namespace PI::Test
