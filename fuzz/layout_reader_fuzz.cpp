// SPDX-License-Identifier: Apache-2.0
// Configuration documents as pitool reads them: what is refused has a place in the text, what is taken reads
// as by the library.
#include "layout_document.h"
#include "layout_json.h"
#include "layout_tree.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>

#include "check.h"
#include "model/layout_texts.h"
#include "printable_check.h"

namespace {

using namespace PI::Test;

void CheckPlace(const pitool::TextPlace& place, const std::string& text) {
    // A carriage return ends a line of XML, too.
    const auto isLineEnd = [](char character) { return character == '\n' || character == '\r'; };
    const auto lines = static_cast<std::size_t>(1 + std::count_if(text.begin(), text.end(), isLineEnd));
    CHECK(place.m_Line >= 1 && place.m_Line <= lines);
    CHECK(place.m_Column >= 1 && place.m_Column <= text.size() + 1);
}

std::string DescribeByLibrary(std::string text, bool isArray) {
    while (text.rfind("\xEF\xBB\xBF", 0) == 0) {
        text.erase(0, 3);
    }
    VELK::XML::xml_document document;
    CHECK(document.load_buffer(text.data(), text.size(), VELK::XML::parse_default, VELK::XML::encoding_utf8));
    return isArray ? Describe(PI::CArray(document)) : Describe(PI::CLogicalDrive(document));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    pitool::LayoutDocument layout;
    pitool::PlacedMessage problem;
    if (!pitool::ReadLayout(text, layout, problem)) {
        CHECK(!problem.m_Text.empty());
        CheckPlace(problem.m_Place, text);
        return 0;
    }
    const bool isArray = std::holds_alternative<PI::CArray>(layout.m_Layout);
    CHECK_TEXT(std::visit([](const auto& record) { return Describe(record); }, layout.m_Layout),
               DescribeByLibrary(text, isArray));
    CHECK(layout.m_Warnings.m_Kept.size() <= pitool::MAX_LAYOUT_WARNINGS);
    for (const pitool::PlacedMessage& warning : layout.m_Warnings.m_Kept) {
        CHECK(!warning.m_Text.empty());
        CheckPlace(warning.m_Place, text);
    }
    PI::Fuzz::CheckPrintable(pitool::LayoutTree(layout));
    CHECK(nlohmann::json::accept(pitool::LayoutJson("file", layout)));
    return 0;
}
