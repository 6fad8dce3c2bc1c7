// SPDX-License-Identifier: Apache-2.0
// Reports of smartctl as text: -a, -x and -i of ATA, SCSI and NVMe drives.

#include <algorithm>
#include <bitset>
#include <charconv>
#include <iterator>
#include <limits>

#include "report_builder.h"
#include "smartctl_readers.h"

namespace PI {

namespace {

using Lines = std::vector<std::string_view>;

constexpr std::string_view DIGITS = "0123456789";

bool BeginsWith(std::string_view text, std::string_view begin) {
    return text.substr(0, begin.size()) == begin;
}

bool Has(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

bool BeginsWithDigit(std::string_view text) {
    return !text.empty() && Has(DIGITS, text.substr(0, 1));
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view BLANKS = " \t";
    text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
    return text.substr(0, text.find_last_not_of(BLANKS) + 1);
}

/// Removes and returns the first word of the text.
std::string_view TakeWord(std::string_view& text) {
    text = Trimmed(text);
    const std::string_view word = text.substr(0, text.find_first_of(" \t"));
    text.remove_prefix(word.size());
    return word;
}

/// What follows a label at the beginning of a line; # in the label matches a number.
std::optional<std::string_view> After(std::string_view line, std::string_view label) {
    const std::size_t number = label.find('#');
    const std::string_view begin = label.substr(0, number);
    if (!BeginsWith(line, begin)) {
        return std::nullopt;
    }
    line.remove_prefix(begin.size());
    if (number == std::string_view::npos) {
        return line;
    }
    line.remove_prefix(std::min(line.find_first_not_of(DIGITS), line.size()));
    return After(line, label.substr(number + 1));
}

/// Blanks of all kinds as plain ones, and line feeds at the ends of lines. Tabs that indent a line remain.
std::string WithPlainBlanks(std::string_view text) {
    const auto isSpecial = [](char character) { return character < ' ' || character > '~'; };
    std::string plain;
    plain.reserve(text.size());
    bool isIndent = true;
    for (std::size_t length = 0; !text.empty(); text.remove_prefix(length)) {
        // A byte A0h after one of ASCII is no UTF-8 but Latin-1.
        const bool isAfterASCII = plain.empty() || static_cast<unsigned char>(plain.back()) < 0x80;
        length = static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isSpecial) - text.begin());
        if (length != 0) {
            isIndent = isIndent && text.find_first_not_of(' ') >= length;
            plain.append(text.substr(0, length));
        } else if (text[0] == '\r') {
            length = std::min(text.find_first_not_of('\r'), text.size());
            plain.append(text.substr(length, 1) == "\n" ? 0 : length, '\n');
            isIndent = true;
        } else {
            length = BeginsWith(text, "\xC2\xA0") ? 2 : BeginsWith(text, "\xE3\x80\x80") ? 3 : 1;
            const bool isBlank =
                length > 1 || (text[0] == '\t' && !isIndent) || (text[0] == '\xA0' && isAfterASCII);
            plain += isBlank ? ' ' : text[0];
            isIndent = text[0] == '\n' || (isIndent && (isBlank || text[0] == '\t'));
        }
    }
    return plain;
}

/// A number at the beginning: hexadecimal after 0x, else with the separators of any language in front of
/// three digits each.
std::optional<std::int64_t> ReadNumber(std::string_view text) {
    text = Trimmed(text);
    const bool isHex = BeginsWith(text, "0x");
    const bool isNegative = BeginsWith(text, "-");
    text.remove_prefix(isHex ? 2 : isNegative ? 1 : 0);
    const std::string_view valid = isHex ? "0123456789abcdefABCDEF" : DIGITS;
    std::string digits;
    for (;;) {
        const std::size_t end = std::min(text.find_first_not_of(valid), text.size());
        digits.append(text, 0, end);
        text.remove_prefix(end);
        constexpr std::size_t LONGEST_SEPARATOR = 3;  // a narrow blank in UTF-8
        const std::size_t next = text.find_first_of(DIGITS);
        if (isHex || digits.empty() || next > LONGEST_SEPARATOR ||
            text.substr(0, next).find_first_of(":/[(%-+") != std::string_view::npos) {
            break;
        }
        const std::string_view group = text.substr(next);
        if (std::min(group.find_first_not_of(DIGITS), group.size()) != 3) {
            break;
        }
        text = group;
    }
    std::int64_t number = 0;
    const std::from_chars_result read =
        std::from_chars(digits.data(), digits.data() + digits.size(), number, isHex ? 16 : 10);
    if (read.ec == std::errc::result_out_of_range) {
        return std::numeric_limits<std::int64_t>::max();
    }
    return read.ec == std::errc() ? std::optional(isNegative ? -number : number) : std::nullopt;
}

/// Removes and returns a number of at most 31 bits.
int TakeSmall(std::string_view& text, int otherwise = -1) {
    const std::int64_t number = ReadNumber(TakeWord(text)).value_or(-1);
    return number >= 0 && number <= std::numeric_limits<int>::max() ? static_cast<int>(number) : otherwise;
}

/// A normalised value of an attribute; -1 for one that is not given; no value if the word is neither.
std::optional<int> ReadNormalised(std::string_view word) {
    if (word == "---") {
        return -1;
    }
    const bool isHex = BeginsWith(word, "0x");
    const char* const end = word.data() + word.size();
    std::uint8_t number = 0;
    const std::from_chars_result read =
        std::from_chars(word.data() + (isHex ? 2 : 0), end, number, isHex ? 16 : 10);
    return read.ec == std::errc() && read.ptr == end ? std::optional<int>(number) : std::nullopt;
}

/// Flags of an attribute: hexadecimal, or letters in the places of the bits; -1 if the word is neither.
int ReadFlags(std::string_view word) {
    constexpr std::string_view LETTERS = "POSRCK";
    if (BeginsWith(word, "0x")) {
        return TakeSmall(word);
    }
    if (word.size() < LETTERS.size() || word.find_first_not_of("POSRCK-+") != std::string_view::npos) {
        return -1;
    }
    int flags = 0;
    for (std::size_t bit = 0; bit < LETTERS.size(); ++bit) {
        flags |= Has(word, LETTERS.substr(bit, 1)) ? 1 << bit : 0;
    }
    return flags;
}

bool IsAttribute(std::string_view line) {
    const bool isNumbered = BeginsWithDigit(line);
    TakeWord(line);
    TakeWord(line);
    return isNumbered && ReadFlags(TakeWord(line)) >= 0;
}

/// A log that is headed by a line, and says in the next one that it is empty.
struct CountedLog {
    const char* m_Head;
    const char* m_Empty;
    _HEALTH_FIGURE m_Figure;
    std::uint32_t m_Page;
};
constexpr CountedLog COUNTED_LOGS[] = {
    {"SMART Error Log Version:", "No Errors Logged", HealthFigure::LOGGED_ERRORS, 0x01},
    {"SMART Extended Comprehensive Error Log Version:", "No Errors Logged", HealthFigure::LOGGED_ERRORS,
     0x03},
    {"Pending Defects log", "No Defects Logged", HealthFigure::PENDING_SECTORS, 0x0C},
};

struct SelfTestLog {
    _DRIVE_PROTOCOL m_Protocol;
    const char* m_Head;
    _FIGURE_SOURCE m_Source;
    std::uint32_t m_Page;
};
constexpr SelfTestLog SELF_TEST_LOGS[] = {
    {DriveProtocol::ATA, "SMART Self-test log structure", FigureSource::ATA_LOG, 0x06},
    {DriveProtocol::ATA, "SMART Extended Self-test Log Version:", FigureSource::ATA_LOG, 0x07},
    {DriveProtocol::NVME, "Self-test Log (NVMe Log 0x06", FigureSource::NVME_LOG, 0x06},
    {DriveProtocol::SCSI, "SMART Self-test log", FigureSource::SCSI_LOG_PAGE, 0x10},
};

struct ErrorCounters {
    const char* m_Head;
    std::uint32_t m_Page;
};
constexpr ErrorCounters ERROR_COUNTERS[] = {{"write:", 0x02}, {"read:", 0x03}, {"verify:", 0x05}};

/// Reads the lines of one report. Of a figure that several lines have the first counts.
class TextReader {
public:
    TextReader(const Lines& lines, bool mayBeCut) : m_Lines(lines), m_Builder(Identify(lines)) {
        if (mayBeCut) {
            m_Builder.Note("the last line has no end: it and what should follow may be cut off");
        }
    }

