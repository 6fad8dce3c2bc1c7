// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a report says about a drive, as the properties in which a plug-in shows it.
#pragma once

#include <pi/exchange/smartctl.h>
#include <pi/health_assessment.h>
#include <pi/vocabulary.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace PI {

/// @addtogroup exchange
/// @{

/// A property of a drive: a number, a text or nothing, with its reliability, source and reason.
///
/// A value; any number of threads may read it. Names and units are valid as long as the library, texts until
/// the object is assigned to or destroyed; they are in English, without a full stop. Only copies throw,
/// std::bad_alloc if allocation fails. Since 1.1.0.
class CDriveProperty {
public:
    /// UNKNOWN, without a name.
    CDriveProperty() = default;

    /// 0 for a figure of the drive's health that has no identifier in the vocabulary.
    _PROPERTY_ID GetID() const noexcept { return m_ID; }
    /// Name in the vocabulary; without an identifier, name of the figure (HealthFigureToString).
    const char* GetName() const noexcept { return m_Name; }

    /// UNKNOWN: there is neither number nor text. DOUBTFUL: there is one, and a reason to doubt it.
    _FIGURE_STATE GetState() const noexcept {
        return !m_Number && m_Text.empty() ? FigureState::UNKNOWN
               : m_Reason.empty()          ? FigureState::KNOWN
                                           : FigureState::DOUBTFUL;
    }
    /// False if drives of this kind have no such property, such as rotating disks a wear; it is UNKNOWN then.
    bool IsApplicable() const noexcept { return m_IsApplicable; }

    /// In GetUnit(); no value for texts and if it is unknown.
    std::optional<std::int64_t> GetNumber() const noexcept { return m_Number; }
    /// The bytes of the report, which may not be UTF-8, or the name of GetChoice(); empty for numbers and if
    /// it is unknown.
    const std::string& GetText() const noexcept { return m_Text; }
    /// For properties with named states, the state; EMPTY for others and if it is unknown.
    _PROPERTY_VALUE GetChoice() const noexcept { return m_Choice; }

    /// "percent", "hours", "bytes", "terabytes written" (10^12 bytes), "degrees Celsius", "rotations per
    /// minute"; empty for counts and texts.
    const char* GetUnit() const noexcept { return m_Unit; }
    /// How it changes as the drive ages.
    _FIGURE_DIRECTION GetDirection() const noexcept { return m_Direction; }

    /// Where the value comes from; empty if the report states it, if it is unknown, and if GetReason() says.
    const std::string& GetSource() const noexcept { return m_Source; }
    /// Why it is unknown, doubtful or not applicable; empty if it is known.
    const std::string& GetReason() const noexcept { return m_Reason; }

private:
    friend class CDriveDescriber;

    _PROPERTY_ID m_ID{};
    _PROPERTY_VALUE m_Choice = PropertyValue::EMPTY;
    _FIGURE_DIRECTION m_Direction = FigureDirection::NONE;
    bool m_IsApplicable = true;
    const char* m_Name = "";
    const char* m_Unit = "";
    std::optional<std::int64_t> m_Number;
    std::string m_Text;
    std::string m_Source;
    std::string m_Reason;
    [[maybe_unused]] std::uint64_t m_Reserve[4] = {};
};

/// Everything about a drive that the vocabulary has a property for, then the other figures of its health:
/// always the same properties in the same order, to which later releases add at the end of either part.
/// docs/pitool-json.md lists them.
///
/// @param health of the report
/// @throws std::bad_alloc if allocation fails. Thread-safe.
PI_API std::vector<CDriveProperty> DescribeDrive(const CDriveReport& report, const CHealthAssessment& health);

/// @}

}  // namespace PI
