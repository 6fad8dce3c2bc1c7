// SPDX-License-Identifier: Apache-2.0
/// @file
/// What lists say of one drive.
#pragma once

#include <pi/drive_health.h>
#include <pi/exchange/smartctl.h>
#include <pi/remaining_lifetime.h>
#include <pi/wear_forecast.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pitool {

/// Wear, in percent, from which a drive counts as worn.
constexpr std::int64_t WORN_PERCENT = 90;

/// A figure as lists need it; why it is unknown or doubtful, only the sheet of its drive says.
struct SummaryFigure {
    std::int64_t m_Value = 0;  ///< 0 where there is none
    PI::_FIGURE_STATE m_State = PI::FigureState::UNKNOWN;

    bool HasValue() const { return m_State != PI::FigureState::UNKNOWN; }
    bool IsKnown() const { return m_State == PI::FigureState::KNOWN; }
    bool IsDoubtful() const { return m_State == PI::FigureState::DOUBTFUL; }
};

/// What a report tells of a drive's health, decided once: the library decides anew whenever it is asked.
class DecidedHealth {
public:
    explicit DecidedHealth(const PI::CDriveHealth& health);

    const PI::CHealthFigure& GetFigure(PI::_HEALTH_FIGURE figure) const {
        return m_Figures.at(static_cast<std::size_t>(figure) - 1);
    }
    /// Why the drive is in its state, the weightiest first, as IsWorse weighs them; never empty.
    const std::vector<PI::CHealthReason>& GetReasons() const { return m_Reasons; }

private:
    std::vector<PI::CHealthFigure> m_Figures;  ///< in the order of their numbers
    std::vector<PI::CHealthReason> m_Reasons;
};

/// What lists say of one drive: a value of some 500 bytes, since those of all drives are kept until the last
/// one is read. Texts are bytes as the report has them, empty where it does not say; they are valid as long
/// as the summary is not changed.
class DriveSummary {
public:
    std::string_view GetFile() const { return Text(FILE); }      ///< as the command line names it
    std::string_view GetDevice() const { return Text(DEVICE); }  ///< such as "/dev/sda"
    std::string_view GetModel() const { return Text(MODEL); }    ///< as reported
    std::string_view GetSerial() const { return Text(SERIAL); }  ///< as reported
    std::string_view GetFirmware() const { return Text(FIRMWARE); }
    std::string_view GetKind() const { return Text(KIND); }  ///< transport and medium: "NVME SSD"
    bool IsSolidState() const { return m_SolidState; }

    PI::_DRIVE_STATE GetState() const { return m_State; }
    /// The weightiest reason for the state, such as "1040 reallocated sectors"; never empty.
    std::string_view GetReason() const { return Text(REASON); }
    /// The figure that the reason rests on.
    PI::_HEALTH_FIGURE GetReasonFigure() const { return m_ReasonFigure; }

    /// Any figure of the drive's health, in the unit that PI::HealthFigure says.
    SummaryFigure GetFigure(PI::_HEALTH_FIGURE figure) const;
    /// Sectors reallocated, pending and uncorrectable, and media errors: the sum of those that have a value,
    /// doubtful where one of them is.
    SummaryFigure GetErrors() const;
    /// The drive's own verdict is that it fails; a warning, as of its temperature, is not.
    bool IsFailing() const;
    /// The wear is known, not doubtful, and WORN_PERCENT or more.
    bool IsWorn() const;
    /// The limit that the drive is hotter than, of those that it states; none where it is not.
    std::optional<std::int64_t> ExceededLimit() const;
    /// The prescribed estimate of the lifetime, with a doubtful wear left out as if it were unknown; none for
    /// rotating disks, new drives, and where the figures are missing.
    std::optional<PI::CRemainingLifetime> GetLifetime() const;
    /// Of TEMPERATURE_LIMIT and CRITICAL_TEMPERATURE the lower one that has a value.
    SummaryFigure GetTemperatureLimit() const;
    std::uint64_t GetCapacity() const { return m_Capacity; }  ///< bytes; 0 when unknown
    std::int64_t GetTime() const {
        return m_Time;
    }  ///< of the report, seconds since 1970 UTC; 0 when unknown

    /// What a forecast rests on. Doubtful figures are left out.
    PI::CWearReading GetReading() const;
    /// The forecast of this single reading.
    PI::CWearForecast GetForecast() const;

    /// What an output keeps of the report beyond this.
    const std::string& GetDetail() const { return m_Detail; }
    void SetDetail(std::string detail) { m_Detail = std::move(detail); }

private:
    friend DriveSummary Summarize(std::string_view file, const PI::CDriveReport& report,
                                  const DecidedHealth& health);

    enum TextIndex : std::uint8_t { FILE, DEVICE, MODEL, SERIAL, FIRMWARE, KIND, REASON, TEXTS };
    static constexpr std::size_t FIGURES = PI::HealthFigure::UNSAFE_SHUTDOWNS;

    std::string_view Text(TextIndex index) const;

    std::string m_Texts;  ///< one after another: a string each would take three times the memory
    std::string m_Detail;
    std::array<std::uint32_t, TEXTS> m_Ends{};
    std::array<std::int64_t, FIGURES> m_Values{};
    std::array<std::uint8_t, FIGURES> m_States{};
    std::uint64_t m_Capacity = 0;
    std::int64_t m_Time = 0;
    PI::_DRIVE_STATE m_State = PI::DriveState::UNKNOWN;
    PI::_HEALTH_FIGURE m_ReasonFigure = PI::HealthFigure::VERDICT;
    bool m_SolidState = false;
};

/// The states, in the order in which drives need attention.
constexpr PI::_DRIVE_STATE STATES_WORST_FIRST[] = {PI::DriveState::FAILED, PI::DriveState::REPLACE,
                                                   PI::DriveState::LOOK, PI::DriveState::UNKNOWN,
                                                   PI::DriveState::GOOD};

/// @param health of the report
DriveSummary Summarize(std::string_view file, const PI::CDriveReport& report, const DecidedHealth& health);
DriveSummary Summarize(std::string_view file, const PI::CDriveReport& report);

/// Whether a drive needs attention before another. Equal ones stay in the order of their files: sort with
/// std::stable_sort.
bool IsWorse(const DriveSummary& left, const DriveSummary& right);

/// PropertyValue::SSD or HDD. Where the report does not tell, listed models and drives that count wear are
/// solid-state drives, and others count as rotating disks: those of before 2008 do not say that they rotate.
int MediumOf(const PI::CDriveReport& report);

/// "failed", "replace", "look", "unknown", "good": a state in one word, as options and lists name it.
const char* StateWord(PI::_DRIVE_STATE state);

/// A capacity as makers print it: "960 GB", "1.92 TB"; empty for 0.
std::string SizeText(std::uint64_t bytes);

/// Power-on time: "3.4 y", "25 d" below a tenth of a year, "5 h" below a day.
std::string AgeText(std::uint64_t hours);

/// Time left with its range: "4.2 y (1.9-7.5)", "4.2 y (1.9-)" where the range is open; "> 3.1 y" where the
/// wear stands still; "worn"; "-" without a forecast. Nothing above 30 years is told apart (judgement: no
/// drive runs that long).
std::string LifeText(const PI::CWearForecast& forecast);

/// "2031-05-17T08:30:00Z", ISO 8601; empty for 0 and for years that do not have four digits.
std::string TimeText(std::int64_t seconds);

}  // namespace pitool
