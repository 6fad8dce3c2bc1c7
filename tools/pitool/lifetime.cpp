// SPDX-License-Identifier: Apache-2.0

#include "lifetime.h"

#include <pi/remaining_lifetime.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace pitool {
namespace {

Lifetime Without(std::string reason, bool applicable = true) {
    Lifetime lifetime;
    lifetime.m_RemainingHours = Unknown<unsigned long>(std::move(reason));
    lifetime.m_Applicable = applicable;
    return lifetime;
}

const char* BasisText(PI::_LIFETIME_BASIS basis, const PI::CHealthFigure& wear) {
    switch (basis) {
        case PI::LifetimeBasis::WEAR:
            return wear.GetSource() == PI::FigureSource::ATA_ATTRIBUTE ? "wear indicator"
                                                                       : "drive's own statistics";
        case PI::LifetimeBasis::BYTES_WRITTEN: return "rated endurance and bytes written";
        case PI::LifetimeBasis::AGE: return "power-on hours alone";
        case PI::LifetimeBasis::NOTHING: break;
    }
    return "";
}

/// A limit as programs read it, and what people are told beside the basis.
struct LimitTexts {
    const char* m_Name;
    const char* m_Text;
};

LimitTexts TextsOf(const PI::CRemainingLifetime& estimate) {
    switch (estimate.GetLimit()) {
        case PI::LifetimeLimit::SERVICE_SPAN_OVER:
            return {"service span over", "; the service span of five years is over"};
        case PI::LifetimeLimit::WORN_OUT:
            return {"worn out", estimate.GetBasis() == PI::LifetimeBasis::WEAR
                                    ? "; worn out, only the service span of five years is left"
                                    : "; the rated amount is written"};
        case PI::LifetimeLimit::WORN_EARLY:
            return {"worn early", "; worn faster than aged, only the service span of five years is left"};
        case PI::LifetimeLimit::SERVICE_SPAN:
            return {"service span", "; limited by the service span of five years"};
        case PI::LifetimeLimit::WEAR: return {"wear", ""};
        case PI::LifetimeLimit::RATE: return {"rate", ""};
        case PI::LifetimeLimit::NOTHING: break;
    }
    return {"", ""};
}

/// The first of the figures that is doubtful; null when none is.
const PI::CHealthFigure* FirstDoubtful(std::initializer_list<const PI::CHealthFigure*> figures) {
    for (const PI::CHealthFigure* figure : figures) {
        if (figure->GetState() == PI::FigureState::DOUBTFUL) {
            return figure;
        }
    }
    return nullptr;
}

}  // namespace

Lifetime EstimateLifetime(const PI::CDriveHealth& health, bool solidState) {
    if (!solidState) {
        return Without("rotating disk", false);
    }
    const PI::CHealthFigure wear = health.GetFigure(PI::HealthFigure::WEAR);
    const PI::CHealthFigure written = health.GetFigure(PI::HealthFigure::BYTES_WRITTEN);
    const PI::CHealthFigure rated = health.GetFigure(PI::HealthFigure::RATED_TERABYTES);
    const PI::CHealthFigure hours = health.GetFigure(PI::HealthFigure::POWER_ON_HOURS);
    const bool isWearKnown = wear.GetState() == PI::FigureState::KNOWN;
    if (!isWearKnown && !(rated.HasValue() && written.HasValue())) {
        return Without(
            "wear: " + wear.GetText() +
            (rated.HasValue() ? "; bytes written: " + written.GetText() : "; rating: " + rated.GetText()));
    }
    if (!hours.HasValue()) {
        return Without("power-on hours unknown: " + hours.GetText());
    }

    constexpr std::int64_t WORN_OUT = 100;  // the estimate makes no difference above it
    const PI::CRemainingLifetime estimate(
        static_cast<std::uint64_t>(hours.GetValue()), static_cast<std::uint64_t>(written.GetValue()),
        isWearKnown ? static_cast<std::uint32_t>(std::min(wear.GetValue(), WORN_OUT)) : 0,
        static_cast<std::uint64_t>(rated.GetValue()));
    if (!estimate.IsKnown()) {
        return Without("new drive");
    }
    const bool isByAmount = estimate.GetBasis() == PI::LifetimeBasis::BYTES_WRITTEN;
    const LimitTexts limit = TextsOf(estimate);
    Lifetime lifetime;
    lifetime.m_Basis = BasisText(estimate.GetBasis(), wear);
    lifetime.m_Limit = limit.m_Name;
    std::string source = lifetime.m_Basis;
    if (estimate.GetBasis() == PI::LifetimeBasis::WEAR) {
        source += " (" + wear.GetText() + ")";
    }
    lifetime.m_RemainingHours = Known<unsigned long>(estimate.GetHours(), source + limit.m_Text);
    const PI::CHealthFigure* doubtful =
        isByAmount ? FirstDoubtful({&wear, &hours, &written, &rated}) : FirstDoubtful({&wear, &hours});
    if (doubtful != nullptr) {
        lifetime.m_RemainingHours.m_Reason = doubtful->GetText();
    }
    return lifetime;
}

}  // namespace pitool
