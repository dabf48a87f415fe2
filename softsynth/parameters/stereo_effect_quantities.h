// What the parameters of the stereo effect stand for, from their bytes 0..127.

#pragma once

#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/effect_parameter.h"

namespace tarquil {

// 0.01..1 s
inline float stereo_delay_seconds(int p) {
    constexpr float MIN_DELAY_SECONDS = 0.01F;
    constexpr float DELAY_RANGE_SECONDS = 0.99F;
    return part_of(DELAY_RANGE_SECONDS, p) + MIN_DELAY_SECONDS;
}

// 0..0.9
inline float stereo_effect_feedback(int p) {
    constexpr float MAX_FEEDBACK = 0.9F;
    return part_of(MAX_FEEDBACK, p);
}

// In samples: 20..30 ms.
inline float chorus_delay_samples(int p) {
    constexpr float MIN_CHORUS_SECONDS = 0.02F;
    constexpr float CHORUS_RANGE_SECONDS = 0.01F;
    return (part_of(CHORUS_RANGE_SECONDS, p) + MIN_CHORUS_SECONDS) * float(SAMPLE_RATE);
}

// In samples: 25..245.5.
inline float flanger_delay_samples(int p) {
    constexpr float MIN_FLANGER_SAMPLES = 25.0F;
    constexpr float FLANGER_RANGE_SECONDS = 0.005F;
    return part_of(FLANGER_RANGE_SECONDS, p) * float(SAMPLE_RATE) + MIN_FLANGER_SAMPLES;
}

// How far the right side's LFO runs ahead, in cycles.
inline constexpr float RIGHT_LFO_LEAD = 0.25F;

// 0..6 Hz
inline float stereo_lfo_hz(int p) {
    constexpr float CUBE_ROOT_MAX_LFO_HZ = 1.8171206F;
    return cubed(part_of(CUBE_ROOT_MAX_LFO_HZ, p));
}

// In samples: 0..6 ms.
inline float stereo_lfo_samples(int p) {
    constexpr float CUBE_ROOT_MAX_LFO_SECONDS = 0.18171206F;
    return cubed(part_of(CUBE_ROOT_MAX_LFO_SECONDS, p)) * float(SAMPLE_RATE);
}

} // namespace tarquil
