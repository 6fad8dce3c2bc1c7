// SPDX-License-Identifier: Apache-2.0

#include "drive_summary.h"

#include "print/units.h"

#include <pi/vocabulary.h>

#include <algorithm>
#include <tuple>

namespace pitool {
namespace {

namespace Figure = PI::HealthFigure;

std::string KindOf(const PI::CDriveReport& report, int medium) {
    const std::string transport = report.GetTransport() != 0
                                      ? PI::PropertyValueToString(report.GetTransport())
                                  : report.GetProtocol() == PI::DriveProtocol::SCSI ? "SCSI"
                                  : report.GetProtocol() == PI::DriveProtocol::ATA  ? "ATA"
                                                                                    : "";
    return transport + (transport.empty() ? "" : " ") + PI::PropertyValueToString(medium);
}

/// Larger for what is worse.
std::int64_t SeverityOf(const PI::CHealthFigure& figure) {
    switch (figure.GetFigure()) {
        case Figure::CRITICAL_WARNING: return 0;  // bits
        case Figure::SPARE: return -figure.GetValue();
        default: return figure.GetValue();
    }
}

}  // namespace

DriveSummary::DriveSummary(std::string_view file, const PI::CDriveReport& report,
                           const PI::CHealthAssessment& health)
    : m_Health(health),
      m_Capacity(report.GetCapacity()),
      m_Time(report.GetTime()),
      m_Severity(SeverityOf(health.GetReasons().front().GetFigure())),
      m_Weight(health.GetReasons().front().GetWeight()),
      m_IsIdentified(report.IsIdentified()),
      m_IsSolidState(health.GetMedium() == PI::PropertyValue::SSD),
      m_IsDisk(!m_IsSolidState && health.GetMediumBasis() != PI::MediumBasis::NOTHING),
      m_HasLifetime(health.GetLifetime().IsKnown()) {
    for (const PI::_HEALTH_FIGURE figure : {Figure::REALLOCATED_SECTORS, Figure::PENDING_SECTORS,
                                            Figure::UNCORRECTABLE_SECTORS, Figure::MEDIA_ERRORS}) {
        const SummaryFigure errors = GetFigure(figure);
        m_Errors.m_Value += std::min(errors.m_Value, INT64_MAX - m_Errors.m_Value);
        m_Errors.m_State = std::max(m_Errors.m_State, errors.m_State);
    }
    const std::string kind = KindOf(report, health.GetMedium());
    const std::string reason = health.GetReasons().front().GetText();
    // As TextIndex.
    const std::string_view texts[] = {
        file,  report.GetDevice(), report.GetModel(), report.GetSerialNumber(), report.GetFirmware(), kind,
        reason};
    std::size_t length = 0;
    for (std::size_t i = 0; i < TEXTS; ++i) {
        length += texts[i].size();
        m_Ends[i] = static_cast<std::uint32_t>(length);
    }
    m_Texts.reserve(length);
    for (const std::string_view text : texts) {
        m_Texts += text;
    }
}

std::string_view DriveSummary::Text(TextIndex index) const {
    const std::size_t begin = index == 0 ? 0 : m_Ends[index - 1];
    return std::string_view(m_Texts).substr(begin, m_Ends[index] - begin);
}

SummaryFigure DriveSummary::GetTemperatureLimit() const {
    const SummaryFigure limit = GetFigure(Figure::TEMPERATURE_LIMIT);
    const SummaryFigure critical = GetFigure(Figure::CRITICAL_TEMPERATURE);
    return !limit.HasValue() || (critical.HasValue() && critical.m_Value < limit.m_Value) ? critical : limit;
}

bool DriveSummary::IsWorn() const {
    const SummaryFigure wear = GetFigure(Figure::WEAR);
    return wear.IsKnown() && wear.m_Value >= WORN_PERCENT;
}

std::optional<std::int64_t> DriveSummary::ExceededLimit() const {
    const SummaryFigure temperature = GetFigure(Figure::TEMPERATURE);
    for (const PI::_HEALTH_FIGURE id : {Figure::TEMPERATURE_LIMIT, Figure::CRITICAL_TEMPERATURE}) {
        const SummaryFigure limit = GetFigure(id);
        if (temperature.IsKnown() && limit.IsKnown() && temperature.m_Value > limit.m_Value) {
            return limit.m_Value;
        }
    }
    return std::nullopt;
}

PI::CWearReading DriveSummary::GetReading() const {
    PI::CWearReading reading = m_Health.GetReading();
    reading.SetFirmware(std::string(GetFirmware()));
    if (m_Time != 0) {
        reading.SetDate(m_Time);
    }
    return reading;
}

std::uint64_t DriveSummary::GetRating() const {
    const SummaryFigure rated = GetFigure(Figure::RATED_TERABYTES);
    return rated.IsKnown() ? static_cast<std::uint64_t>(rated.m_Value) : 0;
}

bool IsWorse(const DriveSummary& left, const DriveSummary& right) {
    const auto rank = [](const DriveSummary& drive) {
        return std::make_tuple(drive.m_Weight, drive.m_Severity, drive.GetErrors().m_Value,
                               drive.GetFigure(Figure::WEAR).m_Value,
                               drive.GetFigure(Figure::POWER_ON_HOURS).m_Value);
    };
    return rank(left) > rank(right);
}

const char* StateWord(PI::_DRIVE_STATE state) {
    constexpr const char* WORDS[] = {"unknown", "good", "look", "replace", "failed"};
    return WordOf(WORDS, state);
}

}  // namespace pitool
