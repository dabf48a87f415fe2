// How voices take their times, from mapped values.

#pragma once

#include <cstdint>

#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/effect_parameter.h"

namespace tarquil {

// Whole samples.
inline uint32_t envelope_samples(float value) {
    return uint32_t(cubed(value));
}
inline uint32_t portamento_samples(float value) {
    return uint32_t(cubed(value) * float(SAMPLE_RATE));
}

} // namespace tarquil
