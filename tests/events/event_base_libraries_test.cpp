// SPDX-License-Identifier: Apache-2.0

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pi/event.h>
#include <pi/plugin_helper.h>
#include <pi/text_table.h>
#include <pthread.h>
#include <velkx/language_support.h>
#include <velkx/system_time.h>

#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "support/cancelled_thread.h"

namespace {

constexpr unsigned int EVENT = 10056;
constexpr unsigned int THROWS_EXCEPTION = 601;
constexpr unsigned int THROWS_NUMBER = 602;
constexpr unsigned int THROWS_BAD_ALLOC = 603;
constexpr unsigned int LEAVES_THE_TEXT_ALONE = 604;
constexpr unsigned int LETS_THE_THREAD_BE_CANCELLED = 605;

constexpr unsigned int THROWING[] = {THROWS_EXCEPTION, THROWS_NUMBER, THROWS_BAD_ALLOC};

struct Call {
    unsigned int m_ID;
    const std::string* m_Text;
};

std::vector<Call> calls;
std::string description;

constexpr VELKX::_DATE EPOCH = {1970, 1, 1, 0, 0, 0};

VELKX::_DATE date = EPOCH;
std::vector<std::uint64_t> datedTimeStamps;

}  // namespace

// Both stand before those of the base library, as symbols of the program do.
void VELKX::CSystemTime::GetDate(std::uint64_t timeStamp, VELKX::_DATE& result) {
    datedTimeStamps.push_back(timeStamp);
    result = date;
}

void CLanguageSupport::ResolveString(unsigned int id, std::string& text) {
    calls.push_back({id, &text});
    if (id == LEAVES_THE_TEXT_ALONE) {
        return;
    }
    text = id == EVENT ? description : "resource " + std::to_string(id);
    switch (id) {
        case THROWS_EXCEPTION: throw std::runtime_error("no language");
        case THROWS_NUMBER: throw 42;
        case THROWS_BAD_ALLOC: throw std::bad_alloc();
        case LETS_THE_THREAD_BE_CANCELLED: pthread_testcancel(); break;
        default: break;
    }
}

namespace {

using PI::CEvent;
using PI::CPluginHelper;
using testing::ElementsAre;
using testing::Pair;

std::vector<unsigned int> CalledNumbers() {
    std::vector<unsigned int> numbers;
    for (const Call& call : calls) {
        numbers.push_back(call.m_ID);
    }
    return numbers;
}

class BaseLibraries : public testing::Test {
protected:
    BaseLibraries() {
        calls.clear();
        description.clear();
        date = EPOCH;
        datedTimeStamps.clear();
    }
};

// --- Placeholders

using PlaceHolderLookUp = BaseLibraries;

TEST_F(PlaceHolderLookUp, AGetterHandsOverTheNumberAndItsOwnMember) {
    CEvent event;
    event.SetPlaceHolder3(-5);
    event.GetPlaceHolder3();
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].m_ID, 0xFFFFFFFBU);
    EXPECT_EQ(calls[0].m_Text, &event.m_Resolved3);
    EXPECT_EQ(event.m_Resolved3, "resource 4294967291");
}

TEST_F(PlaceHolderLookUp, AnUnknownNumberGivesWhatTheLanguageSupportLeavesInTheMember) {
    CEvent event;
    event.SetPlaceHolder6(LEAVES_THE_TEXT_ALONE);
    event.m_Resolved6 = "left";
    EXPECT_EQ(event.GetPlaceHolder6(), "left");
}

TEST_F(PlaceHolderLookUp, OnlyResourcesAreLookedUp) {
    CEvent event;
    for (const char* stored : {"", "I:", "T:601", "601", "T:", "I"}) {
        event.m_PlaceHolder1 = stored;
        event.GetPlaceHolder1();
    }
    EXPECT_THAT(calls, testing::IsEmpty());
}

TEST_F(PlaceHolderLookUp, AGetterLetsThroughWhatTheLanguageSupportThrows) {
    CEvent event;
    event.SetPlaceHolder1(THROWS_EXCEPTION);
    event.SetPlaceHolder2(THROWS_NUMBER);
    event.SetPlaceHolder3(THROWS_BAD_ALLOC);
    try {
        event.GetPlaceHolder1();
        FAIL() << "nothing thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "no language");
    }
    EXPECT_THROW(event.GetPlaceHolder2(), int);
    EXPECT_THROW(event.GetPlaceHolder3(), std::bad_alloc);
    EXPECT_EQ(event.m_PlaceHolder1, "I:601");
    EXPECT_EQ(event.m_Resolved1, "resource 601") << "what was written before the throw";
}

// --- Rendering

using RenderingLookUp = BaseLibraries;

TEST_F(RenderingLookUp, LooksUpTheDescriptionFirstAndThenEveryPlaceholderInItsTurn) {
    description = "no markers";
    CEvent event;
    event.m_EventID = EVENT;
    event.SetPlaceHolder1(11);
    event.SetPlaceHolder2("text");
    event.SetPlaceHolder3(13);
    event.SetPlaceHolder6(16);
    CPluginHelper::StringifyEventMessage(event);
    EXPECT_THAT(CalledNumbers(), ElementsAre(EVENT, 11, 13, 16));
}

TEST_F(RenderingLookUp, NoDescriptionLooksUpNothingElse) {
    CEvent event;
    event.m_EventID = EVENT;
    event.SetPlaceHolder1(11);
    CPluginHelper::StringifyEventMessage(event);
    EXPECT_THAT(CalledNumbers(), ElementsAre(EVENT));
}

