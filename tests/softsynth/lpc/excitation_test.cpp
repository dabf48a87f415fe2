// What the synthesis filter is fed with, and the low-pass behind it.

#include <gtest/gtest.h>

#include <limits>

#include "softsynth/lpc/band_limit.h"
#include "softsynth/lpc/carrier_whitener.h"
#include "softsynth/lpc/pulse_train.h"
#include "tests/softsynth/lpc/speech_samples.h"

namespace tarquil {

TEST(PulseTrain, HasThePowerOfOneAndEqualHarmonics) {
    for (const double hz : {61.7, 180.3, 500.1}) {
        PulseTrain train;
        train.set_pitch(hz);
        std::vector<float> samples(44100);
        for (float& sample : samples)
            sample = train.next();
        // The shape's fall near half the sample rate takes some.
        EXPECT_NEAR(power_of(samples), 0.95, 0.06) << hz;
        const double first = power_at(samples, hz);
        for (const double harmonic : {3.0, 10.0, 30.0})
            EXPECT_NEAR(power_at(samples, harmonic * hz) / first, 1.0, 0.1) << hz;
        EXPECT_LT(power_at(samples, 10.5 * hz), 1e-3 * first) << hz;
    }
}

TEST(CarrierWhitener, EvensOutADullCarrier) {
    CarrierWhitener whitener(0.586);
    std::vector<float> samples(88200);
    std::mt19937 random(2);
    std::uniform_real_distribution<float> any(-0.5F, 0.5F);
    float low = 0.0F;
    for (float& sample : samples) {
        low += 0.05F * (any(random) - low); // falls by 6 dB an octave from 350 Hz on
        sample = whitener.process(low);
    }
    const auto late = std::span(samples).last(44100);
    EXPECT_NEAR(power_of(late), 1.0, 0.1);
    const auto band = [&](double from) {
        double sum = 0.0;
        for (double hz = from; hz < 1.3 * from; hz += from / 200)
            sum += power_at(late, hz);
        return sum;
    };
    // 26 dB before.
    EXPECT_NEAR(10.0 * std::log10(band(300.0) / band(6000.0)), 0.0, 3.0);
}

TEST(CarrierWhitener, StaysFiniteAndIsSilentInSilence) {
    CarrierWhitener whitener(0.586);
    EXPECT_EQ(whitener.process(0.0F), 0.0F);
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), 1e38F, -std::numeric_limits<float>::infinity()})
        for (int i = 0; i < 100; i++)
            EXPECT_TRUE(std::fabs(whitener.process(bad)) <= 16.0F);
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
