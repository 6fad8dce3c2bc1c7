// SPDX-License-Identifier: Apache-2.0

#include "event_reader.h"

#include "event_options.h"
#include "json_text.h"
#include "print/text.h"

#include <velk/clock.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <type_traits>

namespace pitool {
namespace {

/// The event itself, its list of placeholders, a placeholder.
constexpr int DEEPEST = 3;

/// Why an event is refused; thrown from within the JSON library's call-back as well.
struct Refused : std::runtime_error {
    using std::runtime_error::runtime_error;
};

Json ParseJson(std::string_view text) {
    const auto limitDepth = [](int depth, Json::parse_event_t event, Json&) {
        const bool opens =
            event == Json::parse_event_t::object_start || event == Json::parse_event_t::array_start;
        if (opens && depth >= DEEPEST) {
            throw Refused("nested deeper than " + std::to_string(DEEPEST) + " levels");
        }
        return true;
    };
    try {
        return Json::parse(text.begin(), text.end(), limitDepth);
    } catch (const Json::parse_error& error) {
        throw Refused(text.find_first_not_of(" \t\r\n") == std::string_view::npos
                          ? "empty"
                          : "not JSON: wrong at byte " + std::to_string(error.byte));
    } catch (const Json::out_of_range&) {
        throw Refused("holds a number beyond all bounds");
    }
}

[[noreturn]] void RefuseMember(const std::string& name, const char* expected) {
    throw Refused(name + ": expected " + expected);
}

std::string ReadText(const std::string& name, const Json& value) {
    if (!value.is_string()) {
        RefuseMember(name, "a text");
    }
    return value.get<std::string>();
}

template <class Number>
Number ReadNumber(const std::string& name, const Json& value, const char* expected) {
    if (value.is_number_unsigned() &&
        value.get<std::uint64_t>() <= static_cast<std::uint64_t>(std::numeric_limits<Number>::max())) {
        return static_cast<Number>(value.get<std::uint64_t>());
    }
    // Negative numbers are what the other kind of integer is left for.
    if (std::is_signed_v<Number> && value.is_number_integer() && !value.is_number_unsigned() &&
        value.get<std::int64_t>() >= static_cast<std::int64_t>(std::numeric_limits<Number>::min())) {
        return static_cast<Number>(value.get<std::int64_t>());
    }
    RefuseMember(name, expected);
}

void ReadPlaceHolder(const std::string& name, const Json& value, PI::CEvent& event, std::size_t index) {
    constexpr const char* EXPECTED = "a text, null, or an object with the number \"resource\"";
    if (value.is_null()) {
        return;
    }
    if (value.is_string()) {
        SetPlaceHolder(event, index, value.get<std::string>());
        return;
    }
    if (!value.is_object() || value.size() != 1 || !value.contains("resource")) {
        RefuseMember(name, EXPECTED);
    }
    SetPlaceHolder(event, index,
                   ReadNumber<std::int32_t>(name + ".resource", value["resource"], "a signed 32-bit number"));
}

void ReadPlaceHolders(const Json& list, PI::CEvent& event) {
    if (!list.is_array() || list.size() > PLACEHOLDERS) {
        RefuseMember("placeholders", "a list of at most 6");
    }
    for (std::size_t i = 0; i < list.size(); ++i) {
        ReadPlaceHolder("placeholders[" + std::to_string(i) + "]", list[i], event, i);
    }
}

void ReadMember(const std::string& name, const Json& value, PI::CEvent& event) {
    if (name == "id") {
        if (value.is_string()) {
            if (!ReadEventID(value.get<std::string>(), event.m_EventID)) {
                RefuseMember(name, "the number or the name of an event");
            }
        } else {
            event.m_EventID = ReadNumber<std::uint32_t>(name, value, "the number or the name of an event");
        }
    } else if (name == "severity") {
        if (value.is_string()) {
            if (!ReadSeverity(value.get<std::string>(), event.m_Severity)) {
                RefuseMember(name, "DEBUG, INFORMATION, WARNING, ERROR or a number");
            }
        } else {
            event.m_Severity = static_cast<PI::_SEVERITY>(
                ReadNumber<std::int32_t>(name, value, "DEBUG, INFORMATION, WARNING, ERROR or a number"));
        }
    } else if (name == "timestamp") {
        event.m_TimeStamp = ReadNumber<std::uint64_t>(name, value, "a number of milliseconds");
    } else if (name == "host") {
        event.m_Host = ReadText(name, value);
    } else if (name == "source") {
        event.m_Source = ReadText(name, value);
    } else if (name == "sequence") {
        event.m_SequenceNumber = ReadNumber<std::uint32_t>(name, value, "an unsigned 32-bit number");
    } else if (name == "placeholders") {
        ReadPlaceHolders(value, event);
    } else {
        throw Refused("unknown member " + Quoted(name));
    }
}

}  // namespace

bool ReadEvent(std::string_view text, PI::CEvent& event, std::string& reason) {
    try {
        const Json json = ParseJson(text);
        if (!json.is_object()) {
            throw Refused("expected an object");
        }
        event = PI::CEvent();
        event.m_TimeStamp = VELK::now();
        for (const auto& [name, value] : json.items()) {
            ReadMember(name, value, event);
        }
        return true;
    } catch (const Refused& refused) {
        reason = refused.what();
        return false;
    }
}

}  // namespace pitool
