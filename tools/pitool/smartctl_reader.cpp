// SPDX-License-Identifier: Apache-2.0

#include "smartctl_reader.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <utility>
#include <variant>

namespace pitool {
namespace {

using Text = std::optional<std::string>;
using Unsigned = std::optional<std::uint64_t>;
using Signed = std::optional<std::int64_t>;
using Truth = std::optional<bool>;

constexpr std::uint64_t NO_LIMIT = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t NVME_DATA_UNIT = 512000;  // a thousand blocks of 512 bytes, whatever the block size

/// Members of the document as they are found, and those of the table row that is being read.
struct Collected {
    Text m_Device, m_Protocol, m_Model, m_ScsiModel, m_ScsiVendor, m_Vendor, m_ScsiProduct, m_Product;
    Text m_Serial, m_Firmware, m_ScsiRevision, m_Revision, m_Message, m_SataVersion, m_LinkSpeed;
    Unsigned m_ScsiTransport, m_Rotation, m_Capacity, m_NvmeCapacity, m_BlockSize, m_Hours, m_NvmeHours;
    Signed m_Temperature, m_HighestTemperature;
    Signed m_OperatingLimit, m_Limit, m_CriticalLimit, m_TripTemperature;
    Truth m_Passed, m_Trim;
    Unsigned m_EnduranceUsed, m_NvmeUsed, m_ScsiUsed, m_StatisticUsed, m_Spare, m_NvmeSpare;
    Unsigned m_UnitsWritten, m_UnitsRead, m_SectorsWritten, m_SectorsRead;
    Text m_GigabytesWritten, m_GigabytesRead;

    Unsigned m_PageRevision;
    bool m_HasAttributes = false;
    std::vector<SmartAttribute> m_Attributes;
    Unsigned m_RowID, m_RowFlags, m_RowCurrent, m_RowWorst, m_RowRaw;

