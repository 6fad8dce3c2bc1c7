// SPDX-License-Identifier: Apache-2.0

#include <pi/vocabulary.h>

#include "vocabulary/name_table.h"

namespace PI {

namespace {
NameTable names = {
#define PI_OPERATION_ID(number, constant, name) {number, name},
#include <pi/vocabulary/operation_ids.def>
#undef PI_OPERATION_ID
};
}  // namespace

const std::string& OperationIDToString(int id) {
    return names.Name(id);
}

}  // namespace PI
