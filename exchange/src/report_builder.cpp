// SPDX-License-Identifier: Apache-2.0

#include "report_builder.h"

#include <pi/vocabulary.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace PI {

namespace {

struct StatusBit {
    int m_Bit;
    const char* m_Meaning;
};
// Manual of smartctl, "EXIT STATUS"; what of bits 4 and 5 its code does.
constexpr StatusBit STATUS_BITS[] = {
    {0, "its command line is wrong"},
    {1, "the device could not be opened or identified, or is in a low-power mode"},
    {2, "a command to the drive failed, or a checksum of its data is wrong"},
    {3, "the drive's verdict is that it fails"},
    {4, "an attribute of the pre-fail kind is at its threshold"},
    {5, "an attribute is or was at its threshold"},
    {6, "the drive's error log has entries"},
    {7, "the drive's self-test log has failures"},
};

struct StatisticName {
    std::string_view m_Name;
    int m_Page;
    int m_Offset;
};
// ACS-4 9.5, in smartctl's words.
constexpr StatisticName STATISTIC_NAMES[] = {
    {"Lifetime Power-On Resets", 1, 0x08},
    {"Power-on Hours", 1, 0x10},
    {"Logical Sectors Written", 1, 0x18},
    {"Logical Sectors Read", 1, 0x28},
    {"Pending Error Count", 1, 0x40},
    {"Number of Reallocated Logical Sectors", 3, 0x20},
    {"Number of Reported Uncorrectable Errors", 4, 0x08},
    {"Current Temperature", 5, 0x08},
    {"Highest Temperature", 5, 0x20},
    {"Specified Maximum Operating Temperature", 5, 0x58},
    {"Number of Interface CRC Errors", 6, 0x18},
    {"Percentage Used Endurance Indicator", 7, 0x08},
};

/// Digits of an amount; false when there is anything else but separators.
bool ReadDigits(std::string_view text, std::uint64_t& number) {
    number = 0;
    bool hasDigit = false;
    for (const char character : text) {
        if (character >= '0' && character <= '9') {
            if (number > (std::numeric_limits<std::uint64_t>::max() - 9) / 10) {
                return false;
            }
            number = number * 10 + static_cast<unsigned>(character - '0');
            hasDigit = true;
        } else if (character != ',' && character != '.' && character != ' ') {
            return false;
        }
    }
    return hasDigit;
}

}  // namespace

ReportBuilder::ReportBuilder(ReportIdentity identity) {
    identity.Complete();
    CDriveHealth health(identity.m_Protocol, identity.m_Model);
    health.SetCapacity(identity.m_Capacity);
    health.SetBlockSize(identity.m_BlockSize);
    m_Facts = std::make_unique<CDriveReport::CFacts>(
        CDriveReport::CFacts{std::move(identity), std::move(health), {}});
    if (*m_Facts->m_Identity.m_VolumeKind != '\0') {
        Note(std::string("this is no drive but a ") + m_Facts->m_Identity.m_VolumeKind);
    }
}

void ReportBuilder::NoteExitStatus(int status) {
    for (const StatusBit& bit : STATUS_BITS) {
        if ((status >> bit.m_Bit & 1) != 0) {
            Note("exit status of smartctl: " + std::string(bit.m_Meaning));
        }
    }
    constexpr int FAILING = 1 << 3;
    if ((status & FAILING) != 0 && !Health().GetFigure(HealthFigure::VERDICT).HasValue()) {
        Verdict(false, 0, 0);
    }
    constexpr int SELF_TESTS_FAILED = 1 << 7;
    if ((status & SELF_TESTS_FAILED) != 0 &&
        !Health().GetFigure(HealthFigure::FAILED_SELF_TESTS).HasValue()) {
        Health().TakeFigure(HealthFigure::FAILED_SELF_TESTS, 1);  // at least
    }
}

void ReportBuilder::Verdict(bool passed, int sense, int qualifier) {
    constexpr std::int64_t PASSED = 0;
    constexpr std::int64_t FAILING = 1;
    constexpr std::int64_t WARNING = 2;
    constexpr int ASC_WARNING = 0x0B;
    constexpr int ASC_FAILURE_PREDICTED = 0x5D;
    constexpr int ASCQ_FALSE_ALARM = 0xFF;
    constexpr std::uint32_t INFORMATIONAL_EXCEPTIONS = 0x2F;
    const bool isTest = sense == ASC_FAILURE_PREDICTED && qualifier == ASCQ_FALSE_ALARM;
    const std::int64_t verdict = sense == ASC_WARNING ? WARNING : passed || isTest ? PASSED : FAILING;
    switch (Protocol()) {
        case DriveProtocol::ATA: Health().TakeVerdict(passed); break;
        case DriveProtocol::SCSI:
            Health().TakeFigure(HealthFigure::VERDICT, verdict, FigureSource::SCSI_LOG_PAGE,
                                INFORMATIONAL_EXCEPTIONS);
            break;
        default: Health().TakeFigure(HealthFigure::VERDICT, verdict); break;
    }
}

