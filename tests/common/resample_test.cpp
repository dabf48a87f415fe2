// Tests of lowering the sample rate by powers of two.

#include "common/resample.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

namespace tarquil {

namespace {

constexpr double TWO_PI = 6.283185307179586;

// The filter's gain at `frequency`, in cycles per input sample.
double gain_at(double frequency) {
    double re = 0.0;
    double im = 0.0;
    for (size_t i = 0; i < NUM_HALFBAND_COEFS; i++) {
        re += halfband_filter_coefs[i] * std::cos(TWO_PI * frequency * double(i));
        im += halfband_filter_coefs[i] * std::sin(TWO_PI * frequency * double(i));
    }
    return std::hypot(re, im);
}

TEST(Resample, TheFilterIsSymmetricWithItsKnownSum) {
    double sum = 0.0;
    for (size_t i = 0; i < NUM_HALFBAND_COEFS; i++) {
        EXPECT_EQ(halfband_filter_coefs[i], halfband_filter_coefs[47 - i]);
        sum += halfband_filter_coefs[i];
    }
    EXPECT_NEAR(sum, 1.0054, 1e-12);
    EXPECT_NEAR(gain_at(0.2), 1.0, 0.03);
    EXPECT_LT(gain_at(0.3), 0.03);
    EXPECT_LT(gain_at(0.45), 0.03);
}

TEST(Resample, DecimationKeepsTheLastOfEachGroup) {
    const float x[] = {1, 2, 3, 4, 5};
    const double delay_by_one[] = {0, 1, 0, 0};
    std::vector<float> y(10, 9.0F);
    decimate(2, 4, delay_by_one, 5, x, y);
    EXPECT_EQ(y, (std::vector<float>{1, 3}));
    const double weights[] = {100, 10, 1};
    decimate(1, 3, weights, 3, x, y);
    EXPECT_EQ(y, (std::vector<float>{100, 210, 321}));
    const double direct[] = {1, 0, 0};
    decimate(3, 3, direct, 5, x, y);
    EXPECT_EQ(y, (std::vector<float>{3}));
    EXPECT_DEATH(decimate(2, 65, weights, 5, x, y),
                 "sizeof\\(p_Z\\)/sizeof\\(p_Z\\[0\\]\\) >= H_size");
}

TEST(Resample, OnlyPowersOfTwoAreOffered) {
    const std::vector<float> ramp = [] {
        std::vector<float> values(1000);
        std::iota(values.begin(), values.end(), 0.0F);
        return values;
    }();
    const auto length_after = [&](float from, float to) {
        std::vector<float> samples = ramp;
        const bool done = resample(samples, from, to);
        EXPECT_TRUE(done || samples == ramp);
        return done ? int(samples.size()) : -1;
    };
    EXPECT_EQ(length_after(44100, 44100), 1000);
    EXPECT_EQ(length_after(44100.00001F, 44100), 1000);
    EXPECT_EQ(length_after(88200, 44100), 500);
    EXPECT_EQ(length_after(176400, 44100), 250);
    EXPECT_EQ(length_after(705600, 44100), 62);
    constexpr float INF = std::numeric_limits<float>::infinity();
    for (const float from :
         {48000.0F, 132300.0F, 22050.0F, 2.0F, 0.0F, -88200.0F, INF, -INF, 1e30F, std::nanf("")})
        EXPECT_EQ(length_after(from, 44100), -1) << from;
    EXPECT_EQ(length_after(44100, 0), -1);
    EXPECT_EQ(length_after(44100, 1e-30F), -1);
}

} // namespace

} // namespace tarquil
