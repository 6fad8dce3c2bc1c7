// SPDX-License-Identifier: Apache-2.0
// The content of a managed object as the benchmarks of copies and comparisons use it.
#pragma once

#include <pi/object.h>

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace bench {

struct Choice {
    int m_Value;
    std::vector<int> m_Choices;
};

struct Range {
    int m_Value;
    int m_Min;
    int m_Max;
    unsigned m_Step;
};

using Value = std::variant<bool, unsigned long, std::string, Choice, Range, std::vector<std::string>>;
using Values = std::vector<std::pair<int, Value>>;

/// 60 values by property number: 20 numbers, 18 texts, 12 choices, 6 booleans, 3 ranges, a list of texts.
Values SampleValues();

/// The same as a managed object.
PI::CObject SampleObject();

PI::CProperty SampleProperty(int id, const Value& value);

}  // namespace bench
