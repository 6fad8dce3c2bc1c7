// SPDX-License-Identifier: Apache-2.0
/// @file
/// How a drive is: the pages that drives hand out in, figures with their source and a summary out.
///
/// One class answers for SATA, SAS and NVMe drives. A figure is known, unknown or doubtful, and says why;
/// what a drive does not tell is never 0.
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
/// Command set that a drive is asked with.
enum _DRIVE_PROTOCOL : std::int32_t {
    UNKNOWN = 0,  ///< not known
    ATA = 1,      ///< SATA and parallel ATA drives, also if translated to SCSI
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
/// What is known about a drive. More may follow.
enum _HEALTH_FIGURE : std::int32_t {
    WEAR = 1,                    ///< percent of its life that a solid-state drive has used; may pass 100
    SPARE = 2,                   ///< percent of the reserve blocks that are left
    SPARE_THRESHOLD = 3,         ///< percent of the reserve below which the drive warns
    POWER_ON_HOURS = 4,          ///< hours
    BYTES_WRITTEN = 5,           ///< bytes that hosts wrote
    BYTES_READ = 6,              ///< bytes that hosts read
    RATED_TERABYTES = 7,         ///< terabytes (10^12 bytes) that may be written: a floor, not an end
    TEMPERATURE = 8,             ///< degrees Celsius, now
    HIGHEST_TEMPERATURE = 9,     ///< degrees Celsius, of the drive's life
    TEMPERATURE_LIMIT = 10,      ///< degrees Celsius, highest that the maker specifies, or where it warns
    CRITICAL_TEMPERATURE = 11,   ///< degrees Celsius, above which the drive protects itself
    REALLOCATED_SECTORS = 12,    ///< sectors, on solid-state drives blocks, replaced by spare ones
    PENDING_SECTORS = 13,        ///< sectors that could not be read and wait to be written again
    UNCORRECTABLE_SECTORS = 14,  ///< sectors found unreadable by the drive's own scans
    MEDIA_ERRORS = 15,           ///< errors that the drive could not correct and reported
    INTERFACE_ERRORS = 16,       ///< damaged transfers between drive and host
    LOGGED_ERRORS = 17,          ///< entries ever made in the drive's error log
    ATTRIBUTES_BELOW_THRESHOLD = 18,  ///< SMART attributes at or below their thresholds now
    ATTRIBUTES_ONCE_BELOW = 19,       ///< SMART attributes that were, temperatures left out
    FAILED_SELF_TESTS = 20,           ///< self-tests failed since the last one that passed
    VERDICT = 21,                     ///< the drive's own: 0 passed, 1 failing, 2 a warning
    CRITICAL_WARNING = 22,            ///< bits of the NVMe health log's first byte
    POWER_CYCLES = 23,                ///< times switched on
    UNSAFE_SHUTDOWNS = 24,            ///< times that power went without notice
};
}  // namespace HealthFigure
using HealthFigure::_HEALTH_FIGURE;

