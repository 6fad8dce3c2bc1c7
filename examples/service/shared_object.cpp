// SPDX-License-Identifier: Apache-2.0

#include "shared_object.h"

#include <elf.h>
#include <link.h>

#include <cstring>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace service {
namespace {

template <class Record>
bool Read(std::ifstream& stream, std::uintmax_t offset, Record* records, std::size_t count) {
    stream.seekg(static_cast<std::streamoff>(offset));
    stream.read(reinterpret_cast<char*>(records), static_cast<std::streamsize>(count * sizeof(Record)));
    return stream.good();
}

/// The header of this program.
Elf64_Ehdr OwnHeader() {
    Elf64_Ehdr header = {};
    std::ifstream program("/proc/self/exe", std::ios::binary);
    Read(program, 0, &header, 1);
    return header;
}

}  // namespace

void RequireSharedObject(const std::filesystem::path& file) {
    std::error_code error;
    const bool isFile = std::filesystem::is_regular_file(file, error);
    if (!isFile) {
        throw std::runtime_error(error ? error.message() : "is no file");
    }
    std::ifstream stream(file, std::ios::binary);
    Elf64_Ehdr header = {};
    if (!Read(stream, 0, &header, 1) || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) {
        throw std::runtime_error("is no shared library");
    }
    const Elf64_Ehdr own = OwnHeader();
    // Class and order of bytes, then the machine.
    if (std::memcmp(header.e_ident, own.e_ident, EI_VERSION) != 0 || header.e_machine != own.e_machine) {
        throw std::runtime_error("is made for another kind of machine");
    }
    if (header.e_type != ET_DYN) {
        throw std::runtime_error("is no shared library");
    }
    std::vector<Elf64_Phdr> segments(header.e_phnum);
    const std::uintmax_t size = std::filesystem::file_size(file);
    bool isWhole = Read(stream, header.e_phoff, segments.data(), segments.size());
    for (const Elf64_Phdr& segment : segments) {
        isWhole = isWhole && segment.p_offset <= size && segment.p_filesz <= size - segment.p_offset;
    }
    if (!isWhole) {
        throw std::runtime_error("breaks off");
    }
}

}  // namespace service
