// SPDX-License-Identifier: Apache-2.0
// Reports of smartctl as JSON.

#include <pi/vocabulary.h>

#include <algorithm>
#include <iterator>

#include "json_values.h"
#include "report_builder.h"
#include "smartctl_readers.h"

namespace PI {

namespace {

struct SelfTestLog {
    const char* m_Path;
    const char* m_Type;
    const char* m_Result;
    _FIGURE_SOURCE m_Source;
    std::uint32_t m_Page;
};
constexpr SelfTestLog SELF_TEST_LOGS[] = {
    {"ata_smart_self_test_log.standard", "type.string", "status.string", FigureSource::ATA_LOG, 0x06},
    {"ata_smart_self_test_log.extended", "type.string", "status.string", FigureSource::ATA_LOG, 0x07},
    {"nvme_self_test_log", "self_test_code.string", "self_test_result.string", FigureSource::NVME_LOG, 0x06},
};

/// Reads one document. What cannot be read is noted.
class DocumentReader {
public:
    explicit DocumentReader(const JsonValue& document) : m_Document(document) {}

    std::optional<CDriveReport> Read(std::vector<std::string> notes) {
        m_Notes = std::move(notes);
        ReportIdentity identity = Identify();
        if (!identity.IsKnown()) {
            return std::nullopt;
        }
        ReportBuilder builder(std::move(identity));
        ReadFigures(builder);
        ReadAttributes(builder);
        ReadStatistics(builder);
        ReadSelfTests(builder);
        ReadMessages(builder);
        for (std::string& note : m_Notes) {
            builder.Note(std::move(note));
        }
        return builder.Take();
    }

private:
    /// A whole number; from KEY_s where KEY is missing, or is large enough to have been rounded on its way.
    std::optional<std::int64_t> Number(const JsonValue& object, std::string_view path) {
        constexpr std::int64_t LARGEST_EXACT = std::int64_t{1} << 53;
        const std::size_t dot = path.find('.');
        const bool hasParent = dot != std::string_view::npos;
        const JsonValue* parent = hasParent ? Parent(object, path.substr(0, dot)) : &object;
        if (parent == nullptr) {
            return std::nullopt;
        }
        const std::string_view rest = path.substr(hasParent ? dot + 1 : 0);
        const JsonValue* value = At(*parent, rest);
        std::optional<std::int64_t> number = value != nullptr ? ToWholeNumber(*value) : std::nullopt;
        if (!number || *number >= LARGEST_EXACT) {
            const JsonValue* text = At(*parent, rest, "_s");
            const auto exact = text != nullptr ? ToWholeNumber(*text) : std::nullopt;
            number = exact ? exact : number;
        }
        const std::string_view text = value != nullptr ? TextOf(*value) : std::string_view();
        if (!number && value != nullptr && !value->IsNull() && text != "unknown" && text != "not_available") {
            m_Notes.push_back(std::string(path) + " is no whole number and passed over");
        }
        return number;
    }

    /// A member that holds others. Rows of tables mostly ask for the one of the row before.
    const JsonValue* Parent(const JsonValue& object, std::string_view name) {
        if (&object != m_ParentOf || name != m_ParentName) {
            m_ParentOf = &object;
            m_ParentName = name;
            m_Parent = Member(object, name);
        }
        return m_Parent;
    }

    /// A number of at most 16 bits.
    int Small(const JsonValue& object, std::string_view path, int otherwise = 0) {
        const std::int64_t number = Number(object, path).value_or(-1);
        return number >= 0 && number <= 0xFFFF ? static_cast<int>(number) : otherwise;
    }

    ReportIdentity Identify() {
        ReportIdentity identity;
        for (std::size_t i = 0; i < IDENTITY_ROW_COUNT; ++i) {
            const IdentityRow& row = IDENTITY_ROWS[i];
            if (row.m_Path == nullptr) {
                continue;
            }
            if (row.m_Text == nullptr) {
                const std::int64_t number = Number(m_Document, row.m_Path).value_or(-1);
                if (number >= 0) {
                    row.m_SetNumber(identity, number);
                }
            } else if (const std::string_view text = TextAt(m_Document, row.m_Path); !text.empty()) {
                identity.*row.m_Text = text;
            }
        }
        const std::string_view protocol = TextAt(m_Document, "device.protocol");
        const std::string_view type = TextAt(m_Document, "device.type");
        const bool isSATA = type.substr(0, 3) == "sat";
        if (protocol == "NVMe" || type == "nvme" ||
            Member(m_Document, "nvme_smart_health_information_log") != nullptr) {
            identity.m_Protocol = DriveProtocol::NVME;
        } else if (protocol == "SCSI" || type == "scsi") {
            identity.m_Protocol = DriveProtocol::SCSI;
        } else if (protocol == "ATA" || type == "ata" || isSATA ||
                   Member(m_Document, "ata_smart_attributes") != nullptr) {
            identity.m_Protocol = DriveProtocol::ATA;
            if (isSATA || Member(m_Document, "interface_speed") != nullptr) {
                identity.m_Interface = "SATA";
            }
        }
        return identity;
    }

