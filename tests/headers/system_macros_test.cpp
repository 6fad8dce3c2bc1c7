// SPDX-License-Identifier: Apache-2.0

#include <linux/fs.h>
#include <linux/hdreg.h>
#include <resolv.h>
#include <scsi/scsi.h>

#include <gtest/gtest.h>

#include <pi/pi.h>

namespace {

TEST(Headers, MacrosOfSystemHeadersKeepTheirValues) {
    EXPECT_EQ(BUSY, 0x04);
    EXPECT_EQ(BLOCK_SIZE, 1024);
    EXPECT_EQ(STATUS, ns_o_status);
    EXPECT_EQ(DELETE, ns_uop_delete);
}

TEST(Headers, VocabulariesWorkWhereTheMacrosAreAlive) {
    EXPECT_EQ(PI::ErrorCodeToString(PI::ErrorCode::GENERAL), "GENERAL");
    EXPECT_EQ(PI::PropertyValueToString(40025), "BUSY");
}

}  // namespace
