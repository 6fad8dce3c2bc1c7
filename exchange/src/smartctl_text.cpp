// SPDX-License-Identifier: Apache-2.0
// Reports of smartctl as text: -a, -x and -i of ATA, SCSI and NVMe drives.

#include <pi/vocabulary.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <limits>
#include <optional>

#include "report_builder.h"
#include "smartctl_readers.h"

namespace PI {

namespace {

using Lines = std::vector<std::string_view>;

bool BeginsWith(std::string_view text, std::string_view begin) {
    return text.substr(0, begin.size()) == begin;
}

bool Has(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view BLANKS = " \t\r";
    text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
    return text.substr(0, text.find_last_not_of(BLANKS) + 1);
}

/// The first word, taken off the text.
std::string_view TakeWord(std::string_view& text) {
    text = Trimmed(text);
    const std::string_view word = text.substr(0, text.find_first_of(" \t"));
    text.remove_prefix(word.size());
    return word;
}

/// A number at the beginning: hexadecimal after 0x, else with the separators of any language in front of
/// three digits each.
std::optional<std::int64_t> ReadNumber(std::string_view text) {
    text = Trimmed(text);
    const bool isHex = BeginsWith(text, "0x");
    const bool isNegative = BeginsWith(text, "-");
    text.remove_prefix(isHex ? 2 : isNegative ? 1 : 0);
    std::string digits;
    while (!text.empty()) {
        if (isHex ? std::isxdigit(static_cast<unsigned char>(text[0])) != 0 : IsDigit(text[0])) {
            digits += text[0];
            text.remove_prefix(1);
            continue;
        }
        const std::size_t next = text.find_first_of("0123456789");
        constexpr std::size_t LONGEST_SEPARATOR = 3;  // a narrow blank in UTF-8
        const bool isSeparator = !isHex && !digits.empty() && next <= LONGEST_SEPARATOR &&
                                 text.substr(0, next).find_first_of(":/[(%-+") == std::string_view::npos;
        const std::size_t group = text.substr(std::min(next, text.size())).find_first_not_of("0123456789");
        const std::size_t rest = next <= text.size() ? text.size() - next : 0;
        if (!isSeparator || std::min(group, rest) != 3) {
            break;
        }
        text.remove_prefix(next);
    }
    std::int64_t number = 0;
    const std::from_chars_result read =
        std::from_chars(digits.data(), digits.data() + digits.size(), number, isHex ? 16 : 10);
    if (read.ec == std::errc::result_out_of_range) {
        return std::numeric_limits<std::int64_t>::max();
    }
    return read.ec == std::errc() ? std::optional(isNegative ? -number : number) : std::nullopt;
}

std::uint64_t CountOrNone(std::string_view text) {
    return static_cast<std::uint64_t>(std::max<std::int64_t>(ReadNumber(text).value_or(0), 0));
}

struct IdentityLine {
    const char* m_Label;
    _DRIVE_PROTOCOL m_Protocol;  ///< that the label shows
    void (*m_Take)(ReportIdentity& identity, std::string_view value);
};

void TakeModel(ReportIdentity& identity, std::string_view value) {
    identity.m_Model = value;
}
void TakeSerial(ReportIdentity& identity, std::string_view value) {
    identity.m_Serial = value;
}
void TakeFirmware(ReportIdentity& identity, std::string_view value) {
    identity.m_Firmware = value;
}
void TakeCapacity(ReportIdentity& identity, std::string_view value) {
    identity.m_Capacity = CountOrNone(value);
}
void TakeBlockSize(ReportIdentity& identity, std::string_view value) {
    identity.m_BlockSize = static_cast<std::uint32_t>(CountOrNone(value));
}

constexpr auto ANY = DriveProtocol::UNKNOWN;
const IdentityLine IDENTITY_LINES[] = {
    {"Device Model:", DriveProtocol::ATA, TakeModel},
    {"Model Number:", DriveProtocol::NVME, TakeModel},
    {"Vendor:", DriveProtocol::SCSI,
     [](ReportIdentity& identity, std::string_view value) { identity.m_Vendor = value; }},
    {"Product:", DriveProtocol::SCSI,
     [](ReportIdentity& identity, std::string_view value) { identity.m_Product = value; }},
    {"Serial Number:", ANY, TakeSerial},
    {"Serial number:", ANY, TakeSerial},
    {"Firmware Version:", ANY, TakeFirmware},
    {"Revision:", ANY, TakeFirmware},
    {"User Capacity:", ANY, TakeCapacity},
    {"Namespace 1 Size/Capacity:", ANY, TakeCapacity},
    {"Total NVM Capacity:", ANY,
     [](ReportIdentity& identity, std::string_view value) {
         identity.m_Capacity = identity.m_Capacity != 0 ? identity.m_Capacity : CountOrNone(value);
     }},
    {"Sector Size:", ANY, TakeBlockSize},
    {"Sector Sizes:", ANY, TakeBlockSize},
    {"Logical block size:", ANY, TakeBlockSize},
    {"Namespace 1 Formatted LBA Size:", ANY, TakeBlockSize},
    {"Rotation Rate:", ANY,
     [](ReportIdentity& identity, std::string_view value) {
         if (const auto rotations = Has(value, "Solid State") ? 0 : ReadNumber(value)) {
             SetRotation(identity, *rotations);
         }
     }},
    {"SATA Version is:", ANY,
     [](ReportIdentity& identity, std::string_view) { identity.m_Transport = PropertyValue::SATA; }},
    {"Transport protocol:", ANY,
     [](ReportIdentity& identity, std::string_view value) {
         identity.m_Transport = BeginsWith(value, "SAS") ? PropertyValue::SAS : identity.m_Transport;
     }},
    {"Local Time is:", ANY,
     [](ReportIdentity& identity, std::string_view value) { identity.m_Time = ReadReportTime(value); }},
};

/// Reads the lines of one report.
class TextReader {
public:
    explicit TextReader(const Lines& lines) : m_Lines(lines) {}

