// Tests of the log: silent until it is asked for.

#include "common/log/log.h"

#include <gtest/gtest.h>

#include <cstdlib>

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

// The child starts anew and reads the environment.
TEST(LogDeathTest, TheEnvironmentTurnsItOn) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto log_and_leave = [] {
        logPrintf("heard\n");
        std::fputs("end\n", stderr);
        std::exit(0);
    };
    setenv("TARQUIL_LOG", "1", 1);
    EXPECT_EXIT(log_and_leave(), testing::ExitedWithCode(0), "^heard\nend");
    setenv("TARQUIL_LOG", "0", 1);
    EXPECT_EXIT(log_and_leave(), testing::ExitedWithCode(0), "^end");
    unsetenv("TARQUIL_LOG");
}

} // namespace

} // namespace tarquil
