// SPDX-License-Identifier: Apache-2.0

#include <pi/layout.h>

#include <cstring>

#include "util/number_reader.h"

namespace PI {

namespace {

using VELK::XML::xml_document;
using VELK::XML::xml_node;

bool IsElement(const xml_node& node) {
    return node.type() == VELK::XML::node_element;
}

bool IsElement(const xml_node& node, const char* name) {
    return IsElement(node) && std::strcmp(node.name(), name) == 0;
}

/// Reads the elements and attributes that both kinds of document have.
class DocumentReader {
public:
    DocumentReader(const xml_document& document, const char* rootName)
        : m_Document(document), m_RootName(rootName) {
        for (const xml_node node : document.children()) {
            if (IsElement(node, rootName)) {
                m_Root = node;
                break;
            }
        }
    }

    std::uint64_t RootNumber(const char* attribute) { return Number<std::uint64_t>(m_Root, attribute, 0); }

    _UNITS RootUnits() { return static_cast<_UNITS>(Number<std::int32_t>(m_Root, "Units", 0)); }

    void ReadContainers(std::vector<CContainer>& containers) {
        ForEach("Containers", "Container", [&](const xml_node& node) {
            CContainer& container = containers.emplace_back();
            for (const xml_node child : node.children()) {
                if (IsElement(child)) {
                    ReadDrive(child, container.m_Drives.emplace_back());
                }
            }
        });
    }

    void ReadObjectIDs(const char* list, const char* element, std::vector<std::uint64_t>& ids) {
        ForEach(list, element,
                [&](const xml_node& node) { ids.push_back(Number<std::uint64_t>(node, "ObjectID", 0)); });
    }

private:
    void ReadDrive(const xml_node& node, CDrive& drive) {
        drive.m_ObjectID = Number<std::uint64_t>(node, "ObjectID", 0);
        drive.m_StartAddress = Number<std::uint64_t>(node, "StartAddress", 0);
        drive.m_UsedSize = Number<std::uint64_t>(node, "UsedSize", 0);
        drive.m_IsConfigurable = Number<bool>(node, "IsConfigurable", true);
        drive.m_LogicalDrive = Number<std::uint64_t>(node, "LogicalDrive", 0);
        drive.m_LogicalOwner = Number<std::uint64_t>(node, "LogicalOwner", 0);
    }

    template <class Value>
    Value Number(const xml_node& node, const char* attribute, Value fallback) {
        return m_Numbers.Read<Value>(node.attribute(attribute).value()).value_or(fallback);
    }

    /// Visits the elements of a list, of every root and list of these names, in document order.
    template <class Visitor>
    void ForEach(const char* list, const char* element, Visitor visit) const {
        for (const xml_node root : m_Document.children()) {
            if (!IsElement(root, m_RootName)) {
                continue;
            }
            for (const xml_node listNode : root.children()) {
                if (!IsElement(listNode, list)) {
                    continue;
                }
                for (const xml_node node : listNode.children()) {
                    if (IsElement(node, element)) {
                        visit(node);
                    }
                }
            }
        }
    }

    const xml_document& m_Document;
    const char* m_RootName;
    xml_node m_Root;
    NumberReader m_Numbers;
};

}  // namespace

CArray::CArray(xml_document& document) {
    DocumentReader reader(document, "ArrayConfiguration");
    m_Size = reader.RootNumber("Size");
    m_Units = reader.RootUnits();
    reader.ReadContainers(m_Containers);
    reader.ReadObjectIDs("LogicalDrives", "LogicalDrive", m_LogicalDrives);
}

CLogicalDrive::CLogicalDrive(xml_document& document) {
    DocumentReader reader(document, "LogicalDriveConfiguration");
    m_Size = reader.RootNumber("Size");
    m_Units = reader.RootUnits();
    m_SpanCount = reader.RootNumber("SpanCount");
    m_SpanSize = reader.RootNumber("SpanSize");
    reader.ReadContainers(m_Containers);
    reader.ReadObjectIDs("GlobalHotSpares", "Drive", m_GlobalHotSpares);
    reader.ReadObjectIDs("DedicatedHotSpares", "Drive", m_DedicatedHotSpares);
    reader.ReadObjectIDs("AssociatedLogicalDrives", "LogicalDrive", m_AssociatedLogicalDrives);
}

}  // namespace PI
