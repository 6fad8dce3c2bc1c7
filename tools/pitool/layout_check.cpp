// SPDX-License-Identifier: Apache-2.0

#include "layout_check.h"

#include "layout_units.h"
#include "print/text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

namespace pitool {
namespace {

using VELK::XML::xml_attribute;
using VELK::XML::xml_node;

/// Whether a text is one that the library reads as 0 or 1, so that a record which holds that number does not
/// hold it for want of a better one.
bool Writes(std::string_view text, char digit) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        text.remove_prefix(1);
    }
    return !text.empty() && text.back() == digit &&
           text.substr(0, text.size() - 1).find_first_not_of('0') == std::string_view::npos;
}

/// Collects what is odd about the attributes of one element.
class ElementCheck {
public:
    explicit ElementCheck(const xml_node& element) : m_Element(element) {}

    void Number(const char* name, std::uint64_t taken) {
        if (!FellBack(name, taken == 0, '0') && Value(name).find('-') != std::string::npos && taken != 0) {
            Note(name + (" " + Quoted(Value(name))) + " wraps to " + std::to_string(taken));
        }
    }

    void Flag(const char* name, bool taken) { FellBack(name, taken, '1'); }

    void Units(const char* name, PI::_UNITS taken) {
        const bool unknown = UnitName(taken).empty() && taken != PI::Units::UNSPECIFIED;
        if (!FellBack(name, taken == 0, '0') && unknown) {
            Note(std::string(name) + " " + std::to_string(taken) + " is no unit");
        }
    }

    const std::string& Text() const { return m_Text; }

private:
    std::string Value(const char* name) const { return m_Element.attribute(name).value(); }

    bool FellBack(const char* name, bool isFallback, char fallback) {
        const xml_attribute attribute = m_Element.attribute(name);
        if (!isFallback || Writes(attribute.value(), fallback)) {
            return false;
        }
        const std::string what = !attribute ? " is missing"
                                 : *attribute.value() == '\0'
                                     ? " is empty"
                                     : " " + Quoted(attribute.value()) + " is no number";
        Note(name + what + ", taken as " + fallback);
        return true;
    }

    void Note(const std::string& note) { m_Text += (m_Text.empty() ? "" : "; ") + note; }

    xml_node m_Element;
    std::string m_Text;
};

/// Walks a document in its own order; the library reads each list in that order too.
class LayoutCheck {
public:
    explicit LayoutCheck(const std::string& text) : m_Text(text) {}

    void Root(const xml_node& root, const ElementCheck& check) { Warn(root, check); }

    void Containers(const xml_node& list, const std::vector<PI::CContainer>& containers) {
        for (const xml_node container : list.children()) {
            if (!IsRead(container, "Container")) {
                continue;
            }
            std::size_t drive = 0;
            for (const xml_node child : container.children()) {
                if (child.type() == VELK::XML::node_element) {
                    Drive(child, containers.at(m_Container).m_Drives.at(drive++));
                }
            }
            ++m_Container;
        }
    }

    /// @param next counts the identifiers of lists that stand several times
    void ObjectIDs(const xml_node& list, const char* element, const std::vector<std::uint64_t>& ids,
                   std::size_t& next) {
        for (const xml_node node : list.children()) {
            if (IsRead(node, element)) {
                ElementCheck check(node);
                check.Number("ObjectID", ids.at(next++));
                Warn(node, check);
                Unread(node);
            }
        }
    }

    void NotRead(const xml_node& node) {
        if (node.type() == VELK::XML::node_element) {
            Add(node, "is not read");
        }
    }

    LayoutWarnings Take() { return std::move(m_Warnings); }

private:
    void Drive(const xml_node& node, const PI::CDrive& drive) {
        ElementCheck check(node);
        check.Number("ObjectID", drive.m_ObjectID);
        check.Number("StartAddress", drive.m_StartAddress);
        check.Number("UsedSize", drive.m_UsedSize);
        check.Flag("IsConfigurable", drive.m_IsConfigurable);
        check.Number("LogicalDrive", drive.m_LogicalDrive);
        check.Number("LogicalOwner", drive.m_LogicalOwner);
        Warn(node, check);
        Unread(node);
    }

    bool IsRead(const xml_node& node, const char* name) {
        if (node.type() == VELK::XML::node_element && std::strcmp(node.name(), name) == 0) {
            return true;
        }
        NotRead(node);
        return false;
    }

    void Unread(const xml_node& parent) {
        for (const xml_node child : parent.children()) {
            NotRead(child);
        }
    }

    void Warn(const xml_node& element, const ElementCheck& check) {
        if (!check.Text().empty()) {
            Add(element, check.Text());
        }
    }

    void Add(const xml_node& element, const std::string& text) {
        if (m_Warnings.m_Kept.size() == MAX_LAYOUT_WARNINGS) {
            ++m_Warnings.m_LeftOut;
            return;
        }
        m_Warnings.m_Kept.push_back(
            {PlaceOfElement(m_Text, element), std::string(element.name()) + ": " + text});
    }

    const std::string& m_Text;
    LayoutWarnings m_Warnings;
    std::size_t m_Container = 0;
};

/// A list of identifiers within the root element.
struct IDList {
    const char* m_Name;
    const char* m_Element;
    const std::vector<std::uint64_t>& m_IDs;
    std::size_t m_Next = 0;
};

void CheckLists(LayoutCheck& check, const xml_node& root, const std::vector<PI::CContainer>& containers,
                std::vector<IDList> lists) {
    for (const xml_node node : root.children()) {
        bool read = false;
        if (std::strcmp(node.name(), "Containers") == 0) {
            check.Containers(node, containers);
            read = true;
        }
        for (IDList& list : lists) {
            if (std::strcmp(node.name(), list.m_Name) == 0) {
                check.ObjectIDs(node, list.m_Element, list.m_IDs, list.m_Next);
                read = true;
            }
        }
        if (!read) {
            check.NotRead(node);
        }
    }
}

}  // namespace

LayoutWarnings CheckArray(const std::string& text, const xml_node& root, const PI::CArray& array) {
    ElementCheck attributes(root);
    attributes.Number("Size", array.m_Size);
    attributes.Units("Units", array.m_Units);
    LayoutCheck check(text);
    check.Root(root, attributes);
    CheckLists(check, root, array.m_Containers, {{"LogicalDrives", "LogicalDrive", array.m_LogicalDrives}});
    return check.Take();
}

LayoutWarnings CheckLogicalDrive(const std::string& text, const xml_node& root,
                                 const PI::CLogicalDrive& drive) {
    ElementCheck attributes(root);
    attributes.Number("Size", drive.m_Size);
    attributes.Units("Units", drive.m_Units);
    attributes.Number("SpanCount", drive.m_SpanCount);
    attributes.Number("SpanSize", drive.m_SpanSize);
    LayoutCheck check(text);
    check.Root(root, attributes);
    CheckLists(check, root, drive.m_Containers,
               {{"GlobalHotSpares", "Drive", drive.m_GlobalHotSpares},
                {"DedicatedHotSpares", "Drive", drive.m_DedicatedHotSpares},
                {"AssociatedLogicalDrives", "LogicalDrive", drive.m_AssociatedLogicalDrives}});
    return check.Take();
}

TextPlace PlaceOfElement(const std::string& text, const xml_node& element) {
    // The parser remembers where the name stands, one byte behind the bracket.
    return PlaceOf(text, static_cast<std::size_t>(element.offset_debug() - 1));
}

}  // namespace pitool
