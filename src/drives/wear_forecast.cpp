// SPDX-License-Identifier: Apache-2.0

#include <pi/wear_forecast.h>

#include <algorithm>
#include <cmath>

namespace PI {

namespace {

// docs/estimates.md says where the constants come from and how accurate the results are.

constexpr double WORN_PERCENT = 100;
constexpr std::uint64_t MAX_HOURS = 300000;
constexpr std::uint32_t MAX_WEAR = 1000;
constexpr double MAX_FORECAST = 1e9;
constexpr double MIN_HOURS = 24;           // judgement
constexpr double HALF_STEP = 0.5;          // a drive that reports 7 percent is worn 7.5 percent on average
constexpr std::uint32_t STEP = 1;          // a fall by this is rounding
constexpr double RECENT_SHARE = 0.1;       // of the drive's life, over which the recent pace is measured
constexpr double RECENT_MIN_GROWTH = 0.5;  // percent expected, below which the recent pace means nothing
constexpr double STILL_MIN_GROWTH = 1.5;   // percent expected while the wear stays the same
constexpr double FIRMWARE_PACE = 4;        // judgement: times what was expected
constexpr double FIRMWARE_GROWTH = 5;      // judgement: percent
constexpr double BYTES_PER_TB = 1e12;
constexpr double TAKEN_OF_RATED = 2.1;  // times its rating that the median drive takes
constexpr std::int64_t SECONDS_PER_DAY = 86400;
constexpr double YEAR_9999 = 253402300799.0;

struct Spread {
    double m_Estimate;  // factor from the result of the pace to the estimate
    double m_Low;       // factors from the estimate to its bounds
    double m_High;
};
constexpr Spread OF_AGE = {0.92, 0.54, 4.2};
constexpr Spread OF_RECENT = {1, 0.63, 2.2};
constexpr Spread OF_BYTES = {1, 0.6, 4};
constexpr double STILL_LOW = 3;  // times what the age gives

/// A reading with hours and wear.
struct Point {
    double m_Hours;
    std::uint32_t m_Wear;
    const CWearReading* m_Reading;

