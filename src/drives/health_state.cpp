// SPDX-License-Identifier: Apache-2.0

#include "drives/health_state.h"

#include <pi/vocabulary.h>

#include <algorithm>
#include <iterator>

#include "drives/health_figures.h"

namespace PI {

namespace {

enum class Medium { ANY, HDD, SSD };

struct Threshold {
    _HEALTH_FIGURE m_Figure;
    Medium m_Medium;
    std::int64_t m_From;
    _DRIVE_STATE m_State;
};

constexpr Threshold THRESHOLDS[] = {
#define PI_THRESHOLD(figure, medium, from, state, source) \
    {HealthFigure::figure, Medium::medium, from, DriveState::state},
#include "drives/health_thresholds.def"
#undef PI_THRESHOLD
};

struct WarningBit {
    std::int64_t m_Bit;
    _DRIVE_STATE m_State;
    Statement m_Statement;
};

// NVMe Base Specification 2.1, log 02h, byte 0; what to do about each is a judgement.
constexpr WarningBit WARNING_BITS[] = {
    {1 << 0, DriveState::REPLACE, Statement::SPARE_LOW},
    {1 << 1, DriveState::LOOK, Statement::TOO_HOT},
    {1 << 2, DriveState::REPLACE, Statement::DEGRADED},
    {1 << 3, DriveState::FAILED, Statement::READ_ONLY},
    {1 << 4, DriveState::REPLACE, Statement::NO_BACKUP},
    {1 << 5, DriveState::LOOK, Statement::MEMORY_REGION},
    {0b1100'0000, DriveState::LOOK, Statement::UNKNOWN_WARNING},
};

// Reasons for the same state, the weightiest first (judgement). First what the drive says of itself; then
// data that is lost already; then sectors that were saved; then what can be planned for, reserve before wear,
// since a drive without reserve stops and a worn one goes on for long; last what is over, or passes.
constexpr _HEALTH_FIGURE FIGURES_WEIGHTIEST_FIRST[] = {
    HealthFigure::VERDICT,
    HealthFigure::CRITICAL_WARNING,
    HealthFigure::ATTRIBUTES_BELOW_THRESHOLD,
    HealthFigure::PENDING_SECTORS,
    HealthFigure::UNCORRECTABLE_SECTORS,
    HealthFigure::MEDIA_ERRORS,
    HealthFigure::FAILED_SELF_TESTS,
    HealthFigure::REALLOCATED_SECTORS,
    HealthFigure::SPARE,
    HealthFigure::WEAR,
    HealthFigure::ATTRIBUTES_ONCE_BELOW,
    HealthFigure::TEMPERATURE,
};

/// A drive of which nothing is known weighs more than a good one.
std::int32_t Weight(_DRIVE_STATE state, _HEALTH_FIGURE figure) {
    constexpr std::int32_t STATE_STEP = 100;
    const std::int32_t rank = state <= DriveState::GOOD ? DriveState::GOOD - state : state;
    const auto* place =
        std::find(std::begin(FIGURES_WEIGHTIEST_FIRST), std::end(FIGURES_WEIGHTIEST_FIRST), figure);
    return rank * STATE_STEP + static_cast<std::int32_t>(std::end(FIGURES_WEIGHTIEST_FIRST) - place);
}

/// Adds a finding after those that weigh as much.
void Add(Findings& findings, _DRIVE_STATE state, _HEALTH_FIGURE figure, Statement statement) {
    if (findings.m_Count == Findings::MAX) {
        return;
    }
    const auto weight = [](const Finding& finding) { return Weight(finding.m_State, finding.m_Figure); };
    std::size_t place = findings.m_Count++;
    for (; place > 0 && weight(findings.m_List[place - 1]) < Weight(state, figure); --place) {
        findings.m_List[place] = findings.m_List[place - 1];
    }
    findings.m_List[place] = {state, figure, statement};
}

/// The drive's own words. @return whether there are any
bool JudgeVerdict(Decider& decider, Findings& findings) {
    const CHealthFigure& warning = decider.Figure(HealthFigure::CRITICAL_WARNING);
    if (warning.HasValue() && warning.GetValue() != 0) {
        for (const WarningBit& bit : WARNING_BITS) {
            if ((warning.GetValue() & bit.m_Bit) != 0) {
                Add(findings, bit.m_State, HealthFigure::CRITICAL_WARNING, bit.m_Statement);
            }
        }
        return true;
    }
    const CHealthFigure& verdict = decider.Figure(HealthFigure::VERDICT);
    if (verdict.GetValue() == 1) {
        Add(findings, DriveState::FAILED, HealthFigure::VERDICT, Statement::FAILING);
    } else if (verdict.GetValue() == 2) {
        Add(findings, DriveState::LOOK, HealthFigure::VERDICT, Statement::WARNING);
    }
    return verdict.HasValue();
}

void JudgeThresholds(Decider& decider, Findings& findings) {
    const Medium medium = decider.IsSolidState() ? Medium::SSD : Medium::HDD;
    const Threshold* const end = std::end(THRESHOLDS);
    for (const Threshold* row = std::begin(THRESHOLDS); row != end;) {
        const _HEALTH_FIGURE figure = row->m_Figure;
        const CHealthFigure& value = decider.Figure(figure);
        const Threshold* reached = nullptr;
        for (; row != end && row->m_Figure == figure; ++row) {
            if ((row->m_Medium == Medium::ANY || row->m_Medium == medium) && value.HasValue() &&
                CHealthFigureMaker::HighestSaid(value) >= row->m_From) {
                reached = row;
            }
        }
        if (reached == nullptr) {
            continue;
        }
        // What is doubtful is looked at, no more.
        const bool isDoubtful = value.GetState() == FigureState::DOUBTFUL;
        const bool isPreFailure =
            figure == HealthFigure::ATTRIBUTES_BELOW_THRESHOLD && IsPreFailure(decider.Facts());
        Add(findings,
            isDoubtful     ? DriveState::LOOK
            : isPreFailure ? DriveState::REPLACE
                           : reached->m_State,
            figure,
            isDoubtful     ? Statement::DOUBTFUL
            : isPreFailure ? Statement::PRE_FAILURE
                           : Statement::VALUE);
    }
}

/// The drive's own limits, where it states them.
void JudgeLimits(Decider& decider, Findings& findings) {
    const CHealthFigure& spare = decider.Figure(HealthFigure::SPARE);
    const CHealthFigure& least = decider.Figure(HealthFigure::SPARE_THRESHOLD);
    constexpr std::int64_t USUAL_THRESHOLD = 10;  // of nearly all drives that state one
    if (spare.HasValue() && least.HasValue() && spare.GetValue() < least.GetValue()) {
        Add(findings, DriveState::REPLACE, HealthFigure::SPARE, Statement::VALUE);
    } else if (spare.HasValue() && !least.HasValue() && spare.GetValue() < USUAL_THRESHOLD) {
        Add(findings, DriveState::LOOK, HealthFigure::SPARE, Statement::VALUE);
    }
    const CHealthFigure& temperature = decider.Figure(HealthFigure::TEMPERATURE);
    const CHealthFigure& critical = decider.Figure(HealthFigure::CRITICAL_TEMPERATURE);
    const CHealthFigure& limit = decider.Figure(HealthFigure::TEMPERATURE_LIMIT);
    if (temperature.HasValue() && critical.HasValue() && temperature.GetValue() > critical.GetValue()) {
        Add(findings, DriveState::LOOK, HealthFigure::TEMPERATURE, Statement::ABOVE_CRITICAL);
    } else if (temperature.HasValue() && limit.HasValue() && temperature.GetValue() > limit.GetValue()) {
        Add(findings, DriveState::LOOK, HealthFigure::TEMPERATURE, Statement::TOO_HOT);
    }
}

}  // namespace

Findings Judge(Decider& decider) noexcept {
    Findings findings;
    const bool hasVerdict = JudgeVerdict(decider, findings);
    JudgeThresholds(decider, findings);
    JudgeLimits(decider, findings);
    if (findings.m_Count == 0) {
        // Thresholds are what a drive's verdict is made from.
        const bool isJudged =
            hasVerdict || decider.Figure(HealthFigure::ATTRIBUTES_BELOW_THRESHOLD).HasValue();
        Add(findings, isJudged ? DriveState::GOOD : DriveState::UNKNOWN, HealthFigure::VERDICT,
            isJudged ? Statement::NOTHING_AGAINST : Statement::NO_VERDICT);
    }
    return findings;
}

std::vector<CHealthReason> ReasonsOf(Decider& decider) {
    const Findings findings = Judge(decider);
    std::vector<CHealthReason> reasons;
    reasons.reserve(findings.m_Count);
    for (std::size_t i = 0; i < findings.m_Count; ++i) {
        const Finding& finding = findings.m_List[i];
        reasons.emplace_back(finding.m_State, decider.Figure(finding.m_Figure),
                             static_cast<std::uint32_t>(finding.m_Statement));
    }
    return reasons;
}

std::int32_t CHealthReason::GetWeight() const noexcept {
    return Weight(m_State, m_Figure.GetFigure());
}

}  // namespace PI
