// Different second-order sections one behind the other, as their kernel sees them.

#pragma once

#include <cstdint>

#include "softsynth/kernels/biquad_lanes.h"

namespace tarquil {

// The kernel runs `frames` frames of 1 or 2 interleaved channels through the sections in place,
// y = b0 x + z1; z1 = b1 x - a1 y + z2; z2 = b2 x - a2 y.
struct BiquadSeries {
    static constexpr uint32_t MAX_SECTIONS = 6;

    const BiquadCoefficients* coefficients[MAX_SECTIONS];
    BiquadState* memory[MAX_SECTIONS]; // a state for each channel
    uint32_t count;                    // of sections, at least 1
    uint32_t channels;
};

// A cascade of equal sections on one channel.  Internal linkage, since kernels of every instruction
// set use it.
static inline BiquadSeries equal_sections(const BiquadCoefficients& coefficients,
                                          BiquadState* memory, uint32_t depth) {
    BiquadSeries series = {{}, {}, depth, 1};
    for (uint32_t k = 0; k < depth; k++) {
        series.coefficients[k] = &coefficients;
        series.memory[k] = memory + k;
    }
    return series;
}

} // namespace tarquil
