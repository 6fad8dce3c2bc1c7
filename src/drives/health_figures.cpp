// SPDX-License-Identifier: Apache-2.0

#include "drives/health_figures.h"

#include <pi/vocabulary.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <optional>

#include "drives/attribute_rules.h"

namespace PI {

namespace {

constexpr std::int64_t MOST = std::int64_t{1} << 48;        // of any counter; ATA's are no wider
constexpr std::int64_t MOST_BYTES = std::int64_t{1} << 60;  // judgement: no drive endures an exbibyte
constexpr std::int64_t MOST_HOURS = 200'000;  // judgement: 22 years; the oldest drive seen has 118,974

constexpr std::int64_t MOST_WEAR = 1000;  // judgement: ten times its rated life

// In the order of the figures' numbers. Temperatures in the range that smartctl and drivers consider
// credible.
constexpr FigureKind KINDS[] = {
    {"WEAR", FigureUnit::PERCENT, FigureDirection::UP, 0, MOST_WEAR},
    {"SPARE", FigureUnit::PERCENT, FigureDirection::DOWN, 0, 100},
    {"SPARE_THRESHOLD", FigureUnit::PERCENT, FigureDirection::NONE, 0, 100},
    {"POWER_ON_HOURS", FigureUnit::HOURS, FigureDirection::UP, 0, MOST_HOURS},
    {"BYTES_WRITTEN", FigureUnit::BYTES, FigureDirection::UP, 0, MOST_BYTES},
    {"BYTES_READ", FigureUnit::BYTES, FigureDirection::UP, 0, MOST_BYTES},
    {"RATED_TERABYTES", FigureUnit::TERABYTES, FigureDirection::NONE, 1, MOST},
    {"TEMPERATURE", FigureUnit::CELSIUS, FigureDirection::NONE, -60, 150},
    {"HIGHEST_TEMPERATURE", FigureUnit::CELSIUS, FigureDirection::NONE, -60, 150},
    {"TEMPERATURE_LIMIT", FigureUnit::CELSIUS, FigureDirection::NONE, 1, 150},
    {"CRITICAL_TEMPERATURE", FigureUnit::CELSIUS, FigureDirection::NONE, 1, 150},
    {"REALLOCATED_SECTORS", FigureUnit::COUNT, FigureDirection::UP, 0, MOST},
    {"PENDING_SECTORS", FigureUnit::COUNT, FigureDirection::NONE, 0, MOST},
    {"UNCORRECTABLE_SECTORS", FigureUnit::COUNT, FigureDirection::UP, 0, MOST},
    {"MEDIA_ERRORS", FigureUnit::COUNT, FigureDirection::UP, 0, MOST},
    {"INTERFACE_ERRORS", FigureUnit::COUNT, FigureDirection::UP, 0, MOST},
    {"LOGGED_ERRORS", FigureUnit::COUNT, FigureDirection::UP, 0, MOST},
    {"ATTRIBUTES_BELOW_THRESHOLD", FigureUnit::COUNT, FigureDirection::NONE, 0, MOST},
    {"ATTRIBUTES_ONCE_BELOW", FigureUnit::COUNT, FigureDirection::UP, 0, MOST},
    {"FAILED_SELF_TESTS", FigureUnit::COUNT, FigureDirection::NONE, 0, MOST},
    {"VERDICT", FigureUnit::FLAGS, FigureDirection::NONE, 0, 2},
    {"CRITICAL_WARNING", FigureUnit::FLAGS, FigureDirection::NONE, 0, 255},
    {"POWER_CYCLES", FigureUnit::COUNT, FigureDirection::UP, 0, MOST},
    {"UNSAFE_SHUTDOWNS", FigureUnit::COUNT, FigureDirection::UP, 0, MOST},
};
static_assert(std::size(KINDS) == LAST_FIGURE);

/// What a source is worth beside others, the best first: what the drive counts for the purpose, then what
/// vendors encode, then what others made of it.
int Rank(std::int16_t source) {
    switch (source) {
        case FigureSource::ATA_DEVICE_STATISTICS:
        case FigureSource::NVME_LOG:
        case FigureSource::NVME_IDENTIFY:
        case FigureSource::SCSI_LOG_PAGE:
        case FigureSource::SCSI_DEFECT_LIST:
        case FigureSource::DRIVE_VERDICT: return 0;
        case FigureSource::ATA_LOG: return 1;
        case FigureSource::ATA_ATTRIBUTE: return 2;
        default: return 3;
    }
}

/// Of ATA's two self-test logs the extended one says more.
bool IsBetter(const Reading& one, const Reading& other) {
    if (Rank(one.m_Source) != Rank(other.m_Source)) {
        return Rank(one.m_Source) < Rank(other.m_Source);
    }
    if (one.m_Source != other.m_Source) {
        return one.m_Source < other.m_Source;
    }
    return one.m_Source == FigureSource::ATA_LOG ? one.m_Number > other.m_Number
                                                 : one.m_Number < other.m_Number;
}

/// Pages keep the wear in one byte, where attributes count on; no drive was at 0 degrees all its life; and a
/// count of all ones, of 32 bits as in many statistics too, was never filled.
bool CanBe(const Reading& reading) {
    constexpr std::int64_t MOST_OF_BYTE = 255;
    constexpr std::int64_t ALL_ONES_32 = 0xFFFFFFFF;
    const auto figure = static_cast<_HEALTH_FIGURE>(reading.m_Figure);
    const bool isByte =
        reading.m_Figure == HealthFigure::WEAR &&
        (reading.m_Source == FigureSource::ATA_DEVICE_STATISTICS ||
         reading.m_Source == FigureSource::NVME_LOG || reading.m_Source == FigureSource::SCSI_LOG_PAGE);
    return IsPossible(figure, reading.m_Value) && reading.m_Value != ALL_ONES &&
           !(FindKind(figure)->m_Unit == FigureUnit::COUNT && reading.m_Value == ALL_ONES_32) &&
           !(isByte && reading.m_Value > MOST_OF_BYTE) &&
           !(reading.m_Figure == HealthFigure::HIGHEST_TEMPERATURE && reading.m_Value == 0);
}

/// No more sectors can be bad than a drive of known capacity has.
std::int64_t HighestOf(const DriveFacts& facts, _HEALTH_FIGURE figure) {
    const bool areSectors = figure == HealthFigure::REALLOCATED_SECTORS ||
                            figure == HealthFigure::PENDING_SECTORS ||
                            figure == HealthFigure::UNCORRECTABLE_SECTORS;
    return areSectors && facts.Capacity() != 0 ? Counter(facts.Capacity() / facts.m_BlockSize)
                                               : BEYOND_COUNTING;
}

/// As ChooseReading, and what attributes say by their rules.
Choice ChooseWithAttributes(const DriveFacts& facts, _HEALTH_FIGURE figure) {
    Choice choice = ChooseReading(facts, figure);
    Reading reading;
    bool isWeak = false;
    if (ReadAttributes(facts, figure, reading, isWeak)) {
        choice.Offer(reading);
    }
    return choice;
}

/// SCSI counts what it could not correct for reading, writing and verifying apart.
CHealthFigure DecideMediaErrors(const DriveFacts& facts) {
    const Choice choice = ChooseWithAttributes(facts, HealthFigure::MEDIA_ERRORS);
    if (!choice.m_HasBest || choice.m_Best.m_Source != FigureSource::SCSI_LOG_PAGE) {
        return Plain(HealthFigure::MEDIA_ERRORS, choice);
    }
    Reading sum = choice.m_Best;
    sum.m_Value = 0;
    for (std::size_t i = 0; i < facts.m_ReadingCount; ++i) {
        const Reading& reading = facts.m_Readings[i];
        if (reading.m_Figure == HealthFigure::MEDIA_ERRORS &&
            reading.m_Source == FigureSource::SCSI_LOG_PAGE && CanBe(reading)) {
            sum.m_Value += reading.m_Value;
        }
    }
    return CHealthFigureMaker(HealthFigure::MEDIA_ERRORS).Set(FigureState::KNOWN, sum).Made();
}

// 0 may be the temperature of a drive, but not for all its life; and as an attribute it is what drives
// without a sensor leave there, some with 0 and 100 for the lowest and the highest one (judgement: no drive
// survives 100 degrees).
constexpr std::int64_t NOT_CREDIBLE = 100;

/// What attribute 194 says, where that is far from what the drive says elsewhere.
std::optional<Reading> FarFrom(const DriveFacts& facts, const Reading& chosen) {
    constexpr std::uint32_t TEMPERATURE_ATTRIBUTE = 194;
    // Sensors of the case and of the flash memory: of 7,814 drives of a public collection that have device
    // statistics page 5 as well, 5 are more than 12 degrees apart. The rest is judgement.
    constexpr std::int64_t MOST_APART = 15;
    Reading attribute;
    bool isWeak = false;
    const bool isFar = ReadAttributes(facts, HealthFigure::TEMPERATURE, attribute, isWeak) &&
                       attribute.m_Number == TEMPERATURE_ATTRIBUTE && attribute.m_Value != 0 &&
                       CanBe(attribute) && std::abs(attribute.m_Value - chosen.m_Value) > MOST_APART;
    return isFar ? std::optional(attribute) : std::nullopt;
}

CHealthFigure DecideTemperature(const DriveFacts& facts) {
    const Choice now = ChooseWithAttributes(facts, HealthFigure::TEMPERATURE);
    const CHealthFigure figure = Plain(HealthFigure::TEMPERATURE, now);
    if (const auto other = figure.HasValue() ? FarFrom(facts, now.m_Best) : std::nullopt) {
        return CHealthFigureMaker(HealthFigure::TEMPERATURE)
            .Set(FigureState::KNOWN, now.m_Best)
            .Doubt(FigureReason::SOURCES_DIFFER)
            .Name(*other)
            .Made();
    }
    if (!figure.HasValue() || figure.GetValue() != 0) {
        return figure;
    }
    const Choice highest = ChooseWithAttributes(facts, HealthFigure::HIGHEST_TEMPERATURE);
    if (!highest.m_HasBest && highest.m_HasImpossible && highest.m_Impossible.m_Value == 0) {
        return CHealthFigureMaker(HealthFigure::TEMPERATURE).Say(FigureReason::NO_SENSOR).Made();
    }
    if (figure.GetSource() == FigureSource::ATA_ATTRIBUTE &&
        (!highest.m_HasBest || highest.m_Best.m_Value >= NOT_CREDIBLE)) {
        return CHealthFigureMaker(HealthFigure::TEMPERATURE)
            .Set(FigureState::KNOWN, now.m_Best)
            .Doubt(FigureReason::MAYBE_NO_SENSOR)
            .Name(now.m_Best)
            .Made();
    }
    return figure;
}

CHealthFigure DecideHighestTemperature(Decider& decider) {
    const Choice highest = ChooseWithAttributes(decider.Facts(), HealthFigure::HIGHEST_TEMPERATURE);
    const CHealthFigure& now = decider.Figure(HealthFigure::TEMPERATURE);
    if (!highest.m_HasBest || highest.m_Best.m_Value < NOT_CREDIBLE || now.GetValue() != 0 ||
        now.GetState() != FigureState::DOUBTFUL) {
        return Plain(HealthFigure::HIGHEST_TEMPERATURE, highest);
    }
    return CHealthFigureMaker(HealthFigure::HIGHEST_TEMPERATURE)
        .Set(FigureState::KNOWN, highest.m_Best)
        .Doubt(FigureReason::MAYBE_NO_SENSOR)
        .Name(
            {0, HealthFigure::TEMPERATURE, static_cast<std::int16_t>(now.GetSource()), now.GetSourceNumber()})
        .Made();
}

/// NVMe drives give no verdict but the bits of a warning. Where none is set, and of other drives, a verdict
/// of a failure counts: a SCSI page may hold none while sense data does.
CHealthFigure DecideVerdict(const DriveFacts& facts) {
    const Choice warning = ChooseReading(facts, HealthFigure::CRITICAL_WARNING);
    if (!warning.m_HasBest || warning.m_Best.m_Value == 0) {
        constexpr std::int64_t FAILING = 1;
        Choice failing;
        for (std::size_t i = 0; i < facts.m_ReadingCount; ++i) {
            const Reading& reading = facts.m_Readings[i];
            if (reading.m_Figure == HealthFigure::VERDICT && reading.m_Value == FAILING) {
                failing.Offer(reading);
            }
        }
        if (failing.m_HasBest || !warning.m_HasBest) {
            return Plain(HealthFigure::VERDICT,
                         failing.m_HasBest ? failing : ChooseReading(facts, HealthFigure::VERDICT));
        }
    }
    Reading verdict = warning.m_Best;
    verdict.m_Value = verdict.m_Value == 0 ? 0 : (verdict.m_Value & NVME_FAILURE_BITS) != 0 ? 1 : 2;
    return CHealthFigureMaker(HealthFigure::VERDICT).Set(FigureState::KNOWN, verdict).Made();
}

/// Whether two counts agree but for a tenth, or for a slack where they are small: drives round and store them
/// at different times.
bool AreClose(std::int64_t one, std::int64_t other, std::int64_t slack) {
    const std::int64_t larger = std::max(one, other);
    return larger - std::min(one, other) <= std::max(larger / 10, slack);  // judgement
}

/// Whether a statistic has wrapped at 32 bits, as on many drives, while the other count has not.
bool HasWrapped(std::int64_t statistic, std::int64_t other, std::uint32_t blockSize) {
    constexpr std::int64_t WRAP = std::int64_t{1} << 32;  // blocks
    constexpr std::int64_t SLACK = 200'000;               // blocks written between the two
    const std::int64_t blocks = statistic / blockSize;
    const std::int64_t apart = (other / blockSize - blocks) % WRAP;
    return blocks < WRAP && other / blockSize >= WRAP && std::min(apart, WRAP - apart) <= SLACK;
}

/// A count that both a statistic and an attribute keep, of which neither is always right: hours and amounts.
CHealthFigure DecideCount(const DriveFacts& facts, _HEALTH_FIGURE figure, std::int64_t slack) {
    const Choice choice = ChooseReading(facts, figure);
    Reading attribute;
    bool isWeak = false;
    if (!ReadAttributes(facts, figure, attribute, isWeak) || !CanBe(attribute)) {
        return Plain(figure, ChooseWithAttributes(facts, figure));
    }
    CHealthFigureMaker maker(figure);
    // What another program made of the attribute is no opinion of its own.
    const bool isOwn = choice.m_HasBest && choice.m_Best.m_Source != FigureSource::PROGRAM;
    const std::int64_t own = choice.m_Best.m_Value;
    const bool isAmount = figure != HealthFigure::POWER_ON_HOURS;
    // A statistic of 0 beside a count is not kept.
    if (!isOwn || (own == 0 && attribute.m_Value > 0) ||
        (isAmount && HasWrapped(own, attribute.m_Value, facts.m_BlockSize))) {
        maker.Set(FigureState::KNOWN, attribute);
        if (isWeak) {
            maker.Doubt(isAmount ? FigureReason::WEAK_RULE : FigureReason::PACKED_HOURS);
        } else if (!isOwn && choice.m_HasBest && !AreClose(own, attribute.m_Value, slack)) {
            maker.Doubt(FigureReason::SOURCES_DIFFER).Name(choice.m_Best);
        }
        return maker.Made();
    }
    // Statistics of the hours lag on some drives, none runs ahead.
    const bool isLagging = !isAmount && attribute.m_Value > own;
    maker.Set(FigureState::KNOWN, isLagging ? attribute : choice.m_Best);
    if (!isWeak && !AreClose(own, attribute.m_Value, slack)) {
        maker.Doubt(FigureReason::SOURCES_DIFFER).Name(isLagging ? choice.m_Best : attribute);
    }
    return maker.Made();
}

}  // namespace

void Choice::Offer(const Reading& reading) noexcept {
    const bool possible = CanBe(reading) && reading.m_Value <= m_Highest;
    Reading& place = possible ? m_Best : m_Impossible;
    bool& taken = possible ? m_HasBest : m_HasImpossible;
    if (!taken || IsBetter(reading, place)) {
        place = reading;
        taken = true;
    }
}

Choice ChooseReading(const DriveFacts& facts, _HEALTH_FIGURE figure) noexcept {
    Choice choice;
    choice.m_Highest = HighestOf(facts, figure);
    for (std::size_t i = 0; i < facts.m_ReadingCount; ++i) {
        Reading reading = facts.m_Readings[i];
        if (reading.m_Figure != figure) {
            continue;
        }
        if (reading.m_InBlocks && reading.m_Value >= 0 && reading.m_Value != ALL_ONES) {
            reading.m_Value = BytesOf(static_cast<std::uint64_t>(reading.m_Value), facts.m_BlockSize);
        }
        choice.Offer(reading);
    }
    return choice;
}

CHealthFigure Plain(_HEALTH_FIGURE figure, const Choice& choice) noexcept {
    CHealthFigureMaker maker(figure);
    if (choice.m_HasBest) {
        return maker.Set(FigureState::KNOWN, choice.m_Best).Made();
    }
    if (choice.m_HasImpossible) {
        return maker.Say(FigureReason::IMPOSSIBLE).Name(choice.m_Impossible).Made();
    }
    return maker.Say(FigureReason::NOT_REPORTED).Made();
}

const FigureKind* FindKind(std::int32_t figure) {
    return figure >= FIRST_FIGURE && figure <= LAST_FIGURE ? &KINDS[figure - FIRST_FIGURE] : nullptr;
}

bool IsPossible(_HEALTH_FIGURE figure, std::int64_t value) noexcept {
    const FigureKind& kind = KINDS[figure - FIRST_FIGURE];
    return value >= kind.m_Lowest && value <= kind.m_Highest;
}

const CHealthFigure& Decider::Figure(_HEALTH_FIGURE figure) noexcept {
    std::optional<CHealthFigure>& decided = m_Figures[static_cast<std::size_t>(figure - FIRST_FIGURE)];
    if (!decided) {
        decided = Decide(figure);
    }
    return *decided;
}

_MEDIUM_BASIS Decider::MediumBasis() noexcept {
    if (m_Facts.m_Medium == PropertyValue::SSD || m_Facts.m_Medium == PropertyValue::HDD) {
        return MediumBasis::REPORTED;
    }
    const auto* end = m_Facts.m_Readings.begin() + m_Facts.m_ReadingCount;
    const bool hasOwnWear = std::any_of(m_Facts.m_Readings.begin(), end, [](const Reading& reading) {
        return reading.m_Figure == HealthFigure::WEAR;
    });
    return m_Facts.m_Protocol == DriveProtocol::NVME ? MediumBasis::PROTOCOL
           : m_Facts.m_Rating.IsListed()             ? MediumBasis::LISTED
           : hasOwnWear || Figure(HealthFigure::WEAR).GetState() != FigureState::UNKNOWN
               ? MediumBasis::WEAR
               : MediumBasis::NOTHING;
}

bool Decider::IsSolidState() noexcept {
    const _MEDIUM_BASIS basis = MediumBasis();
    return basis == MediumBasis::REPORTED ? m_Facts.m_Medium == PropertyValue::SSD
                                          : basis != MediumBasis::NOTHING;
}

std::vector<CHealthFigure> Decider::Figures() {
    std::vector<CHealthFigure> figures;
    figures.reserve(LAST_FIGURE);
    for (std::int32_t figure = FIRST_FIGURE; figure <= LAST_FIGURE; ++figure) {
        figures.push_back(Figure(static_cast<_HEALTH_FIGURE>(figure)));
    }
    return figures;
}

CHealthFigure Decider::Decide(_HEALTH_FIGURE figure) noexcept {
    switch (figure) {
        case HealthFigure::WEAR: return DecideWear(*this);
        case HealthFigure::POWER_ON_HOURS: return DecideCount(m_Facts, figure, 1000);
        case HealthFigure::BYTES_WRITTEN:
        case HealthFigure::BYTES_READ: return DecideCount(m_Facts, figure, std::int64_t{1} << 36);
        case HealthFigure::RATED_TERABYTES: return DecideRating(m_Facts);
        case HealthFigure::TEMPERATURE: return DecideTemperature(m_Facts);
        case HealthFigure::HIGHEST_TEMPERATURE: return DecideHighestTemperature(*this);
        case HealthFigure::MEDIA_ERRORS: return DecideMediaErrors(m_Facts);
        case HealthFigure::ATTRIBUTES_BELOW_THRESHOLD:
        case HealthFigure::ATTRIBUTES_ONCE_BELOW: return DecideThresholds(m_Facts, figure);
        case HealthFigure::VERDICT: return DecideVerdict(m_Facts);
        default: return Plain(figure, ChooseWithAttributes(m_Facts, figure));
    }
}

}  // namespace PI