    Text m_StatisticName;
    Signed m_StatisticValue;
    Truth m_StatisticValid;
};

using Target =
    std::variant<Text Collected::*, Unsigned Collected::*, Signed Collected::*, Truth Collected::*>;

/// A member that is used: where it stands, where it goes, the largest number it may hold.
struct Field {
    std::string_view m_Path;  ///< "[]" stands for any element of a list
    Target m_Target;
    std::uint64_t m_Max = NO_LIMIT;
    const char* m_Limit = nullptr;  ///< how the limit is called, where a number would not be understood
};

const Field FIELDS[] = {
    {"device.name", &Collected::m_Device},
    {"device.protocol", &Collected::m_Protocol},
    {"model_name", &Collected::m_Model},
    {"scsi_model_name", &Collected::m_ScsiModel},
    {"scsi_vendor", &Collected::m_ScsiVendor},
    {"vendor", &Collected::m_Vendor},
    {"scsi_product", &Collected::m_ScsiProduct},
    {"product", &Collected::m_Product},
    {"serial_number", &Collected::m_Serial},
    {"firmware_version", &Collected::m_Firmware},
    {"scsi_revision", &Collected::m_ScsiRevision},
    {"revision", &Collected::m_Revision},
    {"smartctl.messages[].string", &Collected::m_Message},
    {"sata_version.string", &Collected::m_SataVersion},
    {"interface_speed.max.string", &Collected::m_LinkSpeed},
    {"scsi_transport_protocol.value", &Collected::m_ScsiTransport, 15},
    {"rotation_rate", &Collected::m_Rotation, 65535},
    {"user_capacity.bytes", &Collected::m_Capacity},
    {"nvme_total_capacity", &Collected::m_NvmeCapacity},
    {"logical_block_size", &Collected::m_BlockSize, 0xFFFFFFFF},
    {"temperature.current", &Collected::m_Temperature},
    {"temperature.lifetime_max", &Collected::m_HighestTemperature},
    {"temperature.op_limit_max", &Collected::m_OperatingLimit},
    {"temperature.limit_max", &Collected::m_Limit},
    {"temperature.critical_limit_max", &Collected::m_CriticalLimit},
    {"temperature.drive_trip", &Collected::m_TripTemperature},
    {"power_on_time.hours", &Collected::m_Hours},
    {"smart_status.passed", &Collected::m_Passed},
    {"trim.supported", &Collected::m_Trim},
    {"endurance_used.current_percent", &Collected::m_EnduranceUsed, 255},
    {"spare_available.current_percent", &Collected::m_Spare, 255},
    {"ata_smart_attributes.revision", &Collected::m_PageRevision, 0xFFFF},
    {"ata_smart_attributes.table[].id", &Collected::m_RowID, 255},
    {"ata_smart_attributes.table[].flags.value", &Collected::m_RowFlags, 0xFFFF},
    {"ata_smart_attributes.table[].value", &Collected::m_RowCurrent, 255},
    {"ata_smart_attributes.table[].worst", &Collected::m_RowWorst, 255},
    {"ata_smart_attributes.table[].raw.value", &Collected::m_RowRaw, MAX_RAW_VALUE, "48 bits"},
    {"ata_device_statistics.pages[].table[].name", &Collected::m_StatisticName},
    {"ata_device_statistics.pages[].table[].value", &Collected::m_StatisticValue},
    {"ata_device_statistics.pages[].table[].flags.valid", &Collected::m_StatisticValid},
    {"nvme_smart_health_information_log.percentage_used", &Collected::m_NvmeUsed, 255},
    {"nvme_smart_health_information_log.available_spare", &Collected::m_NvmeSpare, 255},
    {"nvme_smart_health_information_log.power_on_hours", &Collected::m_NvmeHours},
    {"nvme_smart_health_information_log.data_units_written", &Collected::m_UnitsWritten,
     NO_LIMIT / NVME_DATA_UNIT},
    {"nvme_smart_health_information_log.data_units_read", &Collected::m_UnitsRead, NO_LIMIT / NVME_DATA_UNIT},
    {"scsi_percentage_used_endurance_indicator", &Collected::m_ScsiUsed, 255},
    {"scsi_error_counter_log.write.gigabytes_processed", &Collected::m_GigabytesWritten},
    {"scsi_error_counter_log.read.gigabytes_processed", &Collected::m_GigabytesRead},
};

constexpr std::string_view ATTRIBUTES = "ata_smart_attributes.table";
constexpr std::string_view ATTRIBUTE_ROW = "ata_smart_attributes.table[]";
constexpr std::string_view STATISTIC_ROW = "ata_device_statistics.pages[].table[]";

/// Place in a document that is used: a field, or an object or a list on the way to one.
struct Node {
    enum Kind { OBJECT, LIST, FIELD } m_Kind = OBJECT;
    std::string_view m_Path;
    const Field* m_Field = nullptr;
};

using Nodes = std::unordered_map<std::string_view, Node>;

Nodes BuildNodes() {
    Nodes nodes{{"", {Node::OBJECT, "", nullptr}}};
    for (const Field& field : FIELDS) {
        const std::string_view path = field.m_Path;
        for (std::size_t i = 0; i < path.size(); ++i) {
            if (path[i] == '.' || path[i] == '[') {
                const std::string_view prefix = path.substr(0, i);
                nodes.emplace(prefix, Node{path[i] == '.' ? Node::OBJECT : Node::LIST, prefix, nullptr});
            }
        }
        nodes.emplace(path, Node{Node::FIELD, path, &field});
    }
    return nodes;
}

const Node* FindNode(std::string_view path) {
    static const Nodes nodes = BuildNodes();
    const auto node = nodes.find(path);
    return node != nodes.end() ? &node->second : nullptr;
}

const char* ExpectedAt(const Node& node) {
    if (node.m_Kind != Node::FIELD) {
        return node.m_Kind == Node::OBJECT ? "an object" : "a list";
    }
    constexpr const char* BY_TARGET[] = {"text", "a whole number", "a whole number", "true or false"};
    return BY_TARGET[node.m_Field->m_Target.index()];
}

/// Takes the events of the JSON parser, keeps what FIELDS names and passes over the rest.
class Collector {
public:
    using number_integer_t = nlohmann::json::number_integer_t;
    using number_unsigned_t = nlohmann::json::number_unsigned_t;
    using number_float_t = nlohmann::json::number_float_t;
    using string_t = nlohmann::json::string_t;
    using binary_t = nlohmann::json::binary_t;

