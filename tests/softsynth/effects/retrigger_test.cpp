// The beat repeat: what it survives; tempo_test.cpp looks at what it repeats.

#include "softsynth/effects/retrigger.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/softsynth/signal/noise.h"

namespace tarquil {

namespace {

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
            if (std::isfinite(out.back())) {
                EXPECT_EQ(out.back(), *buf.get_right_sample_ptr(i));
            }
        }
    }
    return out;
}

TEST(Retrigger, LoopsStayWithinTheirMemoryAtTheEndsOfTheTempoRange) {
    // Under the address sanitizer this shows that no capture leaves its buffers.
    for (const float bpm : {10.0F, 60.0F, 187.0F}) {
        // 10 bpm is a beat of 264600 samples: cut to the 65535 that the history can hold.
        const size_t beat = bpm == 10.0F ? 65535 : size_t(2646000.0F / bpm);
        const std::vector<float> in = noise(2 * beat + 100);
        for (const float speedup : {1.0F, 64.0F, -63.0F}) {
            static RetriggerBox box;
            box.reset();
            const std::vector<float> out = run(box, in, bpm, speedup, 1);
            // The first sample changes the tempo, and the beat starts with the second.
            EXPECT_EQ(out[beat], 0.0F) << bpm << " x " << speedup;
            EXPECT_NE(out[beat + 1], 0.0F) << bpm << " x " << speedup;
            if (speedup == 1.0F) {
                EXPECT_NEAR(out[beat + 1], in[1], 1e-6) << bpm;
            }
        }
    }
}

TEST(Retrigger, SamplesThatAreNotFiniteAreNeverRepeated) {
    for (const float speedup : {1.0F, -8.0F}) {
        static RetriggerBox box;
        box.reset();
        std::vector<float> in = noise(66150);
        std::fill_n(in.begin() + 2000, 500, INFINITY);
        in[4000] = std::nanf("");
        const std::vector<float> out = run(box, in, 120, speedup, 1);
        for (size_t i = 4001; i < out.size(); i++)
            ASSERT_TRUE(std::isfinite(out[i])) << i << " x " << speedup;
    }
}

} // namespace

} // namespace tarquil
