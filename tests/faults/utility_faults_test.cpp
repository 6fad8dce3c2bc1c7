// SPDX-License-Identifier: Apache-2.0
// Memory running out in names, texts, identification and numbering.

#include <gtest/gtest.h>
#include <pi/adapters.h>
#include <pi/drives.h>
#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>
#include <velkx/language_support.h>

#include <iterator>
#include <memory>
#include <optional>

#include "failing_memory.h"
#include "vocabulary/name_table.h"
#include "vocabulary/packed_rows.h"

using namespace PI;
using namespace PI::Test;

namespace {

const std::string LONG_TEXT = "a text that is too long to be held without memory of its own";

/// Functions that write a text: whole, or the exception tells.
template <class Act>
void ExpectWholeTextOrException(Act act) {
    std::string expected;
    act(expected);
    RunOutOfMemoryEverywhere([] { return std::string(); }, act,
                             [&](std::string& text, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_TRUE(ending == Ending::THREW || text == expected) << text;
                                 act(text);
                                 EXPECT_EQ(text, expected);
                             });
}

}  // namespace

constexpr char TEXT[] = "ONE\0A NAME THAT IS TOO LONG TO BE HELD WITHOUT MEMORY OF ITS OWN";
constexpr _PACKED_ROW ROWS[] = {{1, 0, 0}, {5000, 4, 4}};
const CVocabulary NAMES(ROWS, std::size(ROWS), TEXT);

TEST(NameFaults, AnUnknownNumberIsRememberedOrNot) {
    RunOutOfMemoryEverywhere([] { return std::make_unique<NameTable>(NAMES); },
                             [](const auto& names) { names->Name(2); },
                             [](const auto& names, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_EQ(names->Number("", 77), ending == Ending::DONE ? 2 : 77);
                                 EXPECT_EQ(names->Name(1), NAMES.At(0).Name());
                                 EXPECT_EQ(names->Name(5000), NAMES.At(1).Name());
                                 const std::string& name = names->Name(2);
                                 EXPECT_EQ(name, "");
                                 EXPECT_EQ(&names->Name(2), &name);
                                 EXPECT_EQ(names->Number("", 77), 2);
                             });
}

TEST(NameFaults, TheFirstSearchByNameSucceedsOrTheExceptionTells) {
    RunOutOfMemoryEverywhere([] { return std::make_unique<NameTable>(NAMES); },
                             [](const auto& names) { EXPECT_EQ(names->Number("ONE", 77), 1); },
                             [](const auto& names, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_EQ(names->Number("ONE", 77), 1);
                                 EXPECT_EQ(names->Number(NAMES.At(1).Name(), 77), 5000);
                                 EXPECT_EQ(names->Number("", 77), 77);
                             });
}

TEST(NameFaults, EveryVocabularyStaysRightAfterLookUpsThatFailed) {
    struct Vocabulary {
        const std::string& (*m_Name)(int);
        int m_Known;
        const char* m_KnownName;
    };
    constexpr int UNKNOWN = 123456789;
    for (const Vocabulary& vocabulary :
         {Vocabulary{ErrorCodeToString, 0, "SUCCESS"}, Vocabulary{PropertyIDToString, 30000, "MAJOR_VERSION"},
          Vocabulary{PropertyValueToString, 40007, "RAID0"},
          Vocabulary{OperationIDToString, 50008, "ALARM_ON"},
          Vocabulary{EventIDToString, 10000, "UNKNOWN"}}) {
        // Only the first look-up of a process needs memory for a known number.
        EXPECT_NE(TryWithout(0, Shortage::LASTING, [&] { vocabulary.m_Name(vocabulary.m_Known); }),
                  Ending::ABSORBED);
        EXPECT_EQ(vocabulary.m_Name(vocabulary.m_Known), vocabulary.m_KnownName);
        EXPECT_EQ(TryWithout(0, Shortage::LASTING, [&] { vocabulary.m_Name(vocabulary.m_Known); }),
                  Ending::DONE);
        EXPECT_EQ(TryWithout(0, Shortage::LASTING, [&] { vocabulary.m_Name(UNKNOWN); }), Ending::THREW);
        const std::string& name = vocabulary.m_Name(UNKNOWN);
        EXPECT_EQ(name, "");
        EXPECT_EQ(TryWithout(0, Shortage::LASTING, [&] { EXPECT_EQ(&vocabulary.m_Name(UNKNOWN), &name); }),
                  Ending::DONE)
            << "a number that is remembered needs no memory";
    }
    EXPECT_NE(TryWithout(0, Shortage::LASTING, [] { StringToPropertyValue("RAID0", -1); }), Ending::ABSORBED);
    EXPECT_EQ(StringToPropertyValue("RAID0", -1), 40007);
    EXPECT_EQ(TryWithout(0, Shortage::LASTING, [] { StringToPropertyValue("RAID0", -1); }), Ending::DONE);
}

