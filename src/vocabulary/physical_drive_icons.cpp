// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

namespace PI {

namespace {

constexpr int NO_ICON = 0;

// One row per class of states, in the order of the classes; columns as the list describes them.
constexpr int ICONS[][12] = {
#define PI_DRIVE_ICONS(stateClass, ...) {__VA_ARGS__},
#include "vocabulary/physical_drive_icons.def"
#undef PI_DRIVE_ICONS
};

int StateClass(int state) {
    switch (state) {
        case PropertyValue::AVAILABLE_SMART: return 2;
        case PropertyValue::OPERATIONAL: return 3;
        case PropertyValue::OPERATIONAL_SMART: return 4;
        case PropertyValue::UNCONFIGURED_FAILED: return 5;
        case PropertyValue::FAILED: return 6;
        case PropertyValue::FAILED_SMART: return 7;
        case PropertyValue::REBUILDING:
        case PropertyValue::REBUILD_PAUSED: return 8;
        case PropertyValue::REBUILDING_SMART: return 9;
        case PropertyValue::GLOBAL_HOTSPARE: return 10;
        case PropertyValue::GLOBAL_HOTSPARE_SMART: return 11;
        case PropertyValue::DEDICATED_HOTSPARE: return 12;
        case PropertyValue::DEDICATED_HOTSPARE_SMART: return 13;
        case PropertyValue::OFFLINE: return 14;
        case PropertyValue::OFFLINE_SMART: return 15;
        case PropertyValue::FAILED_MISSING: return 16;
        case PropertyValue::COPY_BACK: return 17;
        case PropertyValue::COPY_BACK_SMART: return 18;
        case PropertyValue::MIGRATING:
        case PropertyValue::MIGRATION_PAUSED: return 19;
        case PropertyValue::MIGRATING_SMART: return 20;
        case PropertyValue::REBUILD_FAILED: return 21;
        case PropertyValue::REBUILD_FAILED_SMART: return 22;
        case PropertyValue::SYSTEM: return 23;
        case PropertyValue::SYSTEM_SMART: return 24;
        default: return 1;
    }
}

int SelectIcon(int stateClass, bool isSSD, bool isStopped, bool aura, bool foreign) {
    if (isStopped && foreign) {
        return NO_ICON;
    }
    const int mediumColumn = isSSD ? 6 : 0;
    const int column = isStopped ? (aura ? 4 : 5) : (aura ? 0 : 2) + (foreign ? 0 : 1);
    return ICONS[stateClass - 1][mediumColumn + column];
}

int PlainIcon(bool aura, bool foreign) {
    if (aura) {
        return foreign ? 24084 : 24083;
    }
    return foreign ? 24082 : 24081;
}

}  // namespace

int CPluginHelper::GetPDStatusIcon(int state, int medium, bool aura, bool foreign, int power) {
    const int icon = SelectIcon(StateClass(state), medium == PropertyValue::SSD,
                                power == PropertyValue::STOPPED, aura, foreign);
    return icon == NO_ICON ? PlainIcon(aura, foreign) : icon;
}

}  // namespace PI
