// SPDX-License-Identifier: Apache-2.0
// Linux software RAID as the service sees it. To copy from: the entry points here, which let nothing be
// thrown into the host; inventory.cpp, which makes objects of what is known; assessment.cpp, which puts the
// hardware's words into those of the vocabularies; events.cpp, which compares two polls. mdstat.cpp and
// sysfs.cpp know the kernel alone.

#include "plugin_interface.h"

#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "events.h"
#include "inventory.h"
#include "progress.h"
#include "trace.h"

namespace {

// Lives from loading to unloading.
struct State {
    std::string m_Root = "/";
    mdraid::ObjectIDs m_IDs;
    mdraid::Progress m_Progress;
    mdraid::EventLog m_EventLog;
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
    return "mdraid";
}

int PluginConfigure(const char* key, const char* value) {
    if (std::string_view(key) != "root") {
        return PI::ErrorCode::INVALID_PARAMETER;
    }
    std::vector<std::string> errors;
    return Guard(errors, [&] { state.m_Root = value; });
}

int PluginGetObjects(std::vector<PI::CObject>& objects, std::vector<std::string>& errors) {
    return Guard(errors, [&] {
        const mdraid::Inventory inventory =
            mdraid::ReadInventory(state.m_Root, state.m_IDs, state.m_Progress, errors);
        mdraid::AppendObjects(inventory, state.m_IDs, objects);
        state.m_EventLog.Update(inventory.m_Arrays);
    });
}

int PluginGetEvents(std::vector<PI::CEvent>& events, std::vector<std::string>& errors) {
    return Guard(errors, [&] {
        for (PI::CEvent& event : state.m_EventLog.Take()) {
            mdraid::Trace("event " + PI::EventIDToString(static_cast<int>(event.m_EventID)));
            events.push_back(std::move(event));
        }
    });
}
