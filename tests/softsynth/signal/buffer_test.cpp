// Buffer arithmetic and its preconditions.

#include "softsynth/signal/buffer.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

StereoBuffer stereo_a;
StereoBuffer stereo_b;
MonoBuffer mono_a;
MonoBuffer mono_b;
MonoBuffer mono_c;

TEST(Buffer, MixIsAPerSampleCrossfade) {
    for (MonoBuffer* buffer : {&mono_a, &mono_b, &mono_c})
        buffer->init(8);
    for (int i = 0; i < 8; i++) {
        mono_a.get_first_sample_ptr()[i] = 0.1F * float(i);
        mono_b.get_first_sample_ptr()[i] = 3.0F - float(i);
        mono_c.get_first_sample_ptr()[i] = i < 4 ? 0.0F : 1.0F;
    }
    static MonoBuffer out;
    out.init(8);
    Buffer::mix(mono_a, mono_b, mono_c, out);
    for (int i = 0; i < 8; i++) {
        const float a = mono_a.get_first_sample_ptr()[i];
        const float b = mono_b.get_first_sample_ptr()[i];
        EXPECT_EQ(out.get_first_sample_ptr()[i], i < 4 ? a : a + (b - a));
    }
}

TEST(Buffer, MakeFromMonoMultipliesVolumeFirst) {
    mono_a.init(4);
    mono_b.init(4);
    mono_c.init(4);
    stereo_a.init(4);
    for (int i = 0; i < 4; i++) {
        mono_a.get_first_sample_ptr()[i] = 0.3F;
        mono_b.get_first_sample_ptr()[i] = 0.7F;
        mono_c.get_first_sample_ptr()[i] = float(i) * 0.25F;
    }
    stereo_a.make_from_mono(mono_a, mono_b, mono_c, mono_b);
    for (uint32_t i = 0; i < 4; i++) {
        EXPECT_EQ(*stereo_a.get_left_sample_ptr(i), 0.3F * 0.7F * (float(i) * 0.25F));
        EXPECT_EQ(*stereo_a.get_right_sample_ptr(i), 0.3F * 0.7F * 0.7F);
    }
}

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