    void ReadFigures(ReportBuilder& builder) {
        for (std::size_t i = 0; i < REPORT_FIGURE_COUNT; ++i) {
            const ReportFigure& figure = REPORT_FIGURES[i];
            if (figure.m_Path != nullptr && figure.IsFor(builder.Protocol())) {
                if (const std::optional<std::int64_t> value = Number(m_Document, figure.m_Path)) {
                    figure.Give(*value, builder);
                }
            }
        }
        for (const bool isWritten : {false, true}) {
            const std::string_view amount =
                TextAt(m_Document, isWritten ? "scsi_error_counter_log.write.gigabytes_processed"
                                             : "scsi_error_counter_log.read.gigabytes_processed");
            if (!amount.empty()) {
                builder.Gigabytes(isWritten, amount);
            }
        }
        const std::string_view passed = TextAt(m_Document, "smart_status.passed");
        if (passed == "true" || passed == "false") {
            builder.Verdict(passed == "true", Small(m_Document, "smart_status.scsi.asc"),
                            Small(m_Document, "smart_status.scsi.ascq"));
        }
    }

    void ReadAttributes(ReportBuilder& builder) {
        ForEach(At(m_Document, "ata_smart_attributes.table"), [&](const JsonValue& row) {
            if (!row.IsObject()) {
                return;
            }
            const std::string name(TextAt(row, "name"));
            const std::string_view text = TextAt(row, "raw.string");
            const std::int64_t value = Number(row, "raw.value").value_or(-1);
            std::optional<std::uint64_t> raw;
            // Collections of reports keep the text and may cut the number.
            if (value < 0 || IsWholeRawText(text)) {
                raw = ReadRawText(text, name);
            } else {
                raw = static_cast<std::uint64_t>(value);
            }
            builder.Attribute(Small(row, "id", -1), name, Small(row, "flags.value"), Small(row, "value", -1),
                              Small(row, "worst", -1), Small(row, "thresh", -1), raw);
        });
    }

    void ReadStatistics(ReportBuilder& builder) {
        ForEach(At(m_Document, "ata_device_statistics.pages"), [&](const JsonValue& page) {
            ForEach(Member(page, "table"), [&](const JsonValue& row) {
                const std::optional<std::int64_t> value = Number(row, "value");
                if (value && TextAt(row, "flags.valid") != "false") {
                    builder.Statistic(Small(page, "number"), Small(row, "offset"), TextAt(row, "name"),
                                      *value);
                }
            });
        });
    }

    void ReadSelfTests(ReportBuilder& builder) {
        std::vector<_SELF_TEST_OUTCOME> outcomes;
        const auto take = [&](const JsonValue& test, const char* type, const char* result) {
            outcomes.push_back(ToOutcome(TextAt(test, type), TextAt(test, result)));
        };
        for (const SelfTestLog& log : SELF_TEST_LOGS) {
            if (const JsonValue* value = At(m_Document, log.m_Path); value != nullptr && value->IsObject()) {
                ForEach(Member(*value, "table"),
                        [&](const JsonValue& test) { take(test, log.m_Type, log.m_Result); });
                builder.Health().TakeSelfTests(outcomes.data(), outcomes.size(), log.m_Source, log.m_Page);
                outcomes.clear();
            }
        }
        constexpr int MOST_TESTS = 20;
        for (int i = 0; i < MOST_TESTS; ++i) {
            if (const JsonValue* test = Member(m_Document, "scsi_self_test_", std::to_string(i))) {
                take(*test, "code.string", "result.string");
            }
        }
        if (!outcomes.empty()) {
            builder.Health().TakeSelfTests(outcomes.data(), outcomes.size(), FigureSource::SCSI_LOG_PAGE,
                                           0x10);
        }
    }

    void ReadMessages(ReportBuilder& builder) {
        builder.NoteExitStatus(Small(m_Document, "smartctl.exit_status"));
        ForEach(At(m_Document, "smartctl.messages"), [&](const JsonValue& message) {
            builder.Note("smartctl says: " + std::string(TextAt(message, "string")));
        });
    }

