// SPDX-License-Identifier: Apache-2.0

#include <pi/drives.h>
#include <pi/plugin_helper.h>

#include <string_view>

#include "util/text.h"

namespace PI {

namespace {

constexpr std::uint8_t POWER_ON_HOURS = 9;
constexpr std::uint8_t NOT_REPORTED = 0;  // number of an empty slot

// Which attributes of a vendor carry which figure.
struct VendorAttributes {
    std::string_view m_Vendor;
    std::uint8_t m_Written;
    unsigned m_WrittenShift;  // the attribute counts 2^shift bytes
    std::uint8_t m_Spare;
    std::uint8_t m_Wear;  // its normalised value is what remains, in percent
};

constexpr VendorAttributes VENDORS[] = {
    {"INTEL", 225, 25, 232, 233},
    {"SAMSUNG", 241, 9, 180, 177},
    {"MICRON", 246, 9, 170, 202},
    {"INNODISK", 241, 25, NOT_REPORTED, NOT_REPORTED},
};

// Numbers of the attribute in which InnoDisk counts erase cycles, by group flag.
constexpr std::uint8_t INNODISK_WEAR_OLDER = 173;
constexpr std::uint8_t INNODISK_WEAR_NEWER = 167;

std::uint64_t Raw48(const _IDE_SMART_ATTRIBUTE& attribute) {
    std::uint64_t value = 0;
    for (int i = 5; i >= 0; --i) {
        value = value << 8 | attribute.m_Raw[i];
    }
    return value;
}

// The older families leave raw bytes 2 and 3 out of the count: this is meant.
std::uint64_t InnoDiskOlderCount(const _IDE_SMART_ATTRIBUTE& attribute) {
    return static_cast<std::uint64_t>(attribute.m_Raw[0]) |
           static_cast<std::uint64_t>(attribute.m_Raw[1]) << 8 |
           static_cast<std::uint64_t>(attribute.m_Raw[4]) << 16;
}

std::uint64_t InnoDiskNewerCount(const _IDE_SMART_ATTRIBUTE& attribute) {
    return Raw48(attribute) & 0xFFFFFFFF;
}

void EvaluateInnoDiskWear(const _IDE_SMART_DATA& data, CSmartValues& values) {
    std::uint64_t rated = values.m_Endurance;
    if (rated == 0) {  // reset by an earlier evaluation
        const _SSD_ENDURANCE* row = CPluginHelper::findLifeTimeProp(values.m_Model);
        rated = row == nullptr ? 0 : row->m_EnduranceTB;
    }
    // The remaining lifetime is to go by the wear, not by the amount written: this is meant.
    values.m_Endurance = 0;
    if (rated == 0) {
        return;
    }
    for (const _IDE_SMART_ATTRIBUTE& attribute : data.m_Attributes) {
        if (values.m_GroupFlag == 0 && attribute.m_ID == INNODISK_WEAR_OLDER) {
            values.m_PercentUsed = static_cast<std::int32_t>(InnoDiskOlderCount(attribute) * 100 / rated);
        } else if (values.m_GroupFlag == 1 && attribute.m_ID == INNODISK_WEAR_NEWER) {
            values.m_PercentUsed = static_cast<std::int32_t>(InnoDiskNewerCount(attribute) * 100 / rated);
        }
    }
}

}  // namespace

CSmartValues::CSmartValues(const std::string& vendor, const std::string& model)
    : m_Vendor(vendor), m_Model(model) {
    if (const _SSD_ENDURANCE* row = CPluginHelper::findLifeTimeProp(model)) {
        m_Endurance = row->m_EnduranceTB;
        m_Vendor = row->m_Vendor;
        m_GroupFlag = row->m_GroupFlag;
        m_Supported = true;
    }
}

bool CSmartValues::IsSupported() {
    return m_Supported;
}

bool CSmartValues::Evaluate(_IDE_SMART_DATA& data) {
    if (!m_Supported) {
        return false;
    }
    for (const VendorAttributes& vendor : VENDORS) {
        if (!EqualsIgnoringCase(m_Vendor, vendor.m_Vendor)) {
            continue;
        }
        for (const _IDE_SMART_ATTRIBUTE& attribute : data.m_Attributes) {
            if (attribute.m_ID == NOT_REPORTED) {
                continue;
            }
            if (attribute.m_ID == POWER_ON_HOURS) {
                m_PowerOnHours = Raw48(attribute);
            } else if (attribute.m_ID == vendor.m_Written) {
                m_BytesWritten = Raw48(attribute) << vendor.m_WrittenShift;
            } else if (attribute.m_ID == vendor.m_Spare) {
                m_SpareIndicator = attribute.m_Current;
            } else if (attribute.m_ID == vendor.m_Wear) {
                m_PercentUsed = 100 - attribute.m_Current;
            }
        }
    }
    if (EqualsIgnoringCase(m_Vendor, "INNODISK")) {
        EvaluateInnoDiskWear(data, *this);
    }
    return true;
}

}  // namespace PI
