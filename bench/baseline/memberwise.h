// SPDX-License-Identifier: Apache-2.0
// Properties and objects with the fields of the library's, but without the XML document: what copying them
// costs at least. Built as the library is: a shared library of its own with special members out of line.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#define MEMBERWISE_API __attribute__((visibility("default")))

namespace memberwise {

struct MEMBERWISE_API ChoiceData {
    ChoiceData() = default;
    ChoiceData(const ChoiceData&) = default;
    ChoiceData(ChoiceData&&) noexcept = default;
    ChoiceData& operator=(const ChoiceData&) = default;
    ChoiceData& operator=(ChoiceData&&) noexcept = default;
    virtual ~ChoiceData();

    std::int32_t m_Value = 1;
    std::vector<std::int32_t> m_Choices;
};

struct MEMBERWISE_API RangeData {
    RangeData() = default;
    RangeData(const RangeData&) = default;
    RangeData(RangeData&&) noexcept = default;
    RangeData& operator=(const RangeData&) = default;
    RangeData& operator=(RangeData&&) noexcept = default;
    virtual ~RangeData();

    std::int32_t m_Value = 1;
    std::int32_t m_Min = -1;
    std::int32_t m_Max = -1;
    std::uint32_t m_Step = 0;
};

struct MEMBERWISE_API StringData {
    StringData() = default;
    StringData(const StringData&) = default;
    StringData(StringData&&) noexcept = default;
    StringData& operator=(const StringData&) = default;
    StringData& operator=(StringData&&) noexcept = default;
    virtual ~StringData();

    std::string m_Value;
    std::int64_t m_Extra1 = 0;
    std::int64_t m_Extra2 = 0;
};

/// Data of one number.
template <class Number>
struct MEMBERWISE_API NumberData {
    NumberData() = default;
    NumberData(const NumberData&) = default;
    NumberData(NumberData&&) noexcept = default;
    NumberData& operator=(const NumberData&) = default;
    NumberData& operator=(NumberData&&) noexcept = default;
    virtual ~NumberData();

    Number m_Value = {};
};

struct MEMBERWISE_API MultiValueData {
    MultiValueData() = default;
    MultiValueData(const MultiValueData&) = default;
    MultiValueData(MultiValueData&&) noexcept = default;
    MultiValueData& operator=(const MultiValueData&) = default;
    MultiValueData& operator=(MultiValueData&&) noexcept = default;
    virtual ~MultiValueData();

    std::vector<std::int32_t> m_Values;
    std::vector<std::int32_t> m_Values2;
};

struct MEMBERWISE_API MultiLongData {
    MultiLongData() = default;
    MultiLongData(const MultiLongData&) = default;
    MultiLongData(MultiLongData&&) noexcept = default;
    MultiLongData& operator=(const MultiLongData&) = default;
    MultiLongData& operator=(MultiLongData&&) noexcept = default;
    virtual ~MultiLongData();

    std::vector<std::uint64_t> m_Values;
};

struct MEMBERWISE_API MultiStringData {
    MultiStringData() = default;
    MultiStringData(const MultiStringData&) = default;
    MultiStringData(MultiStringData&&) noexcept = default;
    MultiStringData& operator=(const MultiStringData&) = default;
    MultiStringData& operator=(MultiStringData&&) noexcept = default;
    virtual ~MultiStringData();

    std::vector<std::string> m_Values;
    std::uint32_t m_SelectionMask = 0xFFFFFFFF;
};

/// The fields that describe a property.
struct Description {
    std::int32_t m_ID = 1;
    std::int32_t m_SecondaryID = 1;
    std::int32_t m_Attribute1 = 1;
    std::int32_t m_Attribute2 = 1;
    std::int32_t m_Attribute3 = -1;
    std::int32_t m_Attribute4 = 1;
    std::int32_t m_Attribute5 = 1;
    std::int32_t m_Type = 1;
    std::int32_t m_Format = 0;
    bool m_Flag1 = false;
    std::int32_t m_Attribute6 = 1;
    bool m_Flag2 = true;
};

struct MEMBERWISE_API Property {
    Property();
    Property(const Property& source);
    Property(Property&& source) noexcept;
    Property& operator=(const Property& source);
    Property& operator=(Property&& source) noexcept;
    virtual ~Property();

    Description m_Description;
    ChoiceData m_Choice;
    RangeData m_Range;
    StringData m_String;
    NumberData<bool> m_Bool;
    NumberData<std::uint64_t> m_Long;
    NumberData<std::int64_t> m_SignedLong;
    MultiValueData m_MultiValue;
    NumberData<float> m_Float;
    MultiLongData m_MultiLong;
    MultiStringData m_MultiString;
};

/// The properties of an object with what identifies it.
struct MEMBERWISE_API Object {
    Object();
    Object(const Object& source);
    Object(Object&& source) noexcept;
    Object& operator=(const Object& source);
    Object& operator=(Object&& source) noexcept;
    virtual ~Object();

    std::uint64_t m_ObjectID = 0;
    std::int32_t m_ObjectType = 1;
    std::vector<std::uint64_t> m_RelatedIDs1;
    std::vector<std::uint64_t> m_RelatedIDs2;
    std::uint64_t m_ObjectValue = 0;
    bool m_ObjectFlag = false;
    std::vector<Property> m_Properties;
    std::vector<Object> m_Operations;
    std::uint64_t m_UniqueID = 0;
};

}  // namespace memberwise
