// SPDX-License-Identifier: Apache-2.0
// The kernel's list of software RAID arrays: one that is understood whole, written down again, reads the
// same.
#include "assessment.h"
#include "mdstat.h"
#include "progress.h"

#include <pi/etr.h>

#include <algorithm>
#include <set>

#include "check.h"

namespace {

using namespace mdraid;

std::string MemberText(const Member& member) {
    const std::string number = member.m_Number ? std::to_string(*member.m_Number) : "-1";
    return " " + member.m_Name + "[" + number + "]" + (member.m_Faulty ? "(F)" : "") +
           (member.m_Spare ? "(S)" : "") + (member.m_WriteMostly ? "(W)" : "") +
           (member.m_Journal ? "(J)" : "") + (member.m_Replacement ? "(R)" : "");
}

std::string SizeLine(const Array& array, const std::string& metadata) {
    std::string line = "      " + std::to_string(*array.m_SizeKiB) + " blocks" + metadata;
    if (array.m_ChunkKiB != 0) {
        line += " " + std::to_string(array.m_ChunkKiB) + "k chunk";
    }
    if (array.m_NearCopies != 0) {
        line += " " + std::to_string(array.m_NearCopies) + " near-copies";
    }
    if (array.m_FarCopies != 0) {
        line += " " + std::to_string(array.m_FarCopies) + " far-copies";
    }
    if (array.m_Slots) {
        line += " [" + std::to_string(*array.m_Slots) + "/" + std::to_string(array.m_WorkingSlots) + "]";
    }
    if (!array.m_SlotWorking.empty()) {
        line += " [";
        for (const bool isWorking : array.m_SlotWorking) {
            line += isWorking ? 'U' : '_';
        }
        line += "]";
    }
    return line + "\n";
}

std::string SyncLine(const Sync& sync) {
    const char* const kinds[] = {"resync", "recovery", "reshape", "check", "other"};
    const char* const states[] = {"", "DELAYED", "PENDING", "REMOTE"};
    const std::string kind = kinds[static_cast<std::size_t>(sync.m_Kind)];
    if (sync.m_State != SyncState::RUNNING) {
        return "      " + kind + "=" + states[static_cast<std::size_t>(sync.m_State)] + "\n";
    }
    std::string line = "      [>]  " + kind + " =";
    if (sync.m_PerMille) {
        line +=
            " " + std::to_string(*sync.m_PerMille / 10) + "." + std::to_string(*sync.m_PerMille % 10) + "%";
    }
    line += " (" + std::to_string(sync.m_DoneKiB) + "/" + std::to_string(sync.m_TotalKiB) + ")";
    if (sync.m_FinishMs) {
        line += " finish=" + std::to_string(*sync.m_FinishMs / 60000) + "." +
                std::to_string(*sync.m_FinishMs / 6000 % 10) + "min";
    }
    return line + "\n";
}

std::string ArrayText(const Array& array) {
    const char* const states[] = {"active", "inactive", "broken", "other"};
    std::string text = array.m_Name + " : " + states[static_cast<std::size_t>(array.m_State)];
    text += array.m_ReadOnly ? " (read-only)" : "";
    text += array.m_Level.empty() ? "" : " " + array.m_Level;
    for (const Member& member : array.m_Members) {
        text += MemberText(member);
    }
    const std::string metadata = array.m_Metadata.empty() ? "" : " super " + array.m_Metadata;
    text += array.m_SizeKiB ? "\n" + SizeLine(array, metadata) : metadata + "\n";
    text += array.m_Sync ? SyncLine(*array.m_Sync) : "";
    return text + "\n";
}

/// All that was read but the errors.
std::string TextOf(const Mdstat& mdstat) {
    std::string text;
    for (const Array& array : mdstat.m_Arrays) {
        text += ArrayText(array);
    }
    text += "unused devices:";
    for (const std::string& device : mdstat.m_UnusedDevices) {
        text += " " + device;
    }
    return text + "\n";
}

void CheckErrors(const Mdstat& mdstat, const std::string& text) {
    const auto lines = static_cast<std::size_t>(1 + std::count(text.begin(), text.end(), '\n'));
    std::size_t last = 1;
    for (const MdstatError& error : mdstat.m_Errors) {
        CHECK(error.m_Line >= last && error.m_Line <= lines);
        CHECK(!error.m_Text.empty() && error.m_Text.size() <= 120);
        last = error.m_Line;
    }
}

void CheckArray(const Array& array) {
    CHECK(array.m_WorkingSlots <= array.m_Slots.value_or(0));
    CHECK(array.m_SlotWorking.empty() || array.m_SlotWorking.size() == array.m_Slots);
    CHECK(!array.m_Sync || array.m_Sync->m_PerMille.value_or(0) <= 1000);

    const Assessment assessment = Assess(array, {});
    CHECK(assessment.m_Members.size() == array.m_Members.size());
    CHECK(assessment.m_MissingDrives <= array.m_Slots.value_or(0));

    Progress progress;
    constexpr std::uint64_t SOON_AFTER_START = 60000;
    const std::string remaining =
        PI::CETR::RemainingTimeToString(progress.Update(1, array, SOON_AFTER_START).value_or(0));
    CHECK(remaining.empty() || array.m_Sync);
    CHECK(!progress.Update(1, Array(), SOON_AFTER_START).has_value());
    CHECK(Assess(array, {}, FindContainerUse({array})).m_Members.size() == array.m_Members.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const Mdstat mdstat = ParseMdstat(text);
    CheckErrors(mdstat, text);
    std::set<std::string> names;
    for (const Array& array : mdstat.m_Arrays) {
        CHECK(names.insert(array.m_Name).second);
        CheckArray(array);
    }
    if (!mdstat.m_Errors.empty()) {
        return 0;
    }
    const std::string written = TextOf(mdstat);
    const Mdstat again = ParseMdstat(written);
    CHECK(again.m_Errors.empty());
    CHECK_TEXT(TextOf(again), written);
    return 0;
}
