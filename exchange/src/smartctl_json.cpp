// SPDX-License-Identifier: Apache-2.0
// Reports of smartctl as JSON.

#include <pi/vocabulary.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "json_parser.h"
#include "report_builder.h"
#include "smartctl_readers.h"

namespace PI {

namespace {

std::string_view TextOf(const JsonValue& value) {
    return value.IsString() ? std::string_view(value.GetString(), value.GetStringLength())
                            : std::string_view();
}

/// A member; of several with the same name the last.
const JsonValue* Member(const JsonValue& object, std::string_view name) {
    if (!object.IsObject()) {
        return nullptr;
    }
    for (auto member = object.MemberEnd(); member != object.MemberBegin();) {
        --member;
        if (TextOf(member->name) == name) {
            return &member->value;
        }
    }
    return nullptr;
}

/// What is reached through members with dots between their names.
const JsonValue* At(const JsonValue& object, std::string_view path) {
    const JsonValue* value = &object;
    while (value != nullptr && !path.empty()) {
        const std::size_t dot = std::min(path.find('.'), path.size());
        value = Member(*value, path.substr(0, dot));
        path.remove_prefix(std::min(dot + 1, path.size()));
    }
    return value;
}

std::string_view TextAt(const JsonValue& object, std::string_view path) {
    const JsonValue* value = At(object, path);
    return value != nullptr ? TextOf(*value) : std::string_view();
}

/// Elements of a list; none where there is none.
template <class Visit>
void ForEach(const JsonValue* list, Visit visit) {
    if (list != nullptr && list->IsArray()) {
        for (const JsonValue& element : list->GetArray()) {
            visit(element);
        }
    }
}

/// A whole number, also one in quotes. Beyond 64 bits it is the largest.
std::optional<std::int64_t> ToNumber(const JsonValue& value) {
    constexpr std::int64_t MOST = std::numeric_limits<std::int64_t>::max();
    if (value.IsInt64()) {
        return value.GetInt64();
    }
    if (value.IsUint64()) {
        return MOST;
    }
    if (value.IsDouble()) {
        const double number = value.GetDouble();
        constexpr double TWO_TO_63 = 9223372036854775808.0;
        if (number >= TWO_TO_63 && std::isfinite(number)) {
            return MOST;
        }
        const bool isWhole = number >= -TWO_TO_63 && number < TWO_TO_63 && std::trunc(number) == number;
        return isWhole ? std::optional(static_cast<std::int64_t>(number)) : std::nullopt;
    }
    const std::string_view text = TextOf(value);
    std::int64_t number = 0;
    if (text.empty() || text.size() > 18 ||
        !std::all_of(text.begin(), text.end(), [](char digit) { return digit >= '0' && digit <= '9'; })) {
        return std::nullopt;
    }
    for (const char digit : text) {
        number = number * 10 + (digit - '0');
    }
    return number;
}

/// Reads one document. What cannot be read is noted.
class DocumentReader {
public:
    explicit DocumentReader(const JsonValue& document) : m_Document(document) {}