    explicit Collector(std::string_view text) : m_Text(text) {}

    bool null() {
        return Scalar("null", [](const Field&) { return false; });
    }

    bool boolean(bool value) {
        return Scalar("true or false", [&](const Field& field) { return Store<Truth>(field, value); });
    }

    bool number_integer(number_integer_t value) {
        return Scalar("a negative number", [&](const Field& field) { return Store<Signed>(field, value); });
    }

    bool number_unsigned(number_unsigned_t value) {
        return Scalar("a whole number", [&](const Field& field) {
            if (std::holds_alternative<Signed Collected::*>(field.m_Target)) {
                return value <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())
                           ? Store<Signed>(field, static_cast<std::int64_t>(value))
                           : Refuse(std::to_string(value) + " is out of range");
            }
            if (value > field.m_Max) {
                return Refuse(std::to_string(value) + " is above " +
                              (field.m_Limit != nullptr ? field.m_Limit : std::to_string(field.m_Max)));
            }
            return Store<Unsigned>(field, value);
        });
    }

    bool number_float(number_float_t, const string_t& token) {
        // Whole numbers beyond 64 bits come as floating point, too.
        const bool whole = token.find_first_of(".eE") == string_t::npos;
        return Scalar(whole ? "a number beyond 64 bits" : "a number with a fraction",
                      [](const Field&) { return false; });
    }

    bool string(string_t& value) {
        return Scalar("text", [&](const Field& field) {
            if (std::holds_alternative<Text Collected::*>(field.m_Target) && value.size() > MAX_TEXT_LENGTH) {
                return Refuse("longer than " + std::to_string(MAX_TEXT_LENGTH) + " bytes");
            }
            return Store<Text>(field, std::move(value));
        });
    }

    bool binary(binary_t&) { return false; }  // JSON text has none

    bool start_object(std::size_t) { return Open(Node::OBJECT, "an object"); }
    bool end_object() { return Close(); }
    bool start_array(std::size_t) { return Open(Node::LIST, "a list"); }
    bool end_array() { return Close(); }

    bool key(string_t& name) {
        if (m_PassedOver == 0) {
            m_Path.resize(m_Open.back().m_PathLength);
            if (!m_Path.empty()) {
                m_Path += '.';
            }
            // A name must not pass for a path of several names.
            m_Path += name.find_first_of(".[") == string_t::npos ? name : "?";
        }
        return true;
    }

    bool parse_error(std::size_t position, const string_t&, const nlohmann::detail::exception& error) {
        constexpr int NUMBER_OUT_OF_RANGE = 406;
        if (error.id == NUMBER_OUT_OF_RANGE) {
            m_Reason = "holds a number beyond all bounds";
        } else if (m_Text.find_first_not_of(" \t\r\n") == std::string_view::npos) {
            m_Reason = "empty";
        } else if (position > m_Text.size() && m_Begun) {
            m_Reason = "truncated: the JSON text ends too early";
        } else {
            m_Reason = "not JSON: wrong at byte " + std::to_string(position);
        }
        return false;
    }

    Collected m_Collected;
    std::string m_Reason;

private:
    struct Container {
        std::size_t m_PathLength;
        const Node* m_Node;
    };

    /// Node of the value that begins here; the elements of a list share one.
    const Node* Enter() {
        if (!m_Open.empty() && m_Open.back().m_Node->m_Kind == Node::LIST) {
            m_Path.resize(m_Open.back().m_PathLength);
            m_Path += "[]";
        }
        return FindNode(m_Path);
    }

    bool Refuse(const std::string& what) {
        m_Reason = (m_Path.empty() ? std::string("the document") : m_Path) + ": " + what;
        return false;
    }

    bool RefuseType(const Node& node, const char* found) {
        return Refuse(std::string("expected ") + ExpectedAt(node) + ", found " + found);
    }

