// SPDX-License-Identifier: Apache-2.0

#include "record_names.h"

#include <pi/drive_health.h>
#include <pi/vocabulary.h>
#include <pi/vocabulary_lists.h>

#include <cstddef>
#include <limits>

#include <pi/vocabulary/undefine_macros.h>

namespace PI {

namespace {

struct NameRow {
    std::int32_t m_Number;
    const char* m_Name;
};

constexpr NameRow PROPERTY_TYPES[] = {
    {PropertyType::NONE, "NONE"},
    {PropertyType::UNDEFINED, "UNDEFINED"},
    {PropertyType::STRING, "STRING"},
    {PropertyType::CHOICE, "CHOICE"},
    {PropertyType::BOOL, "BOOL"},
    {PropertyType::LONG, "LONG"},
    {PropertyType::SIGNED_LONG, "SIGNED_LONG"},
    {PropertyType::RANGE, "RANGE"},
    {PropertyType::MULTI_VALUE, "MULTI_VALUE"},
    {PropertyType::FLOAT, "FLOAT"},
    {PropertyType::MULTI_LONG, "MULTI_LONG"},
    {PropertyType::XML, "XML"},
    {PropertyType::MULTI_STRING, "MULTI_STRING"},
};

constexpr NameRow OBJECT_TYPES[] = {
    {ObjectType::UNDEFINED, "UNDEFINED"}, {ObjectType::TASK, "TASK"},
    {ObjectType::ADAPTER_1, "ADAPTER_1"}, {ObjectType::ADAPTER_2, "ADAPTER_2"},
    {ObjectType::ADAPTER_3, "ADAPTER_3"}, {ObjectType::ADAPTER_4, "ADAPTER_4"},
    {ObjectType::ADAPTER_5, "ADAPTER_5"}, {ObjectType::ADAPTER_6, "ADAPTER_6"},
    {ObjectType::ADAPTER_7, "ADAPTER_7"}, {ObjectType::ADAPTER_8, "ADAPTER_8"},
    {ObjectType::ADAPTER_9, "ADAPTER_9"},
};

constexpr NameRow UNITS[] = {
    {Units::BYTES, "BYTES"},
    {Units::KILOBYTES, "KILOBYTES"},
    {Units::MEGABYTES, "MEGABYTES"},
    {Units::GIGABYTES, "GIGABYTES"},
    {Units::TERABYTES, "TERABYTES"},
    {Units::PETABYTES, "PETABYTES"},
    {Units::UNSPECIFIED, "UNSPECIFIED"},
};

constexpr NameRow FIGURE_STATES[] = {
    {FigureState::UNKNOWN, "UNKNOWN"},
    {FigureState::KNOWN, "KNOWN"},
    {FigureState::DOUBTFUL, "DOUBTFUL"},
};

constexpr NameRow FIGURE_UNITS[] = {
    {FigureUnit::COUNT, "COUNT"}, {FigureUnit::PERCENT, "PERCENT"},     {FigureUnit::HOURS, "HOURS"},
    {FigureUnit::BYTES, "BYTES"}, {FigureUnit::TERABYTES, "TERABYTES"}, {FigureUnit::CELSIUS, "CELSIUS"},
    {FigureUnit::FLAGS, "FLAGS"},
};

constexpr NameRow FIGURE_DIRECTIONS[] = {
    {FigureDirection::NONE, "NONE"},
    {FigureDirection::UP, "UP"},
    {FigureDirection::DOWN, "DOWN"},
};

constexpr NameRow FIGURE_SOURCES[] = {
    {FigureSource::NONE, "NONE"},
    {FigureSource::ATA_DEVICE_STATISTICS, "ATA_DEVICE_STATISTICS"},
    {FigureSource::ATA_LOG, "ATA_LOG"},
    {FigureSource::ATA_ATTRIBUTE, "ATA_ATTRIBUTE"},
    {FigureSource::NVME_LOG, "NVME_LOG"},
    {FigureSource::NVME_IDENTIFY, "NVME_IDENTIFY"},
    {FigureSource::SCSI_LOG_PAGE, "SCSI_LOG_PAGE"},
    {FigureSource::SCSI_DEFECT_LIST, "SCSI_DEFECT_LIST"},
    {FigureSource::DRIVE_VERDICT, "DRIVE_VERDICT"},
    {FigureSource::ENDURANCE_LIST, "ENDURANCE_LIST"},
    {FigureSource::PROGRAM, "PROGRAM"},
};

template <std::size_t COUNT>
const char* NameIn(const NameRow (&rows)[COUNT], std::int64_t number) {
    for (const NameRow& row : rows) {
        if (row.m_Number == number) {
            return row.m_Name;
        }
    }
    return "";
}

const char* NameIn(const CVocabulary& vocabulary, std::int64_t number) {
    using Limits = std::numeric_limits<int>;
    if (number < Limits::min() || number > Limits::max()) {
        return "";
    }
    const auto entry = vocabulary.Find(static_cast<int>(number));
    return entry ? entry->Name() : "";
}

}  // namespace

const char* PropertyIDName(std::int64_t number) {
    return NameIn(Vocabulary::PropertyIDs(), number);
}

const char* PropertyValueName(std::int64_t number) {
    return NameIn(Vocabulary::PropertyValues(), number);
}

const char* OperationIDName(std::int64_t number) {
    return NameIn(Vocabulary::OperationIDs(), number);
}

const char* EventIDName(std::int64_t number) {
    return NameIn(Vocabulary::EventIDs(), number);
}

const char* PropertyTypeName(std::int64_t number) {
    return NameIn(PROPERTY_TYPES, number);
}

const char* ObjectTypeName(std::int64_t number) {
    return NameIn(OBJECT_TYPES, number);
}

const char* UnitsName(std::int64_t number) {
    return NameIn(UNITS, number);
}

const char* FigureStateName(std::int64_t number) {
    return NameIn(FIGURE_STATES, number);
}

const char* FigureUnitName(std::int64_t number) {
    return NameIn(FIGURE_UNITS, number);
}

const char* FigureDirectionName(std::int64_t number) {
    return NameIn(FIGURE_DIRECTIONS, number);
}

const char* FigureSourceName(std::int64_t number) {
    return NameIn(FIGURE_SOURCES, number);
}

const char* SeverityName(std::int64_t number) {
    return SeverityToString(static_cast<int>(number)).c_str();
}

const char* DriveStateName(std::int64_t number) {
    return DriveStateToString(static_cast<_DRIVE_STATE>(number));
}

const char* HealthFigureName(std::int64_t number) {
    return HealthFigureToString(static_cast<_HEALTH_FIGURE>(number));
}

}  // namespace PI
