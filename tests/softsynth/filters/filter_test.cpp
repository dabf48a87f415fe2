// Biquad cascades: bounds and recovery; the golden scenes and tests/curves have their responses.

#include "softsynth/filters/filter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace tarquil {

namespace {

constexpr uint32_t IMPULSE_LENGTH = 32768;

Filter make_lowpass(int depth) {
    Filter filter;
    filter.init(FILTER_LOWPASS, 0, depth, 0.0F);
    filter.set_linear_cutoff(0.15F);
    filter.set_resonance(2.0F);
    filter.set_dbgain_normalized(0.0F);
    filter.update();
    return filter;
}

std::vector<float> impulse_response(Filter filter) {
    std::vector<float> response(IMPULSE_LENGTH);
    response[0] = 1.0F;
    filter.render_chunk(response.data(), IMPULSE_LENGTH);
    return response;
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
    Filter filter = make_lowpass(4);
    const std::vector<float> expected = impulse_response(filter);
    std::vector<float> spoilt(64, INFINITY);
    filter.render_chunk(spoilt.data(), 64);
    EXPECT_EQ(impulse_response(filter), expected);
}

TEST(FilterDeathTest, WrongSizesAndTypesAbort) {
    Filter filter = make_lowpass(1);
    float samples[8] = {};
    EXPECT_DEATH(filter.render_chunk(samples, 6),
                 "softsynth/filters/filter.cpp.*\\(n_samples & 3\\) == 0");
    EXPECT_DEATH(get_base_filter_type(FilterType(18)),
                 "softsynth/filters/filter.h.*ftype < FILTER_LADDER_START_MARKER");
}

} // namespace

} // namespace tarquil
