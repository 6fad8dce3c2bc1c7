// SPDX-License-Identifier: Apache-2.0

#include "drives/health_checks.h"

namespace PI::Test {
namespace {

using HealthPage::SCSI_LOG_PAGE;
namespace Figure = HealthFigure;

CDriveHealth SAS() {
    return {DriveProtocol::SCSI, "A SAS DRIVE"};
}

TEST(SCSIErrorCounters, AmountsAndUncorrectedErrorsAreReadWhateverTheirLength) {
    CDriveHealth drive = SAS();
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x02, 0, {{5, Big(1000, 8)}, {6, Big(1, 1)}})), "");
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x03, 0, {{5, Big(2000, 12)}, {6, Big(20, 4)}})), "");
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x05, 0, {{5, Big(3000, 8)}, {6, Big(300, 8)}})), "");
    EXPECT_EQ(Told(drive, Figure::BYTES_WRITTEN), "known 1000: SCSI log page 02h");
    EXPECT_EQ(Told(drive, Figure::BYTES_READ), "known 2000: SCSI log page 03h");
    EXPECT_EQ(drive.GetFigure(Figure::MEDIA_ERRORS).GetValue(), 321);
}

TEST(SCSIErrorCounters, ACounterBeyondAnyDriveIsUnknown) {
    CDriveHealth drive = SAS();
    Page wide(9);
    wide[0] = 1;
    Take(drive, SCSI_LOG_PAGE, LogPage(0x02, 0, {{5, wide}, {6, Big(0, 4)}}));
    EXPECT_EQ(drive.GetFigure(Figure::BYTES_WRITTEN).GetState(), FigureState::UNKNOWN);
    EXPECT_EQ(drive.GetFigure(Figure::MEDIA_ERRORS).GetValue(), 0);
}

TEST(SCSITemperature, OfBothPagesIsRead) {
    CDriveHealth drive = SAS();
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x0D, 0, {{0, {0, 31}}, {1, {0, 65}}})), "");
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "known 31: SCSI log page 0Dh");
    EXPECT_EQ(drive.GetFigure(Figure::TEMPERATURE_LIMIT).GetValue(), 65);
    Take(drive, SCSI_LOG_PAGE, LogPage(0x0D, 0, {{0, {0, 0xFF}}, {1, {0, 0xFF}}}));
    EXPECT_FALSE(drive.GetFigure(Figure::TEMPERATURE).HasValue());
    EXPECT_FALSE(drive.GetFigure(Figure::TEMPERATURE_LIMIT).HasValue());
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x0D, 1, {{0, {0, 0xFB, 44, 0, 0, 0, 0, 0}}})), "");
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "known -5: SCSI log page 0Dh/01h");
    EXPECT_EQ(drive.GetFigure(Figure::HIGHEST_TEMPERATURE).GetValue(), 44);
    Take(drive, SCSI_LOG_PAGE, LogPage(0x0D, 1, {{0, {0, 0x80, 0x80, 0, 0, 0, 0, 0}}}));
    EXPECT_FALSE(drive.GetFigure(Figure::TEMPERATURE).HasValue());
    EXPECT_FALSE(drive.GetFigure(Figure::HIGHEST_TEMPERATURE).HasValue());
}

TEST(SCSITemperature, ASubpageIsKnownWithoutTheBitThatAnnouncesIt) {
    Page page = LogPage(0x0D, 1, {{0, {0, 25, 44, 0, 0, 0, 0, 0}}});
    page[0] = 0x0D;
    CDriveHealth drive = SAS();
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, page), "");
    EXPECT_EQ(drive.GetFigure(Figure::TEMPERATURE).GetValue(), 25);
}

TEST(SCSITemperature, OtherParametersAreNoTemperature) {
    CDriveHealth drive = SAS();
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x0D, 0, {{2, {0, 31}}})), "");
    EXPECT_EQ(
        Take(drive, SCSI_LOG_PAGE, LogPage(0x0D, 1, {{0x100, {0, 31, 44, 0, 0, 0, 0, 0}}, {0, {0, 31}}})),
        "");
    EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "unknown: not reported");
}

TEST(SCSIErrorCounters, OtherParametersAndWhatIsVerifiedCountNothing) {
    CDriveHealth drive = SAS();
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x02, 0, {{4, Big(9, 8)}, {0x8009, Big(9, 8)}})), "");
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x05, 0, {{5, Big(9, 8)}})), "");
    EXPECT_EQ(Told(drive, Figure::BYTES_WRITTEN), "unknown: not reported");
    EXPECT_EQ(Told(drive, Figure::BYTES_READ), "unknown: not reported");
    EXPECT_EQ(Told(drive, Figure::MEDIA_ERRORS), "unknown: not reported");
}

