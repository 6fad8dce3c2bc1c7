// SPDX-License-Identifier: Apache-2.0

#include <pi/vocabulary.h>
#include <pi/vocabulary_lists.h>

#include "vocabulary/name_table.h"

namespace PI {

namespace {

// Made with the library and not at first use, so that they outlive the static objects of plug-ins.
NameTable errorCodes(Vocabulary::ErrorCodes());
NameTable propertyIDs(Vocabulary::PropertyIDs());
NameTable propertyValues(Vocabulary::PropertyValues());
NameTable operationIDs(Vocabulary::OperationIDs());
NameTable eventIDs(Vocabulary::EventIDs());

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
