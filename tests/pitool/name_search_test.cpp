// SPDX-License-Identifier: Apache-2.0

#include "name_search.h"
#include "name_text.h"

#include <pi/vocabulary.h>

#include <gtest/gtest.h>

#include <algorithm>

using namespace pitool;

namespace {

/// The findings as the command prints them.
std::string Search(const std::string& query) {
    std::vector<NameFinding> findings;
    std::string reason;
    EXPECT_TRUE(SearchNames(query, findings, reason)) << reason;
    return FindingsText(findings);
}

std::string Refusal(const std::string& query) {
    std::vector<NameFinding> findings;
    std::string reason;
    EXPECT_FALSE(SearchNames(query, findings, reason)) << query;
    EXPECT_TRUE(findings.empty());
    return reason;
}

}  // namespace

TEST(Vocabularies, HoldWhatTheirTitlesSay) {
    EXPECT_STREQ(FindVocabulary("error codes")->m_Entries.Find(20000)->Name(), "GENERAL");
    EXPECT_STREQ(FindVocabulary("property identifiers")->m_Entries.Find(30045)->Name(), "RAID_LEVEL");
    EXPECT_STREQ(FindVocabulary("property values")->m_Entries.Find(40007)->Name(), "RAID0");
    EXPECT_STREQ(FindVocabulary("operation identifiers")->m_Entries.Find(50008)->Name(), "ALARM_ON");
    EXPECT_STREQ(FindVocabulary("event identifiers")->m_Entries.Find(10055)->Name(), "REBUILD_STARTED");
}

TEST(FindVocabulary, TakesTheBeginningOfATitleInAnyCase) {
    EXPECT_STREQ(FindVocabulary("property identifiers")->m_Title, "property identifiers");
    EXPECT_STREQ(FindVocabulary("Property-Values")->m_Title, "property values");
    EXPECT_STREQ(FindVocabulary("property_v")->m_Title, "property values");
}

TEST(FindVocabulary, RefusesWhatIsNoneOrSeveral) {
    EXPECT_EQ(FindVocabulary(""), nullptr);
    EXPECT_EQ(FindVocabulary("property"), nullptr);
    EXPECT_EQ(FindVocabulary("e"), nullptr);
    EXPECT_EQ(FindVocabulary("codes"), nullptr);
    EXPECT_EQ(FindVocabulary("error codes and more"), nullptr);
}

TEST(FindEventName, TakesWholeNamesInAnyCase) {
    EXPECT_EQ(FindEventName("rebuild_started")->Number(), 10055);
    EXPECT_FALSE(FindEventName("REBUILD").has_value());
    EXPECT_FALSE(FindEventName("").has_value());
}

TEST(SearchNames, ANumberIsNamedInEveryVocabularyThatHoldsIt) {
    EXPECT_EQ(Search("30045"), "30045  RAID_LEVEL  property identifiers\n");
    EXPECT_EQ(Search("+30045"), "30045  RAID_LEVEL  property identifiers\n");
    EXPECT_EQ(Search("1"),
              "1  UNDEFINED  property identifiers\n"
              "1  UNDEFINED  property values\n"
              "1  UNDEFINED  operation identifiers\n"
              "1  UNDEFINED  event identifiers\n");
    EXPECT_EQ(Search("0"),
              "0  SUCCESS      error codes\n"
              "0  FRAME_START  property identifiers\n"
              "0  (no name)    property values\n");
    EXPECT_EQ(Search("2147483647"), "2147483647  UNSPECIFIED  property identifiers\n");
}

TEST(SearchNames, AWordIsFoundExactlyFirstThenByPartInAnyCase) {
    EXPECT_EQ(Search("reBuild_Failed"),
              "40038  REBUILD_FAILED        property values\n"
              "10057  REBUILD_FAILED        event identifiers\n"
              "40182  REBUILD_FAILED_SMART  property values\n"
              "10030  DISK_REBUILD_FAILED   event identifiers\n");
}

TEST(SearchNames, ANameThatSharesItsNumberIsFoundToo) {
    EXPECT_EQ(Search("FRAME_END"), "1  FRAME_END  property identifiers\n");
}

TEST(SearchNames, WhatIsNowhereIsRefused) {
    EXPECT_EQ(Refusal("-1"), "no vocabulary holds this number");
    EXPECT_EQ(Refusal("12146"), "no vocabulary holds this number");
    EXPECT_EQ(Refusal("2147483648"), "no vocabulary holds this number");
    EXPECT_EQ(Refusal("99999999999999999999"), "no vocabulary holds this number");
    EXPECT_EQ(Refusal("XYZZY"), "no name holds this word");
    EXPECT_EQ(Refusal("-"), "no name holds this word");
    EXPECT_EQ(Refusal(""), "an empty word is in every name");
}

TEST(VocabularyText, ListsEveryEntry) {
    const std::string text = VocabularyText(*FindVocabulary("error codes"));
    EXPECT_EQ(text.substr(0, 30), "0      SUCCESS\n20000  GENERAL\n");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 176);
}

TEST(FindingsJson, HoldsFindingsAndErrors) {
    std::vector<NameFinding> findings;
    std::string reason;
    SearchNames("30045", findings, reason);
    EXPECT_EQ(FindingsJson(findings, {{"\xFF", "no name holds this word"}}),
              "{\n"
              "  \"format\": \"pitool name\",\n"
              "  \"version\": 1,\n"
              "  \"names\": [\n"
              "    {\n"
              "      \"query\": \"30045\",\n"
              "      \"number\": 30045,\n"
              "      \"name\": \"RAID_LEVEL\",\n"
              "      \"vocabulary\": \"property identifiers\",\n"
              "      \"match\": \"number\"\n"
              "    }\n"
              "  ],\n"
              "  \"errors\": [\n"
              "    {\n"
              "      \"query\": \"\\ufffd\",\n"
              "      \"reason\": \"no name holds this word\"\n"
              "    }\n"
              "  ]\n"
              "}\n");
}
