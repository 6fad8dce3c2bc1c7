// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pi/drives.h>

#include <sstream>
#include <string>

namespace PI::Test {

/// All that is known of a drive.
inline std::string TextOf(const CSmartValues& values) {
    std::ostringstream text;
    text << "endurance " << values.m_Endurance << ", hours " << values.m_PowerOnHours << ", written "
         << values.m_BytesWritten << ", spare " << values.m_SpareIndicator << ", used "
         << values.m_PercentUsed << ", vendor " << values.m_Vendor << ", model " << values.m_Model
         << ", group " << values.m_GroupFlag << ", supported " << values.m_Supported;
    return text.str();
}

}  // namespace PI::Test
