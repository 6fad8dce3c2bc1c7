// SPDX-License-Identifier: Apache-2.0

#include "property_text.h"

#include <pi/vocabulary.h>

#include <cstdio>
#include <vector>

namespace service {
namespace {

struct UnitRow {
    PI::_UNITS m_Unit;
    const char* m_Text;
};
constexpr UnitRow UNITS[] = {
    {PI::Units::BYTES, " bytes"},   {PI::Units::KILOBYTES, " KiB"}, {PI::Units::MEGABYTES, " MiB"},
    {PI::Units::GIGABYTES, " GiB"}, {PI::Units::TERABYTES, " TiB"}, {PI::Units::PETABYTES, " PiB"},
};

std::string StateText(int state) {
    const std::string& name = PI::PropertyValueToString(state);
    return name.empty() ? std::to_string(state) : name;
}

std::string FloatText(float value, int unit) {
    char text[64];
    std::snprintf(text, sizeof text, unit == PI::Units::BYTES ? "%.0f" : "%.1f", static_cast<double>(value));
    for (const UnitRow& row : UNITS) {
        if (row.m_Unit == unit) {
            return std::string(text) + row.m_Text;
        }
    }
    return text;
}

template <class Item, class ToText>
std::string Join(const std::vector<Item>& items, ToText toText) {
    std::string joined;
    for (const Item& item : items) {
        joined += (joined.empty() ? "" : ", ") + toText(item);
    }
    return joined;
}

}  // namespace

std::string PropertyText(PI::CProperty& property) {
    namespace Type = PI::PropertyType;
    const PI::CProperty::_DATA& data = property.m_Data;
    switch (property.m_Type) {
        case Type::STRING:
        case Type::MULTI_STRING: return property.GetValue(nullptr);
        case Type::CHOICE: return StateText(data.m_Choice.m_Value);
        case Type::BOOL: return data.m_Bool.m_Value ? "yes" : "no";
        case Type::LONG: return std::to_string(data.m_Long.m_Value);
        case Type::SIGNED_LONG: return std::to_string(data.m_SignedLong.m_Value);
        case Type::RANGE:
            return std::to_string(data.m_Range.m_Value) + " (" + std::to_string(data.m_Range.m_Min) + " to " +
                   std::to_string(data.m_Range.m_Max) + ")";
        case Type::MULTI_VALUE: return Join(data.m_MultiValue.m_Values, StateText);
        case Type::FLOAT: return FloatText(data.m_Float.m_Value, property.m_Attribute2);
        case Type::MULTI_LONG:
            return Join(data.m_MultiLong.m_Values,
                        [](std::uint64_t number) { return std::to_string(number); });
        case Type::XML: return "(a document)";
        default: return "(no value)";
    }
}

}  // namespace service
