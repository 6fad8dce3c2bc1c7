// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/event.h>
#include <velkx/language_support.h>

#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "support/global_locale.h"
#include "support/record_checks.h"

namespace {

using namespace PI;
using namespace PI::Test;

static_assert(std::is_nothrow_move_constructible_v<CEvent> && std::is_nothrow_move_assignable_v<CEvent> &&
              std::is_nothrow_destructible_v<CEvent>);

/// The members that belong to one placeholder.
struct PlaceHolder {
    std::string CEvent::*m_Stored;
    std::string CEvent::*m_Resolved;
    void (CEvent::*m_SetText)(const std::string&);
    void (CEvent::*m_SetNumber)(int);
    std::string& (CEvent::*m_Get)();
};

#define PLACEHOLDER(N)                                                                 \
    {                                                                                  \
        &CEvent::m_PlaceHolder##N, &CEvent::m_Resolved##N, &CEvent::SetPlaceHolder##N, \
            &CEvent::SetPlaceHolder##N, &CEvent::GetPlaceHolder##N                     \
    }
constexpr PlaceHolder PLACEHOLDERS[] = {PLACEHOLDER(1), PLACEHOLDER(2), PLACEHOLDER(3),
                                        PLACEHOLDER(4), PLACEHOLDER(5), PLACEHOLDER(6)};
#undef PLACEHOLDER

// Every field away from its default and from the others. Filled in place: a copy would lose the scratch
// strings.
void Fill(CEvent& event) {
    event.m_Handle = 1;
    event.m_EventID = 2;
    event.m_Severity = Severity::ERROR;
    event.m_TimeStamp = 3;
    for (std::size_t i = 0; i < 6; ++i) {
        event.*PLACEHOLDERS[i].m_Stored = "T:stored" + std::to_string(i + 1);
        event.*PLACEHOLDERS[i].m_Resolved = "resolved" + std::to_string(i + 1);
    }
    event.m_Data = "data";
    event.m_Source = "source";
    event.m_Host = "host";
    event.m_SequenceNumber = 4;
    event.m_Scratch = "scratch";
}

CEvent FullEvent() {
    CEvent event;
    Fill(event);
    return event;
}

void ExpectValueOfFullEvent(const CEvent& event) {
    EXPECT_EQ(event.m_Handle, 1U);
    EXPECT_EQ(event.m_EventID, 2U);
    EXPECT_EQ(event.m_Severity, 4);
    EXPECT_EQ(event.m_TimeStamp, 3U);
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(event.*PLACEHOLDERS[i].m_Stored, "T:stored" + std::to_string(i + 1));
    }
    EXPECT_EQ(event.m_Data, "data");
    EXPECT_EQ(event.m_Source, "source");
    EXPECT_EQ(event.m_Host, "host");
    EXPECT_EQ(event.m_SequenceNumber, 4U);
}

std::vector<std::string> ScratchOf(const CEvent& event) {
    std::vector<std::string> scratch;
    for (const PlaceHolder& placeHolder : PLACEHOLDERS) {
        scratch.push_back(event.*placeHolder.m_Resolved);
    }
    scratch.push_back(event.m_Scratch);
    return scratch;
}

class EventTest : public testing::Test {
protected:
    ~EventTest() override { CLanguageSupport::Clear(); }
};

using Event = EventTest;
using PlaceHolders = EventTest;

