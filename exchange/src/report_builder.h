// SPDX-License-Identifier: Apache-2.0
// What both readers of reports fill: who the drive is, then what is said of it.
#pragma once

#include <pi/exchange/smartctl.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace PI {

/// What names a drive and what it is: texts and numbers as the report has them, and what follows from them.
struct ReportIdentity {
    _DRIVE_PROTOCOL m_Protocol = DriveProtocol::UNKNOWN;
    std::string m_Device;
    std::string m_Model;
    std::string m_Vendor;   ///< SCSI; of others the split of the model
    std::string m_Product;  ///< likewise
    std::string m_Serial;
    std::string m_Firmware;
    std::string m_Interface;  ///< "SAS (SPL-4)", "SATA 3.1"
    std::string m_Trim;       ///< "true", "Available, deterministic"
    std::string m_LocalTime;  ///< where the report has no number for it
    std::uint64_t m_Capacity = 0;
    std::uint32_t m_BlockSize = 0;
    int m_Medium = 0;
    std::uint32_t m_RPM = 0;
    std::int64_t m_Time = 0;
    bool m_IsSelfTesting = false;
    int m_SelfTestProgress = -1;

    std::string m_CorrectedSerial;
    bool m_IsIdentified = false;
    int m_Transport = 0;
    bool m_IsRPMReported = false;
    const char* m_VolumeKind = "";

    /// Whether the report names a drive.
    bool IsKnown() const;
    /// What follows from the texts and numbers.
    void Complete();
    /// The report shows a disk; its speed is that of the rule for the model where it is not reported.
    void ShowDisk();
};

/// Part of the identity that a report has: a text, or a number from 0.
struct IdentityRow {
    _DRIVE_PROTOCOL m_Protocol;  ///< that the label shows; UNKNOWN: none
    const char* m_Path;          ///< in JSON, null where there is none
    const char* m_Label;  ///< in text: how its line begins, with # for a number; null where there is none
    std::string ReportIdentity::*m_Text;
    void (*m_SetNumber)(ReportIdentity& identity, std::int64_t number);
};

/// Speed of an ATA disk that does not report it, by the rule for its model; 0 if the name is too short for
/// the rule.
std::uint32_t FindRPM(const std::string& vendor, const std::string& product);

extern const IdentityRow IDENTITY_ROWS[];
extern const std::size_t IDENTITY_ROW_COUNT;

struct CDriveReport::CFacts {
    ReportIdentity m_Identity;
    CDriveHealth m_Health;
    std::vector<std::string> m_Notes;
};

/// Makes a report of a drive: identity first, then figures.
class ReportBuilder {
public:
    explicit ReportBuilder(ReportIdentity identity);

    CDriveHealth& Health() { return m_Facts->m_Health; }
    _DRIVE_PROTOCOL Protocol() const { return m_Facts->m_Identity.m_Protocol; }

    void Note(std::string text) { m_Facts->m_Notes.push_back(std::move(text)); }
    /// smartctl's exit status: a note for each of its bits.
    void NoteExitStatus(int status);

    /// The verdict on a drive; additional sense of a SCSI drive that gives one, 0 for none.
    void Verdict(bool passed, int sense = 0, int qualifier = 0);

    /// A row of the table of attributes, with -1 for what is not given.
    void Attribute(int id, const std::string& name, int flags, int current, int worst, int threshold,
                   std::optional<std::uint64_t> raw);

    /// A value of ATA device statistics; offset 0 where only its name is given.
    void Statistic(int page, int offset, std::string_view name, std::int64_t value);

    /// Amount in 10^9 bytes as the SCSI error counters have it, "2124.590" or "2124,590".
    void Gigabytes(bool isWritten, std::string_view text);

    CDriveReport Take();

private:
    std::unique_ptr<CDriveReport::CFacts> m_Facts;
    bool m_HasSpindle = false;
};

/// A figure that a report names.
struct ReportFigure {
    _DRIVE_PROTOCOL m_Protocol;  ///< of the drives for which it holds; UNKNOWN: of all
    const char* m_Path;          ///< in JSON
    const char* m_Label;         ///< in text: how its line begins, null where there is none
    _HEALTH_FIGURE m_Figure;
    _FIGURE_SOURCE m_Source;
    std::uint32_t m_Number;

    bool IsFor(_DRIVE_PROTOCOL protocol) const {
        return m_Protocol == DriveProtocol::UNKNOWN || m_Protocol == protocol;
    }
    void Give(std::int64_t value, ReportBuilder& builder) const;
};

extern const ReportFigure REPORT_FIGURES[];
extern const std::size_t REPORT_FIGURE_COUNT;

/// Seconds since 1970 UTC of "Fri Feb 13 23:31:30 2009 UTC"; 0 when it is no time, or its zone is ambiguous.
std::int64_t ReadReportTime(std::string_view text);

/// How a self-test ended, from the words for it.
_SELF_TEST_OUTCOME ToOutcome(std::string_view type, std::string_view status);

/// A raw value as smartctl formats it: "31 (Min/Max 22/43)", "122817 (237 33 0)", "12345h+23m+10.123s".
/// @param name of the attribute, which gives the unit of times
/// @return no value if the text cannot be read
std::optional<std::uint64_t> ReadRawText(std::string_view text, std::string_view name);

/// Whether the text of a raw value holds all its bits by itself: one number with 0x before it, or bytes or
/// words.
bool IsWholeRawText(std::string_view text);

}  // namespace PI
