// SPDX-License-Identifier: Apache-2.0

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pi/event.h>
#include <pi/plugin_helper.h>
#include <velkx/language_support.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/global_locale.h"
#include "support/random_seed.h"

namespace {

using namespace PI;
using namespace PI::Test;
using testing::Pair;

using Rendered = std::vector<std::pair<std::string, std::string>>;

static_assert(std::is_same_v<decltype(&CPluginHelper::StringifyEventMessage), Rendered (*)(CEvent&)>);

constexpr unsigned int EVENT = 10056;
constexpr std::uint64_t SEVENTH_OF_MARCH = 1615107900000;  // 2021-03-07 09:05:00 UTC

class EventRendering : public testing::Test {
protected:
    EventRendering() { UseTimeZone("UTC0"); }
    ~EventRendering() override {
        CLanguageSupport::Clear();
        unsetenv("TZ");
        tzset();
    }

    static void UseTimeZone(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }

    static Rendered Render(CEvent& event) { return CPluginHelper::StringifyEventMessage(event); }

    /// The value of a key that stands in the rendered event exactly once.
    static std::string ValueOf(const std::string& key, CEvent& event) {
        std::string value;
        int count = 0;
        for (const auto& pair : Render(event)) {
            if (pair.first == key) {
                value = pair.second;
                ++count;
            }
        }
        EXPECT_EQ(count, 1) << key;
        return value;
    }

    /// Sets the description's text and renders an event of that identifier.
    void Describe(const std::string& description, CEvent& event) {
        CLanguageSupport::SetString(EVENT, description);
        event.m_EventID = EVENT;
        m_Description = ValueOf("Description", event);
        m_PlaceHolders = ValueOf("Placeholders", event);
    }

