#include "event_text.h"

#include "json_text.h"
#include "printable_text.h"

namespace pitool {

std::string EventText(const RenderedEvent& event) {
    constexpr std::size_t KEY_WIDTH = 16;
    std::string text;
    for (const auto& [key, value] : event) {
        std::string line = key;
        if (!value.empty()) {
            line.resize(KEY_WIDTH, ' ');
            line += PrintableText(value);
        }
        text += line + "\n";
    }
    return text;
}

std::string EventJson(const RenderedEvent& event) {
    Json pairs = Json::object();
    for (const auto& [key, value] : event) {
        pairs[key] = value;
    }
    return JsonText({{"format", "pitool event"}, {"version", 1}, {"event", std::move(pairs)}});
}

}  // namespace pitool
