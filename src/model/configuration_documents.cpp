// SPDX-License-Identifier: Apache-2.0

#include <pi/layout.h>
#include <pi/layout_reading.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "model/finding_list.h"
#include "util/number_reader.h"

namespace PI {

namespace {

using VELK::XML::xml_attribute;
using VELK::XML::xml_document;
using VELK::XML::xml_node;

bool IsElement(const xml_node& node) {
    return node.type() == VELK::XML::node_element;
}

bool IsElement(const xml_node& node, const char* name) {
    return IsElement(node) && std::strcmp(node.name(), name) == 0;
}

/// A number that is only too large to be read.
bool IsWholeNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    text.remove_prefix(!text.empty() && (text.front() == '+' || text.front() == '-') ? 1 : 0);
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Reads elements and attributes, and reports what is wrong with them if a list of findings is given.
class DocumentReader {
public:
    explicit DocumentReader(FindingList* findings) : m_Findings(findings) {}

    template <class Value>
    Value Number(const xml_node& node, const char* name, Value fallback) {
        const xml_attribute attribute = node.attribute(name);
        const std::optional<Value> number = m_Numbers.Read<Value>(attribute.value());
        const Value value = number.value_or(fallback);
        if (m_Findings != nullptr) {
            const bool mayBeNegative = std::is_unsigned_v<Value> && value != 0;
            CheckNumber(node, attribute, name,
                        number.has_value() ? nullptr : Wrong(attribute, std::is_same_v<Value, bool>),
                        mayBeNegative, std::to_string(value));
        }
        return value;
    }

    _UNITS Units(const xml_node& node) {
        constexpr const char* NAME = "Units";
        const auto units = static_cast<_UNITS>(Number<std::int32_t>(node, NAME, 0));
        if (m_Findings != nullptr && !IsUnit(units) &&
            m_Numbers.Read<std::int32_t>(node.attribute(NAME).value())) {
            m_Findings->Add(node, NAME, std::string(NAME) + " " + std::to_string(units) + " is no unit");
        }
        return units;
    }

    void ReadContainers(const xml_node& list, std::vector<CContainer>& containers) {
        for (const xml_node node : list.children()) {
            if (!IsElement(node, "Container")) {
                Ignore(node);
                continue;
            }
            CContainer& container = containers.emplace_back();
            for (const xml_node child : node.children()) {
                if (IsElement(child)) {
                    ReadDrive(child, container.m_Drives.emplace_back());
                }
            }
        }
    }

    void ReadObjectIDs(const xml_node& list, const char* element, std::vector<std::uint64_t>& ids) {
        for (const xml_node node : list.children()) {
            if (IsElement(node, element)) {
                ids.push_back(Number<std::uint64_t>(node, "ObjectID", 0));
                IgnoreChildren(node);
            } else {
                Ignore(node);
            }
        }
    }

    /// Nothing is read from a node.
    void Ignore(const xml_node& node, const char* why = "is not read") {
        if (m_Findings != nullptr && IsElement(node)) {
            m_Findings->Add(node, "", why);
        } else if (m_Findings != nullptr && node.parent() == node.root()) {
            m_Findings->AddText(node, why);
        }
    }

private:
    void ReadDrive(const xml_node& node, CDrive& drive) {
        drive.m_ObjectID = Number<std::uint64_t>(node, "ObjectID", 0);
        drive.m_StartAddress = Number<std::uint64_t>(node, "StartAddress", 0);
        drive.m_UsedSize = Number<std::uint64_t>(node, "UsedSize", 0);
        drive.m_IsConfigurable = Number<bool>(node, "IsConfigurable", true);
        drive.m_LogicalDrive = Number<std::uint64_t>(node, "LogicalDrive", 0);
        drive.m_LogicalOwner = Number<std::uint64_t>(node, "LogicalOwner", 0);
        IgnoreChildren(node);
    }

