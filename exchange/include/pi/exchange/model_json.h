// SPDX-License-Identifier: Apache-2.0
/// @file
/// Managed objects, and all that they are made of, as JSON and back; the health of a drive as JSON.
///
/// What is read from the JSON of a record equals the record in every field, those included that its
/// operator== leaves out: data of all kinds, 64-bit numbers, not-a-number and infinities, bytes that are no
/// UTF-8, zero bytes, XML documents with their comments and white space. docs/exchange.md describes the
/// members and how odd values are written, share/pi/model.schema.json the same for programs.
///
/// A record of which JSON says nothing keeps the value of a new one. Members with names of the vocabulary
/// ("id_name" beside "id") are for people: numbers decide, names are passed over. So are unknown members.
///
/// Threads: any number may write and read at once, each its own records. Reading takes no unique identifier:
/// CObject::m_UniqueIDCounter stays as it is, and an object has the identifier of the one that was written,
/// as a copy has. In another process a new object may have the same.
#pragma once

#include <pi/drive_health.h>
#include <pi/event.h>
#include <pi/model.h>

#include <string>

namespace PI {

/// @addtogroup exchange
/// @{

/// The state of a drive, the reasons for it and all figures, unknown ones included; otherwise as a record
/// below. It is not read back.
PI_API std::string ToJson(const CDriveHealth& health);

/// @{
/// A record as JSON: one object in UTF-8, on one line without a line break at its end, so that a file with
/// one of them a line is a list of records.
///
/// The type of the argument decides: a task that is passed as a CObject is written as an object.
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
/// Refused is what is no JSON, holds another record or another version, a member of a wrong type or out of
/// its range, a member twice, objects within operations more than 100 deep (judgement: more would be hostile,
/// and a record of any depth has to fit the stack), and 4 GiB and more.
///
/// @param text   one JSON object; blanks and line breaks around it do no harm
/// @param reason why it was refused, with the byte of the text or, as a JSON pointer (RFC 6901), the member:
///               "/properties/0/id is a text where a number belongs"; empty when it was not
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
