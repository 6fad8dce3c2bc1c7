// SPDX-License-Identifier: Apache-2.0
// Events as people write them.

#include <gtest/gtest.h>
#include <pi/exchange/event_json.h>
#include <pi/exchange/model_json.h>
#include <pi/vocabulary.h>
#include <pi/vocabulary_lists.h>
#include <velk/clock.h>

#include <string>

using namespace PI;

namespace {

CEvent Read(const std::string& text) {
    CEvent event;
    std::string reason = "left from before";
    EXPECT_TRUE(ReadEvent(text, event, reason)) << reason;
    EXPECT_EQ(reason, "");
    return event;
}

/// Why a text is refused; the event stays as it is.
std::string Refusal(const std::string& text) {
    CEvent event;
    event.m_Host = "before";
    std::string reason;
    EXPECT_FALSE(ReadEvent(text, event, reason)) << text;
    EXPECT_EQ(event.m_Host, "before");
    return reason;
}

}  // namespace

TEST(ReadEvent, TakesAllMembers) {
    const CEvent event = Read(R"({"id": 10057, "severity": 4, "timestamp": 18446744073709551615,
        "host": "h", "source": "s", "sequence": 4294967295,
        "placeholders": ["a", {"resource": -2147483648}, null, "", "e%2", {"resource": 2147483647}]})");
    EXPECT_EQ(event.m_EventID, 10057U);
    EXPECT_EQ(event.m_Severity, Severity::ERROR);
    EXPECT_EQ(event.m_TimeStamp, 18446744073709551615U);
    EXPECT_EQ(event.m_Host, "h");
    EXPECT_EQ(event.m_Source, "s");
    EXPECT_EQ(event.m_SequenceNumber, 4294967295U);
    EXPECT_EQ(event.m_PlaceHolder1, "T:a");
    EXPECT_EQ(event.m_PlaceHolder2, "I:-2147483648");
    EXPECT_EQ(event.m_PlaceHolder3, "");
    EXPECT_EQ(event.m_PlaceHolder4, "T:");
    EXPECT_EQ(event.m_PlaceHolder5, "T:e%2");
    EXPECT_EQ(event.m_PlaceHolder6, "I:2147483647");
    EXPECT_EQ(Read(R"({"timestamp": "18446744073709551615"})").m_TimeStamp, 18446744073709551615U);
}

TEST(ReadEvent, AnEmptyObjectIsTheUnknownEventOfThisMoment) {
    const std::uint64_t before = VELK::now();
    const CEvent event = Read(" {} ");
    EXPECT_EQ(event.m_EventID, 10000U);
    EXPECT_EQ(event.m_Severity, Severity::INFORMATION);
    EXPECT_EQ(event.m_Host + event.m_Source + event.m_PlaceHolder1, "");
    EXPECT_EQ(event.m_SequenceNumber, 0U);
    EXPECT_GE(event.m_TimeStamp, before);
    EXPECT_LE(event.m_TimeStamp, VELK::now());
}

TEST(ReadEvent, TakesEveryNameOfTheVocabularyInAnyCase) {
    for (const CVocabularyEntry entry : Vocabulary::EventIDs()) {
        const CEvent event = Read("{\"id\": \"" + std::string(entry.Name()) + "\"}");
        EXPECT_EQ(EventIDToString(static_cast<int>(event.m_EventID)), entry.Name());
    }
    EXPECT_EQ(Read(R"({"id": "smart_Error"})").m_EventID, 10045U);
}

TEST(ReadEvent, TakesSeveritiesByNameAndNumber) {
    for (const _SEVERITY severity :
         {Severity::DEBUG, Severity::INFORMATION, Severity::WARNING, Severity::ERROR}) {
        EXPECT_EQ(Read("{\"severity\": \"" + SeverityToString(severity) + "\"}").m_Severity, severity);
        EXPECT_EQ(Read("{\"severity\": " + std::to_string(severity) + "}").m_Severity, severity);
    }
    EXPECT_EQ(Read(R"({"severity": "error"})").m_Severity, Severity::ERROR);
    EXPECT_EQ(static_cast<int>(Read(R"({"severity": -2147483648})").m_Severity), -2147483647 - 1);
}

TEST(ReadEvent, TakesTheRecordOfAnEvent) {
    CEvent event;
    event.m_EventID = 10057;
    event.m_Data = "data";
    event.SetPlaceHolder1("object");
    EXPECT_EQ(ToJson(Read(ToJson(event))), ToJson(event));
    EXPECT_EQ(Refusal(R"({"record": "event", "id": 5})"), "/version is missing");
    EXPECT_EQ(Refusal(ToJson(CDrive())), "/record is not \"event\"");
}

