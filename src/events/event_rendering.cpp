// SPDX-License-Identifier: Apache-2.0

#include <cxxabi.h>
#include <pi/event.h>
#include <pi/plugin_helper.h>
#include <pi/text_table.h>
#include <pi/vocabulary.h>
#include <velkx/language_support.h>
#include <velkx/system_time.h>

#include <cstdio>
#include <functional>
#include <iterator>
#include <map>

#include "events/stored_placeholder.h"

namespace PI {

namespace {

constexpr char UNKNOWN_EVENT[] = "Unknown Event";

constexpr std::string& (CEvent::*PLACEHOLDER_GETTERS[])() = {
    &CEvent::GetPlaceHolder1, &CEvent::GetPlaceHolder2, &CEvent::GetPlaceHolder3,
    &CEvent::GetPlaceHolder4, &CEvent::GetPlaceHolder5, &CEvent::GetPlaceHolder6,
};
constexpr std::string CEvent::*STORED_PLACEHOLDERS[] = {
    &CEvent::m_PlaceHolder1, &CEvent::m_PlaceHolder2, &CEvent::m_PlaceHolder3,
    &CEvent::m_PlaceHolder4, &CEvent::m_PlaceHolder5, &CEvent::m_PlaceHolder6,
};
constexpr std::size_t PLACEHOLDERS = std::size(STORED_PLACEHOLDERS);

std::string DateTimeText(std::uint64_t timeStamp) {
    VELKX::_DATE date = {};
    VELKX::CSystemTime::GetDate(timeStamp, date);
    char text[6 * sizeof("-2147483648")];
    std::snprintf(text, sizeof(text), "%02d/%02d/%4d %02d:%02d:%02d", date.m_Month, date.m_Day, date.m_Year,
                  date.m_Hour, date.m_Minute, date.m_Second);
    return text;
}

/// Appends a value to a list, with ", " before it unless the list only begins.
void AppendUsed(const std::string& value, std::size_t start, std::string& used) {
    used.reserve(used.size() + value.size() + 2);  // so that it is added whole or not at all
    used += used.size() > start ? ", " : "";
    used += value;
}

/// The texts of the process. Reading a placeholder writes to the event.
class ProcessTexts {
public:
    explicit ProcessTexts(CEvent& event) : m_Event(event) {}

    std::string Description() const {
        std::string text;
        CLanguageSupport::ResolveString(m_Event.m_EventID, text);
        return text;
    }

    static bool AreMarkersInValuesFilled() { return true; }

    const std::string& PlaceHolder(std::size_t index) { return (m_Event.*PLACEHOLDER_GETTERS[index])(); }

    static bool DescribeWithoutText(std::string& description, std::string&) {
        description = UNKNOWN_EVENT;
        return false;
    }

private:
    CEvent& m_Event;
};

/// The texts of a table. The event is only read.
class TableTexts {
public:
    TableTexts(const CEvent& event, const CTextTable& texts, _WITHOUT_TEXT withoutText,
               _MARKERS_IN_VALUES markers)
        : m_Event(event), m_Texts(texts), m_WithoutText(withoutText), m_Markers(markers) {}

    bool AreMarkersInValuesFilled() const { return m_Markers != MarkersInValues::TEXT; }

    std::string Description() const { return Text(m_Event.m_EventID); }

    const std::string& PlaceHolder(std::size_t index) {
        return Read(index, [this](unsigned int id) { return Text(id); });
    }

    /// Describes an event that has no text.
    /// @param used the placeholders that the description uses are appended
    /// @return whether it uses placeholders at all
    bool DescribeWithoutText(std::string& description, std::string& used) {
        if (m_WithoutText != WithoutText::NAME_AND_PLACEHOLDERS) {
            description = UNKNOWN_EVENT;
            return false;
        }
        const std::size_t start = used.size();
        for (std::size_t index = 0; index < PLACEHOLDERS; ++index) {
            const std::string& value = Read(index, [this](unsigned int id) {
                std::string text = Text(id);
                if (text.empty()) {
                    text = "resource " + std::to_string(id);
                }
                return text;
            });
            if (!value.empty()) {
                AppendUsed(value, start, used);
            }
        }
        description = EventIDToString(static_cast<int>(m_Event.m_EventID));
        if (description.empty()) {
            description = "Event " + std::to_string(m_Event.m_EventID);
        }
        if (used.size() > start) {
            description += ": " + used.substr(start);
        }
        return true;
    }

private:
    std::string Text(unsigned int id) const {
        const std::string* const text = m_Texts.Find(id);
        return text == nullptr ? std::string() : *text;
    }