    std::optional<CDriveReport> Read() {
        ReportIdentity identity = Identify();
        if (identity.m_Model.empty() && identity.m_Product.empty() && identity.m_Serial.empty()) {
            return std::nullopt;
        }
        ReportBuilder builder(std::move(identity));
        for (m_At = 0; m_At < m_Lines.size(); ++m_At) {
            ReadLine(Trimmed(m_Lines[m_At]), builder);
        }
        return builder.Take();
    }

private:
    ReportIdentity Identify() const {
        ReportIdentity identity;
        bool hasTrim = false;
        for (const std::string_view line : m_Lines) {
            for (const IdentityLine& row : IDENTITY_LINES) {
                if (BeginsWith(line, row.m_Label)) {
                    row.m_Take(identity, Trimmed(line.substr(std::string_view(row.m_Label).size())));
                    identity.m_Protocol = row.m_Protocol != ANY ? row.m_Protocol : identity.m_Protocol;
                }
            }
            hasTrim = hasTrim || BeginsWith(line, "TRIM Command:     Available") ||
                      BeginsWith(line, "Percentage used endurance indicator:");
        }
        if (identity.m_Protocol == DriveProtocol::NVME) {
            identity.m_Transport = PropertyValue::NVME;
        }
        if (identity.m_Medium == 0 && (hasTrim || identity.m_Protocol == DriveProtocol::NVME)) {
            identity.m_Medium = PropertyValue::SSD;
        }
        return identity;
    }

    void ReadLine(std::string_view line, ReportBuilder& builder) {
        if (line.empty()) {
            return;
        }
        for (std::size_t i = 0; i < REPORT_FIGURE_COUNT; ++i) {
            const ReportFigure& figure = REPORT_FIGURES[i];
            if (figure.m_Label == nullptr || !figure.IsFor(builder.Protocol()) ||
                !BeginsWith(line, figure.m_Label)) {
                continue;
            }
            std::string_view value = line.substr(std::string_view(figure.m_Label).size());
            if (Has(figure.m_Label, "Min/Max")) {
                value.remove_prefix(std::min(value.find('/') + 1, value.size()));
            }
            if (const std::optional<std::int64_t> number = ReadNumber(value)) {
                figure.Give(*number, builder);
            }
            return;
        }
        ReadVerdict(line, builder);
        if (BeginsWith(line, "ID# ATTRIBUTE_NAME")) {
            ReadAttributes(line, builder);
        } else if (BeginsWith(line, "Page  Offset Size")) {
            ReadStatistics(builder);
        } else if (builder.Protocol() == DriveProtocol::SCSI) {
            ReadSCSI(line, builder);
        } else {
            ReadLogs(line, builder);
        }
    }

    static void ReadVerdict(std::string_view line, ReportBuilder& builder) {
        constexpr std::string_view OVERALL = "SMART overall-health self-assessment test result:";
        constexpr std::string_view STATUS = "SMART Health Status:";
        if (BeginsWith(line, OVERALL) && !Has(line, "UNKNOWN")) {
            builder.Verdict(Has(line, "PASSED"));
        } else if (BeginsWith(line, STATUS)) {
            const auto codeAfter = [line](std::string_view label) {
                const std::size_t place = line.find(label);
                const std::string code =
                    "0x" +
                    std::string(place != std::string_view::npos ? line.substr(place + label.size()) : "");
                return static_cast<unsigned>(ReadNumber(code).value_or(0));
            };
            builder.Verdict(Trimmed(line.substr(STATUS.size())) == "OK", codeAfter("asc="),
                            codeAfter("ascq="));
        }
    }

