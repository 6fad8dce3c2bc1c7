// SPDX-License-Identifier: Apache-2.0

#include "model_writer.h"

#include <pi/exchange/model_json.h>

#include <charconv>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <stdexcept>

#include "json_bytes.h"
#include "model_numbers.h"
#include "model_xml.h"

namespace PI {

namespace {

rapidjson::SizeType Length(const std::string& text) {
    if (text.size() > std::numeric_limits<rapidjson::SizeType>::max()) {
        throw std::length_error("a text is too long for JSON");
    }
    return static_cast<rapidjson::SizeType>(text.size());
}

/// The fewest digits from which the same number is read, either as single precision or, as most readers of
/// JSON do, as double precision that is then rounded. Of all numbers only 7.038531e-26 and its negative need
/// more for that (all were tried).
std::size_t WriteDecimal(float value, char (&text)[32]) {
    char* end = std::to_chars(text, text + sizeof(text), value).ptr;
    double read = 0;
    std::from_chars(text, end, read);
    if (BitsOf(static_cast<float>(read)) != BitsOf(value)) {
        end = std::to_chars(text, text + sizeof(text), static_cast<double>(value)).ptr;
    }
    if (std::memcmp(text, "-0", 2) == 0 && end == text + 2) {  // readers take it for a whole number
        *end++ = '.';
        *end++ = '0';
    }
    return static_cast<std::size_t>(end - text);
}

template <class Record>
std::string Write(const Record& record, const char* name) {
    CModelWriter writer;
    writer.Begin(name);
    Fields(writer, record);
    return writer.End();
}

}  // namespace

void CModelWriter::Begin(const char* record) {
    m_Writer.StartObject();
    Member("record", record);
    Member("version", MODEL_VERSION);
}

std::string CModelWriter::End() {
    m_Writer.EndObject();
    return std::string(m_Buffer.GetString(), m_Buffer.GetSize());
}

void CModelWriter::Null(const char* name) {
    m_Writer.Key(name);
    m_Writer.Null();
}

void CModelWriter::Value(bool value) {
    m_Writer.Bool(value);
}

void CModelWriter::Value(std::int32_t value) {
    m_Writer.Int(value);
}

void CModelWriter::Value(std::uint32_t value) {
    m_Writer.Uint(value);
}

void CModelWriter::Value(std::int64_t value) {
    if (value < -LARGEST_EXACT || value > LARGEST_EXACT) {
        Value(std::to_string(value));
    } else {
        m_Writer.Int64(value);
    }
}

void CModelWriter::Value(std::uint64_t value) {
    if (value > std::uint64_t{LARGEST_EXACT}) {
        Value(std::to_string(value));
    } else {
        m_Writer.Uint64(value);
    }
}

void CModelWriter::Value(float value) {
    char text[32];
    if (std::isnan(value)) {
        if (BitsOf(value) == PLAIN_NAN) {
            return Value(NAN_TEXT);
        }
        std::snprintf(text, sizeof(text), "NaN(%08" PRIx32 ")", BitsOf(value));
        Value(std::string(text));
    } else if (std::isinf(value)) {
        Value(value < 0 ? MINUS_INFINITY_TEXT : INFINITY_TEXT);
    } else {
        m_Writer.RawValue(text, WriteDecimal(value, text), rapidjson::kNumberType);
    }
}

void CModelWriter::Value(const char* text) {
    m_Writer.String(text);
}

void CModelWriter::Value(const std::string& text) {
    if (IsUtf8(text)) {
        m_Writer.String(text.data(), Length(text));
        return;
    }
    m_Writer.StartObject();
    Member("bytes", HexText(text));
    Member("text", ReadableText(text));
    m_Writer.EndObject();
}

void CModelWriter::Value(const VELK::XML::xml_document& document) {
    Value(TextOfXml(document));
}

#define PI_RECORD(Record, name)                \
    std::string ToJson(const Record& record) { \
        return Write(record, name);            \
    }
#include "model_records.def"
#undef PI_RECORD

}  // namespace PI