void ReportBuilder::Attribute(int id, const std::string& name, int flags, int current, int worst,
                              int threshold, std::optional<std::uint64_t> raw) {
    constexpr std::uint64_t MOST = (std::uint64_t{1} << 56) - 1;
    constexpr int SPIN_UP_TIME = 3;
    constexpr int SEEK_ERRORS = 7;
    if (!raw || *raw > MOST) {
        Note("attribute " + std::to_string(id) + " has no raw value and is passed over");
    } else if (id < 0 || id > std::numeric_limits<std::uint8_t>::max() ||
               !Health().TakeAttribute(static_cast<std::uint8_t>(id), name.c_str(),
                                       static_cast<std::uint16_t>(flags), current, worst, threshold, *raw)) {
        Note("attribute " + std::to_string(id) + " is not read: its number is none, or 30 are read already");
    }
    m_HasSpindle = m_HasSpindle || ((id == SPIN_UP_TIME || id == SEEK_ERRORS) && raw.value_or(0) != 0);
}

void ReportBuilder::Statistic(int page, int offset, std::string_view name, std::int64_t value) {
    if (offset != 0) {
        Health().TakeStatistic(static_cast<std::uint32_t>(page), static_cast<std::uint32_t>(offset), value);
        return;
    }
    for (const StatisticName& row : STATISTIC_NAMES) {
        if (row.m_Page == page && row.m_Name == name) {
            Statistic(page, row.m_Offset, name, value);
        }
    }
}

void ReportBuilder::Gigabytes(bool isWritten, std::string_view text) {
    constexpr std::uint32_t WRITE_ERRORS = 0x02;
    constexpr std::uint32_t READ_ERRORS = 0x03;
    constexpr std::uint64_t MOST = std::numeric_limits<std::int64_t>::max();
    // Three digits after the last separator, which depends on the language of smartctl's user.
    const std::size_t separator = text.find_last_of(".,");
    const std::size_t decimals = separator == std::string_view::npos ? 0 : text.size() - separator - 1;
    std::uint64_t number = 0;
    std::uint64_t unit = 1'000'000'000;
    for (std::size_t i = 0; i < std::min<std::size_t>(decimals, 9); ++i) {
        unit /= 10;
    }
    if (decimals > 9 || !ReadDigits(text, number)) {
        Note("an amount of \"" + std::string(text) + "\" gigabytes is no number");
        return;
    }
    Health().TakeFigure(isWritten ? HealthFigure::BYTES_WRITTEN : HealthFigure::BYTES_READ,
                        static_cast<std::int64_t>(number > MOST / unit ? MOST : number * unit),
                        FigureSource::SCSI_LOG_PAGE, isWritten ? WRITE_ERRORS : READ_ERRORS);
}

CDriveReport ReportBuilder::Take() {
    ReportIdentity& identity = m_Facts->m_Identity;
    if (identity.m_Medium == 0 && identity.m_Protocol == DriveProtocol::SCSI &&
        Health().GetFigure(HealthFigure::WEAR).HasValue()) {
        identity.m_Medium = PropertyValue::SSD;
    } else if (identity.m_Medium == 0 && identity.m_Protocol == DriveProtocol::ATA && m_HasSpindle) {
        identity.ShowDisk();
    }
    if (identity.m_Medium != 0) {
        Health().SetMedium(identity.m_Medium);
    }
    return CDriveReport(std::move(m_Facts));
}

_SELF_TEST_OUTCOME ToOutcome(std::string_view type, std::string_view status) {
    const auto has = [](std::string_view text, std::string_view part) {
        return text.find(part) != std::string_view::npos;
    };
    const bool extended = has(type, "Extended") || has(type, "long");
    if (has(status, "without error")) {
        return extended ? SelfTestOutcome::EXTENDED_PASSED : SelfTestOutcome::SHORT_PASSED;
    }
    // A SCSI drive's "Completed" passed; "Completed: ..." and "Completed, segment failed" did not.
    if (has(status, "ail") || has(status, "Completed:") || has(status, "nknown error") ||
        has(status, "Fatal")) {
        return extended ? SelfTestOutcome::EXTENDED_FAILED : SelfTestOutcome::SHORT_FAILED;
    }
    if (status.substr(0, 9) == "Completed") {
        return extended ? SelfTestOutcome::EXTENDED_PASSED : SelfTestOutcome::SHORT_PASSED;
    }
    return SelfTestOutcome::NEITHER;
}

}  // namespace PI
