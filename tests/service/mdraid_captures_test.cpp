// SPDX-License-Identifier: Apache-2.0
// What must be read of lists of real machines and of those that others test with, where this machine has
// them.
#include "assessment.h"
#include "mdstat.h"
#include "progress.h"

#include <gtest/gtest.h>
#include <pi/etr.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "run_program.h"

namespace {

using namespace mdraid;
namespace fs = std::filesystem;

std::string Tenths(std::uint32_t perMille) {
    return std::to_string(perMille / 10) + "." + std::to_string(perMille % 10);
}

/// The columns of the table behind the first. Members that are OPERATIONAL have their role alone.
std::string Row(const Array& array, const ContainerUse& use) {
    const Assessment assessment = Assess(array, {}, use);
    const Sync sync = array.m_Sync.value_or(Sync());
    std::string row = array.m_Name;
    row += "\t" + (assessment.m_IsContainer ? "container" : PI::PropertyValueToString(assessment.m_Level));
    row += "\t" + PI::PropertyValueToString(assessment.m_Status);
    const bool isStarted = array.m_State != ArrayState::INACTIVE;
    row += "\t" + (isStarted ? PI::PropertyValueToString(assessment.m_Activity) : "");
    row += "\t" + (sync.m_PerMille.has_value() ? Tenths(*sync.m_PerMille) : "");
    row += "\t" + PI::CETR::RemainingTimeToString(Progress().Update(1, array, 0).value_or(0));
    row += "\t" + (isStarted && array.m_Slots.has_value() ? std::to_string(assessment.m_MissingDrives) : "");
    row += "\t" + (array.m_SizeKiB.has_value() ? std::to_string(*array.m_SizeKiB) : "");
    row += "\t" + std::string(array.m_ReadOnly ? "ro" : "rw") + "\t";
    for (std::size_t i = 0; i < array.m_Members.size(); ++i) {
        const MemberAssessment& member = assessment.m_Members[i];
        row += (i == 0 ? "" : ", ") + array.m_Members[i].m_Name + " ";
        row += member.m_Status == PI::PropertyValue::OPERATIONAL
                   ? member.m_Role
                   : PI::PropertyValueToString(member.m_Status) + " " + member.m_Role;
    }
    return row + "\n";
}

std::string Rows(const std::string& text) {
    const Mdstat mdstat = ParseMdstat(text);
    const ContainerUse use = FindContainerUse(mdstat.m_Arrays);
    std::string rows;
    for (const Array& array : mdstat.m_Arrays) {
        rows += Row(array, use);
    }
    for (const std::string& device : mdstat.m_UnusedDevices) {
        rows += device + "\tunused\n";
    }
    for (const MdstatError& error : mdstat.m_Errors) {
        rows += "line " + std::to_string(error.m_Line) + "\t" + error.m_Text + "\n";
    }
    return rows;
}

TEST(MdraidCaptures, EachIsReadAsTheTableSays) {
    const char* named = std::getenv("PI_CAPTURES");
    const fs::path folder = fs::path(named != nullptr ? named : PI_CAPTURES) / "mdstat";
    if (!fs::is_directory(folder)) {
        GTEST_SKIP() << "no captures in " << folder << "; PI_CAPTURES names another place";
    }
    std::map<std::string, std::string> expected;
    std::ifstream table(MDSTAT_CAPTURES);
    std::string line;
    std::getline(table, line);  // the column names
    while (std::getline(table, line)) {
        const std::size_t tab = line.find('\t');
        std::string& rows = expected[line.substr(0, tab)];
        rows += tab == std::string::npos ? "" : line.substr(tab + 1) + "\n";
    }
    EXPECT_EQ(expected.size(), 18U);
    for (const auto& [file, rows] : expected) {
        EXPECT_EQ(Rows(PI::Test::ReadFile(folder / file)), rows) << file;
    }
}

}  // namespace
