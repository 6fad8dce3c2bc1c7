// SPDX-License-Identifier: Apache-2.0

#include "inventory.h"

#include <algorithm>
#include <climits>
#include <map>
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

class Tree {
public:
    explicit Tree(const std::vector<PI::CObject>& objects) {
        std::set<std::uint64_t> ids;
        for (const PI::CObject& object : objects) {
            ids.insert(object.m_ObjectID);
        }
        for (const PI::CObject& object : objects) {
            const auto parent = std::find_if(object.m_RelatedIDs1.begin(), object.m_RelatedIDs1.end(),
                                             [&](std::uint64_t id) { return ids.count(id) != 0; });
            if (parent == object.m_RelatedIDs1.end()) {
                m_Roots.push_back(&object);
            } else {
                m_Parts[*parent].push_back(&object);
            }
        }
        for (const PI::CObject* const root : m_Roots) {
            Print(*root, 1);
        }
        for (const PI::CObject& object : objects) {  // what is part of itself, in a plug-in that got it wrong
            Print(object, 1);
        }
    }

    std::string m_Text;

private:
    void Line(std::size_t depth, const std::string& text) {
        m_Text += std::string(depth * INDENT, ' ') + PrintableText(text) + "\n";
    }

    void Print(const PI::CObject& object, std::size_t depth) {
        if (!m_Printed.insert(&object).second) {
            return;
        }
        Line(depth, ObjectHeading(object));
        for (const PI::CProperty& property : object.m_Properties) {
            if (property.m_ID != PI::PropertyID::NAME) {
                Line(depth + 1, PI::PropertyIDToString(property.m_ID) + ": " +
                                    CPluginHelper::StringifyProperty(property) +
                                    HelpText(property.m_Attribute1));
            }
        }
        for (const PI::COperation& operation : object.m_Operations) {
            Line(depth + 1, "can " + PI::OperationIDToString(static_cast<int>(operation.m_Header1)) +
                                ParameterText(operation) + HelpText(static_cast<int>(operation.m_Header2)));
        }
        for (const PI::CObject* const part : m_Parts[object.m_ObjectID]) {
            Print(*part, depth + 1);
        }
    }

    std::vector<const PI::CObject*> m_Roots;
    std::map<std::uint64_t, std::vector<const PI::CObject*>> m_Parts;
    std::set<const PI::CObject*> m_Printed;
};

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
    return Tree(objects).m_Text;
}

}  // namespace service
