// SPDX-License-Identifier: Apache-2.0
// Threads that look up numbers, names, help topics and icons.

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <vector>

#include "threads/concurrently.h"

using namespace PI;
using namespace PI::Test;

namespace {

struct Known {
    int m_Number;
    const char* m_Name;
};

constexpr Known ERROR_CODES[] = {
#define PI_ERROR_CODE(number, constant, name) {number, name},
#include <pi/vocabulary/error_codes.def>
#undef PI_ERROR_CODE
};
constexpr Known PROPERTY_IDS[] = {
#define PI_PROPERTY_ID(number, constant, name) {number, name},
#include <pi/vocabulary/property_ids.def>
#undef PI_PROPERTY_ID
};
constexpr Known PROPERTY_VALUES[] = {
#define PI_PROPERTY_VALUE(number, constant, name) {number, name},
#include <pi/vocabulary/property_values.def>
#undef PI_PROPERTY_VALUE
};
constexpr Known OPERATION_IDS[] = {
#define PI_OPERATION_ID(number, constant, name) {number, name},
#include <pi/vocabulary/operation_ids.def>
#undef PI_OPERATION_ID
};
constexpr Known EVENT_IDS[] = {
#define PI_EVENT_ID(number, constant, name) {number, name},
#include <pi/vocabulary/event_ids.def>
#undef PI_EVENT_ID
};

/// The names of a list, the first one where a number stands twice.
template <std::size_t Count>
std::map<int, std::string> NamesOf(const Known (&list)[Count]) {
    std::map<int, std::string> names;
    for (const Known& known : list) {
        names.emplace(known.m_Number, known.m_Name);
    }
    return names;
}

}  // namespace

TEST(VocabularyThreads, KnownNumbersOfEveryVocabularyAreNamed) {
    struct Vocabulary {
        const std::string& (*m_NameOf)(int);
        std::map<int, std::string> m_Names;
    };
    const Vocabulary vocabularies[] = {
        {ErrorCodeToString, NamesOf(ERROR_CODES)},
        {PropertyIDToString, NamesOf(PROPERTY_IDS)},
        {PropertyValueToString, NamesOf(PROPERTY_VALUES)},
        {OperationIDToString, NamesOf(OPERATION_IDS)},
        {EventIDToString, NamesOf(EVENT_IDS)},
    };
    EXPECT_EQ(WrongResultsOf([&](int thread) {
                  int wrong = 0;
                  for (std::size_t i = 0; i < std::size(vocabularies); ++i) {
                      // Each thread begins with another vocabulary, so that all are asked at once.
                      const Vocabulary& vocabulary =
                          vocabularies[(i + static_cast<std::size_t>(thread)) % std::size(vocabularies)];
                      for (const auto& [number, name] : vocabulary.m_Names) {
                          wrong += vocabulary.m_NameOf(number) != name;
                      }
                  }
                  return wrong;
              }),
              0);
}

TEST(VocabularyThreads, UnknownNumbersOfEveryVocabularyAreRememberedOnce) {
    constexpr const std::string& (*NAMES_OF[])(int) = {
        ErrorCodeToString, PropertyIDToString, PropertyValueToString, OperationIDToString, EventIDToString};
    constexpr int FIRST = -500;
    constexpr int LAST = 500;  // among them some known numbers
    using Names = std::vector<const std::string*>;
    std::array<Names, THREADS> names;
    EXPECT_EQ(WrongResultsOf([&](int thread) {
                  int wrong = 0;
                  Names& own = names[static_cast<std::size_t>(thread)];
                  for (const auto nameOf : NAMES_OF) {
                      for (int number = LAST; number >= FIRST; --number) {
                          own.push_back(&nameOf(number));
                          wrong += number < 0 && !own.back()->empty();
                      }
                      wrong += StringToPropertyValue("ENABLED", -1) != 40000;
                      wrong += StringToPropertyValue("", 7) > 0;
                  }
                  return wrong;
              }),
              0);
    for (const Names& own : names) {
        EXPECT_EQ(own, names[0]);
    }
    std::sort(names[0].begin(), names[0].end());
    EXPECT_EQ(std::adjacent_find(names[0].begin(), names[0].end()), names[0].end())
        << "two numbers share a string";
    EXPECT_EQ(StringToPropertyValue("", 7), FIRST);
}

TEST(VocabularyThreads, NumbersAreFoundByNameWhileNumbersAreNamed) {
    EXPECT_EQ(WrongResultsOf([](int) {
                  int wrong = 0;
                  for (int i = 0; i < 20; ++i) {
                      wrong += StringToPropertyValue("RAID0", -1) != 40007;
                      wrong += StringToPropertyValue("NO SUCH NAME", -1) != -1;
                      wrong += PropertyValueToString(40007) != "RAID0";
                      wrong += !PropertyValueToString(1'000'000 + i).empty();
                  }
                  return wrong;
              }),
              0);
}

TEST(VocabularyThreads, HelpTopicsAndIconsAreFound) {
    EXPECT_EQ(WrongResultsOf([](int) {
                  int wrong = 0;
                  std::string text;
                  for (int i = 0; i < 100; ++i) {
                      wrong += CPluginHelper::GetHelpPath(23002, text) != ErrorCode::SUCCESS ||
                               text != "properties.htm#ADAPTER_ACTIVITY";
                      wrong += CPluginHelper::GetIconPath(24118, text) != ErrorCode::SUCCESS ||
                               text != "drive_warn_aura_fgn.gif";
                      wrong += CPluginHelper::GetIconPath(-1, text) != ErrorCode::GENERAL || !text.empty();
                  }
                  return wrong;
              }),
              0);
}
