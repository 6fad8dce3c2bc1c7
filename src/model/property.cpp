// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>
#include <pi/property.h>

#include <boost/algorithm/string/trim.hpp>
#include <utility>

#include "model/xml_copy.h"
#include "trace/library_trace.h"

namespace PI {

namespace {

constexpr std::int32_t FORMAT_PLAIN = 0;
constexpr std::int32_t FORMAT_NUMBER = 1;
constexpr std::int32_t FORMAT_ENCODED_TEXT = 4;

constexpr char ENCODED_PREFIX[] = "ENC1(";

// The lower bound is looked at first, so it wins if the bounds are reversed.
int Clamp(int value, int min, int max) {
    if (value < min) {
        return min;
    }
    return value > max ? max : value;
}

bool IsSelected(std::uint32_t mask, std::size_t index) {
    return (mask >> (index % 32) & 1U) != 0;
}

/// An empty element adds nothing, and so causes no separator.
std::string JoinSelected(const CMultiStringData& data) {
    std::string text;
    for (std::size_t i = 0; i < data.m_Values.size(); ++i) {
        if (!IsSelected(data.m_SelectionMask, i) || data.m_Values[i].empty()) {
            continue;
        }
        if (!text.empty()) {
            text += ", ";
        }
        text += data.m_Values[i];
    }
    return text;
}

void CheckType(const CProperty& property, _PROPERTY_TYPE expected) {
    if (property.m_Type != expected) {
        Trace(TRACE_CATEGORY_PROPERTY, "Property %d has type=%d but should have %d!", property.m_ID,
              property.m_Type, expected);
    }
}

void CheckData(const CProperty& property, bool isUsable) {
    if (!isUsable) {
        Trace(TRACE_CATEGORY_PROPERTY, "Property %d has no or invalid data!", property.m_ID);
    }
}

}  // namespace

bool CProperty::operator==(const CProperty& other) const {
    if (m_ID != other.m_ID || m_SecondaryID != other.m_SecondaryID || m_Attribute1 != other.m_Attribute1 ||
        m_Attribute2 != other.m_Attribute2 || m_Attribute3 != other.m_Attribute3 ||
        m_Attribute4 != other.m_Attribute4 || m_Attribute5 != other.m_Attribute5 || m_Type != other.m_Type ||
        m_Format != other.m_Format || m_Flag1 != other.m_Flag1 || m_Attribute6 != other.m_Attribute6 ||
        m_Flag2 != other.m_Flag2) {
        return false;
    }
    const _DATA& left = m_Data;
    const _DATA& right = other.m_Data;
    switch (m_Type) {
        case PropertyType::STRING:
            return left.m_String.m_Value == right.m_String.m_Value &&
                   left.m_String.m_Extra1 == right.m_String.m_Extra1 &&
                   left.m_String.m_Extra2 == right.m_String.m_Extra2;
        case PropertyType::CHOICE:
            return left.m_Choice.m_Value == right.m_Choice.m_Value &&
                   left.m_Choice.m_Choices == right.m_Choice.m_Choices;
        case PropertyType::BOOL: return left.m_Bool.m_Value == right.m_Bool.m_Value;
        case PropertyType::LONG: return left.m_Long.m_Value == right.m_Long.m_Value;
        case PropertyType::SIGNED_LONG: return left.m_SignedLong.m_Value == right.m_SignedLong.m_Value;
        case PropertyType::RANGE:
            return left.m_Range.m_Value == right.m_Range.m_Value &&
                   left.m_Range.m_Min == right.m_Range.m_Min && left.m_Range.m_Max == right.m_Range.m_Max &&
                   left.m_Range.m_Step == right.m_Range.m_Step;
        case PropertyType::MULTI_VALUE:
            return left.m_MultiValue.m_Values == right.m_MultiValue.m_Values &&
                   left.m_MultiValue.m_Values2 == right.m_MultiValue.m_Values2;
        case PropertyType::FLOAT: return left.m_Float.m_Value == right.m_Float.m_Value;
        case PropertyType::MULTI_LONG: return left.m_MultiLong.m_Values == right.m_MultiLong.m_Values;
        case PropertyType::XML: return EqualDocuments(left.m_XML.m_Document, right.m_XML.m_Document);
        case PropertyType::MULTI_STRING:
            return left.m_MultiString.m_Values == right.m_MultiString.m_Values &&
                   left.m_MultiString.m_SelectionMask == right.m_MultiString.m_SelectionMask;
        case PropertyType::NONE:
        case PropertyType::UNDEFINED: break;
    }
    return false;
}

int CProperty::SetValue(bool value) {
    m_Type = PropertyType::BOOL;
    m_Format = FORMAT_PLAIN;
    m_Data.m_Bool.m_Value = value;
    return ErrorCode::SUCCESS;
}

int CProperty::SetValue(unsigned long value) {
    m_Type = PropertyType::LONG;
    m_Format = FORMAT_NUMBER;
    m_Data.m_Long.m_Value = value;
    return ErrorCode::SUCCESS;
}

int CProperty::SetValue(long value) {
    m_Type = PropertyType::SIGNED_LONG;
    m_Format = FORMAT_NUMBER;
    m_Data.m_SignedLong.m_Value = value;
    return ErrorCode::SUCCESS;
}

int CProperty::SetValue(float value) {
    m_Type = PropertyType::FLOAT;
    m_Format = FORMAT_PLAIN;
    m_Data.m_Float.m_Value = value;
    return ErrorCode::SUCCESS;
}

int CProperty::SetValue(int value, int min, int max, unsigned int step) {
    m_Type = PropertyType::RANGE;
    m_Format = FORMAT_PLAIN;
    m_Data.m_Range.m_Value = Clamp(value, min, max);
    m_Data.m_Range.m_Min = min;
    m_Data.m_Range.m_Max = max;
    m_Data.m_Range.m_Step = step;
    return ErrorCode::SUCCESS;
}

int CProperty::SetValue(int value, const std::vector<int>& choices) {
    if (choices.empty()) {
        return ErrorCode::INVALID_PARAMETER;
    }
    m_Data.m_Choice.m_Choices = choices;
    m_Data.m_Choice.m_Value = value;
    m_Type = PropertyType::CHOICE;
    m_Format = FORMAT_PLAIN;
    return ErrorCode::SUCCESS;
}

int CProperty::SetValue(std::vector<int>& values, std::vector<int>& values2) {
    // Copied before either is stored: the lists given may be the property's own.
    std::vector<int> copy = values;
    std::vector<int> copy2 = values2;
    m_Data.m_MultiValue.m_Values = std::move(copy);
    m_Data.m_MultiValue.m_Values2 = std::move(copy2);
    m_Type = PropertyType::MULTI_VALUE;
    m_Format = FORMAT_PLAIN;
    return ErrorCode::SUCCESS;
}

int CProperty::SetValue(std::vector<unsigned long>& values) {
    m_Data.m_MultiLong.m_Values = values;
    m_Type = PropertyType::MULTI_LONG;
    m_Format = FORMAT_NUMBER;
    return ErrorCode::SUCCESS;
}

int CProperty::SetValue(const std::vector<std::string>& values, unsigned int mask) {
    m_Data.m_MultiString.m_Values = values;
    m_Data.m_MultiString.m_SelectionMask = mask;
    m_Type = PropertyType::MULTI_STRING;
    m_Format = FORMAT_PLAIN;
    return ErrorCode::SUCCESS;
}

int CProperty::SetValue(const VELK::XML::xml_document& document) {
    CopyDocument(document, m_Data.m_XML.m_Document);
    m_Type = PropertyType::XML;
    m_Format = FORMAT_PLAIN;
    return ErrorCode::SUCCESS;
}

int CProperty::SetValue(const std::string& text) {
    if (m_Format == FORMAT_ENCODED_TEXT) {
        const bool isEncoded = text.compare(0, sizeof(ENCODED_PREFIX) - 1, ENCODED_PREFIX) == 0;
        m_Data.m_String.m_Value = isEncoded ? text : std::string();
    } else {
        m_Data.m_String.m_Value = boost::algorithm::trim_copy(text);
        m_Format = FORMAT_PLAIN;
    }
    m_Type = PropertyType::STRING;
    return ErrorCode::SUCCESS;
}

int CProperty::SetValue(const char* text) {
    return SetValue(std::string(text));
}

int CProperty::GetValueChoice(int& value) const {
    CheckType(*this, PropertyType::CHOICE);
    CheckData(*this, !m_Data.m_Choice.m_Choices.empty());
    value = m_Data.m_Choice.m_Value;
    return ErrorCode::SUCCESS;
}

int CProperty::GetValue(int& value, std::vector<int>& choices) const {
    GetValueChoice(value);
    choices = m_Data.m_Choice.m_Choices;
    return ErrorCode::SUCCESS;
}

int CProperty::GetValueRange(int& value) const {
    CheckType(*this, PropertyType::RANGE);
    CheckData(*this, m_Data.m_Range.m_Step != 0);
    value = m_Data.m_Range.m_Value;
    return ErrorCode::SUCCESS;
}

int CProperty::GetValueRangeNormalized(int& value) const {
    int stored = 0;
    GetValueRange(stored);
    value = Clamp(stored, m_Data.m_Range.m_Min, m_Data.m_Range.m_Max);
    return ErrorCode::SUCCESS;
}

int CProperty::GetValue(int& value, int& min, int& max, unsigned int& step) const {
    const CRangeData range = m_Data.m_Range;
    GetValueRange(value);
    min = range.m_Min;
    max = range.m_Max;
    step = range.m_Step;
    return ErrorCode::SUCCESS;
}

int CProperty::GetValue(bool& value) const {
    CheckType(*this, PropertyType::BOOL);
    value = m_Data.m_Bool.m_Value;
    return ErrorCode::SUCCESS;
}

int CProperty::GetValue(unsigned long& value) const {
    CheckType(*this, PropertyType::LONG);
    value = m_Data.m_Long.m_Value;
    return ErrorCode::SUCCESS;
}

int CProperty::GetValue(long& value) const {
    CheckType(*this, PropertyType::SIGNED_LONG);
    value = m_Data.m_SignedLong.m_Value;
    return ErrorCode::SUCCESS;
}

int CProperty::GetValue(float& value) const {
    CheckType(*this, PropertyType::FLOAT);
    value = m_Data.m_Float.m_Value;
    return ErrorCode::SUCCESS;
}

int CProperty::GetValue(std::vector<int>& values, std::vector<int>& values2) const {
    CheckType(*this, PropertyType::MULTI_VALUE);
    CheckData(*this, !m_Data.m_MultiValue.m_Values.empty() && !m_Data.m_MultiValue.m_Values2.empty());
    std::vector<int> copy = m_Data.m_MultiValue.m_Values;
    std::vector<int> copy2 = m_Data.m_MultiValue.m_Values2;
    values = std::move(copy);
    values2 = std::move(copy2);
    return ErrorCode::SUCCESS;
}

int CProperty::GetValue(std::vector<unsigned long>& values, bool allowEmpty) const {
    CheckType(*this, PropertyType::MULTI_LONG);
    CheckData(*this, allowEmpty || !m_Data.m_MultiLong.m_Values.empty());
    values = m_Data.m_MultiLong.m_Values;
    return ErrorCode::SUCCESS;
}

int CProperty::GetValue(VELK::XML::xml_document& document) const {
    CheckType(*this, PropertyType::XML);
    if (&document != &m_Data.m_XML.m_Document) {
        CopyDocument(m_Data.m_XML.m_Document, document);
    }
    return ErrorCode::SUCCESS;
}

const std::vector<std::string>& CProperty::GetValueMultiString(unsigned int& mask) const {
    CheckType(*this, PropertyType::MULTI_STRING);
    CheckData(*this, !m_Data.m_MultiString.m_Values.empty());
    mask = m_Data.m_MultiString.m_SelectionMask;
    return m_Data.m_MultiString.m_Values;
}

int CProperty::GetValue(std::vector<std::string>& values, unsigned int& mask) const {
    values = GetValueMultiString(mask);
    return ErrorCode::SUCCESS;
}

int CProperty::GetValue(std::vector<std::string>& values) const {
    unsigned int mask = 0;
    return GetValue(values, mask);
}

int CProperty::GetValueString(std::string& text) const {
    if (m_Type == PropertyType::MULTI_STRING) {
        text = JoinSelected(m_Data.m_MultiString);
        return ErrorCode::SUCCESS;
    }
    CheckType(*this, PropertyType::STRING);
    text = m_Data.m_String.m_Value;
    return ErrorCode::SUCCESS;
}

int CProperty::GetValue(std::string& text) const {
    GetValueString(text);
    return ErrorCode::SUCCESS;
}

std::string CProperty::GetValue(_ERROR_CODE* error) const {
    std::string text;
    const int code = GetValue(text);
    if (error != nullptr) {
        *error = static_cast<_ERROR_CODE>(code);
    }
    return text;
}

// The forms for properties that are not constant are those that plug-ins in the field call.

int CProperty::GetValue(int& value, std::vector<int>& choices) {
    return std::as_const(*this).GetValue(value, choices);
}

int CProperty::GetValue(int& value, int& min, int& max, unsigned int& step) {
    return std::as_const(*this).GetValue(value, min, max, step);
}

int CProperty::GetValue(bool& value) {
    return std::as_const(*this).GetValue(value);
}

int CProperty::GetValue(unsigned long& value) {
    return std::as_const(*this).GetValue(value);
}

int CProperty::GetValue(long& value) {
    return std::as_const(*this).GetValue(value);
}

int CProperty::GetValue(float& value) {
    return std::as_const(*this).GetValue(value);
}

int CProperty::GetValue(std::vector<int>& values, std::vector<int>& values2) {
    return std::as_const(*this).GetValue(values, values2);
}

int CProperty::GetValue(std::vector<unsigned long>& values, bool allowEmpty) {
    return std::as_const(*this).GetValue(values, allowEmpty);
}

int CProperty::GetValue(VELK::XML::xml_document& document) {
    return std::as_const(*this).GetValue(document);
}

int CProperty::GetValue(std::vector<std::string>& values, unsigned int& mask) {
    return std::as_const(*this).GetValue(values, mask);
}

int CProperty::GetValue(std::vector<std::string>& values) {
    return std::as_const(*this).GetValue(values);
}

int CProperty::GetValue(std::string& text) {
    return std::as_const(*this).GetValue(text);
}

std::string CProperty::GetValue(_ERROR_CODE* error) {
    return std::as_const(*this).GetValue(error);
}

void CPluginHelper::GenerateCProperty(const _PROPERTY_DESCRIPTION& description, CProperty& property) {
    property.m_ID = description.m_ID;
    property.m_SecondaryID = description.m_ID;
    property.m_Attribute4 = description.m_Attribute4;
    property.m_Attribute1 = description.m_Attribute1;
    property.m_Attribute2 = description.m_Attribute2;
    property.m_Attribute3 = description.m_Attribute3;
    property.m_Type = description.m_Type;
    property.m_Attribute6 = description.m_Attribute6;
    property.m_Flag2 = description.m_Flag2;
    property.m_Flag1 = description.m_Flag1;
}

}  // namespace PI