    template <class Value, class Found>
    bool Store(const Field& field, Found&& found) {
        const auto* target = std::get_if<Value Collected::*>(&field.m_Target);
        if (target == nullptr) {
            return false;
        }
        m_Collected.*(*target) = std::forward<Found>(found);
        return true;
    }

    template <class Keep>
    bool Scalar(const char* found, Keep keep) {
        if (m_PassedOver != 0) {
            return true;
        }
        const Node* node = Enter();
        if (node == nullptr) {
            return true;
        }
        if (node->m_Kind == Node::FIELD && keep(*node->m_Field)) {
            return true;
        }
        return m_Reason.empty() ? RefuseType(*node, found) : false;
    }

    bool Open(Node::Kind kind, const char* found) {
        m_Begun = true;
        if (m_Open.size() + m_PassedOver == MAX_NESTING) {
            m_Reason = "nested deeper than " + std::to_string(MAX_NESTING) + " levels";
            return false;
        }
        const Node* node = m_PassedOver == 0 ? Enter() : nullptr;
        if (node == nullptr) {
            ++m_PassedOver;
            return true;
        }
        if (node->m_Kind != kind) {
            return RefuseType(*node, found);
        }
        m_Open.push_back({m_Path.size(), node});
        return Begin(node->m_Path);
    }

    bool Close() {
        if (m_PassedOver != 0) {
            --m_PassedOver;
            return true;
        }
        const Container closed = m_Open.back();
        m_Open.pop_back();
        m_Path.resize(closed.m_PathLength);
        return End(closed.m_Node->m_Path);
    }

    bool Begin(std::string_view path) {
        Collected& c = m_Collected;
        if (path == ATTRIBUTES) {
            c.m_HasAttributes = true;
            c.m_Attributes.clear();  // of two members of the same name the later one counts
        } else if (path == ATTRIBUTE_ROW) {
            c.m_RowID = c.m_RowFlags = c.m_RowCurrent = c.m_RowWorst = c.m_RowRaw = std::nullopt;
        } else if (path == STATISTIC_ROW) {
            c.m_StatisticName.reset();
            c.m_StatisticValue.reset();
            c.m_StatisticValid.reset();
        }
        return true;
    }

    bool End(std::string_view path) {
        if (path == ATTRIBUTE_ROW) {
            return TakeAttribute();
        }
        return path == STATISTIC_ROW ? TakeStatistic() : true;
    }

    bool TakeAttribute() {
        Collected& c = m_Collected;
        if (c.m_Attributes.size() == PAGE_ATTRIBUTES) {
            m_Reason = "holds more than " + std::to_string(PAGE_ATTRIBUTES) + " SMART attributes";
            return false;
        }
        if (!c.m_RowID || !c.m_RowCurrent || !c.m_RowWorst || !c.m_RowRaw) {
            return Refuse("lacks id, value, worst or raw.value");
        }
        if (*c.m_RowID == 0) {
            return Refuse("id 0 is no SMART attribute");
        }
        SmartAttribute& attribute = c.m_Attributes.emplace_back();
        attribute.m_ID = static_cast<std::uint8_t>(*c.m_RowID);
        attribute.m_Flags = static_cast<std::uint16_t>(c.m_RowFlags.value_or(0));
        attribute.m_Current = static_cast<std::uint8_t>(*c.m_RowCurrent);
        attribute.m_Worst = static_cast<std::uint8_t>(*c.m_RowWorst);
        attribute.m_Raw = *c.m_RowRaw;
        return true;
    }

