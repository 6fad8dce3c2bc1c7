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
/// In what a drive differs from the drives of a container.
enum _DRIVE_DIFFERENCE : std::int32_t {
    TYPE = 1,       ///< the drive type
    MEDIA = 2,      ///< the medium
    ATTRIBUTE = 3,  ///< the further attribute
};
}  // namespace DriveDifference
using DriveDifference::_DRIVE_DIFFERENCE;

/// One reason for which CPluginHelper::ExplainPhysicalDriveCombination refuses a drive: a value.
class PI_API CDriveMismatch {
public:
    /// Made by CPluginHelper::ExplainPhysicalDriveCombination.
    CDriveMismatch(_DRIVE_DIFFERENCE difference, int containerValue, int driveValue,
                   unsigned int missingPermissions);

    /// What differs and must not.
    _DRIVE_DIFFERENCE Difference() const;

    /// The container's type, medium or attribute (0 or 1), as it was passed in.
    int ContainerValue() const;

    /// The drive's.
    int DriveValue() const;

    /// The fewest permissions that would have to be given in addition for this reason to go: bit 0 for
    /// permit0 to bit 3 for permit3. Of equally few, those with the lowest numbers.
    ///
    /// Where it takes two, one of them is permit3: without it, the other three together permit less than two
    /// of them.
    unsigned int MissingPermissions() const;

    /// The code by which CPluginHelper::ValidatePhysicalDriveCombination would refuse for this reason alone:
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
