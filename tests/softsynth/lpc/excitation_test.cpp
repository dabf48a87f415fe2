// The synthesis filter in silence, the whitener of its carrier, and the low-pass behind it.

#include <gtest/gtest.h>

#include <limits>

#include "softsynth/lpc/band_limit.h"
#include "softsynth/lpc/carrier_whitener.h"
#include "softsynth/lpc/warped_lattice.h"
#include "tests/softsynth/lpc/speech_samples.h"

namespace tarquil {

TEST(CarrierWhitener, StaysFiniteAndIsSilentInSilence) {
    CarrierWhitener whitener(0.586);
    EXPECT_EQ(whitener.process(0.0F), 0.0F);
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), 1e38F, -std::numeric_limits<float>::infinity()})
        for (int i = 0; i < 100; i++)
            EXPECT_TRUE(std::fabs(whitener.process(bad)) <= 16.0F);
}

TEST(WarpedLattice, FadesToExactSilence) {
    WarpedLattice filter(0.586);
    const Reflections reflections =
        reflections_of_predictor(predictor_of_lines(line_cosines(vowel_lines())));
    std::vector<float> block(32);
    block[0] = 1.0F;
    for (int i = 0; i <= 2000; i++) {
        filter.set_reflections(reflections);
        filter.process(block.data(), uint32_t(block.size()));
        if (i < 2000)
            block.assign(32, 0.0F);
    }
    EXPECT_EQ(block, std::vector<float>(32));
}

TEST(BandLimit, KeepsWhatLiesBelowAndDropsWhatLiesAbove) {
    for (const double cutoff : {1000.0, 3400.0, 7300.0, 16000.0}) {
        BandLimit limit(cutoff);
        std::vector<float> response(30000);
        response[0] = 1.0F;
        limit.process(response.data(), uint32_t(response.size()));
        for (const double below : {0.01, 0.5, 0.9, 0.99})
            EXPECT_NEAR(10.0 * std::log10(power_at(response, below * cutoff)), 0.0, 0.15);
        for (const double above : {1.07, 1.2, 1.35})
            EXPECT_LT(10.0 * std::log10(power_at(response, above * cutoff)), -59.5);
    }
    BandLimit off(20000.0);
    std::vector<float> samples{1.0F, -1.0F};
    off.process(samples.data(), 2);
    EXPECT_EQ(samples, (std::vector<float>{1.0F, -1.0F}));
}

} // namespace tarquil
