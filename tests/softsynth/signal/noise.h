// White noise for tests.

#pragma once

#include <cstddef>
#include <random>
#include <vector>

namespace tarquil {

// Samples within -level..level, the same in every run.
inline std::vector<float> noise(size_t count, float level = 1.0F, unsigned seed = 7) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> values(-level, level);
    std::vector<float> samples(count);
    for (float& sample : samples)
        sample = values(random);
    return samples;
}

} // namespace tarquil
