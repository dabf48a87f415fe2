// The limiter: bits below the ceiling, no sample above it, no jump in its gain.

#include "softsynth/effects/limiter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "tests/softsynth/signal/noise.h"

namespace tarquil {
namespace {

std::vector<float> limited(std::vector<float> sound, uint32_t block) {
    Limiter limiter;
    const auto frames = uint32_t(sound.size() / 2);
    for (uint32_t done = 0; done < frames; done += block)
        limiter.render(&sound[2 * size_t(done)], std::min(block, frames - done));
    return sound;
}

TEST(Limiter, KeepsEveryBitBelowTheCeiling) {
    const std::vector<float> in = noise(6000, Limiter::CEILING);
    EXPECT_EQ(limited(in, 64), in);
}

TEST(Limiter, LetsNothingAboveTheCeiling) {
    for (const float level : {0.95F, 2.0F, 100.0F}) {
        std::vector<float> in = noise(40000, level);
        for (size_t i = 0; i < in.size(); i++) // bursts of all lengths between silences
            in[i] *= (i / 301) % 3 == 0 ? 1.0F : 0.1F;
        for (const uint32_t block : {64U, 20U, 1000U})
            for (const float value : limited(in, block))
                ASSERT_LE(std::fabs(value), Limiter::CEILING);
    }
}

TEST(Limiter, GainRampsWithinThePieceAndComesBackToOne) {
    // One loud frame on a steady level shows the gain.
    constexpr size_t FRAMES = 60000;
    constexpr size_t LOUD = 64 * 20 + 40;
    std::vector<float> in(2 * FRAMES, 0.5F);
    in[2 * LOUD] = 1.7F;
    const std::vector<float> out = limited(in, 64);
    const float lowest = 0.5F * Limiter::CEILING / 1.7F;
    float last = 0.5F;
    for (size_t frame = 0; frame < FRAMES; frame++) {
        const float value = out[2 * frame + 1];
        EXPECT_LE(std::fabs(value - last), (0.5F - lowest) / 40) << frame;
        EXPECT_GE(value, lowest);
        last = value;
    }
    EXPECT_FLOAT_EQ(out[2 * LOUD], Limiter::CEILING);
    EXPECT_FLOAT_EQ(out[2 * LOUD + 1], lowest);
    EXPECT_EQ(out[2 * (64 * 20 - 1) + 1], 0.5F); // before the piece
    EXPECT_EQ(last, 0.5F);                       // and long after
}

TEST(Limiter, AHeldBassNoteKeepsItsShape) {
    for (const double hz : {20.0, 50.0, 82.4}) {
        constexpr float LEVEL = 1.7F;
        std::vector<float> in(size_t(2) * 44100);
        for (size_t i = 0; i < in.size(); i++)
            in[i] = LEVEL * float(std::sin(2.0 * std::numbers::pi * hz * double(i / 2) / 44100));
        const std::vector<float> out = limited(in, 64);
        for (size_t i = in.size() / 2; i < in.size(); i++)
            ASSERT_NEAR(out[i], in[i] * (Limiter::CEILING / LEVEL), 2e-5F) << hz << " Hz, " << i;
    }
}

} // namespace
} // namespace tarquil
