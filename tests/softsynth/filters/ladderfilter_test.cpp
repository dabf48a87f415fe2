// The ladder at its limits; the golden scenes and tests/curves have its responses, and the insert
// effect's test its recovery.

#include "softsynth/filters/ladderfilter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <numeric>
#include <vector>

namespace tarquil {

namespace {

constexpr uint32_t BLOCK = 512;

// What becomes of the level of a sine of 300 Hz that is far beyond any voice.
double gain_of(int type, float octaves, float q) {
    LadderFilter filter;
    filter.init(FilterType(type), 0.0F);
    const std::vector<float> cutoff(BLOCK, octaves);
    const std::vector<float> resonance(BLOCK, q);
    double in = 0;
    double out = 0;
    for (int block = 0; block < 40; block++) {
        std::vector<float> sound(BLOCK);
        for (uint32_t i = 0; i < BLOCK; i++)
            sound[i] = float(
                4.0 * std::sin(2 * std::numbers::pi * 300 / 44100 * (block * int(BLOCK) + int(i))));
        in += std::inner_product(sound.begin(), sound.end(), sound.begin(), 0.0);
        filter.render(sound.data(), BLOCK, cutoff.data(), resonance.data());
        out += std::inner_product(sound.begin(), sound.end(), sound.begin(), 0.0);
    }
    return std::sqrt(out / in);
}

TEST(LadderFilter, StaysBoundedAtEverySetting) {
    for (int type = 18; type < 25; type++) {
        for (const float octaves : {-1000.0F, 0.0F, 5.0F, 10.0F, 1000.0F}) {
            for (const float q : {0.0F, 7.5F}) {
                // At the highest cutoff the feedback turns over, and only the saturation holds it.
                EXPECT_LT(gain_of(type, octaves, q), 500) << type << " " << octaves;
            }
        }
    }
}

} // namespace

} // namespace tarquil
