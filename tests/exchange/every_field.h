// SPDX-License-Identifier: Apache-2.0
// Every field of every record, to be filled at random and compared, whatever operator== leaves out.
#pragma once

#include <pi/event.h>
#include <pi/model.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "model/xml_samples.h"
#include "support/random_seed.h"

namespace PI::Test {

/// The fields of a record in their order, those of its base left out. That none is missing is tested.
template <class Record>
constexpr auto FieldsOfRecord() {
    using R = Record;
    if constexpr (std::is_same_v<R, CChoiceData>) {
        return std::make_tuple(&R::m_Value, &R::m_Choices);
    } else if constexpr (std::is_same_v<R, CRangeData>) {
        return std::make_tuple(&R::m_Value, &R::m_Min, &R::m_Max, &R::m_Step);
    } else if constexpr (std::is_same_v<R, CStringData>) {
        return std::make_tuple(&R::m_Value, &R::m_Extra1, &R::m_Extra2);
    } else if constexpr (std::is_same_v<R, CBoolData> || std::is_same_v<R, CLongData> ||
                         std::is_same_v<R, CSignedLongData> || std::is_same_v<R, CFloatData>) {
        return std::make_tuple(&R::m_Value);
    } else if constexpr (std::is_same_v<R, CMultiValueData>) {
        return std::make_tuple(&R::m_Values, &R::m_Values2);
    } else if constexpr (std::is_same_v<R, CMultiLongData>) {
        return std::make_tuple(&R::m_Values);
    } else if constexpr (std::is_same_v<R, CXMLData>) {
        return std::make_tuple(&R::m_Document);
    } else if constexpr (std::is_same_v<R, CMultiStringData>) {
        return std::make_tuple(&R::m_Values, &R::m_SelectionMask);
    } else if constexpr (std::is_same_v<R, CProperty::_DATA>) {
        return std::make_tuple(&R::m_Choice, &R::m_Range, &R::m_String, &R::m_Bool, &R::m_Long,
                               &R::m_SignedLong, &R::m_MultiValue, &R::m_Float, &R::m_MultiLong, &R::m_XML,
                               &R::m_MultiString);
    } else if constexpr (std::is_same_v<R, CProperty>) {
        return std::make_tuple(&R::m_ID, &R::m_SecondaryID, &R::m_Attribute1, &R::m_Attribute2,
                               &R::m_Attribute3, &R::m_Attribute4, &R::m_Attribute5, &R::m_Type, &R::m_Format,
                               &R::m_Flag1, &R::m_Attribute6, &R::m_Flag2, &R::m_Data);
    } else if constexpr (std::is_same_v<R, CDrive>) {
        return std::make_tuple(&R::m_ObjectID, &R::m_StartAddress, &R::m_UsedSize, &R::m_Properties,
                               &R::m_LogicalDrive, &R::m_LogicalOwner, &R::m_IsConfigurable);
    } else if constexpr (std::is_same_v<R, CContainer>) {
        return std::make_tuple(&R::m_Drives);
    } else if constexpr (std::is_same_v<R, CLogicalDrive>) {
        return std::make_tuple(&R::m_ID, &R::m_Properties, &R::m_Value1, &R::m_Value2, &R::m_Size,
                               &R::m_Units, &R::m_SpanCount, &R::m_SpanSize, &R::m_Value3, &R::m_Value4,
                               &R::m_Containers, &R::m_GlobalHotSpares, &R::m_DedicatedHotSpares,
                               &R::m_AssociatedLogicalDrives);
    } else if constexpr (std::is_same_v<R, CArray>) {
        return std::make_tuple(&R::m_Properties, &R::m_Value1, &R::m_Size, &R::m_Units, &R::m_Containers,
                               &R::m_LogicalDrives);
    } else if constexpr (std::is_same_v<R, CLevel>) {
        return std::make_tuple(&R::m_Value1, &R::m_Values, &R::m_Value2, &R::m_Properties, &R::m_Value3,
                               &R::m_Value4, &R::m_Value5, &R::m_Value6, &R::m_Units, &R::m_Value7,
                               &R::m_Value8, &R::m_Flag, &R::m_Value9);
    } else if constexpr (std::is_same_v<R, CPartition>) {
        return std::make_tuple(&R::m_Value1, &R::m_Value2, &R::m_Value3, &R::m_Text1, &R::m_Text2);
    } else if constexpr (std::is_same_v<R, CMigration>) {
        return std::make_tuple(&R::m_Value1, &R::m_Value2, &R::m_Properties);
    } else if constexpr (std::is_same_v<R, CEvent>) {
        return std::make_tuple(&R::m_Handle, &R::m_EventID, &R::m_Severity, &R::m_TimeStamp,
                               &R::m_PlaceHolder1, &R::m_PlaceHolder2, &R::m_PlaceHolder3, &R::m_PlaceHolder4,
                               &R::m_PlaceHolder5, &R::m_PlaceHolder6, &R::m_Data, &R::m_Source, &R::m_Host,
                               &R::m_SequenceNumber, &R::m_Resolved1, &R::m_Resolved2, &R::m_Resolved3,
                               &R::m_Resolved4, &R::m_Resolved5, &R::m_Resolved6, &R::m_Scratch);
    } else if constexpr (std::is_same_v<R, COperation>) {
        return std::make_tuple(&R::m_Header1, &R::m_Header2, &R::m_Header3, &R::m_Properties,
                               &R::m_LogicalDriveList, &R::m_DriveList, &R::m_LevelList, &R::m_MigrationList,
                               &R::m_EventList, &R::m_PartitionList, &R::m_ObjectList, &R::m_Parameter1,
                               &R::m_Parameter2, &R::m_Parameter3, &R::m_Parameter4, &R::m_Parameter5,
                               &R::m_Parameter6, &R::m_Parameter7, &R::m_Parameter8, &R::m_OperationFlag,
                               &R::m_Parameter9);
    } else if constexpr (std::is_same_v<R, CObject>) {
        return std::make_tuple(&R::m_ObjectID, &R::m_ObjectType, &R::m_RelatedIDs1, &R::m_RelatedIDs2,
                               &R::m_ObjectValue, &R::m_ObjectFlag, &R::m_Properties, &R::m_Operations,
                               &R::m_UniqueID);
    } else {
        static_assert(std::is_same_v<R, CTask>);
        return std::make_tuple(&R::m_TaskText1, &R::m_TaskText2, &R::m_TaskText3, &R::m_TaskValue1,
                               &R::m_TaskValue2, &R::m_CreationTime, &R::m_TaskValue3, &R::m_TaskValue4,
                               &R::m_TaskValue5, &R::m_TaskValue6, &R::m_TaskValue7, &R::m_TaskFlag,
                               &R::m_TaskStatus);
    }
}

template <class Record, class Visit>
void ForEachField(Visit visit) {
    std::apply([&](auto... field) { (visit(field), ...); }, FieldsOfRecord<Record>());
}

/// What a document is after its text was read again with all that stands in it.
inline std::string TreeOfText(const VELK::XML::xml_document& document) {
    std::ostringstream text;
    document.save(text, "", VELK::XML::format_raw | VELK::XML::format_no_declaration);
    VELK::XML::xml_document read;
    read.load_buffer(text.str().data(), text.str().size(), PARSE_EVERYTHING & ~VELK::XML::parse_eol);
    return TreeOf(read);
}

template <class Element>
bool SameFields(const std::vector<Element>& left, const std::vector<Element>& right);

/// Whether two values are equal in every field of every record in them, floats to the bit.
template <class Value>
bool SameFields(const Value& left, const Value& right) {
    if constexpr (std::is_same_v<Value, float>) {
        return std::memcmp(&left, &right, sizeof(left)) == 0;
    } else if constexpr (std::is_arithmetic_v<Value> || std::is_enum_v<Value> ||
                         std::is_same_v<Value, std::string>) {
        return left == right;
    } else if constexpr (std::is_same_v<Value, VELK::XML::xml_document>) {
        return TreeOfText(left) == TreeOfText(right);
    } else {
        bool same = true;
        if constexpr (std::is_same_v<Value, CTask>) {
            same = SameFields<CObject>(left, right);
        }
        ForEachField<Value>([&](auto field) { same = same && SameFields(left.*field, right.*field); });
        return same;
    }
}

template <class Element>
bool SameFields(const std::vector<Element>& left, const std::vector<Element>& right) {
    bool same = left.size() == right.size();
    for (std::size_t i = 0; same && i < left.size(); ++i) {
        same = SameFields(left[i], right[i]);
    }
    return same;
}

/// Fills values at random, with a liking for those at which something changes.
class FieldFiller {
public:
    explicit FieldFiller(std::uint32_t seed) : m_Random(seed), m_Documents(seed) {}

