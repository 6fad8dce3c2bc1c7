// SPDX-License-Identifier: Apache-2.0

#include "json_text.h"

namespace pitool {

std::string JsonText(const Json& json) {
    return json.dump(2, ' ', true, Json::error_handler_t::replace) + "\n";
}

}  // namespace pitool
