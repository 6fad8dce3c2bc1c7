// SPDX-License-Identifier: Apache-2.0
// The command name, from outside.

#include "command_runner.h"

#include <pi/vocabulary_lists.h>

#include <algorithm>
#include <regex>

using namespace pitool::test;

namespace {

/// What the search prints, with one blank between the columns.
std::string Found(const std::string& query) {
    const Outcome run = RunPitool({"name", "--", query});
    EXPECT_EQ(run.m_ExitStatus, 0) << query;
    EXPECT_EQ(run.m_Errors, "");
    return std::regex_replace(run.m_Output, std::regex("  +"), " | ");
}

void ExpectNothing(const std::string& query, const std::string& reason) {
    ExpectRun(RunPitool({"name", "--", query}), 1, "", "pitool: \"" + query + "\": " + reason + "\n");
}

}  // namespace

TEST(NameCommand, PrintsNumberNameVocabularyAndConstant) {
    ExpectRun(RunPitool({"name", "30045", "FRAME_END"}), 0,
              "30045  RAID_LEVEL  property identifiers  PropertyID::RAID_LEVEL_2\n"
              "1      FRAME_END   property identifiers  PropertyID::FRAME_END\n",
              "");
}

TEST(NameCommand, ANumberIsNamedInEveryVocabularyThatHoldsIt) {
    EXPECT_EQ(Found("1"),
              "1 | UNDEFINED | property identifiers | PropertyID::UNDEFINED\n"
              "1 | UNDEFINED | property values | PropertyValue::UNDEFINED\n"
              "1 | UNDEFINED | operation identifiers | OperationID::UNDEFINED\n"
              "1 | UNDEFINED | event identifiers | EventID::UNDEFINED\n");
    EXPECT_EQ(Found("0"),
              "0 | SUCCESS | error codes | ErrorCode::SUCCESS\n"
              "0 | FRAME_START | property identifiers | PropertyID::FRAME_START\n"
              "0 | (no name) | property values | PropertyValue::EMPTY\n");
    EXPECT_EQ(Found("2147483647"),
              "2147483647 | UNSPECIFIED | property identifiers | PropertyID::UNSPECIFIED\n");
}

TEST(NameCommand, NumbersAreDecimalOrHexadecimal) {
    const std::string level = "30045 | RAID_LEVEL | property identifiers | PropertyID::RAID_LEVEL_2\n";
    for (const char* number : {"30045", "+30045", "030045", "0x755D", "0X755d"}) {
        EXPECT_EQ(Found(number), level) << number;
    }
    for (const char* number :
         {"-1", "12146", "2147483648", "99999999999999999999", "0x80000000", "0xFFFFFFFFFFFFFFFFF"}) {
        ExpectNothing(number, "no vocabulary has this number");
    }
}

TEST(NameCommand, AWordIsFoundWholeFirstThenInPartInAnyCase) {
    EXPECT_EQ(Found("reBuild_Failed"),
              "40038 | REBUILD_FAILED | property values | PropertyValue::REBUILD_FAILED\n"
              "10057 | REBUILD_FAILED | event identifiers | EventID::REBUILD_FAILED\n"
              "40182 | REBUILD_FAILED_SMART | property values | PropertyValue::REBUILD_FAILED_SMART\n"
              "10030 | DISK_REBUILD_FAILED | event identifiers | EventID::DISK_REBUILD_FAILED\n");
}

TEST(NameCommand, FindsConstantsAsWell) {
    EXPECT_EQ(Found("raid_level_2"),
              "30045 | RAID_LEVEL | property identifiers | PropertyID::RAID_LEVEL_2\n");
    EXPECT_EQ(Found("_512b"), "40046 | 512B | property values | PropertyValue::_512B\n");
    for (const char* qualified : {"PropertyValue::_512B", "PI::propertyvalue::_512b"}) {
        EXPECT_EQ(Found(qualified), "40046 | 512B | property values | PropertyValue::_512B\n");
    }
}

TEST(NameCommand, FindsIconsAndHelpTopics) {
    EXPECT_EQ(Found("adapter_ok_no.gif"), "24000 | adapter_ok_no.gif | icons\n");
    EXPECT_EQ(Found("properties.htm#ADAPTER_ACTIVITY"),
              "23002 | properties.htm#ADAPTER_ACTIVITY | help topics\n");
    EXPECT_EQ(Found("24000"), "24000 | adapter_ok_no.gif | icons\n");
}

