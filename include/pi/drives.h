// SPDX-License-Identifier: Apache-2.0
/// @file
/// SMART data of solid-state drives.
#pragma once

#include <pi/ssd_endurance.h>
#include <pi/types.h>

#include <cstdint>
#include <string>
#include <type_traits>

namespace PI {

/// @addtogroup drives
/// @{

/// One attribute of an ATA SMART page.
struct _IDE_SMART_ATTRIBUTE {
    std::uint8_t m_ID;        ///< 0: the slot is empty
    std::uint8_t m_Flags[2];  ///< not read by this library
    std::uint8_t m_Current;   ///< normalised value
    std::uint8_t m_Worst;     ///< lowest normalised value so far
    std::uint8_t m_Raw[6];    ///< 48 bits, lowest byte first
    std::uint8_t m_Reserved;  ///< not read by this library
};

/// The page that an ATA drive returns for SMART READ DATA (ACS-3, B0h/D0h), byte for byte.
struct _IDE_SMART_DATA {
    std::uint8_t m_Revision[2];             ///< of the structure; not read by this library
    _IDE_SMART_ATTRIBUTE m_Attributes[30];  ///< in any order, with empty slots
    std::uint8_t m_Rest[150];               ///< self-test and off-line data, not read by this library
};
static_assert(sizeof(_IDE_SMART_ATTRIBUTE) == 12 && sizeof(_IDE_SMART_DATA) == 512);
static_assert(std::is_trivially_copyable_v<_IDE_SMART_DATA>);

/// The figures from which the remaining lifetime of a SATA solid-state drive is computed, read from its SMART
/// page.
///
/// The models of SATASSDEndurance are supported. One object is for one drive, and used by one thread at a
/// time.
class PI_API CSmartValues {
public:
    /// Looks the model up; nothing else about the drive is known yet.
    ///
    /// @param vendor used if the model is not listed; a listed model has its own
    /// @param model  as CPluginHelper::SplitSATAModelName gives it
    /// @throws std::bad_alloc if allocation fails
    CSmartValues(const std::string& vendor, const std::string& model);

    /// Whether the model is in the list.
    bool IsSupported();

    /// Reads the figures from a page. A figure that the page does not hold keeps its value; of two attributes
    /// with the same number the later one counts.
    ///
    /// For InnoDisk, m_Endurance is 0 afterwards, so that ComputeRemainingLifeTime uses the wear; later calls
    /// of Evaluate still use the rated endurance.
    /// @return IsSupported(); if false, nothing is read or changed
    bool Evaluate(_IDE_SMART_DATA& data);

    std::uint64_t m_Endurance = 0;       ///< terabytes that may be written; 0 when unsupported
    std::uint64_t m_PowerOnHours = 0;    ///< attribute 9
    std::uint64_t m_BytesWritten = 0;    ///< bytes
    std::int32_t m_SpareIndicator = -1;  ///< normalised value of the vendor's spare attribute; -1: none seen
    std::int32_t m_PercentUsed = 0;      ///< wear in percent, 0 when new; not limited to 100.
                                         ///< Negative, down to -155, where the drive's normalised value is
                                         ///< above 100: not known then, and to be passed on as 0, since
                                         ///< ComputeRemainingLifeTime would take it for more than 100
    std::string m_Vendor;                ///< the list's vendor, or the one passed in when unsupported
    std::string m_Model;                 ///< as passed in
    std::uint32_t m_GroupFlag = 0;       ///< the list row's
    bool m_Supported = false;            ///< the model is in the list
};

/// @}

}  // namespace PI
