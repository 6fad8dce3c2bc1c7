// SPDX-License-Identifier: Apache-2.0

#include "sample_object.h"

namespace bench {

Values SampleValues() {
    Values values;
    int id = PI::PropertyID::MAJOR_VERSION;
    const auto add = [&](const auto& value) { values.emplace_back(id++, value); };
    for (int i = 0; i < 20; ++i) {
        add(1000000007UL * static_cast<unsigned long>(i));
    }
    for (int i = 0; i < 18; ++i) {
        // 6 to 40 characters: some fit into the string object itself, some do not.
        add(std::string("text number " + std::to_string(i) + " of a managed object's values", 0,
                        6U + 2U * static_cast<unsigned>(i)));
    }
    for (int i = 0; i < 12; ++i) {
        add(Choice{PI::PropertyValue::RAID0 + i, {PI::PropertyValue::RAID0, PI::PropertyValue::RAID0 + i}});
    }
    for (int i = 0; i < 6; ++i) {
        add(i % 2 == 0);
    }
    for (int i = 0; i < 3; ++i) {
        add(Range{10 + i, 0, 100, 1});
    }
    add(std::vector<std::string>{"first of a list", "second of a list, longer", "third"});
    return values;
}

PI::CProperty SampleProperty(int id, const Value& value) {
    PI::CProperty property(static_cast<PI::_PROPERTY_ID>(id), true);
    struct Setter {
        PI::CProperty& m_Property;

        int operator()(bool flag) const { return m_Property.SetValue(flag); }
        int operator()(unsigned long number) const { return m_Property.SetValue(number); }
        int operator()(const std::string& text) const { return m_Property.SetValue(text); }
        int operator()(const Choice& choice) const {
            return m_Property.SetValue(choice.m_Value, choice.m_Choices);
        }
        int operator()(const Range& range) const {
            return m_Property.SetValue(range.m_Value, range.m_Min, range.m_Max, range.m_Step);
        }
        int operator()(const std::vector<std::string>& texts) const { return m_Property.SetValue(texts, 7U); }
    };
    std::visit(Setter{property}, value);
    return property;
}

PI::CObject SampleObject() {
    PI::CObject object(7, PI::ObjectType::ADAPTER_1);
    object.m_RelatedIDs1 = {1, 2, 3};
    for (const auto& [id, value] : SampleValues()) {
        object.m_Properties.push_back(SampleProperty(id, value));
    }
    return object;
}

}  // namespace bench
