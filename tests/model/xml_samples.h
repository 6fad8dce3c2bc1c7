// SPDX-License-Identifier: Apache-2.0
// Documents to copy: written ones and random ones, and the plain way to copy them.
#pragma once

#include <velk/xml.h>

#include <cstdint>
#include <initializer_list>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "support/random_seed.h"

namespace PI::Test {

constexpr unsigned PARSE_EVERYTHING =
    VELK::XML::parse_full | VELK::XML::parse_ws_pcdata | VELK::XML::parse_fragment;

/// The text by which documents are copied and compared.
inline std::string CopyText(const VELK::XML::xml_document& document) {
    std::ostringstream text;
    document.save(text, "\t", 1, VELK::XML::encoding_auto);
    return text.str();
}

/// Copies a document step by step: writes the text, then reads it.
inline void CopyByText(const VELK::XML::xml_document& source, VELK::XML::xml_document& target) {
    target.load_string(CopyText(source).c_str(), 116);
}

/// Every node and attribute below a node, with types, names and values told apart without any escaping.
inline void AppendTree(VELK::XML::xml_node node, std::string& text) {
    const auto append = [&text](const char* part) {
        const std::string part_(part);
        text += std::to_string(part_.size()) + ':' + part_;
    };
    text += '(' + std::to_string(node.type()) + ' ';
    append(node.name());
    append(node.value());
    for (const VELK::XML::xml_attribute& attribute : node.attributes()) {
        text += '@';
        append(attribute.name());
        append(attribute.value());
    }
    for (const VELK::XML::xml_node& child : node.children()) {
        AppendTree(child, text);
    }
    text += ')';
}

inline std::string TreeOf(const VELK::XML::xml_document& document) {
    std::string text;
    AppendTree(document, text);
    return text;
}

/// Makes documents at random, among them such as no text can hold.
class DocumentMaker {
public:
    explicit DocumentMaker(std::uint32_t seed) : m_Random(seed) {}

    void Make(VELK::XML::xml_document& document) {
        document.reset();
        if (Chance(4)) {
            VELK::XML::xml_node declaration = document.append_child(VELK::XML::node_declaration);
            declaration.append_attribute("version") = Pick({"1.0", "1.1", ""});
            if (Chance(2)) {
                declaration.append_attribute("encoding") = Pick({"UTF-8", "latin1", "utf-16"});
            }
        }
        if (Chance(5)) {
            document.append_child(VELK::XML::node_doctype)
                .set_value(Pick({"A", "A [<!ENTITY e \"x\">]", ""}));
        }
        AppendChildren(document, 0);
    }

private:
    bool Chance(std::uint32_t oneIn) { return Below(m_Random, oneIn) == 0; }

    const char* Pick(std::initializer_list<const char*> choices) {
        return choices.begin()[Below(m_Random, static_cast<std::uint32_t>(choices.size()))];
    }

    std::string Text() {
        std::string text;
        for (std::uint32_t i = Below(m_Random, 6); i > 0; --i) {
            text += Pick({"a",
                          "Z",
                          "0",
                          " ",
                          "  ",
                          "\t",
                          "\n",
                          "\r",
                          "\r\n",
                          "<",
                          ">",
                          "&",
                          "&amp;",
                          "&#10;",
                          "\"",
                          "'",
                          "]]>",
                          "--",
                          "?>",
                          "/>",
                          "\x01",
                          "\x1F",
                          "\x7F",
                          "\xC3\xA4",
                          "\xE2\x82\xAC",
                          "\xF0\x9F\x92\xBE",
                          "a rather long run of text"});
        }
        return text;
    }

    std::string Name() {
        if (Chance(100)) {
            return Pick({"", "a b", "<", "1", "a=", "a/b"});  // makes the text unreadable or different
        }
        return Pick({"A", "b", "Array", "long-name.with_all:kinds", "\xC3\xA4"});
    }

    void AppendChildren(VELK::XML::xml_node parent, int depth) {
        for (std::uint32_t i = Below(m_Random, depth == 0 ? 3 : 5); i > 0; --i) {
            AppendChild(parent, depth);
        }
    }

    void AppendChild(VELK::XML::xml_node parent, int depth) {
        using namespace VELK::XML;
        const bool isInside = depth > 0;
        switch (Below(m_Random, 8)) {
            case 0: parent.append_child(node_comment).set_value(Text().c_str()); break;
            case 1: {
                xml_node instruction = parent.append_child(node_pi);
                instruction.set_name(Name().c_str());
                instruction.set_value(Text().c_str());
                break;
            }
            case 2:
                if (isInside) {
                    parent.append_child(node_cdata).set_value(Text().c_str());
                }
                break;
            case 3:
            case 4:
                if (isInside) {
                    parent.append_child(node_pcdata).set_value(Text().c_str());
                }
                break;
            default: {
                xml_node element = parent.append_child(Name().c_str());
                for (std::uint32_t i = Below(m_Random, 4); i > 0; --i) {
                    element.append_attribute(Name().c_str()) = Text().c_str();
                }
                if (depth < 5) {
                    AppendChildren(element, depth + 1);
                }
            }
        }
    }

    std::mt19937 m_Random;
};

}  // namespace PI::Test