    CDriveReport Read() {
        for (m_At = 0; m_At < m_Lines.size(); ++m_At) {
            const std::string_view line = m_Lines[m_At];
            if (!line.empty() && !ReadFigure(line) && !ReadVerdict(line)) {
                ReadSection(line);
            }
        }
        if (m_LacksAttributes) {
            m_Builder.Note("the table of attributes cannot be read");
        }
        if (m_LacksStatistics) {
            m_Builder.Note("the device statistics cannot be read");
        }
        return m_Builder.Take();
    }

    static ReportIdentity Identify(const Lines& lines) {
        ReportIdentity identity;
        for (const std::string_view line : lines) {
            ReadRunningTest(line, identity);
            for (std::size_t i = 0; i < IDENTITY_ROW_COUNT; ++i) {
                const IdentityRow& row = IDENTITY_ROWS[i];
                const auto rest = row.m_Label != nullptr ? After(line, row.m_Label) : std::nullopt;
                if (!rest) {
                    continue;
                }
                if (row.m_Protocol != DriveProtocol::UNKNOWN) {
                    identity.m_Protocol = row.m_Protocol;
                }
                if (row.m_Text != nullptr) {
                    identity.*row.m_Text = Trimmed(*rest);
                } else if (const auto number = Has(*rest, "Solid State") ? 0 : ReadNumber(*rest);
                           number && *number >= 0) {
                    row.m_SetNumber(identity, *number);
                }
            }
        }
        return identity;
    }

private:
    /// Of SCSI and NVMe drives.
    static void ReadRunningTest(std::string_view line, ReportIdentity& identity) {
        constexpr std::string_view PROGRESS = " self-test in progress (";
        const std::size_t progress = line.find(PROGRESS);
        if (progress != std::string_view::npos) {
            const std::int64_t percent = ReadNumber(line.substr(progress + PROGRESS.size())).value_or(-1);
            identity.m_IsSelfTesting = true;
            identity.m_SelfTestProgress = percent >= 0 && percent <= 100 ? static_cast<int>(percent) : -1;
        } else if (Has(line, "Self test in progress ...")) {
            identity.m_IsSelfTesting = true;
        }
    }

