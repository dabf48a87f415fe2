// Biquad cascades at their limits; the golden scenes and tests/curves have their responses, and the
// insert effect's test their recovery.

#include "softsynth/filters/filter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace tarquil {

namespace {

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

} // namespace

} // namespace tarquil
