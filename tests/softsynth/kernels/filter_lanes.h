// Signals and memories of random filters for the tests of their kernels.

#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace tarquil {

// Noise with both zeros, denormals, and a signal that is not finite now and then.
inline std::vector<float> filter_input(std::mt19937& random, uint32_t size) {
    std::uniform_real_distribution<float> level(-1.0F, 1.0F);
    std::vector<float> samples(size);
    const bool spoilt = random() % 8 == 0;
    for (uint32_t i = 0; i < size; i++)
        samples[i] = i % 5 == 0 ? -0.0F : i % 7 == 0 ? 0x1p-140F : level(random);
    if (spoilt)
        samples[size / 2] = INFINITY;
    return samples;
}

// Compares bits, but any NaN equals any other.
inline bool same_samples(const float* a, const float* b, size_t count) {
    for (size_t i = 0; i < count; i++) {
        if (!(std::isnan(a[i]) && std::isnan(b[i])) &&
            std::bit_cast<uint32_t>(a[i]) != std::bit_cast<uint32_t>(b[i]))
            return false;
    }
    return true;
}

} // namespace tarquil
