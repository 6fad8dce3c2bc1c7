// SPDX-License-Identifier: Apache-2.0

#include <pi/vocabulary.h>

#include "vocabulary/name_table.h"

namespace PI {

namespace {
NameTable names = {
#define PI_ERROR_CODE(number, constant, name) {number, name},
#include <pi/vocabulary/error_codes.def>
#undef PI_ERROR_CODE
};
}  // namespace

const std::string& ErrorCodeToString(int code) {
    return names.Name(code);
}

}  // namespace PI
