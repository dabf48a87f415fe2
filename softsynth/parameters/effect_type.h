// The kinds of effects.

#pragma once

#include <cstdint>

namespace tarquil {

// Of the two insert effects.
enum MonoEffectType : uint32_t {
    MONO_EFFECT_OFF = 0,
    MONO_EFFECT_DISTORTION = 1,
    MONO_EFFECT_COMPRESSOR = 2,
    MONO_EFFECT_LOFI = 3,
    MONO_EFFECT_FILTER = 4,
    MONO_EFFECT_EXCITER = 5,
};

enum StereoEffectType : uint32_t {
    STEREO_EFFECT_OFF = 0,
    STEREO_EFFECT_DELAY = 1,
    STEREO_EFFECT_CHORUS = 2,
    STEREO_EFFECT_FLANGER = 3,
};

} // namespace tarquil
