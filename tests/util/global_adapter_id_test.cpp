// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/adapters.h>

#include <climits>
#include <cstddef>
#include <random>
#include <type_traits>

#include "support/random_seed.h"

namespace {

using PI::CGlobalAdapterID;
using testing::Test;

constexpr unsigned int notRegistered = 0xFFFFFFFF;

static_assert(!std::is_polymorphic_v<CGlobalAdapterID>);
static_assert(std::is_same_v<decltype(CGlobalAdapterID::AllHostsAdaptersUniqueIDs),
                             std::map<std::string, std::vector<int>>>);
static_assert(offsetof(CGlobalAdapterID, m_IDPart1) < offsetof(CGlobalAdapterID, m_IDPart2) &&
              offsetof(CGlobalAdapterID, m_IDPart2) < offsetof(CGlobalAdapterID, m_IDPart3) &&
              offsetof(CGlobalAdapterID, m_IDPart3) < offsetof(CGlobalAdapterID, m_IDPart4) &&
              offsetof(CGlobalAdapterID, m_IDPart4) < offsetof(CGlobalAdapterID, m_AdapterUniqueID) &&
              offsetof(CGlobalAdapterID, m_AdapterUniqueID) < offsetof(CGlobalAdapterID, m_HostName));

/// The lists are the process's: each test begins without any.
class AdapterNumbering : public Test {
protected:
    AdapterNumbering() { Lists().clear(); }

    static std::map<std::string, std::vector<int>>& Lists() {
        return CGlobalAdapterID::AllHostsAdaptersUniqueIDs;
    }

    static CGlobalAdapterID Adapter(const std::string& host, int id) {
        CGlobalAdapterID adapter;
        adapter.m_HostName = host;
        adapter.m_AdapterUniqueID = id;
        return adapter;
    }

