// SPDX-License-Identifier: Apache-2.0
// Two properties that are set, copied, moved and compared in any order.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/property.h>

#include <algorithm>
#include <utility>

#include "check.h"
#include "model/property_samples.h"

namespace {

using namespace PI;
using namespace PI::Test;

template <class Number>
std::vector<Number> Numbers(FuzzedDataProvider& input) {
    std::vector<Number> numbers(input.ConsumeIntegralInRange<std::size_t>(0, 4));
    for (Number& number : numbers) {
        number = input.ConsumeIntegral<Number>();
    }
    return numbers;
}

std::vector<std::string> Texts(FuzzedDataProvider& input) {
    std::vector<std::string> texts(input.ConsumeIntegralInRange<std::size_t>(0, 40));
    for (std::string& text : texts) {
        text = input.ConsumeRandomLengthString();
    }
    return texts;
}

void SetRange(FuzzedDataProvider& input, CProperty& property) {
    const auto value = input.ConsumeIntegral<int>();
    const auto min = input.ConsumeIntegral<int>();
    const auto max = input.ConsumeIntegral<int>();
    const auto step = input.ConsumeIntegral<unsigned>();
    CHECK(property.SetValue(value, min, max, step) == ErrorCode::SUCCESS);
    const int expected = value < min ? min : value > max ? max : value;
    int read[4] = {};
    unsigned readStep = 0;
    property.GetValue(read[0], read[1], read[2], readStep);
    property.GetValueRangeNormalized(read[3]);
    CHECK(read[0] == expected && read[1] == min && read[2] == max && readStep == step);
    CHECK(read[3] == (expected < min ? min : expected > max ? max : expected));
}

void SetChoice(FuzzedDataProvider& input, CProperty& property) {
    const auto value = input.ConsumeIntegral<int>();
    const std::vector<int> choices = Numbers<int>(input);
    const std::vector<std::string> before = AllTexts(property);
    if (property.SetValue(value, choices) != ErrorCode::SUCCESS) {
        CHECK(choices.empty() && AllTexts(property) == before);
        return;
    }
    int read = 0;
    std::vector<int> readChoices;
    property.GetValue(read, readChoices);
    CHECK(!choices.empty() && read == value && readChoices == choices);
}

void SetLists(FuzzedDataProvider& input, CProperty& property) {
    std::vector<int> values = Numbers<int>(input);
    std::vector<int> values2 = Numbers<int>(input);
    CHECK(property.SetValue(values, values2) == ErrorCode::SUCCESS);
    std::vector<int> read;
    std::vector<int> read2;
    property.GetValue(read, read2);
    CHECK(read == values && read2 == values2);
}

void SetLongs(FuzzedDataProvider& input, CProperty& property) {
    std::vector<unsigned long> values = Numbers<unsigned long>(input);
    CHECK(property.SetValue(values) == ErrorCode::SUCCESS);
    std::vector<unsigned long> read;
    property.GetValue(read, true);
    CHECK(read == values);
}

void SetTexts(FuzzedDataProvider& input, CProperty& property) {
    const std::vector<std::string> values = Texts(input);
    const auto mask = input.ConsumeIntegral<unsigned>();
    CHECK(property.SetValue(values, mask) == ErrorCode::SUCCESS);
    std::vector<std::string> read;
    unsigned readMask = 0;
    property.GetValue(read, readMask);
    CHECK(read == values && readMask == mask);

    std::string joined;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if ((mask & 1U << i % 32) != 0 && !values[i].empty()) {
            joined += (joined.empty() ? "" : ", ") + values[i];
        }
    }
    CHECK_TEXT(property.GetValue(nullptr), joined);
}

std::string Strip(const std::string& text) {
    constexpr char WHITE_SPACE[] = " \t\n\v\f\r";
    const std::size_t first = text.find_first_not_of(WHITE_SPACE);
    return first == std::string::npos ? ""
                                      : text.substr(first, text.find_last_not_of(WHITE_SPACE) + 1 - first);
}

void SetText(FuzzedDataProvider& input, CProperty& property) {
    const bool isEncoded = input.ConsumeBool();
    if (isEncoded) {
        property.m_Format = 4;
    } else if (property.m_Format == 4) {
        property.m_Format = 0;
    }
    const std::string text = input.ConsumeRandomLengthString();
    CHECK(property.SetValue(text) == ErrorCode::SUCCESS);
    CHECK(property.m_Format == (isEncoded ? 4 : 0));
    CHECK_TEXT(property.GetValue(nullptr), !isEncoded                     ? Strip(text)
                                           : text.substr(0, 5) == "ENC1(" ? text
                                                                          : std::string());
}

template <class Value>
void SetScalar(Value value, CProperty& property) {
    CHECK(property.SetValue(value) == ErrorCode::SUCCESS);
    Value read = {};
    property.GetValue(read);
    CHECK(read == value);
}

