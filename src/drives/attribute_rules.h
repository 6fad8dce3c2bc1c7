// SPDX-License-Identifier: Apache-2.0
// What SMART attributes mean: rules by model, by the name that another program gives an attribute, and by its
// number.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "drives/health_facts.h"

namespace PI {

/// Part of an attribute that holds a figure. Words and bytes are counted from the lowest.
enum class Field {
    CURRENT,  ///< the normalised value
    RAW_BYTE0,
    RAW_BYTE1,
    RAW_BYTE3,
    RAW_WORD0,
    RAW_24,
    RAW_32,
    RAW_48,
    RAW_COUNT,       ///< as RAW_48, but nothing where it is a rate
    PACKED_HIGHEST,  ///< highest temperature so far, packed beside the present one
};

/// What an attribute has to be like for a rule to fit it: firmware shows by it how it counts.
enum class Check {
    ANY,
    RAW_ZERO,           ///< the raw value is 0
    RAW_NOT_ZERO,       ///< the raw value is not 0
    RAW_EQUAL,          ///< raw and current value are the same
    RAW_PERCENT,        ///< the raw value is 1 to 100
    FULL_RAW_PERCENT,   ///< the current value is 100, the raw value 1 to 100
    SUM_100,            ///< current and raw value add up to 100; the current one wraps below 0
    BELOW_100,          ///< the current value is below 100
    ONE_WORD,           ///< the raw value has at most 16 bits
    SEVERAL_WORDS,      ///< the raw value has more than 16 bits, or is 0
    RAW_ABOVE_27_BITS,  ///< the raw value has more than 27 bits
    ROTATING,           ///< the drive is a disk
    BESIDE_163,         ///< the drive has attribute 163 as well
    BESIDE_164,
    BESIDE_165,
    BESIDE_202,
    BESIDE_230,
    BESIDE_231,
};

/// How a field becomes a figure.
enum class Meaning {
    REMAINING,         ///< percent left: 100 is new, the parameter is worn out
    REMAINING_OF_200,  ///< 200 less the field
    USED,              ///< percent used
    CYCLES,            ///< percent of the parameter
    CYCLES_BY,         ///< percent of the raw value of the attribute that the parameter names
    SPARE,             ///< percent left, 0 where the drive does not count
    SECONDS,           ///< as many seconds as the parameter each, in hours
    LESS,              ///< the field less the parameter
    COUNT,             ///< the field times the parameter
    PORTION,           ///< the field divided by the parameter
    SIGNED_COUNT,      ///< the field, one signed byte
    NOTHING,           ///< the attribute tells nothing of this figure on these drives
};

/// One row of a table.
struct AttributeRule {
    _HEALTH_FIGURE m_Figure;
    std::string_view m_Model;  ///< pattern (util/pattern.h); empty: any
    std::string_view m_Name;   ///< pattern; empty: any, and where there is no name
    std::uint8_t m_ID;         ///< 0: any
    Check m_Check;
    Field m_Field;
    Meaning m_Meaning;
    std::uint64_t m_Parameter;
    int m_Support;  ///< percent of the drives it was tried on that it is right for

    /// Whether what it says is doubtful.
    constexpr bool IsWeak() const { return m_Support < 90; }
};

/// Tries rules on a drive's attributes, in the order of their table. Of each attribute the first rule that
/// fits counts.
class RuleSearch {
public:
    explicit RuleSearch(const DriveFacts& facts) : m_Facts(facts) {}

    /// What an attribute says by a rule, possible or not; nothing where the rule does not fit.
    std::optional<std::int64_t> Try(const AttributeRule& rule, const Attribute& attribute);

    /// Whether a rule has said what an attribute means on this drive, or that it means nothing.
    bool IsSettled(std::uint8_t id) const { return m_Settled[id]; }

private:
    const DriveFacts& m_Facts;
    std::bitset<256> m_Settled;
};

}  // namespace PI
