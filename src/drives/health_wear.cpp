// SPDX-License-Identifier: Apache-2.0
// Wear is one figure from several sources: the drive's own statistic, vendors' attributes, what others
// decoded.

#include <pi/drive_health.h>
#include <pi/vocabulary.h>

#include <algorithm>

#include "drives/attribute_rules.h"
#include "drives/cycle_wear.h"
#include "drives/health_figures.h"

namespace PI {

namespace {

constexpr AttributeRule WEAR_RULES[] = {
#define PI_WEAR_RULE(model, name, id, check, field, meaning, parameter, drives, percent) \
    {HealthFigure::WEAR, model, name, id, Check::check, Field::field, Meaning::meaning, parameter, percent},
#include "drives/wear_attributes.def"
#undef PI_WEAR_RULE
};

constexpr std::uint8_t ANY_ID = 0;
constexpr std::int64_t MAYBE_INVALID = 255;    // the standards' word for more than 254, and unset bytes
constexpr std::int64_t CONFIRMS_INVALID = 90;  // judgement: a source that says so much agrees with 255
constexpr std::int64_t MOST_APART = 10;        // judgement: firmware rounds and updates at different times
constexpr std::int64_t MANY_DRIVE_WRITES = 100;

/// What an attribute or another source says of the wear.
struct Opinion {
    Reading m_Reading;
    bool m_IsWeak;    ///< drives were seen on which its rule is wrong
    bool m_EndsHere;  ///< it has reached the end of what it can say
};

/// What the drive's attributes say, then other sources, the one that counts most first.
struct Opinions {
    static constexpr std::size_t MAX = 8;

    Opinion m_List[MAX];
    std::size_t m_Count = 0;

