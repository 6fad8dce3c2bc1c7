// SPDX-License-Identifier: Apache-2.0
/// @file
/// What smartctl tells about a drive, as far as pitool uses it.
#pragma once

#include "smart_page.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pitool {

enum class Protocol { ATA, NVME, SCSI };

/// One drive's report. What the report does not hold is empty.
struct DriveReport {
    Protocol m_Protocol = Protocol::ATA;
    std::string m_ModelText;  ///< never empty
    std::optional<std::string> m_Device;
    std::optional<std::string> m_SerialNumber;
    std::optional<std::string> m_FirmwareVersion;
    std::optional<std::string> m_ScsiVendor;
    std::optional<std::string> m_ScsiProduct;
    bool m_SataSeen = false;                           ///< the drive names a SATA version or speed
    std::optional<std::uint64_t> m_ScsiTransport;      ///< protocol identifier of SPC; 6 is SAS
    std::optional<std::uint64_t> m_RotationRate;       ///< rotations per minute, 0 for solid state
    std::optional<std::uint64_t> m_CapacityBytes;      ///< bytes
    std::optional<std::uint64_t> m_BlockSize;          ///< bytes of a logical block
    std::optional<std::int64_t> m_Temperature;         ///< degrees Celsius
    std::optional<std::int64_t> m_HighestTemperature;  ///< degrees Celsius, of the drive's whole life
    std::optional<std::int64_t> m_TemperatureLimit;    ///< degrees Celsius, as the drive states it
    std::optional<std::uint64_t> m_PowerOnHours;       ///< as smartctl makes them out
    std::optional<bool> m_SmartPassed;                 ///< the drive's own verdict
    std::optional<bool> m_TrimSupported;               ///< only solid state knows TRIM
    std::optional<std::uint64_t> m_PercentUsed;        ///< the drive's statistics: wear, 0 to 255
    std::optional<std::uint64_t> m_AvailableSpare;     ///< the drive's statistics: percent
    std::optional<std::uint64_t> m_StatisticsWritten;  ///< the drive's statistics: bytes
    std::optional<std::uint64_t> m_StatisticsRead;     ///< the drive's statistics: bytes
    bool m_HasAttributes = false;                      ///< a table of SMART attributes was there
    std::uint16_t m_AttributeRevision = 0;
    std::vector<SmartAttribute> m_Attributes;  ///< at most PAGE_ATTRIBUTES
};

}  // namespace pitool
