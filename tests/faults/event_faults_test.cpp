// SPDX-License-Identifier: Apache-2.0
// Memory running out while events are copied, set, read and rendered, languages loaded and time estimated.

#include <gtest/gtest.h>
#include <pi/etr.h>
#include <pi/event.h>
#include <pi/plugin_helper.h>
#include <pi/text_table.h>
#include <unistd.h>
#include <velkx/language_support.h>

#include <filesystem>
#include <fstream>
#include <optional>

#include "failing_memory.h"
#include "formatted_traces.h"
#include "support/language_file.h"

using namespace PI;
using namespace PI::Test;

namespace {

using Rendered = std::vector<std::pair<std::string, std::string>>;

const std::string LONG_TEXT = "a text that is too long to be held without memory of its own";
constexpr unsigned int DESCRIPTION = 10056;
constexpr int RESOURCE = 900;

class EventFaults : public testing::Test {
protected:
    EventFaults() {
        CLanguageSupport::Clear();
        CLanguageSupport::SetString(DESCRIPTION, "Drive %1 of the enclosure %2 failed: %3");
        CLanguageSupport::SetString(RESOURCE, "enclosure " + LONG_TEXT);
        m_Event.m_EventID = DESCRIPTION;
        m_Event.m_Host = LONG_TEXT + " host";
        m_Event.m_Source = LONG_TEXT + " source";
        m_Event.m_TimeStamp = 1614848700123;
        m_Event.SetPlaceHolder1(LONG_TEXT + " one");
        m_Event.SetPlaceHolder2(RESOURCE);
        m_Event.SetPlaceHolder3(LONG_TEXT + " three");
    }
    ~EventFaults() override { CLanguageSupport::Clear(); }

    CEvent m_Event;
};

std::string Resolved(unsigned int id) {
    std::string text;
    CLanguageSupport::ResolveString(id, text);
    return text;
}

void ExpectSameStored(const CEvent& event, const CEvent& expected) {
    EXPECT_TRUE(event == expected);
    EXPECT_EQ(event.m_PlaceHolder1, expected.m_PlaceHolder1);
    EXPECT_EQ(event.m_PlaceHolder2, expected.m_PlaceHolder2);
    EXPECT_EQ(event.m_PlaceHolder3, expected.m_PlaceHolder3);
    EXPECT_EQ(event.m_Host, expected.m_Host);
    EXPECT_EQ(event.m_Source, expected.m_Source);
}

}  // namespace

TEST_F(EventFaults, ASetterThatFailsKeepsThePlaceholder) {
    RunOutOfMemoryEverywhere(
        [&] { return m_Event; }, [](CEvent& event) { event.SetPlaceHolder1("new " + LONG_TEXT); },
        [&](const CEvent& event, Ending ending) {
            EXPECT_NE(ending, Ending::ABSORBED);
            EXPECT_EQ(event.m_PlaceHolder1,
                      ending == Ending::DONE ? "T:new " + LONG_TEXT : m_Event.m_PlaceHolder1);
        });
}

TEST_F(EventFaults, AGetterThatFailsChangesNothingStored) {
    const auto expectCleanFailure = [&](std::string& (CEvent::*getter)(), const std::string& expected) {
        RunOutOfMemoryEverywhere([&] { return m_Event; }, getter,
                                 [&](CEvent& event, Ending ending) {
                                     EXPECT_NE(ending, Ending::ABSORBED);
                                     ExpectSameStored(event, m_Event);
                                     EXPECT_EQ((event.*getter)(), expected);
                                 });
    };
    expectCleanFailure(&CEvent::GetPlaceHolder1, LONG_TEXT + " one");
    expectCleanFailure(&CEvent::GetPlaceHolder2, "enclosure " + LONG_TEXT);
}

