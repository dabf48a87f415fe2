// What the master section takes of the global controllers once a block.

#pragma once

#include "softsynth/effects/multi_compressor.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/filter_type.h"
#include "softsynth/voices/controller.h"

namespace tarquil {

struct MasterSettings {
    struct Reverb {
        float room_size = 0.0F;
        float damp = 0.0F;
        float width = 0.0F;
        float wet = 0.0F;
    };
    struct Equaliser {
        FilterType type = FILTER_NONE;
        float omega = 0.0F; // radians a sample
        float resonance = 0.0F;
        float gain = 0.0F;
    };
    struct Retrigger {
        int bpm_byte = 0;
        float bpm = 0.0F;
        float speedup = 0.0F; // 0: off
        float wet = 0.0F;
    };
    // As MultiCompressor::process takes them.
    struct Compressor {
        float crossovers[MC_N_BANDS - 1] = {};
        float thresholds[MC_N_BANDS] = {};
        float ratios[MC_N_BANDS] = {};
        float attacks[MC_N_BANDS] = {};
        float releases[MC_N_BANDS] = {};
        float makeups[MC_N_BANDS] = {};
    };

    MasterSettings() = default;
    // `globals` stand still.
    explicit MasterSettings(const ControllerArray& globals);

    Reverb reverb;
    int delay_parameters[3] = {}; // left and right time, feedback
    float aux_omega = 0.0F;       // radians a sample
    Equaliser filters[NUM_GLOBAL_FILTERS];
    Retrigger retrigger;
    float pre_gain = 0.0F; // linear
    Compressor compressor;
};

} // namespace tarquil