TEST(SCSISolidState, WearIsTheLastByteOfParameterOne) {
    CDriveHealth drive = SAS();
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x11, 0, {{1, {0, 0, 0, 140}}})), "");
    EXPECT_EQ(Told(drive, Figure::WEAR), "known 140: SCSI log page 11h");
    Take(drive, SCSI_LOG_PAGE, LogPage(0x11, 0, {{2, {0, 0, 0, 140}}}));
    EXPECT_EQ(Told(drive, Figure::WEAR), "unknown: not reported");
}

TEST(SCSIBackgroundScan, MinutesBecomeWholeHours) {
    CDriveHealth drive = SAS();
    Page status = Big(60 * 1000 + 59, 4);
    status.resize(12);
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x15, 0, {{0, status}})), "");
    EXPECT_EQ(Told(drive, Figure::POWER_ON_HOURS), "known 1000: SCSI log page 15h");
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x15, 1, {{0, Big(9, 4)}})), "");
    EXPECT_EQ(Told(drive, Figure::PENDING_SECTORS), "known 9: SCSI log page 15h/01h");
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x15, 1, {{0, Big(9, 3)}, {1, Big(9, 4)}})), "");
    EXPECT_EQ(Told(drive, Figure::PENDING_SECTORS), "unknown: not reported");
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x15, 0, {{1, status}})), "");
    EXPECT_EQ(Told(drive, Figure::POWER_ON_HOURS), "unknown: not reported");
}

TEST(SCSIInformationalExceptions, TheCodeIsTheVerdict) {
    struct {
        std::uint8_t m_Code;
        std::uint8_t m_Qualifier;
        std::int64_t m_Verdict;
    } const rows[] = {{0, 0, 0},       {0, 0x10, 0},    {0x5D, 0, 1}, {0x5D, 0x10, 1},
                      {0x5D, 0xFE, 1}, {0x5D, 0xFF, 0}, {0x0B, 1, 2}, {0x0C, 0, 0}};
    for (const auto& row : rows) {
        CDriveHealth drive = SAS();
        EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x2F, 0, {{0, {row.m_Code, row.m_Qualifier, 29, 0}}})),
                  "");
        EXPECT_EQ(Told(drive, Figure::VERDICT),
                  "known " + std::to_string(row.m_Verdict) + ": SCSI log page 2Fh");
        EXPECT_EQ(drive.GetFigure(Figure::TEMPERATURE).GetValue(), 29);
    }
    for (const std::uint8_t unknown : std::initializer_list<std::uint8_t>{0, 0xFF}) {
        CDriveHealth drive = SAS();
        Take(drive, SCSI_LOG_PAGE, LogPage(0x2F, 0, {{0, {0, 0, unknown, 0}}}));
        EXPECT_EQ(Told(drive, Figure::TEMPERATURE), "unknown: not reported");
    }
}

TEST(SCSIGrownDefects, AreReallocatedSectors) {
    CDriveHealth drive = SAS();
    drive.TakeGrownDefects(0);
    EXPECT_EQ(Told(drive, Figure::REALLOCATED_SECTORS), "known 0: grown defect list");
    drive.TakeGrownDefects(12);
    EXPECT_EQ(Told(drive, Figure::REALLOCATED_SECTORS), "known 12: grown defect list");
}

Page SelfTestResult(std::uint8_t code, std::uint8_t result) {
    Page value(16);
    value[0] = static_cast<std::uint8_t>(code << 5 | result);
    PutBig(value, 2, 77, 2);
    return value;
}

Page SelfTestPage(const std::vector<Page>& results) {
    std::vector<Parameter> parameters;
    for (std::uint16_t i = 1; i <= 20; ++i) {
        parameters.push_back({i, i <= results.size() ? results[i - 1U] : Page(16)});
    }
    return LogPage(0x10, 0, parameters);
}

TEST(SCSISelfTests, FailuresAreTheResultsFromThreeToSeven) {
    for (std::uint8_t result = 0; result < 16; ++result) {
        CDriveHealth drive = SAS();
        EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, SelfTestPage({SelfTestResult(1, result)})), "");
        EXPECT_EQ(drive.GetFigure(Figure::FAILED_SELF_TESTS).GetValue(), result >= 3 && result <= 7 ? 1 : 0)
            << int{result};
    }
}

