// SPDX-License-Identifier: Apache-2.0

#include "drives/health_checks.h"

namespace PI::Test {
namespace {

using namespace HealthPage;
namespace Figure = HealthFigure;

CDriveHealth NVMe() {
    return {DriveProtocol::NVME, "A MODEL OF A DRIVE"};
}

TEST(NVMeHealthLog, EveryFigureIsReadFromItsPlace) {
    CDriveHealth drive = NVMe();
    EXPECT_EQ(Take(drive, NVME_HEALTH_LOG, HealthLog()), "");
    EXPECT_EQ(Told(drive, Figure::WEAR), "known 3: NVMe log 02h");
    EXPECT_EQ(drive.GetFigure(Figure::SPARE).GetValue(), 100);
    EXPECT_EQ(drive.GetFigure(Figure::SPARE_THRESHOLD).GetValue(), 10);
    EXPECT_EQ(drive.GetFigure(Figure::TEMPERATURE).GetValue(), 35);
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_READ).GetValue(), 20 * 512000);
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_WRITTEN).GetValue(), 10 * 512000);
    EXPECT_EQ(drive.GetFigure(Figure::POWER_CYCLES).GetValue(), 12);
    EXPECT_EQ(drive.GetFigure(Figure::POWER_ON_HOURS).GetValue(), 4321);
    EXPECT_EQ(drive.GetFigure(Figure::UNSAFE_SHUTDOWNS).GetValue(), 4);
    EXPECT_EQ(drive.GetFigure(Figure::MEDIA_ERRORS).GetValue(), 0);
    EXPECT_EQ(drive.GetFigure(Figure::LOGGED_ERRORS).GetValue(), 7);
    EXPECT_EQ(Told(drive, Figure::VERDICT), "known 0: NVMe log 02h");
}

TEST(NVMeHealthLog, WhatTheDriveDoesNotCountIsUnknown) {
    NVMeHealth health;
    health.m_Kelvin = 0;
    health.m_UnitsRead = health.m_UnitsWritten = 0;
    CDriveHealth drive = NVMe();
    Take(drive, NVME_HEALTH_LOG, HealthLog(health));
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "unknown: not reported");
    EXPECT_EQ(Told(drive, Figure::BYTES_READ), "unknown: not reported");
    EXPECT_EQ(Told(drive, Figure::BYTES_WRITTEN), "unknown: not reported");
}

