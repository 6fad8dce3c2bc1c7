// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/vocabulary.h>

#include <climits>
#include <string>

#include "vocabulary/expected_names.h"

namespace {

struct Vocabulary {
    const char* m_Name;
    const std::string& (*m_ToString)(int);
    const char* m_ExpectedNames;
};

void PrintTo(const Vocabulary& vocabulary, std::ostream* stream) {
    *stream << vocabulary.m_Name;
}

constexpr Vocabulary VOCABULARIES[] = {
    {"ErrorCode", PI::ErrorCodeToString, "error_codes.tsv"},
    {"PropertyID", PI::PropertyIDToString, "property_ids.tsv"},
    {"PropertyValue", PI::PropertyValueToString, "property_values.tsv"},
    {"OperationID", PI::OperationIDToString, "operation_ids.tsv"},
    {"EventID", PI::EventIDToString, "event_ids.tsv"},
};

class Names : public testing::TestWithParam<Vocabulary> {
protected:
    const std::string& Name(int number) const { return GetParam().m_ToString(number); }

    const std::map<int, std::string> m_Expected = PI::Test::ExpectedNames(GetParam().m_ExpectedNames);
};

INSTANTIATE_TEST_SUITE_P(AllVocabularies, Names, testing::ValuesIn(VOCABULARIES),
                         [](const auto& instance) { return instance.param.m_Name; });

TEST_P(Names, EveryNumberHasItsName) {
    ASSERT_FALSE(m_Expected.empty());
    for (const auto& [number, name] : m_Expected) {
        EXPECT_EQ(Name(number), name) << number;
    }
}

TEST_P(Names, NoOtherNumberFromZeroToSixtyThousandHasAName) {
    for (int number = 0; number <= 60000; ++number) {
        const auto expected = m_Expected.find(number);
        ASSERT_EQ(Name(number), expected == m_Expected.end() ? "" : expected->second) << number;
    }
}

TEST_P(Names, SameNumberGivesTheSameString) {
    for (const auto& [number, name] : m_Expected) {
        EXPECT_EQ(&Name(number), &Name(number)) << number;
    }
}

TEST_P(Names, UnknownNumberGivesTheSameEmptyStringTwice) {
    const int unknown[] = {2147483646, 60001, 19999, 9999};
    for (const int number : unknown) {
        const std::string& first = Name(number);
        EXPECT_EQ(first, "") << number;
        EXPECT_EQ(&Name(number), &first) << number;
    }
    EXPECT_NE(&Name(60001), &Name(60002));
}

TEST_P(Names, ReferencesOutliveLookUpsOfUnknownNumbers) {
    const auto& [number, name] = *m_Expected.rbegin();
    const std::string& before = Name(number);

    for (int unknown = 70000; unknown < 75000; ++unknown) {
        Name(unknown);
    }

    EXPECT_EQ(&Name(number), &before);
    EXPECT_EQ(before, name);
}

TEST_P(Names, LargestNumbersAreLookedUpLikeAllOthers) {
    EXPECT_EQ(Name(INT_MAX), GetParam().m_ToString == PI::PropertyIDToString ? "UNSPECIFIED" : "");
    EXPECT_EQ(Name(INT_MAX - 1), "");
}

TEST_P(Names, AreUpperCaseLettersDigitsAndUnderscores) {
    const bool values = GetParam().m_ToString == PI::PropertyValueToString;
    for (const auto& [number, name] : m_Expected) {
        // The one name with small letters is meant.
        if (values && number == 40339) {
            EXPECT_EQ(Name(number), "ADAPTER_STATUS_INFO_empty");
            continue;
        }
        EXPECT_EQ(Name(number).find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_"), std::string::npos)
            << number;
    }
}

TEST(ErrorCodeToString, KeepsDeliberateSpellings) {
    EXPECT_EQ(PI::ErrorCodeToString(20067), "LOGICALDRIVE_NOT_CREATEABLE");
    EXPECT_EQ(PI::ErrorCodeToString(20102), "HINT_UNUSEABLE_SEGMENT");
}

TEST(ErrorCodeToString, NamesTheTellingCodes) {
    EXPECT_EQ(PI::ErrorCodeToString(0), "SUCCESS");
    EXPECT_EQ(PI::ErrorCodeToString(20000), "GENERAL");
    EXPECT_EQ(PI::ErrorCodeToString(20121), "TIMEOUT");
    EXPECT_EQ(PI::ErrorCodeToString(20125), "SHUTTING_DOWN");
    EXPECT_EQ(PI::ErrorCodeToString(20128), "PLUGIN_BUSY");
    EXPECT_EQ(PI::ErrorCodeToString(20174), "MDADM_ERROR");
    EXPECT_EQ(PI::ErrorCodeToString(20175), "UNAUTHORIZED");
    EXPECT_EQ(PI::ErrorCodeToString(1), "");
}

TEST(ErrorCodeToString, MailBlockBeginsWithSmtp) {
    for (int code = 20136; code <= 20160; ++code) {
        EXPECT_EQ(PI::ErrorCodeToString(code).rfind("SMTP_", 0), 0u) << code;
    }
}

TEST(PropertyIDToString, FirstNameOfANumberWins) {
    EXPECT_EQ(PI::PropertyIDToString(1), "UNDEFINED");
    EXPECT_EQ(PI::PropertyIDToString(29900), "RUI_PROPERTIES");
}

TEST(PropertyIDToString, RepeatedNamesBelongToBothNumbers) {
    struct Pair {
        int m_First;
        int m_Second;
        const char* m_Name;
    };
    const Pair pairs[] = {
        {29904, 30045, "RAID_LEVEL"},
        {29905, 30334, "CACHE_SETTINGS"},
        {30056, 35044, "TYPE"},
        {30063, 35031, "PRODUCT"},
        {30224, 35040, "SLOT"},
        {30295, 35042, "STARTTIME"},
        {30486, 35034, "REMAINING_RESERVE_SPACE"},
    };
    for (const Pair& pair : pairs) {
        EXPECT_EQ(PI::PropertyIDToString(pair.m_First), pair.m_Name);
        EXPECT_EQ(PI::PropertyIDToString(pair.m_Second), pair.m_Name);
        EXPECT_NE(&PI::PropertyIDToString(pair.m_First), &PI::PropertyIDToString(pair.m_Second));
    }
}

TEST(PropertyIDToString, HeadingsBeginWithHeading) {
    for (const int id : {35100, 35125, 35127, 35128}) {
        EXPECT_EQ(PI::PropertyIDToString(id).rfind("HEADING_", 0), 0u) << id;
    }
}

TEST(OperationIDToString, AddServerHasTwoNumbers) {
    EXPECT_EQ(PI::OperationIDToString(50108), "ADD_SERVER");
    EXPECT_EQ(PI::OperationIDToString(50500), "ADD_SERVER");
}

TEST(OperationIDToString, OnlyOneNameBeginsWithOp) {
    int count = 0;
    for (int id = 50000; id <= 50500; ++id) {
        count += PI::OperationIDToString(id).rfind("OP_", 0) == 0;
    }
    EXPECT_EQ(count, 1);
    EXPECT_EQ(PI::OperationIDToString(50166), "OP_GET_EVENTS_EECD");
}

TEST(EventIDToString, PlaceInTheListDoesNotMatter) {
    const auto expected = PI::Test::ExpectedNames("event_ids.tsv");

    EXPECT_EQ(PI::EventIDToString(10557), expected.at(10557));
    EXPECT_EQ(PI::EventIDToString(10558), expected.at(10558));
    EXPECT_NE(PI::EventIDToString(10557), PI::EventIDToString(10558));
}

TEST(EventIDToString, KeepsNumbersAndAbbreviationsInNames) {
    EXPECT_EQ(PI::EventIDToString(10310), "BBU_RELEARN_WILL_START_IN_4_DAYS");
    EXPECT_EQ(PI::EventIDToString(10427), "PD_STATE_CHANGE_BY_USER_AVAIL_TO_FAIL");
    EXPECT_EQ(PI::EventIDToString(11111), "EVT_PD_STATE_CHANGE_TO_FAIL");
}

TEST(SeverityNames, AreThoseOfTheConstants) {
    EXPECT_EQ(PI::SeverityToString(PI::Severity::DEBUG), "DEBUG");
    EXPECT_EQ(PI::SeverityToString(PI::Severity::INFORMATION), "INFORMATION");
    EXPECT_EQ(PI::SeverityToString(PI::Severity::WARNING), "WARNING");
    EXPECT_EQ(PI::SeverityToString(PI::Severity::ERROR), "ERROR");
}

TEST(SeverityNames, OfAnyOtherNumberIsThatOfDebug) {
    for (const int severity : {INT_MIN, -1, 0, 5, INT_MAX}) {
        EXPECT_EQ(PI::SeverityToString(severity), "DEBUG") << severity;
        EXPECT_EQ(&PI::SeverityToString(severity), &PI::SeverityToString(severity));
    }
}

}  // namespace
