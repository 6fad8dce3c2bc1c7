// SPDX-License-Identifier: Apache-2.0
/// @file
/// The health of a drive: pages as the drive returns them go in, figures with their sources and a summary
/// come out.
///
/// One class covers SATA, SAS and NVMe drives. A figure is known, unknown or doubtful, and says why; a figure
/// that the drive does not report is never 0.
#pragma once

#include <pi/types.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <pi/vocabulary/undefine_macros.h>

namespace PI {

/// @addtogroup health
/// @{

namespace DriveProtocol {
/// Command set of a drive.
enum _DRIVE_PROTOCOL : std::int32_t {
    UNKNOWN = 0,  ///< not known
    ATA = 1,      ///< SATA and parallel ATA drives, also through a SCSI translation layer
    SCSI = 2,     ///< SAS, Fibre Channel and parallel SCSI drives
    NVME = 3,     ///< NVMe drives
};
}  // namespace DriveProtocol
using DriveProtocol::_DRIVE_PROTOCOL;

namespace HealthPage {
/// Kind of a page that CDriveHealth::Take reads.
enum _HEALTH_PAGE : std::int32_t {
    ATA_SMART_DATA = 1,              ///< SMART READ DATA (B0h/D0h), 512 bytes
    ATA_SMART_THRESHOLDS = 2,        ///< SMART READ THRESHOLDS (B0h/D1h), 512 bytes
    ATA_DEVICE_STATISTICS = 3,       ///< one page of log 04h, 512 bytes: 1, 3, 4, 5, 6 or 7
    ATA_SELF_TEST_LOG = 4,           ///< log 06h, 512 bytes
    ATA_EXTENDED_SELF_TEST_LOG = 5,  ///< log 07h, the first 512 bytes or all of it
    NVME_HEALTH_LOG = 6,             ///< log 02h, 512 bytes
    NVME_SELF_TEST_LOG = 7,          ///< log 06h, 564 bytes
    NVME_ENDURANCE_GROUP_LOG = 8,    ///< log 09h, 512 bytes
    NVME_IDENTIFY_CONTROLLER = 9,    ///< IDENTIFY, controller data structure, 4096 bytes
    SCSI_LOG_PAGE = 10,  ///< what LOG SENSE returns for 02h, 03h, 05h, 0Dh, 0Dh/01h, 10h, 11h, 15h,
                         ///< 15h/01h or 2Fh, header included
};
}  // namespace HealthPage
using HealthPage::_HEALTH_PAGE;

namespace HealthFigure {
/// What a figure is about. Later releases may add more.
enum _HEALTH_FIGURE : std::int32_t {
    WEAR = 1,                    ///< percent of its life that a solid-state drive has used; may exceed 100
    SPARE = 2,                   ///< percent of the spare blocks that are left
    SPARE_THRESHOLD = 3,         ///< percent of the spare blocks below which the drive warns
    POWER_ON_HOURS = 4,          ///< hours
    BYTES_WRITTEN = 5,           ///< bytes written by hosts
    BYTES_READ = 6,              ///< bytes read by hosts
    RATED_TERABYTES = 7,         ///< terabytes (10^12 bytes) that may be written: a minimum, not a limit
    TEMPERATURE = 8,             ///< degrees Celsius, now
    HIGHEST_TEMPERATURE = 9,     ///< degrees Celsius, in the drive's life
    TEMPERATURE_LIMIT = 10,      ///< degrees Celsius, highest that is specified, or at which the drive warns
    CRITICAL_TEMPERATURE = 11,   ///< degrees Celsius, above which the drive protects itself
    REALLOCATED_SECTORS = 12,    ///< sectors, on solid-state drives blocks, replaced by spare ones
    PENDING_SECTORS = 13,        ///< sectors that could not be read and wait to be written again
    UNCORRECTABLE_SECTORS = 14,  ///< sectors found unreadable by the drive's own scans
    MEDIA_ERRORS = 15,           ///< errors that the drive could not correct and reported
    INTERFACE_ERRORS = 16,       ///< damaged transfers between drive and host
    LOGGED_ERRORS = 17,          ///< entries ever made in the drive's error log
    ATTRIBUTES_BELOW_THRESHOLD = 18,  ///< SMART attributes at or below their thresholds now
    ATTRIBUTES_ONCE_BELOW = 19,       ///< SMART attributes that once were, except temperatures
    FAILED_SELF_TESTS = 20,           ///< self-tests failed since the last one that passed
    VERDICT = 21,                     ///< the drive's own: 0 passed, 1 failing, 2 a warning
    CRITICAL_WARNING = 22,            ///< bits of the NVMe health log's first byte
    POWER_CYCLES = 23,                ///< times that the drive was switched on
    UNSAFE_SHUTDOWNS = 24,            ///< times that power was lost without notice
};
}  // namespace HealthFigure
using HealthFigure::_HEALTH_FIGURE;

namespace FigureState {
/// How reliable a figure is.
enum _FIGURE_STATE : std::int32_t {
    UNKNOWN = 0,   ///< there is no value
    KNOWN = 1,     ///< there is a value, and nothing contradicts it
    DOUBTFUL = 2,  ///< there is a value, and a reason to doubt it
};
}  // namespace FigureState
using FigureState::_FIGURE_STATE;

namespace FigureUnit {
/// Unit of a figure.
enum _FIGURE_UNIT : std::int32_t {
    COUNT = 0,      ///< how many
    PERCENT = 1,    ///< of 100
    HOURS = 2,      ///< hours
    BYTES = 3,      ///< bytes
    TERABYTES = 4,  ///< 10^12 bytes
    CELSIUS = 5,    ///< degrees Celsius
    FLAGS = 6,      ///< bits, or yes (1) and no (0)
};
}  // namespace FigureUnit
using FigureUnit::_FIGURE_UNIT;

namespace FigureDirection {
/// How a figure changes as a drive ages.
enum _FIGURE_DIRECTION : std::int32_t {
    NONE = 0,  ///< in neither direction
    UP = 1,    ///< it starts at 0 and grows
    DOWN = 2,  ///< it starts at its highest value and falls
};
}  // namespace FigureDirection
using FigureDirection::_FIGURE_DIRECTION;

namespace FigureSource {
/// What a figure was read from; CHealthFigure::GetSourceNumber says which page or attribute.
enum _FIGURE_SOURCE : std::int32_t {
    NONE = 0,                   ///< nothing
    ATA_DEVICE_STATISTICS = 1,  ///< log 04h; number: page
    ATA_LOG = 2,                ///< another ATA log; number: log address
    ATA_ATTRIBUTE = 3,          ///< SMART data page; number: attribute
    NVME_LOG = 4,               ///< number: log identifier
    NVME_IDENTIFY = 5,          ///< identify controller data
    SCSI_LOG_PAGE = 6,          ///< number: page, plus 256 times the subpage
    SCSI_DEFECT_LIST = 7,       ///< grown defects
    DRIVE_VERDICT = 8,          ///< SMART RETURN STATUS, or its equivalent
    ENDURANCE_LIST = 9,         ///< this library's lists of ratings
    PROGRAM = 10,               ///< decoded by another program that does not say from what
};
}  // namespace FigureSource
using FigureSource::_FIGURE_SOURCE;

namespace SelfTestOutcome {
/// How a self-test of a drive ended. All tests but extended ones (long, of the whole medium) count as short.
enum _SELF_TEST_OUTCOME : std::int32_t {
    NEITHER = 0,          ///< aborted, interrupted or still running
    SHORT_PASSED = 1,     ///< completed without error
    SHORT_FAILED = 2,     ///< completed with an error, or could not complete because of one
    EXTENDED_PASSED = 3,  ///< as SHORT_PASSED
    EXTENDED_FAILED = 4,  ///< as SHORT_FAILED
};
}  // namespace SelfTestOutcome
using SelfTestOutcome::_SELF_TEST_OUTCOME;

namespace DriveState {
/// What to do about a drive, from the best to the worst after UNKNOWN.
enum _DRIVE_STATE : std::int32_t {
    UNKNOWN = 0,  ///< nothing that was read allows a judgement
    GOOD = 1,     ///< nothing to do
    LOOK = 2,     ///< look at it: something is out of the ordinary
    REPLACE = 3,  ///< replace it: what was read says that it will not last
    FAILED = 4,   ///< failed: the drive says so itself, or no longer accepts data
};
}  // namespace DriveState
using DriveState::_DRIVE_STATE;

/// One figure of a drive. A value; any number of threads may read it.
class PI_API CHealthFigure {
public:
    /// An unknown figure.
    explicit CHealthFigure(_HEALTH_FIGURE figure = HealthFigure::WEAR) noexcept;

