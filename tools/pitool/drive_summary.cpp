// SPDX-License-Identifier: Apache-2.0

#include "drive_summary.h"

#include <pi/endurance_rating.h>
#include <pi/vocabulary.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <iterator>
#include <tuple>

namespace pitool {
namespace {

namespace Figure = PI::HealthFigure;
namespace Value = PI::PropertyValue;

constexpr PI::_HEALTH_FIGURE ERRORS[] = {Figure::REALLOCATED_SECTORS, Figure::PENDING_SECTORS,
                                         Figure::UNCORRECTABLE_SECTORS, Figure::MEDIA_ERRORS};

// Reasons for the same state, the weightiest first (judgement). First what the drive says of itself; then
// data that is lost already; then sectors that were saved; then what can be planned for, reserve before wear,
// since a drive without reserve stops and a worn one goes on for long; last what is over, or passes.
constexpr PI::_HEALTH_FIGURE FIGURES_WEIGHTIEST_FIRST[] = {
    Figure::VERDICT,
    Figure::CRITICAL_WARNING,
    Figure::ATTRIBUTES_BELOW_THRESHOLD,
    Figure::PENDING_SECTORS,
    Figure::UNCORRECTABLE_SECTORS,
    Figure::MEDIA_ERRORS,
    Figure::FAILED_SELF_TESTS,
    Figure::REALLOCATED_SECTORS,
    Figure::SPARE,
    Figure::WEAR,
    Figure::ATTRIBUTES_ONCE_BELOW,
    Figure::TEMPERATURE,
};

template <class Item, std::size_t Size>
std::ptrdiff_t PlaceOf(Item wanted, const Item (&list)[Size]) {
    return std::find(std::begin(list), std::end(list), wanted) - std::begin(list);
}

/// Smaller for a drive that needs attention earlier: state, weightiest reason, how bad that is; then errors,
/// wear and age, whatever the reason.
auto RankOf(const DriveSummary& drive) {
    const PI::_HEALTH_FIGURE figure = drive.GetReasonFigure();
    const std::int64_t value = drive.GetFigure(figure).m_Value;
    const std::int64_t severity = figure == Figure::CRITICAL_WARNING ? 0  // bits
                                  : figure == Figure::SPARE          ? -value
                                                                     : value;
    return std::make_tuple(PlaceOf(drive.GetState(), STATES_WORST_FIRST),
                           PlaceOf(figure, FIGURES_WEIGHTIEST_FIRST), -severity, -drive.GetErrors().m_Value,
                           -drive.GetFigure(Figure::WEAR).m_Value,
                           -drive.GetFigure(Figure::POWER_ON_HOURS).m_Value);
}

std::string KindOf(const PI::CDriveReport& report, int medium) {
    std::string kind;
    if (report.GetTransport() != 0) {
        kind = PI::PropertyValueToString(report.GetTransport()) + " ";
    } else if (report.GetProtocol() != PI::DriveProtocol::UNKNOWN) {
        kind = report.GetProtocol() == PI::DriveProtocol::SCSI ? "SCSI " : "ATA ";
    }
    return kind + PI::PropertyValueToString(medium);
}

/// A fraction with as many places after the point as asked for, less the zeros at its end.
std::string ShortFraction(double value, int places) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", places, value);
    std::string fraction = text;
    if (places > 0) {
        fraction.erase(fraction.find_last_not_of('0') + 1);
        fraction.erase(fraction.find_last_not_of('.') + 1);
    }
    return fraction;
}

constexpr double HOURS_PER_YEAR = 365.25 * 24;

/// Years as ranges need them, without the unit: tenths below ten.
std::string YearsText(std::uint64_t hours) {
    constexpr double WHOLE_FROM = 9.95;
    const double years = static_cast<double>(hours) / HOURS_PER_YEAR;
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", years < WHOLE_FROM ? 1 : 0, years);
    return text;
}

}  // namespace

std::string_view DriveSummary::Text(TextIndex index) const {
    const std::size_t begin = index == 0 ? 0 : m_Ends[index - 1];
    return std::string_view(m_Texts).substr(begin, m_Ends[index] - begin);
}

SummaryFigure DriveSummary::GetFigure(PI::_HEALTH_FIGURE figure) const {
    const auto index = static_cast<std::size_t>(figure) - 1;
    return index < FIGURES ? SummaryFigure{m_Values[index], static_cast<PI::_FIGURE_STATE>(m_States[index])}
                           : SummaryFigure{};
}

