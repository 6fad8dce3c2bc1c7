// SPDX-License-Identifier: Apache-2.0
/// @file
/// What every plug-in needs, independent of its hardware.
#pragma once

#include <pi/events.h>
#include <pi/trace.h>
#include <pi/vocabulary.h>
#include <velk/clock.h>

#include <cstdint>
#include <exception>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace shared {

/// Who writes traces and events. Each plug-in defines its own.
struct Identity {
    const char* m_Name;
    int m_TraceNumber;  ///< marks its lines in the trace files
};
extern const Identity IDENTITY;

/// Category 275 of the service's trace files: one line for each thing done.
inline void Trace(const std::string& text) {
    VELKTrace(IDENTITY.m_TraceNumber, IDENTITY.m_Name, 275, "%s") << text;
}

/// Category 276: details.
inline void TraceDebug(const std::string& text) {
    VELKTrace(IDENTITY.m_TraceNumber, IDENTITY.m_Name, 276, "%s") << text;
}

/// Runs the body of an entry point: nothing may be thrown into the host.
template <class Body>
int Guard(std::vector<std::string>& errors, Body body) {
    try {
        body();
    } catch (const std::exception& error) {
        errors.emplace_back(error.what());
    }
    return errors.empty() ? PI::ErrorCode::SUCCESS : PI::ErrorCode::GENERAL;
}

/// Gives things identifiers that stay the same from poll to poll.
class ObjectIDs {
public:
    std::uint64_t Get(const std::string& thing) {
        return m_IDs.emplace(thing, m_IDs.size() + 1).first->second;
    }

private:
    std::map<std::string, std::uint64_t> m_IDs;
};

/// Events that wait for the service to take them.
class EventList {
public:
    void Add(std::uint64_t handle, PI::_EVENT_ID id, PI::_SEVERITY severity, const std::string& object,
             const std::string& detail = "") {
        Trace("event " + PI::EventIDToString(id));
        PI::CEvent& event = m_Events.emplace_back();
        event.m_Handle = handle;
        event.m_EventID = static_cast<std::uint32_t>(id);
        event.m_Severity = severity;
        event.m_TimeStamp = VELK::now();
        event.SetPlaceHolder1(object);
        if (!detail.empty()) {  // a text that is set, but empty, reads "T:"
            event.SetPlaceHolder2(detail);
        }
        event.m_Source = IDENTITY.m_Name;
        event.m_SequenceNumber = ++m_SequenceNumber;
    }

    /// Hands over the events since the last call.
    std::vector<PI::CEvent> Take() { return std::exchange(m_Events, {}); }

private:
    std::vector<PI::CEvent> m_Events;
    std::uint32_t m_SequenceNumber = 0;
};

}  // namespace shared
