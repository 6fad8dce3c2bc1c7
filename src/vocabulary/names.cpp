// SPDX-License-Identifier: Apache-2.0

#include <pi/vocabulary.h>

#include "vocabulary/name_table.h"

namespace PI {

namespace {

constexpr NamedNumber ERROR_CODES[] = {
#define PI_ERROR_CODE(number, constant, name) {number, name},
#include <pi/vocabulary/error_codes.def>
#undef PI_ERROR_CODE
};
constexpr NamedNumber PROPERTY_IDS[] = {
#define PI_PROPERTY_ID(number, constant, name) {number, name},
#include <pi/vocabulary/property_ids.def>
#undef PI_PROPERTY_ID
};
constexpr NamedNumber PROPERTY_VALUES[] = {
#define PI_PROPERTY_VALUE(number, constant, name) {number, name},
#include <pi/vocabulary/property_values.def>
#undef PI_PROPERTY_VALUE
};
constexpr NamedNumber OPERATION_IDS[] = {
#define PI_OPERATION_ID(number, constant, name) {number, name},
#include <pi/vocabulary/operation_ids.def>
#undef PI_OPERATION_ID
};
constexpr NamedNumber EVENT_IDS[] = {
#define PI_EVENT_ID(number, constant, name) {number, name},
#include <pi/vocabulary/event_ids.def>
#undef PI_EVENT_ID
};

// Made with the library and not at first use, so that they outlive the static objects of plug-ins.
NameTable errorCodes(ERROR_CODES);
NameTable propertyIDs(PROPERTY_IDS);
NameTable propertyValues(PROPERTY_VALUES);
NameTable operationIDs(OPERATION_IDS);
NameTable eventIDs(EVENT_IDS);

}  // namespace

const std::string& ErrorCodeToString(int code) {
    return errorCodes.Name(code);
}

const std::string& PropertyIDToString(int id) {
    return propertyIDs.Name(id);
}

const std::string& PropertyValueToString(int value) {
    return propertyValues.Name(value);
}

const std::string& OperationIDToString(int id) {
    return operationIDs.Name(id);
}

const std::string& EventIDToString(int id) {
    return eventIDs.Name(id);
}

int StringToPropertyValue(const std::string& name, int defaultValue) {
    return propertyValues.Number(name, defaultValue);
}

}  // namespace PI
