// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reports of smartctl: the text of a report in, drives out, or why there is none.
///
/// Read are reports of 7.x as JSON (also with --json=o, v, u) and as text (-a, -x, -i), one or many, plain or
/// compressed with gzip. A figure that cannot be read costs no drive: it stays unknown, and a note says why.
#pragma once

#include <pi/drive_health.h>
#include <pi/types.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace PI {

/// @addtogroup exchange
/// @{

/// What a report says of one drive. A value; any number of threads may read it.
///
/// Texts and the health that it hands out are valid until the object is assigned to or destroyed. Texts are
/// bytes as the report has them, which may be no UTF-8; they are empty where the report does not say.
class PI_API CDriveReport {
public:
    /// @{
    /// Copies throw std::bad_alloc if allocation fails. A moved-from object may only be assigned to or
    /// destroyed.
    CDriveReport(const CDriveReport& source);
    CDriveReport(CDriveReport&& source) noexcept;
    CDriveReport& operator=(const CDriveReport& source);
    CDriveReport& operator=(CDriveReport&& source) noexcept;
    /// @}
    ~CDriveReport();

    /// @name What it is called
    /// @{
    _DRIVE_PROTOCOL GetProtocol() const noexcept;         ///< UNKNOWN where the report does not say
    const std::string& GetDevice() const noexcept;        ///< such as "/dev/sda"; text reports do not say
    const std::string& GetModel() const noexcept;         ///< the model as reported
    const std::string& GetSerialNumber() const noexcept;  ///< the serial number as reported
    const std::string& GetFirmware() const noexcept;      ///< the firmware as reported

    /// From the model as CPluginHelper::SplitSATAModelName splits it; where that names no vendor, by a table
    /// of this library. Empty when neither knows. SCSI drives report vendor and product apart.
    const std::string& GetVendor() const noexcept;
    const std::string& GetProduct() const noexcept;  ///< the model without the vendor

    /// As CPluginHelper::CorrectSerialNumber corrects that of an ATA drive; as reported for others.
    const std::string& GetCorrectedSerialNumber() const noexcept;
    /// @}

    /// @name What it is
    /// @{
    std::uint64_t GetCapacity() const noexcept;   ///< bytes; 0 when unknown
    std::uint32_t GetBlockSize() const noexcept;  ///< bytes of a logical block; 0 when unknown
    int GetTransport() const noexcept;  ///< PropertyValue::SATA, SAS or NVME; 0 when unknown or another

    /// PropertyValue::HDD or SSD; 0 when the report does not tell. Of ATA drives that report no rotation rate
    /// those that count times of spinning up or errors of seeking are disks (judgement).
    int GetMedium() const noexcept;

    /// Rotations per minute: as the drive reports it, else by the rule of CPluginHelper::GetSATARPM where the
    /// report shows an ATA disk; 0 when unknown.
    std::uint32_t GetRPM() const noexcept;
    bool IsRPMReported() const noexcept;  ///< whether GetRPM() is what the drive reports

    /// Whether it is no drive but a volume of a RAID controller, or a virtual disk.
    bool IsVolume() const noexcept;
    /// What kind of volume, such as "logical volume of a RAID controller"; empty for a drive. Valid as long
    /// as the library.
    const char* GetVolumeKind() const noexcept;
    /// @}

    /// @name How it is
    /// @{

    /// When the report was made, in seconds since 1970 UTC; 0 when unknown. Text reports name time zones by
    /// abbreviations; one that stands for several is unknown.
    std::int64_t GetTime() const noexcept;

    /// What the report says of the drive; valid as long as the report.
    const CDriveHealth& GetHealth() const noexcept;

    /// Whether a self-test ran when the report was made. Since 1.2.0.
    bool IsSelfTesting() const noexcept;
    /// How far it was, in percent; -1 when none ran or the drive does not say. Of ATA drives in tens. Since
    /// 1.2.0.
    int GetSelfTestProgress() const noexcept;

    /// What was out of the ordinary in the report, for people, in English: messages and exit status of
    /// smartctl, keys that occur twice (the last one counts), figures that cannot be read.
    const std::vector<std::string>& GetNotes() const noexcept;
    /// @}

private:
    friend class ReportBuilder;
    struct CFacts;
    explicit CDriveReport(std::unique_ptr<CFacts> facts) noexcept;
    std::unique_ptr<CFacts> m_Facts;
};

/// Why a text, or one document of it, gives no drive. A value; any number of threads may read it.
class PI_API CReportRefusal {
public:
    /// @param reason for people, in English, one line without a full stop
    /// @param line   from 1; 0 when no place is known
    /// @param column in bytes, from 1; 0 when no place is known
    /// @throws std::bad_alloc if allocation fails
    explicit CReportRefusal(const std::string& reason, std::uint64_t line = 0, std::uint64_t column = 0);
    /// @{
    /// Copies throw std::bad_alloc if allocation fails. A moved-from object may only be assigned to or
    /// destroyed.
    CReportRefusal(const CReportRefusal& source);
    CReportRefusal(CReportRefusal&& source) noexcept;
    CReportRefusal& operator=(const CReportRefusal& source);
    CReportRefusal& operator=(CReportRefusal&& source) noexcept;
    /// @}
    ~CReportRefusal();

    const std::string& GetReason() const noexcept;  ///< valid until the object is assigned to or destroyed
    std::uint64_t GetLine() const noexcept;         ///< from 1; 0 when no place is known
    std::uint64_t GetColumn() const noexcept;       ///< in bytes, from 1; 0 when no place is known

private:
    struct CFacts;
    std::unique_ptr<CFacts> m_Facts;
};

/// Reads whatever smartctl has written: one report, several one after another or one a line, a list or an
/// object of them; also after the words of another program.
///
/// Every report gives either a drive or a refusal, each in their order; a text without any gives one refusal.
///
/// @param text     readable up to length; need not end with a zero. Text compressed with gzip may unpack to
///                 64 MiB at most, else it is refused.
/// @param drives   what was read is appended
/// @param refusals what gives no drive is appended
/// @throws std::bad_alloc if allocation fails, with drives and refusals unchanged. Thread-safe.
PI_API void ReadSmartctl(const char* text, std::size_t length, std::vector<CDriveReport>& drives,
                         std::vector<CReportRefusal>& refusals);

/// @}

}  // namespace PI
