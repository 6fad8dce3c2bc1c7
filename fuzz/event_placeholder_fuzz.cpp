// SPDX-License-Identifier: Apache-2.0
// Placeholders of events: stored in any form, read against the language table, copied and moved.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/event.h>
#include <velkx/language_support.h>

#include <array>
#include <sstream>
#include <utility>

#include "check.h"

namespace {

using namespace PI;

struct PlaceHolder {
    std::string CEvent::*m_Stored;
    std::string CEvent::*m_Resolved;
    std::string& (CEvent::*m_Get)();
    void (CEvent::*m_SetText)(const std::string&);
    void (CEvent::*m_SetResource)(int);
};

#define PLACEHOLDER(N)                                                                 \
    {                                                                                  \
        &CEvent::m_PlaceHolder##N, &CEvent::m_Resolved##N, &CEvent::GetPlaceHolder##N, \
            &CEvent::SetPlaceHolder##N, &CEvent::SetPlaceHolder##N                     \
    }
constexpr std::array<PlaceHolder, 6> PLACEHOLDERS = {
    {PLACEHOLDER(1), PLACEHOLDER(2), PLACEHOLDER(3), PLACEHOLDER(4), PLACEHOLDER(5), PLACEHOLDER(6)}};
#undef PLACEHOLDER

std::string ResourceText(int number) {
    std::string text;
    CLanguageSupport::ResolveString(static_cast<unsigned>(number), text);
    return text;
}

/// The number that a text is, read by a stream; 0 where it is none.
int NumberOf(const std::string& text) {
    std::istringstream stream(text);
    int number = 0;
    return stream >> number && stream.peek() == std::istringstream::traits_type::eof() ? number : 0;
}

std::string ExpectedReading(const std::string& stored) {
    if (stored.size() < 3) {
        return stored;
    }
    const std::string prefix = stored.substr(0, 2);
    const std::string rest = stored.substr(2);
    if (prefix == "I:") {
        return ResourceText(NumberOf(rest));
    }
    return prefix == "T:" ? rest : stored;
}

void Store(FuzzedDataProvider& input, const PlaceHolder& placeHolder, CEvent& event) {
    enum Form { RAW, TEXT, RESOURCE, kMaxValue = RESOURCE };
    switch (input.ConsumeEnum<Form>()) {
        case RAW: event.*placeHolder.m_Stored = input.ConsumeRandomLengthString(); break;
        case TEXT: {
            const std::string text = input.ConsumeRandomLengthString();
            (event.*placeHolder.m_SetText)(text);
            CHECK_TEXT((event.*placeHolder.m_Get)(), text.empty() ? "T:" : text);
            break;
        }
        case RESOURCE: {
            const auto number = input.ConsumeIntegral<int>();
            (event.*placeHolder.m_SetResource)(number);
            CHECK_TEXT((event.*placeHolder.m_Get)(), ResourceText(number));
            break;
        }
    }
}

void CheckReadings(CEvent& event) {
    for (const PlaceHolder& placeHolder : PLACEHOLDERS) {
        const std::string stored = event.*placeHolder.m_Stored;
        std::string& read = (event.*placeHolder.m_Get)();
        CHECK(&read == &(event.*placeHolder.m_Resolved));
        CHECK_TEXT(read, ExpectedReading(stored));
        CHECK_TEXT(event.*placeHolder.m_Stored, stored);
    }
}

/// A copy is read for itself: it begins with nothing resolved.
void CheckCopy(CEvent& copy, CEvent& source) {
    CHECK(copy == source);
    for (const PlaceHolder& placeHolder : PLACEHOLDERS) {
        CHECK((copy.*placeHolder.m_Resolved).empty());
        CHECK_TEXT(copy.*placeHolder.m_Stored, source.*placeHolder.m_Stored);
    }
    CheckReadings(copy);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    CLanguageSupport::Clear();
    for (int count = input.ConsumeIntegralInRange(0, 3); count > 0; --count) {
        const auto number = input.ConsumeIntegralInRange<unsigned>(0, 9);
        CLanguageSupport::SetString(number, input.ConsumeRandomLengthString());
    }
    CEvent event;
    event.m_Handle = input.ConsumeIntegral<std::uint64_t>();
    event.m_EventID = input.ConsumeIntegral<std::uint32_t>();
    event.m_TimeStamp = input.ConsumeIntegral<std::uint64_t>();
    for (const PlaceHolder& placeHolder : PLACEHOLDERS) {
        Store(input, placeHolder, event);
    }
    CheckReadings(event);

    CEvent copy(event);
    CheckCopy(copy, event);
    CEvent assigned;
    assigned = event;
    CheckCopy(assigned, event);
    CEvent moved(std::move(copy));
    CheckCopy(moved, event);
    CEvent moveAssigned;
    moveAssigned = std::move(assigned);
    CheckCopy(moveAssigned, event);
    return 0;
}
