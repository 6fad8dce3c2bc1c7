// SPDX-License-Identifier: Apache-2.0

#include "model_reader.h"

#include <pi/exchange/model_json.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "json_bytes.h"
#include "model_numbers.h"
#include "model_xml.h"

namespace PI {

namespace {

/// Leaves no trace in the counter.
template <class Record>
Record MakeBlank() {
    const std::uint64_t next = CObject::m_UniqueIDCounter;
    Record record;
    CObject::m_UniqueIDCounter = next;
    return record;
}

/// @{
/// What objects begin as. They are made while the library is loaded, so that reading needs no new
/// identifiers, which only one thread at a time may take.
const CObject BLANK_OBJECT = MakeBlank<CObject>();
const CTask BLANK_TASK = MakeBlank<CTask>();
/// @}

const char* TypeOf(const JsonValue& value) {
    switch (value.GetType()) {
        case rapidjson::kNullType: return "null";
        case rapidjson::kFalseType:
        case rapidjson::kTrueType: return "true or false";
        case rapidjson::kObjectType: return "an object";
        case rapidjson::kArrayType: return "a list";
        case rapidjson::kStringType: return "a text";
        case rapidjson::kNumberType: break;
    }
    return "a number";
}

std::string_view TextOf(const JsonValue& value) {
    return {value.GetString(), value.GetStringLength()};
}

/// A whole number of the text: decimal digits, with a minus sign in front where it has one.
template <class Number>
bool NumberOf(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

/// Brings a number that JSON holds into its type.
template <class Number>
bool NumberOf(const JsonValue& json, Number& number) {
    using Limits = std::numeric_limits<Number>;
    if (json.IsUint64()) {
        const std::uint64_t value = json.GetUint64();
        number = static_cast<Number>(value);
        return value <= static_cast<std::uint64_t>(Limits::max());
    }
    if (json.IsInt64()) {  // a negative one
        const std::int64_t value = json.GetInt64();
        number = static_cast<Number>(value);
        return std::is_signed_v<Number> && value >= static_cast<std::int64_t>(Limits::min());
    }
    // Some programs write whole numbers as 1e3 or 5.0.
    const double value = json.GetDouble();
    if (!(std::fabs(value) <= static_cast<double>(LARGEST_EXACT)) || std::trunc(value) < value ||
        std::trunc(value) > value) {
        return false;
    }
    const auto whole = static_cast<std::int64_t>(value);
    number = static_cast<Number>(whole);
    return (whole >= 0 || std::is_signed_v<Number>)&&static_cast<std::int64_t>(number) == whole;
}

template <class Number>
void ReadNumber(const JsonValue& json, const JsonPlace& place, Number& value) {
    const bool mayBeText = sizeof(value) == sizeof(std::uint64_t) && json.IsString();
    if (!json.IsNumber() && !mayBeText) {
        place.RefuseType(json, "a number");
    }
    if (!(mayBeText ? NumberOf(TextOf(json), value) : NumberOf(json, value))) {
        place.Refuse("is no whole number from " + std::to_string(std::numeric_limits<Number>::min()) +
                     " to " + std::to_string(std::numeric_limits<Number>::max()));
    }
}

/// Not-a-number and infinity as texts.
bool FloatOfText(std::string_view text, float& value) {
    if (text == NAN_TEXT) {
        value = FloatOf(PLAIN_NAN);
        return true;
    }
    if (text == INFINITY_TEXT || text == MINUS_INFINITY_TEXT) {
        value = text == INFINITY_TEXT ? HUGE_VALF : -HUGE_VALF;
        return true;
    }
    std::uint32_t bits = 0;
    if (text.size() != std::strlen("NaN(ffc00000)") || text.substr(0, 4) != "NaN(" || text.back() != ')' ||
        std::from_chars(text.data() + 4, text.data() + 12, bits, 16).ptr != text.data() + 12) {
        return false;
    }
    value = FloatOf(bits);
    return std::isnan(value);
}

/// As a number, and beyond 2^53 too, since it is a place in a text.
std::string AtByte(std::size_t offset) {
    return "byte " + std::to_string(offset + 1) + ": ";
}

/// What a record is before its members are read.
template <class Record>
Record Blank() {
    return Record();
}
template <>
CObject Blank() {
    return BLANK_OBJECT;
}
template <>
CTask Blank() {
    return BLANK_TASK;
}

template <class Record>
void HandOver(Record& read, Record& record) {
    record = std::move(read);
}

void HandOver(CEvent& read, CEvent& record) {
    // An assignment leaves these out.
    for (std::string CEvent::*const text :
         {&CEvent::m_Resolved1, &CEvent::m_Resolved2, &CEvent::m_Resolved3, &CEvent::m_Resolved4,
          &CEvent::m_Resolved5, &CEvent::m_Resolved6, &CEvent::m_Scratch}) {
        (record.*text).swap(read.*text);
    }
    record = std::move(read);
}

/// Refuses what holds something else.
void CheckHeader(CModelReader& reader, const JsonPlace& root, const char* expected) {
    std::string record;
    reader.Required("record", record);
    if (record != expected) {
        root.In("record").Refuse("is not \"" + std::string(expected) + "\"");
    }
    std::uint32_t version = 0;
    reader.Required("version", version);
    if (version != MODEL_VERSION) {
        root.In("version").Refuse("is " + std::to_string(version) + " where " +
                                  std::to_string(MODEL_VERSION) + " is known");
    }
}

template <class Record>
bool Read(const std::string& text, const char* name, Record& record, std::string& reason) {
    reason.clear();
    try {
        CNumberedDocument document;
        document.ParseWhole(text);
        const JsonPlace root;
        CModelReader reader(document, root);
        CheckHeader(reader, root, name);
        Record read = Blank<Record>();
        Fields(reader, read);
        reader.End();
        HandOver(read, record);
        return true;
    } catch (JsonRefusal& refusal) {
        reason = std::move(refusal.m_Reason);
        return false;
    }
}

}  // namespace

void CNumberedDocument::ParseWhole(const std::string& text) {
    if (text.size() > std::numeric_limits<rapidjson::SizeType>::max()) {
        throw JsonRefusal{"the text is too long"};
    }
    if (const std::size_t zero = text.find('\0'); zero != std::string::npos) {  // the parser would end there
        throw JsonRefusal{AtByte(zero) + "A zero byte."};
    }
    constexpr unsigned FLAGS = rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseIterativeFlag;
    rapidjson::MemoryStream memory(text.data(), text.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(memory);
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonMemory> reader;
    rapidjson::ParseResult result;
    const auto parse = [&](JsonDocument&) {
        result = reader.Parse<FLAGS>(stream, *this);
        return !result.IsError();
    };
    Populate(parse);
    if (result.IsError()) {
        throw JsonRefusal{AtByte(result.Offset()) + rapidjson::GetParseError_En(result.Code())};
    }
}

bool CNumberedDocument::RawNumber(const char* begin, rapidjson::SizeType length, bool) {
    const std::string_view text(begin, length);
    std::uint64_t number = 0;
    std::int64_t negative = 0;
    if (NumberOf(text, number)) {
        return Uint64(number);
    }
    if (NumberOf(text, negative)) {
        return Int64(negative);
    }
    double fraction = HUGE_VAL;  // stays for what double precision cannot hold
    std::from_chars(text.data(), text.data() + text.size(), fraction);
    return Double(fraction);
}

void JsonPlace::Refuse(const std::string& reason) const {
    std::string pointer;
    for (const JsonPlace* place = this; place->m_Outer != nullptr; place = place->m_Outer) {
        pointer.insert(0, "/" + (place->m_Name != nullptr ? place->m_Name : std::to_string(place->m_Index)));
    }
    throw JsonRefusal{(pointer.empty() ? "the document" : pointer) + " " + reason};
}

void JsonPlace::RefuseType(const JsonValue& value, const char* expected) const {
    Refuse(std::string("is ") + TypeOf(value) + " where " + expected + " belongs");
}

CModelReader::CModelReader(const JsonValue& object, const JsonPlace& place)
    : m_Object(object), m_Place(place) {
    if (!object.IsObject()) {
        place.RefuseType(object, "an object");
    }
    m_Next = object.MemberBegin();
}

const JsonValue* CModelReader::Find(const char* name) {
    const std::string_view wanted(name);
    // Most often they come in the order in which they are asked for.
    if (m_Next == m_Object.MemberEnd() || TextOf(m_Next->name) != wanted) {
        const auto found = std::find_if(m_Object.MemberBegin(), m_Object.MemberEnd(),
                                        [&](const auto& member) { return TextOf(member.name) == wanted; });
        if (found == m_Object.MemberEnd()) {
            return nullptr;
        }
        m_Next = found;
    }
    ++m_Found;
    const JsonValue* value = &m_Next->value;
    ++m_Next;
    return value;
}

void CModelReader::End() const {
    if (m_Found == m_Object.MemberCount()) {
        return;  // each was asked for once
    }
    std::vector<std::string_view> names;
    names.reserve(m_Object.MemberCount());
    for (const auto& member : m_Object.GetObject()) {
        names.push_back(TextOf(member.name));
    }
    std::sort(names.begin(), names.end());
    const auto twice = std::adjacent_find(names.begin(), names.end());
    if (twice != names.end()) {
        m_Place.Refuse("holds a member twice: \"" + ReadableText(*twice) + "\"");
    }
}

void CModelReader::Read(const JsonValue& json, const JsonPlace& place, bool& value) {
    if (!json.IsBool()) {
        place.RefuseType(json, "true or false");
    }
    value = json.GetBool();
}

void CModelReader::Read(const JsonValue& json, const JsonPlace& place, std::int32_t& value) {
    ReadNumber(json, place, value);
}

void CModelReader::Read(const JsonValue& json, const JsonPlace& place, std::uint32_t& value) {
    ReadNumber(json, place, value);
}

void CModelReader::Read(const JsonValue& json, const JsonPlace& place, std::int64_t& value) {
    ReadNumber(json, place, value);
}

void CModelReader::Read(const JsonValue& json, const JsonPlace& place, std::uint64_t& value) {
    ReadNumber(json, place, value);
}

void CModelReader::Read(const JsonValue& json, const JsonPlace& place, float& value) {
    if (json.IsString()) {
        if (!FloatOfText(TextOf(json), value)) {
            place.Refuse("is a text that stands for no number");
        }
        return;
    }
    if (!json.IsNumber()) {
        place.RefuseType(json, "a number");
    }
    const double number = json.GetDouble();
    constexpr double TOO_LARGE = 0x1.FFFFFFp127;  // from here on it is rounded to infinity
    if (std::fabs(number) >= TOO_LARGE) {
        place.Refuse("is beyond single precision");
    }
    value = static_cast<float>(number);
}

void CModelReader::Read(const JsonValue& json, const JsonPlace& place, std::string& value) {
    if (json.IsString()) {
        value = TextOf(json);
        return;
    }
    if (!json.IsObject()) {
        place.RefuseType(json, "a text");
    }
    CModelReader reader(json, place);
    std::string digits;
    const JsonValue* bytes = reader.Find("bytes");
    const JsonPlace inside = place.In("bytes");
    if (bytes == nullptr) {
        inside.Refuse("is missing");
    }
    if (!bytes->IsString()) {
        inside.RefuseType(*bytes, "a text");
    }
    if (!BytesOfHexText(TextOf(*bytes), value)) {
        inside.Refuse("is no row of bytes, each of two hexadecimal digits");
    }
    reader.Find("text");
    reader.End();
}

void CModelReader::Read(const JsonValue& json, const JsonPlace& place, VELK::XML::xml_document& value) {
    std::string text;
    Read(json, place, text);
    if (const char* error = XmlOfText(text.data(), text.size(), value)) {
        place.Refuse(std::string("is no XML document: ") + error);
    }
}

CObject& CModelReader::Append(std::vector<CObject>& values) {
    return values.emplace_back(BLANK_OBJECT);
}

#define PI_RECORD(Record, name)                                                   \
    bool FromJson(const std::string& text, Record& record, std::string& reason) { \
        return Read(text, name, record, reason);                                  \
    }
#include "model_records.def"
#undef PI_RECORD

}  // namespace PI
