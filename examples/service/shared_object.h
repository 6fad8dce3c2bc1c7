// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a file is, before it is loaded.
#pragma once

#include <elf.h>
#include <link.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace service {

/// The loader waits at a pipe, and dies of a library that is cut off.
/// @throws std::runtime_error saying why the file is no whole shared library for this machine
inline void RequireSharedObject(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        throw std::runtime_error(error ? error.message() : "is no file");
    }
    const auto read = [](std::ifstream& stream, std::uintmax_t offset, auto* records, std::size_t count) {
        stream.seekg(static_cast<std::streamoff>(offset));
        stream.read(reinterpret_cast<char*>(records), static_cast<std::streamsize>(count * sizeof *records));
        return stream.good();
    };
    std::ifstream program("/proc/self/exe", std::ios::binary);
    std::ifstream stream(file, std::ios::binary);
    Elf64_Ehdr own = {};
    Elf64_Ehdr header = {};
    read(program, 0, &own, 1);
    if (!read(stream, 0, &header, 1) || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) {
        throw std::runtime_error("is no shared library");
    }
    // Class and order of bytes, then the machine.
    if (std::memcmp(header.e_ident, own.e_ident, EI_VERSION) != 0 || header.e_machine != own.e_machine) {
        throw std::runtime_error("is made for another kind of machine");
    }
    if (header.e_type != ET_DYN) {
        throw std::runtime_error("is no shared library");
    }
    std::vector<Elf64_Phdr> segments(header.e_phnum);
    const std::uintmax_t size = std::filesystem::file_size(file);
    bool isWhole = read(stream, header.e_phoff, segments.data(), segments.size());
    for (const Elf64_Phdr& segment : segments) {
        isWhole = isWhole && segment.p_offset <= size && segment.p_filesz <= size - segment.p_offset;
    }
    if (!isWhole) {
        throw std::runtime_error("breaks off");
    }
}

}  // namespace service
