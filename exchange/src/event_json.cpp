// SPDX-License-Identifier: Apache-2.0

#include <pi/exchange/event_json.h>
#include <pi/exchange/model_json.h>
#include <pi/vocabulary.h>
#include <pi/vocabulary_lists.h>
#include <velk/clock.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "json_bytes.h"
#include "model_reader.h"

namespace PI {

namespace {

/// Whatever the locale.
char ToUpper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

bool IsName(const JsonValue& value, std::string_view name) {
    return std::equal(name.begin(), name.end(), value.GetString(),
                      value.GetString() + value.GetStringLength(),
                      [](char one, char other) { return one == ToUpper(other); });
}

void ReadID(const JsonValue& value, const JsonPlace& place, std::uint32_t& id) {
    if (!value.IsString()) {
        CModelReader::Read(value, place, id);
        return;
    }
    for (const CVocabularyEntry event : Vocabulary::EventIDs()) {
        if (IsName(value, event.Name())) {
            id = static_cast<std::uint32_t>(event.Number());
            return;
        }
    }
    place.Refuse("is no name of an event");
}

void ReadSeverity(const JsonValue& value, const JsonPlace& place, _SEVERITY& severity) {
    if (!value.IsString()) {
        CModelReader::Read(value, place, severity);
        return;
    }
    for (const _SEVERITY known :
         {Severity::DEBUG, Severity::INFORMATION, Severity::WARNING, Severity::ERROR}) {
        if (IsName(value, SeverityToString(known))) {
            severity = known;
            return;
        }
    }
    place.Refuse("is none of DEBUG, INFORMATION, WARNING, ERROR");
}

template <class Value>
void SetPlaceHolder(CEvent& event, rapidjson::SizeType index, const Value& value) {
    using Setter = void (CEvent::*)(Value);
    constexpr Setter SETTERS[] = {&CEvent::SetPlaceHolder1, &CEvent::SetPlaceHolder2,
                                  &CEvent::SetPlaceHolder3, &CEvent::SetPlaceHolder4,
                                  &CEvent::SetPlaceHolder5, &CEvent::SetPlaceHolder6};
    (event.*SETTERS[index])(value);
}

void ReadPlaceHolder(const JsonValue& value, const JsonPlace& place, CEvent& event,
                     rapidjson::SizeType index) {
    if (value.IsNull()) {
        return;
    }
    if (value.IsObject() && value.MemberCount() == 1 && value.HasMember("resource")) {
        std::int32_t resource = 0;
        CModelReader::Read(value["resource"], place.In("resource"), resource);
        SetPlaceHolder<int>(event, index, resource);
        return;
    }
    if (!value.IsString()) {
        place.RefuseType(value, "a text, null or {\"resource\": number}");
    }
    std::string text;
    CModelReader::Read(value, place, text);
    SetPlaceHolder<const std::string&>(event, index, text);
}

void ReadPlaceHolders(const JsonValue& list, const JsonPlace& place, CEvent& event) {
    constexpr rapidjson::SizeType MOST = 6;
    if (!list.IsArray()) {
        place.RefuseType(list, "a list");
    }
    if (list.Size() > MOST) {
        place.Refuse("holds more than 6");
    }
    for (rapidjson::SizeType index = 0; index < list.Size(); ++index) {
        ReadPlaceHolder(list[index], place.In(index), event, index);
    }
}

void ReadMember(std::string_view name, const JsonValue& value, const JsonPlace& root, CEvent& event) {
    const JsonPlace place = root.In(name.data());
    if (name == "id") {
        ReadID(value, place, event.m_EventID);
    } else if (name == "severity") {
        ReadSeverity(value, place, event.m_Severity);
    } else if (name == "timestamp") {
        CModelReader::Read(value, place, event.m_TimeStamp);
    } else if (name == "host") {
        CModelReader::Read(value, place, event.m_Host);
    } else if (name == "source") {
        CModelReader::Read(value, place, event.m_Source);
    } else if (name == "sequence") {
        CModelReader::Read(value, place, event.m_SequenceNumber);
    } else if (name == "placeholders") {
        ReadPlaceHolders(value, place, event);
    } else {
        root.Refuse("has an unknown member \"" + ReadableText(name) + "\"");
    }
}

}  // namespace

bool ReadEvent(const std::string& text, CEvent& event, std::string& reason) {
    reason.clear();
    try {
        CNumberedDocument document;
        document.ParseWhole(text);
        const JsonPlace root;
        CModelReader(document, root).End();  // an object without a member twice
        if (document.HasMember("record")) {
            return FromJson(text, event, reason);
        }
        CEvent read;
        read.m_TimeStamp = VELK::now();
        for (const auto& member : document.GetObject()) {
            ReadMember({member.name.GetString(), member.name.GetStringLength()}, member.value, root, read);
        }
        event = std::move(read);
        return true;
    } catch (JsonRefusal& refusal) {
        reason = std::move(refusal.m_Reason);
        return false;
    }
}

}  // namespace PI
