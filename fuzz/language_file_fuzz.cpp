// SPDX-License-Identifier: Apache-2.0
// Language files: taken whole, or refused with the place while the texts stay as they were.
#include <velkx/language_support.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <pugixml.hpp>
#include <stdexcept>

#include "check.h"

namespace {

constexpr unsigned KEPT = 4000000000;
constexpr const char* KEPT_TEXT = "stays";

/// A file in memory that has a path, with the content given.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size) : m_File(memfd_create("strings", 0)) {
        CHECK(m_File >= 0);
        CHECK(write(m_File, data, size) == static_cast<ssize_t>(size));
    }
    ~MemoryFile() { close(m_File); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string Path() const { return "/proc/self/fd/" + std::to_string(m_File); }

private:
    int m_File;
};

std::string TextOf(unsigned id) {
    std::string text = "before";
    CLanguageSupport::ResolveString(id, text);
    return text;
}

/// Each String element of the file gives its text.
void CheckTaken(const std::uint8_t* data, std::size_t size) {
    pugi::xml_document document;
    CHECK(document.load_buffer(data, size, pugi::parse_default | pugi::parse_ws_pcdata));
    for (const auto& selected : document.select_nodes("/Strings/String")) {
        std::string expected;
        for (const pugi::xml_node part : selected.node().children()) {
            expected += part.value();
        }
        const unsigned long long id = selected.node().attribute("id").as_ullong();
        CHECK(id <= 0xFFFFFFFF);
        CHECK_TEXT(TextOf(static_cast<unsigned>(id)), expected);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CLanguageSupport::Clear();
    CLanguageSupport::SetString(KEPT, KEPT_TEXT);
    const MemoryFile file(data, size);
    try {
        CLanguageSupport::LoadFile(file.Path());
    } catch (const std::runtime_error& error) {
        CHECK(std::string(error.what()).rfind(file.Path() + ":", 0) == 0);
        CHECK_TEXT(TextOf(KEPT), KEPT_TEXT);
        CHECK_TEXT(TextOf(1), "");
        return 0;
    }
    CheckTaken(data, size);
    return 0;
}