    const JsonValue& m_Document;
    std::vector<std::string> m_Notes;
    const JsonValue* m_ParentOf = nullptr;  ///< with m_ParentName what m_Parent was found by
    std::string_view m_ParentName;
    const JsonValue* m_Parent = nullptr;
};

/// Whether an object is a report, by names that only reports have.
bool IsReport(const JsonValue& object) {
    constexpr const char* NAMES[] = {"smartctl",     "json_format_version", "model_name",  "scsi_model_name",
                                     "smart_status", "scsi_vendor",         "scsi_product"};
    // Other programs have serial numbers, too.
    constexpr const char* NAMES_BESIDE_SERIAL[] = {"local_time",
                                                   "firmware_version",
                                                   "user_capacity",
                                                   "rotation_rate",
                                                   "power_on_time",
                                                   "power_cycle_count",
                                                   "ata_smart_attributes",
                                                   "nvme_smart_health_information_log",
                                                   "scsi_error_counter_log"};
    const auto isMember = [&](const char* name) { return Member(object, name) != nullptr; };
    const JsonValue* const device = Member(object, "device");  // a number in logs of errors
    return std::any_of(std::begin(NAMES), std::end(NAMES), isMember) ||
           (device != nullptr && device->IsObject()) ||
           (isMember("serial_number") &&
            (object.MemberCount() == 1 ||
             std::any_of(std::begin(NAMES_BESIDE_SERIAL), std::end(NAMES_BESIDE_SERIAL), isMember)));
}

std::string WhyNoDrive(const JsonValue& document) {
    std::string reason;
    ForEach(At(document, "smartctl.messages"), [&](const JsonValue& message) {
        const std::string_view text = TextAt(message, "string");
        const char* known = FindReason(text);
        if (reason.empty() && known != nullptr) {
            reason = known;
        } else if (reason.empty() && TextAt(message, "severity") == "error") {
            reason = "smartctl says: " + std::string(text);
        }
    });
    return !reason.empty() ? reason : Member(document, "devices") != nullptr ? DEVICE_LIST : NO_IDENTITY;
}

/// Whether an object holds a whole report beside what another program says.
bool IsWrapper(const JsonValue& object) {
    return std::any_of(object.MemberBegin(), object.MemberEnd(), [](const auto& member) {
        return Member(member.value, "json_format_version") != nullptr;
    });
}

/// Reports in a document, which may be one, a list or an object of them.
/// @return whether there was any
bool VisitReports(const JsonValue& value, unsigned depth, const std::vector<std::string>& notes,
                  const Place& place, SmartctlResults& results) {
    constexpr unsigned DEEPEST = 8;  // judgement
    const bool isReport = IsReport(value);
    if (isReport && !IsWrapper(value)) {
        std::vector<std::string> own = notes;
        FindDuplicates(value, own);
        if (std::optional<CDriveReport> drive = DocumentReader(value).Read(std::move(own))) {
            results.m_Drives.push_back(std::move(*drive));
            return true;
        }
    }
    bool found = false;
    std::size_t others = 0;
    const auto visit = [&](const JsonValue& inner) {
        const bool isFound = VisitReports(inner, depth + 1, notes, place, results);
        found = found || isFound;
        others += isFound ? 0 : 1;
    };
    if (depth < DEEPEST) {
        ForEach(&value, visit);
        for (; found && others != 0; --others) {  // of a list of reports
            results.m_Refusals.emplace_back(NO_REPORT, place.m_Line, place.m_Column);
        }
        for (auto member = value.IsObject() ? value.MemberBegin() : JsonValue::ConstMemberIterator();
             value.IsObject() && member != value.MemberEnd(); ++member) {
            visit(member->value);
        }
    }
    if (isReport && !found) {
        results.m_Refusals.emplace_back(WhyNoDrive(value), place.m_Line, place.m_Column);
    }
    return isReport || found;
}

/// @param text in and out: texts of the document stay in it
/// @return where the document ends
std::size_t Parse(std::string& text, std::size_t start, JsonDocument& document) {
    rapidjson::InsituStringStream stream(text.data() + start);
    document.ParseStream<JSON_FLAGS | rapidjson::kParseTrailingCommasFlag | rapidjson::kParseInsituFlag>(
        stream);
    return start + stream.Tell();
}

/// Reads the documents of a text, one after another.
class TextReader {
public:
    TextReader(std::string text, SmartctlResults& results)
        : m_Text(std::move(text)), m_Parsed(m_Text), m_Places(m_Text), m_Results(results) {}

