// SPDX-License-Identifier: Apache-2.0

#include "mdstat.h"

#include <charconv>
#include <set>
#include <utility>

namespace mdraid {
namespace {

constexpr std::string_view BLANKS = " \t\r";

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(BLANKS) == std::string_view::npos;
}

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(BLANKS);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

bool StartsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

/// Removes a start from a text.
bool Take(std::string_view& text, std::string_view start) {
    if (!StartsWith(text, start)) {
        return false;
    }
    text.remove_prefix(start.size());
    return true;
}

/// Removes a number from the start of a text.
template <class Number>
bool TakeNumber(std::string_view& text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) {
        return false;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

/// Removes the next word; an empty one at the end.
std::string_view TakeWord(std::string_view& text) {
    text = Trim(text);
    const std::string_view word = text.substr(0, text.find_first_of(BLANKS));
    text.remove_prefix(word.size());
    return word;
}

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

// One line of the text.
struct Line {
    std::size_t m_Number = 0;
    std::string_view m_Text;
    bool m_Whole = true;  // ends with a line feed
};

bool TakeLine(std::string_view& text, Line& line) {
    if (text.empty()) {
        return false;
    }
    const std::size_t end = text.find('\n');
    line.m_Whole = end != std::string_view::npos;
    line.m_Text = text.substr(0, end);
    text.remove_prefix(line.m_Whole ? end + 1 : text.size());
    ++line.m_Number;
    return true;
}

/// "sdb1[1](W)(F)"
bool ParseMember(std::string_view word, Member& member) {
    const std::size_t bracket = word.find('[');
    if (bracket == 0 || bracket == std::string_view::npos) {
        return false;
    }
    member.m_Name = word.substr(0, bracket);
    word.remove_prefix(bracket + 1);
    if (!TakeNumber(word, member.m_Number) || !Take(word, "]")) {
        return false;
    }
    while (!word.empty()) {
        if (word.size() < 3 || word[0] != '(' || word[2] != ')') {
            return false;
        }
        switch (word[1]) {
            case 'F': member.m_Faulty = true; break;
            case 'S': member.m_Spare = true; break;
            case 'W': member.m_WriteMostly = true; break;
            case 'J': member.m_Journal = true; break;
            case 'R': member.m_Replacement = true; break;
            default: break;  // a flag of a newer kernel
        }
        word.remove_prefix(3);
    }
    return true;
}

/// "[4/3]": 4 slots of which 3 work. A word that is something else gives false and no complaint.
bool ParseSlotCounts(std::string_view word, std::uint32_t& slots, std::uint32_t& working) {
    return Take(word, "[") && TakeNumber(word, slots) && Take(word, "/") && TakeNumber(word, working) &&
           word == "]";
}

/// "[UU_U]"
bool ParseSlotMap(std::string_view word, std::vector<bool>& map) {
    if (word.size() < 3 || word.front() != '[' || word.back() != ']' ||
        word.substr(1, word.size() - 2).find_first_not_of("U_") != std::string_view::npos) {
        return false;
    }
    map.clear();
    for (const char slot : word.substr(1, word.size() - 2)) {
        map.push_back(slot == 'U');
    }
    return true;
}

/// "1.2", "external:imsm" or "non-persistent", behind the word "super"
std::string ParseMetadata(std::string_view& rest) {
    return std::string(TakeWord(rest));
}

/// "md0 : active raid1 sdb1[1] sda1[0]". The name may hold blanks.
bool ParseHeader(std::string_view text, Array& array, std::string& reason) {
    const std::size_t colon = text.find(" : ");
    if (colon == std::string_view::npos || colon == 0) {
        reason = Quoted(Trim(text)) + " is no array";
        return false;
    }
    array.m_Name = text.substr(0, colon);
    std::string_view rest = text.substr(colon + 3);

    const std::string_view state = TakeWord(rest);
    if (state == "active") {
        array.m_State = ArrayState::ACTIVE;
    } else if (state == "inactive") {
        array.m_State = ArrayState::INACTIVE;
    } else if (state == "broken") {
        array.m_State = ArrayState::BROKEN;
    } else {
        reason = Quoted(state) + " is no state";
        return false;
    }

    std::string_view word = TakeWord(rest);
    while (StartsWith(word, "(")) {
        array.m_ReadOnly = array.m_ReadOnly || word == "(read-only)" || word == "(auto-read-only)";
        word = TakeWord(rest);
    }
    if (array.m_State != ArrayState::INACTIVE) {
        if (word.empty() || word.find('[') != std::string_view::npos) {
            reason = "the level is missing";
            return false;
        }
        array.m_Level = word;
        word = TakeWord(rest);
    }
    for (; !word.empty(); word = TakeWord(rest)) {
        if (word == "super") {  // stands here when there are no members
            array.m_Metadata = ParseMetadata(rest);
            continue;
        }
        Member member;
        if (!ParseMember(word, member)) {
            reason = Quoted(word) + " is no member";
            return false;
        }
        array.m_Members.push_back(std::move(member));
    }
    return true;
}

/// "1953519616 blocks super 1.2 level 5, 512k chunk, algorithm 2 [3/2] [UU_]"
bool ParseSizeLine(std::string_view text, Array& array, std::string& reason) {
    std::uint64_t size = 0;
    if (!TakeNumber(text, size) || TakeWord(text) != "blocks") {
        reason = "the size is no number of blocks";
        return false;
    }
    array.m_SizeKiB = size;

    std::string_view previous;
    for (std::string_view word = TakeWord(text); !word.empty(); previous = word, word = TakeWord(text)) {
        std::uint32_t slots = 0;
        std::uint32_t working = 0;
        std::string_view number = previous;
        if (word == "super") {
            array.m_Metadata = ParseMetadata(text);
        } else if (ParseSlotCounts(word, slots, working)) {
            array.m_Slots = slots;
            array.m_WorkingSlots = working;
        } else if (ParseSlotMap(word, array.m_SlotWorking)) {
            continue;
        } else if (StartsWith(word, "chunk")) {  // "512k chunk," or "512K chunks"
            std::uint32_t chunk = 0;
            if (TakeNumber(number, chunk) && (number == "k" || number == "K")) {
                array.m_ChunkKiB = chunk;
            }
        } else if (word == "near-copies") {
            std::uint32_t copies = 0;
            if (TakeNumber(number, copies) && number.empty()) {
                array.m_NearCopies = copies;
            }
        }
    }
    if (array.m_Slots.has_value() && array.m_WorkingSlots > *array.m_Slots) {
        reason = "more drives work than the array has slots";
        return false;
    }
    if (!array.m_SlotWorking.empty() && array.m_SlotWorking.size() != array.m_Slots) {
        reason = "the map of the slots does not fit their number";
        return false;
    }
    return true;
}

bool ParseSyncKind(std::string_view word, SyncKind& kind) {
    constexpr std::pair<std::string_view, SyncKind> KINDS[] = {
        {"resync", SyncKind::RESYNC},   {"recovery", SyncKind::RECOVERY}, {"recover", SyncKind::RECOVERY},
        {"reshape", SyncKind::RESHAPE}, {"check", SyncKind::CHECK},
    };
    for (const auto& [name, value] : KINDS) {
        if (word == name) {
            kind = value;
            return true;
        }
    }
    return false;
}

/// "resync=DELAYED". A line that is something else gives false and no complaint.
bool ParseWaitingSync(std::string_view text, Sync& sync) {
    constexpr std::pair<std::string_view, SyncState> STATES[] = {
        {"DELAYED", SyncState::DELAYED},
        {"PENDING", SyncState::PENDING},
        {"REMOTE", SyncState::REMOTE},
    };
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || !ParseSyncKind(text.substr(0, equals), sync.m_Kind)) {
        return false;
    }
    for (const auto& [name, value] : STATES) {
        if (text.substr(equals + 1) == name) {
            sync.m_State = value;
            return true;
        }
    }
    return false;
}

/// "12.6%"
bool TakePercentage(std::string_view& text, std::uint32_t& perMille) {
    std::uint32_t percent = 0;
    std::uint32_t tenth = 0;
    if (!TakeNumber(text, percent) || !Take(text, ".") || !TakeNumber(text, tenth) || !Take(text, "%") ||
        percent > 100 || tenth > 9 || percent * 10 + tenth > 1000) {
        return false;
    }
    perMille = percent * 10 + tenth;
    return true;
}

/// "[==>...]  recovery = 12.6% (37043392/292945152) finish=127.5min speed=33440K/sec"
bool ParseProgressLine(std::string_view text, Sync& sync) {
    text = text.substr(text.find(']') == std::string_view::npos ? text.size() : text.find(']') + 1);
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || !ParseSyncKind(Trim(text.substr(0, equals)), sync.m_Kind)) {
        return false;
    }
    text = Trim(text.substr(equals + 1));
    if (!TakePercentage(text, sync.m_PerMille)) {
        return false;
    }
    text = Trim(text);
    if (!Take(text, "(") || !TakeNumber(text, sync.m_DoneKiB) || !Take(text, "/") ||
        !TakeNumber(text, sync.m_TotalKiB) || !Take(text, ")")) {
        return false;
    }
    for (std::string_view word = TakeWord(text); !word.empty(); word = TakeWord(text)) {
        if (Take(word, "speed=") && (!TakeNumber(word, sync.m_SpeedKiBs) || word != "K/sec")) {
            return false;
        }
    }
    return true;
}

