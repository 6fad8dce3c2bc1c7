// SPDX-License-Identifier: Apache-2.0
/// @file
/// A drive as smartctl describes it, and what the library knows about its model.
#pragma once

#include <pi/vocabulary.h>

#include <cstdint>
#include <optional>
#include <string>

namespace smartctl {

/// What is not known stays empty.
struct Drive {
    std::string m_Source;  ///< the file or device that it was read from
    std::string m_Device;  ///< such as "/dev/sda"
    PI::_PROPERTY_VALUE m_Protocol = PI::PropertyValue::UNKNOWN;  ///< SATA, SAS or NVME
    PI::_PROPERTY_VALUE m_Medium = PI::PropertyValue::HDD;        ///< HDD or SSD
    std::string m_Vendor;
    std::string m_Model;
    std::string m_SerialNumber;
    std::string m_Firmware;
    std::optional<std::uint64_t> m_SizeBytes;
    std::optional<std::uint64_t> m_RPM;
    std::optional<std::uint64_t> m_TemperatureC;
    std::optional<std::uint64_t> m_PowerOnHours;
    std::optional<std::uint64_t> m_BytesWritten;
    std::optional<std::uint64_t> m_EnduranceTB;  ///< terabytes that may be written
    std::optional<std::uint64_t> m_PercentUsed;  ///< wear
    std::optional<std::uint64_t> m_SparePercent;
    std::optional<std::uint64_t> m_RemainingHours;
    bool m_PredictsFailure = false;
};

/// Reads the output of "smartctl --json -a".
///
/// @param source the file or device that the text is from
/// @throws std::exception saying why the text is not that of a drive
Drive ReadDrive(const std::string& source, const std::string& text);

}  // namespace smartctl
