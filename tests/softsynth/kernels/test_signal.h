// Input for kernels: noise with what rounds and compares in a way of its own among it.

#pragma once

#include <cstdint>
#include <random>
#include <vector>

namespace tarquil {

inline std::vector<float> test_signal(uint32_t size, uint32_t seed, float amplitude = 1.0F) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> level(-amplitude, amplitude);
    std::vector<float> signal(size);
    for (float& sample : signal) {
        const auto kind = random() % 16;
        sample = kind == 0 ? -0.0F : kind == 1 ? 0.0F : kind == 2 ? 0x1p-140F : level(random);
    }
    return signal;
}

} // namespace tarquil
