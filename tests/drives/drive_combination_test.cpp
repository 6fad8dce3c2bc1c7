// SPDX-License-Identifier: Apache-2.0

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include <algorithm>
#include <bitset>

#include "support/trace_recorder.h"

namespace PI::Test {
namespace {

using testing::ElementsAre;

constexpr char ENTER[] = "ValidatePhysicalDriveCombination: Enter";
constexpr char LEAVE[] =
    "ValidatePhysicalDriveCombination: Leave OK: same type as other disks in container(s)";

constexpr int HDD = 40292;
constexpr int SSD = 40293;
constexpr int TYPES = 20116;
constexpr int MEDIA = 20122;

struct Drive {
    int m_Type;
    int m_Media;
    bool m_Attribute;
};

struct Permissions {
    bool m_0, m_1, m_2, m_3;
};

Permissions FromBits(unsigned bits) {
    return {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0};
}

int Validate(const Permissions& permit, const Drive& container, const Drive& drive) {
    return CPluginHelper::ValidatePhysicalDriveCombination(
        permit.m_0, permit.m_1, permit.m_2, permit.m_3, container.m_Type, container.m_Media,
        container.m_Attribute, drive.m_Type, drive.m_Media, drive.m_Attribute);
}

std::vector<CDriveMismatch> Explain(const Permissions& permit, const Drive& container, const Drive& drive) {
    return CPluginHelper::ExplainPhysicalDriveCombination(
        permit.m_0, permit.m_1, permit.m_2, permit.m_3, container.m_Type, container.m_Media,
        container.m_Attribute, drive.m_Type, drive.m_Media, drive.m_Attribute);
}

// --- Against the rules, one row for each combination of permissions

enum Rule {
    TYPES_OF_HDD,
    TYPES_OF_SSD,
    TYPES_ALWAYS,
    MEDIA_ONLY,
    HDD_TYPES_OR_MEDIA,
    SSD_TYPES_OR_MEDIA,
    BOTH
};

struct RuleRow {
    bool m_0, m_1, m_2;
    Rule m_Rule;
};

constexpr RuleRow RULES[] = {
    {false, true, true, TYPES_OF_HDD},
    {true, false, true, TYPES_OF_SSD},
    {false, false, true, TYPES_ALWAYS},
    {true, true, false, MEDIA_ONLY},
    {false, true, false, HDD_TYPES_OR_MEDIA},
    {true, false, false, SSD_TYPES_OR_MEDIA},
    {false, false, false, BOTH},
    {true, true, true, BOTH},
};

Rule RuleOf(const Permissions& permit) {
    for (const RuleRow& row : RULES) {
        if (row.m_0 == permit.m_0 && row.m_1 == permit.m_1 && row.m_2 == permit.m_2) {
            return row.m_Rule;
        }
    }
    throw std::logic_error("no rule");
}

struct Outcome {
    std::vector<_DRIVE_DIFFERENCE> m_Reasons;
    bool m_LeavesTraced;

