// SPDX-License-Identifier: Apache-2.0
/// @file
/// Typed values of managed objects.
///
/// Everything here is a value: copies are deep, nothing is shared, the caller serialises access to one
/// object.
#pragma once

#include <pi/types.h>
#include <pi/vocabulary.h>
#include <velk/xml.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace PI {

/// @addtogroup properties
/// @{

/// Data of a choice: one of a list of allowed numbers.
class PI_API CChoiceData {
public:
    CChoiceData() = default;
    CChoiceData(const CChoiceData&) = default;
    CChoiceData(CChoiceData&&) noexcept = default;
    CChoiceData& operator=(const CChoiceData&) = default;
    CChoiceData& operator=(CChoiceData&&) noexcept = default;
    virtual ~CChoiceData();

    std::int32_t m_Value = 1;             ///< the selected choice
    std::vector<std::int32_t> m_Choices;  ///< the allowed choices
};

/// Data of a number within bounds.
class PI_API CRangeData {
public:
    CRangeData() = default;
    CRangeData(const CRangeData&) = default;
    CRangeData(CRangeData&&) noexcept = default;
    CRangeData& operator=(const CRangeData&) = default;
    CRangeData& operator=(CRangeData&&) noexcept = default;
    virtual ~CRangeData();

    std::int32_t m_Value = 1;  ///< the number
    std::int32_t m_Min = -1;   ///< lower bound
    std::int32_t m_Max = -1;   ///< upper bound
    std::uint32_t m_Step = 0;  ///< 0: the range has not been set
};

/// Data of a text.
class PI_API CStringData {
public:
    CStringData() = default;
    CStringData(const CStringData&) = default;
    CStringData(CStringData&&) noexcept = default;
    CStringData& operator=(const CStringData&) = default;
    CStringData& operator=(CStringData&&) noexcept = default;
    virtual ~CStringData();

    std::string m_Value;        ///< the text
    std::int64_t m_Extra1 = 0;  ///< for its users: only stored, copied and compared
    std::int64_t m_Extra2 = 0;  ///< as m_Extra1
};

/// Data of a yes or no.
class PI_API CBoolData {
public:
    CBoolData() = default;
    CBoolData(const CBoolData&) = default;
    CBoolData(CBoolData&&) noexcept = default;
    CBoolData& operator=(const CBoolData&) = default;
    CBoolData& operator=(CBoolData&&) noexcept = default;
    virtual ~CBoolData();

    bool m_Value = false;  ///< true: yes
};

/// Data of an unsigned number.
class PI_API CLongData {
public:
    CLongData() = default;
    CLongData(const CLongData&) = default;
    CLongData(CLongData&&) noexcept = default;
    CLongData& operator=(const CLongData&) = default;
    CLongData& operator=(CLongData&&) noexcept = default;
    virtual ~CLongData();

    std::uint64_t m_Value = 0;  ///< the number
};

/// Data of a signed number.
class PI_API CSignedLongData {
public:
    CSignedLongData() = default;
    CSignedLongData(const CSignedLongData&) = default;
    CSignedLongData(CSignedLongData&&) noexcept = default;
    CSignedLongData& operator=(const CSignedLongData&) = default;
    CSignedLongData& operator=(CSignedLongData&&) noexcept = default;
    virtual ~CSignedLongData();

    std::int64_t m_Value = 0;  ///< the number
};

/// Data of two lists of numbers that are always set, read and compared together.
class PI_API CMultiValueData {
public:
    CMultiValueData() = default;
    CMultiValueData(const CMultiValueData&) = default;
    CMultiValueData(CMultiValueData&&) noexcept = default;
    CMultiValueData& operator=(const CMultiValueData&) = default;
    CMultiValueData& operator=(CMultiValueData&&) noexcept = default;
    virtual ~CMultiValueData();

    std::vector<std::int32_t> m_Values;   ///< the first list
    std::vector<std::int32_t> m_Values2;  ///< the second list
};

