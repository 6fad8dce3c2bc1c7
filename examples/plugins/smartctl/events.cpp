// SPDX-License-Identifier: Apache-2.0

#include "events.h"

#include <velk/clock.h>

namespace smartctl {
namespace {

constexpr std::uint64_t SHORT_LIFETIME_HOURS = std::uint64_t{90} * 24;

}  // namespace

void EventLog::Update(const std::vector<Drive>& drives, ObjectIDs& ids) {
    for (const Drive& drive : drives) {
        const std::uint64_t id = DriveID(drive, ids);
        const std::string serial =
            drive.m_SerialNumber.empty() ? "" : ", serial number " + drive.m_SerialNumber;
        const std::string name = Title(drive) + " (" + drive.m_Device + serial + ")";
        if (drive.m_PredictsFailure) {
            Add(id, PI::EventID::SMART_WARNING, name, "its self-assessment failed");
        }
        if (drive.m_RemainingHours.has_value() && *drive.m_RemainingHours < SHORT_LIFETIME_HOURS) {
            Add(id, PI::EventID::PD_ESTIMATED_LIFETIME_BELOW_THRESHOLD, name,
                std::to_string(*drive.m_RemainingHours) + " hours");
        }
    }
}

void EventLog::Add(std::uint64_t handle, PI::_EVENT_ID id, const std::string& object,
                   const std::string& detail) {
    if (!m_Told.emplace(handle, id).second) {
        return;
    }
    PI::CEvent& event = m_Events.emplace_back();
    event.m_Handle = handle;
    event.m_EventID = static_cast<std::uint32_t>(id);
    event.m_Severity = PI::Severity::WARNING;
    event.m_TimeStamp = VELK::now();
    event.SetPlaceHolder1(object);
    event.SetPlaceHolder2(detail);
    event.m_Source = "smartctl";
    event.m_SequenceNumber = ++m_SequenceNumber;
}

std::vector<PI::CEvent> EventLog::Take() {
    return std::exchange(m_Events, {});
}

}  // namespace smartctl