    static CGlobalAdapterID Adapter(const std::string& host, int id, const std::int32_t (&parts)[4]) {
        CGlobalAdapterID adapter = Adapter(host, id);
        adapter.m_IDPart1 = parts[0];
        adapter.m_IDPart2 = parts[1];
        adapter.m_IDPart3 = parts[2];
        adapter.m_IDPart4 = parts[3];
        return adapter;
    }
};

class GetAdapterUniqueID : public AdapterNumbering {};
class SetAdapterUniqueID : public AdapterNumbering {};
class GetGlobalAdapterNumber : public AdapterNumbering {};
class GenerateUniqueAdapterNumberForHost : public AdapterNumbering {};
class GenerateUniqueAdapterNumber : public AdapterNumbering {};

TEST_F(GetAdapterUniqueID, NewAdapterHasNoNumbersAndNoHost) {
    const CGlobalAdapterID adapter;
    EXPECT_EQ(adapter.m_IDPart1, 0);
    EXPECT_EQ(adapter.m_IDPart2, 0);
    EXPECT_EQ(adapter.m_IDPart3, 0);
    EXPECT_EQ(adapter.m_IDPart4, 0);
    EXPECT_EQ(adapter.GetAdapterUniqueID(), 0);
    EXPECT_EQ(adapter.m_HostName, "");
    EXPECT_TRUE(Lists().empty());
}

TEST_F(GetAdapterUniqueID, IsTheMemberAndRegistersNothing) {
    EXPECT_EQ(Adapter("H", INT_MIN).GetAdapterUniqueID(), INT_MIN);
    EXPECT_EQ(Adapter("H", 7).GetAdapterUniqueID(), 7);
    EXPECT_TRUE(Lists().empty());
}

TEST_F(SetAdapterUniqueID, AppendsNewIdentifiersInTheOrderOfTheirRegistration) {
    CGlobalAdapterID adapter = Adapter("H", 0);
    for (const int id : {7, 5, 7, 9}) {
        adapter.SetAdapterUniqueID(id);
        EXPECT_EQ(adapter.GetAdapterUniqueID(), id);
    }
    EXPECT_EQ(Lists(), (std::map<std::string, std::vector<int>>{{"H", {7, 5, 9}}}));
}

TEST_F(SetAdapterUniqueID, TakesAnyIdentifier) {
    CGlobalAdapterID adapter = Adapter("", 0);
    for (const int id : {0, 1, -1, INT_MIN, INT_MAX}) {
        adapter.SetAdapterUniqueID(id);
    }
    EXPECT_EQ(Lists().at(""), (std::vector<int>{0, 1, -1, INT_MIN, INT_MAX}));
}

TEST_F(SetAdapterUniqueID, NeverRemovesTheIdentifierBefore) {
    CGlobalAdapterID adapter = Adapter("H", 0);
    adapter.SetAdapterUniqueID(3);
    adapter.SetAdapterUniqueID(4);
    EXPECT_EQ(adapter.GetGlobalAdapterNumber(), 1u);
    adapter.SetAdapterUniqueID(3);
    EXPECT_EQ(adapter.GetGlobalAdapterNumber(), 0u);
    EXPECT_EQ(Lists().at("H"), (std::vector<int>{3, 4}));
}

TEST_F(GetGlobalAdapterNumber, IsThePlaceInTheHostsList) {
    Lists()["H"] = {7, 5, 9};
    EXPECT_EQ(Adapter("H", 7).GetGlobalAdapterNumber(), 0u);
    EXPECT_EQ(Adapter("H", 5).GetGlobalAdapterNumber(), 1u);
    EXPECT_EQ(Adapter("H", 9).GetGlobalAdapterNumber(), 2u);
    EXPECT_EQ(Adapter("H", 4).GetGlobalAdapterNumber(), notRegistered);
    EXPECT_EQ(static_cast<int>(Adapter("H", 4).GetGlobalAdapterNumber()), -1);
    EXPECT_EQ(Lists().at("H"), (std::vector<int>{7, 5, 9}));
}

TEST_F(GetGlobalAdapterNumber, HostsCountIndependently) {
    Adapter("A", 0).SetAdapterUniqueID(1);
    Adapter("A", 0).SetAdapterUniqueID(2);
    Adapter("B", 0).SetAdapterUniqueID(2);
    EXPECT_EQ(Adapter("A", 2).GetGlobalAdapterNumber(), 1u);
    EXPECT_EQ(Adapter("B", 2).GetGlobalAdapterNumber(), 0u);
    EXPECT_EQ(Adapter("B", 1).GetGlobalAdapterNumber(), notRegistered);
}

TEST_F(GetGlobalAdapterNumber, HostNamesCompareLetterForLetter) {
    Adapter("Host", 0).SetAdapterUniqueID(2);
    EXPECT_EQ(Adapter("host", 2).GetGlobalAdapterNumber(), notRegistered);
    EXPECT_EQ(Adapter("Host ", 2).GetGlobalAdapterNumber(), notRegistered);
}

TEST_F(GetGlobalAdapterNumber, AskingLeavesAnEmptyListForANewHost) {
    const CGlobalAdapterID adapter = Adapter("new", 3);
    EXPECT_EQ(adapter.GetGlobalAdapterNumber(), notRegistered);
    EXPECT_EQ(Lists(), (std::map<std::string, std::vector<int>>{{"new", {}}}));
}

TEST_F(GetGlobalAdapterNumber, StaysWhenOthersAreRegistered) {
    CGlobalAdapterID first = Adapter("H", 0);
    first.SetAdapterUniqueID(100);
    for (int id = 0; id < 50; ++id) {
        CGlobalAdapterID other = Adapter("H", 0);
        other.SetAdapterUniqueID(id);
        EXPECT_EQ(other.GetGlobalAdapterNumber(), static_cast<unsigned int>(id) + 1);
    }
    EXPECT_EQ(first.GetGlobalAdapterNumber(), 0u);
}

TEST_F(GenerateUniqueAdapterNumberForHost, PCIAddressesCollide) {
    for (int bus = 0; bus < 256; ++bus) {
        for (int device = 0; device < 32; ++device) {
            CGlobalAdapterID::GenerateUniqueAdapterNumber(0, bus, device, 0, "host");
        }
    }
    EXPECT_EQ(Lists()["host"].size(), 602U);
}

TEST_F(GenerateUniqueAdapterNumberForHost, WeighsTheFourNumbers) {
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(1, 0, 0, 0, "H"), 3);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, 1, 0, 0, "H"), 4);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, 0, 1, 0, "H"), 5);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, 0, 0, 1, "H"), 6);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(1000, 200, 30, 4, "H"), 1508);
    EXPECT_EQ(Lists().at("H"), (std::vector<int>{3, 4, 5, 6, 1508}));
}

