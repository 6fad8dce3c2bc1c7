// SPDX-License-Identifier: Apache-2.0
// host PLUG-IN: loads it, prints what it gives, unloads it.
#include "plugin.h"

#include <dlfcn.h>
#include <velk/clock.h>
#include <velk/xml.h>
#include <velkx/language_support.h>

#include <iostream>
#include <string>
#include <vector>

namespace {

void Print(PI::CProperty& property) {
    std::cout << PI::PropertyIDToString(property.m_ID) << ": ";
    switch (property.m_Type) {
        case PI::PropertyType::STRING: {
            std::string text;
            property.GetValue(text);
            std::cout << text;
            break;
        }
        case PI::PropertyType::LONG: {
            unsigned long number = 0;
            property.GetValue(number);
            std::cout << number;
            break;
        }
        case PI::PropertyType::CHOICE: {
            int value = 0;
            std::vector<int> choices;
            property.GetValue(value, choices);
            std::cout << PI::PropertyValueToString(value) << ", one of " << choices.size();
            break;
        }
        case PI::PropertyType::XML: {
            VELK::XML::xml_document document;
            property.GetValue(document);
            document.print(std::cout, "", VELK::XML::format_raw);
            break;
        }
        default: std::cout << "of a type that the plug-in does not use";
    }
    std::cout << '\n';
}

}  // namespace

int main(int argc, char* argv[]) {
    void* const plugin = argc == 2 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
    if (plugin == nullptr) {
        std::cerr << (argc == 2 ? dlerror() : "usage: host PLUG-IN") << '\n';
        return 1;
    }
    const auto getObjects = reinterpret_cast<decltype(&PluginGetObjects)>(dlsym(plugin, "PluginGetObjects"));
    if (getObjects == nullptr) {
        std::cerr << dlerror() << '\n';
        return 1;
    }

    const std::uint64_t before = VELK::now();
    std::vector<PI::CObject> objects;
    getObjects(objects);
    for (PI::CObject& object : objects) {
        const bool onTime = before <= object.m_ObjectValue && object.m_ObjectValue <= VELK::now();
        std::cout << "object " << object.m_ObjectID << ", made " << (onTime ? "now" : "at another time")
                  << '\n';
        for (PI::CProperty& property : object.m_Properties) {
            Print(property);
        }
    }

    // Host and plug-in share one libpi and one libvelkx.
    std::string text;
    CLanguageSupport::ResolveString(10056, text);
    std::cout << "identifiers given: " << PI::CObject::m_UniqueIDCounter << "\ntext 10056: " << text << '\n';

    objects.clear();
    dlclose(plugin);
    std::cout << "unloaded: " << (dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD) == nullptr ? "yes" : "no") << '\n';
}
