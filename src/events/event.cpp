// SPDX-License-Identifier: Apache-2.0

#include <pi/event.h>
#include <velkx/language_support.h>

#include <utility>

#include "events/stored_placeholder.h"

namespace PI {

namespace {

// The value of an event; the resolved and scratch strings are no part of it.
template <class Source>
void Assign(CEvent& event, Source&& source) {
    event.m_Handle = source.m_Handle;
    event.m_EventID = source.m_EventID;
    event.m_Severity = source.m_Severity;
    event.m_TimeStamp = source.m_TimeStamp;
    event.m_PlaceHolder1 = std::forward<Source>(source).m_PlaceHolder1;
    event.m_PlaceHolder2 = std::forward<Source>(source).m_PlaceHolder2;
    event.m_PlaceHolder3 = std::forward<Source>(source).m_PlaceHolder3;
    event.m_PlaceHolder4 = std::forward<Source>(source).m_PlaceHolder4;
    event.m_PlaceHolder5 = std::forward<Source>(source).m_PlaceHolder5;
    event.m_PlaceHolder6 = std::forward<Source>(source).m_PlaceHolder6;
    event.m_Data = std::forward<Source>(source).m_Data;
    event.m_Source = std::forward<Source>(source).m_Source;
    event.m_Host = std::forward<Source>(source).m_Host;
    event.m_SequenceNumber = source.m_SequenceNumber;
}

}  // namespace

CEvent::CEvent() = default;

CEvent::CEvent(const CEvent& source) {
    Assign(*this, source);
}

CEvent::CEvent(CEvent&& source) noexcept {
    Assign(*this, std::move(source));
}

CEvent& CEvent::operator=(const CEvent& source) {
    Assign(*this, source);
    return *this;
}

CEvent& CEvent::operator=(CEvent&& source) noexcept {
    if (this != &source) {  // a string that is moved to itself may lose its text
        Assign(*this, std::move(source));
    }
    return *this;
}

CEvent::~CEvent() = default;

bool CEvent::operator==(const CEvent& other) const {
    return m_Handle == other.m_Handle && m_EventID == other.m_EventID && m_Severity == other.m_Severity &&
           m_TimeStamp == other.m_TimeStamp;
}

#define PI_PLACEHOLDER(N)                                                                  \
    void CEvent::SetPlaceHolder##N(const std::string& text) {                              \
        m_PlaceHolder##N = TEXT_PREFIX + text;                                             \
    }                                                                                      \
    void CEvent::SetPlaceHolder##N(int resource) {                                         \
        m_PlaceHolder##N = RESOURCE_PREFIX + std::to_string(resource);                     \
    }                                                                                      \
    std::string& CEvent::GetPlaceHolder##N() {                                             \
        ReadPlaceHolder(m_PlaceHolder##N, m_Resolved##N, CLanguageSupport::ResolveString); \
        return m_Resolved##N;                                                              \
    }
PI_PLACEHOLDER(1)
PI_PLACEHOLDER(2)
PI_PLACEHOLDER(3)
PI_PLACEHOLDER(4)
PI_PLACEHOLDER(5)
PI_PLACEHOLDER(6)
#undef PI_PLACEHOLDER

}  // namespace PI
