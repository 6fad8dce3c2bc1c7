// SPDX-License-Identifier: Apache-2.0

#include "drive_identity.h"

#include "drive_wear.h"

#include <pi/endurance_rating.h>
#include <pi/plugin_helper.h>

#include <stdexcept>

namespace pitool {
namespace {

constexpr const char* NO_VENDOR = "--";  // what the split gives when the model text does not tell

bool IsSolidState(const DriveReport& report, bool listed) {
    if (report.m_Protocol == Protocol::NVME) {
        return true;
    }
    if (report.m_RotationRate) {
        return *report.m_RotationRate == 0;
    }
    return listed || report.m_TrimSupported.value_or(false) || report.m_PercentUsed;
}

Fact<unsigned long> FindRPM(const DriveReport& report, const std::string& vendor,
                            const std::string& product) {
    if (report.m_RotationRate) {
        return Known<unsigned long>(*report.m_RotationRate, "reported by the drive");
    }
    if (report.m_Protocol != Protocol::ATA) {
        return Unknown<unsigned long>(NOT_REPORTED);
    }
    unsigned long rpm = 0;
    try {
        PI::CPluginHelper::GetSATARPM(vendor, product, rpm);
    } catch (const std::out_of_range&) {
        return Unknown<unsigned long>("not reported, and the model name is too short for the rule");
    }
    return Known(rpm, "from the model's rule; the drive does not report it");
}

}  // namespace

DriveIdentity IdentifyDrive(const DriveReport& report) {
    DriveIdentity identity;
    std::string vendor;
    if (report.m_ScsiVendor && report.m_ScsiProduct) {
        vendor = *report.m_ScsiVendor;
        identity.m_Product = *report.m_ScsiProduct;
    } else {
        PI::CPluginHelper::SplitSATAModelName(report.m_ModelText, vendor, identity.m_Product);
    }
    if (identity.m_Product.empty()) {
        identity.m_Product = report.m_ModelText;
    }

    std::string serial = report.m_SerialNumber.value_or("");
    if (report.m_Protocol == Protocol::ATA) {
        PI::CPluginHelper::CorrectSerialNumber(vendor, identity.m_Product, serial);
    }
    identity.m_Serial = serial.empty() ? Unknown<std::string>(NOT_REPORTED) : Known(serial);

    const PI::CEnduranceRating rating = PI::FindEnduranceRating(identity.m_Product);
    if (vendor.empty() || vendor == NO_VENDOR) {
        vendor = rating.GetVendor();
    }
    identity.m_Vendor =
        vendor.empty() ? Unknown<std::string>("the model text does not name it") : Known(vendor);

    identity.m_SolidState = IsSolidState(report, rating.IsListed());
    identity.m_RPM = identity.m_SolidState ? Unknown<unsigned long>("solid-state drive")
                                           : FindRPM(report, vendor, identity.m_Product);
    return identity;
}

}  // namespace pitool