TEST_F(Event, FieldsStandInTheirOrderAndWidth) {
    const CEvent event;
    FieldsOf(event)
        .Then<std::uint64_t>(&CEvent::m_Handle)
        .Then<std::uint32_t>(&CEvent::m_EventID)
        .Then<_SEVERITY>(&CEvent::m_Severity)
        .Then<std::uint64_t>(&CEvent::m_TimeStamp)
        .Then<std::string>(&CEvent::m_PlaceHolder1)
        .Then<std::string>(&CEvent::m_PlaceHolder2)
        .Then<std::string>(&CEvent::m_PlaceHolder3)
        .Then<std::string>(&CEvent::m_PlaceHolder4)
        .Then<std::string>(&CEvent::m_PlaceHolder5)
        .Then<std::string>(&CEvent::m_PlaceHolder6)
        .Then<std::string>(&CEvent::m_Data)
        .Then<std::string>(&CEvent::m_Source)
        .Then<std::string>(&CEvent::m_Host)
        .Then<std::uint32_t>(&CEvent::m_SequenceNumber)
        .Then<std::string>(&CEvent::m_Resolved1)
        .Then<std::string>(&CEvent::m_Resolved2)
        .Then<std::string>(&CEvent::m_Resolved3)
        .Then<std::string>(&CEvent::m_Resolved4)
        .Then<std::string>(&CEvent::m_Resolved5)
        .Then<std::string>(&CEvent::m_Resolved6)
        .Then<std::string>(&CEvent::m_Scratch)
        .End();
    EXPECT_EQ(sizeof(_SEVERITY), 4U);
}

TEST_F(Event, HasNoBaseAndOnlyAVirtualDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<CEvent>);
    EXPECT_TRUE(HasNoBase<CEvent>());
    EXPECT_EQ(VirtualFunctionCount<CEvent>(), ONLY_A_DESTRUCTOR);
}

TEST_F(Event, Defaults) {
    CEvent event;
    EXPECT_EQ(event.m_Handle, 0U);
    EXPECT_EQ(event.m_EventID, 10000U);
    EXPECT_EQ(event.m_Severity, 2);
    EXPECT_EQ(event.m_TimeStamp, 0U);
    for (const PlaceHolder& placeHolder : PLACEHOLDERS) {
        EXPECT_EQ(event.*placeHolder.m_Stored, "");
        EXPECT_EQ(event.*placeHolder.m_Resolved, "");
        EXPECT_EQ((event.*placeHolder.m_Get)(), "");
    }
    EXPECT_EQ(event.m_Data, "");
    EXPECT_EQ(event.m_Source, "");
    EXPECT_EQ(event.m_Host, "");
    EXPECT_EQ(event.m_SequenceNumber, 0U);
    EXPECT_EQ(event.m_Scratch, "");
}

// --- Copying

const std::vector<std::string> NO_SCRATCH(7);
const std::vector<std::string> FULL_SCRATCH = {"resolved1", "resolved2", "resolved3", "resolved4",
                                               "resolved5", "resolved6", "scratch"};

TEST_F(Event, ACopyStartsWithEmptyScratchStrings) {
    CEvent source;
    Fill(source);
    const CEvent copy(source);
    ExpectValueOfFullEvent(copy);
    EXPECT_EQ(ScratchOf(copy), NO_SCRATCH);
    ExpectValueOfFullEvent(source);
    EXPECT_EQ(ScratchOf(source), FULL_SCRATCH);
}

TEST_F(Event, AMovedOneStartsWithEmptyScratchStrings) {
    CEvent source;
    Fill(source);
    const CEvent moved(std::move(source));
    ExpectValueOfFullEvent(moved);
    EXPECT_EQ(ScratchOf(moved), NO_SCRATCH);
}

/// Six resolved strings and the scratch string that assignments must leave alone.
void GiveOwnScratch(CEvent& event) {
    for (const PlaceHolder& placeHolder : PLACEHOLDERS) {
        event.*placeHolder.m_Resolved = "own";
    }
    event.m_Scratch = "own";
}

const std::vector<std::string> OWN_SCRATCH(7, "own");

TEST_F(Event, AnAssignedOneKeepsItsOwnScratchStrings) {
    CEvent source;
    Fill(source);
    CEvent target;
    GiveOwnScratch(target);
    EXPECT_EQ(&(target = source), &target);
    ExpectValueOfFullEvent(target);
    EXPECT_EQ(ScratchOf(target), OWN_SCRATCH);
    ExpectValueOfFullEvent(source);
}

