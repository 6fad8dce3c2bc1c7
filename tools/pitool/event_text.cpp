// SPDX-License-Identifier: Apache-2.0

#include "event_text.h"

#include "print/text.h"
#include "text_table.h"

namespace pitool {

std::string EventText(const RenderedEvent& event, const Screen& screen) {
    constexpr std::size_t KEY_WIDTH = 14;
    std::vector<std::string> values;
    values.reserve(event.size());
    std::vector<std::vector<Cell>> lines;
    for (const auto& [key, value] : event) {
        values.push_back(PrintableText(value));
        const Style style = key == "Severity" ? SeverityStyle(value) : Style::PLAIN;
        // Without a value no blanks follow the key.
        lines.push_back(value.empty() ? std::vector<Cell>{{key}}
                                      : std::vector<Cell>{{key}, {values.back(), style}});
    }
    return TableText(lines, screen, 0, {KEY_WIDTH});
}

std::string EventLine(const RenderedEvent& event, const Screen& screen) {
    constexpr std::size_t INDENT = 2;
    constexpr std::size_t SEVERITY_WIDTH = 11;
    const auto value = [&event](const char* wanted) -> std::string {
        for (const auto& [key, text] : event) {
            if (key == wanted) {
                return PrintableText(text);
            }
        }
        return "";
    };
    const std::string severity = value("Severity");
    const std::string id = value("EventID");
    const std::string description = value("Description");
    return TableText({{{severity, SeverityStyle(severity)}, {id}, {description}}}, screen, INDENT,
                     {SEVERITY_WIDTH});
}

}  // namespace pitool
