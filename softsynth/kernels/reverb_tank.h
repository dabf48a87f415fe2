// The delay lines of the reverb as its kernel sees them.
//
// Comb, with a one-pole low-pass in its feedback; after J. A. Moorer, "About this reverberation
// business" (1979):
//
//   s <- s damp1 + y damp2,  y the oldest sample;   new sample = x + s feedback
//
// The low-pass has a gain of 1 at 0 Hz and less above (damp1 + damp2 = 1), so every feedback
// between -1 and 1 is stable.
//
// All-pass with the fixed feedback 1/2; after M. R. Schroeder, "Natural sounding artificial
// reverberation" (1962), but with a direct path of -1 instead of -1/2: the gain runs from 1 to 5/3
// over frequency.  That is part of the sound.
//
//   output = b - x,  b the oldest sample;   new sample = x + b / 2

#pragma once

#include <cstdint>

namespace tarquil {

// The kernel writes the wet signal of interleaved stereo frames, before its width is set: each
// side's sum of combs through its all-passes.
struct ReverbTank {
    static constexpr uint32_t NUM_COMBS = 8;
    static constexpr uint32_t NUM_ALLPASSES = 4;
    static constexpr float INPUT_GAIN = 0.015F;
    static constexpr float ALLPASS_FEEDBACK = 0.5F;

    // A circle of samples.
    struct Line {
        float* samples = nullptr;
        uint32_t size = 0;     // more than SHORTEST
        uint32_t position = 0; // of the oldest
    };
    static constexpr uint32_t SHORTEST = 128;

    struct Side {
        Line combs[NUM_COMBS];
        float stores[NUM_COMBS] = {}; // s
        Line allpasses[NUM_ALLPASSES];
    };

    // settings
    float feedback = 0.0F;
    float damp1 = 0.0F;
    float damp2 = 1.0F;

    // memory
    Side sides[2];
};

} // namespace tarquil