TEST_F(RenderingLookUp, AFailingDescriptionIsAnUnknownEvent) {
    for (const unsigned int id : THROWING) {
        CEvent event;
        event.m_EventID = id;
        event.SetPlaceHolder1("A");
        EXPECT_THAT(CPluginHelper::StringifyEventMessage(event),
                    ElementsAre(Pair("EventID", std::to_string(id)), Pair("Host", "localhost"),
                                Pair("Source", ""), Pair("Timestamp", "0"),
                                Pair("Datetime", "01/01/1970 00:00:00"), Pair("Severity", "INFORMATION"),
                                Pair("Description", "Unknown Event"), Pair("SequenceNumber", "0")));
        EXPECT_EQ(event.m_Resolved1, "");
    }
}

TEST_F(RenderingLookUp, AFailingPlaceholderKeepsTheValuesGatheredBefore) {
    description = "%1 %2 %3 %4";
    for (const unsigned int id : THROWING) {
        CEvent event;
        event.m_EventID = EVENT;
        event.SetPlaceHolder1("A");
        event.SetPlaceHolder2(12);
        event.SetPlaceHolder3(static_cast<int>(id));
        event.SetPlaceHolder4("D");
        EXPECT_THAT(CPluginHelper::StringifyEventMessage(event),
                    ElementsAre(Pair("EventID", "10056"), Pair("Host", "localhost"), Pair("Source", ""),
                                Pair("Timestamp", "0"), Pair("Datetime", "01/01/1970 00:00:00"),
                                Pair("Severity", "INFORMATION"), Pair("Placeholders", "[A, resource 12]"),
                                Pair("Description", "Unknown Event"), Pair("SequenceNumber", "0")));
        EXPECT_EQ(event.m_Resolved4, "") << "what comes behind the failure is not read";
    }
}

TEST_F(RenderingLookUp, AFailureCountsEvenWhereTheMarkerIsMissing) {
    description = "%1 and nothing else";
    for (const unsigned int id : THROWING) {
        CEvent event;
        event.m_EventID = EVENT;
        event.SetPlaceHolder1("A");
        event.SetPlaceHolder6(static_cast<int>(id));
        const auto rendered = CPluginHelper::StringifyEventMessage(event);
        ASSERT_EQ(rendered.size(), 9U);
        EXPECT_THAT(rendered[6], Pair("Placeholders", "[A]"));
        EXPECT_THAT(rendered[7], Pair("Description", "Unknown Event"));
    }
}

TEST_F(RenderingLookUp, AFailureOfTheFirstPlaceholderListsNothing) {
    description = "%1 %2";
    for (const unsigned int id : THROWING) {
        CEvent event;
        event.m_EventID = EVENT;
        event.SetPlaceHolder1(static_cast<int>(id));
        event.SetPlaceHolder2("B");
        const auto rendered = CPluginHelper::StringifyEventMessage(event);
        ASSERT_EQ(rendered.size(), 9U);
        EXPECT_THAT(rendered[6], Pair("Placeholders", "[]"));
        EXPECT_THAT(rendered[7], Pair("Description", "Unknown Event"));
        EXPECT_THAT(rendered[8], Pair("SequenceNumber", "0"));
    }
}

TEST_F(RenderingLookUp, AThreadIsCancelledWithinTheLookUpOfADescription) {
    bool isRendered = false;
    EXPECT_TRUE(PI::Test::EndsCancelled([&] {
        CEvent event;
        event.m_EventID = LETS_THE_THREAD_BE_CANCELLED;
        CPluginHelper::StringifyEventMessage(event);
        isRendered = true;
    }));
    EXPECT_FALSE(isRendered);
}

TEST_F(RenderingLookUp, AThreadIsCancelledWithinTheLookUpOfAPlaceholder) {
    description = "%1";
    bool isRendered = false;
    EXPECT_TRUE(PI::Test::EndsCancelled([&] {
        CEvent event;
        event.m_EventID = EVENT;
        event.SetPlaceHolder1(static_cast<int>(LETS_THE_THREAD_BE_CANCELLED));
        CPluginHelper::StringifyEventMessage(event);
        isRendered = true;
    }));
    EXPECT_FALSE(isRendered);
}

TEST_F(RenderingLookUp, ATableLooksUpNothingInTheProcess) {
    CEvent event;
    event.m_EventID = EVENT;
    event.SetPlaceHolder1(11);
    CPluginHelper::StringifyEventMessageWith(event, PI::CTextTable(), PI::WithoutText::NAME_AND_PLACEHOLDERS);
    EXPECT_THAT(calls, testing::IsEmpty());
}

TEST_F(RenderingLookUp, TheDateIsAskedForOnceAndItsFieldsArePadded) {
    CEvent event;
    event.m_TimeStamp = 0xFFFFFFFFFFFFFFFF;
    const auto dateTime = [&](const VELKX::_DATE& fields) {
        date = fields;
        return CPluginHelper::StringifyEventMessage(event).at(4).second;
    };
    EXPECT_EQ(dateTime({2021, 3, 7, 9, 5, 0}), "03/07/2021 09:05:00");
    EXPECT_THAT(datedTimeStamps, ElementsAre(0xFFFFFFFFFFFFFFFF));
    EXPECT_EQ(dateTime({7, 12, 31, 23, 59, 58}), "12/31/   7 23:59:58") << "the year is padded with blanks";
    EXPECT_EQ(dateTime({12345, 11, 10, 1, 2, 3}), "11/10/12345 01:02:03");
    EXPECT_EQ(dateTime({}), "00/00/   0 00:00:00");
}

}  // namespace
