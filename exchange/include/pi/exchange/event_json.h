// SPDX-License-Identifier: Apache-2.0
/// @file
/// Events as people write them, in JSON.
#pragma once

#include <pi/event.h>

#include <string>

namespace PI {

/// @addtogroup exchange
/// @{

/// Reads an event that somebody wrote by hand, or the record that ToJson(const CEvent&) writes: that is told
/// by its member "record", and FromJson reads it.
///
/// @code
/// {"id": "REBUILD_FAILED", "severity": "ERROR", "placeholders": ["logical drive 0", {"resource": 70001}]}
/// @endcode
///
/// All members may be left out. "id": number, or name of the vocabulary in any case; without it
/// EventID::UNKNOWN. "severity": DEBUG, INFORMATION, WARNING or ERROR in any case, or any signed 32-bit
/// number; without it INFORMATION. "timestamp": milliseconds since 1970-01-01 UTC, also as a text; without it
/// the present time. "host", "source": texts. "sequence": an unsigned 32-bit number. "placeholders": at most
/// six, each a text, null for none, or an object with the number of a language "resource".
///
/// Refused is what is no JSON, a member of another name, of a wrong type or out of its range, and one that is
/// there twice: a misspelt member would be lost without a word.
///
/// @param reason why it was refused, with the byte of the text or, as a JSON pointer (RFC 6901), the member:
///               "/placeholders/0/resource is a text where a number belongs"; empty when it was not
/// @return whether the event was read; if not, it is unchanged
/// @throws std::bad_alloc if allocation fails; the event is unchanged then. Thread-safe.
PI_API bool ReadEvent(const std::string& text, CEvent& event, std::string& reason);

/// @}

}  // namespace PI
