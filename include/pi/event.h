// SPDX-License-Identifier: Apache-2.0
/// @file
/// Events that plug-ins report.
#pragma once

#include <pi/types.h>

#include <cstdint>
#include <string>

namespace PI {

/// @addtogroup events
/// @{

/// Something that happened on a managed object.
///
/// Six placeholders replace the markers %1 to %6 of the event's description. Each is stored as "T:" and a
/// text, or as "I:" and the number of a language resource, which is looked up only when the placeholder is
/// read, so that an event can be stored in one language and shown in another.
///
/// A value; the caller serialises access, even to read placeholders, which writes to the event.
class PI_API CEvent {
public:
    /// An event without placeholders, EventID::UNKNOWN.
    CEvent();

    /// @{
    /// Copies and moves leave out the resolved strings and the scratch string: a new event starts with them
    /// empty, an assigned one keeps its own. If allocation fails, std::bad_alloc is thrown; an assignment
    /// leaves part of the old and part of the new event then.
    CEvent(const CEvent& source);
    CEvent(CEvent&& source) noexcept;
    CEvent& operator=(const CEvent& source);
    CEvent& operator=(CEvent&& source) noexcept;
    /// @}
    virtual ~CEvent();

    /// Compares handle, identifier, severity and time stamp, which identify an event, and nothing else.
    bool operator==(const CEvent& other) const;

    /// @{
    /// Stores a literal text.
    /// @throws std::bad_alloc if allocation fails; the placeholder stays as it is then
    void SetPlaceHolder1(const std::string& text);
    void SetPlaceHolder2(const std::string& text);
    void SetPlaceHolder3(const std::string& text);
    void SetPlaceHolder4(const std::string& text);
    void SetPlaceHolder5(const std::string& text);
    void SetPlaceHolder6(const std::string& text);
    /// @}

    /// @{
    /// Stores the number of a language resource.
    /// @throws std::bad_alloc if allocation fails; the placeholder stays as it is then
    void SetPlaceHolder1(int resource);
    void SetPlaceHolder2(int resource);
    void SetPlaceHolder3(int resource);
    void SetPlaceHolder4(int resource);
    void SetPlaceHolder5(int resource);
    void SetPlaceHolder6(int resource);
    /// @}

    /// @{
    /// The readable value of a placeholder.
    ///
    /// A resource number that is not a signed 32-bit number counts as 0; a resource without a text is empty.
    /// A placeholder of at most two characters, or one that begins with neither prefix, is returned as it is
    /// stored, so an empty text is "T:".
    /// @return m_Resolved of the same number, valid until the same placeholder is read again
    /// @throws std::bad_alloc if allocation fails
    std::string& GetPlaceHolder1();
    std::string& GetPlaceHolder2();
    std::string& GetPlaceHolder3();
    std::string& GetPlaceHolder4();
    std::string& GetPlaceHolder5();
    std::string& GetPlaceHolder6();
    /// @}

    std::uint64_t m_Handle = 0;       ///< what the event belongs to, up to its producer
    std::uint32_t m_EventID = 10000;  ///< EventID::UNKNOWN; also the resource number of the description
    _SEVERITY m_Severity = Severity::INFORMATION;  ///< how serious it is
    std::uint64_t m_TimeStamp = 0;                 ///< milliseconds since 1970-01-01 UTC
    /// @{
    /// A placeholder as it is stored, with its prefix.
    std::string m_PlaceHolder1;
    std::string m_PlaceHolder2;
    std::string m_PlaceHolder3;
    std::string m_PlaceHolder4;
    std::string m_PlaceHolder5;
    std::string m_PlaceHolder6;
    /// @}
    std::string m_Data;                  ///< free text, up to its producer
    std::string m_Source;                ///< the component that raised the event
    std::string m_Host;                  ///< empty: the local host
    std::uint32_t m_SequenceNumber = 0;  ///< up to its producer
    /// @{
    /// The value of the placeholder with the same number when it was last read.
    std::string m_Resolved1;
    std::string m_Resolved2;
    std::string m_Resolved3;
    std::string m_Resolved4;
    std::string m_Resolved5;
    std::string m_Resolved6;
    /// @}
    std::string m_Scratch;  ///< for its users; not copied
};

/// @}

}  // namespace PI
