// SPDX-License-Identifier: Apache-2.0
/// @file
/// An event given on the command line.
#pragma once

#include <pi/event.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace pitool {

constexpr std::size_t PLACEHOLDERS = 6;

/// The fields of an event as the user wrote them; those not given are empty.
struct EventFields {
    std::optional<std::string> m_ID;  ///< number or name
    std::optional<std::string> m_Severity;
    std::optional<std::string> m_TimeStamp;
    std::optional<std::string> m_Host;
    std::optional<std::string> m_Source;
    std::optional<std::string> m_Sequence;
    std::array<std::optional<std::string>, PLACEHOLDERS> m_Texts;
    std::array<std::optional<std::string>, PLACEHOLDERS> m_Resources;  ///< numbers of language resources
};

/// Whether any field was given.
bool HasField(const EventFields& fields);

/// Makes an event; one without a time stamp takes the present time, and the other defaults are CEvent's.
///
/// @param event  out: meaningful when the result is true
/// @param reason out: which field is refused, and why, when the result is false
bool MakeEvent(const EventFields& fields, PI::CEvent& event, std::string& reason);

/// Reads an event's identifier: a number, or a name of the vocabulary in any case.
bool ReadEventID(const std::string& text, std::uint32_t& id);

/// Reads a severity: DEBUG, INFORMATION, WARNING, ERROR in any case, or a number. Numbers that name none
/// render as DEBUG.
bool ReadSeverity(const std::string& text, PI::_SEVERITY& severity);

/// Sets a placeholder of an event.
/// @param index 0 to 5
void SetPlaceHolder(PI::CEvent& event, std::size_t index, const std::string& text);
void SetPlaceHolder(PI::CEvent& event, std::size_t index, int resource);

}  // namespace pitool