    /// The line after the current one, or empty.
    std::string_view Next() const {
        return m_At + 1 < m_Lines.size() ? m_Lines[m_At + 1] : std::string_view();
    }

    /// Removes and returns the next line if it belongs to a table, or the one after an empty line.
    template <class IsRow>
    std::optional<std::string_view> TakeRow(IsRow isRow) {
        const std::size_t row = m_At + (Next().empty() ? 2 : 1);
        if (row < m_Lines.size() && isRow(m_Lines[row])) {
            m_At = row;
            return m_Lines[row];
        }
        return std::nullopt;
    }

    bool ReadFigure(std::string_view line) {
        for (std::size_t i = 0; i < REPORT_FIGURE_COUNT; ++i) {
            const ReportFigure& figure = REPORT_FIGURES[i];
            if (figure.m_Label == nullptr || !figure.IsFor(m_Builder.Protocol()) ||
                !BeginsWith(line, figure.m_Label)) {
                continue;
            }
            std::string_view value = line.substr(std::string_view(figure.m_Label).size());
            if (Has(figure.m_Label, "Min/Max")) {
                value.remove_prefix(std::min(value.find('/') + 1, value.size()));
            }
            const std::optional<std::int64_t> number = ReadNumber(value);
            if (number && !m_Given[i]) {
                m_Given.set(i);
                figure.Give(*number, m_Builder);
            }
            return true;
        }
        return false;
    }

    bool ReadVerdict(std::string_view line) {
        if (const auto overall = After(line, "SMART overall-health self-assessment test result:")) {
            const bool isPassed = Has(*overall, "PASSED");
            if (isPassed || Has(*overall, "FAILED")) {
                m_Builder.Verdict(isPassed);
            }
            return true;
        }
        const auto status = After(line, "SMART Health Status:");
        if (status) {
            // The text of the drive may contain such codes, too; those in brackets after it are smartctl's.
            const auto codeAfter = [&](std::string_view label) {
                const std::size_t place = status->rfind(label);
                std::string code = "0x";
                code += place != std::string_view::npos ? status->substr(place + label.size(), 2) : "0";
                return static_cast<int>(ReadNumber(code).value_or(0));
            };
            m_Builder.Verdict(Trimmed(*status) == "OK", codeAfter("asc="), codeAfter("ascq="));
        }
        return status.has_value();
    }

    void ReadSection(std::string_view line) {
        if (BeginsWith(line, "ID# ATTRIBUTE_NAME")) {
            ReadAttributes(line);
        } else if (BeginsWith(line, "SMART Attributes Data Structure")) {
            m_LacksAttributes = true;
        } else if (BeginsWith(line, "Device Statistics (") && !Has(line, "not supported")) {
            m_LacksStatistics = true;
        } else if (BeginsWith(line, "0x")) {
            ReadStatistic(line);
        }
        for (const CountedLog& log : COUNTED_LOGS) {
            if (BeginsWith(line, log.m_Head) && m_Builder.Protocol() == DriveProtocol::ATA) {
                ReadCount(log);
            }
        }
        for (const SelfTestLog& log : SELF_TEST_LOGS) {
            if (BeginsWith(line, log.m_Head) && m_Builder.Protocol() == log.m_Protocol) {
                ReadSelfTests(log);
            }
        }
        for (const ErrorCounters& counters : ERROR_COUNTERS) {
            if (BeginsWith(line, counters.m_Head) && m_Builder.Protocol() == DriveProtocol::SCSI) {
                ReadErrorCounters(line, counters.m_Page);
            }
        }
    }