    _HEALTH_FIGURE GetFigure() const noexcept;        ///< which figure this is
    _FIGURE_STATE GetState() const noexcept;          ///< known, unknown or doubtful
    bool HasValue() const noexcept;                   ///< whether it is known or doubtful
    std::int64_t GetValue() const noexcept;           ///< in GetUnit(); 0 if HasValue() is false
    _FIGURE_UNIT GetUnit() const noexcept;            ///< the same for every figure of a kind
    _FIGURE_DIRECTION GetDirection() const noexcept;  ///< the same for every figure of a kind
    _FIGURE_SOURCE GetSource() const noexcept;        ///< where GetValue() comes from; NONE if there is none
    std::uint32_t GetSourceNumber() const noexcept;   ///< page or attribute, see _FIGURE_SOURCE; 0 if none

    /// For people: where the value comes from, or why there is none, or why it is doubtful, with the sources
    /// that differ and what each of them says. One line without a full stop, in English.
    /// @throws std::bad_alloc if allocation fails
    std::string GetText() const;

private:
    friend class CHealthFigureMaker;

    /// @cond
    // What another source says.
    struct CReading {
        std::int64_t m_Value;
        std::int32_t m_Source;
        std::uint32_t m_Number;
    };
    /// @endcond

    std::int64_t m_Value = 0;
    _HEALTH_FIGURE m_Figure;
    _FIGURE_STATE m_State = FigureState::UNKNOWN;
    _FIGURE_SOURCE m_Source = FigureSource::NONE;
    std::uint32_t m_Number = 0;
    std::int32_t m_Reason = 0;
    std::uint32_t m_OtherCount = 0;
    CReading m_Others[4] = {};
    [[maybe_unused]] std::uint64_t m_Reserved[4] = {};
};

/// Why a drive is in its state. A value; any number of threads may read it.
class PI_API CHealthReason {
public:
    /// A reason that is based on a figure.
    /// @param detail which of the library's sentences GetText() gives; 0 for one that states the figure alone
    CHealthReason(_DRIVE_STATE state, const CHealthFigure& figure, std::uint32_t detail = 0) noexcept;

