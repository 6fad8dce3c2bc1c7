// SPDX-License-Identifier: Apache-2.0
// The identity of a drive: what reports state, in members and in lines, and what follows from it.

#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include <iterator>
#include <stdexcept>

#include "model_names.h"
#include "report_builder.h"

namespace PI {

namespace {

void SetCapacity(ReportIdentity& identity, std::int64_t bytes) {
    constexpr std::int64_t LEAST = 1'000'000;             // judgement: no drive holds less
    constexpr std::int64_t MOST = std::int64_t{1} << 60;  // nor more
    identity.m_Capacity = bytes >= LEAST && bytes <= MOST ? static_cast<std::uint64_t>(bytes) : 0;
}

void SetCapacityOfAll(ReportIdentity& identity, std::int64_t bytes) {
    if (identity.m_Capacity == 0) {
        SetCapacity(identity, bytes);
    }
}

void SetBlockSize(ReportIdentity& identity, std::int64_t bytes) {
    constexpr std::int64_t MOST = std::int64_t{64} * 1024;  // judgement: no drive has larger ones
    identity.m_BlockSize = bytes <= MOST ? static_cast<std::uint32_t>(bytes) : 0;
}

void SetRotation(ReportIdentity& identity, std::int64_t rotations) {
    // SBC-4, MEDIUM ROTATION RATE: 1 is no rotation, 0401h to FFFEh are rotations; smartctl prints 0 for 1.
    constexpr std::int64_t LEAST = 0x401;
    constexpr std::int64_t MOST = 0xFFFE;
    if (rotations == 0 || rotations == 1) {
        identity.m_Medium = PropertyValue::SSD;
        identity.m_RPM = 0;
    } else if (rotations >= LEAST && rotations <= MOST) {
        identity.m_Medium = PropertyValue::HDD;
        identity.m_RPM = static_cast<std::uint32_t>(rotations);
    }
}

void SetTime(ReportIdentity& identity, std::int64_t seconds) {
    constexpr std::int64_t YEAR_10000 = 253402300800;
    identity.m_Time = seconds > 0 && seconds < YEAR_10000 ? seconds : 0;
}

void SetProtocol(ReportIdentity& identity, std::int64_t protocol) {
    constexpr std::int64_t SAS = 6;  // SPC-5, PROTOCOL IDENTIFIER
    identity.m_Interface = protocol == SAS ? "SAS" : identity.m_Interface;
}

void SetATASelfTest(ReportIdentity& identity, std::int64_t status) {
    // ACS: the high half is 15 while a test runs, the low half the tenths that remain of it.
    const int tenths = static_cast<int>(status & 0xF);
    identity.m_IsSelfTesting = status >> 4 == 15;
    identity.m_SelfTestProgress = identity.m_IsSelfTesting && tenths <= 10 ? 100 - tenths * 10 : -1;
}

void SetNVMeSelfTest(ReportIdentity& identity, std::int64_t operation) {
    identity.m_IsSelfTesting = operation != 0;
}

void SetSelfTestProgress(ReportIdentity& identity, std::int64_t percent) {
    identity.m_SelfTestProgress = identity.m_IsSelfTesting && percent <= 100 ? static_cast<int>(percent) : -1;
}

void SetSCSISelfTest(ReportIdentity& identity, std::int64_t result) {
    constexpr std::int64_t RUNNING = 15;  // SPC-5, self-test results
    identity.m_IsSelfTesting = result == RUNNING;
}

bool BeginsWith(const std::string& text, std::string_view begin) {
    return text.compare(0, begin.size(), begin) == 0;
}

int FindTransport(const ReportIdentity& identity) {
    return identity.m_Protocol == DriveProtocol::NVME ? PropertyValue::NVME
           : BeginsWith(identity.m_Interface, "SATA") ? PropertyValue::SATA
           : BeginsWith(identity.m_Interface, "SAS")  ? PropertyValue::SAS
                                                      : 0;
}

void NameParts(ReportIdentity& identity) {
    // A SCSI model without a vendor is that of an ATA drive behind a translation layer.
    const bool isSplit = identity.m_Vendor.empty() || identity.m_Vendor == "ATA";
    if (identity.m_Model.empty()) {
        identity.m_Model = identity.m_Vendor + (identity.m_Vendor.empty() ? "" : " ") + identity.m_Product;
    }
    if (isSplit) {
        const std::string model = identity.m_Product.empty() ? identity.m_Model : identity.m_Product;
        SplitModel(model, identity.m_Vendor, identity.m_Product);
    }
}

/// Words instead of a serial number, in lower case.
constexpr std::string_view PLACEHOLDERS =
    "|redacted|removed|hidden|masked|private|censored|anonymized|unknown|none|not available|not reported|n/a|"
    "na|null|serial|serial number|no information found|to be filled by o.e.m.|";

bool IdentifiesDrive(std::string_view serial) {
    constexpr const char* WORD_CHARACTERS = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::string core(serial);
    for (char& c : core) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    core.erase(core.find_last_of(WORD_CHARACTERS) + 1);
    core.erase(0, core.find_first_of(WORD_CHARACTERS));
    return core.find_first_not_of(std::string{' ', core[0]}) != std::string::npos &&
           PLACEHOLDERS.find("|" + core + "|") == std::string_view::npos &&
           core.find("xxxx") == std::string::npos && serial.find_first_of("*#?") == std::string_view::npos &&
           serial.find("...") == std::string_view::npos;
}

constexpr auto ATA = DriveProtocol::ATA;
constexpr auto SCSI = DriveProtocol::SCSI;
constexpr auto NVME = DriveProtocol::NVME;
constexpr auto ANY = DriveProtocol::UNKNOWN;

}  // namespace

// Source: RELEASE_7_0 to 7_5 of smartmontools. Of several rows that a report has the last counts.
// clang-format off
const IdentityRow IDENTITY_ROWS[] = {
    {ANY, "device.name", nullptr, &ReportIdentity::m_Device, nullptr},
    {ATA, "model_name", "Device Model:", &ReportIdentity::m_Model, nullptr},
    {NVME, "scsi_model_name", "Model Number:", &ReportIdentity::m_Model, nullptr},
    {SCSI, "vendor", "Vendor:", &ReportIdentity::m_Vendor, nullptr},
    {SCSI, "scsi_vendor", nullptr, &ReportIdentity::m_Vendor, nullptr},
    {SCSI, "product", "Product:", &ReportIdentity::m_Product, nullptr},
    {SCSI, "scsi_product", nullptr, &ReportIdentity::m_Product, nullptr},
    {ANY, "serial_number", "Serial Number:", &ReportIdentity::m_Serial, nullptr},
    {ANY, nullptr, "Serial number:", &ReportIdentity::m_Serial, nullptr},
    {ANY, "firmware_version", "Firmware Version:", &ReportIdentity::m_Firmware, nullptr},
    {ANY, "revision", "Revision:", &ReportIdentity::m_Firmware, nullptr},
    {ANY, "scsi_revision", nullptr, &ReportIdentity::m_Firmware, nullptr},
    {ANY, "user_capacity.bytes", "User Capacity:", nullptr, SetCapacity},
    {ANY, nullptr, "Namespace # Size/Capacity:", nullptr, SetCapacity},
    {ANY, nullptr, "Namespace # Size:", nullptr, SetCapacity},
    {ANY, "nvme_total_capacity", "Total NVM Capacity:", nullptr, SetCapacityOfAll},
    {ANY, "logical_block_size", "Sector Size:", nullptr, SetBlockSize},
    {ANY, nullptr, "Sector Sizes:", nullptr, SetBlockSize},
    {ANY, nullptr, "Logical block size:", nullptr, SetBlockSize},
    {ANY, nullptr, "Namespace # Formatted LBA Size:", nullptr, SetBlockSize},
    {ANY, "rotation_rate", "Rotation Rate:", nullptr, SetRotation},
    {ANY, "trim.supported", "TRIM Command:", &ReportIdentity::m_Trim, nullptr},
    {ANY, "sata_version.string", "SATA Version is:", &ReportIdentity::m_Interface, nullptr},
    {ANY, "scsi_transport_protocol.name", "Transport protocol:", &ReportIdentity::m_Interface, nullptr},
    {ANY, "scsi_transport_protocol.value", nullptr, nullptr, SetProtocol},
    {ANY, "local_time.time_t", nullptr, nullptr, SetTime},
    {ANY, nullptr, "Local Time is:", &ReportIdentity::m_LocalTime, nullptr},
    {ANY, "ata_smart_data.self_test.status.value", "Self-test execution status:      (", nullptr, SetATASelfTest},
    {ANY, "nvme_self_test_log.current_self_test_operation.value", nullptr, nullptr, SetNVMeSelfTest},
    {ANY, "nvme_self_test_log.current_self_test_completion_percent", nullptr, nullptr, SetSelfTestProgress},
    {ANY, "scsi_self_test_0.result.value", nullptr, nullptr, SetSCSISelfTest},
};
// clang-format on
const std::size_t IDENTITY_ROW_COUNT = std::size(IDENTITY_ROWS);

std::uint32_t FindRPM(const std::string& vendor, const std::string& product) {
    unsigned long rpm = 0;
    try {
        CPluginHelper::GetSATARPM(vendor, product, rpm);
    } catch (const std::out_of_range&) {
        return 0;
    }
    return static_cast<std::uint32_t>(rpm);
}

bool ReportIdentity::IsKnown() const {
    return !m_Model.empty() || !m_Product.empty() || !m_Serial.empty();
}

void ReportIdentity::Complete() {
    NameParts(*this);
    m_VolumeKind = FindVolumeKind(m_Model);
    m_Transport = FindTransport(*this);
    m_Time = m_Time != 0 ? m_Time : ReadReportTime(m_LocalTime);
    // smartctl also prints a rotation rate of 0 for SCSI devices that report none, such as volumes.
    if (m_Protocol == SCSI && m_Medium == PropertyValue::SSD && *m_VolumeKind != '\0') {
        m_Medium = 0;
    }
    if (m_Medium == 0 && (m_Protocol == NVME || m_Trim == "true" || BeginsWith(m_Trim, "Available"))) {
        m_Medium = PropertyValue::SSD;
    }
    m_IsRPMReported = m_RPM != 0;
    m_IsIdentified = IdentifiesDrive(m_Serial);
    m_CorrectedSerial = m_Serial;
    if (m_Protocol == ATA) {
        CPluginHelper::CorrectSerialNumber(m_Vendor, m_Product, m_CorrectedSerial);
    }
}

void ReportIdentity::ShowDisk() {
    m_Medium = PropertyValue::HDD;
    m_RPM = FindRPM(m_Vendor, m_Product);
}

}  // namespace PI
