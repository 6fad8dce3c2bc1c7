// SPDX-License-Identifier: Apache-2.0
/// @file
/// Every figure of one drive, as its sheet and its JSON show it.
#pragma once

#include "drive_summary.h"
#include "print/text.h"

#include <pi/drive_health.h>
#include <pi/exchange/smartctl.h>
#include <pi/vocabulary.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pitool {

/// What has not been asked for, or not been answered.
constexpr const char* NOT_REPORTED = "not reported";

/// Why a disk has no figure of solid-state drives.
constexpr const char* ROTATING = "rotating disk";

/// A property of the drive under its name of the vocabulary, or a figure of its health that the vocabulary
/// has no name for. It holds a text, a number or nothing.
struct DriveFigure {
    std::string_view m_Name;  ///< lives as long as the library
    PI::_PROPERTY_ID m_ID{};  ///< 0 where the vocabulary has none
    std::string m_Text;
    std::optional<std::int64_t> m_Number;
    const char* m_Unit = "";    ///< of the number, such as "hours"
    const char* m_Counts = "";  ///< "up" or "down" for what changes while the drive ages
    std::string m_Source;       ///< where the value comes from; may be empty
    std::string m_Reason;       ///< why there is no value, or why it is doubtful; else empty
    bool m_Applicable = true;   ///< false: a drive of this kind has no such figure
    Style m_Style = Style::PLAIN;

    bool HasValue() const { return m_Number.has_value() || !m_Text.empty(); }
    /// "known", "unknown", "doubtful".
    const char* StateText() const;
    /// The value with its unit, with a question mark when doubtful; empty when unknown.
    std::string ValueText() const;
};

/// The prescribed estimate of a drive's lifetime. It ranks nothing.
struct Lifetime {
    std::optional<std::uint64_t> m_Hours;  ///< 1 to 43829
    const char* m_Basis = "";  ///< "rated endurance and bytes written", "wear indicator", "drive's own
                               ///< statistics", "power-on hours alone"; empty without an estimate
    const char* m_Limit = "";  ///< what decides the hours, as docs/pitool-json.md lists it
    std::string m_Source;      ///< basis and limit for people
    std::string m_Reason;      ///< why there is no estimate, or why it is doubtful; else empty
    bool m_Applicable = true;  ///< false for rotating disks
};

/// The figures of a drive: always the same ones in the same order.
struct DriveFigures {
    std::vector<DriveFigure> m_Properties;  ///< those with an identifier
    std::vector<DriveFigure> m_Others;      ///< those without
    Lifetime m_Lifetime;
};

/// @param drive, health of the report
DriveFigures FiguresOf(const DriveSummary& drive, const PI::CDriveReport& report,
                       const PI::CHealthAssessment& health);

}  // namespace pitool