TEST_F(Event, AMoveAssignedOneKeepsItsOwnScratchStrings) {
    CEvent source;
    Fill(source);
    CEvent target;
    GiveOwnScratch(target);
    EXPECT_EQ(&(target = std::move(source)), &target);
    ExpectValueOfFullEvent(target);
    EXPECT_EQ(ScratchOf(target), OWN_SCRATCH);
}

TEST_F(Event, AssignedToItselfStaysAsItIs) {
    CEvent event;
    event.m_Data = "a text that is too long for a string to keep it inside";
    event.m_Resolved1 = "resolved";
    const CEvent& self = event;
    event = self;
    EXPECT_EQ(event.m_Data, "a text that is too long for a string to keep it inside");
    EXPECT_EQ(event.m_Resolved1, "resolved");
}

TEST_F(Event, MovedToItselfStaysAsItIs) {
    CEvent event = FullEvent();
    CEvent& self = event;
    event = std::move(self);
    ExpectValueOfFullEvent(event);
}

TEST_F(Event, ACopyOfAnEventThatWasReadIsReadForItself) {
    CEvent source;
    source.SetPlaceHolder4("read");
    source.GetPlaceHolder4();
    CEvent copy(source);
    EXPECT_EQ(copy.m_Resolved4, "");
    EXPECT_EQ(copy.GetPlaceHolder4(), "read");
    EXPECT_EQ(copy.m_Resolved4, "read");
}

// --- Comparison

TEST_F(Event, IsOneAndTheSameByHandleIdentifierSeverityAndTimeStamp) {
    ExpectCompared<CEvent>(FullEvent(),
                           {
                               {"m_Handle", [](CEvent& e) { ++e.m_Handle; }},
                               {"m_EventID", [](CEvent& e) { ++e.m_EventID; }},
                               {"m_Severity", [](CEvent& e) { e.m_Severity = Severity::WARNING; }},
                               {"m_TimeStamp", [](CEvent& e) { ++e.m_TimeStamp; }},
                           });
    ExpectNotCompared<CEvent>(FullEvent(), {
                                               {"m_PlaceHolder1", [](CEvent& e) { e.m_PlaceHolder1 += "x"; }},
                                               {"m_PlaceHolder2", [](CEvent& e) { e.m_PlaceHolder2 += "x"; }},
                                               {"m_PlaceHolder3", [](CEvent& e) { e.m_PlaceHolder3 += "x"; }},
                                               {"m_PlaceHolder4", [](CEvent& e) { e.m_PlaceHolder4 += "x"; }},
                                               {"m_PlaceHolder5", [](CEvent& e) { e.m_PlaceHolder5 += "x"; }},
                                               {"m_PlaceHolder6", [](CEvent& e) { e.m_PlaceHolder6 += "x"; }},
                                               {"m_Data", [](CEvent& e) { e.m_Data += "x"; }},
                                               {"m_Source", [](CEvent& e) { e.m_Source += "x"; }},
                                               {"m_Host", [](CEvent& e) { e.m_Host += "x"; }},
                                               {"m_SequenceNumber", [](CEvent& e) { ++e.m_SequenceNumber; }},
                                               {"m_Resolved1", [](CEvent& e) { e.m_Resolved1 += "x"; }},
                                               {"m_Scratch", [](CEvent& e) { e.m_Scratch += "x"; }},
                                           });
    EXPECT_TRUE(CEvent() == CEvent());
}

// --- Stored form

TEST_F(PlaceHolders, ATextIsStoredBehindItsPrefix) {
    for (const PlaceHolder& placeHolder : PLACEHOLDERS) {
        CEvent event;
        (event.*placeHolder.m_SetText)("abc");
        EXPECT_EQ(event.*placeHolder.m_Stored, "T:abc");
        (event.*placeHolder.m_SetText)("100% of %s");
        EXPECT_EQ(event.*placeHolder.m_Stored, "T:100% of %s");
        (event.*placeHolder.m_SetText)(std::string("a\0b", 3));
        EXPECT_EQ(event.*placeHolder.m_Stored, std::string("T:a\0b", 5));
        (event.*placeHolder.m_SetText)("");
        EXPECT_EQ(event.*placeHolder.m_Stored, "T:");
    }
}

