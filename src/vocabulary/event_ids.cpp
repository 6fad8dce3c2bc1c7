// SPDX-License-Identifier: Apache-2.0

#include <pi/vocabulary.h>

#include "vocabulary/name_table.h"

namespace PI {

namespace {
NameTable names = {
#define PI_EVENT_ID(number, constant, name) {number, name},
#include <pi/vocabulary/event_ids.def>
#undef PI_EVENT_ID
};
}  // namespace

const std::string& EventIDToString(int id) {
    return names.Name(id);
}

}  // namespace PI