TEST(NVMeHealthLog, CountersBeyondAnyDriveAreUnknown) {
    Page page = HealthLog();
    PutLittle(page, 48 + 8, 1, 8);      // 2^64 units
    PutLittle(page, 128, 200'001, 16);  // hours
    CDriveHealth drive = NVMe();
    Take(drive, NVME_HEALTH_LOG, page);
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_WRITTEN).GetState(), FigureState::UNKNOWN);
    EXPECT_EQ(Told(drive, Figure::POWER_ON_HOURS),
              "unknown: NVMe log 02h says 200001 hours, which cannot be");
    PutLittle(page, 128, 200'000, 16);
    Take(drive, NVME_HEALTH_LOG, page);
    EXPECT_EQ(drive.GetFigure(Figure::POWER_ON_HOURS).GetValue(), 200'000);
}

TEST(NVMeHealthLog, ReservedPercentagesOfSpareAreUnknown) {
    NVMeHealth health;
    health.m_Spare = 101;
    health.m_SpareThreshold = 100;
    CDriveHealth drive = NVMe();
    Take(drive, NVME_HEALTH_LOG, HealthLog(health));
    EXPECT_EQ(Told(drive, Figure::SPARE), "unknown: NVMe log 02h says 101 percent, which cannot be");
    EXPECT_EQ(drive.GetFigure(Figure::SPARE_THRESHOLD).GetValue(), 100);
}

TEST(NVMeHealthLog, ThresholdOfSpareMayBeZero) {
    NVMeHealth health;
    health.m_Spare = 1;
    health.m_SpareThreshold = 0;
    CDriveHealth drive = NVMe();
    Take(drive, NVME_HEALTH_LOG, HealthLog(health));
    EXPECT_EQ(drive.GetFigure(Figure::SPARE_THRESHOLD).GetState(), PI::FigureState::KNOWN);
    EXPECT_EQ(drive.GetFigure(Figure::SPARE_THRESHOLD).GetValue(), 0);
    EXPECT_EQ(drive.GetFigure(Figure::SPARE).GetValue(), 1);
}

TEST(NVMeHealthLog, EachWarningBitHasItsMeaning) {
    struct {
        std::uint8_t m_Bits;
        std::int64_t m_Verdict;
        const char* m_Reasons;
    } const rows[] = {
        {0x00, 0, "good: nothing that was read speaks against it"},
        {0x01, 1, "replace it: the drive says that its spare blocks are below their threshold"},
        {0x02, 2, "look at it: the drive says that its temperature is out of bounds"},
        {0x04, 1, "replace it: the drive says that it is no longer reliable"},
        {0x08, 1, "failed: the drive no longer takes data: it is read-only"},
        {0x10, 1, "replace it: the drive says that data in its memory is lost when power fails"},
        {0x20, 2, "look at it: the drive says that its persistent memory region is unreliable"},
        {0x40, 2, "look at it: the drive gives a warning that is not known"},
        {0x0A, 1,
         "failed: the drive no longer takes data: it is read-only; look at it: the drive says that its "
         "temperature is out of bounds"},
    };
    for (const auto& row : rows) {
        NVMeHealth health;
        health.m_Warning = row.m_Bits;
        CDriveHealth drive = NVMe();
        Take(drive, NVME_HEALTH_LOG, HealthLog(health));
        EXPECT_EQ(drive.GetFigure(Figure::VERDICT).GetValue(), row.m_Verdict) << int{row.m_Bits};
        EXPECT_EQ(Reasons(drive), row.m_Reasons) << int{row.m_Bits};
    }
}

TEST(NVMeHealthLog, AVerdictDoesNotOutweighTheWarningItComesFrom) {
    NVMeHealth health;
    health.m_Warning = 0x02;
    CDriveHealth drive = NVMe();
    drive.TakeVerdict(false);  // as programs make it of any warning
    Take(drive, NVME_HEALTH_LOG, HealthLog(health));
    EXPECT_EQ(drive.GetState(), DriveState::LOOK);
}

TEST(NVMeHealthLog, IsRefusedWhenTooShort) {
    CDriveHealth drive = NVMe();
    EXPECT_EQ(Take(drive, NVME_HEALTH_LOG, Page(511)), "the page is too short");
    EXPECT_EQ(Told(drive, Figure::WEAR), "unknown: not reported");
}

TEST(NVMeIdentify, LimitsAreInKelvin) {
    CDriveHealth drive = NVMe();
    EXPECT_EQ(Take(drive, NVME_IDENTIFY_CONTROLLER, IdentifyController(343, 353, 0)), "");
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE_LIMIT), "known 70: NVMe identify controller data");
    EXPECT_EQ(drive.GetFigure(Figure::CRITICAL_TEMPERATURE).GetValue(), 80);
    EXPECT_EQ(Take(drive, NVME_IDENTIFY_CONTROLLER, IdentifyController(0, 0, 0)), "");
    EXPECT_FALSE(drive.GetFigure(Figure::TEMPERATURE_LIMIT).HasValue());
    EXPECT_FALSE(drive.GetFigure(Figure::CRITICAL_TEMPERATURE).HasValue());
}

