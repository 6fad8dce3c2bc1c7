// SPDX-License-Identifier: Apache-2.0
// What SMART attributes say: figures by rules, and how they are against their thresholds.

#include <pi/drive_health.h>
#include <pi/vocabulary.h>

#include <algorithm>
#include <iterator>

#include "drives/attribute_rules.h"
#include "drives/health_figures.h"

namespace PI {

namespace {

constexpr std::uint8_t HOURS_ATTRIBUTE = 9;
constexpr int AGREED = 100;  // support of what all makers mean by a number

constexpr AttributeRule HOURS_RULES[] = {
#define PI_HOURS_RULE(model, name, field, meaning, parameter, drives, percent) \
    {HealthFigure::POWER_ON_HOURS,                                             \
     model,                                                                    \
     name,                                                                     \
     HOURS_ATTRIBUTE,                                                          \
     Check::ANY,                                                               \
     Field::field,                                                             \
     Meaning::meaning,                                                         \
     parameter,                                                                \
     AGREED},
#include "drives/hours_attributes.def"
#undef PI_HOURS_RULE
};

constexpr AttributeRule AMOUNT_RULES[] = {
#define PI_AMOUNT_RULE(figure, model, name, id, check, unit, drives, percent) \
    {HealthFigure::BYTES_##figure,                                            \
     model,                                                                   \
     name,                                                                    \
     id,                                                                      \
     Check::check,                                                            \
     Field::RAW_48,                                                           \
     (unit) != 0 ? Meaning::COUNT : Meaning::NOTHING,                         \
     unit,                                                                    \
     (drives) != 0 ? percent : AGREED},
#include "drives/amount_attributes.def"
#undef PI_AMOUNT_RULE
};

constexpr AttributeRule SPARE_RULES[] = {
#define PI_SPARE_RULE(model, id, check, field, meaning, drives, lowest) \
    {HealthFigure::SPARE, model, "", id, Check::check, Field::field, Meaning::meaning, 0, AGREED},
#include "drives/spare_attributes.def"
#undef PI_SPARE_RULE
};

constexpr AttributeRule ERROR_RULES[] = {
#define PI_ERROR_RULE(figure, name, id, field, meaning, parameter) \
    {HealthFigure::figure, "", name, id, Check::ANY, Field::field, Meaning::meaning, parameter, AGREED},
#include "drives/error_attributes.def"
#undef PI_ERROR_RULE
};

/// The rules of one table.
struct Rules {
    template <std::size_t Count>
    constexpr Rules(const AttributeRule (&rules)[Count]) : m_Begin(rules), m_End(rules + Count) {}

    const AttributeRule* begin() const { return m_Begin; }
    const AttributeRule* end() const { return m_End; }

private:
    const AttributeRule* m_Begin;
    const AttributeRule* m_End;
};

Rules RulesOf(_HEALTH_FIGURE figure) {
    switch (figure) {
        case HealthFigure::POWER_ON_HOURS: return HOURS_RULES;
        case HealthFigure::BYTES_WRITTEN:
        case HealthFigure::BYTES_READ: return AMOUNT_RULES;
        case HealthFigure::SPARE: return SPARE_RULES;
        default: return ERROR_RULES;
    }
}

constexpr std::uint8_t AIRFLOW_TEMPERATURE = 190;
constexpr std::uint8_t TEMPERATURE = 194;
constexpr std::uint16_t PRE_FAILURE_FLAG = 1;

/// 0 where the drive sets none: such an attribute never fails.
int ThresholdOf(const DriveFacts& facts, std::uint8_t id) {
    const auto* end = facts.m_Thresholds.begin() + facts.m_ThresholdCount;
    const auto* found = std::find_if(facts.m_Thresholds.begin(), end,
                                     [id](const Threshold& threshold) { return threshold.m_ID == id; });
    return found != end ? found->m_Value : 0;
}

bool IsBelow(const DriveFacts& facts, const Attribute& attribute) {
    const int threshold = ThresholdOf(facts, attribute.m_ID);
    return threshold > 0 && attribute.m_Current >= 0 && attribute.m_Current <= threshold;
}

bool IsTemperature(const Attribute& attribute) {
    return attribute.m_ID == TEMPERATURE || attribute.m_ID == AIRFLOW_TEMPERATURE;
}

/// How hot a drive once was says nothing of how it is.
bool WasBelow(const DriveFacts& facts, const Attribute& attribute) {
    const int threshold = ThresholdOf(facts, attribute.m_ID);
    return threshold > 0 && attribute.m_Worst >= 0 && attribute.m_Worst <= threshold &&
           !IsBelow(facts, attribute) && !IsTemperature(attribute);
}

}  // namespace

bool ReadAttributes(const DriveFacts& facts, _HEALTH_FIGURE figure, Reading& reading, bool& isWeak) noexcept {
    if (facts.m_AttributeCount == 0 ||
        (figure == HealthFigure::SPARE && facts.m_Medium == PropertyValue::HDD)) {
        return false;
    }
    RuleSearch search(facts);
    for (const AttributeRule& rule : RulesOf(figure)) {
        const Attribute* attribute = rule.m_Figure == figure ? facts.FindAttribute(rule.m_ID) : nullptr;
        const auto value = attribute != nullptr ? search.Try(rule, *attribute) : std::nullopt;
        if (value) {
            reading = AttributeReading(figure, rule.m_ID, *value);
            isWeak = rule.IsWeak() || (rule.m_Field == Field::RAW_24 && attribute->m_Raw >> 24 != 0);
            return true;
        }
    }
    return false;
}

CHealthFigure DecideThresholds(const DriveFacts& facts, _HEALTH_FIGURE figure) noexcept {
    CHealthFigureMaker maker(figure);
    if (facts.m_AttributeCount == 0 || facts.m_ThresholdCount == 0) {
        return maker.Say(FigureReason::NOT_REPORTED).Made();
    }
    const bool isNow = figure == HealthFigure::ATTRIBUTES_BELOW_THRESHOLD;
    std::int64_t count = 0;
    std::uint8_t first = 0;
    for (std::size_t i = 0; i < facts.m_AttributeCount; ++i) {
        const Attribute& attribute = facts.m_Attributes[i];
        if (isNow ? IsBelow(facts, attribute) : WasBelow(facts, attribute)) {
            first = count++ == 0 ? attribute.m_ID : first;
            maker.Name(AttributeReading(figure, attribute.m_ID, attribute.m_Current));
        }
    }
    return maker.Set(FigureState::KNOWN, AttributeReading(figure, first, count)).Made();
}

bool IsPreFailure(const DriveFacts& facts) noexcept {
    const auto* end = facts.m_Attributes.begin() + facts.m_AttributeCount;
    return std::any_of(facts.m_Attributes.begin(), end, [&facts](const Attribute& attribute) {
        // Heat passes (judgement), and makers have set thresholds above every temperature.
        return (attribute.m_Flags & PRE_FAILURE_FLAG) != 0 && IsBelow(facts, attribute) &&
               !IsTemperature(attribute);
    });
}

}  // namespace PI
