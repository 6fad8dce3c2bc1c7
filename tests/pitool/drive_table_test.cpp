// SPDX-License-Identifier: Apache-2.0

#include "drive_table.h"

#include "sample_reports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace pitool;
using namespace pitool::test;

TEST(DriveTable, ColumnsAreAsWideAsTheirContentsInCharacters) {
    const DriveRow plain = "a\nm\nSATA SSD\n1.00 gibibytes\n5 hours\nOK\n1 percent\n9 hours\n";
    const DriveRow accented =
        "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9"
        "\nm\nk\nc\np\ns\nw\nx\n";
    EXPECT_EQ(
        DriveTable({&plain, &accented}),
        "DRIVE   MODEL  KIND      CAPACITY        POWER-ON  STATE  WEAR (COUNTS UP)  LIFETIME (COUNTS DOWN)\n"
        "a       m      SATA SSD  1.00 gibibytes  5 hours   OK     1 percent         9 hours\n"
        "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9  m      k         c               p         s      "
        "w                 x\n");
}

TEST(MakeDriveRow, ShowsUnknownAndNotApplicableFigures) {
    Json disk = AtaReport("SAMPLE\x01");
    const DriveRow expected =
        "sample.json\nSAMPLE?\nATA HDD\nunknown\nunknown\nunknown\n-\nnot applicable (rotating disk)\n";
    EXPECT_EQ(MakeDriveRow(Assess(disk)), expected);
}

TEST(MakeDriveRow, TellsWhatALifetimeGoesBy) {
    Json json = SolidStateReport("INTEL SSDSC2BB480G7", 10000, {Attribute(233, 50, 0)});
    EXPECT_THAT(MakeDriveRow(Assess(json)), testing::EndsWith("\n11914 hours, wear indicator\n"));
}
