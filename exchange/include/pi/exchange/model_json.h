// SPDX-License-Identifier: Apache-2.0
/// @file
/// Writes and reads managed objects, and everything in them, as JSON; writes the health of a drive as JSON.
///
/// A record that is read equals the one that was written in every field, even those that its operator==
/// ignores: data of all kinds, 64-bit numbers, not-a-number and infinities, bytes that are not UTF-8, zero
/// bytes, XML documents with their comments and white space. docs/exchange.md describes the members and how
/// unusual values are written, share/pi/model.schema.json the same for programs.
///
/// A field that is missing from the JSON has the value that it has in a new record. Members with names of the
/// vocabulary ("id_name" beside "id") are for people: when reading, only the numbers count, and names are
/// ignored. Unknown members are ignored, too.
///
/// Threads: any number of threads may write and read at once, each its own records. Reading uses no new
/// unique identifier: CObject::m_UniqueIDCounter stays as it is, and an object has the identifier of the one
/// that was written, like a copy. In another process a new object may have the same identifier.
#pragma once

#include <pi/drive_health.h>
#include <pi/event.h>
#include <pi/model.h>

#include <string>

namespace PI {

/// @addtogroup exchange
/// @{

/// The state of a drive, the reasons for it and all figures, including unknown ones; otherwise like a record
/// below. It cannot be read back.
PI_API std::string ToJson(const CDriveHealth& health);

/// @{
/// A record as JSON: one object in UTF-8, on one line without a line break at its end, so that a file can
/// hold one record per line.
///
/// The static type of the argument decides: a task that is passed as a CObject is written as an object.
/// @throws std::bad_alloc if allocation fails; std::length_error for a text of 4 GiB and more
PI_API std::string ToJson(const CProperty& record);
PI_API std::string ToJson(const CObject& record);
PI_API std::string ToJson(const COperation& record);
PI_API std::string ToJson(const CTask& record);
PI_API std::string ToJson(const CEvent& record);
PI_API std::string ToJson(const CDrive& record);
PI_API std::string ToJson(const CContainer& record);
PI_API std::string ToJson(const CLogicalDrive& record);
PI_API std::string ToJson(const CArray& record);
PI_API std::string ToJson(const CLevel& record);
PI_API std::string ToJson(const CPartition& record);
PI_API std::string ToJson(const CMigration& record);
/// @}

/// @{
/// Reads what ToJson wrote, or another program by the same rules.
///
/// A text is refused if it is not JSON, contains another record or another version, a member of the wrong
/// type, out of range or given twice, objects in operations nested more than 100 deep (judgement: deeper ones
/// would be hostile, and reading has to fit the stack), or has 4 GiB or more.
///
/// @param text   one JSON object; blanks and line breaks around it are ignored
/// @param reason out: why it was refused, with the byte of the text or, as a JSON pointer (RFC 6901), the
///               member: "/properties/0/id is a text where a number belongs"; empty if it was not
/// @return whether the record was read; if not, it is unchanged
/// @throws std::bad_alloc if allocation fails; the record is unchanged then
PI_API bool FromJson(const std::string& text, CProperty& record, std::string& reason);
PI_API bool FromJson(const std::string& text, CObject& record, std::string& reason);
PI_API bool FromJson(const std::string& text, COperation& record, std::string& reason);
PI_API bool FromJson(const std::string& text, CTask& record, std::string& reason);
PI_API bool FromJson(const std::string& text, CEvent& record, std::string& reason);
PI_API bool FromJson(const std::string& text, CDrive& record, std::string& reason);
PI_API bool FromJson(const std::string& text, CContainer& record, std::string& reason);
PI_API bool FromJson(const std::string& text, CLogicalDrive& record, std::string& reason);
PI_API bool FromJson(const std::string& text, CArray& record, std::string& reason);
PI_API bool FromJson(const std::string& text, CLevel& record, std::string& reason);
PI_API bool FromJson(const std::string& text, CPartition& record, std::string& reason);
PI_API bool FromJson(const std::string& text, CMigration& record, std::string& reason);
/// @}

/// @}

}  // namespace PI
