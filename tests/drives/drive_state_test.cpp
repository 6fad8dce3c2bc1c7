// SPDX-License-Identifier: Apache-2.0

#include "drives/health_checks.h"

namespace PI::Test {
namespace {

using namespace HealthPage;
namespace Figure = HealthFigure;

struct Row {
    _HEALTH_FIGURE m_Figure;
    int m_Medium;
    std::int64_t m_Value;
    _DRIVE_STATE m_State;
};

TEST(DriveState, AnNvmeDriveWithoutWarningsFailsByAVerdictThatSaysSo) {
    for (const std::int64_t verdict : {0, 1}) {
        CDriveHealth drive(DriveProtocol::NVME, "NOBODY KNOWS IT");
        drive.TakeFigure(Figure::CRITICAL_WARNING, 0, FigureSource::NVME_LOG, 2);
        drive.TakeFigure(Figure::VERDICT, verdict);
        EXPECT_EQ(drive.GetState(), verdict == 0 ? DriveState::GOOD : DriveState::FAILED);
        EXPECT_EQ(drive.GetFigure(Figure::VERDICT).GetValue(), verdict);
    }
}

TEST(DriveState, AnNvmeDriveThatIsHotIsNotFailing) {
    CDriveHealth drive(DriveProtocol::NVME, "NOBODY KNOWS IT");
    drive.TakeFigure(Figure::CRITICAL_WARNING, 2, FigureSource::NVME_LOG, 2);
    drive.TakeFigure(Figure::VERDICT, 1);
    EXPECT_EQ(drive.GetState(), DriveState::LOOK);
}

TEST(DriveState, ThresholdsAreReachedWithTheirValue) {
    constexpr int HDD = PropertyValue::HDD;
    constexpr int SSD = PropertyValue::SSD;
    constexpr int UNSET = 0;
    const Row rows[] = {
        {Figure::WEAR, SSD, 89, DriveState::GOOD},
        {Figure::WEAR, SSD, 90, DriveState::LOOK},
        {Figure::WEAR, SSD, 99, DriveState::LOOK},
        {Figure::WEAR, SSD, 100, DriveState::REPLACE},
        {Figure::WEAR, HDD, 100, DriveState::GOOD},
        {Figure::REALLOCATED_SECTORS, HDD, 0, DriveState::GOOD},
        {Figure::REALLOCATED_SECTORS, HDD, 1, DriveState::LOOK},
        {Figure::REALLOCATED_SECTORS, HDD, 99, DriveState::LOOK},
        {Figure::REALLOCATED_SECTORS, HDD, 100, DriveState::REPLACE},
        {Figure::REALLOCATED_SECTORS, UNSET, 100, DriveState::REPLACE},
        {Figure::REALLOCATED_SECTORS, SSD, 99, DriveState::GOOD},
        {Figure::REALLOCATED_SECTORS, SSD, 100, DriveState::LOOK},
        {Figure::REALLOCATED_SECTORS, SSD, 100000, DriveState::LOOK},
        {Figure::PENDING_SECTORS, HDD, 0, DriveState::GOOD},
        {Figure::PENDING_SECTORS, HDD, 1, DriveState::LOOK},
        {Figure::PENDING_SECTORS, SSD, 100, DriveState::REPLACE},
        {Figure::UNCORRECTABLE_SECTORS, HDD, 1, DriveState::LOOK},
        {Figure::UNCORRECTABLE_SECTORS, HDD, 100, DriveState::REPLACE},
        {Figure::MEDIA_ERRORS, SSD, 1, DriveState::LOOK},
        {Figure::MEDIA_ERRORS, SSD, 999, DriveState::LOOK},
        {Figure::MEDIA_ERRORS, SSD, 1000, DriveState::REPLACE},
        {Figure::FAILED_SELF_TESTS, HDD, 0, DriveState::GOOD},
        {Figure::FAILED_SELF_TESTS, HDD, 1, DriveState::LOOK},
        {Figure::FAILED_SELF_TESTS, HDD, 2, DriveState::REPLACE},
        {Figure::ATTRIBUTES_ONCE_BELOW, HDD, 1, DriveState::GOOD},  // only the attributes themselves count
        {Figure::LOGGED_ERRORS, HDD, 100000, DriveState::GOOD},
        {Figure::INTERFACE_ERRORS, HDD, 100000, DriveState::GOOD},
        {Figure::POWER_ON_HOURS, HDD, 200000, DriveState::GOOD},
        {Figure::SPARE, SSD, 10, DriveState::GOOD},
        {Figure::SPARE, SSD, 9, DriveState::LOOK},
    };
    for (const Row& row : rows) {
        CDriveHealth drive(DriveProtocol::ATA, "NOBODY KNOWS IT");
        drive.SetMedium(row.m_Medium);
        drive.TakeVerdict(true);
        drive.TakeFigure(row.m_Figure, row.m_Value);
        EXPECT_EQ(drive.GetState(), row.m_State)
            << HealthFigureToString(row.m_Figure) << " " << row.m_Value << ": " << Reasons(drive);
    }
}

TEST(DriveState, ADiskFullOfBadSectorsIsReplacedWhateverItsVerdict) {
    CDriveHealth drive = Disk();
    drive.TakeVerdict(true);
    Take(drive, ATA_SMART_DATA, SmartData({{5, 50, 1040}, {197, 100, 878}, {198, 100, 1272}}));
    EXPECT_EQ(Reasons(drive),
              "replace it: 878 pending sectors; replace it: 1272 uncorrectable sectors; "
              "replace it: 1040 reallocated sectors");
}

TEST(DriveState, ASingleReallocatedSectorIsLookedAt) {
    CDriveHealth drive = Disk();
    drive.TakeVerdict(true);
    Take(drive, ATA_SMART_DATA, SmartData({{5, 100, 1}}));
    EXPECT_EQ(Reasons(drive), "look at it: 1 reallocated sector");
}

TEST(DriveState, TheWeightiestReasonComesFirst) {
    CDriveHealth drive = Disk();
    drive.TakeVerdict(false);
    drive.TakeFigure(Figure::PENDING_SECTORS, 1);
    drive.TakeFigure(Figure::UNCORRECTABLE_SECTORS, 100);
    EXPECT_EQ(Reasons(drive),
              "failed: the drive says that it is failing; replace it: 100 uncorrectable sectors; "
              "look at it: 1 pending sector");
    EXPECT_EQ(drive.GetReasons()[1].GetFigure().GetFigure(), Figure::UNCORRECTABLE_SECTORS);
}

TEST(DriveState, WithoutAVerdictThresholdsTell) {
    CDriveHealth drive = Disk();
    Take(drive, ATA_SMART_DATA, SmartData({{1, 100, 0}}));
    EXPECT_EQ(drive.GetState(), DriveState::UNKNOWN);
    Take(drive, ATA_SMART_THRESHOLDS, SmartThresholds({{1, 10}}));
    EXPECT_EQ(drive.GetState(), DriveState::GOOD);
    drive.TakeFigure(Figure::PENDING_SECTORS, 1);
    EXPECT_EQ(drive.GetState(), DriveState::LOOK);
}

TEST(DriveState, AnAttributeThatAnnouncesAFailureWeighsMore) {
    for (const auto& [flags, state, text] :
         {std::tuple{0x32, DriveState::LOOK, "look at it: 1 SMART attribute below its threshold"},
          std::tuple{0x33, DriveState::REPLACE,
                     "replace it: 1 SMART attribute below its threshold, which announces a failure "
                     "(SMART attribute 3)"}}) {
        CDriveHealth drive = Disk();
        drive.TakeVerdict(true);
        Take(drive, ATA_SMART_DATA, SmartData({{3, 5, 0, 5, static_cast<std::uint16_t>(flags)}}));
        Take(drive, ATA_SMART_THRESHOLDS, SmartThresholds({{3, 10}}));
        EXPECT_EQ(drive.GetState(), state);
        EXPECT_EQ(Reasons(drive), text);
    }
}

TEST(DriveState, ATemperatureBelowItsThresholdAnnouncesNoFailure) {
    for (const std::uint8_t id : {std::uint8_t{190}, std::uint8_t{194}}) {
        CDriveHealth drive = Disk();
        drive.TakeVerdict(true);
        Take(drive, ATA_SMART_DATA, SmartData({{id, 18, 18, 43, 0x23}}));
        Take(drive, ATA_SMART_THRESHOLDS, SmartThresholds({{id, 69}}));
        EXPECT_EQ(Reasons(drive), "look at it: 1 SMART attribute below its threshold");
    }
}

TEST(DriveState, AnAttributeOnceBelowItsThresholdIsLookedAt) {
    CDriveHealth drive = Disk();
    drive.TakeVerdict(true);
    Take(drive, ATA_SMART_DATA, SmartData({{3, 100, 0, 5}}));
    Take(drive, ATA_SMART_THRESHOLDS, SmartThresholds({{3, 10}}));
    EXPECT_EQ(Reasons(drive), "look at it: 1 SMART attribute once was below its threshold");
}

TEST(DriveState, SpareBelowItsThresholdIsUsedUp) {
    for (const auto& [spare, state] : {std::pair{20, DriveState::GOOD}, std::pair{19, DriveState::REPLACE}}) {
        NVMeHealth health;
        health.m_Spare = static_cast<std::uint8_t>(spare);
        health.m_SpareThreshold = 20;
        CDriveHealth drive(DriveProtocol::NVME, "");
        Take(drive, NVME_HEALTH_LOG, HealthLog(health));
        EXPECT_EQ(drive.GetState(), state) << spare;
    }
}

TEST(DriveState, ATemperatureAboveItsLimitIsLookedAt) {
    for (const auto& [celsius, reasons] :
         {std::pair{70, "good: nothing that was read speaks against it"},
          std::pair{71, "look at it: above its temperature limit: 71 degrees Celsius"},
          std::pair{80, "look at it: above its temperature limit: 80 degrees Celsius"},
          std::pair{81, "look at it: above its critical temperature: 81 degrees Celsius"}}) {
        NVMeHealth health;
        health.m_Kelvin = static_cast<std::uint16_t>(celsius + 273);
        CDriveHealth drive(DriveProtocol::NVME, "");
        Take(drive, NVME_HEALTH_LOG, HealthLog(health));
        Take(drive, NVME_IDENTIFY_CONTROLLER, IdentifyController(343, 353, 0));
        EXPECT_EQ(Reasons(drive), reasons);
    }
}

TEST(DriveState, WhatIsDoubtfulIsLookedAtAndNoMore) {
    CDriveHealth drive = SolidState();
    drive.TakeVerdict(true);
    drive.TakeStatistic(7, 8, 255);
    EXPECT_EQ(
        Reasons(drive),
        "look at it: perhaps 255 percent worn: device statistics page 7 says 255 percent, which stands for "
        "more than 254 or for nothing");
}

TEST(DriveState, ASourceThatSaysWornOutIsLookedAtAlsoWhereAnotherSaysNew) {
    CDriveHealth drive(DriveProtocol::ATA, "SAMSUNG MZ7LM480HCHP-00005");
    drive.SetMedium(PropertyValue::SSD);
    drive.TakeVerdict(true);
    drive.TakeAttribute(177, "", 0x32, 1, 1, -1, 3000);
    drive.TakeStatistic(7, 8, 3);
    EXPECT_EQ(Reasons(drive),
              "look at it: perhaps 3 percent worn: device statistics page 7 says 3 percent, SMART attribute "
              "177 says "
              "99 percent");
}

TEST(DriveState, AWarningOfASCSIDriveIsLookedAt) {
    CDriveHealth drive(DriveProtocol::SCSI, "");
    Take(drive, SCSI_LOG_PAGE, LogPage(0x2F, 0, {{0, {0x0B, 1, 0xFF, 0}}}));
    EXPECT_EQ(Reasons(drive), "look at it: the drive warns");
    Take(drive, SCSI_LOG_PAGE, LogPage(0x2F, 0, {{0, {0x5D, 0, 0xFF, 0}}}));
    EXPECT_EQ(Reasons(drive), "failed: the drive says that it is failing");
}

TEST(DriveState, ADriveOfUnknownMediumIsSolidStateWhenListedOrWorn) {
    const auto state = [](const char* model, std::uint8_t attribute) {
        CDriveHealth drive(DriveProtocol::ATA, model);
        Take(drive, ATA_SMART_DATA, SmartData({{5, 100, 1}, {attribute, 90, 0}}));
        drive.TakeVerdict(true);
        return drive.GetState();
    };
    EXPECT_EQ(state("NOBODY KNOWS IT", 9), DriveState::LOOK);
    EXPECT_EQ(state("INTEL SSDSC2BB480G7", 9), DriveState::GOOD);     // listed
    EXPECT_EQ(state("SAMSUNG MZ7XX999XXXX", 177), DriveState::GOOD);  // tells its wear
}

}  // namespace
}  // namespace PI::Test