/// An indented line below an array's first one.
bool ParseDetail(std::string_view text, Array& array, std::string& reason) {
    Sync sync;
    if (text[0] >= '0' && text[0] <= '9' && !array.m_SizeKiB.has_value()) {
        return ParseSizeLine(text, array, reason);
    }
    if (text[0] == '[') {
        if (!ParseProgressLine(text, sync)) {
            reason = "the progress of the synchronisation cannot be read";
            return false;
        }
        array.m_Sync = sync;
    } else if (ParseWaitingSync(text, sync)) {
        array.m_Sync = sync;
    } else if (StartsWith(text, "bitmap:")) {
        array.m_Bitmap = true;
    }
    return true;
}

void ParsePersonalities(std::string_view rest, std::vector<std::string>& personalities) {
    for (std::string_view word = TakeWord(rest); !word.empty(); word = TakeWord(rest)) {
        if (word.size() > 2 && word.front() == '[' && word.back() == ']') {
            personalities.emplace_back(word.substr(1, word.size() - 2));
        }
    }
}

void ParseUnusedDevices(std::string_view rest, std::vector<std::string>& devices) {
    for (std::string_view word = TakeWord(rest); !word.empty(); word = TakeWord(rest)) {
        if (word != "<none>") {
            devices.emplace_back(word);
        }
    }
}

