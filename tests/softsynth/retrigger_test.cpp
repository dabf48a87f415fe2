// The beat repeat and its time compression.

#include "softsynth/retrigger.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "softsynth/psola.h"

namespace {

constexpr uint32_t BEAT = 22050; // at 120 bpm

std::vector<float> noise(size_t count) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> level(-1, 1);
    std::vector<float> samples(count);
    for (float& sample : samples)
        sample = level(random);
    return samples;
}

// Runs the box over a mono signal (the right side carries something else); returns the left side.
std::vector<float> run(RetriggerBox& box, const std::vector<float>& in, float bpm, float speedup,
                       float wet) {
    static StereoBuffer buf;
    static MonoBuffer bpms;
    static MonoBuffer speedups;
    static MonoBuffer wets;
    constexpr uint32_t BLOCK = 50;
    std::vector<float> out;
    for (size_t start = 0; start + BLOCK <= in.size(); start += BLOCK) {
        buf.init(BLOCK);
        for (MonoBuffer* control : {&bpms, &speedups, &wets})
            control->init(BLOCK);
        for (uint32_t i = 0; i < BLOCK; i++) {
            *buf.get_left_sample_ptr(i) = in[start + i];
            *buf.get_right_sample_ptr(i) = 9.0F;
            bpms.get_first_sample_ptr()[i] = bpm;
            speedups.get_first_sample_ptr()[i] = speedup;
            wets.get_first_sample_ptr()[i] = wet;
        }
        box.render(buf, bpms, speedups, wets);
        for (uint32_t i = 0; i < BLOCK; i++) {
            out.push_back(*buf.get_left_sample_ptr(i));
            EXPECT_EQ(out.back(), *buf.get_right_sample_ptr(i));
        }
    }
    return out;
}

TEST(Retrigger, DryIsTheLeftInputAndSpeedupOneRepeatsTheBeat) {
    static RetriggerBox box;
    const std::vector<float> in = noise(size_t(3) * BEAT);
    EXPECT_EQ(run(box, in, 120, 1, 0), in);
    box.reset();
    const std::vector<float> out = run(box, in, 120, 0, 1); // 0 counts as 1
    for (size_t i = BEAT; i < out.size(); i++)
        ASSERT_NEAR(out[i], in[i - BEAT], 1e-6) << i; // the mix rounds
    box.reset();
    // The change of the factor restarts the beat after the first sample.
    const std::vector<float> backwards = run(box, in, 120, -1, 1);
    for (size_t i = 0; i < BEAT; i++)
        ASSERT_NEAR(backwards[BEAT + 1 + i], in[BEAT - i], 1e-6) << i;
}

TEST(Retrigger, ChangingTheTempoRestartsTheBeat) {
    static RetriggerBox box;
    box.reset();
    const std::vector<float> in = noise(size_t(2) * 26460);
    run(box, std::vector<float>(in.begin(), in.begin() + 1000), 120, 1, 1);
    // 100 bpm: 26460 samples from the sample after the one that brings the change.
    const std::vector<float> out =
        run(box, std::vector<float>(in.begin() + 1000, in.end()), 100, 1, 1);
    EXPECT_EQ(out[26460], 0.0F);
    EXPECT_NEAR(out[26461], in[1001], 1e-6);
}

TEST(Psola, ShortensEveryBeatByEveryFactorWithinItsRoom) {
    // Under the address sanitizer this also shows that no read or write leaves its buffer.
    for (int bpm = 60; bpm <= 187; bpm += 1) {
        const auto period = uint32_t(2646000.0F / float(bpm));
        const std::vector<float> in = noise(period);
        for (const int factor : {2, 3, 5, 8, 13, 21, 34, 64, -63, -(2 + bpm % 60)}) {
            if (std::abs(factor) < 6 && bpm % 16 != 0)
                continue; // the long searches at a few tempi only
            std::vector<float> out(period + 1, 7.0F);
            uint32_t length = 0;
            psola_time_stretch(in.data(), period, factor, out.data(), &length);
            const uint32_t target = period / uint32_t(std::abs(factor));
            ASSERT_GE(length, std::min(target, 896U) - 128) << bpm << " x " << factor;
            ASSERT_LE(length, target + 896) << bpm << " x " << factor;
            ASSERT_LT(std::fabs(out[0]), 0.04F) << "the ends are faded";
            ASSERT_LT(std::fabs(out[length - 1]), 0.04F);
            ASSERT_EQ(out[length], 7.0F);
        }
    }
}

TEST(Psola, VeryShortSoundsAreCopied) {
    for (const uint32_t n : {1U, 31U, 100U, 895U, 897U}) {
        const std::vector<float> in = noise(n);
        std::vector<float> out(n + 1, 7.0F);
        uint32_t length = 0;
        psola_time_stretch(in.data(), n, 16, out.data(), &length);
        EXPECT_EQ(length, std::min(n, 896U));
        EXPECT_EQ(out[n], 7.0F);
    }
}

TEST(Psola, JoinsASineWithoutASeam) {
    std::vector<float> in(44100);
    for (size_t i = 0; i < in.size(); i++)
        in[i] = std::sin(float(i) * 0.05F);
    std::vector<float> out(in.size() + 1);
    uint32_t length = 0;
    psola_time_stretch(in.data(), 44100, 4, out.data(), &length);
    EXPECT_NEAR(length, 44100 / 4, 64);
    // A sine of 0.05 radians per sample never moves faster than 0.05; grains that match keep to it.
    for (uint32_t i = 33; i + 33 < length; i++)
        ASSERT_LT(std::fabs(out[i] - out[i - 1]), 0.06F) << i;
}

} // namespace
