// SPDX-License-Identifier: Apache-2.0
// A plug-in that writes through the library's traces and through plog itself.
#include <pi/trace.h>
#include <plog/Log.h>

extern "C" {

PI_API void PluginTrace(int number) {
    VELKTrace(number, "Plugin", 3, PLUGIN_NAME " traces %d") << number;
}

PI_API void PluginLog(int number) {
    PLOGD_(3) << PLUGIN_NAME " logs " << number;
}

PI_API const void* PluginLogger() {
    return plog::get<3>();
}
}
