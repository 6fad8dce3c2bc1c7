// SPDX-License-Identifier: Apache-2.0

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

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

int Validate(const Permissions& permit, const Drive& container, const Drive& drive) {
    return CPluginHelper::ValidatePhysicalDriveCombination(
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
    int m_Code;
    bool m_LeavesTraced;
};

Outcome Expected(const Permissions& permit, const Drive& container, const Drive& drive) {
    if (permit.m_0 && permit.m_1 && permit.m_2 && permit.m_3) {
        return {0, false};
    }
    if (drive.m_Type == 0 || drive.m_Media == 0) {
        return {0, false};
    }
    const bool typesDiffer = drive.m_Type != container.m_Type;
    const bool mediaDiffer = drive.m_Media != container.m_Media;
    const bool bothHDD = container.m_Media == HDD && drive.m_Media == HDD;
    const bool bothSSD = container.m_Media == SSD && drive.m_Media == SSD;
    int code = 0;
    switch (RuleOf(permit)) {
        case TYPES_OF_HDD: code = bothHDD && typesDiffer ? TYPES : 0; break;
        case TYPES_OF_SSD: code = bothSSD && typesDiffer ? TYPES : 0; break;
        case TYPES_ALWAYS: code = typesDiffer ? TYPES : 0; break;
        case MEDIA_ONLY: code = mediaDiffer ? MEDIA : 0; break;
        case HDD_TYPES_OR_MEDIA:
            if (bothHDD) {
                code = typesDiffer ? TYPES : 0;
            } else if (mediaDiffer) {
                code = MEDIA;
            }
            break;
        case SSD_TYPES_OR_MEDIA:
            if (bothSSD) {
                code = typesDiffer ? TYPES : 0;
            } else if (mediaDiffer) {
                code = MEDIA;
            }
            break;
        case BOTH:
            if (typesDiffer) {
                code = TYPES;
            } else if (mediaDiffer) {
                code = MEDIA;
            }
            break;
    }
    if (code == 0 && !permit.m_3 && drive.m_Attribute != container.m_Attribute) {
        code = TYPES;
    }
    return {code, code == 0};
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
    for (int bits = 0; bits < 16; ++bits) {
        const Permissions permit = {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0};
        for (const Drive& container : Drives()) {
            for (const Drive& drive : Drives()) {
                const Outcome expected = Expected(permit, container, drive);
                recorder.m_Records.clear();
                ASSERT_EQ(Validate(permit, container, drive), expected.m_Code)
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
    for (int bits = 0; bits < 16; ++bits) {
        const Permissions permit = {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0};
        for (const Drive& container : Drives()) {
            for (const Drive& drive : Drives()) {
                ASSERT_EQ(Validate(permit, container, drive), Expected(permit, container, drive).m_Code);
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

TEST(DriveCombination, UsesTheVocabulariesNumbers) {
    EXPECT_EQ(ErrorCode::SUCCESS, 0);
    EXPECT_EQ(ErrorCode::NO_MIX_OF_DIFFERENT_TYPES_IN_LD, TYPES);
    EXPECT_EQ(ErrorCode::NO_MIX_OF_DIFFERENT_MEDIA_TYPES_IN_LD, MEDIA);
    EXPECT_EQ(PropertyValue::HDD, HDD);
    EXPECT_EQ(PropertyValue::SSD, SSD);
}

}  // namespace
}  // namespace PI::Test
