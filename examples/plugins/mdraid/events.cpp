// SPDX-License-Identifier: Apache-2.0

#include "events.h"

#include <utility>

namespace mdraid {
namespace {

namespace Event = PI::EventID;
namespace Severity = PI::Severity;

struct StatusRow {
    _PROPERTY_VALUE m_Status;
    PI::_EVENT_ID m_Event;
    PI::_SEVERITY m_Severity;
};
constexpr StatusRow STATUSES[] = {
    {Value::OPERATIONAL, Event::LOGICALDRIVE_OPERATIONAL, Severity::INFORMATION},
    {Value::PARTIALLY_DEGRADED, Event::LD_PARTIALLY_DEGRADED, Severity::WARNING},
    {Value::DEGRADED, Event::LOGICALDRIVE_DEGRADED, Severity::WARNING},
    {Value::FAILED, Event::LOGICALDRIVE_FAILED, Severity::ERROR},
    {Value::OFFLINE, Event::LOGICALDRIVE_FAILED, Severity::ERROR},
};

struct ActivityRow {
    _PROPERTY_VALUE m_Activity;
    PI::_EVENT_ID m_Started;
    PI::_EVENT_ID m_Finished;
};
constexpr ActivityRow ACTIVITIES[] = {
    {Value::REBUILDING, Event::REBUILD_STARTED, Event::REBUILD_FINISHED},
    {Value::MIGRATING, Event::MIGRATION_STARTED, Event::MIGRATION_FINISHED},
    {Value::CHECKING, Event::CHECK_STARTED, Event::CHECK_FINISHED},
    {Value::VERIFYINGFIXING, Event::CHECK_STARTED, Event::CHECK_FINISHED},
};

}  // namespace

void EventLog::Update(const std::vector<ArrayReport>& reports) {
    for (const ArrayReport& report : reports) {
        const _PROPERTY_VALUE status = report.m_Assessment.m_Status;
        const _PROPERTY_VALUE activity = report.m_Assessment.m_Activity;
        Known& known = m_Known[report.m_ObjectID];
        std::set<std::string> failed;
        for (const Member& member : report.m_Array.m_Members) {
            if (member.m_Faulty && failed.insert(member.m_Name).second &&
                known.m_FailedMembers.count(member.m_Name) == 0) {
                Add(report.m_ObjectID, Event::DISK_OFFLINE, Severity::ERROR, member.m_Name, report.m_Title);
            }
        }
        for (const StatusRow& row : STATUSES) {
            if (row.m_Status == status && status != known.m_Status) {
                Add(report.m_ObjectID, row.m_Event, row.m_Severity, report.m_Title,
                    report.m_Assessment.m_Reason);
            }
        }
        const bool hasChanged = known.m_Activity != Value::EMPTY && activity != known.m_Activity;
        for (const ActivityRow& row : ACTIVITIES) {
            if (hasChanged && row.m_Activity == known.m_Activity && activity == Value::IDLE) {
                Add(report.m_ObjectID, row.m_Finished, Severity::INFORMATION, report.m_Title);
            } else if (hasChanged && row.m_Activity == activity) {
                Add(report.m_ObjectID, row.m_Started, Severity::INFORMATION, report.m_Title);
            }
        }
        known.m_FailedMembers = std::move(failed);
        known.m_Status = status == Value::UNKNOWN ? known.m_Status : status;  // the unknown has not changed
        known.m_Activity = activity != Value::UNKNOWN         ? activity
                           : known.m_Activity == Value::EMPTY ? Value::IDLE
                                                              : known.m_Activity;
    }
}

}  // namespace mdraid