// What fails while the description is looked up or filled in makes it "Unknown Event"; the rest throws.
TEST_F(EventFaults, AnEventIsRenderedWithoutAFigureAmissOrNotAtAll) {
    const Rendered complete = CPluginHelper::StringifyEventMessage(m_Event);
    ASSERT_EQ(complete.size(), 9U);
    Rendered withoutText = complete;
    withoutText.erase(withoutText.begin() + 6);
    withoutText[6].second = "Unknown Event";
    int threw = 0;
    int absorbed = 0;
    struct Rendering {
        CEvent m_Event;
        Rendered m_Rendered;
    };
    RunOutOfMemoryEverywhere(
        [&] {
            return Rendering{m_Event, {}};
        },
        [](Rendering& run) { run.m_Rendered = CPluginHelper::StringifyEventMessage(run.m_Event); },
        [&](Rendering& run, Ending ending) {
            ExpectSameStored(run.m_Event, m_Event);
            if (ending == Ending::THREW) {
                ++threw;
                EXPECT_EQ(run.m_Rendered, Rendered());
            } else if (ending == Ending::DONE) {
                EXPECT_EQ(run.m_Rendered, complete);
            } else if (run.m_Rendered != withoutText) {
                ++absorbed;
                ASSERT_EQ(run.m_Rendered.size(), 9U);
                EXPECT_EQ(run.m_Rendered[7].second, "Unknown Event");
                const std::string listed = run.m_Rendered[6].second;
                const std::string one = LONG_TEXT + " one";
                const std::string two = one + ", enclosure " + LONG_TEXT;
                EXPECT_TRUE(listed == "[]" || listed == "[" + one + "]" || listed == "[" + two + "]" ||
                            listed == complete[6].second)
                    << listed;
                run.m_Rendered[6] = complete[6];
                run.m_Rendered[7] = complete[7];
                EXPECT_EQ(run.m_Rendered, complete);
            }
            EXPECT_EQ(CPluginHelper::StringifyEventMessage(run.m_Event), complete);
        });
    EXPECT_GT(threw, 0);
    EXPECT_GT(absorbed, 0);
}

TEST_F(EventFaults, ATableIsLoadedAndJoinedWholeOrNotAtAll) {
    const LanguageFile file("<Strings><String id='1'>" + LONG_TEXT + "</String></Strings>");
    const LanguageFile fallback("<Strings><String id='2'>two " + LONG_TEXT + "</String></Strings>");
    RunOutOfMemoryEverywhere(
        [] { return CTextTable(); },
        [&](CTextTable& table) {
            table = CTextTable::LoadFile(file.m_Path).WithFallback(CTextTable::LoadFile(fallback.m_Path));
        },
        [](const CTextTable& table, Ending ending) {
            EXPECT_NE(ending, Ending::ABSORBED);
            ASSERT_EQ(table.Find(1) != nullptr, ending == Ending::DONE);
            ASSERT_EQ(table.Find(2) != nullptr, ending == Ending::DONE);
            EXPECT_TRUE(ending == Ending::THREW || *table.Find(2) == "two " + LONG_TEXT);
        });
}

TEST_F(EventFaults, AnEventWithoutATextIsNamedOrNotRenderedAtAll) {
    const auto render = [this] {
        return CPluginHelper::StringifyEventMessageWith(m_Event, CTextTable(),
                                                        WithoutText::NAME_AND_PLACEHOLDERS);
    };
    const Rendered complete = render();
    ASSERT_EQ(complete.size(), 9U);
    RunOutOfMemoryEverywhere([] { return Rendered(); }, [&](Rendered& rendered) { rendered = render(); },
                             [&](const Rendered& rendered, Ending ending) {
                                 EXPECT_EQ(rendered, ending == Ending::THREW ? Rendered() : complete);
                             });
}

TEST_F(EventFaults, AnEventWithATextFromATableIsRenderedUnknownOrNotAtAll) {
    const std::string id = std::to_string(m_Event.m_EventID);
    const LanguageFile file("<Strings><String id='" + id + "'>" + LONG_TEXT + " %1</String></Strings>");
    const CTextTable table = CTextTable::LoadFile(file.m_Path);
    const auto render = [&] { return CPluginHelper::StringifyEventMessageWith(m_Event, table); };
    const Rendered complete = render();
    ASSERT_EQ(complete.size(), 9U);
    int absorbed = 0;
    RunOutOfMemoryEverywhere([] { return Rendered(); }, [&](Rendered& rendered) { rendered = render(); },
                             [&](const Rendered& rendered, Ending ending) {
                                 if (ending == Ending::ABSORBED) {
                                     ++absorbed;
                                     EXPECT_EQ(rendered.at(rendered.size() - 2).second, "Unknown Event");
                                 } else {
                                     EXPECT_EQ(rendered, ending == Ending::THREW ? Rendered() : complete);
                                 }
                             });
    EXPECT_GT(absorbed, 0);
}

