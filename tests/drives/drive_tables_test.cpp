// SPDX-License-Identifier: Apache-2.0
// What holds of the tables of src/drives whatever stands in them.

#include <gtest/gtest.h>
#include <pi/drive_health.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "util/pattern.h"

namespace PI::Test {
namespace {

struct Rule {
    std::string m_What;  ///< figure
    std::string m_Model;
    std::string m_Name;
    int m_ID;
    std::string m_Check;
    int m_Drives = 0;
    int m_Percent = 0;
};

constexpr int HOURS = 9;
constexpr int ANY_ID = 0;

// As the library reads them, so that a row that is malformed does not compile here either.
const std::vector<Rule> RULES = {
#define PI_WEAR_RULE(model, name, id, check, field, meaning, parameter, drives, percent) \
    {"WEAR", model, name, id, #check, drives, percent},
#define PI_HOURS_RULE(model, name, field, meaning, parameter, drives, percent) \
    {"HOURS", model, name, HOURS, "ANY", drives, percent},
#define PI_AMOUNT_RULE(figure, model, name, id, check, unit, drives, percent) \
    {#figure, model, name, id, #check, drives, percent},
#define PI_SPARE_RULE(model, id, check, field, meaning, drives, lowest) \
    {"SPARE", model, "", id, #check, drives, lowest},
#define PI_ERROR_RULE(figure, name, id, field, meaning, parameter) {#figure, "", name, id, "ANY"},
#include "drives/amount_attributes.def"
#include "drives/error_attributes.def"
#include "drives/hours_attributes.def"
#include "drives/spare_attributes.def"
#include "drives/wear_attributes.def"
#undef PI_WEAR_RULE
#undef PI_HOURS_RULE
#undef PI_AMOUNT_RULE
#undef PI_SPARE_RULE
#undef PI_ERROR_RULE
};

std::string Text(const Rule& rule) {
    return rule.m_What + " " + rule.m_Model + " " + rule.m_Name + " " + std::to_string(rule.m_ID) + " " +
           rule.m_Check;
}

/// Texts that fit a pattern, with short and long ones in place of its stars.
std::vector<std::string> Samples(const std::string& pattern) {
    if (pattern.empty()) {
        return {"", "anything"};
    }
    std::vector<std::string> samples;
    for (const std::string filling : {"", "x", "0-9 y"}) {
        std::string text;
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            if (pattern[i] == '*') {
                text += filling;
            } else if (pattern[i] == '[') {
                text += pattern[i + 1];
                i = pattern.find(']', i);
            } else {
                text += pattern[i] == '?' ? '~' : pattern[i];
            }
        }
        samples.push_back(text);
    }
    return samples;
}

bool IsCovered(const std::string& later, const std::string& earlier) {
    const std::vector<std::string> samples = Samples(later);
    return earlier.empty() || std::all_of(samples.begin(), samples.end(), [&](const std::string& text) {
               return FitsPattern(earlier, text);
           });
}

bool IsCheckCovered(const std::string& later, const std::string& earlier) {
    return earlier == "ANY" || earlier == later || (earlier == "RAW_PERCENT" && later == "FULL_RAW_PERCENT");
}

TEST(AttributeTables, NoRowStandsAfterOneThatSettlesAllThatItFits) {
    for (auto later = RULES.begin(); later != RULES.end(); ++later) {
        for (auto earlier = RULES.begin(); earlier != later; ++earlier) {
            EXPECT_FALSE(earlier->m_What == later->m_What && earlier->m_ID == later->m_ID &&
                         IsCovered(later->m_Model, earlier->m_Model) &&
                         IsCovered(later->m_Name, earlier->m_Name) &&
                         IsCheckCovered(later->m_Check, earlier->m_Check))
                << Text(*later) << "\nafter " << Text(*earlier);
        }
    }
}

TEST(AttributeTables, PatternsAreWellFormed) {
    const std::regex pattern(
        R"(([^\[\]]|\[[A-Za-z0-9]{2,}(-[A-Za-z0-9])?[A-Za-z0-9]*\]|\[[0-9A-Z]-[0-9A-Z]\])*)");
    for (const Rule& rule : RULES) {
        for (const std::string& text : {rule.m_Model, rule.m_Name}) {
            EXPECT_TRUE(std::regex_match(text, pattern)) << Text(rule);
            EXPECT_TRUE(text.empty() || (text.front() != ' ' && text.back() != ' ')) << Text(rule);
            EXPECT_EQ(text.find("**"), std::string::npos) << Text(rule);
            for (const std::string& sample : Samples(text)) {
                EXPECT_TRUE(text.empty() || FitsPattern(text, sample)) << Text(rule) << ": " << sample;
            }
        }
        EXPECT_TRUE(rule.m_ID != ANY_ID || !rule.m_Name.empty()) << Text(rule);
    }
}

TEST(AttributeTables, EvidenceIsAShareOfDrives) {
    for (const Rule& rule : RULES) {
        EXPECT_TRUE(rule.m_Drives > 0 || rule.m_Percent == 0) << Text(rule);
        EXPECT_TRUE(rule.m_Percent >= 0 && rule.m_Percent <= 100) << Text(rule);
    }
}

TEST(HealthThresholds, OfAFigureStandTogetherAndAscend) {
    struct Threshold {
        std::string m_Figure;
        std::string m_Medium;
        int m_From;
        _DRIVE_STATE m_State;
    };
    const std::vector<Threshold> rows = {
#define PI_THRESHOLD(figure, medium, from, state, source) {#figure, #medium, from, DriveState::state},
#include "drives/health_thresholds.def"
#undef PI_THRESHOLD
    };
    std::set<std::string> seen;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool isFirst = i == 0 || rows[i].m_Figure != rows[i - 1].m_Figure;
        EXPECT_EQ(isFirst, seen.insert(rows[i].m_Figure).second) << rows[i].m_Figure;
        if (!isFirst && rows[i].m_Medium == rows[i - 1].m_Medium) {
            EXPECT_GT(rows[i].m_From, rows[i - 1].m_From) << rows[i].m_Figure;
            EXPECT_GT(rows[i].m_State, rows[i - 1].m_State) << rows[i].m_Figure;
        }
    }
}

TEST(DriveTables, SayHowManyRowsTheyHave) {
    std::size_t tables = 0;
    for (const auto& file : std::filesystem::directory_iterator(PI_DRIVE_TABLES)) {
        if (file.path().extension() != ".def") {
            continue;
        }
        std::ifstream stream(file.path());
        std::string line;
        std::smatch said;
        std::string count;
        std::size_t rows = 0;
        while (std::getline(stream, line)) {
            if (line.rfind("PI_", 0) == 0) {
                ++rows;
            } else if (count.empty() && std::regex_search(line, said, std::regex(R"((\d+) rows)"))) {
                count = said[1];
            }
        }
        EXPECT_EQ(count, std::to_string(rows)) << file.path();
        ++tables;
    }
    EXPECT_GE(tables, 11U);
}

}  // namespace
}  // namespace PI::Test