    _DRIVE_STATE GetState() const noexcept;           ///< the state that it is a reason for
    const CHealthFigure& GetFigure() const noexcept;  ///< what it is based on; valid as long as the reason

    /// Compares reasons, also of different drives: the greater is more important. It depends on the state,
    /// then on the figure (judgement): what the drive reports about itself, lost data, sectors that were
    /// saved, what can be planned for, what is over or passes. Its numbers may change between releases.
    std::int32_t GetWeight() const noexcept;

    /// For people, such as "1040 reallocated sectors". One line without a full stop, in English.
    /// @throws std::bad_alloc if allocation fails
    std::string GetText() const;

private:
    CHealthFigure m_Figure;
    _DRIVE_STATE m_State;
    std::uint32_t m_Detail;
    [[maybe_unused]] std::uint64_t m_Reserved[2] = {};
};

/// What is known about the health of one drive.
///
/// It is constructed from the protocol and model of the drive and then given what the drive reports: pages as
/// the drive returns them, and figures that another program has decoded, as many as there are, in any order.
/// A second page of the same kind replaces the first. The order of different pages does not change the
/// result.
///
/// GetFigure, GetFigures, GetState and GetReasons decide again with each call; CHealthAssessment decides all
/// of them in one pass.
///
/// A value: copies are deep. The caller serialises changes; any number of threads may read at once.
class PI_API CDriveHealth {
public:
    /// @param model as the drive prints it, such as "INTEL SSDSC2BB480G7" or "Micron_5300_MTFDDAK960TDS"; for
    ///              SCSI the product, with or without the vendor in front of it. Only the first 127 bytes are
    ///              used.
    /// @throws std::bad_alloc if allocation fails
    CDriveHealth(_DRIVE_PROTOCOL protocol, const std::string& model);
    /// @{
    /// Copies throw std::bad_alloc if allocation fails. A moved-from object may only be assigned to or
    /// destroyed.
    CDriveHealth(const CDriveHealth& source);
    CDriveHealth(CDriveHealth&& source) noexcept;
    CDriveHealth& operator=(const CDriveHealth& source);
    CDriveHealth& operator=(CDriveHealth&& source) noexcept;
    /// @}
    ~CDriveHealth();

    /// @name What the drive is, as far as known
    /// @{

    /// Capacity in bytes; 0 when unknown. More bad sectors than it has are impossible.
    void SetCapacity(std::uint64_t bytes) noexcept;
    /// Size of a logical block in bytes, in which ATA statistics count; 512 if it is not set.
    void SetBlockSize(std::uint32_t bytes) noexcept;
    /// Whether it is a rotating disk (PropertyValue::HDD) or a solid-state drive (PropertyValue::SSD). If it
    /// is not set, or to another number, NVMe drives, listed models and drives that report wear are
    /// solid-state drives, and all others disks.
    void SetMedium(int medium) noexcept;
    /// @}