    template <class Resolve>
    const std::string& Read(std::size_t index, Resolve resolve) {
        ReadPlaceHolder(m_Event.*STORED_PLACEHOLDERS[index], m_Value,
                        [&](unsigned int id, std::string& text) { text = resolve(id); });
        return m_Value;
    }

    const CEvent& m_Event;
    const CTextTable& m_Texts;
    const _WITHOUT_TEXT m_WithoutText;
    const _MARKERS_IN_VALUES m_Markers;
    std::string m_Value;
};

template <class Texts>
std::string DescriptionText(const Texts& texts) {
    try {
        return texts.Description();
    } catch (const abi::__forced_unwind&) {
        throw;  // the thread is being cancelled
    } catch (...) {
        return std::string();
    }
}

/// Replaces the first marker of each placeholder, one placeholder after the other, so that a value may bring
/// in a later marker; or all of them at last, so that it brings in none. Appends the values used to a list.
template <class Texts>
void FillIn(Texts& texts, std::string& description, std::string& used) {
    const std::size_t start = used.size();
    std::map<std::size_t, std::string, std::greater<>> later;  // from the last place to the first
    try {
        char marker[] = "%1";
        for (std::size_t index = 0; index < PLACEHOLDERS; ++index) {
            const std::string& value = texts.PlaceHolder(index);
            const std::size_t position = description.find(marker);
            if (!value.empty() && position != std::string::npos) {
                AppendUsed(value, start, used);
                if (texts.AreMarkersInValuesFilled()) {
                    description.replace(position, sizeof(marker) - 1, value);
                } else {
                    later[position] = value;
                }
            }
            ++marker[1];
        }
        for (const auto& [position, value] : later) {
            description.replace(position, sizeof(marker) - 1, value);
        }
    } catch (const abi::__forced_unwind&) {
        throw;  // the thread is being cancelled
    } catch (...) {
        description = UNKNOWN_EVENT;
    }
}

using Rendered = std::vector<std::pair<std::string, std::string>>;

template <class Texts>
Rendered Render(const CEvent& event, Texts texts) {
    Rendered rendered;
    rendered.reserve(9);
    rendered.emplace_back("EventID", std::to_string(event.m_EventID));
    rendered.emplace_back("Host", event.m_Host.empty() ? "localhost" : event.m_Host);
    rendered.emplace_back("Source", event.m_Source);
    rendered.emplace_back("Timestamp", std::to_string(event.m_TimeStamp));
    rendered.emplace_back("Datetime", DateTimeText(event.m_TimeStamp));
    rendered.emplace_back("Severity", SeverityToString(event.m_Severity));

    std::string description = DescriptionText(texts);
    std::string placeholders = "[";
    bool isDescribed = true;
    if (description.empty()) {
        isDescribed = texts.DescribeWithoutText(description, placeholders);
    } else {
        FillIn(texts, description, placeholders);
    }
    if (isDescribed) {
        rendered.emplace_back("Placeholders", placeholders + "]");
    }
    rendered.emplace_back("Description", std::move(description));
    rendered.emplace_back("SequenceNumber", std::to_string(event.m_SequenceNumber));
    return rendered;
}

}  // namespace

Rendered CPluginHelper::StringifyEventMessage(CEvent& event) {
    return Render(event, ProcessTexts(event));
}

Rendered CPluginHelper::StringifyEventMessageWith(const CEvent& event, const CTextTable& texts,
                                                  _WITHOUT_TEXT withoutText) {
    return StringifyEventMessageWith(event, texts, withoutText, MarkersInValues::FILLED);
}

Rendered CPluginHelper::StringifyEventMessageWith(const CEvent& event, const CTextTable& texts,
                                                  _WITHOUT_TEXT withoutText, _MARKERS_IN_VALUES markers) {
    return Render(event, TableTexts(event, texts, withoutText, markers));
}

}  // namespace PI
