// SPDX-License-Identifier: Apache-2.0
/// @file
/// Configuration files of the service: an empty shell.
#pragma once

#include <pi/types.h>

#include <string>
#include <vector>

namespace PI {

/// @addtogroup utilities
/// @{

/// A key of a configuration file with its value.
class CConfigValue {
public:
    std::string m_Key;    ///< name of the key
    std::string m_Value;  ///< its value as text
};

/// Kept for plug-ins that use it. No member does anything or changes its arguments; the ones that read and
/// write return 0. Nothing throws. Thread-safe.
class PI_API CConfigFile {
public:
    /// Does nothing.
    CConfigFile();

    /// Does nothing.
    void SetFileName(const std::string& fileName);

    /// @{
    /// Reads nothing.
    /// @return 0 always
    int ReadKeyValue(int key, int value);
    int ReadKeyValue(const std::string& key);
    int ReadSectionKeyValue(const std::string& section, const std::string& key, std::string& value);
    int ReadKeyValueList(std::vector<CConfigValue>& values);
    /// @}

    /// @{
    /// Writes nothing.
    /// @return 0 always
    int WriteKeyValue(int key, int value);
    int WriteKeyValue(const std::string& key);
    int WriteSectionKeyValue(const std::string& section, const std::string& key, const std::string& value);
    int WriteKeyValueList(const std::vector<CConfigValue>& values);
    /// @}
};

/// @}

}  // namespace PI
