// SPDX-License-Identifier: Apache-2.0

#include "inventory.h"

#include <algorithm>
#include <climits>
#include <map>
#include <optional>
#include <set>

#include "plugin_interface.h"
#include "printable_text.h"

namespace service {
namespace {

using PI::CPluginHelper;

constexpr std::size_t INDENT = 2;

/// " [anchor]" or nothing.
std::string HelpText(int topic) {
    std::string anchor;
    return CPluginHelper::GetHelpPath(topic, anchor) == PI::ErrorCode::SUCCESS ? " [" + anchor + "]" : "";
}

std::string IconText(const PI::CObject& object) {
    std::string fileName;
    const int icon = object.m_ObjectValue > INT_MAX ? 0 : static_cast<int>(object.m_ObjectValue);
    return CPluginHelper::GetIconPath(icon, fileName) == PI::ErrorCode::SUCCESS ? " (" + fileName + ")" : "";
}

/// The value of the first property with an identifier; empty when there is none.
std::string ValueOf(const PI::CObject& object, PI::_PROPERTY_ID id) {
    const PI::CProperty* property = CPluginHelper::FindProperty(object, id);
    return property == nullptr ? "" : CPluginHelper::StringifyProperty(*property);
}

/// " (NAME, RAID_LEVEL)" or nothing.
std::string ParameterText(const PI::COperation& operation) {
    std::string text;
    for (const PI::CProperty& parameter : operation.m_Properties) {
        text += (text.empty() ? " (" : ", ") + PI::PropertyIDToString(parameter.m_ID);
    }
    return text.empty() ? "" : text + ")";
}

/// Objects, by what they are part of: the first of those that are there, or nothing.
using Parts = std::multimap<std::optional<std::uint64_t>, const PI::CObject*>;

void Append(const PI::CObject& object, std::size_t depth, const Parts& parts,
            std::set<const PI::CObject*>& printed, std::string& text) {
    if (!printed.insert(&object).second) {
        return;
    }
    const auto addLine = [&text](std::size_t indent, const std::string& line) {
        text += std::string(indent * INDENT, ' ') + PrintableText(line) + "\n";
    };
    addLine(depth, ObjectHeading(object));
    for (const PI::CProperty& property : object.m_Properties) {
        if (property.m_ID != PI::PropertyID::NAME) {
            addLine(depth + 1, PI::PropertyIDToString(property.m_ID) + ": " +
                                   CPluginHelper::StringifyProperty(property) +
                                   HelpText(property.m_Attribute1));
        }
    }
    for (const PI::COperation& operation : object.m_Operations) {
        addLine(depth + 1, "can " + PI::OperationIDToString(static_cast<int>(operation.m_Header1)) +
                               ParameterText(operation) + HelpText(static_cast<int>(operation.m_Header2)));
    }
    const auto [first, last] = parts.equal_range(object.m_ObjectID);
    std::for_each(first, last,
                  [&](const auto& part) { Append(*part.second, depth + 1, parts, printed, text); });
}

}  // namespace

std::string ObjectHeading(const PI::CObject& object) {
    const std::string id = std::to_string(object.m_ObjectID);
    std::string kind = "Object " + id + " of type " + std::to_string(object.m_ObjectType);
    if (CPluginHelper::IsAdapterType(object.m_ObjectType)) {
        const std::string number = ValueOf(object, PI::PropertyID::ADAPTER_NUMBER);
        kind = "Adapter " + (number.empty() ? "without a number" : number);
    } else if (object.m_ObjectType == LOGICAL_DRIVE) {
        kind = "Logical drive " + id;
    } else if (object.m_ObjectType == PHYSICAL_DRIVE) {
        kind = "Physical drive " + id;
    } else if (object.m_ObjectType == PI::ObjectType::TASK) {
        kind = "Task " + id;
    }
    return kind + ": " + ValueOf(object, PI::PropertyID::NAME) + IconText(object);
}

std::string InventoryText(const std::vector<PI::CObject>& objects) {
    std::set<std::uint64_t> ids;
    for (const PI::CObject& object : objects) {
        ids.insert(object.m_ObjectID);
    }
    Parts parts;
    for (const PI::CObject& object : objects) {
        const auto& wholes = object.m_RelatedIDs1;
        const auto whole =
            std::find_if(wholes.begin(), wholes.end(), [&](std::uint64_t id) { return ids.count(id) != 0; });
        parts.emplace(whole == wholes.end() ? std::nullopt : std::optional(*whole), &object);
    }
    std::set<const PI::CObject*> printed;
    std::string text;
    const auto [first, last] = parts.equal_range(std::nullopt);
    std::for_each(first, last, [&](const auto& root) { Append(*root.second, 1, parts, printed, text); });
    for (const PI::CObject& object : objects) {  // what is part of itself, in a plug-in that got it wrong
        Append(object, 1, parts, printed, text);
    }
    return text;
}

}  // namespace service
