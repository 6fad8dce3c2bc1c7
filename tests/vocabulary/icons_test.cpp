// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include <climits>
#include <set>
#include <string>

#include "vocabulary/expected_names.h"

namespace {

constexpr const char* leftOver = "left over";

/// The file name of an icon, and checks that the result code and the name agree.
std::string IconPath(int icon) {
    std::string fileName = leftOver;
    const int result = PI::CPluginHelper::GetIconPath(icon, fileName);
    EXPECT_EQ(result, fileName.empty() ? 20000 : 0) << icon;
    return fileName;
}

TEST(GetIconPath, EveryIconHasItsFileName) {
    const auto expected = PI::Test::ExpectedNames("icons.tsv");
    ASSERT_EQ(expected.size(), 212u);

    for (const auto& [icon, fileName] : expected) {
        EXPECT_EQ(IconPath(icon), fileName) << icon;
    }
}

TEST(GetIconPath, NoOtherNumberIsAnIcon) {
    const auto expected = PI::Test::ExpectedNames("icons.tsv");

    for (int icon = 22000; icon <= 25000; ++icon) {
        const auto found = expected.find(icon);
        ASSERT_EQ(IconPath(icon), found == expected.end() ? "" : found->second) << icon;
    }
    for (const int icon : {INT_MIN, -24000, -1, 0, 1, 20000, INT_MAX}) {
        EXPECT_EQ(IconPath(icon), "") << icon;
    }
}

TEST(GetIconPath, RunsEndWhereTheyEnd) {
    EXPECT_EQ(IconPath(23999), "");
    EXPECT_EQ(IconPath(24000), "adapter_ok_no.gif");
    EXPECT_EQ(IconPath(24001), "adapter_fail_no.gif");
    EXPECT_EQ(IconPath(24139), "worm_ok_no.gif");
    EXPECT_EQ(IconPath(24140), "");
    EXPECT_EQ(IconPath(24145), "");
    EXPECT_EQ(IconPath(24146), "ssd_de_ok.gif");
    EXPECT_EQ(IconPath(24157), "ssd_de_wr_ps_aura.gif");
    EXPECT_EQ(IconPath(24158), "");
    EXPECT_EQ(IconPath(24163), "");
    EXPECT_EQ(IconPath(24164), "ssd_ho_ok.gif");
    EXPECT_EQ(IconPath(24212), "ssd_op_wr_ps_aura.gif");
    EXPECT_EQ(IconPath(24213), "");
    EXPECT_EQ(IconPath(24214), "");
    EXPECT_EQ(IconPath(24215), "ssd_rb_ok.gif");
    EXPECT_EQ(IconPath(24218), "ssd_rb_wr_aura.gif");
    EXPECT_EQ(IconPath(24219), "");
    EXPECT_EQ(IconPath(24222), "");
    EXPECT_EQ(IconPath(24223), "cachecade_ok.gif");
    EXPECT_EQ(IconPath(24229), "debug.gif");
    EXPECT_EQ(IconPath(24230), "");
}

TEST(GetIconPath, FileNamesAreBareLowerCaseGifsAndDiffer) {
    std::set<std::string> seen;
    for (const auto& row : PI::Test::ExpectedNames("icons.tsv")) {
        const std::string fileName = IconPath(row.first);
        ASSERT_GT(fileName.size(), 4u) << row.first;
        EXPECT_EQ(fileName.substr(fileName.size() - 4), ".gif") << row.first;
        EXPECT_EQ(fileName.find_first_not_of("abcdefghijklmnopqrstuvwxyz_."), std::string::npos) << row.first;
        EXPECT_TRUE(seen.insert(fileName).second) << fileName;
    }
}

TEST(GetIconPath, ReplacesWhatTheNameHeld) {
    std::string fileName = leftOver;
    EXPECT_EQ(PI::CPluginHelper::GetIconPath(24133, fileName), PI::ErrorCode::SUCCESS);
    EXPECT_EQ(fileName, "task.gif");
}

TEST(GetIconPath, UnknownIconEmptiesTheName) {
    std::string fileName = leftOver;
    EXPECT_EQ(PI::CPluginHelper::GetIconPath(24140, fileName), PI::ErrorCode::GENERAL);
    EXPECT_EQ(fileName, "");
}

TEST(GetIconPath, HelpTopicsAreNoIcons) {
    EXPECT_EQ(IconPath(23001), "");
    EXPECT_EQ(IconPath(23528), "");
}

}  // namespace
