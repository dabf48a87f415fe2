// The ladder: levels, bounds, recovery.

#include "softsynth/filters/ladderfilter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace tarquil {

namespace {

constexpr uint32_t BLOCK = 512;

// Renders a quiet sine, for which the stages are nearly linear, and returns the gain.
double gain_of(int type, double hz, float octaves, float q, double level = 0.001,
               float key_frequency = 0) {
    LadderFilter filter;
    filter.init(FilterType(type), key_frequency);
    const std::vector<float> cutoff(BLOCK, octaves);
    const std::vector<float> resonance(BLOCK, q);
    std::vector<float> sound(BLOCK);
    const double step = 2 * std::numbers::pi * hz / 44100;
    double in = 0;
    double out = 0;
    for (int block = 0; block < 40; block++) {
        for (uint32_t i = 0; i < BLOCK; i++)
            sound[i] = float(level * std::sin(step * (block * int(BLOCK) + int(i))));
        if (block >= 20)
            for (const float sample : sound)
                in += double(sample) * double(sample);
        filter.render(sound.data(), BLOCK, cutoff.data(), resonance.data());
        if (block >= 20)
            for (const float sample : sound)
                out += double(sample) * double(sample);
    }
    return std::sqrt(out / in);
}

// The saturation's slope at 0.
constexpr double SATURATION_SLOPE = 0.5;

// The decimators' gain at 0 Hz: twice the sum of the half kernel, squared.  It is not 1.
double decimation_gain() {
    double sum = 0;
    for (const float tap : alt_resample_kernel)
        sum += 2 * double(tap);
    return sum * sum;
}

TEST(LadderFilter, PassesLowAndStopsHighFrequenciesWithTheSlopeOfItsPoles) {
    // Cutoff 20 Hz * 2^5 = 640 Hz, resonance 0.
    for (int poles = 1; poles <= 4; poles++) {
        const int type = FILTER_LADDER_START_MARKER + poles - 1;
        EXPECT_NEAR(gain_of(type, 20, 5, 0), SATURATION_SLOPE * decimation_gain(), 0.01) << poles;
        const double octave =
            20 * std::log10(gain_of(type, 2560, 5, 0) / gain_of(type, 5120, 5, 0));
        EXPECT_NEAR(octave, 6.0 * poles, 0.6 * poles) << poles;
    }
    // At 0 Hz all stages are equal, so that only the weights count: of the input 1, of each stage
    // the saturation's slope.
    EXPECT_NEAR(gain_of(22, 20, 8, 0), 0.5 * decimation_gain(), 0.01); // 1 - 2 / 2 + 1 / 2
    EXPECT_NEAR(gain_of(23, 20, 8, 0), 0, 0.01);                       // 1 / 2 - 2 / 2 + 1 / 2
    EXPECT_NEAR(gain_of(24, 20, 8, 0), 0, 0.05);                       // 1 - 2 / 2 + 4 / 2 - 4 / 2
    EXPECT_GT(gain_of(23, 5120, 8, 0), 0.1);
}

TEST(LadderFilter, StaysBoundedAtEverySetting) {
    for (int type = 18; type < 25; type++) {
        for (const float octaves : {-1000.0F, 0.0F, 5.0F, 10.0F, 1000.0F}) {
            for (const float q : {0.0F, 7.5F}) {
                // Input of 4 is far beyond any voice.  At the highest cutoff the feedback turns
                // over, and only the saturation holds it.
                EXPECT_LT(gain_of(type, 300, octaves, q, 4.0), 500) << type << " " << octaves;
            }
        }
    }
}

TEST(LadderFilter, RecoversFromWhatIsNotFinite) {
    const std::vector<float> cutoff(BLOCK, 5.0F);
    const std::vector<float> resonance(BLOCK, 3.0F);
    const auto impulse = [&](LadderFilter& filter) {
        std::vector<float> sound(BLOCK);
        sound[0] = 1.0F;
        filter.render(sound.data(), BLOCK, cutoff.data(), resonance.data());
        return sound;
    };
    LadderFilter fresh;
    fresh.init(FilterType(21), 100.0F);
    LadderFilter spoilt;
    spoilt.init(FilterType(21), 100.0F);
    std::vector<float> bad(BLOCK, INFINITY);
    spoilt.render(bad.data(), BLOCK, cutoff.data(), resonance.data());
    EXPECT_EQ(impulse(fresh), impulse(spoilt));
}

TEST(LadderFilterDeathTest, UnknownTypeAndLongBlocksAbort) {
    LadderFilter filter;
    EXPECT_DEATH(filter.init(FilterType(25), 0), "softsynth/filters/ladderfilter.*: 0");
    static float samples[4096];
    EXPECT_DEATH(filter.render(samples, 2049, samples, samples), "buf_size <= MAX_NUM_SAMPLES");
}

} // namespace

} // namespace tarquil
