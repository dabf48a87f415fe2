// The build never fuses a multiplication with an addition: that would change the sound's bits.

#include <gtest/gtest.h>

namespace tarquil {

float multiply_and_add(float a, float b, float c); // contraction_probe.cpp, built on its own

namespace {

bool has_fused_multiply_add() {
#if defined(__x86_64__)
    return __builtin_cpu_supports("fma") != 0;
#else
    return true;
#endif
}

TEST(Contraction, IsOff) {
    if (!has_fused_multiply_add())
        GTEST_SKIP() << "this machine has no fused multiply-add";
    // (1 + 2^-12)^2 = 1 + 2^-11 + 2^-24 needs 25 bits: rounded before the subtraction it leaves
    // 2^-11, fused 2^-11 + 2^-24.
    EXPECT_EQ(multiply_and_add(1.0F + 0x1p-12F, 1.0F + 0x1p-12F, -1.0F), 0x1p-11F);
}

} // namespace

} // namespace tarquil
