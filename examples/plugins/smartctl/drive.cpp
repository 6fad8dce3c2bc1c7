// SPDX-License-Identifier: Apache-2.0

#include "drive.h"

#include <pi/drives.h>
#include <pi/plugin_helper.h>
#include <strings.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <vector>

#include "json.h"

namespace smartctl {
namespace {

namespace Value = PI::PropertyValue;
using nlohmann::json;
using PI::CPluginHelper;

// An NVMe drive counts what it writes in thousands of 512-byte blocks.
constexpr std::uint64_t NVME_DATA_UNIT = 512000;

/// The page that an ATA drive returned, rebuilt from smartctl's table of its attributes.
PI::_IDE_SMART_DATA RebuildSmartPage(const json& document) {
    PI::_IDE_SMART_DATA page{};
    const json* const table = Find(document, {"ata_smart_attributes", "table"});
    if (table == nullptr || !table->is_array()) {
        return page;
    }
    std::size_t slot = 0;
    for (const json& row : *table) {
        const auto id = FindNumber(row, {"id"}, UINT8_MAX);
        if (!id.has_value() || slot == std::size(page.m_Attributes)) {
            continue;
        }
        PI::_IDE_SMART_ATTRIBUTE& attribute = page.m_Attributes[slot++];
        attribute.m_ID = static_cast<std::uint8_t>(*id);
        attribute.m_Current = static_cast<std::uint8_t>(FindNumber(row, {"value"}, UINT8_MAX).value_or(0));
        attribute.m_Worst = static_cast<std::uint8_t>(FindNumber(row, {"worst"}, UINT8_MAX).value_or(0));
        std::uint64_t raw = FindNumber(row, {"raw", "value"}).value_or(0);
        for (std::uint8_t& byte : attribute.m_Raw) {
            byte = static_cast<std::uint8_t>(raw & 0xFFU);
            raw >>= 8U;
        }
    }
    return page;
}

void ReadSATASolidState(const json& document, Drive& drive) {
    drive.m_Medium = Value::SSD;
    PI::CSmartValues values(drive.m_Vendor, drive.m_Model);
    PI::_IDE_SMART_DATA page = RebuildSmartPage(document);
    if (!values.Evaluate(page)) {
        return;
    }
    drive.m_BytesWritten = values.m_BytesWritten;
    drive.m_PercentUsed = static_cast<std::uint64_t>(std::max(values.m_PercentUsed, 0));
    if (values.m_SpareIndicator >= 0) {
        drive.m_SparePercent = static_cast<std::uint64_t>(values.m_SpareIndicator);
    }
    if (values.m_PowerOnHours != 0) {
        drive.m_PowerOnHours = values.m_PowerOnHours;
    }
    if (values.m_Endurance != 0) {  // 0 where the list gives another figure than terabytes
        drive.m_EnduranceTB = values.m_Endurance;
    }
    unsigned long remainingHours = 0;
    if (CPluginHelper::ComputeRemainingLifeTime(drive.m_PowerOnHours.value_or(0), values.m_BytesWritten,
                                                static_cast<unsigned>(*drive.m_PercentUsed),
                                                values.m_Endurance, remainingHours)) {
        drive.m_RemainingHours = remainingHours;
    }
}

void ReadSATA(const json& document, Drive& drive) {
    drive.m_Protocol = Value::SATA;
    CPluginHelper::SplitSATAModelName(FindText(document, {"model_name"}), drive.m_Vendor, drive.m_Model);
    CPluginHelper::CorrectSerialNumber(drive.m_Vendor, drive.m_Model, drive.m_SerialNumber);

    const bool isListed = CPluginHelper::findLifeTimeProp(drive.m_Model) != nullptr;
    const auto reportedRPM = FindNumber(document, {"rotation_rate"});
    if (isListed || reportedRPM == std::uint64_t{0}) {
        ReadSATASolidState(document, drive);
    } else if (reportedRPM.has_value()) {
        drive.m_RPM = *reportedRPM;
    } else {
        unsigned long rpm = 0;
        try {
            CPluginHelper::GetSATARPM(drive.m_Vendor, drive.m_Model, rpm);
        } catch (const std::out_of_range&) {
            // A model name too short for its vendor's rule; the usual speed has been set.
        }
        drive.m_RPM = rpm;
    }
}

/// The first row for a model, compared without regard to case as far as the row says.
template <class Row>
const Row* FindRow(const std::vector<Row>& table, const std::string& model,
                   std::size_t (*compared)(const Row&)) {
    const auto row = std::find_if(table.begin(), table.end(), [&](const Row& candidate) {
        const std::size_t length = compared(candidate);
        return length == 0 ? strcasecmp(candidate.m_Model.c_str(), model.c_str()) == 0
                           : strncasecmp(candidate.m_Model.c_str(), model.c_str(), length) == 0;
    });
    return row == table.end() ? nullptr : &*row;
}

/// What is unknown counts as nothing.
void EstimateLifetime(Drive& drive) {
    const std::uint64_t percent = std::min<std::uint64_t>(drive.m_PercentUsed.value_or(0), UINT32_MAX);
    unsigned long remainingHours = 0;
    if (CPluginHelper::ComputeRemainingLifeTime(
            drive.m_PowerOnHours.value_or(0), drive.m_BytesWritten.value_or(0),
            static_cast<unsigned>(percent), drive.m_EnduranceTB.value_or(0), remainingHours)) {
        drive.m_RemainingHours = remainingHours;
    }
}

void ReadNVMe(const json& document, Drive& drive) {
    drive.m_Protocol = Value::NVME;
    drive.m_Medium = Value::SSD;
    CPluginHelper::SplitSATAModelName(FindText(document, {"model_name"}), drive.m_Vendor, drive.m_Model);
    const auto compared = [](const PI::_SSD_ENDURANCE& row) { return std::size_t{row.m_MatchLength}; };
    if (const auto* row = FindRow<PI::_SSD_ENDURANCE>(PI::NVMeSSDEndurance, drive.m_Model, compared)) {
        drive.m_EnduranceTB = row->m_EnduranceTB;
        drive.m_Vendor = row->m_Vendor;
    }
    constexpr const char* LOG = "nvme_smart_health_information_log";
    constexpr std::uint64_t MAX_UNITS = std::numeric_limits<std::uint64_t>::max() / NVME_DATA_UNIT;
    if (const auto units = FindNumber(document, {LOG, "data_units_written"}, MAX_UNITS)) {
        drive.m_BytesWritten = *units * NVME_DATA_UNIT;
    }
    drive.m_PercentUsed = FindNumber(document, {LOG, "percentage_used"}, UINT8_MAX);
    drive.m_SparePercent = FindNumber(document, {LOG, "available_spare"}, UINT8_MAX);
    EstimateLifetime(drive);
}

/// Versions of smartctl before 7 leave out the prefix of the name.
std::string FindSASText(const json& document, const char* name) {
    const std::string text = FindText(document, {name});
    return text.empty() ? FindText(document, {name + std::strlen("scsi_")}) : text;
}

void ReadSAS(const json& document, Drive& drive) {
    drive.m_Protocol = Value::SAS;
    drive.m_Vendor = FindSASText(document, "scsi_vendor");
    drive.m_Model = FindSASText(document, "scsi_product");
    drive.m_Firmware = FindSASText(document, "scsi_revision");
    const auto compared = [](const PI::_SAS_SSD_ENDURANCE&) { return std::size_t{0}; };
    const auto* const row = FindRow<PI::_SAS_SSD_ENDURANCE>(PI::SASSSDEndurance, drive.m_Model, compared);
    const auto rpm = FindNumber(document, {"rotation_rate"});
    if (row == nullptr && rpm != std::uint64_t{0}) {
        drive.m_RPM = rpm;
        return;
    }
    drive.m_Medium = Value::SSD;
    if (row != nullptr) {
        drive.m_EnduranceTB = row->m_EnduranceTB;
    }
    drive.m_PercentUsed = FindNumber(document, {"scsi_percentage_used_endurance_indicator"}, UINT8_MAX);
    EstimateLifetime(drive);
}

/// What smartctl itself says about a drive that it could not read.
std::string FirstMessage(const json& document) {
    const json* const messages = Find(document, {"smartctl", "messages"});
    if (messages == nullptr || !messages->is_array() || messages->empty()) {
        return "";
    }
    return FindText(messages->front(), {"string"});
}

}  // namespace

Drive ReadDrive(const std::string& source, const std::string& text) {
    const json document = json::parse(text);
    Drive drive;
    drive.m_Source = source;
    drive.m_Device = FindText(document, {"device", "name"});
    drive.m_SerialNumber = FindText(document, {"serial_number"});
    drive.m_Firmware = FindText(document, {"firmware_version"});
    drive.m_SizeBytes = FindNumber(document, {"user_capacity", "bytes"});
    drive.m_TemperatureC = FindNumber(document, {"temperature", "current"}, UINT8_MAX);
    drive.m_PowerOnHours = FindNumber(document, {"power_on_time", "hours"}, UINT32_MAX);
    const json* const passed = Find(document, {"smart_status", "passed"});
    drive.m_PredictsFailure = passed != nullptr && passed->is_boolean() && !passed->get<bool>();

    const std::string protocol = FindText(document, {"device", "protocol"});
    if (protocol == "ATA") {
        ReadSATA(document, drive);
    } else if (protocol == "NVMe") {
        ReadNVMe(document, drive);
    } else if (protocol == "SCSI") {
        ReadSAS(document, drive);
    }
    if (drive.m_Model.empty()) {
        const std::string message = FirstMessage(document);
        throw std::runtime_error(message.empty() ? "no drive is described" : message);
    }
    return drive;
}

}  // namespace smartctl
