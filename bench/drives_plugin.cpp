// SPDX-License-Identifier: Apache-2.0
// A plug-in that reports 100 drives of 20 properties.

#include "plugin_interface.h"
#include "sample_object.h"

namespace {

std::vector<PI::CObject> MakeDrives() {
    PI::CObject drive(0, PHYSICAL_DRIVE);
    const std::vector<PI::CProperty> properties = bench::SampleObject().m_Properties;
    for (std::size_t i = 0; i < properties.size(); i += 3) {  // of each kind a third
        drive.m_Properties.push_back(properties[i]);
    }
    return std::vector<PI::CObject>(100, drive);
}

const std::vector<PI::CObject> drives = MakeDrives();

}  // namespace

int PluginInterfaceVersion() {
    return PLUGIN_INTERFACE_VERSION;
}

const char* PluginName() {
    return "drives";
}

int PluginConfigure(const char*, const char*) {
    return PI::ErrorCode::INVALID_PARAMETER;
}

int PluginGetObjects(std::vector<PI::CObject>& objects, std::vector<std::string>&) {
    objects = drives;
    return PI::ErrorCode::SUCCESS;
}

int PluginGetEvents(std::vector<PI::CEvent>&, std::vector<std::string>&) {
    return PI::ErrorCode::SUCCESS;
}
