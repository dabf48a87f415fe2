// A crossover's sections as its kernel sees them.

#pragma once

#include <cstdint>

namespace tarquil {

// A cascade of equal sections in transposed direct form II (filter.h) on four signals side by side:
// low left, low right, high left, high right.  Numerators are symmetric (b2 = b0), the denominator
// is common.  The kernel filters the interleaved stereo frames of `low` and `high` in place.
struct Crossover {
    static constexpr int SIGNALS = 4;
    static constexpr int MAX_STAGES = 4;

    struct Section {
        alignas(16) float z1[SIGNALS] = {};
        alignas(16) float z2[SIGNALS] = {};
    };

    // coefficients
    float b0[SIGNALS] = {};
    float b1[SIGNALS] = {};
    float a1 = 0.0F;
    float a2 = 0.0F;
    int num_stages = 0; // 0..MAX_STAGES

    // memory
    Section sections[MAX_STAGES];
};

} // namespace tarquil
