// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reads configuration documents and reports everything that could not be used as written.
#pragma once

#include <pi/layout.h>
#include <pi/types.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace PI {

/// @addtogroup layout
/// @{

namespace LayoutKind {
/// What a configuration document describes.
enum _LAYOUT_KIND : std::int32_t {
    NONE = 0,           ///< neither of the two
    ARRAY = 1,          ///< an array
    LOGICAL_DRIVE = 2,  ///< a logical drive
};
}  // namespace LayoutKind
using LayoutKind::_LAYOUT_KIND;

/// Something in a configuration document that could not be used as written.
///
/// A value: a copy costs no more than a pointer. Any number of threads may read it. Texts are valid until the
/// object is assigned to or destroyed; what they quote from the document may contain invalid UTF-8 and
/// control characters. A moved-from object may only be assigned to or destroyed.
class PI_API CLayoutFinding {
public:
    /// @{
    /// Copies refer to the same texts.
    CLayoutFinding(const CLayoutFinding& source) noexcept;
    CLayoutFinding(CLayoutFinding&& source) noexcept;
    CLayoutFinding& operator=(const CLayoutFinding& source) noexcept;
    CLayoutFinding& operator=(CLayoutFinding&& source) noexcept;
    /// @}
    ~CLayoutFinding();

    /// @{
    /// Where the element or text begins, or where the text is no longer well-formed XML: from 1, columns in
    /// characters.
    std::uint64_t GetLine() const noexcept;
    std::uint64_t GetColumn() const noexcept;
    /// @}

    /// The element, such as "Drive", or the one around a text; empty outside of elements and if the text is
    /// not XML.
    const std::string& GetElement() const noexcept;
    /// The attribute, such as "UsedSize"; empty if the finding is about the element.
    const std::string& GetAttribute() const noexcept;

    /// What was found, for people, in English: "UsedSize is missing". One line without a full stop, except
    /// for what it quotes, which is cut after 40 bytes.
    const std::string& GetText() const noexcept;

    /// The value in the record instead, such as "0"; empty if there is none.
    const std::string& GetAssumed() const noexcept;

    /// How many further findings were left out of the list; 0 in all but its last one.
    std::uint64_t GetLeftOut() const noexcept;

private:
    friend class FindingList;
    struct CFacts;
    explicit CLayoutFinding(std::shared_ptr<const CFacts> facts) noexcept;

    std::shared_ptr<const CFacts> m_Facts;
};

/// Findings that are kept for one document (judgement: nobody reads more).
constexpr std::size_t MAX_LAYOUT_FINDINGS = 100;

/// Reads a configuration document of either kind and reports what could not be used as written: attributes
/// that are missing, given twice, not numbers, out of range or negative, unknown units, elements that are not
/// read, and text outside of elements. Elements may be nested to any depth.
///
/// The record is that of CArray(VELK::XML::xml_document&) or CLogicalDrive(VELK::XML::xml_document&) for the
/// document that VELK::XML::xml_document::load_buffer makes of the text. The first top-level element with the
/// name of one of the two kinds decides which.
///
/// Nothing is read from a text that is not well-formed, has no such element, is in UTF-16 or UTF-32, or
/// contains a zero byte; the last finding then says so, with the place.
///
/// @param text     readable up to length, in UTF-8, or in ISO-8859-1 if its declaration says so; a byte order
///                 mark is allowed
/// @param array    out: replaced when the result is ARRAY
/// @param logicalDrive out: replaced when the result is LOGICAL_DRIVE
/// @param findings the findings are appended, at most MAX_LAYOUT_FINDINGS, in the order of the document
/// @return the kind of the record that was replaced; NONE if nothing was read
/// @throws std::bad_alloc if allocation fails; nothing is changed then. Thread-safe.
PI_API _LAYOUT_KIND ReadLayout(const char* text, std::size_t length, CArray& array,
                               CLogicalDrive& logicalDrive, std::vector<CLayoutFinding>& findings);

/// @}

}  // namespace PI
