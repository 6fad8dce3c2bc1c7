// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/drives.h>
#include <pi/plugin_helper.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

#include "drives/expected_ssd_endurance.h"
#include "drives/smart_values_text.h"
#include "support/global_locale.h"

namespace PI::Test {
namespace {

constexpr char INTEL_MODEL[] = "SSDSC2BB120G4C";
constexpr char SAMSUNG_MODEL[] = "MZ7LH240HAHQ-00005";
constexpr char MICRON_MODEL[] = "MTFDDAV240TCB";
constexpr char INNODISK_OLDER[] = "SATADOM-ML 3ME";
constexpr char INNODISK_NEWER[] = "SATADOM-ML 3ME3";

constexpr std::uint64_t HIGHEST_RAW = (1ULL << 48) - 1;

/// A page as a drive returns it, built byte by byte.
class Page {
public:
    /// Fills a slot's id, normalised value and raw value; its other bytes hold what nobody may read.
    Page& Set(std::size_t slot, int id, int current, std::uint64_t raw) {
        unsigned char* bytes = &m_Bytes[2 + 12 * slot];
        bytes[0] = static_cast<unsigned char>(id);
        bytes[1] = bytes[2] = bytes[4] = bytes[11] = 0xA5;
        bytes[3] = static_cast<unsigned char>(current);
        for (std::size_t i = 0; i < 6; ++i) {
            bytes[5 + i] = static_cast<unsigned char>(raw >> (8 * i));
        }
        return *this;
    }

    _IDE_SMART_DATA Data() const {
        _IDE_SMART_DATA data;
        static_assert(sizeof(data) == 512);
        std::memcpy(&data, m_Bytes.data(), sizeof(data));
        return data;
    }

