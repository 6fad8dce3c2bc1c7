#include "model/xml_copy.h"

#include <new>
#include <string>

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

// Indentation makes a text up to so many times as long as the document is.
constexpr int MAX_INDENTED_LEVELS = 64;

bool IsNestedDeeply(const VELK::XML::xml_document& document) {
    int level = 0;
    VELK::XML::xml_node node = document.first_child();
    while (node) {
        if (const VELK::XML::xml_node child = node.first_child()) {
            if (++level > MAX_INDENTED_LEVELS) {
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

std::string TextOf(const VELK::XML::xml_document& document) {
    StringWriter writer;
    // The text of a document that is nested deeply would be of the square of its size. Without indentation it
    // says the same: white space between elements is not read.
    document.save(writer, IsNestedDeeply(document) ? "" : "\t", SAVE_FLAGS, VELK::XML::encoding_auto);
    return std::move(writer.m_Text);
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
    const std::string text = TextOf(source);
    if (target.load_string(text.c_str(), PARSE_OPTIONS).status == VELK::XML::status_out_of_memory) {
        throw std::bad_alloc();
    }
}

bool EqualDocuments(const VELK::XML::xml_document& left, const VELK::XML::xml_document& right) {
    return (IsEmpty(left) && IsEmpty(right)) || TextOf(left) == TextOf(right);
}

}  // namespace PI
