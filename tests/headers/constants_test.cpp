// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

// As above, but the macros are taken away where the constants are wanted.
#include <linux/fs.h>
#include <linux/hdreg.h>
#include <resolv.h>
#include <scsi/scsi.h>

#include <pi/pi.h>

#undef BLOCK_SIZE
#undef BUSY
#undef DELETE
#undef STATUS

namespace {

TEST(Headers, ConstantsAreThereBehindSystemHeadersOnceTheMacrosAreTakenAway) {
    EXPECT_EQ(PI::PropertyValueToString(PI::PropertyValue::BUSY), "BUSY");
    EXPECT_EQ(PI::PropertyIDToString(PI::PropertyID::STATUS), "STATUS");
    EXPECT_EQ(PI::PropertyIDToString(PI::PropertyID::BLOCK_SIZE), "BLOCK_SIZE");
    EXPECT_EQ(PI::OperationIDToString(PI::OperationID::DELETE), "DELETE");
}

}  // namespace
