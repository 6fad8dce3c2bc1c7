#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pi/event.h>
#include <pi/plugin_helper.h>
#include <velkx/language_support.h>

#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr unsigned int EVENT = 10056;
constexpr unsigned int THROWS_EXCEPTION = 601;
constexpr unsigned int THROWS_NUMBER = 602;
constexpr unsigned int THROWS_BAD_ALLOC = 603;
constexpr unsigned int LEAVES_THE_TEXT_ALONE = 604;

constexpr unsigned int THROWING[] = {THROWS_EXCEPTION, THROWS_NUMBER, THROWS_BAD_ALLOC};

struct Call {
    unsigned int m_ID;
    const std::string* m_Text;
};

std::vector<Call> calls;
std::string description;

}  // namespace

// Stands before the one of the language library, as a symbol of the program does.
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

class LanguageSupport : public testing::Test {
protected:
    LanguageSupport() {
        setenv("TZ", "UTC0", 1);
        calls.clear();
        description.clear();
    }
};

using EventsOf = LanguageSupport;

// --- Placeholders

TEST_F(EventsOf, AGetterHandsOverTheNumberAndItsOwnMember) {
    CEvent event;
    event.SetPlaceHolder3(-5);
    event.GetPlaceHolder3();
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].m_ID, 0xFFFFFFFBU);
    EXPECT_EQ(calls[0].m_Text, &event.m_Resolved3);
    EXPECT_EQ(event.m_Resolved3, "resource 4294967291");
}

TEST_F(EventsOf, AnUnknownNumberGivesWhatTheLanguageSupportLeavesInTheMember) {
    CEvent event;
    event.SetPlaceHolder6(LEAVES_THE_TEXT_ALONE);
    event.m_Resolved6 = "left";
    EXPECT_EQ(event.GetPlaceHolder6(), "left");
}

TEST_F(EventsOf, OnlyResourcesAreLookedUp) {
    CEvent event;
    for (const char* stored : {"", "I:", "T:601", "601", "T:", "I"}) {
        event.m_PlaceHolder1 = stored;
        event.GetPlaceHolder1();
    }
    EXPECT_THAT(calls, testing::IsEmpty());
}

TEST_F(EventsOf, AGetterLetsThroughWhatTheLanguageSupportThrows) {
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

using EventRenderingWith = LanguageSupport;

TEST_F(EventRenderingWith, LooksUpTheDescriptionFirstAndThenEveryPlaceholderInItsTurn) {
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

TEST_F(EventRenderingWith, NoDescriptionLooksUpNothingElse) {
    CEvent event;
    event.m_EventID = EVENT;
    event.SetPlaceHolder1(11);
    CPluginHelper::StringifyEventMessage(event);
    EXPECT_THAT(CalledNumbers(), ElementsAre(EVENT));
}

TEST_F(EventRenderingWith, AFailingDescriptionIsAnUnknownEvent) {
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

TEST_F(EventRenderingWith, AFailingPlaceholderKeepsTheValuesGatheredBefore) {
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

TEST_F(EventRenderingWith, AFailureCountsEvenWhereTheMarkerIsMissing) {
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

TEST_F(EventRenderingWith, AFailureOfTheFirstPlaceholderListsNothing) {
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

}  // namespace