/// Data of a fractional number.
class PI_API CFloatData {
public:
    CFloatData() = default;
    CFloatData(const CFloatData&) = default;
    CFloatData(CFloatData&&) noexcept = default;
    CFloatData& operator=(const CFloatData&) = default;
    CFloatData& operator=(CFloatData&&) noexcept = default;
    virtual ~CFloatData();

    float m_Value = 0.0F;  ///< the number
};

/// Data of a list of unsigned numbers.
class PI_API CMultiLongData {
public:
    CMultiLongData() = default;
    CMultiLongData(const CMultiLongData&) = default;
    CMultiLongData(CMultiLongData&&) noexcept = default;
    CMultiLongData& operator=(const CMultiLongData&) = default;
    CMultiLongData& operator=(CMultiLongData&&) noexcept = default;
    virtual ~CMultiLongData();

    std::vector<std::uint64_t> m_Values;  ///< the numbers
};

/// Data of an XML document.
///
/// A copy goes through text: it holds the elements, attributes and character data of the source, but not its
/// comments, processing instructions, declaration, document type or white space between elements.
class PI_API CXMLData {
public:
    CXMLData() = default;
    /// Copies as said above.
    CXMLData(const CXMLData& source);
    CXMLData(CXMLData&&) noexcept = default;
    /// Copies as said above.
    CXMLData& operator=(const CXMLData& source);
    CXMLData& operator=(CXMLData&&) noexcept = default;
    virtual ~CXMLData();

    VELK::XML::xml_document m_Document;  ///< the document
};

/// Data of a list of texts of which some are selected.
class PI_API CMultiStringData {
public:
    CMultiStringData() = default;
    CMultiStringData(const CMultiStringData&) = default;
    CMultiStringData(CMultiStringData&&) noexcept = default;
    CMultiStringData& operator=(const CMultiStringData&) = default;
    CMultiStringData& operator=(CMultiStringData&&) noexcept = default;
    virtual ~CMultiStringData();

    std::vector<std::string> m_Values;           ///< the texts
    std::uint32_t m_SelectionMask = 0xFFFFFFFF;  ///< bit (i mod 32) selects element i
};

/// One typed value of a managed object: a capacity, a name, the choices of a setting, a range.
///
/// A property holds data of all eleven kinds at once; m_Type says which of them is valid. A setter writes one
/// kind and makes it the valid one; the others keep their data. A getter for a kind other than m_Type writes
/// a trace (category 20) and still returns the data of the kind that was asked for.
///
/// Setters and getters return ErrorCode::SUCCESS unless stated otherwise. They throw only what the standard
/// library throws if allocation fails. Out-parameters are always written. Parameters may be the property's
/// own data: they are read before anything is written.
///
/// One thread at a time uses a property.
///
/// If allocation fails, a setter keeps type, format and value, but a list of texts or a document may hold
/// less than before; an assignment leaves part of the old and part of the new value: assign again.
class PI_API CProperty {
public:
    /// Data of every kind, whatever m_Type says.
    struct PI_API _DATA {
        _DATA() = default;
        _DATA(const _DATA&) = default;
        _DATA(_DATA&&) noexcept = default;
        _DATA& operator=(const _DATA&) = default;
        _DATA& operator=(_DATA&&) noexcept = default;
        ~_DATA();

        CChoiceData m_Choice;            ///< for PropertyType::CHOICE
        CRangeData m_Range;              ///< for PropertyType::RANGE
        CStringData m_String;            ///< for PropertyType::STRING
        CBoolData m_Bool;                ///< for PropertyType::BOOL
        CLongData m_Long;                ///< for PropertyType::LONG
        CSignedLongData m_SignedLong;    ///< for PropertyType::SIGNED_LONG
        CMultiValueData m_MultiValue;    ///< for PropertyType::MULTI_VALUE
        CFloatData m_Float;              ///< for PropertyType::FLOAT
        CMultiLongData m_MultiLong;      ///< for PropertyType::MULTI_LONG
        CXMLData m_XML;                  ///< for PropertyType::XML
        CMultiStringData m_MultiString;  ///< for PropertyType::MULTI_STRING
    };

