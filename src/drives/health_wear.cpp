// SPDX-License-Identifier: Apache-2.0
// Wear is one figure from several sources: the drive's own statistic, vendors' attributes, what others
// decoded.

#include <pi/drive_health.h>
#include <pi/endurance_rating.h>

#include <algorithm>

#include "drives/attribute_rules.h"
#include "drives/health_figures.h"
#include "drives/listed_wear.h"

namespace PI {

namespace {

constexpr AttributeRule WEAR_RULES[] = {
#define PI_WEAR_RULE(model, name, id, check, field, meaning, parameter) \
    {HealthFigure::WEAR, model, name, id, Check::check, Field::field, Meaning::meaning, parameter},
#include "drives/wear_attributes.def"
#undef PI_WEAR_RULE
};

constexpr std::uint8_t ANY_ID = 0;
constexpr std::int64_t MAYBE_INVALID = 255;  // the standards' word for more than 254, and unset bytes
constexpr std::int64_t MOST_APART = 10;      // judgement: firmware rounds and updates at different times
constexpr std::int64_t COUNTED_DOWN = 99;    // where attributes that count down from 100 end
constexpr std::int64_t MANY_DRIVE_WRITES = 100;

/// What the drive's attributes say of its wear, the one that counts most first.
struct Opinions {
    static constexpr std::size_t MAX = 8;

    Reading m_List[MAX];
    std::size_t m_Count = 0;
    bool m_EndsHere = false;  ///< the first counts down from 100 and has reached its end

    void Add(std::uint8_t id, std::int64_t value) {
        if (m_Count < MAX) {
            m_List[m_Count++] = AttributeReading(HealthFigure::WEAR, id, value);
        }
    }
};

Opinions FromAttributes(const DriveFacts& facts) {
    Opinions opinions;
    RuleSearch search(facts);
    for (const AttributeRule& rule : WEAR_RULES) {
        for (std::size_t i = 0; i < facts.m_AttributeCount; ++i) {
            const Attribute& attribute = facts.m_Attributes[i];
            if (rule.m_ID != ANY_ID && rule.m_ID != attribute.m_ID) {
                continue;
            }
            if (const auto value = search.Try(rule, attribute)) {
                opinions.m_EndsHere = opinions.m_Count == 0
                                          ? rule.m_Meaning == Meaning::REMAINING && *value >= COUNTED_DOWN
                                          : opinions.m_EndsHere;
                opinions.Add(attribute.m_ID, *value);
            }
        }
    }
    // What CSmartValues reads for listed models, unless a rule knows the attribute better.
    const std::uint8_t id = facts.m_Listed != nullptr ? ListedWearAttribute(*facts.m_Listed) : ANY_ID;
    const Attribute* attribute = id != ANY_ID && !search.IsSettled(id) ? FindAttribute(facts, id) : nullptr;
    if (attribute != nullptr) {
        const std::int64_t value = ListedWear(*facts.m_Listed, attribute->m_Current, attribute->m_Raw);
        if (IsPossible(HealthFigure::WEAR, value)) {
            opinions.Add(id, value);
        }
    }
    return opinions;
}

/// How often the drive was written over, 0 when unknown.
std::int64_t DriveWrites(const DriveFacts& facts) {
    const std::uint64_t capacity =
        facts.m_CapacityBytes != 0 ? facts.m_CapacityBytes : facts.m_IdentifiedBytes;
    const CHealthFigure written = DecideFigure(facts, HealthFigure::BYTES_WRITTEN);
    return capacity != 0 && written.HasValue()
               ? static_cast<std::int64_t>(static_cast<std::uint64_t>(written.GetValue()) / capacity)
               : 0;
}

/// Attributes that count down end where other sources go on.
bool Agree(std::int64_t one, std::int64_t other) {
    return std::abs(one - other) <= MOST_APART || (one >= COUNTED_DOWN && other >= COUNTED_DOWN);
}

}  // namespace

CHealthFigure DecideRating(const DriveFacts& facts) noexcept {
    constexpr _HEALTH_FIGURE FIGURE = HealthFigure::RATED_TERABYTES;
    CHealthFigureMaker maker(FIGURE);
    const auto listed = [](std::uint64_t value) {
        return Reading{static_cast<std::int64_t>(value), FIGURE, FigureSource::ENDURANCE_LIST, 0};
    };
    const CEnduranceRating rating = FindEnduranceRating(facts.m_Model);
    if (const auto cycles = rating.GetEraseCycles()) {
        return maker.Say(FigureReason::RATED_IN_CYCLES).Name(listed(*cycles)).Made();
    }
    const auto terabytes = rating.GetTerabytes();
    if (!terabytes) {
        return maker.Say(FigureReason::NOT_LISTED).Made();
    }
    maker.Set(FigureState::KNOWN, listed(*terabytes));
    if (const auto other = rating.GetContradictingTerabytes()) {
        maker.Doubt(FigureReason::RATING_CONTRADICTED).Name(listed(*other));
    }
    return maker.Made();
}

CHealthFigure DecideWear(const DriveFacts& facts) noexcept {
    CHealthFigureMaker maker(HealthFigure::WEAR);
    if (!IsSolidState(facts) && facts.m_Medium != 0) {
        return maker.Say(FigureReason::ROTATING).Made();
    }
    const Choice own = ChooseReading(facts, HealthFigure::WEAR);
    const Opinions opinions = FromAttributes(facts);
    if (!own.m_HasBest && opinions.m_Count == 0) {
        return Plain(HealthFigure::WEAR, own);
    }
    // What another program made of the attributes is no opinion of its own.
    const bool isOwn =
        own.m_HasBest && (own.m_Best.m_Source != FigureSource::PROGRAM || opinions.m_Count == 0);
    const bool isConfirmed = opinions.m_Count > 0 && opinions.m_List[0].m_Value >= COUNTED_DOWN;
    const bool isInvalid = isOwn && own.m_Best.m_Value == MAYBE_INVALID && !isConfirmed;
    const Reading& chosen = isOwn && !(isInvalid && opinions.m_Count > 0) ? own.m_Best : opinions.m_List[0];
    maker.Set(FigureState::KNOWN, chosen);
    if (isInvalid) {
        return maker.Doubt(FigureReason::MAYBE_INVALID).Name(own.m_Best).Made();
    }
    for (std::size_t i = 0; i < opinions.m_Count; ++i) {
        if (!Agree(chosen.m_Value, opinions.m_List[i].m_Value)) {
            maker.Doubt(FigureReason::SOURCES_DIFFER).Name(opinions.m_List[i]);
        }
    }
    if (maker.Made().GetState() == FigureState::DOUBTFUL) {
        return maker.Made();
    }
    if (!isOwn && opinions.m_EndsHere) {
        maker.Doubt(FigureReason::COUNTS_NO_FURTHER);
    }
    if (const std::int64_t writes = DriveWrites(facts); chosen.m_Value == 0 && writes >= MANY_DRIVE_WRITES) {
        maker.Doubt(FigureReason::WRITTEN_BUT_NEW).Name({writes, HealthFigure::BYTES_WRITTEN, 0, 0});
    }
    return maker.Made();
}

}  // namespace PI
