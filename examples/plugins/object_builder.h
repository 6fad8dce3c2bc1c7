// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fills objects as the service expects them (plugin_interface.h).
#pragma once

#include "plugin_interface.h"

#include <string>

/// A row of a plug-in's table of properties.
/// @param helpTopic number for CPluginHelper::GetHelpPath, 1 for none
constexpr PI::_PROPERTY_DESCRIPTION Describe(PI::_PROPERTY_ID id, int helpTopic, PI::_PROPERTY_TYPE type) {
    // In the order of the fields: m_Attribute1 is the third.
    return {id, 1, helpTopic, 1, -1, type, 1, true, false};
}

/// Adds a property that has no value yet.
inline PI::CProperty& AddProperty(PI::CObject& object, const PI::_PROPERTY_DESCRIPTION& description) {
    PI::CProperty& property = object.m_Properties.emplace_back();
    PI::CPluginHelper::GenerateCProperty(description, property);
    return property;
}

inline void AddText(PI::CObject& object, const PI::_PROPERTY_DESCRIPTION& description,
                    const std::string& text) {
    AddProperty(object, description).SetValue(text);
}

inline void AddNumber(PI::CObject& object, const PI::_PROPERTY_DESCRIPTION& description,
                      unsigned long number) {
    AddProperty(object, description).SetValue(number);
}

inline void AddFraction(PI::CObject& object, const PI::_PROPERTY_DESCRIPTION& description, float number) {
    AddProperty(object, description).SetValue(number);
}

/// Adds a named state. It cannot be changed, so it is the only choice.
inline void AddState(PI::CObject& object, const PI::_PROPERTY_DESCRIPTION& description,
                     PI::_PROPERTY_VALUE state) {
    AddProperty(object, description).SetValue(state, {state});
}

/// Adds a capacity, scaled to the unit that suits it.
inline void AddCapacity(PI::CObject& object, const PI::_PROPERTY_DESCRIPTION& description,
                        unsigned long bytes) {
    float value = 0;
    PI::_UNITS unit = PI::Units::BYTES;
    PI::CPluginHelper::ConvertBytesToOtherUnit(bytes, value, unit);
    PI::CProperty& property = AddProperty(object, description);
    property.SetValue(value);
    property.m_Attribute2 = unit;
}

inline void AddOperation(PI::CObject& object, PI::_OPERATION_ID id, int helpTopic) {
    PI::COperation& operation = object.m_Operations.emplace_back();
    operation.m_Header1 = static_cast<unsigned>(id);
    operation.m_Header2 = static_cast<unsigned>(helpTopic);
}

/// Registers an adapter by where it sits and adds the number that it has among the adapters of all plug-ins.
inline void AddAdapterNumber(PI::CObject& adapter, const PI::_PROPERTY_DESCRIPTION& description, int a, int b,
                             int c, int d) {
    PI::CGlobalAdapterID place;  // its host name is empty: this machine
    place.SetAdapterUniqueID(PI::CGlobalAdapterID::GenerateUniqueAdapterNumber(a, b, c, d, place.m_HostName));
    AddNumber(adapter, description, place.GetGlobalAdapterNumber());
}
