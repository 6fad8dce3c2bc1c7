// SPDX-License-Identifier: Apache-2.0

#include <pi/event.h>
#include <pi/plugin_helper.h>
#include <velkx/language_support.h>
#include <velkx/system_time.h>

#include <cstdio>

namespace PI {

namespace {

constexpr char UNKNOWN_EVENT[] = "Unknown Event";

constexpr std::string& (CEvent::*PLACEHOLDER_GETTERS[])() = {
    &CEvent::GetPlaceHolder1, &CEvent::GetPlaceHolder2, &CEvent::GetPlaceHolder3,
    &CEvent::GetPlaceHolder4, &CEvent::GetPlaceHolder5, &CEvent::GetPlaceHolder6,
};

std::string DateTimeText(std::uint64_t timeStamp) {
    VELKX::_DATE date = {};
    VELKX::CSystemTime::GetDate(timeStamp, date);
    char text[6 * sizeof("-2147483648")];
    std::snprintf(text, sizeof(text), "%02d/%02d/%4d %02d:%02d:%02d", date.m_Month, date.m_Day, date.m_Year,
                  date.m_Hour, date.m_Minute, date.m_Second);
    return text;
}

const char* SeverityText(_SEVERITY severity) {
    switch (severity) {
        case Severity::WARNING: return "WARNING";
        case Severity::ERROR: return "ERROR";
        case Severity::INFORMATION: return "INFORMATION";
        default: return "DEBUG";
    }
}

std::string DescriptionText(unsigned int eventID) {
    std::string text;
    try {
        CLanguageSupport::ResolveString(eventID, text);
    } catch (...) {
        text.clear();
    }
    return text;
}

/// Replaces the first marker of each placeholder, one placeholder after the other, so that a value may bring
/// in a later marker. Appends the values used to a list, with ", " between them.
void FillIn(CEvent& event, std::string& description, std::string& used) {
    const std::size_t start = used.size();
    try {
        char marker[] = "%1";
        for (const auto getter : PLACEHOLDER_GETTERS) {
            const std::string& value = (event.*getter)();
            const std::size_t position = description.find(marker);
            if (!value.empty() && position != std::string::npos) {
                used.reserve(used.size() + value.size() + 2);  // so that it is added whole or not at all
                used += used.size() > start ? ", " : "";
                used += value;
                description.replace(position, sizeof(marker) - 1, value);
            }
            ++marker[1];
        }
    } catch (...) {
        description = UNKNOWN_EVENT;
    }
}

}  // namespace

std::vector<std::pair<std::string, std::string>> CPluginHelper::StringifyEventMessage(CEvent& event) {
    std::vector<std::pair<std::string, std::string>> rendered;
    rendered.reserve(9);
    rendered.emplace_back("EventID", std::to_string(event.m_EventID));
    rendered.emplace_back("Host", event.m_Host.empty() ? "localhost" : event.m_Host);
    rendered.emplace_back("Source", event.m_Source);
    rendered.emplace_back("Timestamp", std::to_string(event.m_TimeStamp));
    rendered.emplace_back("Datetime", DateTimeText(event.m_TimeStamp));
    rendered.emplace_back("Severity", SeverityText(event.m_Severity));

    std::string description = DescriptionText(event.m_EventID);
    if (description.empty()) {
        description = UNKNOWN_EVENT;
    } else {
        std::string placeholders = "[";
        FillIn(event, description, placeholders);
        rendered.emplace_back("Placeholders", placeholders + "]");
    }
    rendered.emplace_back("Description", std::move(description));
    rendered.emplace_back("SequenceNumber", std::to_string(event.m_SequenceNumber));
    return rendered;
}

}  // namespace PI
