// SPDX-License-Identifier: Apache-2.0
// Takes something of each library, so that one that is missing or another shows.
#include "plugin.h"

#include <velk/clock.h>
#include <velk/xml.h>
#include <velkx/language_support.h>

#include <string>

void PluginGetObjects(std::vector<PI::CObject>& objects) {
    PI::CObject& drive = objects.emplace_back(42UL, PI::ObjectType::UNDEFINED);
    drive.m_ObjectValue = VELK::now();

    std::string vendor;
    std::string model;
    PI::CPluginHelper::SplitSATAModelName("WDC WD1500HLFS-01G6U0", vendor, model);
    drive.m_Properties.emplace_back(PI::PropertyID::VENDOR, false).SetValue(vendor);

    unsigned long rpm = 0;
    PI::CPluginHelper::GetSATARPM(vendor, model, rpm);
    drive.m_Properties.emplace_back(PI::PropertyID::RPM, false).SetValue(rpm);

    PI::CProperty& health = drive.m_Properties.emplace_back(PI::PropertyID::HEALTH, false);
    health.SetValue(PI::PropertyValue::OK, {PI::PropertyValue::OK, PI::PropertyValue::FAILED});

    VELK::XML::xml_document document;
    document.append_child("drives").append_attribute("count").set_value(1);
    drive.m_Properties.emplace_back(PI::PropertyID::TABLE, false).SetValue(document);

    CLanguageSupport::SetString(10056, "Rebuild started on %1");
}