    void ReadAttributes(std::string_view heading) {
        m_LacksAttributes = true;
        const bool isWrapped = !Has(heading, "RAW_VALUE") && Has(Next(), "RAW_VALUE");
        const std::string columns = std::string(heading) + std::string(isWrapped ? m_Lines[++m_At] : "");
        const bool isBrief = !Has(columns, "UPDATED");
        // A terminal that broke the heading within this column did so with its words in the rows.
        const bool isBroken =
            isWrapped && !isBrief && !Has(heading, "WHEN_FAILED") && !Has(m_Lines[m_At], "WHEN_FAILED");
        while (const auto first = TakeRow(BeginsWithDigit)) {
            std::string row(*first);
            while (BeginsWith(Next(), "(") ||
                   (isWrapped && !Next().empty() && !BeginsWith(Next(), "|") && !IsAttribute(Next()))) {
                row.append(isBroken && row.back() != '-' ? "" : " ").append(m_Lines[++m_At]);
            }
            ReadAttribute(row, isBrief);
        }
    }

    void ReadAttribute(std::string_view row, bool isBrief) {
        const int id = TakeSmall(row);
        const std::string name(TakeWord(row));
        const int flags = ReadFlags(TakeWord(row));
        const std::optional<int> current = ReadNormalised(TakeWord(row));
        const std::optional<int> worst = ReadNormalised(TakeWord(row));
        const std::optional<int> threshold = ReadNormalised(TakeWord(row));
        bool isRow = flags >= 0 && current && worst && threshold;
        if (!isBrief) {
            const std::string_view type = TakeWord(row);
            const std::string_view updated = TakeWord(row);
            isRow = isRow && (type == "Pre-fail" || type == "Old_age") &&
                    (updated == "Always" || updated == "Offline");
        }
        const std::string_view failed = TakeWord(row);
        m_LacksAttributes = false;
        if (isRow && !BeginsWithDigit(failed)) {
            m_Builder.Attribute(id, name, flags, *current, *worst, *threshold,
                                ReadRawText(Trimmed(row), name));
        } else {
            m_Builder.Note("attribute " + std::to_string(id) + " is passed over: its columns cannot be read");
        }
    }

    /// Page, offset, size and value, as no other line has them that begins with a page.
    void ReadStatistic(std::string_view row) {
        const int page = TakeSmall(row);
        const bool isOffset = BeginsWith(Trimmed(row), "0x");
        const int offset = TakeSmall(row);
        TakeWord(row);  // size
        const std::optional<std::int64_t> value = ReadNumber(TakeWord(row));
        if (offset > 0 && isOffset) {
            m_LacksStatistics = false;
            if (value) {
                m_Builder.Statistic(page, offset, {}, *value);
            }
        }
    }

    void ReadCount(const CountedLog& log) {
        std::int64_t count = 0;
        bool isCounted =
            TakeRow([&](std::string_view line) { return BeginsWith(line, log.m_Empty); }).has_value();
        if (TakeRow([](std::string_view line) { return Has(line, "LBA") && Has(line, "Hours"); })) {
            isCounted = true;
            for (; TakeRow(BeginsWithDigit); ++count) {
            }
            if (const auto rest = TakeRow([](std::string_view line) { return BeginsWith(line, "... ("); })) {
                count += ReadNumber(rest->substr(5)).value_or(0);
            }
        }
        if (isCounted) {
            m_Builder.Health().TakeFigure(log.m_Figure, count, FigureSource::ATA_LOG, log.m_Page);
        }
    }

    /// Seven columns, of which the sixth is the amount and the last counts errors that were not corrected.
    void ReadErrorCounters(std::string_view line, std::uint32_t page) {
        constexpr std::size_t COLUMNS = 7;
        constexpr std::size_t AMOUNT = 5;
        const bool isVerify = TakeWord(line) == "verify:";
        std::string_view columns[COLUMNS];
        for (std::string_view& column : columns) {
            column = TakeWord(line);
            if (column.empty() && BeginsWithDigit(Next())) {  // wrapped
                line = m_Lines[++m_At];
                column = TakeWord(line);
            }
        }
        if (!isVerify && !columns[AMOUNT].empty()) {
            m_Builder.Gigabytes(page == 0x02, columns[AMOUNT]);
        }
        if (const std::optional<std::int64_t> errors = ReadNumber(columns[COLUMNS - 1])) {
            m_Builder.Health().TakeFigure(HealthFigure::MEDIA_ERRORS, *errors, FigureSource::SCSI_LOG_PAGE,
                                          page);
        }
    }

