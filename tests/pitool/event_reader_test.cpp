// SPDX-License-Identifier: Apache-2.0

#include "event_reader.h"

#include <velk/clock.h>

#include <gtest/gtest.h>

using namespace pitool;

namespace {

PI::CEvent Read(const std::string& text) {
    PI::CEvent event;
    std::string reason;
    EXPECT_TRUE(ReadEvent(text, event, reason)) << reason;
    return event;
}

std::string Refusal(const std::string& text) {
    PI::CEvent event;
    std::string reason;
    EXPECT_FALSE(ReadEvent(text, event, reason)) << text;
    return reason;
}

}  // namespace

TEST(ReadEvent, TakesAllMembers) {
    const PI::CEvent event = Read(R"({"id": 10057, "severity": 4, "timestamp": 18446744073709551615,
        "host": "h", "source": "s", "sequence": 4294967295,
        "placeholders": ["a", {"resource": -2147483648}, null, ""]})");
    EXPECT_EQ(event.m_EventID, 10057U);
    EXPECT_EQ(event.m_Severity, PI::Severity::ERROR);
    EXPECT_EQ(event.m_TimeStamp, 18446744073709551615U);
    EXPECT_EQ(event.m_Host, "h");
    EXPECT_EQ(event.m_Source, "s");
    EXPECT_EQ(event.m_SequenceNumber, 4294967295U);
    EXPECT_EQ(event.m_PlaceHolder1, "T:a");
    EXPECT_EQ(event.m_PlaceHolder2, "I:-2147483648");
    EXPECT_EQ(event.m_PlaceHolder3, "");
    EXPECT_EQ(event.m_PlaceHolder4, "T:");
}

TEST(ReadEvent, AnEmptyObjectIsTheUnknownEventOfThisMoment) {
    const std::uint64_t before = VELK::now();
    const PI::CEvent event = Read(" {} ");
    EXPECT_EQ(event.m_EventID, 10000U);
    EXPECT_GE(event.m_TimeStamp, before);
}

TEST(ReadEvent, TakesNamesInAnyCase) {
    const PI::CEvent event = Read(R"({"id": "smart_error", "severity": "error"})");
    EXPECT_EQ(event.m_EventID, 10045U);
    EXPECT_EQ(event.m_Severity, PI::Severity::ERROR);
    EXPECT_EQ(static_cast<int>(Read(R"({"severity": -2147483648})").m_Severity), -2147483647 - 1);
}

TEST(ReadEvent, WhatIsNoJsonIsRefused) {
    EXPECT_EQ(Refusal(""), "empty");
    EXPECT_EQ(Refusal(" \n"), "empty");
    EXPECT_EQ(Refusal("{\"id\": }"), "not JSON: wrong at byte 8");
    EXPECT_EQ(Refusal("{} {}"), "not JSON: wrong at byte 4");
    EXPECT_EQ(Refusal("{\"host\": \"\xFF\"}"), "not JSON: wrong at byte 11");
    EXPECT_EQ(Refusal("{\"id\": 1e999}"), "holds a number beyond all bounds");
    EXPECT_EQ(Refusal("[]"), "expected an object");
    EXPECT_EQ(Refusal("5"), "expected an object");
}

TEST(ReadEvent, NestingIsLimited) {
    EXPECT_EQ(Refusal(R"({"a": [{}]})"), "unknown member \"a\"");
    EXPECT_EQ(Refusal(R"({"a": [{"b": []}]})"), "nested deeper than 3 levels");
    EXPECT_EQ(Refusal(std::string(1000000, '[')), "nested deeper than 3 levels");
}

TEST(ReadEvent, UnknownMembersAreRefused) {
    EXPECT_EQ(Refusal(R"({"Id": 1})"), "unknown member \"Id\"");
    EXPECT_EQ(Refusal("{\"\\u001b[2J\": 1}"), "unknown member \"?[2J\"");
}

TEST(ReadEvent, MembersOfTheWrongTypeOrOutOfRangeAreRefused) {
    const std::string id = "id: expected the number or the name of an event";
    EXPECT_EQ(Refusal(R"({"id": -1})"), id);
    EXPECT_EQ(Refusal(R"({"id": 4294967296})"), id);
    EXPECT_EQ(Refusal(R"({"id": 1.0})"), id);
    EXPECT_EQ(Refusal(R"({"id": null})"), id);
    EXPECT_EQ(Refusal(R"({"id": "NONE_SUCH"})"), id);
    const std::string severity = "severity: expected DEBUG, INFORMATION, WARNING, ERROR or a number";
    EXPECT_EQ(Refusal(R"({"severity": 2147483648})"), severity);
    EXPECT_EQ(Refusal(R"({"severity": -2147483649})"), severity);
    EXPECT_EQ(Refusal(R"({"severity": "BAD"})"), severity);
    EXPECT_EQ(Refusal(R"({"timestamp": "1"})"), "timestamp: expected a number of milliseconds");
    EXPECT_EQ(Refusal(R"({"sequence": 4294967296})"), "sequence: expected an unsigned 32-bit number");
    EXPECT_EQ(Refusal(R"({"host": 1})"), "host: expected a text");
    EXPECT_EQ(Refusal(R"({"source": []})"), "source: expected a text");
    EXPECT_EQ(Refusal(R"({"placeholders": "a"})"), "placeholders: expected a list of at most 6");
    EXPECT_EQ(Refusal(R"({"placeholders": [1]})"),
              "placeholders[0]: expected a text, null, or an object with the number \"resource\"");
    EXPECT_EQ(Refusal(R"({"placeholders": [null, {"resource": 1, "a": 2}]})"),
              "placeholders[1]: expected a text, null, or an object with the number \"resource\"");
    EXPECT_EQ(Refusal(R"({"placeholders": [{"resource": 2147483648}]})"),
              "placeholders[0].resource: expected a signed 32-bit number");
}

TEST(ReadEvent, SixPlaceholdersAreTheMost) {
    EXPECT_EQ(Read(R"({"placeholders": ["1","2","3","4","5","6"]})").m_PlaceHolder6, "T:6");
    EXPECT_EQ(Refusal(R"({"placeholders": ["1","2","3","4","5","6","7"]})"),
              "placeholders: expected a list of at most 6");
}
