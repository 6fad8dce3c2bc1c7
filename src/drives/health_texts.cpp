// SPDX-License-Identifier: Apache-2.0
// What figures and reasons say to people.

#include <algorithm>
#include <iterator>

#include "drives/health_figures.h"
#include "drives/health_state.h"

namespace PI {

namespace {

/// Two digits or more.
std::string Hexadecimal(std::uint32_t number) {
    std::string text = "h";
    do {
        text.insert(text.begin(), "0123456789ABCDEF"[number & 0xF]);
        number >>= 4;
    } while (number != 0 || text.size() < 3);
    return text;
}

/// A SCSI log page, with its subpage where it has one.
std::string PageText(std::uint32_t number) {
    const std::uint32_t subpage = number >> 8;
    std::string text = "SCSI log page " + Hexadecimal(number & 0xFF);
    if (subpage != 0) {
        text += "/" + Hexadecimal(subpage);
    }
    return text;
}

/// 0 means all of them.
std::string AttributeText(std::uint32_t number) {
    if (number == 0) {
        return "SMART attributes";
    }
    return "SMART attribute " + std::to_string(number);
}

std::string SourceText(std::int32_t source, std::uint32_t number) {
    switch (source) {
        case FigureSource::ATA_DEVICE_STATISTICS: return "device statistics page " + std::to_string(number);
        case FigureSource::ATA_LOG: return "ATA log " + Hexadecimal(number);
        case FigureSource::ATA_ATTRIBUTE: return AttributeText(number);
        case FigureSource::NVME_LOG: return "NVMe log " + Hexadecimal(number);
        case FigureSource::NVME_IDENTIFY: return "NVMe identify controller data";
        case FigureSource::SCSI_LOG_PAGE: return PageText(number);
        case FigureSource::SCSI_DEFECT_LIST: return "grown defect list";
        case FigureSource::DRIVE_VERDICT: return "SMART verdict of the drive";
        case FigureSource::ENDURANCE_LIST: return "endurance list";
        case FigureSource::PROGRAM: return "decoded by another program";
        default: return "not looked at";
    }
}

const char* UnitText(_FIGURE_UNIT unit) {
    switch (unit) {
        case FigureUnit::PERCENT: return " percent";
        case FigureUnit::HOURS: return " hours";
        case FigureUnit::BYTES: return " bytes";
        case FigureUnit::TERABYTES: return " TB";
        case FigureUnit::CELSIUS: return " degrees Celsius";
        default: return "";
    }
}

// In the order of the figures: what one of them is called in a sentence, and several.
constexpr const char* NOUNS[][2] = {
    {"percent worn", "percent worn"},
    {"percent of the spare blocks left", "percent of the spare blocks left"},
    {"percent is the spare's threshold", "percent is the spare's threshold"},
    {"power-on hour", "power-on hours"},
    {"byte written", "bytes written"},
    {"byte read", "bytes read"},
    {"TB may be written", "TB may be written"},
    {"degree Celsius", "degrees Celsius"},
    {"degree Celsius at most so far", "degrees Celsius at most so far"},
    {"degree Celsius is the limit", "degrees Celsius is the limit"},
    {"degree Celsius is critical", "degrees Celsius is critical"},
    {"reallocated sector", "reallocated sectors"},
    {"pending sector", "pending sectors"},
    {"uncorrectable sector", "uncorrectable sectors"},
    {"uncorrected error", "uncorrected errors"},
    {"damaged transfer", "damaged transfers"},
    {"logged error", "logged errors"},
    {"SMART attribute below its threshold", "SMART attributes below their thresholds"},
    {"SMART attribute once was below its threshold", "SMART attributes once were below their thresholds"},
    {"failed self-test", "failed self-tests"},
    {"is the verdict", "is the verdict"},
    {"is the warning", "is the warning"},
    {"power cycle", "power cycles"},
    {"unsafe shutdown", "unsafe shutdowns"},
};
static_assert(std::size(NOUNS) == LAST_FIGURE);

std::string Counted(const CHealthFigure& figure) {
    if (FindKind(figure.GetFigure()) == nullptr) {
        return std::to_string(figure.GetValue());
    }
    return std::to_string(figure.GetValue()) + " " +
           NOUNS[figure.GetFigure() - FIRST_FIGURE][figure.GetValue() != 1];
}

}  // namespace

std::string CHealthFigure::GetText() const {
    const auto value = [this](std::int64_t number) -> std::string {
        if (number == BEYOND_COUNTING) {
            return "a number beyond 63 bits";
        }
        return std::to_string(number) + UnitText(GetUnit());
    };
    const auto said = [&](std::size_t i) {
        const CReading& other = m_Others[i];
        return SourceText(other.m_Source, other.m_Number) + " says " + value(other.m_Value);
    };
    if (m_Reason == static_cast<std::int32_t>(FigureReason::NOT_REPORTED)) {
        return "not reported";  // the most frequent one
    }
    std::string source = SourceText(m_Source, m_Number);
    switch (static_cast<FigureReason>(m_Reason)) {
        case FigureReason::NONE:
        case FigureReason::NOT_REPORTED: break;
        case FigureReason::IMPOSSIBLE: return said(0) + ", which cannot be";
        case FigureReason::NO_SENSOR: return "the drive has no sensor: it never reported more than 0";
        case FigureReason::MAYBE_NO_SENSOR: return said(0) + ", as drives without a sensor do";
        case FigureReason::ROTATING: return "rotating disk";
        case FigureReason::NOT_LISTED: return "not in the endurance list";
        case FigureReason::RATED_IN_CYCLES:
            return "the list rates this family by " + std::to_string(m_Others[0].m_Value) + " erase cycles";
        case FigureReason::RATING_CONTRADICTED:
            return "published ratings differ: " + value(m_Value) + " and " + value(m_Others[0].m_Value);
        case FigureReason::SOURCES_DIFFER: {
            std::string text = source + " says " + value(m_Value);
            for (std::size_t i = 0; i < std::min<std::size_t>(m_OtherCount, std::size(m_Others)); ++i) {
                text += ", " + said(i);
            }
            return text;
        }
        case FigureReason::MAYBE_INVALID: {
            std::string text = said(0) + ", which stands for more than 254 or for nothing";
            if (m_Value != m_Others[0].m_Value) {
                text += ", " + source + " says " + value(m_Value);
            }
            return text;
        }
        case FigureReason::WRITTEN_BUT_NEW:
            return source + " says " + value(m_Value) + ", but the drive was written " +
                   std::to_string(m_Others[0].m_Value) + " times over";
        case FigureReason::WEAK_RULE:
            return source + " says " + value(m_Value) +
                   ", but drives of this kind are known on which it does not tell";
        case FigureReason::PACKED_HOURS:
            return source + " says " + value(m_Value) + " and holds something else above its 24 low bits";
        case FigureReason::COUNTS_NO_FURTHER:
            return source + " says " + value(m_Value) + " and counts no further";
    }
    if (m_OtherCount == 0) {
        return source;
    }
    std::string text = "SMART attribute";  // those below their thresholds
    for (std::size_t i = 0; i < std::min<std::size_t>(m_OtherCount, std::size(m_Others)); ++i) {
        text += (i == 0 ? " " : ", ") + std::to_string(m_Others[i].m_Number);
    }
    return text + (m_OtherCount > std::size(m_Others) ? " and more" : "");
}

std::string CHealthReason::GetText() const {
    switch (static_cast<Statement>(m_Detail)) {
        case Statement::VALUE: break;
        case Statement::FAILING: return "the drive says that it is failing";
        case Statement::WARNING: return "the drive warns";
        case Statement::SPARE_LOW: return "the drive says that its spare blocks are below their threshold";
        case Statement::TOO_HOT:
            if (m_Figure.GetFigure() == HealthFigure::TEMPERATURE) {
                return "above its temperature limit: " + Counted(m_Figure);
            }
            return "the drive says that its temperature is out of bounds";
        case Statement::DEGRADED: return "the drive says that it is no longer reliable";
        case Statement::READ_ONLY: return "the drive no longer takes data: it is read-only";
        case Statement::NO_BACKUP: return "the drive says that data in its memory is lost when power fails";
        case Statement::MEMORY_REGION:
            return "the drive says that its persistent memory region is unreliable";
        case Statement::UNKNOWN_WARNING: return "the drive gives a warning that is not known";
        case Statement::ABOVE_CRITICAL: return "above its critical temperature: " + Counted(m_Figure);
        case Statement::PRE_FAILURE:
            return Counted(m_Figure) + ", which announces a failure (" + m_Figure.GetText() + ")";
        case Statement::DOUBTFUL: return "perhaps " + Counted(m_Figure) + ": " + m_Figure.GetText();
        case Statement::NOTHING_AGAINST: return "nothing that was read speaks against it";
        case Statement::NO_VERDICT: return "no verdict of the drive, and nothing that speaks against it";
    }
    return Counted(m_Figure);
}

}  // namespace PI
