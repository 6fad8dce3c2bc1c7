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
        Known now = {report.m_Assessment.m_Status, report.m_Assessment.m_Activity, {}};
        for (const Member& member : report.m_Array.m_Members) {
            if (member.m_Faulty) {
                now.m_FailedMembers.insert(member.m_Name);
            }
        }
        const auto before = m_Known.find(report.m_ObjectID);
        const bool isNew = before == m_Known.end();
        if (now.m_Status == Value::UNKNOWN) {  // what is not known has not changed
            now.m_Status = isNew ? Value::OPERATIONAL : before->second.m_Status;
        }
        if (now.m_Activity == Value::UNKNOWN) {
            now.m_Activity = isNew ? Value::IDLE : before->second.m_Activity;
        }
        UpdateArray(report, isNew ? nullptr : &before->second, now);
        m_Known[report.m_ObjectID] = std::move(now);
    }
}

void EventLog::UpdateArray(const ArrayReport& report, const Known* before, const Known& now) {
    for (const std::string& member : now.m_FailedMembers) {
        if (before == nullptr || before->m_FailedMembers.count(member) == 0) {
            Add(report.m_ObjectID, Event::DISK_OFFLINE, Severity::ERROR, member, report.m_Title);
        }
    }
    const _PROPERTY_VALUE statusBefore = before == nullptr ? Value::OPERATIONAL : before->m_Status;
    for (const StatusRow& row : STATUSES) {
        if (row.m_Status == now.m_Status && now.m_Status != statusBefore) {
            Add(report.m_ObjectID, row.m_Event, row.m_Severity, report.m_Title, report.m_Assessment.m_Reason);
        }
    }
    if (before == nullptr || before->m_Activity == now.m_Activity) {
        return;
    }
    for (const ActivityRow& row : ACTIVITIES) {
        if (row.m_Activity == before->m_Activity && now.m_Activity == Value::IDLE) {
            Add(report.m_ObjectID, row.m_Finished, Severity::INFORMATION, report.m_Title);
        } else if (row.m_Activity == now.m_Activity) {
            Add(report.m_ObjectID, row.m_Started, Severity::INFORMATION, report.m_Title);
        }
    }
}

}  // namespace mdraid