    void ReadSelfTests(const SelfTestLog& log) {
        std::vector<_SELF_TEST_OUTCOME> outcomes;
        bool isLog = false;
        const auto isTest = [&](std::string_view line) {
            return (log.m_Source == FigureSource::NVME_LOG && BeginsWithDigit(line)) ||
                   (BeginsWith(line, "#") && BeginsWithDigit(Trimmed(line.substr(1))));
        };
        const auto isHead = [](std::string_view line) {
            return BeginsWith(line, "Num") || Has(line, "elf-tests ");
        };
        // After an empty line only what is part of no other section.
        const auto isPart = [&](std::string_view line) {
            return isTest(line) || isHead(line) || (!Next().empty() && !BeginsWith(line, "SMART "));
        };
        while (auto row = TakeRow(isPart)) {
            isLog = isLog || isHead(*row);
            if (isLog && isTest(*row)) {
                row->remove_prefix(std::min(row->find_first_not_of("# "), row->size()));
                TakeWord(*row);
                row = Trimmed(*row);
                const std::size_t gap = std::min(row->find("  "), row->size());
                const std::string_view type = row->substr(0, gap);
                const _SELF_TEST_OUTCOME outcome = ToOutcome(type, Trimmed(row->substr(gap)));
                // A tab may be all that is between both.
                outcomes.push_back(outcome != SelfTestOutcome::NEITHER ? outcome : ToOutcome(type, type));
            }
        }
        if (isLog) {
            m_Builder.Health().TakeSelfTests(outcomes.data(), outcomes.size(), log.m_Source, log.m_Page);
        } else {
            m_Builder.Note("the self-test log cannot be read");
        }
    }

    const Lines& m_Lines;
    ReportBuilder m_Builder;
    std::size_t m_At = 0;
    bool m_LacksAttributes = false;  ///< they are announced, and no row is read
    bool m_LacksStatistics = false;  ///< likewise
    std::bitset<64> m_Given;         ///< rows of REPORT_FIGURES
};

/// Whether a line is the first of a report: "smartctl 7.1 2019-12-30 ...".
bool IsHeader(std::string_view line) {
    const auto version = After(line, "smartctl ");
    return version && BeginsWithDigit(*version);
}

/// Empty where nothing shows a report.
std::string WhyNoDrive(const Lines& lines) {
    std::string reason;
    for (const std::string_view line : lines) {
        if (const char* known = FindReason(line)) {
            return known;
        }
        if (BeginsWith(line, "/dev/") && Has(line, " -d ") && Has(line, " # ")) {
            return DEVICE_LIST;
        }
        if (reason.empty() && (BeginsWith(line, "=== START OF ") || IsHeader(line))) {
            reason = NO_IDENTITY;
        } else if (reason == NO_IDENTITY && Has(line, " failed: ")) {
            reason = "smartctl says: " + std::string(line);
        }
    }
    return reason;
}

}  // namespace

void ReadSmartctlText(std::string_view given, SmartctlResults& results) {
    const std::string plain = WithPlainBlanks(given);
    std::string_view text = plain;
    constexpr std::string_view IDENTITY = "=== START OF INFORMATION SECTION";
    std::uint64_t number = 0;
    std::uint64_t first = 1;
    bool hasIdentity = false;
    const bool isLastLineOpen = !text.empty() && text.back() != '\n';
    Lines lines;
    const auto finish = [&](bool mayBeCut) {
        if (TextReader::Identify(lines).IsKnown()) {
            results.m_Drives.push_back(TextReader(lines, mayBeCut).Read());
        } else if (const std::string reason = WhyNoDrive(lines); !reason.empty()) {
            results.m_Refusals.emplace_back(reason, first, 1);
        }
        lines.clear();
        first = number;
        hasIdentity = false;
    };
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        // A report may be indented with blanks, but not with tabs.
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        line = line.substr(0, line.find_last_not_of(" \t") + 1);
        ++number;
        if ((IsHeader(line) && !lines.empty()) || (hasIdentity && BeginsWith(line, IDENTITY))) {
            finish(false);
        }
        hasIdentity = hasIdentity || BeginsWith(line, IDENTITY);
        lines.push_back(line);
    }
    finish(isLastLineOpen);
}

}  // namespace PI
