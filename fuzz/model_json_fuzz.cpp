// SPDX-License-Identifier: Apache-2.0
// Records read from JSON: refused with a reason and without a trace, or read, and then the same after another
// trip.
#include <pi/exchange/event_json.h>
#include <pi/exchange/model_json.h>

#include <cstdint>
#include <string>

#include "check.h"
#include "exchange/every_field.h"

namespace {

using namespace PI;

template <class Record>
void Check(const char* name, const std::string& text) {
    if (text.find('"' + std::string(name) + '"') == std::string::npos) {
        return;  // refused for certain
    }
    Record record;
    const std::string before = ToJson(record);
    std::string reason;
    if (!FromJson(text, record, reason)) {
        CHECK(!reason.empty());
        CHECK_TEXT(ToJson(record), before);
        return;
    }
    CHECK_TEXT(reason, "");
    const std::string written = ToJson(record);
    CHECK(written.find('\n') == std::string::npos);
    Record again;
    CHECK(FromJson(written, again, reason));
    CHECK(Test::SameFields(record, again));
    CHECK_TEXT(ToJson(again), written);
}

/// An event that somebody wrote by hand.
void CheckEvent(const std::string& text) {
    CEvent event;
    const std::string before = ToJson(event);
    std::string reason;
    const bool isRead = ReadEvent(text, event, reason);
    CHECK(isRead == reason.empty());
    CHECK(isRead || ToJson(event) == before);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    CheckEvent(text);
    Check<CProperty>("property", text);
    Check<CObject>("object", text);
    Check<COperation>("operation", text);
    Check<CTask>("task", text);
    Check<CEvent>("event", text);
    Check<CDrive>("drive", text);
    Check<CContainer>("container", text);
    Check<CLogicalDrive>("logical_drive", text);
    Check<CArray>("array", text);
    Check<CLevel>("level", text);
    Check<CPartition>("partition", text);
    Check<CMigration>("migration", text);
    return 0;
}
