// SPDX-License-Identifier: Apache-2.0
/// @file
/// Builds objects with one line for each property.
///
/// @code
///     namespace Builder = PI::ObjectBuilder;
///     constexpr auto SIZE = Builder::Describe(PI::PropertyID::LOGICAL_SIZE, 23237, PI::PropertyType::FLOAT);
///     Builder::AddCapacity(object, SIZE, bytes);
/// @endcode
///
/// Everything here is compiled into the module that uses it. It gives a meaning to fields that the library
/// leaves to its users: CProperty::m_Attribute1 is the help topic, CProperty::m_Attribute2 the unit of a
/// capacity, and an operation's headers are its identifier and its help topic. A plug-in that uses these
/// fields differently fills them itself.
///
/// Each function appends to the object and throws std::bad_alloc if allocation fails; the object may then
/// hold the property without its value. One thread at a time uses an object.
#pragma once

#include <pi/adapters.h>
#include <pi/object.h>
#include <pi/plugin_helper.h>

#include <string>

namespace PI {

/// @addtogroup objects
/// @{

/// Functions that fill objects, in a namespace of their own so that they do not clash with a plug-in's
/// functions.
namespace ObjectBuilder {

/// A row of a plug-in's table of properties; all other fields are as in a new property. Does not throw.
/// @param helpTopic number for CPluginHelper::GetHelpPath, 1 for none
constexpr _PROPERTY_DESCRIPTION Describe(_PROPERTY_ID id, int helpTopic, _PROPERTY_TYPE type) {
    // In the order of the fields: m_Attribute1 is the third.
    return {id, 1, helpTopic, 1, -1, type, 1, true, false};
}

/// Adds a property that has no value yet.
/// @return the property, valid until the object's list of properties changes
inline CProperty& AddProperty(CObject& object, const _PROPERTY_DESCRIPTION& description) {
    CProperty& property = object.m_Properties.emplace_back();
    CPluginHelper::GenerateCProperty(description, property);
    return property;
}

/// Adds a text without leading and trailing white space (CProperty::SetValue).
inline void AddText(CObject& object, const _PROPERTY_DESCRIPTION& description, const std::string& text) {
    AddProperty(object, description).SetValue(text);
}

/// Adds an unsigned number.
inline void AddNumber(CObject& object, const _PROPERTY_DESCRIPTION& description, unsigned long number) {
    AddProperty(object, description).SetValue(number);
}

/// Adds a fractional number.
inline void AddFraction(CObject& object, const _PROPERTY_DESCRIPTION& description, float number) {
    AddProperty(object, description).SetValue(number);
}

/// Adds a named state. It is the only choice, so that it cannot be changed.
inline void AddState(CObject& object, const _PROPERTY_DESCRIPTION& description, _PROPERTY_VALUE state) {
    AddProperty(object, description).SetValue(state, {state});
}

/// Adds a capacity as a fractional number, in the unit of CPluginHelper::ConvertBytesToOtherUnit, which is
/// stored in m_Attribute2.
inline void AddCapacity(CObject& object, const _PROPERTY_DESCRIPTION& description, unsigned long bytes) {
    float value = 0;
    _UNITS unit = Units::BYTES;
    CPluginHelper::ConvertBytesToOtherUnit(bytes, value, unit);
    CProperty& property = AddProperty(object, description);
    property.SetValue(value);
    property.m_Attribute2 = unit;
}

/// Offers an operation without parameters.
/// @param helpTopic as for Describe
inline void AddOperation(CObject& object, _OPERATION_ID id, int helpTopic) {
    COperation& operation = object.m_Operations.emplace_back();
    operation.m_Header1 = static_cast<unsigned>(id);
    operation.m_Header2 = static_cast<unsigned>(helpTopic);
}

/// Registers an adapter of this machine by its location (CGlobalAdapterID::GenerateUniqueAdapterNumber, whose
/// rules for threads apply) and adds its number among the adapters of all plug-ins.
inline void AddAdapterNumber(CObject& adapter, const _PROPERTY_DESCRIPTION& description, int a, int b, int c,
                             int d) {
    CGlobalAdapterID place;  // its host name is empty: this machine
    place.SetAdapterUniqueID(CGlobalAdapterID::GenerateUniqueAdapterNumber(a, b, c, d, place.m_HostName));
    AddNumber(adapter, description, place.GetGlobalAdapterNumber());
}

}  // namespace ObjectBuilder

/// @}

}  // namespace PI
