// Time compression: lengths, ends and seams for every beat and factor.

#include "softsynth/effects/psola.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "tests/softsynth/signal/noise.h"

namespace tarquil {

namespace {

// The sound of a beat, shortened by `factor`, in a buffer that has room for no sample more.
std::vector<float> shortened(const std::vector<float>& in, int factor) {
    // Under the address sanitizer this also shows that no read or write leaves its buffer.
    std::vector<float> out(in.size());
    uint32_t length = 0;
    psola_time_stretch(in.data(), uint32_t(in.size()), factor, out.data(), &length);
    EXPECT_LE(length, in.size());
    out.resize(length);
    return out;
}

void expect_length_and_fades(const std::vector<float>& beat, int factor) {
    const std::vector<float> out = shortened(beat, factor);
    const size_t target = beat.size() / size_t(std::abs(factor));
    // Whole grains of at least 768 samples and one overlap of 128.
    ASSERT_GE(out.size(), std::max<size_t>(target, 1024) - 128) << beat.size() << " x " << factor;
    ASSERT_LE(out.size(), target + 896) << beat.size() << " x " << factor;
    // The first and last weight are 1/34 of a sample within -1..1.
    ASSERT_LE(std::fabs(out.front()), 1 / 33.9F);
    ASSERT_LE(std::fabs(out.back()), 1 / 33.9F);
}

TEST(Psola, ShortensEveryBeatByEveryFactor) {
    const std::vector<float> longest = noise(44100);
    for (int bpm = 60; bpm <= 187; bpm++) {
        const std::vector<float> beat(longest.begin(),
                                      longest.begin() + std::ptrdiff_t(2646000.0F / float(bpm)));
        for (int factor = 2; factor <= 64; factor++) {
            // Small factors mean long searches: at every 32nd tempo only.
            if (factor < 30 && bpm % 32 != 28 && factor != 8 + bpm % 22)
                continue;
            expect_length_and_fades(beat, bpm % 2 == 0 || factor == 64 ? factor : -factor);
        }
    }
}

TEST(Psola, ANegativeFactorIsThePositiveOneBackwards) {
    const std::vector<float> beat = noise(20000);
    for (const int factor : {1, 5}) {
        const std::vector<float> forwards = shortened(beat, factor);
        EXPECT_EQ(shortened(beat, -factor), std::vector<float>(forwards.rbegin(), forwards.rend()));
    }
}

TEST(Psola, OfVeryShortSoundsOneGrainOrAllRemains) {
    for (const size_t n : {1U, 31U, 100U, 895U, 897U, 1500U, 2050U}) {
        for (const int factor : {2, 16, 64}) {
            const size_t grains = n == 2050 && factor == 2 ? 2 : 1;
            EXPECT_EQ(shortened(noise(n), factor).size(), std::min(n, 768 * grains + 128))
                << n << " x " << factor;
        }
    }
}

} // namespace

} // namespace tarquil
