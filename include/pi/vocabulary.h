// SPDX-License-Identifier: Apache-2.0
/// @file
/// The numbers that service and plug-ins exchange, and their names.
///
/// Each vocabulary is one list in pi/vocabulary/, from which the constants here and the names that the
/// functions below return are generated. The numbers never change.
///
/// Threads: any number of threads may look up numbers and names at once, known and unknown ones.
#pragma once

#include <pi/types.h>

#include <string>

#include <pi/vocabulary/undefine_macros.h>

namespace PI {

/// @addtogroup vocabulary
/// @{

namespace ErrorCode {
/// Outcome of an operation: SUCCESS (0), or a failure from GENERAL (20000) upward.
enum _ERROR_CODE : std::int32_t {
#define PI_ERROR_CODE(number, constant, name) constant = number,
#include <pi/vocabulary/error_codes.def>
#undef PI_ERROR_CODE
};
}  // namespace ErrorCode
using ErrorCode::_ERROR_CODE;

namespace PropertyID {
/// Which property of a managed object a value belongs to.
enum _PROPERTY_ID : std::int32_t {
#define PI_PROPERTY_ID(number, constant, name) constant = number,
#include <pi/vocabulary/property_ids.def>
#undef PI_PROPERTY_ID
};
}  // namespace PropertyID
using PropertyID::_PROPERTY_ID;

namespace PropertyValue {
/// Named states that choice and number properties hold.
enum _PROPERTY_VALUE : std::int32_t {
#define PI_PROPERTY_VALUE(number, constant, name) constant = number,
#include <pi/vocabulary/property_values.def>
#undef PI_PROPERTY_VALUE
};
}  // namespace PropertyValue
using PropertyValue::_PROPERTY_VALUE;

namespace OperationID {
/// Actions that plug-ins offer on managed objects.
enum _OPERATION_ID : std::int32_t {
#define PI_OPERATION_ID(number, constant, name) constant = number,
#include <pi/vocabulary/operation_ids.def>
#undef PI_OPERATION_ID
};
}  // namespace OperationID
using OperationID::_OPERATION_ID;

namespace EventID {
/// Events that plug-ins report.
enum _EVENT_ID : std::int32_t {
#define PI_EVENT_ID(number, constant, name) constant = number,
#include <pi/vocabulary/event_ids.def>
#undef PI_EVENT_ID
};
}  // namespace EventID
using EventID::_EVENT_ID;

/// Name of an error code, such as "SUCCESS" for 0.
///
/// An unknown code has an empty name, and is remembered with it, so that the same code always returns the
/// same string.
/// @return a reference that stays valid, and stays the same for the same code, until the library is unloaded
/// @throws std::bad_alloc if allocation fails for the names, at the first look-up of the process, or for an
/// unknown code; a later call tries again
PI_API const std::string& ErrorCodeToString(int code);

/// Name of a property identifier, such as "MAJOR_VERSION" for 30000; otherwise as ErrorCodeToString.
PI_API const std::string& PropertyIDToString(int id);

/// Name of a property value, such as "RAID0" for 40007; otherwise as ErrorCodeToString. The name of 0 is
/// empty.
PI_API const std::string& PropertyValueToString(int value);

/// Name of an operation identifier, such as "ALARM_ON" for 50008; otherwise as ErrorCodeToString.
PI_API const std::string& OperationIDToString(int id);

/// Name of an event identifier, such as "UNKNOWN" for 10000; otherwise as ErrorCodeToString.
PI_API const std::string& EventIDToString(int id);

/// Name of a severity: "DEBUG", "INFORMATION", "WARNING" or "ERROR"; any other number counts as DEBUG.
/// @return a reference that stays valid until the library is unloaded. Thread-safe.
PI_API const std::string& SeverityToString(int severity);

/// Number of the property value with a name, which has to match exactly; the smallest if several have it.
///
/// Unknown numbers that were passed to PropertyValueToString are included, with an empty name. So an empty
/// name gives the smallest of them if that is negative, and otherwise 0.
/// @return the number, or defaultValue if no value has the name
/// @throws std::bad_alloc if allocation fails for the index of names, at the first search of the process; a
/// later call tries again
PI_API int StringToPropertyValue(const std::string& name, int defaultValue);

/// @}

}  // namespace PI

#include <pi/vocabulary/restore_macros.h>
