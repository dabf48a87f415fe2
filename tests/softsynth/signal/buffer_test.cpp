// Buffers' sizes.

#include "softsynth/signal/buffer.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

StereoBuffer stereo_a;
StereoBuffer stereo_b;
MonoBuffer mono_a;

TEST(Buffer, NullifyLeavesWhatLiesBeyondTheSize) {
    mono_a.init(8);
    mono_a.get_first_sample_ptr()[4] = 5.0F;
    mono_a.init(4);
    mono_a.nullify();
    EXPECT_EQ(mono_a.get_first_sample_ptr()[3], 0.0F);
    EXPECT_EQ(mono_a.get_first_sample_ptr()[4], 5.0F);
}

TEST(BufferDeathTest, SizeRulesAreAsserted) {
    stereo_a.init(6);
    stereo_b.init(6);
    Buffer::scale(stereo_a, 0.5F, stereo_b); // an even frame count is enough for stereo scale
    EXPECT_DEATH(stereo_a += stereo_b,
                 "Assert failure at softsynth/signal/buffer.*buf_size % 4 == 0");
    EXPECT_DEATH(Buffer::add_scaled(stereo_a, 1.0F, stereo_b), "signal_buf.buf_size % 4 == 0");
    EXPECT_EQ(stereo_a.get_left_sample_ptr(6), stereo_a.get_first_left_sample_ptr() + 12);
    EXPECT_DEATH(stereo_a.get_left_sample_ptr(7), "time <= buf_size");
}

} // namespace

} // namespace tarquil