    void Add(const Opinion& opinion) {
        if (m_Count < MAX) {
            m_List[m_Count++] = opinion;
        }
    }
};

/// Attributes that count down stop at 1 or 0, those of percent used at 100, whatever follows.
bool EndsHere(const AttributeRule& rule, const Attribute& attribute, std::int64_t value) {
    return rule.m_Meaning == Meaning::REMAINING
               ? value >= 99
               : rule.m_Meaning == Meaning::USED && value == 100 && attribute.m_Current == 0;
}

Opinions FromAttributes(const DriveFacts& facts) {
    Opinions opinions;
    RuleSearch search(facts);
    const auto hear = [&](const AttributeRule& rule, const Attribute& attribute) {
        const auto value = search.Try(rule, attribute);
        if (value && IsPossible(HealthFigure::WEAR, *value)) {
            opinions.Add({AttributeReading(HealthFigure::WEAR, attribute.m_ID, *value), rule.IsWeak(),
                          EndsHere(rule, attribute, *value)});
        }
    };
    for (const AttributeRule& rule : WEAR_RULES) {
        if (rule.m_ID != ANY_ID) {
            if (const Attribute* attribute = facts.FindAttribute(rule.m_ID)) {
                hear(rule, *attribute);
            }
            continue;
        }
        for (std::size_t i = 0; i < facts.m_AttributeCount; ++i) {
            hear(rule, facts.m_Attributes[i]);
        }
    }
    // Families that are rated in cycles count them; for all others CSmartValues reads what the rules read.
    const _SSD_ENDURANCE* const row = facts.m_RatedInCycles;
    const Attribute* attribute = row != nullptr ? facts.FindAttribute(CycleAttribute(*row)) : nullptr;
    if (attribute != nullptr && !search.IsSettled(attribute->m_ID)) {
        const std::int64_t value = WearByCycles(*row, attribute->m_Raw);
        if (IsPossible(HealthFigure::WEAR, value)) {
            opinions.Add({AttributeReading(HealthFigure::WEAR, attribute->m_ID, value), false, false});
        }
    }
    return opinions;
}

/// Adds what a drive says in a second log, such as that of its endurance group.
void AddOther(const DriveFacts& facts, const Choice& own, Opinions& opinions) {
    Choice other;
    for (std::size_t i = 0; i < facts.m_ReadingCount; ++i) {
        const Reading& reading = facts.m_Readings[i];
        const bool isBest =
            reading.m_Source == own.m_Best.m_Source && reading.m_Number == own.m_Best.m_Number;
        if (reading.m_Figure == HealthFigure::WEAR && !isBest && reading.m_Source != FigureSource::PROGRAM &&
            reading.m_Value != MAYBE_INVALID) {
            other.Offer(reading);
        }
    }
    if (other.m_HasBest) {
        opinions.Add({other.m_Best, false, false});
    }
}

/// How often the drive was written over, 0 when unknown.
std::int64_t DriveWrites(Decider& decider) {
    const std::uint64_t capacity = decider.Facts().Capacity();
    const CHealthFigure& written = decider.Figure(HealthFigure::BYTES_WRITTEN);
    return capacity != 0 && written.HasValue()
               ? static_cast<std::int64_t>(static_cast<std::uint64_t>(written.GetValue()) / capacity)
               : 0;
}

/// What goes on after 100 agrees with what stops there.
bool Agree(const Reading& one, const Reading& other) {
    constexpr std::int64_t WORN_OUT = 100;
    return std::abs(std::min(one.m_Value, WORN_OUT) - std::min(other.m_Value, WORN_OUT)) <= MOST_APART;
}

}  // namespace

CHealthFigure DecideRating(const DriveFacts& facts) noexcept {
    constexpr _HEALTH_FIGURE FIGURE = HealthFigure::RATED_TERABYTES;
    CHealthFigureMaker maker(FIGURE);
    const auto listed = [](std::uint64_t value) {
        return Reading{static_cast<std::int64_t>(value), FIGURE, FigureSource::ENDURANCE_LIST, 0};
    };
    const CEnduranceRating& rating = facts.m_Rating;
    if (const auto cycles = rating.GetEraseCycles()) {
        return maker.Say(FigureReason::RATED_IN_CYCLES).Name(listed(*cycles)).Made();
    }
    const auto terabytes = rating.GetTerabytes();
    if (!terabytes) {
        const Choice given = ChooseReading(facts, FIGURE);
        return given.m_HasBest ? Plain(FIGURE, given) : maker.Say(FigureReason::NOT_LISTED).Made();
    }
    maker.Set(FigureState::KNOWN, listed(*terabytes));
    if (const auto other = rating.GetContradictingTerabytes()) {
        maker.Doubt(FigureReason::RATING_CONTRADICTED).Name(listed(*other));
    }
    return maker.Made();
}

CHealthFigure DecideWear(Decider& decider) noexcept {
    const DriveFacts& facts = decider.Facts();
    CHealthFigureMaker maker(HealthFigure::WEAR);
    if (facts.m_Medium == PropertyValue::HDD) {
        return maker.Say(FigureReason::ROTATING).Made();
    }
    const Choice own = ChooseReading(facts, HealthFigure::WEAR);
    Opinions opinions = FromAttributes(facts);
    AddOther(facts, own, opinions);
    if (!own.m_HasBest && opinions.m_Count == 0) {
        return Plain(HealthFigure::WEAR, own);
    }
    // What another program made of the attributes is no opinion of its own.
    const bool hasOwn =
        own.m_HasBest && (own.m_Best.m_Source != FigureSource::PROGRAM || opinions.m_Count == 0);
    const Opinion* const first = opinions.m_Count > 0 ? &opinions.m_List[0] : nullptr;
    const bool isInvalid = hasOwn && own.m_Best.m_Value == MAYBE_INVALID &&
                           (first == nullptr || first->m_Reading.m_Value < CONFIRMS_INVALID);
    const bool isOwn = hasOwn && (!isInvalid || first == nullptr);
    const Reading chosen = isOwn ? own.m_Best : first->m_Reading;
    maker.Set(FigureState::KNOWN, chosen);
    if (isInvalid) {
        return maker.Doubt(FigureReason::MAYBE_INVALID).Name(own.m_Best).Made();
    }
    bool differs = false;
    for (std::size_t i = isOwn ? 0 : 1; i < opinions.m_Count; ++i) {
        // Among attributes a weak one does not shake a strong one.
        const Opinion& other = opinions.m_List[i];
        if ((isOwn || !other.m_IsWeak) && !Agree(chosen, other.m_Reading)) {
            maker.Doubt(FigureReason::SOURCES_DIFFER).Name(other.m_Reading);
            differs = true;
        }
    }
    if (differs) {
        return maker.Made();
    }
    if (const std::int64_t writes = chosen.m_Value == 0 ? DriveWrites(decider) : 0;
        writes >= MANY_DRIVE_WRITES) {
        return maker.Doubt(FigureReason::WRITTEN_BUT_NEW)
            .Name({writes, HealthFigure::BYTES_WRITTEN, 0, 0})
            .Made();
    }
    if (!isOwn && first->m_EndsHere) {
        maker.Doubt(FigureReason::COUNTS_NO_FURTHER);
    } else if (!isOwn && first->m_IsWeak) {
        maker.Doubt(FigureReason::WEAK_RULE);
    }
    return maker.Made();
}

}  // namespace PI
