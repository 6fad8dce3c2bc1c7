// SPDX-License-Identifier: Apache-2.0
/// @file
/// What lists say of one drive.
#pragma once

#include <pi/exchange/smartctl.h>
#include <pi/health_changes.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
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

/// What lists say of one drive: a value of some 500 bytes, since those of all drives are kept until the last
/// one is read. Texts are bytes as the report has them, empty where it does not say; they are valid as long
/// as the summary is not changed.
class DriveSummary {
public:
    /// @param file   as the command line names it
    /// @param health of the report
    DriveSummary(std::string_view file, const PI::CDriveReport& report, const PI::CHealthAssessment& health);

    std::string_view GetFile() const { return Text(FILE); }
    std::string_view GetDevice() const { return Text(DEVICE); }
    std::string_view GetModel() const { return Text(MODEL); }
    std::string_view GetSerial() const { return Text(SERIAL); }
    std::string_view GetFirmware() const { return Text(FIRMWARE); }
    std::string_view GetKind() const { return Text(KIND); }  ///< transport and medium: "NVME SSD"
    bool IsIdentified() const { return m_IsIdentified; }     ///< as PI::CDriveReport::IsIdentified
    bool IsSolidState() const { return m_IsSolidState; }
    bool IsDisk() const { return m_IsDisk; }                  ///< the report shows that it rotates
    std::uint64_t GetCapacity() const { return m_Capacity; }  ///< bytes; 0 when unknown
    /// Of the report, seconds since 1970 UTC; 0 when unknown.
    std::int64_t GetTime() const { return m_Time; }

    PI::_DRIVE_STATE GetState() const { return m_Health.GetState(); }
    /// The weightiest reason for the state, such as "1040 reallocated sectors"; never empty.
    std::string_view GetReason() const { return Text(REASON); }

    const PI::CHealthSnapshot& GetHealth() const { return m_Health; }
    /// Any figure of the drive's health, in the unit that PI::HealthFigure says. A disk has no wear.
    SummaryFigure GetFigure(PI::_HEALTH_FIGURE figure) const {
        return {m_Health.GetValue(figure), m_Health.GetFigureState(figure)};
    }
    /// Sectors reallocated, pending and uncorrectable, and media errors: the sum of those that have a value,
    /// doubtful where one of them is.
    SummaryFigure GetErrors() const { return m_Errors; }
    /// The drive's own verdict is that it fails; a warning, as of its temperature, is not.
    bool IsFailing() const { return m_Health.GetValue(PI::HealthFigure::VERDICT) == 1; }
    /// The wear is known, not doubtful, and WORN_PERCENT or more.
    bool IsWorn() const;
    /// The limit that the drive is hotter than, of those that it states; none where it is not.
    std::optional<std::int64_t> ExceededLimit() const;
    /// Of TEMPERATURE_LIMIT and CRITICAL_TEMPERATURE the lower one that has a value.
    SummaryFigure GetTemperatureLimit() const;
    /// Whether PI::CHealthAssessment::GetLifetime knows an estimate.
    bool HasLifetime() const { return m_HasLifetime; }

    /// What a forecast rests on.
    PI::CWearReading GetReading() const;
    /// The rated endurance, 10^12 bytes; 0 when unknown or doubtful.
    std::uint64_t GetRating() const;
    /// The forecast of this single reading.
    PI::CWearForecast GetForecast() const { return PI::CWearForecast({GetReading()}, GetRating()); }

    friend bool IsWorse(const DriveSummary& left, const DriveSummary& right);

    /// What an output keeps of the report beyond this.
    std::string_view GetDetail() const { return std::string_view(m_Texts).substr(m_Ends.back()); }
    void SetDetail(std::string_view detail) { m_Texts.replace(m_Ends.back(), std::string::npos, detail); }

private:
    enum TextIndex : std::uint8_t { FILE, DEVICE, MODEL, SERIAL, FIRMWARE, KIND, REASON, TEXTS };

    std::string_view Text(TextIndex index) const;

    std::string m_Texts;  ///< one after another, the detail last: a string each would take much more memory
    PI::CHealthSnapshot m_Health;
    SummaryFigure m_Errors;
    std::array<std::uint32_t, TEXTS> m_Ends{};
    std::uint64_t m_Capacity;
    std::int64_t m_Time;
    std::int64_t m_Severity;  ///< how bad the weightiest reason is beside others of the same weight
    std::int32_t m_Weight;    ///< of that reason
    bool m_IsIdentified;
    bool m_IsSolidState;
    bool m_IsDisk;
    bool m_HasLifetime;
};

using DriveList = std::vector<const DriveSummary*>;

inline DriveSummary Summarize(std::string_view file, const PI::CDriveReport& report) {
    return {file, report, PI::CHealthAssessment(report.GetHealth())};
}

/// The states, in the order in which drives need attention.
constexpr PI::_DRIVE_STATE STATES_WORST_FIRST[] = {PI::DriveState::FAILED, PI::DriveState::REPLACE,
                                                   PI::DriveState::LOOK, PI::DriveState::UNKNOWN,
                                                   PI::DriveState::GOOD};

/// Whether a drive needs attention before another. Equal ones stay in the order of their files: sort with
/// std::stable_sort.
bool IsWorse(const DriveSummary& left, const DriveSummary& right);

/// "failed", "replace", "look", "unknown", "good": a state in one word, as options and lists name it.
const char* StateWord(PI::_DRIVE_STATE state);

}  // namespace pitool
