// SPDX-License-Identifier: Apache-2.0

#include "drive_table.h"

#include "sample_reports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace pitool;
using namespace pitool::test;

namespace {

const DriveRow PLAIN{"a\nm\nSATA SSD\n1.00 gibibytes\n5 hours\nOK\n1 percent\n9 hours\n"};

/// The table of a screen.
std::string Table(std::size_t columns, bool colors = false) {
    DriveRow failing{"b\nm\nk\nc\np\nPREDICTIVE_FAILURE\nw\nx\n"};
    failing.m_Styles[5] = Style::FAILING;
    failing.m_Styles[7] = Style::FAINT;
    Screen screen;
    screen.m_Columns = columns;
    screen.m_Colors = colors;
    return DriveTable({&PLAIN, &failing}, screen);
}

using Styles = std::array<Style, DRIVE_COLUMNS>;

}  // namespace

TEST(DriveTable, ColumnsAreAsWideAsTheirContentsInCharacters) {
    const DriveRow accented{
        "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9"
        "\nm\nk\nc\np\ns\nw\nx\n"};
    EXPECT_EQ(
        DriveTable({&PLAIN, &accented}),
        "DRIVE   MODEL  KIND      CAPACITY        POWER-ON  STATE  WEAR (COUNTS UP)  LIFETIME (COUNTS DOWN)\n"
        "a       m      SATA SSD  1.00 gibibytes  5 hours   OK     1 percent         9 hours\n"
        "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9  m      k         c               p         s      "
        "w                 x\n");
}

TEST(DriveTable, DividesCellsOnANarrowTerminal) {
    EXPECT_EQ(
        Table(100),
        "DRIVE  MODEL  KIND      CAPACITY        POWER-ON  STATE               WEAR (COUNTS     LIFETIME\n"
        "                                                                      UP)              (COUNTS "
        "DOWN)\n"
        "a      m      SATA SSD  1.00 gibibytes  5 hours   OK                  1 percent        9 hours\n"
        "b      m      k         c               p         PREDICTIVE_FAILURE  w                x\n");
}

TEST(DriveTable, HasABlankLineBetweenDrivesOfManyLines) {
    EXPECT_EQ(Table(70),
              "DRIVE  MODEL  KIND  CAPACITY   POWER-  STATE        WEAR      LIFETIME\n"
              "                               ON                   (COUNTS   (COUNTS\n"
              "                                                    UP)       DOWN)\n"
              "\n"
              "a      m      SATA  1.00       5       OK           1         9 hours\n"
              "              SSD   gibibytes  hours                percent\n"
              "\n"
              "b      m      k     c          p       PREDICTIVE_  w         x\n"
              "                                       FAILURE\n"
              "\n");
}

TEST(DriveTable, IsAListWhereColumnsDoNotFit) {
    EXPECT_EQ(Table(40),
              "a\n"
              "  MODEL                   m\n"
              "  KIND                    SATA SSD\n"
              "  CAPACITY                1.00 gibibytes\n"
              "  POWER-ON                5 hours\n"
              "  STATE                   OK\n"
              "  WEAR (COUNTS UP)        1 percent\n"
              "  LIFETIME (COUNTS DOWN)  9 hours\n"
              "\n"
              "b\n"
              "  MODEL                   m\n"
              "  KIND                    k\n"
              "  CAPACITY                c\n"
              "  POWER-ON                p\n"
              "  STATE                   PREDICTIVE_\n"
              "                          FAILURE\n"
              "  WEAR (COUNTS UP)        w\n"
              "  LIFETIME (COUNTS DOWN)  x\n"
              "\n");
}

TEST(DriveTable, ColorsHeadingsStatesAndWhatIsNotKnown) {
    EXPECT_EQ(
        Table(120, true),
        "\x1B[1mDRIVE\x1B[0m  \x1B[1mMODEL\x1B[0m  \x1B[1mKIND\x1B[0m      \x1B[1mCAPACITY\x1B[0m        "
        "\x1B[1mPOWER-ON\x1B[0m  \x1B[1mSTATE\x1B[0m               \x1B[1mWEAR (COUNTS UP)\x1B[0m  "
        "\x1B[1mLIFETIME (COUNTS DOWN)\x1B[0m\n"
        "a      m      SATA SSD  1.00 gibibytes  5 hours   OK                  1 percent         9 hours\n"
        "b      m      k         c               p         \x1B[1;31mPREDICTIVE_FAILURE\x1B[0m  w            "
        "     "
        "\x1B[2mx\x1B[0m\n");
}

TEST(MakeDriveRow, ShowsUnknownAndNotApplicableFigures) {
    Json disk = AtaReport("SAMPLE\x01");
    const DriveRow row = MakeDriveRow(Assess(disk));
    EXPECT_EQ(
        row.m_Text,
        "sample.json\nSAMPLE?\nATA HDD\nunknown\nunknown\nunknown\n-\nnot applicable (rotating disk)\n");
    EXPECT_EQ(row.m_Styles, (Styles{Style::PLAIN, Style::PLAIN, Style::PLAIN, Style::FAINT, Style::FAINT,
                                    Style::FAINT, Style::FAINT, Style::FAINT}));
}

TEST(MakeDriveRow, TellsWhatALifetimeGoesBy) {
    Json json = SolidStateReport("INTEL SSDSC2BB480G7", 10000, {Attribute(233, 50, 0)});
    EXPECT_THAT(MakeDriveRow(Assess(json)).m_Text, testing::EndsWith("\n11914 hours, wear indicator\n"));
}

TEST(MakeDriveRow, AFailedDriveAndAWornOneStandOut) {
    Json json = SolidStateReport("INTEL SSDSC2BB480G7", 10000, {Attribute(233, 10, 0)});
    Styles styles{};
    styles[3] = Style::FAINT;
    styles[6] = Style::WARNING;
    json["smart_status"]["passed"] = true;
    styles[5] = Style::WARNING;
    EXPECT_EQ(MakeDriveRow(Assess(json)).m_Styles, styles);
    json["smart_status"]["passed"] = false;
    styles[5] = Style::FAILING;
    EXPECT_EQ(MakeDriveRow(Assess(json)).m_Styles, styles);
    json["ata_smart_attributes"]["table"] = Json::array({Attribute(233, 11, 0)});
    styles[6] = Style::PLAIN;
    EXPECT_EQ(MakeDriveRow(Assess(json)).m_Styles, styles);
}

TEST(MakeDriveRow, MarksWhatIsDoubtful) {
    Json json = AtaReport("SAMPLE");
    json["device"]["protocol"] = "NVMe";
    json["nvme_smart_health_information_log"]["percentage_used"] = 255;
    EXPECT_THAT(MakeDriveRow(Assess(json)).m_Text, testing::HasSubstr("\nlook at it\n255 percent?\n"));
}
