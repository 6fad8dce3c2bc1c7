// SPDX-License-Identifier: Apache-2.0

#include "event_json.h"

namespace pitool {

Json EventPairs(const RenderedEvent& event) {
    Json pairs = Json::object();
    for (const auto& [key, value] : event) {
        pairs[key] = value;
    }
    return pairs;
}

std::string EventJson(const RenderedEvent& event) {
    return JsonText({{"format", "pitool event"}, {"version", 1}, {"event", EventPairs(event)}});
}

}  // namespace pitool
