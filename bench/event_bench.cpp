// SPDX-License-Identifier: Apache-2.0
// Rendering an event with six placeholders.

#include <fmt/format.h>
#include <pi/event.h>
#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>
#include <velkx/language_support.h>
#include <velkx/system_time.h>

#include <boost/format.hpp>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "measure.h"

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

constexpr unsigned EVENT_ID = 10056;
constexpr int RESOURCE = 40007;

PI::CEvent SampleEvent() {
    CLanguageSupport::SetString(EVENT_ID, "Drive %1 in slot %2 of %3 failed: %4, %5 of %6.");
    CLanguageSupport::SetString(RESOURCE, "enclosure 3");
    PI::CEvent event;
    event.m_EventID = EVENT_ID;
    event.m_Severity = PI::Severity::WARNING;
    event.m_TimeStamp = 1615107900000;
    event.m_Source = "plug-in of a controller";
    event.m_SequenceNumber = 4711;
    event.SetPlaceHolder1("WDC WD40EFRX-68N32N0");
    event.SetPlaceHolder2("7");
    event.SetPlaceHolder3(RESOURCE);
    event.SetPlaceHolder4("read error");
    event.SetPlaceHolder5("12");
    event.SetPlaceHolder6("16");
    return event;
}

const char* SeverityText(PI::_SEVERITY severity) {
    switch (severity) {
        case PI::Severity::WARNING: return "WARNING";
        case PI::Severity::ERROR: return "ERROR";
        case PI::Severity::INFORMATION: return "INFORMATION";
        default: return "DEBUG";
    }
}

std::string PlaceHolderText(const std::string& stored) {
    if (stored.compare(0, 2, "I:") == 0) {
        std::string text;
        CLanguageSupport::ResolveString(static_cast<unsigned>(std::atoi(stored.c_str() + 2)), text);
        return text;
    }
    return stored.substr(2);
}

// The least that must be done: numbers by snprintf, texts put together by std::string.

std::string Number(std::uint64_t number) {
    char text[24];
    std::snprintf(text, sizeof(text), "%" PRIu64, number);
    return text;
}

std::string DateTime(std::uint64_t timeStamp) {
    VELKX::_DATE date = {};
    VELKX::CSystemTime::GetDate(timeStamp, date);
    char text[80];
    std::snprintf(text, sizeof(text), "%02d/%02d/%4d %02d:%02d:%02d", date.m_Month, date.m_Day, date.m_Year,
                  date.m_Hour, date.m_Minute, date.m_Second);
    return text;
}

// The same by fmt.

std::string NumberByFmt(std::uint64_t number) {
    return fmt::format("{}", number);
}

std::string DateTimeByFmt(std::uint64_t timeStamp) {
    VELKX::_DATE date = {};
    VELKX::CSystemTime::GetDate(timeStamp, date);
    return fmt::format("{:02}/{:02}/{:4} {:02}:{:02}:{:02}", date.m_Month, date.m_Day, date.m_Year,
                       date.m_Hour, date.m_Minute, date.m_Second);
}

// The same by format texts, each parsed where it is used.

std::string NumberByBoost(std::uint64_t number) {
    return boost::str(boost::format("%lu") % number);
}

std::string DateTimeByBoost(std::uint64_t timeStamp) {
    VELKX::_DATE date = {};
    VELKX::CSystemTime::GetDate(timeStamp, date);
    return boost::str(boost::format("%02d/%02d/%4d %02d:%02d:%02d") % date.m_Month % date.m_Day %
                      date.m_Year % date.m_Hour % date.m_Minute % date.m_Second);
}

template <class NumberText, class DateTimeText>
Pairs Render(const PI::CEvent& event, NumberText number, DateTimeText dateTime) {
    std::string description;
    CLanguageSupport::ResolveString(event.m_EventID, description);
    std::string used = "[";
    char marker[] = "%1";
    for (const std::string* stored : {&event.m_PlaceHolder1, &event.m_PlaceHolder2, &event.m_PlaceHolder3,
                                      &event.m_PlaceHolder4, &event.m_PlaceHolder5, &event.m_PlaceHolder6}) {
        const std::string value = PlaceHolderText(*stored);
        const std::size_t position = description.find(marker);
        if (position != std::string::npos) {
            description.replace(position, 2, value);
            used += used.size() > 1 ? ", " : "";
            used += value;
        }
        ++marker[1];
    }
    Pairs pairs;
    pairs.reserve(9);
    pairs.emplace_back("EventID", number(event.m_EventID));
    pairs.emplace_back("Host", event.m_Host.empty() ? "localhost" : event.m_Host);
    pairs.emplace_back("Source", event.m_Source);
    pairs.emplace_back("Timestamp", number(event.m_TimeStamp));
    pairs.emplace_back("Datetime", dateTime(event.m_TimeStamp));
    pairs.emplace_back("Severity", SeverityText(event.m_Severity));
    pairs.emplace_back("Placeholders", used + "]");
    pairs.emplace_back("Description", std::move(description));
    pairs.emplace_back("SequenceNumber", number(event.m_SequenceNumber));
    return pairs;
}

template <class Way>
void AddWay(const std::string& name, Way render) {
    bench::Add("render_event", name, [render](benchmark::State& state) {
        PI::CEvent event = SampleEvent();
        if (render(event) != PI::CPluginHelper::StringifyEventMessage(event)) {
            state.SkipWithError("the renderings differ");
            return;
        }
        bench::Measure(state, [&] { benchmark::DoNotOptimize(render(event)); });
    });
}

}  // namespace

void bench::RegisterBenchmarks() {
    AddWay("library", [](PI::CEvent& event) { return PI::CPluginHelper::StringifyEventMessage(event); });
    AddWay("naive", [](const PI::CEvent& event) { return Render(event, NumberByBoost, DateTimeByBoost); });
    AddWay("fmt", [](const PI::CEvent& event) { return Render(event, NumberByFmt, DateTimeByFmt); });
    AddWay("snprintf", [](const PI::CEvent& event) { return Render(event, Number, DateTime); });
}
