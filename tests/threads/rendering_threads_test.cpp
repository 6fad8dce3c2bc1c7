// SPDX-License-Identifier: Apache-2.0
// Threads that render different events while the language changes, and estimate the time of different
// activities.

#include <gtest/gtest.h>
#include <pi/etr.h>
#include <pi/event.h>
#include <pi/plugin_helper.h>
#include <pi/text_table.h>
#include <pi/vocabulary.h>
#include <unistd.h>
#include <velkx/language_support.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <utility>

#include "support/language_file.h"
#include "threads/concurrently.h"

using namespace PI;
using namespace PI::Test;

namespace {

using Rendered = std::vector<std::pair<std::string, std::string>>;

class RenderingThreads : public testing::Test {
protected:
    RenderingThreads() {
        setenv("TZ", "UTC", 1);
        CLanguageSupport::Clear();
        CLanguageSupport::SetString(10056, "Drive %1 in slot %2 failed");
        CLanguageSupport::SetString(900, "slot seven");
    }
    ~RenderingThreads() override { CLanguageSupport::Clear(); }
};

CEvent EventOf(int thread, int i) {
    CEvent event;
    event.m_EventID = 10056;
    event.m_TimeStamp = 1614848700123;
    event.m_Severity = Severity::ERROR;
    event.m_SequenceNumber = static_cast<std::uint32_t>(i);
    event.SetPlaceHolder1(std::to_string(thread));
    event.SetPlaceHolder2(900);
    return event;
}

Rendered Expected(int thread, int i, const std::string& verb) {
    return {{"EventID", "10056"},
            {"Host", "localhost"},
            {"Source", ""},
            {"Timestamp", "1614848700123"},
            {"Datetime", "03/04/2021 09:05:00"},
            {"Severity", "ERROR"},
            {"Placeholders", "[" + std::to_string(thread) + ", slot seven]"},
            {"Description", "Drive " + std::to_string(thread) + " in slot slot seven " + verb},
            {"SequenceNumber", std::to_string(i)}};
}

}  // namespace

TEST_F(RenderingThreads, DifferentEventsAreRenderedAtOnce) {
    EXPECT_EQ(WrongResultsOf([](int thread) {
                  int wrong = 0;
                  for (int i = 0; i < 100; ++i) {
                      CEvent event = EventOf(thread, i);
                      wrong += CPluginHelper::StringifyEventMessage(event) != Expected(thread, i, "failed");
                  }
                  return wrong;
              }),
              0);
}

TEST_F(RenderingThreads, AnEventIsRenderedInTheOldLanguageOrTheNew) {
    const std::string path =
        testing::TempDir() + "rendering_threads_test." + std::to_string(getpid()) + ".xml";
    std::ofstream(path) << "<Strings><String id='10056'>Drive %1 in slot %2 broke</String></Strings>";
    EXPECT_EQ(WrongResultsOf([&](int thread) {
                  int wrong = 0;
                  for (int i = 0; i < 50; ++i) {
                      if (thread == 0) {
                          CLanguageSupport::LoadFile(path);
                          CLanguageSupport::SetString(10056, "Drive %1 in slot %2 failed");
                      }
                      CEvent event = EventOf(thread, i);
                      const Rendered rendered = CPluginHelper::StringifyEventMessage(event);
                      wrong += rendered != Expected(thread, i, "failed") &&
                               rendered != Expected(thread, i, "broke");
                  }
                  return wrong;
              }),
              0);
    std::filesystem::remove(path);
}

// Each event is shown in two languages at once, while every fourth thread loads the tables anew and hands
// them to the others.
TEST_F(RenderingThreads, OneEventIsRenderedInSeveralLanguagesWhileOthersAreLoaded) {
    const LanguageFile english(
        "<Strings><String id='10056'>Drive %1 in slot %2 failed</String>"
        "<String id='900'>slot seven</String></Strings>");
    const LanguageFile german("<Strings><String id='10056'>Drive %1 in slot %2 fiel aus</String></Strings>");
    const auto load = [&] {
        const CTextTable fallback = CTextTable::LoadFile(english.m_Path);
        return std::pair(fallback, CTextTable::LoadFile(german.m_Path).WithFallback(fallback));
    };
    std::mutex mutex;
    std::pair<CTextTable, CTextTable> current = load();
    const CEvent event = EventOf(3, 7);
    CEvent withoutText = EventOf(3, 7);
    withoutText.m_EventID = EventID::REBUILD_FAILED;
    const Rendered inEnglish = Expected(3, 7, "failed");
    const Rendered inGerman = Expected(3, 7, "fiel aus");
    EXPECT_EQ(WrongResultsOf(
                  [&](int thread) {
                      int wrong = 0;
                      for (int i = 0; i < 1250; ++i) {
                          if (thread % 4 == 0 && i % 50 == 0) {
                              auto loaded = load();
                              const std::lock_guard lock(mutex);
                              current = std::move(loaded);
                          }
                          const auto tables = [&] {
                              const std::lock_guard lock(mutex);
                              return current;
                          }();
                          const bool isEnglish = (thread + i) % 2 == 0;
                          wrong += CPluginHelper::StringifyEventMessageWith(
                                       event, isEnglish ? tables.first : tables.second) !=
                                   (isEnglish ? inEnglish : inGerman);
                          wrong += CPluginHelper::StringifyEventMessageWith(
                                       withoutText, tables.second, WithoutText::NAME_AND_PLACEHOLDERS)
                                       .at(7)
                                       .second != "REBUILD_FAILED: 3, slot seven";
                      }
                      return wrong;
                  },
                  16),
              0);
}

TEST_F(RenderingThreads, TextsAreComparedWithResources) {
    EXPECT_EQ(WrongResultsOf([](int) {
                  int wrong = 0;
                  for (int i = 0; i < 100; ++i) {
                      wrong += !CPluginHelper::MatchNLS("SLOT Seven", 900, false);
                      wrong += !CPluginHelper::MatchNLS("slotseven", 900, true);
                      wrong += CPluginHelper::MatchNLS("slot", 900, false);
                  }
                  return wrong;
              }),
              0);
}

TEST(EstimateThreads, DifferentActivitiesAreEstimatedAtOnce) {
    EXPECT_EQ(WrongResultsOf([](int) {
                  CETR etr;
                  std::string text;
                  etr.Compute(10, 1'000'000);
                  etr.Compute(20, 2'000'000);
                  etr.GetETR(text);
                  return text == "23:33:20" ? 0 : 1;
              }),
              0);
}
