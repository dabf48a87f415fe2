// White noise for tests.

#pragma once

#include <cstddef>
#include <random>
#include <vector>

namespace tarquil {

// Samples within -1..1, the same in every run.
inline std::vector<float> noise(size_t count) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> level(-1, 1);
    std::vector<float> samples(count);
    for (float& sample : samples)
        sample = level(random);
    return samples;
}

} // namespace tarquil
