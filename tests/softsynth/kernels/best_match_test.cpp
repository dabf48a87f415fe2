// The search for the best match: every kernel finds the scalar one's place.

#include <cmath>

#include "tests/softsynth/kernels/every_kernel_level.h"
#include "tests/softsynth/kernels/test_signal.h"

namespace tarquil {

namespace {

TEST(BestMatch, EveryKernelFindsTheSamePlace) {
    constexpr uint32_t PLACES = 400;
    constexpr uint32_t LENGTH = 128;
    const std::vector<float> stretch = test_signal(LENGTH, 1);
    for (uint32_t seed = 2; seed < 12; seed++) {
        std::vector<float> sound = test_signal(PLACES + LENGTH, seed);
        // A sound that repeats itself has several best places.
        for (size_t i = seed % 2 == 0 ? 150 : sound.size(); i < sound.size(); i++)
            sound[i] = sound[i - 150];
        if (seed == 3)
            sound[200] = NAN;
        if (seed == 5)
            sound[0] = INFINITY;
        for (const uint32_t end : {1U, 3U, 17U, 65U, 150U, 397U}) {
            const MatchSearch search = {stretch.data(), LENGTH, sound.data(), seed % 3,
                                        seed % 3 + end};
            for_every_kernel_level([&](const Kernels& kernels, const Kernels& scalar) {
                EXPECT_EQ(kernels.best_match(search), scalar.best_match(search)) << seed;
            });
        }
    }
}

} // namespace

} // namespace tarquil