TEST_F(PlaceHolders, ANumberIsStoredInDecimalBehindItsPrefix) {
    for (const PlaceHolder& placeHolder : PLACEHOLDERS) {
        CEvent event;
        (event.*placeHolder.m_SetNumber)(10056);
        EXPECT_EQ(event.*placeHolder.m_Stored, "I:10056");
        (event.*placeHolder.m_SetNumber)(-5);
        EXPECT_EQ(event.*placeHolder.m_Stored, "I:-5");
        (event.*placeHolder.m_SetNumber)(0);
        EXPECT_EQ(event.*placeHolder.m_Stored, "I:0");
        (event.*placeHolder.m_SetNumber)(std::numeric_limits<int>::max());
        EXPECT_EQ(event.*placeHolder.m_Stored, "I:2147483647");
        (event.*placeHolder.m_SetNumber)(std::numeric_limits<int>::min());
        EXPECT_EQ(event.*placeHolder.m_Stored, "I:-2147483648");
    }
}

TEST_F(PlaceHolders, ASetterTouchesNothingElse) {
    for (const PlaceHolder& placeHolder : PLACEHOLDERS) {
        CEvent event = FullEvent();
        const std::string before = event.*placeHolder.m_Stored;
        (event.*placeHolder.m_SetText)("new");
        EXPECT_EQ(event.*placeHolder.m_Stored, "T:new");
        event.*placeHolder.m_Stored = before;
        ExpectValueOfFullEvent(event);
    }
}

// --- Reading

/// What a placeholder reads as, checked for all six.
std::string Read(const std::string& stored) {
    std::string value;
    for (const PlaceHolder& placeHolder : PLACEHOLDERS) {
        CEvent event;
        event.*placeHolder.m_Resolved = "what was there before";
        event.*placeHolder.m_Stored = stored;
        value = (event.*placeHolder.m_Get)();
        EXPECT_EQ(&(event.*placeHolder.m_Get)(), &(event.*placeHolder.m_Resolved));
        EXPECT_EQ(event.*placeHolder.m_Resolved, value);
        EXPECT_EQ(event.*placeHolder.m_Stored, stored);
        for (const PlaceHolder& other : PLACEHOLDERS) {
            if (other.m_Resolved != placeHolder.m_Resolved) {
                EXPECT_EQ(event.*other.m_Resolved, "");
            }
        }
    }
    return value;
}

TEST_F(PlaceHolders, ATextReadsBack) {
    EXPECT_EQ(Read("T:abc"), "abc");
    EXPECT_EQ(Read("T:T:x"), "T:x");
    EXPECT_EQ(Read("T:I:5"), "I:5");
    EXPECT_EQ(Read("T: "), " ");
}

TEST_F(PlaceHolders, UpToTwoCharactersReadAsTheyAreStored) {
    CLanguageSupport::SetString(0, "resource 0");
    EXPECT_EQ(Read(""), "");
    EXPECT_EQ(Read("T"), "T");
    EXPECT_EQ(Read("I"), "I");
    EXPECT_EQ(Read("ab"), "ab");
    EXPECT_EQ(Read("T:"), "T:") << "an empty text keeps its prefix";
    EXPECT_EQ(Read("I:"), "I:") << "no resource is looked up";
    EXPECT_EQ(Read("T:x"), "x") << "three characters follow the prefix";
    EXPECT_EQ(Read("I:x"), "resource 0");
}

TEST_F(PlaceHolders, AnythingElseReadsAsItIsStored) {
    EXPECT_EQ(Read("plain"), "plain");
    EXPECT_EQ(Read("t:abc"), "t:abc");
    EXPECT_EQ(Read("i:5"), "i:5");
    EXPECT_EQ(Read(" T:abc"), " T:abc");
    EXPECT_EQ(Read("X:5"), "X:5");
    EXPECT_EQ(Read("T;x"), "T;x");
}

