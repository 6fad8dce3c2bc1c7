// SPDX-License-Identifier: Apache-2.0
/// @file
/// Rated write endurance of solid-state drives.
///
/// The lists are constant data of the library, valid until it is unloaded; reading them is thread-safe.
#pragma once

#include <pi/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace PI {

/// @addtogroup drives
/// @{

/// A SATA or NVMe drive family.
struct _SSD_ENDURANCE {
    std::string m_Vendor;  ///< such as "INTEL"
    std::string m_Model;   ///< such as "SSDSC2BB120G4C"
    std::uint32_t m_MatchLength =
        0;  ///< number of leading characters of a model that are compared; 0: the whole name
    std::uint32_t m_EnduranceTB = 0;  ///< terabytes that may be written
    std::uint32_t m_Reserved = 0;     ///< 0
    std::uint32_t m_GroupFlag =
        0;  ///< 1 marks the newer InnoDisk families, which count wear in attribute 167
};

/// A SAS drive.
struct _SAS_SSD_ENDURANCE {
    std::string m_Vendor;             ///< such as "TOSHIBA"
    std::string m_Model;              ///< such as "PX02SMF020"
    std::uint64_t m_EnduranceTB = 0;  ///< terabytes that may be written
    std::uint32_t m_Reserved = 0;     ///< 0
};

/// SATA drives, 117 rows in fixed order; CPluginHelper::findLifeTimeProp searches it.
PI_API extern const std::vector<_SSD_ENDURANCE> SATASSDEndurance;
/// SAS drives, 71 rows in fixed order.
PI_API extern const std::vector<_SAS_SSD_ENDURANCE> SASSSDEndurance;
/// NVMe drives, 52 rows in fixed order.
PI_API extern const std::vector<_SSD_ENDURANCE> NVMeSSDEndurance;

/// @}

}  // namespace PI
