// SPDX-License-Identifier: Apache-2.0
// Rendering with a table, beside the rendering with the texts of the process.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pi/event.h>
#include <pi/plugin_helper.h>
#include <pi/text_table.h>
#include <pi/vocabulary.h>
#include <velkx/language_support.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/language_file.h"
#include "support/random_seed.h"

namespace {

using namespace PI;
using namespace PI::Test;
using testing::ElementsAre;
using testing::Pair;

using Rendered = std::vector<std::pair<std::string, std::string>>;

constexpr auto BY_NAME = WithoutText::NAME_AND_PLACEHOLDERS;

CTextTable Table(const std::string& content) {
    return CTextTable::LoadFile(LanguageFile("<Strings>" + content + "</Strings>").m_Path);
}

/// "placeholders|description", the first part "-" where it is left out.
std::string Told(const CEvent& event, const CTextTable& texts,
                 _WITHOUT_TEXT withoutText = WithoutText::UNKNOWN_EVENT) {
    std::string placeholders = "-";
    std::string description;
    for (const auto& [key, value] : CPluginHelper::StringifyEventMessageWith(event, texts, withoutText)) {
        if (key == "Placeholders") {
            placeholders = value;
        } else if (key == "Description") {
            description = value;
        }
    }
    return placeholders + "|" + description;
}

CEvent RebuildFailed() {
    CEvent event;
    event.m_EventID = EventID::REBUILD_FAILED;
    event.SetPlaceHolder1("logical drive 0");
    event.SetPlaceHolder2("media error");
    return event;
}

TEST(TableRendering, GivesThePairsOfStringifyEventMessage) {
    CEvent event = RebuildFailed();
    event.SetPlaceHolder2(70001);
    event.m_Severity = Severity::ERROR;
    event.m_Source = "plug-in";
    event.m_SequenceNumber = 4294967295;
    const CTextTable texts =
        Table("<String id='10057'>Rebuild of %1: %2</String><String id='70001'>media error</String>");
    const Rendered rendered = CPluginHelper::StringifyEventMessageWith(event, texts);
    ASSERT_EQ(rendered.size(), 9U);
    EXPECT_EQ(rendered[4].first, "Datetime");
    EXPECT_THAT(rendered,
                ElementsAre(Pair("EventID", "10057"), Pair("Host", "localhost"), Pair("Source", "plug-in"),
                            Pair("Timestamp", "0"), rendered[4], Pair("Severity", "ERROR"),
                            Pair("Placeholders", "[logical drive 0, media error]"),
                            Pair("Description", "Rebuild of logical drive 0: media error"),
                            Pair("SequenceNumber", "4294967295")));
}

TEST(TableRendering, MarkersInValuesAreFilledUnlessTheyAreText) {
    const CTextTable texts = Table("<String id='10057'>%2, %1 and %1</String><String id='70001'>%3</String>");
    CEvent event = RebuildFailed();
    event.SetPlaceHolder1("%2 %3 %1");
    event.SetPlaceHolder2(70001);
    event.SetPlaceHolder3("c");
    const auto description = [&](_MARKERS_IN_VALUES markers) {
        const Rendered rendered =
            CPluginHelper::StringifyEventMessageWith(event, texts, WithoutText::UNKNOWN_EVENT, markers);
        return rendered.at(6).second + " " + rendered.at(7).second;
    };
    EXPECT_EQ(description(MarkersInValues::FILLED), "[%2 %3 %1, %3, c] c, %2 %3 %1 and %1");
    EXPECT_EQ(description(MarkersInValues::TEXT), "[%2 %3 %1, %3] %3, %2 %3 %1 and %1");
    EXPECT_EQ(Told(event, texts), "[%2 %3 %1, %3, c]|c, %2 %3 %1 and %1");
}

TEST(TableRendering, NamesTheHostOfTheEvent) {
    CEvent event = RebuildFailed();
    event.m_Host = "server";
    EXPECT_THAT(CPluginHelper::StringifyEventMessageWith(event, CTextTable()),
                testing::Contains(Pair("Host", "server")));
}

TEST(TableRendering, LeavesTheEventAlone) {
    const CTextTable texts = Table("<String id='10057'>%1 %2</String>");
    CEvent event = RebuildFailed();
    event.m_Resolved1 = "as it was";
    const CEvent& readOnly = event;
    EXPECT_EQ(Told(readOnly, texts), "[logical drive 0, media error]|logical drive 0 media error");
    EXPECT_EQ(Told(readOnly, CTextTable(), BY_NAME).substr(0, 1), "[");
    EXPECT_EQ(event.m_Resolved1, "as it was");
    EXPECT_EQ(event.m_Resolved2, "");
}

TEST(TableRendering, LooksAtNoTextOfTheProcess) {
    CLanguageSupport::SetString(10057, "of the process: %1");
    CLanguageSupport::SetString(70001, "of the process");
    CEvent event = RebuildFailed();
    EXPECT_EQ(Told(event, CTextTable()), "-|Unknown Event");
    event.SetPlaceHolder2(70001);
    EXPECT_EQ(Told(event, Table("<String id='10057'>%1 %2</String>")),
              "[logical drive 0]|logical drive 0 %2");
    CLanguageSupport::Clear();
}

TEST(TableRendering, EveryTextMayComeFromAnotherLanguage) {
    const CTextTable german = Table("<String id='10057'>Wiederherstellung von %1: %2</String>");
    const CTextTable english =
        Table("<String id='10057'>Rebuild</String><String id='1'>media error</String>");
    CEvent event = RebuildFailed();
    event.SetPlaceHolder2(1);
    EXPECT_EQ(Told(event, german.WithFallback(english)),
              "[logical drive 0, media error]|Wiederherstellung von logical drive 0: media error");
}

TEST(TableRendering, OneEventIsShownInSeveralLanguages) {
    const CEvent event = RebuildFailed();
    EXPECT_EQ(Told(event, Table("<String id='10057'>Rebuild of %1 failed</String>")),
              "[logical drive 0]|Rebuild of logical drive 0 failed");
    EXPECT_EQ(Told(event, Table("<String id='10057'>%1: Wiederherstellung fehlgeschlagen</String>")),
              "[logical drive 0]|logical drive 0: Wiederherstellung fehlgeschlagen");
}

// --- Without a text

TEST(RenderingWithoutText, IsAnUnknownEventUnlessTheNameIsAskedFor) {
    EXPECT_EQ(Told(RebuildFailed(), CTextTable()), "-|Unknown Event");
    EXPECT_EQ(Told(RebuildFailed(), CTextTable(), static_cast<_WITHOUT_TEXT>(2)), "-|Unknown Event");
    EXPECT_EQ(Told(RebuildFailed(), CTextTable(), BY_NAME),
              "[logical drive 0, media error]|REBUILD_FAILED: logical drive 0, media error");
}

TEST(RenderingWithoutText, HasTheNinePairsInTheirOrder) {
    const Rendered rendered =
        CPluginHelper::StringifyEventMessageWith(RebuildFailed(), CTextTable(), BY_NAME);
    ASSERT_EQ(rendered.size(), 9U);
    EXPECT_EQ(rendered[6].first, "Placeholders");
    EXPECT_EQ(rendered[7].first, "Description");
    EXPECT_EQ(rendered[8].first, "SequenceNumber");
}

TEST(RenderingWithoutText, TheNameIsNotAskedForWhereThereIsAText) {
    EXPECT_EQ(Told(RebuildFailed(), Table("<String id='10057'>Rebuild failed</String>"), BY_NAME),
              "[]|Rebuild failed");
}

TEST(RenderingWithoutText, NamesAnEventWithoutPlaceholders) {
    CEvent event;
    EXPECT_EQ(Told(event, CTextTable(), BY_NAME), "[]|UNKNOWN");
}

TEST(RenderingWithoutText, NumbersAnEventWithoutAName) {
    CEvent event;
    event.m_EventID = 70001;
    EXPECT_EQ(Told(event, CTextTable(), BY_NAME), "[]|Event 70001");
    event.SetPlaceHolder6("F");
    EXPECT_EQ(Told(event, CTextTable(), BY_NAME), "[F]|Event 70001: F");
    event.m_EventID = 4294967295;
    EXPECT_EQ(Told(event, CTextTable(), BY_NAME), "[F]|Event 4294967295: F");
}

TEST(RenderingWithoutText, TellsAllPlaceholdersThatAreNotEmpty) {
    CEvent event = RebuildFailed();
    event.SetPlaceHolder1("%2");
    event.m_PlaceHolder3 = "raw";
    event.SetPlaceHolder4("");
    event.SetPlaceHolder6("F");
    EXPECT_EQ(Told(event, CTextTable(), BY_NAME),
              "[%2, media error, raw, T:, F]|REBUILD_FAILED: %2, media error, raw, T:, F");
}

TEST(RenderingWithoutText, NumbersAResourceWithoutAText) {
    CEvent event = RebuildFailed();
    event.SetPlaceHolder1(70001);
    event.SetPlaceHolder2(-5);
    event.m_PlaceHolder3 = "I:no number";
    EXPECT_EQ(Told(event, Table("<String id='70001'>disk</String>"), BY_NAME),
              "[disk, resource 4294967291, resource 0]|"
              "REBUILD_FAILED: disk, resource 4294967291, resource 0");
}

// --- Any description with any placeholders

/// Of few characters, so that there are markers, and parts of markers, in many places.
std::string RandomText(std::mt19937& random, std::uint32_t longest) {
    std::string text;
    for (std::uint32_t left = Below(random, longest + 1); left > 0; --left) {
        text += "%%%%%123456, a"[Below(random, 14)];
    }
    return text;
}

TEST(TableRendering, RandomEventsReadAsWithTheSameTextsInTheProcess) {
    constexpr std::uint32_t TEXTS = 500;
    std::mt19937 random(RandomSeed());
    std::string content = "<Strings>";
    for (std::uint32_t id = 0; id < TEXTS; ++id) {
        content += "<String id='" + std::to_string(id) + "'>" + RandomText(random, 30) + "</String>";
    }
    const LanguageFile file(content + "</Strings>");
    CLanguageSupport::LoadFile(file.m_Path);
    const CTextTable texts = CTextTable::LoadFile(file.m_Path);
    for (int round = 0; round < 10000; ++round) {
        CEvent event;
        event.m_EventID = Below(random, TEXTS + 10);
        event.m_Severity = static_cast<_SEVERITY>(Below(random, 6));
        event.m_TimeStamp = random();
        for (std::string CEvent::*placeholder :
             {&CEvent::m_PlaceHolder1, &CEvent::m_PlaceHolder2, &CEvent::m_PlaceHolder3,
              &CEvent::m_PlaceHolder4, &CEvent::m_PlaceHolder5, &CEvent::m_PlaceHolder6}) {
            switch (Below(random, 4)) {
                case 0: break;
                case 1: event.*placeholder = "I:" + std::to_string(Below(random, TEXTS + 100)); break;
                case 2: event.*placeholder = "T:" + RandomText(random, 6); break;
                default: event.*placeholder = RandomText(random, 6); break;
            }
        }
        const Rendered rendered = CPluginHelper::StringifyEventMessageWith(event, texts);
        ASSERT_EQ(rendered, CPluginHelper::StringifyEventMessage(event)) << event.m_EventID;
    }
    CLanguageSupport::Clear();
}

}  // namespace
