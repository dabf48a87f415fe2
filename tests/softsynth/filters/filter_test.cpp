// Biquad cascades: responses against theory, bounds, recovery.

#include "softsynth/filters/filter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace tarquil {

namespace {

constexpr double PI = std::numbers::pi;

constexpr uint32_t IMPULSE_LENGTH = 32768;

Filter make(FilterType type, int depth, double hz, double q, double g = 0) {
    Filter filter;
    filter.init(type, 0, depth, 0.0F);
    filter.set_linear_cutoff(float(2 * PI * hz / 44100));
    filter.set_resonance(float(q));
    filter.set_dbgain_normalized(float(g));
    filter.update();
    return filter;
}

std::vector<float> impulse_response(Filter filter) {
    std::vector<float> response(IMPULSE_LENGTH);
    response[0] = 1.0F;
    filter.render_chunk(response.data(), IMPULSE_LENGTH);
    return response;
}

double gain_db(const std::vector<float>& response, double hz) {
    std::complex<double> sum = 0;
    for (size_t i = 0; i < response.size(); i++)
        sum += double(response[i]) * std::polar(1.0, -2 * PI * hz / 44100 * double(i));
    return 20 * std::log10(std::abs(sum));
}

// What each type must do at analytic points.
TEST(Filter, ResponsesMeetTheory) {
    const double butterworth = std::sqrt(0.5);
    const std::vector<float> low = impulse_response(make(FILTER_LOWPASS, 1, 1000, butterworth));
    EXPECT_NEAR(gain_db(low, 1), 0, 0.01);
    EXPECT_NEAR(gain_db(low, 1000), -3.01, 0.01);
    EXPECT_NEAR(gain_db(low, 2000) - gain_db(low, 4000), 12, 0.6); // 12 dB an octave
    const std::vector<float> high = impulse_response(make(FILTER_HIGHPASS, 1, 1000, butterworth));
    EXPECT_NEAR(gain_db(high, 1000), -3.01, 0.01);
    EXPECT_NEAR(gain_db(high, 20000), 0, 0.01);
    EXPECT_NEAR(gain_db(high, 250) - gain_db(high, 125), 12, 0.3);
    const std::vector<float> band = impulse_response(make(FILTER_BANDPASS, 1, 1000, 5));
    EXPECT_NEAR(gain_db(band, 1000), 0, 0.01);
    EXPECT_LT(gain_db(band, 100), -30);
    const std::vector<float> notch = impulse_response(make(FILTER_NOTCH, 1, 1000, 1));
    EXPECT_LT(gain_db(notch, 1000), -60);
    EXPECT_NEAR(gain_db(notch, 20), 0, 0.01);
    // A gain of g is 10^g in A, 40 g dB at the peak and on the shelf.
    const std::vector<float> peaking = impulse_response(make(FILTER_PEAKING_EQ, 1, 1000, 1, 0.3));
    EXPECT_NEAR(gain_db(peaking, 1000), 12, 0.01);
    EXPECT_NEAR(gain_db(peaking, 10), 0, 0.01);
    const std::vector<float> shelf = impulse_response(make(FILTER_LOW_SHELF, 1, 1000, 0.7, -0.25));
    EXPECT_NEAR(gain_db(shelf, 10), -10, 0.02);
    EXPECT_NEAR(gain_db(shelf, 20000), 0, 0.02);
    EXPECT_NEAR(gain_db(impulse_response(make(FILTER_HIGH_SHELF, 1, 1000, 0.7, 0.25)), 21000), 10,
                0.02);
    // b2 is 1, not 1 + alpha: above 0 dB at the cutoff by design.
    EXPECT_GT(std::fabs(gain_db(impulse_response(make(FILTER_ALLPASS, 1, 1000, 0.7)), 1000)), 0.1);
}

TEST(Filter, BoundsHoldForEverySetting) {
    for (int type = FILTER_NONE; type <= FILTER_HIGH_SHELF; type++) {
        for (const float octaves : {-1e30F, -300.0F, 0.0F, 9.99F, 200.0F, std::nanf("")}) {
            for (const float q : {-1.0F, 0.0F, 0.001F, 7.5F, std::nanf("")}) {
                Filter filter;
                filter.init(FilterType(type), 1, 4, 20000.0F);
                std::vector<float> sound(4096, 0.5F);
                const std::vector<float> cutoff(4096, octaves);
                const std::vector<float> resonance(4096, q);
                filter.render(sound.data(), 4096, cutoff.data(), resonance.data());
                for (const float sample : sound)
                    ASSERT_TRUE(std::isfinite(sample)) << type << " " << octaves << " " << q;
            }
        }
    }
}

TEST(Filter, StateThatIsNotFiniteIsCleared) {
    Filter filter = make(FILTER_LOWPASS, 4, 1000, 2);
    const std::vector<float> expected = impulse_response(filter);
    std::vector<float> spoilt(64, INFINITY);
    filter.render_chunk(spoilt.data(), 64);
    EXPECT_EQ(impulse_response(filter), expected);
}

TEST(FilterDeathTest, WrongSizesAndTypesAbort) {
    Filter filter = make(FILTER_LOWPASS, 1, 1000, 1);
    float samples[8] = {};
    EXPECT_DEATH(filter.render_chunk(samples, 6),
                 "softsynth/filters/filter.cpp.*\\(n_samples & 3\\) == 0");
    EXPECT_DEATH(get_base_filter_type(FilterType(18)),
                 "softsynth/filters/filter.h.*ftype < FILTER_LADDER_START_MARKER");
}

} // namespace

} // namespace tarquil