    /// A property without identity, type and value.
    CProperty();

    /// A property without type and value; the flag goes to m_Flag1.
    CProperty(_PROPERTY_ID id, bool flag);

    /// @{
    /// Copies the fields and the data of every kind; XML as CXMLData says.
    CProperty(const CProperty& source);
    CProperty& operator=(const CProperty& source);
    /// @}

    /// @{
    /// Moves the data of every kind; nothing of an XML document is lost. The source may only be assigned to
    /// or destroyed afterwards.
    CProperty(CProperty&& source) noexcept;
    CProperty& operator=(CProperty&& source) noexcept;
    /// @}

    virtual ~CProperty();

    /// Compares the descriptive fields, then the data of the kind that m_Type says; the other kinds are
    /// ignored.
    ///
    /// A property of type NONE, UNDEFINED or an unknown type has no value and equals nothing, not even a copy
    /// of itself.
    bool operator==(const CProperty& other) const;

    /// @{
    /// Stores a value of the argument's kind.
    int SetValue(bool value);
    int SetValue(unsigned long value);
    int SetValue(long value);
    int SetValue(float value);
    /// @}

    /// Stores a value, limited to [min, max], and the bounds and the step as given. The lower bound is
    /// checked first: if min is above max, a value below min becomes min.
    int SetValue(int value, int min, int max, unsigned int step);

    /// Stores a choice and the allowed choices. Whether it is one of them is not checked.
    /// @return ErrorCode::INVALID_PARAMETER if there are no choices; nothing is changed then
    int SetValue(int value, const std::vector<int>& choices);

    /// Stores copies of both lists.
    int SetValue(std::vector<int>& values, std::vector<int>& values2);
    /// Stores a copy of the list.
    int SetValue(std::vector<unsigned long>& values);

    /// Stores a list of texts and which of them are selected.
    /// @param mask selects the elements that make up the text of the value: bit (i mod 32) for element i
    int SetValue(const std::vector<std::string>& values, unsigned int mask);

    /// Stores a copy of a document, as CXMLData describes it.
    int SetValue(const VELK::XML::xml_document& document);

    /// Stores a text without leading and trailing white space, as the global locale classifies it.
    ///
    /// If m_Format is 4 (encoded text), only a text that begins with "ENC1(" is accepted, unchanged; any
    /// other is replaced by an empty one, so that a plain secret is never stored.
    int SetValue(const std::string& text);

    /// As SetValue(const std::string&).
    /// @throws std::logic_error if text is null
    int SetValue(const char* text);

    /// @{
    /// Does not compile: null is not a text, and a pointer to anything but characters would convert to bool.
    /// To compilers NULL is a number and stores 0 (g++ warns).
    int SetValue(std::nullptr_t) = delete;
    template <class Type, class = std::enable_if_t<!std::is_same_v<std::remove_const_t<Type>, char>>>
    int SetValue(Type* pointer) = delete;
    template <class Type, class Class>
    int SetValue(Type Class::*pointer) = delete;
    /// @}

    /// The selected choice. Traced if there are no choices.
    int GetValueChoice(int& value) const;
    /// @{
    /// The selected choice and the allowed choices. Traced if there are none.
    int GetValue(int& value, std::vector<int>& choices);
    int GetValue(int& value, std::vector<int>& choices) const;
    /// @}

    /// The value as stored. Traced if the step is 0.
    int GetValueRange(int& value) const;
    /// The value limited to the bounds, the lower one first.
    int GetValueRangeNormalized(int& value) const;
    /// @{
    /// The value as stored, the bounds and the step. Traced if the step is 0.
    int GetValue(int& value, int& min, int& max, unsigned int& step);
    int GetValue(int& value, int& min, int& max, unsigned int& step) const;
    /// @}

