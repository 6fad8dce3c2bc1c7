// SPDX-License-Identifier: Apache-2.0

#include "plugin_interface.h"

#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "drives.h"
#include "objects.h"

namespace {

// Lives from loading to unloading.
struct State {
    std::string m_Folder;  // empty: the drives of this machine
    std::string m_Program = "smartctl";
    smartctl::ObjectIDs m_IDs;
    smartctl::EventLog m_EventLog;
};
State state;

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

}  // namespace

int PluginInterfaceVersion() {
    return PLUGIN_INTERFACE_VERSION;
}

const char* PluginName() {
    return "smartctl";
}

int PluginConfigure(const char* key, const char* value) {
    const std::string_view name = key;
    if (name != "folder" && name != "program") {
        return PI::ErrorCode::INVALID_PARAMETER;
    }
    std::vector<std::string> errors;
    return Guard(errors, [&] { (name == "folder" ? state.m_Folder : state.m_Program) = value; });
}

int PluginGetObjects(std::vector<PI::CObject>& objects, std::vector<std::string>& errors) {
    return Guard(errors, [&] {
        const std::vector<smartctl::Drive> drives = state.m_Folder.empty()
                                                        ? smartctl::ReadMachine(state.m_Program, errors)
                                                        : smartctl::ReadFolder(state.m_Folder, errors);
        smartctl::AppendObjects(drives, state.m_IDs, objects);
        state.m_EventLog.Update(drives, state.m_IDs);
    });
}

int PluginGetEvents(std::vector<PI::CEvent>& events, std::vector<std::string>& errors) {
    return Guard(errors, [&] {
        for (PI::CEvent& event : state.m_EventLog.Take()) {
            events.push_back(std::move(event));
        }
    });
}
