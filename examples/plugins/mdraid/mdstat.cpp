// SPDX-License-Identifier: Apache-2.0

#include "mdstat.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <utility>

namespace mdraid {
namespace {

constexpr std::string_view BLANKS = " \t\r";
constexpr std::string_view COLON = " : ";
constexpr std::string_view UNUSED = "unused devices:";

constexpr std::size_t MAX_NAME = 255;   // bytes of a file name, which names of devices are
constexpr std::size_t MAX_QUOTED = 40;  // bytes in a message
constexpr std::size_t MAX_ERRORS = 20;

template <class Value>
using Names = std::initializer_list<std::pair<std::string_view, Value>>;

template <class Value>
Value Lookup(std::string_view name, Value other, Names<Value> names) {
    const auto row =
        std::find_if(names.begin(), names.end(), [&](const auto& each) { return each.first == name; });
    return row == names.end() ? other : row->second;
}

ArrayState FindState(std::string_view word) {
    return Lookup(
        word, ArrayState::OTHER,
        {{"active", ArrayState::ACTIVE}, {"inactive", ArrayState::INACTIVE}, {"broken", ArrayState::BROKEN}});
}

std::string_view Trim(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
    return text.substr(0, text.find_last_not_of(BLANKS) + 1);
}

bool StartsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

/// Removes a start from a text.
bool Take(std::string_view& text, std::string_view start) {
    const bool isThere = StartsWith(text, start);
    text.remove_prefix(isThere ? start.size() : 0);
    return isThere;
}

/// Removes a number from the start of a text.
template <class Number>
bool TakeNumber(std::string_view& text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(error == std::errc() ? static_cast<std::size_t>(end - text.data()) : 0);
    return error == std::errc();
}

/// Removes a number with one decimal, "12.6", from the start of a text.
bool TakeTenths(std::string_view& text, std::uint64_t& tenths) {
    std::uint32_t whole = 0;
    std::uint32_t tenth = 0;
    if (!TakeNumber(text, whole) || !Take(text, ".") || !TakeNumber(text, tenth) || tenth > 9) {
        return false;
    }
    tenths = std::uint64_t{10} * whole + tenth;
    return true;
}

/// Removes the next word; an empty one at the end.
std::string_view TakeWord(std::string_view& text) {
    text = Trim(text);
    const std::string_view word = text.substr(0, text.find_first_of(BLANKS));
    text.remove_prefix(word.size());
    return word;
}

std::string Shortened(std::string_view text) {
    return std::string(text.substr(0, MAX_QUOTED)) + (text.size() <= MAX_QUOTED ? "" : "...");
}

std::string Quoted(std::string_view text) {
    return "\"" + Shortened(text) + "\"";
}

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
    for (; word.size() >= 3 && word[0] == '(' && word[2] == ')'; word.remove_prefix(3)) {
        member.m_Faulty |= word[1] == 'F';
        member.m_Spare |= word[1] == 'S';
        member.m_WriteMostly |= word[1] == 'W';
        member.m_Journal |= word[1] == 'J';
        member.m_Replacement |= word[1] == 'R';  // others are flags of a newer kernel
    }
    return word.empty();
}

/// "[4/3]": 4 slots of which 3 work
bool ParseSlotCounts(std::string_view word, std::uint32_t& slots, std::uint32_t& working) {
    return Take(word, "[") && TakeNumber(word, slots) && Take(word, "/") && TakeNumber(word, working) &&
           word == "]";
}

/// "[UU_U]"
bool ParseSlotMap(std::string_view word, std::vector<bool>& map) {
    if (!Take(word, "[") || word.size() < 2 || word.find_first_not_of("U_") != word.size() - 1 ||
        word.back() != ']') {
        return false;
    }
    map.clear();
    for (const char slot : word.substr(0, word.size() - 1)) {
        map.push_back(slot == 'U');
    }
    return true;
}

/// "resync=DELAYED"
bool ParseWaitingSync(std::string_view text, Sync& sync) {
    const std::size_t equals = std::min(text.find('='), text.size());
    sync.m_Kind = FindSyncKind(text.substr(0, equals));
    sync.m_State = Lookup(
        text.substr(equals), SyncState::RUNNING,
        {{"=DELAYED", SyncState::DELAYED}, {"=PENDING", SyncState::PENDING}, {"=REMOTE", SyncState::REMOTE}});
    return sync.m_Kind != SyncKind::OTHER && sync.m_State != SyncState::RUNNING;
}

/// "[==>...]  recovery = 12.6% (37043392/292945152) finish=127.5min speed=33440K/sec"
/// @return whether all of it was understood
bool ParseProgress(std::string_view text, Sync& sync) {
    constexpr std::uint64_t TENTH_OF_A_MINUTE_MS = 6000;
    sync = Sync();
    text.remove_prefix(std::min(text.find(']'), text.size() - 1) + 1);
    const std::size_t equals = std::min(text.find('='), text.size());
    sync.m_Kind = FindSyncKind(Trim(text.substr(0, equals)));
    text = Trim(text.substr(std::min(equals + 1, text.size())));
    std::uint64_t perMille = 0;
    if (sync.m_Kind == SyncKind::OTHER || !TakeTenths(text, perMille) || !Take(text, "%") ||
        perMille > 1000) {
        return false;
    }
    sync.m_PerMille = static_cast<std::uint32_t>(perMille);
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
        std::uint64_t minutes = 0;
        if (Take(word, "finish=") && TakeTenths(word, minutes) && word == "min") {
            sync.m_FinishMs = minutes * TENTH_OF_A_MINUTE_MS;
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
        for (std::string_view rest = readable; !rest.empty();) {
            ++m_Line;
            const std::size_t end = rest.find('\n');
            const std::string_view line = rest.substr(0, end);
            if (end == std::string_view::npos && !StartsWith(Trim(line), UNUSED)) {
                break;  // half a line: what it says may be wrong
            }
            rest.remove_prefix(std::min(end, rest.size() - 1) + 1);
            ReadLine(line);
        }
        m_Line = std::max<std::size_t>(m_Line, 1);  // an empty text has a first line, too
        if (m_InArray && !m_AfterBlank) {
            m_Mdstat.m_Arrays.back().m_IsCut = true;
            ComplainOfArray("the text breaks off");
        } else if (!m_Complete && !isBinary) {
            Complain("the text breaks off: the list of unused devices is missing");
        }
        if (isBinary) {
            m_Line = static_cast<std::size_t>(std::count(readable.begin(), readable.end(), '\n')) + 1;
            Complain("this is binary data");
        }
        return std::move(m_Mdstat);
    }

private:
    void ReadLine(std::string_view line) {
        std::string_view text = Trim(line);
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
        } else if (!text.empty() && !ReadDetail(text)) {
            std::string_view behindColon = text;
            behindColon.remove_prefix(std::min(text.find(COLON), text.size()));
            // An indented line is a first one where it can be nothing else.
            if (text.data() == line.data() ||
                (Take(behindColon, COLON) && FindState(TakeWord(behindColon)) != ArrayState::OTHER)) {
                Open(text);
            }
        }
    }