    template <class Value>
    void Fill(Value& value) {
        if constexpr (std::is_same_v<Value, bool>) {
            value = Chance(2);
        } else if constexpr (std::is_same_v<Value, float>) {
            const auto bits = static_cast<std::uint32_t>(Number());
            std::memcpy(&value, &bits, sizeof(value));
        } else if constexpr (std::is_enum_v<Value>) {
            value = static_cast<Value>(static_cast<std::int32_t>(Number()));
        } else if constexpr (std::is_arithmetic_v<Value>) {
            value = static_cast<Value>(Number());
        } else if constexpr (std::is_same_v<Value, std::string>) {
            value = Text();
        } else if constexpr (std::is_same_v<Value, VELK::XML::xml_document>) {
            m_Documents.Make(value);
        } else {
            FillRecord(value);
        }
    }

    template <class Element>
    void Fill(std::vector<Element>& values) {
        // Deep down lists are empty, so that this ends.
        values = std::vector<Element>(m_Depth < 5 && Chance(3) ? 1 + Below(m_Random, 2) : 0);
        for (Element& value : values) {
            Fill(value);
        }
    }

private:
    template <class Record>
    void FillRecord(Record& record) {
        ++m_Depth;
        if constexpr (std::is_same_v<Record, CTask>) {
            Fill(static_cast<CObject&>(record));
        }
        ForEachField<Record>([&](auto field) {
            if (!Chance(4)) {  // else as in a new record
                Fill(record.*field);
            }
        });
        --m_Depth;
    }