    bool TakeStatistic() {
        Collected& c = m_Collected;
        if (!c.m_StatisticName || !c.m_StatisticValue || !c.m_StatisticValid.value_or(true)) {
            return true;
        }
        struct Statistic {
            std::string_view m_Name;
            Unsigned Collected::*m_Target;
            std::int64_t m_Max;
        };
        constexpr std::int64_t BITS_48 = static_cast<std::int64_t>(MAX_RAW_VALUE);
        constexpr Statistic STATISTICS[] = {
            {"Percentage Used Endurance Indicator", &Collected::m_StatisticUsed, 255},
            {"Logical Sectors Written", &Collected::m_SectorsWritten, BITS_48},
            {"Logical Sectors Read", &Collected::m_SectorsRead, BITS_48},
        };
        for (const Statistic& statistic : STATISTICS) {
            if (*c.m_StatisticName != statistic.m_Name) {
                continue;
            }
            if (*c.m_StatisticValue < 0 || *c.m_StatisticValue > statistic.m_Max) {
                return Refuse(std::to_string(*c.m_StatisticValue) + " is out of range for " +
                              *c.m_StatisticName);
            }
            c.*statistic.m_Target = static_cast<std::uint64_t>(*c.m_StatisticValue);
        }
        return true;
    }

    std::string_view m_Text;
    bool m_Begun = false;  ///< the text begins as an object or a list does
    std::string m_Path;
    std::vector<Container> m_Open;
    std::size_t m_PassedOver = 0;  ///< open containers within one that is not used
};

/// First of several members that say the same.
template <class Value>
std::optional<Value> FirstOf(std::initializer_list<std::optional<Value>> values) {
    for (const std::optional<Value>& value : values) {
        if (value) {
            return value;
        }
    }
    return std::nullopt;
}

Text WithoutEmpty(Text text) {
    return text && !text->empty() ? std::move(text) : std::nullopt;
}

/// Reads a decimal such as "292086.584", in 10^9 bytes, as bytes.
bool ReadGigabytes(const char* path, const Text& text, Unsigned& bytes, std::string& reason) {
    if (!text) {
        return true;
    }
    constexpr std::size_t PLACES = 9;
    const std::size_t point = std::min(text->find('.'), text->size());
    std::string digits = text->substr(0, point);
    std::string places = point < text->size() ? text->substr(point + 1) : "0";
    const bool decimal = !digits.empty() && !places.empty() && places.size() <= PLACES &&
                         (digits + places).find_first_not_of("0123456789") == std::string::npos;
    if (!decimal) {
        reason = std::string(path) + ": expected a decimal number in text";
        return false;
    }
    places.resize(PLACES, '0');
    digits += places;
    std::uint64_t value = 0;
    for (const char digit : digits) {
        const auto next = static_cast<std::uint64_t>(digit - '0');
        if (value > (NO_LIMIT - next) / 10) {
            reason = std::string(path) + ": beyond 64 bits of bytes";
            return false;
        }
        value = value * 10 + next;
    }
    bytes = value;
    return true;
}

/// Sectors of a statistic as bytes.
bool ReadSectors(const char* name, const Unsigned& sectors, std::uint64_t blockSize, Unsigned& bytes,
                 std::string& reason) {
    if (!sectors) {
        return true;
    }
    if (blockSize != 0 && *sectors > NO_LIMIT / blockSize) {
        reason = std::string(name) + ": beyond 64 bits of bytes";
        return false;
    }
    bytes = *sectors * blockSize;
    return true;
}

bool ReadProtocol(const Text& text, Protocol& protocol, std::string& reason) {
    constexpr std::pair<std::string_view, Protocol> PROTOCOLS[] = {
        {"ATA", Protocol::ATA}, {"NVMe", Protocol::NVME}, {"SCSI", Protocol::SCSI}};
    for (const auto& [name, known] : PROTOCOLS) {
        if (text && *text == name) {
            protocol = known;
            return true;
        }
    }
    reason = text ? "device.protocol: \"" + *text + "\" is none of ATA, NVMe, SCSI"
                  : "lacks the protocol (device.protocol)";
    return false;
}

bool ReadModel(const Collected& c, DriveReport& report, std::string& reason) {
    const Text vendor = FirstOf<std::string>({c.m_ScsiVendor, c.m_Vendor});
    const Text product = WithoutEmpty(FirstOf<std::string>({c.m_ScsiProduct, c.m_Product}));
    Text model = FirstOf<std::string>({WithoutEmpty(c.m_Model), WithoutEmpty(c.m_ScsiModel)});
    if (!model && product) {
        model = vendor.value_or("") + (vendor && !vendor->empty() ? " " : "") + *product;
    }
    if (!model || model->find_first_not_of(" \t\r\n\v\f_") == std::string::npos) {
        reason = "lacks the model (model_name)";
        if (c.m_Message) {
            reason += "; smartctl says: " + *c.m_Message;
        }
        return false;
    }
    report.m_ModelText = std::move(*model);
    report.m_ScsiVendor = WithoutEmpty(vendor);
    report.m_ScsiProduct = product;
    return true;
}

/// Turns what was found into a report: the members that say the same under different names become one.
bool FinishReport(Collected&& c, DriveReport& report, std::string& reason) {
    report = DriveReport();
    if (!ReadModel(c, report, reason) || !ReadProtocol(c.m_Protocol, report.m_Protocol, reason)) {
        return false;
    }
    report.m_Device = WithoutEmpty(c.m_Device);
    report.m_SerialNumber = WithoutEmpty(c.m_Serial);
    report.m_FirmwareVersion =
        WithoutEmpty(FirstOf<std::string>({c.m_Firmware, c.m_ScsiRevision, c.m_Revision}));
    report.m_SataSeen = c.m_SataVersion || c.m_LinkSpeed;
    report.m_ScsiTransport = c.m_ScsiTransport;
    report.m_RotationRate = c.m_Rotation;
    report.m_CapacityBytes = FirstOf<std::uint64_t>({c.m_Capacity, c.m_NvmeCapacity});
    report.m_BlockSize = c.m_BlockSize;
    report.m_Temperature = c.m_Temperature;
    report.m_HighestTemperature = c.m_HighestTemperature;
    report.m_TemperatureLimit =
        FirstOf<std::int64_t>({c.m_OperatingLimit, c.m_Limit, c.m_CriticalLimit, c.m_TripTemperature});
    report.m_PowerOnHours = FirstOf<std::uint64_t>({c.m_Hours, c.m_NvmeHours});
    report.m_SmartPassed = c.m_Passed;
    report.m_TrimSupported = c.m_Trim;
    report.m_PercentUsed =
        FirstOf<std::uint64_t>({c.m_NvmeUsed, c.m_ScsiUsed, c.m_StatisticUsed, c.m_EnduranceUsed});
    report.m_AvailableSpare = FirstOf<std::uint64_t>({c.m_NvmeSpare, c.m_Spare});
    report.m_HasAttributes = c.m_HasAttributes;
    report.m_AttributeRevision = static_cast<std::uint16_t>(c.m_PageRevision.value_or(0));
    report.m_Attributes = std::move(c.m_Attributes);

    switch (report.m_Protocol) {
        case Protocol::NVME:
            if (c.m_UnitsWritten) {
                report.m_StatisticsWritten = *c.m_UnitsWritten * NVME_DATA_UNIT;
            }
            if (c.m_UnitsRead) {
                report.m_StatisticsRead = *c.m_UnitsRead * NVME_DATA_UNIT;
            }
            return true;
        case Protocol::SCSI:
            return ReadGigabytes("scsi_error_counter_log.write.gigabytes_processed", c.m_GigabytesWritten,
                                 report.m_StatisticsWritten, reason) &&
                   ReadGigabytes("scsi_error_counter_log.read.gigabytes_processed", c.m_GigabytesRead,
                                 report.m_StatisticsRead, reason);
        case Protocol::ATA: break;
    }
    const std::uint64_t blockSize = c.m_BlockSize.value_or(512);
    return ReadSectors("Logical Sectors Written", c.m_SectorsWritten, blockSize, report.m_StatisticsWritten,
                       reason) &&
           ReadSectors("Logical Sectors Read", c.m_SectorsRead, blockSize, report.m_StatisticsRead, reason);
}

}  // namespace

bool ReadSmartctlReport(std::string_view text, DriveReport& report, std::string& reason) {
    Collector collector(text);
    if (!nlohmann::json::sax_parse(text.begin(), text.end(), &collector)) {
        reason = std::move(collector.m_Reason);
        return false;
    }
    return FinishReport(std::move(collector.m_Collected), report, reason);
}

}  // namespace pitool
