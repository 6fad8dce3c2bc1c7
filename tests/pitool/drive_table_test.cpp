#include "drive_table.h"

#include "sample_reports.h"

#include <gtest/gtest.h>

using namespace pitool;
using namespace pitool::test;

TEST(DriveTable, ColumnsAreAsWideAsTheirContentsInCharacters) {
    const DriveRow plain = {"a", "m", "SATA SSD", "1.00 gibibytes", "5 hours", "OK", "1 percent", "9 hours"};
    const DriveRow accented = {
        "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", "m", "k", "c", "p", "s", "w", "x"};
    EXPECT_EQ(
        DriveTable({&plain, &accented}),
        "DRIVE   MODEL  KIND      CAPACITY        POWER-ON  STATE  WEAR (COUNTS UP)  LIFETIME (COUNTS DOWN)\n"
        "a       m      SATA SSD  1.00 gibibytes  5 hours   OK     1 percent         9 hours\n"
        "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9  m      k         c               p         s      "
        "w                 x\n");
}

TEST(MakeDriveRow, ShowsUnknownAndNotApplicableFigures) {
    Json disk = AtaReport("SAMPLE\x01");
    const DriveRow expected = {"sample.json", "SAMPLE?", "ATA HDD", "unknown",
                               "unknown",     "unknown", "-",       "not applicable (rotating disk)"};
    EXPECT_EQ(MakeDriveRow(Assess(disk)), expected);
}

TEST(MakeDriveRow, TellsWhatALifetimeGoesBy) {
    Json json = SolidStateReport("INTEL SSDSC2BB480G7", 10000, {Attribute(233, 50, 0)});
    EXPECT_EQ(MakeDriveRow(Assess(json)).back(), "11914 hours, wear indicator");
}
