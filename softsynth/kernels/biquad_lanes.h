// Biquad cascades side by side, as their kernel sees them.

#pragma once

#include <cstdint>

namespace tarquil {

// Floats only and in this order: the kernel reads both as rows.
struct BiquadCoefficients {
    float b0 = 1.0F;
    float b1 = 0.0F;
    float b2 = 0.0F;
    float a1 = 0.0F;
    float a2 = 0.0F;
    float unused[3] = {};
};

struct BiquadState {
    float z1 = 0.0F;
    float z2 = 0.0F;
};

// The kernel runs `length` samples, from `first` on, of each of `count` signals through `depth`
// equal sections in place, y = b0 x + z1; z1 = b1 x - a1 y + z2; z2 = b2 x - a2 y.
struct BiquadLanes {
    static constexpr uint32_t MAX_DEPTH = 4;

    float* const* signal;
    BiquadState* const* memory; // MAX_DEPTH each
    const BiquadCoefficients* const* coefficients;
    uint32_t count; // at least 1
    uint32_t depth; // 1..MAX_DEPTH
};

} // namespace tarquil
