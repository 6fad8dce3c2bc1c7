// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the host and the process of a plug-in say to each other: records of the model as JSON, one a line.
///
/// A request is a message, and so is its outcome; records that were asked for come before the outcome. Each
/// message carries the lists of CGlobalAdapterID, so that adapters have the numbers that they would have in
/// one process, and keep them when the process of a plug-in is started again. For that the host has one
/// request under way at a time.
#pragma once

#include <pi/adapters.h>
#include <pi/exchange/model_json.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace service {

/// Where the process of a plug-in finds its end of the socket.
constexpr int PLUGIN_SOCKET = 3;

/// Exit status of a process that has used up its memory (judgement: a number that programs do not use).
constexpr int OUT_OF_MEMORY = 112;

/// The first texts of requests. EXECUTE comes with an identifier, an operation and a task.
namespace Ask {
constexpr const char* LOAD = "loading";              ///< brings the name, or why it cannot be loaded
constexpr const char* OBJECTS = "PluginGetObjects";  ///< brings objects, and errors
constexpr const char* EVENTS = "PluginGetEvents";    ///< brings events, and errors
constexpr const char* EXECUTE = "PluginExecute";     ///< brings the task, and errors
}  // namespace Ask

/// An empty line within the outcome of EXECUTE asks whether to go on with the task as it was sent last. This
/// line is the answer yes, any other is no.
constexpr const char* GO_ON = "go on";

struct Message {
    std::vector<std::string> m_Texts;
    int m_Code = 0;  ///< the error code of an outcome
};

/// @throws std::runtime_error when the line is no such record
template <class Record>
void ReadRecord(const std::string& line, Record& record) {
    std::string reason;
    if (!PI::FromJson(line, record, reason)) {
        throw std::runtime_error("what cannot be read: " + reason);
    }
}

/// Whether a line is a message, and not a record that comes before one.
inline bool IsMessage(std::string_view line) {
    constexpr std::string_view BEGIN = "{\"record\":\"operation\"";
    return line.substr(0, BEGIN.size()) == BEGIN;
}

/// Texts as a property, which may hold any bytes.
inline PI::CProperty TextList(const std::vector<std::string>& texts) {
    PI::CProperty property;
    property.m_Type = PI::PropertyType::MULTI_STRING;
    property.m_Data.m_MultiString.m_Values = texts;
    return property;
}

/// A message as a line, and the adapters of this process.
inline std::string WriteMessage(const Message& message) {
    PI::COperation operation;
    operation.m_Header1 = static_cast<std::uint32_t>(message.m_Code);
    operation.m_Properties.push_back(TextList(message.m_Texts));
    for (const auto& [host, ids] : PI::CGlobalAdapterID::AllHostsAdaptersUniqueIDs) {
        PI::CObject& list = operation.m_ObjectList.emplace_back();
        list.m_Properties.push_back(TextList({host}));
        list.m_RelatedIDs1.assign(ids.begin(), ids.end());
    }
    return PI::ToJson(operation);
}

/// Reads a message, and registers adapters that this process does not have yet.
/// @throws std::exception when it is none
inline Message ReadMessage(const std::string& line) {
    PI::COperation operation;
    ReadRecord(line, operation);
    for (const PI::CObject& list : operation.m_ObjectList) {
        PI::CGlobalAdapterID adapter;
        adapter.m_HostName = list.m_Properties.at(0).m_Data.m_MultiString.m_Values.at(0);
        for (const std::uint64_t id : list.m_RelatedIDs1) {
            adapter.SetAdapterUniqueID(static_cast<int>(id));
        }
    }
    return {operation.m_Properties.at(0).m_Data.m_MultiString.m_Values,
            static_cast<int>(operation.m_Header1)};
}

}  // namespace service
