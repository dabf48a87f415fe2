// Runs a test body against every form of the kernels but the scalar one.

#pragma once

#include <gtest/gtest.h>

#include <cstring>
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

} // namespace tarquil
