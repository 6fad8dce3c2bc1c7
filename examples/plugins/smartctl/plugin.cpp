// SPDX-License-Identifier: Apache-2.0
// Drives as smartctl reports them. To copy from: objects.cpp, which makes objects and events of what the
// library knows of a drive; drives.cpp, which runs a program and follows what it has begun. The entry points
// here are thin.

#include "plugin_interface.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "objects.h"

const shared::Identity shared::IDENTITY = {"smartctl", 502};

namespace {

// Lives from loading to unloading.
struct State {
    std::string m_Folder;  // empty: the drives of this machine
    std::string m_Program = smartctl::DEFAULT_PROGRAM;
    shared::ObjectIDs m_IDs;
    smartctl::EventLog m_EventLog;
    std::vector<smartctl::Drive> m_Drives;
};
State state;

}  // namespace

int PluginInterfaceVersion() {
    return PLUGIN_INTERFACE_VERSION;
}

const char* PluginName() {
    return shared::IDENTITY.m_Name;
}

// folder: where reports are, instead of the drives of this machine; program: smartctl's name or path.
int PluginConfigure(const char* key, const char* value) {
    const std::string_view name = key;
    if (name != "folder" && name != "program") {
        return PI::ErrorCode::INVALID_PARAMETER;
    }
    std::vector<std::string> errors;
    return shared::Guard(errors, [&] { (name == "folder" ? state.m_Folder : state.m_Program) = value; });
}

int PluginGetObjects(std::vector<PI::CObject>& objects, std::vector<std::string>& errors) {
    return shared::Guard(errors, [&] {
        state.m_Drives = state.m_Folder.empty() ? smartctl::ReadMachine(state.m_Program, errors)
                                                : smartctl::ReadFolder(state.m_Folder, errors);
        smartctl::AppendObjects(state.m_Drives, state.m_IDs, objects);
        state.m_EventLog.Update(state.m_Drives, state.m_IDs);
    });
}

int PluginGetEvents(std::vector<PI::CEvent>& events, std::vector<std::string>& errors) {
    return shared::Guard(errors, [&] { events = state.m_EventLog.Take(); });
}

int PluginExecute(std::uint64_t objectID, const PI::COperation& operation, const TaskReport& report,
                  PI::CTask& task, std::vector<std::string>& errors) {
    return shared::Guard(errors, [&] {
        for (const smartctl::Drive& drive : state.m_Drives) {
            if (!drive.m_Type.empty() && smartctl::DriveID(drive, state.m_IDs) == objectID) {
                smartctl::SelfTest(state.m_Program, drive, operation, report, task);
                return;
            }
        }
        throw std::runtime_error("there is no such drive");
    });
}
