// SPDX-License-Identifier: Apache-2.0
/// @file
/// What has changed between two inventories.
#pragma once

#include <pi/pi.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace service {

/// Lists objects that are new, changed or gone, by their identifiers; of a changed one its properties and
/// operations before and after. Empty when there are none.
std::string ChangesText(const std::vector<PI::CObject>& before, const std::vector<PI::CObject>& now);

/// The same for programs: a line of JSON for each object that is new or has changed, with all that it is now,
/// and for each that is gone. All objects when there were none before.
std::string ChangesJson(const std::string& plugin, const std::vector<PI::CObject>& before,
                        const std::vector<PI::CObject>& now);

/// A line of JSON for each event.
std::string EventsJson(const std::string& plugin, const std::vector<PI::CEvent>& events);

/// The identifiers that more than one object has.
std::set<std::uint64_t> RepeatedIDs(const std::vector<PI::CObject>& objects);

/// Appends the objects of before that are not there now: where not all could be read, they may still be
/// there.
void KeepMissing(const std::vector<PI::CObject>& before, std::vector<PI::CObject>& now);

}  // namespace service