/// Puts the lines of an array together.
class Reader {
public:
    Mdstat Read(std::string_view text) {
        Line line;
        while (TakeLine(text, line)) {
            if (!line.m_Whole && !StartsWith(line.m_Text, UNUSED)) {
                break;  // half a line: what it says may be wrong
            }
            ReadLine(line);
        }
        if (m_Open && !m_Refused) {
            Refuse(line.m_Number, "the text breaks off");
        } else if (!m_Complete) {
            const std::size_t last =
                line.m_Number == 0 ? 1 : line.m_Number;  // an empty text has a first line, too
            Complain(last, "the text breaks off: the list of unused devices is missing");
        }
        return std::move(m_Mdstat);
    }

private:
    static constexpr std::string_view PERSONALITIES = "Personalities :";
    static constexpr std::string_view UNUSED = "unused devices:";

    void ReadLine(const Line& line) {
        std::string_view text = line.m_Text;
        if (IsBlank(text)) {
            Close();
        } else if (BLANKS.find(text[0]) != std::string_view::npos) {
            std::string reason;
            if (m_Open && !m_Refused && !ParseDetail(Trim(text), m_Array, reason)) {
                Refuse(line.m_Number, reason);
            }
        } else if (Take(text, PERSONALITIES)) {
            Close();
            ParsePersonalities(text, m_Mdstat.m_Personalities);
        } else if (Take(text, UNUSED)) {
            Close();
            m_Complete = true;
            ParseUnusedDevices(text, m_Mdstat.m_UnusedDevices);
        } else {
            Close();
            Open(line);
        }
    }

    void Open(const Line& line) {
        std::string reason;
        m_Array = Array();
        m_Open = true;
        m_Refused = false;
        if (!ParseHeader(line.m_Text, m_Array, reason)) {
            Refuse(line.m_Number, reason);
        } else if (!m_Names.insert(m_Array.m_Name).second) {
            Refuse(line.m_Number, "the name stands here a second time");
        }
    }

    void Close() {
        if (m_Open && !m_Refused) {
            m_Mdstat.m_Arrays.push_back(std::move(m_Array));
        }
        m_Open = false;
    }

    /// The array that is being read will not be reported.
    void Refuse(std::size_t line, const std::string& reason) {
        Complain(line, m_Array.m_Name.empty() ? reason : "array " + m_Array.m_Name + ": " + reason);
        m_Refused = true;
    }

    void Complain(std::size_t line, std::string text) {
        m_Mdstat.m_Errors.push_back({line, std::move(text)});
    }

    Mdstat m_Mdstat;
    std::set<std::string> m_Names;
    Array m_Array;
    bool m_Open = false;     // an array is being read
    bool m_Refused = false;  // and will not be reported
    bool m_Complete = false;
};

}  // namespace

Mdstat ParseMdstat(std::string_view text) {
    return Reader().Read(text);
}

}  // namespace mdraid