TEST_F(GenerateUniqueAdapterNumberForHost, RegistersOnce) {
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, 0, 0, 0, "H"), 2);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, 0, 0, 0, "H"), 2);
    EXPECT_EQ(Lists(), (std::map<std::string, std::vector<int>>{{"H", {2}}}));
}

TEST_F(GenerateUniqueAdapterNumberForHost, DifferentPlacesMayShareAnIdentifier) {
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(2, 0, 0, 0, "H"), 4);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, 1, 0, 0, "H"), 4);
    EXPECT_EQ(Lists().at("H"), (std::vector<int>{4}));
    EXPECT_EQ(Adapter("H", 4).GetGlobalAdapterNumber(), 0u);
}

TEST_F(GenerateUniqueAdapterNumberForHost, RegistersZeroAndOneAndNegativesToo) {
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(-2, 0, 0, 0, "H"), 0);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(-1, 0, 0, 0, "H"), 1);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, -2, 0, 0, "H"), -2);
    EXPECT_EQ(Lists().at("H"), (std::vector<int>{0, 1, -2}));
}

TEST_F(GenerateUniqueAdapterNumberForHost, WrapsAround) {
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(INT_MAX - 2, 0, 0, 0, "H"), INT_MAX);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(INT_MAX - 1, 0, 0, 0, "H"), INT_MIN);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(INT_MAX, 0, 0, 0, "H"), INT_MIN + 1);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, INT_MAX, 0, 0, "H"), 0);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, INT_MIN, 0, 0, "H"), 2);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, 0, INT_MAX, 0, "H"), INT_MAX);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, 0, INT_MIN, 0, "H"), INT_MIN + 2);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, 0, 0, INT_MAX, "H"), -2);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, 0, 0, 0x40000000, "H"), 2);
    EXPECT_EQ(CGlobalAdapterID::GenerateUniqueAdapterNumber(INT_MIN, INT_MIN, INT_MIN, INT_MIN, "H"), 2);
}

TEST_F(GenerateUniqueAdapterNumberForHost, IsTheSumModuloTwoToThe32) {
    std::mt19937 random(PI::Test::RandomSeed());
    for (int i = 0; i < 2000; ++i) {
        const auto a = static_cast<std::int32_t>(random());
        const auto b = static_cast<std::int32_t>(random());
        const auto c = static_cast<std::int32_t>(random());
        const auto d = static_cast<std::int32_t>(random());
        const std::int64_t sum = std::int64_t{a} + 2 * std::int64_t{b} + 3 * std::int64_t{c} +
                                 4 * std::int64_t{d} + std::int64_t{2};

        const int id = CGlobalAdapterID::GenerateUniqueAdapterNumber(a, b, c, d, "H");

        ASSERT_EQ((sum - id) % (std::int64_t{1} << 32), 0) << a << " " << b << " " << c << " " << d;
        const CGlobalAdapterID adapter = Adapter("H", id);
        ASSERT_EQ(Lists().at("H").at(adapter.GetGlobalAdapterNumber()), id);
    }
}

TEST_F(GenerateUniqueAdapterNumber, SetsAndRegistersTheIdentifier) {
    CGlobalAdapterID adapter = Adapter("H", 5, {1, 1, 1, 1});
    adapter.GenerateUniqueAdapterNumber();
    EXPECT_EQ(adapter.GetAdapterUniqueID(), 12);
    EXPECT_EQ(Lists(), (std::map<std::string, std::vector<int>>{{"H", {12}}}));
    EXPECT_EQ(adapter.GetGlobalAdapterNumber(), 0u);
}

