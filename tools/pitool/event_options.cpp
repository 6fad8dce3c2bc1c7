// SPDX-License-Identifier: Apache-2.0

#include "event_options.h"

#include "name_vocabularies.h"
#include "print/text.h"
#include "whole_number.h"

#include <pi/vocabulary.h>
#include <velk/clock.h>

#include <algorithm>
#include <cstdint>

namespace pitool {
namespace {

bool Refuse(const std::string& option, const std::string& text, const char* expected, std::string& reason) {
    reason = option + ": " + Quoted(text) + " is no " + expected;
    return false;
}

template <class Number>
bool ReadField(const char* option, const std::optional<std::string>& text, const char* expected,
               Number& number, std::string& reason) {
    return !text || ReadWholeNumber(*text, number) || Refuse(option, *text, expected, reason);
}

template <class Value>
void Set(PI::CEvent& event, std::size_t index, const Value& value) {
    using Setter = void (PI::CEvent::*)(Value);
    constexpr Setter SETTERS[PLACEHOLDERS] = {&PI::CEvent::SetPlaceHolder1, &PI::CEvent::SetPlaceHolder2,
                                              &PI::CEvent::SetPlaceHolder3, &PI::CEvent::SetPlaceHolder4,
                                              &PI::CEvent::SetPlaceHolder5, &PI::CEvent::SetPlaceHolder6};
    (event.*SETTERS[index])(value);
}

bool SetPlaceHolders(const EventFields& fields, PI::CEvent& event, std::string& reason) {
    for (std::size_t i = 0; i < PLACEHOLDERS; ++i) {
        if (fields.m_Texts[i]) {
            SetPlaceHolder(event, i, *fields.m_Texts[i]);
        }
        if (fields.m_Resources[i]) {
            std::int32_t resource = 0;
            if (!ReadWholeNumber(*fields.m_Resources[i], resource)) {
                return Refuse("--resource" + std::to_string(i + 1), *fields.m_Resources[i],
                              "number of a language resource", reason);
            }
            SetPlaceHolder(event, i, resource);
        }
    }
    return true;
}

}  // namespace

bool HasField(const EventFields& fields) {
    const auto given = [](const std::optional<std::string>& field) { return field.has_value(); };
    return fields.m_ID || fields.m_Severity || fields.m_TimeStamp || fields.m_Host || fields.m_Source ||
           fields.m_Sequence || std::any_of(fields.m_Texts.begin(), fields.m_Texts.end(), given) ||
           std::any_of(fields.m_Resources.begin(), fields.m_Resources.end(), given);
}

bool ReadEventID(const std::string& text, std::uint32_t& id) {
    if (ReadWholeNumber(text, id)) {
        return true;
    }
    const auto entry = FindEventName(text);
    if (!entry) {
        return false;
    }
    id = static_cast<std::uint32_t>(entry->Number());
    return true;
}

bool ReadSeverity(const std::string& text, PI::_SEVERITY& severity) {
    const std::string upper = UpperCase(text);
    for (const PI::_SEVERITY named :
         {PI::Severity::DEBUG, PI::Severity::INFORMATION, PI::Severity::WARNING, PI::Severity::ERROR}) {
        if (upper == PI::SeverityToString(named)) {
            severity = named;
            return true;
        }
    }
    std::int32_t number = 0;
    if (!ReadWholeNumber(text, number)) {
        return false;
    }
    severity = static_cast<PI::_SEVERITY>(number);
    return true;
}

void SetPlaceHolder(PI::CEvent& event, std::size_t index, const std::string& text) {
    Set<const std::string&>(event, index, text);
}

void SetPlaceHolder(PI::CEvent& event, std::size_t index, int resource) {
    Set<int>(event, index, resource);
}

bool MakeEvent(const EventFields& fields, PI::CEvent& event, std::string& reason) {
    event = PI::CEvent();
    event.m_TimeStamp = VELK::now();
    event.m_Host = fields.m_Host.value_or("");
    event.m_Source = fields.m_Source.value_or("");
    if (fields.m_ID && !ReadEventID(*fields.m_ID, event.m_EventID)) {
        return Refuse("--id", *fields.m_ID, "number or name of an event", reason);
    }
    if (fields.m_Severity && !ReadSeverity(*fields.m_Severity, event.m_Severity)) {
        return Refuse("--severity", *fields.m_Severity, "severity (DEBUG, INFORMATION, WARNING, ERROR)",
                      reason);
    }
    return ReadField("--timestamp", fields.m_TimeStamp, "number of milliseconds", event.m_TimeStamp,
                     reason) &&
           ReadField("--sequence", fields.m_Sequence, "32-bit number", event.m_SequenceNumber, reason) &&
           SetPlaceHolders(fields, event, reason);
}

}  // namespace pitool
