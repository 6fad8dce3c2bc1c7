// SPDX-License-Identifier: Apache-2.0
// Plug-ins that break the rules, each in the way that FAULT says.
#define FAULT_NONE 0  // but that of the options that it is compiled with
#define FAULT_VERSION 1
#define FAULT_ENTRY 2
#define FAULT_THROW 3
#define FAULT_THROW_ANYTHING 4
#define FAULT_ERROR_WITHOUT_TEXT 5
#define FAULT_CONTROL_CHARACTERS 6
#define FAULT_CANCEL 7
#define FAULT_MAJOR 8
#define FAULT_STRING_CALL 9  // none where std::string is that of the library

#if FAULT == FAULT_MAJOR
#include <pi/version.h>
#undef PI_VERSION_MAJOR
#define PI_VERSION_MAJOR 2
#endif

#include <pthread.h>

#include <stdexcept>

#include "plugin_interface.h"

int PluginInterfaceVersion() {
    return FAULT == FAULT_VERSION ? PLUGIN_INTERFACE_VERSION + 1 : PLUGIN_INTERFACE_VERSION;
}

const char* PluginName() {
    return FAULT == FAULT_CONTROL_CHARACTERS ? "b\x1B[1md" : "bad";
}

int PluginConfigure(const char*, const char*) {
    return FAULT == FAULT_ERROR_WITHOUT_TEXT ? PI::ErrorCode::GENERAL : PI::ErrorCode::INVALID_PARAMETER;
}

#if FAULT != FAULT_ENTRY
int PluginGetObjects(std::vector<PI::CObject>& objects, std::vector<std::string>& errors) {
    if (FAULT == FAULT_THROW) {
        throw std::runtime_error("thrown by the plug-in");
    }
    if (FAULT == FAULT_THROW_ANYTHING) {
        throw 5;
    }
    if (FAULT == FAULT_CANCEL) {
        pthread_testcancel();
    }
    if (FAULT == FAULT_ERROR_WITHOUT_TEXT) {
        return PI::ErrorCode::INVALID_PARAMETER;
    }
    if (FAULT == FAULT_STRING_CALL) {
        errors.push_back(PI::ErrorCodeToString(PI::ErrorCode::GENERAL));
    }
    objects.emplace_back(1, PHYSICAL_DRIVE)
        .m_Properties.emplace_back(PI::PropertyID::NAME, false)
        .SetValue("\x1B]0;x\x07");
    errors.emplace_back("two\nlines");
    return PI::ErrorCode::GENERAL;
}
#endif

int PluginGetEvents(std::vector<PI::CEvent>&, std::vector<std::string>&) {
    return PI::ErrorCode::SUCCESS;
}
