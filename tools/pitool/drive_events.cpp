// SPDX-License-Identifier: Apache-2.0

#include "drive_events.h"

#include <velk/clock.h>

#include <string>

namespace pitool {
namespace {

namespace ID = PI::PropertyID;

std::string KnownText(const DriveAssessment& drive, PI::_PROPERTY_ID id) {
    const Figure& figure = FindFigure(drive, id);
    return figure.IsKnown() ? FigureValueText(figure) : "";
}

/// What people look for on the drive's label; without a serial number, where the report came from.
std::string DriveName(const DriveAssessment& drive) {
    const std::string serial = KnownText(drive, ID::SERIAL_NUMBER);
    return KnownText(drive, ID::PRODUCT) +
           (serial.empty() ? " (" + drive.m_File + ")" : " (serial number " + serial + ")");
}

PI::CEvent MakeDriveEvent(PI::_EVENT_ID id, PI::_SEVERITY severity, const DriveAssessment& drive,
                          const PI::CObject& object, const std::string& detail) {
    PI::CEvent event;
    event.m_Handle = object.m_ObjectID;
    event.m_EventID = static_cast<std::uint32_t>(id);
    event.m_Severity = severity;
    event.m_TimeStamp = VELK::now();
    event.m_Source = "pitool";
    event.SetPlaceHolder1(DriveName(drive));
    event.SetPlaceHolder2(detail);
    return event;
}

}  // namespace

std::vector<PI::CEvent> RaiseDriveEvents(const DriveAssessment& drive, const PI::CObject& object) {
    std::vector<PI::CEvent> events;
    if (drive.m_Failing) {
        events.push_back(MakeDriveEvent(PI::EventID::SMART_ERROR, PI::Severity::ERROR, drive, object,
                                        "its self-assessment failed"));
    }
    if (IsWorn(drive) && drive.m_Wear.GetValue() != static_cast<std::int64_t>(WORN_PERCENT)) {
        events.push_back(MakeDriveEvent(PI::EventID::PD_WEAR_LEVEL_COUNT_ABOVE_THRESHOLD,
                                        PI::Severity::WARNING, drive, object,
                                        std::to_string(drive.m_Wear.GetValue()) +
                                            " percent used, threshold " + std::to_string(WORN_PERCENT)));
    }
    if (const std::optional<long> limit = ExceededLimit(drive)) {
        events.push_back(
            MakeDriveEvent(PI::EventID::PD_TEMP_HIGH, PI::Severity::WARNING, drive, object,
                           KnownText(drive, ID::TEMPERATURE) + ", limit " + std::to_string(*limit)));
    }
    return events;
}

}  // namespace pitool
