// SPDX-License-Identifier: Apache-2.0
/// @file
/// Events written by hand, in JSON.
#pragma once

#include <pi/event.h>

#include <string>

namespace PI {

/// @addtogroup exchange
/// @{

/// Reads an event written by hand, or a record that ToJson(const CEvent&) wrote, which has a member "record"
/// and is read by FromJson.
///
/// @code
/// {"id": "REBUILD_FAILED", "severity": "ERROR", "placeholders": ["logical drive 0", {"resource": 70001}]}
/// @endcode
///
/// All members are optional. "id": number, or name in the vocabulary in any case; default EventID::UNKNOWN.
/// "severity": DEBUG, INFORMATION, WARNING or ERROR in any case, or any signed 32-bit number; default
/// INFORMATION. "timestamp": milliseconds since 1970-01-01 UTC, as a number or a text; default the current
/// time. "host", "source": texts. "sequence": an unsigned 32-bit number. "placeholders": at most six, each a
/// text, null for none, or an object with the number of a language "resource".
///
/// Text that is not JSON is refused, and so are members with another name, of the wrong type, out of range or
/// given twice. Unknown members are refused because a misspelt one would otherwise be lost without notice.
///
/// @param reason out: why it was refused, with the byte of the text or, as a JSON pointer (RFC 6901), the
///               member: "/placeholders/0/resource is a text where a number belongs"; empty if it was not
/// @return whether the event was read; if not, it is unchanged
/// @throws std::bad_alloc if allocation fails; the event is unchanged then. Thread-safe.
PI_API bool ReadEvent(const std::string& text, CEvent& event, std::string& reason);

/// @}

}  // namespace PI