    std::array<unsigned char, 512> m_Bytes = {};
};

CSmartValues Evaluated(const std::string& model, const Page& page) {
    CSmartValues values("vendor", model);
    _IDE_SMART_DATA data = page.Data();
    EXPECT_TRUE(values.Evaluate(data));
    EXPECT_EQ(std::memcmp(&data, page.m_Bytes.data(), sizeof(data)), 0);
    return values;
}

// --- Layout

static_assert(sizeof(_IDE_SMART_DATA) == 512 && alignof(_IDE_SMART_DATA) == 1);
static_assert(std::is_trivially_copyable_v<_IDE_SMART_DATA> && std::is_standard_layout_v<_IDE_SMART_DATA>);
static_assert(offsetof(_IDE_SMART_DATA, m_Revision) == 0);
static_assert(offsetof(_IDE_SMART_DATA, m_Attributes) == 2);
static_assert(offsetof(_IDE_SMART_DATA, m_Rest) == 362);
static_assert(sizeof(_IDE_SMART_ATTRIBUTE) == 12);
static_assert(offsetof(_IDE_SMART_ATTRIBUTE, m_ID) == 0);
static_assert(offsetof(_IDE_SMART_ATTRIBUTE, m_Flags) == 1);
static_assert(offsetof(_IDE_SMART_ATTRIBUTE, m_Current) == 3);
static_assert(offsetof(_IDE_SMART_ATTRIBUTE, m_Worst) == 4);
static_assert(offsetof(_IDE_SMART_ATTRIBUTE, m_Raw) == 5);
static_assert(offsetof(_IDE_SMART_ATTRIBUTE, m_Reserved) == 11);

static_assert(!std::is_polymorphic_v<CSmartValues>);
static_assert(std::is_same_v<std::uint64_t, decltype(CSmartValues::m_Endurance)>);
static_assert(std::is_same_v<std::uint64_t, decltype(CSmartValues::m_PowerOnHours)>);
static_assert(std::is_same_v<std::uint64_t, decltype(CSmartValues::m_BytesWritten)>);
static_assert(std::is_same_v<std::int32_t, decltype(CSmartValues::m_SpareIndicator)>);
static_assert(std::is_same_v<std::int32_t, decltype(CSmartValues::m_PercentUsed)>);
static_assert(std::is_same_v<std::string, decltype(CSmartValues::m_Vendor)>);
static_assert(std::is_same_v<std::string, decltype(CSmartValues::m_Model)>);
static_assert(std::is_same_v<std::uint32_t, decltype(CSmartValues::m_GroupFlag)>);
static_assert(std::is_same_v<bool, decltype(CSmartValues::m_Supported)>);

TEST(SmartValuesLayout, FieldsStandInOrder) {
    const CSmartValues values("", "");
    const auto offset = [&values](const auto& member) {
        return reinterpret_cast<const char*>(&member) - reinterpret_cast<const char*>(&values);
    };
    constexpr std::ptrdiff_t TEXT = sizeof(std::string);
    EXPECT_EQ(offset(values.m_Endurance), 0);
    EXPECT_EQ(offset(values.m_PowerOnHours), 8);
    EXPECT_EQ(offset(values.m_BytesWritten), 16);
    EXPECT_EQ(offset(values.m_SpareIndicator), 24);
    EXPECT_EQ(offset(values.m_PercentUsed), 28);
    EXPECT_EQ(offset(values.m_Vendor), 32);
    EXPECT_EQ(offset(values.m_Model), 32 + TEXT);
    EXPECT_EQ(offset(values.m_GroupFlag), 32 + 2 * TEXT);
    EXPECT_EQ(offset(values.m_Supported), 36 + 2 * TEXT);
    EXPECT_EQ(sizeof(CSmartValues), 40U + 2 * sizeof(std::string));
}

// --- Construction

TEST(SmartValues, AnUnknownModelKeepsItsVendorAndIsNotSupported) {
    CSmartValues values("Some vendor", "Some model");
    EXPECT_FALSE(values.IsSupported());
    EXPECT_EQ(
        TextOf(values),
        "endurance 0, hours 0, written 0, spare -1, used 0, vendor Some vendor, model Some model, group 0, "
        "supported 0");
}

TEST(SmartValues, AKnownModelBringsItsRow) {
    CSmartValues values("Some vendor", "sATADOM-ml 3SE3");
    EXPECT_TRUE(values.IsSupported());
    EXPECT_EQ(
        TextOf(values),
        "endurance 60000, hours 0, written 0, spare -1, used 0, vendor INNODISK, model sATADOM-ml 3SE3, "
        "group 1, supported 1");
}

TEST(SmartValues, EveryModelOfTheListIsSupported) {
    for (const ExpectedEndurance& row : EXPECTED_SATA) {
        CSmartValues values("", row.m_Model);
        const _SSD_ENDURANCE* found = CPluginHelper::findLifeTimeProp(row.m_Model);
        ASSERT_NE(found, nullptr);
        EXPECT_TRUE(values.IsSupported()) << row.m_Model;
        EXPECT_EQ(values.m_Vendor, row.m_Vendor) << row.m_Model;
        EXPECT_EQ(values.m_Model, row.m_Model);
        EXPECT_EQ(values.m_Endurance, found->m_EnduranceTB) << row.m_Model;
        EXPECT_EQ(values.m_GroupFlag, row.m_GroupFlag) << row.m_Model;
    }
}

TEST(SmartValues, IsSupportedTellsTheFlag) {
    CSmartValues values("", "");
    values.m_Supported = true;
    EXPECT_TRUE(values.IsSupported());
    values.m_Supported = false;
    EXPECT_FALSE(values.IsSupported());
}

// --- Evaluation

TEST(SmartEvaluation, AnUnsupportedModelIsNotEvaluated) {
    CSmartValues values("INTEL", "Some model");
    const std::string before = TextOf(values);
    _IDE_SMART_DATA data =
        Page().Set(0, 9, 1, 100).Set(1, 225, 1, 1).Set(2, 232, 50, 0).Set(3, 233, 50, 0).Data();
    EXPECT_FALSE(values.Evaluate(data));
    EXPECT_EQ(TextOf(values), before);
}

TEST(SmartEvaluation, AnEmptyPageChangesNothingButInnoDisksEndurance) {
    for (const char* model : {INTEL_MODEL, SAMSUNG_MODEL, MICRON_MODEL, INNODISK_OLDER, INNODISK_NEWER}) {
        CSmartValues expected("", model);
        if (expected.m_Vendor == "INNODISK") {
            expected.m_Endurance = 0;
        }
        EXPECT_EQ(TextOf(Evaluated(model, Page())), TextOf(expected));
    }
}

TEST(SmartEvaluation, EmptySlotsAreNotRead) {
    for (const char* model : {INTEL_MODEL, SAMSUNG_MODEL, MICRON_MODEL, INNODISK_OLDER, INNODISK_NEWER}) {
        Page page;
        for (std::size_t slot = 0; slot < 30; ++slot) {
            page.Set(slot, 0, 50, HIGHEST_RAW);
        }
        EXPECT_EQ(TextOf(Evaluated(model, page)), TextOf(Evaluated(model, Page()))) << model;
    }
}

TEST(SmartEvaluation, KnownPages) {
    EXPECT_EQ(Evaluated(INTEL_MODEL, Page().Set(0, 225, 100, 1)).m_BytesWritten, 33554432U);
    EXPECT_EQ(Evaluated(SAMSUNG_MODEL, Page().Set(0, 177, 97, 0)).m_PercentUsed, 3);
    EXPECT_EQ(
        TextOf(Evaluated(
            MICRON_MODEL,
            Page().Set(0, 9, 100, 12345).Set(1, 170, 96, 7).Set(2, 202, 88, 12).Set(3, 246, 100, 1000000))),
        "endurance 650, hours 12345, written 512000000, spare 96, used 12, vendor MICRON, model "
        "MTFDDAV240TCB, group 0, supported 1");
}

// What an attribute of a number means to a vendor: the table of all supported ones.
struct Meaning {
    const char* m_Model;
    int m_Written;
    int m_WrittenShift;
    int m_Spare;
    int m_Wear;
};

constexpr Meaning MEANINGS[] = {
    {INTEL_MODEL, 225, 25, 232, 233},  {SAMSUNG_MODEL, 241, 9, 180, 177}, {MICRON_MODEL, 246, 9, 170, 202},
    {INNODISK_OLDER, 241, 25, -1, -1}, {INNODISK_NEWER, 241, 25, -1, -1},
};

TEST(SmartEvaluation, EachAttributeMeansWhatItsVendorSays) {
    constexpr std::uint64_t RAW = 0x010203040506;
    for (const Meaning& meaning : MEANINGS) {
        for (int id = 1; id < 256; ++id) {
            CSmartValues expected = Evaluated(meaning.m_Model, Page());
            if (id == 9) {
                expected.m_PowerOnHours = RAW;
            } else if (id == meaning.m_Written) {
                expected.m_BytesWritten = RAW << meaning.m_WrittenShift;
            } else if (id == meaning.m_Spare) {
                expected.m_SpareIndicator = 42;
            } else if (id == meaning.m_Wear) {
                expected.m_PercentUsed = 58;
            } else if (id == 173 && meaning.m_Model == INNODISK_OLDER) {
                expected.m_PercentUsed = 0x020506 * 100 / 3000;
            } else if (id == 167 && meaning.m_Model == INNODISK_NEWER) {
                expected.m_PercentUsed = static_cast<std::int32_t>(0x03040506UL * 100 / 3000);
            }
            EXPECT_EQ(TextOf(Evaluated(meaning.m_Model, Page().Set(0, id, 42, RAW))), TextOf(expected))
                << meaning.m_Model << ", attribute " << id;
        }
    }
}

TEST(SmartEvaluation, EverySlotIsRead) {
    for (const Meaning& meaning : MEANINGS) {
        for (std::size_t slot = 0; slot < 30; ++slot) {
            const CSmartValues values = Evaluated(meaning.m_Model, Page().Set(slot, 9, 1, slot + 1));
            EXPECT_EQ(values.m_PowerOnHours, slot + 1) << meaning.m_Model;
        }
    }
    for (std::size_t slot = 0; slot < 30; ++slot) {
        EXPECT_EQ(Evaluated(INNODISK_OLDER, Page().Set(slot, 173, 1, 60)).m_PercentUsed, 2) << slot;
        EXPECT_EQ(Evaluated(INNODISK_NEWER, Page().Set(slot, 167, 1, 60)).m_PercentUsed, 2) << slot;
    }
}

TEST(SmartEvaluation, NothingOutsideTheSlotsIsRead) {
    Page page;
    page.m_Bytes.fill(9);
    for (std::size_t slot = 0; slot < 30; ++slot) {
        page.Set(slot, 0, 0, 0);
    }
    EXPECT_EQ(Evaluated(INTEL_MODEL, page).m_PowerOnHours, 0U);
    for (std::size_t slot = 0; slot < 30; ++slot) {
        page.Set(slot, 1, 9, 0x090909090909);
    }
    EXPECT_EQ(Evaluated(INTEL_MODEL, page).m_PowerOnHours, 0U);
}

TEST(SmartEvaluation, OfTwoSlotsWithOneNumberTheLaterCounts) {
    const CSmartValues intel = Evaluated(INTEL_MODEL, Page()
                                                          .Set(3, 9, 1, 111)
                                                          .Set(4, 225, 1, 1)
                                                          .Set(5, 232, 10, 0)
                                                          .Set(6, 233, 20, 0)
                                                          .Set(20, 9, 1, 222)
                                                          .Set(21, 225, 1, 2)
                                                          .Set(22, 232, 11, 0)
                                                          .Set(29, 233, 21, 0));
    EXPECT_EQ(intel.m_PowerOnHours, 222U);
    EXPECT_EQ(intel.m_BytesWritten, 2U << 25);
    EXPECT_EQ(intel.m_SpareIndicator, 11);
    EXPECT_EQ(intel.m_PercentUsed, 79);
    EXPECT_EQ(Evaluated(INNODISK_OLDER, Page().Set(0, 173, 1, 3000).Set(1, 173, 1, 60)).m_PercentUsed, 2);
    EXPECT_EQ(Evaluated(INNODISK_NEWER, Page().Set(0, 167, 1, 3000).Set(1, 167, 1, 90)).m_PercentUsed, 3);
    EXPECT_EQ(Evaluated(INNODISK_NEWER, Page().Set(0, 167, 1, 3000).Set(1, 167, 1, 0)).m_PercentUsed, 0);
}

TEST(SmartEvaluation, RawValuesAreTakenWhole) {
    EXPECT_EQ(Evaluated(INTEL_MODEL, Page().Set(0, 9, 0, HIGHEST_RAW)).m_PowerOnHours, HIGHEST_RAW);
    for (unsigned bit = 0; bit < 48; ++bit) {
        EXPECT_EQ(Evaluated(INTEL_MODEL, Page().Set(0, 9, 0, 1ULL << bit)).m_PowerOnHours, 1ULL << bit);
        EXPECT_EQ(Evaluated(SAMSUNG_MODEL, Page().Set(0, 241, 0, 1ULL << bit)).m_BytesWritten,
                  1ULL << (bit + 9));
        EXPECT_EQ(Evaluated(MICRON_MODEL, Page().Set(0, 246, 0, 1ULL << bit)).m_BytesWritten,
                  1ULL << (bit + 9));
    }
}

TEST(SmartEvaluation, WrittenBytesWrapAt64Bits) {
    for (const char* model : {INTEL_MODEL, INNODISK_NEWER}) {
        const int id = model == INTEL_MODEL ? 225 : 241;
        EXPECT_EQ(Evaluated(model, Page().Set(0, id, 0, 1ULL << 38)).m_BytesWritten, 1ULL << 63);
        EXPECT_EQ(Evaluated(model, Page().Set(0, id, 0, 1ULL << 39)).m_BytesWritten, 0U);
        EXPECT_EQ(Evaluated(model, Page().Set(0, id, 0, (1ULL << 39) + 1)).m_BytesWritten, 1ULL << 25);
        EXPECT_EQ(Evaluated(model, Page().Set(0, id, 0, HIGHEST_RAW)).m_BytesWritten, 0xFFFFFFFFFE000000U);
    }
}

TEST(SmartEvaluation, WearAndSpareTakeEveryNormalisedValue) {
    for (int current = 0; current < 256; ++current) {
        for (const Meaning& meaning : {MEANINGS[0], MEANINGS[1], MEANINGS[2]}) {
            const CSmartValues values =
                Evaluated(meaning.m_Model,
                          Page().Set(0, meaning.m_Spare, current, 1).Set(1, meaning.m_Wear, current, 1));
            EXPECT_EQ(values.m_SpareIndicator, current) << meaning.m_Model;
            EXPECT_EQ(values.m_PercentUsed, 100 - current) << meaning.m_Model;
        }
    }
}

TEST(SmartEvaluation, TheVendorIsComparedWithoutCase) {
    for (const char* vendor : {"intel", "Intel", "iNTEL"}) {
        CSmartValues values("", INTEL_MODEL);
        values.m_Vendor = vendor;
        _IDE_SMART_DATA data = Page().Set(0, 225, 1, 1).Data();
        EXPECT_TRUE(values.Evaluate(data));
        EXPECT_EQ(values.m_BytesWritten, 33554432U) << vendor;
    }
    CSmartValues innoDisk("", INNODISK_OLDER);
    innoDisk.m_Vendor = "InnoDisk";
    _IDE_SMART_DATA data = Page().Set(0, 173, 1, 60).Data();
    EXPECT_TRUE(innoDisk.Evaluate(data));
    EXPECT_EQ(innoDisk.m_PercentUsed, 2);
    EXPECT_EQ(innoDisk.m_Endurance, 0U);
}

TEST(SmartEvaluation, TheGlobalLocaleDoesNotMatter) {
    const GlobalLocale odd(OddLocale());
    CSmartValues values("", INTEL_MODEL);
    values.m_Vendor = "intel";
    _IDE_SMART_DATA data = Page().Set(0, 9, 1, 5).Data();
    EXPECT_TRUE(values.Evaluate(data));
    EXPECT_EQ(values.m_PowerOnHours, 5U);
}

TEST(SmartEvaluation, AnotherVendorIsNotRead) {
    for (const char* vendor : {"", "INTEL ", "INTE", "TOSHIBA"}) {
        CSmartValues values("", INTEL_MODEL);
        values.m_Vendor = vendor;
        const std::string before = TextOf(values);
        _IDE_SMART_DATA data = Page().Set(0, 9, 1, 5).Set(1, 225, 1, 1).Set(2, 233, 1, 1).Data();
        EXPECT_TRUE(values.Evaluate(data));
        EXPECT_EQ(TextOf(values), before);
    }
}

// --- InnoDisk

TEST(InnoDiskEvaluation, OlderFamiliesCountInRawBytes0And1And4) {
    Page page;
    page.Set(0, 173, 100, 0);
    unsigned char* raw = &page.m_Bytes[2 + 5];
    raw[0] = 0x10;
    raw[2] = raw[3] = 0xFF;
    EXPECT_EQ(Evaluated(INNODISK_OLDER, page).m_PercentUsed, 0);
    raw[4] = 0x01;
    EXPECT_EQ(Evaluated(INNODISK_OLDER, page).m_PercentUsed, 2185);
    raw[5] = 0xFF;
    EXPECT_EQ(Evaluated(INNODISK_OLDER, page).m_PercentUsed, 2185);
    raw[1] = 0x02;
    EXPECT_EQ(Evaluated(INNODISK_OLDER, page).m_PercentUsed, 0x010210 * 100 / 3000);
    raw[0] = raw[1] = raw[4] = 0xFF;
    EXPECT_EQ(Evaluated(INNODISK_OLDER, page).m_PercentUsed, 0xFFFFFF / 30);
}

TEST(InnoDiskEvaluation, NewerFamiliesCountInTheLow32Bits) {
    EXPECT_EQ(Evaluated(INNODISK_NEWER, Page().Set(0, 167, 1, 0xFFFF00000000 + 3000)).m_PercentUsed, 100);
    EXPECT_EQ(Evaluated(INNODISK_NEWER, Page().Set(0, 167, 1, 29)).m_PercentUsed, 0);
    EXPECT_EQ(Evaluated(INNODISK_NEWER, Page().Set(0, 167, 1, 30)).m_PercentUsed, 1);
    EXPECT_EQ(Evaluated(INNODISK_NEWER, Page().Set(0, 167, 1, 0xFFFFFFFF)).m_PercentUsed, 143165576);
}

TEST(InnoDiskEvaluation, EachFamilyReadsItsOwnAttributeOnly) {
    const Page page = Page().Set(0, 173, 1, 60).Set(1, 167, 1, 90);
    EXPECT_EQ(Evaluated(INNODISK_OLDER, page).m_PercentUsed, 2);
    EXPECT_EQ(Evaluated(INNODISK_NEWER, page).m_PercentUsed, 3);
}

TEST(InnoDiskEvaluation, OtherGroupFlagsLeaveTheWearAlone) {
    for (const std::uint32_t flag : {2U, 3U, 0xFFFFFFFFU}) {
        CSmartValues values("", INNODISK_NEWER);
        values.m_GroupFlag = flag;
        values.m_PercentUsed = 77;
        _IDE_SMART_DATA data = Page().Set(0, 173, 1, 60).Set(1, 167, 1, 90).Set(2, 241, 1, 1).Data();
        EXPECT_TRUE(values.Evaluate(data));
        EXPECT_EQ(values.m_PercentUsed, 77);
        EXPECT_EQ(values.m_BytesWritten, 33554432U);
        EXPECT_EQ(values.m_Endurance, 0U);
    }
}

TEST(InnoDiskEvaluation, TheSpareIndicatorIsNotSet) {
    Page page;
    for (std::size_t slot = 0; slot < 30; ++slot) {
        const int ids[] = {232, 180, 170, 233, 177, 202};
        page.Set(slot, ids[slot % 6], 50, 5);
    }
    EXPECT_EQ(Evaluated(INNODISK_OLDER, page).m_SpareIndicator, -1);
    EXPECT_EQ(Evaluated(INNODISK_NEWER, page).m_SpareIndicator, -1);
    EXPECT_EQ(Evaluated(INNODISK_NEWER, page).m_PercentUsed, 0);
}

TEST(InnoDiskEvaluation, TheEnduranceIsResetForInnoDiskOnly) {
    EXPECT_EQ(Evaluated(INNODISK_OLDER, Page().Set(0, 173, 1, 1)).m_Endurance, 0U);
    EXPECT_EQ(Evaluated(INNODISK_NEWER, Page()).m_Endurance, 0U);
    EXPECT_EQ(Evaluated(INTEL_MODEL, Page().Set(0, 9, 1, 1)).m_Endurance, 70U);
    EXPECT_EQ(Evaluated(SAMSUNG_MODEL, Page()).m_Endurance, 341U);
    EXPECT_EQ(Evaluated(MICRON_MODEL, Page()).m_Endurance, 650U);
}

TEST(InnoDiskEvaluation, EveryModelReckonsWithItsOwnRating) {
    for (const ExpectedEndurance& row : EXPECTED_SATA) {
        if (std::string(row.m_Vendor) != "INNODISK") {
            continue;
        }
        const int id = row.m_GroupFlag == 0 ? 173 : 167;
        const std::uint64_t half = row.m_EnduranceTB / 2;
        EXPECT_EQ(Evaluated(row.m_Model, Page().Set(0, id, 1, half & 0xFFFF)).m_PercentUsed,
                  static_cast<std::int32_t>((half & 0xFFFF) * 100 / row.m_EnduranceTB))
            << row.m_Model;
    }
}

TEST(InnoDiskEvaluation, TheProductIsMadeIn64BitsAndThenNarrowed) {
    CSmartValues values("", INNODISK_NEWER);
    values.m_Endurance = 1;
    _IDE_SMART_DATA data = Page().Set(0, 167, 1, 0xFFFFFFFF).Data();
    EXPECT_TRUE(values.Evaluate(data));
    EXPECT_EQ(values.m_PercentUsed, -100);  // 429496729500 in 32 bits
}

// --- Evaluating again

TEST(SmartEvaluation, TheSamePageAgainGivesTheSameFigures) {
    const Page page =
        Page().Set(0, 9, 1, 5).Set(1, 241, 60, 7).Set(2, 173, 50, 90).Set(3, 167, 40, 120).Set(4, 177, 30, 0);
    for (const Meaning& meaning : MEANINGS) {
        CSmartValues values("", meaning.m_Model);
        _IDE_SMART_DATA data = page.Data();
        values.Evaluate(data);
        const std::string first = TextOf(values);
        for (int again = 0; again < 3; ++again) {
            EXPECT_TRUE(values.Evaluate(data));
            EXPECT_EQ(TextOf(values), first);
        }
    }
}

TEST(SmartEvaluation, ALaterPageGivesTheFiguresOfAFirstOne) {
    for (const char* model : {INNODISK_OLDER, INNODISK_NEWER}) {
        const int id = model == INNODISK_OLDER ? 173 : 167;
        const Page later = Page().Set(0, 9, 1, 6).Set(1, 241, 1, 8).Set(2, id, 1, 150);
        CSmartValues values("", model);
        _IDE_SMART_DATA data = Page().Set(0, 9, 1, 5).Set(1, 241, 1, 7).Set(2, id, 1, 90).Data();
        values.Evaluate(data);
        EXPECT_EQ(values.m_PercentUsed, 3);
        data = later.Data();
        EXPECT_TRUE(values.Evaluate(data));
        EXPECT_EQ(TextOf(values), TextOf([&] {
                      CSmartValues fresh("", model);
                      _IDE_SMART_DATA copy = later.Data();
                      fresh.Evaluate(copy);
                      return fresh;
                  }()));
        EXPECT_EQ(values.m_PercentUsed, 5);
    }
}

TEST(SmartEvaluation, WhatALaterPageLacksKeepsItsValue) {
    CSmartValues values("", INTEL_MODEL);
    _IDE_SMART_DATA data =
        Page().Set(0, 9, 1, 5).Set(1, 225, 1, 1).Set(2, 232, 40, 0).Set(3, 233, 70, 0).Data();
    values.Evaluate(data);
    data = Page().Set(0, 9, 1, 6).Data();
    values.Evaluate(data);
    EXPECT_EQ(
        TextOf(values),
        "endurance 70, hours 6, written 33554432, spare 40, used 30, vendor INTEL, model SSDSC2BB120G4C, "
        "group 0, supported 1");
}

TEST(SmartEvaluation, NeverDividesByTheResetEndurance) {
    CSmartValues values("", INNODISK_NEWER);
    values.m_Endurance = 0;
    _IDE_SMART_DATA data = Page().Set(0, 167, 1, 60).Data();
    EXPECT_TRUE(values.Evaluate(data));
    EXPECT_EQ(values.m_PercentUsed, 2);

    CSmartValues unlisted("INNODISK", "unlisted");
    unlisted.m_Supported = true;
    unlisted.m_GroupFlag = 1;
    EXPECT_TRUE(unlisted.Evaluate(data));
    EXPECT_EQ(unlisted.m_PercentUsed, 0);
}

// --- With the lifetime estimate

TEST(SmartEvaluation, FiguresFeedTheLifetimeEstimate) {
    const CSmartValues intel = Evaluated(INTEL_MODEL, Page().Set(0, 9, 1, 10000).Set(1, 233, 50, 0));
    unsigned long hours = 0;
    EXPECT_TRUE(CPluginHelper::ComputeRemainingLifeTime(intel.m_PowerOnHours, intel.m_BytesWritten,
                                                        static_cast<unsigned>(intel.m_PercentUsed),
                                                        intel.m_Endurance, hours));
    EXPECT_EQ(hours, 11914U);

    // Without wear InnoDisk's reset endurance leaves the ceiling, whatever has been written.
    const CSmartValues innoDisk =
        Evaluated(INNODISK_NEWER, Page().Set(0, 9, 1, 1000).Set(1, 241, 1, 1 << 20));
    EXPECT_TRUE(CPluginHelper::ComputeRemainingLifeTime(innoDisk.m_PowerOnHours, innoDisk.m_BytesWritten,
                                                        static_cast<unsigned>(innoDisk.m_PercentUsed),
                                                        innoDisk.m_Endurance, hours));
    EXPECT_EQ(hours, 42829U);
}

}  // namespace
}  // namespace PI::Test
