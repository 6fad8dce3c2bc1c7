// SPDX-License-Identifier: Apache-2.0
// Copying, growing and comparing properties and objects.

#include <glib.h>

#include <map>
#include <pugixml.hpp>
#include <sstream>

#include "measure.h"
#include "plain_property.h"
#include "sample_object.h"

namespace {

using bench::Value;
using bench::Values;

std::string TextByStream(const pugi::xml_document& document) {
    std::ostringstream stream;
    document.save(stream, "\t", pugi::format_indent);
    return stream.str();
}

std::string TextByWriter(const pugi::xml_document& document) {
    struct Writer : pugi::xml_writer {
        void write(const void* data, std::size_t size) override {
            m_Text.append(static_cast<const char*>(data), size);
        }
        std::string m_Text;
    };
    Writer writer;
    document.save(writer, "\t", pugi::format_indent);
    return writer.m_Text;
}

/// As the rules say it: a document goes through text, be it empty.
template <std::string (*Text)(const pugi::xml_document&)>
struct NaiveProperty : memberwise::Property {
    explicit NaiveProperty(const memberwise::Property& source) : memberwise::Property(source) {}
    NaiveProperty(const NaiveProperty& source) : memberwise::Property(source) {
        m_Document.load_string(Text(source.m_Document).c_str(), pugi::parse_default);
    }

    pugi::xml_document m_Document;
};

/// Both fields of a value in GLib's immutable type; a copy that may be changed must be built anew.
GVariant* ToVariant(const Value& value) {
    struct Builder {
        GVariant* operator()(bool flag) const { return g_variant_new_boolean(flag ? TRUE : FALSE); }
        GVariant* operator()(unsigned long number) const { return g_variant_new_uint64(number); }
        GVariant* operator()(const std::string& text) const { return g_variant_new_string(text.c_str()); }
        GVariant* operator()(const bench::Choice& choice) const {
            GVariant* choices = g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, choice.m_Choices.data(),
                                                          choice.m_Choices.size(), sizeof(int));
            return g_variant_new("(i@ai)", choice.m_Value, choices);
        }
        GVariant* operator()(const bench::Range& range) const {
            return g_variant_new("(iiiu)", range.m_Value, range.m_Min, range.m_Max, range.m_Step);
        }
        GVariant* operator()(const std::vector<std::string>& texts) const {
            GVariantBuilder builder;
            g_variant_builder_init(&builder, G_VARIANT_TYPE_STRING_ARRAY);
            for (const std::string& text : texts) {
                g_variant_builder_add(&builder, "s", text.c_str());
            }
            return g_variant_builder_end(&builder);
        }
    };
    return std::visit(Builder(), value);
}

GVariant* ToVariant(int id, const Value& value) {
    return g_variant_ref_sink(g_variant_new("(iv)", id, ToVariant(value)));
}

GVariant* ToVariant(const Values& values) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("a(iv)"));
    for (const auto& [id, value] : values) {
        g_variant_builder_add(&builder, "(iv)", id, ToVariant(value));
    }
    return g_variant_ref_sink(g_variant_builder_end(&builder));
}

/// Copies a value and destroys the copy.
template <class Copied>
void AddCopy(const std::string& work, const std::string& way, const Copied& source) {
    bench::Add(work, way, [source](benchmark::State& state) {
        bench::Measure(state, [&] {
            Copied copy(source);
            benchmark::DoNotOptimize(copy);
        });
    });
}

void AddPropertyCopies(const std::string& work, const Value& value) {
    const int id = PI::PropertyID::MAJOR_VERSION;
    const PI::CProperty property = bench::SampleProperty(id, value);
    AddCopy(work, "library", property);
    AddCopy(work, "naive", NaiveProperty<TextByStream>(bench::ToMemberwise(property)));
    AddCopy(work, "writer", NaiveProperty<TextByWriter>(bench::ToMemberwise(property)));
    AddCopy(work, "memberwise", bench::ToMemberwise(property));
    AddCopy(work, "plain", bench::ToPlain(property));
    AddCopy(work, "variant", std::make_pair(id, value));
    bench::Add(work, "gvariant", [=](benchmark::State& state) {
        bench::Measure(state, [&] { g_variant_unref(ToVariant(id, value)); });
    });
}

