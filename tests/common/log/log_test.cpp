// Tests of the log: silent until it is asked for.

#include "common/log/log.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

TEST(Log, IsPrintedOnlyWhileItIsOn) {
    testing::internal::CaptureStderr();
    logPrintf("unheard %d\n", 1);
    logEnable();
    logPrintf("heard %d\n", 2);
    logDisable();
    logPrintf("unheard %d\n", 3);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "heard 2\n");
}

} // namespace

} // namespace tarquil
