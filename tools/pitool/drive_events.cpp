// SPDX-License-Identifier: Apache-2.0

#include "drive_detail.h"

#include "print/text.h"

#include <velk/clock.h>

#include <unistd.h>

#include <optional>
#include <string>

namespace pitool {
namespace {

namespace Figure = PI::HealthFigure;

/// What people look for: the model, the number on the drive's label, the device of the host; where a report
/// does not say, where it came from.
std::string DriveName(const DriveSummary& drive) {
    const std::string serial = PrintableText(drive.GetSerial());
    const std::string device = PrintableText(drive.GetDevice());
    return PrintableText(drive.GetModel()) + " (" + (serial.empty() ? "" : "serial number " + serial) +
           (serial.empty() || device.empty() ? "" : ", ") + device +
           (serial.empty() && device.empty() ? PrintableText(drive.GetFile()) : "") + ")";
}

}  // namespace

std::vector<PI::CEvent> RaiseDriveEvents(const DriveSummary& drive, std::uint64_t handle) {
    std::vector<PI::CEvent> events;
    char host[256] = "";
    static_cast<void>(gethostname(host, sizeof host - 1));  // else empty
    const auto raise = [&](PI::_EVENT_ID id, PI::_SEVERITY severity, const std::string& detail) {
        PI::CEvent& event = events.emplace_back();
        event.m_Handle = handle;
        event.m_EventID = static_cast<std::uint32_t>(id);
        event.m_Severity = severity;
        event.m_TimeStamp = VELK::now();
        event.m_Source = "pitool";
        event.m_Host = host;
        event.SetPlaceHolder1(DriveName(drive));
        event.SetPlaceHolder2(detail);
    };
    if (drive.IsFailing()) {
        raise(PI::EventID::SMART_ERROR, PI::Severity::ERROR, "its self-assessment failed");
    }
    const std::int64_t wear = drive.GetFigure(Figure::WEAR).m_Value;
    if (drive.IsWorn() && wear > WORN_PERCENT) {
        raise(PI::EventID::PD_WEAR_LEVEL_COUNT_ABOVE_THRESHOLD, PI::Severity::WARNING,
              std::to_string(wear) + " percent used, threshold " + std::to_string(WORN_PERCENT));
    }
    if (const std::optional<std::int64_t> limit = drive.ExceededLimit()) {
        raise(PI::EventID::PD_TEMP_HIGH, PI::Severity::WARNING,
              std::to_string(drive.GetFigure(Figure::TEMPERATURE).m_Value) + " degrees Celsius, limit " +
                  std::to_string(*limit));
    }
    return events;
}

}  // namespace pitool
