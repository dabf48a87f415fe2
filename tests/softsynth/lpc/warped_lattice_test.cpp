// The synthesis filter.

#include "softsynth/lpc/warped_lattice.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/softsynth/lpc/speech_samples.h"

namespace tarquil {

namespace {

LineCosines vowel_cosines() {
    LineCosines cosines{};
    const auto lines = vowel_lines();
    for (size_t i = 0; i < LPC_ORDER; i++)
        cosines[i] = std::cos(PI * (lines[i] + 0.5) / 256.0);
    return cosines;
}

} // namespace

// The memory never holds more energy than came in, so |output| <= (1 + w) / sqrt(1 - w^2) times its
// root, however the coefficients jump.
TEST(WarpedLattice, JumpingCoefficientsAddNoEnergy) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> any(-0.9999, 0.9999);
    std::uniform_real_distribution<float> level(-1, 1);
    for (const double warping : {0.0, 0.586, 0.99}) {
        WarpedLattice filter(warping);
        const double bound = (1.0 + warping) / std::sqrt(1.0 - warping * warping);
        double energy = 0.0;
        for (int i = 0; i < 20000; i++) {
            Reflections reflections{};
            for (double& k : reflections)
                k = any(random);
            filter.set_reflections(reflections);
            float sample = i < 10000 ? level(random) : 0.0F;
            energy += double(sample) * double(sample);
            filter.process(&sample, 1);
            ASSERT_LE(std::fabs(double(sample)), 1.001 * bound * std::sqrt(energy));
        }
    }
}

TEST(WarpedLattice, FadesToExactSilence) {
    WarpedLattice filter(0.586);
    const Reflections reflections = reflections_of_predictor(predictor_of_lines(vowel_cosines()));
    std::vector<float> block(32);
    block[0] = 1.0F;
    for (int i = 0; i < 2000; i++) {
        filter.set_reflections(reflections);
        filter.process(block.data(), uint32_t(block.size()));
        block.assign(32, 0.0F);
    }
    filter.process(block.data(), uint32_t(block.size()));
    EXPECT_EQ(block, std::vector<float>(32));
}

} // namespace tarquil
