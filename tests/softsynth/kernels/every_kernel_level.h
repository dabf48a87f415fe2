// What every form of the kernels gives against the scalar one, and what it is tried with.

#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "softsynth/kernels/kernel_levels.h"
#include "softsynth/signal/flush_to_zero.h"

namespace tarquil {

// The lanes as plain loops, as another compiler would get them; built for the tests alone.
namespace kernels_plain {
extern const Kernels TABLE;
}

// Calls body(kernels, scalar kernels) with flush-to-zero on, as rendering has it.
template <typename Body> void for_every_kernel_level(const Body& body) {
    const FlushToZero flush_to_zero;
    const Kernels& scalar = *kernel_levels().front().kernels;
    std::vector<KernelLevel> levels(kernel_levels().begin() + 1, kernel_levels().end());
    levels.push_back({"plain", &kernels_plain::TABLE});
    for (const KernelLevel& level : levels) {
        const ::testing::ScopedTrace trace(__FILE__, __LINE__,
                                           std::string("kernels: ") + level.name);
        body(*level.kernels, scalar);
    }
}

// Compares bits, so that -0 is not 0 and a NaN equals itself.
inline bool same_bits(const std::vector<float>& a, const std::vector<float>& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

// Every form's run(kernels) gives the scalar one's bits.
template <typename Run> void expect_scalar_bits(const Run& run) {
    for_every_kernel_level([&run](const Kernels& kernels, const Kernels& scalar) {
        EXPECT_TRUE(same_bits(run(kernels), run(scalar)));
    });
}

// Noise with what rounds and compares in a way of its own among it.
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
