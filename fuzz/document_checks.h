// SPDX-License-Identifier: Apache-2.0
// What holds for both kinds of configuration documents.
#pragma once

#include <pi/layout_reading.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "check.h"
#include "model/layout_texts.h"
#include "model/xml_samples.h"

namespace PI::Fuzz {

/// A copy, made in any way, holds what its source held. These records hold no properties, so they also
/// compare equal.
template <class Record>
void CheckCopies(const Record& record) {
    const std::string text = Test::Describe(record);
    Record copy(record);
    CHECK(copy == record);
    CHECK_TEXT(Test::Describe(copy), text);

    Record assigned;
    assigned = record;
    CHECK(assigned == record);
    CHECK_TEXT(Test::Describe(assigned), text);

    const Record moved(std::move(copy));
    CHECK(moved == record);
    CHECK_TEXT(Test::Describe(moved), text);

    Record moveAssigned;
    moveAssigned = std::move(assigned);
    CHECK(moveAssigned == record);
    CHECK_TEXT(Test::Describe(moveAssigned), text);
}

/// Reading with findings gives the same record.
template <class Record>
void CheckFindings(const std::uint8_t* data, std::size_t size) {
    CArray array;
    CLogicalDrive logicalDrive;
    std::vector<CLayoutFinding> findings;
    const _LAYOUT_KIND kind =
        ReadLayout(reinterpret_cast<const char*>(data), size, array, logicalDrive, findings);
    CHECK(findings.size() <= MAX_LAYOUT_FINDINGS);
    CHECK(kind != LayoutKind::NONE || findings.size() == 1);
    const auto lines = static_cast<std::uint64_t>(1 + std::count(data, data + size, '\n'));
    for (const CLayoutFinding& finding : findings) {
        CHECK(!finding.GetText().empty());
        CHECK(finding.GetLine() >= 1 && finding.GetLine() <= lines);
        CHECK(finding.GetColumn() >= 1 && finding.GetColumn() <= size + 1);
    }
    VELK::XML::xml_document document;
    document.load_buffer(data, size);
    const std::string text = Test::Describe(Record(document));
    if (std::is_same_v<Record, CArray> && kind == LayoutKind::ARRAY) {
        CHECK_TEXT(Test::Describe(array), text);
    }
    if (std::is_same_v<Record, CLogicalDrive> && kind == LayoutKind::LOGICAL_DRIVE) {
        CHECK_TEXT(Test::Describe(logicalDrive), text);
    }
}

/// Reads a record from whatever the XML library makes of the input, be it half a document.
template <class Record>
void CheckDocument(const std::uint8_t* data, std::size_t size) {
    for (const unsigned options : {VELK::XML::parse_default, Test::PARSE_EVERYTHING}) {
        VELK::XML::xml_document document;
        document.load_buffer(data, size, options);
        const std::string before = Test::TreeOf(document);
        const Record record(document);
        CHECK_TEXT(Test::TreeOf(document), before);
        CHECK_TEXT(Test::Describe(Record(document)), Test::Describe(record));
        CheckCopies(record);
    }
    CheckFindings<Record>(data, size);
}

}  // namespace PI::Fuzz
