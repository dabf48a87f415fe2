// The life of the echoes of the stereo effect; shown_values_test.cpp measures them.

#include "softsynth/effects/stereo_effect.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "player/shared_waveforms.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

using Parameters = std::array<int, 5>;

class StereoEffectTest : public testing::Test {
  protected:
    // Renders `frames` of signal(n) into an empty buffer and appends both sides' output.
    template <typename Signal>
    void run(StereoEffect::effect_type type, const Parameters& p, uint32_t frames,
             const Signal& signal, float wet = 1.0F) {
        for (uint32_t done = 0; done < frames;) {
            const uint32_t size = std::min(frames - done, MAX_NUM_SAMPLES);
            in.init(size);
            out.init(size);
            out.nullify();
            for (uint32_t i = 0; i < size; i++, time++)
                *in.get_left_sample_ptr(i) = *in.get_right_sample_ptr(i) = signal(time);
            effect->render(type, in, out, p[0], p[1], p[2], p[3], p[4], wet, scratch);
            for (uint32_t i = 0; i < size; i++) {
                left.push_back(*out.get_left_sample_ptr(i));
                right.push_back(*out.get_right_sample_ptr(i));
            }
            done += size;
        }
    }

    void run_impulse(StereoEffect::effect_type type, const Parameters& p, uint32_t frames) {
        run(
            type, p, frames, [](uint32_t n) { return n == 0 ? 1.0F : 0.0F; }, 0.5F);
    }

    std::unique_ptr<StereoEffect> effect = std::make_unique<StereoEffect>();
    StereoEffectScratch scratch{shared_waveforms()};
    StereoBuffer in;
    StereoBuffer out;
    uint32_t time = 0;
    std::vector<float> left;
    std::vector<float> right;
};

TEST_F(StereoEffectTest, TypeChangeClearsTheEchoAndParameterChangesDoNot) {
    run_impulse(StereoEffect::STEREO_EFFECT_DELAY, {127, 127, 0, 0, 0}, 1000);
    run_impulse(StereoEffect::STEREO_EFFECT_DELAY, {32, 32, 0, 0, 0}, 20000);
    EXPECT_EQ(std::count(left.begin(), left.end(), 0.5F), 1);
    run_impulse(StereoEffect::STEREO_EFFECT_CHORUS, {0, 0, 0, 0, 0}, 4);
    left.clear();
    run_impulse(StereoEffect::STEREO_EFFECT_DELAY, {127, 127, 0, 0, 0}, 60000);
    EXPECT_EQ(left, std::vector<float>(60000, 0.0F));
}

TEST_F(StereoEffectTest, SweepStartsAnewAfterATypeChange) {
    const Parameters p = {20, 90, 90, OSC_TRIANGLE, 60};
    const auto ramp = [](uint32_t n) { return float(n); };
    run(StereoEffect::STEREO_EFFECT_FLANGER, p, 4000, ramp);
    const std::vector<float> first = left;
    run_impulse(StereoEffect::STEREO_EFFECT_OFF, p, 4);
    left.clear();
    time = 0;
    run(StereoEffect::STEREO_EFFECT_FLANGER, p, 4000, ramp);
    EXPECT_EQ(left, first);
}

TEST_F(StereoEffectTest, EverySettingStaysFiniteAndInRange) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto upto = [&random](int last) {
        return std::uniform_int_distribution(0, last)(random);
    };
    const auto silence = [](uint32_t) { return 0.0F; };
    for (int round = 0; round < 300; round++) {
        const auto type = StereoEffect::effect_type(upto(3));
        Parameters p = {upto(127), upto(127), upto(127), upto(5), upto(127)};
        if (round % 3 == 0) // the ends of the ranges, where a delay could leave its memory
            p = {127 * upto(1), 127 * upto(1), 127 * upto(1), upto(5), 127 * upto(1)};
        const float height = round % 5 == 0   ? std::numeric_limits<float>::infinity()
                             : round % 5 == 1 ? 1e30F
                                              : 1.0F;
        const uint32_t frames = 4 * uint32_t(1 + upto(511));
        run(type, p, frames, [&](uint32_t) { return height * float(upto(2) - 1); });
        left.clear();
        right.clear();
        run(type, p, frames, silence); // what was not finite is gone
        ASSERT_TRUE(all_finite(left.data(), frames)) << round;
        ASSERT_TRUE(all_finite(right.data(), frames)) << round;
    }
}

} // namespace

} // namespace tarquil
