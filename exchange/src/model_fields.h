// SPDX-License-Identifier: Apache-2.0
// The members of every record, in the order in which they are written: one list for writing and reading.
#pragma once

#include <pi/event.h>
#include <pi/model.h>

#include <cmath>
#include <type_traits>

#include "record_names.h"

namespace PI {

/// A record as the writer or the reader needs it.
template <class Archive, class Record>
using In = std::conditional_t<Archive::WRITES, const Record, Record>;

template <class Archive>
void Fields(Archive& archive, In<Archive, CChoiceData>& data) {
    archive.Named("value", "value_name", data.m_Value, PropertyValueName);
    archive.NamedList("choices", "choice_names", data.m_Choices, PropertyValueName);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CRangeData>& data) {
    archive.Member("value", data.m_Value);
    archive.Member("min", data.m_Min);
    archive.Member("max", data.m_Max);
    archive.Member("step", data.m_Step);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CStringData>& data) {
    archive.Member("value", data.m_Value);
    archive.Member("extra1", data.m_Extra1);
    archive.Member("extra2", data.m_Extra2);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CBoolData>& data) {
    archive.Member("value", data.m_Value);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CLongData>& data) {
    archive.Member("value", data.m_Value);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CSignedLongData>& data) {
    archive.Member("value", data.m_Value);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CMultiValueData>& data) {
    archive.Member("values", data.m_Values);
    archive.Member("values2", data.m_Values2);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CFloatData>& data) {
    archive.Member("value", data.m_Value);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CMultiLongData>& data) {
    archive.Member("values", data.m_Values);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CXMLData>& data) {
    archive.Member("document", data.m_Document);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CMultiStringData>& data) {
    archive.Member("values", data.m_Values);
    archive.Member("selection_mask", data.m_SelectionMask);
}

// @{
// Whether data hold what those of a new property hold.
inline bool IsNew(const CChoiceData& data) {
    return data.m_Value == 1 && data.m_Choices.empty();
}
inline bool IsNew(const CRangeData& data) {
    return data.m_Value == 1 && data.m_Min == -1 && data.m_Max == -1 && data.m_Step == 0;
}
inline bool IsNew(const CStringData& data) {
    return data.m_Value.empty() && data.m_Extra1 == 0 && data.m_Extra2 == 0;
}
inline bool IsNew(const CBoolData& data) {
    return !data.m_Value;
}
inline bool IsNew(const CLongData& data) {
    return data.m_Value == 0;
}
inline bool IsNew(const CSignedLongData& data) {
    return data.m_Value == 0;
}
inline bool IsNew(const CMultiValueData& data) {
    return data.m_Values.empty() && data.m_Values2.empty();
}
inline bool IsNew(const CFloatData& data) {
    return std::fpclassify(data.m_Value) == FP_ZERO && !std::signbit(data.m_Value);
}
inline bool IsNew(const CMultiLongData& data) {
    return data.m_Values.empty();
}
inline bool IsNew(const CXMLData& data) {
    return !data.m_Document.first_child();
}
inline bool IsNew(const CMultiStringData& data) {
    return data.m_Values.empty() && data.m_SelectionMask == 0xFFFFFFFF;
}
// @}

/// The data of a property, and which kind of them counts.
template <class Archive>
struct CountedData {
    In<Archive, CProperty::_DATA>& m_Data;
    _PROPERTY_TYPE m_Type;
};

/// The kind that counts is always written, another one where it holds something.
template <class Archive>
void Fields(Archive& archive, const CountedData<Archive>& counted) {
    const auto kind = [&](const char* name, auto& data, _PROPERTY_TYPE type) {
        if (!Archive::WRITES || counted.m_Type == type || !IsNew(data)) {
            archive.Member(name, data);
        }
    };
    kind("choice", counted.m_Data.m_Choice, PropertyType::CHOICE);
    kind("range", counted.m_Data.m_Range, PropertyType::RANGE);
    kind("string", counted.m_Data.m_String, PropertyType::STRING);
    kind("bool", counted.m_Data.m_Bool, PropertyType::BOOL);
    kind("long", counted.m_Data.m_Long, PropertyType::LONG);
    kind("signed_long", counted.m_Data.m_SignedLong, PropertyType::SIGNED_LONG);
    kind("multi_value", counted.m_Data.m_MultiValue, PropertyType::MULTI_VALUE);
    kind("float", counted.m_Data.m_Float, PropertyType::FLOAT);
    kind("multi_long", counted.m_Data.m_MultiLong, PropertyType::MULTI_LONG);
    kind("xml", counted.m_Data.m_XML, PropertyType::XML);
    kind("multi_string", counted.m_Data.m_MultiString, PropertyType::MULTI_STRING);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CProperty>& property) {
    archive.Named("id", "id_name", property.m_ID, PropertyIDName);
    archive.Member("secondary_id", property.m_SecondaryID);
    archive.Member("attribute1", property.m_Attribute1);
    archive.Member("attribute2", property.m_Attribute2);
    archive.Member("attribute3", property.m_Attribute3);
    archive.Member("attribute4", property.m_Attribute4);
    archive.Member("attribute5", property.m_Attribute5);
    archive.Named("type", "type_name", property.m_Type, PropertyTypeName);
    archive.Member("format", property.m_Format);
    archive.Member("flag1", property.m_Flag1);
    archive.Member("attribute6", property.m_Attribute6);
    archive.Member("flag2", property.m_Flag2);
    CountedData<Archive> data{property.m_Data, property.m_Type};
    archive.Member("data", data);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CDrive>& drive) {
    archive.Member("object_id", drive.m_ObjectID);
    archive.Member("start_address", drive.m_StartAddress);
    archive.Member("used_size", drive.m_UsedSize);
    archive.Member("properties", drive.m_Properties);
    archive.Member("logical_drive", drive.m_LogicalDrive);
    archive.Member("logical_owner", drive.m_LogicalOwner);
    archive.Member("is_configurable", drive.m_IsConfigurable);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CContainer>& container) {
    archive.Member("drives", container.m_Drives);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CLogicalDrive>& drive) {
    archive.Member("id", drive.m_ID);
    archive.Member("properties", drive.m_Properties);
    archive.Member("value1", drive.m_Value1);
    archive.Member("value2", drive.m_Value2);
    archive.Member("size", drive.m_Size);
    archive.Named("units", "units_name", drive.m_Units, UnitsName);
    archive.Member("span_count", drive.m_SpanCount);
    archive.Member("span_size", drive.m_SpanSize);
    archive.Member("value3", drive.m_Value3);
    archive.Member("value4", drive.m_Value4);
    archive.Member("containers", drive.m_Containers);
    archive.Member("global_hot_spares", drive.m_GlobalHotSpares);
    archive.Member("dedicated_hot_spares", drive.m_DedicatedHotSpares);
    archive.Member("associated_logical_drives", drive.m_AssociatedLogicalDrives);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CArray>& array) {
    archive.Member("properties", array.m_Properties);
    archive.Member("value1", array.m_Value1);
    archive.Member("size", array.m_Size);
    archive.Named("units", "units_name", array.m_Units, UnitsName);
    archive.Member("containers", array.m_Containers);
    archive.Member("logical_drives", array.m_LogicalDrives);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CLevel>& level) {
    archive.Member("value1", level.m_Value1);
    archive.Member("values", level.m_Values);
    archive.Member("value2", level.m_Value2);
    archive.Member("properties", level.m_Properties);
    archive.Member("value3", level.m_Value3);
    archive.Member("value4", level.m_Value4);
    archive.Member("value5", level.m_Value5);
    archive.Member("value6", level.m_Value6);
    archive.Named("units", "units_name", level.m_Units, UnitsName);
    archive.Member("value7", level.m_Value7);
    archive.Member("value8", level.m_Value8);
    archive.Member("flag", level.m_Flag);
    archive.Member("value9", level.m_Value9);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CPartition>& partition) {
    archive.Member("value1", partition.m_Value1);
    archive.Member("value2", partition.m_Value2);
    archive.Member("value3", partition.m_Value3);
    archive.Member("text1", partition.m_Text1);
    archive.Member("text2", partition.m_Text2);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CMigration>& migration) {
    archive.Member("value1", migration.m_Value1);
    archive.Member("value2", migration.m_Value2);
    archive.Member("properties", migration.m_Properties);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CEvent>& event) {
    archive.Member("handle", event.m_Handle);
    archive.Named("event_id", "event_id_name", event.m_EventID, EventIDName);
    archive.Named("severity", "severity_name", event.m_Severity, SeverityName);
    archive.Member("time_stamp", event.m_TimeStamp);
    archive.Member("place_holder1", event.m_PlaceHolder1);
    archive.Member("place_holder2", event.m_PlaceHolder2);
    archive.Member("place_holder3", event.m_PlaceHolder3);
    archive.Member("place_holder4", event.m_PlaceHolder4);
    archive.Member("place_holder5", event.m_PlaceHolder5);
    archive.Member("place_holder6", event.m_PlaceHolder6);
    archive.Member("data", event.m_Data);
    archive.Member("source", event.m_Source);
    archive.Member("host", event.m_Host);
    archive.Member("sequence_number", event.m_SequenceNumber);
    archive.Member("resolved1", event.m_Resolved1);
    archive.Member("resolved2", event.m_Resolved2);
    archive.Member("resolved3", event.m_Resolved3);
    archive.Member("resolved4", event.m_Resolved4);
    archive.Member("resolved5", event.m_Resolved5);
    archive.Member("resolved6", event.m_Resolved6);
    archive.Member("scratch", event.m_Scratch);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, COperation>& operation) {
    archive.Named("header1", "header1_name", operation.m_Header1, OperationIDName);
    archive.Member("header2", operation.m_Header2);
    archive.Member("header3", operation.m_Header3);
    archive.Member("properties", operation.m_Properties);
    archive.Member("logical_drives", operation.m_LogicalDriveList);
    archive.Member("drives", operation.m_DriveList);
    archive.Member("levels", operation.m_LevelList);
    archive.Member("migrations", operation.m_MigrationList);
    archive.Member("events", operation.m_EventList);
    archive.Member("partitions", operation.m_PartitionList);
    archive.Member("objects", operation.m_ObjectList);
    archive.Member("parameter1", operation.m_Parameter1);
    archive.Member("parameter2", operation.m_Parameter2);
    archive.Member("parameter3", operation.m_Parameter3);
    archive.Member("parameter4", operation.m_Parameter4);
    archive.Member("parameter5", operation.m_Parameter5);
    archive.Member("parameter6", operation.m_Parameter6);
    archive.Member("parameter7", operation.m_Parameter7);
    archive.Member("parameter8", operation.m_Parameter8);
    archive.Member("operation_flag", operation.m_OperationFlag);
    archive.Member("parameter9", operation.m_Parameter9);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CObject>& object) {
    archive.Member("object_id", object.m_ObjectID);
    archive.Named("object_type", "object_type_name", object.m_ObjectType, ObjectTypeName);
    archive.Member("related_ids1", object.m_RelatedIDs1);
    archive.Member("related_ids2", object.m_RelatedIDs2);
    archive.Member("object_value", object.m_ObjectValue);
    archive.Member("object_flag", object.m_ObjectFlag);
    archive.Member("properties", object.m_Properties);
    archive.Member("operations", object.m_Operations);
    archive.Required("unique_id", object.m_UniqueID);
}

template <class Archive>
void Fields(Archive& archive, In<Archive, CTask>& task) {
    Fields(archive, static_cast<In<Archive, CObject>&>(task));
    archive.Member("task_text1", task.m_TaskText1);
    archive.Member("task_text2", task.m_TaskText2);
    archive.Member("task_text3", task.m_TaskText3);
    archive.Member("task_value1", task.m_TaskValue1);
    archive.Member("task_value2", task.m_TaskValue2);
    archive.Required("creation_time", task.m_CreationTime);
    archive.Member("task_value3", task.m_TaskValue3);
    archive.Member("task_value4", task.m_TaskValue4);
    archive.Member("task_value5", task.m_TaskValue5);
    archive.Member("task_value6", task.m_TaskValue6);
    archive.Member("task_value7", task.m_TaskValue7);
    archive.Member("task_flag", task.m_TaskFlag);
    archive.Named("task_status", "task_status_name", task.m_TaskStatus, PropertyValueName);
}

/// The version of the shape that is written and read.
constexpr std::int32_t MODEL_VERSION = 1;

}  // namespace PI
