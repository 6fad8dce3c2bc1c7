// SPDX-License-Identifier: Apache-2.0
// Properties to test with, and their contents as text.
#pragma once

#include <pi/property.h>

#include <array>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace PI::Test {

/// The types that select a kind of data.
constexpr std::array<_PROPERTY_TYPE, 11> DATA_TYPES = {
    PropertyType::STRING,      PropertyType::CHOICE, PropertyType::BOOL,         PropertyType::LONG,
    PropertyType::SIGNED_LONG, PropertyType::RANGE,  PropertyType::MULTI_VALUE,  PropertyType::FLOAT,
    PropertyType::MULTI_LONG,  PropertyType::XML,    PropertyType::MULTI_STRING,
};

/// Numbers that select none.
constexpr std::array<_PROPERTY_TYPE, 7> OTHER_TYPES = {
    PropertyType::NONE,
    PropertyType::UNDEFINED,
    static_cast<_PROPERTY_TYPE>(13),
    static_cast<_PROPERTY_TYPE>(1000),
    static_cast<_PROPERTY_TYPE>(-1),
    static_cast<_PROPERTY_TYPE>(std::numeric_limits<std::int32_t>::max()),
    static_cast<_PROPERTY_TYPE>(std::numeric_limits<std::int32_t>::min()),
};

/// A property whose every field differs from its default and from its neighbours.
inline CProperty FilledProperty() {
    CProperty property;
    property.m_ID = PropertyID::VENDOR;
    property.m_SecondaryID = 102;
    property.m_Attribute1 = 103;
    property.m_Attribute2 = 104;
    property.m_Attribute3 = 105;
    property.m_Attribute4 = 106;
    property.m_Attribute5 = 107;
    property.m_Type = PropertyType::NONE;
    property.m_Format = 108;
    property.m_Flag1 = true;
    property.m_Attribute6 = 109;
    property.m_Flag2 = false;
    CProperty::_DATA& data = property.m_Data;
    data.m_Choice.m_Value = 201;
    data.m_Choice.m_Choices = {202, 201, 203};
    data.m_Range.m_Value = 211;
    data.m_Range.m_Min = 210;
    data.m_Range.m_Max = 219;
    data.m_Range.m_Step = 3;
    data.m_String.m_Value = "text";
    data.m_String.m_Extra1 = 221;
    data.m_String.m_Extra2 = -222;
    data.m_Bool.m_Value = true;
    data.m_Long.m_Value = 0xFFFFFFFFFFFFFFFE;
    data.m_SignedLong.m_Value = std::numeric_limits<std::int64_t>::min();
    data.m_MultiValue.m_Values = {231, -232};
    data.m_MultiValue.m_Values2 = {233};
    data.m_Float.m_Value = 2.5F;
    data.m_MultiLong.m_Values = {241, 0xFFFFFFFFFFFFFFFF};
    data.m_XML.m_Document.load_string("<Root a=\"1\"><Child>251</Child></Root>");
    data.m_MultiString.m_Values = {"A", "B", "C"};
    data.m_MultiString.m_SelectionMask = 5;
    return property;
}

/// A filled property of a given type.
inline CProperty FilledProperty(_PROPERTY_TYPE type) {
    CProperty property = FilledProperty();
    property.m_Type = type;
    return property;
}

inline std::string TextOf(const VELK::XML::xml_document& document) {
    std::ostringstream text;
    document.save(text, "\t", VELK::XML::format_raw | VELK::XML::format_no_declaration);
    return text.str();
}

template <class T>
std::string TextOf(const std::vector<T>& values) {
    std::ostringstream text;
    for (const T& value : values) {
        text << '<' << value << '>';
    }
    return text.str();
}

/// All that the kind of data holds that a type selects.
inline std::string KindText(const CProperty& property, _PROPERTY_TYPE type) {
    const CProperty::_DATA& data = property.m_Data;
    std::ostringstream text;
    switch (type) {
        case PropertyType::STRING:
            text << data.m_String.m_Value << '|' << data.m_String.m_Extra1 << '|' << data.m_String.m_Extra2;
            break;
        case PropertyType::CHOICE:
            text << data.m_Choice.m_Value << '|' << TextOf(data.m_Choice.m_Choices);
            break;
        case PropertyType::BOOL: text << data.m_Bool.m_Value; break;
        case PropertyType::LONG: text << data.m_Long.m_Value; break;
        case PropertyType::SIGNED_LONG: text << data.m_SignedLong.m_Value; break;
        case PropertyType::RANGE:
            text << data.m_Range.m_Value << '|' << data.m_Range.m_Min << '|' << data.m_Range.m_Max << '|'
                 << data.m_Range.m_Step;
            break;
        case PropertyType::MULTI_VALUE:
            text << TextOf(data.m_MultiValue.m_Values) << '|' << TextOf(data.m_MultiValue.m_Values2);
            break;
        case PropertyType::FLOAT: text << data.m_Float.m_Value; break;
        case PropertyType::MULTI_LONG: text << TextOf(data.m_MultiLong.m_Values); break;
        case PropertyType::XML: text << TextOf(data.m_XML.m_Document); break;
        case PropertyType::MULTI_STRING:
            text << TextOf(data.m_MultiString.m_Values) << '|' << data.m_MultiString.m_SelectionMask;
            break;
        case PropertyType::NONE:
        case PropertyType::UNDEFINED: break;
    }
    return text.str();
}

/// The data of all kinds, in the order of DATA_TYPES.
inline std::vector<std::string> KindTexts(const CProperty& property) {
    std::vector<std::string> texts;
    for (const _PROPERTY_TYPE type : DATA_TYPES) {
        texts.push_back(KindText(property, type));
    }
    return texts;
}

/// The fields that say what a property is, without type and format.
inline std::string IdentityText(const CProperty& property) {
    std::ostringstream text;
    text << property.m_ID << ' ' << property.m_SecondaryID << ' ' << property.m_Attribute1 << ' '
         << property.m_Attribute2 << ' ' << property.m_Attribute3 << ' ' << property.m_Attribute4 << ' '
         << property.m_Attribute5 << ' ' << property.m_Flag1 << ' ' << property.m_Attribute6 << ' '
         << property.m_Flag2;
    return text.str();
}

/// Everything in a property.
inline std::vector<std::string> AllTexts(const CProperty& property) {
    std::vector<std::string> texts = KindTexts(property);
    texts.push_back(IdentityText(property));
    texts.push_back(std::to_string(property.m_Type) + ' ' + std::to_string(property.m_Format));
    return texts;
}

}  // namespace PI::Test
