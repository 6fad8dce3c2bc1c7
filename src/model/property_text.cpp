// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>
#include <pi/property.h>

#include <charconv>
#include <limits>

namespace PI {

namespace {

const char* UnitText(std::int32_t unit) {
    switch (unit) {
        case Units::BYTES: return "bytes";
        case Units::KILOBYTES: return "KiB";
        case Units::MEGABYTES: return "MiB";
        case Units::GIGABYTES: return "GiB";
        case Units::TERABYTES: return "TiB";
        case Units::PETABYTES: return "PiB";
        default: return "";
    }
}

std::string StateText(std::int32_t state) {
    const std::string& name = PropertyValueToString(state);
    return name.empty() ? std::to_string(state) : name;
}

std::string FixedText(float value, int decimals) {
    char text[std::numeric_limits<float>::max_exponent10 + sizeof("-.0")];
    const auto end = std::to_chars(text, text + sizeof(text), value, std::chars_format::fixed, decimals).ptr;
    return std::string(text, end);
}

template <class Item, class ToText>
std::string Join(const std::vector<Item>& items, ToText toText) {
    std::string joined;
    for (const Item& item : items) {
        if (!joined.empty()) {
            joined += ", ";
        }
        joined += toText(item);
    }
    return joined;
}

std::string WithUnit(std::string number, const std::string& unit) {
    if (!unit.empty() && !number.empty()) {
        number += " " + unit;
    }
    return number;
}

std::string RangeText(const CRangeData& range, const std::string& unit) {
    return WithUnit(std::to_string(range.m_Value), unit) + " (" + std::to_string(range.m_Min) + " to " +
           std::to_string(range.m_Max) + ")";
}

std::string FractionText(float value, std::int32_t capacityUnit, const std::string& unit) {
    if (capacityUnit == Units::BYTES) {
        const std::string number = FixedText(value, 0);
        return WithUnit(number, number == "1" ? "byte" : UnitText(capacityUnit));
    }
    const std::string capacity = UnitText(capacityUnit);
    return WithUnit(FixedText(value, 1), capacity.empty() ? unit : capacity);
}

}  // namespace

std::string CPluginHelper::StringifyProperty(const CProperty& property, const std::string& unit) {
    const CProperty::_DATA& data = property.m_Data;
    switch (property.m_Type) {
        case PropertyType::STRING:
        case PropertyType::MULTI_STRING: return property.GetValue(nullptr);
        case PropertyType::CHOICE: return StateText(data.m_Choice.m_Value);
        case PropertyType::BOOL: return data.m_Bool.m_Value ? "yes" : "no";
        case PropertyType::LONG: return WithUnit(std::to_string(data.m_Long.m_Value), unit);
        case PropertyType::SIGNED_LONG: return WithUnit(std::to_string(data.m_SignedLong.m_Value), unit);
        case PropertyType::RANGE: return RangeText(data.m_Range, unit);
        case PropertyType::MULTI_VALUE: return Join(data.m_MultiValue.m_Values, StateText);
        case PropertyType::FLOAT: return FractionText(data.m_Float.m_Value, property.m_Attribute2, unit);
        case PropertyType::MULTI_LONG:
            return WithUnit(
                Join(data.m_MultiLong.m_Values, [](std::uint64_t number) { return std::to_string(number); }),
                unit);
        case PropertyType::XML: return "(a document)";
        case PropertyType::NONE:
        case PropertyType::UNDEFINED: break;
    }
    return "(no value)";
}

}  // namespace PI