TEST(ReadEvent, WhatIsNoJsonIsRefusedWithTheByte) {
    EXPECT_EQ(Refusal(""), "byte 1: The document is empty.");
    EXPECT_EQ(Refusal(" \n"), "byte 3: The document is empty.");
    EXPECT_EQ(Refusal("{\"id\": }"), "byte 8: Invalid value.");
    EXPECT_EQ(Refusal("{} {}"), "byte 4: The document root must not be followed by other values.");
    EXPECT_EQ(Refusal(std::string("{}\0", 3)), "byte 3: A zero byte.");
    EXPECT_EQ(Refusal("[]"), "the document is a list where an object belongs");
    EXPECT_EQ(Refusal("5"), "the document is a number where an object belongs");
}

TEST(ReadEvent, DepthDoesNoHarm) {
    EXPECT_EQ(Refusal("{\"host\": " + std::string(1000000, '[') + std::string(1000000, ']') + "}"),
              "/host is a list where a text belongs");
}

TEST(ReadEvent, UnknownMembersAndThoseThereTwiceAreRefused) {
    EXPECT_EQ(Refusal(R"({"Id": 1})"), "the document has an unknown member \"Id\"");
    EXPECT_EQ(Refusal("{\"\xFF\": 1}"), "the document has an unknown member \"\xEF\xBF\xBD\"");
    EXPECT_EQ(Refusal(R"({"id": 1, "host": "", "id": 2})"), "the document holds a member twice: \"id\"");
}

TEST(ReadEvent, MembersOfTheWrongTypeOrOutOfRangeAreRefused) {
    const std::string range = " is no whole number from 0 to 4294967295";
    EXPECT_EQ(Refusal(R"({"id": -1})"), "/id" + range);
    EXPECT_EQ(Refusal(R"({"id": 4294967296})"), "/id" + range);
    EXPECT_EQ(Refusal(R"({"id": null})"), "/id is null where a number belongs");
    EXPECT_EQ(Refusal(R"({"id": "NONE_SUCH"})"), "/id is no name of an event");
    EXPECT_EQ(Refusal(R"({"id": ""})"), "/id is no name of an event");
    EXPECT_EQ(Refusal(R"({"id": "SMART_ERROR\u0000"})"), "/id is no name of an event");
    const std::string signedRange = " is no whole number from -2147483648 to 2147483647";
    EXPECT_EQ(Refusal(R"({"severity": 2147483648})"), "/severity" + signedRange);
    EXPECT_EQ(Refusal(R"({"severity": -2147483649})"), "/severity" + signedRange);
    EXPECT_EQ(Refusal(R"({"severity": "BAD"})"), "/severity is none of DEBUG, INFORMATION, WARNING, ERROR");
    EXPECT_EQ(Refusal(R"({"timestamp": "now"})"),
              "/timestamp is no whole number from 0 to 18446744073709551615");
    EXPECT_EQ(Refusal(R"({"sequence": 4294967296})"), "/sequence" + range);
    EXPECT_EQ(Refusal(R"({"sequence": "1"})"), "/sequence is a text where a number belongs");
    EXPECT_EQ(Refusal(R"({"host": 1})"), "/host is a number where a text belongs");
    EXPECT_EQ(Refusal(R"({"source": []})"), "/source is a list where a text belongs");
    EXPECT_EQ(Refusal(R"({"placeholders": "a"})"), "/placeholders is a text where a list belongs");
    const std::string placeholder = " where a text, null or {\"resource\": number} belongs";
    EXPECT_EQ(Refusal(R"({"placeholders": [1]})"), "/placeholders/0 is a number" + placeholder);
    EXPECT_EQ(Refusal(R"({"placeholders": [null, {"resource": 1, "a": 2}]})"),
              "/placeholders/1 is an object" + placeholder);
    EXPECT_EQ(Refusal(R"({"placeholders": [{"resource": 2147483648}]})"),
              "/placeholders/0/resource" + signedRange);
    EXPECT_EQ(Refusal(R"({"placeholders": [{"resource": "5"}]})"),
              "/placeholders/0/resource is a text where a number belongs");
}

TEST(ReadEvent, SixPlaceholdersAreTheMost) {
    EXPECT_EQ(Read(R"({"placeholders": ["1","2","3","4","5","6"]})").m_PlaceHolder6, "T:6");
    EXPECT_EQ(Refusal(R"({"placeholders": ["1","2","3","4","5","6","7"]})"),
              "/placeholders holds more than 6");
}
