// Crossovers in cascade as their kernel sees them.

#pragma once

#include <cstdint>

namespace tarquil {

// A cascade of equal sections in transposed direct form II (filter.h) on four signals side by side:
// low left, low right, high left, high right.  Numerators are symmetric (b2 = b0), the denominator
// is common.
struct Crossover {
    static constexpr int SIGNALS = 4;
    static constexpr int STAGES = 4;

    // coefficients
    float b0[SIGNALS] = {};
    float b1[SIGNALS] = {};
    float a1 = 0.0F;
    float a2 = 0.0F;

    // memory
    float z1[STAGES][SIGNALS] = {};
    float z2[STAGES][SIGNALS] = {};
};

// The kernel splits interleaved stereo frames: crossover b writes what lies below it into low[b],
// and what lies above it goes into the next one, or with the last one into `high`.
struct BandSplit {
    static constexpr uint32_t MAX_CROSSOVERS = 3;

    Crossover* crossovers[MAX_CROSSOVERS];
    float* low[MAX_CROSSOVERS];
    float* high;    // what is split, in place
    uint32_t count; // of crossovers, at least 1
};

} // namespace tarquil
