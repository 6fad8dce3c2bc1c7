// SPDX-License-Identifier: Apache-2.0

#include "model/xml_copy.h"

#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace PI {

namespace {

// Plug-ins and service exchange this text form, so the options are part of the contract.
constexpr unsigned SAVE_FLAGS = 1;       // indentation
constexpr unsigned PARSE_OPTIONS = 116;  // the XML library's default set
static_assert(SAVE_FLAGS == VELK::XML::format_indent && PARSE_OPTIONS == VELK::XML::parse_default);

struct StringWriter : VELK::XML::xml_writer {
    void write(const void* data, std::size_t size) override {
        m_Text.append(static_cast<const char*>(data), size);
    }

    std::string m_Text;
};

/// Keeps of a run of tabs one, and their number: the indentation of a document that is nested deeply would
/// make its text of the square of its size.
struct FoldingWriter : VELK::XML::xml_writer {
    void write(const void* data, std::size_t size) override {
        for (const char character : std::string_view(static_cast<const char*>(data), size)) {
            const bool isTab = character == '\t';
            if (isTab && m_EndsInTab) {
                ++m_TabRuns.back();
                continue;
            }
            if (isTab) {
                m_TabRuns.push_back(1);
            }
            m_Text += character;
            m_EndsInTab = isTab;
        }
    }

    bool operator==(const FoldingWriter& other) const {
        return m_Text == other.m_Text && m_TabRuns == other.m_TabRuns;
    }

    std::string m_Text;
    std::vector<std::size_t> m_TabRuns;
    bool m_EndsInTab = false;
};

bool IsNestedDeeperThan(int maximum, const VELK::XML::xml_document& document) {
    int level = 0;
    VELK::XML::xml_node node = document.first_child();
    while (node) {
        if (const VELK::XML::xml_node child = node.first_child()) {
            if (++level > maximum) {
                return true;
            }
            node = child;
            continue;
        }
        while (node && !node.next_sibling()) {
            node = node.parent();
            --level;
        }
        node = node.next_sibling();
    }
    return false;
}

/// Indentation makes a text up to maximum times as long as the document is, and is left out beyond.
void Save(const VELK::XML::xml_document& document, int maximum, VELK::XML::xml_writer& writer) {
    const char* indent = IsNestedDeeperThan(maximum, document) ? "" : "\t";
    document.save(writer, indent, SAVE_FLAGS, VELK::XML::encoding_auto);
}

std::string TextToCopy(const VELK::XML::xml_document& document) {
    // Whether it is indented makes no difference: white space between elements is not read.
    constexpr int MAX_INDENTED_LEVELS = 64;
    StringWriter writer;
    Save(document, MAX_INDENTED_LEVELS, writer);
    return std::move(writer.m_Text);
}

FoldingWriter TextToCompare(const VELK::XML::xml_document& document) {
    // Makes a difference between documents that hold white space of their own between elements, so it ends
    // far beyond what anybody nests.
    constexpr int MAX_INDENTED_LEVELS = 1000;
    FoldingWriter writer;
    Save(document, MAX_INDENTED_LEVELS, writer);
    return writer;
}

bool IsEmpty(const VELK::XML::xml_document& document) {
    return !document.first_child();
}

}  // namespace

void CopyDocument(const VELK::XML::xml_document& source, VELK::XML::xml_document& target) {
    if (IsEmpty(source)) {  // nothing a text could lose or keep
        if (!IsEmpty(target)) {
            target.reset();
        }
        return;
    }
    const std::string text = TextToCopy(source);
    if (target.load_string(text.c_str(), PARSE_OPTIONS).status == VELK::XML::status_out_of_memory) {
        throw std::bad_alloc();
    }
}

bool EqualDocuments(const VELK::XML::xml_document& left, const VELK::XML::xml_document& right) {
    return (IsEmpty(left) && IsEmpty(right)) || TextToCompare(left) == TextToCompare(right);
}

}  // namespace PI