    /// @name What the drive reports
    /// @{

    /// Reads a page.
    ///
    /// Bytes after the end of a page are ignored. A page is refused, and nothing changes, if it is too short,
    /// if its lengths or checksum do not match its content, or if it is not of the kind given.
    /// @param bytes readable up to length; may be null when length is 0
    /// @return null when the page was accepted; otherwise why not, a text that lives as long as the library
    const char* Take(_HEALTH_PAGE page, const void* bytes, std::size_t length) noexcept;

    /// The drive's own verdict: SMART RETURN STATUS of ATA drives. SCSI and NVMe drives report it in log
    /// pages; for a SCSI drive whose page 2Fh holds no code, pass what REQUEST SENSE reports.
    void TakeVerdict(bool passed) noexcept;

    /// Length of the grown defect list of a SCSI disk.
    void TakeGrownDefects(std::uint64_t count) noexcept;
    /// @}

    /// @name What another program has decoded
    /// @{

    /// A figure. A second one from the same source replaces the first. The attributes below their
    /// thresholds are counted by the library, from the attributes alone.
    ///
    /// @param value  in the unit of the figure; an impossible value makes the figure unknown
    /// @param source PROGRAM if the program does not say
    /// @param number page or attribute, as _FIGURE_SOURCE says
    void TakeFigure(_HEALTH_FIGURE figure, std::int64_t value, _FIGURE_SOURCE source = FigureSource::PROGRAM,
                    std::uint32_t number = 0) noexcept;

    /// A value of ATA device statistics.
    /// @param page   of log 04h
    /// @param offset within the page, in bytes; statistics that the library does not use are ignored
    /// @param value  as the drive gives it, in its own unit
    void TakeStatistic(std::uint32_t page, std::uint32_t offset, std::int64_t value) noexcept;

    /// A log of self-tests, the newest first, from which FAILED_SELF_TESTS is counted. A test that passed
    /// cancels older ones that failed, a short one only short ones.
    ///
    /// @param outcomes readable up to count; may be null when count is 0: no test was ever made
    /// @param number   page, as _FIGURE_SOURCE says
    void TakeSelfTests(const _SELF_TEST_OUTCOME* outcomes, std::size_t count, _FIGURE_SOURCE source,
                       std::uint32_t number) noexcept;

    /// Begins a table of SMART attributes: drops earlier ones, including those of a page.
    void ClearAttributes() noexcept;

    /// A SMART attribute. Only the first 30 are used.
    ///
    /// @param name      that the program gives it, such as "Wear_Leveling_Count"; null or empty if it gives
    ///                  none. It helps to decide what the attribute means on this model.
    /// @param flags     as in the SMART data page; bit 0: reaching the threshold announces a failure
    /// @param current   normalised value, -1 when not given
    /// @param worst     lowest normalised value so far, -1 when not given
    /// @param threshold -1 when not given
    /// @param raw       up to 56 bits, lowest byte first on the page
    /// @return whether it is used
    bool TakeAttribute(std::uint8_t id, const char* name, std::uint16_t flags, int current, int worst,
                       int threshold, std::uint64_t raw) noexcept;
    /// @}

    /// @name The health of the drive
    /// @{

    /// A figure from everything read so far. Never throws; allocates nothing.
    CHealthFigure GetFigure(_HEALTH_FIGURE figure) const noexcept;

    /// Every figure that the library knows of, unknown ones included, in the order of their numbers.
    /// @throws std::bad_alloc if allocation fails
    std::vector<CHealthFigure> GetFigures() const;

    /// What to do about the drive. Allocates nothing.
    _DRIVE_STATE GetState() const noexcept;

    /// Why, the most important reason first, by CHealthReason::GetWeight. There is at
    /// least one, also when the state is good or unknown.
    /// @throws std::bad_alloc if allocation fails
    std::vector<CHealthReason> GetReasons() const;
    /// @}

private:
    friend class CHealthAssessment;
    struct CFacts;
    std::unique_ptr<CFacts> m_Facts;
};

/// Name of a figure, such as "WEAR"; empty for an unknown number. The text lives as long as the library.
PI_API const char* HealthFigureToString(_HEALTH_FIGURE figure) noexcept;

/// Name of a state for people, such as "look at it"; "unknown" for an unknown number. The text lives as long
/// as the library.
PI_API const char* DriveStateToString(_DRIVE_STATE state) noexcept;

/// @}

}  // namespace PI

#include <pi/vocabulary/restore_macros.h>
