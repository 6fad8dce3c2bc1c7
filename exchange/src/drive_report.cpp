// SPDX-License-Identifier: Apache-2.0

#include <pi/exchange/smartctl.h>

#include "report_builder.h"

namespace PI {

CDriveReport::CDriveReport(std::unique_ptr<CFacts> facts) noexcept : m_Facts(std::move(facts)) {}

CDriveReport::CDriveReport(const CDriveReport& source) : m_Facts(new CFacts(*source.m_Facts)) {}

CDriveReport::CDriveReport(CDriveReport&& source) noexcept = default;

CDriveReport& CDriveReport::operator=(const CDriveReport& source) {
    return *this = CDriveReport(source);
}

CDriveReport& CDriveReport::operator=(CDriveReport&& source) noexcept = default;

CDriveReport::~CDriveReport() = default;

_DRIVE_PROTOCOL CDriveReport::GetProtocol() const noexcept {
    return m_Facts->m_Identity.m_Protocol;
}

const std::string& CDriveReport::GetDevice() const noexcept {
    return m_Facts->m_Identity.m_Device;
}

const std::string& CDriveReport::GetModel() const noexcept {
    return m_Facts->m_Identity.m_Model;
}

const std::string& CDriveReport::GetSerialNumber() const noexcept {
    return m_Facts->m_Identity.m_Serial;
}

const std::string& CDriveReport::GetFirmware() const noexcept {
    return m_Facts->m_Identity.m_Firmware;
}

const std::string& CDriveReport::GetVendor() const noexcept {
    return m_Facts->m_Identity.m_Vendor;
}

const std::string& CDriveReport::GetProduct() const noexcept {
    return m_Facts->m_Identity.m_Product;
}

const std::string& CDriveReport::GetCorrectedSerialNumber() const noexcept {
    return m_Facts->m_Identity.m_CorrectedSerial;
}

bool CDriveReport::IsIdentified() const noexcept {
    return m_Facts->m_Identity.m_IsIdentified;
}

std::uint64_t CDriveReport::GetCapacity() const noexcept {
    return m_Facts->m_Identity.m_Capacity;
}

std::uint32_t CDriveReport::GetBlockSize() const noexcept {
    return m_Facts->m_Identity.m_BlockSize;
}

int CDriveReport::GetTransport() const noexcept {
    return m_Facts->m_Identity.m_Transport;
}

int CDriveReport::GetMedium() const noexcept {
    return m_Facts->m_Identity.m_Medium;
}

std::uint32_t CDriveReport::GetRPM() const noexcept {
    return m_Facts->m_Identity.m_RPM;
}

bool CDriveReport::IsRPMReported() const noexcept {
    return m_Facts->m_Identity.m_IsRPMReported;
}

bool CDriveReport::IsVolume() const noexcept {
    return *m_Facts->m_Identity.m_VolumeKind != '\0';
}

const char* CDriveReport::GetVolumeKind() const noexcept {
    return m_Facts->m_Identity.m_VolumeKind;
}

std::int64_t CDriveReport::GetTime() const noexcept {
    return m_Facts->m_Identity.m_Time;
}

const CDriveHealth& CDriveReport::GetHealth() const noexcept {
    return m_Facts->m_Health;
}

bool CDriveReport::IsSelfTesting() const noexcept {
    return m_Facts->m_Identity.m_IsSelfTesting;
}

int CDriveReport::GetSelfTestProgress() const noexcept {
    return m_Facts->m_Identity.m_SelfTestProgress;
}

const std::vector<std::string>& CDriveReport::GetNotes() const noexcept {
    return m_Facts->m_Notes;
}

}  // namespace PI
