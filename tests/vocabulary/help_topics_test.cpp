// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include <climits>
#include <string>

#include "vocabulary/expected_names.h"

namespace {

constexpr const char* leftOver = "left over";

/// The path of a topic, and checks that the result code and the path agree.
std::string HelpPath(int topic) {
    std::string path = leftOver;
    const int result = PI::CPluginHelper::GetHelpPath(topic, path);
    EXPECT_EQ(result, path.empty() ? 20000 : 0) << topic;
    return path;
}

TEST(GetHelpPath, EveryTopicHasItsPageAndAnchor) {
    const auto expected = PI::Test::ExpectedNames("help_topics.tsv");
    ASSERT_EQ(expected.size(), 510u);

    for (const auto& [topic, path] : expected) {
        EXPECT_EQ(HelpPath(topic), path) << topic;
    }
}

TEST(GetHelpPath, NoOtherNumberIsATopic) {
    const auto expected = PI::Test::ExpectedNames("help_topics.tsv");

    for (int topic = 22000; topic <= 25000; ++topic) {
        const auto found = expected.find(topic);
        ASSERT_EQ(HelpPath(topic), found == expected.end() ? "" : found->second) << topic;
    }
    for (const int topic : {INT_MIN, -23001, -1, 0, 1, 20000, INT_MAX}) {
        EXPECT_EQ(HelpPath(topic), "") << topic;
    }
}

TEST(GetHelpPath, RunsEndWhereTheyEnd) {
    EXPECT_EQ(HelpPath(23000), "");
    EXPECT_EQ(HelpPath(23001), "properties.htm#ADAPTER_ABORT_MDC_ON_ERROR");
    EXPECT_EQ(HelpPath(23147), "properties.htm#ADAPTER_WRITE_THROTTLING");
    EXPECT_EQ(HelpPath(23148), "");
    EXPECT_EQ(HelpPath(23154), "");
    EXPECT_EQ(HelpPath(23155), "properties.htm#BATTERY_ADDITIONAL_STATUS");
    EXPECT_EQ(HelpPath(23252), "properties.htm#LOGICAL_DRIVE_WRITE_MODE");
    EXPECT_EQ(HelpPath(23253), "");
    EXPECT_EQ(HelpPath(23255), "");
    EXPECT_EQ(HelpPath(23256), "properties.htm#MAIL_LOG_LOGGING");
    EXPECT_EQ(HelpPath(23406), "properties.htm#TEMPERATURE_SENSOR_TEMPERATURE");
    EXPECT_EQ(HelpPath(23408), "actions.htm#OP_ADD_SERVER");
    EXPECT_EQ(HelpPath(23528), "actions.htm#OP_WRITE_TTY_LOG");
    EXPECT_EQ(HelpPath(23529), "");
}

TEST(GetHelpPath, TopicsMissingInARunAreUnknown) {
    for (const int unknown : {23277, 23293, 23407, 23441, 23470, 23507}) {
        EXPECT_NE(HelpPath(unknown - 1), "") << unknown;
        EXPECT_EQ(HelpPath(unknown), "") << unknown;
        EXPECT_NE(HelpPath(unknown + 1), "") << unknown;
    }
    EXPECT_NE(HelpPath(23310), "");
    EXPECT_EQ(HelpPath(23311), "");
    EXPECT_EQ(HelpPath(23312), "");
    EXPECT_NE(HelpPath(23313), "");
}

TEST(GetHelpPath, OneActionTopicIsThePageItself) {
    EXPECT_EQ(HelpPath(23472), "actions.htm");

    for (const auto& [topic, path] : PI::Test::ExpectedNames("help_topics.tsv")) {
        if (topic != 23472) {
            EXPECT_EQ(path.rfind(topic < 23408 ? "properties.htm#" : "actions.htm#OP_", 0), 0u) << topic;
            EXPECT_EQ(HelpPath(topic), path);
        }
    }
}

TEST(GetHelpPath, ReplacesWhatThePathHeld) {
    std::string path = leftOver;
    EXPECT_EQ(PI::CPluginHelper::GetHelpPath(23421, path), PI::ErrorCode::SUCCESS);
    EXPECT_EQ(path, "actions.htm#OP_CANCEL_REBUILD");
}

TEST(GetHelpPath, UnknownTopicEmptiesThePath) {
    std::string path = leftOver;
    EXPECT_EQ(PI::CPluginHelper::GetHelpPath(23148, path), PI::ErrorCode::GENERAL);
    EXPECT_EQ(path, "");
}

TEST(GetHelpPath, IconsAreNoTopics) {
    EXPECT_EQ(HelpPath(24000), "");
    EXPECT_EQ(HelpPath(24229), "");
}

}  // namespace
