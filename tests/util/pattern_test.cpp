// SPDX-License-Identifier: Apache-2.0

#include "util/pattern.h"

#include <gtest/gtest.h>

namespace PI::Test {
namespace {

TEST(Pattern, FitsTextsAsAShellDoes) {
    struct {
        const char* m_Pattern;
        const char* m_Text;
        bool m_Fits;
    } const rows[] = {
        {"", "", true},
        {"", "A", false},
        {"A", "", false},
        {"Ab", "aB", true},  // letter case does not matter
        {"A", "AB", false},
        {"AB", "A", false},
        {"*", "", true},
        {"*", "ANY", true},
        {"A*", "A", true},
        {"A*C", "ABBC", true},
        {"A*C", "ABBCD", false},
        {"*BC", "ABBC", true},  // the star takes the first B
        {"A*B*", "AXXBYY", true},
        {"A**B", "AB", true},
        {"?", "", false},
        {"?", "A", true},
        {"?", "AB", false},
        {"?*", "", false},
        {"?*", "AB", true},
        {"[AB]C", "bC", true},
        {"[AB]C", "CC", false},
        {"[AB]", "", false},
        {"*[12]", "A12", true},
        {"X[1-9]Y", "X0Y", false},
        {"X[1-9]Y", "X1Y", true},
        {"X[1-9]Y", "X5Y", true},
        {"X[1-9]Y", "X9Y", true},
        {"X[1-9]Y", "X:Y", false},  // the character after 9
        {"X[1-9]Y", "X-Y", false},
        {"[b-d]", "A", false},
        {"[b-d]", "C", true},
        {"[0-2A]", "A", true},
        {"[0-2A]", "1", true},
        {"[-A]", "-", true},
        {"[A-]", "-", true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FitsPattern(row.m_Pattern, row.m_Text), row.m_Fits) << row.m_Pattern << " " << row.m_Text;
    }
}

}  // namespace
}  // namespace PI::Test
