// SPDX-License-Identifier: Apache-2.0
/// @file
/// Why a drive may not join the drives of a container.
#pragma once

#include <pi/types.h>

#include <cstdint>

namespace PI {

/// @addtogroup drives
/// @{

namespace DriveDifference {
/// How a drive differs from the drives of a container.
enum _DRIVE_DIFFERENCE : std::int32_t {
    TYPE = 1,       ///< the drive type
    MEDIA = 2,      ///< the medium
    ATTRIBUTE = 3,  ///< the attribute
};
}  // namespace DriveDifference
using DriveDifference::_DRIVE_DIFFERENCE;

/// One reason for which CPluginHelper::ExplainPhysicalDriveCombination refuses a drive.
///
/// A value: copies share nothing, any number of threads may read one. Nothing here throws.
class PI_API CDriveMismatch {
public:
    /// Made by CPluginHelper::ExplainPhysicalDriveCombination.
    CDriveMismatch(_DRIVE_DIFFERENCE difference, int containerValue, int driveValue,
                   unsigned int missingPermissions);

    /// What differs.
    _DRIVE_DIFFERENCE Difference() const;

    /// The container's type, medium or attribute (0 or 1), as it was passed in.
    int ContainerValue() const;

    /// The same of the drive.
    int DriveValue() const;

    /// The fewest further permissions that would remove this reason: bit 0 for permit0 to bit 3 for permit3.
    /// Of several equally small sets, the one with the lowest numbers.
    ///
    /// If two are needed, one of them is permit3: without it, the other three together permit less than two
    /// of them do.
    unsigned int MissingPermissions() const;

    /// The code that CPluginHelper::ValidatePhysicalDriveCombination would return for this reason alone:
    /// NO_MIX_OF_DIFFERENT_TYPES_IN_LD or NO_MIX_OF_DIFFERENT_MEDIA_TYPES_IN_LD.
    int Code() const;

private:
    std::int32_t m_Difference;
    std::int32_t m_ContainerValue;
    std::int32_t m_DriveValue;
    std::uint32_t m_MissingPermissions;
    [[maybe_unused]] std::uint64_t m_Reserved[2] = {};
};

/// @}

}  // namespace PI
