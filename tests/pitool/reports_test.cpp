// SPDX-License-Identifier: Apache-2.0

#include "reports.h"

#include "drive_history.h"

#include <gtest/gtest.h>

using namespace pitool;
using namespace pitool::test;

namespace {

/// The hours of each report of each drive in the folder.
std::vector<std::vector<std::int64_t>> Hours(const Folder& folder) {
    std::vector<std::vector<std::int64_t>> drives;
    const DriveReports all = ReadDrives({folder.Path()});
    for (const DriveList& reports : all.m_Drives) {
        drives.emplace_back();
        for (const DriveSummary* report : reports) {
            drives.back().push_back(report->GetFigure(PI::HealthFigure::POWER_ON_HOURS).m_Value);
        }
    }
    return drives;
}

using Drives = std::vector<std::vector<std::int64_t>>;

Sample At(std::uint64_t hours, std::int64_t date = 0) {
    Sample sample;
    sample.m_Hours = hours;
    sample.m_Date = date;
    return sample;
}

}  // namespace

TEST(ReadDrives, ReportsWithTheSameModelAndSerialNumberAreOneDrive) {
    const Folder folder;
    Sample otherModel = At(3);
    otherModel.m_Model = "SAMPLE NVME 480";
    Sample otherSerial = At(4);
    otherSerial.m_Serial = "S3Z8NB0L";
    folder.Write("a.json", Report(At(1)) + Report(otherModel));
    folder.Write("b.json", Report(otherSerial) + Report(At(2)));
    EXPECT_EQ(Hours(folder), (Drives{{1, 2}, {3}, {4}}));
}

TEST(ReadDrives, ReportsAreInTheOrderOfTheirDatesOrElseOfTheirHours) {
    const Folder dated;
    dated.Write("a.json", Report(At(5, 300)) + Report(At(9, 100)) + Report(At(4, 300)));
    EXPECT_EQ(Hours(dated), (Drives{{9, 4, 5}}));
    const Folder mixed;
    mixed.Write("a.json", Report(At(5, 300)) + Report(At(9, 100)) + Report(At(7)));
    EXPECT_EQ(Hours(mixed), (Drives{{5, 7, 9}}));
}

TEST(ReadDrives, ADriveThatIsNotIdentifiedMatchesNothing) {
    const Folder folder;
    Sample sample = At(1);
    sample.m_Serial = "REDACTED";
    folder.Write("a.json", Report(sample) + Report(sample));
    EXPECT_EQ(Hours(folder), (Drives{{1}, {1}}));
}