    std::optional<CDriveReport> Read(std::vector<std::string> notes) {
        m_Notes = std::move(notes);
        ReportIdentity identity = Identify();
        if (identity.m_Model.empty() && identity.m_Product.empty() && identity.m_Serial.empty()) {
            return std::nullopt;
        }
        ReportBuilder builder(std::move(identity));
        ReadFigures(builder);
        ReadVerdict(builder);
        ReadAmounts(builder);
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
    std::optional<std::int64_t> Number(const JsonValue& object, std::string_view path) {
        const JsonValue* value = At(object, path);
        if (value == nullptr || value->IsNull()) {
            return std::nullopt;
        }
        const std::optional<std::int64_t> number = ToNumber(*value);
        if (!number && TextOf(*value) != "unknown" && TextOf(*value) != "not_available") {
            m_Notes.push_back(std::string(path) + " is no whole number and passed over");
        }
        return number;
    }

    template <class Type>
    Type NumberOr(const JsonValue& object, std::string_view path, Type otherwise) {
        const std::int64_t number = Number(object, path).value_or(otherwise);
        const bool fits =
            number >= 0 && static_cast<std::uint64_t>(number) <= std::numeric_limits<Type>::max();
        return fits ? static_cast<Type>(number) : otherwise;
    }

    std::string Text(std::string_view path) { return std::string(TextAt(m_Document, path)); }

    std::string FirstText(std::initializer_list<const char*> paths) {
        for (const char* path : paths) {
            if (std::string text = Text(path); !text.empty()) {
                return text;
            }
        }
        return {};
    }

    _DRIVE_PROTOCOL Protocol() {
        const std::string protocol = Text("device.protocol");
        const std::string type = Text("device.type");
        if (protocol == "NVMe" || type == "nvme" ||
            At(m_Document, "nvme_smart_health_information_log") != nullptr) {
            return DriveProtocol::NVME;
        }
        if (protocol == "SCSI" || type == "scsi") {
            return DriveProtocol::SCSI;
        }
        return protocol == "ATA" || type == "ata" || type.compare(0, 3, "sat") == 0 ||
                       At(m_Document, "ata_smart_attributes") != nullptr
                   ? DriveProtocol::ATA
                   : DriveProtocol::UNKNOWN;
    }

    int Transport(_DRIVE_PROTOCOL protocol) {
        constexpr std::int64_t SAS_PROTOCOL = 6;
        const bool isSATA = At(m_Document, "sata_version") != nullptr ||
                            At(m_Document, "interface_speed") != nullptr ||
                            Text("device.type").compare(0, 3, "sat") == 0;
        switch (protocol) {
            case DriveProtocol::NVME: return PropertyValue::NVME;
            case DriveProtocol::ATA: return isSATA ? PropertyValue::SATA : 0;
            default:
                return Number(m_Document, "scsi_transport_protocol.value") == SAS_PROTOCOL
                           ? PropertyValue::SAS
                           : 0;
        }
    }

    ReportIdentity Identify() {
        ReportIdentity identity;
        identity.m_Protocol = Protocol();
        identity.m_Device = Text("device.name");
        identity.m_Model = FirstText({"model_name", "scsi_model_name"});
        identity.m_Vendor = FirstText({"scsi_vendor", "vendor"});
        identity.m_Product = FirstText({"scsi_product", "product"});
        identity.m_Serial = Text("serial_number");
        identity.m_Firmware = FirstText({"firmware_version", "scsi_revision", "revision"});
        identity.m_Capacity = NumberOr<std::uint64_t>(m_Document, "user_capacity.bytes", 0);
        if (identity.m_Capacity == 0) {
            identity.m_Capacity = NumberOr<std::uint64_t>(m_Document, "nvme_total_capacity", 0);
        }
        identity.m_BlockSize = NumberOr<std::uint32_t>(m_Document, "logical_block_size", 0);
        identity.m_Transport = Transport(identity.m_Protocol);
        if (const std::optional<std::int64_t> rotations = Number(m_Document, "rotation_rate")) {
            SetRotation(identity, *rotations);
        }
        const JsonValue* trim = At(m_Document, "trim.supported");
        const bool isFlash = identity.m_Protocol == DriveProtocol::NVME ||
                             (trim != nullptr && trim->IsTrue()) ||
                             At(m_Document, "scsi_percentage_used_endurance_indicator") != nullptr;
        if (identity.m_Medium == 0 && isFlash) {
            identity.m_Medium = PropertyValue::SSD;
        }
        identity.m_Time = NumberOr<std::int64_t>(m_Document, "local_time.time_t", 0);
        ReadRunningTest(identity);
        return identity;
    }

    void ReadRunningTest(ReportIdentity& identity) {
        // ACS: the high half of the status is 15 while a test runs, the low half the tenths that remain of
        // it.
        constexpr std::uint32_t RUNNING = 15;
        const auto ata = NumberOr<std::uint32_t>(m_Document, "ata_smart_data.self_test.status.value", 0);
        const auto tenths = static_cast<int>(ata & 0xF);
        if (ata >> 4U == RUNNING) {
            identity.m_IsSelfTesting = true;
            identity.m_SelfTestProgress = tenths <= 10 ? 100 - tenths * 10 : -1;
        } else if (NumberOr(m_Document, "nvme_self_test_log.current_self_test_operation.value", 0) != 0) {
            const int percent =
                NumberOr(m_Document, "nvme_self_test_log.current_self_test_completion_percent", -1);
            identity.m_IsSelfTesting = true;
            identity.m_SelfTestProgress = percent <= 100 ? percent : -1;
        } else {
            identity.m_IsSelfTesting =
                NumberOr<std::uint32_t>(m_Document, "scsi_self_test_0.result.value", 0) == RUNNING;
        }
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
        constexpr std::uint32_t ENVIRONMENT = 0x10D;
        const JsonValue* reports = Member(m_Document, "scsi_environmental_reports");
        if (reports == nullptr || !reports->IsObject()) {
            return;
        }
        for (const auto& report : reports->GetObject()) {
            if (TextOf(report.name).substr(0, 12) != "temperature_") {
                continue;
            }
            if (const std::optional<std::int64_t> value = Number(report.value, "current")) {
                builder.Health().TakeFigure(HealthFigure::TEMPERATURE, *value, FigureSource::SCSI_LOG_PAGE,
                                            ENVIRONMENT);
                return;
            }
        }
    }

    void ReadVerdict(ReportBuilder& builder) {
        const JsonValue* passed = At(m_Document, "smart_status.passed");
        if (passed != nullptr && passed->IsBool()) {
            builder.Verdict(passed->GetBool(),
                            NumberOr<std::uint32_t>(m_Document, "smart_status.scsi.asc", 0),
                            NumberOr<std::uint32_t>(m_Document, "smart_status.scsi.ascq", 0));
        }
    }

    void ReadAmounts(ReportBuilder& builder) {
        constexpr std::uint32_t WRITE_ERRORS = 0x02;
        constexpr std::uint32_t READ_ERRORS = 0x03;
        const std::string written = Text("scsi_error_counter_log.write.gigabytes_processed");
        const std::string read = Text("scsi_error_counter_log.read.gigabytes_processed");
        if (!written.empty()) {
            builder.Gigabytes(HealthFigure::BYTES_WRITTEN, written, WRITE_ERRORS);
        }
        if (!read.empty()) {
            builder.Gigabytes(HealthFigure::BYTES_READ, read, READ_ERRORS);
        }
    }

    void ReadAttributes(ReportBuilder& builder) {
        ForEach(At(m_Document, "ata_smart_attributes.table"), [&](const JsonValue& row) {
            if (!row.IsObject()) {
                return;
            }
            const std::string name(TextAt(row, "name"));
            const auto id = NumberOr<std::uint32_t>(row, "id", 0);
            const std::optional<std::int64_t> value = Number(row, "raw.value");
            const std::string_view text = TextAt(row, "raw.string");
            const bool hasValue = value && *value >= 0;
            std::uint64_t raw = hasValue ? static_cast<std::uint64_t>(*value) : 0;
            // Collections of reports keep the text and may cut the number.
            if ((!hasValue || IsWholeRawText(text)) && !ReadRawText(text, name, raw)) {
                m_Notes.push_back("attribute " + std::to_string(id) + " has no raw value and is passed over");
                return;
            }
            builder.Attribute(id, name, NumberOr<std::uint16_t>(row, "flags.value", 0),
                              NumberOr(row, "value", -1), NumberOr(row, "worst", -1),
                              NumberOr(row, "thresh", -1), raw);
        });
    }

    void ReadStatistics(ReportBuilder& builder) {
        ForEach(At(m_Document, "ata_device_statistics.pages"), [&](const JsonValue& page) {
            const auto number = NumberOr<std::uint32_t>(page, "number", 0);
            ForEach(At(page, "table"), [&](const JsonValue& row) {
                const JsonValue* valid = At(row, "flags.valid");
                const std::optional<std::int64_t> value = Number(row, "value");
                if (value && !(valid != nullptr && valid->IsFalse())) {
                    builder.Statistic(number, NumberOr<std::uint32_t>(row, "offset", 0), TextAt(row, "name"),
                                      *value);
                }
            });
        });
    }

    void ReadSelfTestLog(ReportBuilder& builder, const char* path, _FIGURE_SOURCE source,
                         std::uint32_t page) {
        const JsonValue* log = At(m_Document, path);
        if (log == nullptr || !log->IsObject()) {
            return;
        }
        std::vector<_SELF_TEST_OUTCOME> outcomes;
        ForEach(Member(*log, "table"), [&](const JsonValue& test) {
            const bool isNVMe = source == FigureSource::NVME_LOG;
            outcomes.push_back(ToOutcome(TextAt(test, isNVMe ? "self_test_code.string" : "type.string"),
                                         TextAt(test, isNVMe ? "self_test_result.string" : "status.string")));
        });
        builder.Health().TakeSelfTests(outcomes.data(), outcomes.size(), source, page);
    }

    void ReadSelfTests(ReportBuilder& builder) {
        ReadSelfTestLog(builder, "ata_smart_self_test_log.standard", FigureSource::ATA_LOG, 0x06);
        ReadSelfTestLog(builder, "ata_smart_self_test_log.extended", FigureSource::ATA_LOG, 0x07);
        ReadSelfTestLog(builder, "nvme_self_test_log", FigureSource::NVME_LOG, 0x06);
        std::vector<_SELF_TEST_OUTCOME> outcomes;
        constexpr int MOST_TESTS = 20;
        for (int i = 0; i < MOST_TESTS; ++i) {
            if (const JsonValue* test = Member(m_Document, "scsi_self_test_" + std::to_string(i))) {
                outcomes.push_back(ToOutcome(TextAt(*test, "code.string"), TextAt(*test, "result.string")));
            }
        }
        if (!outcomes.empty()) {
            builder.Health().TakeSelfTests(outcomes.data(), outcomes.size(), FigureSource::SCSI_LOG_PAGE,
                                           0x10);
        }
    }

    void ReadMessages(ReportBuilder& builder) {
        builder.NoteExitStatus(NumberOr<std::uint32_t>(m_Document, "smartctl.exit_status", 0));
        ForEach(At(m_Document, "smartctl.messages"), [&](const JsonValue& message) {
            builder.Note("smartctl says: " + std::string(TextAt(message, "string")));
        });
    }

    const JsonValue& m_Document;
    std::vector<std::string> m_Notes;
};

/// Names that stand for a report, whatever else it holds.
bool IsReport(const JsonValue& object) {
    constexpr const char* NAMES[] = {"smartctl",     "device",          "json_format_version",
                                     "model_name",   "scsi_model_name", "serial_number",
                                     "smart_status", "scsi_vendor",     "scsi_product"};
    return std::any_of(std::begin(NAMES), std::end(NAMES),
                       [&](const char* name) { return Member(object, name) != nullptr; });
}

/// Sorts names, unless they are few and all different, as those of most objects.
void SortIfTwice(std::vector<std::string_view>& names) {
    constexpr std::size_t FEW = 16;
    bool isSorted = names.size() <= FEW;
    for (std::size_t i = 1; isSorted && i < names.size(); ++i) {
        isSorted = std::find(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(i), names[i]) ==
                   names.begin() + static_cast<std::ptrdiff_t>(i);
    }
    if (!isSorted) {
        std::sort(names.begin(), names.end());
    }
}

void FindDuplicates(const JsonValue& value, std::string_view path, unsigned depth,
                    std::vector<std::string_view>& names, std::vector<std::string>& notes) {
    constexpr unsigned DEEPEST = 32;  // reports nest six deep
    if (depth > DEEPEST) {
        return;
    }
    if (value.IsArray()) {
        for (const JsonValue& element : value.GetArray()) {
            FindDuplicates(element, path, depth + 1, names, notes);
        }
    } else if (value.IsObject()) {
        names.clear();
        for (const auto& member : value.GetObject()) {
            names.push_back(TextOf(member.name));
        }
        SortIfTwice(names);
        for (auto twice = std::adjacent_find(names.begin(), names.end()); twice != names.end();
             twice = std::adjacent_find(std::upper_bound(twice, names.end(), *twice), names.end())) {
            notes.push_back("\"" + std::string(*twice) + "\" occurs more than once" +
                            (path.empty() ? "" : " in ") + std::string(path) + "; the last one counts");
        }
        for (const auto& member : value.GetObject()) {
            if (member.value.IsObject() || member.value.IsArray()) {
                FindDuplicates(member.value, TextOf(member.name), depth + 1, names, notes);
            }
        }
    }
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
    if (!reason.empty()) {
        return reason;
    }
    if (Member(document, "devices") != nullptr) {
        return "a list of devices from --scan, which says nothing of them";
    }
    return "a report without identity: neither model nor serial number, as with -H or -A alone";
}

/// Reports in a document, which may be one, a list or an object of them.
/// @return whether there was any
bool VisitReports(const JsonValue& value, unsigned depth, const std::vector<std::string>& notes,
                  const Place& place, SmartctlResults& results) {
    constexpr unsigned DEEPEST = 8;  // judgement
    bool found = false;
    if (value.IsObject() && IsReport(value)) {
        std::vector<std::string> own = notes;
        std::vector<std::string_view> names;
        FindDuplicates(value, {}, 0, names, own);
        if (std::optional<CDriveReport> drive = DocumentReader(value).Read(std::move(own))) {
            results.m_Drives.push_back(std::move(*drive));
        } else {
            results.m_Refusals.emplace_back(WhyNoDrive(value), place.m_Line, place.m_Column);
        }
        return true;
    }
    if (value.IsArray() && depth < DEEPEST) {
        for (const JsonValue& element : value.GetArray()) {
            found = VisitReports(element, depth + 1, notes, place, results) || found;
        }
    } else if (value.IsObject() && depth < DEEPEST) {
        for (const auto& member : value.GetObject()) {
            found = VisitReports(member.value, depth + 1, notes, place, results) || found;
        }
    }
    return found;
}

}  // namespace

void ReadSmartctlJson(std::string text, SmartctlResults& results) {
    constexpr std::string_view BLANKS = " \t\r\n";
    PlaceCounter places(text);
    std::vector<std::string> notes;
    for (std::size_t start = FindJson(text); start != std::string::npos;) {
        JsonDocument document;
        rapidjson::StringStream stream(text.c_str() + start);
        document.ParseStream<JSON_FLAGS>(stream);
        if (!document.HasParseError()) {
            VisitReports(document, 0, notes, places.At(start), results);
            notes.clear();
            start = FindJson(text, start + stream.Tell());
            continue;
        }
        const std::size_t error = start + document.GetErrorOffset();
        if (document.GetParseError() == rapidjson::kParseErrorNumberTooBig) {
            // Once more with a null in its place: one odd figure costs no drive.
            const std::size_t length =
                std::min(text.find_first_not_of("0123456789+-.eE", error), text.size()) - error;
            constexpr std::string_view NOTHING = "null";
            notes.push_back("a number of " + std::to_string(length) + " characters is passed over");
            text.replace(error, length, NOTHING.data() + std::string(length - NOTHING.size(), ' '));
            continue;
        }
        const std::string_view rest = std::string_view(text).substr(error);
        constexpr std::size_t LONGEST_ESCAPE = 12;
        const bool isEscape = !rest.empty() && rest[0] == '\\' && rest.size() < LONGEST_ESCAPE;
        const bool isEnd = isEscape || rest.find_first_not_of(BLANKS) == std::string_view::npos;
        const Place place = places.At(error);
        results.m_Refusals.emplace_back(
            isEnd ? std::string("the report breaks off")
                  : std::string("no JSON: ") + rapidjson::GetParseError_En(document.GetParseError()),
            place.m_Line, place.m_Column);
        notes.clear();
        const std::size_t next = text.find("\n{", error);
        start = next == std::string::npos ? next : next + 1;
    }
}

}  // namespace PI