    int Code() const {
        return m_Reasons.empty() ? 0 : m_Reasons[0] == DriveDifference::MEDIA ? MEDIA : TYPES;
    }
};

Outcome Expected(const Permissions& permit, const Drive& container, const Drive& drive) {
    if (permit.m_0 && permit.m_1 && permit.m_2 && permit.m_3) {
        return {{}, false};
    }
    if (drive.m_Type == 0 || drive.m_Media == 0) {
        return {{}, false};
    }
    const bool typesDiffer = drive.m_Type != container.m_Type;
    const bool mediaDiffer = drive.m_Media != container.m_Media;
    const bool bothHDD = container.m_Media == HDD && drive.m_Media == HDD;
    const bool bothSSD = container.m_Media == SSD && drive.m_Media == SSD;
    bool types = false;
    bool media = false;
    switch (RuleOf(permit)) {
        case TYPES_OF_HDD: types = bothHDD && typesDiffer; break;
        case TYPES_OF_SSD: types = bothSSD && typesDiffer; break;
        case TYPES_ALWAYS: types = typesDiffer; break;
        case MEDIA_ONLY: media = mediaDiffer; break;
        case HDD_TYPES_OR_MEDIA:
            types = bothHDD && typesDiffer;
            media = mediaDiffer;
            break;
        case SSD_TYPES_OR_MEDIA:
            types = bothSSD && typesDiffer;
            media = mediaDiffer;
            break;
        case BOTH:
            types = typesDiffer;
            media = mediaDiffer;
            break;
    }
    std::vector<_DRIVE_DIFFERENCE> reasons;
    if (types) {
        reasons.push_back(DriveDifference::TYPE);
    }
    if (media) {
        reasons.push_back(DriveDifference::MEDIA);
    }
    if (!permit.m_3 && drive.m_Attribute != container.m_Attribute) {
        reasons.push_back(DriveDifference::ATTRIBUTE);
    }
    return {reasons, reasons.empty()};
}

std::vector<Drive> Drives() {
    std::vector<Drive> drives;
    for (const int type : {0, 40300, 40301, -1}) {
        for (const int media : {0, HDD, SSD, HDD - 1, SSD + 1}) {
            for (const bool attribute : {false, true}) {
                drives.push_back({type, media, attribute});
            }
        }
    }
    return drives;
}

TEST(ValidatePhysicalDriveCombination, FollowsTheRulesAndTracesForEveryCombination) {
    TraceRecorder<0> recorder;
    for (unsigned bits = 0; bits < 16; ++bits) {
        const Permissions permit = FromBits(bits);
        for (const Drive& container : Drives()) {
            for (const Drive& drive : Drives()) {
                const Outcome expected = Expected(permit, container, drive);
                recorder.m_Records.clear();
                ASSERT_EQ(Validate(permit, container, drive), expected.Code())
                    << "permissions " << bits << ", container " << container.m_Type << '/'
                    << container.m_Media << '/' << container.m_Attribute << ", drive " << drive.m_Type << '/'
                    << drive.m_Media << '/' << drive.m_Attribute;
                ASSERT_EQ(recorder.m_Records.size(), expected.m_LeavesTraced ? 2U : 1U);
                ASSERT_EQ(recorder.m_Records[0].Text(), ENTER);
                if (expected.m_LeavesTraced) {
                    ASSERT_EQ(recorder.m_Records[1].Text(), LEAVE);
                }
            }
        }
    }
}

TEST(ValidatePhysicalDriveCombination, FollowsTheSameRulesWithoutTraces) {
    ASSERT_FALSE(VELKTrace::tracesEnabled);
    for (unsigned bits = 0; bits < 16; ++bits) {
        const Permissions permit = FromBits(bits);
        for (const Drive& container : Drives()) {
            for (const Drive& drive : Drives()) {
                ASSERT_EQ(Validate(permit, container, drive), Expected(permit, container, drive).Code());
            }
        }
    }
}

// --- Single rules, readable

TEST(ValidatePhysicalDriveCombination, AllPermissionsAllowAnything) {
    EXPECT_EQ(Validate({true, true, true, true}, {1, HDD, false}, {2, SSD, true}), 0);
}

TEST(ValidatePhysicalDriveCombination, UnknownDrivesAreNotChecked) {
    EXPECT_EQ(Validate({false, false, false, false}, {1, HDD, false}, {0, SSD, true}), 0);
    EXPECT_EQ(Validate({false, false, false, false}, {1, HDD, false}, {2, 0, true}), 0);
}

TEST(ValidatePhysicalDriveCombination, AnUnknownContainerIsChecked) {
    EXPECT_EQ(Validate({false, false, false, false}, {0, HDD, false}, {1, HDD, false}), TYPES);
    EXPECT_EQ(Validate({false, false, false, false}, {1, 0, false}, {1, HDD, false}), MEDIA);
}

TEST(ValidatePhysicalDriveCombination, DifferentAttributesCountAsTypesUnlessPermitted) {
    EXPECT_EQ(Validate({false, false, false, false}, {1, HDD, false}, {1, HDD, true}), TYPES);
    EXPECT_EQ(Validate({false, false, false, true}, {1, HDD, false}, {1, HDD, true}), 0);
}

TEST(ValidatePhysicalDriveCombination, OnlyTheSecondPermissionSeparatesHDDTypesAndMedia) {
    const Permissions permit = {false, true, false, false};
    EXPECT_EQ(Validate(permit, {1, HDD, false}, {2, HDD, false}), TYPES);
    EXPECT_EQ(Validate(permit, {1, HDD, false}, {1, SSD, false}), MEDIA);
    EXPECT_EQ(Validate(permit, {1, SSD, false}, {2, SSD, false}), 0);
}

TEST(ValidatePhysicalDriveCombination, ThePermissionsAreNotSymmetric) {
    EXPECT_EQ(Validate({true, true, false, true}, {1, HDD, false}, {2, HDD, false}), 0);
    EXPECT_EQ(Validate({true, true, true, false}, {1, HDD, false}, {2, HDD, false}), TYPES);
    EXPECT_EQ(Validate({true, true, true, false}, {1, HDD, false}, {1, SSD, false}), MEDIA);
}

TEST(ValidatePhysicalDriveCombination, TypesComeBeforeMedia) {
    EXPECT_EQ(Validate({false, false, false, false}, {1, HDD, false}, {2, SSD, false}), TYPES);
}

TEST(ValidatePhysicalDriveCombination, TracesToTheDefaultLog) {
    const TraceRecorder<0> recorder;
    Validate({false, false, false, false}, {1, HDD, false}, {1, HDD, false});
    ASSERT_EQ(recorder.m_Records.size(), 2U);
    const std::string prefix = "\\[defaultLog\\]\\[[0-9]+\\]\\[VELK_Trace\\]\\[494\\]";
    EXPECT_THAT(recorder.m_Records[0].m_Message, testing::MatchesRegex(prefix + ENTER));
    EXPECT_THAT(
        recorder.m_Records[1].m_Message,
        testing::MatchesRegex(prefix + "ValidatePhysicalDriveCombination: Leave OK: same type as other "
                                       "disks in container\\(s\\)"));
    EXPECT_EQ(recorder.m_Records[0].m_Instance, 0);
    EXPECT_EQ(recorder.m_Records[0].m_Line, 453U);
    EXPECT_EQ(recorder.m_Records[0].m_Severity, plog::debug);
}

// --- Every reason at once

constexpr unsigned PERMIT0 = 1;
constexpr unsigned PERMIT1 = 2;
constexpr unsigned PERMIT2 = 4;
constexpr unsigned PERMIT3 = 8;

/// Calls for every combination of permissions and drives.
template <class Check>
void ForEveryCombination(Check check) {
    for (unsigned bits = 0; bits < 16; ++bits) {
        for (const Drive& container : Drives()) {
            for (const Drive& drive : Drives()) {
                check(bits, container, drive);
                ASSERT_FALSE(testing::Test::HasFailure())
                    << "permissions " << bits << ", container " << container.m_Type << '/'
                    << container.m_Media << '/' << container.m_Attribute << ", drive " << drive.m_Type << '/'
                    << drive.m_Media << '/' << drive.m_Attribute;
            }
        }
    }
}

bool IsReason(_DRIVE_DIFFERENCE difference, unsigned bits, const Drive& container, const Drive& drive) {
    const std::vector<CDriveMismatch> reasons = Explain(FromBits(bits), container, drive);
    return std::any_of(reasons.begin(), reasons.end(),
                       [&](const CDriveMismatch& reason) { return reason.Difference() == difference; });
}

TEST(ExplainPhysicalDriveCombination, FirstReasonIsTheVerdict) {
    ForEveryCombination([](unsigned bits, const Drive& container, const Drive& drive) {
        const std::vector<CDriveMismatch> reasons = Explain(FromBits(bits), container, drive);
        EXPECT_EQ(reasons.empty() ? 0 : reasons.front().Code(), Validate(FromBits(bits), container, drive));
    });
}

TEST(ExplainPhysicalDriveCombination, GivesTheReasonsOfTheRulesInTheirOrder) {
    ForEveryCombination([](unsigned bits, const Drive& container, const Drive& drive) {
        std::vector<_DRIVE_DIFFERENCE> differences;
        for (const CDriveMismatch& reason : Explain(FromBits(bits), container, drive)) {
            differences.push_back(reason.Difference());
            switch (reason.Difference()) {
                case DriveDifference::TYPE:
                    EXPECT_EQ(reason.ContainerValue(), container.m_Type);
                    EXPECT_EQ(reason.DriveValue(), drive.m_Type);
                    EXPECT_EQ(reason.Code(), TYPES);
                    break;
                case DriveDifference::MEDIA:
                    EXPECT_EQ(reason.ContainerValue(), container.m_Media);
                    EXPECT_EQ(reason.DriveValue(), drive.m_Media);
                    EXPECT_EQ(reason.Code(), MEDIA);
                    break;
                case DriveDifference::ATTRIBUTE:
                    EXPECT_EQ(reason.ContainerValue(), container.m_Attribute ? 1 : 0);
                    EXPECT_EQ(reason.DriveValue(), drive.m_Attribute ? 1 : 0);
                    EXPECT_EQ(reason.Code(), TYPES);
                    break;
            }
        }
        EXPECT_EQ(differences, Expected(FromBits(bits), container, drive).m_Reasons);
    });
}

TEST(ExplainPhysicalDriveCombination, MissingPermissionsAreTheFewestThatLiftTheReason) {
    const auto count = [](unsigned set) { return std::bitset<4>(set).count(); };
    ForEveryCombination([&](unsigned bits, const Drive& container, const Drive& drive) {
        for (const CDriveMismatch& reason : Explain(FromBits(bits), container, drive)) {
            const unsigned missing = reason.MissingPermissions();
            EXPECT_EQ(missing & bits, 0U);
            EXPECT_FALSE(IsReason(reason.Difference(), bits | missing, container, drive));
            for (unsigned set = 0; set < 16; ++set) {
                const bool isBetter =
                    count(set) < count(missing) || (count(set) == count(missing) && set < missing);
                EXPECT_TRUE(!isBetter || IsReason(reason.Difference(), bits | set, container, drive)) << set;
            }
            EXPECT_LE(count(missing), 2U);
            EXPECT_TRUE(count(missing) == 1 || (missing & PERMIT3) != 0);
        }
    });
}

TEST(ExplainPhysicalDriveCombination, WhatAllReasonsMissMakesTheDriveFit) {
    ForEveryCombination([](unsigned bits, const Drive& container, const Drive& drive) {
        unsigned given = bits;
        for (const CDriveMismatch& reason : Explain(FromBits(bits), container, drive)) {
            given |= reason.MissingPermissions();
        }
        EXPECT_EQ(Validate(FromBits(given), container, drive), 0);
    });
}

TEST(ExplainPhysicalDriveCombination, GivesAllThreeReasonsAtOnce) {
    const std::vector<CDriveMismatch> reasons =
        Explain({false, false, false, false}, {7, HDD, false}, {8, SSD, true});
    ASSERT_EQ(reasons.size(), 3U);
    EXPECT_EQ(reasons[0].Difference(), DriveDifference::TYPE);
    EXPECT_EQ(reasons[0].ContainerValue(), 7);
    EXPECT_EQ(reasons[0].DriveValue(), 8);
    EXPECT_EQ(reasons[0].MissingPermissions(), PERMIT0);
    EXPECT_EQ(reasons[0].Code(), TYPES);
    EXPECT_EQ(reasons[1].Difference(), DriveDifference::MEDIA);
    EXPECT_EQ(reasons[1].ContainerValue(), HDD);
    EXPECT_EQ(reasons[1].DriveValue(), SSD);
    EXPECT_EQ(reasons[1].MissingPermissions(), PERMIT2);
    EXPECT_EQ(reasons[1].Code(), MEDIA);
    EXPECT_EQ(reasons[2].Difference(), DriveDifference::ATTRIBUTE);
    EXPECT_EQ(reasons[2].ContainerValue(), 0);
    EXPECT_EQ(reasons[2].DriveValue(), 1);
    EXPECT_EQ(reasons[2].MissingPermissions(), PERMIT3);
    EXPECT_EQ(reasons[2].Code(), TYPES);
}

TEST(ExplainPhysicalDriveCombination, NamesThePermissionOfTheMedium) {
    const auto missing = [](int media) {
        return Explain({false, false, false, true}, {1, media, false}, {2, media, false})
            .at(0)
            .MissingPermissions();
    };
    EXPECT_EQ(missing(HDD), PERMIT0);
    EXPECT_EQ(missing(SSD), PERMIT1);
}

TEST(ExplainPhysicalDriveCombination, TakesTwoPermissionsWhereThreeAlonePermitLess) {
    const std::vector<CDriveMismatch> reasons =
        Explain({true, true, false, false}, {1, HDD, false}, {1, SSD, false});
    ASSERT_EQ(reasons.size(), 1U);
    EXPECT_EQ(reasons[0].MissingPermissions(), PERMIT2 | PERMIT3);
}

TEST(ExplainPhysicalDriveCombination, TracesNothing) {
    const TraceRecorder<0> recorder;
    Explain({false, false, false, false}, {1, HDD, false}, {2, SSD, true});
    Explain({false, false, false, false}, {1, HDD, false}, {1, HDD, false});
    EXPECT_THAT(recorder.m_Records, testing::IsEmpty());
}

TEST(DriveCombination, UsesTheVocabulariesNumbers) {
    EXPECT_EQ(ErrorCode::SUCCESS, 0);
    EXPECT_EQ(ErrorCode::NO_MIX_OF_DIFFERENT_TYPES_IN_LD, TYPES);
    EXPECT_EQ(ErrorCode::NO_MIX_OF_DIFFERENT_MEDIA_TYPES_IN_LD, MEDIA);
    EXPECT_EQ(PropertyValue::HDD, HDD);
    EXPECT_EQ(PropertyValue::SSD, SSD);
}

}  // namespace
}  // namespace PI::Test
