// Ladder filters side by side, as their kernel sees them.

#pragma once

#include <cstddef>
#include <cstdint>

#include "softsynth/filters/resampler.h"

namespace tarquil {

// Floats only and in this order: the kernel reads both as rows.
struct LadderCoefficients {
    float k = 0.0F;
    float gain = 1.0F;
    float g = 0.0F;
    float c[5] = {}; // weights of the input (after feedback) and of the four stages
};

struct LadderMemory {
    float y[4] = {};
    float t[4] = {}; // saturated stages
    float y4_prev = 0.0F;
    float feedback = 0.0F;
    float unused[2] = {};
    AltDownsampler decimate_88khz;  // to 44100 Hz
    AltDownsampler decimate_176khz; // to 88200 Hz
};

// The kernel filters `length` samples, from `first` on, of each of `count` signals in place: per
// sample four steps of ladder_step at 176400 Hz, then both decimators.
struct LadderLanes {
    static constexpr uint32_t OVERSAMPLING = 4;

    // Samples whose oversampled form is in the scratch at a time, a multiple of 4.
    static constexpr uint32_t PIECE = 16;
    static constexpr uint32_t WIDEST_VECTOR = 16;
    // Vectors that run stage by stage, so that each hides the others' latencies.
    static constexpr uint32_t MAX_VECTORS = 6;
    // In floats, for each lane: both histories and the piece at three rates.
    static constexpr uint32_t SCRATCH_PER_LANE =
        2 * ResampleHistory::SIZE + (OVERSAMPLING + 2 + 1) * PIECE;
    static constexpr uint32_t SCRATCH_OF_ONE = WIDEST_VECTOR * SCRATCH_PER_LANE;
    static constexpr uint32_t SCRATCH_OF_MANY = MAX_VECTORS * SCRATCH_OF_ONE;

    float* const* signal;
    LadderMemory* const* memory;
    const LadderCoefficients* const* coefficients;
    uint32_t count; // at least 1
    float* scratch; // SCRATCH_OF_ONE floats for one lane, else SCRATCH_OF_MANY
};

// The oversampled ladder alone, plainly: n samples in, 4n out.
void run_ladder(const LadderCoefficients& coefficients, LadderMemory& memory, const float* in,
                float* out, uint32_t n);

} // namespace tarquil