TEST(TextFaults, ATextIsWrittenWholeOrTheExceptionTells) {
    ExpectWholeTextOrException([](std::string& out) { CPluginHelper::GetHelpPath(23001, out); });
    ExpectWholeTextOrException([](std::string& out) { CPluginHelper::GetIconPath(24118, out); });
    ExpectWholeTextOrException(
        [](std::string& out) { out = CPluginHelper::stringurlencode(LONG_TEXT + "/#"); });
    ExpectWholeTextOrException(
        [](std::string& out) { CPluginHelper::GenXMLNodeConformantString(LONG_TEXT, out); });
    unsigned char bytes[64] = {1, 2, 3};
    ExpectWholeTextOrException(
        [&](std::string& out) { CPluginHelper::HexDump(out, bytes, 0, sizeof(bytes)); });
    ExpectWholeTextOrException([](std::string& out) { CPluginHelper::TranslateSenseASC(0x04, 0x01, out); });
    ExpectWholeTextOrException([](std::string& out) { CPluginHelper::TranslateSenseASC(0x40, 0x85, out); });
}

TEST(TextFaults, AComparisonWithAResourceThatFailsSaysNothing) {
    CLanguageSupport::SetString(900, LONG_TEXT);
    RunOutOfMemoryEverywhere([] { return false; },
                             [](bool& equal) { equal = CPluginHelper::MatchNLS(LONG_TEXT, 900, false); },
                             [](bool equal, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_EQ(equal, ending == Ending::DONE);
                             });
    CLanguageSupport::Clear();
}

TEST(DriveFaults, AModelTextIsSplitOrTheExceptionTells) {
    using Names = std::pair<std::string, std::string>;
    const std::string model = "INNODISK_WITH_A_LONG_VENDOR " + LONG_TEXT;
    Names expected;
    CPluginHelper::SplitSATAModelName(model, expected.first, expected.second);
    RunOutOfMemoryEverywhere(
        [] { return Names(); },
        [&](Names& names) { CPluginHelper::SplitSATAModelName(model, names.first, names.second); },
        [&](const Names& names, Ending ending) {
            EXPECT_NE(ending, Ending::ABSORBED);
            EXPECT_TRUE(ending == Ending::THREW || names == expected);
        });
}

TEST(DriveFaults, SmartValuesAreMadeOrTheExceptionTells) {
    RunOutOfMemoryEverywhere(
        [] { return std::optional<CSmartValues>(); },
        [](std::optional<CSmartValues>& values) { values.emplace(LONG_TEXT, LONG_TEXT); },
        [](const std::optional<CSmartValues>& values, Ending ending) {
            EXPECT_NE(ending, Ending::ABSORBED);
            EXPECT_EQ(values.has_value(), ending == Ending::DONE);
            EXPECT_TRUE(!values || values->m_Model == LONG_TEXT);
        });
}

TEST(AdapterFaults, AnAdapterIsRegisteredOrKeepsItsIdentifier) {
    RunOutOfMemoryEverywhere(
        [] {
            CGlobalAdapterID::AllHostsAdaptersUniqueIDs.clear();
            CGlobalAdapterID adapter;
            adapter.m_HostName = LONG_TEXT;
            adapter.m_AdapterUniqueID = 5;
            return adapter;
        },
        [](CGlobalAdapterID& adapter) { adapter.SetAdapterUniqueID(9); },
        [](CGlobalAdapterID& adapter, Ending ending) {
            EXPECT_NE(ending, Ending::ABSORBED);
            EXPECT_EQ(adapter.GetAdapterUniqueID(), ending == Ending::DONE ? 9 : 5);
            EXPECT_EQ(adapter.GetGlobalAdapterNumber(), ending == Ending::DONE ? 0U : 0xFFFFFFFFU);
            adapter.SetAdapterUniqueID(9);
            EXPECT_EQ(adapter.GetGlobalAdapterNumber(), 0U);
            CGlobalAdapterID::AllHostsAdaptersUniqueIDs.clear();
        });
}
