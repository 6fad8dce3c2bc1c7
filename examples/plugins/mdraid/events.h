// SPDX-License-Identifier: Apache-2.0
/// @file
/// What happened to the arrays from one poll to the next.
#pragma once

#include "inventory.h"

#include <pi/events.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace mdraid {

/// Compares each poll with the one before. On the first, only what is wrong is an event.
class EventLog {
public:
    void Update(const std::vector<ArrayReport>& reports);

    /// Hands over the events since the last call.
    std::vector<PI::CEvent> Take();

private:
    struct Known {
        PI::_PROPERTY_VALUE m_Status = PI::PropertyValue::EMPTY;
        PI::_PROPERTY_VALUE m_Activity = PI::PropertyValue::EMPTY;
        std::set<std::string> m_FailedMembers;
    };

    void UpdateArray(const ArrayReport& report, const Known* before, const Known& now);
    void Add(std::uint64_t handle, PI::_EVENT_ID id, PI::_SEVERITY severity, const std::string& object,
             const std::string& detail = "");

    std::map<std::uint64_t, Known> m_Known;
    std::vector<PI::CEvent> m_Events;
    std::uint32_t m_SequenceNumber = 0;
};

}  // namespace mdraid