TEST(NVMeIdentify, ItsCapacityServesWhereNoneIsSet) {
    NVMeHealth health;
    health.m_Used = 0;
    health.m_UnitsWritten = 200'000;  // 102.4 GB
    CDriveHealth drive = NVMe();
    Take(drive, NVME_HEALTH_LOG, HealthLog(health));
    EXPECT_EQ(drive.GetFigure(Figure::WEAR).GetState(), FigureState::KNOWN);
    Take(drive, NVME_IDENTIFY_CONTROLLER, IdentifyController(343, 353, 1'000'000'000));
    EXPECT_EQ(drive.GetFigure(Figure::WEAR).GetState(), FigureState::DOUBTFUL);
    drive.SetCapacity(2'000'000'000);
    EXPECT_EQ(drive.GetFigure(Figure::WEAR).GetState(), FigureState::KNOWN);
}

TEST(NVMeIdentify, ACapacityOfMoreThan64BitsIsNone) {
    NVMeHealth health;
    health.m_Used = 0;
    health.m_UnitsWritten = 200'000;
    Page page = IdentifyController(343, 353, 1);
    page[280 + 8] = 1;
    CDriveHealth drive = NVMe();
    Take(drive, NVME_HEALTH_LOG, HealthLog(health));
    Take(drive, NVME_IDENTIFY_CONTROLLER, page);
    EXPECT_EQ(drive.GetFigure(Figure::WEAR).GetState(), FigureState::KNOWN);
    page[30] = 0x7F;  // within the model
    EXPECT_EQ(Take(drive, NVME_IDENTIFY_CONTROLLER, page), "the page is of another kind");
}

TEST(NVMeIdentify, OtherStructuresAreOfAnotherKind) {
    CDriveHealth drive = NVMe();
    EXPECT_EQ(Take(drive, NVME_IDENTIFY_CONTROLLER, Page(4096)), "the page is of another kind");
    EXPECT_EQ(Take(drive, NVME_IDENTIFY_CONTROLLER, Page(4095)), "the page is too short");
}

TEST(NVMeEnduranceGroup, CountsInGigabytesAndServesWhereTheHealthLogIsMissing) {
    Page page(512);
    page[3] = 90;
    page[4] = 5;
    page[5] = 12;
    PutLittle(page, 48, 7, 16);
    PutLittle(page, 64, 8, 16);
    PutLittle(page, 128, 2, 16);
    PutLittle(page, 144, 3, 16);
    CDriveHealth drive = NVMe();
    EXPECT_EQ(Take(drive, NVME_ENDURANCE_GROUP_LOG, page), "");
    EXPECT_EQ(Told(drive, Figure::WEAR), "known 12: NVMe log 09h");
    EXPECT_EQ(drive.GetFigure(Figure::SPARE).GetValue(), 90);
    EXPECT_EQ(drive.GetFigure(Figure::SPARE_THRESHOLD).GetValue(), 5);
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_READ).GetValue(), 7'000'000'000);
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_WRITTEN).GetValue(), 8'000'000'000);
    EXPECT_EQ(drive.GetFigure(Figure::MEDIA_ERRORS).GetValue(), 2);
    EXPECT_EQ(drive.GetFigure(Figure::LOGGED_ERRORS).GetValue(), 3);
    Take(drive, NVME_HEALTH_LOG, HealthLog());
    EXPECT_EQ(Told(drive, Figure::WEAR), "known 3: NVMe log 02h");
    EXPECT_EQ(Take(drive, NVME_ENDURANCE_GROUP_LOG, Page(512)), "the page is of another kind");
    EXPECT_EQ(Take(drive, NVME_ENDURANCE_GROUP_LOG, Page(511)), "the page is too short");
}

TEST(NVMeEnduranceGroup, ItsWarningCountsWhereTheHealthLogIsMissing) {
    Page page(512);
    page[0] = 0x08;
    page[5] = 12;
    CDriveHealth drive = NVMe();
    Take(drive, NVME_ENDURANCE_GROUP_LOG, page);
    EXPECT_EQ(drive.GetState(), DriveState::FAILED);
    Take(drive, NVME_HEALTH_LOG, HealthLog());
    EXPECT_EQ(drive.GetFigure(Figure::CRITICAL_WARNING).GetValue(), 0);
}

TEST(NVMeSelfTestLog, FailuresAreThreeOfTheResults) {
    struct {
        std::vector<std::uint8_t> m_Results;  ///< newest first: code in the high nibble
        std::int64_t m_Failed;
    } const rows[] = {
        {{}, 0},
        {{0x10}, 0},
        {{0x14}, 0},
        {{0x15}, 1},
        {{0x16}, 1},
        {{0x17}, 1},
        {{0x18}, 0},
        {{0x10, 0x25}, 1},
        {{0x20, 0x15}, 0},
        {{0x15, 0x25}, 2},
        {{0x15, 0x0F, 0x15}, 1},
        {{0x15, 0x05, 0x15}, 1},
        {std::vector<std::uint8_t>(20, 0x15), 20},
    };
    for (const auto& row : rows) {
        Page page(564);
        for (std::size_t i = 0; i < 20; ++i) {
            page[4 + 28 * i] = i < row.m_Results.size() ? row.m_Results[i] : 0x0F;
        }
        CDriveHealth drive = NVMe();
        EXPECT_EQ(Take(drive, NVME_SELF_TEST_LOG, page), "");
        EXPECT_EQ(Told(drive, Figure::FAILED_SELF_TESTS),
                  "known " + std::to_string(row.m_Failed) + ": NVMe log 06h");
    }
    CDriveHealth drive = NVMe();
    EXPECT_EQ(Take(drive, NVME_SELF_TEST_LOG, Page(563)), "the page is too short");
}

TEST(NVMeHealthLog, OfADeadDriveIsOfAnotherKind) {
    CDriveHealth drive = NVMe();
    EXPECT_EQ(Take(drive, NVME_HEALTH_LOG, Page(512)), "the page is of another kind");
    EXPECT_EQ(Take(drive, NVME_HEALTH_LOG, Page(512, 0xFF)), "the page is of another kind");
    EXPECT_EQ(Take(drive, NVME_ENDURANCE_GROUP_LOG, Page(512, 0xFF)), "the page is of another kind");
}

TEST(NVMeHealthLog, SpareAndThresholdOfZeroAreNotReported) {
    NVMeHealth health;
    health.m_Spare = health.m_SpareThreshold = 0;
    CDriveHealth drive = NVMe();
    Take(drive, NVME_HEALTH_LOG, HealthLog(health));
    EXPECT_EQ(Told(drive, Figure::SPARE), "unknown: not reported");
    EXPECT_EQ(drive.GetState(), DriveState::GOOD);
    health.m_SpareThreshold = 1;
    Take(drive, NVME_HEALTH_LOG, HealthLog(health));
    EXPECT_EQ(Told(drive, Figure::SPARE), "known 0: NVMe log 02h");
    EXPECT_EQ(drive.GetState(), DriveState::REPLACE);
}

}  // namespace
}  // namespace PI::Test
