// SPDX-License-Identifier: Apache-2.0
/// @file
/// The properties of adapters and physical drives that all plug-ins report; the plug-in adds others.
#pragma once

#include <pi/object_builder.h>

#include <string>

#include "plugin_interface.h"

namespace shared {

/// Adds what is known: neither 0 nor an empty text.
/// @param add of PI::ObjectBuilder
template <class Value, class AddedValue>
void AddKnown(void (&add)(PI::CObject&, const PI::_PROPERTY_DESCRIPTION&, AddedValue), PI::CObject& object,
              const PI::_PROPERTY_DESCRIPTION& description, const Value& value) {
    if (value != Value()) {
        add(object, description, value);
    }
}

/// An adapter without a slot, whose number among all adapters depends on numbers of the plug-in.
/// @param place  a number of the plug-in's own, far above those of buses and devices
/// @param part   of several adapters at one place
/// @param status OK, ERROR, or another, which counts as a warning
inline PI::CObject MakeAdapter(std::uint64_t id, const std::string& name, int place, int part,
                               PI::_PROPERTY_VALUE status) {
    using namespace PI::ObjectBuilder;
    namespace Value = PI::PropertyValue;
    constexpr auto NAME = Describe(PI::PropertyID::NAME, 23081, PI::PropertyType::STRING);
    constexpr auto NUMBER = Describe(PI::PropertyID::ADAPTER_NUMBER, 23003, PI::PropertyType::LONG);
    constexpr auto STATUS = Describe(PI::PropertyID::STATUS, 23127, PI::PropertyType::CHOICE);
    PI::CObject adapter(id, PI::ObjectType::ADAPTER_1);
    adapter.m_ObjectValue = status == Value::OK ? 24000U : status == Value::ERROR ? 24001U : 24002U;
    AddText(adapter, NAME, name);
    AddAdapterNumber(adapter, NUMBER, place, part, 0, 0);
    AddState(adapter, STATUS, status);
    return adapter;
}

/// @param device its file below /dev; empty when it has none
/// @param medium HDD or SSD; 0 when not known
inline PI::CObject MakeDrive(std::uint64_t id, std::uint64_t parentID, const std::string& name,
                             const std::string& device, PI::_PROPERTY_VALUE status, int medium) {
    using namespace PI::ObjectBuilder;
    constexpr auto NAME = Describe(PI::PropertyID::NAME, 23298, PI::PropertyType::STRING);
    constexpr auto OS_DEVICE = Describe(PI::PropertyID::OS_DEVICE, 23300, PI::PropertyType::STRING);
    constexpr auto STATUS = Describe(PI::PropertyID::STATUS, 23324, PI::PropertyType::CHOICE);
    PI::CObject drive(id, PHYSICAL_DRIVE);
    drive.m_RelatedIDs1 = {parentID};
    drive.m_ObjectValue = static_cast<std::uint64_t>(
        PI::CPluginHelper::GetPDStatusIcon(status, medium, false, false, PI::PropertyValue::ACTIVATED));
    AddText(drive, NAME, name);
    AddKnown(AddText, drive, OS_DEVICE, device);
    AddState(drive, STATUS, status);
    return drive;
}

}  // namespace shared