    void IgnoreChildren(const xml_node& node) {
        if (m_Findings != nullptr) {
            for (const xml_node child : node.children()) {
                Ignore(child);
            }
        }
    }

    /// Why an attribute is no number of its kind.
    static const char* Wrong(const xml_attribute& attribute, bool isFlag) {
        return !attribute                         ? " is missing"
               : *attribute.value() == '\0'       ? " is empty"
               : isFlag                           ? " is neither 0 nor 1"
               : IsWholeNumber(attribute.value()) ? " is out of range"
                                                  : " is no number";
    }

    /// @param wrong   null: the number was read
    /// @param assumed what the record has
    void CheckNumber(const xml_node& node, const xml_attribute& attribute, const char* name,
                     const char* wrong, bool mayBeNegative, const std::string& assumed) {
        const std::string text = attribute.value();
        const std::string quoted = text.empty() ? "" : " " + QuotedValue(text);
        for (xml_attribute other = attribute.next_attribute(); other; other = other.next_attribute()) {
            if (std::strcmp(other.name(), name) == 0) {
                m_Findings->Add(node, name, name + std::string(" is there twice"), QuotedValue(text));
                break;
            }
        }
        if (wrong == nullptr && mayBeNegative && text.find('-') != std::string::npos) {
            wrong = " is negative";
        }
        if (wrong != nullptr) {
            m_Findings->Add(node, name, name + quoted + wrong, assumed);
        }
    }

    static bool IsUnit(_UNITS units) {
        switch (units) {
            case Units::BYTES:
            case Units::KILOBYTES:
            case Units::MEGABYTES:
            case Units::GIGABYTES:
            case Units::TERABYTES:
            case Units::PETABYTES:
            case Units::UNSPECIFIED: return true;
        }
        return false;
    }

