// SPDX-License-Identifier: Apache-2.0

#include "model_xml.h"

#include <new>

namespace PI {

namespace {

namespace XML = VELK::XML;

// Comments, declarations and white space are read as well, and no line break is changed.
constexpr unsigned PARSE_OPTIONS = XML::parse_pi | XML::parse_comments | XML::parse_cdata |
                                   XML::parse_escapes | XML::parse_declaration | XML::parse_doctype |
                                   XML::parse_ws_pcdata | XML::parse_fragment;

struct StringWriter : XML::xml_writer {
    void write(const void* data, std::size_t size) override {
        m_Text.append(static_cast<const char*>(data), size);
    }

    std::string m_Text;
};

std::string Save(const XML::xml_document& document) {
    StringWriter writer;
    document.save(writer, "", XML::format_raw | XML::format_no_declaration, XML::encoding_utf8);
    constexpr const char* BYTE_ORDER_MARK = "\xEF\xBB\xBF";
    if (writer.m_Text.compare(0, 3, BYTE_ORDER_MARK) == 0) {
        writer.m_Text.insert(0, BYTE_ORDER_MARK);  // readers drop the first one
    }
    return std::move(writer.m_Text);
}

}  // namespace

std::string TextOfXml(const XML::xml_document& document) {
    std::string text = Save(document);
    XML::xml_document readable;
    if (XmlOfText(text.data(), text.size(), readable) != nullptr) {
        text = Save(readable);
    }
    return text;
}

const char* XmlOfText(const char* text, std::size_t length, XML::xml_document& document) {
    const XML::xml_parse_result result =
        document.load_buffer(text, length, PARSE_OPTIONS, XML::encoding_utf8);
    if (result.status == XML::status_out_of_memory) {
        throw std::bad_alloc();
    }
    return result ? nullptr : result.description();
}

}  // namespace PI
