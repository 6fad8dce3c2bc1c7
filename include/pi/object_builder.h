// SPDX-License-Identifier: Apache-2.0
/// @file
/// Builds objects in one line a property.
///
/// @code
///     namespace Builder = PI::ObjectBuilder;
///     constexpr auto SIZE = Builder::Describe(PI::PropertyID::LOGICAL_SIZE, 23237, PI::PropertyType::FLOAT);
///     Builder::AddCapacity(object, SIZE, bytes);
/// @endcode
///
/// Everything here is compiled into the module that uses it, and decides three fields that the library leaves
/// to its users: CProperty::m_Attribute1 is the help topic, CProperty::m_Attribute2 the unit of a capacity,
/// and an operation's headers are its identifier and its help topic. A plug-in that needs them otherwise
/// fills those fields itself.
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

/// Functions that fill objects, in a namespace of their own so that they meet no function of a plug-in.
namespace ObjectBuilder {

/// A row of a plug-in's table of properties; what it does not name is as in a new property.
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

/// Adds a text, without the white space around it (CProperty::SetValue).
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

/// Adds a named state. It cannot be changed, so it is the only choice.
inline void AddState(CObject& object, const _PROPERTY_DESCRIPTION& description, _PROPERTY_VALUE state) {
    AddProperty(object, description).SetValue(state, {state});
}

/// Adds a capacity as a fractional number, scaled to the unit that suits it, which goes to m_Attribute2.
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

/// Registers an adapter of this machine by where it sits (CGlobalAdapterID::GenerateUniqueAdapterNumber,
/// whose rules for threads hold) and adds its number among the adapters of all plug-ins.
inline void AddAdapterNumber(CObject& adapter, const _PROPERTY_DESCRIPTION& description, int a, int b, int c,
                             int d) {
    CGlobalAdapterID place;  // its host name is empty: this machine
    place.SetAdapterUniqueID(CGlobalAdapterID::GenerateUniqueAdapterNumber(a, b, c, d, place.m_HostName));
    AddNumber(adapter, description, place.GetGlobalAdapterNumber());
}

}  // namespace ObjectBuilder

/// @}

}  // namespace PI
