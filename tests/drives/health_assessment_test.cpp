// SPDX-License-Identifier: Apache-2.0

#include <pi/health_assessment.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>

#include "drives/health_checks.h"

namespace PI::Test {
namespace {

namespace Figure = HealthFigure;

constexpr const char* RATED = "MZ7LH960HAJR-00005";         // 1366 TB
constexpr const char* CONTRADICTED = "MZ7KM120HAFD-00005";  // 7593 TB or 2626 TB

CDriveHealth Nvme(std::optional<std::int64_t> wear, std::optional<std::int64_t> hours,
                  const char* model = "NOBODY KNOWS IT") {
    CDriveHealth drive(DriveProtocol::NVME, model);
    if (wear) {
        drive.TakeFigure(Figure::WEAR, *wear, FigureSource::NVME_LOG, 2);
    }
    if (hours) {
        drive.TakeFigure(Figure::POWER_ON_HOURS, *hours, FigureSource::NVME_LOG, 2);
    }
    return drive;
}

/// The hours of the estimate; none where there is none.
std::optional<std::uint64_t> Lifetime(const CDriveHealth& drive) {
    const CRemainingLifetime lifetime = CHealthAssessment(drive).GetLifetime();
    return lifetime.IsKnown() ? std::optional(lifetime.GetHours()) : std::nullopt;
}

std::string LifetimeReason(const CDriveHealth& drive) {
    return CHealthAssessment(drive).GetLifetimeReason();
}

}  // namespace

TEST(HealthAssessment, SaysWhatTheHealthSaysOneByOne) {
    CDriveHealth worn(DriveProtocol::ATA, "SAMSUNG MZ7LM480HCHP-00005");
    worn.TakeVerdict(false);
    worn.TakeAttribute(177, "", 0x32, 1, 1, 5, 3000);
    worn.TakeStatistic(7, 8, 3);
    worn.TakeFigure(Figure::PENDING_SECTORS, 7);
    for (const CDriveHealth& drive : {CDriveHealth(DriveProtocol::UNKNOWN, ""), Disk(), worn, Nvme(255, 0)}) {
        const CHealthAssessment assessment(drive);
        const std::vector<CHealthFigure> figures = drive.GetFigures();
        ASSERT_EQ(assessment.GetFigures().size(), figures.size());
        for (const CHealthFigure& figure : figures) {
            const CHealthFigure single = drive.GetFigure(figure.GetFigure());
            for (const CHealthFigure& other :
                 {single, assessment.GetFigure(figure.GetFigure()),
                  assessment.GetFigures()[static_cast<std::size_t>(figure.GetFigure() - Figure::WEAR)]}) {
                EXPECT_EQ(other.GetFigure(), figure.GetFigure());
                EXPECT_EQ(other.GetState(), figure.GetState());
                EXPECT_EQ(other.GetValue(), figure.GetValue());
                EXPECT_EQ(other.GetText(), figure.GetText());
            }
        }
        EXPECT_EQ(assessment.GetState(), drive.GetState());
        const std::vector<CHealthReason> reasons = drive.GetReasons();
        ASSERT_EQ(assessment.GetReasons().size(), reasons.size());
        for (std::size_t i = 0; i < reasons.size(); ++i) {
            EXPECT_EQ(assessment.GetReasons()[i].GetText(), reasons[i].GetText());
        }
    }
}

TEST(HealthAssessment, AFigureThatIsNoneIsUnknown) {
    const CHealthAssessment assessment(Nvme(1, 1));
    for (const int number : {0, -1, 1000}) {
        EXPECT_FALSE(assessment.GetFigure(static_cast<_HEALTH_FIGURE>(number)).HasValue());
        EXPECT_EQ(assessment.GetFigure(static_cast<_HEALTH_FIGURE>(number)).GetFigure(), number);
    }
}

TEST(HealthAssessment, LaterChangesDoNotReachIt) {
    CDriveHealth drive = Nvme(5, 100);
    const CHealthAssessment assessment(drive);
    const CHealthAssessment copy = assessment;
    drive.TakeFigure(Figure::WEAR, 100, FigureSource::NVME_LOG, 2);
    EXPECT_EQ(drive.GetState(), DriveState::REPLACE);
    EXPECT_EQ(assessment.GetFigure(Figure::WEAR).GetValue(), 5);
    EXPECT_EQ(copy.GetFigure(Figure::WEAR).GetValue(), 5);
}

TEST(HealthAssessment, TellsTheMediumAndWhatItRestsOn) {
    const auto medium = [](const CDriveHealth& drive) {
        const CHealthAssessment assessment(drive);
        return std::pair{assessment.GetMedium(), assessment.GetMediumBasis()};
    };
    constexpr int SSD = PropertyValue::SSD;
    constexpr int HDD = PropertyValue::HDD;
    CDriveHealth drive(DriveProtocol::ATA, "NOBODY KNOWS IT");
    EXPECT_EQ(medium(drive), std::pair(HDD, MediumBasis::NOTHING));
    drive.TakeStatistic(7, 8, 0);
    EXPECT_EQ(medium(drive), std::pair(SSD, MediumBasis::WEAR));
    EXPECT_EQ(medium(CDriveHealth(DriveProtocol::ATA, "INTEL SSDSC2BB480G7")),
              std::pair(SSD, MediumBasis::LISTED));
    EXPECT_EQ(medium(CDriveHealth(DriveProtocol::NVME, "INTEL SSDPE2KX010T7")),
              std::pair(SSD, MediumBasis::PROTOCOL));
    drive.SetMedium(HDD);
    EXPECT_EQ(medium(drive), std::pair(HDD, MediumBasis::REPORTED));
    drive.SetMedium(SSD);
    EXPECT_EQ(medium(drive), std::pair(SSD, MediumBasis::REPORTED));
}

TEST(HealthAssessment, TheLifetimeGoesByWearElseByWhatWasWrittenOfTheRating) {
    constexpr std::int64_t TEBIBYTE = std::int64_t{1} << 40;
    EXPECT_EQ(Lifetime(Nvme(12, 10000)), 28569U) << "43829 * 88 / 100 - 10000";
    CDriveHealth rated = Nvme(std::nullopt, 20000, RATED);
    EXPECT_EQ(Lifetime(rated), std::nullopt);
    EXPECT_EQ(LifetimeReason(rated), "wear: not reported; bytes written: not reported");
    rated.TakeFigure(Figure::BYTES_WRITTEN, 800 * TEBIBYTE);
    EXPECT_EQ(Lifetime(rated), 14150U) << "(1366 - 800) * 20000 / 800";
    EXPECT_EQ(LifetimeReason(rated), "");
    rated.TakeFigure(Figure::WEAR, 255, FigureSource::NVME_LOG, 2);
    EXPECT_EQ(Lifetime(rated), 14150U) << "a doubtful wear counts as unknown";
    EXPECT_EQ(LifetimeReason(rated),
              "NVMe log 02h says 255 percent, which stands for more than 254 or for nothing");
}

TEST(HealthAssessment, ADoubtfulRatingMakesAnEstimateThatRestsOnItDoubtful) {
    for (const int wear : {0, 12}) {
        CDriveHealth drive = Nvme(wear, 20000, CONTRADICTED);
        drive.TakeFigure(Figure::BYTES_WRITTEN, std::int64_t{1} << 40);
        EXPECT_TRUE(Lifetime(drive));
        EXPECT_EQ(LifetimeReason(drive), wear == 0 ? "published ratings differ: 7593 TB and 2626 TB" : "");
    }
}

TEST(HealthAssessment, WithoutALifetimeTheReasonIsTold) {
    EXPECT_EQ(LifetimeReason(Nvme(std::nullopt, 1)), "wear: not reported; rating: not in the endurance list");
    EXPECT_EQ(LifetimeReason(Nvme(10, std::nullopt)), "power-on hours unknown: not reported");
    EXPECT_EQ(LifetimeReason(Nvme(0, 0)), "new drive");
    CDriveHealth disk = Disk();
    disk.TakeFigure(Figure::POWER_ON_HOURS, 100);
    EXPECT_EQ(LifetimeReason(disk), "rotating disk");
    for (const CDriveHealth& drive : {Nvme(std::nullopt, 1), Nvme(10, std::nullopt), Nvme(0, 0), disk}) {
        EXPECT_EQ(Lifetime(drive), std::nullopt);
    }
    EXPECT_EQ(Lifetime(Nvme(0, 1)), 43828U);
}

TEST(HealthAssessment, TheReadingHoldsWhatIsKnown) {
    CDriveHealth drive = Nvme(7, 20000);
    drive.TakeFigure(Figure::BYTES_WRITTEN, 512000);
    const CWearReading reading = CHealthAssessment(drive).GetReading();
    EXPECT_EQ(reading.GetWear(), 7U);
    EXPECT_EQ(reading.GetPowerOnHours(), 20000U);
    EXPECT_EQ(reading.GetBytesWritten(), 512000U);
    EXPECT_FALSE(reading.GetDate());
    const CWearReading doubtful = CHealthAssessment(Nvme(255, std::nullopt)).GetReading();
    EXPECT_FALSE(doubtful.GetWear());
    EXPECT_FALSE(doubtful.GetPowerOnHours());
    EXPECT_FALSE(doubtful.GetBytesWritten());
}

TEST(HealthReason, WeighsByItsStateThenByItsFigure) {
    const auto weight = [](_DRIVE_STATE state, _HEALTH_FIGURE figure) {
        return CHealthReason(state, CHealthFigure(figure)).GetWeight();
    };
    const std::int32_t falling[] = {
        weight(DriveState::FAILED, Figure::VERDICT),
        weight(DriveState::FAILED, Figure::CRITICAL_WARNING),
        weight(DriveState::REPLACE, Figure::PENDING_SECTORS),
        weight(DriveState::REPLACE, Figure::SPARE),
        weight(DriveState::REPLACE, Figure::WEAR),
        weight(DriveState::LOOK, Figure::VERDICT),
        weight(DriveState::LOOK, Figure::TEMPERATURE),
        weight(DriveState::LOOK, Figure::POWER_CYCLES),
        weight(DriveState::UNKNOWN, Figure::VERDICT),
        weight(DriveState::GOOD, Figure::VERDICT),
    };
    EXPECT_TRUE(std::is_sorted(std::begin(falling), std::end(falling), std::greater<>()));
    EXPECT_EQ(std::adjacent_find(std::begin(falling), std::end(falling)), std::end(falling));
}

TEST(HealthReason, SectorsComeBeforeWear) {
    CDriveHealth drive = Nvme(95, 20000);
    drive.TakeFigure(Figure::MEDIA_ERRORS, 3);
    EXPECT_EQ(Reasons(drive), "look at it: 3 uncorrected errors; look at it: 95 percent worn");
}

}  // namespace PI::Test
