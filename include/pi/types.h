// SPDX-License-Identifier: Apache-2.0
/// @file
/// Enumerations that all parts of the interface share, and the export macro.
///
/// Every enumeration is unscoped, with the underlying type std::int32_t. Its constants are in a namespace of
/// their own, so that equal names in two enumerations do not clash; its type name is visible in PI.
#pragma once

#if __cplusplus < 201703L
#error "libpi needs C++17"
#endif

#include <cstdint>

/// Marks what the library exports; everything else is hidden.
#define PI_API __attribute__((visibility("default")))

#include <pi/vocabulary/undefine_macros.h>

namespace PI {

/// @addtogroup vocabulary
/// @{

namespace Severity {
/// Severity of an event or of SCSI sense data. Any other number counts as DEBUG.
enum _SEVERITY : std::int32_t {
    DEBUG = 1,        ///< for people who debug the software
    INFORMATION = 2,  ///< nothing to do
    WARNING = 3,      ///< needs attention before it becomes a failure
    ERROR = 4,        ///< something failed
};
}  // namespace Severity
using Severity::_SEVERITY;

namespace WithoutText {
/// How an event without a text of its own is rendered (CPluginHelper::StringifyEventMessageWith).
enum _WITHOUT_TEXT : std::int32_t {
    UNKNOWN_EVENT = 0,          ///< "Unknown Event", and the placeholders are left out
    NAME_AND_PLACEHOLDERS = 1,  ///< "REBUILD_FAILED: logical drive 0, media error"
};
}  // namespace WithoutText
using WithoutText::_WITHOUT_TEXT;

namespace MarkersInValues {
/// What a marker in the value of a placeholder means (CPluginHelper::StringifyEventMessageWith).
enum _MARKERS_IN_VALUES : std::int32_t {
    FILLED = 0,  ///< a later placeholder replaces it if it is the first of its number
    TEXT = 1,    ///< nothing: it is plain text
};
}  // namespace MarkersInValues
using MarkersInValues::_MARKERS_IN_VALUES;

namespace Units {
/// Unit of a capacity, in steps of 1024. The numbers are not in the order of the magnitudes.
enum _UNITS : std::int32_t {
    BYTES = 21025,        ///< single bytes
    KILOBYTES = 21003,    ///< 1024 bytes
    MEGABYTES = 21002,    ///< 1024 kilobytes
    GIGABYTES = 21022,    ///< 1024 megabytes
    TERABYTES = 21026,    ///< 1024 gigabytes
    PETABYTES = 21027,    ///< 1024 terabytes
    UNSPECIFIED = 21006,  ///< default of the array-layout records
};
}  // namespace Units
using Units::_UNITS;

namespace ObjectType {
/// Kind of a managed object. Plug-ins and the service use further numbers of their own.
enum _OBJECT_TYPE : std::int32_t {
    UNDEFINED = 1,  ///< a new object, no type yet
    TASK = 19005,   ///< a CTask
    /// @{
    /// One of nine types of adapters (CPluginHelper::IsAdapterType); plug-ins agree on who uses which.
    ADAPTER_1 = 19007,
    ADAPTER_2 = 19009,
    ADAPTER_3 = 19010,
    ADAPTER_4 = 19012,
    ADAPTER_5 = 19037,
    ADAPTER_6 = 19038,
    ADAPTER_7 = 19039,
    ADAPTER_8 = 19042,
    ADAPTER_9 = 19051,
    /// @}
};
}  // namespace ObjectType
using ObjectType::_OBJECT_TYPE;

namespace PropertyType {
/// Kind of data that a property holds.
enum _PROPERTY_TYPE : std::int32_t {
    NONE = 0,           ///< no value
    UNDEFINED = 1,      ///< a new property, no value yet
    STRING = 2,         ///< CStringData
    CHOICE = 3,         ///< CChoiceData
    BOOL = 4,           ///< CBoolData
    LONG = 5,           ///< CLongData
    SIGNED_LONG = 6,    ///< CSignedLongData
    RANGE = 7,          ///< CRangeData
    MULTI_VALUE = 8,    ///< CMultiValueData
    FLOAT = 9,          ///< CFloatData
    MULTI_LONG = 10,    ///< CMultiLongData
    XML = 11,           ///< CXMLData
    MULTI_STRING = 12,  ///< CMultiStringData
};
}  // namespace PropertyType
using PropertyType::_PROPERTY_TYPE;

/// @}

}  // namespace PI

#include <pi/vocabulary/restore_macros.h>
