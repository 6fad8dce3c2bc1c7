// SPDX-License-Identifier: Apache-2.0

#include "isolated_plugin.h"

#include <velk/clock.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "plugin_messages.h"
#include "plugin_process.h"

namespace service {
namespace {

using Clock = std::chrono::steady_clock;

/// The file is no plug-in for this host, however often it is started.
struct Refusal : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class IsolatedPlugin : public Plugin {
public:
    IsolatedPlugin(Texts command, std::string name, const IsolationLimits& limits)
        : m_Command(std::move(command)), m_Name(std::move(name)), m_Limits(limits) {
        try {
            Start();
        } catch (const Refusal&) {
            throw;
        } catch (const std::exception& error) {
            Fail(error.what());
        }
    }

    const std::string& Name() const override { return m_Name; }

    std::vector<PI::CObject> GetObjects(Texts& errors) override {
        std::vector<PI::CObject> objects;
        Call({Ask::OBJECTS}, errors, [&](const std::string& line) {
            PI::CObject object;
            const std::uint64_t uniqueID = object.m_UniqueID;
            ReadRecord(line, object);
            object.m_UniqueID = uniqueID;  // the other process counts by itself
            objects.push_back(std::move(object));
        });
        return objects;
    }

    std::vector<PI::CEvent> GetEvents(Texts& errors) override {
        std::vector<PI::CEvent> events;
        Call({Ask::EVENTS}, errors, [&](const std::string& line) {
            PI::CEvent event;
            ReadRecord(line, event);
            events.push_back(std::move(event));
        });
        std::move(m_Events.begin(), m_Events.end(), std::back_inserter(events));
        m_Events.clear();
        return events;
    }

    int Execute(std::uint64_t objectID, const PI::COperation& operation, const TaskReport& report,
                PI::CTask& task, Texts& errors) override {
        const Texts request = {Ask::EXECUTE, std::to_string(objectID), PI::ToJson(operation),
                               PI::ToJson(task)};
        return Call(request, errors, [&](const std::string& line) {
            if (!line.empty()) {
                ReadRecord(line, task);
                return;
            }
            const bool goOn = report(task);
            Limit();
            m_Process->Socket().Send(goOn ? GO_ON : "end");
        });
    }

private:
    void Limit() { m_Process->Socket().Limit(m_Limits.m_Time, m_Limits.m_MemoryMB << 20U); }

    /// @return the error code
    template <class Take>
    int Call(const Texts& request, Texts& errors, Take take) {
        Message outcome = {{}, PI::ErrorCode::GENERAL};
        try {
            if (m_IsRunning || Clock::now() >= m_NextStart) {
                Start();
                outcome = Exchange(request, take);
            } else {
                m_PendingErrors.emplace_back("waits to be started again");
            }
        } catch (const std::exception& error) {
            Fail(error.what());
        }
        for (Texts* const texts : {&m_PendingErrors, &outcome.m_Texts}) {
            std::move(texts->begin(), texts->end(), std::back_inserter(errors));
        }
        m_PendingErrors.clear();
        return outcome.m_Code;
    }

    /// @param take gets each line that comes before the outcome
    template <class Take>
    Message Exchange(const Texts& request, Take take) {
        m_Doing = request[0];
        Channel& socket = m_Process->Socket();
        if (socket.HasMore()) {
            throw std::runtime_error("an answer without a request");
        }
        Limit();
        socket.Send(WriteMessage({request}));
        for (std::string line; socket.Receive(line);) {
            if (IsMessage(line)) {
                m_LastAnswer = Clock::now();
                return ReadMessage(line);
            }
            take(line);
        }
        throw std::runtime_error("closed its socket");
    }

    void Start() {
        if (m_IsRunning) {
            return;
        }
        m_Doing = Ask::LOAD;
        if (m_Process != nullptr && !m_Process->IsGone()) {
            throw std::runtime_error("the process of before cannot be ended");
        }
        m_Started = m_LastAnswer = Clock::now();
        m_Process = std::make_unique<PluginProcess>(m_Command);
        const Message loaded = Exchange(
            {Ask::LOAD}, [](const std::string&) { throw std::runtime_error("a record where none belongs"); });
        if (loaded.m_Code != PI::ErrorCode::SUCCESS) {
            throw Refusal(loaded.m_Texts.at(0));
        }
        m_Name = loaded.m_Texts.at(0);
        m_IsRunning = true;
    }

    void Fail(const std::string& reason) {
        m_IsRunning = false;
        const std::string ended = m_Process == nullptr ? "" : m_Process->Kill();
        const bool isFirst = m_Pause.count() == 0 || m_LastAnswer - m_Started > m_Limits.m_LongestPause;
        m_Pause = std::min(isFirst ? m_Limits.m_FirstPause : 2 * m_Pause, m_Limits.m_LongestPause);
        m_NextStart = Clock::now() + m_Pause;

        m_PendingErrors.push_back(m_Doing + ": " + (ended.empty() ? reason : ended) +
                                  "; it may be started again after " + std::to_string(m_Pause.count()) +
                                  " ms");
        PI::CEvent& event = m_Events.emplace_back();
        event.m_EventID = PI::EventID::INTERNAL;
        event.m_Severity = PI::Severity::ERROR;
        event.m_TimeStamp = VELK::now();
        event.SetPlaceHolder1("plug-in " + m_Name);
        event.SetPlaceHolder2(m_PendingErrors.back());
        event.m_Source = "service";
    }

    const Texts m_Command;
    std::string m_Name;
    const IsolationLimits m_Limits;
    std::unique_ptr<PluginProcess> m_Process;
    bool m_IsRunning = false;
    std::string m_Doing;  // what the process has been asked for
    Clock::time_point m_Started;
    Clock::time_point m_LastAnswer;
    Clock::time_point m_NextStart;
    std::chrono::milliseconds m_Pause{0};
    Texts m_PendingErrors;             // for the next call
    std::vector<PI::CEvent> m_Events;  // for the next GetEvents
};

}  // namespace

std::unique_ptr<Plugin> IsolatePlugin(Texts command, std::string name, const IsolationLimits& limits) {
    return std::make_unique<IsolatedPlugin>(std::move(command), std::move(name), limits);
}

}  // namespace service
