// SPDX-License-Identifier: Apache-2.0

#include "drives/attribute_rules.h"

#include <pi/vocabulary.h>

#include <algorithm>

#include "drives/health_figures.h"
#include "util/pattern.h"

namespace PI {

namespace {

constexpr std::int64_t LOWEST_TEMPERATURE = -60;
constexpr std::int64_t HIGHEST_TEMPERATURE = 120;

std::int64_t Byte(std::uint64_t raw, unsigned index) {
    return static_cast<std::int64_t>(raw >> (8 * index) & 0xFF);
}

std::int64_t SignedByte(std::uint64_t raw, unsigned index) {
    return static_cast<std::int8_t>(raw >> (8 * index) & 0xFF);
}

/// The higher of two bytes, if the one is the lowest and the other the highest temperature of a drive that
/// has the temperature of byte 0 now.
std::optional<std::int64_t> Highest(std::uint64_t raw, unsigned one, unsigned other) {
    const std::int64_t now = SignedByte(raw, 0);
    const std::int64_t low = std::min(SignedByte(raw, one), SignedByte(raw, other));
    const std::int64_t high = std::max(SignedByte(raw, one), SignedByte(raw, other));
    const bool isCredible =
        low >= LOWEST_TEMPERATURE && low <= now && now <= high && high <= HIGHEST_TEMPERATURE;
    return isCredible ? std::optional(high) : std::nullopt;
}

/// The highest temperature so far. Makers pack it differently; which way is seen by what is credible.
std::optional<std::int64_t> PackedHighest(std::uint64_t raw) {
    const auto isSign = [raw](unsigned index) { return Byte(raw, index) == 0 || Byte(raw, index) == 0xFF; };
    if ((raw >> 8) == 0) {
        return std::nullopt;
    }
    if (isSign(1) && isSign(3) && isSign(5)) {
        return Highest(raw, 2, 4);
    }
    if (isSign(1) && (raw >> 32) == 0) {
        return Highest(raw, 2, 3);
    }
    return (raw >> 24) == 0 ? Highest(raw, 1, 2) : std::nullopt;
}

std::int64_t Raw48(const Attribute& attribute) {
    return static_cast<std::int64_t>(attribute.m_Raw & 0xFFFFFFFFFFFF);
}

constexpr std::int64_t MOST_PERCENT = 1000;  // that a drive goes on counting to

bool Passes(Check check, const Attribute& attribute, const DriveFacts& facts) {
    const std::int64_t current = attribute.m_Current;
    const std::int64_t raw = Raw48(attribute);
    const bool isPercent = raw >= 1 && raw <= 100;
    const bool isOneWord = raw <= 0xFFFF;
    switch (check) {
        case Check::ANY: return true;
        case Check::RAW_ZERO: return raw == 0;
        case Check::RAW_NOT_ZERO: return raw != 0;
        case Check::RAW_EQUAL: return raw == current;
        case Check::SUM_100:
            return current >= 0 && raw >= 1 && raw <= MOST_PERCENT && (raw + current) % 256 == 100;
        case Check::RAW_PERCENT: return isPercent;
        case Check::FULL_RAW_PERCENT: return current == 100 && isPercent;
        case Check::BELOW_100: return current >= 0 && current < 100;
        case Check::ONE_WORD: return isOneWord;
        case Check::SEVERAL_WORDS: return !isOneWord || raw == 0;
        case Check::RAW_ABOVE_27_BITS: return raw >= std::int64_t{1} << 27;
        case Check::ROTATING: return facts.m_Medium == PropertyValue::HDD;
        case Check::BESIDE_163: return facts.FindAttribute(163) != nullptr;
        case Check::BESIDE_164: return facts.FindAttribute(164) != nullptr;
        case Check::BESIDE_165: return facts.FindAttribute(165) != nullptr;
        case Check::BESIDE_202: return facts.FindAttribute(202) != nullptr;
        case Check::BESIDE_230: return facts.FindAttribute(230) != nullptr;
        case Check::BESIDE_231: return facts.FindAttribute(231) != nullptr;
    }
    return false;
}

/// Rated erase cycles as a drive states them, 0 where it is no such figure.
std::int64_t RatedCycles(const Attribute* attribute) {
    const std::int64_t cycles = attribute != nullptr ? Raw48(*attribute) : 0;
    return cycles >= 1000 && cycles <= 100'000 ? cycles : 0;
}

std::optional<std::int64_t> Apply(const AttributeRule& rule, std::int64_t field, const DriveFacts& facts) {
    const auto parameter = static_cast<std::int64_t>(rule.m_Parameter);
    switch (rule.m_Meaning) {
        case Meaning::REMAINING: {
            const std::int64_t life = 100 - parameter;
            return field <= 100
                       ? std::optional(std::min<std::int64_t>(((100 - field) * 100 + life / 2) / life, 100))
                       : std::nullopt;
        }
        case Meaning::REMAINING_OF_200: return field <= 200 ? std::optional(200 - field) : std::nullopt;
        case Meaning::USED: return field <= MOST_PERCENT ? std::optional(field) : std::nullopt;
        case Meaning::CYCLES: return field * 100 / parameter;
        case Meaning::CYCLES_BY: {
            const std::int64_t rated = RatedCycles(facts.FindAttribute(static_cast<std::uint8_t>(parameter)));
            return rated != 0 ? std::optional(field * 100 / rated) : std::nullopt;
        }
        case Meaning::SPARE: return field != 0 ? std::optional(field) : std::nullopt;
        case Meaning::SECONDS: return field / (3600 / parameter);
        case Meaning::LESS: return field >= parameter ? std::optional(field - parameter) : std::nullopt;
        case Meaning::COUNT: return BytesOf(static_cast<std::uint64_t>(field), rule.m_Parameter);
        case Meaning::PORTION: return field / parameter;
        case Meaning::SIGNED_COUNT: return static_cast<std::int8_t>(field);
        case Meaning::NOTHING: break;
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::int64_t> FieldOf(const Attribute& attribute, Field field) {
    const std::uint64_t raw = attribute.m_Raw;
    switch (field) {
        case Field::CURRENT:
            return attribute.m_Current >= 0 ? std::optional<std::int64_t>(attribute.m_Current) : std::nullopt;
        case Field::RAW_BYTE0: return Byte(raw, 0);
        case Field::RAW_BYTE1: return Byte(raw, 1);
        case Field::RAW_BYTE3: return Byte(raw, 3);
        case Field::RAW_WORD0: return static_cast<std::int64_t>(raw & 0xFFFF);
        case Field::RAW_24: return static_cast<std::int64_t>(raw & 0xFFFFFF);
        case Field::RAW_32: return static_cast<std::int64_t>(raw & 0xFFFFFFFF);
        case Field::RAW_48: return Raw48(attribute);
        case Field::RAW_COUNT: {  // values of counts begin at 100; rates go above, with several parts as raw
                                  // value
            const bool isRate = attribute.m_Current > 100 && Raw48(attribute) > 0xFFFF;
            return isRate ? std::nullopt : std::optional(Raw48(attribute));
        }
        case Field::PACKED_HIGHEST: return PackedHighest(raw);
    }
    return std::nullopt;
}

std::optional<std::int64_t> RuleSearch::Try(const AttributeRule& rule, const Attribute& attribute) {
    if (m_Settled[attribute.m_ID] || !Passes(rule.m_Check, attribute, m_Facts) ||
        !(rule.m_Model.empty() || FitsPattern(rule.m_Model, m_Facts.m_Model)) ||
        !(rule.m_Name.empty() || FitsPattern(rule.m_Name, attribute.m_Name))) {
        return std::nullopt;
    }
    if (rule.m_Meaning == Meaning::NOTHING) {
        m_Settled.set(attribute.m_ID);
        return std::nullopt;
    }
    if (rule.m_Field != Field::CURRENT && Raw48(attribute) == ALL_ONES) {
        return ALL_ONES;
    }
    const auto field = FieldOf(attribute, rule.m_Field);
    const auto value = field ? Apply(rule, *field, m_Facts) : std::nullopt;
    m_Settled.set(attribute.m_ID, value.has_value());
    return value;
}

}  // namespace PI