    void ReadAttributes(std::string_view header, ReportBuilder& builder) {
        const bool isBrief = !Has(header, "UPDATED");
        while (m_At + 1 < m_Lines.size()) {
            std::string_view row = Trimmed(m_Lines[m_At + 1]);
            if (row.empty() || !IsDigit(row[0])) {
                return;
            }
            ++m_At;
            const auto id = static_cast<unsigned>(CountOrNone(TakeWord(row)));
            const std::string name(TakeWord(row));
            const unsigned flags = ReadFlags(TakeWord(row));
            const auto current = static_cast<int>(ReadNumber(TakeWord(row)).value_or(-1));
            const auto worst = static_cast<int>(ReadNumber(TakeWord(row)).value_or(-1));
            const auto threshold = static_cast<int>(ReadNumber(TakeWord(row)).value_or(-1));
            for (int skipped = isBrief ? 1 : 3; skipped > 0; --skipped) {
                TakeWord(row);
            }
            std::uint64_t raw = 0;
            if (ReadRawText(Trimmed(row), name, raw)) {
                builder.Attribute(id, name, flags, current, worst, threshold, raw);
            } else {
                builder.Note("attribute " + std::to_string(id) + " has no raw value and is passed over");
            }
        }
    }

    /// Hexadecimal, or letters in the places of the bits.
    static unsigned ReadFlags(std::string_view text) {
        if (BeginsWith(text, "0x")) {
            return static_cast<unsigned>(CountOrNone(text));
        }
        unsigned flags = 0;
        constexpr std::string_view LETTERS = "POSRCK";
        for (std::size_t bit = 0; bit < LETTERS.size(); ++bit) {
            flags |= Has(text, LETTERS.substr(bit, 1)) ? 1U << bit : 0U;
        }
        return flags;
    }

    void ReadStatistics(ReportBuilder& builder) {
        for (; m_At + 1 < m_Lines.size() && BeginsWith(m_Lines[m_At + 1], "0x"); ++m_At) {
            std::string_view row = m_Lines[m_At + 1];
            const auto page = static_cast<std::uint32_t>(CountOrNone(TakeWord(row)));
            const std::string_view offset = TakeWord(row);
            TakeWord(row);  // size
            const std::optional<std::int64_t> value = ReadNumber(TakeWord(row));
            if (value && BeginsWith(offset, "0x")) {
                builder.Statistic(page, static_cast<std::uint32_t>(CountOrNone(offset)), {}, *value);
            }
        }
    }

    void ReadLogs(std::string_view line, ReportBuilder& builder) {
        if (BeginsWith(line, "SMART Error Log Version:")) {
            m_ErrorLog = 0x01;
        } else if (BeginsWith(line, "SMART Extended Comprehensive Error Log Version:")) {
            m_ErrorLog = 0x03;
        } else if (BeginsWith(line, "No Errors Logged") && builder.Protocol() == DriveProtocol::ATA) {
            GiveErrors(0, builder);
        } else if (BeginsWith(line, "ATA Error Count:") || BeginsWith(line, "Device Error Count:")) {
            GiveErrors(ReadNumber(line.substr(line.find(':') + 1)).value_or(-1), builder);
        } else if (BeginsWith(line, "SMART Self-test log structure")) {
            ReadSelfTests(FigureSource::ATA_LOG, 0x06, builder);
        } else if (BeginsWith(line, "SMART Extended Self-test Log Version:")) {
            ReadSelfTests(FigureSource::ATA_LOG, 0x07, builder);
        } else if (BeginsWith(line, "Self-test Log (NVMe Log 0x06")) {
            ReadSelfTests(FigureSource::NVME_LOG, 0x06, builder);
        } else if (BeginsWith(line, "Pending Defects log") && m_At + 1 < m_Lines.size() &&
                   BeginsWith(m_Lines[m_At + 1], "No Defects Logged")) {
            builder.Health().TakeFigure(HealthFigure::PENDING_SECTORS, 0, FigureSource::ATA_LOG, 0x0C);
        }
    }

    void GiveErrors(std::int64_t count, ReportBuilder& builder) const {
        if (m_ErrorLog != 0 && count >= 0) {
            builder.Health().TakeFigure(HealthFigure::LOGGED_ERRORS, count, FigureSource::ATA_LOG,
                                        m_ErrorLog);
        }
    }

