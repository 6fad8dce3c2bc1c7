// SPDX-License-Identifier: Apache-2.0

#include "plugin_messages.h"

#include <string_view>
#include <utility>

namespace service {
namespace {

PI::CProperty TextList(std::vector<std::string> texts) {
    PI::CProperty property;
    property.m_Type = PI::PropertyType::MULTI_STRING;
    property.m_Data.m_MultiString.m_Values = std::move(texts);
    return property;
}

const std::vector<std::string>& Texts(const std::vector<PI::CProperty>& properties) {
    if (properties.size() != 1) {
        throw std::runtime_error("a message without its texts");
    }
    return properties.front().m_Data.m_MultiString.m_Values;
}

}  // namespace

std::string WriteMessage(const Message& message) {
    PI::COperation operation;
    operation.m_Header1 = static_cast<std::uint32_t>(message.m_Number);
    operation.m_Properties.push_back(TextList(message.m_Texts));
    for (const auto& [host, ids] : PI::CGlobalAdapterID::AllHostsAdaptersUniqueIDs) {
        PI::CObject& list = operation.m_ObjectList.emplace_back();
        list.m_Properties.push_back(TextList({host}));
        list.m_RelatedIDs1.assign(ids.begin(), ids.end());
    }
    return PI::ToJson(operation);
}

bool IsMessage(const std::string& line) {
    constexpr std::string_view BEGIN = "{\"record\":\"operation\"";
    return line.compare(0, BEGIN.size(), BEGIN) == 0;
}

Message ReadMessage(const std::string& line) {
    PI::COperation operation;
    ReadRecord(line, operation);
    for (const PI::CObject& list : operation.m_ObjectList) {
        PI::CGlobalAdapterID adapter;
        adapter.m_HostName = Texts(list.m_Properties).at(0);
        for (const std::uint64_t id : list.m_RelatedIDs1) {
            adapter.SetAdapterUniqueID(static_cast<int>(id));
        }
    }
    return {static_cast<int>(operation.m_Header1), Texts(operation.m_Properties)};
}

}  // namespace service