namespace FigureState {
/// How far a figure can be relied on.
enum _FIGURE_STATE : std::int32_t {
    UNKNOWN = 0,   ///< there is no value
    KNOWN = 1,     ///< the value is the drive's
    DOUBTFUL = 2,  ///< there is a value, and something speaks against it
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
/// Which way a figure goes while a drive ages.
enum _FIGURE_DIRECTION : std::int32_t {
    NONE = 0,  ///< neither
    UP = 1,    ///< it starts at 0 and grows
    DOWN = 2,  ///< it starts at its highest and falls
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
    DRIVE_VERDICT = 8,          ///< SMART RETURN STATUS, or what serves for it
    ENDURANCE_LIST = 9,         ///< this library's lists of ratings
    PROGRAM = 10,               ///< decoded by another program, which does not say from what
};
}  // namespace FigureSource
using FigureSource::_FIGURE_SOURCE;

namespace SelfTestOutcome {
/// How a self-test of a drive ended. Tests other than extended ones (long, of all the medium) count as short.
enum _SELF_TEST_OUTCOME : std::int32_t {
    NEITHER = 0,          ///< aborted, interrupted or still running
    SHORT_PASSED = 1,     ///< completed without error
    SHORT_FAILED = 2,     ///< completed with an error, or could not complete for one
    EXTENDED_PASSED = 3,  ///< as SHORT_PASSED
    EXTENDED_FAILED = 4,  ///< as SHORT_FAILED
};
}  // namespace SelfTestOutcome
using SelfTestOutcome::_SELF_TEST_OUTCOME;

namespace DriveState {
/// What to do about a drive, from the best to the worst after UNKNOWN.
enum _DRIVE_STATE : std::int32_t {
    UNKNOWN = 0,  ///< nothing that was read tells
    GOOD = 1,     ///< nothing to do
    LOOK = 2,     ///< look at it: something is out of the ordinary
    REPLACE = 3,  ///< replace it: what was read says that it will not last
    FAILED = 4,   ///< failed: the drive says so itself, or no longer takes data
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
    std::int64_t GetValue() const noexcept;           ///< in GetUnit(); 0 where HasValue() is false
    _FIGURE_UNIT GetUnit() const noexcept;            ///< the same for every figure of a kind
    _FIGURE_DIRECTION GetDirection() const noexcept;  ///< the same for every figure of a kind
    _FIGURE_SOURCE GetSource() const noexcept;  ///< where GetValue() comes from; NONE where there is none
    std::uint32_t GetSourceNumber() const noexcept;  ///< page or attribute, see _FIGURE_SOURCE; 0 where none

    /// For people: what the value comes from; or why there is none; or what speaks against it, with the
    /// sources that differ and what each says. One line without a full stop, in English.
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

/// Why a drive is in its state. A value.
class PI_API CHealthReason {
public:
    /// A reason that rests on a figure.
    CHealthReason(_DRIVE_STATE state, const CHealthFigure& figure, std::uint32_t detail = 0) noexcept;

    _DRIVE_STATE GetState() const noexcept;           ///< LOOK, REPLACE or FAILED; GOOD and UNKNOWN as well
    const CHealthFigure& GetFigure() const noexcept;  ///< what it rests on; valid as long as the reason

    /// For people, such as "1040 reallocated sectors". One line without a full stop, in English.
    /// @throws std::bad_alloc if allocation fails
    std::string GetText() const;

private:
    CHealthFigure m_Figure;
    _DRIVE_STATE m_State;
    std::uint32_t m_Detail;
    [[maybe_unused]] std::uint64_t m_Reserved[2] = {};
};

/// What is known of one drive's health.
///
/// Made from what names the drive, then fed with what it says: pages as it hands them out, and figures that
/// another program has decoded, in any order and any part of them. A second page of a kind replaces the
/// first. The result does not depend on the order in which different pages come.
///
/// A value: copies are deep. The caller serialises changes; any number of threads may read at once.
class PI_API CDriveHealth {
public:
    /// @param model as the drive prints it, such as "INTEL SSDSC2BB480G7" or "Micron_5300_MTFDDAK960TDS"; for
    ///              SCSI the product, with or without the vendor in front of it. What exceeds 127 bytes is
    ///              not looked at.
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

    /// @name What the drive is, where known
    /// @{

    /// Capacity in bytes; 0 when unknown.
    void SetCapacity(std::uint64_t bytes) noexcept;
    /// Size of a logical block in bytes, 512 where it is not set: ATA statistics count in blocks.
    void SetBlockSize(std::uint32_t bytes) noexcept;
    /// Whether it is a rotating disk (PropertyValue::HDD) or a solid-state drive (PropertyValue::SSD). Where
    /// it is not set, NVMe drives and listed models are solid-state drives, and so is what reports wear.
    void SetMedium(int medium) noexcept;
    /// @}

    /// @name What the drive says
    /// @{

    /// Reads a page.
    ///
    /// Bytes after the end of a page are passed over. Refused, with nothing changed, is a page that is too
    /// short, whose lengths or checksum contradict it, or that is of another kind than said.
    /// @param bytes readable up to length; may be null when length is 0
    /// @return null when the page was accepted; otherwise why not, a text that lives as long as the library
    const char* Take(_HEALTH_PAGE page, const void* bytes, std::size_t length) noexcept;

