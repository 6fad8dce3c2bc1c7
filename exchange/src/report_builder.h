// SPDX-License-Identifier: Apache-2.0
// What both readers of reports fill: who the drive is, then what is said of it.
#pragma once

#include <pi/exchange/smartctl.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace PI {

/// What names a drive and what it is, as the report has it.
struct ReportIdentity {
    _DRIVE_PROTOCOL m_Protocol = DriveProtocol::UNKNOWN;
    std::string m_Device;
    std::string m_Model;
    std::string m_Vendor;   ///< SCSI; of others the split of the model
    std::string m_Product;  ///< likewise
    std::string m_Serial;
    std::string m_Firmware;
    std::uint64_t m_Capacity = 0;
    std::uint32_t m_BlockSize = 0;
    int m_Transport = 0;
    int m_Medium = 0;
    std::uint32_t m_RPM = 0;
    std::int64_t m_Time = 0;
    bool m_IsSelfTesting = false;
    int m_SelfTestProgress = -1;
};

struct CDriveReport::CFacts {
    ReportIdentity m_Identity;
    std::string m_CorrectedSerial;
    bool m_IsRPMReported = false;
    const char* m_VolumeKind = "";
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
    void NoteExitStatus(std::uint64_t status);

    /// The verdict on a drive; additional sense of a SCSI drive that gives one, 0 for none.
    void Verdict(bool passed, unsigned sense = 0, unsigned qualifier = 0);

    /// A row of the table of attributes; raw as decoded by smartctl where the value itself is not given.
    void Attribute(unsigned id, const std::string& name, unsigned flags, int current, int worst,
                   int threshold, std::uint64_t raw);

    /// A value of ATA device statistics; offset 0 where only its name is given.
    void Statistic(std::uint32_t page, std::uint32_t offset, std::string_view name, std::int64_t value);

    /// Amount in 10^9 bytes as the SCSI error counters have it, "2124.590" or "2124,590".
    void Gigabytes(_HEALTH_FIGURE figure, std::string_view text, std::uint32_t page);

    CDriveReport Take();

private:
    std::unique_ptr<CDriveReport::CFacts> m_Facts;
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
/// @param name of the attribute, which tells the unit of times
/// @return false when the value cannot be told
bool ReadRawText(std::string_view text, std::string_view name, std::uint64_t& raw);

/// Whether the text of a raw value holds all its bits by itself: one number with 0x before it, or bytes or
/// words.
bool IsWholeRawText(std::string_view text);

}  // namespace PI