/// Sets one kind, which becomes the one that counts; what the other kinds hold stays.
void Set(FuzzedDataProvider& input, CProperty& property) {
    const std::string identity = IdentityText(property);
    const std::vector<std::string> before = KindTexts(property);
    const auto kind = input.ConsumeIntegralInRange<std::int32_t>(2, 10);
    switch (kind) {
        case PropertyType::STRING: SetText(input, property); break;
        case PropertyType::CHOICE: SetChoice(input, property); break;
        case PropertyType::BOOL: SetScalar(input.ConsumeBool(), property); break;
        case PropertyType::LONG: SetScalar(input.ConsumeIntegral<unsigned long>(), property); break;
        case PropertyType::SIGNED_LONG: SetScalar(input.ConsumeIntegral<long>(), property); break;
        case PropertyType::RANGE: SetRange(input, property); break;
        case PropertyType::MULTI_VALUE: SetLists(input, property); break;
        case PropertyType::FLOAT: SetScalar(input.ConsumeFloatingPoint<float>(), property); break;
        default: input.ConsumeBool() ? SetLongs(input, property) : SetTexts(input, property); break;
    }
    CHECK_TEXT(IdentityText(property), identity);
    const std::vector<std::string> after = KindTexts(property);
    for (std::size_t i = 0; i < before.size(); ++i) {
        CHECK(DATA_TYPES[i] == property.m_Type || after[i] == before[i]);
    }
}

/// Changes what says what a property is, or the type, be it to one that does not exist.
void Describe(FuzzedDataProvider& input, CProperty& property) {
    std::int32_t CProperty::*const fields[] = {&CProperty::m_SecondaryID, &CProperty::m_Attribute1,
                                               &CProperty::m_Attribute2,  &CProperty::m_Attribute3,
                                               &CProperty::m_Attribute4,  &CProperty::m_Attribute5,
                                               &CProperty::m_Attribute6,  &CProperty::m_Format};
    property.*input.PickValueInArray(fields) = input.ConsumeIntegralInRange(0, 1);
    property.m_Flag1 = input.ConsumeBool();
    property.m_Flag2 = input.ConsumeBool();
    property.m_Type = static_cast<_PROPERTY_TYPE>(input.ConsumeIntegralInRange(-1, 14));
}

bool ExpectedEqual(const CProperty& left, const CProperty& right) {
    const _PROPERTY_TYPE type = left.m_Type;
    if (IdentityText(left) != IdentityText(right) || type != right.m_Type ||
        left.m_Format != right.m_Format) {
        return false;
    }
    if (type == PropertyType::FLOAT) {  // its text is rounded
        return !(left.m_Data.m_Float.m_Value < right.m_Data.m_Float.m_Value) &&
               !(right.m_Data.m_Float.m_Value < left.m_Data.m_Float.m_Value);
    }
    if (type == PropertyType::MULTI_STRING) {  // its text does not say where an element ends
        return left.m_Data.m_MultiString.m_Values == right.m_Data.m_MultiString.m_Values &&
               left.m_Data.m_MultiString.m_SelectionMask == right.m_Data.m_MultiString.m_SelectionMask;
    }
    return std::find(DATA_TYPES.begin(), DATA_TYPES.end(), type) != DATA_TYPES.end() &&
           KindText(left, type) == KindText(right, type);
}

void CheckCompared(const CProperty& left, const CProperty& right) {
    const bool areEqual = ExpectedEqual(left, right);
    CHECK((left == right) == areEqual);
    CHECK((right == left) == areEqual);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    CProperty properties[2] = {FilledProperty(PropertyType::CHOICE), CProperty(PropertyID::VENDOR, true)};
    constexpr int MOST_STEPS = 50;
    for (int step = 0; step < MOST_STEPS && input.remaining_bytes() > 0; ++step) {
        const bool isFirst = input.ConsumeBool();
        CProperty& property = properties[isFirst ? 0 : 1];
        CProperty& other = properties[isFirst ? 1 : 0];
        enum Action { SET, DESCRIBE, COPY, MOVE, kMaxValue = MOVE };
        switch (input.ConsumeEnum<Action>()) {
            case SET: Set(input, property); break;
            case DESCRIBE: Describe(input, property); break;
            case COPY:
                property = other;
                CHECK(AllTexts(property) == AllTexts(other));
                CHECK(AllTexts(CProperty(other)) == AllTexts(other));
                break;
            case MOVE: {
                const std::vector<std::string> texts = AllTexts(other);
                property = std::move(other);
                CHECK(AllTexts(property) == texts);
                CProperty moved(std::move(property));
                CHECK(AllTexts(moved) == texts);
                property = moved;
                other = std::move(moved);
                break;
            }
        }
        CheckCompared(property, other);
        CheckCompared(property, property);
    }
    return 0;
}
