// SPDX-License-Identifier: Apache-2.0

#include "plugin_server.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <memory>
#include <new>

#include "channel.h"
#include "plugin_messages.h"

namespace service {
namespace {

/// Writable memory of this process that no other shares, in bytes. A sanitizer takes terabytes of addresses.
std::size_t DataSize() {
    std::ifstream file("/proc/self/statm");
    std::size_t pages = 0;
    for (int field = 0; field < 6; ++field) {
        file >> pages;
    }
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void LimitMemory(std::size_t memoryMB) {
    const rlim_t size = DataSize() + (memoryMB << 20U);
    const rlimit limit = {size, size};
    setrlimit(RLIMIT_DATA, &limit);
    // Not thrown, because it might be caught, and what has leaked would stay.
    std::set_new_handler([] { _exit(OUT_OF_MEMORY); });
}

int Execute(const Texts& request, Plugin& plugin, Channel& host, Texts& errors) {
    PI::COperation operation;
    PI::CTask task;
    ReadRecord(request.at(2), operation);
    ReadRecord(request.at(3), task);
    const auto report = [&host](const PI::CTask& changed) {
        host.Send(PI::ToJson(changed));
        host.Send("");
        std::string line;
        return host.Receive(line) && line == GO_ON;
    };
    const int code = plugin.Execute(std::stoull(request.at(1)), operation, report, task, errors);
    host.Send(PI::ToJson(task));
    return code;
}

/// Sends what a call brings, a record a line.
template <class Records>
void Send(const Records& records, Channel& host) {
    for (const auto& record : records) {
        host.Send(PI::ToJson(record));
    }
}

}  // namespace

void ServePlugin(const std::filesystem::path& file, std::size_t memoryMB,
                 const std::vector<Setting>& settings) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    fcntl(PLUGIN_SOCKET, F_SETFD, FD_CLOEXEC);
    LimitMemory(memoryMB);
    Channel host(PLUGIN_SOCKET);
    std::unique_ptr<Plugin> plugin;
    for (std::string line; host.Receive(line);) {
        Message outcome;
        try {
            const Texts request = ReadMessage(line).m_Texts;
            if (request.at(0) == Ask::LOAD) {
                plugin = LoadPlugin(file, settings);
                outcome.m_Texts = {plugin->Name()};
            } else if (request[0] == Ask::OBJECTS) {
                Send(plugin->GetObjects(outcome.m_Texts), host);
            } else if (request[0] == Ask::EVENTS) {
                Send(plugin->GetEvents(outcome.m_Texts), host);
            } else {
                outcome.m_Code = Execute(request, *plugin, host, outcome.m_Texts);
            }
        } catch (const std::exception& error) {
            outcome = {{error.what()}, PI::ErrorCode::GENERAL};
        }
        host.Send(WriteMessage(outcome));
    }
}

}  // namespace service
