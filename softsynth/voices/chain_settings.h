// What a channel's chain takes of its controllers once a block: their last values.

#pragma once

#include "softsynth/effects/mono_effect.h"
#include "softsynth/effects/stereo_effect.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/filter_type.h"
#include "softsynth/voices/sound_controls.h"

namespace tarquil {

// The engine's buses: 0 main, 1 reverb send, 2 delay send.
inline constexpr int NUM_AUX_BUSES = 3;

struct ChainSettings {
    struct Insert {
        MonoEffect::effect_type type = MonoEffect::MONO_EFFECT_OFF;
        int parameters[NUM_EFFECT_PARAMETERS] = {};
    };
    struct Equaliser {
        FilterType type = FILTER_NONE;
        float cutoff = 0.0F; // octaves above 20 Hz
        float resonance = 0.0F;
        float gain = 0.0F;
    };

    ChainSettings() = default;
    explicit ChainSettings(const SoundControls& controls);

    Insert inserts[NUM_MONO_EFFECTS];
    Equaliser filters[NUM_CHANNEL_FILTERS];
    float volume = 0.0F; // linear, as the gains
    float left_gain = 0.0F;
    float right_gain = 0.0F;
    StereoEffect::effect_type stereo_type = StereoEffect::STEREO_EFFECT_OFF;
    int stereo_parameters[NUM_EFFECT_PARAMETERS] = {};
    float stereo_wet = 0.0F;
    float levels[NUM_AUX_BUSES] = {}; // of what is added to the buses

    // Silence goes through as silence, and nothing remembers it.
    bool passes_silence = false;
};

} // namespace tarquil