SummaryFigure DriveSummary::GetErrors() const {
    SummaryFigure sum;
    for (const PI::_HEALTH_FIGURE each : ERRORS) {
        const SummaryFigure figure = GetFigure(each);
        if (figure.HasValue()) {
            sum.m_Value += std::min(figure.m_Value, INT64_MAX - sum.m_Value);
            sum.m_State = std::max(sum.m_State, figure.m_State);
        }
    }
    return sum;
}

SummaryFigure DriveSummary::GetTemperatureLimit() const {
    const SummaryFigure limit = GetFigure(Figure::TEMPERATURE_LIMIT);
    const SummaryFigure critical = GetFigure(Figure::CRITICAL_TEMPERATURE);
    return !limit.HasValue() || (critical.HasValue() && critical.m_Value < limit.m_Value) ? critical : limit;
}

bool DriveSummary::IsFailing() const {
    return GetFigure(Figure::VERDICT).m_Value == 1;
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

std::optional<PI::CRemainingLifetime> DriveSummary::GetLifetime() const {
    constexpr std::int64_t WORN_OUT = 100;  // the estimate makes no difference above it
    const SummaryFigure wear = GetFigure(Figure::WEAR);
    const SummaryFigure written = GetFigure(Figure::BYTES_WRITTEN);
    const SummaryFigure rated = GetFigure(Figure::RATED_TERABYTES);
    const SummaryFigure hours = GetFigure(Figure::POWER_ON_HOURS);
    const bool isTold = wear.IsKnown() || (rated.HasValue() && written.HasValue());
    if (!m_SolidState || !isTold || !hours.HasValue()) {
        return std::nullopt;
    }
    const PI::CRemainingLifetime lifetime(
        static_cast<std::uint64_t>(hours.m_Value), static_cast<std::uint64_t>(written.m_Value),
        wear.IsKnown() ? static_cast<std::uint32_t>(std::min(wear.m_Value, WORN_OUT)) : 0,
        static_cast<std::uint64_t>(rated.m_Value));
    return lifetime.IsKnown() ? std::optional(lifetime) : std::nullopt;
}

PI::CWearReading DriveSummary::GetReading() const {
    PI::CWearReading reading;
    if (const SummaryFigure hours = GetFigure(Figure::POWER_ON_HOURS); hours.IsKnown()) {
        reading.SetPowerOnHours(static_cast<std::uint64_t>(hours.m_Value));
    }
    if (const SummaryFigure wear = GetFigure(Figure::WEAR); wear.IsKnown()) {
        reading.SetWear(static_cast<std::uint32_t>(std::min<std::int64_t>(wear.m_Value, UINT32_MAX)));
    }
    if (const SummaryFigure written = GetFigure(Figure::BYTES_WRITTEN); written.IsKnown()) {
        reading.SetBytesWritten(static_cast<std::uint64_t>(written.m_Value));
    }
    if (m_Time != 0) {
        reading.SetDate(m_Time);
    }
    reading.SetFirmware(std::string(GetFirmware()));
    return reading;
}

PI::CWearForecast DriveSummary::GetForecast() const {
    const SummaryFigure rated = GetFigure(Figure::RATED_TERABYTES);
    return PI::CWearForecast({GetReading()}, rated.IsKnown() ? static_cast<std::uint64_t>(rated.m_Value) : 0);
}

DecidedHealth::DecidedHealth(const PI::CDriveHealth& health)
    : m_Figures(health.GetFigures()), m_Reasons(health.GetReasons()) {
    const auto weight = [](const PI::CHealthReason& reason) {
        return std::make_pair(PlaceOf(reason.GetState(), STATES_WORST_FIRST),
                              PlaceOf(reason.GetFigure().GetFigure(), FIGURES_WEIGHTIEST_FIRST));
    };
    std::stable_sort(m_Reasons.begin(), m_Reasons.end(),
                     [&weight](const PI::CHealthReason& left, const PI::CHealthReason& right) {
                         return weight(left) < weight(right);
                     });
}

DriveSummary Summarize(std::string_view file, const PI::CDriveReport& report) {
    return Summarize(file, report, DecidedHealth(report.GetHealth()));
}

DriveSummary Summarize(std::string_view file, const PI::CDriveReport& report, const DecidedHealth& health) {
    const int medium = MediumOf(report);
    const PI::CHealthReason& weightiest = health.GetReasons().front();
    const std::string kind = KindOf(report, medium);
    const std::string reason = weightiest.GetText();

    DriveSummary summary;
    summary.m_SolidState = medium == Value::SSD;
    summary.m_State = weightiest.GetState();
    summary.m_ReasonFigure = weightiest.GetFigure().GetFigure();
    summary.m_Capacity = report.GetCapacity();
    summary.m_Time = report.GetTime();
    // In the order of TextIndex.
    const std::string_view texts[] = {
        file,  report.GetDevice(), report.GetModel(), report.GetSerialNumber(), report.GetFirmware(), kind,
        reason};
    std::size_t length = 0;
    for (std::size_t i = 0; i < DriveSummary::TEXTS; ++i) {
        length += texts[i].size();
        summary.m_Ends[i] = static_cast<std::uint32_t>(length);
    }
    summary.m_Texts.reserve(length);
    for (const std::string_view text : texts) {
        summary.m_Texts += text;
    }
    for (std::size_t i = 0; i < DriveSummary::FIGURES; ++i) {
        const auto id = static_cast<PI::_HEALTH_FIGURE>(i + 1);
        if (id == Figure::WEAR && !summary.m_SolidState) {
            continue;
        }
        const PI::CHealthFigure& figure = health.GetFigure(id);
        summary.m_Values[i] = figure.GetValue();
        summary.m_States[i] = static_cast<std::uint8_t>(figure.GetState());
    }
    return summary;
}

bool IsWorse(const DriveSummary& left, const DriveSummary& right) {
    return RankOf(left) < RankOf(right);
}

int MediumOf(const PI::CDriveReport& report) {
    if (report.GetMedium() != 0) {
        return report.GetMedium();
    }
    const bool isSolidState = PI::FindEnduranceRating(report.GetModel()).IsListed() ||
                              report.GetHealth().GetFigure(Figure::WEAR).HasValue();
    return isSolidState ? Value::SSD : Value::HDD;
}

const char* StateWord(PI::_DRIVE_STATE state) {
    switch (state) {
        case PI::DriveState::FAILED: return "failed";
        case PI::DriveState::REPLACE: return "replace";
        case PI::DriveState::LOOK: return "look";
        case PI::DriveState::GOOD: return "good";
        case PI::DriveState::UNKNOWN: break;
    }
    return "unknown";
}

std::string SizeText(std::uint64_t bytes) {
    constexpr const char* UNITS[] = {" bytes", " kB", " MB", " GB", " TB", " PB"};
    constexpr double STEP = 1000;
    constexpr double ROUNDED_UP = 999.5;
    if (bytes == 0) {
        return "";
    }
    auto value = static_cast<double>(bytes);
    std::size_t unit = 0;
    while (value >= ROUNDED_UP && unit + 1 < std::size(UNITS)) {
        value /= STEP;
        ++unit;
    }
    constexpr std::size_t TERABYTES = 4;
    constexpr double THREE_DIGITS = 99.95;
    return ShortFraction(value, unit >= TERABYTES ? 2 : value < THREE_DIGITS ? 1 : 0) + UNITS[unit];
}

std::string AgeText(std::uint64_t hours) {
    constexpr std::uint64_t HOURS_PER_DAY = 24;
    if (hours < HOURS_PER_DAY) {
        return std::to_string(hours) + " h";
    }
    return static_cast<double>(hours) < HOURS_PER_YEAR / 10 ? std::to_string(hours / HOURS_PER_DAY) + " d"
                                                            : YearsText(hours) + " y";
}

std::string LifeText(const PI::CWearForecast& forecast) {
    constexpr auto LONGEST = static_cast<std::uint64_t>(30 * HOURS_PER_YEAR);
    if (forecast.GetState() == PI::WearForecastState::WORN) {
        return "worn";
    }
    if (!forecast.GetLow()) {
        return "-";
    }
    const std::uint64_t low = *forecast.GetLow();
    const std::uint64_t hours = forecast.GetHours().value_or(low);
    const std::uint64_t high = forecast.GetHigh().value_or(UINT64_MAX);
    const std::string text =
        (hours > LONGEST || !forecast.GetHours() ? "> " : "") + YearsText(std::min(hours, LONGEST)) + " y";
    return low >= LONGEST || !forecast.GetHours()
               ? text
               : text + " (" + YearsText(low) + "-" + (high <= LONGEST ? YearsText(high) : "") + ")";
}

std::string TimeText(std::int64_t seconds) {
    constexpr int FIRST_YEAR = 1900;
    constexpr int LAST = 9999;
    const std::time_t time = seconds;
    std::tm utc{};
    if (seconds == 0 || gmtime_r(&time, &utc) == nullptr || utc.tm_year + FIRST_YEAR < 1000 ||
        utc.tm_year + FIRST_YEAR > LAST) {
        return "";
    }
    char text[32];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc)};
}

}  // namespace pitool
