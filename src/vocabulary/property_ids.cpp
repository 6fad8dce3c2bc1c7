// SPDX-License-Identifier: Apache-2.0

#include <pi/vocabulary.h>

#include "vocabulary/name_table.h"

namespace PI {

namespace {
NameTable names = {
#define PI_PROPERTY_ID(number, constant, name) {number, name},
#include <pi/vocabulary/property_ids.def>
#undef PI_PROPERTY_ID
};
}  // namespace

const std::string& PropertyIDToString(int id) {
    return names.Name(id);
}

}  // namespace PI
