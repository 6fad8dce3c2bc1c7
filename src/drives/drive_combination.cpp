// SPDX-License-Identifier: Apache-2.0

#include <pi/drive_combination.h>
#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include "trace/library_trace.h"

namespace PI {

namespace {

constexpr unsigned ALL_PERMISSIONS = 0b1111;
constexpr unsigned PERMIT3 = 0b1000;

struct Drive {
    int m_Type;
    int m_Media;
    bool m_Attribute;
};

// In the order in which they are checked.
constexpr _DRIVE_DIFFERENCE DIFFERENCES[] = {DriveDifference::TYPE, DriveDifference::MEDIA,
                                             DriveDifference::ATTRIBUTE};

unsigned Bits(bool permit0, bool permit1, bool permit2, bool permit3) {
    return static_cast<unsigned>(permit0) | static_cast<unsigned>(permit1) << 1 |
           static_cast<unsigned>(permit2) << 2 | static_cast<unsigned>(permit3) << 3;
}

bool IsChecked(unsigned permissions, const Drive& drive) {
    return permissions != ALL_PERMISSIONS && drive.m_Type != 0 && drive.m_Media != 0;
}

/// Whether the drive is refused for a difference.
bool IsMismatch(_DRIVE_DIFFERENCE difference, unsigned permissions, const Drive& container,
                const Drive& drive) {
    if (!IsChecked(permissions, drive)) {
        return false;
    }
    const bool typesDiffer = drive.m_Type != container.m_Type;
    const bool mediaDiffer = drive.m_Media != container.m_Media;
    const bool bothHDD = container.m_Media == PropertyValue::HDD && drive.m_Media == PropertyValue::HDD;
    const bool bothSSD = container.m_Media == PropertyValue::SSD && drive.m_Media == PropertyValue::SSD;

    // What each combination of permissions compares. It is not symmetric: with the first two set, clearing
    // the third leaves only the media to be compared. Fixed: a change would accept or refuse other drives.
    bool checkTypes = false;
    bool checkMedia = false;
    switch (permissions & ~PERMIT3) {  // from the right: permit0, permit1, permit2
        case 0b110: checkTypes = bothHDD; break;
        case 0b101: checkTypes = bothSSD; break;
        case 0b100: checkTypes = true; break;
        case 0b011: checkMedia = true; break;
        case 0b010:
            checkTypes = bothHDD;
            checkMedia = true;
            break;
        case 0b001:
            checkTypes = bothSSD;
            checkMedia = true;
            break;
        default:
            checkTypes = true;
            checkMedia = true;
            break;  // none, and all without permit3
    }
    switch (difference) {
        case DriveDifference::TYPE: return checkTypes && typesDiffer;
        case DriveDifference::MEDIA: return checkMedia && mediaDiffer;
        case DriveDifference::ATTRIBUTE: break;
    }
    return (permissions & PERMIT3) == 0 && drive.m_Attribute != container.m_Attribute;
}

int CodeOf(_DRIVE_DIFFERENCE difference) {
    return difference == DriveDifference::MEDIA ? ErrorCode::NO_MIX_OF_DIFFERENT_MEDIA_TYPES_IN_LD
                                                : ErrorCode::NO_MIX_OF_DIFFERENT_TYPES_IN_LD;
}

unsigned FewestMissing(_DRIVE_DIFFERENCE difference, unsigned permissions, const Drive& container,
                       const Drive& drive) {
    // By their number, then from the lowest.
    constexpr unsigned ALL = 0b1111;  // they lift every reason
    constexpr unsigned SETS[] = {0b0001, 0b0010, 0b0100, 0b1000, 0b0011, 0b0101, 0b1001,
                                 0b0110, 0b1010, 0b1100, 0b0111, 0b1011, 0b1101, 0b1110};
    for (const unsigned set : SETS) {
        if (!IsMismatch(difference, permissions | set, container, drive)) {
            return set;
        }
    }
    return ALL;
}

int ValueOf(const Drive& drive, _DRIVE_DIFFERENCE difference) {
    switch (difference) {
        case DriveDifference::TYPE: return drive.m_Type;
        case DriveDifference::MEDIA: return drive.m_Media;
        case DriveDifference::ATTRIBUTE: break;
    }
    return drive.m_Attribute ? 1 : 0;
}

}  // namespace

CDriveMismatch::CDriveMismatch(_DRIVE_DIFFERENCE difference, int containerValue, int driveValue,
                               unsigned int missingPermissions)
    : m_Difference(difference),
      m_ContainerValue(containerValue),
      m_DriveValue(driveValue),
      m_MissingPermissions(missingPermissions) {}

_DRIVE_DIFFERENCE CDriveMismatch::Difference() const {
    return static_cast<_DRIVE_DIFFERENCE>(m_Difference);
}

int CDriveMismatch::ContainerValue() const {
    return m_ContainerValue;
}

int CDriveMismatch::DriveValue() const {
    return m_DriveValue;
}

unsigned int CDriveMismatch::MissingPermissions() const {
    return m_MissingPermissions;
}

int CDriveMismatch::Code() const {
    return CodeOf(Difference());
}

int CPluginHelper::ValidatePhysicalDriveCombination(bool permit0, bool permit1, bool permit2, bool permit3,
                                                    int containerType, int containerMedia,
                                                    bool containerAttribute, int driveType, int driveMedia,
                                                    bool driveAttribute) {
    Trace(TRACE_CATEGORY_DRIVE_COMBINATION, "ValidatePhysicalDriveCombination: Enter");

    const unsigned permissions = Bits(permit0, permit1, permit2, permit3);
    const Drive container = {containerType, containerMedia, containerAttribute};
    const Drive drive = {driveType, driveMedia, driveAttribute};
    if (!IsChecked(permissions, drive)) {
        return ErrorCode::SUCCESS;
    }
    for (const _DRIVE_DIFFERENCE difference : DIFFERENCES) {
        if (IsMismatch(difference, permissions, container, drive)) {
            return CodeOf(difference);
        }
    }
    Trace(TRACE_CATEGORY_DRIVE_COMBINATION,
          "ValidatePhysicalDriveCombination: Leave OK: same type as other disks in container(s)");
    return ErrorCode::SUCCESS;
}

std::vector<CDriveMismatch> CPluginHelper::ExplainPhysicalDriveCombination(
    bool permit0, bool permit1, bool permit2, bool permit3, int containerType, int containerMedia,
    bool containerAttribute, int driveType, int driveMedia, bool driveAttribute) {
    const unsigned permissions = Bits(permit0, permit1, permit2, permit3);
    const Drive container = {containerType, containerMedia, containerAttribute};
    const Drive drive = {driveType, driveMedia, driveAttribute};
    std::vector<CDriveMismatch> reasons;
    for (const _DRIVE_DIFFERENCE difference : DIFFERENCES) {
        if (IsMismatch(difference, permissions, container, drive)) {
            reasons.emplace_back(difference, ValueOf(container, difference), ValueOf(drive, difference),
                                 FewestMissing(difference, permissions, container, drive));
        }
    }
    return reasons;
}

}  // namespace PI