    void Read() {
        for (std::size_t at = FindJson(m_Text); at != std::string::npos;) {
            const std::size_t end = m_Text[at] == '[' ? ReadList(at) : ReadValue(at);
            if (end != std::string::npos) {
                at = FindJson(m_Text, end);
            } else {
                const std::size_t next = m_Text.find("\n{", m_Error);
                at = next == std::string::npos ? next : next + 1;
            }
        }
    }

private:
    /// @return where it ends; npos: it is refused, and m_Error is where it is no JSON
    std::size_t ReadValue(std::size_t start) {
        JsonDocument document;
        const std::size_t end = Parse(m_Parsed, start, document);
        if (document.HasParseError() && start >= m_MendedEnd && MendJson(m_Text, start)) {
            m_MendedEnd = m_Text.find("\n{", start);
            m_Parsed.replace(start, m_MendedEnd - start, m_Text, start, m_MendedEnd - start);
            return ReadValue(start);
        }
        if (document.HasParseError()) {
            return RefuseJson(start + document.GetErrorOffset(), document.GetParseError());
        }
        std::vector<std::string> notes;
        if (start < m_MendedEnd) {
            notes.emplace_back("numbers or texts that no JSON can hold are passed over");
        }
        const Place place = m_Places.At(start);
        if (!VisitReports(document, 0, notes, place, m_Results) &&
            TextAt(document, "format").substr(0, 7) == "pitool ") {
            m_Results.m_Refusals.emplace_back("output of pitool, no report of smartctl", place.m_Line,
                                              place.m_Column);
        }
        return end;
    }

    /// Elements are read one by one: one that is broken does not cost those before it. Those of a list of
    /// reports that are none are refused.
    /// @return as ReadValue
    std::size_t ReadList(std::size_t start) {
        const auto count = [this] { return m_Results.m_Drives.size() + m_Results.m_Refusals.size(); };
        const auto firstRefusal = static_cast<std::ptrdiff_t>(m_Results.m_Refusals.size());
        std::ptrdiff_t others = 0;
        bool isOfReports = false;
        std::size_t at = SkipBlanks(start + 1);
        while (at != std::string::npos && m_Text.c_str()[at] != ']') {
            const std::size_t before = count();
            const std::size_t end = ReadValue(at);
            if (end == std::string::npos) {
                at = end;
                break;
            }
            isOfReports = isOfReports || count() != before;
            if (count() == before) {
                const Place place = m_Places.At(at);
                m_Results.m_Refusals.emplace_back(NO_REPORT, place.m_Line, place.m_Column);
                ++others;
            }
            at = SkipBlanks(end);
            if (m_Text.c_str()[at] == ',') {
                at = SkipBlanks(at + 1);
            } else if (m_Text.c_str()[at] != ']') {
                at = RefuseJson(at, rapidjson::kParseErrorArrayMissCommaOrSquareBracket);
            }
        }
        if (!isOfReports) {
            const auto first = m_Results.m_Refusals.begin() + firstRefusal;
            m_Results.m_Refusals.erase(first, first + others);
        }
        return at == std::string::npos ? at : at + 1;
    }

    std::size_t RefuseJson(std::size_t error, rapidjson::ParseErrorCode code) {
        m_Error = error;
        const std::string_view rest = std::string_view(m_Text).substr(error);
        constexpr std::size_t LONGEST_ESCAPE = 12;
        const bool isEscape = !rest.empty() && rest[0] == '\\' && rest.size() < LONGEST_ESCAPE;
        const bool isEnd = isEscape || rest.find_first_not_of(JSON_BLANKS) == std::string_view::npos;
        const Place place = m_Places.At(error);
        m_Results.m_Refusals.emplace_back(isEnd
                                              ? std::string("the report breaks off")
                                              : std::string("no JSON: ") + rapidjson::GetParseError_En(code),
                                          place.m_Line, place.m_Column);
        return std::string::npos;
    }

    std::size_t SkipBlanks(std::size_t from) const {
        return std::min(m_Text.find_first_not_of(JSON_BLANKS, from), m_Text.size());
    }

    std::string m_Text;
    std::string m_Parsed;  ///< the same, changed by the parser
    PlaceCounter m_Places;
    SmartctlResults& m_Results;
    std::size_t m_MendedEnd = 0;
    std::size_t m_Error = 0;
};

}  // namespace

void ReadSmartctlJson(std::string text, SmartctlResults& results) {
    TextReader(std::move(text), results).Read();
}

}  // namespace PI
