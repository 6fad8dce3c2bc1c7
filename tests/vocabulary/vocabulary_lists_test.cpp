// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>
#include <pi/vocabulary_lists.h>

#include <algorithm>
#include <climits>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "vocabulary/expected_names.h"

namespace {

namespace Lists = PI::Vocabulary;
using Row = std::tuple<int, std::string, std::string>;

struct NamedVocabulary {
    PI::CVocabulary m_Vocabulary;
    const char* m_ExpectedNames;
    const std::string& (*m_ToString)(int);
    std::vector<Row> m_Aliases;  ///< constants of numbers that have a name already
};

const std::vector<NamedVocabulary>& Named() {
    static const std::vector<NamedVocabulary> vocabularies = {
        {Lists::ErrorCodes(), "error_codes.tsv", PI::ErrorCodeToString, {}},
        {Lists::PropertyIDs(),
         "property_ids.tsv",
         PI::PropertyIDToString,
         {{1, "FRAME_END", "FRAME_END"}, {29900, "OBJECT_NAME", "OBJECT_NAME"}}},
        {Lists::PropertyValues(), "property_values.tsv", PI::PropertyValueToString, {}},
        {Lists::OperationIDs(), "operation_ids.tsv", PI::OperationIDToString, {}},
        {Lists::EventIDs(), "event_ids.tsv", PI::EventIDToString, {}},
    };
    return vocabularies;
}

/// How C++ spells the constant of a name.
std::string Constant(const std::string& name, std::set<std::string>& taken) {
    std::string constant = name.empty() ? "EMPTY" : name;
    if (constant[0] >= '0' && constant[0] <= '9') {
        constant = "_" + constant;
    }
    return taken.insert(constant).second ? constant : constant + "_2";
}

std::vector<Row> ExpectedRows(const NamedVocabulary& vocabulary) {
    std::vector<Row> rows;
    std::set<std::string> taken;
    for (const auto& [number, name] : PI::Test::ExpectedNames(vocabulary.m_ExpectedNames)) {
        rows.emplace_back(number, Constant(name, taken), name);
        for (const Row& alias : vocabulary.m_Aliases) {
            if (std::get<0>(alias) == number) {
                rows.push_back(alias);
            }
        }
    }
    return rows;
}

std::vector<Row> Rows(const PI::CVocabulary& vocabulary) {
    std::vector<Row> rows;
    for (const PI::CVocabularyEntry entry : vocabulary) {
        rows.emplace_back(entry.Number(), entry.Constant(), entry.Name());
    }
    return rows;
}

TEST(VocabularyLists, HoldEveryNumberWithItsConstantAndItsName) {
    for (const NamedVocabulary& vocabulary : Named()) {
        EXPECT_EQ(Rows(vocabulary.m_Vocabulary), ExpectedRows(vocabulary)) << vocabulary.m_ExpectedNames;
    }
}

TEST(VocabularyLists, GiveANumberTheNameOfItsLookUpFirst) {
    for (const NamedVocabulary& vocabulary : Named()) {
        for (const PI::CVocabularyEntry entry : vocabulary.m_Vocabulary) {
            const auto first = vocabulary.m_Vocabulary.Find(entry.Number());
            ASSERT_TRUE(first.has_value());
            EXPECT_EQ(first->Number(), entry.Number());
            EXPECT_EQ(first->Name(), vocabulary.m_ToString(entry.Number()));
        }
    }
}

TEST(VocabularyLists, KeepTheirRowsWhenAnUnknownNumberIsRemembered) {
    const std::size_t count = Lists::ErrorCodes().Count();
    PI::ErrorCodeToString(-7);
    EXPECT_EQ(Lists::ErrorCodes().Count(), count);
    EXPECT_FALSE(Lists::ErrorCodes().Find(-7).has_value());
}

TEST(VocabularyLists, FindNothingBesideTheirNumbers) {
    for (const int number : {INT_MIN, -1, 2, 19999, 20167, INT_MAX}) {
        EXPECT_FALSE(Lists::ErrorCodes().Find(number).has_value()) << number;
    }
    EXPECT_STREQ(Lists::PropertyIDs().Find(INT_MAX)->Constant(), "UNSPECIFIED");
    EXPECT_STREQ(Lists::PropertyIDs().Find(1)->Constant(), "UNDEFINED");
}

TEST(VocabularyLists, HoldHelpTopicsAndIconsWithoutConstants) {
    for (const auto& [vocabulary, expected] :
         {std::pair(Lists::HelpTopics(), "help_topics.tsv"), std::pair(Lists::Icons(), "icons.tsv")}) {
        std::vector<Row> rows;
        for (const auto& [number, name] : PI::Test::ExpectedNames(expected)) {
            rows.emplace_back(number, "", name);
        }
        EXPECT_EQ(Rows(vocabulary), rows) << expected;
    }
}

TEST(VocabularyLists, AreReachedByIndexToo) {
    const PI::CVocabulary icons = Lists::Icons();
    ASSERT_EQ(icons.Count(), 212U);
    EXPECT_EQ(icons.At(0).Number(), 24000);
    EXPECT_STREQ(icons.At(0).Name(), "adapter_ok_no.gif");
    EXPECT_EQ(icons.At(211).Number(), (*std::next(icons.begin(), 211)).Number());
    EXPECT_THROW(icons.At(212), std::out_of_range);
    EXPECT_THROW(icons.At(SIZE_MAX), std::out_of_range);
}

TEST(VocabularyLists, WorkWithTheStandardAlgorithms) {
    const PI::CVocabulary values = Lists::PropertyValues();
    const auto found = std::find_if(values.begin(), values.end(), [](const PI::CVocabularyEntry& entry) {
        return std::string(entry.Name()) == "512B";
    });
    ASSERT_NE(found, values.end());
    EXPECT_STREQ((*found).Constant(), "_512B");
    EXPECT_EQ(std::distance(values.begin(), values.end()), static_cast<std::ptrdiff_t>(values.Count()));
}

}  // namespace