TEST_F(GenerateUniqueAdapterNumber, WeighsTheFourParts) {
    CGlobalAdapterID adapter = Adapter("H", 2, {1000, 200, 30, 4});
    adapter.GenerateUniqueAdapterNumber();
    EXPECT_EQ(adapter.GetAdapterUniqueID(), 1508);
    EXPECT_EQ(adapter.m_IDPart1, 1000);
    EXPECT_EQ(adapter.m_IDPart2, 200);
    EXPECT_EQ(adapter.m_IDPart3, 30);
    EXPECT_EQ(adapter.m_IDPart4, 4);
}

TEST_F(GenerateUniqueAdapterNumber, AdapterWithoutIdentifierKeepsNone) {
    for (const int id : {0, 1}) {
        CGlobalAdapterID adapter = Adapter("H", id, {1, 1, 1, 1});
        adapter.GenerateUniqueAdapterNumber();
        EXPECT_EQ(adapter.GetAdapterUniqueID(), id);
    }
    EXPECT_TRUE(Lists().empty());
}

TEST_F(GenerateUniqueAdapterNumber, IdentifiersAboveOneAsUnsignedNumbersPassTheGate) {
    for (const int id : {2, INT_MAX, INT_MIN, -1}) {
        CGlobalAdapterID adapter = Adapter("H", id, {1, 1, 1, 1});
        adapter.GenerateUniqueAdapterNumber();
        EXPECT_EQ(adapter.GetAdapterUniqueID(), 12) << id;
    }
    EXPECT_EQ(Lists().at("H"), (std::vector<int>{12}));
}

TEST_F(GenerateUniqueAdapterNumber, ZeroAndOneAreNotTaken) {
    for (const int part : {-2, -1}) {
        CGlobalAdapterID adapter = Adapter("H", 5, {part, 0, 0, 0});
        adapter.GenerateUniqueAdapterNumber();
        EXPECT_EQ(adapter.GetAdapterUniqueID(), 5) << part;
    }
    EXPECT_TRUE(Lists().empty());
}

TEST_F(GenerateUniqueAdapterNumber, TwoAndNegativesAreTaken) {
    CGlobalAdapterID adapter = Adapter("H", 5, {0, 0, 0, 0});
    adapter.GenerateUniqueAdapterNumber();
    EXPECT_EQ(adapter.GetAdapterUniqueID(), 2);

    adapter.m_IDPart1 = -3;
    adapter.GenerateUniqueAdapterNumber();
    EXPECT_EQ(adapter.GetAdapterUniqueID(), -1);
    EXPECT_EQ(Lists().at("H"), (std::vector<int>{2, -1}));
}

TEST_F(GenerateUniqueAdapterNumber, WrapsAround) {
    CGlobalAdapterID adapter = Adapter("H", 5, {INT_MAX, INT_MAX, INT_MAX, INT_MAX});
    adapter.GenerateUniqueAdapterNumber();
    EXPECT_EQ(adapter.GetAdapterUniqueID(), -8);

    // The sum is 2^32 and comes out as 0, which is not taken.
    CGlobalAdapterID wrapped = Adapter("H", 5, {0, INT_MAX, 0, 0});
    wrapped.GenerateUniqueAdapterNumber();
    EXPECT_EQ(wrapped.GetAdapterUniqueID(), 5);
    EXPECT_EQ(Lists().at("H"), (std::vector<int>{-8}));
}

TEST_F(GenerateUniqueAdapterNumber, GivesAdaptersOfSeveralPluginsOneSequence) {
    CGlobalAdapterID hardware = Adapter("H", 2, {0, 1, 0, 0});
    hardware.GenerateUniqueAdapterNumber();
    CGlobalAdapterID software;
    software.m_HostName = "H";
    software.SetAdapterUniqueID(CGlobalAdapterID::GenerateUniqueAdapterNumber(0, 0, 0, 9, "H"));
    EXPECT_EQ(hardware.GetGlobalAdapterNumber(), 0u);
    EXPECT_EQ(software.GetGlobalAdapterNumber(), 1u);
}

}  // namespace
