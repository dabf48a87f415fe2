// The choice of the kernels.

#include "softsynth/kernels/kernel_levels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace tarquil {

namespace {

TEST(KernelLevels, TheEnvironmentForcesALevelElseTheBestIsUsed) {
    ASSERT_STREQ(kernel_levels().front().name, "scalar");
    for (const KernelLevel& level : kernel_levels()) {
        setenv("TARQUIL_KERNELS", level.name, 1);
        EXPECT_STREQ(choose_kernel_level().name, level.name);
    }
    setenv("TARQUIL_KERNELS", "v9", 1);
    testing::internal::CaptureStderr();
    EXPECT_STREQ(choose_kernel_level().name, kernel_levels().back().name);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::AllOf(testing::HasSubstr("TARQUIL_KERNELS=v9"), testing::EndsWith("\n")));
    unsetenv("TARQUIL_KERNELS");
    EXPECT_STREQ(choose_kernel_level().name, kernel_levels().back().name);
}

} // namespace

} // namespace tarquil
