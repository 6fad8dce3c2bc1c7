// SPDX-License-Identifier: Apache-2.0
// Linux software RAID as the service sees it. To copy from: the entry points here; inventory.cpp, which makes
// objects of what is known, with what can be done; operations.cpp, which does it; assessment.cpp, which puts
// the hardware's words into those of the vocabularies; events.cpp, which compares two polls. mdstat.cpp and
// sysfs.cpp know the kernel alone, ../shared what every plug-in needs.

#include "plugin_interface.h"

#include <string>
#include <string_view>

#include "events.h"
#include "inventory.h"
#include "operations.h"

const shared::Identity shared::IDENTITY = {"mdraid", 501};

namespace {

// Lives from loading to unloading.
struct State {
    mdraid::Machine m_Machine;
    shared::ObjectIDs m_IDs;
    mdraid::Progress m_Progress;
    mdraid::EventLog m_EventLog;
};
State state;

}  // namespace

int PluginInterfaceVersion() {
    return PLUGIN_INTERFACE_VERSION;
}

const char* PluginName() {
    return shared::IDENTITY.m_Name;
}

// root: where /proc, /sys and /dev are, "/" for this machine; mdadm: the program; mix: which drives a new
// array or member may mix (Machine::m_Permissions).
int PluginConfigure(const char* key, const char* value) {
    const std::string_view name = key;
    if (name == "mix" && std::string_view(value).find_first_not_of("0123") != std::string_view::npos) {
        return PI::ErrorCode::INVALID_CHARACTER;
    }
    if (name != "root" && name != "mdadm" && name != "mix") {
        return PI::ErrorCode::INVALID_PARAMETER;
    }
    std::vector<std::string> errors;
    return shared::Guard(errors, [&] {
        if (name == "root") {
            state.m_Machine.m_Root = value;
        } else {
            (name == "mdadm" ? state.m_Machine.m_Mdadm : state.m_Machine.m_Permissions) = value;
        }
    });
}

int PluginGetObjects(std::vector<PI::CObject>& objects, std::vector<std::string>& errors) {
    return shared::Guard(errors, [&] {
        const mdraid::Inventory inventory =
            mdraid::ReadInventory(state.m_Machine.m_Root, state.m_IDs, state.m_Progress, errors);
        mdraid::AppendObjects(inventory, state.m_IDs, objects);
        state.m_EventLog.Update(inventory.m_Arrays);
    });
}

int PluginGetEvents(std::vector<PI::CEvent>& events, std::vector<std::string>& errors) {
    return shared::Guard(errors, [&] { events = state.m_EventLog.Take(); });
}

int PluginExecute(std::uint64_t objectID, const PI::COperation& operation, const TaskReport& report,
                  PI::CTask& task, std::vector<std::string>& errors) {
    return shared::Guard(errors, [&] {
        mdraid::Execute(state.m_Machine, state.m_IDs, state.m_Progress, objectID, operation, report, task);
    });
}
