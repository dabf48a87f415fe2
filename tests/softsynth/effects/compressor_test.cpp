// The gain curve and the factors that both compressors share.

#include "softsynth/effects/compressor.h"

#include <cmath>

#include <gtest/gtest.h>

namespace tarquil {

namespace {

TEST(Compressor, ExtremeSettingsGiveFiniteGains) {
    const float infinity = 1.0F / 0.0F;
    EXPECT_EQ(compressor_knee(0.1F, 0.0F, infinity, -0.5F, 3.0F), 0.0F);
    EXPECT_EQ(compressor_knee(0.1F, 0.0F, infinity, compressor_inv_ratio_minus_one(1.0F), 3.0F),
              3.0F);
    EXPECT_EQ(compressor_knee(1e38F, 1e-6F, 1e6F, -1.0F, 0.0F), 0.0F);
    EXPECT_EQ(compressor_inv_ratio_minus_one(63.5F), -1.0F);
    EXPECT_GT(compressor_inv_ratio_minus_one(63.0F), -1.0F);
}

TEST(Compressor, LevelDoublesAndHalvesInTheTimeSet) {
    // (seconds * 44100 + 1) steps, each with a relative error of up to 6e-8.
    EXPECT_NEAR(std::pow(compressor_attack_factor(0.01F), 442.0F), 2.0F, 6e-5F);
    EXPECT_NEAR(std::pow(compressor_release_factor(0.02F), 883.0F), 0.5F, 3e-5F);
    EXPECT_EQ(compressor_next_level(0.2F, 0.9F, compressor_attack_factor(0.0F), 0.5F), 0.9F);
    EXPECT_EQ(compressor_next_level(0.2F, 0.2F, 2.0F, 0.5F), 0.1F);
    EXPECT_EQ(compressor_next_level(0.00011F, 0.0F, 2.0F, 0.5F), COMPRESSOR_MIN_LEVEL);
}

} // namespace

} // namespace tarquil
