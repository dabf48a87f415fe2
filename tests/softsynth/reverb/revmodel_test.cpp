// The reverb: delays, width, decay, recovery.

#include "softsynth/reverb/revmodel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "tests/softsynth/signal/noise.h"

namespace tarquil {

namespace {

std::vector<float> impulse(revmodel& model, long frames) {
    std::vector<float> in(size_t(2 * frames));
    std::vector<float> out(size_t(2 * frames));
    in[0] = 1.0F;
    model.processmix(in.data(), out.data(), frames);
    return out;
}

std::unique_ptr<revmodel> make(float width, float wet, float room = 0.5F) {
    auto model = std::make_unique<revmodel>();
    model->setwidth(width);
    model->setwet(wet);
    model->setroomsize(room);
    model->update();
    return model;
}

size_t first_sound(const std::vector<float>& out, size_t side) {
    for (size_t i = 0; 2 * i < out.size(); i++) {
        if (out[2 * i + side] != 0.0F)
            return i;
    }
    return out.size();
}

double energy(const std::vector<float>& out, size_t from, size_t to) {
    double sum = 0;
    for (size_t i = 2 * from; i < 2 * to; i++)
        sum += double(out[i]) * double(out[i]);
    return sum;
}

TEST(Reverb, FirstReflectionsComeAtTheirDelays) {
    const std::vector<float> wide = impulse(*make(1, 1), 4096);
    EXPECT_EQ(first_sound(wide, 0), 1116U);
    EXPECT_EQ(first_sound(wide, 1), 1139U);
    // Four all-passes of gain -1 on the way: the sign is kept.
    EXPECT_FLOAT_EQ(wide[2 * 1116], 0.015F * 3);
    const std::vector<float> narrow = impulse(*make(0, 1), 4096);
    EXPECT_EQ(first_sound(narrow, 1), 1116U);
}

TEST(Reverb, NothingComesBackWithoutWetAndTheRoomSetsTheDecay) {
    EXPECT_EQ(energy(impulse(*make(1, 0), 4096), 0, 4096), 0.0);
    const auto decay = [](float room) {
        const std::vector<float> out = impulse(*make(1, 1, room), 44100);
        return energy(out, 33000, 44000) / energy(out, 2000, 13000);
    };
    EXPECT_LT(decay(0), 1e-4);
    EXPECT_GT(decay(1), 20 * decay(0.5F));
    EXPECT_LT(decay(1), 1);
}

// The size of the left output once an input of 1 (`sign` 1) or of alternating 1 and -1 (`sign` -1)
// on both sides has settled.
float settled(float room, float damp, float sign) {
    const auto model = make(1, 0.5F, room);
    model->setdamp(damp);
    model->update();
    std::vector<float> in(8192);
    for (size_t i = 0; i < in.size(); i++)
        in[i] = i / 2 % 2 == 0 ? 1.0F : sign;
    std::vector<float> out(in.size());
    for (int i = 0; i < 60; i++) // 240,000 frames
        model->processreplace(in.data(), out.data(), 4096);
    return std::fabs(out[0]);
}

TEST(Reverb, SteadySoundsMeetTheory) {
    constexpr double INPUT = 2 * 0.015;
    constexpr double WET = 0.5 * 3;
    // At 0 Hz the damping has no effect: eight combs of gain 1 / (1 - feedback), all-passes of 1.
    for (const float damp : {0.0F, 1.0F}) {
        EXPECT_NEAR(settled(0, damp, 1), INPUT * WET * 8 / (1 - 0.7), 1e-3);
        EXPECT_NEAR(settled(0.5F, damp, 1), INPUT * WET * 8 / (1 - 0.84), 1e-3);
    }
    // At 22050 Hz the low-pass is (1 - d) / (1 + d); four of the left combs are even and four odd,
    // and the three odd all-passes have a gain of -5/3.
    for (const float damp : {0.0F, 0.5F, 1.0F}) {
        const double d = 0.4 * double(damp);
        const double loop = 0.84 * (1 - d) / (1 + d);
        const double combs = 4 / (1 - loop) - 4 / (1 + loop);
        EXPECT_NEAR(settled(0.5F, damp, -1), INPUT * WET * combs * 125 / 27, 2e-3) << damp;
    }
}

TEST(Reverb, RecoversFromWhatIsNotFinite) {
    const auto model = make(1, 1);
    std::vector<float> in(512, INFINITY);
    std::vector<float> out(512);
    model->processmix(in.data(), out.data(), 256);
    std::fill(in.begin(), in.end(), 0.0F);
    for (int i = 0; i < 20; i++) {
        std::fill(out.begin(), out.end(), 0.0F);
        model->processmix(in.data(), out.data(), 256);
        for (const float sample : out)
            ASSERT_TRUE(std::isfinite(sample));
    }
    // The delay memory has been cleared as a whole: what sounds now is what a new reverb plays.
    EXPECT_EQ(impulse(*model, 8192), impulse(*make(1, 1), 8192));
}

TEST(Reverb, ReplacesOrAddsTheSameSound) {
    const std::vector<float> in = noise(8192);
    std::vector<float> added(in.size());
    std::vector<float> replaced(in.size(), 5.0F);
    make(0.3F, 1)->processmix(in.data(), added.data(), 4096);
    make(0.3F, 1)->processreplace(in.data(), replaced.data(), 4096);
    EXPECT_EQ(added, replaced);
    EXPECT_GT(energy(added, 2000, 4096), 0);
}

} // namespace

} // namespace tarquil
