// SPDX-License-Identifier: Apache-2.0

#include "record_names.h"

#include <pi/drive_health.h>
#include <pi/vocabulary.h>
#include <pi/vocabulary_lists.h>

#include <algorithm>
#include <limits>
#include <optional>

#include <pi/vocabulary/undefine_macros.h>

namespace PI {

namespace {

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

}  // namespace

const char* RowNames::operator()(std::int64_t number) const {
    const NameRow* row = std::find_if(m_Rows, m_Rows + m_Count,
                                      [number](const NameRow& other) { return other.m_Number == number; });
    return row != m_Rows + m_Count ? row->m_Name : "";
}

const char* VocabularyNames::operator()(std::int64_t number) const {
    using Limits = std::numeric_limits<int>;
    const bool fits = number >= Limits::min() && number <= Limits::max();
    const auto entry = fits ? m_Find().Find(static_cast<int>(number)) : std::nullopt;
    return entry ? entry->Name() : "";
}

const RowNames PropertyTypeName(PROPERTY_TYPES);
const RowNames ObjectTypeName(OBJECT_TYPES);
const RowNames UnitsName(UNITS);
const RowNames FigureStateName(FIGURE_STATES);
const RowNames FigureUnitName(FIGURE_UNITS);
const RowNames FigureDirectionName(FIGURE_DIRECTIONS);
const RowNames FigureSourceName(FIGURE_SOURCES);

const VocabularyNames PropertyIDName{Vocabulary::PropertyIDs};
const VocabularyNames PropertyValueName{Vocabulary::PropertyValues};
const VocabularyNames OperationIDName{Vocabulary::OperationIDs};
const VocabularyNames EventIDName{Vocabulary::EventIDs};

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
