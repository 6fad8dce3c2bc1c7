// SPDX-License-Identifier: Apache-2.0

#include "mdstat.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <utility>

namespace mdraid {
namespace {

constexpr std::string_view BLANKS = " \t\r";

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

std::string_view NextWord(std::string_view text) {
    return TakeWord(text);
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

constexpr std::size_t MAX_NAME = 255;   // bytes of a file name, which names of devices are
constexpr std::size_t MAX_QUOTED = 40;  // bytes in a message
constexpr std::size_t MAX_ERRORS = 20;

std::string Shortened(std::string_view text) {
    return text.size() <= MAX_QUOTED ? std::string(text) : std::string(text.substr(0, MAX_QUOTED)) + "...";
}

std::string Quoted(std::string_view text) {
    return "\"" + Shortened(text) + "\"";
}

using Complaints = std::vector<std::string>;

/// "sdb1[1](W)(F)"; the number of a drive that has none yet is -1.
bool ParseMember(std::string_view word, Member& member) {
    const std::size_t bracket = word.find('[');
    if (bracket == 0 || bracket == std::string_view::npos || bracket > MAX_NAME) {
        return false;
    }
    member.m_Name = word.substr(0, bracket);
    word.remove_prefix(bracket + 1);
    if (std::uint32_t number = 0; TakeNumber(word, number)) {
        member.m_Number = number;
    } else if (!Take(word, "-1")) {
        return false;
    }
    if (!Take(word, "]")) {
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

/// "[4/3]": 4 slots of which 3 work
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

/// Makes of the slots' count and map what is not in conflict.
void CheckSlots(Array& array, Complaints& complaints) {
    if (!array.m_Slots.has_value() && !array.m_SlotWorking.empty()) {
        array.m_Slots = static_cast<std::uint32_t>(array.m_SlotWorking.size());
        array.m_WorkingSlots = static_cast<std::uint32_t>(
            std::count(array.m_SlotWorking.begin(), array.m_SlotWorking.end(), true));
    }
    if (array.m_WorkingSlots > array.m_Slots.value_or(0)) {
        complaints.emplace_back("more drives work than the array has slots");
        array.m_Slots.reset();
        array.m_WorkingSlots = 0;
        array.m_SlotWorking.clear();
    } else if (!array.m_SlotWorking.empty() && array.m_SlotWorking.size() != array.m_Slots) {
        complaints.emplace_back("the map of the slots does not fit their number");
        array.m_SlotWorking.clear();
    }
}

/// "1953519616 blocks super 1.2 level 5, 512k chunk, algorithm 2 [3/2] [UU_]"
void ParseSizeLine(std::string_view text, Array& array, Complaints& complaints) {
    std::uint64_t size = 0;
    if (TakeNumber(text, size) && TakeWord(text) == "blocks") {
        array.m_SizeKiB = size;
    } else {
        complaints.emplace_back("the size is no number of blocks");
    }
    std::string_view previous;
    for (std::string_view word = TakeWord(text); !word.empty(); previous = word, word = TakeWord(text)) {
        std::uint32_t slots = 0;
        std::uint32_t working = 0;
        std::uint32_t number = 0;
        std::string_view unit = previous;
        if (word == "super") {
            array.m_Metadata = TakeWord(text);
        } else if (ParseSlotCounts(word, slots, working)) {
            array.m_Slots = slots;
            array.m_WorkingSlots = working;
        } else if (ParseSlotMap(word, array.m_SlotWorking) || !TakeNumber(unit, number)) {
            continue;
        } else if (StartsWith(word, "chunk") &&
                   (unit == "k" || unit == "K")) {  // "512k chunk," "512K chunks"
            array.m_ChunkKiB = number;
        } else if (word == "near-copies" && unit.empty()) {
            array.m_NearCopies = number;
        } else if ((word == "far-copies" || word == "offset-copies") && unit.empty()) {
            array.m_FarCopies = number;
        }
    }
    CheckSlots(array, complaints);
}

constexpr std::pair<std::string_view, ArrayState> STATES[] = {
    {"active", ArrayState::ACTIVE}, {"inactive", ArrayState::INACTIVE}, {"broken", ArrayState::BROKEN}};

ArrayState FindState(std::string_view word) {
    for (const auto& [name, state] : STATES) {
        if (word == name) {
            return state;
        }
    }
    return ArrayState::OTHER;
}

constexpr std::string_view COLON = " : ";

/// "md0 : active raid1 sdb1[1] sda1[0]". The name may hold blanks. Kernels before 2.4 go on with the size.
/// @return false when it is something else
bool ParseHeader(std::string_view text, Array& array, Complaints& complaints) {
    const std::size_t colon = text.find(COLON);
    if (colon == std::string_view::npos || colon == 0 || colon > MAX_NAME) {
        complaints.push_back(Quoted(text) + " is no array");
        return false;
    }
    array.m_Name = text.substr(0, colon);
    std::string_view rest = text.substr(colon + COLON.size());

    std::string_view word = TakeWord(rest);
    array.m_State = FindState(word);
    if (array.m_State == ArrayState::OTHER) {
        complaints.push_back(Quoted(word) + " is no state");
    }
    word = TakeWord(rest);
    for (; StartsWith(word, "("); word = TakeWord(rest)) {
        array.m_ReadOnly = array.m_ReadOnly || word == "(read-only)" || word == "(auto-read-only)";
    }
    if (!word.empty() && word != "super" && word.find('[') == std::string_view::npos) {
        array.m_Level = word;
        word = TakeWord(rest);
    } else if (array.m_State != ArrayState::INACTIVE) {
        complaints.emplace_back("the level is missing");
    }
    for (; !word.empty(); word = TakeWord(rest)) {
        Member member;
        if (word == "super") {  // is here when there are no members
            array.m_Metadata = TakeWord(rest);
        } else if (NextWord(rest) == "blocks") {
            ParseSizeLine(text.substr(static_cast<std::size_t>(word.data() - text.data())), array,
                          complaints);
            break;
        } else if (ParseMember(word, member)) {
            array.m_Members.push_back(std::move(member));
        } else {
            complaints.push_back(Quoted(word) + " is no member");
        }
    }
    return true;
}

/// Whether a line can be nothing but the first one of an array.
bool IsHeader(std::string_view text) {
    const std::size_t colon = text.find(COLON);
    if (colon == std::string_view::npos) {
        return false;
    }
    text.remove_prefix(colon + COLON.size());
    return FindState(TakeWord(text)) != ArrayState::OTHER;
}

/// "resync=DELAYED". A line that is something else gives false and no complaint.
bool ParseWaitingSync(std::string_view text, Sync& sync) {
    constexpr std::pair<std::string_view, SyncState> SYNC_STATES[] = {
        {"DELAYED", SyncState::DELAYED},
        {"PENDING", SyncState::PENDING},
        {"REMOTE", SyncState::REMOTE},
    };
    const std::size_t equals = text.find('=');
    for (const auto& [name, value] : SYNC_STATES) {
        if (equals != std::string_view::npos && text.substr(equals + 1) == name) {
            sync.m_Kind = FindSyncKind(text.substr(0, equals));
            sync.m_State = value;
            return sync.m_Kind != SyncKind::OTHER;
        }
    }
    return false;
}

/// "12.6%"
bool TakePercentage(std::string_view& text, std::optional<std::uint32_t>& perMille) {
    std::uint32_t percent = 0;
    std::uint32_t tenth = 0;
    if (!TakeNumber(text, percent) || !Take(text, ".") || !TakeNumber(text, tenth) || !Take(text, "%") ||
        percent > 100 || tenth > 9 || percent * 10 + tenth > 1000) {
        return false;
    }
    perMille = percent * 10 + tenth;
    return true;
}

/// "127.5min"
std::optional<std::uint64_t> ParseMinutes(std::string_view word) {
    constexpr std::uint64_t TENTH_MS = 6000;
    std::uint32_t minutes = 0;
    std::uint32_t tenth = 0;
    if (!TakeNumber(word, minutes) || !Take(word, ".") || !TakeNumber(word, tenth) || word != "min" ||
        tenth > 9) {
        return std::nullopt;
    }
    return (minutes * std::uint64_t{10} + tenth) * TENTH_MS;
}

/// "[==>...]  recovery = 12.6% (37043392/292945152) finish=127.5min speed=33440K/sec"
/// @return whether all of it was understood
bool ParseProgressLine(std::string_view text, Sync& sync) {
    sync.m_Kind = SyncKind::OTHER;
    text.remove_prefix(std::min(text.find(']'), text.size() - 1) + 1);
    const std::size_t equals = std::min(text.find('='), text.size());
    sync.m_Kind = FindSyncKind(Trim(text.substr(0, equals)));
    text.remove_prefix(std::min(equals + 1, text.size()));
    text = Trim(text);
    if (sync.m_Kind == SyncKind::OTHER || !TakePercentage(text, sync.m_PerMille)) {
        return false;
    }
    text = Trim(text);
    std::uint64_t done = 0;
    std::uint64_t total = 0;
    if (!Take(text, "(") || !TakeNumber(text, done) || !Take(text, "/") || !TakeNumber(text, total) ||
        !Take(text, ")")) {
        return false;
    }
    sync.m_DoneKiB = done;
    sync.m_TotalKiB = total;
    for (std::string_view word = TakeWord(text); !word.empty(); word = TakeWord(text)) {
        if (Take(word, "finish=")) {
            sync.m_FinishMs = ParseMinutes(word);
        } else if (word == "speed=0K/sec") {
            sync.m_FinishMs.reset();  // without a pace it says nothing
        }
    }
    return true;
}

/// Puts the lines of an array together.
class Reader {
public:
    Mdstat Read(std::string_view text) {
        const std::string_view readable = text.substr(0, text.find('\0'));
        const bool isBinary = readable.size() != text.size();
        std::string_view rest = readable;
        Line line;
        while (TakeLine(rest, line)) {
            if (!line.m_Whole && !StartsWith(Trim(line.m_Text), UNUSED)) {
                break;  // half a line: what it says may be wrong
            }
            ReadLine(line);
        }
        line.m_Number = std::max<std::size_t>(line.m_Number, 1);  // an empty text has a first line, too
        if (m_InArray && !m_AfterBlank) {
            m_Mdstat.m_Arrays.back().m_IsCut = true;
            ComplainOfArray(line.m_Number, "the text breaks off");
        } else if (!m_Complete && !isBinary) {
            Complain(line.m_Number, "the text breaks off: the list of unused devices is missing");
        }
        if (isBinary) {
            const auto lines = std::count(readable.begin(), readable.end(), '\n');
            Complain(static_cast<std::size_t>(lines) + 1, "this is binary data");
        }
        return std::move(m_Mdstat);
    }

private:
    static constexpr std::string_view UNUSED = "unused devices:";

    void ReadLine(const Line& line) {
        std::string_view text = Trim(line.m_Text);
        const bool isIndented = text.data() != line.m_Text.data();
        m_AfterBlank = text.empty();
        if (StartsWith(text, "Personalities") || StartsWith(text, "read_ahead ")) {
            m_InArray = false;
        } else if (Take(text, UNUSED)) {
            m_InArray = false;
            m_Complete = true;
            for (std::string_view word = TakeWord(text); !word.empty(); word = TakeWord(text)) {
                if (word != "<none>") {
                    m_Mdstat.m_UnusedDevices.emplace_back(word);
                }
            }
        } else if (!text.empty() && !ReadDetail(text, line.m_Number) && (!isIndented || IsHeader(text))) {
            Open(text, line.m_Number);
        }
    }

    /// A line below an array's first one. Most are indented, but not in every copy.
    /// @return false for a line that is not known
    bool ReadDetail(std::string_view text, std::size_t line) {
        const bool isSize = text[0] >= '0' && text[0] <= '9';
        const bool isProgress = text[0] == '[';
        Sync sync;
        if (!isSize && !isProgress && !ParseWaitingSync(text, sync)) {
            return StartsWith(text, "bitmap:");
        }
        if (!m_InArray) {
            return true;  // of an array that is left out
        }
        Array& array = m_Mdstat.m_Arrays.back();
        Complaints complaints;
        if (!isSize) {
            if (isProgress && !ParseProgressLine(text, sync)) {
                complaints.emplace_back("the progress of the synchronisation cannot be read");
            }
            array.m_Sync = sync;
        } else if (!array.m_SizeKiB.has_value()) {
            ParseSizeLine(text, array, complaints);
        }
        for (const std::string& complaint : complaints) {
            ComplainOfArray(line, complaint);
        }
        return true;
    }

    void Open(std::string_view text, std::size_t line) {
        Array array;
        Complaints complaints;
        m_InArray = false;
        if (!ParseHeader(text, array, complaints)) {
            Complain(line, complaints.front());
            return;
        }
        m_Mdstat.m_Arrays.push_back(std::move(array));
        for (const std::string& complaint : complaints) {
            ComplainOfArray(line, complaint);
        }
        m_InArray = m_Names.insert(m_Mdstat.m_Arrays.back().m_Name).second;
        if (!m_InArray) {
            ComplainOfArray(line, "the name is here a second time");
            m_Mdstat.m_Arrays.pop_back();
        }
    }

    void ComplainOfArray(std::size_t line, const std::string& text) {
        Complain(line, "array " + Shortened(m_Mdstat.m_Arrays.back().m_Name) + ": " + text);
    }

    void Complain(std::size_t line, std::string text) {
        if (m_Mdstat.m_Errors.size() + 1 == MAX_ERRORS) {
            text = "from here on there are more errors than are listed";
        }
        if (m_Mdstat.m_Errors.size() < MAX_ERRORS) {
            m_Mdstat.m_Errors.push_back({line, std::move(text)});
        }
    }

    Mdstat m_Mdstat;
    std::set<std::string> m_Names;
    bool m_InArray = false;     // the last one
    bool m_AfterBlank = false;  // its lines may all have been read
    bool m_Complete = false;
};

}  // namespace

SyncKind FindSyncKind(std::string_view name) {
    constexpr std::pair<std::string_view, SyncKind> KINDS[] = {
        {"resync", SyncKind::RESYNC},    {"repair", SyncKind::RESYNC},   {"recovery", SyncKind::RECOVERY},
        {"recover", SyncKind::RECOVERY}, {"reshape", SyncKind::RESHAPE}, {"check", SyncKind::CHECK},
    };
    for (const auto& [known, kind] : KINDS) {
        if (name == known) {
            return kind;
        }
    }
    return SyncKind::OTHER;
}

Mdstat ParseMdstat(std::string_view text) {
    return Reader().Read(text);
}

}  // namespace mdraid
