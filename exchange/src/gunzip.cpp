// SPDX-License-Identifier: Apache-2.0

#include "gunzip.h"

#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <limits>
#include <new>

namespace PI {

namespace {

constexpr int GZIP_WINDOW = 15 + 16;  // largest window, gzip header wanted

class Inflater {
public:
    Inflater() {
        if (inflateInit2(&m_Stream, GZIP_WINDOW) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Inflater() { inflateEnd(&m_Stream); }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    z_stream m_Stream = {};
};

}  // namespace

bool IsGzip(std::string_view bytes) {
    return bytes.substr(0, 2) == "\x1F\x8B";
}

const char* Gunzip(std::string_view bytes, std::string& text) {
    if (bytes.size() > std::numeric_limits<uInt>::max()) {
        return "the compressed text is too long";
    }
    Inflater inflater;
    z_stream& stream = inflater.m_Stream;
    stream.next_in = reinterpret_cast<const Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    std::size_t unpacked = 0;
    for (;;) {
        if (unpacked == text.size()) {
            if (unpacked > MAX_UNPACKED) {
                return "the compressed text unpacks to more than 64 MiB";
            }
            text.resize(std::min(std::max(2 * unpacked, 8 * bytes.size()), MAX_UNPACKED + 1));
        }
        stream.next_out = reinterpret_cast<Bytef*>(text.data() + unpacked);
        stream.avail_out = static_cast<uInt>(text.size() - unpacked);
        const int result = inflate(&stream, Z_NO_FLUSH);
        unpacked = text.size() - stream.avail_out;
        if (result == Z_MEM_ERROR) {
            throw std::bad_alloc();
        }
        if (result == Z_STREAM_END) {
            const std::string_view rest(reinterpret_cast<const char*>(stream.next_in), stream.avail_in);
            if (!IsGzip(rest)) {
                break;  // padding
            }
            inflateReset(&stream);
        } else if (result == Z_BUF_ERROR ||
                   (result == Z_OK && stream.avail_in == 0 && stream.avail_out != 0)) {
            return "the compressed text breaks off";
        } else if (result != Z_OK) {
            return "the compressed text is damaged";
        }
    }
    text.resize(unpacked);
    return unpacked > MAX_UNPACKED ? "the compressed text unpacks to more than 64 MiB" : nullptr;
}

}  // namespace PI
