// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reads reports of smartctl: a text goes in, drives come out, or the reason why there is none.
///
/// Reports of smartctl 7.x are read as JSON (also with --json=o, v, u) and as text (-a, -x, -i), one or many,
/// plain or compressed with gzip. Text may have been pasted: with blanks and line ends of other kinds, empty
/// lines in tables, or rows that mail wrapped. A figure that cannot be read does not cost the drive: it is
/// unknown, and a note says why.
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

/// What a report says about one drive. A value; any number of threads may read it.
///
/// Texts and the health that it returns are valid until the object is assigned to or destroyed. Texts are the
/// bytes of the report, which may not be UTF-8; they are empty if the report does not say.
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

    /// @name Identification
    /// @{
    _DRIVE_PROTOCOL GetProtocol() const noexcept;         ///< UNKNOWN if the report does not say
    const std::string& GetDevice() const noexcept;        ///< such as "/dev/sda"; not in text reports
    const std::string& GetModel() const noexcept;         ///< the model as reported
    const std::string& GetSerialNumber() const noexcept;  ///< the serial number as reported
    const std::string& GetFirmware() const noexcept;      ///< the firmware as reported

    /// From the model as CPluginHelper::SplitSATAModelName splits it; if that gives no vendor, from a table
    /// of this library. Empty if neither has one. SCSI drives report vendor and product separately.
    const std::string& GetVendor() const noexcept;
    const std::string& GetProduct() const noexcept;  ///< the model without the vendor

    /// For ATA drives as corrected by CPluginHelper::CorrectSerialNumber, for others as reported.
    const std::string& GetCorrectedSerialNumber() const noexcept;

    /// Whether the serial number distinguishes the drive from others of its model: not if it is empty, one
    /// character repeated such as "0000" or "----", hidden in full or in part ("S3Z8****",
    /// "Z1Z5DWJK0000XXXXXXXX"), or a word instead of one such as "REDACTED" (judgement: the words, and four X
    /// in a row).
    bool IsIdentified() const noexcept;
    /// @}

    /// @name Properties
    /// @{
    std::uint64_t GetCapacity() const noexcept;   ///< bytes; 0 when unknown
    std::uint32_t GetBlockSize() const noexcept;  ///< bytes of a logical block; 0 when unknown
    int GetTransport() const noexcept;  ///< PropertyValue::SATA, SAS or NVME; 0 if it is unknown or another

    /// PropertyValue::HDD or SSD; 0 if the report does not say. ATA drives that report no rotation rate but
    /// count spin-up times or seek errors are taken to be disks (judgement).
    int GetMedium() const noexcept;

    /// Rotations per minute, as the drive reports them; otherwise by CPluginHelper::GetSATARPM if the drive
    /// is an ATA disk; 0 when unknown.
    std::uint32_t GetRPM() const noexcept;
    bool IsRPMReported() const noexcept;  ///< whether GetRPM() is reported by the drive

    /// Whether it is not a drive but a volume of a RAID controller or a virtual disk.
    bool IsVolume() const noexcept;
    /// Kind of volume, such as "logical volume of a RAID controller"; empty for a drive. Valid as long as the
    /// library.
    const char* GetVolumeKind() const noexcept;
    /// @}

    /// @name Condition
    /// @{

    /// When the report was made, in seconds since 1970-01-01 UTC; 0 when unknown. Text reports give time
    /// zones as abbreviations; with an ambiguous one the time is unknown.
    std::int64_t GetTime() const noexcept;

    /// The health of the drive by this report; valid as long as this object.
    const CDriveHealth& GetHealth() const noexcept;

    /// Whether a self-test was running when the report was made.
    bool IsSelfTesting() const noexcept;
    /// Progress of the self-test in percent, for ATA drives in steps of ten; -1 if none was running or the
    /// drive does not say.
    int GetSelfTestProgress() const noexcept;

    /// What was unusual about the report, for people, in English: messages and exit status of smartctl, keys
    /// that occur twice (the last one counts), figures that cannot be read.
    const std::vector<std::string>& GetNotes() const noexcept;
    /// @}

private:
    friend class ReportBuilder;
    struct CFacts;
    explicit CDriveReport(std::unique_ptr<CFacts> facts) noexcept;
    std::unique_ptr<CFacts> m_Facts;
};

/// Why a text, or one document in it, gives no drive. A value; any number of threads may read it.
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

/// Reads whatever smartctl has written: one report, several in a row or one per line, a list or an object of
/// them; also after output of another program.
///
/// Every report gives either a drive or a refusal, in the order of the reports; a text without a report gives
/// one refusal. Further refusals are for elements of a list of reports that are none, and for JSON after a
/// report that breaks off or is broken.
///
/// @param text     readable up to length; need not end with a zero. Text compressed with gzip is refused if
///                 it unpacks to more than 64 MiB.
/// @param drives   out: the drives are appended
/// @param refusals out: the refusals are appended
/// @throws std::bad_alloc if allocation fails; drives and refusals are unchanged then. Thread-safe.
PI_API void ReadSmartctl(const char* text, std::size_t length, std::vector<CDriveReport>& drives,
                         std::vector<CReportRefusal>& refusals);

/// @}

}  // namespace PI