    /// @{
    /// The value of the argument's kind.
    int GetValue(bool& value);
    int GetValue(unsigned long& value);
    int GetValue(long& value);
    int GetValue(float& value);
    int GetValue(bool& value) const;
    int GetValue(unsigned long& value) const;
    int GetValue(long& value) const;
    int GetValue(float& value) const;
    /// @}

    /// @{
    /// Both lists. Traced if either is empty.
    int GetValue(std::vector<int>& values, std::vector<int>& values2);
    int GetValue(std::vector<int>& values, std::vector<int>& values2) const;
    /// @}
    /// @{
    /// The list. Traced if it is empty, unless allowEmpty.
    int GetValue(std::vector<unsigned long>& values, bool allowEmpty);
    int GetValue(std::vector<unsigned long>& values, bool allowEmpty) const;
    /// @}

    /// @{
    /// A copy of the document, as CXMLData describes it.
    int GetValue(VELK::XML::xml_document& document);
    int GetValue(VELK::XML::xml_document& document) const;
    /// @}

    /// The list itself, valid as long as the property is not changed. Traced if it is empty.
    const std::vector<std::string>& GetValueMultiString(unsigned int& mask) const;
    /// @{
    /// A copy of the list, and which of its texts are selected. Traced if it is empty.
    int GetValue(std::vector<std::string>& values, unsigned int& mask);
    int GetValue(std::vector<std::string>& values, unsigned int& mask) const;
    /// @}
    /// @{
    /// A copy of the list. Traced when it is empty.
    int GetValue(std::vector<std::string>& values);
    int GetValue(std::vector<std::string>& values) const;
    /// @}

    /// The text; for a list of texts, the selected ones that are not empty, joined by ", ".
    int GetValueString(std::string& text) const;
    /// @{
    /// As GetValueString.
    int GetValue(std::string& text);
    int GetValue(std::string& text) const;
    /// @}
    /// @{
    /// The text as GetValueString gives it, returned.
    /// @param error out: the result of the call; may be null
    std::string GetValue(_ERROR_CODE* error);
    std::string GetValue(_ERROR_CODE* error) const;
    /// @}

    _PROPERTY_ID m_ID = PropertyID::UNDEFINED;  ///< which property of its object this is
    std::int32_t m_SecondaryID = 1;             ///< set together with m_ID
    /// @{
    /// Descriptive: only stored, copied and compared; the meaning is up to the plug-ins and the service.
    std::int32_t m_Attribute1 = 1;
    std::int32_t m_Attribute2 = 1;
    std::int32_t m_Attribute3 = -1;
    std::int32_t m_Attribute4 = 1;
    /// @}
    std::int32_t m_Attribute5 = 1;                    ///< as m_Attribute1, but not set from a description
    _PROPERTY_TYPE m_Type = PropertyType::UNDEFINED;  ///< the valid kind of data
    std::int32_t m_Format = 0;                        ///< 0 plain, 1 number, 4 encoded text
    bool m_Flag1 = false;                             ///< as m_Attribute1
    std::int32_t m_Attribute6 = 1;                    ///< as m_Attribute1
    bool m_Flag2 = true;                              ///< as m_Attribute1
    _DATA m_Data;                                     ///< data of every kind; m_Type says which is valid
};

/// Static description of a property, from which CPluginHelper::GenerateCProperty fills one.
struct _PROPERTY_DESCRIPTION {
    /// @{
    /// Copied to the property's field of the same name; m_ID also to CProperty::m_SecondaryID.
    _PROPERTY_ID m_ID;
    std::int32_t m_Attribute4;
    std::int32_t m_Attribute1;
    std::int32_t m_Attribute2;
    std::int32_t m_Attribute3;
    _PROPERTY_TYPE m_Type;
    std::int32_t m_Attribute6;
    bool m_Flag2;
    bool m_Flag1;
    /// @}
};

/// @}

}  // namespace PI
