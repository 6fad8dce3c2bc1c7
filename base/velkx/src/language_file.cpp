// SPDX-License-Identifier: Apache-2.0

#include "language_file.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <new>
#include <pugixml.hpp>
#include <stdexcept>
#include <system_error>

namespace language_file {

namespace {

/// A language file that is being read, with the places in it.
class LanguageFile {
public:
    LanguageFile(const std::string& name, const std::string& content) : m_Name(name), m_Content(content) {}

    Texts Parse() const {
        // As a fragment, so that text outside the root element is not ignored.
        pugi::xml_document document;
        Load(pugi::parse_fragment, document);
        const pugi::xml_node root = document.first_child();
        if (std::strcmp(root.name(), "Strings") != 0) {
            Fail(root.offset_debug(), "the root element is not Strings");
        }
        if (const pugi::xml_node rest = root.next_sibling()) {
            Fail(rest.offset_debug(), "nothing may follow the root element");
        }
        // Once more for the texts, of which white space is a part. As a fragment the parser would then accept
        // a file that is cut off after a "<".
        pugi::xml_document texts;
        Load(pugi::parse_ws_pcdata, texts);
        pugi::xml_node text = texts.document_element().child("String");
        Texts found;
        for (const pugi::xml_node child : root.children()) {
            if (std::strcmp(child.name(), "String") != 0) {
                Fail(child.offset_debug(), "only String elements may be in Strings");
            }
            if (!found.emplace(Id(child), Text(text)).second) {
                Fail(child.offset_debug(),
                     "the id " + std::string(child.attribute("id").value()) + " occurs twice");
            }
            text = text.next_sibling("String");
        }
        return found;
    }

private:
    void Load(unsigned int options, pugi::xml_document& document) const {
        const pugi::xml_parse_result result =
            document.load_buffer(m_Content.data(), m_Content.size(), pugi::parse_default | options);
        if (result.status == pugi::status_out_of_memory) {
            throw std::bad_alloc();
        }
        if (!result) {
            Fail(result.offset, result.description());
        }
    }

    unsigned int Id(const pugi::xml_node& node) const {
        const char* text = node.attribute("id").value();
        const char* end = text + std::strlen(text);
        unsigned int id = 0;
        const auto [rest, error] = std::from_chars(text, end, id);
        if (error != std::errc() || rest != end) {
            Fail(node.offset_debug(), "a String element needs a number as its id");
        }
        return id;
    }

    std::string Text(const pugi::xml_node& node) const {
        std::string text;
        for (const pugi::xml_node part : node.children()) {
            if (part.type() != pugi::node_pcdata && part.type() != pugi::node_cdata) {
                Fail(part.offset_debug(), "a String element may contain only text");
            }
            text += part.value();
        }
        return text;
    }

    [[noreturn]] void Fail(std::ptrdiff_t offset, const std::string& reason) const {
        const auto end = m_Content.begin() +
                         std::clamp<std::ptrdiff_t>(offset, 0, static_cast<std::ptrdiff_t>(m_Content.size()));
        const auto line = 1 + std::count(m_Content.begin(), end, '\n');
        const auto lineStart = std::find(std::make_reverse_iterator(end), m_Content.rend(), '\n').base();
        throw std::runtime_error(m_Name + ":" + std::to_string(line) + ":" +
                                 std::to_string(1 + (end - lineStart)) + ": " + reason);
    }

    const std::string& m_Name;
    const std::string& m_Content;
};

}  // namespace

std::string Read(const std::string& path) {
    constexpr std::size_t MAX_SIZE = std::size_t{64} * 1024 * 1024;
    std::ifstream file(path, std::ios::binary);
    std::string content;
    char part[16384];
    do {
        file.read(part, sizeof(part));
        content.append(part, static_cast<std::size_t>(file.gcount()));
    } while (file && content.size() <= MAX_SIZE);
    if (!file.is_open() || file.bad()) {
        throw std::runtime_error(path + ": cannot be read: " + std::generic_category().message(errno));
    }
    if (content.size() > MAX_SIZE) {
        throw std::runtime_error(path + ": larger than 64 mebibytes");
    }
    return content;
}

Texts Parse(const std::string& content, const std::string& name) {
    return LanguageFile(name, content).Parse();
}

}  // namespace language_file
