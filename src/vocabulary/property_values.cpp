// SPDX-License-Identifier: Apache-2.0

#include <pi/vocabulary.h>

#include "vocabulary/name_table.h"

namespace PI {

namespace {
NameTable names = {
#define PI_PROPERTY_VALUE(number, constant, name) {number, name},
#include <pi/vocabulary/property_values.def>
#undef PI_PROPERTY_VALUE
};
}  // namespace

const std::string& PropertyValueToString(int value) {
    return names.Name(value);
}

int StringToPropertyValue(const std::string& name, int defaultValue) {
    return names.Number(name, defaultValue);
}

}  // namespace PI
