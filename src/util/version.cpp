// SPDX-License-Identifier: Apache-2.0

#include <pi/version.h>

namespace PI {

const char* Version() {
    return PI_VERSION_STRING;
}

}  // namespace PI
