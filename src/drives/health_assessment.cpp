// SPDX-License-Identifier: Apache-2.0

#include <pi/health_assessment.h>
#include <pi/health_changes.h>
#include <pi/vocabulary.h>

#include <algorithm>

#include "drives/health_facts.h"
#include "drives/health_figures.h"
#include "drives/health_state.h"

namespace PI {

struct CHealthAssessment::CDecisions {
    explicit CDecisions(Decider decider)
        : m_Figures(decider.Figures()),
          m_Reasons(ReasonsOf(decider)),
          m_Medium(decider.IsSolidState() ? PropertyValue::SSD : PropertyValue::HDD),
          m_MediumBasis(decider.MediumBasis()) {}

    std::vector<CHealthFigure> m_Figures;
    std::vector<CHealthReason> m_Reasons;
    int m_Medium;
    _MEDIUM_BASIS m_MediumBasis;
};

CHealthAssessment::CHealthAssessment(const CDriveHealth& health)
    : m_Decisions(std::make_shared<const CDecisions>(Decider(*health.m_Facts))) {}

CHealthFigure CHealthAssessment::GetFigure(_HEALTH_FIGURE figure) const noexcept {
    return FindKind(figure) != nullptr
               ? m_Decisions->m_Figures[static_cast<std::size_t>(figure - FIRST_FIGURE)]
               : CHealthFigure(figure);
}

const std::vector<CHealthFigure>& CHealthAssessment::GetFigures() const noexcept {
    return m_Decisions->m_Figures;
}

_DRIVE_STATE CHealthAssessment::GetState() const noexcept {
    return m_Decisions->m_Reasons.front().GetState();
}

const std::vector<CHealthReason>& CHealthAssessment::GetReasons() const noexcept {
    return m_Decisions->m_Reasons;
}

int CHealthAssessment::GetMedium() const noexcept {
    return m_Decisions->m_Medium;
}

_MEDIUM_BASIS CHealthAssessment::GetMediumBasis() const noexcept {
    return m_Decisions->m_MediumBasis;
}

namespace {

/// What the estimate of the lifetime is made from.
struct LifetimeFigures {
    explicit LifetimeFigures(const CHealthAssessment& drive)
        : m_Wear(drive.GetFigure(HealthFigure::WEAR)),
          m_Hours(drive.GetFigure(HealthFigure::POWER_ON_HOURS)),
          m_Written(drive.GetFigure(HealthFigure::BYTES_WRITTEN)),
          m_Rated(drive.GetFigure(HealthFigure::RATED_TERABYTES)) {}

    bool IsWearKnown() const { return m_Wear.GetState() == FigureState::KNOWN; }
    bool TellWear() const { return IsWearKnown() || (m_Rated.HasValue() && m_Written.HasValue()); }

    CHealthFigure m_Wear;
    CHealthFigure m_Hours;
    CHealthFigure m_Written;
    CHealthFigure m_Rated;
};

/// 0 where it is unknown.
std::uint64_t ValueOf(const CHealthFigure& figure) {
    return static_cast<std::uint64_t>(figure.GetValue());
}

}  // namespace

CRemainingLifetime CHealthAssessment::GetLifetime() const noexcept {
    const LifetimeFigures figures(*this);
    if (GetMedium() != PropertyValue::SSD || !figures.TellWear() || !figures.m_Hours.HasValue()) {
        return {0, 0, 0, 0};
    }
    return {ValueOf(figures.m_Hours), ValueOf(figures.m_Written),
            figures.IsWearKnown() ? static_cast<std::uint32_t>(ValueOf(figures.m_Wear)) : 0,
            ValueOf(figures.m_Rated)};
}

std::string CHealthAssessment::GetLifetimeReason() const {
    if (GetMedium() != PropertyValue::SSD && GetMediumBasis() == MediumBasis::REPORTED) {
        return "rotating disk";
    }
    const LifetimeFigures figures(*this);
    if (!figures.TellWear()) {
        return "wear: " + figures.m_Wear.GetText() +
               (figures.m_Rated.HasValue() ? "; bytes written: " + figures.m_Written.GetText()
                                           : "; rating: " + figures.m_Rated.GetText());
    }
    if (!figures.m_Hours.HasValue()) {
        return "power-on hours unknown: " + figures.m_Hours.GetText();
    }
    const CRemainingLifetime lifetime = GetLifetime();
    if (!lifetime.IsKnown()) {
        return "new drive";
    }
    const bool isByAmount = lifetime.GetBasis() == LifetimeBasis::BYTES_WRITTEN;
    for (const CHealthFigure* figure :
         {&figures.m_Wear, &figures.m_Hours, &figures.m_Written, &figures.m_Rated}) {
        if (figure->GetState() == FigureState::DOUBTFUL &&
            (isByAmount || figure == &figures.m_Wear || figure == &figures.m_Hours)) {
            return figure->GetText();
        }
    }
    return "";
}

CWearReading CHealthAssessment::GetReading() const {
    return CHealthSnapshot(*this).GetReading();
}

}  // namespace PI
