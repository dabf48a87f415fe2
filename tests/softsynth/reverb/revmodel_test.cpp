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