    bool Chance(std::uint32_t oneIn) { return Below(m_Random, oneIn) == 0; }

    std::uint64_t Number() {
        constexpr std::uint64_t EDGES[] = {0,          1,          12,         40007,      30003,
                                           10000,      0x7FC00000, 0x7F800000, 0x15AE43FD, 0x7FFFFFFF,
                                           0x80000000, 0xFFFFFFFF, 1ULL << 53, 1ULL << 63, ~0ULL};
        constexpr std::uint32_t COUNT = sizeof(EDGES) / sizeof(EDGES[0]);
        const std::uint64_t any = std::uint64_t{m_Random()} << 32 | m_Random();
        switch (Below(m_Random, 4)) {
            case 0: return EDGES[Below(m_Random, COUNT)];
            case 1: return EDGES[Below(m_Random, COUNT)] + Below(m_Random, 3) - 1;
            case 2: return any >> Below(m_Random, 64);
            default: return std::uint64_t{0} - (any >> Below(m_Random, 64));
        }
    }

    std::string Text() {
        std::string text;
        const bool anyBytes = Chance(4);
        for (std::uint32_t length = Below(m_Random, 12); length > 0; --length) {
            constexpr const char* PARTS[] = {"a",
                                             " ",
                                             "\"",
                                             "\\",
                                             "/",
                                             "\n",
                                             "\x01",
                                             "\x7F",
                                             "\xC3\xA4",
                                             "\xE2\x82\xAC",
                                             "\xF0\x9F\x92\xBE",
                                             "\xEF\xBF\xBD",
                                             "<",
                                             "T:"};
            if (anyBytes) {
                text += static_cast<char>(Below(m_Random, 256));
            } else if (Chance(20)) {
                text += '\0';
            } else {
                text += PARTS[Below(m_Random, sizeof(PARTS) / sizeof(PARTS[0]))];
            }
        }
        return text;
    }

    std::mt19937 m_Random;
    DocumentMaker m_Documents;
    int m_Depth = 0;
};

}  // namespace PI::Test