TEST_F(EventFaults, ATextThatCannotBeStoredLeavesTheOldOne) {
    CLanguageSupport::Clear();
    RunOutOfMemoryEverywhere([] { return CLanguageSupport::SetString(RESOURCE, "old"), 0; },
                             [](int) { CLanguageSupport::SetString(RESOURCE, LONG_TEXT); },
                             [](int, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_EQ(Resolved(RESOURCE), ending == Ending::DONE ? LONG_TEXT : "old");
                                 CLanguageSupport::Clear();
                             });
}

TEST_F(EventFaults, ALanguageFileIsLoadedWholeOrNotAtAll) {
    const std::string path = testing::TempDir() + "event_faults_test." + std::to_string(getpid()) + ".xml";
    std::ofstream(path) << "<Strings><String id='900'>new " << LONG_TEXT << "</String>\n<String id='901'>"
                        << LONG_TEXT << "<![CDATA[" << LONG_TEXT << "]]></String></Strings>";
    CLanguageSupport::Clear();
    RunOutOfMemoryEverywhere(
        [] {
            CLanguageSupport::SetString(RESOURCE, "old");
            return 0;
        },
        [&](int) { CLanguageSupport::LoadFile(path); },
        [](int, Ending ending) {
            EXPECT_NE(ending, Ending::ABSORBED);
            const bool done = ending == Ending::DONE;
            EXPECT_EQ(Resolved(RESOURCE), done ? "new " + LONG_TEXT : "old");
            EXPECT_EQ(Resolved(901), done ? LONG_TEXT + LONG_TEXT : "");
            CLanguageSupport::Clear();
        });
    std::filesystem::remove(path);
}

namespace {

bool Equal(const CETR& left, const CETR& right) {
    return left.m_ID == right.m_ID && left.m_StartTime == right.m_StartTime &&
           left.m_LastTime == right.m_LastTime && left.m_RemainingTime == right.m_RemainingTime &&
           left.m_PercentageComplete == right.m_PercentageComplete && left.m_TimeStamps == right.m_TimeStamps;
}

constexpr unsigned long LATE = 1'000'000'000'000'000'000;  // long enough for a text with memory of its own

/// An estimate of so many samples that the next one needs memory.
CETR Full() {
    CETR etr(1, 0, LATE);
    for (int percent = 1; percent <= 50 && etr.m_TimeStamps.size() < etr.m_TimeStamps.capacity(); ++percent) {
        etr.Compute(percent, LATE + 100000 * static_cast<unsigned long>(percent));
    }
    return etr;
}

void ExpectSamplesToFailCleanly() {
    const CETR before = Full();
    CETR after = Full();
    after.Compute(60, LATE + 70'000'000);
    RunOutOfMemoryEverywhere(
        Full, [](CETR& etr) { etr.Compute(60, LATE + 70'000'000); },
        [&](const CETR& etr, Ending ending) {
            EXPECT_TRUE(Equal(etr, ending == Ending::THREW ? before : after));
        });
}

void ExpectNewActivitiesToFailCleanly() {
    RunOutOfMemoryEverywhere([] { return std::vector<CETR>(1, Full()); },
                             [](std::vector<CETR>& list) { CETR::Add(list, 2, 10, false, LATE); },
                             [&](const std::vector<CETR>& list, Ending ending) {
                                 ASSERT_EQ(list.size(), ending == Ending::THREW ? 1U : 2U);
                                 EXPECT_TRUE(Equal(list[0], Full()));
                                 EXPECT_TRUE(list.size() == 1 || Equal(list[1], CETR(2, 10, LATE)));
                             });
}

}  // namespace

TEST(EstimateFaults, ASampleIsTakenOrNot) {
    ExpectSamplesToFailCleanly();
    const FormattedTraces<3> traces;
    ExpectSamplesToFailCleanly();
}

TEST(EstimateFaults, AnActivityIsAddedOrNot) {
    ExpectNewActivitiesToFailCleanly();
    const FormattedTraces<3> traces;
    ExpectNewActivitiesToFailCleanly();
}

TEST(EstimateFaults, ATextIsGivenWholeOrNotAtAll) {
    CETR etr;
    etr.m_RemainingTime = 3'723'000;
    std::string out(20, '-');
    for (const Shortage shortage : {Shortage::ONCE, Shortage::LASTING}) {
        Ending ending = Ending::THREW;
        for (std::uint64_t succeeding = 0; ending != Ending::DONE; ++succeeding) {
            out.assign(20, '-');
            ending = TryWithout(succeeding, shortage, [&] { etr.GetETR(out); });
            EXPECT_EQ(out, ending == Ending::THREW ? std::string(20, '-') : "01:02:03");
        }
    }
}
