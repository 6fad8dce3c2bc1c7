// SPDX-License-Identifier: Apache-2.0
// A property and an object as plain structs, everything inline: the descriptive fields and standard members
// of every kind of data but the XML document.
#pragma once

#include <tuple>

#include "baseline/memberwise.h"
#include "sample_object.h"

namespace bench {

struct PlainProperty {
    memberwise::Description m_Description;
    std::int32_t m_Choice = 1;
    std::vector<std::int32_t> m_Choices;
    std::int32_t m_Range = 1;
    std::int32_t m_Min = -1;
    std::int32_t m_Max = -1;
    std::uint32_t m_Step = 0;
    std::string m_String;
    std::int64_t m_Extra1 = 0;
    std::int64_t m_Extra2 = 0;
    bool m_Bool = false;
    std::uint64_t m_Long = 0;
    std::int64_t m_SignedLong = 0;
    std::vector<std::int32_t> m_MultiValues;
    std::vector<std::int32_t> m_MultiValues2;
    float m_Float = 0.0F;
    std::vector<std::uint64_t> m_MultiLong;
    std::vector<std::string> m_MultiString;
    std::uint32_t m_SelectionMask = 0xFFFFFFFF;
};

struct PlainObject {
    std::uint64_t m_ObjectID = 0;
    std::int32_t m_ObjectType = 1;
    std::vector<std::uint64_t> m_RelatedIDs1;
    std::vector<std::uint64_t> m_RelatedIDs2;
    std::uint64_t m_ObjectValue = 0;
    bool m_ObjectFlag = false;
    std::vector<PlainProperty> m_Properties;
    std::uint64_t m_UniqueID = 0;
};

/// Sets the descriptive fields of a property as the library's setters leave them.
inline void Describe(const PI::CProperty& source, memberwise::Description& target) {
    target.m_ID = source.m_ID;
    target.m_SecondaryID = source.m_SecondaryID;
    target.m_Type = source.m_Type;
    target.m_Format = source.m_Format;
    target.m_Flag1 = source.m_Flag1;
}

inline PlainProperty ToPlain(const PI::CProperty& source) {
    const auto& data = source.m_Data;
    PlainProperty plain;
    Describe(source, plain.m_Description);
    plain.m_Choice = data.m_Choice.m_Value;
    plain.m_Choices = data.m_Choice.m_Choices;
    plain.m_Range = data.m_Range.m_Value;
    plain.m_Min = data.m_Range.m_Min;
    plain.m_Max = data.m_Range.m_Max;
    plain.m_Step = data.m_Range.m_Step;
    plain.m_String = data.m_String.m_Value;
    plain.m_Bool = data.m_Bool.m_Value;
    plain.m_Long = data.m_Long.m_Value;
    plain.m_MultiString = data.m_MultiString.m_Values;
    plain.m_SelectionMask = data.m_MultiString.m_SelectionMask;
    return plain;
}

inline memberwise::Property ToMemberwise(const PI::CProperty& source) {
    const auto& data = source.m_Data;
    memberwise::Property property;
    Describe(source, property.m_Description);
    property.m_Choice.m_Value = data.m_Choice.m_Value;
    property.m_Choice.m_Choices = data.m_Choice.m_Choices;
    property.m_Range.m_Value = data.m_Range.m_Value;
    property.m_Range.m_Min = data.m_Range.m_Min;
    property.m_Range.m_Max = data.m_Range.m_Max;
    property.m_Range.m_Step = data.m_Range.m_Step;
    property.m_String.m_Value = data.m_String.m_Value;
    property.m_Bool.m_Value = data.m_Bool.m_Value;
    property.m_Long.m_Value = data.m_Long.m_Value;
    property.m_MultiString.m_Values = data.m_MultiString.m_Values;
    property.m_MultiString.m_SelectionMask = data.m_MultiString.m_SelectionMask;
    return property;
}

inline PlainObject ToPlain(const PI::CObject& source) {
    PlainObject plain;
    plain.m_ObjectID = source.m_ObjectID;
    plain.m_RelatedIDs1 = source.m_RelatedIDs1;
    for (const PI::CProperty& property : source.m_Properties) {
        plain.m_Properties.push_back(ToPlain(property));
    }
    return plain;
}

inline memberwise::Object ToMemberwise(const PI::CObject& source) {
    memberwise::Object object;
    object.m_ObjectID = source.m_ObjectID;
    object.m_RelatedIDs1 = source.m_RelatedIDs1;
    for (const PI::CProperty& property : source.m_Properties) {
        object.m_Properties.push_back(ToMemberwise(property));
    }
    return object;
}

}  // namespace bench
