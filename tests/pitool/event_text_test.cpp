// SPDX-License-Identifier: Apache-2.0

#include "event_text.h"
#include "event_json.h"

#include <gtest/gtest.h>

using namespace pitool;

TEST(EventText, IsALineForEachPairWithoutWhatSteersTerminals) {
    EXPECT_EQ(EventText({{"EventID", "1"}, {"Source", ""}, {"Description", "a\n\x1B[2J"}}),
              "EventID         1\n"
              "Source\n"
              "Description     a??[2J\n");
}

TEST(EventLine, HoldsSeverityIdentifierAndDescription) {
    EXPECT_EQ(EventLine({{"EventID", "10045"}, {"Severity", "INFORMATION"}, {"Description", "a\x1B b"}}),
              "  INFORMATION  10045  a? b\n");
}

TEST(EventJson, KeepsThePairsInOrderAndInAscii) {
    EXPECT_EQ(EventJson({{"EventID", "1"}, {"Description", "\xC3\xA4\n\xFF"}}),
              "{\n"
              "  \"format\": \"pitool event\",\n"
              "  \"version\": 1,\n"
              "  \"event\": {\n"
              "    \"EventID\": \"1\",\n"
              "    \"Description\": \"\\u00e4\\n\\ufffd\"\n"
              "  }\n"
              "}\n");
}
