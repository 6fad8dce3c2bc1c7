// SPDX-License-Identifier: Apache-2.0
// Rendering of events whose descriptions, placeholders and texts come from anywhere.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/event.h>
#include <pi/plugin_helper.h>
#include <velkx/language_support.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <utility>
#include <vector>

#include "check.h"

namespace {

using namespace PI;

using Rendered = std::vector<std::pair<std::string, std::string>>;

std::string ExpectedDate(std::uint64_t timeStamp) {
    const auto seconds = static_cast<std::time_t>(timeStamp / 1000);
    std::tm date = {};
    CHECK(gmtime_r(&seconds, &date) != nullptr);
    char text[64];
    std::snprintf(text, sizeof(text), "%02d/%02d/%4ld %02d:%02d:%02d", date.tm_mon + 1, date.tm_mday,
                  date.tm_year + 1900L, date.tm_hour, date.tm_min, date.tm_sec);
    return text;
}

std::string ExpectedSeverity(int severity) {
    return severity == 2 ? "INFORMATION" : severity == 3 ? "WARNING" : severity == 4 ? "ERROR" : "DEBUG";
}

/// The description with the values in place of their markers, one after the other; lists the values used.
std::string ExpectedDescription(const std::string& resource, CEvent& event, std::string& used) {
    std::string text = resource;
    const std::string values[] = {event.GetPlaceHolder1(), event.GetPlaceHolder2(), event.GetPlaceHolder3(),
                                  event.GetPlaceHolder4(), event.GetPlaceHolder5(), event.GetPlaceHolder6()};
    std::vector<std::string> list;
    for (std::size_t i = 0; i < 6; ++i) {
        const std::size_t marker = text.find("%" + std::to_string(i + 1));
        if (marker != std::string::npos && !values[i].empty()) {
            text = text.substr(0, marker) + values[i] + text.substr(marker + 2);
            list.push_back(values[i]);
        }
    }
    for (std::size_t i = 0; i < list.size(); ++i) {
        used += (i == 0 ? "" : ", ") + list[i];
    }
    return text;
}

Rendered ExpectedRendering(CEvent event) {
    Rendered pairs = {
        {"EventID", std::to_string(event.m_EventID)},
        {"Host", event.m_Host.empty() ? "localhost" : event.m_Host},
        {"Source", event.m_Source},
        {"Timestamp", std::to_string(event.m_TimeStamp)},
        {"Datetime", ExpectedDate(event.m_TimeStamp)},
        {"Severity", ExpectedSeverity(event.m_Severity)},
    };
    std::string resource;
    CLanguageSupport::ResolveString(event.m_EventID, resource);
    if (resource.empty()) {
        pairs.emplace_back("Description", "Unknown Event");
    } else {
        std::string used;
        const std::string description = ExpectedDescription(resource, event, used);
        pairs.emplace_back("Placeholders", "[" + used + "]");
        pairs.emplace_back("Description", description);
    }
    pairs.emplace_back("SequenceNumber", std::to_string(event.m_SequenceNumber));
    return pairs;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    setenv("TZ", "UTC0", 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr unsigned DESCRIPTION = 10056;
    FuzzedDataProvider input(data, size);
    CLanguageSupport::Clear();
    CLanguageSupport::SetString(DESCRIPTION, input.ConsumeRandomLengthString());
    for (unsigned number = 0; number < 3; ++number) {
        CLanguageSupport::SetString(number, input.ConsumeRandomLengthString());
    }
    CEvent event;
    event.m_EventID = input.ConsumeBool() ? input.ConsumeIntegralInRange(0U, 3U) : DESCRIPTION;
    for (std::string CEvent::*const placeHolder :
         {&CEvent::m_PlaceHolder1, &CEvent::m_PlaceHolder2, &CEvent::m_PlaceHolder3, &CEvent::m_PlaceHolder4,
          &CEvent::m_PlaceHolder5, &CEvent::m_PlaceHolder6, &CEvent::m_Host, &CEvent::m_Source}) {
        event.*placeHolder = input.ConsumeRandomLengthString();
    }
    event.m_TimeStamp = input.ConsumeIntegral<std::uint64_t>();
    event.m_SequenceNumber = input.ConsumeIntegral<std::uint32_t>();
    event.m_Severity = static_cast<_SEVERITY>(input.ConsumeIntegralInRange(-1, 6));

    const Rendered expected = ExpectedRendering(event);
    const Rendered rendered = CPluginHelper::StringifyEventMessage(event);
    CHECK(rendered.size() == expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        CHECK_TEXT(rendered[i].first, expected[i].first);
        CHECK_TEXT(rendered[i].second, expected[i].second);
    }
    CHECK(CPluginHelper::StringifyEventMessage(event) == rendered);
    return 0;
}
