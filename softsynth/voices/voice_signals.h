// What one voice hands from pass to pass of a block: planar rows of its own.

#pragma once

#include "softsynth/parameters/constants.h"

namespace tarquil {

struct VoiceSignals {
    // Rows are read and written in whole vectors: up to this many floats past the block's end.
    static constexpr uint32_t PADDING = 16;
    static constexpr uint32_t MAX_CONTROLS = MAX_NUM_SAMPLES / CONTROL_PERIOD;

    // The mixed oscillators, filtered in place; what lies before the note is silent.
    alignas(64) float signal[MAX_NUM_SAMPLES + PADDING] = {};
    alignas(64) float amplitude[MAX_NUM_SAMPLES + PADDING] = {};

    // One value for each CONTROL_PERIOD samples from the block's start.
    alignas(64) float cutoff[MAX_CONTROLS] = {}; // octaves above 20 Hz
    alignas(64) float resonance[MAX_CONTROLS] = {};
};

} // namespace tarquil
