// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include "trace/library_trace.h"

namespace PI {

int CPluginHelper::ValidatePhysicalDriveCombination(bool permit0, bool permit1, bool permit2, bool permit3,
                                                    int containerType, int containerMedia,
                                                    bool containerAttribute, int driveType, int driveMedia,
                                                    bool driveAttribute) {
    Trace(TRACE_CATEGORY_DRIVE_COMBINATION, "ValidatePhysicalDriveCombination: Enter");

    if (permit0 && permit1 && permit2 && permit3) {
        return ErrorCode::SUCCESS;
    }
    if (driveType == 0 || driveMedia == 0) {
        return ErrorCode::SUCCESS;
    }

    const bool typesDiffer = driveType != containerType;
    const bool mediaDiffer = driveMedia != containerMedia;
    const bool bothHDD = containerMedia == PropertyValue::HDD && driveMedia == PropertyValue::HDD;
    const bool bothSSD = containerMedia == PropertyValue::SSD && driveMedia == PropertyValue::SSD;

    // What each combination of permissions looks at. It is not symmetric: with the first two set, clearing
    // the third leaves only the media to be compared. This is meant.
    bool checkTypes = false;
    bool checkMedia = false;
    switch (permit0 << 2 | permit1 << 1 | static_cast<int>(permit2)) {
        case 0b011: checkTypes = bothHDD; break;
        case 0b101: checkTypes = bothSSD; break;
        case 0b001: checkTypes = true; break;
        case 0b110: checkMedia = true; break;
        case 0b010:
            checkTypes = bothHDD;
            checkMedia = true;
            break;
        case 0b100:
            checkTypes = bothSSD;
            checkMedia = true;
            break;
        default:
            checkTypes = true;
            checkMedia = true;
            break;  // none, and all without permit3
    }
    if (checkTypes && typesDiffer) {
        return ErrorCode::NO_MIX_OF_DIFFERENT_TYPES_IN_LD;
    }
    if (checkMedia && mediaDiffer) {
        return ErrorCode::NO_MIX_OF_DIFFERENT_MEDIA_TYPES_IN_LD;
    }
    if (!permit3 && driveAttribute != containerAttribute) {
        return ErrorCode::NO_MIX_OF_DIFFERENT_TYPES_IN_LD;
    }

    Trace(TRACE_CATEGORY_DRIVE_COMBINATION,
          "ValidatePhysicalDriveCombination: Leave OK: same type as other disks in container(s)");
    return ErrorCode::SUCCESS;
}

}  // namespace PI
