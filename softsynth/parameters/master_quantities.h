// How the channels' sends and the master section take their settings, from mapped values.

#pragma once

#include "softsynth/parameters/effect_parameter.h"

namespace tarquil {

// Linear; what is too quiet is not sent at all.
inline float send_level(float value) {
    constexpr float SMALLEST_SEND = 0.0001F;
    const float level = cubed(value);
    return level > SMALLEST_SEND ? level : 0.0F;
}

// Linear; what lies within half a per cent of 1 is 1.
inline float master_pre_gain(float value) {
    constexpr float LOWEST_UNITY_GAIN = 0.995F;
    constexpr float HIGHEST_UNITY_GAIN = 1.005F;
    const float gain = cubed(value);
    return gain < LOWEST_UNITY_GAIN || gain > HIGHEST_UNITY_GAIN ? gain : 1.0F;
}

} // namespace tarquil
