// SPDX-License-Identifier: Apache-2.0

#include "isolated_plugin.h"

#include <velk/clock.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace service {
namespace {

using Clock = std::chrono::steady_clock;

/// The file is no plug-in for this host, however often it is started.
struct Refusal : std::runtime_error {
    using std::runtime_error::runtime_error;
};

const char* RequestText(int request) {
    switch (request) {
        case Ask::LOAD: return "loading";
        case Ask::CONFIGURE: return "PluginConfigure";
        case Ask::OBJECTS: return "PluginGetObjects";
        case Ask::EVENTS: return "PluginGetEvents";
        default: return "PluginExecute";
    }
}

void TakeNothing(const std::string&) {
    throw std::runtime_error("a record where none belongs");
}

}  // namespace

IsolatedPlugin::IsolatedPlugin(std::vector<std::string> command, std::string name,
                               const IsolationLimits& limits)
    : m_Command(std::move(command)), m_Name(std::move(name)), m_Limits(limits) {
    std::vector<std::string> errors;
    try {
        Start(errors);
    } catch (const Refusal&) {
        throw;
    } catch (const std::exception& error) {
        Fail(error.what(), errors);
    }
}

int IsolatedPlugin::Configure(const std::string& key, const std::string& value) {
    std::vector<std::string> errors;
    const int code = Call({Ask::CONFIGURE, {key, value}}, errors, TakeNothing).m_Number;
    if (code == PI::ErrorCode::SUCCESS || !m_IsRunning) {
        m_Settings.erase(std::remove_if(m_Settings.begin(), m_Settings.end(),
                                        [&](const auto& setting) { return setting.first == key; }),
                         m_Settings.end());
        m_Settings.emplace_back(key, value);
    }
    return code;
}

std::vector<PI::CObject> IsolatedPlugin::GetObjects(std::vector<std::string>& errors) {
    std::vector<PI::CObject> objects;
    const Message outcome = Call({Ask::OBJECTS, {}}, errors, [&](const std::string& line) {
        PI::CObject object;
        const std::uint64_t uniqueID = object.m_UniqueID;
        ReadRecord(line, object);
        object.m_UniqueID = uniqueID;  // the other process counts by itself
        objects.push_back(std::move(object));
    });
    errors.insert(errors.end(), outcome.m_Texts.begin(), outcome.m_Texts.end());
    return objects;
}

std::vector<PI::CEvent> IsolatedPlugin::GetEvents(std::vector<std::string>& errors) {
    std::vector<PI::CEvent> events;
    const Message outcome = Call({Ask::EVENTS, {}}, errors, [&](const std::string& line) {
        PI::CEvent event;
        ReadRecord(line, event);
        events.push_back(std::move(event));
    });
    errors.insert(errors.end(), outcome.m_Texts.begin(), outcome.m_Texts.end());
    std::move(m_Events.begin(), m_Events.end(), std::back_inserter(events));
    m_Events.clear();
    return events;
}

int IsolatedPlugin::Execute(std::uint64_t objectID, const PI::COperation& operation,
                            const std::function<bool(const PI::CTask&)>& report, PI::CTask& task,
                            std::vector<std::string>& errors) {
    const Message request = {Ask::EXECUTE,
                             {std::to_string(objectID), PI::ToJson(operation), PI::ToJson(task)}};
    const Message outcome = Call(request, errors, [&](const std::string& line) {
        if (!line.empty()) {
            ReadRecord(line, task);
            return;
        }
        const bool goOn = report(task);
        Limit();
        m_Process->Socket().Send(goOn ? GO_ON : "end");
    });
    errors.insert(errors.end(), outcome.m_Texts.begin(), outcome.m_Texts.end());
    return outcome.m_Number;
}

template <class Take>
Message IsolatedPlugin::Call(const Message& request, std::vector<std::string>& errors, Take take) {
    try {
        if (!m_IsRunning) {
            if (Clock::now() < m_NextStart) {
                errors.emplace_back("waits to be started again");
                return {PI::ErrorCode::GENERAL, {}};
            }
            Start(errors);
        }
        return Exchange(request, take);
    } catch (const std::exception& error) {
        Fail(error.what(), errors);
        return {PI::ErrorCode::GENERAL, {}};
    }
}

void IsolatedPlugin::Limit() {
    m_Process->Socket().Limit(m_Limits.m_Time, m_Limits.m_MemoryMB << 20U);
}

template <class Take>
Message IsolatedPlugin::Exchange(const Message& request, Take take) {
    m_Doing = RequestText(request.m_Number);
    Channel& socket = m_Process->Socket();
    if (socket.HasMore()) {
        throw std::runtime_error("an answer without a request");
    }
    Limit();
    socket.Send(WriteMessage(request));
    for (std::string line; socket.Receive(line);) {
        if (IsMessage(line)) {
            m_LastAnswer = Clock::now();
            return ReadMessage(line);
        }
        take(line);
    }
    throw std::runtime_error("closed its socket");
}

void IsolatedPlugin::Start(std::vector<std::string>& errors) {
    m_Doing = RequestText(Ask::LOAD);
    if (m_Process != nullptr && !m_Process->IsGone()) {
        throw std::runtime_error("the process of before cannot be ended");
    }
    m_Started = m_LastAnswer = Clock::now();
    m_Process = std::make_unique<PluginProcess>(m_Command);
    const Message loaded = Exchange({Ask::LOAD, {}}, TakeNothing);
    if (loaded.m_Number != PI::ErrorCode::SUCCESS) {
        throw Refusal(loaded.m_Texts.at(0));
    }
    m_Name = loaded.m_Texts.at(0);
    for (const auto& [key, value] : m_Settings) {
        const Message set = Exchange({Ask::CONFIGURE, {key, value}}, TakeNothing);
        if (set.m_Number != PI::ErrorCode::SUCCESS) {
            errors.push_back("the setting " + key + " gives error " + std::to_string(set.m_Number) + " " +
                             PI::ErrorCodeToString(set.m_Number));
        }
    }
    m_IsRunning = true;
}

void IsolatedPlugin::Fail(const std::string& reason, std::vector<std::string>& errors) {
    m_IsRunning = false;
    const std::string ended = m_Process == nullptr ? "" : m_Process->Kill();
    const bool isFirst = m_Pause.count() == 0 || m_LastAnswer - m_Started > m_Limits.m_LongestPause;
    m_Pause = std::min(isFirst ? m_Limits.m_FirstPause : 2 * m_Pause, m_Limits.m_LongestPause);
    m_NextStart = Clock::now() + m_Pause;

    const std::string text = m_Doing + ": " + (ended.empty() ? reason : ended) +
                             "; it may be started again after " + std::to_string(m_Pause.count()) + " ms";
    errors.push_back(text);
    PI::CEvent& event = m_Events.emplace_back();
    event.m_EventID = PI::EventID::INTERNAL;
    event.m_Severity = PI::Severity::ERROR;
    event.m_TimeStamp = VELK::now();
    event.SetPlaceHolder1("plug-in " + m_Name);
    event.SetPlaceHolder2(text);
    event.m_Source = "service";
}

}  // namespace service
