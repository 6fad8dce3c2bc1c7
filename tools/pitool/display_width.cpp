// SPDX-License-Identifier: Apache-2.0

#include "display_width.h"

#include "printable_text.h"

#include <clocale>
#include <cwchar>

namespace pitool {
namespace {

/// The C library's width of a character, as the locale C.UTF-8 knows it, which is built into the library. The
/// locale of the process is left alone: it decides on what other functions print.
std::size_t WidthOf(std::uint32_t codePoint) {
    static const locale_t UNICODE = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (UNICODE == nullptr) {
        return 1;
    }
    const locale_t before = uselocale(UNICODE);
    const int width = wcwidth(static_cast<wchar_t>(codePoint));
    uselocale(before);
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

}  // namespace

Character FirstCharacter(std::string_view text) {
    if (static_cast<unsigned char>(text.front()) < 0x80) {
        return {1, 1};
    }
    std::uint32_t codePoint = 0;
    const std::size_t length = DecodeCharacter(text, codePoint);
    return length == 0 ? Character{1, 1} : Character{length, WidthOf(codePoint)};
}

std::size_t DisplayWidth(std::string_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        const Character character = FirstCharacter(text);
        width += character.m_Width;
        text.remove_prefix(character.m_Length);
    }
    return width;
}

}  // namespace pitool