TEST(NameCommand, WhatIsNowhereIsNamedAndTheRestIsPrinted) {
    ExpectRun(RunPitool({"name", "XYZZY\n", "10057", "99999999999"}), 1,
              "10057  REBUILD_FAILED  event identifiers  EventID::REBUILD_FAILED\n",
              "pitool: \"XYZZY?\": no name contains this word\n"
              "pitool: \"99999999999\": no vocabulary has this number\n");
    for (const char* word : {"0x", "-", "+-1", "1x", "0x5G"}) {
        ExpectNothing(word, "no name contains this word");
    }
    ExpectNothing("", "an empty word is in every name");
}

TEST(NameCommand, PrintsJson) {
    ExpectRun(RunPitool({"name", "--json", "10057", "adapter_ok_no", "\xFF"}), 1,
              "{\n"
              "  \"format\": \"pitool name\",\n"
              "  \"version\": 1,\n"
              "  \"names\": [\n"
              "    {\"query\":\"10057\",\"number\":10057,\"name\":\"REBUILD_FAILED\","
              "\"constant\":\"EventID::REBUILD_FAILED\",\"vocabulary\":\"event identifiers\","
              "\"match\":\"number\"},\n"
              "    {\"query\":\"adapter_ok_no\",\"number\":24000,\"name\":\"adapter_ok_no.gif\","
              "\"constant\":null,\"vocabulary\":\"icons\",\"match\":\"part\"}\n"
              "  ],\n"
              "  \"errors\": [\n"
              "    {\"query\":\"\\ufffd\",\"reason\":\"no name contains this word\"}\n"
              "  ]\n"
              "}\n",
              "pitool: \"?\": no name contains this word\n");
}

TEST(NameCommand, ListsEveryVocabulary) {
    const std::pair<const char*, PI::CVocabulary> vocabularies[] = {
        {"error codes", PI::Vocabulary::ErrorCodes()},
        {"Property-Identifiers", PI::Vocabulary::PropertyIDs()},
        {"property_v", PI::Vocabulary::PropertyValues()},
        {"operation", PI::Vocabulary::OperationIDs()},
        {"Event", PI::Vocabulary::EventIDs()},
        {"help", PI::Vocabulary::HelpTopics()},
        {"i", PI::Vocabulary::Icons()},
    };
    for (const auto& [title, rows] : vocabularies) {
        const Outcome run = RunPitool({"name", "--list", title});
        EXPECT_EQ(std::count(run.m_Output.begin(), run.m_Output.end(), '\n'), rows.Count()) << title;
        EXPECT_NE(run.m_Output.find(rows.At(rows.Count() - 1).Name()), std::string::npos) << title;
        EXPECT_EQ(run.m_ExitStatus, 0);
    }
    const std::string events = RunPitool({"name", "--list", "event"}).m_Output;
    EXPECT_TRUE(std::regex_search(events, std::regex("\n10057  REBUILD_FAILED +EventID::REBUILD_FAILED\n")));
    EXPECT_EQ(RunPitool({"name", "--list", "error codes", "--json"}).m_Output.substr(0, 163),
              "{\n"
              "  \"format\": \"pitool name --list\",\n"
              "  \"version\": 1,\n"
              "  \"vocabulary\": \"error codes\",\n"
              "  \"names\": [\n"
              "    {\"number\":0,\"name\":\"SUCCESS\",\"constant\":\"ErrorCode::SUCCESS\"},\n");
}

TEST(NameCommand, AListThatIsNoneOrSeveralIsRefused) {
    ExpectRun(
        RunPitool({"name", "--list", "bad"}), 2, "",
        "pitool: --list: \"bad\" is none of: error codes, property identifiers, property values, operation "
        "identifiers, event identifiers, help topics, icons\n");
    ExpectRun(RunPitool({"name", "--list", "property"}), 2, "",
              "pitool: --list: \"property\" may be any of: property identifiers, property values\n");
    ExpectRun(RunPitool({"name", "--list", "e"}), 2, "",
              "pitool: --list: \"e\" may be any of: error codes, event identifiers\n");
    EXPECT_EQ(RunPitool({"name", "--list", "codes"}).m_ExitStatus, 2);
    EXPECT_EQ(RunPitool({"name", "--list", "error codes and more"}).m_ExitStatus, 2);
}

TEST(NameCommand, BadUsageExitsWith2) {
    ExpectRun(RunPitool({"name"}), 2, "",
              "pitool: name needs a WORD, a NUMBER or --list; see pitool name --help\n");
    EXPECT_EQ(RunPitool({"name", "a", "--list", "error codes"}).m_ExitStatus, 2);
}