    /// The drive's own verdict: SMART RETURN STATUS of ATA drives. SCSI and NVMe drives tell it in log pages;
    /// what REQUEST SENSE says of a SCSI drive whose page 2Fh holds no code belongs here as well.
    void TakeVerdict(bool passed) noexcept;

    /// Length of the grown defect list of a SCSI disk.
    void TakeGrownDefects(std::uint64_t count) noexcept;
    /// @}

    /// @name What another program has decoded
    /// @{

    /// A figure. A second one from the same source replaces the first. Attributes below their thresholds are
    /// counted from the attributes alone.
    ///
    /// @param value  in the unit of the figure; what cannot be such a figure makes it unknown
    /// @param source PROGRAM, where the program does not say
    /// @param number page or attribute, as _FIGURE_SOURCE says
    void TakeFigure(_HEALTH_FIGURE figure, std::int64_t value, _FIGURE_SOURCE source = FigureSource::PROGRAM,
                    std::uint32_t number = 0) noexcept;

    /// A value of ATA device statistics.
    /// @param page   of log 04h
    /// @param offset within the page, in bytes; statistics that the library does not read are passed over
    /// @param value  as the drive gives it, in its own unit
    void TakeStatistic(std::uint32_t page, std::uint32_t offset, std::int64_t value) noexcept;

    /// A log of self-tests, the newest first: it gives FAILED_SELF_TESTS. A test that passed makes up for
    /// older ones that failed, a short one for short ones only.
    ///
    /// @param outcomes readable up to count; may be null when count is 0: no test was ever made
    /// @param number   page, as _FIGURE_SOURCE says
    void TakeSelfTests(const _SELF_TEST_OUTCOME* outcomes, std::size_t count, _FIGURE_SOURCE source,
                       std::uint32_t number) noexcept;

    /// Begins a table of SMART attributes: forgets earlier ones, also those of a page.
    void ClearAttributes() noexcept;

    /// A SMART attribute. Only the first 30 are used.
    ///
    /// @param name      that the program gives it, such as "Wear_Leveling_Count"; null or empty when it gives
    ///                  none. It tells what the attribute means on this model.
    /// @param flags     as in the SMART data page; bit 0: at its threshold a failure is near
    /// @param current   normalised value, -1 when not given
    /// @param worst     lowest normalised value so far, -1 when not given
    /// @param threshold -1 when not given
    /// @param raw       up to 56 bits, lowest byte first on the page
    /// @return whether it is used
    bool TakeAttribute(std::uint8_t id, const char* name, std::uint16_t flags, int current, int worst,
                       int threshold, std::uint64_t raw) noexcept;
    /// @}

    /// @name How the drive is
    /// @{

    /// A figure from everything read so far. Never throws; allocates nothing.
    CHealthFigure GetFigure(_HEALTH_FIGURE figure) const noexcept;

    /// Every figure that the library knows of, unknown ones included, in the order of their numbers.
    /// @throws std::bad_alloc if allocation fails
    std::vector<CHealthFigure> GetFigures() const;

    /// What to do about the drive. Allocates nothing.
    _DRIVE_STATE GetState() const noexcept;

    /// Why, the weightiest first. One reason is there also when the state is good or unknown.
    /// @throws std::bad_alloc if allocation fails
    std::vector<CHealthReason> GetReasons() const;
    /// @}

private:
    struct CFacts;
    std::unique_ptr<CFacts> m_Facts;
};

/// Name of a figure, such as "WEAR"; empty for a number that is none. The text lives as long as the library.
PI_API const char* HealthFigureToString(_HEALTH_FIGURE figure) noexcept;

/// Name of a state for people, such as "look at it"; "unknown" for a number that is none. The text lives as
/// long as the library.
PI_API const char* DriveStateToString(_DRIVE_STATE state) noexcept;

/// @}

}  // namespace PI

#include <pi/vocabulary/restore_macros.h>