TEST(SCSISelfTests, AnExtendedOneOfEitherKindMakesUpForAll) {
    for (const std::uint8_t code : std::initializer_list<std::uint8_t>{2, 6}) {
        CDriveHealth drive = SAS();
        Take(drive, SCSI_LOG_PAGE, SelfTestPage({SelfTestResult(code, 0), SelfTestResult(2, 7)}));
        EXPECT_EQ(drive.GetFigure(Figure::FAILED_SELF_TESTS).GetValue(), 0) << int{code};
    }
    CDriveHealth drive = SAS();
    Take(drive, SCSI_LOG_PAGE, SelfTestPage({SelfTestResult(1, 0), SelfTestResult(2, 7)}));
    EXPECT_EQ(Told(drive, Figure::FAILED_SELF_TESTS), "known 1: SCSI log page 10h");
}

TEST(SCSISelfTests, AFullLogIsCountedToItsEnd) {
    CDriveHealth drive = SAS();
    Take(drive, SCSI_LOG_PAGE, SelfTestPage(std::vector<Page>(20, SelfTestResult(1, 7))));
    EXPECT_EQ(drive.GetFigure(Figure::FAILED_SELF_TESTS).GetValue(), 20);
}

TEST(SCSISelfTests, HaveOneLength) {
    CDriveHealth drive = SAS();
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(0x10, 0, {{1, Page(16)}})),
              "the page contradicts its own lengths");
}

TEST(SCSILogPage, IsRefusedWhenItsLengthsDoNotFit) {
    const Page page = LogPage(0x02, 0, {{5, Big(1000, 8)}, {6, Big(2, 8)}});
    CDriveHealth drive = SAS();
    for (std::size_t length = 0; length < page.size(); ++length) {
        EXPECT_EQ(Take(drive, SCSI_LOG_PAGE,
                       Page(page.begin(), page.begin() + static_cast<std::ptrdiff_t>(length))),
                  "the page is too short")
            << length;
    }
    for (const std::uint8_t length :
         std::initializer_list<std::uint8_t>{9, 7, 255}) {  // of the last parameter, which is 8 bytes long
        Page wrong = page;
        wrong[19] = length;
        EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, wrong), "the page contradicts its own lengths") << int{length};
    }
    EXPECT_FALSE(drive.GetFigure(Figure::BYTES_WRITTEN).HasValue());
    EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, page), "");
}

TEST(SCSILogPage, OtherPagesAreOfAnotherKind) {
    CDriveHealth drive = SAS();
    for (const auto& [page, subpage] : {std::pair{0x00, 0},
                                        {0x04, 0},
                                        {0x06, 0},
                                        {0x0E, 0},
                                        {0x30, 0},
                                        {0x02, 1},
                                        {0x0D, 2},
                                        {0x15, 2},
                                        {0x11, 0xFF}}) {
        EXPECT_EQ(Take(drive, SCSI_LOG_PAGE,
                       LogPage(static_cast<std::uint8_t>(page), static_cast<std::uint8_t>(subpage), {})),
                  "the page is of another kind")
            << page << "/" << subpage;
    }
}

TEST(SCSILogPage, ShortParametersTellNothing) {
    CDriveHealth drive = SAS();
    for (const std::uint8_t page : std::initializer_list<std::uint8_t>{0x02, 0x0D, 0x11, 0x15, 0x2F}) {
        EXPECT_EQ(Take(drive, SCSI_LOG_PAGE, LogPage(page, 0, {{0, {}}, {1, {}}, {5, {}}, {6, {}}})), "");
    }
    for (const CHealthFigure& figure : drive.GetFigures()) {
        EXPECT_FALSE(figure.HasValue()) << HealthFigureToString(figure.GetFigure());
    }
}

TEST(SCSIInformationalExceptions, AVerdictFromSenseDataCountsBesideAPageWithoutOne) {
    CDriveHealth drive = SAS();
    Take(drive, SCSI_LOG_PAGE, LogPage(0x2F, 0, {{0, Page(4)}}));
    drive.TakeVerdict(false);
    EXPECT_EQ(Told(drive, Figure::VERDICT), "known 1: SMART verdict of the drive");
    EXPECT_EQ(drive.GetState(), DriveState::FAILED);
    Take(drive, SCSI_LOG_PAGE, LogPage(0x2F, 0, {{0, Page{0x5D, 0x10, 0, 0}}}));
    drive.TakeVerdict(true);
    EXPECT_EQ(Told(drive, Figure::VERDICT), "known 1: SCSI log page 2Fh");
}

}  // namespace
}  // namespace PI::Test