    std::string m_Description;
    std::string m_PlaceHolders;
};

/// Placeholders 1 to 6 hold the texts A to F.
CEvent EventWithLetters() {
    CEvent event;
    event.SetPlaceHolder1("A");
    event.SetPlaceHolder2("B");
    event.SetPlaceHolder3("C");
    event.SetPlaceHolder4("D");
    event.SetPlaceHolder5("E");
    event.SetPlaceHolder6("F");
    return event;
}

// --- The whole

TEST_F(EventRendering, WithADescriptionHasNinePairsInTheirOrder) {
    CLanguageSupport::SetString(EVENT, "Drive %1 in slot %2 failed");
    CLanguageSupport::SetString(23, "twenty-three");
    CEvent event;
    event.m_Handle = 77;
    event.m_EventID = EVENT;
    event.m_Severity = Severity::ERROR;
    event.m_TimeStamp = SEVENTH_OF_MARCH;
    event.SetPlaceHolder1("A");
    event.SetPlaceHolder2(23);
    event.m_Data = "not rendered";
    event.m_Source = "plug-in";
    event.m_Host = "server";
    event.m_SequenceNumber = 4294967295;
    EXPECT_THAT(
        Render(event),
        testing::ElementsAre(Pair("EventID", "10056"), Pair("Host", "server"), Pair("Source", "plug-in"),
                             Pair("Timestamp", "1615107900000"), Pair("Datetime", "03/07/2021 09:05:00"),
                             Pair("Severity", "ERROR"), Pair("Placeholders", "[A, twenty-three]"),
                             Pair("Description", "Drive A in slot twenty-three failed"),
                             Pair("SequenceNumber", "4294967295")));
}

TEST_F(EventRendering, WithoutADescriptionHasEightPairs) {
    CEvent event = EventWithLetters();
    EXPECT_THAT(Render(event),
                testing::ElementsAre(Pair("EventID", "10000"), Pair("Host", "localhost"), Pair("Source", ""),
                                     Pair("Timestamp", "0"), Pair("Datetime", "01/01/1970 00:00:00"),
                                     Pair("Severity", "INFORMATION"), Pair("Description", "Unknown Event"),
                                     Pair("SequenceNumber", "0")));
}

TEST_F(EventRendering, AnEmptyDescriptionIsNone) {
    CLanguageSupport::SetString(10000, "");
    CEvent event;
    EXPECT_EQ(Render(event).size(), 8U);
    EXPECT_EQ(ValueOf("Description", event), "Unknown Event");
    CLanguageSupport::SetString(10000, " ");
    EXPECT_EQ(Render(event).size(), 9U);
    EXPECT_EQ(ValueOf("Description", event), " ");
}

TEST_F(EventRendering, WithoutADescriptionNoPlaceholderIsRead) {
    CEvent event = EventWithLetters();
    event.m_Resolved1 = "as it was";
    Render(event);
    EXPECT_EQ(event.m_Resolved1, "as it was");
}

TEST_F(EventRendering, ChangesNothingButTheResolvedPlaceholders) {
    CLanguageSupport::SetString(EVENT, "%1");
    CEvent event = EventWithLetters();
    event.m_EventID = EVENT;
    event.m_Scratch = "scratch";
    event.m_Host = "";
    Render(event);
    EXPECT_EQ(event.m_Host, "");
    EXPECT_EQ(event.m_Scratch, "scratch");
    EXPECT_EQ(event.m_PlaceHolder1, "T:A");
    EXPECT_EQ(event.m_Resolved1, "A");
    EXPECT_EQ(event.m_Resolved6, "F") << "read even where its marker is missing";
}

// --- Single values

TEST_F(EventRendering, NumbersAreUnsigned) {
    CEvent event;
    event.m_EventID = 4294967295;
    event.m_TimeStamp = 0xFFFFFFFFFFFFFFFF;
    EXPECT_EQ(ValueOf("EventID", event), "4294967295");
    EXPECT_EQ(ValueOf("Timestamp", event), "18446744073709551615");
}

TEST_F(EventRendering, TheEventsIdentifierIsTheNumberOfItsDescription) {
    CLanguageSupport::SetString(4294967295, "the last");
    CEvent event;
    event.m_EventID = 4294967295;
    EXPECT_EQ(ValueOf("Description", event), "the last");
}

TEST_F(EventRendering, OnlyAnEmptyHostIsTheLocalOne) {
    CEvent event;
    EXPECT_EQ(ValueOf("Host", event), "localhost");
    event.m_Host = " ";
    EXPECT_EQ(ValueOf("Host", event), " ");
    event.m_Host = "server";
    EXPECT_EQ(ValueOf("Host", event), "server");
}

TEST_F(EventRendering, SourceStandsAsItIs) {
    CEvent event;
    event.m_Source = " plug-in %1 ";
    EXPECT_EQ(ValueOf("Source", event), " plug-in %1 ");
}

TEST_F(EventRendering, EverySeverityButTheThreeKnownIsDebug) {
    CEvent event;
    const auto severity = [&](std::int32_t number) {
        event.m_Severity = static_cast<_SEVERITY>(number);
        return ValueOf("Severity", event);
    };
    EXPECT_EQ(severity(2), "INFORMATION");
    EXPECT_EQ(severity(3), "WARNING");
    EXPECT_EQ(severity(4), "ERROR");
    for (const std::int32_t other : {0, 1, 5, 7, -1, std::numeric_limits<std::int32_t>::max(),
                                     std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(severity(other), "DEBUG") << other;
    }
}

TEST_F(EventRendering, DateAndTimeArePadded) {
    CEvent event;
    const auto dateTime = [&](std::uint64_t timeStamp) {
        event.m_TimeStamp = timeStamp;
        return ValueOf("Datetime", event);
    };
    EXPECT_EQ(dateTime(0), "01/01/1970 00:00:00");
    EXPECT_EQ(dateTime(999), "01/01/1970 00:00:00");
    EXPECT_EQ(dateTime(1000), "01/01/1970 00:00:01");
    EXPECT_EQ(dateTime(SEVENTH_OF_MARCH), "03/07/2021 09:05:00");
    EXPECT_EQ(dateTime(1640995199999), "12/31/2021 23:59:59");
    EXPECT_EQ(dateTime(1640995200000), "01/01/2022 00:00:00");
    EXPECT_EQ(dateTime(253402300799999), "12/31/9999 23:59:59");
    EXPECT_EQ(dateTime(253402300800000), "01/01/10000 00:00:00");
}

TEST_F(EventRendering, DateAndTimeAreThoseOfTheTimeZone) {
    CEvent event;
    event.m_TimeStamp = SEVENTH_OF_MARCH;
    UseTimeZone("EAST-5:30");
    EXPECT_EQ(ValueOf("Datetime", event), "03/07/2021 14:35:00");
    UseTimeZone("WEST10");
    EXPECT_EQ(ValueOf("Datetime", event), "03/06/2021 23:05:00");
    EXPECT_EQ(ValueOf("Timestamp", event), "1615107900000");
}

TEST_F(EventRendering, RandomTimesRenderAsTheCLibraryPrintsThem) {
    std::mt19937_64 random(RandomSeed());
    for (int i = 0; i < 2000; ++i) {
        CEvent event;
        event.m_TimeStamp = random() >> (random() % 64);
        const auto seconds = static_cast<std::time_t>(event.m_TimeStamp / 1000);
        std::tm date = {};
        ASSERT_NE(gmtime_r(&seconds, &date), nullptr);
        char expected[64];
        std::snprintf(expected, sizeof(expected), "%02d/%02d/%4d %02d:%02d:%02d", date.tm_mon + 1,
                      date.tm_mday, date.tm_year + 1900, date.tm_hour, date.tm_min, date.tm_sec);
        ASSERT_EQ(ValueOf("Datetime", event), expected) << event.m_TimeStamp;
    }
}

TEST_F(EventRendering, TheGlobalLocaleDoesNotMatter) {
    class GroupedDigits : public std::numpunct<char> {
        char do_thousands_sep() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };
    const GlobalLocale grouped(std::locale(std::locale::classic(), new GroupedDigits));
    CEvent event;
    event.m_TimeStamp = SEVENTH_OF_MARCH;
    event.m_SequenceNumber = 1234567;
    EXPECT_THAT(Render(event), testing::ElementsAre(
                                   Pair("EventID", "10000"), Pair("Host", "localhost"), Pair("Source", ""),
                                   Pair("Timestamp", "1615107900000"),
                                   Pair("Datetime", "03/07/2021 09:05:00"), Pair("Severity", "INFORMATION"),
                                   Pair("Description", "Unknown Event"), Pair("SequenceNumber", "1234567")));
}

// --- Filling in the description

TEST_F(EventRendering, EachMarkerIsReplacedByItsPlaceholder) {
    CEvent event = EventWithLetters();
    Describe("%1-%2-%3-%4-%5-%6", event);
    EXPECT_EQ(m_Description, "A-B-C-D-E-F");
    EXPECT_EQ(m_PlaceHolders, "[A, B, C, D, E, F]");
}

TEST_F(EventRendering, PlaceholdersAreListedByNumberAndNotByPosition) {
    CEvent event = EventWithLetters();
    Describe("%6%3 %1", event);
    EXPECT_EQ(m_Description, "FC A");
    EXPECT_EQ(m_PlaceHolders, "[A, C, F]");
}

TEST_F(EventRendering, WithoutMarkersNothingIsListed) {
    CEvent event = EventWithLetters();
    Describe("Rebuild started", event);
    EXPECT_EQ(m_Description, "Rebuild started");
    EXPECT_EQ(m_PlaceHolders, "[]");
}

TEST_F(EventRendering, OnlyTheFirstOfEqualMarkersIsReplaced) {
    CEvent event = EventWithLetters();
    Describe("%1 %1 %2 %1", event);
    EXPECT_EQ(m_Description, "A %1 B %1");
    EXPECT_EQ(m_PlaceHolders, "[A, B]");
}

TEST_F(EventRendering, AnEmptyPlaceholderLeavesItsMarker) {
    CEvent event;
    event.SetPlaceHolder2("B");
    Describe("%1 %2", event);
    EXPECT_EQ(m_Description, "%1 B");
    EXPECT_EQ(m_PlaceHolders, "[B]");
}

TEST_F(EventRendering, AResourceWithoutTextLeavesItsMarker) {
    CEvent event;
    event.SetPlaceHolder1(99);
    event.m_Resolved1 = "from another language";
    Describe("%1", event);
    EXPECT_EQ(m_Description, "%1");
    EXPECT_EQ(m_PlaceHolders, "[]");
}

TEST_F(EventRendering, AnEmptyTextIsPutInAsItReads) {
    CEvent event;
    event.SetPlaceHolder1("");
    Describe("<%1>", event);
    EXPECT_EQ(m_Description, "<T:>");
    EXPECT_EQ(m_PlaceHolders, "[T:]");
}

TEST_F(EventRendering, ARawPlaceholderIsPutInAsItIsStored) {
    CEvent event;
    event.m_PlaceHolder1 = "raw";
    event.m_PlaceHolder2 = "I:not a number";
    CLanguageSupport::SetString(0, "resource 0");
    Describe("%1 %2", event);
    EXPECT_EQ(m_Description, "raw resource 0");
    EXPECT_EQ(m_PlaceHolders, "[raw, resource 0]");
}

TEST_F(EventRendering, AMarkerIsAPercentSignAndADigitWhateverStandsAround) {
    CEvent event = EventWithLetters();
    Describe("%%1 %20 100%3% %7 %0 %", event);
    EXPECT_EQ(m_Description, "%A B0 100C% %7 %0 %");
    EXPECT_EQ(m_PlaceHolders, "[A, B, C]");
}

TEST_F(EventRendering, AValueMayBringInALaterMarker) {
    CEvent event = EventWithLetters();
    event.SetPlaceHolder1("<%3>");
    Describe("%1", event);
    EXPECT_EQ(m_Description, "<C>");
    EXPECT_EQ(m_PlaceHolders, "[<%3>, C]");
}

TEST_F(EventRendering, ALaterMarkerBroughtInTakesThePlaceOfOneBehindIt) {
    CEvent event = EventWithLetters();
    event.SetPlaceHolder1("<%3>");
    Describe("%1 %3", event);
    EXPECT_EQ(m_Description, "<C> %3");
    EXPECT_EQ(m_PlaceHolders, "[<%3>, C]");
}

TEST_F(EventRendering, AnEarlierOrTheSameMarkerBroughtInStays) {
    CEvent event = EventWithLetters();
    event.SetPlaceHolder2("<%1%2>");
    Describe("%2", event);
    EXPECT_EQ(m_Description, "<%1%2>");
    EXPECT_EQ(m_PlaceHolders, "[<%1%2>]");
}

TEST_F(EventRendering, AMarkerMayComeAboutBetweenAValueAndWhatFollows) {
    CEvent event = EventWithLetters();
    event.SetPlaceHolder1("5%");
    Describe("%12", event);
    EXPECT_EQ(m_Description, "5B");
    EXPECT_EQ(m_PlaceHolders, "[5%, B]");
}

TEST_F(EventRendering, ValuesAreListedAsTheyAre) {
    CEvent event;
    event.SetPlaceHolder1("a, b");
    event.SetPlaceHolder2(" ]");
    Describe("%1%2", event);
    EXPECT_EQ(m_Description, "a, b ]");
    EXPECT_EQ(m_PlaceHolders, "[a, b,  ]]");
}

TEST_F(EventRendering, BytesOfAnyKindGoThrough) {
    CEvent event;
    event.SetPlaceHolder1(std::string("\0\xC3\xA4", 3));
    Describe(std::string("a\0%1", 4), event);
    EXPECT_EQ(m_Description, std::string("a\0\0\xC3\xA4", 5));
}

// --- Any description with any placeholders

constexpr void (CEvent::*TEXT_SETTERS[])(const std::string&) = {
    &CEvent::SetPlaceHolder1, &CEvent::SetPlaceHolder2, &CEvent::SetPlaceHolder3,
    &CEvent::SetPlaceHolder4, &CEvent::SetPlaceHolder5, &CEvent::SetPlaceHolder6};
constexpr void (CEvent::*NUMBER_SETTERS[])(int) = {&CEvent::SetPlaceHolder1, &CEvent::SetPlaceHolder2,
                                                   &CEvent::SetPlaceHolder3, &CEvent::SetPlaceHolder4,
                                                   &CEvent::SetPlaceHolder5, &CEvent::SetPlaceHolder6};

/// Of few characters, so that there are markers, and parts of markers, in many places.
std::string RandomText(std::mt19937& random, std::uint32_t longest) {
    std::string text;
    for (std::uint32_t left = Below(random, longest + 1); left > 0; --left) {
        text += "%%%%%123456, a"[Below(random, 14)];
    }
    return text;
}

/// The values used, gathered first and joined afterwards.
std::pair<std::string, std::string> FilledIn(std::string description, CEvent event) {
    const std::string values[] = {event.GetPlaceHolder1(), event.GetPlaceHolder2(), event.GetPlaceHolder3(),
                                  event.GetPlaceHolder4(), event.GetPlaceHolder5(), event.GetPlaceHolder6()};
    std::vector<std::string> used;
    for (std::size_t i = 0; i < std::size(values); ++i) {
        const std::size_t position = description.find("%" + std::to_string(i + 1));
        if (!values[i].empty() && position != std::string::npos) {
            used.push_back(values[i]);
            description = description.substr(0, position) + values[i] + description.substr(position + 2);
        }
    }
    std::string list = "[";
    for (std::size_t i = 0; i < used.size(); ++i) {
        list += i == 0 ? used[i] : ", " + used[i];
    }
    return {description, list + "]"};
}

TEST_F(EventRendering, RandomDescriptionsAreFilledInOnePlaceholderAfterTheOther) {
    constexpr int RESOURCE = 7;
    std::mt19937 random(RandomSeed());
    for (int round = 0; round < 20000; ++round) {
        CEvent event;
        CLanguageSupport::SetString(RESOURCE, RandomText(random, 6));
        for (std::size_t i = 0; i < std::size(TEXT_SETTERS); ++i) {
            if (Below(random, 4) == 0) {
                (event.*NUMBER_SETTERS[i])(RESOURCE + static_cast<int>(Below(random, 2)));
            } else {
                (event.*TEXT_SETTERS[i])(RandomText(random, 6));
            }
        }
        const std::string text = "a" + RandomText(random, 30);
        const auto [description, used] = FilledIn(text, event);

        Describe(text, event);

        ASSERT_EQ(m_Description, description) << text;
        ASSERT_EQ(m_PlaceHolders, used) << text;
    }
}

}  // namespace
