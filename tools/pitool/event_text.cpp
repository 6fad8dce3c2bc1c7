// SPDX-License-Identifier: Apache-2.0

#include "event_text.h"

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

std::string EventLine(const RenderedEvent& event) {
    constexpr std::size_t SEVERITY_WIDTH = 13;
    const auto value = [&event](const char* wanted) -> std::string {
        for (const auto& [key, text] : event) {
            if (key == wanted) {
                return text;
            }
        }
        return "";
    };
    std::string severity = value("Severity");
    severity.resize(SEVERITY_WIDTH, ' ');
    return "  " + severity + value("EventID") + "  " + PrintableText(value("Description")) + "\n";
}

}  // namespace pitool
