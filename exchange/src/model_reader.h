// SPDX-License-Identifier: Apache-2.0
// Reads records from JSON.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "json_parser.h"
#include "model_fields.h"

namespace PI {

/// Thrown at what is not as it should be.
struct JsonRefusal {
    std::string m_Reason;
};

/// A document whose numbers the standard library reads: the parser rounds long ones wrongly, or is undefined
/// for them in its own way that rounds correctly.
class CNumberedDocument : public JsonDocument {
public:
    /// @throws JsonRefusal for what is no JSON
    void ParseWhole(const std::string& text);

    /// Called by the parser with what is a number by the rules of JSON.
    bool RawNumber(const char* begin, rapidjson::SizeType length, bool copied);
};

/// Where a value is in its document: a list from the inside to the outside, on the stack.
struct JsonPlace {
    const JsonPlace* m_Outer = nullptr;
    const char* m_Name = nullptr;  ///< null in a list
    rapidjson::SizeType m_Index = 0;
    unsigned m_Depth = 0;

    JsonPlace In(const char* name) const { return {this, name, 0, m_Depth + 1}; }
    JsonPlace In(rapidjson::SizeType index) const { return {this, nullptr, index, m_Depth + 1}; }

    /// @throws JsonRefusal with the place as a JSON pointer in front of the reason
    [[noreturn]] void Refuse(const std::string& reason) const;
    /// @throws JsonRefusal "is a text where a number belongs"
    [[noreturn]] void RefuseType(const JsonValue& value, const char* expected) const;
};

/// Of objects: one within an operation of another is four levels below it.
constexpr unsigned MAX_DEPTH = 4 * 100;

/// The members of one object of a document, for Fields. Whatever is missing stays as it is.
class CModelReader {
public:
    static constexpr bool WRITES = false;

    /// @throws JsonRefusal for what is no object
    CModelReader(const JsonValue& object, const JsonPlace& place);

    /// The place of the member, and its value, or null when it is missing.
    const JsonValue* Find(const char* name);

    template <class Type>
    bool Member(const char* name, Type& value) {
        const JsonValue* member = Find(name);
        if (member != nullptr) {
            Read(*member, m_Place.In(name), value);
        }
        return member != nullptr;
    }

    template <class Type>
    void Required(const char* name, Type& value) {
        if (!Member(name, value)) {
            m_Place.In(name).Refuse("is missing");
        }
    }

    template <class Type, class Name>
    void Named(const char* member, const char* nameMember, Type& value, Name) {
        Member(member, value);
        Find(nameMember);
    }

    template <class Type, class Name>
    void NamedList(const char* member, const char* namesMember, Type& values, Name) {
        Member(member, values);
        Find(namesMember);
    }

    /// @throws JsonRefusal when a member is there twice
    void End() const;

    /// @{
    /// @throws JsonRefusal for a value of another type or out of range
    static void Read(const JsonValue& json, const JsonPlace& place, bool& value);
    static void Read(const JsonValue& json, const JsonPlace& place, std::int32_t& value);
    static void Read(const JsonValue& json, const JsonPlace& place, std::uint32_t& value);
    static void Read(const JsonValue& json, const JsonPlace& place, std::int64_t& value);
    static void Read(const JsonValue& json, const JsonPlace& place, std::uint64_t& value);
    static void Read(const JsonValue& json, const JsonPlace& place, float& value);
    static void Read(const JsonValue& json, const JsonPlace& place, std::string& value);
    static void Read(const JsonValue& json, const JsonPlace& place, VELK::XML::xml_document& value);

    template <class Type>
    static void Read(const JsonValue& json, const JsonPlace& place, std::vector<Type>& values) {
        if (!json.IsArray()) {
            place.RefuseType(json, "a list");
        }
        // Of their final number: events that move lose what they resolved.
        values.reserve(json.Size());
        for (rapidjson::SizeType index = 0; index < json.Size(); ++index) {
            Read(json[index], place.In(index), Append(values));
        }
    }

    template <class Type>
    static void Read(const JsonValue& json, const JsonPlace& place, Type& value) {
        if constexpr (std::is_enum_v<Type>) {
            std::int32_t number = 0;
            Read(json, place, number);
            value = static_cast<Type>(number);
        } else {
            if (std::is_same_v<Type, CObject> && place.m_Depth > MAX_DEPTH) {
                place.Refuse("is nested too deeply");
            }
            CModelReader reader(json, place);
            Fields(reader, value);
            reader.End();
        }
    }
    /// @}

private:
    template <class Type>
    static Type& Append(std::vector<Type>& values) {
        return values.emplace_back();
    }
    static CObject& Append(std::vector<CObject>& values);

    const JsonValue& m_Object;
    const JsonPlace& m_Place;
    JsonValue::ConstMemberIterator m_Next;
    std::size_t m_Found = 0;
};

}  // namespace PI