    /// Percent per hour over the whole life.
    double Pace() const { return (m_Wear + HALF_STEP) / m_Hours; }
};

/// Whether a counter was reset, or counts differently, from one reading to the next.
bool IsBreak(const Point& earlier, const Point& later) {
    if (later.m_Hours < earlier.m_Hours || later.m_Wear + STEP < earlier.m_Wear) {
        return true;
    }
    const std::string& before = earlier.m_Reading->GetFirmware();
    const std::string& after = later.m_Reading->GetFirmware();
    const double growth = static_cast<double>(later.m_Wear) - earlier.m_Wear;
    const double expected = earlier.Pace() * (later.m_Hours - earlier.m_Hours);
    return !before.empty() && !after.empty() && before != after && growth > FIRMWARE_GROWTH &&
           growth > FIRMWARE_PACE * expected;
}

/// What can be compared with the latest reading, and that one.
std::vector<Point> ComparablePoints(const std::vector<CWearReading>& readings) {
    std::vector<Point> points;
    for (const CWearReading& reading : readings) {
        if (!reading.GetPowerOnHours().has_value() || !reading.GetWear().has_value()) {
            continue;
        }
        const Point point = {static_cast<double>(*reading.GetPowerOnHours()), *reading.GetWear(), &reading};
        if (!points.empty() && IsBreak(points.back(), point)) {
            points.clear();
        }
        if (!points.empty() && points.back().m_Hours == point.m_Hours) {
            points.pop_back();
        }
        points.push_back(point);
    }
    return points;
}

/// The latest point that is a tenth of the drive's life back, or the first.
const Point& RecentPoint(const std::vector<Point>& points) {
    const double hours = points.back().m_Hours;
    const auto found = std::find_if(points.rbegin(), points.rend(), [&](const Point& point) {
        return hours - point.m_Hours >= RECENT_SHARE * hours;
    });
    return found == points.rend() ? points.front() : *found;
}

/// Hours for which the wear has been what it is now.
double HoursWithoutGrowth(const std::vector<Point>& points) {
    const Point& latest = points.back();
    const auto lower = std::find_if(points.rbegin(), points.rend(),
                                    [&](const Point& point) { return point.m_Wear < latest.m_Wear; });
    return latest.m_Hours - lower.base()->m_Hours;
}

/// Whether the bytes written never go back, as counters of 32 bits do.
bool BytesAscend(const std::vector<CWearReading>& readings) {
    std::uint64_t last = 0;
    return std::all_of(readings.begin(), readings.end(), [&](const CWearReading& reading) {
        const std::uint64_t bytes = reading.GetBytesWritten().value_or(last);
        const bool ascends = bytes >= last;
        last = bytes;
        return ascends;
    });
}

/// Hours in the calendar for each hour of power-on time, from the first dated reading to the latest.
double SecondsPerHour(const std::vector<CWearReading>& readings, const CWearReading& latest) {
    constexpr double ALWAYS_ON = 3600;
    const auto first = std::find_if(readings.begin(), readings.end(), [](const CWearReading& reading) {
        return reading.GetDate().has_value() && reading.GetPowerOnHours().has_value();
    });
    if (first == readings.end() || *first->GetPowerOnHours() >= *latest.GetPowerOnHours()) {
        return ALWAYS_ON;
    }
    const double seconds = static_cast<double>(*latest.GetDate()) - static_cast<double>(*first->GetDate());
    if (seconds < SECONDS_PER_DAY) {
        return ALWAYS_ON;
    }
    return std::max(seconds / static_cast<double>(*latest.GetPowerOnHours() - *first->GetPowerOnHours()),
                    ALWAYS_ON);
}

std::uint64_t WholeHours(double hours) {
    return static_cast<std::uint64_t>(std::llround(std::min(hours, MAX_FORECAST)));
}

}  // namespace

CWearReading::CWearReading() = default;

void CWearReading::SetPowerOnHours(std::uint64_t hours) {
    m_PowerOnHours = hours == 0 || hours > MAX_HOURS ? std::nullopt : std::make_optional(hours);
}

void CWearReading::SetWear(std::uint32_t percent) {
    m_Wear = percent > MAX_WEAR ? std::nullopt : std::make_optional(percent);
}

void CWearReading::SetBytesWritten(std::uint64_t bytes) {
    m_BytesWritten = bytes;
}

void CWearReading::SetDate(std::int64_t seconds) {
    m_Date = seconds;
}

void CWearReading::SetFirmware(const std::string& firmware) {
    m_Firmware = firmware;
}

std::optional<std::uint64_t> CWearReading::GetPowerOnHours() const {
    return m_PowerOnHours;
}

std::optional<std::uint32_t> CWearReading::GetWear() const {
    return m_Wear;
}

std::optional<std::uint64_t> CWearReading::GetBytesWritten() const {
    return m_BytesWritten;
}

std::optional<std::int64_t> CWearReading::GetDate() const {
    return m_Date;
}

const std::string& CWearReading::GetFirmware() const {
    return m_Firmware;
}

CWearForecast::CWearForecast() : m_Reason("no reading tells power-on hours and wear") {}

CWearForecast::CWearForecast(const std::vector<CWearReading>& readings, std::uint64_t enduranceTB)
    : CWearForecast() {
    const auto estimate = [this](_WEAR_FORECAST_BASIS basis, double hours, const Spread& spread) {
        m_State = WearForecastState::ESTIMATED;
        m_Basis = basis;
        m_Reason = "";
        const double median = hours * spread.m_Estimate;
        m_Hours = WholeHours(median);
        m_Low = WholeHours(median * spread.m_Low);
        m_High = WholeHours(median * spread.m_High);
    };

    const std::vector<Point> points = ComparablePoints(readings);
    const auto timed = std::find_if(readings.rbegin(), readings.rend(), [](const CWearReading& reading) {
        return reading.GetPowerOnHours().has_value();
    });
    if (timed == readings.rend()) {
        return;
    }
    const CWearReading& latest = points.empty() ? *timed : *points.back().m_Reading;
    m_Date = latest.GetDate();
    if (m_Date.has_value()) {
        m_SecondsPerHour = SecondsPerHour(readings, latest);
    }

    const double hours = static_cast<double>(*latest.GetPowerOnHours());
    const std::uint32_t wear = latest.GetWear().value_or(0);
    if (wear >= WORN_PERCENT) {
        m_State = WearForecastState::WORN;
        m_Basis = WearForecastBasis::AGE;
        m_Reason = "the wear has reached 100 percent";
        m_Hours = m_Low = m_High = 0;
        return;
    }
    if (hours < MIN_HOURS) {
        m_Reason = "powered on for less than a day";
        return;
    }
    if (wear == 0) {
        const double written = static_cast<double>(latest.GetBytesWritten().value_or(0));
        const double taken = TAKEN_OF_RATED * BYTES_PER_TB * static_cast<double>(enduranceTB);
        if (written == 0 || taken == 0 || !BytesAscend(readings)) {
            m_Reason = points.empty() ? m_Reason : "no wear so far";
        } else if (points.empty() && written >= taken) {
            m_Reason = "more was written than such drives take, and no reading tells the wear";
        } else {
            // A wear of 0 is below 1 percent, whatever was written.
            const double used =
                points.empty() ? written / taken : std::min(written / taken, STEP / WORN_PERCENT);
            estimate(WearForecastBasis::BYTES_WRITTEN, hours * (1 - used) / used, OF_BYTES);
        }
        return;
    }

    const double pace = points.back().Pace();
    const double left = WORN_PERCENT - wear;
    if (pace * HoursWithoutGrowth(points) >= STILL_MIN_GROWTH) {
        m_State = WearForecastState::STANDS_STILL;
        m_Basis = WearForecastBasis::RECENT;
        m_Reason = "the wear stands still";
        m_Low = WholeHours(left / pace * STILL_LOW);
        return;
    }
    const Point& recent = RecentPoint(points);
    const double recentHours = hours - recent.m_Hours;
    if (pace * recentHours < RECENT_MIN_GROWTH) {
        estimate(WearForecastBasis::AGE, left / pace, OF_AGE);
        return;
    }
    // Half a percent at the pace of the whole life goes before what the readings show.
    const double growth = wear > recent.m_Wear ? wear - recent.m_Wear : 0;
    estimate(WearForecastBasis::RECENT, left * (recentHours + HALF_STEP / pace) / (growth + HALF_STEP),
             OF_RECENT);
    if (growth == 0) {
        m_High.reset();
    }
}

_WEAR_FORECAST_STATE CWearForecast::GetState() const {
    return m_State;
}

_WEAR_FORECAST_BASIS CWearForecast::GetBasis() const {
    return m_Basis;
}

std::optional<std::uint64_t> CWearForecast::GetHours() const {
    return m_Hours;
}

std::optional<std::uint64_t> CWearForecast::GetLow() const {
    return m_Low;
}

std::optional<std::uint64_t> CWearForecast::GetHigh() const {
    return m_High;
}

const char* CWearForecast::GetReason() const {
    return m_Reason;
}

std::optional<std::int64_t> CWearForecast::GetDate(std::uint64_t hours) const {
    if (!m_Date.has_value()) {
        return std::nullopt;
    }
    const double date = static_cast<double>(*m_Date) + static_cast<double>(hours) * m_SecondsPerHour;
    if (date > YEAR_9999) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(date);
}

}  // namespace PI