    FindingList* m_Findings;  // null: not reported
    NumberReader m_Numbers;
};

/// A list of identifiers in the root element.
struct IDList {
    const char* m_Name;
    const char* m_Element;
    std::vector<std::uint64_t>& m_IDs;
};

/// What makes up one kind of document.
/// @{
constexpr const char* ARRAY = "ArrayConfiguration";
constexpr const char* LOGICAL_DRIVE = "LogicalDriveConfiguration";

const char* RootName(const CArray&) {
    return ARRAY;
}
const char* RootName(const CLogicalDrive&) {
    return LOGICAL_DRIVE;
}

void ReadAttributes(DocumentReader& reader, const xml_node& root, CArray& array) {
    array.m_Size = reader.Number<std::uint64_t>(root, "Size", 0);
    array.m_Units = reader.Units(root);
}
void ReadAttributes(DocumentReader& reader, const xml_node& root, CLogicalDrive& drive) {
    drive.m_Size = reader.Number<std::uint64_t>(root, "Size", 0);
    drive.m_Units = reader.Units(root);
    drive.m_SpanCount = reader.Number<std::uint64_t>(root, "SpanCount", 0);
    drive.m_SpanSize = reader.Number<std::uint64_t>(root, "SpanSize", 0);
}

std::array<IDList, 1> IDListsOf(CArray& array) {
    return {{{"LogicalDrives", "LogicalDrive", array.m_LogicalDrives}}};
}
std::array<IDList, 3> IDListsOf(CLogicalDrive& drive) {
    return {{{"GlobalHotSpares", "Drive", drive.m_GlobalHotSpares},
             {"DedicatedHotSpares", "Drive", drive.m_DedicatedHotSpares},
             {"AssociatedLogicalDrives", "LogicalDrive", drive.m_AssociatedLogicalDrives}}};
}
/// @}

template <class Record>
void ReadLists(DocumentReader& reader, const xml_node& root, Record& record) {
    for (const xml_node node : root.children()) {
        bool isList = IsElement(node, "Containers");
        if (isList) {
            reader.ReadContainers(node, record.m_Containers);
        }
        for (const IDList& list : IDListsOf(record)) {
            if (IsElement(node, list.m_Name)) {
                reader.ReadObjectIDs(node, list.m_Element, list.m_IDs);
                isList = true;
            }
        }
        if (!isList) {
            reader.Ignore(node);
        }
    }
}

/// Of several roots of the name the first gives the attributes, and all give their lists.
template <class Record>
void ReadDocument(const xml_document& document, Record& record, FindingList* findings = nullptr) {
    DocumentReader reader(findings);
    record.m_Units = static_cast<_UNITS>(0);
    bool isFirst = true;
    for (const xml_node root : document.children()) {
        if (!IsElement(root, RootName(record))) {
            reader.Ignore(root);
            continue;
        }
        if (isFirst) {
            ReadAttributes(reader, root, record);
        } else {
            reader.Ignore(root, "is another root: only its lists are read");
        }
        isFirst = false;
        ReadLists(reader, root, record);
    }
}

bool IsWide(VELK::XML::xml_encoding encoding) {
    return encoding != VELK::XML::encoding_utf8 && encoding != VELK::XML::encoding_latin1;
}

/// Why nothing is read from a text, and at which of its bytes as the parser counts them, or null.
const char* Refusal(std::string_view text, const VELK::XML::xml_parse_result& result, std::size_t& offset) {
    offset = static_cast<std::size_t>(result.offset);
    if (IsWide(result.encoding)) {
        offset = 0;
        return "UTF-16 or UTF-32 where UTF-8 is expected";
    }
    if (const std::size_t zero = text.find('\0'); zero != std::string_view::npos) {
        offset = zero;  // the parser takes it for the end
        return "a zero byte";
    }
    return result ? nullptr : result.description();
}

/// The element that decides what a document describes, or null.
xml_node FindRoot(const xml_document& document) {
    for (const xml_node node : document.children()) {
        if (IsElement(node, ARRAY) || IsElement(node, LOGICAL_DRIVE)) {
            return node;
        }
    }
    return {};
}

template <class Record>
void Replace(const xml_document& document, FindingList& list, Record& record,
             std::vector<CLayoutFinding>& findings) {
    Record read;
    ReadDocument(document, read, &list);
    list.AppendTo(findings);
    record = std::move(read);
}

}  // namespace

CArray::CArray(xml_document& document) {
    ReadDocument(document, *this);
}

CLogicalDrive::CLogicalDrive(xml_document& document) {
    ReadDocument(document, *this);
}

_LAYOUT_KIND ReadLayout(const char* text, std::size_t length, CArray& array, CLogicalDrive& logicalDrive,
                        std::vector<CLayoutFinding>& findings) {
    const std::string_view whole(text, length);
    xml_document document;
    // As a fragment, so that text outside of elements is found, unless it is refused otherwise.
    VELK::XML::xml_parse_result result =
        document.load_buffer(text, length, VELK::XML::parse_default | VELK::XML::parse_fragment);
    if (!result || !document.document_element() || text[length - 1] == '<') {
        result = document.load_buffer(text, length);
    }
    if (result.status == VELK::XML::status_out_of_memory) {
        throw std::bad_alloc();
    }
    FindingList list(whole, result.encoding == VELK::XML::encoding_latin1);
    const xml_node root = FindRoot(document);
    std::size_t offset = 0;
    if (const char* why = Refusal(whole, result, offset)) {
        list.AddAt(offset, "", "", std::string("no well-formed XML: ") + why);
    } else if (!root) {
        const xml_node other = document.document_element();
        list.Add(other, "",
                 "the root element is " + QuotedValue(other.name()) + ", neither " + ARRAY + " nor " +
                     LOGICAL_DRIVE);
    } else if (std::strcmp(root.name(), ARRAY) == 0) {
        Replace(document, list, array, findings);
        return LayoutKind::ARRAY;
    } else {
        Replace(document, list, logicalDrive, findings);
        return LayoutKind::LOGICAL_DRIVE;
    }
    list.AppendTo(findings);
    return LayoutKind::NONE;
}

}  // namespace PI