    /// A line below an array's first one. Most are indented, but not in every copy.
    /// @return false for a line that is not known
    bool ReadDetail(std::string_view text) {
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
        if (isSize && !array.m_SizeKiB.has_value()) {
            ReadSize(text, array);
        } else if (!isSize) {
            if (isProgress && !ParseProgress(text, sync)) {
                ComplainOfArray("the progress of the synchronisation cannot be read");
            }
            array.m_Sync = sync;
        }
        return true;
    }

    /// "md0 : active raid1 sdb1[1] sda1[0]". The name may hold blanks. Kernels before 2.4 go on with the
    /// size.
    void Open(std::string_view text) {
        m_InArray = false;
        const std::size_t colon = text.find(COLON);
        if (colon == std::string_view::npos || colon == 0 || colon > MAX_NAME) {
            Complain(Quoted(text) + " is no array");
            return;
        }
        Array& array = m_Mdstat.m_Arrays.emplace_back();
        array.m_Name = text.substr(0, colon);
        std::string_view rest = text.substr(colon + COLON.size());
        std::string_view word = TakeWord(rest);
        array.m_State = FindState(word);
        if (array.m_State == ArrayState::OTHER) {
            ComplainOfArray(Quoted(word) + " is no state");
        }
        word = TakeWord(rest);
        for (; StartsWith(word, "("); word = TakeWord(rest)) {
            array.m_AutoReadOnly |= word == "(auto-read-only)";
            array.m_ReadOnly |= word == "(read-only)" || word == "(auto-read-only)";
        }
        if (!word.empty() && word != "super" && word.find('[') == std::string_view::npos) {
            array.m_Level = word;
            word = TakeWord(rest);
        } else if (array.m_State != ArrayState::INACTIVE) {
            ComplainOfArray("the level is missing");
        }
        for (; !word.empty(); word = TakeWord(rest)) {
            std::string_view next = rest;
            Member member;
            if (word == "super") {  // is here when there are no members
                array.m_Metadata = TakeWord(rest);
            } else if (TakeWord(next) == "blocks") {
                ReadSize(text.substr(static_cast<std::size_t>(word.data() - text.data())), array);
                break;
            } else if (ParseMember(word, member)) {
                array.m_Members.push_back(std::move(member));
            } else {
                ComplainOfArray(Quoted(word) + " is no member");
            }
        }
        m_InArray = m_Names.insert(array.m_Name).second;
        if (!m_InArray) {
            ComplainOfArray("the name is here a second time");
            m_Mdstat.m_Arrays.pop_back();
        }
    }

