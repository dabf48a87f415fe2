// The limiter: bits below the ceiling, no sample above it, no jump in its gain.

#include "softsynth/effects/limiter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace tarquil {
namespace {

constexpr uint32_t DELAY = Limiter::LOOK_AHEAD;

std::vector<float> noise(size_t frames, float level, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> values(-level, level);
    std::vector<float> sound(2 * frames);
    for (float& value : sound)
        value = values(random);
    return sound;
}

std::vector<float> limited(std::vector<float> sound, uint32_t block) {
    Limiter limiter;
    const auto frames = uint32_t(sound.size() / 2);
    for (uint32_t done = 0; done < frames; done += block)
        limiter.render(&sound[2 * size_t(done)], std::min(block, frames - done));
    return sound;
}

TEST(Limiter, KeepsEveryBitBelowTheCeiling) {
    const std::vector<float> in = noise(3000, Limiter::CEILING, 1);
    const std::vector<float> out = limited(in, 64);
    for (size_t i = 0; i + size_t(2) * DELAY < in.size(); i++)
        ASSERT_EQ(out[i + size_t(2) * DELAY], in[i]);
}

TEST(Limiter, LetsNothingAboveTheCeiling) {
    for (const float level : {0.95F, 2.0F, 100.0F}) {
        std::vector<float> in = noise(20000, level, 2);
        for (size_t i = 0; i < in.size(); i++) // bursts of all lengths between silences
            in[i] *= (i / 301) % 3 == 0 ? 1.0F : 0.1F;
        for (const float value : limited(in, 64))
            ASSERT_LE(std::fabs(value), Limiter::CEILING);
    }
}

TEST(Limiter, DoesNotHangOnBlocks) {
    const std::vector<float> in = noise(5000, 1.5F, 3);
    EXPECT_EQ(limited(in, 64), limited(in, 7));
}

TEST(Limiter, GainMovesSmoothlyAndComesBackToOne) {
    // One loud frame on a steady level shows the gain.
    constexpr size_t FRAMES = 60000;
    std::vector<float> in(2 * FRAMES, 0.5F);
    in[2000] = 1.7F;
    const std::vector<float> out = limited(in, 64);
    float last = 0.5F;
    float lowest = 1.0F;
    for (size_t frame = DELAY; frame < FRAMES; frame++) {
        const float value = out[2 * frame + 1];
        EXPECT_LE(std::fabs(value - last), 0.5F / DELAY);
        last = value;
        lowest = std::min(lowest, value);
    }
    EXPECT_NEAR(lowest, 0.5F * Limiter::CEILING / 1.7F, 0.001F);
    EXPECT_NEAR(out[2000 + 2 * DELAY], Limiter::CEILING, 0.001F);
    EXPECT_EQ(out[2 * (DELAY - 1 + 900) + 1], 0.5F); // before it
    EXPECT_EQ(last, 0.5F);                           // and long after
}

} // namespace
} // namespace tarquil