TEST_F(PlaceHolders, AResourceIsLookedUpWhenRead) {
    CEvent event;
    event.SetPlaceHolder2(10056);
    CLanguageSupport::SetString(10056, "Rebuild started");
    EXPECT_EQ(event.GetPlaceHolder2(), "Rebuild started");
    CLanguageSupport::SetString(10056, "Neuaufbau begonnen");
    EXPECT_EQ(event.GetPlaceHolder2(), "Neuaufbau begonnen");
    CLanguageSupport::Clear();
    EXPECT_EQ(event.GetPlaceHolder2(), "") << "an unknown number empties the member";
}

TEST_F(PlaceHolders, ANegativeNumberCountsAsUnsigned) {
    CLanguageSupport::SetString(0xFFFFFFFB, "minus five");
    CLanguageSupport::SetString(0x80000000, "lowest");
    EXPECT_EQ(Read("I:-5"), "minus five");
    EXPECT_EQ(Read("I:-2147483648"), "lowest");
    CEvent event;
    event.SetPlaceHolder2(-5);
    EXPECT_EQ(event.GetPlaceHolder2(), "minus five");
}

TEST_F(PlaceHolders, ANumberIsReadAsAStreamReadsIt) {
    CLanguageSupport::SetString(0, "resource 0");
    CLanguageSupport::SetString(12, "resource 12");
    CLanguageSupport::SetString(2147483647, "highest");
    EXPECT_EQ(Read("I:12"), "resource 12");
    EXPECT_EQ(Read("I: \t\n12"), "resource 12");
    EXPECT_EQ(Read("I:+12"), "resource 12");
    EXPECT_EQ(Read("I:012"), "resource 12") << "not octal";
    EXPECT_EQ(Read("I:-0"), "resource 0");
    EXPECT_EQ(Read("I:2147483647"), "highest");
}

TEST_F(PlaceHolders, WhatIsNoSigned32BitNumberLooksUpResource0) {
    CLanguageSupport::SetString(0, "resource 0");
    CLanguageSupport::SetString(12, "resource 12");
    CLanguageSupport::SetString(0x80000000, "beyond");
    CLanguageSupport::SetString(2147483647, "highest");
    EXPECT_EQ(Read("I:abc"), "resource 0");
    EXPECT_EQ(Read("I:12abc"), "resource 0");
    EXPECT_EQ(Read("I:12 "), "resource 0");
    EXPECT_EQ(Read("I:1 2"), "resource 0");
    EXPECT_EQ(Read("I: "), "resource 0");
    EXPECT_EQ(Read("I:-"), "resource 0");
    EXPECT_EQ(Read("I:0xC"), "resource 0");
    EXPECT_EQ(Read("I:12.0"), "resource 0");
    EXPECT_EQ(Read(std::string("I:12\0", 5)), "resource 0");
    EXPECT_EQ(Read("I:2147483648"), "resource 0");
    EXPECT_EQ(Read("I:-2147483649"), "resource 0");
    EXPECT_EQ(Read("I:99999999999999999999"), "resource 0");
}

TEST_F(PlaceHolders, TheReferenceShowsTheLatestReading) {
    CEvent event;
    event.SetPlaceHolder1("first");
    const std::string& value = event.GetPlaceHolder1();
    event.SetPlaceHolder1("second");
    EXPECT_EQ(value, "first");
    event.GetPlaceHolder2();
    EXPECT_EQ(value, "first") << "another placeholder does not touch it";
    event.GetPlaceHolder1();
    EXPECT_EQ(value, "second");
}

TEST_F(PlaceHolders, TheGlobalLocaleDoesNotMatter) {
    class GroupedDigits : public std::numpunct<char> {
        char do_thousands_sep() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };
    const GlobalLocale grouped(std::locale(std::locale::classic(), new GroupedDigits));
    CLanguageSupport::SetString(10056, "Rebuild started");
    CEvent event;
    event.SetPlaceHolder1(10056);
    EXPECT_EQ(event.m_PlaceHolder1, "I:10056");
    EXPECT_EQ(event.GetPlaceHolder1(), "Rebuild started");
}

}  // namespace
