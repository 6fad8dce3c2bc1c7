// SPDX-License-Identifier: Apache-2.0
// A process of its own: negative numbers that are looked up change what the empty name gives.
#include <gtest/gtest.h>
#include <pi/vocabulary.h>

#include <climits>

namespace {

struct Vocabulary {
    const char* m_Name;
    const std::string& (*m_ToString)(int);
};

class NegativeNumbers : public testing::TestWithParam<Vocabulary> {};

INSTANTIATE_TEST_SUITE_P(AllVocabularies, NegativeNumbers,
                         testing::Values(Vocabulary{"ErrorCode", PI::ErrorCodeToString},
                                         Vocabulary{"PropertyID", PI::PropertyIDToString},
                                         Vocabulary{"PropertyValue", PI::PropertyValueToString},
                                         Vocabulary{"OperationID", PI::OperationIDToString},
                                         Vocabulary{"EventID", PI::EventIDToString}),
                         [](const auto& instance) { return instance.param.m_Name; });

TEST_P(NegativeNumbers, HaveEmptyNamesThatAreRemembered) {
    for (const int number : {-1, -2, -10000, -60000, INT_MIN + 1, INT_MIN}) {
        const std::string& first = GetParam().m_ToString(number);
        EXPECT_EQ(first, "") << number;
        EXPECT_EQ(&GetParam().m_ToString(number), &first) << number;
    }
}

}  // namespace