void AddObjectCopies(const std::string& work) {
    const PI::CObject object = bench::SampleObject();
    const Values values = bench::SampleValues();
    AddCopy(work, "library", object);
    std::vector<NaiveProperty<TextByStream>> naive;
    std::vector<NaiveProperty<TextByWriter>> writer;
    for (const PI::CProperty& property : object.m_Properties) {
        naive.emplace_back(bench::ToMemberwise(property));
        writer.emplace_back(bench::ToMemberwise(property));
    }
    AddCopy(work, "naive", naive);
    AddCopy(work, "writer", writer);
    AddCopy(work, "memberwise", bench::ToMemberwise(object));
    AddCopy(work, "plain", bench::ToPlain(object));
    AddCopy(work, "variant", values);
    AddCopy(work, "map", std::map<int, Value>(values.begin(), values.end()));

    // The same content: the descriptive fields belong to it.
    std::map<int, std::pair<memberwise::Description, Value>> described;
    for (std::size_t i = 0; i < values.size(); ++i) {
        auto& entry = described[values[i].first];
        bench::Describe(object.m_Properties[i], entry.first);
        entry.second = values[i].second;
    }
    AddCopy(work, "described_map", described);
    bench::Add(work, "gvariant", [values](benchmark::State& state) {
        bench::Measure(state, [&] { g_variant_unref(ToVariant(values)); });
    });
}

template <class Property>
void AddGrowth(const std::string& way, const Property& property) {
    bench::Add("grow", way, [property](benchmark::State& state) {
        bench::Measure(state, [&] {
            std::vector<Property> grown;
            for (int i = 0; i < 10000; ++i) {
                grown.push_back(property);
            }
            benchmark::DoNotOptimize(grown);
        });
    });
}

bool Equal(const memberwise::Description& left, const memberwise::Description& right) {
    const auto fields = [](const memberwise::Description& d) {
        return std::tie(d.m_ID, d.m_SecondaryID, d.m_Attribute1, d.m_Attribute2, d.m_Attribute3,
                        d.m_Attribute4, d.m_Attribute5, d.m_Type, d.m_Format, d.m_Flag1, d.m_Attribute6,
                        d.m_Flag2);
    };
    return fields(left) == fields(right);
}

bool Equal(const bench::PlainProperty& left, const bench::PlainProperty& right) {
    if (!Equal(left.m_Description, right.m_Description)) {
        return false;
    }
    switch (left.m_Description.m_Type) {
        case PI::PropertyType::STRING:
            return left.m_String == right.m_String && left.m_Extra1 == right.m_Extra1 &&
                   left.m_Extra2 == right.m_Extra2;
        case PI::PropertyType::CHOICE:
            return left.m_Choice == right.m_Choice && left.m_Choices == right.m_Choices;
        case PI::PropertyType::BOOL: return left.m_Bool == right.m_Bool;
        case PI::PropertyType::LONG: return left.m_Long == right.m_Long;
        case PI::PropertyType::RANGE:
            return left.m_Range == right.m_Range && left.m_Min == right.m_Min && left.m_Max == right.m_Max &&
                   left.m_Step == right.m_Step;
        case PI::PropertyType::MULTI_STRING:
            return left.m_MultiString == right.m_MultiString && left.m_SelectionMask == right.m_SelectionMask;
        default: return false;
    }
}

bool Equal(const bench::PlainObject& left, const bench::PlainObject& right) {
    return left.m_ObjectID == right.m_ObjectID && left.m_ObjectType == right.m_ObjectType &&
           left.m_RelatedIDs1 == right.m_RelatedIDs1 && left.m_RelatedIDs2 == right.m_RelatedIDs2 &&
           left.m_ObjectValue == right.m_ObjectValue && left.m_ObjectFlag == right.m_ObjectFlag &&
           std::equal(left.m_Properties.begin(), left.m_Properties.end(), right.m_Properties.begin(),
                      right.m_Properties.end(),
                      [](const auto& one, const auto& other) { return Equal(one, other); }) &&
           left.m_UniqueID == right.m_UniqueID;
}

void AddComparisons(const std::string& work) {
    bench::Add(work, "library", [](benchmark::State& state) {
        const PI::CObject object = bench::SampleObject();
        const PI::CObject copy(object);
        bool equal = true;
        bench::Measure(state, [&] { benchmark::DoNotOptimize(equal = object == copy); });
        if (!equal) {
            state.SkipWithError("the objects differ");
        }
    });
    bench::Add(work, "plain", [](benchmark::State& state) {
        const bench::PlainObject object = bench::ToPlain(bench::SampleObject());
        const bench::PlainObject copy(object);
        bool equal = true;
        bench::Measure(state, [&] { benchmark::DoNotOptimize(equal = Equal(object, copy)); });
        if (!equal) {
            state.SkipWithError("the objects differ");
        }
    });
}

}  // namespace

void bench::RegisterBenchmarks() {
    const Value text = std::string("INTEL SSDSC2BB480G7");
    AddPropertyCopies("copy_text", text);
    AddPropertyCopies("copy_number", 480103981056UL);
    AddObjectCopies("copy_object");
    const PI::CProperty property = bench::SampleProperty(PI::PropertyID::MODEL, text);
    AddGrowth("library", property);
    AddGrowth("memberwise", bench::ToMemberwise(property));
    AddGrowth("plain", bench::ToPlain(property));
    AddComparisons("compare_object");
}
