// SPDX-License-Identifier: Apache-2.0

#include "layout_tree.h"

#include <gtest/gtest.h>

using namespace pitool;

namespace {

std::string Tree(const std::string& text) {
    LayoutDocument document;
    PlacedMessage problem;
    EXPECT_TRUE(ReadLayout(text, document, problem)) << problem.m_Text;
    return LayoutTree(document);
}

}  // namespace

TEST(LayoutTree, AnEmptyArraySaysWhatItLacks) {
    EXPECT_EQ(Tree("<ArrayConfiguration Size='1024' Units='21025'/>"),
              "array, size 1024 (1.00 kibibytes), sizes in bytes\n"
              "|-- containers: none\n"
              "`-- logical drives: none\n");
}

TEST(LayoutTree, AnEmptyLogicalDriveSaysWhatItLacks) {
    EXPECT_EQ(Tree("<LogicalDriveConfiguration Size='1' Units='21022' SpanCount='1' SpanSize='2'/>"),
              "logical drive, size 1 (1.00 gibibytes), sizes in gibibytes\n"
              "|-- 1 span of size 2\n"
              "|-- containers: none\n"
              "|-- global hot spares: none\n"
              "|-- dedicated hot spares: none\n"
              "`-- associated logical drives: none\n");
}

TEST(LayoutTree, AnUnknownUnitIsNamedAndSizesStandAsWritten) {
    const std::string drive =
        "'><Containers><Container><Drive ObjectID='1' StartAddress='2' UsedSize='3'/>"
        "</Container></Containers></ArrayConfiguration>";
    EXPECT_EQ(Tree("<ArrayConfiguration Size='5' Units='7" + drive),
              "array, size 5, sizes in an unknown unit (Units 7)\n"
              "|-- container 1, 1 drive\n"
              "|   `-- drive 1, start 2, size 3\n"
              "`-- logical drives: none\n");
    EXPECT_EQ(Tree("<ArrayConfiguration Size='5' Units='21006" + drive).substr(0, 57),
              "array, size 5, sizes in an unknown unit (unspecified)\n|--");
}

TEST(LayoutTree, ADriveShowsWhoUsesItAndWhetherItIsConfigurable) {
    EXPECT_EQ(Tree("<ArrayConfiguration Size='1' Units='21025'><Containers><Container>"
                   "<Drive ObjectID='1' StartAddress='0' UsedSize='2048' LogicalDrive='5' LogicalOwner='6' "
                   "IsConfigurable='0'/></Container><Container/></Containers>"
                   "<LogicalDrives><LogicalDrive ObjectID='5'/></LogicalDrives></ArrayConfiguration>"),
              "array, size 1 (1 byte), sizes in bytes\n"
              "|-- container 1, 1 drive\n"
              "|   `-- drive 1, start 0 (0 bytes), size 2048 (2.00 kibibytes), logical drive 5, owner 6, not "
              "configurable\n"
              "|-- container 2, 0 drives\n"
              "`-- logical drives\n"
              "    `-- logical drive 5\n");
}
