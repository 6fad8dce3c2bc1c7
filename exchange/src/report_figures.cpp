// SPDX-License-Identifier: Apache-2.0
// Figures that reports name: path in JSON, label in text, meaning and the drive's page that it comes from.

#include "report_builder.h"

#include <iterator>
#include <limits>

namespace PI {

namespace {
constexpr auto ATA = DriveProtocol::ATA;
constexpr auto SCSI = DriveProtocol::SCSI;
constexpr auto NVME = DriveProtocol::NVME;
constexpr auto ANY = DriveProtocol::UNKNOWN;
constexpr auto ATA_LOG = FigureSource::ATA_LOG;
constexpr auto SCSI_PAGE = FigureSource::SCSI_LOG_PAGE;
constexpr auto NVME_LOG = FigureSource::NVME_LOG;
constexpr auto PROGRAM = FigureSource::PROGRAM;
constexpr std::uint32_t ENVIRONMENT = 0x10D;
}  // namespace

// Source: RELEASE_7_0 to 7_5 of smartmontools. A first row that is for any protocol gives what another row
// may give with its page; libpi takes the page then.
#define NVME_HEALTH(member) "nvme_smart_health_information_log." member
// clang-format off
const ReportFigure REPORT_FIGURES[] = {
    {ANY, "temperature.current", nullptr, HealthFigure::TEMPERATURE, PROGRAM, 0},
    {ANY, "temperature.lifetime_max", nullptr, HealthFigure::HIGHEST_TEMPERATURE, PROGRAM, 0},
    {ANY, "power_on_time.hours", nullptr, HealthFigure::POWER_ON_HOURS, PROGRAM, 0},
    {ANY, "power_cycle_count", nullptr, HealthFigure::POWER_CYCLES, PROGRAM, 0},
    {ANY, "endurance_used.current_percent", nullptr, HealthFigure::WEAR, PROGRAM, 0},
    {ANY, "temperature.op_limit_max", nullptr, HealthFigure::TEMPERATURE_LIMIT, PROGRAM, 0},
    {ATA, "temperature.limit_max", nullptr, HealthFigure::TEMPERATURE_LIMIT, PROGRAM, 1},  // where the one above is not given
    {ATA, nullptr, "Min/Max recommended Temperature:", HealthFigure::TEMPERATURE_LIMIT, PROGRAM, 0},
    {ATA, "ata_sct_status.temperature.current", "Current Temperature:", HealthFigure::TEMPERATURE, ATA_LOG, 0xE0},
    {ATA, "ata_sct_status.temperature.lifetime_max", "Lifetime    Min/Max Temperature:", HealthFigure::HIGHEST_TEMPERATURE, ATA_LOG, 0xE0},
    {ATA, "ata_sct_status.temperature.op_limit_max", "Specified Max Operating Temperature:", HealthFigure::TEMPERATURE_LIMIT, ATA_LOG, 0xE0},
    {ATA, "ata_smart_error_log.summary.count", "ATA Error Count:", HealthFigure::LOGGED_ERRORS, ATA_LOG, 0x01},
    {ATA, "ata_smart_error_log.extended.count", "Device Error Count:", HealthFigure::LOGGED_ERRORS, ATA_LOG, 0x03},
    {ATA, "ata_pending_defects_log.count", nullptr, HealthFigure::PENDING_SECTORS, ATA_LOG, 0x0C},
    {NVME, "spare_available.current_percent", nullptr, HealthFigure::SPARE, PROGRAM, 0},
    {NVME, "spare_available.threshold_percent", nullptr, HealthFigure::SPARE_THRESHOLD, PROGRAM, 0},
    {NVME, "smart_status.nvme.value", nullptr, HealthFigure::CRITICAL_WARNING, NVME_LOG, 0x02},
    {NVME, NVME_HEALTH("critical_warning"), "Critical Warning:", HealthFigure::CRITICAL_WARNING, NVME_LOG, 0x02},
    {NVME, NVME_HEALTH("temperature"), "Temperature:", HealthFigure::TEMPERATURE, NVME_LOG, 0x02},
    {NVME, NVME_HEALTH("available_spare"), "Available Spare:", HealthFigure::SPARE, NVME_LOG, 0x02},
    {NVME, NVME_HEALTH("available_spare_threshold"), "Available Spare Threshold:", HealthFigure::SPARE_THRESHOLD, NVME_LOG, 0x02},
    {NVME, NVME_HEALTH("percentage_used"), "Percentage Used:", HealthFigure::WEAR, NVME_LOG, 0x02},
    {NVME, NVME_HEALTH("data_units_read"), "Data Units Read:", HealthFigure::BYTES_READ, NVME_LOG, 0x02},
    {NVME, NVME_HEALTH("data_units_written"), "Data Units Written:", HealthFigure::BYTES_WRITTEN, NVME_LOG, 0x02},
    {NVME, NVME_HEALTH("power_cycles"), "Power Cycles:", HealthFigure::POWER_CYCLES, NVME_LOG, 0x02},
    {NVME, NVME_HEALTH("power_on_hours"), "Power On Hours:", HealthFigure::POWER_ON_HOURS, NVME_LOG, 0x02},
    {NVME, NVME_HEALTH("unsafe_shutdowns"), "Unsafe Shutdowns:", HealthFigure::UNSAFE_SHUTDOWNS, NVME_LOG, 0x02},
    {NVME, NVME_HEALTH("media_errors"), "Media and Data Integrity Errors:", HealthFigure::MEDIA_ERRORS, NVME_LOG, 0x02},
    {NVME, NVME_HEALTH("num_err_log_entries"), "Error Information Log Entries:", HealthFigure::LOGGED_ERRORS, NVME_LOG, 0x02},
    {NVME, "nvme_composite_temperature_threshold.warning", nullptr, HealthFigure::TEMPERATURE_LIMIT, FigureSource::NVME_IDENTIFY, 0},
    {NVME, "nvme_composite_temperature_threshold.critical", nullptr, HealthFigure::CRITICAL_TEMPERATURE, FigureSource::NVME_IDENTIFY, 0},
    {NVME, "temperature.op_limit_max", "Warning  Comp. Temp. Threshold:", HealthFigure::TEMPERATURE_LIMIT, FigureSource::NVME_IDENTIFY, 0},
    {NVME, "temperature.critical_limit_max", "Critical Comp. Temp. Threshold:", HealthFigure::CRITICAL_TEMPERATURE, FigureSource::NVME_IDENTIFY, 0},
    {SCSI, "temperature.current", "Current Drive Temperature:", HealthFigure::TEMPERATURE, SCSI_PAGE, 0x0D},
    {SCSI, "temperature.drive_trip", "Drive Trip Temperature:", HealthFigure::TEMPERATURE_LIMIT, SCSI_PAGE, 0x0D},
    {SCSI, "scsi_temperature.drive_trip", nullptr, HealthFigure::TEMPERATURE_LIMIT, SCSI_PAGE, 0x0D},
    {SCSI, "scsi_environmental_reports.temperature_1.current", "Current temperature =", HealthFigure::TEMPERATURE, SCSI_PAGE, ENVIRONMENT},
    {SCSI, "scsi_environmental_reports.temperature_1.lifetime_maximum", "Lifetime maximum temperature =", HealthFigure::HIGHEST_TEMPERATURE, SCSI_PAGE, ENVIRONMENT},
    {SCSI, "scsi_percentage_used_endurance_indicator", "Percentage used endurance indicator:", HealthFigure::WEAR, SCSI_PAGE, 0x11},
    {SCSI, nullptr, "SS Media used endurance indicator:", HealthFigure::WEAR, SCSI_PAGE, 0x11},
    {SCSI, "scsi_grown_defect_list", "Elements in grown defect list:", HealthFigure::REALLOCATED_SECTORS, FigureSource::SCSI_DEFECT_LIST, 0},
    {SCSI, "scsi_pending_defects.count", "Pending defect count:", HealthFigure::PENDING_SECTORS, SCSI_PAGE, 0x115},
    {SCSI, "power_on_time.hours", "Accumulated power on time, hours:minutes", HealthFigure::POWER_ON_HOURS, SCSI_PAGE, 0x15},
    {SCSI, nullptr, "number of hours powered up =", HealthFigure::POWER_ON_HOURS, SCSI_PAGE, 0x15},
    {SCSI, "scsi_error_counter_log.read.total_uncorrected_errors", nullptr, HealthFigure::MEDIA_ERRORS, SCSI_PAGE, 0x03},
    {SCSI, "scsi_error_counter_log.write.total_uncorrected_errors", nullptr, HealthFigure::MEDIA_ERRORS, SCSI_PAGE, 0x02},
    {SCSI, "scsi_error_counter_log.verify.total_uncorrected_errors", nullptr, HealthFigure::MEDIA_ERRORS, SCSI_PAGE, 0x05},
};
// clang-format on
#undef NVME_HEALTH
const std::size_t REPORT_FIGURE_COUNT = std::size(REPORT_FIGURES);

void ReportFigure::Give(std::int64_t value, ReportBuilder& builder) const {
    constexpr std::int64_t DATA_UNIT = 512000;  // a thousand blocks of 512 bytes, whatever the block size
    constexpr std::int64_t NO_LIMIT = 127;      // the highest of a signed byte
    constexpr std::int64_t MOST = std::numeric_limits<std::int64_t>::max();
    const bool isAmount = m_Figure == HealthFigure::BYTES_READ || m_Figure == HealthFigure::BYTES_WRITTEN;
    const bool isLimit =
        m_Figure == HealthFigure::TEMPERATURE_LIMIT || m_Figure == HealthFigure::CRITICAL_TEMPERATURE;
    const bool isSCSITemperature =
        m_Figure == HealthFigure::TEMPERATURE && m_Number != ENVIRONMENT && builder.Protocol() == SCSI;
    if ((value == 0 && (isAmount || isLimit || isSCSITemperature)) || (value == NO_LIMIT && isLimit)) {
        return;  // stands for none
    }
    if (isAmount) {
        value = value > MOST / DATA_UNIT ? MOST : value * DATA_UNIT;
    }
    builder.Health().TakeFigure(m_Figure, value, m_Source, m_Number);
}

}  // namespace PI
