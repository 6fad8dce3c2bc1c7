// SPDX-License-Identifier: Apache-2.0
// Writes records as JSON.
#pragma once

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "json_parser.h"
#include "model_fields.h"

namespace PI {

/// Writes one document: Begin, members, End. Members of records come from Fields.
class CModelWriter {
public:
    static constexpr bool WRITES = true;

    /// @param record what the document holds
    void Begin(const char* record);
    /// The text. Nothing may be written afterwards.
    std::string End();

    template <class Type>
    void Member(const char* name, const Type& value) {
        m_Writer.Key(name);
        Value(value);
    }

    template <class Type>
    void Required(const char* name, const Type& value) {
        Member(name, value);
    }

    template <class Type, class Name>
    void Named(const char* member, const char* nameMember, Type value, Name name) {
        Member(member, value);
        Member(nameMember, name(static_cast<std::int64_t>(value)));
    }

    template <class Name>
    void NamedList(const char* member, const char* namesMember, const std::vector<std::int32_t>& values,
                   Name name) {
        Member(member, values);
        m_Writer.Key(namesMember);
        m_Writer.StartArray();
        for (const std::int32_t value : values) {
            Value(name(value));
        }
        m_Writer.EndArray();
    }

    void Null(const char* name);

private:
    void Value(bool value);
    void Value(std::int32_t value);
    void Value(std::uint32_t value);
    void Value(std::int64_t value);
    void Value(std::uint64_t value);
    void Value(float value);
    void Value(const char* text);
    void Value(const std::string& text);
    void Value(const VELK::XML::xml_document& document);

    template <class Type>
    void Value(const std::vector<Type>& values) {
        m_Writer.StartArray();
        for (const Type& value : values) {
            Value(value);
        }
        m_Writer.EndArray();
    }

    template <class Type>
    void Value(const Type& value) {
        if constexpr (std::is_enum_v<Type>) {
            Value(static_cast<std::int32_t>(value));
        } else {
            m_Writer.StartObject();
            Fields(*this, value);
            m_Writer.EndObject();
        }
    }

    using Buffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, JsonMemory>;

    Buffer m_Buffer;
    rapidjson::Writer<Buffer, rapidjson::UTF8<>, rapidjson::UTF8<>, JsonMemory> m_Writer{m_Buffer};
};

}  // namespace PI
