// SPDX-License-Identifier: Apache-2.0
/// @file
/// How long a solid-state drive will last at the pace at which it wears.
#pragma once

#include <pi/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace PI {

/// @addtogroup drives
/// @{

/// What was read from a drive at one time. What is not set is unknown.
///
/// A value; the caller serialises access to one object. Nothing but copies and SetFirmware throws,
/// std::bad_alloc if allocation fails. Since 1.1.0.
class PI_API CWearReading {
public:
    /// Nothing is known.
    CWearReading();

    /// Hours that the drive has been powered. 0 counts as unknown, and so does more than 300,000, since no
    /// drive is that old (judgement).
    void SetPowerOnHours(std::uint64_t hours);
    /// Wear in percent as the drive reports it: 0 when new, may exceed 100. More than 1,000 counts as unknown
    /// (judgement).
    void SetWear(std::uint32_t percent);
    /// Bytes written by hosts.
    void SetBytesWritten(std::uint64_t bytes);
    /// When the drive was read, in seconds since 1970-01-01 UTC.
    void SetDate(std::int64_t seconds);
    /// Firmware version of the drive, as it reports it.
    void SetFirmware(const std::string& firmware);

    std::optional<std::uint64_t> GetPowerOnHours() const;  ///< hours; no value: unknown
    std::optional<std::uint32_t> GetWear() const;          ///< percent; no value: unknown
    std::optional<std::uint64_t> GetBytesWritten() const;  ///< bytes; no value: unknown
    std::optional<std::int64_t> GetDate() const;  ///< seconds since 1970-01-01 UTC; no value: unknown
    const std::string& GetFirmware() const;       ///< empty: unknown

private:
    std::optional<std::uint64_t> m_PowerOnHours;
    std::optional<std::uint32_t> m_Wear;
    std::optional<std::uint64_t> m_BytesWritten;
    std::optional<std::int64_t> m_Date;
    std::string m_Firmware;
    [[maybe_unused]] std::uint64_t m_Reserve[4] = {};
};

namespace WearForecastState {
/// What a CWearForecast says.
enum _WEAR_FORECAST_STATE : std::int32_t {
    NOT_ENOUGH = 1,    ///< nothing can be said yet; GetReason says why
    ESTIMATED = 2,     ///< there is an estimate with its interval
    STANDS_STILL = 3,  ///< the wear no longer grows; there is a low end only
    WORN = 4,          ///< the wear is 100 percent or more; all hours are 0
};
}  // namespace WearForecastState
using WearForecastState::_WEAR_FORECAST_STATE;

namespace WearForecastBasis {
/// What a CWearForecast is based on.
enum _WEAR_FORECAST_BASIS : std::int32_t {
    NONE = 0,           ///< nothing: there is no forecast
    AGE = 1,            ///< the wear of the drive's whole life
    RECENT = 2,         ///< the wear between two readings
    BYTES_WRITTEN = 3,  ///< what was written, compared with what drives of this rated endurance can take
};
}  // namespace WearForecastBasis
using WearForecastBasis::_WEAR_FORECAST_BASIS;

/// Power-on hours until a drive's wear is 100 percent, with an interval that contains the true value four
/// times out of five.
///
/// A value; the caller serialises access to one object. docs/estimates.md describes the method, its constants
/// and its accuracy on real drives. Since 1.1.0.
class PI_API CWearForecast {
public:
    /// Without readings, so NOT_ENOUGH. Does not throw.
    CWearForecast();

    /// Forecasts from the readings of one drive.
    ///
    /// One reading is enough; more make the forecast better. Readings without hours or without wear are
    /// ignored; of several with the same hours the last one counts. If the hours go back, the wear falls by
    /// more than one percent, or new firmware counts differently, all readings before that are ignored.
    /// @param readings    oldest first
    /// @param enduranceTB rated endurance in 10^12 bytes written, 0 if unknown; used while the drive reports
    ///                    no wear, or 0 percent
    /// @throws std::bad_alloc
    explicit CWearForecast(const std::vector<CWearReading>& readings, std::uint64_t enduranceTB = 0);

    _WEAR_FORECAST_STATE GetState() const;  ///< whether there is an estimate
    _WEAR_FORECAST_BASIS GetBasis() const;  ///< what it is based on

    /// Power-on hours from the latest reading until 100 percent, at most 10^9; no value in NOT_ENOUGH and
    /// STANDS_STILL.
    std::optional<std::uint64_t> GetHours() const;
    /// Low end of the interval: one drive in ten is worn earlier. No value in NOT_ENOUGH.
    std::optional<std::uint64_t> GetLow() const;
    /// High end of the interval: one drive in ten lasts longer. No value if it is open, and in NOT_ENOUGH.
    std::optional<std::uint64_t> GetHigh() const;

    /// Why there is no estimate, in English, without a full stop; empty in ESTIMATED. Valid until the library
    /// is unloaded.
    const char* GetReason() const;

    /// The date when the drive will have run for that many more hours, in seconds since 1970-01-01 UTC.
    ///
    /// Two dated readings a day or more apart show how many hours a day the drive runs; without them it is
    /// assumed to run all the time.
    /// @return no value if the latest reading has no date, and after the year 9999
    std::optional<std::int64_t> GetDate(std::uint64_t hours) const;

private:
    _WEAR_FORECAST_STATE m_State = WearForecastState::NOT_ENOUGH;
    _WEAR_FORECAST_BASIS m_Basis = WearForecastBasis::NONE;
    std::optional<std::uint64_t> m_Hours;
    std::optional<std::uint64_t> m_Low;
    std::optional<std::uint64_t> m_High;
    const char* m_Reason;
    std::optional<std::int64_t> m_Date;  // of the latest reading
    double m_SecondsPerHour = 3600;      // of the calendar, for an hour of power-on time
    [[maybe_unused]] std::uint64_t m_Reserve[4] = {};
};

/// @}

}  // namespace PI
