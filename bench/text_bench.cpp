// SPDX-License-Identifier: Apache-2.0
// Hex dump and url-encoding of 1 MiB.

#include <pi/plugin_helper.h>

#include <array>
#include <boost/format.hpp>
#include <cstring>
#include <random>

#include "measure.h"

namespace {

constexpr std::size_t SIZE = 1 << 20;

std::string RandomBytes() {
    std::mt19937 random(1);
    std::string bytes(SIZE, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(random());
    }
    return bytes;
}

bool IsCopied(unsigned char byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') ||
           (byte != 0 && std::strchr(" ()-.:_~", byte) != nullptr);
}

bool IsDropped(unsigned char byte) {
    return byte == 0x01 || byte == 0x16 || byte == 0xBE || byte == 0xEE;
}

// As the rules say it.

std::string NaiveDump(const std::string& bytes) {
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        text += boost::str(boost::format(i + 1 < bytes.size() ? "%02X " : "%02X") % unsigned{byte});
    }
    return text;
}

std::string NaiveEncoding(const std::string& bytes) {
    std::string text;
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        if (IsCopied(byte)) {
            text += character;
        } else if (!IsDropped(byte)) {
            text += boost::str(boost::format("%%%02x") % unsigned{byte});
        }
    }
    return text;
}

// The least that must be done: a table of the 256 texts, written to memory that is there.

struct ByteText {
    char m_Text[3];
    std::uint8_t m_Length;
};
using Table = std::array<ByteText, 256>;

Table DumpTable() {
    Table table = {};
    for (unsigned i = 0; i < 256; ++i) {
        table[i] = {{"0123456789ABCDEF"[i >> 4], "0123456789ABCDEF"[i & 15], ' '}, 3};
    }
    return table;
}

Table EncodingTable() {
    Table table = {};
    for (unsigned i = 0; i < 256; ++i) {
        const auto byte = static_cast<unsigned char>(i);
        if (IsCopied(byte)) {
            table[i] = {{static_cast<char>(byte), 0, 0}, 1};
        } else if (!IsDropped(byte)) {
            table[i] = {{'%', "0123456789abcdef"[i >> 4], "0123456789abcdef"[i & 15]}, 3};
        }
    }
    return table;
}

std::string Translate(const Table& table, const std::string& bytes) {
    std::string text(bytes.size() * 3, '\0');
    char* position = text.data();
    for (const char character : bytes) {
        const ByteText& each = table[static_cast<unsigned char>(character)];
        std::memcpy(position, each.m_Text, 3);
        position += each.m_Length;
    }
    text.resize(static_cast<std::size_t>(position - text.data()));
    return text;
}

std::string TableDump(const std::string& bytes) {
    static const Table table = DumpTable();
    std::string text = Translate(table, bytes);
    text.pop_back();
    return text;
}

std::string TableEncoding(const std::string& bytes) {
    static const Table table = EncodingTable();
    return Translate(table, bytes);
}

std::string LibraryDump(std::string& bytes) {
    std::string text;
    PI::CPluginHelper::HexDump(text, reinterpret_cast<unsigned char*>(bytes.data()), 0, bytes.size());
    return text;
}

template <class Way>
void AddWay(const std::string& work, const std::string& way, std::string expected, Way run) {
    bench::Add(work, way, [=](benchmark::State& state) {
        std::string bytes = RandomBytes();
        if (run(bytes) != expected) {
            state.SkipWithError("the texts differ");
            return;
        }
        bench::Measure(state, [&] { benchmark::DoNotOptimize(run(bytes)); });
    });
}

}  // namespace

void bench::RegisterBenchmarks() {
    std::string bytes = RandomBytes();
    const std::string dump = LibraryDump(bytes);
    AddWay("hex_dump", "library", dump, LibraryDump);
    AddWay("hex_dump", "naive", dump, NaiveDump);
    AddWay("hex_dump", "table", dump, TableDump);
    const std::string encoding = PI::CPluginHelper::stringurlencode(bytes);
    AddWay("url_encode", "library", encoding, PI::CPluginHelper::stringurlencode);
    AddWay("url_encode", "naive", encoding, NaiveEncoding);
    AddWay("url_encode", "table", encoding, TableEncoding);
}
