// SPDX-License-Identifier: Apache-2.0
/// @file
/// What happened to the arrays from one poll to the next.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "inventory.h"
#include "plugin_base.h"

namespace mdraid {

/// Compares each poll with the one before. On the first, only what is wrong is an event.
class EventLog : public shared::EventList {
public:
    void Update(const std::vector<ArrayReport>& reports);

private:
    struct Known {
        _PROPERTY_VALUE m_Status = Value::OPERATIONAL;
        _PROPERTY_VALUE m_Activity = Value::EMPTY;  // before the first poll
        std::set<std::string> m_FailedMembers;
    };

    std::map<std::uint64_t, Known> m_Known;
};

}  // namespace mdraid