    void ReadSCSI(std::string_view line, ReportBuilder& builder) {
        constexpr std::string_view ENVIRONMENT = "urrent temperature =";
        if (BeginsWith(line, "SMART Self-test log")) {
            ReadSelfTests(FigureSource::SCSI_LOG_PAGE, 0x10, builder);
        } else if (BeginsWith(line, "read:")) {
            ReadErrorCounters(line, HealthFigure::BYTES_READ, 0x03, builder);
        } else if (BeginsWith(line, "write:")) {
            ReadErrorCounters(line, HealthFigure::BYTES_WRITTEN, 0x02, builder);
        } else if (BeginsWith(line, "verify:")) {
            ReadErrorCounters(line, HealthFigure::MEDIA_ERRORS, 0x05, builder);
        } else if (line.find(ENVIRONMENT) <= 1 && !m_HasEnvironment) {
            if (const auto value = ReadNumber(line.substr(line.find('=') + 1))) {
                builder.Health().TakeFigure(HealthFigure::TEMPERATURE, *value, FigureSource::SCSI_LOG_PAGE,
                                            0x10D);
                m_HasEnvironment = true;
            }
        }
    }

    /// Seven columns, of which the sixth is the amount and the last counts errors that were not corrected.
    static void ReadErrorCounters(std::string_view line, _HEALTH_FIGURE amount, std::uint32_t page,
                                  ReportBuilder& builder) {
        constexpr std::size_t COLUMNS = 7;
        constexpr std::size_t AMOUNT = 5;
        TakeWord(line);
        std::string_view columns[COLUMNS];
        for (std::string_view& column : columns) {
            column = TakeWord(line);
        }
        if (amount != HealthFigure::MEDIA_ERRORS && !columns[AMOUNT].empty()) {
            builder.Gigabytes(amount, columns[AMOUNT], page);
        }
        if (const std::optional<std::int64_t> errors = ReadNumber(columns[COLUMNS - 1])) {
            builder.Health().TakeFigure(HealthFigure::MEDIA_ERRORS, *errors, FigureSource::SCSI_LOG_PAGE,
                                        page);
        }
    }

    void ReadSelfTests(_FIGURE_SOURCE source, std::uint32_t page, ReportBuilder& builder) {
        std::vector<_SELF_TEST_OUTCOME> outcomes;
        bool isLog = false;
        for (; m_At + 1 < m_Lines.size(); ++m_At) {
            std::string_view row = Trimmed(m_Lines[m_At + 1]);
            if (row.empty() || BeginsWith(row, "SMART ")) {
                break;
            }
            isLog = isLog || BeginsWith(row, "Num") || Has(row, "elf-tests ");
            const bool isEntry =
                isLog && (row[0] == '#' || (source == FigureSource::NVME_LOG && IsDigit(row[0])));
            if (isEntry) {
                row.remove_prefix(std::min(row.find_first_not_of("# "), row.size()));
                TakeWord(row);
                row = Trimmed(row);
                const std::size_t gap = std::min(row.find("  "), row.size());
                outcomes.push_back(ToOutcome(row.substr(0, gap), Trimmed(row.substr(gap))));
            }
        }
        if (isLog) {
            builder.Health().TakeSelfTests(outcomes.data(), outcomes.size(), source, page);
        }
    }

    const Lines& m_Lines;
    std::size_t m_At = 0;
    std::uint32_t m_ErrorLog = 0;
    bool m_HasEnvironment = false;
};

/// Whether a line is the first of a report: "smartctl 7.1 2019-12-30 ...".
bool IsHeader(std::string_view line) {
    constexpr std::string_view NAME = "smartctl ";
    return BeginsWith(line, NAME) && line.size() > NAME.size() && IsDigit(line[NAME.size()]);
}

const char* WhyNoDrive(const Lines& lines) {
    const char* reason = nullptr;
    for (const std::string_view line : lines) {
        if (const char* known = FindReason(line)) {
            return known;
        }
        if (BeginsWith(line, "/dev/") && Has(line, " -d ") && Has(line, " # ")) {
            return "a list of devices from --scan, which says nothing of them";
        }
        if (BeginsWith(line, "=== START OF ") || IsHeader(line)) {
            reason = "a report without identity: neither model nor serial number, as with -H or -A alone";
        }
    }
    return reason;
}

}  // namespace

void ReadSmartctlText(std::string_view text, SmartctlResults& results) {
    std::uint64_t number = 0;
    std::uint64_t first = 1;
    Lines lines;
    const auto finish = [&] {
        if (std::optional<CDriveReport> drive = TextReader(lines).Read()) {
            results.m_Drives.push_back(std::move(*drive));
        } else if (const char* reason = WhyNoDrive(lines)) {
            results.m_Refusals.emplace_back(reason, first, 1);
        }
        lines.clear();
        first = number;
    };
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        ++number;
        if (IsHeader(line) && !lines.empty()) {
            finish();
        }
        lines.push_back(line);
    }
    finish();
}

}  // namespace PI