    /// "1953519616 blocks super 1.2 level 5, 512k chunk, algorithm 2 [3/2] [UU_]"
    void ReadSize(std::string_view text, Array& array) {
        std::uint64_t size = 0;
        if (TakeNumber(text, size) && TakeWord(text) == "blocks") {
            array.m_SizeKiB = size;
        } else {
            ComplainOfArray("the size is no number of blocks");
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
        CheckSlots(array);
    }

    /// Makes of the slots' count and map what is not in conflict.
    void CheckSlots(Array& array) {
        std::vector<bool>& map = array.m_SlotWorking;
        if (!array.m_Slots.has_value() && !map.empty()) {
            array.m_Slots = static_cast<std::uint32_t>(map.size());
            array.m_WorkingSlots = static_cast<std::uint32_t>(std::count(map.begin(), map.end(), true));
        }
        if (array.m_WorkingSlots > array.m_Slots.value_or(0)) {
            ComplainOfArray("more drives work than the array has slots");
            array.m_Slots.reset();
            array.m_WorkingSlots = 0;
            map.clear();
        } else if (!map.empty() && map.size() != array.m_Slots) {
            ComplainOfArray("the map of the slots does not fit their number");
            map.clear();
        }
    }

    void ComplainOfArray(const std::string& text) {
        Complain("array " + Shortened(m_Mdstat.m_Arrays.back().m_Name) + ": " + text);
    }

    void Complain(const std::string& text) {
        std::vector<MdstatError>& errors = m_Mdstat.m_Errors;
        if (errors.size() < MAX_ERRORS) {
            const bool isLast = errors.size() + 1 == MAX_ERRORS;
            errors.push_back({m_Line, isLast ? "from here on there are more errors than are listed" : text});
        }
    }

    Mdstat m_Mdstat;
    std::set<std::string> m_Names;
    std::size_t m_Line = 0;
    bool m_InArray = false;     // the last one
    bool m_AfterBlank = false;  // its lines may all have been read
    bool m_Complete = false;
};

}  // namespace

SyncKind FindSyncKind(std::string_view name) {
    return Lookup(name, SyncKind::OTHER,
                  {{"resync", SyncKind::RESYNC},
                   {"repair", SyncKind::RESYNC},
                   {"recovery", SyncKind::RECOVERY},
                   {"recover", SyncKind::RECOVERY},
                   {"reshape", SyncKind::RESHAPE},
                   {"check", SyncKind::CHECK}});
}

Mdstat ParseMdstat(std::string_view text) {
    return Reader().Read(text);
}

}  // namespace mdraid
