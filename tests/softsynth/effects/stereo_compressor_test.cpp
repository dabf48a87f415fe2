// Static curve, timing and stereo link of the band compressor.

#include "softsynth/effects/stereo_compressor.h"

#include <cmath>
#include <limits>
#include <memory>

#include <gtest/gtest.h>

namespace tarquil {

namespace {

constexpr uint32_t BLOCK = 1000;

class StereoCompressorTest : public testing::Test {
  protected:
    // Blocks of a constant on both sides; returns the gain of the last frame.
    float run(float left, float right, int blocks = 1) {
        for (int b = 0; b < blocks; b++) {
            buf.init(BLOCK);
            for (uint32_t i = 0; i < BLOCK; i++) {
                *buf.get_left_sample_ptr(i) = left;
                *buf.get_right_sample_ptr(i) = right;
            }
            StereoBuffer* const bufs[] = {&buf};
            const StereoCompressor::Settings settings = {threshold, ratio, attack, release, makeup};
            StereoCompressor::process(&compressor, bufs, &settings, 1, *levels);
        }
        return *buf.get_left_sample_ptr(BLOCK - 1) / left;
    }

    StereoCompressor compressor;
    std::unique_ptr<StereoCompressor::Levels> levels = std::make_unique<StereoCompressor::Levels>();
    StereoBuffer buf;
    float threshold = 0.1F;
    float ratio = 4.0F;
    float attack = 0.001F;
    float release = 0.02F;
    float makeup = 2.0F;
};

TEST_F(StereoCompressorTest, SettlesOnTheStaticCurve) {
    for (const float input : {0.05F, 0.2F, 0.8F, 3.0F}) {
        compressor.reset();
        const float over = std::max(input / threshold, 1.0F);
        const float expected = std::pow(over, 1 / ratio - 1);
        // The detector sags by half a percent between updates of a constant: none is left here.
        EXPECT_NEAR(run(input, 0.5F * input, 20), 2.0F * expected, 1e-3F * expected) << input;
        EXPECT_NEAR(compressor.get_attenuation(), expected, 1e-3F * expected);
    }
}

TEST_F(StereoCompressorTest, LouderSideDrivesBoth) {
    run(0.01F, 1.0F, 20);
    EXPECT_NEAR(*buf.get_left_sample_ptr(BLOCK - 1), 0.01F * compressor.get_attenuation() * makeup,
                1e-7F);
    EXPECT_NEAR(compressor.get_attenuation(), std::pow(10.0F, -0.75F), 1e-3F);
}

TEST_F(StereoCompressorTest, InstantAttackRespondsInTheSameFrame) {
    attack = 0.0F;
    ratio = 64.0F;
    makeup = 1.0F;
    run(0.8F, 0.0F);
    EXPECT_NEAR(*buf.get_left_sample_ptr(0), threshold, 1e-6F);
}

TEST_F(StereoCompressorTest, InfiniteSamplesClearTheEnvelope) {
    run(std::numeric_limits<float>::infinity(), 0.0F);
    EXPECT_EQ(compressor.get_attenuation(), 0.0F);
    StereoCompressor fresh;
    run(0.5F, 0.5F);
    StereoBuffer after = buf;
    compressor = fresh;
    run(0.5F, 0.5F);
    for (uint32_t i = 0; i < BLOCK; i++)
        ASSERT_EQ(*buf.get_left_sample_ptr(i), *after.get_left_sample_ptr(i));
}

} // namespace

} // namespace tarquil
