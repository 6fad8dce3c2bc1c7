// SPDX-License-Identifier: Apache-2.0

#include <pi/drives.h>
#include <pi/plugin_helper.h>

#include <string_view>

#include "drives/cycle_wear.h"
#include "util/text.h"

namespace PI {

namespace {

constexpr std::uint8_t POWER_ON_HOURS = 9;
constexpr std::uint8_t NOT_REPORTED = 0;  // number of an empty slot

constexpr std::string_view INNODISK = "INNODISK";

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
    {INNODISK, 241, 25, NOT_REPORTED, NOT_REPORTED},
};

// Number of the attribute in which InnoDisk counts erase cycles.
std::uint8_t InnoDiskAttribute(std::uint32_t groupFlag) {
    switch (groupFlag) {
        case 0: return 173;
        case 1: return 167;
        default: return NOT_REPORTED;
    }
}

std::uint64_t Raw48(const _IDE_SMART_ATTRIBUTE& attribute) {
    std::uint64_t value = 0;
    for (int i = 5; i >= 0; --i) {
        value = value << 8 | attribute.m_Raw[i];
    }
    return value;
}

// For the older families bytes 0, 1 and 4 make up the count, on purpose: what plug-ins are promised.
std::uint64_t InnoDiskCycles(std::uint32_t groupFlag, std::uint64_t raw) {
    return groupFlag == 0 ? (raw & 0xFFFF) | (raw >> 32 & 0xFF) << 16 : raw & 0xFFFFFFFF;
}

void EvaluateInnoDiskWear(const _IDE_SMART_DATA& data, CSmartValues& values) {
    std::uint64_t rated = values.m_Endurance;
    if (rated == 0) {  // reset by an earlier evaluation
        const _SSD_ENDURANCE* row = CPluginHelper::findLifeTimeProp(values.m_Model);
        rated = row == nullptr ? 0 : row->m_EnduranceTB;
    }
    // So that the remaining lifetime goes by the wear, not by the amount written.
    values.m_Endurance = 0;
    if (rated == 0) {
        return;
    }
    for (const _IDE_SMART_ATTRIBUTE& attribute : data.m_Attributes) {
        if (attribute.m_ID != NOT_REPORTED && attribute.m_ID == InnoDiskAttribute(values.m_GroupFlag)) {
            values.m_PercentUsed =
                static_cast<std::int32_t>(InnoDiskCycles(values.m_GroupFlag, Raw48(attribute)) * 100 / rated);
        }
    }
}

}  // namespace

std::uint8_t CycleAttribute(const _SSD_ENDURANCE& row) {
    return InnoDiskAttribute(row.m_GroupFlag);
}

std::int64_t WearByCycles(const _SSD_ENDURANCE& row, std::uint64_t raw) {
    return static_cast<std::int64_t>(InnoDiskCycles(row.m_GroupFlag, raw) * 100 / row.m_EnduranceTB);
}

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
    if (EqualsIgnoringCase(m_Vendor, INNODISK)) {
        EvaluateInnoDiskWear(data, *this);
    }
    return true;
}

}  // namespace PI
