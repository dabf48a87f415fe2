// The five insert effects: what their settings cut and hold, and what a change of type resets;
// shown_values_test.cpp measures their curves.

#include "softsynth/effects/mono_effect.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "softsynth/signal/finite.h"
#include "softsynth/voices/controller.h"
#include "tests/softsynth/signal/noise.h"

namespace tarquil {

namespace {

using Parameters = std::array<int, 5>;
using Samples = std::vector<float>;

class MonoEffectTest : public testing::Test {
  protected:
    Samples run(MonoEffect::effect_type type, const Parameters& p, const Samples& input) {
        buf.init(uint32_t(input.size()));
        std::copy(input.begin(), input.end(), buf.get_first_sample_ptr());
        cutoffs.init(uint32_t(input.size()));
        resonances.init(uint32_t(input.size()));
        cutoff.render(cutoffs, time, false);
        resonance.render(resonances, time, false);
        effect.render(type, buf, p[0], p[1], p[2], p[3], p[4], cutoffs, resonances);
        const float* samples = buf.get_first_sample_ptr();
        return {samples, samples + input.size()};
    }

    MonoEffect effect;
    Controller cutoff;
    Controller resonance;
    MonoBuffer cutoffs;
    MonoBuffer resonances;
    MonoBuffer buf;
    uint32_t time = 0;
};

TEST_F(MonoEffectTest, TypeChangeRestartsTheEnvelope) {
    const Parameters p = {20, 127, 40, 40, 60};
    const Samples input = noise(512);
    const Samples first = run(MonoEffect::MONO_EFFECT_COMPRESSOR, p, input);
    EXPECT_NE(run(MonoEffect::MONO_EFFECT_COMPRESSOR, p, input), first);
    run(MonoEffect::MONO_EFFECT_EXCITER, p, input);
    EXPECT_EQ(run(MonoEffect::MONO_EFFECT_COMPRESSOR, p, input), first);
}

TEST_F(MonoEffectTest, LofiBeyondItsRangeYieldsTheLowestValue) {
    const float infinity = std::numeric_limits<float>::infinity();
    const Samples input = {127.5F, 128.0F, -128.0F, -128.5F, 1e30F, infinity, -infinity, NAN};
    EXPECT_EQ(run(MonoEffect::MONO_EFFECT_LOFI, {0, 0, 0, 0, 0}, input),
              Samples({127.5F, -128.0F, -128.0F, -128.0F, -128.0F, -128.0F, -128.0F, -128.0F}));
}

TEST_F(MonoEffectTest, AFilterOfAnotherDepthOrTypeStartsEmpty) {
    cutoff.set_mapping(0.0F, 10.0F / 127);
    cutoff.push_back({0, 40});
    const Samples input = noise(128);
    for (const int type : {12, 21}) {
        const auto start = [&](int before) {
            run(MonoEffect::MONO_EFFECT_OFF, {}, input);
            run(MonoEffect::MONO_EFFECT_FILTER, {0, 0, before, type == before ? 2 : 3, 0}, input);
            return run(MonoEffect::MONO_EFFECT_FILTER, {0, 0, type, 3, 0}, input);
        };
        const Samples expected = start(0);
        EXPECT_EQ(start(13), expected) << type;
        EXPECT_EQ(start(type) == expected, type == 12) << "a ladder has no depth";
    }
}

TEST_F(MonoEffectTest, EverySettingForgetsWhatIsNotFinite) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto upto = [&](int last) { return std::uniform_int_distribution(0, last)(random); };
    cutoff.set_mapping(0.0F, 10.0F / 127);
    resonance.set_mapping(0.0F, 7.5F / 127);
    const float heights[] = {1.0F, 100.0F, 1e30F, std::numeric_limits<float>::infinity()};
    for (int round = 0; round < 1500; round++) {
        const auto type = MonoEffect::effect_type(upto(5));
        const Parameters p = {upto(127), upto(127), upto(127), upto(127), upto(127)};
        cutoff.push_back({time, p[0]});
        resonance.push_back({time, p[1]});
        const size_t size = 4 * size_t(1 + upto(99));
        Samples loud = noise(size, 1.0F, unsigned(random()));
        run(type, p, loud);
        for (float& sample : loud)
            sample *= heights[round % 4];
        run(type, p, loud);
        const Samples silent = run(type, p, Samples(size, 0.0F));
        // A waveshaper may still turn a filter's finite ringing into infinity.
        const int filter_type = p[2] % 25;
        const bool is_shaped = type == MonoEffect::MONO_EFFECT_FILTER && filter_type / 9 == 1;
        if (!is_shaped || round % 4 == 0) {
            ASSERT_TRUE(all_finite(silent.data(), uint32_t(size))) << round << " type " << type;
        }
        run(MonoEffect::MONO_EFFECT_OFF, p, loud);
    }
}

} // namespace

} // namespace tarquil
